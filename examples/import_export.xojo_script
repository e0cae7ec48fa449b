' All settings of an application as text, and back: for a backup, or for moving to another machine.

Function Quoted(text As String) As String
  Return """" + ReplaceAll(text, """", """""") + """"
End Function

' One line for each key, "key = value"; what is no single value is left to the host's own text form.
Function Exported(settings As Dictionary) As String
  Dim keys() As String
  For Each key As Variant In settings.Keys
    keys.Append(key)
  Next
  keys.Sort

  Dim lines() As String
  For Each key As String In keys
    Dim value As Variant = settings.Value(key)
    Select Case VarType(value)
    Case 8
      lines.Append(key + " = " + Quoted(value))
    Case 2, 3, 5, 11
      lines.Append(key + " = " + value.StringValue)
    Case Else
      lines.Append("' " + key + " cannot be written as one line")
    End Select
  Next
  Return Join(lines, EndOfLine)
End Function

Function Imported(text As String) As Dictionary
  Dim settings As New Dictionary
  For Each line As String In Split(text, EndOfLine)
    Dim sign As Integer = InStr(line, " = ")
    If Left(line, 1) = "'" Or sign = 0 Then Continue
    Dim key As String = Left(line, sign - 1)
    Dim value As String = Mid(line, sign + 3)
    If Left(value, 1) = """" Then
      settings.Value(key) = ReplaceAll(Mid(value, 2, Len(value) - 2), """""", """")
    ElseIf value = "True" Or value = "False" Then
      settings.Value(key) = (value = "True")
    ElseIf InStr(value, ".") > 0 Then
      settings.Value(key) = Val(value)
    Else
      Dim number As Integer = Val(value)
      settings.Value(key) = number
    End If
  Next
  Return settings
End Function

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
d.stringForKey("Greeting") = "Say ""hello"""
d.integerForKey("Columns") = 80
d.doubleForKey("Zoom") = 1.5
d.boolForKey("Sounds") = True
d.variantForKey("Frame") = Array(40, 60, 800, 600)
Call d.synchronize

Dim text As String = Exported(d.persistentDomainForName("import_export"))
Print text

' Into a domain of its own. A copy has the same values; the types of its numbers are the database's business.
d.setPersistentDomain(Imported(text), "com.example.imported")
Call d.synchronize
Dim copy As Dictionary = d.persistentDomainForName("com.example.imported")
Print Str(copy.Count) + " settings imported"
For Each key As Variant In copy.Keys
  Assert(copy.Value(key) = d.variantForKey(key), key + " has kept its value")
Next

' Gone again, as a whole.
d.removePersistentDomainForName("com.example.imported")
Assert(d.persistentDomainForName("com.example.imported") = Nil)
