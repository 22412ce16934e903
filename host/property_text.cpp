#include "host/property_text.h"

#include <charconv>
#include <cwctype>
#include <memory>

#include "host/base64.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr int kMaxDepth = 16;
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

bool is_plain_name(std::wstring_view name) {
  for (wchar_t c : name)
    if (!(c >= L'a' && c <= L'z') && !(c >= L'A' && c <= L'Z') && !(c >= L'0' && c <= L'9') &&
        c != L'_')
      return false;
  return !name.empty();
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

std::wstring_view trimmed(std::wstring_view text) {
  while (!text.empty() && std::iswspace(static_cast<wint_t>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::iswspace(static_cast<wint_t>(text.back()))) text.remove_suffix(1);
  return text;
}

class Parser {
 public:
  explicit Parser(std::wstring_view text) : rest_(text) {}

  BagEntries parse() {
    BagEntries out = entries(false);
    return out;
  }

 private:
  [[noreturn]] void fail(const std::wstring& text) const {
    throw ComError(E_INVALIDARG, L"Line " + std::to_wstring(line_number_) + L": " + text);
  }

  // The next line that says something; false at the end of the text.
  bool next(std::wstring_view& line) {
    while (!rest_.empty()) {
      const size_t end = rest_.find(L'\n');
      line = trimmed(rest_.substr(0, end));
      rest_.remove_prefix(end == std::wstring_view::npos ? rest_.size() : end + 1);
      ++line_number_;
      if (!line.empty() && line.front() != L'\'') return true;
    }
    return false;
  }

  BagEntries entries(bool nested) {
    if (++depth_ > kMaxDepth) fail(L"nested too deeply");
    BagEntries out;
    std::wstring_view line;
    for (;;) {
      if (!next(line)) {
        if (nested) fail(L"a closing brace is missing");
        break;
      }
      if (nested && line == L"}") break;
      BagEntry entry;
      entry.name = name(line);
      line = trimmed(line);
      if (line.empty() || line.front() != L'=') fail(L"= expected");
      entry.value = value(trimmed(line.substr(1)));
      out.push_back(std::move(entry));
    }
    --depth_;
    return out;
  }

  std::wstring name(std::wstring_view& line) {
    if (line.front() == L'"') return text(line);
    size_t end = 0;
    while (end < line.size() && is_plain_name(line.substr(end, 1))) ++end;
    if (end == 0) fail(L"a name is expected");
    std::wstring out(line.substr(0, end));
    line.remove_prefix(end);
    return out;
  }

  // A quoted text at the start of `line`, which is moved behind it.
  std::wstring text(std::wstring_view& line) {
    std::wstring out;
    line.remove_prefix(1);
    for (;;) {
      if (line.empty()) fail(L"a closing quote is missing");
      const wchar_t c = line.front();
      line.remove_prefix(1);
      if (c == L'"') return out;
      out += c == L'\\' ? escape(line) : c;
    }
  }

  wchar_t escape(std::wstring_view& line) {
    if (line.empty()) fail(L"a closing quote is missing");
    const wchar_t c = line.front();
    line.remove_prefix(1);
    switch (c) {
      case L'n':
        return L'\n';
      case L'r':
        return L'\r';
      case L't':
        return L'\t';
      case L'"':
      case L'\\':
        return c;
      case L'u':
        return hex(line);
      default:
        fail(L"unknown escape");
    }
  }

  wchar_t hex(std::wstring_view& line) {
    unsigned code = 0;
    if (line.size() < 4) fail(L"four digits expected");
    for (wchar_t c : line.substr(0, 4)) {
      const wchar_t lower = static_cast<wchar_t>(c | 0x20);
      if (c >= L'0' && c <= L'9')
        code = code * 16 + static_cast<unsigned>(c - L'0');
      else if (lower >= L'a' && lower <= L'f')
        code = code * 16 + static_cast<unsigned>(lower - L'a' + 10);
      else
        fail(L"four digits expected");
    }
    line.remove_prefix(4);
    return static_cast<wchar_t>(code);
  }

  BagValue value(std::wstring_view line) {
    BagValue out;
    if (line == L"Font {") {
      out.kind = BagValue::Kind::kFont;
      out.nested = entries(true);
    } else if (line == L"Bytes {") {
      out.plain = byte_array(base64());
    } else if (line.starts_with(L"Object ")) {
      out.kind = BagValue::Kind::kObjectBag;
      out.clsid = head_guid(line.substr(7));
      out.nested = entries(true);
    } else if (line.starts_with(L"Stream ")) {
      out.kind = BagValue::Kind::kObjectStream;
      out.clsid = head_guid(line.substr(7));
      out.bytes = base64();
    } else {
      out.plain = plain(line);
    }
    return out;
  }

  CLSID head_guid(std::wstring_view line) {
    CLSID clsid = {};
    if (!line.ends_with(L" {")) fail(L"{ expected");
    const std::wstring guid(line.substr(0, line.size() - 2));
    if (FAILED(CLSIDFromString(guid.c_str(), &clsid))) fail(L"a class id is expected");
    return clsid;
  }

  std::vector<uint8_t> base64() {
    std::wstring digits;
    std::wstring_view line;
    for (;;) {
      if (!next(line)) fail(L"a closing brace is missing");
      if (line == L"}") break;
      digits += line;
    }
    auto bytes = from_base64(digits);
    if (!bytes) fail(L"bad Base64");
    return std::move(*bytes);
  }

  static Variant byte_array(const std::vector<uint8_t>& bytes) {
    Variant out;
    out.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!out.parray) throw std::bad_alloc();
    out.vt = VT_ARRAY | VT_UI1;
    void* data = nullptr;
    if (SUCCEEDED(SafeArrayAccessData(out.parray, &data))) {
      std::copy(bytes.begin(), bytes.end(), static_cast<uint8_t*>(data));
      SafeArrayUnaccessData(out.parray);
    }
    return out;
  }

  Variant plain(std::wstring_view line) {
    if (line.empty()) fail(L"a value is expected");
    if (line.front() == L'"') {
      Variant out(text(line));
      if (!line.empty()) fail(L"unexpected text behind the value");
      return out;
    }
    Variant out;
    if (line == L"Empty") return out;
    if (line == L"True" || line == L"False") return Variant(line == L"True");
    if (line == L"Nothing") return Variant(static_cast<IDispatch*>(nullptr));
    if (line == L"Null") {
      out.vt = VT_NULL;
      return out;
    }
    if (line.starts_with(L"Byte ")) {
      out.bVal = number<uint8_t>(line.substr(5));
      out.vt = VT_UI1;
      return out;
    }
    if (line.starts_with(L"Date ")) {
      out.date = number<double>(line.substr(5));
      out.vt = VT_DATE;
      return out;
    }
    const std::wstring_view digits = line.substr(0, line.size() - 1);
    switch (line.back()) {
      case L'%':
        return Variant(number<short>(digits));
      case L'&':
        return Variant(number<long>(digits));
      case L'!':
        return Variant(number<float>(digits));
      case L'#':
        return Variant(number<double>(digits));
      case L'@':
        out.cyVal.int64 = currency(digits);
        out.vt = VT_CY;
        return out;
      default:
        fail(L"a value is expected");
    }
  }

  template <class T>
  T number(std::wstring_view digits) {
    std::string narrow;
    for (wchar_t c : digits) narrow += c < 0x80 ? static_cast<char>(c) : '?';
    T value{};
    const auto end = std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    if (narrow.empty() || end.ec != std::errc() || end.ptr != narrow.data() + narrow.size())
      fail(L"a number in the range of its type is expected");
    return value;
  }

  LONGLONG currency(std::wstring_view digits) {
    const size_t point = digits.size() < 5 ? 0 : digits.size() - 5;
    if (digits.size() < 6 || digits[point] != L'.') fail(L"four decimals are expected");
    std::wstring whole(digits.substr(0, point));
    return number<LONGLONG>(whole += digits.substr(point + 1));
  }

  std::wstring_view rest_;
  int line_number_ = 0;
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

BagEntries parse_property_text(std::wstring_view text) {
  if (!text.empty() && text.front() == 0xFEFF) text.remove_prefix(1);
  return Parser(text).parse();
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
