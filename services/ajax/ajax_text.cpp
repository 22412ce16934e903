#include "services/ajax/ajax_text.h"

#include <cstdint>

#include "base/decimal.h"
#include "base/text.h"

namespace kestrelon {
namespace {

// One pass, left to right; what a replacement leaves is not looked at again.
void replace_all(std::wstring& text, std::wstring_view what, std::wstring_view with) {
  size_t at = text.find(what);
  if (at == std::wstring::npos) return;
  std::wstring out;
  out.reserve(text.size());
  size_t from = 0;
  for (; at != std::wstring::npos; at = text.find(what, from)) {
    out.append(text, from, at - from).append(with);
    from = at + what.size();
  }
  text = out.append(text, from);
}

}  // namespace

std::wstring full_address(std::wstring_view url) {
  const std::wstring folded = fold_case(url);
  if (folded.starts_with(L"http://") || folded.starts_with(L"https://")) return std::wstring(url);
  return L"http://" + std::wstring(url);
}

std::wstring content_type(std::wstring_view type, std::wstring_view charset) {
  std::wstring text(type);
  if (!charset.empty()) text.append(L"; charset=").append(charset);
  return text;
}

std::wstring url_encode(std::wstring_view text) {
  constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
  std::wstring encoded;
  encoded.reserve(text.size() * 3);
  for (const wchar_t c : text) {
    encoded.push_back(L'%');
    encoded.push_back(kDigits[(c >> 4) & 15]);
    encoded.push_back(kDigits[c & 15]);
  }
  return encoded;
}

std::wstring form_body(const FormFields& fields, bool encode_values) {
  std::wstring body;
  for (const auto& [name, value] : fields) {
    if (!body.empty()) body.push_back(L'&');
    body.append(name).push_back(L'=');
    body.append(encode_values ? url_encode(value) : value);
  }
  return body;
}

// Half a pair goes out as the replacement character, whose form has three bytes.
size_t wire_length(std::wstring_view text) {
  size_t bytes = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const uint32_t c = code_unit(text[i]);
    const uint32_t next = i + 1 < text.size() ? code_unit(text[i + 1]) : 0;
    const bool is_pair = c >= 0xD800 && c < 0xDC00 && next >= 0xDC00 && next < 0xE000;
    bytes += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 && !is_pair ? 3 : 4;
    if (is_pair) ++i;
  }
  return bytes;
}

std::wstring decode_entities(std::wstring_view text) {
  std::wstring decoded(text);
  replace_all(decoded, L"&quot;", L"\"");
  replace_all(decoded, L"&lt;", L"<");
  replace_all(decoded, L"&gt;", L">");
  replace_all(decoded, L"&amp;", L"&");
  replace_all(decoded, L"&nbsp;", L" ");
  for (int code = 1; code <= 255 && decoded.find(L"&#") != std::wstring::npos; ++code) {
    const char byte = static_cast<char>(code);
    replace_all(decoded, L"&#" + decimal_text(code) + L";", from_ansi({&byte, 1}));
  }
  return decoded;
}

}  // namespace kestrelon
