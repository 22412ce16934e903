#include "host/gallery/sample_files.h"

#include <windows.h>

namespace kestrelon::host {

std::wstring sample_file(const std::wstring& name) {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  std::wstring folder = program;
  for (size_t cut; (cut = folder.rfind(L'\\')) != std::wstring::npos;) {
    folder.resize(cut);
    const std::wstring path = folder + L"\\resources\\samples\\" + name;
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return path;
  }
  return name;
}

}  // namespace kestrelon::host
