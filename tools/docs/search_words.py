"""What people call things: a search for a word of a row finds what any other word of it stands in."""

GROUPS = [row.split() for row in """
    save store stores stored write writes keep keeps remember put set setter
    load read reads get gets getter fetch find found look gives retrieve
    delete deletes remove removes removed erase clear forget unset drop
    reset revert restore factory initial registered register registers default
    flush sync synchronise commit save write writes
    preferences preference prefs settings setting options option defaults database
    array arrays list lists
    dictionary dictionaries map hash record table
    text texts string strings
    data bytes binary blob picture image memoryblock
    number numbers integer int count counter whole
    real float single double decimal precision
    boolean booleans bool flag checkbox switch true false
    file files folder folders path folderitem
    url urls link address web
    date dates time
    colour colours color colors
    any anything whatever variant
    error errors exception exceptions catch fail fails raise raises refuses
    forced managed administrator admin mdm profile locked
    everybody everyone global all shared
    application app applications program programs bundle identifier
    argument arguments commandline command launch
    user account login
    notification notify observe observer event
    temporary volatile session memory
    suite suites group share common
    install installing download setup plugin dylib
    exists has contains missing
    type types kind convert conversion conversions becomes
""".strip().splitlines()]


def others(word):
    """The words that people use for this one, in alphabetical order."""
    return sorted({other for group in GROUPS if word in group for other in group} - {word})
