' An application's first launch: defaults that apply until somebody chooses, and a greeting that is shown once.

Sub Launch(d As NSUserDefaultsKTZ)
  ' Registered at every launch: these values are never written to disk, so a later version can change them.
  Dim factory As New Dictionary
  factory.Value("Columns") = 80
  factory.Value("Font") = "Monaco"
  factory.Value("CheckForUpdates") = True
  d.registerDefaults(factory)

  Dim launches As Integer = d.integerForKey("Launches") + 1
  d.integerForKey("Launches") = launches

  If launches = 1 Then
    Print "Welcome! This is shown at the first launch only."
    d.stringForKey("InstalledVersion") = "1.0"
    d.integerForKey("Columns") = 132
  Else
    Print "Launch " + Str(launches) + ", installed as version " + d.stringForKey("InstalledVersion")
  End If
  Print "  " + Str(d.integerForKey("Columns")) + " columns in " + d.stringForKey("Font")

  If Not d.synchronize Then Print "The settings could not be written."
End Sub

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Launch(d)
Launch(d)

' Only what was chosen is on disk; the font is still a registered value.
Dim onDisk As Dictionary = d.persistentDomainForName("first_run")
Assert(onDisk.HasKey("Columns"))
Assert(Not onDisk.HasKey("Font"), "registered defaults are not written")
