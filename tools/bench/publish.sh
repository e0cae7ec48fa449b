#!/usr/bin/env bash
# publish.sh [TREE]: puts what `make bench` has written into the pages on performance.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
written=$(cd "${1:-build/linux-i386}/bench" && pwd)
cp "$written/tables.md" docs/performance-tables.md
cp "$written/results.svg" docs/performance.svg
# The summary takes the place of the one between the two marks.
sed -i -e "/<!-- summary -->/r $written/summary.md" -e '/<!-- summary -->/,/<!-- end of summary -->/{/<!--/!d}' \
    docs/performance.md
