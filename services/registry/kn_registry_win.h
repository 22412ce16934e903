// KN_REGISTRY: the Windows registry through plain path strings.
#pragma once

#include "kn_registry_glue.h"
#include "services/registry/regedit4.h"
#include "services/registry/registry_service.h"
#include "services/registry/registry_store_win.h"

namespace kestrelon {

class KN_REGISTRY final : public KN_REGISTRYGlue<KN_REGISTRY, AutomationObject> {
 public:
  bool create_key_if_doesnt_exists() const { return registry_.creates_missing_keys; }
  void set_create_key_if_doesnt_exists(bool creates) { registry_.creates_missing_keys = creates; }

  ENUM_REGISTRY_VIEW registry_view() const {
    return static_cast<ENUM_REGISTRY_VIEW>(store_.word_size);
  }
  void set_registry_view(ENUM_REGISTRY_VIEW view);

  long create_key(const std::wstring& path);
  long kill_key(const std::wstring& path);
  bool key_exists(const std::wstring& path);
  long enum_keys(const std::wstring& path, SAFEARRAY** keys);
  bool have_subkey(const std::wstring& path);

  long write_string(const std::wstring& path, const std::wstring& name, const std::wstring& value);
  std::wstring read_string(const std::wstring& path, const std::wstring& name,
                           const VARIANT& otherwise);
  long write_dword(const std::wstring& path, const std::wstring& name, long value);
  long read_dword(const std::wstring& path, const std::wstring& name, long otherwise);
  long write_binary(const std::wstring& path, const std::wstring& name, const std::wstring& value);
  std::wstring read_binary(const std::wstring& path, const std::wstring& name,
                           const VARIANT& otherwise);

  long kill_value(const std::wstring& path, const std::wstring& name);
  bool value_exists(const std::wstring& path, const std::wstring& name);
  long enum_values(const std::wstring& path, SAFEARRAY** names, SAFEARRAY** values, long type);

  bool export_to_reg(const std::wstring& path, const std::wstring& file, bool subkeys,
                     const VARIANT& output, bool escaped);
  bool import_from_reg(const std::wstring& file);

  std::wstring str_to_bin(const std::wstring& text);
  std::wstring bin_to_str(const std::wstring& bytes);
  bool is_bin_valid(const std::wstring& text);
  long add_shell(const std::wstring& extension, const std::wstring& description,
                 const std::wstring& menu, const std::wstring& text, const std::wstring& command,
                 const std::wstring& icon);

 private:
  bool write_branch(const std::wstring& path, const std::wstring& file, RegExportOptions options,
                    const RegFileCode& code, std::string_view mark);

  WindowsRegistry store_;
  RegistryService registry_{store_};
};

}  // namespace kestrelon
