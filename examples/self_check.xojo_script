' A check that a user can run: every member of NSUserDefaultsKTZ, and every type there and back. It prints a line for each
' check, "ok" or what came instead, then what is not known for sure of every system, and a last line that counts.
'
' In the IDE: make a console application and add a module to it. Each Function and Sub below becomes a method of the module,
' of the scope Global: its first line tells the name, the parameters and the result. What stands behind the last of them
' goes into the application's Run event. In a desktop application write System.DebugLog in place of Print.
'
' It stores under keys that begin with "SelfCheck" and in a domain of that name, and removes both again.

' A value with its type, such as "Int32 7".
Function Shown(value As Variant) As String
  Select Case VarType(value)
  Case 0
    Return "Nil"
  Case 2
    Return "Int32 " + value.StringValue
  Case 3
    Return "Int64 " + value.StringValue
  Case 4
    Return "Single " + value.StringValue
  Case 5
    Return "Double " + value.StringValue
  Case 7
    Dim when As Date = value.DateValue
    Return "Date " + when.SQLDateTime
  Case 8
    Return "String " + value.StringValue
  Case 11
    If value.BooleanValue Then Return "Boolean true"
    Return "Boolean false"
  Case 9
    If value IsA MemoryBlock Then
      Dim block As MemoryBlock = MemoryBlock(value.ObjectValue)
      Dim bytes As String
      For i As Integer = 0 To block.Size - 1
        bytes = bytes + " " + Str(block.Byte(i))
      Next
      Return "MemoryBlock" + bytes
    ElseIf value IsA Dictionary Then
      Return "Dictionary of " + Str(Dictionary(value.ObjectValue).Count)
    ElseIf value IsA FolderItem Then
      Return "FolderItem " + FolderItem(value.ObjectValue).Name
    End If
    Return "Object"
  End Select
  If VarType(value) >= 4096 Then
    Dim elements() As Variant = value
    Dim texts As String
    For i As Integer = 0 To UBound(elements)
      If i > 0 Then texts = texts + ", "
      texts = texts + Shown(elements(i))
    Next
    Return "array (" + texts + ")"
  End If
  Return "type " + Str(VarType(value))
End Function

' counts(0) is the number of checks, counts(1) the number of those that are not as wanted.
Sub Check(counts() As Integer, what As String, wanted As String, got As String)
  counts(0) = counts(0) + 1
  If StrComp(got, wanted, 0) = 0 Then
    Print "ok   " + what
  Else
    counts(1) = counts(1) + 1
    Print "NOT  " + what + ": wanted " + wanted + ", got " + got
  End If
End Sub

Function YesOrNo(value As Boolean) As String
  If value Then Return "yes"
  Return "no"
End Function

' As the system tells it.
Function SystemVersion() As String
  Dim major As Integer
  Dim minor As Integer
  Dim bugFix As Integer
  If System.Gestalt("sys1", major) And System.Gestalt("sys2", minor) And System.Gestalt("sys3", bugFix) Then
    Return Str(major) + "." + Str(minor) + "." + Str(bugFix)
  End If
  Return "unknown"
End Function

Const kKey = "SelfCheck"
Const kDomain = "SelfCheck.NSUserDefaultsKTZ"
Dim counts(1) As Integer

Print "Self check of NSUserDefaultsKTZ, host version " + Str(RBVersion) + ", system version " + SystemVersion

' --- The class itself ---------------------------------------------------------------------------------------------

Check(counts, "NSGlobalDomain", "NSGlobalDomain", NSUserDefaultsKTZ.NSGlobalDomain)
Check(counts, "NSArgumentDomain", "NSArgumentDomain", NSUserDefaultsKTZ.NSArgumentDomain)
Check(counts, "NSRegistrationDomain", "NSRegistrationDomain", NSUserDefaultsKTZ.NSRegistrationDomain)
Check(counts, "NSUserDefaultsDidChangeNotification", "NSUserDefaultsDidChangeNotification", NSUserDefaultsKTZ.NSUserDefaultsDidChangeNotification)

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Check(counts, "standardUserDefaults", "yes", YesOrNo(Not (d Is Nil)))
' With the family's other library all callers share one object, and Cocoa's exceptions arrive as exceptions.
Dim withFamily As Boolean = d Is NSUserDefaultsKTZ.standardUserDefaults

Dim made As New NSUserDefaultsKTZ
made.setIntegerValue(kKey, 1)
Dim refused As String = "no exception"
Try
  made.Constructor
Catch e As RuntimeException
  refused = e.Message
End Try
Check(counts, "Constructor", "Constructor called too often. Object is already initialized.", refused)
' The home folder has the user's name. A second constructor is refused only where the first one found that user.
Dim ofUser As New NSUserDefaultsKTZ(SpecialFolder.UserHome.Name)
refused = "no exception"
Try
  ofUser.Constructor("another")
Catch e As RuntimeException
  refused = "refused"
End Try
Check(counts, "Constructor(username as string)", "refused", refused)
' The declaration of this member names a class of the family's other library, and a compiler that lacks the class may refuse
' its use. With that library write True for False; without it the member is not asked.
#If False Then
  Check(counts, "_exception", "yes", YesOrNo(d._exception Is Nil))
#EndIf

' --- What is stored ------------------------------------------------------------------------------------------------

Dim block As New MemoryBlock(3)
block.Byte(1) = 255
block.Byte(2) = 16
Dim names() As String
names.Append("first")
names.Append("zweiter ü")
Dim noNames() As String
Dim namesBack() As String
Dim inner As New Dictionary
inner.Value("inside") = 7
Dim values() As Variant
values.Append(-12)
values.Append(True)
values.Append("text")
values.Append(2.5)
values.Append(inner)
Dim settings As New Dictionary
settings.Value("name") = "Main"
settings.Value("inner") = inner
Dim domain As New Dictionary
domain.Value("SelfCheck.inSuite") = "from the suite"

' --- Numbers, booleans and texts ----------------------------------------------------------------------------------

Try
  d.setIntegerValue(kKey, -2147483648)
  Check(counts, "setIntegerValue, integerForKey", "-2147483648", Str(d.integerForKey(kKey)))
  d.integerForKey(kKey) = 2147483647
  Check(counts, "integerForKey, assigned", "Int32 2147483647", Shown(d.variantForKey(kKey)))
  d.setFloatValue(kKey, 0.25)
  Check(counts, "setFloatValue, floatForKey", "0.25", Str(d.floatForKey(kKey)))
  d.floatForKey(kKey) = -0.5
  Check(counts, "floatForKey, assigned", "Single -0.5", Shown(d.variantForKey(kKey)))
  d.setDoubleValue(kKey, 0.1)
  Check(counts, "setDoubleValue, doubleForKey", "yes", YesOrNo(Abs(d.doubleForKey(kKey) - 0.1) < 0.00000001))
  d.doubleForKey(kKey) = 1234.5
  Check(counts, "doubleForKey, assigned", "1234.5", Str(d.doubleForKey(kKey)))
  d.setBoolValue(kKey, True)
  Check(counts, "setBoolValue, boolForKey", "yes", YesOrNo(d.boolForKey(kKey)))
  d.boolForKey(kKey) = False
  Check(counts, "boolForKey, assigned", "Boolean false", Shown(d.variantForKey(kKey)))
  d.setStringValue(kKey, "grüß dich, 日本")
  Check(counts, "setStringValue, stringForKey", "grüß dich, 日本", d.stringForKey(kKey))
  d.stringForKey(kKey) = "assigned"
  Check(counts, "stringForKey, assigned", "String assigned", Shown(d.variantForKey(kKey)))
  Check(counts, "integerForKey of nothing", "0", Str(d.integerForKey("SelfCheck.nothing")))
  Check(counts, "stringForKey of nothing", "", d.stringForKey("SelfCheck.nothing"))
Catch e As RuntimeException
  Check(counts, "Numbers, booleans and texts", "no exception", "an exception: " + e.Message)
End Try

' --- Data, arrays and Dictionaries --------------------------------------------------------------------------------

Try
  d.setDataValue(kKey, block)
  Check(counts, "setDataValue, dataForKey", "MemoryBlock 0 255 16", Shown(d.dataForKey(kKey)))
  block.Byte(0) = 1
  d.dataForKey(kKey) = block
  Check(counts, "dataForKey, assigned", "MemoryBlock 1 255 16", Shown(d.dataForKey(kKey)))
  d.dataForKey(kKey) = New MemoryBlock(0)
  Check(counts, "setDataValue of no bytes removes", "Nil", Shown(d.variantForKey(kKey)))

  d.setStringArrayValue(kKey, names)
  namesBack = d.stringArrayForKey(kKey)
  Check(counts, "setStringArrayValue, stringArrayForKey", "first|zweiter ü", Join(namesBack, "|"))
  d.setStringArrayValue(kKey, noNames)
  namesBack = d.stringArrayForKey(kKey)
  Check(counts, "stringArrayForKey of an empty array", "-1", Str(UBound(namesBack)))

  d.setArrayValue(kKey, values)
  Dim valuesBack() As Variant = d.arrayForKey(kKey)
  Check(counts, "setArrayValue, arrayForKey", "array (Int32 -12, Boolean true, String text, Double 2.5, Dictionary of 1)", Shown(valuesBack))
  values.Append(Nil)
  d.setArrayValue(kKey, values)
  valuesBack = d.arrayForKey(kKey)
  Check(counts, "setArrayValue leaves nil out", "4", Str(UBound(valuesBack)))
  valuesBack = d.arrayForKey("SelfCheck.nothing")
  Check(counts, "arrayForKey of nothing", "-1", Str(UBound(valuesBack)))

  d.setDictionaryValue(kKey, settings)
  Dim settingsBack As Dictionary = d.dictionaryForKey(kKey)
  Check(counts, "setDictionaryValue, dictionaryForKey", "String Main, Dictionary of 1", Shown(settingsBack.Value("name")) + ", " + Shown(settingsBack.Value("inner")))
  settings.Value("more") = 1
  d.dictionaryForKey(kKey) = settings
  Check(counts, "dictionaryForKey, assigned", "Dictionary of 3", Shown(d.dictionaryForKey(kKey)))
Catch e As RuntimeException
  Check(counts, "Data, arrays and Dictionaries", "no exception", "an exception: " + e.Message)
End Try

' --- Variants -----------------------------------------------------------------------------------------------------

Try
  Dim day As New Date
  day.Day = 1
  day.Year = 2012
  day.Month = 2
  day.Day = 29
  day.Hour = 10
  day.Minute = 20
  day.Second = 30
  Dim large As Int64 = 5000000000
  Dim quarter As Single = 0.25
  Dim price As Currency = 9.95
  d.setVariantValue(kKey, -7)
  Check(counts, "variantForKey of an Int32", "Int32 -7", Shown(d.variantForKey(kKey)))
  d.variantForKey(kKey) = large
  Check(counts, "variantForKey of an Int64, assigned", "Int64 5000000000", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, quarter)
  Check(counts, "variantForKey of a Single", "Single 0.25", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, 2.5)
  Check(counts, "variantForKey of a Double", "Double 2.5", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, price)
  Check(counts, "variantForKey of a Currency", "Double 9.95", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, True)
  Check(counts, "variantForKey of a Boolean", "Boolean true", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, &c3366FF)
  Check(counts, "variantForKey of a Color", "Int32 3368703", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, "text")
  Check(counts, "variantForKey of a String", "String text", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, day)
  Check(counts, "variantForKey of a Date", "Date 2012-02-29 10:20:30", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, block)
  Check(counts, "variantForKey of a MemoryBlock", "MemoryBlock 1 255 16", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, settings)
  Check(counts, "variantForKey of a Dictionary", "Dictionary of 3", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, names)
  Check(counts, "variantForKey of an array", "array (String first, String zweiter ü)", Shown(d.variantForKey(kKey)))
  d.setVariantValue(kKey, Nil)
  Check(counts, "setVariantValue of nil removes", "Nil", Shown(d.variantForKey(kKey)))
Catch e As RuntimeException
  Check(counts, "Variants", "no exception", "an exception: " + e.Message)
End Try

' --- Keys, domains and suites -------------------------------------------------------------------------------------

Try
  Dim first As New Dictionary
  first.Value("SelfCheck.registered") = 80
  d.registerDefaults(first)
  Check(counts, "registerDefaults", "80", Str(d.integerForKey("SelfCheck.registered")))
  d.setIntegerValue("SelfCheck.registered", 132)
  d.removeObjectForKey("SelfCheck.registered")
  Check(counts, "removeObjectForKey", "80", Str(d.integerForKey("SelfCheck.registered")))
  Check(counts, "dictionaryRepresentation", "yes", YesOrNo(d.dictionaryRepresentation.HasKey("SelfCheck.registered")))
  Check(counts, "objectIsForcedForKey(key as string)", "no", YesOrNo(d.objectIsForcedForKey("SelfCheck.registered")))
  Check(counts, "objectIsForcedForKey(key as string, domain as string)", "no", YesOrNo(d.objectIsForcedForKey("SelfCheck.registered", kDomain)))

  d.setPersistentDomain(domain, kDomain)
  Check(counts, "setPersistentDomain, persistentDomainForName", "Dictionary of 1", Shown(d.persistentDomainForName(kDomain)))
  Check(counts, "synchronize", "yes", YesOrNo(d.synchronize))
  namesBack = d.persistentDomainNames
  Check(counts, "persistentDomainNames", "yes", YesOrNo(namesBack.IndexOf(kDomain) >= 0))
  d.addSuiteNamed(kDomain)
  Check(counts, "addSuiteNamed", "from the suite", d.stringForKey("SelfCheck.inSuite"))
  d.removeSuiteNamed(kDomain)
  Check(counts, "removeSuiteNamed", "", d.stringForKey("SelfCheck.inSuite"))
  d.removePersistentDomainForName(kDomain)
  namesBack = d.persistentDomainNames
  Check(counts, "removePersistentDomainForName", "no", YesOrNo(namesBack.IndexOf(kDomain) >= 0))
  d.setVolatileDomain(domain, kDomain)
  Check(counts, "setVolatileDomain, volatileDomainForName", "Dictionary of 1", Shown(d.volatileDomainForName(kDomain)))
  namesBack = d.volatileDomainNames
  Check(counts, "volatileDomainNames", "yes", YesOrNo(namesBack.IndexOf(kDomain) >= 0))
  d.removeVolatileDomainForName(kDomain)
  namesBack = d.volatileDomainNames
  Check(counts, "removeVolatileDomainForName", "no", YesOrNo(namesBack.IndexOf(kDomain) >= 0))
Catch e As RuntimeException
  Check(counts, "Keys, domains and suites", "no exception", "an exception: " + e.Message)
End Try

' --- Exceptions ---------------------------------------------------------------------------------------------------

' Without the family's other library nothing takes what Cocoa raises, and the program would end here.
If withFamily Then
  Dim raised As String = "no exception"
  Dim withNil As Variant = values
  Try
    d.setVariantValue(kKey, withNil)
  Catch e As RuntimeException
    raised = "an exception"
  End Try
  Check(counts, "setVariantValue of an array with nil raises", "an exception", raised)
  d.setIntegerValue(kKey, 5)
  Check(counts, "the call after an exception", "5", Str(d.integerForKey(kKey)))
Else
  Print "     exceptions of Cocoa were not tried: the family's other library is not there"
End If

' --- URLs and files, which Mac OS X 10.4 and 10.5 do not have: there it ends here without the family's library ------

Try
  d.setURLValue(kKey, "http://example.com/a?b=c#d")
  Check(counts, "setURLValue, URLForKey", "http://example.com/a?b=c#d", d.URLForKey(kKey))
  d.URLForKey(kKey) = "http://example.com/assigned"
  Check(counts, "URLForKey, assigned", "http://example.com/assigned", d.URLForKey(kKey))
  d.setURLValue(kKey, "no URL")
  Check(counts, "setURLValue of a text that is no URL removes", "Nil", Shown(d.variantForKey(kKey)))
  Dim folder As FolderItem = SpecialFolder.Temporary
  d.setFileValue(kKey, folder)
  Check(counts, "setFileValue, fileForKey", "FolderItem " + folder.Name, Shown(d.fileForKey(kKey)))
  d.fileForKey(kKey) = folder.Child("SelfCheck missing")
  Check(counts, "fileForKey, assigned, of a file that does not exist", "FolderItem SelfCheck missing", Shown(d.fileForKey(kKey)))
  Dim back As FolderItem = d.fileForKey(kKey)
  Check(counts, "fileForKey does not make the file", "no", YesOrNo(back.Exists))
  d.setFileValue(kKey, Volume(0))
  Check(counts, "setFileValue, fileForKey of a volume", "FolderItem " + Volume(0).Name, Shown(d.fileForKey(kKey)))
Catch e As RuntimeException
  Check(counts, "URLs and files", "no exception", "an exception: " + e.Message)
End Try

' --- What is not known of every system: no right or wrong, please send it ----------------------------------------

Dim small As Int64 = 800
d.setVariantValue(kKey, small)
Call d.synchronize
Print "told an Int64 of 800, stored and synchronized: " + Shown(d.variantForKey(kKey))
d.setStringValue(kKey, "y")
Print "told boolForKey of the text y: " + YesOrNo(d.boolForKey(kKey))
d.setStringValue(kKey, "2")
Print "told boolForKey of the text 2: " + YesOrNo(d.boolForKey(kKey))
d.setBoolValue(kKey, True)
Print "told floatForKey of a boolean: " + Str(d.floatForKey(kKey))
d.setStringValue(kKey, "")
Print "told a stored empty text: " + Shown(d.variantForKey(kKey))

' --- The end ------------------------------------------------------------------------------------------------------

d.removeObjectForKey(kKey)
NSUserDefaultsKTZ.resetStandardUserDefaults
d = NSUserDefaultsKTZ.standardUserDefaults
Check(counts, "resetStandardUserDefaults", "Nil", Shown(d.variantForKey(kKey)))
Call d.synchronize

If counts(1) = 0 Then
  Print Str(counts(0)) + " checks, all ok"
Else
  Print Str(counts(0)) + " checks, " + Str(counts(1)) + " NOT as wanted"
End If
