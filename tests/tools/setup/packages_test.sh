# Every package that set-up installs is there for something in this checkout.

# Whether any file of the checkout but the lists themselves names it.
named() {
    grep -rqF --exclude-dir=.git --exclude-dir=build --exclude-dir=dist --exclude='*-packages.txt' --exclude='*-tools.txt' \
        -e "$1" "$SOURCE_DIR"
}

rows() {
    grep -Ev '^[[:space:]]*(#|$)' "$SOURCE_DIR/tools/setup/$1"
}

EveryPackageOfTheSysrootIsUsed()
{
    while read -r package use _; do
        named "$use" || fail "$package: nothing names $use"
    done < <(rows sysroot-packages.txt)
}

EveryBuildToolIsUsed()
{
    while read -r tool package _; do
        case $tool in
        /*) ;; # what a package puts there is used by other tools
        *) named "$tool" || fail "$package: nothing names $tool" ;;
        esac
    done < <(rows build-tools.txt)
}

APackageThatNothingNamesIsFound()
{
    local unused=no-such
    unused+=-header.h
    ! named "$unused"
}
