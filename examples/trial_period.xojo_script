' A trial of thirty days: the day of the first launch is kept as a Date. Today is given, so that every run is the same.

Const kDays = 30

Function DaysLeft(d As NSUserDefaultsKTZ, today As Date) As Integer
  Dim first As Variant = d.variantForKey("FirstLaunch")
  If first = Nil Then
    d.variantForKey("FirstLaunch") = today
    Return kDays
  End If
  Dim since As Date = first
  Return kDays - Floor((today.TotalSeconds - since.TotalSeconds) / 86400)
End Function

Sub Report(days As Integer)
  If days > 1 Then
    Print Str(days) + " days of the trial are left."
  ElseIf days = 1 Then
    Print "This is the last day of the trial."
  Else
    Print "The trial has ended."
  End If
End Sub

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Dim today As New Date(2012, 2, 20, 9, 0, 0)
For Each later As Integer In Array(0, 1, 9, 20)
  today.Day = today.Day + later
  Report(DaysLeft(d, today))
Next
Call d.synchronize

Dim first As Date = d.variantForKey("FirstLaunch")
Print "It began on " + first.SQLDateTime + "."
