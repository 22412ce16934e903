#include "controls/us_text_box/suggestion_list.h"

#include <windowsx.h>

#include "frame/kit/lines.h"
#include "frame/screen.h"
#include "frame/text.h"

namespace kestrelon {
namespace {

constexpr int kMargin = 4;

int row_height_of(HWND window, HFONT font, const Scale& scale) {
  const HDC dc = GetDC(window);
  const HGDIOBJ displaced = SelectObject(dc, font);
  TEXTMETRICW metric{};
  GetTextMetricsW(dc, &metric);
  SelectObject(dc, displaced);
  ReleaseDC(window, dc);
  return static_cast<int>(metric.tmHeight) + scale(kMargin);
}

}  // namespace

void SuggestionList::show(HWND window, AutomationObject& control, std::vector<std::wstring> items,
                          const Style& style) {
  if (items.empty() || window == nullptr) return close();
  items_ = std::move(items);
  style_ = style;
  chosen_ = -1;
  row_height_ = row_height_of(window, style.font, window_scale(window));
  PopupPlace place;
  GetWindowRect(window, &place.anchor);
  place.size = {place.anchor.right - place.anchor.left,
                static_cast<LONG>(items_.size()) * row_height_ + 2};
  if (popup_.is_open()) {
    popup_.move(place);
    popup_.redraw();
  } else {
    popup_.open(window, control, *this, place);
  }
}

void SuggestionList::close() {
  popup_.close();
  chosen_ = -1;
}

void SuggestionList::popup_closed(PopupEnd) {
  chosen_ = -1;
}

bool SuggestionList::key(int key) {
  if (!is_open()) return false;
  const int count = static_cast<int>(items_.size());
  switch (key) {
    case VK_DOWN:
      choose(chosen_ + 1 < count ? chosen_ + 1 : 0);
      return true;
    case VK_UP:
      choose(chosen_ > 0 ? chosen_ - 1 : count - 1);
      return true;
    case VK_RETURN:
      if (chosen_ < 0) return false;
      take(chosen_);
      return true;
    case VK_ESCAPE:
      close();
      return true;
    default:
      return false;
  }
}

void SuggestionList::choose(int index) {
  if (index == chosen_) return;
  chosen_ = index;
  popup_.redraw();
}

void SuggestionList::take(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size())) return;
  const std::wstring text = items_[static_cast<size_t>(index)];
  close();
  owner_.suggestion_taken(text);
}

void SuggestionList::popup_draw(Surface& surface) {
  const PixelView view = surface.pixels();
  const HDC dc = surface.dc();
  surface.clear(style_.back);
  const HGDIOBJ displaced = SelectObject(dc, style_.font);
  SetBkMode(dc, TRANSPARENT);
  for (int i = 0; i < static_cast<int>(items_.size()); ++i) {
    const PixelRect row{1, 1 + i * row_height_, view.width - 1, 1 + (i + 1) * row_height_};
    if (i == chosen_) fill_rect(view, row, GetSysColor(COLOR_HIGHLIGHT));
    SetTextColor(dc, i == chosen_ ? GetSysColor(COLOR_HIGHLIGHTTEXT) : style_.text);
    RECT place{row.left + kMargin, row.top, row.right - kMargin, row.bottom};
    DrawTextUnicode(dc, items_[static_cast<size_t>(i)], -1, &place,
                    DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
  SelectObject(dc, displaced);
  DrawFrame(view, style_.border, 0, 0, view.width, view.height);
}

bool SuggestionList::popup_message(UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
  const int row = row_height_ > 0 ? (GET_Y_LPARAM(lparam) - 1) / row_height_ : -1;
  const bool inside = row >= 0 && row < static_cast<int>(items_.size());
  result = 0;
  if (message == WM_MOUSEMOVE && inside) choose(row);
  if (message == WM_LBUTTONUP && inside) take(row);
  return message == WM_MOUSEMOVE || message == WM_LBUTTONUP;
}

}  // namespace kestrelon
