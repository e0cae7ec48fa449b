# The environment in which programs of the build run.

run_env=$BUILD_DIR/run-env

StatusOfTheCommandIsPassedOn()
{
    run "$run_env" --fresh-defaults sh -c 'exit 7'
    expect_equal "$status" 7
    run "$run_env" sh -c 'exit 6'
    expect_equal "$status" 6
}

FreshDefaultsAreGoneAfterwards()
{
    run "$run_env" --fresh-defaults sh -c 'defaults=$1; "$defaults" write App Key Value &&
        "$defaults" read App Key; dirname "$GNUSTEP_CONFIG_FILE"' sh "$SYSROOT/usr/bin/defaults"
    expect_equal "$status" 0
    expect_equal "$(head -n 1 out)" "App Key Value"
    expect_absent "$(tail -n 1 out)"
    run "$run_env" --fresh-defaults defaults read App Key
    expect_equal "$(grep -c Value out)" 0
}

NamedDefaultsFolderKeepsWhatWasWritten()
{
    run "$run_env" --defaults-dir "my & own | folder" defaults write App Key 'grüß dich'
    expect_equal "$status$(cat err)" 0
    [ -f "my & own | folder/App.plist" ] || fail "nothing was written to the folder"
    run "$run_env" --defaults-dir "my & own | folder" defaults read App Key
    expect_equal "$(cat out)" "App Key 'grüß dich'"
}

PrivateConfigurationIsForTheUserOnly()
{
    umask 000
    run "$run_env" --defaults-dir here sh -c 'stat -c %a "$GNUSTEP_CONFIG_FILE"'
    expect_equal "$(cat out)" 600
}

SharedConfigurationCannotBeWrittenByOthers()
{
    run "$run_env" sh -c 'stat -c %a "$GNUSTEP_CONFIG_FILE"'
    expect_equal "$(cat out)" 644
}

WithoutACommandTheUsageIsPrinted()
{
    run "$run_env" --fresh-defaults
    expect_equal "$status" 2
    expect_matches "$(cat err)" '^usage: run-env '
}
