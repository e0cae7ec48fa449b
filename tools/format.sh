#!/usr/bin/env bash
# format.sh          formats every source file of ours
# format.sh --check  changes nothing; status 1 when a file would change, naming the places
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mode=(-i)
if [ "${1:-}" = --check ]; then
    mode=(--dry-run -Werror)
fi
find . \( -path ./build -o -path ./dist -o -path ./.git \) -prune -o -type f \
    \( -name '*.h' -o -name '*.c' -o -name '*.cpp' -o -name '*.m' -o -name '*.mm' \) -print0 |
    xargs -0 --no-run-if-empty clang-format-14 --style=file "${mode[@]}"
