#include "imaging/zlib_api_win.h"

#include <windows.h>

#include <string>

#include "imaging/zlib_api.h"

namespace kestrelon {
namespace {

constexpr wchar_t kDllName[] = L"zlibwapi.dll";

// The entries of zlibwapi.dll are stdcall; uLong is a 32-bit type in both word sizes.
using UncompressEntry = int(WINAPI*)(uint8_t*, unsigned long*, const uint8_t*, unsigned long);
using Crc32Entry = unsigned long(WINAPI*)(unsigned long, const uint8_t*, unsigned int);
using Compress2Entry = int(WINAPI*)(uint8_t*, unsigned long*, const uint8_t*, unsigned long, int);
using InflateInitEntry = int(WINAPI*)(ZlibStream*, const char*, int);
using InflateEntry = int(WINAPI*)(ZlibStream*, int);
using InflateEndEntry = int(WINAPI*)(ZlibStream*);

UncompressEntry g_uncompress = nullptr;
Crc32Entry g_crc32 = nullptr;
Compress2Entry g_compress2 = nullptr;
InflateInitEntry g_inflate_init = nullptr;
InflateEntry g_inflate = nullptr;
InflateEndEntry g_inflate_end = nullptr;

int call_uncompress(uint8_t* dest, unsigned long* dest_size, const uint8_t* source,
                    unsigned long source_size) {
  return g_uncompress(dest, dest_size, source, source_size);
}

unsigned long call_crc32(unsigned long crc, const uint8_t* bytes, unsigned int size) {
  return g_crc32(crc, bytes, size);
}

int call_compress2(uint8_t* dest, unsigned long* dest_size, const uint8_t* source,
                   unsigned long source_size, int level) {
  return g_compress2(dest, dest_size, source, source_size, level);
}

// zlib compares the first digit of the version and the size of the structure.
int call_inflate_init(ZlibStream* stream) {
  return g_inflate_init(stream, "1", static_cast<int>(sizeof *stream));
}

int call_inflate(ZlibStream* stream, int flush) {
  return g_inflate(stream, flush);
}

int call_inflate_end(ZlibStream* stream) {
  return g_inflate_end(stream);
}

// The folder of the module that holds this code, with its last backslash; empty if unknown.
std::wstring own_folder() {
  HMODULE self = nullptr;
  const auto here = reinterpret_cast<const wchar_t*>(&own_folder);
  constexpr DWORD kFlags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExW(kFlags, here, &self)) return {};
  std::wstring path(32768, L'\0');
  const DWORD size = GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size()));
  if (size == 0 || size >= path.size()) return {};
  path.resize(size);
  const size_t slash = path.rfind(L'\\');
  return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash + 1);
}

HMODULE load_dll() {
  const std::wstring folder = own_folder();
  HMODULE dll = folder.empty() ? nullptr : LoadLibraryW((folder + kDllName).c_str());
  return dll ? dll : LoadLibraryW(kDllName);
}

template <typename Function>
Function entry(HMODULE dll, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(dll, name)));
}

const ZlibApi* load_api() {
  const HMODULE dll = load_dll();
  if (!dll) return nullptr;
  g_uncompress = entry<UncompressEntry>(dll, "uncompress");
  g_crc32 = entry<Crc32Entry>(dll, "crc32");
  g_compress2 = entry<Compress2Entry>(dll, "compress2");
  static ZlibApi api;
  if (g_uncompress) api.uncompress = call_uncompress;
  if (g_crc32) api.crc32 = call_crc32;
  if (g_compress2) api.compress2 = call_compress2;
  g_inflate_init = entry<InflateInitEntry>(dll, "inflateInit_");
  g_inflate = entry<InflateEntry>(dll, "inflate");
  g_inflate_end = entry<InflateEndEntry>(dll, "inflateEnd");
  if (g_inflate_init && g_inflate && g_inflate_end) {
    api.inflate_init = call_inflate_init;
    api.inflate = call_inflate;
    api.inflate_end = call_inflate_end;
  }
  return &api;
}

const ZlibApi* zlibwapi() {
  static const ZlibApi* const api = load_api();
  return api;
}

}  // namespace

void use_zlibwapi() {
  set_zlib_loader(zlibwapi);
}

bool is_zlib_enabled() {
  const HMODULE dll = load_dll();
  if (!dll) return false;
  const bool enabled = GetProcAddress(dll, "crc32") != nullptr;
  FreeLibrary(dll);
  return enabled;
}

}  // namespace kestrelon
