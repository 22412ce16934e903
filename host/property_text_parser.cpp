// Reading property bags from text. Every line comes from outside: each rule that it breaks is an
// error with its number.
#include <charconv>
#include <cwctype>

#include "host/base64.h"
#include "host/property_text.h"

namespace kestrelon::host {
namespace {

// Objects in objects: deeper than any real nesting, shallow enough for the stack.
constexpr int kMaxDepth = 16;

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

}  // namespace

BagEntries parse_property_text(std::wstring_view text) {
  if (!text.empty() && text.front() == 0xFEFF) text.remove_prefix(1);
  return Parser(text).parse();
}

}  // namespace kestrelon::host
