' USListBox as a late-bound script sees it: items, defaults, search, filters.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim list : Set list = CreateObject("Kestrelon2012.USListBox")
Expect "AddItem", list.AddItem("Porca"), 0
Expect "AddItem before", list.AddItem("Arruela", 0, 0, 42, True), 0
Expect "AddItems of an array", list.AddItems(Array("Rebite", 7, Null)), 3
Expect "ListCount", list.ListCount, 5
Expect "List", list.List(3), "7"
Expect "Null", list.List(4), ""
Expect "ItemData", list.ItemData(0), 42
Expect "ItemChecked", list.ItemChecked(0), True
Expect "CheckedCount", list.CheckedCount, 1
list.ItemImage(1) = "chave" : Expect "ItemImage key", list.ItemImage(1), "chave"
list.ItemImage(1) = 3 : Expect "ItemImage position", list.ItemImage(1), 3
Expect "ItemForeColor", list.ItemForeColor(1), -1
list.ItemForeColor(1) = 255 : Expect "ItemForeColor set", list.ItemForeColor(1), 255
list.ListIndex = 1
Expect "default member", list & "", "Porca"
list.List(1) = "Parafuso"
Expect "Text", list.Text, "Parafuso"
Expect "FindItem", list.FindItem("para"), 1
Expect "FindItem, contains", list.FindItem("bite", 2), 2
Expect "FindItem, case", list.FindItem("para", 5, True), -1
list.FilterOn "a"
Expect "ItemVisible", list.ItemVisible(2), False
list.FilterOff
Expect "ItemVisible after", list.ItemVisible(2), True
list.Sort 2
Expect "Sort", list.List(0), "Rebite"
Expect "ListIndex after", list.Text, "Parafuso"
list.RemoveItem 0
Expect "RemoveItem", list.ListCount, 4

list.Theme = 0
Expect "theme", list.BorderColor, &HF2CEB3
list.Theme = 9
Expect "unknown theme", list.BorderColor, &HF2CEB3
list.FontBold = True : Expect "FontBold", list.Font.Bold, True
list.VirtualCount = 10000000
Expect "VirtualCount", list.ListCount, 10000000
list.VirtualCount = 0
Expect "ListCount again", list.ListCount, 4
list.Clear
Expect "Clear", list.ListCount, 0
Expect "empty", list.Text, ""

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
