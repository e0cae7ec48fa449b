#!/usr/bin/env bash
# build.sh PRESET TARGET...: builds. On a terminal one line tells how far it is; elsewhere only what fails is shown.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
quiet=()
[ -t 1 ] || quiet=(-- --quiet)
exec cmake --build --preset "$preset" --target "$@" "${quiet[@]}"
