' Values that an administrator has fixed: the program sees them in place of its own, and should not offer to change
' them. The administrator's file is managed_values.managed/managed_values.plist.

Sub ShowControl(d As NSUserDefaultsKTZ, key As String, label As String)
  Dim value As Variant = d.variantForKey(key)
  Dim state As String = "can be changed"
  If d.objectIsForcedForKey(key) Then state = "fixed by your administrator"
  Print label + ": " + value.StringValue + " (" + state + ")"
End Sub

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
d.stringForKey("UpdateServer") = "https://updates.example.com"
d.boolForKey("ShowTips") = True
Call d.synchronize

ShowControl(d, "UpdateServer", "Update server")
ShowControl(d, "ShowTips", "Show tips")

' What the program stores under a fixed key stays hidden behind it.
d.stringForKey("UpdateServer") = "https://elsewhere.example.com"
ShowControl(d, "UpdateServer", "Update server")

' The second form asks one domain only.
Assert(d.objectIsForcedForKey("UpdateServer", "managed_values"))
Assert(Not d.objectIsForcedForKey("UpdateServer", "another_application"))
