// State to pixels. A part is drawn by itself, over the body behind it.
#include "chrome/band.h"
#include "chrome/strip_picture.h"
#include "chrome/us_tool_bar/us_tool_bar.h"
#include "frame/kit/gradient.h"
#include "frame/kit/lines.h"
#include "frame/screen.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {

using tool_bar::Look;

namespace {

void draw_triangle(const PixelView& view, int x, int y, int size, ColorRef color) {
  for (int row = 0; row < size; ++row)
    fill_rect(view, {x - size + 1 + row, y + row, x + size - row, y + row + 1}, color);
}

}  // namespace

PixelRect USToolBar::area_of(int part) const {
  if (part == tool_bar::kGripper) return bar_.gripper;
  if (part == tool_bar::kEndPanel) return bar_.end_panel;
  if (part == tool_bar::kChevron) return bar_.chevron;
  const auto index = static_cast<size_t>(part - 1);
  if (part < 1 || index >= bar_.places.size() || !bar_.places[index].shown) return {};
  return bar_.places[index].area;
}

Look USToolBar::look_of(int index) const {
  const ToolButton& button = at(index);
  tool_bar::Condition condition;
  condition.usable = live(index);
  condition.hot = index == hot_;
  condition.pressed = index == pressed_ && (index == hot_ || button.style == Dropdown_button);
  condition.checked = button.value;
  condition.stored = static_cast<Look>(button.state);
  return tool_bar::look(condition);
}

void USToolBar::draw() {
  if (left_alone_ || !surface()) return;
  surface().clear(shown_color(BackColor.get(), COLOR_BTNFACE));
  paint_body(0, width());
  paint_gripper();
  for (int i = 1; i <= static_cast<int>(bar_.places.size()); ++i) paint_button(i);
  paint_chevron();
  paint_end_panel();
  surface_changed();
}

void USToolBar::draw_part(int part) {
  const PixelRect area = area_of(part);
  if (left_alone_ || !surface() || area.empty()) return;
  paint_body(area.left, area.right);
  if (part == tool_bar::kGripper) paint_gripper();
  if (part == tool_bar::kEndPanel) paint_end_panel();
  if (part == tool_bar::kChevron) paint_chevron();
  if (part > 0) paint_button(part);
  surface_changed(RECT{area.left, 0, area.right, height()});
}

void USToolBar::paint_body(int left, int right) {
  const PixelView view = surface().pixels();
  fill_band(view, {left, 0, right, height()}, GradientColor1.get(), GradientColor2.get(),
            COLOR_BTNFACE);
  const int line = scale().line();
  fill_rect(view, {left, height() - line, right, height()},
            shown_color(BackColor.get(), COLOR_BTNTEXT));
}

void USToolBar::paint_gripper() {
  const PixelRect area = bar_.gripper;
  if (area.empty()) return;
  const PixelView view = surface().pixels();
  const int dot = scale()(2), step = scale()(4), left = area.left + (area.right - dot) / 2;
  if (!high_contrast())
    fill_rect(view, {area.left, 0, area.right, area.bottom - scale().line()},
              TranslateColor(GripperColor.get()));
  const ColorRef mark = shown_color(BackColor.get(), COLOR_BTNTEXT);
  for (int y = area.top + step; y + step <= area.bottom; y += step)
    fill_rect(view, {left, y, left + dot, y + dot}, mark);
}

void USToolBar::paint_end_panel() {
  const PixelRect area = bar_.end_panel;
  if (area.empty()) return;
  const bool hot = hot_ == tool_bar::kEndPanel;
  const PixelView view = surface().pixels();
  const bool lit = hot || pressed_ == tool_bar::kEndPanel;
  if (pressed_ == tool_bar::kEndPanel && hot)
    fill_band(view, area, GradientColorPressRight1.get(), GradientColorPressRight2.get(),
              COLOR_HIGHLIGHT);
  else if (hot)
    fill_band(view, area, GradientColorOverRight1.get(), GradientColorOverRight2.get(),
              COLOR_HIGHLIGHT);
  else
    fill_band(view, area, RightColor1.get(), RightColor2.get(), COLOR_BTNFACE);
  const ColorRef mark = high_contrast() ? GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT)
                                        : TranslateColor(ToolButton::kForeColor);
  fill_rect(view, {area.left, 0, area.left + scale().line(), area.bottom},
            shown_color(BackColor.get(), COLOR_BTNTEXT));
  draw_triangle(view, (area.left + area.right) / 2, area.bottom - scale()(8), scale()(3), mark);
}

void USToolBar::paint_chevron() {
  const PixelRect area = bar_.chevron;
  if (area.empty()) return;
  const PixelView view = surface().pixels();
  const bool lit = hot_ == tool_bar::kChevron || pressed_ == tool_bar::kChevron;
  if (lit)
    fill_band(view, area, GradientColorOver1.get(), GradientColorOver2.get(), COLOR_HIGHLIGHT);
  const ColorRef mark = high_contrast() ? GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT)
                                        : TranslateColor(ToolButton::kForeColor);
  const int size = scale()(3), line = scale().line();
  const int middle = (area.top + area.bottom) / 2;
  for (int arrow = 0; arrow < 2; ++arrow) {
    const int left = (area.left + area.right) / 2 - size + arrow * (size + line);
    for (int row = -size + 1; row < size; ++row) {
      const int x = left + size - 1 - (row < 0 ? -row : row);
      fill_rect(view, {x, middle + row, x + line + 1, middle + row + 1}, mark);
    }
  }
}

void USToolBar::paint_button(int index) {
  const PixelRect area = area_of(index);
  if (area.empty() || !known(index)) return;
  const PixelView view = surface().pixels();
  const ToolButton& button = at(index);
  const int line = scale().line();
  if (button.type == Separator) {
    const int x = (area.left + area.right) / 2;
    fill_rect(view, {x, area.top + scale()(2), x + line, area.bottom - scale()(2)},
              shown_color(BackColor.get(), COLOR_BTNTEXT));
    return;
  }
  const Look look = look_of(index);
  const bool lit = look != Look::kNormal && look != Look::kDisabled;
  if (lit) {
    const bool over = look == Look::kOver;
    const auto& color1 = over ? GradientColorOver1 : GradientColorDown1;
    const auto& color2 = over ? GradientColorOver2 : GradientColorDown2;
    fill_rect(view, area, shown_color(BorderPicture.get(), COLOR_HIGHLIGHTTEXT));
    fill_band(view, {area.left + line, area.top + line, area.right - line, area.bottom - line},
              color1.get(), color2.get(), COLOR_HIGHLIGHT);
  }
  const tool_bar::Face face = tool_bar::face(area, items_[static_cast<size_t>(index - 1)], scale());
  const bool dim = look == Look::kDisabled;
  const ColorRef ink =
      dim ? GetSysColor(COLOR_GRAYTEXT)
          : shown_color(button.fore_color, lit ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
  if (button.icon) paint_icon(button, face.icon, dim);
  if (!button.caption.empty()) {
    const HDC dc = surface().dc();
    const HGDIOBJ displaced = SelectObject(dc, font_of(button));
    SetTextColor(dc, ink);
    RECT place{face.text.left, face.text.top, face.text.right, face.text.bottom};
    DrawTextUnicode(dc, button.caption, -1, &place,
                    DT_LEFT | DT_TOP | DT_NOCLIP | (right_to_left() ? DT_RTLREADING : 0));
    SelectObject(dc, displaced);
  }
  if (button.style == Dropdown_button)
    draw_triangle(view, (face.drop_mark.left + face.drop_mark.right) / 2,
                  (area.top + area.bottom) / 2 - 1, scale()(3), ink);
  if (index == focus_ && focus_within())
    draw_focus_rect(view, {area.left + 2, area.top + 2, area.right - 2, area.bottom - 2});
}

void USToolBar::paint_icon(const ToolButton& button, const PixelRect& place, bool dim) {
  paint_picture(surface(),
                {button.icon.get(), place, button.use_mask_color, button.mask_color, dim});
}

}  // namespace kestrelon
