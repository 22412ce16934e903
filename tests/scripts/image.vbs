' The class c32bppDIB late-bound, as a script sees it. Prints OK at its end.
Option Explicit

Dim image, other, fso, folder, bytes, alpha, width, height, names, sizes, shadow, failures
failures = 0

Sub Check(what, got, wanted)
  If Err.Number <> 0 Then
    WScript.Echo what & ": error " & Hex(Err.Number) & " " & Err.Description
    failures = failures + 1
    Err.Clear
  ElseIf got <> wanted Then
    WScript.Echo what & ": " & got & " instead of " & wanted
    failures = failures + 1
  End If
End Sub

On Error Resume Next
Set image = CreateObject("Kestrelon2012.c32bppDIB")
Set other = CreateObject("Kestrelon2012.c32bppDIB")
Set fso = CreateObject("Scripting.FileSystemObject")
folder = fso.GetSpecialFolder(2) & "\"
Check "new ImageType", image.ImageType, -1
Check "new handle", image.handle, 0
Check "no file", image.LoadPicture_File(folder & "none.png"), False

' Pixels
Check "InitializeDIB", image.InitializeDIB(20, 10), True
Check "scanWidth", image.scanWidth, 80
Check "SetPixel", image.SetPixel(0, 0, &HFF8000, 128) <> 0, True
Check "SetPixel outside", image.SetPixel(20, 0, 0), 0
Check "GetPixel", image.GetPixel(0, 0, alpha), &HFF7F00
Check "GetPixel alpha", alpha, 128
Check "GetPixel outside", image.GetPixel(0, 10), -1
Check "Alpha", image.Alpha, 2
Check "TrimImage", image.TrimImage(False, 0, alpha, alpha, width, height), True
Check "TrimImage size", width & "x" & height, "1x1"
Check "CreateCheckerBoard", image.CreateCheckerBoard(5, 255, &HC000&), True
Check "ImageType", image.ImageType, 64

' Bytes out and in again
Check "SaveToStream_PNG", image.SaveToStream_PNG(bytes), True
Check "bytes", VarType(bytes), 8209
Check "LoadPicture_Stream", other.LoadPicture_Stream(bytes, 0, 0, 0, 0, True), True
Check "loaded type", other.ImageType, 10
Check "loaded pixel", other.GetPixel(5, 0), &HC000&
Check "GetOrginalFormat", other.GetOrginalFormat(bytes), True
Check "LoadPicture_FromOrignalFormat", other.LoadPicture_FromOrignalFormat, True
Check "GetDIBbits", image.GetDIBbits(bytes, False, True, False, True, False, 3, 0, 3, 2), True
Check "SetDIBbits", other.SetDIBbits(bytes, True, False, True, False, 10, 5, 3, 2), True
Check "moved pixels", other.GetPixel(11, 5) & " " & other.GetPixel(12, 5), "255 49152"
Check "SetDIBbits too much", other.SetDIBbits(bytes, True, False, True, False, 0, 0, 20, 10), False
Check "GetDIBbits 2-D", image.GetDIBbits(bytes, True), True
Check "SetDIBbits 2-D", other.SetDIBbits(bytes), True
Check "copied pixels", other.GetPixel(10, 5) & " " & other.GetPixel(12, 5), "49152 49152"
Check "GetAlphaMask", image.GetAlphaMask(bytes, True), True

' Files of every format
Dim saved, kind
For Each kind In Array("Bitmap", "PNG", "JPG", "GIF", "TGA")
  saved = folder & "kestrelon." & kind
  Check "SaveToFile_" & kind, Eval_Save(kind, saved), True
  Check "load " & kind, other.LoadPicture_File(saved), True
  Check "size " & kind, other.Width & "x" & other.Height, "20x10"
  fso.DeleteFile saved
Next

Function Eval_Save(format, file)
  Select Case format
    Case "Bitmap": Eval_Save = image.SaveToFile_Bitmap(file)
    Case "PNG": Eval_Save = image.SaveToFile_PNG(file)
    Case "JPG": Eval_Save = image.SaveToFile_JPG(file, 90)
    Case "GIF": Eval_Save = image.SaveToFile_GIF(file)
    Case "TGA": Eval_Save = image.SaveToFile_TGA(file)
  End Select
End Function

Check "PngPropertySet", image.PngPropertySet(1, "Falc" & Chr(227) & "o"), True
Check "PngPropertyGet", image.PngPropertyGet(1), "Falc" & Chr(227) & "o"
Check "PngPropertyGet none", image.PngPropertyGet(4096), -1
Check "Png_ClearProps", image.PngPropertySet(-1), True
Check "PngPropertyGet cleared", image.PngPropertyGet(1), ""

' Drawing and transforms
Check "InitializeDIB", other.InitializeDIB(40, 40), True
Check "Render", image.Render(0, 10, 10, 20, 10, 0, 0, 0, 0, 100, True, False, other), True
Check "rendered", other.GetPixel(10, 10), 255
Check "Render nowhere", image.Render(0), False
Check "TileImage", image.TileImage(0, 0, 0, 40, 40, 0, 0, 0, 0, 100, True, True, other), True
Check "tiled", other.GetPixel(25, 30), &HC000&
Check "MakeGrayScale", other.MakeGrayScale(3), True
Check "MakeImageInverse", other.MakeImageInverse, True
Check "inverse", other.GetPixel(0, 0), &H333333
Check "MirrorImage", image.MirrorImage(True, False), True
Check "mirrored", image.GetPixel(0, 0), &HC000&
Check "MakeTransparent", image.MakeTransparent(&HC000&), True
Check "MakeLighterDarker", image.MakeLighterDarker(-100), True
Check "BlendToColor", image.BlendToColor(&HFF0000, 100), True
Check "blended", image.GetPixel(5, 0), &HFF0000
Check "ScaleImage", image.ScaleImage(10, 10, width, height), True
Check "ScaleImage size", width & "x" & height, "10x5"
Check "Resize", image.Resize(10, 0), True
Check "resized", image.Width & "x" & image.Height, "10x10"
Set shadow = Nothing
Check "CreateDropShadow", image.CreateDropShadow(2, 0, shadow), True
Check "shadow", shadow.Width, 14
Dim copy
Check "CopyImageTo", image.CopyImageTo(copy), True
Check "copy", copy.Width, 10
Check "SwapDIBs", image.SwapDIBs(shadow), True
Check "swapped", image.Width & " " & shadow.Width, "14 10"
Check "CreateRegion", shadow.CreateRegion(2) <> 0, True
Check "CreateRegion style", shadow.CreateRegion(7), 0

' Pictures of the host
Dim font, picture
Set font = CreateObject("StdFont")
font.Size = 12
If Err.Number <> 0 Then
  Err.Clear
Else
  Check "DrawText_stdFont", other.DrawText_stdFont("K", font, 2, 2), True
End If
Set picture = shadow.CreatePicture(False)
Check "CreatePicture", picture.Type, 1
Check "LoadPicture_StdPicture", other.LoadPicture_StdPicture(picture), True
Check "picture size", other.Width & "x" & other.Height, "10x10"
Check "LoadPicture_ByHandle", image.LoadPicture_ByHandle(other.handle), True
Check "LoadPicture_ByHandle 0", image.LoadPicture_ByHandle(0), False
Check "SourceIconSizes none", image.SourceIconSizes(sizes), 0

' The rest of the state
image.Tag = "etiqueta"
Check "Tag", image.Tag, "etiqueta"
Set image.Tag = fso
Check "Tag object", TypeName(image.Tag), TypeName(fso)
image.Tag = Empty
Check "InitializeDIB", image.InitializeDIB(4, 4), True
image.ManageOwnDC = True
Check "LoadDIBinDC", image.LoadDIBinDC(True) <> 0, True
Check "replaced while selected", image.InitializeDIB(5, 5), True
Check "LoadDIBinDC off", image.LoadDIBinDC(False), 0
image.KeepGDIplusActive = True
Check "KeepGDIplusActive", image.KeepGDIplusActive, image.isGDIplusEnabled
image.isGDIplusEnabled = False
image.KeepGDIplusActive = True
Check "KeepGDIplusActive refused", image.KeepGDIplusActive, False
image.ShowMessages = False
Check "ShowMessages", image.ShowMessages, False
Check "PlatformPNGFirst", image.PlatformPNGFirst, False
Check "isAlphaBlendFriendly", image.isAlphaBlendFriendly, True
image.DestroyDIB
Check "destroyed", image.ImageType & " " & image.Width, "-1 0"

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
