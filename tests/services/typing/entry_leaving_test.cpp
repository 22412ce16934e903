#include "services/typing/entry_leaving.h"

#include <gtest/gtest.h>

#include "services/typing/entry_field.h"
#include "tests/services/typing/typing_script.h"

namespace kestrelon {
namespace {

EntrySettings settings_of(std::wstring_view field) {
  return typing_script::field_of(field).settings;
}

std::wstring left(std::wstring_view field, std::wstring_view text, const LeavingRules& rules = {}) {
  return entry_left(text, settings_of(field), rules);
}

TEST(LeavingAField, TidiesNumbers) {
  EXPECT_EQ(left(L"number", L"12,"), L"12");
  EXPECT_EQ(left(L"number", L"-0"), L"0");
  EXPECT_EQ(left(L"number", L"-0,00"), L"0,00");
  EXPECT_EQ(left(L"currency", L"-R$ 0,00"), L"R$ 0,00");
  EXPECT_EQ(left(L"currency", L""), L"");
  EXPECT_EQ(left(L"number", L"not ours"), L"not ours");
}

TEST(LeavingAField, FormatsMoneyByTheDigits) {
  LeavingRules rules;
  rules.format_currency = true;
  EXPECT_EQ(left(L"text", L"1234,5", rules), L"R$ 1.234,50");
  EXPECT_EQ(left(L"text", L"1,005", rules), L"R$ 1,01");
  EXPECT_EQ(left(L"text", L"-0,005", rules), L"-R$ 0,01");
  EXPECT_EQ(left(L"text", L"R$ 1.234,56", rules), L"R$ 1.234,56");
  EXPECT_EQ(left(L"text", L"12345678901234567890,5", rules), L"R$ 12.345.678.901.234.567.890,50");
  EXPECT_EQ(left(L"number", L"1.234", rules), L"R$ 1.234,00");
  for (const wchar_t* text : {L"", L"   ", L"abc", L"12 kg", L"1-2"})
    EXPECT_EQ(left(L"text", text, rules), text);
  EXPECT_EQ(left(L"text coin= decimals=0", L"2,5", rules), L"3");
}

TEST(LeavingAField, FormatsRealDatesAlone) {
  LeavingRules rules;
  rules.format_date = true;
  EXPECT_EQ(left(L"text", L"5-3-26", rules), L"05/03/2026");
  EXPECT_EQ(left(L"text", L"05032026", rules), L"05/03/2026");
  EXPECT_EQ(left(L"text", L"050399", rules), L"05/03/1999");
  EXPECT_EQ(left(L"text", L"2026-03-05", rules), L"05/03/2026");
  for (const wchar_t* text : {L"31/02/2026", L"32/01/2026", L"abc", L"12", L"99999999", L"1/2"})
    EXPECT_EQ(left(L"text", text, rules), text);
  rules.format_currency = true;  // the date goes first
  EXPECT_EQ(left(L"text", L"05032026", rules), L"05/03/2026");
  EXPECT_EQ(left(L"text", L"1234", rules), L"R$ 1.234,00");
  rules.date_format = L"yyyy-mm-dd";
  EXPECT_EQ(left(L"text", L"2026/3/5", rules), L"2026-03-05");
  EXPECT_EQ(left(L"text", L"20260305", rules), L"2026-03-05");
  rules = {};
  rules.format_date = true;
  rules.date_format = L"no format";
  EXPECT_EQ(left(L"text", L"05/03/2026", rules), L"05/03/2026");
}

TEST(LeavingAField, CompletesItsPreset) {
  LeavingRules rules;
  rules.preset = MaskPreset::kDate;
  EXPECT_EQ(left(L"preset=date", L"05/03/26  ", rules), L"05/03/2026");
  EXPECT_EQ(left(L"preset=date", L"05/03/2   ", rules), L"05/03/2   ");
  EXPECT_EQ(left(L"preset=date", L"31/02/26  ", rules), L"31/02/26  ");
  EXPECT_EQ(left(L"preset=date", L"  /  /    ", rules), L"  /  /    ");
  rules.preset = MaskPreset::kPixKey;
  EXPECT_EQ(left(L"text pix", L"Ana@Firma.COM", rules), L"ana@firma.com");
  EXPECT_EQ(left(L"text pix", L"52998224725", rules), L"529.982.247-25");
  EXPECT_EQ(left(L"text pix", L"(11)987654321", rules), L"+5511987654321");
  EXPECT_EQ(left(L"text pix", L"+5511987654321", rules), L"+5511987654321");
  EXPECT_EQ(left(L"text pix", L"123E4567E89B12D3A456426655440000", rules),
            L"123e4567-e89b-12d3-a456-426655440000");
  EXPECT_EQ(left(L"text pix", L"nothing", rules), L"nothing");
}

TEST(FaultOfAField, NamesWhatIsWrong) {
  const auto fault = [](std::wstring_view field, std::wstring_view text,
                        const LeavingRules& rules) {
    return std::wstring(entry_fault(text, settings_of(field), rules));
  };
  LeavingRules rules;
  EXPECT_EQ(fault(L"text", L"", rules), L"");
  EXPECT_EQ(fault(L"masknumber=##-##", L"12-3 ", rules), L"Preenchimento incompleto.");
  EXPECT_EQ(fault(L"masknumber=##-##", L"  -  ", rules), L"");
  EXPECT_EQ(fault(L"masknumber=##-##", L"12-34", rules), L"");
  rules.required = true;
  EXPECT_EQ(fault(L"text", L"  ", rules), L"Preenchimento obrigatório.");
  EXPECT_EQ(fault(L"masknumber=##-##", L"  -  ", rules), L"Preenchimento obrigatório.");
  rules = {};
  rules.least = read_amount(L"0,01", {});
  rules.most = read_amount(L"100", {});
  EXPECT_EQ(fault(L"currency", L"R$ 0,00", rules), L"Valor abaixo do mínimo.");
  EXPECT_EQ(fault(L"currency", L"R$ 100,01", rules), L"Valor acima do máximo.");
  EXPECT_EQ(fault(L"currency", L"R$ 100,00", rules), L"");
  EXPECT_EQ(fault(L"text", L"abc", rules), L"Número inválido.");
  rules = {};
  rules.preset = MaskPreset::kCpf;
  EXPECT_EQ(fault(L"preset=cpf", L"529.982.247-26", rules), L"CPF inválido.");
  EXPECT_EQ(fault(L"preset=cpf", L"529.982.247-25", rules), L"");
  rules.preset = MaskPreset::kDate;
  EXPECT_EQ(fault(L"preset=date", L"31/02/2026", rules), L"Data inválida.");
  rules.preset = MaskPreset::kTime;
  EXPECT_EQ(fault(L"preset=time", L"29:00", rules), L"Hora inválida.");
}

std::wstring spun(std::wstring_view field, const EntryState& state, int step,
                  const LeavingRules& rules = {}) {
  const CalendarDate today{2026, 3, 5};
  return typing_script::picture(entry_spun(state, step, today, settings_of(field), rules));
}

TEST(SpunField, StepsNumbersWithinTheirBounds) {
  EXPECT_EQ(spun(L"number", state_at(L"9,5", 1), 1), L"10|,5");
  EXPECT_EQ(spun(L"currency", state_at(L"R$ 0,50", 4), -1), L"-R$_0|,50");
  EXPECT_EQ(spun(L"currency positive", state_at(L"R$ 0,50", 4), -1), L"R$_0|,00");
  EXPECT_EQ(spun(L"currency", {}, 1), L"R$_1,00|");
  LeavingRules rules;
  rules.most = read_amount(L"10", {});
  rules.least = read_amount(L"-1,5", {});
  EXPECT_EQ(spun(L"number", state_at(L"9,5", 3), 1, rules), L"10|");
  EXPECT_EQ(spun(L"number", state_at(L"-1", 2), -1, rules), L"-1,5|");
  EXPECT_EQ(spun(L"text", state_at(L"5", 1), 1), L"5|");
}

TEST(SpunField, TurnsTheDatePartAtTheCaret) {
  LeavingRules rules;
  rules.preset = MaskPreset::kDate;
  EXPECT_EQ(spun(L"preset=date", state_at(L"31/01/2026", 0), 1, rules), L"[01|]/01/2026");
  EXPECT_EQ(spun(L"preset=date", state_at(L"01/01/2026", 2), -1, rules), L"[31|]/01/2026");
  EXPECT_EQ(spun(L"preset=date", state_at(L"31/01/2026", 3), 1, rules), L"28/[02|]/2026");
  EXPECT_EQ(spun(L"preset=date", state_at(L"29/02/2024", 10), 1, rules), L"28/02/[2025|]");
  EXPECT_EQ(spun(L"preset=date", state_at(L"15/12/2026", 4), 1, rules), L"15/[01|]/2026");
  EXPECT_EQ(spun(L"preset=date", state_at(L"01/01/9999", 9), 1, rules), L"01/01/[0001|]");
  EXPECT_EQ(spun(L"preset=date", state_at(L"  /  /    ", 0), 1, rules), L"[05|]/03/2026");
  EXPECT_EQ(spun(L"preset=date", state_at(L"05/  /    ", 3), 1, rules), L"05/|__/____");
  rules.preset = MaskPreset::kTime;
  EXPECT_EQ(spun(L"preset=time", state_at(L"23:59", 1), 1, rules), L"[00|]:59");
  EXPECT_EQ(spun(L"preset=time", state_at(L"23:59", 5), 1, rules), L"23:[00|]");
  EXPECT_EQ(spun(L"preset=time", state_at(L"  :  ", 0), -1, rules), L"[23|]:00");
}

}  // namespace
}  // namespace kestrelon
