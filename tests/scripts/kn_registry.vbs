' KN_REGISTRY as a late-bound script sees it: lists in its variables, views, optional arguments.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Const Key = "HKCU\Software\KestrelonScript"
Dim registry : Set registry = CreateObject("Kestrelon2012.KN_REGISTRY")
Dim keys, names, values, word
word = "a" & Chr(231)
Expect "write", registry.WriteString(Key & "\um", word, word) <> 0, True
Expect "read", registry.ReadString(Key & "\um", word), word
Expect "number", registry.WriteDWORD(Key & "\um", "n", 5) <> 0, True

' A script reads elements of arrays of Variants only; a variable that was used serves again.
Expect "keys", registry.EnumKeys(Key, keys), 1
Expect "a key", keys(0), "um"
Expect "keys again", registry.EnumKeys(Key, keys), 1
Expect "the same key", keys(0), "um"
Expect "numbers", registry.EnumValues(Key & "\um", names, values, 4), 1
Expect "a name", names(0), "n"
Expect "a value", values(0), 5

Expect "view", registry.RegistryView, 0
registry.RegistryView = 64
Expect "other view", registry.RegistryView, 64
registry.RegistryView = 5
Expect "no such view", registry.RegistryView, 64

registry.KillKey Key & "\um"
Expect "delete", registry.KillKey(Key) <> 0, True
If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
