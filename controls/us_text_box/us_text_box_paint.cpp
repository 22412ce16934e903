// State to colours, font and pixels.
#include "controls/us_text_box/us_text_box.h"
#include "frame/kit/lines.h"
#include "frame/screen.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr COLORREF kHintColor = 0x99A8AC;

RECT to_rect(const PixelRect& area) {
  return {area.left, area.top, area.right, area.bottom};
}

// A cross in the middle of an area.
void draw_cross(const PixelView& view, const PixelRect& area, ColorRef color, const Scale& scale) {
  const int half = scale(3);
  const int x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2;
  for (int step = -half; step <= half; ++step) {
    for (int thick = 0; thick < scale.line() + 1; ++thick) {
      set_pixel(view, x + step + thick, y + step, color);
      set_pixel(view, x + step + thick, y - step, color);
    }
  }
}

// A triangle that points up or down.
void draw_arrow(const PixelView& view, const PixelRect& area, ColorRef color, bool up,
                const Scale& scale) {
  const int rows = scale(3);
  const int x = (area.left + area.right) / 2;
  const int top = (area.top + area.bottom - rows) / 2;
  for (int row = 0; row < rows; ++row) {
    const int half = up ? row : rows - 1 - row;
    fill_rect(view, {x - half, top + row, x + half + 1, top + row + 1}, color);
  }
}

}  // namespace

USTextBox::Look USTextBox::look() const {
  if (!Enabled.get()) return Look::kDisabled;
  return over_ ? Look::kOver : Look::kNormal;
}

bool USTextBox::lacks_required() const {
  return Required.get() && entry_is_empty(box_.text(), box_.rules());
}

// Disabled goes before required, and that before hovered.
COLORREF USTextBox::back_color() const {
  if (high_contrast()) return GetSysColor(COLOR_WINDOW);
  if (look() == Look::kDisabled) return TranslateColor(BackColorDisabled.get());
  if (lacks_required()) return TranslateColor(RequiredColor.get());
  return TranslateColor(look() == Look::kOver ? BackColorOver.get() : BackColor.get());
}

COLORREF USTextBox::fore_color() const {
  if (high_contrast())
    return GetSysColor(look() == Look::kDisabled ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT);
  if (look() == Look::kDisabled) return TranslateColor(ForeColorDisabled.get());
  return TranslateColor(look() == Look::kOver ? ForeColorOver.get() : ForeColor.get());
}

COLORREF USTextBox::border_color() const {
  if (high_contrast()) return GetSysColor(COLOR_WINDOWTEXT);
  if (look() == Look::kDisabled) return TranslateColor(BorderColorDisabled.get());
  if (failed_) return TranslateColor(ErrorColor.get());
  return TranslateColor(look() == Look::kOver ? BorderColorOver.get() : BorderColor.get());
}

HFONT USTextBox::current_font() {
  HFONT own = nullptr;
  if (look() == Look::kDisabled) own = FontDisabled.handle();
  if (look() == Look::kOver) own = FontOver.handle();
  return own != nullptr ? own : Font.handle();
}

void USTextBox::relayout() {
  if (!redraw_enabled_) return;
  lay_out();
  repaint();
}

void USTextBox::lay_out() {
  ChildEdit& box = box_.window();
  const HFONT font = current_font();
  if (box.hwnd() != nullptr &&
      reinterpret_cast<HFONT>(SendMessageW(box.hwnd(), WM_GETFONT, 0, 0)) != font)
    box.set_font(font);
  TextBoxShape shape;
  shape.width = width();
  shape.height = height();
  shape.line_height = box.line_height();
  shape.multiline = Multiline.get();
  shape.button = ButtonVisible.get();
  shape.clear = ClearButton.get();
  shape.spin = SpinButtons.get();
  shape.scale = scale();
  places_ = lay_out_text_box(shape);
  box.move(to_rect(places_.edit));
  box.show(true);
  if (botao_) botao_->place(window(), to_rect(places_.button));
}

void USTextBox::repaint() {
  if (!redraw_enabled_ || !surface()) return;
  lacked_required_ = lacks_required();
  showed_failure_ = failed_;
  box_.window().set_colors(fore_color(), back_color());
  surface().clear(back_color());
  draw_parts();
  const PixelView view = surface().pixels();
  for (int i = 0; i < scale().line(); ++i)
    DrawFrame(view, border_color(), i, i, width() - i, height() - i);
  surface_changed();
}

void USTextBox::draw_parts() {
  const PixelView view = surface().pixels();
  const bool usable = Enabled.get() && !Locked.get();
  const ColorRef ink = usable ? border_color() : kHintColor;
  if (!places_.clear.empty() && usable && !entry_is_empty(box_.text(), box_.rules()))
    draw_cross(view, places_.clear, fore_color(), scale());
  if (places_.up.empty()) return;
  fill_rect(
      view,
      {places_.up.left, places_.up.top, places_.up.left + scale().line(), places_.down.bottom},
      ink);
  fill_rect(
      view,
      {places_.down.left, places_.down.top, places_.down.right, places_.down.top + scale().line()},
      ink);
  const ColorRef arrow = usable ? fore_color() : kHintColor;
  draw_arrow(view, places_.up, arrow, true, scale());
  draw_arrow(view, places_.down, arrow, false, scale());
}

bool USTextBox::entry_hint(HDC dc, const RECT& area) {
  if (PlaceHolder.get().empty()) return false;
  if (dc == nullptr) return true;
  constexpr UINT kAlign[] = {DT_LEFT, DT_RIGHT, DT_CENTER};
  const auto alignment = static_cast<size_t>(Alignment.get());
  RECT place = area;
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, high_contrast() ? GetSysColor(COLOR_GRAYTEXT) : kHintColor);
  DrawTextUnicode(dc, PlaceHolder.get(), -1, &place,
                  DT_NOPREFIX | (alignment < 3 ? kAlign[alignment] : DT_LEFT));
  return true;
}

}  // namespace kestrelon
