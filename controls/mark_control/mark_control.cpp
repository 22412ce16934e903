#include "controls/mark_control/mark_control.h"

#include "controls/mark_control/mark_layout.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr UINT kTextFlags = DT_WORDBREAK;
constexpr COLORREF kDisabledText = 0x99A8AC;

RECT to_rect(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

}  // namespace

void MarkControl::init_properties() {
  SimpleControl::init_properties();
  ShowFocusRect.assign(true);
  Caption.assign(ambient().display_name());
  ForeColor.assign(0);
  Font.reset();
  BackColor.reset();
  repaint();
}

void MarkControl::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
  BackColor.set_default(ambient().back_color());
}

void MarkControl::value_changed() {
  repaint();
  tell_readers(EVENT_OBJECT_STATECHANGE);
}

void MarkControl::caption_changed() {
  tell_readers(EVENT_OBJECT_NAMECHANGE);
  update_access_key();
  repaint();
}

void MarkControl::enabled_changed() {
  apply_enabled();
  repaint();
}

void MarkControl::recompute_layout() {
  const bool right = Alignment.get() == Right_Justify;
  check_rect_ = to_rect(mark_layout::check_rect(width(), height(), right));
  focus_rect_ = to_rect(mark_layout::focus_rect(width(), height(), right));
}

void MarkControl::draw(int state) {
  const HDC dc = surface().dc();
  draw_mark(state, static_cast<int>(check_rect_.left), static_cast<int>(check_rect_.top));
  if (ShowFocusRect.get() && has_focus()) {
    SetTextColor(dc, 0);
    DrawFocusRect(dc, &focus_rect_);
  }
  draw_caption();
}

void MarkControl::draw_caption() {
  const HDC dc = surface().dc();
  const HGDIOBJ displaced = SelectObject(dc, Font.handle());
  RECT measured = to_rect(mark_layout::measure_rect(width(), height()));
  const int text_height =
      DrawTextUnicode(dc, Caption.get(), -1, &measured, kTextFlags | DT_CALCRECT);
  if (text_height > 1) {
    RECT place = to_rect(mark_layout::caption_rect(width(), height(), text_height));
    SetTextColor(dc, Enabled.get() ? shown_color(ForeColor.get(), COLOR_WINDOWTEXT)
                                   : shown_color(kDisabledText, COLOR_GRAYTEXT));
    DrawTextUnicode(dc, Caption.get(), -1, &place, kTextFlags);
  }
  SelectObject(dc, displaced);
}

COLORREF MarkControl::clear_colour() const {
  return shown_color(BackColor.get(), COLOR_WINDOW);
}

COLORREF MarkControl::mask_colour() const {
  return BackStyle.get() == Transparent ? clear_colour() : CLR_INVALID;
}

}  // namespace kestrelon
