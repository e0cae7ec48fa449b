#!/usr/bin/env bash
# make-site.sh [FOLDER]: makes the reference as a static site in FOLDER (build/docs/site), which can be read from disk.
# Anything that the generator complains about, such as a dead link, is an error.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
site=$(realpath -m "${1:-$root/build/docs/site}")
work=$root/build/docs

"$root/tools/setup/build-tools.sh" "$root/tools/setup/docs-tools.txt"
mkdir -p "$work"
/usr/bin/python3 -B "$here/pages.py" "$work/pages"
rm -rf "$site" "$work/doctrees"
# The same pages give the same bytes, whenever and wherever they are made.
(cd "$work/pages" && PYTHONHASHSEED=0 SOURCE_DATE_EPOCH=315532800 LC_ALL=C.UTF-8 TZ=UTC \
    /usr/bin/sphinx-build -q -n -W --keep-going -b html -c "$here" -d "$work/doctrees" . "$site") </dev/null
rm -rf "$site/.buildinfo" "$site/objects.inv" "$work/doctrees"
# What Sphinx puts beside every site and no page of this one uses; the search is the theme's own.
rm -f "$site/searchindex.js"
(cd "$site/_static" && rm -f jquery.js underscore.js _sphinx_javascript_frameworks_compat.js file.png minus.png plus.png \
    doctools.js documentation_options.js language_data.js searchtools.js sphinx_highlight.js)
/usr/bin/python3 -B "$here/search_data.py" >"$site/_static/search_data.js"
/usr/bin/python3 -B "$here/check_site.py" "$site"
echo "$site/index.html"
