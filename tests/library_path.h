// Where the tests find the library: beside the folder of the test programs.
#pragma once

#include <windows.h>

#include <string>

namespace kestrelon {

inline std::wstring library_path() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring folder(path);
  folder.resize(folder.rfind(L'\\'));      // tests
  folder.resize(folder.rfind(L'\\') + 1);  // the build tree
  return folder + L"kestrelon2012.ocx";
}

}  // namespace kestrelon
