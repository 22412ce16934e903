#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cwchar>

#include "base/fold.h"
#include "grid/locale_rules.h"

namespace kestrelon {
namespace {

std::wstring locale_text(LCTYPE type) {
  wchar_t text[128];
  const int size = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, std::size(text));
  return size > 1 ? std::wstring(text, static_cast<size_t>(size) - 1) : std::wstring();
}

int locale_number(LCTYPE type, int otherwise) {
  const std::wstring text = locale_text(type);
  return text.empty() ? otherwise : static_cast<int>(std::wcstol(text.c_str(), nullptr, 10));
}

wchar_t locale_mark(LCTYPE type, wchar_t otherwise) {
  const std::wstring text = locale_text(type);
  return text.empty() ? otherwise : text[0];
}

// By the numbers of LOCALE_ICURRENCY and LOCALE_INEGCURR.
constexpr const wchar_t* kCurrencyPatterns[] = {L"$n", L"n$", L"$ n", L"n $"};
constexpr const wchar_t* kNegativePatterns[] = {
    L"($n)", L"-$n",  L"$-n",  L"$n-",  L"(n$)", L"-n$",  L"n-$",   L"n$-",
    L"-n $", L"-$ n", L"n $-", L"$ n-", L"$ -n", L"n- $", L"($ n)", L"(n $)"};

template <size_t N>
const wchar_t* pattern(const wchar_t* const (&patterns)[N], int number, const wchar_t* otherwise) {
  return number >= 0 && number < static_cast<int>(N) ? patterns[number] : otherwise;
}

// The words for True and False that the system's own conversions write.
std::wstring boolean_name(VARIANT_BOOL value) {
  BSTR text = nullptr;
  if (FAILED(VarBstrFromBool(value, LOCALE_USER_DEFAULT, VAR_LOCALBOOL, &text))) return {};
  std::wstring word(text, SysStringLen(text));
  SysFreeString(text);
  return word;
}

LocaleFacts read_facts() {
  LocaleFacts facts;
  facts.decimal_mark = locale_mark(LOCALE_SDECIMAL, L'.');
  facts.group_mark = locale_mark(LOCALE_STHOUSAND, L'\0');
  facts.currency = locale_text(LOCALE_SCURRENCY);
  facts.currency_pattern = pattern(kCurrencyPatterns, locale_number(LOCALE_ICURRENCY, 0), L"$n");
  facts.negative_currency_pattern =
      pattern(kNegativePatterns, locale_number(LOCALE_INEGCURR, 1), L"-$n");
  facts.currency_decimals = std::clamp(locale_number(LOCALE_ICURRDIGITS, 2), 0, 9);
  const std::wstring mark = upper_text(facts.currency);
  if (!mark.empty()) facts.currency_marks.push_back(mark);
  const int order = locale_number(LOCALE_IDATE, 1);
  facts.date_order = order == 0   ? DateOrder::kMonthDayYear
                     : order == 2 ? DateOrder::kYearMonthDay
                                  : DateOrder::kDayMonthYear;
  facts.date_separator = locale_mark(LOCALE_SDATE, L'/');
  if (std::wstring_view(L"/-.").find(facts.date_separator) == std::wstring_view::npos)
    facts.date_separator = L'/';  // one that dates can be read back with
  facts.true_word = boolean_name(VARIANT_TRUE);
  facts.false_word = boolean_name(VARIANT_FALSE);
  if (PRIMARYLANGID(LANGIDFROMLCID(GetUserDefaultLCID())) != LANG_PORTUGUESE) {
    facts.yes_word = L"Yes";
    facts.no_word = L"No";
  }
  return facts;
}

class SystemLocaleRules final : public LocaleRules {
 public:
  SystemLocaleRules() : LocaleRules(read_facts()), locale_(GetUserDefaultLCID()) {}

  void append_sort_key(std::wstring_view text, std::string& keys) const override;
  std::optional<double> wordy_date(std::wstring_view text) const override;
  std::optional<std::string> code_page_bytes(std::wstring_view text) const override;

 private:
  LCID locale_;
};

void SystemLocaleRules::append_sort_key(std::wstring_view text, std::string& keys) const {
  // The flags of a comparison of texts in the host language.
  constexpr DWORD kFlags = LCMAP_SORTKEY | NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH;
  const int length = static_cast<int>(text.size());
  const size_t start = keys.size();
  if (length > 0) {
    // A key of usual size needs one call.
    size_t room = text.size() * 4 + 32;
    for (int attempt = 0; attempt < 2; ++attempt) {
      keys.resize(start + room);
      const int size =
          LCMapStringW(locale_, kFlags, text.data(), length,
                       reinterpret_cast<wchar_t*>(keys.data() + start), static_cast<int>(room));
      if (size > 0) return keys.resize(start + static_cast<size_t>(size));
      const int needed = LCMapStringW(locale_, kFlags, text.data(), length, nullptr, 0);
      room = needed > 0 ? static_cast<size_t>(needed) : room;
    }
  }
  keys.resize(start);
  keys.push_back('\0');
}

std::optional<double> SystemLocaleRules::wordy_date(std::wstring_view text) const {
  constexpr size_t kLongestDate = 64;
  if (text.size() > kLongestDate) return std::nullopt;
  std::wstring ended(text);
  DATE date = 0;
  if (FAILED(VarDateFromStr(ended.data(), locale_, 0, &date))) return std::nullopt;
  return date;
}

std::optional<std::string> SystemLocaleRules::code_page_bytes(std::wstring_view text) const {
  if (text.empty()) return std::string();
  if (GetACP() == CP_UTF8) return std::nullopt;  // Unicode texts carry their mark
  BOOL lost = FALSE;
  const int length = static_cast<int>(text.size());
  const auto convert = [&](char* bytes, int room) {
    return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes, room,
                               nullptr, &lost);
  };
  std::string bytes(static_cast<size_t>(std::max(convert(nullptr, 0), 0)), '\0');
  if (bytes.empty() || lost) return std::nullopt;
  convert(bytes.data(), static_cast<int>(bytes.size()));
  if (lost) return std::nullopt;
  return bytes;
}

}  // namespace

std::unique_ptr<LocaleRules> system_locale_rules() {
  return std::make_unique<SystemLocaleRules>();
}

}  // namespace kestrelon
