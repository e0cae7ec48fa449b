# Which build trees are configured anew.

# A checkout of one file, with the scripts and a preset named "small".
make_checkout() {
    mkdir -p "$1/tools/setup"
    cp "$SOURCE_DIR"/tools/setup/configure.sh "$SOURCE_DIR"/tools/setup/common.sh "$1/tools/setup/"
    printf '#!/bin/sh\necho /the/sysroot\n' >"$1/tools/setup/sysroot.sh"
    chmod +x "$1/tools/setup/sysroot.sh"
    cat >"$1/CMakeLists.txt" <<'EOF'
cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES NONE)
file(WRITE "${PROJECT_BINARY_DIR}/sysroot-path" "/the/sysroot\n")
add_custom_target(source_folder ALL COMMAND echo "built from ${PROJECT_SOURCE_DIR}")
EOF
    cat >"$1/CMakePresets.json" <<'EOF'
{
  "version": 5,
  "configurePresets": [ { "name": "small", "generator": "Ninja", "binaryDir": "${sourceDir}/build/small" } ],
  "buildPresets": [ { "name": "small", "configurePreset": "small" } ]
}
EOF
}

# What a checkout builds after it was configured.
built_by() {
    (cd "$1" && tools/setup/configure.sh small >/dev/null && cmake --build --preset small) | grep -o 'built from .*'
}

ATreeThatIsUpToDateIsLeftAlone()
{
    make_checkout one
    built_by one >/dev/null
    run one/tools/setup/configure.sh small
    expect_equal "$status$(cat out err)" 0
}

ACopiedCheckoutBuildsItsOwnSources()
{
    make_checkout one
    expect_equal "$(built_by one)" "built from $PWD/one"
    cp -r one two
    expect_equal "$(built_by two)" "built from $PWD/two"
    expect_equal "$(built_by one)" "built from $PWD/one"
}

AMovedCheckoutBuildsItsOwnSources()
{
    make_checkout one
    built_by one >/dev/null
    touch one/build/small/left-behind
    mv one two
    expect_equal "$(built_by two)" "built from $PWD/two"
    expect_absent two/build/small/left-behind
}
