#!/usr/bin/env bash
# setup.sh: everything a build needs that a checkout does not bring: build tools, the 32-bit sysroot, the macOS headers.
# Once done it costs a few milliseconds and no network.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
"$here/build-tools.sh"
"$here/sysroot.sh"
"$here/macos-headers.sh"
