#!/usr/bin/env bash
# demo.sh [macos]: the tour on an old and on a newer host, in a defaults database of its own; with `macos` the plug-in's
# macOS binary is the one that is loaded. Ends with status 1 when anything is not as expected.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

case ${1:-} in
"") plugin=build/linux-i386/NSUserDefaults.so ;;
macos) plugin=build/macos-i386/NSUserDefaults.dylib ;;
*)
    echo "demo.sh: PLUGIN can be macos, not \"$1\"" >&2
    exit 2
    ;;
esac
if [ ! -e "$plugin" ]; then
    echo "demo.sh: $plugin has not been built" >&2
    exit 1
fi

databases=$(mktemp -d)
trap 'rm -rf "$databases"' EXIT
export GNUSTEP_TZ=UTC # the tour shows dates

tour() {
    build/linux-i386/plughost tour "$@" --plugin "$plugin" --check-handles
}

tour basics --host 2011.4 --defaults-dir "$databases/2011.4"
echo
tour basics --host 2013.03 --defaults-dir "$databases/2013.03"
echo
tour values --host 2013.03 --defaults-dir "$databases/values"
echo
echo "Everything is as expected."
