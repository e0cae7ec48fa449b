#!/usr/bin/env bash
# build-tools.sh [LIST]: installs the build tools of the list (build-tools.txt) that this machine lacks, as root or with
# a sudo that asks nothing; anyone else is told the one command to run.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/common.sh"
list=${1:-$here/build-tools.txt}

missing=()
while read -r needed package _; do
    case $needed in
    "" | "#"*) ;;
    /*) [ -e "$needed" ] || missing+=("$package") ;;
    *) command -v "$needed" >/dev/null || missing+=("$package") ;;
    esac
done <"$list"
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null || ! sudo -n true 2>/dev/null; then
        die "build tools are missing; run: sudo apt-get update && sudo apt-get install --no-install-recommends ${missing[*]}"
    fi
    as_root=(sudo -n)
fi

log=$(mktemp)
trap 'progress_done; rm -f "$log"' EXIT

# Runs apt-get without questions; what it says is shown only when it fails.
run_apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y "$@" </dev/null >"$log" 2>&1
}

progress "build tools: reading the package index"
update_problem=
run_apt --error-on=any update || update_problem=$(apt_reason "$log")
# An index that could not be read matters only when a package cannot be had because of it.
progress "build tools: installing ${missing[*]}"
run_apt --no-install-recommends install "${missing[@]}" ||
    die "cannot install ${missing[*]}: ${update_problem:-$(apt_reason "$log")}"
