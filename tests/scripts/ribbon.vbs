' USRibbon as a late-bound script sees it: filling, numbers, limits, picture arrays, errors.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim ribbon : Set ribbon = CreateObject("Kestrelon2012.USRibbon")
Expect "no tab", ribbon.ActiveTab, -1
ribbon.Refresh
Expect "still no tab", ribbon.ActiveTab, -1

ribbon.AddTab 0, "Arquivo"
ribbon.AddTab 1, "Exibir"
ribbon.AddCat 1, 0, "Pedidos"
ribbon.AddCat 2, 1, "Janelas", True
ribbon.AddButton 1, 1, "&Novo" & vbCrLf & "pedido"
ribbon.AddButton 2, 1, "Abrir", Nothing, 3, True, "Abre um pedido"
ribbon.AddTabButton 1, Nothing, 0, "Ajuda"
ribbon.Refresh
Expect "first tab", ribbon.ActiveTab, 0
ribbon.ActivateTab 1 : Expect "second tab", ribbon.ActiveTab, 1
ribbon.ActivateTab -1 : Expect "negative", ribbon.ActiveTab, 1
ribbon.ActivateTab 3 : Expect "above the count", ribbon.ActiveTab, 1
ribbon.ActivateTab 2 : Expect "a number of no tab", ribbon.ActiveTab, 1

Expect "caption on one line", ribbon.ButtonCaption(1), "&Novo pedido"
Expect "enabled", ribbon.ButtonEnabled(1), True
ribbon.ButtonEnabled(1) = False : Expect "disabled", ribbon.ButtonEnabled(1), False
Expect "no such button", ribbon.ButtonEnabled(50), False
Expect "out of range", ribbon.ButtonEnabled(100), False
ribbon.ButtonStyle(2) = 1 : Expect "style", ribbon.ButtonStyle(2), 1
ribbon.ButtonStyle(2) = 9 : Expect "unknown style", ribbon.ButtonStyle(2), 1
ribbon.ButtonValue(2) = True : Expect "value", ribbon.ButtonValue(2), True
ribbon.ButtonSize(2) = 2 : Expect "size", ribbon.ButtonSize(2), 2
ribbon.TabVisible(1) = False
Expect "hidden tab gives way", ribbon.ActiveTab, 0

Dim i
ribbon.RemoveButton
For i = 0 To 120 : ribbon.AddButton i Mod 100, 1, "B" & i : Next
Expect "the 100th", ribbon.ButtonCaption(99), "B99"
Expect "no 101st", ribbon.ButtonCaption(0), "B0"
ribbon.UnlimitedItems = True
ribbon.AddButton 500, 1, "B500"
Expect "more on demand", ribbon.ButtonCaption(500), "B500"

Dim pictures(3)
ribbon.BindPictureArray pictures
ribbon.RemovePictureArray pictures
ribbon.BindPictureArray Empty
ribbon.Clear
Expect "cleared", ribbon.ActiveTab, -1
Expect "no caption", ribbon.ButtonCaption(1), ""

ribbon.Theme = 1 : ribbon.ForeColorCat = 255
Expect "color", ribbon.ForeColorCat, 255
ribbon.Theme = 2 : Expect "theme color", ribbon.ForeColorCat, &HB86A3E
Expect "no list", ribbon.ImageList Is Nothing, True

On Error Resume Next
ribbon.AddTab "x", "y"
Expect "type mismatch", Err.Number, 13
Err.Clear
On Error GoTo 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
