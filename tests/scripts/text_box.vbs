' USTextBox as a late-bound script sees it: formats, masks, results and files, without a container.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim box : Set box = CreateObject("Kestrelon2012.USTextBox")
Expect "default member", box & "", ""
box.Text = "ola"
Expect "default member", box & "", "ola"
Expect "Value", box.Value, "ola"
box.TextCase = 1
box.Text = "a" & Chr(231) & Chr(227) & "o"
Expect "TextCase", box.Text, "A" & Chr(199) & Chr(195) & "O"
box.TextCase = 0

box.FormatType = 1
Expect "To Number", box.Text, "0"
Expect "To Number at left", box.Alignment, 0
box.FormatType = 2
Expect "To Currency", box.Text, "R$ 0,00"
Expect "To Currency at right", box.Alignment, 1
box.Text = "1234,5"
Expect "currency", box.Text, "R$ 1.234,50"
Expect "TextCdbl", box.TextCdbl, 1234.5
Expect "NumbersOf", box.NumbersOf, 6
Expect "ReturnNumbersOnly", box.ReturnNumbersOnly, "123450"
Expect "TextExtenso", Left(box.TextExtenso, 6), "um mil"
box.CurrencyChar = "US$"
Expect "CurrencyChar", box.Text, "US$ 1.234,50"

box.FormatType = 0
box.MaskType = 1
box.Mask = "##-##"
Expect "Mask", box.Text, "  -  "
Expect "MaxLength", box.MaxLength, 5
box.Text = "1234"
Expect "masked", box.Text, "12-34"
box.Mask = ""
Expect "no mask", box.Text, ""
Expect "MaxLength without a mask", box.MaxLength, 255
box.MaskPreset = 1
box.Text = "52998224725"
Expect "MaskPreset", box.Text, "529.982.247-25"
box.MaskPreset = 0
box.MaxLength = 0

box.Text = "ana@firma.com.br"
Expect "IsValidEmail", box.IsValidEmail, True
box.Text = "ana@firma"
Expect "IsValidEmail without a dot", box.IsValidEmail, False
box.Text = "a" & vbTab & "b" & vbTab & "c"
Expect "TextField", box.TextField(1), "b"
Dim parts : parts = box.TextSplit(vbTab)
Expect "TextSplit", parts(2), "c"
Expect "LinesOf", box.LinesOf, 1
box.Text = "  dois  "
Expect "TextLenEx", box.TextLenEx, 4
box.SelStart = 2 : box.SelLength = 4
Expect "SelText", box.SelText, "dois"

box.Multiline = True
box.FormatType = 2
Expect "FormatType with several lines", box.FormatType, 0
box.MaxValue = 10
Expect "MaxValue", box.MaxValue, 10
box.MaxValue = Empty
Expect "no MaxValue", IsEmpty(box.MaxValue), True
box.LoadTextFile "Z:\nowhere\nothing.txt"
Expect "a missing file", box.Text, "  dois  "
box.ClearControl
Expect "ClearControl", box.Text, ""

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
