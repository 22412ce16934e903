#include "grid/locale_rules.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "grid/values/cell_number.h"
#include "grid/values/date_text.h"

namespace kestrelon {
namespace {

std::string key(const LocaleRules& rules, std::wstring_view text) {
  std::string bytes;
  rules.append_sort_key(text, bytes);
  return bytes;
}

TEST(SystemLocaleRules, KeysOrderAsTheSystemCompares) {
  const auto rules = system_locale_rules();
  const wchar_t* texts[] = {L"",      L"a",         L"A",     L"\u00C1gua", L"agua",
                            L"aguas", L"ab",        L"co-op", L"coop",      L"10",
                            L"9",     L"\u00E7",    L"z",     L"A\u0301",   L"\u4E2D\u6587",
                            L" a",    L"\u20AC 10", L"-"};
  for (const wchar_t* a : texts) {
    for (const wchar_t* b : texts) {
      const int compared =
          CompareStringW(GetUserDefaultLCID(),
                         NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH, a, -1, b, -1) -
          CSTR_EQUAL;
      const int by_key = key(*rules, a).compare(key(*rules, b));
      EXPECT_EQ(compared < 0, by_key < 0) << a << L" and " << b;
      EXPECT_EQ(compared > 0, by_key > 0) << a << L" and " << b;
    }
  }
}

TEST(SystemLocaleRules, KeysEndWithTheirOnlyZeroHoweverLongTheText) {
  const auto rules = system_locale_rules();
  for (const size_t size : {0, 1, 7, 100, 5000}) {
    for (const wchar_t c : {L'a', L'\u00C1', L'-', L'\u4E2D', L'\x1', L'\0'}) {
      const std::string bytes = key(*rules, std::wstring(size, c));
      ASSERT_FALSE(bytes.empty());
      EXPECT_EQ(bytes.find('\0'), bytes.size() - 1) << size << " of " << static_cast<int>(c);
    }
  }
  std::string two;
  rules->append_sort_key(L"a", two);
  const size_t first = two.size();
  rules->append_sort_key(L"b", two);
  EXPECT_EQ(two.substr(first), key(*rules, L"b"));
}

TEST(SystemLocaleRules, FactsServeReadingAndWriting) {
  const auto rules = system_locale_rules();
  const LocaleFacts& facts = rules->facts();
  EXPECT_NE(facts.decimal_mark, facts.group_mark);
  EXPECT_EQ(cell_number(std::wstring(L"1") + facts.decimal_mark + L"5", facts), 1.5);
  EXPECT_EQ(cell_number(facts.currency + L" 7", facts), 7);
  EXPECT_EQ(cell_date(date_text(41000.25, facts), *rules), 41000.25);
  EXPECT_TRUE(rules->wordy_date(L"5 March 2012") ||
              PRIMARYLANGID(GetUserDefaultLangID()) != LANG_ENGLISH);
  EXPECT_FALSE(rules->wordy_date(std::wstring(100000, L'1')));
}

TEST(SystemLocaleRules, CodePageBytesLoseNothing) {
  const auto rules = system_locale_rules();
  EXPECT_EQ(rules->code_page_bytes(L""), "");
  if (GetACP() != 1252) GTEST_SKIP() << "another code page";
  EXPECT_EQ(rules->code_page_bytes(L"\u00C1gua"), "\xC1gua");
  EXPECT_EQ(rules->code_page_bytes(L"\u4E2D"), std::nullopt);
  EXPECT_EQ(rules->code_page_bytes(L"\u0100"), std::nullopt) << "no best fit";
}

}  // namespace
}  // namespace kestrelon
