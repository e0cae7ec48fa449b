#!/usr/bin/env bash
# build.sh PRESET TARGET...: builds. On a terminal one line tells how far it is; elsewhere only what fails is shown.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
build=(cmake --build --preset "$preset" --target "$@")
[ ! -t 1 ] || exec "${build[@]}"
"${build[@]}" -- --quiet | sed '/^ninja: no work to do\.$/d'
