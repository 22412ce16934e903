// A million keys in every mode: whatever is pressed, the field stays what it promises to be.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "base/text.h"
#include "services/mysql/utf8_text.h"
#include "services/typing/mask_entry.h"
#include "services/typing/number_entry.h"
#include "services/typing/text_entry.h"
#include "tests/services/typing/typing_script.h"

namespace kestrelon {
namespace {

using typing_script::Field;

constexpr std::wstring_view kKeys[] = {L"0",
                                       L"1",
                                       L"5",
                                       L"9",
                                       L"2",
                                       L"3",
                                       L",",
                                       L".",
                                       L"-",
                                       L"/",
                                       L"a",
                                       L"Z",
                                       L"Space",
                                       L"ç",
                                       L"(",
                                       L"Left",
                                       L"Left",
                                       L"Right",
                                       L"Home",
                                       L"End",
                                       L"S+Left",
                                       L"S+Right",
                                       L"S+Home",
                                       L"S+End",
                                       L"All",
                                       L"Back",
                                       L"Back",
                                       L"Del",
                                       L"Del",
                                       L"Undo",
                                       L"Redo",
                                       L"at:0",
                                       L"at:2",
                                       L"at:5",
                                       L"sel:1-4",
                                       L"sel:7-3",
                                       L"paste:12",
                                       L"paste:R$_1.234,56",
                                       L"paste:-0,005",
                                       L"paste:(11)_98765-4321",
                                       L"paste:123.456.789-09",
                                       L"paste:x",
                                       L"set:",
                                       L"set:7,5"};

constexpr std::wstring_view kFields[] = {L"number",
                                         L"number decimals=0",
                                         L"number mark=.",
                                         L"number group= decimals=5",
                                         L"number positive",
                                         L"currency",
                                         L"currency coin=",
                                         L"currency decimals=0",
                                         L"currency mark=. group=, coin=US$",
                                         L"currency mark=.",
                                         L"currency fromright",
                                         L"currency fromright decimals=3",
                                         L"masknumber=###.###.###-##",
                                         L"masktext=@@@-@@ upper",
                                         L"mask=(##)_####-####",
                                         L"mask=AB",
                                         L"preset=cpf",
                                         L"preset=cnpj",
                                         L"preset=cpfcnpj",
                                         L"preset=cep",
                                         L"preset=phone",
                                         L"preset=plate",
                                         L"preset=date",
                                         L"preset=time",
                                         L"text",
                                         L"text upper max=6",
                                         L"text digits",
                                         L"text lines lower",
                                         L"text pix",
                                         L"number max=7"};

// The field's own digits, sign and marks, by a path of their own.
std::wstring digits_of(std::wstring_view text, const EntrySettings& settings) {
  if (settings.kind == EntryKind::kCurrency && text.find(settings.currency) != text.npos)
    text.remove_prefix(text.find(settings.currency) + settings.currency.size());
  std::wstring digits;
  for (const wchar_t c : text)
    if (is_digit(c)) digits += c;
  return digits.erase(0, std::min(digits.find_first_not_of(L'0'), digits.size()));
}

// The rule that a field breaks; null while it keeps them all.
const char* broken_by_number(const EntryState& state, const EntrySettings& settings) {
  if (state.text.empty()) return nullptr;
  if (!number_entry::is_well_formed(state.text, settings)) return "well-formed";
  const Amount value = number_entry::value(state.text, settings);
  std::wstring digits = value.whole + value.places;
  digits.erase(0, std::min(digits.find_first_not_of(L'0'), digits.size()));
  if (digits != digits_of(state.text, settings)) return "the value equals the digits";
  if (value.whole.size() > kMostWholeDigits) return "27 digits";
  if (settings.kind == EntryKind::kCurrency && value.places.size() != settings.decimals)
    return "all places";
  if (value.negative != (!value.is_zero() && state.text[0] == L'-')) return "the sign";
  const size_t first = number_entry::first_position(state.text, settings);
  if (!state.has_selection() && state.caret < first) return "no caret in the prefix";
  const EntryState again = number_entry::showing(value, settings);
  return number_entry::value(again.text, settings) == value ? nullptr : "set again it is the same";
}

const char* broken_by_mask(const EntryState& state, const EntrySettings& settings) {
  if (state.text == L"7,5") return nullptr;  // set by code, fits no mask
  if (!mask_entry::is_well_formed(state.text, settings)) return "well-formed";
  if (state.has_selection()) return nullptr;
  const size_t right = mask_entry::moved(state, mask_entry::Step::kRight, settings);
  if (right == state.caret) return nullptr;
  const EntryState moved = state_at(state.text, right);
  const size_t back = mask_entry::moved(moved, mask_entry::Step::kLeft, settings);
  return back == state.caret ? nullptr : "the caret is on a place";
}

const char* broken_by_text(const EntryState& state, const EntrySettings& settings) {
  if (settings.max_length > 0 && state.text.size() > settings.max_length) return "the length";
  return state.text == with_case(state.text, settings.text_case) ? nullptr : "the case";
}

const char* broken_rule(const Field& field) {
  const EntryState& state = field.state;
  if (state.anchor > state.text.size() || state.caret > state.text.size()) return "within the text";
  switch (field.settings.kind) {
    case EntryKind::kNumber:
    case EntryKind::kCurrency:
      return broken_by_number(state, field.settings);
    case EntryKind::kMask:
      return broken_by_mask(state, field.settings);
    case EntryKind::kText:
      return broken_by_text(state, field.settings);
  }
  return "a kind";
}

TEST(RandomTyping, KeepsEveryFieldWellFormed) {
  constexpr int kAllKeys = 1'000'000;
  constexpr int kEach = kAllKeys / static_cast<int>(std::size(kFields));
  uint32_t seed = 12345;
  for (const std::wstring_view description : kFields) {
    Field field = typing_script::field_of(description);
    for (int i = 0; i < kEach; ++i) {
      seed = seed * 1664525 + 1013904223;
      const std::wstring_view key = kKeys[(seed >> 16) % std::size(kKeys)];
      const EntryState before = field.state;
      ASSERT_TRUE(typing_script::press(field, key));
      const char* const broken = broken_rule(field);
      ASSERT_EQ(broken, nullptr) << broken << ": "
                                 << to_utf8(std::wstring(description) + L": " +
                                            typing_script::picture(before) + L" " +
                                            std::wstring(key) + L" " +
                                            typing_script::picture(field.state));
    }
  }
}

TEST(RandomTyping, UndoReturnsToTheFirstTextAndRedoToTheLast) {
  uint32_t seed = 99;
  for (const std::wstring_view description : kFields) {
    for (int round = 0; round < 50; ++round) {
      Field field = typing_script::field_of(description);
      const std::wstring first = field.state.text;
      for (int i = 0; i < 60; ++i) {
        seed = seed * 1664525 + 1013904223;
        const std::wstring_view key = kKeys[(seed >> 16) % std::size(kKeys)];
        const bool history = key == L"Undo" || key == L"Redo" || key.starts_with(L"set:");
        if (!history) typing_script::press(field, key);
      }
      const EntryState last = field.state;
      while (field.history.can_undo()) typing_script::press(field, L"Undo");
      ASSERT_EQ(field.state.text, first) << to_utf8(description);
      while (field.history.can_redo()) typing_script::press(field, L"Redo");
      ASSERT_EQ(field.state.text, last.text) << to_utf8(description);
    }
  }
}

}  // namespace
}  // namespace kestrelon
