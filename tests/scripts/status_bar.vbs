' USStatusBar as a late-bound script sees it: panels by number, answers of methods, errors.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim bar : Set bar = CreateObject("Kestrelon2012.USStatusBar")
Expect "no panels", bar.PanelCount, 0
Expect "AddPanel", bar.AddPanel(0, "Pronto", "texto"), 1
Expect "all arguments by default", bar.AddPanel, 2
Expect "a key that is taken", bar.AddPanel(0, "x", "texto"), 0
Expect "image as key, tip", bar.AddPanel(0, "Nota", "nota", 80, 1, 2, "casa", "Dica"), 3
Expect "caption", bar.PanelCaption(1), "Pronto"
Expect "image", bar.PanelImage(3), "casa"
Expect "tip", bar.PanelToolTipText(3), "Dica"
Expect "alignment", bar.PanelAlignment(3), 2
Expect "sizing", bar.PanelAutoSize(3), 1
Expect "default width", bar.PanelWidth(2), 100
Expect "default least width", bar.PanelMinWidth(2), 20
Expect "default color", bar.PanelForeColor(2), -1
Expect "default limit", bar.PanelMax(2), 100
Expect "default image", bar.PanelImage(2), 0
Expect "PanelIndex", bar.PanelIndex("nota"), 3
Expect "no such key", bar.PanelIndex("outra"), 0

bar.PanelStyle(2) = 8 : bar.PanelValue(2) = 40.5 : Expect "value", bar.PanelValue(2), 40.5
bar.PanelFormat(2) = "hh:nn" : Expect "format", bar.PanelFormat(2), "hh:nn"
bar.PanelCaption(99) = "x" : Expect "no such panel", bar.PanelCaption(99), ""

Expect "move", bar.MovePanel(1, 1), 2
Expect "move beyond the end", bar.MovePanel(3, 1), 0
Expect "delete", bar.DeletePanel(1), 2
Expect "delete nothing", bar.DeletePanel(7), 0
bar.PushText "Ajuda" : bar.PopText : bar.PopText

bar.Theme = 0
Expect "theme border", bar.BorderColor, &HE2A981
Expect "theme text", bar.ForeColor, &HB75F31
Expect "theme gradient", bar.GradientColor2, &HF7DECA
bar.SimpleMode = True : bar.SimpleText = "Imprimindo" : Expect "SimpleText", bar.SimpleText, "Imprimindo"
bar.ShowSizeGrip = False : Expect "ShowSizeGrip", bar.ShowSizeGrip, False
bar.Refresh

On Error Resume Next
bar.PanelWidth(1) = "texto"
Expect "type mismatch", Err.Number, 13
Err.Clear
On Error GoTo 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
