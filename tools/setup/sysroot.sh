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
make_once sysroot "$sysroot" "$@"
mkdir -p "$work"/{state/lists/partial,cache/archives/partial,keys,root}
: >"$work/status"
log=$work/log

# Writes the sources list: the main component of the running release, wherever this machine gets it from. (Only the
# main suite: the others hold the same packages a few days newer, and their i386 index is at times out of step.)
find_archive() {
    local release
    release=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
    apt-get --print-uris update 2>/dev/null |
        sed -n "s|^'\(.*\)/dists/$release/main/binary-.*|deb \1 $release main|p" | sed 1q >"$work/sources.list"
    [ -s "$work/sources.list" ] || die "apt on this machine knows no archive for the release '$release'"
}

# Runs apt-get for i386 with everything it reads and writes in the work folder, except the machine's keys and proxies.
i386_apt() {
    apt-get -q \
        -o APT::Architecture=i386 -o APT::Architectures=i386 -o APT::Install-Recommends=false \
        -o APT::Sandbox::User="$(id -un)" -o Acquire::Retries=2 -o Acquire::Languages=none \
        -o Dir::State="$work/state" -o Dir::State::status="$work/status" -o Dir::Cache="$work/cache" \
        -o Dir::Etc::sourcelist="$work/sources.list" -o Dir::Etc::sourceparts=/dev/null \
        -o Dir::Etc::trustedparts="$work/keys" "$@" </dev/null
}

gather_keys() {
    local key
    for key in /usr/share/keyrings/*.gpg /etc/apt/keyrings/* /etc/apt/trusted.gpg.d/*; do
        if [ -r "$key" ]; then
            ln -sf "$key" "$work/keys/"
        fi
    done
}

# Turns apt's status lines (dlstatus:FILE:PERCENT:TEXT) into progress.
show_download() {
    local kind percent
    while IFS=: read -r kind _ percent _; do
        if [ "$kind" = dlstatus ]; then
            progress "sysroot: downloading, ${percent%%.*} %"
        fi
    done
}

download() {
    progress "sysroot: reading the package index"
    i386_apt --error-on=any update >"$log" 2>&1 || die "cannot reach the package archive: $(apt_reason "$log")"
    # shellcheck disable=SC2086  # one word per package
    i386_apt -y --download-only -o APT::Status-Fd=3 install $packages 3> >(show_download) >"$log" 2>&1 ||
        die "cannot download the packages: $(apt_reason "$log")"
}

# Nothing here compiles, links or runs with these.
unwanted=(
    './usr/share/doc' './usr/share/man' './usr/share/info' './usr/share/locale' './usr/share/lintian'
    './usr/share/perl*' './usr/share/fonts' './usr/share/pixmaps' './usr/share/sounds' './usr/share/alsa'
    './usr/lib/aspell' './usr/lib/bfd-plugins' './usr/lib/compat-ld' './usr/lib/gold-ld' './usr/lib64' './usr/libexec'
    './usr/lib/i386-linux-gnu/perl*' './lib/systemd' './bin' './sbin' './usr/sbin' './var'
    './usr/lib/gcc/*/12/cc1*' './usr/lib/gcc/*/12/lto*' './usr/lib/gcc/*/12/g++-mapper-server'
    './usr/lib/gcc/*/12/plugin' './usr/lib/libgnustep-*.a'
)
tools=(defaults plutil pldes plget plmerge plparse plser)

unpack() {
    local deb count=0 total
    total=$(find "$work/cache/archives" -name '*.deb' | wc -l)
    for deb in "$work"/cache/archives/*.deb; do
        count=$((count + 1))
        progress "sysroot: unpacking $count of $total"
        dpkg-deb --fsys-tarfile "$deb" | tar -x -C "$work/root" --no-same-owner "${unwanted[@]/#/--exclude=}"
        rm "$deb"
    done
}

# Makes the unpacked packages usable where they are.
arrange() {
    local root=$work/root link keep=() tool
    # No link points out of the folder.
    find "$root" -type l -lname '/*' -print0 | while IFS= read -r -d '' link; do
        ln -sfnr "$root$(readlink "$link")" "$link"
    done
    # The Objective-C headers without GCC's own compiler headers, which stand in the same folder.
    ln -s ../lib/gcc/i686-linux-gnu/12/include/objc "$root/usr/include/objc"
    # GNUstep's tools run as they are: they name a loader and libraries that this machine need not have.
    for tool in "${tools[@]}"; do
        keep+=(! -name "$tool")
    done
    find "$root/usr/bin" -mindepth 1 "${keep[@]}" -delete
    patchelf --set-interpreter "$sysroot/lib/ld-linux.so.2" --force-rpath \
        --set-rpath "$sysroot/usr/lib:$sysroot/lib/i386-linux-gnu:$sysroot/usr/lib/i386-linux-gnu" \
        "${tools[@]/#/$root/usr/bin/}"
}

find_archive
gather_keys
download
unpack
arrange
mv -T "$work/root" "$sysroot"
