// The parts of the tour: host code with what it gives behind "->", or what it raises behind "!>", and commands of the
// system's defaults tool behind "$" with what they print, each line behind "|". Everything is run, and shown with what
// it really gave.
#pragma once

namespace plughost {

inline constexpr char kTourBasics[] = R"(# The defaults object
Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
NSUserDefaultsKTZ.standardUserDefaults Is d -> True
d.Constructor !> UnsupportedOperationException: Constructor called too often. Object is already initialized.
NSUserDefaultsKTZ.NSGlobalDomain -> "NSGlobalDomain"
NSUserDefaultsKTZ.NSArgumentDomain -> "NSArgumentDomain"
NSUserDefaultsKTZ.NSRegistrationDomain -> "NSRegistrationDomain"
NSUserDefaultsKTZ.NSUserDefaultsDidChangeNotification -> "NSUserDefaultsDidChangeNotification"
# Numbers and booleans
d.integerForKey("Runs") = 5
d.integerForKey("Lowest") = -2147483648
d.integerForKey("Runs") -> 5
d.integerForKey("Lowest") -> -2147483648
d.integerForKey("Missing") -> 0
d.floatForKey("Zoom") = 1.5
d.setFloatValue("Gain", 0.1)
d.floatForKey("Zoom") -> 1.5
d.floatForKey("Gain") -> 0.1
d.doubleForKey("Latitude") = 52.520008
d.setDoubleValue("Tiny", 1e-300)
d.doubleForKey("Latitude") -> 52.520008
d.doubleForKey("Tiny") -> 1e-300
d.boolForKey("Sound") = True
d.setBoolValue("Hints", False)
d.boolForKey("Sound") -> True
d.boolForKey("Hints") -> False
# Text and URLs
d.stringForKey("Title") = "Says ""hello"""
d.setStringValue("City", "Zürich")
d.stringForKey("Title") -> "Says ""hello"""
d.stringForKey("City") -> "Zürich"
d.URLForKey("Home") = "http://example.com/a?b=c"
d.setURLValue("Mail", "mailto:ada@example.com")
d.URLForKey("Home") -> "http://example.com/a?b=c"
d.URLForKey("Mail") -> "mailto:ada@example.com"
d.removeObjectForKey("Mail")
d.URLForKey("Mail") -> ""
# The same database, seen by the system's defaults tool
d.synchronize -> True
$ defaults read Tour Runs
|Tour Runs 5
$ defaults read Tour City
|Tour City Zürich
$ defaults read Tour Zoom
|Tour Zoom 1.5
$ defaults write Tour Visitor 'Ada Lovelace'
d.synchronize -> True
d.stringForKey("Visitor") -> "Ada Lovelace"
d.stringForKey("Greeting") = "grüß dich 👋"
d.synchronize -> True
d.stringForKey("Greeting") -> "grüß dich 👋"
$ defaults read Tour Greeting
|Tour Greeting 'grüß dich 👋'
)";

inline constexpr char kTourValues[] = R"(# A window's settings in a Dictionary
Dim w As New Dictionary
w.Value("title") = "Main"
w.Value("frame") = Array(40, 60, 800, 600)
w.Value("open") = True
d.dictionaryForKey("Window") = w
d.dictionaryForKey("Window") -> {"frame":[40,60,800,600],"open":true,"title":"Main"}
d.synchronize -> True
$ defaults read Tour Window
|Tour Window '{
|    frame = (
|	40,
|	60,
|	800,
|	600
|    );
|    open = 1;
|    title = Main;
|}'
# Bytes in a MemoryBlock
Dim m As New MemoryBlock(3)
m.Byte(0) = &h00
m.Byte(1) = &hff
m.Byte(2) = &h10
d.dataForKey("Signature") = m
d.dataForKey("Signature") -> MemoryBlock 00ff10
d.synchronize -> True
$ defaults read Tour Signature
|Tour Signature <00ff10>
# A file
d.fileForKey("Log") = GetFolderItem("/etc/hosts")
d.fileForKey("Log") -> FolderItem /etc/hosts
d.synchronize -> True
$ defaults read Tour Log
|Tour Log /etc/hosts
# Arrays
d.setStringArrayValue("Recent", Array("one.txt", "two words.txt"))
d.stringArrayForKey("Recent") -> ["one.txt","two words.txt"]
Dim noon As New Date(2012, 2, 29, 12, 0, 0)
d.setArrayValue("Mixed", Array(1, 0.5, "text", True, noon))
d.arrayForKey("Mixed") -> [1,0.5,"text",true,{"$date":"2012-02-29T12:00:00"}]
d.synchronize -> True
$ defaults read Tour Recent
|Tour Recent '(
|    "one.txt",
|    "two words.txt"
|)'
# Any value as a Variant
Dim noon As New Date(2012, 2, 29, 12, 0, 0)
d.variantForKey("LastRun") = noon
d.variantForKey("LastRun") -> Date 2012-02-29T12:00:00
d.variantForKey("Choice") = 7
d.variantForKey("Choice") -> 7
d.variantForKey("Missing") -> Nil
d.synchronize -> True
$ defaults read Tour LastRun
|Tour LastRun '2012-02-29 12:00:00 +0000'
$ defaults read Tour Choice
|Tour Choice 7
# A suite: values that several applications share
Dim s As New Dictionary
s.Value("Theme") = "dark"
d.setPersistentDomain(s, "TourSuite")
d.stringForKey("Theme") -> ""
d.addSuiteNamed("TourSuite")
d.stringForKey("Theme") -> "dark"
d.synchronize -> True
$ defaults read TourSuite Theme
|TourSuite Theme dark
d.removeSuiteNamed("TourSuite")
d.stringForKey("Theme") -> ""
# Registered defaults: used until something is stored, never written
Dim r As New Dictionary
r.Value("Columns") = 80
d.registerDefaults(r)
d.integerForKey("Columns") -> 80
d.synchronize -> True
$ defaults read Tour Columns
|defaults read: couldn't read default
d.integerForKey("Columns") = 132
d.integerForKey("Columns") -> 132
d.synchronize -> True
$ defaults read Tour Columns
|Tour Columns 132
# A volatile domain: gone when the program ends
Dim v As New Dictionary
v.Value("Started") = "just now"
d.setVolatileDomain(v, "TourSession")
d.volatileDomainForName("TourSession") -> {"Started":"just now"}
d.synchronize -> True
$ defaults read TourSession
d.removeVolatileDomainForName("TourSession")
d.volatileDomainForName("TourSession") -> Nil
# Everything at once
Dim own As Dictionary = d.persistentDomainForName("Tour")
own.Count = 8 -> True
$ defaults read Tour | grep -c '^Tour '
|8
own.HasKey("Window") -> True
own.HasKey("TourSession") -> False
Dim all As Dictionary = d.dictionaryRepresentation
' every domain of the search list in one Dictionary
all.Count > own.Count -> True
)";

} // namespace plughost
