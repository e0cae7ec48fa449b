#!/usr/bin/env bash
# run.sh check [TREE]  counts instructions and heap blocks of the cases that the budgets look at, at sizes that callgrind
#                      manages quickly; status 1 when a budget of bench/budgets.json is missed
# run.sh full [TREE]   all cases and sizes, times and the comparison with other ways, too; writes results.json and .svg,
#                      summary.md and tables.md into TREE/bench
#
# Both count both files of the plug-in: the Linux one and, through the loader in tools/machorun, the macOS one.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
extent=$1
tree=$(cd "${2:-build/linux-i386}" && pwd)
results=$tree/bench/$extent
here=$PWD
rm -rf "$results"
mkdir -p "$results/linux" "$results/macos"

configurations=("2013.03" "2013.03, no CFString" "2014.1" "2011.4" "2011.4, CFString" "2013.03, no wrapper")
cases=
[ "$extent" = full ] || cases=$("$tree/bench_report" --judged bench/budgets.json)

plugin() {
    case $1 in
    linux) echo "$tree/NSUserDefaults.so" ;;
    macos) echo "$here/build/macos-i386/NSUserDefaults.dylib" ;;
    esac
}

# Every symbol is bound at the start, so that the loader's work is not counted as anybody's. Prints only what is wrong.
count() {
    local log="$results/$1/log-$2"
    PLUGIN_UNDER_TEST=$(plugin "$1") LD_BIND_NOW=1 "$tree/run-env" --fresh-defaults valgrind -q --tool=callgrind \
        --instr-atstart=no --collect-atstart=no --combine-dumps=yes --dump-line=no \
        --callgrind-out-file="$results/$1/counts-$2.out" "$tree/bench_counts" "$2" "$cases" 2>"$log" ||
        { cat "$log" >&2 && return 1; }
}

weigh() {
    PLUGIN_UNDER_TEST=$(plugin "$1") "$tree/run-env" --fresh-defaults "$tree/bench_memory" "$2" "$extent" \
        >"$results/$1/memory-$2.json"
}

# The files beside each other, one on each core.
running=()
for file in linux macos; do
    (for configuration in "${configurations[@]}"; do
        count "$file" "$configuration"
        weigh "$file" "$configuration"
    done) &
    running+=($!)
done
for job in "${running[@]}"; do wait "$job"; done

if [ "$extent" = check ]; then
    "$tree/bench_report" "$results" bench/budgets.json --brief
    exit
fi

"$tree/run-env" --fresh-defaults "$tree/bench_times" "${configurations[0]}" full --benchmark_min_time=0.05 \
    --benchmark_out="$results/linux/times-${configurations[0]}.json" --benchmark_out_format=json \
    >"$results/log-times" 2>&1 ||
    { cat "$results/log-times" >&2 && exit 1; }
"$here/tools/bench/other-ways.sh" "$tree" "$results/comparison.json"
status=0
"$tree/bench_report" "$results" bench/budgets.json --json "$tree/bench/results.json" --svg "$tree/bench/results.svg" \
    --pages "$tree/bench" ||
    status=$?
echo
echo "written: results.json, results.svg, summary.md and tables.md in $tree/bench"
exit "$status"
