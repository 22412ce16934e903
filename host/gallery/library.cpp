// Where the gallery's controls come from.
#include "host/gallery/library.h"

#include <memory>

#include "host/class_library.h"
#include "host/gallery/page.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kFile[] = L"kestrelon2012.ocx";

std::unique_ptr<ClassLibrary>& loaded() {
  static std::unique_ptr<ClassLibrary> library;
  return library;
}

bool exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

void open_library() {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::wstring path = program;
  const std::wstring folder = path.substr(0, path.find_last_of(L'\\') + 1);
  for (const wchar_t* place : {L"", L"..\\"}) {
    const std::wstring file = folder + place + kFile;
    if (!exists(file)) continue;
    loaded() = std::make_unique<ClassLibrary>(file);
    return;
  }
}

void close_library() {
  loaded().reset();
}

ComPtr<IUnknown> create_control(const std::wstring& prog_id) {
  if (loaded()) return loaded()->create(prog_id);
  CLSID clsid;
  ComPtr<IUnknown> object;
  if (SUCCEEDED(CLSIDFromProgID(prog_id.c_str(), &clsid)))
    CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.put_void());
  return object;
}

Picture library_bitmap(int id) {
  const HMODULE module = GetModuleHandleW(kFile);
  HANDLE bitmap =
      module ? LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)
             : nullptr;
  BITMAP info = {};
  if (!bitmap || !GetObjectW(bitmap, sizeof info, &info)) return {};
  Picture out(info.bmWidth, info.bmHeight);
  HDC source = CreateCompatibleDC(nullptr);
  HGDIOBJ before = SelectObject(source, bitmap);
  out.take(source, 0, 0);
  SelectObject(source, before);
  DeleteDC(source);
  DeleteObject(bitmap);
  return out;
}

}  // namespace kestrelon::host
