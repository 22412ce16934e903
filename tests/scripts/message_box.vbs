' KN_MSGBOX as a late-bound script sees it: properties, an unknown set of buttons, the time-out.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim box : Set box = CreateObject("Kestrelon2012.KN_MSGBOX")
Expect "Theme", box.Theme, 2
Expect "Sound", box.Sound, True
Expect "unknown buttons", box.Show("Texto", 15, "Aviso"), 0
box.ButtonCaption(0) = "&Excluir"
Expect "ButtonCaption", box.ButtonCaption(0), "&Excluir"
Expect "ButtonCaption beyond", box.ButtonCaption(9), ""
box.ButtonCaption(-1) = "nada"
box.CloseBox 2
box.Sound = False
box.TimeOut = 1
Dim buttons, answers
answers = Array(1, 1, 3, 6, 6, 4, 2)
For buttons = 0 To 6
  Expect "time-out " & buttons, box.Show("Excluir o cliente?", buttons + 32, "Clientes"), answers(buttons)
  Expect "TimedOut", box.TimedOut, True
Next
Expect "second button", box.Show("Excluir o cliente?", 4 + 16 + 256), 7

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
