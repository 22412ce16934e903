// State to pixels.
#include <algorithm>

#include "chrome/band.h"
#include "chrome/strip_picture.h"
#include "chrome/us_tab/us_tab.h"
#include "frame/selected_font.h"
#include "frame/text.h"

namespace kestrelon {

using tab_strip::Part;
using tab_strip::Side;

namespace {

constexpr ColorRef kDisabledLine = 0xC8D0D4;
constexpr ColorRef kMarkColor = 0x707070;
constexpr ColorRef kMarkHot = 0x3C3CC8;
constexpr long kMostRadius = 64;

}  // namespace

tab_strip::TabColors USTab::colors_of(int index) const {
  const bool active = index == active_.get(), live = usable(index);
  if (high_contrast()) {
    const ColorRef back = GetSysColor(active ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    return {back, back, GetSysColor(COLOR_BTNTEXT), back};
  }
  tab_strip::TabColors out;
  out.border = Enabled.get() ? TranslateColor(BorderColor.get()) : kDisabledLine;
  out.inner = TranslateColor(TopLeftInnerBorderColor.get());
  const bool hot = hot_.tab == index && live;
  if (!live && !active) {
    out.start = out.end = out.inner = TranslateColor(DisabledTabBackColor.get());
  } else if (active) {
    const bool focused = UseFocusedColor.get() && focus_within() && live;
    out.start = TranslateColor(focused ? FocusedColor.get() : ActiveTabBackStartColor.get());
    out.end = TranslateColor(ActiveTabBackEndColor.get());
  } else {
    out.start = TranslateColor(hot ? HoverColor.get() : InActiveTabBackStartColor.get());
    out.end = TranslateColor(InActiveTabBackEndColor.get());
  }
  return out;
}

void USTab::draw() {
  const ColorRef strip = shown_color(TabStripBackColor.get(), COLOR_BTNFACE);
  surface().clear(strip);
  if (cleared_) return;
  paint_page();
  for (int i = 0; i < tab_count(); ++i)
    if (i != active_.get()) paint_tab(i);
  if (known(active_.get())) paint_tab(static_cast<int>(active_.get()));
  paint_arrows();
  const bool hot = hot_.part == Part::kBox;
  if (!strip_.box.empty()) paint_close(strip_.box, hot, pressed_.part == Part::kBox && hot);
}

void USTab::paint_page() {
  const PixelView view = surface().pixels();
  const int line = scale().line();
  const PixelRect page = strip_.page;
  if (page.empty()) return;
  const ColorRef border = high_contrast()  ? GetSysColor(COLOR_BTNTEXT)
                          : !Enabled.get() ? kDisabledLine
                                           : TranslateColor(BorderColor.get());
  fill_rect(view, page, border);
  fill_rect(view, {page.left + line, page.top + line, page.right - line, page.bottom - line},
            shown_color(ActiveTabBackEndColor.get(), COLOR_BTNFACE));
}

void USTab::paint_tab(int index) {
  PixelRect area = strip_.tabs[static_cast<size_t>(index)];
  if (area.empty()) return;
  const PixelView view = surface().pixels();
  const bool active = index == active_.get();
  const int line = scale().line();
  const auto radius = [&](const Property<long>& length) {
    const long pixels = ShowTabsCorner.get() ? std::clamp(length.get(), 0L, kMostRadius) : 0L;
    return scale()(static_cast<int>(pixels));
  };
  const bool flat = side() == Side::kTop || side() == Side::kBottom;
  PixelRect body = area;
  // The active tab covers the page's border beneath it.
  if (active) {
    if (side() == Side::kTop) body.bottom += line;
    if (side() == Side::kBottom) body.top -= line;
    if (side() == Side::kLeft) body.right += line;
    if (side() == Side::kRight) body.left -= line;
  }
  const tab_strip::TabColors colors = colors_of(index);
  tab_strip::paint_tab(view, body, side(), radius(flat ? XRadius : YRadius),
                       radius(flat ? YRadius : XRadius), colors, line);

  const SIZE text = text_size(index);
  const PixelRect mark = strip_.close_marks[static_cast<size_t>(index)];
  const tab_strip::Face face =
      tab_strip::face(area, mark, picture_edge(index), static_cast<int>(text.cx),
                      static_cast<int>(text.cy), static_cast<int>(PictureAlignment.get()), scale());
  const bool live = usable(index);
  if (!face.picture.empty())
    paint_picture(surface(), {at(index).picture.get(), face.picture, UseMaskColor.get(),
                              PictureMaskColor.get(), !live});
  const ColorRef ink = high_contrast() ? GetSysColor(!live    ? COLOR_GRAYTEXT
                                                     : active ? COLOR_HIGHLIGHTTEXT
                                                              : COLOR_BTNTEXT)
                                       : TranslateColor(!live    ? DisabledTabForeColor.get()
                                                        : active ? ActiveTabForeColor.get()
                                                                 : InActiveTabForeColor.get());
  if (!face.text.empty()) {
    const SelectedFont font(surface().dc(), font_of(index));
    SetTextColor(surface().dc(), ink);
    RECT place{face.text.left, face.text.top, face.text.right, face.text.bottom};
    DrawTextUnicode(surface().dc(), at(index).caption, -1, &place,
                    DT_SINGLELINE | DT_END_ELLIPSIS | (right_to_left() ? UINT{DT_RTLREADING} : 0u));
  }
  if (!mark.empty())
    paint_close(mark, hot_.part == Part::kCloseMark && hot_.tab == index,
                pressed_.part == Part::kCloseMark && pressed_.tab == index);
  if (active && ShowFocusRect.get() && focus_within()) {
    const int inset = 2 * line + 1;
    draw_focus_rect(view,
                    {area.left + inset, area.top + inset, area.right - inset, area.bottom - line});
  }
}

void USTab::paint_close(const PixelRect& area, bool hot, bool pressed) {
  const PixelView view = surface().pixels();
  const int edge = std::min(area.right - area.left, area.bottom - area.top);
  const ColorRef ink = high_contrast()  ? GetSysColor(COLOR_BTNTEXT)
                       : !Enabled.get() ? kDisabledLine
                       : hot            ? kMarkHot
                                        : kMarkColor;
  if (pressed) fill_rect(view, area, shown_color(HoverColor.get(), COLOR_BTNFACE));
  tab_strip::paint_cross(view, area, edge >= scale()(14) ? edge / 4 : edge / 6, scale().line() + 1,
                         ink);
}

void USTab::paint_arrows() {
  if (strip_.back.empty()) return;
  const PixelView view = surface().pixels();
  const bool flat = side() == Side::kTop || side() == Side::kBottom;
  const bool back = strip_.first > 0;
  const bool forward = strip_.last + 1 < static_cast<int>(strip_.tabs.size());
  const auto ink = [&](bool live, Part part) -> ColorRef {
    if (high_contrast()) return GetSysColor(live ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    if (!live || !Enabled.get()) return kDisabledLine;
    return hot_.part == part ? TranslateColor(ActiveTabForeColor.get()) : kMarkColor;
  };
  tab_strip::paint_arrow(view, strip_.back, flat ? Side::kLeft : Side::kTop, scale()(4),
                         ink(back, Part::kBack));
  tab_strip::paint_arrow(view, strip_.forward, flat ? Side::kRight : Side::kBottom, scale()(4),
                         ink(forward, Part::kForward));
}

}  // namespace kestrelon
