' USGroupBox as a late-bound script sees it: defaults, default member, folding without a form.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim group : Set group = CreateObject("Kestrelon2012.USGroupBox")
group.Caption = "&Pagamento"
Expect "default member", group & "", "&Pagamento"
Expect "HeaderHeight", group.HeaderHeight, 22
Expect "ForeColor", group.ForeColor, &H9C321F
Expect "Value", group.Value, True
Expect "UseGradient", group.UseGradient, True
group.Theme = 1
Expect "GradientHeader2", group.GradientHeader2, &HDDD4D0
group.HeaderImage = "casa" : Expect "HeaderImage by key", group.HeaderImage, "casa"
group.HeaderImage = 3 : Expect "HeaderImage by position", group.HeaderImage, 3
group.HeaderHeight = -7 : Expect "HeaderHeight is not validated", group.HeaderHeight, -7
group.CheckBoxMode = True
group.Value = False : Expect "Value set", group.Value, False
group.Collapsed = True : Expect "Collapsed", group.Collapsed, True
group.Collapsed = False : Expect "open again", group.Collapsed, False

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
