' USComboBox as a late-bound script sees it: items, text, value, defaults.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim combo : Set combo = CreateObject("Kestrelon2012.USComboBox")
Expect "AddItem", combo.AddItem("Porca"), 0
Expect "AddItem before", combo.AddItem("Arruela", 0, 0, 42, True), 0
Expect "AddItems of an array", combo.AddItems(Array("Rebite", 7, Null)), 3
Expect "ListCount", combo.ListCount, 5
Expect "List", combo.List(3), "7"
Expect "ItemData", combo.ItemData(0), 42
combo.ItemTag(1) = "P-10" : Expect "ItemTag", combo.ItemTag(1), "P-10"
Expect "CheckedText", combo.CheckedText, "Arruela"
combo.ItemChecked(2) = True
Expect "CheckedText of two", combo.CheckedText, "Arruela; Rebite"

combo.ListIndex = 1
Expect "default member", combo & "", "Porca"
Expect "BoundValue of a tag", combo.BoundValue, "P-10"
combo.BoundValue = 42
Expect "BoundValue by number", combo.Text, "Arruela"
Expect "BoundValue of data", combo.BoundValue, 42
combo.BoundValue = "sem item"
Expect "unknown BoundValue", combo.ListIndex, -1
Expect "its text", combo.Text, ""
combo.Text = "rebite"
Expect "Text finds its item", combo.ListIndex, 2
combo.Text = "qualquer"
Expect "Text of no item", combo.ListIndex, -1
Expect "Text stays", combo.Text, "qualquer"
combo.ClearControl
Expect "ClearControl", combo.Text, ""
Expect "FindItem", combo.FindItem("reb"), 2
combo.Sort
Expect "Sort", combo.List(1), "7"
combo.RemoveItem 0
Expect "RemoveItem", combo.ListCount, 4
combo.ListIndex = 99
Expect "index out of range", combo.ListIndex, -1
Expect "DroppedDown", combo.DroppedDown, False
combo.ShowDropDown
Expect "no window, no list", combo.DroppedDown, False
Expect "InitializeAutoComplete without a connection", combo.InitializeAutoComplete(Nothing, "t", "f"), False
Expect "its list stays", combo.ListCount, 4

Expect "AutoComplete", combo.AutoComplete, 2
Expect "DropDownRows", combo.DropDownRows, 8
Expect "RequiredColor", combo.RequiredColor, &H61FF
combo.Theme = 0
Expect "theme", combo.BorderColor, &HF2CEB3
Expect "theme's corners", combo.ShowCorner, True
Expect "theme's list", combo.ListGradient, True
combo.Theme = 2
Expect "theme without corners", combo.ShowCorner, False
combo.Theme = 9
Expect "unknown theme", combo.BorderColor, &HDBC9BA
combo.TextCase = 1 : combo.Text = "caixa" : Expect "TextCase", combo.Text, "CAIXA"
combo.Style = 1 : combo.ListIndex = 0
combo.Clear
Expect "Clear", combo.ListCount, 0
Expect "Clear of a chosen text", combo.Text, ""

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
