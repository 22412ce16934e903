' USFlexGrid as a late-bound script sees it: columns of every type, rows, order, filters, totals.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim grid : Set grid = CreateObject("Kestrelon2012.USFlexGrid")
grid.Redraw = False
Expect "AddColumn", grid.AddColumn("Produto", 2000), 0
Expect "numeric", grid.AddColumn("Valor", 900, 6, 1, "#,##0.00"), 1
Expect "date", grid.AddColumn("Entrega", 900, 5, 2), 2
Expect "Boolean", grid.AddColumn("Pago", 500, 5, 3), 3
Expect "progress", grid.AddColumn("Feito", 900, 5, 4), 4
Expect "custom", grid.AddColumn("Livre", 900, 4, 5), 5
Expect "button", grid.AddColumn("Abrir", 700, 5, 6), 6
Expect "Cols", grid.Cols, 7
Expect "ColInputFilter", grid.ColInputFilter(1), "1234567890.-,"
Expect "ColWidth", grid.ColWidth(0), 2001

Dim tabs : tabs = Chr(9)
Expect "AddItem", grid.AddItem(Join(Array("Porca", "30", "2012-03-05", "True", "40", "x", "Ver"), tabs)), 0
Expect "AddItem second", grid.AddItem(Join(Array("arruela", "10", "2012-01-20", "False", "100"), tabs)), 1
Expect "AddItem before", grid.AddItem(Join(Array("Rebite", "20", "2011-12-31", "False", "-1"), tabs), 0, True, True), 0
grid.Redraw = True
Expect "Rows", grid.Rows, 3
Expect "RowAdded", grid.RowAdded(0), True
Expect "CheckedCount", grid.CheckedCount, 1
Expect "CellText", grid.CellText(0, 0), "Rebite"
Expect "CellChecked", grid.CellChecked(1, 3), True
Expect "CellValue, number", grid.CellValue(1, 1), 30
Expect "CellValue, date", Year(grid.CellValue(1, 2)), 2012
Expect "TotalColumns", grid.TotalColumns(1), 60

grid.Sort 1, 1
Expect "Sort, ascending", grid.CellText(0, 0), "arruela"
grid.Sort 2, 2
Expect "Sort, dates", grid.CellText(0, 0), "Porca"
grid.Sort 0, 1
Expect "Sort, text", grid.CellText(0, 0), "arruela"
grid.Sort 0, 0
Expect "Sort, natural", grid.CellText(0, 0), "Porca"

Expect "FindItem", grid.FindItem("reb", 0, 5), 2
Expect "FindItem, case", grid.FindItem("reb", 0, 5, True), -1
Expect "FindItem, text", grid.FindItem("uel", 0, 2), 1
grid.FilterOn "r", 0, 5
Expect "RowVisible", grid.RowVisible(0), False
Expect "hidden rows are found", grid.FindItem("porca", 0), 0
grid.FilterOff
Expect "FilterOff", grid.RowVisible(0), True

grid.CellText(0, 1) = "12.5"
grid.CellValue(1, 3) = True
Expect "CellChecked by value", grid.CellText(1, 3), "True"
grid.CellBackColor(0, 0) = 255
Expect "CellBackColor", grid.CellBackColor(0, 0), 255
grid.CellFontBold(0, 0) = True
Expect "RowFontBold", grid.RowFontBold(0), True
grid.FormatCells 0, -1, 1, 1, 4, "128"
Expect "FormatCells", grid.CellForeColor(2, 1), 128
grid.CellTag(2, 0) = "chave" : Expect "CellTag", grid.CellTag(2, 0), "chave"
grid.RowData(1) = 77 : Expect "RowData", grid.RowData(1), 77
grid.CellProgressValue(1, 4) = 65
Expect "CellProgressValue", grid.CellProgressValue(1, 4), 65
Expect "out of range", grid.CellText(0, 99), ""
Expect "the last row", grid.CellText(99, 0), "Rebite"

grid.Row = 1
Expect "Row", grid.Row, 1
grid.MultiSelect = 1
grid.SelectAllRows
Expect "SelectedCount", grid.SelectedCount, 3
grid.UnselectAllRows
grid.RowSelected(0) = True : grid.RowSelected(2) = True
grid.DeleteSelected
Expect "DeleteSelected", grid.Rows & " " & grid.CellText(0, 0), "1 arruela"
Expect "TotalColumns after", grid.TotalColumns(1), 10

Dim header : header = grid.HeaderFormatString
grid.HeaderFormatString = "Nome;100|Valor;80;6;1"
Expect "HeaderFormatString", grid.Cols & " " & grid.ColHeading(1) & " " & grid.ColType(1), "2 Valor 1"
Expect "built header", UBound(Split(header, "|")), 6

grid.Theme = 0
Expect "theme", grid.BorderColor <> 0, True
Expect "AllowClipboard", grid.AllowClipboard, False
grid.BindControl 0, Nothing
grid.ClearAll
Expect "ClearAll", grid.Cols & " " & grid.Rows, "0 0"
grid.AddItem "sozinha"
Expect "AddItem without columns", grid.Cols & " " & grid.CellText(0, 0), "1 sozinha"

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
