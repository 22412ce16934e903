#include "host/property_text.h"

#include <charconv>
#include <memory>

#include "host/base64.h"
#include "host/late_bound.h"

namespace kestrelon::host {

bool is_plain_name(std::wstring_view name) {
  for (wchar_t c : name)
    if (!(c >= L'a' && c <= L'z') && !(c >= L'A' && c <= L'Z') && !(c >= L'0' && c <= L'9') &&
        c != L'_')
      return false;
  return !name.empty();
}

namespace {

constexpr size_t kLineBytes = 57;  // 76 digits a line
// Beyond any form; a file of this size is none of ours.
constexpr LONGLONG kMaxFile = 256LL * 1024 * 1024;

template <class T>
std::wstring number_text(T value) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, value);
  return std::wstring(digits, end.ptr);
}

std::wstring quoted(std::wstring_view text) {
  constexpr wchar_t kHex[] = L"0123456789ABCDEF";
  std::wstring out = L"\"";
  for (wchar_t c : text) {
    const auto code = static_cast<unsigned>(c);
    if (c == L'"' || c == L'\\') {
      out += L'\\';
      out += c;
    } else if (c == L'\n') {
      out += L"\\n";
    } else if (c == L'\r') {
      out += L"\\r";
    } else if (c == L'\t') {
      out += L"\\t";
    } else if (code < 0x20 || (code >= 0xD800 && code < 0xE000) || code == 0xFEFF) {
      // Controls, and surrogates that might stand alone, which UTF-8 cannot carry.
      out += L"\\u";
      for (int shift = 12; shift >= 0; shift -= 4) out += kHex[code >> shift & 15];
    } else {
      out += c;
    }
  }
  return out + L"\"";
}

std::wstring guid_text(const CLSID& clsid) {
  wchar_t text[40] = {};
  StringFromGUID2(clsid, text, 40);
  return text;
}

class Writer {
 public:
  std::wstring take() { return std::move(out_); }

  void entries(const BagEntries& list) {
    for (const BagEntry& entry : list) {
      indent();
      out_ += is_plain_name(entry.name) ? entry.name : quoted(entry.name);
      out_ += L" = ";
      value(entry.value);
      out_ += L"\r\n";
    }
  }

 private:
  void indent() { out_.append(static_cast<size_t>(depth_) * 2, L' '); }

  void value(const BagValue& value) {
    switch (value.kind) {
      case BagValue::Kind::kFont:
        return block(L"Font {", [&] { entries(value.nested); });
      case BagValue::Kind::kObjectBag:
        return block(L"Object " + guid_text(value.clsid) + L" {", [&] { entries(value.nested); });
      case BagValue::Kind::kObjectStream:
        return block(L"Stream " + guid_text(value.clsid) + L" {",
                     [&] { base64(value.bytes.data(), value.bytes.size()); });
      case BagValue::Kind::kPlain:
        return plain(value.plain);
    }
  }

  void plain(const Variant& v) {
    switch (v.vt) {
      case VT_EMPTY:
        out_ += L"Empty";
        return;
      case VT_NULL:
        out_ += L"Null";
        return;
      case VT_DISPATCH:
      case VT_UNKNOWN:
        out_ += L"Nothing";
        return;
      case VT_BOOL:
        out_ += v.boolVal ? L"True" : L"False";
        return;
      case VT_BSTR:
        out_ += quoted(to_wstring(v.bstrVal));
        return;
      case VT_I2:
        out_ += number_text(v.iVal) + L"%";
        return;
      case VT_R4:
        out_ += number_text(v.fltVal) + L"!";
        return;
      case VT_R8:
        out_ += number_text(v.dblVal) + L"#";
        return;
      case VT_CY:
        currency(v.cyVal.int64);
        return;
      case VT_DATE:
        out_ += L"Date " + number_text(v.date);
        return;
      case VT_UI1:
        out_ += L"Byte " + number_text(static_cast<int>(v.bVal));
        return;
      case VT_ARRAY | VT_UI1:
        bytes(v.parray);
        return;
      default:
        // The other whole numbers of automation fit a Long or are refused.
        out_ += number_text(to_long(v)) + L"&";
        return;
    }
  }

  // Ten-thousandths, exactly.
  void currency(LONGLONG value) {
    const bool negative = value < 0;
    const ULONGLONG size =
        negative ? 0 - static_cast<ULONGLONG>(value) : static_cast<ULONGLONG>(value);
    std::wstring fraction = number_text(size % 10000);
    fraction.insert(0, 4 - fraction.size(), L'0');
    out_ += (negative ? L"-" : L"") + number_text(size / 10000) + L"." + fraction + L"@";
  }

  void bytes(SAFEARRAY* array) {
    void* data = nullptr;
    LONG first = 0;
    LONG last = -1;
    if (!array || SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &first)) ||
        FAILED(SafeArrayGetUBound(array, 1, &last)) || FAILED(SafeArrayAccessData(array, &data)))
      throw ComError(E_INVALIDARG, L"Only arrays of one dimension can be saved");
    block(L"Bytes {", [&] {
      base64(static_cast<const uint8_t*>(data), static_cast<size_t>(last - first + 1));
    });
    SafeArrayUnaccessData(array);
  }

  void base64(const uint8_t* data, size_t size) {
    for (size_t at = 0; at < size; at += kLineBytes) {
      indent();
      out_ += to_base64(data + at, std::min(kLineBytes, size - at)) + L"\r\n";
    }
  }

  template <class Body>
  void block(const std::wstring& head, Body&& body) {
    out_ += head + L"\r\n";
    ++depth_;
    body();
    --depth_;
    indent();
    out_ += L"}";
  }

  std::wstring out_;
  int depth_ = 0;
};

struct FileCloser {
  void operator()(HANDLE file) const { CloseHandle(file); }
};
using File = std::unique_ptr<void, FileCloser>;

File open_file(const std::wstring& path, DWORD access, DWORD creation) {
  HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, creation,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    throw ComError(HRESULT_FROM_WIN32(GetLastError()), L"Cannot open " + path);
  return File(file);
}

}  // namespace

std::wstring to_property_text(const BagEntries& entries) {
  Writer writer;
  writer.entries(entries);
  return writer.take();
}

void save_property_file(const std::wstring& path, const BagEntries& entries) {
  const std::wstring text = to_property_text(entries);
  const int length = static_cast<int>(text.size());
  std::string bytes(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length,
                                                            nullptr, 0, nullptr, nullptr)),
                    '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, bytes.data(),
                      static_cast<int>(bytes.size()), nullptr, nullptr);
  const File file = open_file(path, GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ||
      written != bytes.size())
    throw ComError(HRESULT_FROM_WIN32(GetLastError()), L"Cannot write " + path);
}

BagEntries load_property_file(const std::wstring& path) {
  const File file = open_file(path, GENERIC_READ, OPEN_EXISTING);
  LARGE_INTEGER size = {};
  if (!GetFileSizeEx(file.get(), &size) || size.QuadPart > kMaxFile)
    throw ComError(E_INVALIDARG, path + L" is too large");
  std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
  DWORD read = 0;
  if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
    throw ComError(HRESULT_FROM_WIN32(GetLastError()), L"Cannot read " + path);
  std::wstring text(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, bytes.data(),
                                                            static_cast<int>(read), nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(read), text.data(),
                      static_cast<int>(text.size()));
  return parse_property_text(text);
}

}  // namespace kestrelon::host
