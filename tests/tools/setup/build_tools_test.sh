# Which tools are installed, and what is said when they cannot be. Nothing is ever installed here: apt-get is replaced.

# A copy of the scripts that wants one tool which no machine has.
want_missing_tool() {
    cp -r "$SOURCE_DIR/tools/setup" setup
    echo 'no-such-command  no-such-package  a test' >>setup/build-tools.txt
    chmod -R a+rX "$scratch"
}

# Runs the script as a user who is not root, whoever runs the test.
run_as_user() {
    if [ "$(id -u)" -eq 0 ]; then
        run setpriv --reuid=65534 --regid=65534 --clear-groups setup/build-tools.sh "$@"
    else
        run setup/build-tools.sh "$@"
    fi
}

WithoutRootTheOneCommandIsPrinted()
{
    want_missing_tool
    shadow sudo <<<"exit 1"
    run_as_user
    expect_equal "$status" 1
    expect_equal "$(cat out)" ""
    expect_equal "$(cat err)" "build-tools.sh: build tools are missing; run: sudo apt-get update && \
sudo apt-get install --no-install-recommends no-such-package"
}

AnotherListCanBeNamed()
{
    want_missing_tool
    echo 'another-missing-command  another-package  a test' >other-tools.txt
    chmod a+r other-tools.txt
    shadow sudo <<<"exit 1"
    run_as_user other-tools.txt
    expect_equal "$status" 1
    expect_matches "$(cat err)" "install --no-install-recommends another-package\$"
}

WithSudoTheMissingToolsAreInstalled()
{
    unset DEBIAN_FRONTEND
    want_missing_tool
    shadow sudo <<<'shift; exec "$@"'
    touch calls
    chmod a+w calls
    shadow apt-get <<<"echo \"\$DEBIAN_FRONTEND \$*\" >>'$scratch/calls'"
    run_as_user
    expect_equal "$status$(cat out err)" 0
    expect_equal "$(cat calls)" "noninteractive -q -y --error-on=any update
noninteractive -q -y --no-install-recommends install no-such-package"
}

FailedInstallationGivesOneLine()
{
    want_missing_tool
    shadow sudo <<<'shift; exec "$@"'
    shadow apt-get <<<'
case " $* " in
*" update "*) echo "W: a warning about something else"; exit 0 ;;
esac
echo "Reading package lists..."
echo "E: Unable to locate package no-such-package"
exit 100'
    run_as_user
    expect_equal "$status" 1
    expect_equal "$(cat err)" "build-tools.sh: cannot install no-such-package: Unable to locate package no-such-package"
}

UnreachableArchiveIsTheReasonGiven()
{
    want_missing_tool
    shadow sudo <<<'shift; exec "$@"'
    shadow apt-get <<<'
case " $* " in
*" update "*) echo "E: Failed to fetch the index"; exit 100 ;;
esac
echo "E: Unable to locate package no-such-package"
exit 100'
    run_as_user
    expect_equal "$status" 1
    expect_equal "$(cat err)" "build-tools.sh: cannot install no-such-package: Failed to fetch the index"
}
