' The second application: what it has no value of its own for comes from the suite.

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Print "Before the suite is added, the viewer's theme is """ + d.stringForKey("Theme") + """"

d.addSuiteNamed("com.example.shared")
Print "With the suite it is " + d.stringForKey("Theme")
Print "It is licensed to " + d.stringForKey("LicensedTo")

' A suite is read through the search list and written as a whole.
Dim suite As Dictionary = d.persistentDomainForName("com.example.shared")
suite.Value("Theme") = "sepia"
d.setPersistentDomain(suite, "com.example.shared")
Call d.synchronize
Print "Changed for every application: " + d.stringForKey("Theme")

d.removeSuiteNamed("com.example.shared")
Assert(d.stringForKey("Theme") = "", "a suite that was removed is not searched")
