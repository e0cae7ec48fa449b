#!/usr/bin/env bash
# make-package.sh: makes dist/NSUserDefaults-VERSION.zip of the macOS file (`make macos`), the reference, the examples and
# the texts for users.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
tools/docs/make-site.sh >/dev/null
/usr/bin/python3 tools/package/package.py make build/macos-i386/NSUserDefaults.dylib build/docs/site dist
