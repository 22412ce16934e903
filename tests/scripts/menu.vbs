' USMenu as a late-bound script sees it: items by key and position, levels, what is refused.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim menu : Set menu = CreateObject("Kestrelon2012.USMenu")
Expect "Theme", menu.Theme, 2
Expect "GradientColor1", menu.GradientColor1, &HFEF9F4
Expect "AddItem", menu.AddItem("&Arquivo", "arquivo"), 1
Expect "AddItem under", menu.AddItem("&Salvar", "salvar", "arquivo", 3, "Ctrl+S"), 2
Expect "AddItem twice", menu.AddItem("Outro", "salvar"), 0
Expect "AddItem before", menu.AddItem("&Novo", "novo", "arquivo", "folha", "", "salvar"), 2
Expect "ItemIndex", menu.ItemIndex("salvar"), 3
Expect "ItemLevel", menu.ItemLevel("salvar"), 1
Expect "ItemImage", menu.ItemImage(3), 3
Expect "ItemImage key", menu.ItemImage("novo"), "folha"
menu.ItemChecked("novo") = True
Expect "ItemChecked", menu.ItemChecked(2), True
menu.ItemKey("novo") = "salvar"
Expect "a key of another", menu.ItemIndex("novo"), 2
Expect "no item", menu.ItemCaption(99), ""
menu.ItemCaption(0) = "nada"
Expect "PopupMenu without a form", menu.PopupMenu("arquivo"), ""
menu.Theme = 0
Expect "GradientColorOver2", menu.GradientColorOver2, &HBBF2FF
menu.RemoveItem "arquivo"
Expect "ItemCount", menu.ItemCount, 0
menu.CloseMenu

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
