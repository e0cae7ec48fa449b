' Two applications of one maker share settings in a suite. The editor writes them; 2-viewer reads them.

Dim suite As New Dictionary
suite.Value("Theme") = "dark"
suite.Value("LicensedTo") = "Ada Lovelace"

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
d.setPersistentDomain(suite, "com.example.shared")
d.stringForKey("Theme") = "light" ' the editor's own choice
d.addSuiteNamed("com.example.shared")
Call d.synchronize

Print "The editor's theme is " + d.stringForKey("Theme")
Print "It is licensed to " + d.stringForKey("LicensedTo")
