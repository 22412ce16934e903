' USForm as a late-bound script sees it, without a window to take: quiet, and nothing fails.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim skin : Set skin = CreateObject("Kestrelon2012.USForm")
Expect "theme", skin.Theme, 2
Expect "delimiter", skin.CaptionDelimiter, "-"
Expect "tip", skin.ToolTipMaximize, "Maximizar"
Expect "AllowMove", skin.AllowMove, True
Expect "AllowResize", skin.AllowResize, False
Expect "no window", skin.hWnd, 0
Expect "no caption", skin.Caption, ""
Expect "height", skin.Height, 420

skin.Theme = 0
Expect "theme color", skin.GradientColor2, &HFCEDE1
Expect "fore color", skin.ForeColor, &H3B3B3B
Expect "delimiter color", skin.ForeColorDelimiter, &HB75F31
skin.Theme = 1 : Expect "silver", skin.GradientColor2, &HEDE8E5
skin.Theme = 9 : Expect "a number that is no theme", skin.GradientColor2, &HEDE8E5

skin.Caption = "Pedidos - 12" : Expect "Caption", skin.Caption, "Pedidos - 12"
skin.DrawForm : skin.DrawGradient : skin.FullScreen : skin.FullScreen True
skin.CenterOnScreenEx : skin.CenterOnScreen Nothing : skin.DeactivateForm : skin.UnloadSubClass
skin.TranslucentForm 100
skin.BackInicalize Nothing : skin.BackKill
Expect "no such window", skin.AttachWindow(12345), False
Expect "nothing attached", skin.AttachWindow(0), False
Expect "no thumbnail buttons", skin.TaskBar_SetProgressValue(0, 50) = 1, False

On Error Resume Next
skin.TranslucentForm 256
Expect "overflow", Err.Number, 6
Err.Clear
On Error GoTo 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
