' USToolBar as a late-bound script sees it: buttons by number, answers of methods, errors.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim bar : Set bar = CreateObject("Kestrelon2012.USToolBar")
Expect "no buttons", bar.ButtonCount, 0
Expect "AddButton", bar.AddButton(0, "&Novo", "novo"), 1
Expect "separator", bar.AddButton(1), 2
Expect "all arguments by default", bar.AddButton, 3
Expect "caption", bar.ButtonCaption(1), "&Novo"
Expect "key", bar.ButtonKey(1), "novo"
Expect "type", bar.ButtonType(2), 1
Expect "default icon size", bar.ButtonIconSize(3), 16
Expect "default fore color", bar.ButtonForeColor(3), &HB75F31
Expect "default mask", bar.ButtonMaskColor(3), &HC0C0C0
Expect "default use of the mask", bar.ButtonUseMaskColor(3), True
Expect "a font of its own", bar.ButtonFont(1) Is Nothing, False
Expect "no icon", bar.ButtonIcon(1) Is Nothing, True

bar.ButtonCaption(3) = "Salvar" : Expect "set caption", bar.ButtonCaption(3), "Salvar"
bar.ButtonEnabled(3) = False : Expect "set enabled", bar.ButtonEnabled(3), False
bar.ButtonStyle(3) = 1 : Expect "set style", bar.ButtonStyle(3), 1
bar.ButtonCaption(99) = "x" : Expect "no such button", bar.ButtonCaption(99), ""

Expect "move right", bar.MoveButton(1, 1), 2
Expect "moved", bar.ButtonKey(2), "novo"
Expect "move beyond the end", bar.MoveButton(3, 1), 0
Expect "delete", bar.DeleteButton(1), 2
Expect "delete nothing", bar.DeleteButton(7), 0

bar.Theme = 1
Expect "theme color", bar.GradientColor2, &HE7DCD6
Expect "theme gripper", bar.GripperColor, &HE7DCD6
bar.IsStrech = True : Expect "IsStrech", bar.IsStrech, True
bar.ShowGripper = False : Expect "ShowGripper", bar.ShowGripper, False
bar.BorderPicture = 255 : Expect "BorderPicture", bar.BorderPicture, 255
bar.Refresh

On Error Resume Next
bar.AddButton "texto"
Expect "type mismatch", Err.Number, 13
Err.Clear
On Error GoTo 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
