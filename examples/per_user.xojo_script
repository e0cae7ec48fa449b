' The defaults of users by their names, as a tool for administrators needs them. per_user.users names the users of this
' example; reading and writing another user's defaults needs the rights to that user's files. Apple advises against it
' from OS X 10.9 on, and on the latest systems the name no longer counts: every object is for the current user.

Sub ShowUser(name As String)
  Dim d As New NSUserDefaultsKTZ(name)
  If Not d.synchronize Then
    Print name + ": there is no such user"
    Return
  End If
  Dim language As String = d.stringForKey("Language")
  If language = "" Then language = "none"
  Print name + ": language " + language
End Sub

Dim ada As New NSUserDefaultsKTZ("ada")
ada.stringForKey("Language") = "English"
Call ada.synchronize
Dim blaise As New NSUserDefaultsKTZ("blaise")
blaise.stringForKey("Language") = "French"
Call blaise.synchronize

For Each name As String In Array("ada", "blaise", "charles", "nobody-has-this-name")
  ShowUser(name)
Next

' An object takes one user for its whole life.
Try
  ada.Constructor("blaise")
Catch e As UnsupportedOperationException
  Print e.Message
End Try
