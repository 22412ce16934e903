#include "services/registry/kn_registry_win.h"

#include "base/file_bytes.h"
#include "base/system_file.h"
#include "services/late_object_win.h"
#include "services/registry/binary_text.h"
#include "services/registry/regedit4.h"

namespace kestrelon {
namespace {

constexpr uint64_t kLargestImport = uint64_t{1} << 30;  // bytes

// Texts go to the registry in the machine's ANSI code page.
std::string to_page(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int length =
      WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(length), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

std::wstring from_page(std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), length);
  return text;
}

// The default that a caller gave, or one zero character.
std::wstring otherwise_text(const VARIANT& otherwise) {
  Variant text;
  if (V_VT(&otherwise) == VT_ERROR ||
      FAILED(VariantCopyInd(&text, const_cast<VARIANT*>(&otherwise))) || !text.change(VT_BSTR))
    return std::wstring(1, L'\0');
  return to_wstring(V_BSTR(&text));
}

// Puts a new array, from 0, in place of the caller's.
void replace_array(SAFEARRAY** place, SAFEARRAY* array) {
  if (array == nullptr) throw std::bad_alloc();
  if (*place != nullptr && FAILED(SafeArrayDestroy(*place))) {
    SafeArrayDestroy(array);
    throw ComError(DISP_E_ARRAYISLOCKED);
  }
  *place = array;
}

template <class Items, class Put>
void fill_array(SAFEARRAY** place, VARTYPE type, const Items& items, Put&& put) {
  if (place == nullptr) throw ComError(E_POINTER);
  SAFEARRAY* const array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(items.size()));
  if (array != nullptr) {
    for (LONG i = 0; i < static_cast<LONG>(items.size()); ++i)
      put(array, i, items[static_cast<size_t>(i)]);
  }
  replace_array(place, array);
}

void put_text(SAFEARRAY* array, LONG index, std::string_view text) {
  SafeArrayPutElement(array, &index, Bstr(from_page(text)).get());
}

// Texts as such, double words as numbers, everything else as pairs of digits.
Variant shown_value(const RegistryValue& value) {
  if (value.type == registry_type::kString || value.type == registry_type::kExpandString)
    return Variant(from_page(registry_text(value)));
  if (value.type == registry_type::kDoubleWord)
    return Variant(static_cast<long>(registry_number(value)));
  return Variant(from_page(bytes_to_hex_text(value.data)));
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

long KN_REGISTRY::create_key(const std::wstring& path) {
  return registry_.create_key(to_page(path));
}

long KN_REGISTRY::kill_key(const std::wstring& path) {
  return registry_.delete_key(to_page(path));
}

bool KN_REGISTRY::key_exists(const std::wstring& path) {
  return registry_.key_exists(to_page(path));
}

long KN_REGISTRY::enum_keys(const std::wstring& path, SAFEARRAY** keys) {
  const std::vector<std::string> names = registry_.subkeys(to_page(path));
  fill_array(keys, VT_BSTR, names, put_text);
  return static_cast<long>(names.size());
}

bool KN_REGISTRY::have_subkey(const std::wstring& path) {
  return !registry_.subkeys(to_page(path)).empty();
}

long KN_REGISTRY::write_string(const std::wstring& path, const std::wstring& name,
                               const std::wstring& value) {
  return registry_.write_string(to_page(path), to_page(name), to_page(value));
}

std::wstring KN_REGISTRY::read_string(const std::wstring& path, const std::wstring& name,
                                      const VARIANT& otherwise) {
  const auto text = registry_.read_string(to_page(path), to_page(name));
  return text ? from_page(*text) : otherwise_text(otherwise);
}

long KN_REGISTRY::write_dword(const std::wstring& path, const std::wstring& name, long value) {
  return registry_.write_double_word(to_page(path), to_page(name), value);
}

long KN_REGISTRY::read_dword(const std::wstring& path, const std::wstring& name, long otherwise) {
  return registry_.read_double_word(to_page(path), to_page(name)).value_or(otherwise);
}

long KN_REGISTRY::write_binary(const std::wstring& path, const std::wstring& name,
                               const std::wstring& value) {
  return registry_.write_binary(to_page(path), to_page(name), to_page(value));
}

std::wstring KN_REGISTRY::read_binary(const std::wstring& path, const std::wstring& name,
                                      const VARIANT& otherwise) {
  const auto text = registry_.read_binary(to_page(path), to_page(name));
  return text ? from_page(*text) : otherwise_text(otherwise);
}

long KN_REGISTRY::kill_value(const std::wstring& path, const std::wstring& name) {
  return registry_.delete_value(to_page(path), to_page(name));
}

bool KN_REGISTRY::value_exists(const std::wstring& path, const std::wstring& name) {
  return registry_.value(to_page(path), to_page(name)).has_value();
}

long KN_REGISTRY::enum_values(const std::wstring& path, SAFEARRAY** names, SAFEARRAY** values,
                              long type) {
  const std::vector<RegistryValue> found = registry_.values(to_page(path), type);
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
  if (!registry_.key_exists(to_page(path))) return false;
  SystemFile out = SystemFile::create(file);
  if (!out) return false;
  RegExportOptions options;
  options.subkeys = subkeys;
  options.escaped = escaped;
  LateObject label = object_of(output);
  if (label) {
    options.on_key = [&](const std::string& key) {
      pump_messages();
      label.put_property(L"Caption", Variant(from_page(key)));
    };
  }
  try {
    return export_registry(registry_, to_page(path), options,
                           [&out](std::string_view piece) { return out.write(piece); });
  } catch (const ComError&) {
    return false;
  }
}

bool KN_REGISTRY::import_from_reg(const std::wstring& file) {
  const auto text = read_file(file, kLargestImport);
  return text &&
         import_registry(registry_, {reinterpret_cast<const char*>(text->data()), text->size()});
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
  return data ? from_page(bytes_to_hex_text(*data)) : std::wstring();
}

bool KN_REGISTRY::is_bin_valid(const std::wstring& text) {
  const auto digits = narrow(text);
  return digits && hex_text_to_bytes(*digits).has_value();
}

long KN_REGISTRY::add_shell(const std::wstring& extension, const std::wstring& description,
                            const std::wstring& menu, const std::wstring& text,
                            const std::wstring& command, const std::wstring& icon) {
  return registry_.add_shell(to_page(extension), to_page(description), to_page(menu), to_page(text),
                             to_page(command), to_page(icon));
}

}  // namespace kestrelon
