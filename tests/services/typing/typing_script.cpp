#include "tests/services/typing/typing_script.h"

#include <algorithm>
#include <map>

#include "base/text.h"
#include "services/typing/mask.h"
#include "services/typing/mask_presets.h"

namespace kestrelon::typing_script {
namespace {

std::wstring with_blanks(std::wstring_view text) {
  std::wstring result(text);
  std::replace(result.begin(), result.end(), L'_', L' ');
  return result;
}

size_t number_of(std::wstring_view text) {
  size_t number = 0;
  for (const wchar_t c : text) number = number * 10 + static_cast<size_t>(c - L'0');
  return number;
}

bool move(Field& field, std::wstring_view key) {
  static const std::map<std::wstring_view, EntryMove> kMoves = {
      {L"Left", EntryMove::kLeft},         {L"Right", EntryMove::kRight},
      {L"WordLeft", EntryMove::kWordLeft}, {L"WordRight", EntryMove::kWordRight},
      {L"Home", EntryMove::kHome},         {L"End", EntryMove::kEnd}};
  const bool shift = key.starts_with(L"S+");
  const auto found = kMoves.find(shift ? key.substr(2) : key);
  if (found == kMoves.end()) return false;
  field.state = entry_moved(field.state, found->second, shift, field.settings);
  field.history.end_step();
  return true;
}

bool select(Field& field, std::wstring_view key) {
  if (key == L"All") {
    field.state.anchor = 0;
    field.state.caret = field.state.text.size();
  } else if (key.starts_with(L"at:")) {
    field.state.anchor = field.state.caret = number_of(key.substr(3));
  } else if (key.starts_with(L"sel:")) {
    const size_t dash = key.find(L'-');
    field.state.anchor = number_of(key.substr(4, dash - 4));
    field.state.caret = number_of(key.substr(dash + 1));
  } else {
    return false;
  }
  field.state = entry_settled(field.state, field.settings);
  field.history.end_step();
  return true;
}

bool change(Field& field, std::wstring_view key) {
  using Kind = EntryHistory::Kind;
  static const std::map<std::wstring_view, wchar_t> kCharacters = {
      {L"Space", L' '}, {L"Tab", L'\t'}, {L"Enter", L'\r'}, {L"Underscore", L'_'}};
  const EntryState before = field.state;
  Kind kind = Kind::kOther;
  if (key == L"Back" || key == L"Del") {
    kind = before.has_selection() ? Kind::kOther : Kind::kErasing;
    field.state = key == L"Back" ? entry_erased_backward(before, field.settings)
                                 : entry_erased_forward(before, field.settings);
  } else if (key.starts_with(L"paste:")) {
    field.state = entry_pasted(before, with_blanks(key.substr(6)), field.settings);
  } else if (key.size() == 1 || kCharacters.contains(key)) {
    const wchar_t c = key.size() == 1 ? key[0] : kCharacters.at(key);
    kind = before.has_selection() ? Kind::kOther : Kind::kTyping;
    field.state = entry_typed(before, c, field.settings);
  } else {
    return false;
  }
  field.history.changed(before, field.state, kind);
  return true;
}

const std::map<std::wstring_view, MaskPreset> kPresets = {
    {L"cpf", MaskPreset::kCpf},        {L"cnpj", MaskPreset::kCnpj},
    {L"cep", MaskPreset::kPostalCode}, {L"phone", MaskPreset::kPhone},
    {L"plate", MaskPreset::kPlate},    {L"date", MaskPreset::kDate},
    {L"time", MaskPreset::kTime},      {L"cpfcnpj", MaskPreset::kCpfOrCnpj}};

void apply(EntrySettings& settings, std::wstring_view name, std::wstring_view given) {
  const std::wstring value = with_blanks(given);
  if (name == L"number") settings.kind = EntryKind::kNumber;
  if (name == L"currency") settings.kind = EntryKind::kCurrency;
  if (name == L"decimals") settings.decimals = number_of(value);
  if (name == L"mark") settings.marks.decimal = value.empty() ? L',' : value[0];
  if (name == L"group") settings.marks.group = value.empty() ? L'\0' : value[0];
  if (name == L"coin") settings.currency = value;
  if (name == L"positive") settings.allow_negative = false;
  if (name == L"fromright") settings.from_right = true;
  if (name == L"digits") settings.number_only = true;
  if (name == L"pix") settings.pix_key = true;
  if (name == L"lines") settings.multiline = true;
  if (name == L"max") settings.max_length = number_of(value);
  if (name == L"upper") settings.text_case = TextCase::kUpper;
  if (name == L"lower") settings.text_case = TextCase::kLower;
  if (name.starts_with(L"mask")) {
    settings.kind = EntryKind::kMask;
    const PlaceKind places = name == L"masknumber" ? PlaceKind::kDigit
                             : name == L"masktext" ? PlaceKind::kLetter
                                                   : PlaceKind::kLetterOrDigit;
    settings.masks = std::make_shared<MaskSet>(mask_of(value, places));
  }
  if (name == L"preset") {
    settings.kind = EntryKind::kMask;
    settings.masks = preset_masks(kPresets.at(given));
  }
}

}  // namespace

bool press(Field& field, std::wstring_view key) {
  if (key == L"Undo" || key == L"Redo") {
    field.state =
        key == L"Undo" ? field.history.undo(field.state) : field.history.redo(field.state);
    return true;
  }
  if (key.starts_with(L"set:")) {
    field.state = entry_showing(with_blanks(key.substr(4)), field.settings);
    field.history.clear();
    return true;
  }
  return move(field, key) || select(field, key) || change(field, key);
}

std::wstring picture(const EntryState& state) {
  std::wstring text = state.text;
  std::replace(text.begin(), text.end(), L' ', L'_');
  for (size_t at = text.size() + 1; at-- > 0;) {
    if (state.has_selection() && at == state.end()) text.insert(at, L"]");
    if (at == state.caret) text.insert(at, L"|");
    if (state.has_selection() && at == state.begin()) text.insert(at, L"[");
  }
  return text;
}

Field field_of(std::wstring_view description) {
  Field field;
  for (const std::wstring_view word : split(description, L" ")) {
    const size_t sign = word.find(L'=');
    const bool valued = sign != std::wstring_view::npos;
    apply(field.settings, word.substr(0, sign), valued ? word.substr(sign + 1) : L"");
  }
  const bool number =
      field.settings.kind == EntryKind::kNumber || field.settings.kind == EntryKind::kCurrency;
  field.state = entry_showing(number ? L"0" : L"", field.settings);
  return field;
}

}  // namespace kestrelon::typing_script
