#include "services/nt_services/service_text.h"

#include <algorithm>

#include "base/decimal.h"
#include "base/text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kProgramEnd = L".exe";
constexpr uint32_t kServiceSpecific = 1066;
constexpr uint32_t kShortestPoll = 50, kLongestPoll = 1000, kPollsAHint = 10;

// Length of the program's path at the start of a command line without quotes.
size_t program_length(std::wstring_view command) {
  for (size_t from = 0;;) {
    const size_t found = find_ignoring_case(command, kProgramEnd, from);
    if (found == std::wstring_view::npos) return command.size();
    from = found + kProgramEnd.size();
    if (from == command.size() || command[from] == L' ') return from;
  }
}

struct ErrorText {
  uint32_t code;
  const wchar_t* text;
};

constexpr ErrorText kErrors[] = {
    {2, L"O arquivo do serviço não foi encontrado."},
    {3, L"O arquivo do serviço não foi encontrado."},
    {5, L"Acesso negado. Execute como administrador."},
    {8, L"Memória insuficiente."},
    {87, L"Parâmetro inválido."},
    {123, L"O nome do serviço é inválido."},
    {1051, L"Outros serviços em execução dependem deste serviço."},
    {1052, L"O comando não é válido para este serviço."},
    {1053, L"O serviço não respondeu a tempo."},
    {1055, L"O gerenciador de serviços está ocupado."},
    {1056, L"O serviço já está em execução."},
    {1057, L"A conta do serviço é inválida ou não existe."},
    {1058, L"O serviço está desativado."},
    {1059, L"O serviço depende de si mesmo."},
    {1060, L"O serviço não está instalado."},
    {1061, L"O serviço não pode aceitar comandos no momento."},
    {1062, L"O serviço não está em execução."},
    {1063, L"O programa não foi iniciado como serviço."},
    {1067, L"O processo do serviço terminou inesperadamente."},
    {1068, L"Um serviço do qual este depende não pôde ser iniciado."},
    {1069, L"O serviço não pôde entrar na conta. Verifique o usuário e a senha."},
    {1070, L"O serviço parou de responder ao iniciar."},
    {1072, L"O serviço está marcado para exclusão."},
    {1073, L"O serviço já está instalado."},
    {1075, L"Um serviço do qual este depende não está instalado."},
    {1078, L"O nome já é usado por outro serviço."},
    {1115, L"O sistema está sendo desligado."},
    {1460, L"O tempo de espera terminou."},
    {1722, L"O computador não pôde ser acessado."},
};

bool needs_quotes(std::wstring_view argument) {
  return argument.empty() || argument.find_first_of(L" \t\"") != std::wstring_view::npos;
}

}  // namespace

std::wstring quoted_program(std::wstring_view command) {
  command = trim_blanks(command);
  if (command.starts_with(L'"')) return std::wstring(command);
  const size_t length = program_length(command);
  const std::wstring_view program = command.substr(0, length);
  if (program.find(L' ') == std::wstring_view::npos) return std::wstring(command);
  return L'"' + std::wstring(program) + L'"' + std::wstring(command.substr(length));
}

std::vector<std::wstring> name_list(std::wstring_view names) {
  std::vector<std::wstring> list;
  for (const std::wstring_view piece : split(names, L";"))
    if (const std::wstring_view name = trim_blanks(piece); !name.empty()) list.emplace_back(name);
  return list;
}

std::wstring multi_text(const std::vector<std::wstring>& names) {
  std::wstring text;
  for (const std::wstring& name : names) text.append(name).push_back(L'\0');
  text.push_back(L'\0');
  return text;
}

std::wstring account_name(std::wstring_view user) {
  user = trim_blanks(user);
  if (user.empty() || user.find_first_of(L"\\@") != std::wstring_view::npos ||
      equals_ignoring_case(user, L"LocalSystem"))
    return std::wstring(user);
  const bool built_in =
      equals_ignoring_case(user, L"LocalService") || equals_ignoring_case(user, L"NetworkService");
  return (built_in ? L"NT AUTHORITY\\" : L".\\") + std::wstring(user);
}

std::vector<std::wstring> split_arguments(std::wstring_view text) {
  std::vector<std::wstring> arguments;
  bool open = false, quoted = false;  // within an argument, within quotes
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (!quoted && (c == L' ' || c == L'\t')) {
      open = false;
      continue;
    }
    if (!open) arguments.emplace_back();
    open = true;
    const bool doubled = quoted && text.substr(i, 2) == L"\"\"";
    if (c == L'"' && !doubled) {
      quoted = !quoted;
      continue;
    }
    arguments.back().push_back(c);
    if (doubled) ++i;
  }
  return arguments;
}

std::wstring join_arguments(const std::vector<std::wstring>& arguments) {
  std::wstring text;
  for (const std::wstring& argument : arguments) {
    if (!text.empty()) text.push_back(L' ');
    if (!needs_quotes(argument)) {
      text.append(argument);
      continue;
    }
    text.push_back(L'"');
    for (const wchar_t c : argument) text.append(c == L'"' ? 2 : 1, c);
    text.push_back(L'"');
  }
  return text;
}

std::wstring service_error_text(uint32_t code, uint32_t service_code) {
  if (code == 0) return {};
  if (code == kServiceSpecific)
    return L"O serviço terminou com o erro " + decimal_text(service_code) + L".";
  for (const ErrorText& error : kErrors)
    if (error.code == code) return error.text;
  return L"Erro " + decimal_text(code) + L" do gerenciador de serviços.";
}

uint32_t poll_interval(uint32_t hint) {
  return std::clamp(hint / kPollsAHint, kShortestPoll, kLongestPoll);
}

}  // namespace kestrelon
