# shellcheck shell=bash
# Shared by the set-up scripts; sourced, never run.

# Prints one line on stderr and ends the script with status 1.
die() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# Where finished downloads live between builds. HOME may be unset (a bare container): the password database then says
# where it would be.
cache_dir() {
    local base=${XDG_CACHE_HOME:-} home=${HOME:-}
    if [ "${base#/}" = "$base" ]; then
        home=${home:-$(getent passwd "$(id -u)" | cut -d: -f6)}
        base=${home:-/tmp}/.cache
    fi
    case $base in
    *[[:space:]]*) die "the cache folder's path has a space in it ($base): set XDG_CACHE_HOME to one without" ;;
    esac
    echo "$base/nsuserdefaults-plugin"
}

# Sees to it that a folder of the cache is made once: make_once WHAT FOLDER ARGUMENT..., where the arguments are those of
# the script, --path or none. Ends the script with its answer, or when the folder is there. Otherwise it comes back, in
# one set-up at a time (a second one waits and then finds the folder made), with an empty folder $work that goes with the
# script.
make_once() {
    local what=$1 folder=$2
    shift 2
    case $* in
    '') ;;
    --path)
        echo "$folder"
        exit 0
        ;;
    *)
        echo "usage: $(basename "$0") [--path]" >&2
        exit 2
        ;;
    esac
    if [ -d "$folder" ]; then
        exit 0
    fi
    mkdir -p "$(dirname "$folder")"
    exec 9>"$folder.lock"
    if ! flock -n 9; then
        progress "$what: waiting for another set-up to finish"
        flock 9
        progress_done
    fi
    if [ -d "$folder" ]; then
        exit 0
    fi
    work=$folder.work
    rm -rf "$work" # left over from a set-up that was interrupted
    trap 'progress_done; rm -rf "$work"' EXIT
    mkdir "$work"
}

# Progress is for people: on a terminal one line is rewritten in place, anywhere else nothing is printed.
progress() {
    if [ -t 2 ]; then
        printf '\r\033[K%s' "$*" >&2
    fi
}

progress_done() {
    if [ -t 2 ]; then
        printf '\r\033[K' >&2
    fi
}

# The first complaint in what apt-get said: apt_reason LOG.
apt_reason() {
    local line
    line=$(grep -m1 '^[EW]: ' "$1") || line="apt-get gave no reason"
    echo "${line#[EW]: }"
}
