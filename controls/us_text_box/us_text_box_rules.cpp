// The text and the rules it keeps: formats, masks, bounds.
#include "base/text.h"
#include "controls/us_text_box/us_text_box.h"
#include "services/typing/mask.h"
#include "services/typing/number_entry.h"

namespace kestrelon {
namespace {

constexpr size_t kMostDecimals = 15;
constexpr long kLengthWithoutMask = 255;

// A mark that can be told from digits and sign.
wchar_t mark_of(const std::wstring& text, wchar_t instead) {
  const wchar_t c = text.empty() ? instead : text[0];
  return is_digit(c) || c == L'-' || c == L' ' ? instead : c;
}

PlaceKind place_kind(ENUM_MASK_TYPE type) {
  if (type == Only_Text) return PlaceKind::kLetter;
  return type == Only_Number ? PlaceKind::kDigit : PlaceKind::kLetterOrDigit;
}

bool is_number(const EntrySettings& rules) {
  return rules.kind == EntryKind::kNumber || rules.kind == EntryKind::kCurrency;
}

}  // namespace

EntrySettings USTextBox::settings() const {
  EntrySettings rules;
  rules.text_case = static_cast<kestrelon::TextCase>(TextCase.get());
  rules.number_only = NumberOnly.get();
  rules.multiline = Multiline.get();
  rules.max_length = static_cast<size_t>(std::max(MaxLength.get(), 0L));
  rules.allow_negative = AllowNegativeNumber.get();
  rules.decimals = std::min(static_cast<size_t>(std::max<int>(Decimals.get(), 0)), kMostDecimals);
  rules.marks.decimal = mark_of(DecimalSimbol.get(), L',');
  rules.marks.group = GroupSimbol.get().empty() ? L'\0' : mark_of(GroupSimbol.get(), L'.');
  rules.currency = CurrencyChar.get();
  rules.from_right = MoneyFromRight.get();
  if (Multiline.get()) return rules;
  if (FormatType.get() == To_Number) rules.kind = EntryKind::kNumber;
  if (FormatType.get() == To_Currency) rules.kind = EntryKind::kCurrency;
  if (FormatType.get() != To_Text) return rules;
  const auto preset = static_cast<kestrelon::MaskPreset>(MaskPreset.get());
  rules.pix_key = preset == kestrelon::MaskPreset::kPixKey;
  rules.masks = preset_masks(preset);
  if (!rules.masks && !rules.pix_key && !Mask.get().empty())
    rules.masks = std::make_shared<MaskSet>(mask_of(Mask.get(), place_kind(MaskType.get())));
  if (rules.masks) rules.kind = EntryKind::kMask;
  return rules;
}

LeavingRules USTextBox::leaving_rules() const {
  const AmountMarks plain{L'.', 0};
  LeavingRules rules;
  rules.format_currency = AutoFormatCurrency.get();
  rules.format_date = AutoFormatDate.get();
  rules.date_format = FormatDate.get();
  rules.preset = static_cast<kestrelon::MaskPreset>(MaskPreset.get());
  rules.required = Required.get();
  if (!MinValue.get().empty()) rules.least = read_amount(MinValue.get(), plain);
  if (!MaxValue.get().empty()) rules.most = read_amount(MaxValue.get(), plain);
  return rules;
}

// Bounds are kept as their digits with a point, whatever the field's marks are.
std::wstring USTextBox::bound_text(const VARIANT& value) {
  Variant number;
  if (V_VT(&value) == VT_EMPTY || V_VT(&value) == VT_NULL || V_VT(&value) == VT_ERROR) return {};
  std::optional<Amount> amount;
  if (V_VT(&value) == VT_BSTR) {
    amount = read_amount(to_wstring(V_BSTR(&value)), {});
  } else if (SUCCEEDED(VariantChangeType(number.put(), const_cast<VARIANT*>(&value), 0, VT_R8))) {
    amount = amount_of(V_R8(&number));
  }
  return amount ? format_amount(*amount, amount->places.size(), {L'.', 0}) : std::wstring();
}

Variant USTextBox::bound(const std::wstring& text) {
  const std::optional<Amount> amount = read_amount(text, {L'.', 0});
  return amount ? Variant(to_double(*amount)) : Variant();
}

void USTextBox::apply_rules() {
  box_.set_rules(settings());
}

// A number changes its look and keeps its value, the places that no longer show included.
void USTextBox::apply_look() {
  const EntrySettings before = box_.rules();
  const std::wstring shown = box_.text();
  const bool remade = is_number(before) && !trim_blanks(shown).empty();
  const Amount amount = !remade                               ? Amount{}
                        : kept_amount_ && kept_text_ == shown ? *kept_amount_
                                                              : number_entry::value(shown, before);
  apply_rules();
  if (!remade) return;
  const EntryState next = number_entry::showing(amount, box_.rules());
  kept_amount_ = amount;
  kept_text_ = next.text;
  by_code_ = true;
  box_.show(next);
  by_code_ = false;
}

void USTextBox::set_text(const std::wstring& text) {
  const EntryState next = entry_showing(text, box_.rules());
  Value.assign(next.text);
  kept_amount_.reset();
  if (is_number(box_.rules())) {
    kept_amount_ = number_entry::value(text, box_.rules());
    kept_text_ = next.text;
  }
  failed_ = false;
  by_code_ = true;
  box_.show(next);
  by_code_ = false;
  property_changed(L"Value");
  repaint();
}

void USTextBox::set_format_type(ENUM_FORMAT_TYPE type) {
  if (Multiline.get()) return;
  FormatType.put(type);
  if (type == To_Number || type == To_Currency) {
    Alignment.put(type == To_Currency ? Text_At_Right : Text_At_Left);
    if (!Mask.get().empty()) MaxLength.put(0);
    Mask.put(L"");
    MaskPreset.put(Preset_None);
    FormatDate.put(L"");
  }
  apply_rules();
  if (type != To_Number && type != To_Currency) return;
  kept_amount_.reset();
  const EntryState zero = number_entry::zero(box_.rules());
  Value.assign(zero.text);
  by_code_ = true;
  box_.show(zero);
  by_code_ = false;
}

void USTextBox::set_mask(const std::wstring& pattern) {
  if (Multiline.get() || FormatType.get() != To_Text) return;
  Mask.put(pattern);
  MaxLength.put(pattern.empty() ? kLengthWithoutMask : static_cast<long>(pattern.size()));
  apply_rules();
  set_text(L"");
}

void USTextBox::set_mask_preset(ENUM_MASK_PRESET preset) {
  if (Multiline.get() || FormatType.get() != To_Text) return;
  MaskPreset.put(preset);
  apply_rules();
  set_text(L"");
}

// Several lines have no format; a mask and a number show as they stand.
void USTextBox::multiline_changed() {
  apply_form();
  apply_rules();
}

void USTextBox::clear_control() {
  set_text(L"");
}

void USTextBox::keep_selection() {
  const EntryState now = box_.state();
  SelStart.assign(static_cast<long>(now.begin()));
  SelLength.assign(static_cast<long>(now.end() - now.begin()));
}

long USTextBox::sel_start() {
  keep_selection();
  return SelStart.get();
}

void USTextBox::set_sel_start(long start) {
  const size_t at = static_cast<size_t>(std::max(start, 0L));
  box_.select(at, at);
  keep_selection();
  property_changed(SelStart.name());
}

long USTextBox::sel_length() {
  keep_selection();
  return SelLength.get();
}

void USTextBox::set_sel_length(long length) {
  const size_t start = box_.state().begin();
  const size_t room = box_.text().size() - std::min(start, box_.text().size());
  box_.select(start, start + std::min(static_cast<size_t>(std::max(length, 0L)), room));
  keep_selection();
  property_changed(SelLength.name());
}

std::wstring USTextBox::sel_text() {
  const EntryState now = box_.state();
  return now.text.substr(now.begin(), now.end() - now.begin());
}

void USTextBox::set_sel_text(const std::wstring& text) {
  by_code_ = true;
  box_.insert(text);
  by_code_ = false;
}

}  // namespace kestrelon
