#include "services/ajax/answer_text.h"

#include <algorithm>

#include "base/text.h"
#include "imaging/inflate.h"
#include "services/typing/text_file.h"

namespace kestrelon {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint64_t kLargestAnswer = uint64_t{256} << 20;  // bytes, unpacked

bool is_gzip(Bytes bytes) {
  return bytes.size() > 2 && bytes[0] == 0x1F && bytes[1] == 0x8B && bytes[2] == 8;
}

// The bytes behind the first zero; none when there is no zero.
Bytes behind_zero(Bytes bytes) {
  const auto zero = std::find(bytes.begin(), bytes.end(), 0);
  return zero == bytes.end() ? Bytes() : Bytes(zero + 1, bytes.end());
}

// The packed blocks behind the head with its optional parts; none when it is cut short.
Bytes behind_head(Bytes bytes) {
  constexpr size_t kHead = 10;
  constexpr uint8_t kCheck = 2, kExtra = 4, kName = 8, kComment = 16;
  if (bytes.size() < kHead) return {};
  const uint8_t flags = bytes[3];
  bytes = bytes.subspan(kHead);
  if (flags & kExtra) {
    if (bytes.size() < 2) return {};
    const size_t length = size_t{2} + bytes[0] + size_t{256} * bytes[1];
    bytes = bytes.subspan(std::min(length, bytes.size()));
  }
  if (flags & kName) bytes = behind_zero(bytes);
  if (flags & kComment) bytes = behind_zero(bytes);
  if (flags & kCheck) bytes = bytes.subspan(std::min(size_t{2}, bytes.size()));
  return bytes;
}

// The set that a content type names, in lower case and without quotes.
std::wstring charset_of(std::wstring_view content_type) {
  constexpr std::wstring_view kName = L"charset=";
  const size_t at = find_ignoring_case(content_type, kName);
  if (at == std::wstring_view::npos) return {};
  std::wstring_view set = content_type.substr(at + kName.size());
  set = trim_blanks(set.substr(0, set.find(L';')));
  if (set.size() > 1 && set.front() == L'"' && set.back() == L'"')
    set = set.substr(1, set.size() - 2);
  return fold_case(set);
}

bool is_western(std::wstring_view set) {
  constexpr std::wstring_view kNames[] = {L"iso-8859-1", L"iso8859-1", L"latin1", L"windows-1252",
                                          L"us-ascii",   L"cp1252",    L"ascii"};
  return std::find(std::begin(kNames), std::end(kNames), set) != std::end(kNames);
}

bool has_mark(Bytes bytes) {
  const auto begins = [&](std::initializer_list<uint8_t> mark) {
    return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
  };
  return begins({0xEF, 0xBB, 0xBF}) || begins({0xFF, 0xFE}) || begins({0xFE, 0xFF});
}

}  // namespace

std::optional<std::vector<uint8_t>> gunzip(Bytes bytes, uint64_t limit) {
  if (!is_gzip(bytes)) return std::nullopt;
  const Bytes blocks = behind_head(bytes);
  Inflater inflater({&blocks, 1}, InflateFormat::RawDeflate, limit);
  std::vector<uint8_t> out;
  for (Bytes run = inflater.next(); !run.empty(); run = inflater.next())
    out.insert(out.end(), run.begin(), run.end());
  if (!inflater.complete()) return std::nullopt;
  return out;
}

std::optional<std::wstring> answer_text(Bytes body, std::wstring_view content_type) {
  std::vector<uint8_t> unpacked;
  if (is_gzip(body)) {
    auto content = gunzip(body, kLargestAnswer);
    if (!content) return std::nullopt;
    unpacked = std::move(*content);
    body = unpacked;
  }
  const std::wstring set = charset_of(content_type);
  if (has_mark(body) || set.empty() || set == L"utf-8" || set == L"utf8")
    return decode_text_file(body);
  if (!is_western(set)) return std::nullopt;
  return from_ansi({reinterpret_cast<const char*>(body.data()), body.size()});
}

}  // namespace kestrelon
