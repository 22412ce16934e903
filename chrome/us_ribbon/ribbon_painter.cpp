#include "chrome/us_ribbon/ribbon_painter.h"

#include <algorithm>

#include "frame/selected_font.h"
#include "frame/text.h"
#include "imaging/dib_win.h"

namespace kestrelon::ribbon {
namespace {

constexpr int kDimOpacity = 50;  // percent
constexpr UINT kLine = DT_SINGLELINE | DT_NOCLIP | DT_LEFT | DT_TOP;
constexpr UINT kCentred = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS;

PixelRect shrunk(const PixelRect& area, int by) {
  return {area.left + by, area.top + by, area.right - by, area.bottom - by};
}

// A contextual tab: its colour over white.
Gradient tinted(ColorRef color) {
  const auto lighter = [&](int part) {
    ColorRef out = 0;
    for (int shift = 0; shift < 24; shift += 8) {
      const int channel = static_cast<int>(color >> shift & 0xFF);
      out |= static_cast<ColorRef>(channel + (255 - channel) * part / 100) << shift;
    }
    return out;
  };
  return Gradient::smooth(lighter(55), lighter(88));
}

}  // namespace

Painter::Painter(Surface& surface, const Model& model, const Scene& scene, const Look& look,
                 Pictures& pictures, Scale scale)
    : surface_(surface),
      model_(model),
      scene_(scene),
      look_(look),
      palette_(*look.palette),
      pictures_(pictures),
      scale_(scale),
      canvas_{surface.pixels(), {}} {}

void Painter::paint(const PixelRect& clip) {
  canvas_.clip = intersect(clip, canvas_.view.bounds());
  if (canvas_.clip.empty()) return;
  const HDC dc = surface_.dc();
  const int saved = SaveDC(dc);
  IntersectClipRect(dc, canvas_.clip.left, canvas_.clip.top, canvas_.clip.right,
                    canvas_.clip.bottom);
  {
    const SelectedFont font(dc, look_.font);
    paint_strip();
    paint_body();
    for (size_t i = 0; i < scene_.tabs.size(); ++i) paint_tab(i);
    for (size_t i = 0; i < scene_.tab_buttons.size(); ++i) paint_tab_button(i);
    for (size_t i = 0; i < scene_.categories.size(); ++i) paint_category(i);
    for (size_t i = 0; i < scene_.buttons.size(); ++i) paint_button(i);
    paint_scroll(scene_.scroll_left, Part::kScrollLeft);
    paint_scroll(scene_.scroll_right, Part::kScrollRight);
  }
  RestoreDC(dc, saved);
}

ColorRef Painter::ink(ColorRef property, bool lit) const {
  if (!palette_.system) return property;
  return lit ? palette_.lit_text : palette_.text;
}

const BoxColors* Painter::lit(Part part, size_t at) const {
  if (is(look_.pressed, part, at) && is(look_.hot, part, at)) return &palette_.pressed;
  return is(look_.hot, part, at) ? &palette_.hot : nullptr;
}

void Painter::paint_strip() {
  // What the round corners of the panel leave belongs to the strip.
  const Gradient& colors = palette_.strip;
  fill(canvas_, canvas_.view.bounds(), colors.colors[3]);
  fill(canvas_, scene_.strip, colors);
}

void Painter::paint_body() {
  const int line = scale_.line();
  framed_box(canvas_, scene_.body, line, palette_.body.border, palette_.body.inside,
             {radius(4), true});
  const PixelRect inner = shrunk(scene_.body, line);
  fill(canvas_, {inner.left + radius(3), inner.top, inner.right - radius(3), inner.top + line},
       palette_.body_light);
}

void Painter::paint_tab(size_t at) {
  const TabPlace& place = scene_.tabs[at];
  if (!touched(place.area)) return;
  const Tab& tab = model_.tabs()[static_cast<size_t>(place.entry)];
  const bool selected = place.entry == model_.selected();
  const bool hot = is(look_.hot, Part::kTab, at) || (selected && look_.tab_focus);
  const int line = scale_.line();
  const bool shown = selected || hot;
  if (shown || tab.color != 0) {
    PixelRect area = place.area;
    if (!selected) area.bottom -= line;
    BoxColors colors = selected ? palette_.tab : palette_.tab_hot;
    if (selected && hot) colors.border = palette_.hot.border;
    if (tab.color != 0 && !palette_.system) colors = {tab.color, tinted(tab.color)};
    framed_box(canvas_, area, line, colors.border, colors.inside, {radius(3), false});
    // Open towards the panel.
    if (selected)
      fill(canvas_, {area.left + line, area.bottom - line, area.right - line, area.bottom},
           colors.inside.colors[3]);
  }
  paint_text(tab.caption, place.text,
             ink(selected ? look_.tab_selected : look_.tab_normal, hot && !selected), kCentred);
  if (selected && look_.tab_focus && look_.focus_mark)
    draw_focus_rect(canvas_.view, shrunk(place.area, scale_(3)));
}

void Painter::paint_category(size_t at) {
  const CategoryPlace& place = scene_.categories[at];
  if (!touched(place.area)) return;
  const Category& category = model_.categories()[static_cast<size_t>(place.entry)];
  const bool hot = category_of(scene_, look_.hot) == static_cast<int>(at);
  const BoxColors& colors = hot ? palette_.category_hot : palette_.category;
  const int line = scale_.line(), round = radius(3);
  if (palette_.frames) {
    // A light edge to the right and below lifts the frame off the panel.
    frame(canvas_,
          {place.area.left + line, place.area.top + line, place.area.right, place.area.bottom},
          line, palette_.category_light, round);
    PixelRect outer = place.area;
    outer.right -= line;
    outer.bottom -= line;
    fill(canvas_, outer, colors.inside, {round, true});
    PixelRect strip{outer.left + line, place.strip.top, outer.right - line, outer.bottom - line};
    fill(canvas_, strip, Gradient::plain(hot ? palette_.caption_back_hot : palette_.caption_back));
    frame(canvas_, outer, line, colors.border, round);
  } else {
    if (hot && !palette_.system) fill(canvas_, place.area, colors.inside);
    fill(canvas_,
         {place.area.right - line, place.area.top + scale_(4), place.area.right,
          place.area.bottom - scale_(4)},
         colors.border);
  }
  PixelRect caption = place.caption;
  caption.left += scale_(2);
  caption.bottom -= 2 * line;
  paint_text(category.caption, caption, ink(look_.category, false), kCentred | DT_NOPREFIX);
  paint_launcher(at);
}

void Painter::paint_launcher(size_t at) {
  const PixelRect& area = scene_.categories[at].launcher;
  if (!touched(area)) return;
  const BoxColors* const box = lit(Part::kLauncher, at);
  const int line = scale_.line();
  const PixelRect face{area.left, area.top, area.right - 2 * line, area.bottom - 2 * line};
  if (box != nullptr) framed_box(canvas_, face, line, box->border, box->inside, {radius(2), true});
  const bool white = palette_.system && box != nullptr;
  const ColorRef back = box != nullptr ? box->inside.colors[3] : palette_.mark_light;
  launcher_mark(canvas_, face, scale_, white ? palette_.lit_text : palette_.mark, back);
}

const BoxColors* Painter::button_box(const ButtonPlace& place, size_t at) const {
  const ButtonState& state = model_.state_of(model_.buttons()[static_cast<size_t>(place.entry)]);
  if (!state.enabled || !look_.enabled) return state.checked ? &palette_.checked : nullptr;
  const Part parts[] = {Part::kButton, Part::kDrop};
  for (const Part part : parts)
    if (const BoxColors* const box = lit(part, at)) return box;
  if (state.checked) return &palette_.checked;
  return place.entry == look_.focus ? &palette_.hot : nullptr;
}

void Painter::paint_button(size_t at) {
  const ButtonPlace& place = scene_.buttons[at];
  if (!touched(place.area)) return;
  const Button& button = model_.buttons()[static_cast<size_t>(place.entry)];
  const bool dim = !model_.state_of(button).enabled || !look_.enabled;
  const BoxColors* const box = button_box(place, at);
  const int line = scale_.line();
  if (box != nullptr)
    framed_box(canvas_, place.area, line, box->border, box->inside, {radius(3), true});
  if (box != nullptr && !place.drop.empty()) {
    const bool wide = place.size == ButtonSize::kLarge;
    fill(canvas_,
         wide ? PixelRect{place.area.left + line, place.drop.top, place.area.right - line,
                          place.drop.top + line}
              : PixelRect{place.drop.left, place.area.top + line, place.drop.left + line,
                          place.area.bottom - line},
         box->border);
  }
  paint_picture(pictures_.button_picture(place.entry), place.icon, dim);
  const ColorRef color = dim ? palette_.disabled_text : ink(look_.button, box != nullptr);
  for (const CaptionLine& text : place.lines) paint_text(text.text, text.area, color, kLine);
  if (!place.arrow.empty()) triangle(canvas_, place.arrow, scale_(3), Pointing::kDown, color);
  if (place.entry == look_.focus && look_.focus_mark) {
    SetTextColor(surface_.dc(), 0);
    draw_focus_rect(canvas_.view, shrunk(place.area, scale_(2)));
  }
}

void Painter::paint_tab_button(size_t at) {
  const TabButtonPlace& place = scene_.tab_buttons[at];
  if (!touched(place.area)) return;
  if (const BoxColors* const box = lit(Part::kTabButton, at))
    framed_box(canvas_, place.area, scale_.line(), box->border, box->inside, {radius(3), true});
  paint_picture(pictures_.tab_button_picture(place.entry), place.icon, !look_.enabled);
}

void Painter::paint_scroll(const PixelRect& area, Part part) {
  if (area.empty() || !touched(area)) return;
  const BoxColors* const box = lit(part, 0);
  const BoxColors& colors = box != nullptr ? *box : palette_.category;
  framed_box(canvas_, area, scale_.line(), colors.border, colors.inside, {radius(3), true});
  triangle(canvas_, area, scale_(4), part == Part::kScrollLeft ? Pointing::kLeft : Pointing::kRight,
           palette_.system && box != nullptr ? palette_.lit_text : palette_.mark);
}

// A picture stands at its own size in the middle of its place, grown with the screen, and is
// reduced to fit.
void Painter::paint_picture(const c32bppDIB* picture, const PixelRect& area, bool dim) {
  if (picture == nullptr || picture->Width() < 1 || picture->Height() < 1) return;
  const int room_x = area.right - area.left, room_y = area.bottom - area.top;
  const int64_t own_x = scale_(picture->Width()), own_y = scale_(picture->Height());
  int64_t width = own_x, height = own_y;
  if (own_x > room_x || own_y > room_y) {
    const bool flat = own_x * room_y >= own_y * room_x;
    width = flat ? room_x : std::max<int64_t>(own_x * room_y / own_y, 1);
    height = flat ? std::max<int64_t>(own_y * room_x / own_x, 1) : room_y;
  }
  const int wide = static_cast<int>(width), high = static_cast<int>(height);
  render_to_dc(*picture, surface_.dc(), area.left + (room_x - wide) / 2,
               area.top + (room_y - high) / 2, wide, high, dim ? kDimOpacity : 100,
               dim ? GrayScale::NtscPal : GrayScale::None);
}

void Painter::paint_text(std::wstring_view text, const PixelRect& area, ColorRef color,
                         UINT flags) {
  if (text.empty() || area.empty()) return;
  SetTextColor(surface_.dc(), color);
  RECT place{area.left, area.top, area.right, area.bottom};
  DrawTextUnicode(surface_.dc(), text, static_cast<int>(text.size()), &place,
                  flags | (look_.right_to_left ? UINT{DT_RTLREADING} : 0u));
}

}  // namespace kestrelon::ribbon
