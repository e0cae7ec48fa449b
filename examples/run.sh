#!/usr/bin/env bash
# run.sh NAME [OPTION...]: runs one example in a new defaults database, as an application of the example's name. A folder
# holds several applications that run one after the other. OPTIONs go to plughost (such as --host 2011.4).
#
# NAME.managed holds the values that an administrator has fixed, NAME.users the users that the example knows, NAME.runs how
# often the application is started (once where there is none).
set -euo pipefail
examples=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=${PLUGHOST_BUILD:-$examples/../build/linux-i386}

name=${1:-}
if [ -z "$name" ] || { [ ! -e "$examples/$name.xojo_script" ] && [ ! -d "$examples/$name" ]; }; then
    echo "usage: run.sh NAME [OPTION...]   (the names are in examples/README.md)" >&2
    exit 2
fi
shift

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
database=(--defaults-dir "$scratch/defaults")
export GNUSTEP_TZ=UTC
cd "$examples" # messages name the files as they are called here

if [ -d "$name.managed" ]; then
    mkdir -p "$scratch/defaults"
    cp -R "$name.managed" "$scratch/defaults/Managed Preferences"
fi

# Each user's defaults are in the user's home folder.
preload=()
if [ -e "$name.users" ]; then
    sed "s|UID|$(id -u)|; s|HOMES|$scratch|" "$name.users" >"$scratch/users"
    cut -d: -f6 "$scratch/users" | xargs mkdir
    (umask 077 && grep -v '^GNUSTEP_USER_DEFAULTS_DIR=' "$build/GNUstep.conf" >"$scratch/GNUstep.conf")
    echo 'GNUSTEP_USER_DEFAULTS_DIR=Defaults' >>"$scratch/GNUstep.conf"
    database=()
    export GNUSTEP_CONFIG_FILE=$scratch/GNUstep.conf PLATFORM_TEST_PASSWD=$scratch/users
    preload=(env "LD_PRELOAD=$build/libplatform-test-users.so")
fi

programs=("$name.xojo_script")
[ -d "$name" ] && programs=("$name"/*.xojo_script)
[ -e "$name.runs" ] && mapfile -t programs < <(for _ in $(seq "$(<"$name.runs")"); do echo "${programs[0]}"; done)
for program in "${programs[@]}"; do
    application=$(basename "$program" .xojo_script)
    "${preload[@]}" "$build/plughost" run "$program" --domain "${application#[0-9]-}" "${database[@]}" "$@"
done
