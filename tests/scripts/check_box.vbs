' USCheckBox as a late-bound script sees it: members, default member, font object, errors.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim box : Set box = CreateObject("Kestrelon2012.USCheckBox")
Expect "default member", box & "", "0"
box.Value = 2
Expect "Value", box.Value, 2
box.Value = True
Expect "Boolean true", box.Value, -1

box.Caption = "Nota &fiscal"
Expect "Caption", box.Caption, "Nota &fiscal"
box.Alignment = 1 : Expect "Alignment", box.Alignment, 1
box.BackStyle = 1 : Expect "BackStyle", box.BackStyle, 1
box.BackColor = &H8000000F : Expect "BackColor", box.BackColor, &H8000000F
box.ForeColor = 255 : Expect "ForeColor", box.ForeColor, 255
box.Enabled = False : Expect "Enabled", box.Enabled, False
box.ShowFocusRect = False : Expect "ShowFocusRect", box.ShowFocusRect, False
box.MousePointer = 2 : Expect "MousePointer", box.MousePointer, 2
box.Theme = 7 : Expect "Theme is not validated", box.Theme, 7
Expect "hWnd without a container", box.hWnd, 0
Expect "MouseIcon", box.MouseIcon Is Nothing, True

box.FontBold = True : Expect "Font.Bold", box.Font.Bold, True
box.Font.Italic = True : Expect "FontItalic", box.FontItalic, True
box.FontUnderline = True : Expect "FontUnderline", box.FontUnderline, True
box.FontStrikeThru = True : Expect "FontStrikeThru", box.FontStrikeThru, True
box.FontSize = 14 : Expect "FontSize", box.FontSize, 14
Dim other : Set other = CreateObject("Kestrelon2012.USCheckBox")
Set other.Font = box.Font
Expect "font by reference", other.FontSize, 14

box.DisableRefresh
box.Refresh

On Error Resume Next
box.Value = "texto"
Expect "type mismatch", Err.Number, 13
Err.Clear
box.NoSuchMember = 1
Expect "unknown member", Err.Number, 438
On Error GoTo 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
