' A window comes back where it was: its position and size are kept under its name, and checked against the screen,
' which may have become smaller.

Class WindowFrame
  Dim Left, Top, Width, Height As Integer

  Sub Constructor(x As Integer, y As Integer, w As Integer, h As Integer)
    Left = x
    Top = y
    Width = w
    Height = h
  End Sub

  Function Text() As String
    Return Str(Width) + " x " + Str(Height) + " at " + Str(Left) + ", " + Str(Top)
  End Function
End Class

Sub SaveFrame(d As NSUserDefaultsKTZ, name As String, frame As WindowFrame)
  Dim w As New Dictionary
  w.Value("left") = frame.Left
  w.Value("top") = frame.Top
  w.Value("width") = frame.Width
  w.Value("height") = frame.Height
  d.dictionaryForKey("Window " + name) = w
End Sub

Function LoadFrame(d As NSUserDefaultsKTZ, name As String, _
    screenWidth As Integer, screenHeight As Integer) As WindowFrame
  Dim w As Dictionary = d.dictionaryForKey("Window " + name)
  If w = Nil Then Return New WindowFrame(40, 60, 640, 480) ' never saved

  Dim frame As New WindowFrame(w.Value("left"), w.Value("top"), w.Value("width"), w.Value("height"))
  frame.Width = Min(frame.Width, screenWidth)
  frame.Height = Min(frame.Height, screenHeight)
  frame.Left = Max(0, Min(frame.Left, screenWidth - frame.Width))
  frame.Top = Max(0, Min(frame.Top, screenHeight - frame.Height))
  Return frame
End Function

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults

Dim frame As WindowFrame = LoadFrame(d, "Main", 2560, 1440)
Print "Never saved:    " + frame.Text

SaveFrame(d, "Main", New WindowFrame(1800, 900, 700, 500))
Call d.synchronize
frame = LoadFrame(d, "Main", 2560, 1440)
Print "As it was left: " + frame.Text
frame = LoadFrame(d, "Main", 1280, 800)
Print "Small screen:   " + frame.Text
