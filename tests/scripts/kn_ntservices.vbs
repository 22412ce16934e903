' KN_NTSERVICES as a late-bound script sees it: lists, indexed properties, answers and errors in words.
Option Explicit
Dim failures : failures = 0

Sub Expect(what, actual, wanted)
  If actual <> wanted Then
    WScript.Echo what & ": " & actual & ", expected " & wanted
    failures = failures + 1
  End If
End Sub

Dim services : Set services = CreateObject("Kestrelon2012.KN_NTSERVICES")
Expect "this machine", services.Machine, ""
Expect "unknown state", services.State("KestrelonNaoExiste"), 0
Expect "its error", services.ErrNumber, 1060
Expect "in words", Len(services.ErrDescription) > 10, True
Expect "exists", services.ServiceExists("KestrelonNaoExiste"), False
Expect "start", services.StartService("KestrelonNaoExiste"), False
Expect "command", services.SendCommand("KestrelonNaoExiste", 1), False
Expect "bad code", services.ErrNumber, 87

Dim names, shown, states, count
count = services.EnumServices(names, shown, states)
Expect "services", count > 0, True
Expect "no error", services.ErrNumber, 0
Expect "names", UBound(names), count - 1
Expect "a name", Len(names(0)) > 0, True
Expect "its state", states(0), services.State(names(0))
Expect "its name to users", shown(0), services.DisplayName(names(0))
Expect "not a service", services.RunAsService("KestrelonTest"), False
services.ReportStopped

Expect "install", services.InstallService("KestrelonScript", "Roteiro", "C:\Meus Dados\a.exe /s", "Texto", 3), True
Expect "path", services.PathName("KestrelonScript"), """C:\Meus Dados\a.exe"" /s"
Expect "start type", services.StartType("KestrelonScript"), 3
services.Description("KestrelonScript") = "Outro"
Expect "description", services.Description("KestrelonScript"), "Outro"
Expect "uninstall", services.UninstallService("KestrelonScript"), True
Expect "gone", services.ServiceExists("KestrelonScript"), False

If failures = 0 Then WScript.Echo "OK"
WScript.Quit failures
