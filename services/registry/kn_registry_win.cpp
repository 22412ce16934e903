#include "services/registry/kn_registry_win.h"

#include "base/file_bytes.h"
#include "base/system_file.h"
#include "services/code_page_win.h"
#include "services/late_object_win.h"
#include "services/mysql/utf8_text.h"
#include "services/out_array_win.h"
#include "services/registry/binary_text.h"
#include "services/registry/regedit4.h"

namespace kestrelon {
namespace {

constexpr uint64_t kLargestImport = uint64_t{1} << 30;  // bytes

std::wstring wide_text(std::string_view utf8) {
  std::wstring text;
  from_utf8(utf8, text);
  return text;
}

// A file in the machine's ANSI code page.
class PageFileCode final : public RegFileCode {
 public:
  std::optional<std::string> encode(std::string_view text) const override {
    return page_bytes(wide_text(text));
  }
  std::string decode(std::string_view bytes) const override { return to_utf8(page_text(bytes)); }
};

// The default that a caller gave, or one zero character.
std::wstring otherwise_text(const VARIANT& otherwise) {
  Variant text;
  if (V_VT(&otherwise) == VT_ERROR ||
      FAILED(VariantCopyInd(&text, const_cast<VARIANT*>(&otherwise))) || !text.change(VT_BSTR))
    return std::wstring(1, L'\0');
  return to_wstring(V_BSTR(&text));
}

void put_text(SAFEARRAY* array, LONG index, std::string_view text) {
  SafeArrayPutElement(array, &index, Bstr(wide_text(text)).get());
}

// Texts as such, double words as numbers, everything else as pairs of digits.
Variant shown_value(const RegistryValue& value) {
  if (value.type == registry_type::kString || value.type == registry_type::kExpandString)
    return Variant(wide_text(registry_text(value)));
  if (value.type == registry_type::kDoubleWord)
    return Variant(static_cast<long>(registry_number(value)));
  return Variant(wide_text(bytes_to_hex_text(value.data)));
}

// A text of characters 0 to 255 as its bytes; nothing for other characters.
std::optional<std::string> narrow(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) {
    if (c > 0xFF) return std::nullopt;
    bytes.push_back(static_cast<char>(c));
  }
  return bytes;
}

}  // namespace

void KN_REGISTRY::set_registry_view(ENUM_REGISTRY_VIEW view) {
  if (view == View_Default || view == View_32_Bits || view == View_64_Bits)
    store_.word_size = static_cast<int>(view);
}

long KN_REGISTRY::create_key(const std::wstring& path) {
  return registry_.create_key(to_utf8(path));
}

long KN_REGISTRY::kill_key(const std::wstring& path) {
  return registry_.delete_key(to_utf8(path));
}

bool KN_REGISTRY::key_exists(const std::wstring& path) {
  return registry_.key_exists(to_utf8(path));
}

long KN_REGISTRY::enum_keys(const std::wstring& path, SAFEARRAY** keys) {
  const std::vector<std::string> names = registry_.subkeys(to_utf8(path));
  fill_array(keys, VT_BSTR, names, put_text);
  return static_cast<long>(names.size());
}

bool KN_REGISTRY::have_subkey(const std::wstring& path) {
  return !registry_.subkeys(to_utf8(path)).empty();
}

long KN_REGISTRY::write_string(const std::wstring& path, const std::wstring& name,
                               const std::wstring& value) {
  return registry_.write_string(to_utf8(path), to_utf8(name), to_utf8(value));
}

std::wstring KN_REGISTRY::read_string(const std::wstring& path, const std::wstring& name,
                                      const VARIANT& otherwise) {
  const auto text = registry_.read_string(to_utf8(path), to_utf8(name));
  return text ? wide_text(*text) : otherwise_text(otherwise);
}

long KN_REGISTRY::write_dword(const std::wstring& path, const std::wstring& name, long value) {
  return registry_.write_double_word(to_utf8(path), to_utf8(name), value);
}

long KN_REGISTRY::read_dword(const std::wstring& path, const std::wstring& name, long otherwise) {
  return registry_.read_double_word(to_utf8(path), to_utf8(name)).value_or(otherwise);
}

long KN_REGISTRY::write_binary(const std::wstring& path, const std::wstring& name,
                               const std::wstring& value) {
  return registry_.write_binary(to_utf8(path), to_utf8(name), to_utf8(value));
}

std::wstring KN_REGISTRY::read_binary(const std::wstring& path, const std::wstring& name,
                                      const VARIANT& otherwise) {
  const auto text = registry_.read_binary(to_utf8(path), to_utf8(name));
  return text ? wide_text(*text) : otherwise_text(otherwise);
}

long KN_REGISTRY::kill_value(const std::wstring& path, const std::wstring& name) {
  return registry_.delete_value(to_utf8(path), to_utf8(name));
}

bool KN_REGISTRY::value_exists(const std::wstring& path, const std::wstring& name) {
  return registry_.value(to_utf8(path), to_utf8(name)).has_value();
}

long KN_REGISTRY::enum_values(const std::wstring& path, SAFEARRAY** names, SAFEARRAY** values,
                              long type) {
  const std::vector<RegistryValue> found = registry_.values(to_utf8(path), type);
  fill_array(names, VT_BSTR, found, [](SAFEARRAY* array, LONG i, const RegistryValue& value) {
    put_text(array, i, value.name);
  });
  fill_array(values, VT_VARIANT, found, [](SAFEARRAY* array, LONG i, const RegistryValue& value) {
    Variant shown = shown_value(value);
    SafeArrayPutElement(array, &i, &shown);
  });
  return static_cast<long>(found.size());
}

bool KN_REGISTRY::export_to_reg(const std::wstring& path, const std::wstring& file, bool subkeys,
                                const VARIANT& output, bool escaped) {
  if (file_kind(file) != FileKind::kNone) return false;
  if (!registry_.key_exists(to_utf8(path))) return false;
  RegExportOptions options;
  options.subkeys = subkeys;
  options.escaped = escaped;
  LateObject label = object_of(output);
  if (label) {
    options.on_key = [&](const std::string& key) {
      pump_messages();
      label.put_property(L"Caption", Variant(wide_text(key)));
    };
  }
  // The whole branch in the page, or, if it lacks a character, all of it in UTF-16.
  if (write_branch(path, file, options, PageFileCode(), {}) ||
      write_branch(path, file, options, Utf16FileCode(), kUtf16Mark))
    return true;
  remove_file(file);
  return false;
}

bool KN_REGISTRY::write_branch(const std::wstring& path, const std::wstring& file,
                               RegExportOptions options, const RegFileCode& code,
                               std::string_view mark) {
  SystemFile out = SystemFile::create(file);
  if (!out || !out.write(mark)) return false;
  options.code = &code;
  try {
    return export_registry(registry_, to_utf8(path), options,
                           [&out](std::string_view piece) { return out.write(piece); }) &&
           out.close();
  } catch (const ComError&) {
    return false;
  }
}

bool KN_REGISTRY::import_from_reg(const std::wstring& file) {
  const auto read = read_file(file, kLargestImport);
  if (!read) return false;
  std::string_view bytes(reinterpret_cast<const char*>(read->data()), read->size());
  if (!bytes.starts_with(kUtf16Mark))
    return import_registry(registry_, PageFileCode().decode(bytes), PageFileCode());
  bytes.remove_prefix(kUtf16Mark.size());
  return import_registry(registry_, Utf16FileCode().decode(bytes), Utf16FileCode());
}

std::wstring KN_REGISTRY::str_to_bin(const std::wstring& text) {
  const auto digits = narrow(text);
  const auto bytes = digits ? hex_text_to_bytes(*digits) : std::nullopt;
  if (!bytes) return {};
  std::wstring wide;
  for (const char c : *bytes) wide.push_back(static_cast<unsigned char>(c));
  return wide;
}

std::wstring KN_REGISTRY::bin_to_str(const std::wstring& bytes) {
  const auto data = narrow(bytes);
  return data ? wide_text(bytes_to_hex_text(*data)) : std::wstring();
}

bool KN_REGISTRY::is_bin_valid(const std::wstring& text) {
  const auto digits = narrow(text);
  return digits && hex_text_to_bytes(*digits).has_value();
}

long KN_REGISTRY::add_shell(const std::wstring& extension, const std::wstring& description,
                            const std::wstring& menu, const std::wstring& text,
                            const std::wstring& command, const std::wstring& icon) {
  return registry_.add_shell(to_utf8(extension), to_utf8(description), to_utf8(menu), to_utf8(text),
                             to_utf8(command), to_utf8(icon));
}

}  // namespace kestrelon
