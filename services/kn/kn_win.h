// The class KN: each member hands its arguments to the routine of its concern.
#pragma once

#include "base/text.h"
#include "frame/platform.h"
#include "kn_glue.h"
#include "services/digest_text.h"
#include "services/kn_contacts.h"
#include "services/kn_date.h"
#include "services/kn_date_format.h"
#include "services/kn_documents.h"
#include "services/kn_files.h"
#include "services/kn_format_ex.h"
#include "services/kn_number_words.h"
#include "services/kn_paths.h"
#include "services/kn_platform_win.h"
#include "services/kn_random.h"
#include "services/kn_shell_win.h"
#include "services/kn_text.h"
#include "services/msgbox/kn_msgbox_win.h"

namespace kestrelon {

class KN final : public KNGlue<KN, AutomationObject> {
 public:
  using Text = const std::wstring&;

  // Dates
  bool kn_validar_data(Text text, const VARIANT& format);
  bool kn_validar_hora(Text text, Text delimiter) { return is_valid_time(text, delimiter); }
  std::wstring kn_formatar_data(const VARIANT& text, Text format);
  std::wstring kn_formatar_data_ex(const VARIANT& text, Text format);
  std::wstring kn_data_hora_atual() { return date_time_text(system_.local_now()); }
  std::wstring kn_nome_dia(DATE date, bool abbreviated) { return day_name(date, abbreviated); }
  bool kn_ano_bissexto(short year) { return is_leap_year(year); }
  long kn_quantidade_dias_no_mes(short month, short year) {
    return month_length(month, year, current_year());
  }

  // Documents and contacts
  bool kn_validar_cpfcnpj(Text text) { return is_valid_cpf_or_cnpj(text); }
  bool kn_validar_cpf(Text text) { return is_valid_cpf(text); }
  bool kn_validar_cnpj(Text text) { return is_valid_cnpj(text); }
  std::wstring kn_formatar_cpfcnpj(Text text) { return format_cpf_or_cnpj(text); }
  bool kn_validar_cep(Text text) { return is_valid_postal_code(text); }
  std::wstring kn_formatar_cep(Text text) { return format_postal_code(text); }
  bool kn_validar_telefone(Text text) { return is_valid_phone(text); }
  bool kn_validar_pix(Text text) { return is_valid_pix_key(text); }

  // Words, numbers and text
  std::wstring kn_extenso(double value, Text unit, Text units, Text cent, Text cents,
                          bool plain_thousand, bool feminine) {
    return number_to_words(value, {unit, units, cent, cents}, {plain_thousand, feminine});
  }
  std::wstring kn_retornar_numeros(Text text) { return keep_digits(text); }
  std::wstring kn_remover_acentos(Text text) { return remove_accents(text); }
  std::wstring kn_formatar_bytes(double value) {
    return format_bytes(value, system_.decimal_mark());
  }
  std::wstring kn_gerar_numero_aleatorio(Text delimiter, short groups, short bound) {
    return random_groups(system_, delimiter, groups, bound);
  }
  long kn_numero_aleatorio() { return random_number(system_); }
  std::wstring kn_pega_conteudo_texto(Text text, Text begin, Text end) {
    return text_between(text, begin, end);
  }

  // Files
  bool kn_validar_nome_arquivo(Text name) { return is_valid_file_name(name); }
  std::wstring kn_arquivo_extensao(Text path) { return file_extension(path); }
  std::wstring kn_arquivo_caminho(Text path) { return folder_part(path); }
  bool kn_arquivo_existe(Text path, bool folder_only) {
    return file_exists(system_, path, folder_only);
  }
  bool kn_diretorio_existe(Text path) { return folder_exists(system_, path); }
  bool kn_drive_existe(Text path) { return drive_exists(system_, path); }
  bool kn_criar_diretorio(Text path) { return create_folders(system_, path); }
  bool kn_apagar_arquivo(Text path) { return delete_file(system_, path); }
  bool kn_comparar_arquivos(Text first, Text second) {
    return files_are_equal(system_, first, second);
  }
  std::wstring kn_ini_ler(Text file, Text section, Text key) {
    return read_ini(system_, file, section, key);
  }
  bool kn_ini_gravar(Text file, Text section, Text key, Text value) {
    return write_ini(system_, file, section, key, value);
  }

  // The system
  bool kn_validar_url(Text url) { return is_valid_url(url); }
  double kn_disco_espaco_livre(Text drive) { return free_disk_space(drive); }
  std::wstring kn_diretorio_windows() { return environment_variable(L"Windir"); }
  std::wstring kn_diretorio_temporario() { return environment_variable(L"TEMP"); }
  std::wstring kn_diretorio_usuario() { return environment_variable(L"UserProfile"); }
  std::wstring kn_traduzir_descricao_erro(long number) { return system_error_text(number); }
  bool kn_abrir_url(Text url) {
    const std::wstring address = browsable_url(url);
    return !address.empty() && open_by_shell(address);
  }
  bool kn_abrir_arquivo(Text path) { return file_exists(system_, path) && open_by_shell(path); }
  bool kn_abrir_pasta(Text path) { return folder_exists(system_, path) && open_by_shell(path); }
  bool kn_formulario_sempre_visivel(long window, bool on) {
    return set_window_topmost(window_of(window), on);
  }
  bool kn_formulario_piscar(long window, bool on) { return flash_window(window_of(window), on); }
  bool kn_formulario_na_barra_tarefas(long window, bool on) {
    return set_taskbar_entry(window_of(window), on);
  }
  Variant kn_selecionar_pasta(VARIANT form, VARIANT title, VARIANT start, bool offer_new);
  bool kn_aplicativo_sendo_executado(Text name) { return is_process_running(name); }
  bool kn_finalizar_processo(Text name) { return end_processes(name); }
  bool kn_windos64_bits() { return is_64_bit_windows(); }
  bool kn_windows_administrador() { return is_administrator(); }
  bool kn_internet_online() { return is_online(); }
  bool kn_iniciar_common_controls() { return register_common_controls(); }

  // Digests and cipher
  std::wstring kn_md5(Text text) { return md5_text(text); }
  std::wstring kn_crc32(Text text) { return crc32_text(text); }
  std::wstring kn_arquivo_c32(Text path) { return crc32_of_file(system_, path); }
  std::wstring kn_criptografar(Text text, Text key) { return encrypt_text(text, key); }
  std::wstring kn_decriptografar(Text text, Text key) { return decrypt_text(text, key); }

  // Messages
  long us_msg_box(Text text, long buttons, Text title) {
    return show_message(GetActiveWindow(), text, buttons, title);
  }
  long us_msg_box_ex(long window, Text text, long buttons, Text title) {
    return show_message(window_of(window), text, buttons, title);
  }

 private:
  // A Long holds all of a handle: the rest is its sign.
  static HWND window_of(long handle) {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle));
  }
  int current_year() { return system_.local_now().date.year; }

  KnPlatform& system_ = system_platform();
};

}  // namespace kestrelon
