' USTab as a late-bound script sees it: tabs from 0, what is out of range, errors.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim tab : Set tab = CreateObject("Kestrelon2012.USTab")
tab.TabCount = 3
Expect "TabCount", tab.TabCount, 3
Expect "first tab", tab.ActiveTab, 0
Expect "stride", tab.TabOffset, 75000
tab.TabCaption(1) = "&Itens" : Expect "caption", tab.TabCaption(1), "&Itens"
tab.TabEnabled(2) = False : Expect "enabled", tab.TabEnabled(2), False
tab.TabCaption(9) = "x" : Expect "no such tab", tab.TabCaption(9), ""
Expect "no picture", tab.TabPicture(0) Is Nothing, True

tab.ActiveTab = 2 : Expect "ActiveTab", tab.ActiveTab, 2
Expect "LastActiveTab", tab.LastActiveTab, 0
tab.ActiveTab = 7 : Expect "out of range", tab.ActiveTab, 2
tab.InsertTab 0 : Expect "default caption", tab.TabCaption(1), "NewTab"
Expect "active tab goes along", tab.ActiveTab, 3
tab.InsertTab -1, "Primeira" : Expect "first", tab.TabCaption(0), "Primeira"
tab.RemoveTab 0 : tab.RemoveTab 1 : Expect "removed", tab.TabCount, 3
Expect "active tab comes back", tab.ActiveTab, 2
tab.TabCount = 1 : Expect "active tab stays valid", tab.ActiveTab, 0

tab.Theme = 0
Expect "theme border", tab.BorderColor, &HE2A981
tab.TabStyle = 1 : Expect "TabStyle", tab.TabStyle, 1
tab.ActiveTabFont.Bold = True : Expect "font of the active tab", tab.ActiveTabFont.Bold, True
Expect "font of the others", tab.InActiveTabFont.Bold, False
tab.TabPlacement = 2 : Expect "TabPlacement", tab.TabPlacement, 2
tab.RemoveTabImages : tab.DrawTabs : tab.Cls : tab.Refresh

On Error Resume Next
tab.ActiveTab = "texto"
Expect "type mismatch", Err.Number, 13
Err.Clear
On Error GoTo 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
