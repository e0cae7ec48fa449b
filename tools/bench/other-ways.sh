#!/usr/bin/env bash
# other-ways.sh TREE FILE: how long others take for the same work, as JSON. GNUstep's defaults tool as a process, and
# Python's bridge to GSettings, whose packages are installed when they are missing.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$1
file=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

"$here/../setup/build-tools.sh" "$here/other-ways.txt"

# The tool alone, in the environment that run-env prepares once.
cat >"$scratch/tool.sh" <<'END'
tool=$1
"$tool" write Bench number -int 20130
for action in "read Bench number" "write Bench number -int 20130"; do
    best=
    for _ in 1 2 3 4 5; do
        start=$(date +%s%N)
        for _ in 1 2 3 4 5 6 7 8 9 10; do
            # shellcheck disable=SC2086  # the words of the action
            "$tool" $action >/dev/null
        done
        taken=$((($(date +%s%N) - start) / 10))
        if [ -z "$best" ] || [ "$taken" -lt "$best" ]; then best=$taken; fi
    done
    case $action in
    read*) echo "{\"what\": \"the defaults tool, a process: an integer read\", \"nanoseconds\": $best," \
        '"beside": "integerForKey(key as string) as integer, key of 8"},' ;;
    write*) echo "{\"what\": \"the defaults tool, a process: an integer written to disk\", \"nanoseconds\": $best," \
        '"beside": "setIntegerValue(key as string, value as integer), key of 8"}' ;;
    esac
done
END
sysroot=$(cat "$tree/sysroot-path")
tool_ways=$("$tree/run-env" --fresh-defaults bash "$scratch/tool.sh" "$sysroot/usr/bin/defaults")

cp "$here/../../bench/other_ways/org.example.bench.gschema.xml" "$scratch"
glib-compile-schemas "$scratch"
export XDG_CONFIG_HOME=$scratch/config
memory=$(/usr/bin/python3 "$here/../../bench/other_ways/settings_bridge.py" "$scratch" memory)
key_file=$(/usr/bin/python3 "$here/../../bench/other_ways/settings_bridge.py" "$scratch" keyfile)

# Three lists, put together: the brackets of the inner ones come off.
memory=${memory#[}
key_file=${key_file#[}
echo "{\"ways\": [$tool_ways, ${memory%]}, ${key_file%]}]}" >"$file"
