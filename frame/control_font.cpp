// The font delegates every control has: one attribute of its font each, reported under its own
// name.
#include "frame/control_frame.h"

namespace kestrelon {
namespace {

IFont& font_of(FontProperty* property) {
  if (property == nullptr) throw ComError(DISP_E_MEMBERNOTFOUND);
  return property->font();
}

bool flag(FontProperty* property, HRESULT (STDMETHODCALLTYPE IFont::*get)(BOOL*)) {
  BOOL value = FALSE;
  (font_of(property).*get)(&value);
  return value != FALSE;
}

void set_flag(FontProperty* property, const wchar_t* name,
              HRESULT (STDMETHODCALLTYPE IFont::*put)(BOOL), bool value) {
  if (property != nullptr)
    property->change(name, [&](IFont& font) { (font.*put)(value ? TRUE : FALSE); });
}

constexpr double kCurrencyUnit = 10000.0;  // a CY counts ten-thousandths

}  // namespace

bool ControlFrame::font_bold() {
  return flag(font_property(), &IFont::get_Bold);
}
void ControlFrame::set_font_bold(bool value) {
  set_flag(font_property(), L"FontBold", &IFont::put_Bold, value);
}

bool ControlFrame::font_italic() {
  return flag(font_property(), &IFont::get_Italic);
}
void ControlFrame::set_font_italic(bool value) {
  set_flag(font_property(), L"FontItalic", &IFont::put_Italic, value);
}

bool ControlFrame::font_underline() {
  return flag(font_property(), &IFont::get_Underline);
}
void ControlFrame::set_font_underline(bool value) {
  set_flag(font_property(), L"FontUnderline", &IFont::put_Underline, value);
}

bool ControlFrame::font_strike_thru() {
  return flag(font_property(), &IFont::get_Strikethrough);
}
void ControlFrame::set_font_strike_thru(bool value) {
  set_flag(font_property(), L"FontStrikeThru", &IFont::put_Strikethrough, value);
}

double ControlFrame::font_size() {
  CY size{};
  font_of(font_property()).get_Size(&size);
  return static_cast<double>(size.int64) / kCurrencyUnit;
}
void ControlFrame::set_font_size(double points) {
  if (FontProperty* const property = font_property()) {
    CY size{};
    size.int64 = static_cast<LONGLONG>(points * kCurrencyUnit);
    property->change(L"FontSize", [&](IFont& font) { font.put_Size(size); });
  }
}

}  // namespace kestrelon
