# The folder of macOS headers, against an npm that serves a small package or none.

macos_headers_sh=$SOURCE_DIR/tools/setup/macos-headers.sh

use_empty_cache() {
    export XDG_CACHE_HOME=$scratch/cache
    expected=$("$macos_headers_sh" --path)
}

# A copy of the script that wants the small package, whose checksum is $1.
want_small_package() {
    mkdir setup
    cp "$SOURCE_DIR/tools/setup/common.sh" setup/
    sed "s/^checksum=[0-9a-f]*/checksum=$1/" "$macos_headers_sh" >setup/macos-headers.sh
    chmod +x setup/macos-headers.sh
}

# An npm whose `pack` leaves a package with what is kept of the real one, and with more.
serve_small_package() {
    local tree=$scratch/package
    mkdir -p "$tree/lib/libc/include/any-macos-any/objc" "$tree/lib/libcxx/include" "$tree/lib/std"
    echo '// string' >"$tree/lib/libc/include/any-macos-any/string.h"
    echo '// objc' >"$tree/lib/libc/include/any-macos-any/objc/objc.h"
    echo '// vector' >"$tree/lib/libcxx/include/vector"
    echo 'licence' >"$tree/lib/libcxx/LICENSE.TXT"
    echo >"$tree/lib/std/unneeded"
    tar -czf small.tgz package
    shadow npm <<<"echo \"\$*\" >>'$scratch/calls'; cp '$scratch/small.tgz' package.tgz; echo package.tgz"
}

FinishedSetUpTakesNoNetwork()
{
    use_empty_cache
    mkdir -p "$expected"
    shadow npm <<<"echo called >>'$scratch/calls'; exit 1"
    run "$macos_headers_sh"
    expect_equal "$status$(cat out err)" 0
    expect_absent "$scratch/calls"
}

OnlyTheHeadersAreKept()
{
    use_empty_cache
    serve_small_package
    want_small_package "$(sha512sum small.tgz | cut -d ' ' -f 1)"
    run setup/macos-headers.sh
    expect_equal "$status$(cat out err)" 0
    expect_equal "$(cd "$expected" && find . -type f | sort)" "./libc/include/any-macos-any/string.h
./libcxx/LICENSE.TXT
./libcxx/include/vector"
    expect_absent "$expected.work"
    expect_matches "$(cat calls)" '^pack @[a-z-]+/[a-z0-9-]+@[0-9][^ ]+ '
}

UnreachableRegistryGivesOneLine()
{
    use_empty_cache
    export npm_config_registry=http://127.0.0.1:9/ npm_config_fetch_retry_mintimeout=1
    run "$macos_headers_sh"
    expect_equal "$status$(cat out)" 1
    expect_matches "$(cat err)" '^macos-headers\.sh: cannot download [^[:cntrl:]]*: ECONNREFUSED$'
    expect_absent "$expected"
    expect_absent "$expected.work"
}

AnotherFileThanTheOneAskedForIsRefused()
{
    use_empty_cache
    serve_small_package
    run "$macos_headers_sh"
    expect_equal "$status$(cat out)" 1
    expect_matches "$(cat err)" '^macos-headers\.sh: what the registry sent as [^[:cntrl:]]* its checksum differs$'
    expect_absent "$expected"
    expect_absent "$expected.work"
}

MissingNpmGivesTheOneCommand()
{
    use_empty_cache
    mkdir -p bin
    local tool
    for tool in bash env dirname basename getent mkdir rm flock cut; do
        ln -sf "$(command -v $tool)" bin/
    done
    PATH=$scratch/bin run "$macos_headers_sh"
    expect_equal "$status$(cat out)" 1
    expect_equal "$(cat err)" \
        "macos-headers.sh: npm is missing; run: sudo apt-get install --no-install-recommends npm"
}
