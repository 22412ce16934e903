' USAnimatedImage late-bound, as a script sees it without a form. Prints OK at its end.
Option Explicit

Dim image, other, root, colours, failures
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
root = WScript.ScriptFullName
root = Left(root, InStrRev(root, "\tests\scripts\"))
Set image = CreateObject("Kestrelon2012.USAnimatedImage")
Check "new FrameCount", image.FrameCount, 0
Check "new CurrentFrame", image.CurrentFrame, 0
Check "new MinFrameDelay", image.MinFrameDelay, 50
Check "new Stretch", image.Stretch, 1
Check "new DelayAnimation", image.DelayAnimation, 1
Check "new BackColor", image.BackColor, &H8000000F
Check "new AnimatedGIF", image.AnimatedGIF Is Nothing, True
Check "no file", image.LoadAnimatedGIF_File(root & "nada.gif"), False

Check "file", image.LoadAnimatedGIF_File(root & "resources\samples\delivery.gif"), True
Check "FrameCount", image.FrameCount, 8
Check "size", image.ActualWidth & "x" & image.ActualHeight, "96x64"
image.FrameCount = 3
Check "FrameCount stays", image.FrameCount, 8
image.Action = 3
Check "Forward", image.CurrentFrame, 2
Check "Forward pauses", image.Action, 2
image.Action = 0
Check "Stop", image.CurrentFrame, 1
image.Loops = 4
Check "LoopsRemaining", image.LoopsRemaining, 4

Check "GetPalette", image.GetPalette(1, colours), True
Check "palette", VarType(colours), 8204
Check "SetPalette", image.SetPalette(1, colours), True
Check "no such frame", image.GetPalette(9, colours), False
image.CacheColorTables
image.RestoreColorTables True
image.Mirrored = 3 : Check "Mirrored", image.Mirrored, 3
image.OffsetX = -7 : Check "OffsetX", image.OffsetX, -7
image.BackStyle = 1 : Check "BackStyle", image.BackStyle, 1
image.SteppedDelay = 90 : Check "SteppedDelay", image.SteppedDelay, 90
image.AutoSize = True : Check "AutoSize", image.AutoSize, True
image.Refresh
Check "Refresh", image.hWnd, 0

Set other = CreateObject("Kestrelon2012.USAnimatedImage")
Set other.AnimatedGIF = image.AnimatedGIF
Check "picture", other.FrameCount & " of " & other.ActualWidth, "1 of 96"
Set other.AnimatedGIF = Nothing
Check "no picture", other.FrameCount, 0

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
