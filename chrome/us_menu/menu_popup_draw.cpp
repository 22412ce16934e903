// Items of a popup: size and look.
#include <algorithm>

#include "chrome/us_menu/menu_popup.h"
#include "frame/kit/access_key.h"
#include "frame/kit/gradient.h"
#include "frame/selected_font.h"
#include "frame/text.h"

namespace kestrelon {
namespace {

constexpr int kCheckMark[][2] = {{0, 3}, {1, 4}, {2, 5}, {3, 4}, {4, 3}, {5, 2}, {6, 1}};
constexpr int kMarkSide = 7;

int text_width(HDC dc, const std::wstring& text) {
  SIZE size{};
  GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

}  // namespace

void MenuPopup::measure(MEASUREITEMSTRUCT& out) {
  const Entry* const entry = entry_of(out.itemData);
  if (entry == nullptr || (!scratch_ && !scratch_.resize(1, 1))) return;
  const SelectedFont selected(scratch_.dc(), look_.font, false, entry->item.is_default);
  TEXTMETRICW metrics{};
  GetTextMetricsW(scratch_.dc(), &metrics);
  const bool cut = look_.short_cuts && !entry->item.short_cut.empty();
  const menu_model::ItemMetrics found = menu_model::measure_item(
      entry->item.separates(), text_width(scratch_.dc(), without_access_marks(entry->item.caption)),
      cut ? text_width(scratch_.dc(), entry->item.short_cut) : 0,
      static_cast<int>(metrics.tmHeight), look_.image_size, look_.scale);
  out.itemWidth = static_cast<UINT>(found.width);
  out.itemHeight = static_cast<UINT>(found.height);
}

void MenuPopup::draw(const DRAWITEMSTRUCT& what) {
  const Entry* const entry = entry_of(what.itemData);
  const int width = static_cast<int>(what.rcItem.right - what.rcItem.left);
  const int height = static_cast<int>(what.rcItem.bottom - what.rcItem.top);
  if (entry == nullptr || !scratch_.resize(width, height)) return;
  const MenuItem& item = entry->item;
  const bool disabled = (what.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
  const bool over = (what.itemState & ODS_SELECTED) != 0 && !item.separates();
  const Scale& scale = look_.scale;
  const int column = menu_model::measure_item(false, 0, 0, 0, look_.image_size, scale).image_column;
  scratch_.clear(look_.back);
  const PixelView view = scratch_.pixels();
  const PixelRect images{0, 0, std::min(column, width), height};
  fill_system_gradient(view, images, look_.column1, look_.column2, GradientDirection::LeftToRight);
  if (item.separates()) {
    const int y = height / 2, left = column + scale(7);
    fill_rect(view, {left, y, width, y + scale.line()}, look_.column2);
  } else {
    if (over && !disabled) {
      fill_system_gradient(view, {1, 0, width - 1, height}, look_.over1, look_.over2,
                           GradientDirection::TopToBottom);
      DrawFrame(view, look_.border_over, 1, 0, width - 1, height);
    }
    draw_mark(*entry, images, disabled);
    const HDC dc = scratch_.dc();
    const SelectedFont selected(dc, look_.font, false, item.is_default);
    SetTextColor(dc, disabled ? look_.ink_disabled : over ? look_.ink_over : look_.ink);
    RECT place{column + scale(7), 0, width - scale(20), height};
    const UINT flags = DT_SINGLELINE | DT_VCENTER | (look_.right_to_left ? DT_RTLREADING : 0u);
    const UINT cues = (what.itemState & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0u;
    DrawTextUnicode(dc, item.caption, -1, &place, flags | cues);
    if (look_.short_cuts && !item.short_cut.empty())
      DrawTextUnicode(dc, item.short_cut, -1, &place, flags | DT_RIGHT | DT_NOPREFIX);
  }
  BitBlt(what.hDC, what.rcItem.left, what.rcItem.top, width, height, scratch_.dc(), 0, 0, SRCCOPY);
}

// The image, with a frame around it when the item is checked; a check or a disc without an image.
void MenuPopup::draw_mark(const Entry& entry, const PixelRect& column, bool disabled) {
  const MenuItem& item = entry.item;
  const Scale& scale = look_.scale;
  const int side = scale(std::clamp(look_.image_size, 8, 64));
  const int x = (column.right - side) / 2, y = (column.bottom - side) / 2;
  const PixelView view = scratch_.pixels();
  if (item.checked) {
    const int m = scale(2);
    fill_system_gradient(view, {x - m, y - m, x + side + m, y + side + m}, look_.over1, look_.over2,
                         GradientDirection::TopToBottom);
    DrawFrame(view, look_.border_over, x - m, y - m, x + side + m, y + side + m);
  }
  if (const c32bppDIB* const image = item.image.empty() ? nullptr : owner_.menu_image(item.image)) {
    const int opacity = disabled ? 50 : 100;
    render_to_dc(*image, scratch_.dc(), x, y, side, side, opacity,
                 disabled ? GrayScale::NtscPal : GrayScale::None);
    return;
  }
  if (!item.checked) return;
  const COLORREF ink = disabled ? look_.ink_disabled : look_.ink;
  const int unit = scale.line();
  const int left = (column.right - kMarkSide * unit) / 2,
            top = (column.bottom - kMarkSide * unit) / 2;
  if (item.radio) {
    for (int row = 0; row < kMarkSide - 1; ++row) {
      const int inset = row == 0 || row == kMarkSide - 2 ? 1 : 0;
      fill_rect(view,
                {left + (inset + 0) * unit, top + row * unit, left + (kMarkSide - 1 - inset) * unit,
                 top + (row + 1) * unit},
                ink);
    }
    return;
  }
  for (const auto& [dx, dy] : kCheckMark)
    fill_rect(
        view,
        {left + dx * unit, top + (dy - 1) * unit, left + (dx + 1) * unit, top + (dy + 1) * unit},
        ink);
}

}  // namespace kestrelon
