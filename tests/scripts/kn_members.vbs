' Every member of the class KN once, late-bound, by names as a host would call them.
Option Explicit

Dim k, fso, folder, file, failures
failures = 0

Sub Check(what, got, wanted)
  If VarType(got) <> VarType(wanted) Then
    WScript.Echo what & ": type " & TypeName(got) & " instead of " & TypeName(wanted)
    failures = failures + 1
  ElseIf got <> wanted Then
    WScript.Echo what & ": " & got & " instead of " & wanted
    failures = failures + 1
  End If
End Sub

Sub NoError(what)
  If Err.Number <> 0 Then
    WScript.Echo what & ": error " & Hex(Err.Number) & " " & Err.Description
    failures = failures + 1
    Err.Clear
  End If
End Sub

Function Matches(text, pattern)
  Dim expression
  Set expression = New RegExp
  expression.Pattern = pattern
  Matches = expression.Test(text)
End Function

On Error Resume Next
Set k = CreateObject("Kestrelon2012.KN")
NoError "CreateObject"

' Dates
Check "KN_ValidarData", k.KN_ValidarData("29/02/2024", 1), True
Check "KN_ValidarData", k.KN_ValidarData("29/02/2023", 1), False
Check "KN_ValidarHora", k.KN_ValidarHora("23:59"), True
Check "KN_ValidarHora", k.KN_ValidarHora("23h60", "h"), False
Check "KN_FormatarData", k.KN_FormatarData("2024-02-29", "dd/mm/yyyy"), "29/02/2024"
Check "KN_ValidarData", k.KN_ValidarData("29/02/2024", "DD/MM/YYYY"), True
Check "KN_ValidarData", k.KN_ValidarData("29/02/2024", "mm/dd/yyyy"), False
Check "KN_ValidarData", k.KN_ValidarData("29/02/2024", "?"), False
Check "KN_FormatarData", k.KN_FormatarData(DateSerial(2026, 11, 5), "yyyy-mm-dd"), "2026-11-05"
Check "KN_FormatarDataEx", k.KN_FormatarDataEx(DateSerial(2026, 11, 5)), "05/11/2026"
Check "KN_FormatarDataEx", k.KN_FormatarDataEx(DateSerial(2026, 11, 5), "dddd"), "quinta-feira"
Check "KN_FormatarDataEx", k.KN_FormatarDataEx("5/11/26"), "05/11/2026"
Check "KN_FormatarDataEx", k.KN_FormatarDataEx("5/11/26 8:05", "hh:mm"), "08:05"
Check "KN_DataHoraAtual", Matches(k.KN_DataHoraAtual, "^\d\d/\d\d/\d{4} \d\d:\d\d:\d\d$"), True
Check "KN_NomeDia", k.KN_NomeDia(DateSerial(2026, 11, 24)), "Ter" & Chr(231) & "a-feira"
Check "KN_NomeDia", k.KN_NomeDia(DateSerial(2026, 11, 22), True), "Dom"
Check "KN_AnoBissexto", k.KN_AnoBissexto(1900), False
Check "KN_QuantidadeDiasNoMes", k.KN_QuantidadeDiasNoMes(2, 2024), CLng(29)
Check "KN_QuantidadeDiasNoMes", k.KN_QuantidadeDiasNoMes(12), CLng(31)
NoError "dates"

' Documents and contacts
Check "KN_ValidarCPFCNPJ", k.KN_ValidarCPFCNPJ("11.222.333/0001-81"), True
Check "KN_ValidarCPF", k.KN_ValidarCPF("111.111.111-11"), False
Check "KN_ValidarCNPJ", k.KN_ValidarCNPJ("12.ABC.345/01DE-35"), True
Check "KN_FormatarCPFCNPJ", k.KN_FormatarCPFCNPJ("52998224725"), "529.982.247-25"
Check "KN_ValidarCEP", k.KN_ValidarCEP("01310-100"), True
Check "KN_FormatarCEP", k.KN_FormatarCEP("01310100"), "01310-100"
Check "KN_ValidarTelefone", k.KN_ValidarTelefone("(11) 98765-4321"), True
Check "KN_ValidarPIX", k.KN_ValidarPIX("+5511987654321"), True
NoError "documents"

' Words, numbers and text
Check "KN_Extenso", k.KN_Extenso(1230.5), "um mil duzentos e trinta reais e cinquenta centavos"
Check "KN_Extenso", k.KN_Extenso(-1000, "ponto", "pontos", "", "", True), "mil pontos negativos"
Check "KN_Extenso", k.KN_Extenso(21, "libra", "libras", "", "", True, True), "vinte e uma libras"
Check "KN_RetornarNumeros", k.KN_RetornarNumeros("a1-2"), "12"
Check "KN_RemoverAcentos", k.KN_RemoverAcentos("A" & Chr(231) & Chr(227) & "o"), "Acao"
Check "KN_FormatarBytes", Matches(k.KN_FormatarBytes(1000), "^0[.,]98 Kb$"), True
Check "KN_GerarNumeroAleatorio", Matches(k.KN_GerarNumeroAleatorio, "^\d\d\.\d\d\.\d\d\.\d\d$"), True
Check "KN_GerarNumeroAleatorio", Matches(k.KN_GerarNumeroAleatorio("-", 2, 5), "^[0-5]-[0-5]$"), True
Check "KN_NumeroAleatorio", k.KN_NumeroAleatorio >= 0, True
Check "KN_PegaConteudoTexto", k.KN_PegaConteudoTexto("<B>um</b>", "<b>", "</B>"), "um"
NoError "text"

' Files, in a folder of their own
Set fso = CreateObject("Scripting.FileSystemObject")
folder = k.KN_DiretorioTemporario() & "\kn " & Chr(231) & k.KN_NumeroAleatorio
file = folder & "\a\b\c.ini"
Check "KN_DiretorioTemporario", fso.FolderExists(k.KN_DiretorioTemporario()), True
Check "KN_ValidarNomeArquivo", k.KN_ValidarNomeArquivo("a?b"), False
Check "KN_ArquivoExtensao", k.KN_ArquivoExtensao(file), "ini"
Check "KN_ArquivoCaminho", k.KN_ArquivoCaminho(file), folder & "\a\b\"
Check "KN_CriarDiretorio", k.KN_CriarDiretorio(folder & "\a\b"), True
Check "KN_DiretorioExiste", k.KN_DiretorioExiste(folder & "\a\b\"), True
Check "KN_DriveExiste", k.KN_DriveExiste("C:"), True
Check "KN_ArquivoExiste", k.KN_ArquivoExiste(file), False
Check "KN_INIGravar", k.KN_INIGravar(file, "Se" & Chr(231) & Chr(227) & "o", "Chave", "o valor"), True
Check "KN_INILer", k.KN_INILer(file, "Se" & Chr(231) & Chr(227) & "o", "chave"), "o valor"
Check "KN_INILer", k.KN_INILer(file, "Outra", "chave"), ""
Check "KN_ArquivoExiste", k.KN_ArquivoExiste(file), True
Check "KN_ArquivoExiste", k.KN_ArquivoExiste(folder & "\a\b\*.ini"), True
Check "KN_ArquivoExiste", k.KN_ArquivoExiste(folder & "\a", True), True
Check "KN_CompararArquivos", k.KN_CompararArquivos(file, file), True
Check "KN_CompararArquivos", k.KN_CompararArquivos(file, folder & "\none"), False
Check "KN_ArquivoC32", Matches(k.KN_ArquivoC32(file), "^[0-9A-F]{8}$"), True
Check "KN_ArquivoC32", k.KN_ArquivoC32(folder & "\none"), ""
Check "KN_ApagarArquivo", k.KN_ApagarArquivo(file), True
Check "KN_ApagarArquivo", k.KN_ApagarArquivo(file), False
fso.DeleteFolder folder
NoError "files"

' The system. Calls that would open something are given what they refuse.
Check "KN_ValidarURL", k.KN_ValidarURL("http://localhost/"), True
Check "KN_ValidarURL", k.KN_ValidarURL(""), False
Check "KN_DiscoEspacoLivre", k.KN_DiscoEspacoLivre("C") > 0, True
Check "KN_DiretorioWindows", k.KN_DiretorioExiste(k.KN_DiretorioWindows()), True
Check "KN_DiretorioUsuario", k.KN_DiretorioExiste(k.KN_DiretorioUsuario()), True
Check "KN_TraduzirDescricaoErro", Len(k.KN_TraduzirDescricaoErro(5)) > 5, True
Check "KN_TraduzirDescricaoErro", k.KN_TraduzirDescricaoErro(-77777), ""
Check "KN_AbrirUrl", k.KN_AbrirUrl("C:\windows"), False
Check "KN_AbrirArquivo", k.KN_AbrirArquivo("C:\none.txt"), False
Check "KN_AbrirPasta", k.KN_AbrirPasta("C:\none"), False
Check "KN_FormularioSempreVisivel", k.KN_FormularioSempreVisivel(0), False
Check "KN_FormularioPiscar", k.KN_FormularioPiscar(0, True), False
Check "KN_FormularioNaBarraTarefas", k.KN_FormularioNaBarraTarefas(0, False), False
Check "KN_SelecionarPasta", k.KN_SelecionarPasta("no form", "Escolha", "C:\"), Empty
Check "KN_AplicativoSendoExecutado", k.KN_AplicativoSendoExecutado("CSCRIPT"), True
Check "KN_AplicativoSendoExecutado", k.KN_AplicativoSendoExecutado("none.exe"), False
Check "KN_FinalizarProcesso", k.KN_FinalizarProcesso("none.exe"), False
Check "KN_Windos64Bits", VarType(k.KN_Windos64Bits()), CInt(11)
Check "KN_WindowsAdministrador", VarType(k.KN_WindowsAdministrador()), CInt(11)
Check "KN_InternetOnline", VarType(k.KN_InternetOnline()), CInt(11)
Check "KN_IniciarCommonControls", k.KN_IniciarCommonControls(), True
NoError "system"

' Digests and cipher
Check "KN_MD5", k.KN_MD5("abc"), "900150983cd24fb0d6963f7d28e17f72"
Check "KN_CRC32", k.KN_CRC32("123456789"), "CBF43926"
Check "KN_CRC32", k.KN_CRC32(""), "0"
Dim cipher
cipher = k.KN_Criptografar(" segredo ", "00998877665544332211")
Check "KN_Criptografar", Len(cipher), CLng(32)
Check "KN_Decriptografar", k.KN_Decriptografar(cipher, "00998877665544332211"), "segredo"
NoError "digests"

' A set of buttons that no message box has is refused before anything is shown.
Check "USMsgBox", k.USMsgBox("Mensagem", 15), CLng(0)
Check "USMsgBoxEx", k.USMsgBoxEx(0, "Mensagem", 15, "Aviso"), CLng(0)
NoError "messages"

If failures > 0 Then WScript.Quit 1
WScript.Echo "OK"
WScript.Quit 0
