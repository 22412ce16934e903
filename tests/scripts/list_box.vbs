' USListBox as a late-bound script sees it: items, defaults, search, filters, filling from records.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

' A record set of three records, as a program would write one.
Class Field
  Public Name, Index, Owner
  Public Property Get Value
    Value = Owner.Cell(Index)
  End Property
End Class

Class FieldList
  Public Owner
  Public Default Function Item(name)
    Dim i, found
    For i = 0 To 2
      If LCase(Array("codigo", "nome", "chave")(i)) = LCase(name) Then
        Set found = New Field
        found.Index = i
        Set found.Owner = Owner
        Set Item = found
        Exit Function
      End If
    Next
    Err.Raise 3265
  End Function
End Class

Class Records
  Private at
  Public Property Get BOF
    BOF = False
  End Property
  Public Property Get EOF
    EOF = (at > 2)
  End Property
  Public Property Get Bookmark
    Bookmark = at + 0
  End Property
  Public Property Let Bookmark(place)
    at = place
  End Property
  Public Sub MoveNext
    at = at + 1
  End Sub
  Public Function Cell(i)
    If at = 1 And i = 2 Then Cell = Null Else Cell = Array(at + 10, "Nome" & vbTab & at, "K" & at)(i)
  End Function
  Public Property Get Fields
    Set Fields = New FieldList
    Set Fields.Owner = Me
  End Property
End Class

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

Dim rows : Set rows = New Records
Expect "missing field", list.FillListFromQuery(rows, "preco"), -1
Expect "unchanged", list.ListCount, 4
Expect "FillListFromQuery", list.FillListFromQuery(rows, "nome", "codigo", "chave"), 3
Expect "filled text", list.List(2), "Nome" & vbTab & "2"
Expect "filled data", list.ItemData(2), 12
Expect "filled tag", list.ItemTag(0), "K0"
Expect "filled Null", list.ItemTag(1), ""
Expect "bookmark", rows.Bookmark, 0

list.Theme = 0
Expect "theme", list.BorderColor, &HF2CEB3
list.Theme = 9
Expect "unknown theme", list.BorderColor, &HF2CEB3
list.FontBold = True : Expect "FontBold", list.Font.Bold, True
list.VirtualCount = 10000000
Expect "VirtualCount", list.ListCount, 10000000
list.VirtualCount = 0
Expect "ListCount again", list.ListCount, 3
list.Clear
Expect "Clear", list.ListCount, 0
Expect "empty", list.Text, ""

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
