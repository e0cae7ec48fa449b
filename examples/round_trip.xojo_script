' What becomes of each kind of value: stored, read at once, and read again in the next run of the program, which is this
' same program. The database keeps a number's value and not its type, so compare by value, or read with integerForKey.

Function Kind(value As Variant) As String
  Select Case VarType(value)
  Case 0
    Return "Nil"
  Case 2
    Return "Int32"
  Case 3
    Return "Int64"
  Case 4
    Return "Single"
  Case 5
    Return "Double"
  Case 6
    Return "Currency"
  Case 7
    Return "Date"
  Case 8
    Return "String"
  Case 9
    If value IsA MemoryBlock Then Return "MemoryBlock"
    If value IsA Dictionary Then Return "Dictionary"
    If value IsA FolderItem Then Return "FolderItem"
    Return "another object"
  Case 11
    Return "Boolean"
  Case 16
    Return "Color"
  End Select
  Return "an array"
End Function

Function Shown(value As Variant) As String
  Select Case Kind(value)
  Case "MemoryBlock"
    Dim block As MemoryBlock = value
    Return Str(block.Size) + " bytes"
  Case "Dictionary"
    Dim dic As Dictionary = value
    Return Str(dic.Count) + " entries"
  Case "FolderItem"
    Dim f As FolderItem = value
    Return f.ShellPath
  Case "Date"
    Dim when As Date = value
    Return when.SQLDateTime
  Case "an array"
    Dim elements() As Variant = value
    Return Str(elements.Ubound + 1) + " elements"
  End Select
  Return value.StringValue
End Function

Function Column(text As String) As String
  Return Left(text + "             ", 13)
End Function

Function Key(index As Integer) As String
  Return "Value " + Str(index)
End Function

Dim small As Int64 = 7
Dim wide As Int64 = 800
Dim large As Int64 = 5000000000
Dim ratio As Single = 0.25
Dim price As Currency = 9.95
Dim block As New MemoryBlock(3)
block.Byte(2) = &hFF
Dim dic As New Dictionary
dic.Value("a") = 1
dic.Value("b") = Array("x", "y")
Dim numbers() As Variant = Array(1, 2.5, "three", True)

Dim values() As Variant = Array(-12, 800, small, wide, large, ratio, 0.1, price, True, "grüß dich 👋", "", &c3366FF, _
    New Date(2012, 2, 29, 12, 30, 15), block, New MemoryBlock(0), dic, numbers, Nil)

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Dim atOnce() As String = d.stringArrayForKey("ReadAtOnce")
If atOnce.Ubound < 0 Then ' the first run
  For i As Integer = 0 To values.Ubound
    d.variantForKey(Key(i)) = values(i)
    atOnce.Append(Kind(d.variantForKey(Key(i))))
  Next
  d.setStringArrayValue("ReadAtOnce", atOnce)
  Call d.synchronize
  Print Str(values.Ubound + 1) + " values are stored."
Else
  Print Column("stored") + Column("at once") + Column("next run")
  For i As Integer = 0 To values.Ubound
    Dim back As Variant = d.variantForKey(Key(i))
    Print Column(Kind(values(i))) + Column(atOnce(i)) + Column(Kind(back)) + Shown(back)
  Next
  Assert(d.variantForKey(Key(1)) = 800, "the value is the same in both runs")
  Assert(d.integerForKey(Key(1)) = 800)
End If
