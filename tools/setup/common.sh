# Shared by the set-up scripts; sourced, never run.

# Where finished downloads live between builds. HOME may be unset (a bare CI container): the user's entry in the
# password database says where it would be.
cache_dir() {
    home=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}
    echo "${XDG_CACHE_HOME:-${home:-/tmp}/.cache}/nsuserdefaults-plugin"
}

# Prints one line on stderr and ends the script with status 1.
die() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# Progress is for people: on a terminal the line is rewritten in place, anywhere else nothing is printed.
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
