' USProgressBar and USPictureLCD as a late-bound script sees them: default members, defaults, ends of ranges.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim bar : Set bar = CreateObject("Kestrelon2012.USProgressBar")
Expect "default member", bar + 0, 0
Expect "Max", bar.Max, 100
Expect "State", bar.State, 2
Expect "TextMode", bar.TextMode, 1
Expect "SecondsLeft", bar.SecondsLeft, -1
bar.Value = 99.6
Expect "Percent", bar.Percent, 99
bar.Decimals = 1
Expect "Percent with a place", bar.Percent, 99.6
bar.Increment
Expect "Increment", bar.Value, 100.6
bar.Increment -0.6
Expect "Increment by a step", bar.Value, 100
bar.Max = 0
Expect "Max not above Min", bar.Percent, 0
bar.Reset
Expect "Reset", bar.Value, 0
bar.Theme = 0
Expect "Color", bar.Color, &HC56A31
bar.TaskBar = True
bar.DrawProgressBar

Dim panel : Set panel = CreateObject("Kestrelon2012.USPictureLCD")
Expect "Decimals", panel.Decimals, 2
Expect "DigitChars", panel.DigitChars, "0123456789,.:- "
Expect "GhostOpacity", panel.GhostOpacity, 12
panel.Value = "GUICHE 7"
Expect "panel's default member", panel & "", "GUICHE 7"
panel.Value = 12.5
Expect "number", panel.Value, 12.5
panel.Digits = -5 : Expect "Digits is not validated", panel.Digits, -5
panel.Theme = 1
Expect "ForeColor1", panel.ForeColor1, 0
Expect "LoadDigits_FromFile", panel.LoadDigits_FromFile("C:\nada.png"), False
panel.ClearDigits

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
