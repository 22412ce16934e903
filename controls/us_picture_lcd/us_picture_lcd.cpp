#include "controls/us_picture_lcd/us_picture_lcd.h"

#include "base/clock_text.h"
#include "base/decimal.h"
#include "controls/us_picture_lcd/lcd_text.h"
#include "frame/kit/theme.h"
#include "grid/values/number_format.h"

namespace kestrelon {
namespace {

constexpr ControlTraits traits() {
  ControlTraits out;
  out.misc_status |= OLEMISC_NOUIACTIVATE;
  out.initial_pixels = {200, 60};
  return out;
}

DateTime local_moment() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return {{now.wYear, now.wMonth, now.wDay}, now.wHour, now.wMinute, now.wSecond};
}

// A date without time, a time without date, or both.
std::wstring date_value_text(double value, const std::wstring& format) {
  const auto moment = date_time_of_value(value);
  if (!moment) return {};
  if (!format.empty()) return moment_text(*moment, format);
  const bool has_time = moment->hour + moment->minute + moment->second > 0;
  const bool has_date = value <= -1 || value >= 1;
  if (!has_date) return moment_text(*moment, L"hh:nn:ss");
  return moment_text(*moment, has_time ? L"dd/mm/yyyy hh:nn:ss" : L"dd/mm/yyyy");
}

// A number as its digits; none for what is no number. Exact for all types but Double.
std::optional<CellNumber> number_in(const VARIANT& value) {
  if (V_VT(&value) == VT_R8) return number_of(V_R8(&value));
  constexpr VARTYPE kNumbers[] = {VT_I1,  VT_I2,  VT_I4,   VT_I8, VT_INT, VT_UI1,    VT_UI2,
                                  VT_UI4, VT_UI8, VT_UINT, VT_R4, VT_CY,  VT_DECIMAL};
  if (std::ranges::find(kNumbers, V_VT(&value)) == std::end(kNumbers)) return std::nullopt;
  if (V_VT(&value) == VT_R4) return number_of(rounded_to(static_cast<double>(V_R4(&value)), 7));
  Variant text;
  const LCID invariant = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
  if (FAILED(VariantChangeTypeEx(&text, const_cast<VARIANT*>(&value), invariant,
                                 VARIANT_NOUSEROVERRIDE, VT_BSTR)))
    return std::nullopt;
  LocaleFacts plain;
  plain.decimal_mark = L'.';
  plain.group_mark = L',';
  return read_number(to_wstring(V_BSTR(&text)), plain);
}

}  // namespace

USPictureLCD::USPictureLCD()
    : USPictureLCDGlue(traits()), TipProperties(*this, &USPictureLCD::update_tip) {
  DigitPicture.saved_when([this] { return !DigitPicture.get().empty(); });
}

void USPictureLCD::init_properties() {
  Caption.assign(ambient().display_name());
  start_count();
  ThemedDisplay::init_properties();
}

void USPictureLCD::properties_read() {
  picture_changed();
  start_count();
  ThemedDisplay::properties_read();
}

void USPictureLCD::shown() {
  seen_ = true;
  create_tool_tip();
  watch_time();
  text_changed();
}

void USPictureLCD::hidden() {
  seen_ = false;
  destroy_tool_tip();
  watch_time();
}

void USPictureLCD::terminate() {
  clock_.stop();
  blinker_.stop();
  destroy_tool_tip();
  ThemedDisplay::terminate();
}

// The theme's table names the two labels that stand for title and value.
void USPictureLCD::theme_changed() {
  kestrelon::apply_theme(theme::kPictureLcd, Theme.get(),
                         [this](const wchar_t* name, uint32_t color) {
                           const std::wstring_view entry = name;
                           if (entry == L"lblCaption(0).ForeColor") ForeColor1.put(color);
                           if (entry == L"lblCaption(1).ForeColor") ForeColor2.put(color);
                           if (entry == L"GradientColor1") GradientColor1.put(color);
                           if (entry == L"GradientColor2") GradientColor2.put(color);
                         });
}

void USPictureLCD::caption_changed() {
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  redraw();
}

void USPictureLCD::set_value(const VARIANT& value) {
  if (!may_change(Value.name())) return;
  const Hold hold(*this);
  const std::wstring before = text();
  Value.put(value);
  start_count();
  watch_time();
  text_changed();
  if (text() != before) raise_change();
}

// Something that the text is made of has changed.
void USPictureLCD::text_changed() {
  std::wstring fresh = lcd_fitted(text(), static_cast<int>(Digits.get()), LeadingZeros.get());
  if (fresh == shown_text_) return;
  shown_text_ = std::move(fresh);
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  show_text();
}

void USPictureLCD::show_text() {
  if (!draw_changed_cells(lcd_cells(shown_text_))) redraw();
}

void USPictureLCD::mode_changed() {
  start_count();
  watch_time();
  text_changed();
}

// A countdown begins with the seconds of the value, at most ten years of them.
void USPictureLCD::start_count() {
  constexpr double kLongest = 315360000;
  Variant number;
  const bool given =
      Mode.get() == Lcd_Countdown &&
      SUCCEEDED(VariantChangeType(&number, const_cast<VARIANT*>(&Value.get()), 0, VT_R8)) &&
      V_R8(&number) > 0;
  seconds_ = given ? static_cast<long>(std::min(V_R8(&number), kLongest)) : 0;
  end_of_count_ = GetTickCount64() + static_cast<ULONGLONG>(seconds_) * 1000;
}

std::wstring USPictureLCD::value_text() const {
  const VARIANT& value = Value.get();
  const std::wstring& format = Format.get();
  if (const auto number = number_in(value)) return lcd_number(*number, Decimals.get(), format);
  switch (V_VT(&value)) {
    case VT_BSTR:
      return to_wstring(V_BSTR(&value));
    case VT_DATE:
      return date_value_text(V_DATE(&value), format);
    case VT_BOOL:
      return V_BOOL(&value) != VARIANT_FALSE ? L"Sim" : L"N\u00E3o";
    default:  // an empty panel shows its digits to whoever designs the form
      return user_mode() ? std::wstring() : lcd_number({}, Decimals.get(), format);
  }
}

std::wstring USPictureLCD::text() const {
  switch (Mode.get()) {
    case Lcd_Clock:
      return moment_text(local_moment(), Format.get().empty() ? L"hh:nn:ss" : Format.get());
    case Lcd_Countdown:
      return duration_text(seconds_);
    default:
      return value_text();
  }
}

// Timers run only for what is seen and moves.
void USPictureLCD::watch_time() {
  const bool lives = seen_ && user_mode();
  if (lives && (Mode.get() == Lcd_Clock || counts())) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const auto left = static_cast<long long>(end_of_count_ - GetTickCount64()) % 1000;
    const auto next = Mode.get() == Lcd_Clock ? 1000 - now.wMilliseconds
                                              : std::clamp(left < 1 ? 1000 : left, 1LL, 1000LL);
    clock_.start(static_cast<UINT>(next) + 1, [this] { tick(); });
  } else {
    clock_.stop();
  }
  const bool blinks = lives && BlinkInterval.get() > 0;
  if (blinks) {
    blinker_.start(static_cast<UINT>(BlinkInterval.get()), [this] { blink(); });
  } else {
    blinker_.stop();
    if (std::exchange(blinked_off_, false)) redraw();
  }
}

void USPictureLCD::blink() {
  blinked_off_ = !blinked_off_;
  redraw();
}

void USPictureLCD::tick() {
  const Hold hold(*this);
  if (Mode.get() == Lcd_Countdown) return count_down();
  watch_time();
  text_changed();
}

void USPictureLCD::count_down() {
  const ULONGLONG now = GetTickCount64();
  const ULONGLONG left = now < end_of_count_ ? (end_of_count_ - now + 999) / 1000 : 0;
  const long before = std::exchange(seconds_, std::min(seconds_, static_cast<long>(left)));
  if (seconds_ != before) Value.assign(Variant(seconds_));
  watch_time();
  text_changed();
  if (seconds_ == before) return;
  raise_change();
  // The handler may have begun another count.
  if (left == 0 && seconds_ == 0) raise_countdown_end();
}

HWND USPictureLCD::tip_place(RECT& area) const {
  if (!user_mode() || window() == nullptr) return nullptr;
  area = {0, 0, width(), height()};
  return window();
}

void USPictureLCD::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_STATICTEXT;
  item.state = STATE_SYSTEM_READONLY;
  item.description = ToolTipDescription.get();
  if (!item.name.empty()) {
    item.value = text();
    return;
  }
  item.name = Caption.get().empty() ? text() : Caption.get() + L": " + text();
}

}  // namespace kestrelon
