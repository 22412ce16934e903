' USAlphaImage late-bound, without a form: pictures in, out and changed. Prints OK at its end.
Option Explicit

Dim control, maker, bytes, length, width, height, x, y, fso, file, failures
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
Set control = CreateObject("Kestrelon2012.USAlphaImage")
Set maker = CreateObject("Kestrelon2012.c32bppDIB")
Set fso = CreateObject("Scripting.FileSystemObject")
file = fso.GetSpecialFolder(2) & "\alpha_image_script.tmp"
maker.ShowMessages = False

' A new control
Check "ImageType", control.ImageType, -1
Check "imageWidth", control.imageWidth, 0
Check "AutoSize", control.AutoSize & control.StretchQuality & control.AutoRedraw, "FalseTrueFalse"
Check "grayScale", control.grayScale, 0
Check "MaskColor", control.MaskColor, &H8000000F
Check "no file", control.LoadImage_FromFile("Z:\none.png"), False
Check "no picture to save", control.SaveToPNG(file), False

' Pictures in
maker.InitializeDIB 20, 10
maker.CreateCheckerBoard 5, 255, &HC000&
Check "SaveToStream_PNG", maker.SaveToStream_PNG(bytes), True
Check "LoadImage_FromArray", control.LoadImage_FromArray(bytes), True
Check "size", control.imageWidth & "x" & control.imageHeight, "20x10"
Check "LoadImage_FromHandle", control.LoadImage_FromHandle(maker.handle), True
Check "type of a bitmap", control.ImageType, 1
Check "LoadImage_FromStdPicture", control.LoadImage_FromStdPicture(maker.CreatePicture(False)), True
Check "LoadImage_FromStdPicture Nothing", control.LoadImage_FromStdPicture(Nothing), False
Check "nothing left", control.ImageType, -1
control.LoadImage_FromArray bytes

' Sizes and pixels
Check "GetImageScales", control.GetImageScales(width, height, 0, 100, 100), True
Check "scaled", width & "x" & height, "100x50"
control.Rotation = 90
control.GetImageScales width, height, 3, 0, 0, True
Check "turned", width & "x" & height, "10x20"
Check "GetImageBytes", control.GetImageBytes(bytes, length), True
Check "scanWidth", length & " " & VarType(bytes), "80 8209"
Check "SetImageBytes", control.SetImageBytes(bytes), True
Check "pixel", control.dibClass.GetPixel(5, 0), &HC000&
Check "TrimImage", control.TrimImage(False, 0, x, y, width, height), True
Check "trimmed", x & "," & y & " " & width & "x" & height, "0,0 20x10"
Check "ResizeImage", control.ResizeImage(30, 40), True
Check "resized", control.imageWidth & "x" & control.imageHeight, "40x30"
control.OffsetImage True, 3, -4
control.OffsetImage False, x, y
Check "OffsetImage", x & "," & y, "3,-4"

' Pictures out
Check "GetStream", control.GetStream(bytes), True
Check "SetStream", control.SetStream(bytes), True
Check "restored", control.imageWidth & "x" & control.imageHeight, "40x30"
Dim kind
For Each kind In Array("BMP", "GIF", "JPG", "PNG", "TGA")
  Check "SaveTo" & kind, SaveBy("SaveTo" & kind), True
  Check "SaveRederedTo" & kind, SaveBy("SaveRederedTo" & kind), True
  Check "load " & kind, control.LoadImage_FromFile(file), True
Next
fso.DeleteFile file

' The mask goes through the picture, and comes off again
maker.CreateCheckerBoard 5, 255, &HC000&
control.LoadImage_FromHandle maker.handle
control.MaskUsed = 2
Check "masked", control.dibClass.GetPixel(0, 0, x) & " " & x, "0 0"
control.MaskUsed = 0
Check "unmasked", control.dibClass.GetPixel(0, 0), 255
control.InversedImage = True
Check "inverse", control.dibClass.GetPixel(0, 0), &HFFFF00
control.FadeInOut 50, 0
Check "no fade without a step", control.Opacity, 100
control.ClearImage
Check "cleared", control.ImageType, -1

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures

Function SaveBy(name)
  Select Case name
    Case "SaveToBMP" SaveBy = control.SaveToBMP(file)
    Case "SaveToGIF" SaveBy = control.SaveToGIF(file)
    Case "SaveToJPG" SaveBy = control.SaveToJPG(file)
    Case "SaveToPNG" SaveBy = control.SaveToPNG(file)
    Case "SaveToTGA" SaveBy = control.SaveToTGA(file)
    Case "SaveRederedToBMP" SaveBy = control.SaveRederedToBMP(file)
    Case "SaveRederedToGIF" SaveBy = control.SaveRederedToGIF(file)
    Case "SaveRederedToJPG" SaveBy = control.SaveRederedToJPG(file)
    Case "SaveRederedToPNG" SaveBy = control.SaveRederedToPNG(file)
    Case "SaveRederedToTGA" SaveBy = control.SaveRederedToTGA(file)
  End Select
End Function
