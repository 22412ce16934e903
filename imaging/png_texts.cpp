#include "imaging/png_texts.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace kestrelon::png {
namespace {

constexpr size_t kMaxKeyword = 79;

char latin1(wchar_t c) {
  return static_cast<uint32_t>(c) < 256 ? static_cast<char>(c) : '?';
}

// Whether text[i] is the second half of a surrogate pair.
bool ends_pair(std::wstring_view text, size_t i) {
  auto kind = [](wchar_t c) { return static_cast<uint32_t>(c) & 0xFFFFFC00u; };
  return i > 0 && kind(text[i]) == 0xDC00u && kind(text[i - 1]) == 0xD800u;
}

bool is_printable(char c) {
  const auto byte = static_cast<uint8_t>(c);
  return (byte >= 32 && byte <= 126) || byte >= 161;
}

std::string clean_keyword(std::wstring_view keyword) {
  std::string clean;
  for (char c : latin1_text(keyword)) {
    if (!is_printable(c)) c = ' ';
    if (c == ' ' && (clean.empty() || clean.back() == ' ')) continue;
    clean += c;
  }
  clean.resize(std::min(clean.size(), kMaxKeyword));
  while (!clean.empty() && clean.back() == ' ') clean.pop_back();
  return clean;
}

}  // namespace

std::string keyword_of(const PngPropertyEntry& entry) {
  switch (entry.id) {
    case PngProperty::Title:
      return "Title";
    case PngProperty::Author:
      return "Author";
    case PngProperty::Description:
      return "Description";
    case PngProperty::Copyright:
      return "Copyright";
    case PngProperty::CreationTime:
      return "Creation Time";
    case PngProperty::Software:
      return "Software";
    case PngProperty::Disclaimer:
      return "Disclaimer";
    case PngProperty::Warning:
      return "Warning";
    case PngProperty::Source:
      return "Source";
    case PngProperty::Comment:
      return "Comment";
    default: {
      const std::string keyword = clean_keyword(entry.keyword);
      return keyword.empty() ? "Miscellaneous" : keyword;
    }
  }
}

std::string latin1_text(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'\r') {
      if (i + 1 == text.size() || text[i + 1] != L'\n') out += '\n';
    } else if (c != 0 && !ends_pair(text, i)) {
      // A pair of surrogates is one character that Latin-1 lacks; its first half stands for it.
      out += latin1(c);
    }
  }
  return out;
}

std::array<uint8_t, 7> time_bytes(double date) {
  using namespace std::chrono;
  constexpr sys_days kEpoch = year{1899} / December / 30;
  constexpr double kFirst = -693593, kEnd = 2958466;  // 1 January 1 up to the end of 9999
  const double kept = std::isnan(date) ? 0 : std::clamp(date, kFirst, kEnd - 1.0 / 86400);
  // Before the epoch the fraction still counts forward from the start of the day.
  const double whole = std::trunc(kept);
  auto day = kEpoch + days(static_cast<int64_t>(whole));
  auto second = static_cast<int64_t>(std::nearbyint(std::abs(kept - whole) * 86400));
  if (second == 86400) {
    second = 0;
    day += days(1);
  }
  const year_month_day ymd(day);
  const auto year = static_cast<uint32_t>(static_cast<int>(ymd.year()));
  return {static_cast<uint8_t>(year >> 8),
          static_cast<uint8_t>(year),
          static_cast<uint8_t>(static_cast<unsigned>(ymd.month())),
          static_cast<uint8_t>(static_cast<unsigned>(ymd.day())),
          static_cast<uint8_t>(second / 3600),
          static_cast<uint8_t>(second / 60 % 60),
          static_cast<uint8_t>(second % 60)};
}

}  // namespace kestrelon::png
