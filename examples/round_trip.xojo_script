' A look at what becomes of each kind of value on its way through the defaults: stored, written to disk, read back.

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

Sub Inspect(value As Variant)
  Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
  d.variantForKey("Probe") = value
  Call d.synchronize
  Dim back As Variant = d.variantForKey("Probe")
  Dim line As String = Left(Kind(value) + "            ", 12) + " -> " + Left(Kind(back) + "            ", 12)
  Print line + " " + Shown(back)
End Sub

Dim small As Int64 = 7
Dim large As Int64 = 5000000000
Dim ratio As Single = 0.25
Dim price As Currency = 9.95
Dim block As New MemoryBlock(3)
block.Byte(2) = &hFF
Dim empty As New MemoryBlock(0)
Dim dic As New Dictionary
dic.Value("a") = 1
dic.Value("b") = Array("x", "y")
Dim numbers() As Variant = Array(1, 2.5, "three", True)

Inspect(-12)
Inspect(small)
Inspect(large)
Inspect(ratio)
Inspect(0.1)
Inspect(price)
Inspect(True)
Inspect("grüß dich 👋")
Inspect("")
Inspect(&c3366FF)
Inspect(New Date(2012, 2, 29, 12, 30, 15))
Inspect(block)
Inspect(empty)
Inspect(dic)
Inspect(numbers)
Inspect(Nil)
