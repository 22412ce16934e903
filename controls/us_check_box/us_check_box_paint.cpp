// State and rectangles to pixels.
#include "controls/us_check_box/us_check_box.h"
#include "controls/us_check_box/us_check_box_layout.h"
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

void USCheckBox::recompute_layout() {
  const bool right = Alignment.get() == Right_Justify;
  check_rect_ = to_rect(check_layout::check_rect(width(), height(), right));
  focus_rect_ = to_rect(check_layout::focus_rect(width(), height(), right));
}

void USCheckBox::draw(int state) {
  const HDC dc = surface().dc();
  const bool enabled = Enabled.get();
  const int row =
      check_layout::strip_row(check_layout::mark_of(Value.get()), enabled, state, pointer_over());
  const int column = Theme.get() == Windows_8 ? check_layout::kMark : 0;
  check_strip_.Draw(dc, column, row, check_layout::kMark, check_layout::kMark,
                    static_cast<int>(check_rect_.left), static_cast<int>(check_rect_.top), false);
  if (ShowFocusRect.get() && has_focus()) {
    SetTextColor(dc, 0);
    DrawFocusRect(dc, &focus_rect_);
  }
  draw_caption();
}

void USCheckBox::draw_caption() {
  const HDC dc = surface().dc();
  const HGDIOBJ displaced = SelectObject(dc, Font.handle());
  RECT measured = to_rect(check_layout::measure_rect(width(), height()));
  const int text_height =
      DrawTextUnicode(dc, Caption.get(), -1, &measured, kTextFlags | DT_CALCRECT);
  if (text_height > 1) {
    RECT place = to_rect(check_layout::caption_rect(width(), height(), text_height));
    SetTextColor(dc, Enabled.get() ? TranslateColor(ForeColor.get()) : kDisabledText);
    DrawTextUnicode(dc, Caption.get(), -1, &place, kTextFlags);
  }
  SelectObject(dc, displaced);
}

COLORREF USCheckBox::clear_colour() const {
  return TranslateColor(BackColor.get());
}

COLORREF USCheckBox::mask_colour() const {
  return BackStyle.get() == Transparent ? clear_colour() : CLR_INVALID;
}

}  // namespace kestrelon
