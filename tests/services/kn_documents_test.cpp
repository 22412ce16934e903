#include "services/kn_documents.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "services/kn_contacts.h"

namespace kestrelon {
namespace {

std::wstring digits(int number, int width) {
  std::wstring text = std::to_wstring(number);
  return std::wstring(static_cast<size_t>(width) - text.size(), L'0') + text;
}

// Finds the two check digits by trying all pairs: exactly one may be accepted.
template <class Check>
std::wstring completed(const std::wstring& body, const Check& check) {
  std::wstring found;
  int count = 0;
  for (int pair = 0; pair < 100; ++pair) {
    if (!check(body + digits(pair, 2))) continue;
    found = body + digits(pair, 2);
    ++count;
  }
  EXPECT_EQ(count, 1) << testing::PrintToString(body);
  return found;
}

// The rule in its published form, from the left with the weights written out.
bool arithmetic_holds(const std::wstring& text) {
  const std::wstring weights = text.size() == 11 ? L";:98765432" : L"6543298765432";
  int sums[2] = {};
  for (size_t i = 0; i + 1 < text.size(); ++i) {
    const int value = text[i] - L'0';
    const size_t at = i + weights.size() + 1 - text.size();
    sums[1] += value * (weights[at] - L'0');
    if (i + 2 < text.size()) sums[0] += value * (weights[at + 1] - L'0');
  }
  for (size_t k = 0; k < 2; ++k) {
    const int rest = sums[k] % 11;
    if (text[text.size() - 2 + k] - L'0' != (rest < 2 ? 0 : 11 - rest)) return false;
  }
  return true;
}

// A digit that changes is noticed, but for one blind spot of the published rule: remainders 0 and 1
// share the check digit 0, so that numbers with it may have a valid neighbour.
template <class Check>
void expect_each_change_refused(const std::wstring& valid, const Check& check) {
  const bool blind_spot = valid.find(L'0', valid.size() - 2) != std::wstring::npos;
  for (size_t at = 0; at < valid.size(); ++at)
    for (const wchar_t other : std::wstring_view(L"0123456789")) {
      if (other == valid[at]) continue;
      std::wstring changed = valid;
      changed[at] = other;
      EXPECT_EQ(check(changed), blind_spot && arithmetic_holds(changed))
          << testing::PrintToString(changed);
    }
}

TEST(Cpf, HasOnePairOfCheckDigitsAndRefusesEachChange) {
  for (int tail = 0; tail < 1000; ++tail) {
    const std::wstring valid = completed(L"529982" + digits(tail, 3), is_valid_cpf);
    ASSERT_TRUE(arithmetic_holds(valid));
    ASSERT_TRUE(is_valid_cpf_or_cnpj(valid));
    expect_each_change_refused(valid, is_valid_cpf);
  }
}

TEST(Cnpj, HasOnePairOfCheckDigitsAndRefusesEachChange) {
  for (int tail = 0; tail < 300; ++tail) {
    const std::wstring valid = completed(L"112223330" + digits(tail, 3), is_valid_cnpj);
    ASSERT_TRUE(arithmetic_holds(valid));
    ASSERT_TRUE(is_valid_cpf_or_cnpj(valid));
    expect_each_change_refused(valid, is_valid_cpf_or_cnpj);
    expect_each_change_refused(valid, is_valid_cnpj);
  }
}

TEST(Cnpj, TakesPublishedNumbers) {
  for (const wchar_t* valid : {L"12ABC34501DE35", L"11222333000181", L"00000000000191",
                               L"6A3EDMWP000168", L"D7YDDI5H000162", L"Q2GROWP7000185",
                               L"12.ABC.345/01DE-35", L"11.222.333/0001-81", L"11222333/0001-81"})
    EXPECT_TRUE(is_valid_cnpj(valid)) << testing::PrintToString(std::wstring(valid));
  for (const wchar_t* wrong :
       {L"12abc34501de35", L"12ABC34501DE3A", L"12ABC34501DEA5", L"12ABC34501DE36", L"", L"...-/",
        L"12ABC34501DE3", L"12ABC34501DE350", L" ", L"12ABC345 01DE35", L"12ABÇ34501DE35",
        L"12AB[34501DE35", L"12AB@34501DE35", L"12AB:34501DE35"})
    EXPECT_FALSE(is_valid_cnpj(wrong)) << testing::PrintToString(std::wstring(wrong));
}

TEST(Cnpj, RefusesChangesOfLettersButThoseThatWeighTheSame) {
  const std::wstring valid = L"12ABC34501DE35";
  for (size_t at = 0; at < 12; ++at)
    for (const wchar_t other : std::wstring_view(L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ")) {
      std::wstring changed = valid;
      changed[at] = other;
      // Values that differ by a multiple of 11 are the same to the arithmetic.
      const bool same = (other - valid[at]) % 11 == 0;
      EXPECT_EQ(is_valid_cnpj(changed), same) << testing::PrintToString(changed);
    }
}

TEST(CpfOrCnpj, BlanksAroundTheNumberDoNotCount) {
  EXPECT_TRUE(is_valid_cpf(L" 529.982.247-25  "));
  EXPECT_TRUE(is_valid_cnpj(L" 12ABC34501DE35"));
  EXPECT_TRUE(is_valid_cpf_or_cnpj(L"52998224725 "));
  EXPECT_FALSE(is_valid_cpf(L" 529982247 25 "));
  EXPECT_FALSE(is_valid_cpf_or_cnpj(L"\t52998224725"));
  EXPECT_FALSE(is_valid_cpf(L"           "));
}

TEST(CpfOrCnpj, KeepsItsDocumentedAnswers) {
  EXPECT_TRUE(is_valid_cpf_or_cnpj(L"529.982.247-25"));
  EXPECT_TRUE(is_valid_cpf_or_cnpj(L"5-2-9/982.24725."));
  EXPECT_TRUE(is_valid_cpf_or_cnpj(L"11.222.333/0001-81"));
  for (const wchar_t* wrong :
       {L"", L"529.982.247-26", L"529 982 247 25", L"529982247-2A", L"5299822472",
        L"12ABC34501DE35", L"112223330001811", L"٥٢٩٩٨٢٢٤٧٢٥"})
    EXPECT_FALSE(is_valid_cpf_or_cnpj(wrong)) << testing::PrintToString(std::wstring(wrong));
  // Equal digits: the arithmetic decides here, the strict checks refuse them.
  for (const wchar_t digit : std::wstring_view(L"0123456789")) {
    const std::wstring cpf(11, digit), cnpj(14, digit);
    EXPECT_TRUE(is_valid_cpf_or_cnpj(cpf));
    EXPECT_FALSE(is_valid_cpf(cpf));
    EXPECT_EQ(is_valid_cpf_or_cnpj(cnpj), digit == L'0');
    EXPECT_FALSE(is_valid_cnpj(cnpj));
  }
}

TEST(FormatCpfOrCnpj, PutsTheMarksIn) {
  EXPECT_EQ(format_cpf_or_cnpj(L"52998224725"), L"529.982.247-25");
  EXPECT_EQ(format_cpf_or_cnpj(L" 529.98224725 "), L"529.982.247-25");
  EXPECT_EQ(format_cpf_or_cnpj(L"11222333000181"), L"11.222.333/0001-81");
  EXPECT_EQ(format_cpf_or_cnpj(L"12ABC34501DE35"), L"12.ABC.345/01DE-35");
  for (const wchar_t* none : {L"", L"1", L"5299822472A", L"12abc34501de35", L"12ABC34501DE3X"})
    EXPECT_EQ(format_cpf_or_cnpj(none), L"");
}

TEST(PostalCode, HasEightDigitsInThreeForms) {
  for (const wchar_t* valid :
       {L"01310-100", L"01310100", L"01.310-100", L" 99999-999 ", L"01000000"})
    EXPECT_TRUE(is_valid_postal_code(valid)) << testing::PrintToString(std::wstring(valid));
  for (const wchar_t* wrong : {L"", L"00999-999", L"0131-0100", L"01310 100", L"013101000",
                               L"1310100", L"01310-10a", L"01310--100", L"-01310100"})
    EXPECT_FALSE(is_valid_postal_code(wrong)) << testing::PrintToString(std::wstring(wrong));
  EXPECT_EQ(format_postal_code(L"01310100"), L"01310-100");
  EXPECT_EQ(format_postal_code(L"01.310-100"), L"01310-100");
  EXPECT_EQ(format_postal_code(L"1310100"), L"");
}

TEST(Phone, HasAnAreaCodeAndEightOrNineDigits) {
  for (const wchar_t* valid : {L"11987654321", L"(11) 98765-4321", L"(11)98765.4321",
                               L"11 9 8765 4321", L"+55 (11) 98765-4321", L"+5511987654321",
                               L"1133334444", L"(55) 3333-4444", L"(11) 9-1234-5678"})
    EXPECT_TRUE(is_valid_phone(valid)) << testing::PrintToString(std::wstring(valid));
  for (const wchar_t* wrong :
       {L"", L"987654321", L"10987654321", L"11887654321", L"1193334444", L"1113334444",
        L"(11 98765-4321", L"11) 98765-4321", L"(1 )987654321", L"(11) 98765--4321",
        L"(11) 98765-43210", L"+1 11987654321", L"(11) 98765-432a", L"+55", L"(11)",
        L"5511987654321", L"(11) 98765-4321-"})
    EXPECT_FALSE(is_valid_phone(wrong)) << testing::PrintToString(std::wstring(wrong));
}

TEST(Phone, KnowsTheAreaCodesInUse) {
  const std::set<int> unused = {20, 23, 25, 26, 29, 30, 36, 39, 40, 50, 52,
                                56, 57, 58, 59, 60, 70, 72, 76, 78, 80, 90};
  for (int code = 0; code < 100; ++code)
    EXPECT_EQ(is_valid_phone(digits(code, 2) + L"987654321"), code > 10 && !unused.contains(code))
        << code;
}

TEST(PixKey, IsOneOfFiveKinds) {
  for (const wchar_t* valid :
       {L"52998224725", L"529.982.247-25", L"12ABC34501DE35", L"11222333000181", L"+5511987654321",
        L"+551133334444", L"fulano.de-tal+x@exemplo.com.br",
        L"123e4567-e12b-12d1-a456-426655440000", L"123E4567-E12B-42D1-A456-426655440000"})
    EXPECT_TRUE(is_valid_pix_key(valid)) << testing::PrintToString(std::wstring(valid));
  const std::wstring long_name(64, L'a');
  const std::wstring wrong[] = {L"",
                                L"11987654321",
                                L"+55 11987654321",
                                L"+55(11)987654321",
                                L"11111111111",
                                L"a@b",
                                L"@b.com",
                                L"a@.com",
                                L"a@b..com",
                                L"a@b.com.",
                                L".a@b.com",
                                L"a..b@c.com",
                                L"a b@c.com",
                                L"a@b@c.com",
                                L"a@-b.com",
                                L"a@b-.com",
                                L"ação@b.com",
                                L"123e4567-e12b-12d1-a456-42665544000",
                                L"123e4567ae12b-12d1-a456-426655440000",
                                L"123e4567-e12b-12d1-a456-42665544000g",
                                long_name + L"@exemplo.com.br"};
  for (const auto& key : wrong) EXPECT_FALSE(is_valid_pix_key(key)) << testing::PrintToString(key);
  EXPECT_TRUE(is_valid_pix_key(long_name + L"@exemplo.com"));  // 76 characters
}

}  // namespace
}  // namespace kestrelon
