#!/usr/bin/env bash
# run.sh check [TREE]  counts instructions and heap blocks at sizes that callgrind manages quickly; status 1 when a budget
#                      of bench/budgets.json is missed
# run.sh full [TREE]   all sizes, times and the comparison with other ways, too; writes TREE/bench/results.json and .svg
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
extent=$1
tree=$(cd "${2:-build/linux-i386}" && pwd)
results=$tree/bench/$extent
here=$PWD
rm -rf "$results"
mkdir -p "$results"

configurations=("2013.03" "2013.03, no CFString" "2014.1" "2011.4" "2011.4, CFString" "2013.03, no wrapper")

# Every symbol is bound at the start, so that the loader's work is not counted as anybody's. Prints only what is wrong.
count() {
    LD_BIND_NOW=1 "$tree/run-env" --fresh-defaults valgrind -q --tool=callgrind --collect-atstart=no \
        --combine-dumps=yes --dump-line=no --callgrind-out-file="$results/counts-$1.out" \
        "$tree/bench_counts" "$1" "$extent" 2>"$results/log-$1" ||
        { cat "$results/log-$1" >&2 && return 1; }
}

weigh() {
    "$tree/run-env" --fresh-defaults "$tree/bench_memory" "$1" "$extent" >"$results/memory-$1.json"
}

# The first configuration has most of the cases: it runs beside all the others.
running=()
(count "${configurations[0]}") &
running+=($!)
(for configuration in "${configurations[@]:1}"; do count "$configuration"; done) &
running+=($!)
for job in "${running[@]}"; do wait "$job"; done
for configuration in "${configurations[@]}"; do weigh "$configuration"; done

if [ "$extent" = check ]; then
    "$tree/bench_report" "$results" bench/budgets.json --brief
    exit
fi

for configuration in "${configurations[@]}"; do
    "$tree/run-env" --fresh-defaults "$tree/bench_times" "$configuration" full --benchmark_min_time=0.05 \
        --benchmark_out="$results/times-$configuration.json" --benchmark_out_format=json >"$results/log-times" 2>&1 ||
        { cat "$results/log-times" >&2 && exit 1; }
done
"$here/tools/bench/other-ways.sh" "$tree" "$results/comparison.json"
status=0
"$tree/bench_report" "$results" bench/budgets.json --json "$tree/bench/results.json" --svg "$tree/bench/results.svg" \
    --markdown "$tree/bench/results.md" ||
    status=$?
echo
echo "written: $tree/bench/results.json, .svg and .md"
exit "$status"
