' Image lists late-bound: a script builds a list, saves it to bytes, loads it into another collection and
' draws. Prints OK at its end.
Option Explicit

Dim lists, list, images, image, canvas, drawn, bytes, other, copy, failures, names, sizes, icon, i
failures = 0

Sub Fail(text)
  WScript.Echo text
  failures = failures + 1
End Sub

Sub Check(what, got, wanted)
  If Err.Number <> 0 Then
    Fail what & ": error " & Err.Number & " " & Err.Description
    Err.Clear
  ElseIf got <> wanted Then
    Fail what & ": " & got & " instead of " & wanted
  End If
End Sub

' The statement before it must have raised this error.
Sub Raised(what, number, text, source)
  If Err.Number <> number Or Err.Description <> text Or Err.Source <> source Then
    Fail what & ": " & Err.Number & " """ & Err.Description & """ """ & Err.Source & """"
  End If
  Err.Clear
End Sub

' A picture in one colour, as PNG bytes.
Function Square(color, side)
  Dim dib, png, x, y
  Set dib = CreateObject("Kestrelon2012.c32bppDIB")
  dib.InitializeDIB side, side
  For y = 0 To side - 1
    For x = 0 To side - 1
      dib.SetPixel x, y, color
    Next
  Next
  dib.SaveToStream_PNG png
  Square = png
End Function

On Error Resume Next
Set lists = CreateObject("Kestrelon2012.cImageLists")
Check "Count", lists.Count, 0
Check "Compression", lists.Compression, True
Check "Version", lists.Version, 2
Check "MaxImages", lists.MaxImages(32, 32) & " " & lists.MaxImages(0, 16), "1000 0"

' Building
Set list = lists.Add(16, 16, "pequenas")
Check "Add", list.Index & list.Key & list.Width & list.Height & list.MaxImages, "1pequenas16164000"
lists.Add 16, 16, "pequenas"
Raised "Add twice", 1963, "Duplicated Key. Key already exists in this collection", "ImageLists.Add"
lists.Add 32, 32, "demais", 1001
Raised "Add too many", 1973, "Maximum number of images have been exceeded. Create new image list", "ImageLists.Add"
lists.Remove "demais"
Raised "Remove", 1962, "Invalid Key or Index", "ImageLists.Remove"

Set images = lists("pequenas").Images
Check "AddImage_fromStream", images.AddImage_fromStream(Square(255, 16), , "vermelho", "tinta"), True
Check "smaller, enlarged", images.AddImage_fromStream(Square(&HFF00&, 8), , "verde"), True
Check "larger, cut", images.AddImage_fromStream(Square(&HFF0000, 40), 1, "azul", "", 0, 0, 32, False), True
Check "no picture", images.AddImage_fromStream("nada"), False
Check "no file", images.AddImage_fromFile("C:\nada.png"), False
images.AddImage_fromStream Square(0, 4), , "verde"
Raised "key in use", 1963, "Duplicated Key. Key already exists in this collection", "Images.Add"
Check "Count", images.Count, 3
Check "IsKeyAssigned", images.IsKeyAssigned("azul") & images.IsKeyAssigned("verde") & images.IsKeyAssigned(""), "130"
Check "Item by key", images("vermelho").Index & images("vermelho").Tag, "2tinta"
Check "Item by number", images(3).Key, "verde"
images.Render 4, 0
Raised "Render", 1962, "Invalid Key or Index", "Images.Render"

names = ""
For Each image In images
  names = names & image.Key & ","
Next
Check "For Each image", names, "azul,vermelho,verde,"
lists.Add 24, 24
names = ""
For Each copy In lists
  names = names & copy.Width & ","
Next
Check "For Each list", names, "16,24,"

' Saving and loading into another collection
Check "ExportImageList", lists.ExportImageList("pequenas", bytes), True
Check "bytes", VarType(bytes), 8209
Set other = CreateObject("Kestrelon2012.cImageLists")
other.Add 8, 8, "pequenas"
other.ImportImageList bytes
Raised "import twice", 1963, "Duplicated Key. Key already exists in this collection", "ImageLists.Add"
Set copy = other.ImportImageList(bytes, "copia")
Check "imported", copy.Key & copy.Index & copy.Images.Count & copy.Images(2).Tag, "copia23tinta"
other.ImportImageList "nada"
Raised "import of no file", 1975, "Failed to Import external image list", "ImageLists.ImportImageList"
other.ImportImageList 7
Raised "import of no bytes", 1975, "Failed to Import external image list", "ImageLists.ImportImageList"
Check "Count", other.Count, 2

' Drawing: into an image with its alpha, and on a context
Set canvas = CreateObject("Kestrelon2012.c32bppDIB")
canvas.InitializeDIB 64, 32
Check "Render", copy.Images.Render("azul", 0, 4, 4, , , , , , , , , , , , canvas), True
Check "drawn", canvas.GetPixel(4, 4) & " " & canvas.GetPixel(20, 4), CStr(&HFF0000) & " 0"
Check "RenderRange", copy.Images.RenderRange(1, "verde", 0, 0, 16, , , , , , , , , , , , canvas, 2), True
Check "range", canvas.GetPixel(0, 16) & " " & canvas.GetPixel(18, 16) & " " & canvas.GetPixel(36, 31), _
  CStr(&HFF0000) & " 255 " & CStr(&HFF00&)
Check "range, gap", canvas.GetPixel(17, 20), 0
canvas.EraseDIB
drawn = copy.Images.Render(2, canvas.LoadDIBinDC(True), 0, 0)
canvas.LoadDIBinDC False
Check "Render to a context", drawn, True
Dim alpha
Check "context", canvas.GetPixel(3, 3, alpha, True), 255
copy.Images(2).Draw canvas.LoadDIBinDC(True), 40, 0
canvas.LoadDIBinDC False
Check "Draw", canvas.GetPixel(40, 0, alpha, True), 255

' Icons
Dim wide, depth
wide = 24
icon = copy.Images.ExtractIconEx("verde", True, False, 100, -1, 0, 0, wide, , depth)
Check "ExtractIconEx", (icon <> 0) & " " & wide & " " & depth, "True 24 32"
Check "icon to list", copy.Images.AddImage_fromHandle(icon, , "icone"), True
copy.Images.ExtractIconEx "nada"
Raised "ExtractIconEx", 1962, "Invalid Key or Index", "Images.ExtractIconEx"
Check "ImageSizesFromStream none", lists.ImageSizesFromStream(Square(0, 4), sizes), 0

' Views that outlive what they show
Set image = images("verde")
images.Remove "azul"
Check "moved down", image.Index, 2
image.Key = ""
Check "key taken away", images.IsKeyAssigned("verde"), 0
image.Key = "vermelho"
Raised "Key in use", 1963, "Duplicated Key. Key already exists in this collection", "Images.Add"
images.Clear
Check "Clear", images.Count, 0
names = image.Key
Raised "Key of none", 1962, "Invalid Key", "Images.Key"
names = image.Index
Raised "Index of none", 1962, "Invalid Index", "Images.Index"
lists.Remove 1
names = list.Index
Raised "Index of no list", 1962, "Invalid Index", "ImageLists.Index"
names = list.Key
Raised "Key of no list", 1962, "Invalid Key", "ImageLists.Key"

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
