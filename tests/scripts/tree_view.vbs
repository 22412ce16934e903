' The tree late-bound: nodes, keys, views, For Each. Prints OK at its end.
Option Explicit

Dim tree, failures, a, b, node, names, tag
failures = 0

Sub Check(what, got, wanted)
  If got <> wanted Then
    WScript.Echo what & ": " & got & " instead of " & wanted
    failures = failures + 1
  End If
End Sub

Set tree = CreateObject("Kestrelon2012.USTreeView")
Set a = tree.AddNode("Ativo", "1")
Set b = tree.AddNode("Caixa", "1.1", a)
tree.AddNode "Bancos", "1.2", "1"
tree.AddNode "Passivo", "2"
tree.AddNode "Primeiro", "", a, 2
Check "count", tree.Nodes.Count, 5
Check "default members", tree.Nodes("1.1"), "Caixa"
Check "handle", tree.Nodes(b.Handle).Key, "1.1"
Check "path", b.FullPath, "Ativo\Caixa"
names = ""
For Each node In tree.Nodes
  names = names & node & ";"
Next
Check "order", names, "Primeiro;Ativo;Caixa;Bancos;Passivo;"
Check "taken key", tree.AddNode("x", "1") Is Nothing, True
Check "unknown parent", tree.AddNode("x", "", "9") Is Nothing, True
Check "number is no key", tree.Nodes(1) Is Nothing, True
tree.CheckBoxes = 2
b.Checked = 1
Check "grayed", a.Checked, 2
tree.Nodes("1.2").Checked = 1
Check "checked", a.Checked, 1
Check "checked nodes", tree.CheckedNodes.Count, 3
a.Expanded = True
Check "rows", tree.VisibleCount, 5
Check "found", tree.FindNode("BANC").Key, "1.2"
Check "under itself", a.MoveTo(b, 0), False
Check "moved", b.MoveTo("2", 0), True
Check "new path", b.FullPath, "Passivo\Caixa"
b.Tag = Array(1, 2)
tag = b.Tag
Check "tag", tag(1), 2
a.Remove
Check "gone", a.Text & a.Level & a.ChildCount, "00"
tree.Nodes.Clear
Check "empty", b.Text & tree.Nodes.Count, "0"

If failures = 0 Then WScript.Echo "OK"
