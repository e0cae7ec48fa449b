#!/usr/bin/env bash
# sysroot.sh          makes the 32-bit sysroot in the user's cache, unless it is there already
# sysroot.sh --path   prints the folder it is in, or will be in, and makes nothing
#
# GNUstep's i386 packages cannot be installed next to the amd64 ones, so they are downloaded by an apt with a state of
# its own and unpacked into one folder; no root is needed. The archive is the one this machine's apt is set up with.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/common.sh"

# Goes up when this script makes something else out of the same packages.
layout=2

packages=$(sed -e 's/#.*//' "$here/sysroot-packages.txt" | awk 'NF { print $1 }' | sort)
key=$(printf '%s\n' "layout $layout" "$packages" | sha256sum | cut -c1-12)
sysroot=$(cache_dir)/sysroot-$key

if [ "${1:-}" = --path ]; then
    echo "$sysroot"
    exit 0
fi
if [ -d "$sysroot" ]; then
    exit 0
fi

mkdir -p "$(dirname "$sysroot")"
work=$(mktemp -d "$sysroot.XXXXXX")
trap 'progress_done; rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP
mkdir -p "$work"/state/lists/partial "$work"/cache/archives/partial "$work"/root
: >"$work/status"
log=$work/log

# Writes the sources list: the main component of the running release, wherever this machine gets it from.
find_archive() {
    . /etc/os-release
    apt-get indextargets --format '$(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk -v release="$VERSION_CODENAME" \
            '$2 == release && $3 == "main" && !found { print "deb " $1 " " $2 " main"; found = 1 }' >"$work/sources.list"
    [ -s "$work/sources.list" ] || die "apt on this machine knows no archive for $VERSION_CODENAME main"
}

configure_apt() {
    cat >"$work/apt.conf" <<EOF
APT::Architecture "i386";
APT::Architectures "i386";
APT::Install-Recommends "false";
APT::Sandbox::User "root";
Acquire::Retries "2";
Dir::State "$work/state";
Dir::State::status "$work/status";
Dir::Cache "$work/cache";
Dir::Etc::sourcelist "$work/sources.list";
Dir::Etc::sourceparts "/dev/null";
Dir::Etc::trustedparts "/usr/share/keyrings";
EOF
    export APT_CONFIG=$work/apt.conf
}

download() {
    progress "sysroot: reading the package index"
    apt-get -q --error-on=any update >"$log" 2>&1 || die "cannot reach the package archive: $(reason)"
    progress "sysroot: downloading"
    # shellcheck disable=SC2086  # one word per package
    apt-get -q -y --download-only install $packages >"$log" 2>&1 || die "cannot download the packages: $(reason)"
}

reason() {
    grep -m1 '^[EW]:' "$log" | sed 's/^[EW]: *//' || echo "apt-get gave no reason"
}

unpack() {
    local deb count=0 total
    total=$(find "$work/cache/archives" -name '*.deb' | wc -l)
    for deb in "$work"/cache/archives/*.deb; do
        count=$((count + 1))
        progress "sysroot: unpacking $count of $total"
        dpkg-deb -x "$deb" "$work/root"
    done
}

# Makes the unpacked packages usable where they are: no link points out of the folder, and the Objective-C headers are
# reachable without GCC's own compiler headers beside them.
arrange() {
    local root=$work/root link target
    find "$root" -type l -lname '/*' -print0 | while IFS= read -r -d '' link; do
        target=$(readlink "$link")
        ln -sfnr "$root$target" "$link"
    done
    ln -s ../lib/gcc/i686-linux-gnu/12/include/objc "$root/usr/include/objc"
    # The tools name a loader that this machine need not have.
    patchelf --set-interpreter "$sysroot/lib/ld-linux.so.2" --force-rpath \
        --set-rpath "$sysroot/usr/lib:$sysroot/lib/i386-linux-gnu:$sysroot/usr/lib/i386-linux-gnu" \
        "$root"/usr/bin/{defaults,plutil,pldes,plget,plmerge,plparse,plser}
}

# Nothing here compiles, links or runs with these.
prune() {
    (
        cd "$work/root"
        rm -rf usr/share/{doc,man,info,locale,lintian,perl,perl5,fonts,pixmaps,sounds,alsa,ca-certificates,bug} \
            usr/lib/{aspell,bfd-plugins,compat-ld,gold-ld} usr/lib64 usr/sbin sbin bin lib/systemd var \
            usr/lib/gcc/i686-linux-gnu/12/{cc1,cc1plus,cc1obj,cc1objplus,lto1,lto-wrapper,g++-mapper-server,plugin} \
            usr/lib/libgnustep-{base,gui}.a
        find usr/bin -mindepth 1 ! -name defaults ! -name plutil ! -name pldes ! -name plget ! -name plmerge \
            ! -name plparse ! -name plser -delete
    )
}

find_archive
configure_apt
download
unpack
arrange
prune

# Another set-up may have finished first; its result is as good as this one.
mv -T "$work/root" "$sysroot" 2>/dev/null || [ -d "$sysroot" ] || die "cannot move the finished sysroot to $sysroot"
