' USLabel as a late-bound script sees it: default member, enumerations, tip, font.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim label : Set label = CreateObject("Kestrelon2012.USLabel")
label.Caption = "&Cliente"
Expect "default member", label & "", "&Cliente"
Expect "BorderColor", label.BorderColor, &HDBC9BA
Expect "ForeColorOver", label.ForeColorOver, &HB75F31
Expect "UseMnemonic", label.UseMnemonic, True
label.Alignment = 9 : Expect "Alignment is not validated", label.Alignment, 9
label.FontBold = True : Expect "Font.Bold", label.Font.Bold, True
label.FontSize = 8.25 : Expect "FontSize", label.FontSize, 8.25
label.ToolTipDescription = "Nome completo"
label.CreateToolTip
label.DestroyToolTip
Expect "ToolTipBackColor", label.ToolTipBackColor, &HD7FCFE
label.DisableRefresh
Dim text : text = "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
Do While Len(text) < 40000 : text = text & text : Loop
label.Caption = text
label.AutoSize = True
label.Refresh
Expect "long caption", Len(label.Caption), Len(text)
Expect "hWnd", label.hWnd, 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
