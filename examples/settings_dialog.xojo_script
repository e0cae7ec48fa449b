' A settings dialog: its controls show the registered defaults until somebody changes them, Cancel leaves everything as
' it was, and "Restore Defaults" removes what was chosen.

Class Dialog
  Dim UserName As String
  Dim PlaySounds As Boolean
  Dim Volume As Double
  Dim Accent As Color
  Dim Quality As Integer

  Sub Load(d As NSUserDefaultsKTZ)
    UserName = d.stringForKey("UserName")
    PlaySounds = d.boolForKey("PlaySounds")
    Volume = d.doubleForKey("Volume")
    Accent = d.variantForKey("Accent")
    Quality = d.integerForKey("Quality")
  End Sub

  Sub Save(d As NSUserDefaultsKTZ)
    d.stringForKey("UserName") = UserName
    d.boolForKey("PlaySounds") = PlaySounds
    d.doubleForKey("Volume") = Volume
    d.variantForKey("Accent") = Accent
    d.integerForKey("Quality") = Quality
  End Sub

  Sub Show(title As String)
    Dim sounds As String = "silent"
    If PlaySounds Then sounds = "sounds"
    Dim names() As String = Array("draft", "normal", "best")
    Print title + ": " + UserName + ", " + sounds + " at " + Str(Volume) + ", " + Str(Accent) + ", " + names(Quality)
  End Sub
End Class

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults

Dim factory As New Dictionary
factory.Value("UserName") = "Guest"
factory.Value("PlaySounds") = True
factory.Value("Volume") = 0.75
factory.Value("Accent") = &c3366FF
factory.Value("Quality") = 1
d.registerDefaults(factory)

Dim settings As New Dialog
settings.Load(d)
settings.Show("At first        ")

settings.UserName = "Ada"
settings.Volume = 0.5
settings.Accent = &cFF8800
settings.Save(d)
Call d.synchronize
settings.Show("OK              ")

settings.UserName = "Somebody else"
settings.Load(d)
settings.Show("Cancel          ")

For Each key As Variant In factory.Keys
  d.removeObjectForKey(key)
Next
settings.Load(d)
settings.Show("Restore Defaults")
