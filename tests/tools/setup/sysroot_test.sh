# The sysroot's making, against an apt-get that records its calls and serves one small package.

sysroot_sh=$SOURCE_DIR/tools/setup/sysroot.sh

use_empty_cache() {
    export XDG_CACHE_HOME=$scratch/cache
    expected=$("$sysroot_sh" --path)
}

# A package with what the set-up works on: the real sysroot's tools, the Objective-C headers in GCC's folder, a link
# to an absolute place, documentation.
make_package() {
    local tree=$scratch/package
    mkdir -p "$tree"/{DEBIAN,usr/bin,usr/lib,usr/share/doc/small} "$tree/usr/lib/gcc/i686-linux-gnu/12/include/objc" \
        "$tree/usr/include" "$tree/lib"
    printf '%s\n' 'Package: small' 'Version: 1' 'Architecture: i386' 'Maintainer: nobody' 'Description: small' \
        >"$tree/DEBIAN/control"
    cp "$SYSROOT"/usr/bin/* "$tree/usr/bin/"
    echo >"$tree/usr/bin/unneeded"
    echo '// objc' >"$tree/usr/lib/gcc/i686-linux-gnu/12/include/objc/objc.h"
    echo >"$tree/lib/libsmall.so.1"
    ln -s /lib/libsmall.so.1 "$tree/usr/lib/libsmall.so"
    echo >"$tree/usr/share/doc/small/README"
    dpkg-deb --root-owner-group --build "$tree" "$scratch/small.deb" >/dev/null
}

# An archive that needs no network. $1: shell text run when the packages are asked for.
use_local_archive() {
    make_package
    shadow apt-get <<EOF
for argument; do
    case \$argument in
    Dir::Cache=*) cache=\${argument#*=} ;;
    esac
done
case " \$* " in
*' --print-uris '*)
    release=\$(. /etc/os-release && echo "\$VERSION_CODENAME")
    echo "'file:/archive/dists/\$release/main/binary-amd64/Packages.xz' Packages 0"
    ;;
*' update '*) echo update >>"$scratch/calls" ;;
*' install '*)
    echo install >>"$scratch/calls"
    ${1:-:}
    cp "$scratch/small.deb" "\$cache/archives/"
    ;;
esac
EOF
}

FinishedSetUpTakesNoTimeAndNoNetwork()
{
    shadow apt-get <<<"echo called >>'$scratch/calls'; exit 100"
    local start=${EPOCHREALTIME/./}
    run "$SOURCE_DIR/tools/setup/setup.sh"
    local microseconds=$((${EPOCHREALTIME/./} - start))
    expect_equal "$status" 0
    expect_equal "$(cat out err)" ""
    expect_absent "$scratch/calls"
    [ "$microseconds" -lt 2000000 ] || fail "took $microseconds µs"
}

PackagesBecomeASysroot()
{
    use_empty_cache
    use_local_archive
    run "$sysroot_sh"
    expect_equal "$status$(cat out err)" 0
    expect_equal "$(cat "$expected/usr/include/objc/objc.h")" "// objc"
    expect_equal "$(readlink "$expected/usr/lib/libsmall.so")" ../../lib/libsmall.so.1
    expect_equal "$(patchelf --print-interpreter "$expected/usr/bin/defaults")" "$expected/lib/ld-linux.so.2"
    expect_absent "$expected/usr/bin/unneeded"
    expect_absent "$expected/usr/share/doc"
    expect_absent "$expected.work"
}

UnreachableArchiveGivesOneLine()
{
    use_empty_cache
    local real
    real=$(command -v apt-get)
    # Nothing listens on port 9 of this machine; given last, this wins over a proxy that the machine is set up with.
    shadow apt-get <<<"exec '$real' \"\$@\" -o Acquire::http::Proxy=http://127.0.0.1:9 \
        -o Acquire::https::Proxy=http://127.0.0.1:9 -o Acquire::Retries=0"
    run "$sysroot_sh"
    expect_equal "$status" 1
    expect_equal "$(cat out)" ""
    expect_equal "$(wc -l <err)" 1
    expect_matches "$(cat err)" '^sysroot.sh: cannot reach the package archive: .'
    expect_absent "$expected"
    expect_absent "$expected.work"
}

ReleaseWithoutArchiveGivesOneLine()
{
    use_empty_cache
    shadow apt-get <<<"echo \"'file:/archive/dists/elsewhere/main/binary-amd64/Packages.xz' Packages 0\""
    run "$sysroot_sh"
    expect_equal "$status" 1
    expect_equal "$(wc -l <err)" 1
    expect_matches "$(cat err)" '^sysroot.sh: apt on this machine knows no archive'
}

TerminatedSetUpLeavesNothingBehind()
{
    use_empty_cache
    use_local_archive "touch '$scratch/downloading'; sleep 50"
    setsid "$sysroot_sh" >out 2>err </dev/null &
    local group=$!
    until [ -e downloading ]; do sleep 0.05; done
    kill -TERM -- "-$group"
    status=0
    wait "$group" || status=$?
    expect_equal "$status" 143
    expect_absent "$expected"
    expect_absent "$expected.work"
}

KilledSetUpStartsAgainCleanly()
{
    use_empty_cache
    use_local_archive "if [ ! -e '$scratch/downloading' ]; then touch '$scratch/downloading'; sleep 50; fi"
    setsid "$sysroot_sh" >out 2>err </dev/null &
    local group=$!
    until [ -e downloading ]; do sleep 0.05; done
    touch "$expected.work/root/half-unpacked"
    kill -KILL -- "-$group"
    wait "$group" 2>/dev/null || true
    expect_absent "$expected"
    run "$sysroot_sh"
    expect_equal "$status$(cat out err)" 0
    [ -x "$expected/usr/bin/defaults" ] || fail "no sysroot after the second run"
    expect_absent "$expected/half-unpacked"
    expect_absent "$expected.work"
}

TwoSetUpsAtOnceMakeOneSysroot()
{
    use_empty_cache
    use_local_archive "sleep 0.3"
    "$sysroot_sh" &
    local first=$!
    "$sysroot_sh" &
    local second=$!
    wait "$first" || fail "the first one failed"
    wait "$second" || fail "the second one failed"
    expect_equal "$(cat calls)" $'update\ninstall'
    [ -d "$expected" ] || fail "no sysroot"
}

AnotherPackageListIsAnotherSysroot()
{
    cp -r "$SOURCE_DIR/tools/setup" setup
    echo 'hello   a package more' >>setup/sysroot-packages.txt
    [ "$(setup/sysroot.sh --path)" != "$("$sysroot_sh" --path)" ] || fail "the folder is the same"
    cp "$SOURCE_DIR/tools/setup/sysroot-packages.txt" setup/
    echo '# a remark more' >>setup/sysroot-packages.txt
    expect_equal "$(setup/sysroot.sh --path)" "$("$sysroot_sh" --path)"
}

WithoutHomeTheCacheIsTheUsersOwn()
{
    local home
    home=$(getent passwd "$(id -u)" | cut -d: -f6)
    expect_matches "$(env -u HOME -u XDG_CACHE_HOME "$sysroot_sh" --path)" "^$home/.cache/"
}

CacheFolderWithASpaceGivesOneLine()
{
    XDG_CACHE_HOME="$scratch/my cache" run "$sysroot_sh"
    expect_equal "$status" 1
    expect_equal "$(wc -l <err)" 1
    expect_matches "$(cat err)" 'has a space in it'
}
