#!/usr/bin/env bash
# fuzz.sh [--address] SECONDS [FUZZER...]: runs each fuzzer for so long, two at a time, from its seeds in tests/fuzz/corpus
# and what earlier runs found; with --address under the sanitizers. Ends with one line per fuzzer; status 1 when one found
# something, with the log that tells what.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=linux-i386-fuzz
if [ "${1:-}" = --address ]; then
    preset=linux-i386-fuzz-address
    shift
fi
seconds=${1:?how many seconds each fuzzer may take}
shift
fuzzers=("$@")
[ ${#fuzzers[@]} -gt 0 ] || fuzzers=(text_building host_string variant_graph property_list object_file)

tools/setup/configure.sh "$preset"
tools/build.sh "$preset" fuzzers
tree=$PWD/build/$preset

# The longest input that is worth trying: none of them needs more to reach everything.
longest() {
    case $1 in
    text_building | host_string) echo 64 ;;
    variant_graph) echo 96 ;;
    property_list) echo 160 ;;
    object_file) echo 900 ;;
    esac
}

run() {
    local fuzzer=$1 found=$tree/fuzz/$1
    mkdir -p "$found/corpus" "$found/findings"
    # Leaks are counted by the fuzzers themselves. The C++ library stands before the sanitizer's in a fuzzer, as the
    # compiler puts it there; it allocates with malloc, which is the sanitizer's all the same.
    # No answer within 20 seconds is a finding, too.
    status=0
    ASAN_OPTIONS=detect_leaks=0:verify_asan_link_order=0 "$tree/run-env" --fresh-defaults "$tree/${fuzzer}_fuzzer" \
        -max_total_time="$seconds" -max_len="$(longest "$fuzzer")" -timeout=20 -reload=0 -print_final_stats=1 \
        -artifact_prefix="$found/findings/" "$found/corpus" "tests/fuzz/corpus/$fuzzer" \
        >"$found/log" 2>&1 </dev/null || status=$?
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$found/log")
    if [ "$status" -eq 0 ]; then
        echo "$fuzzer: ${runs:-0} executions, nothing found"
    else
        echo "$fuzzer: ${runs:-0} executions, a finding: $found/log"
        return 1
    fi
}

failed=0
running=()
for fuzzer in "${fuzzers[@]}"; do
    run "$fuzzer" &
    running+=($!)
    if [ ${#running[@]} -eq 2 ]; then
        wait "${running[0]}" || failed=1
        running=("${running[1]}")
    fi
done
for process in "${running[@]}"; do
    wait "$process" || failed=1
done
exit "$failed"
