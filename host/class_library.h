// A control server that is loaded from its file, registered or not.
#pragma once

#include <windows.h>

#include <string>

#include "base/com_win.h"

namespace kestrelon::host {

/// Keeps the module loaded while it lives; everything made from it must be gone before.
class ClassLibrary {
 public:
  /// Throws ComError when the file is no loadable control server.
  explicit ClassLibrary(const std::wstring& path);
  ~ClassLibrary();
  ClassLibrary(const ClassLibrary&) = delete;
  ClassLibrary& operator=(const ClassLibrary&) = delete;

  /// A new object; empty when the server refuses the class.
  ComPtr<IUnknown> create(const CLSID& clsid) const;
  /// By class name (`USCheckBox`) or ProgID (`Library.USCheckBox`, with or without a version
  /// number), looked up in the type library that the module carries.
  ComPtr<IUnknown> create(const std::wstring& class_name) const;
  const ComPtr<ITypeLib>& type_library() const { return types_; }
  bool can_unload() const;

 private:
  FARPROC entry(const char* name) const;

  HMODULE module_;
  ComPtr<ITypeLib> types_;
};

}  // namespace kestrelon::host
