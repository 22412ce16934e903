// The field: border, ground, text, drop button.
#include <algorithm>

#include "controls/us_combo_box/us_combo_box.h"
#include "frame/kit/color.h"
#include "frame/kit/gradient.h"
#include "frame/kit/triangle.h"
#include "frame/screen.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kButton = 17;     // width at 96 dots an inch
constexpr int kMargin = 3;      // between border and text
constexpr int kLightened = 70;  // under the pointer
constexpr int kCheckSide = 13;
constexpr ColorRef kDisabledText = 0x99A8AC, kDisabledBorder = 0xC8D0D4;

// The corners take the colour of what lies behind; a little of the border rounds them.
void round_corners(const PixelView& view, ColorRef behind, ColorRef border) {
  const int right = view.width - 1, bottom = view.height - 1;
  const ColorRef half = BlendColor(behind, border, 0.5);
  for (const int x : {0, right})
    for (const int y : {0, bottom}) {
      const int inward_x = x == 0 ? 1 : -1, inward_y = y == 0 ? 1 : -1;
      fill_rect(view, {x, y, x + 1, y + 1}, behind);
      fill_rect(view, {x + inward_x, y, x + inward_x + 1, y + 1}, half);
      fill_rect(view, {x, y + inward_y, x + 1, y + inward_y + 1}, half);
      fill_rect(view, {x + inward_x, y + inward_y, x + inward_x + 1, y + inward_y + 1}, border);
    }
}

}  // namespace

PixelRect USComboBox::button_area() {
  const int line = scale().line();
  const PixelRect inner{line, line, width() - line, height() - line};
  const int breadth = std::clamp(inner.right - inner.left, 0, scale()(kButton));
  return right_to_left() ? PixelRect{inner.left, inner.top, inner.left + breadth, inner.bottom}
                         : PixelRect{inner.right - breadth, inner.top, inner.right, inner.bottom};
}

PixelRect USComboBox::text_area() {
  const PixelRect button = button_area();
  const int margin = scale()(kMargin), line = scale().line();
  return right_to_left()
             ? PixelRect{button.right + margin, line, width() - line - margin, height() - line}
             : PixelRect{line + margin, line, button.left - margin, height() - line};
}

void USComboBox::lay_out() {
  // The field's height follows the font; a container that refuses is not asked for the same again.
  const int wanted = line_height() + 2 * (scale().line() + scale()(kMargin));
  const bool asks = window() != nullptr && height() > 0 && height() != wanted;
  if (asks && std::exchange(asked_height_, wanted) != wanted) request_size(width(), wanted);
  metrics_ = item_metrics(scale().dpi(), line_height());
  metrics_.check_side = CheckBoxes.get() ? scale()(kCheckSide) : 0;
  const SIZE image = image_size();
  metrics_.image_width = scale()(static_cast<int>(image.cx));
  metrics_.image_height = scale()(static_cast<int>(image.cy));
  columns_ = parse_column_widths(ColumnWidths.get(), scale().dpi());
  row_height_ = item_height(metrics_) + scale()(2);
  heights_ = FixedRowHeights(row_height_);
  const PixelRect area = text_area();
  const int top = std::max((height() - line_height()) / 2, scale().line());
  edit_.move({area.left, top, std::max(area.left, area.right),
              std::min(top + line_height(), height() - scale().line())});
  redraw_list();
}

void USComboBox::draw() {
  const bool contrast = high_contrast(), enabled = Enabled.get();
  const PixelView view = surface().pixels();
  ColorRef border =
      shown_color(lit() ? BorderColorOver.get() : BorderColor.get(), COLOR_WINDOWTEXT);
  if (lacks_required()) border = shown_color(RequiredColor.get(), COLOR_HIGHLIGHT);
  if (!enabled) border = shown_color(kDisabledBorder, COLOR_GRAYTEXT);
  color_edit();
  surface().clear(shown_color(lit() ? BackColorOver.get() : BackColor.get(), COLOR_WINDOW));
  draw_button(button_area());
  for (int i = 0; i < scale().line(); ++i)
    DrawFrame(view, border, i, i, view.width - i, view.height - i);
  if (ShowCorner.get() && !contrast && view.width > 3 && view.height > 3)
    round_corners(view, TranslateColor(ambient().back_color()), border);
  if (edit_.hwnd() == nullptr) draw_text(text_area());
}

// Of a field that is only chosen from; a typed one shows its edit box here.
void USComboBox::draw_text(const PixelRect& area) {
  const bool marked = !editable() && focus_within();
  const std::wstring shown = shown_text();
  const bool hint = shown.empty();
  const std::wstring& line = hint ? PlaceHolder.get() : shown;
  const HGDIOBJ displaced = SelectObject(surface().dc(), plain_font());
  const OLE_COLOR ink = marked ? HighLightColorText.get() : ForeColor.get();
  SetTextColor(surface().dc(), !Enabled.get() || hint ? shown_color(kDisabledText, COLOR_GRAYTEXT)
                                                      : shown_color(ink, COLOR_WINDOWTEXT));
  UINT flags = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  if (right_to_left()) flags |= DT_RIGHT | DT_RTLREADING;
  RECT rect{area.left, area.top, area.right, area.bottom};
  if (rect.left < rect.right)
    DrawTextUnicode(surface().dc(), line, static_cast<int>(line.size()), &rect, flags);
  SelectObject(surface().dc(), displaced);
  if (!marked || !ShowFocusRect.get()) return;
  SetTextColor(surface().dc(), 0);
  const int out = scale()(1);
  draw_focus_rect(surface().pixels(),
                  {area.left - out, area.top + out, area.right + out, area.bottom - out});
}

void USComboBox::draw_button(const PixelRect& area) {
  const PixelView view = surface().pixels();
  const int line = scale().line();
  const ColorRef border = shown_color(BorderColor.get(), COLOR_WINDOWTEXT);
  if (high_contrast()) {
    fill_rect(view, area, GetSysColor(COLOR_BTNFACE));
  } else {
    const auto face = [&](OLE_COLOR color) {
      const ColorRef plain = TranslateColor(color);
      return button_hot_ && Enabled.get() && !dropped_down() ? LightenColor(plain, kLightened)
                                                             : plain;
    };
    const ColorRef first = face(GradientColor1.get());
    const ColorRef second = UseGradient.get() ? face(GradientColor2.get()) : first;
    const bool turned = dropped_down();  // a pressed face: light from below
    fill_system_gradient(view, area, turned ? second : first, turned ? first : second,
                         GradientMode.get() == Combo_LeftRight ? GradientDirection::LeftToRight
                                                               : GradientDirection::TopToBottom);
  }
  const int x = right_to_left() ? area.right : area.left - line;
  fill_rect(view, {x, area.top, x + line, area.bottom}, border);
  const ColorRef ink = Enabled.get() ? shown_color(ForeColor.get(), COLOR_BTNTEXT)
                                     : shown_color(kDisabledText, COLOR_GRAYTEXT);
  draw_triangle(view, area, Pointing::kDown, scale()(4), ink);
}

}  // namespace kestrelon
