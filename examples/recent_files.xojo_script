' The menu of recent files: the newest first, no file twice, at most four.

Const kMostFiles = 4

Sub NoteOpened(d As NSUserDefaultsKTZ, path As String)
  Dim paths() As String = d.stringArrayForKey("RecentFiles") ' empty when there is none yet
  Dim known As Integer = paths.IndexOf(path)
  If known >= 0 Then paths.Remove(known)
  paths.Insert(0, path)
  While paths.Ubound >= kMostFiles
    Call paths.Pop
  Wend
  d.setStringArrayValue("RecentFiles", paths)
End Sub

Sub ShowMenu(d As NSUserDefaultsKTZ)
  Dim number As Integer
  For Each path As String In d.stringArrayForKey("RecentFiles")
    number = number + 1
    Dim f As FolderItem = GetFolderItem(path, FolderItem.PathTypeShell)
    If f <> Nil And f.Exists Then
      Print "  " + Str(number) + ". " + f.Name
    Else
      Print "  " + Str(number) + ". " + path + " (not there any more)"
    End If
  Next
End Sub

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Dim opened() As String = Array("/etc/hosts", "/etc/passwd", "/usr/bin/env", "/no/such/file.txt", "/etc/hosts", "/etc/group")
For Each path As String In opened
  NoteOpened(d, path)
Next
Call d.synchronize

Print "Recent files"
ShowMenu(d)

' A single file, such as the one that was open at last, can be kept as a FolderItem.
d.fileForKey("LastOpened") = GetFolderItem("/etc/hosts", FolderItem.PathTypeShell)
Dim last As FolderItem = d.fileForKey("LastOpened")
Print "Last opened: " + last.Name

d.removeObjectForKey("RecentFiles")
Print "After Clear Menu: " + Str(d.stringArrayForKey("RecentFiles").Ubound + 1) + " files"
