// A text that does not fit shows whole in a tip, once the pointer has rested on its item.
#include "controls/us_list_box/us_list_box.h"

namespace kestrelon {
namespace {

constexpr UINT kRest = 600;  // milliseconds

}  // namespace

void USListBox::watch_for_tip(int index) {
  hide_item_tip();
  if (index < 0 || !AutoToolTips.get() || editing() || WordWrap.get()) return;
  tip_item_ = index;
  tip_timer_.start(kRest, [this] { show_item_tip(); });
}

void USListBox::show_item_tip() {
  const Hold hold(*this);
  tip_timer_.stop();
  if (!model_.shows(tip_item_) || window() == nullptr || !pointer_over()) return;
  const ItemParts parts = parts_of(model_.row_of_index(tip_item_));
  const std::wstring text = item_text(tip_item_);
  const HDC dc = GetDC(window());
  const HGDIOBJ displaced = SelectObject(dc, plain_font());
  const int wanted = text_width(dc, text);
  SelectObject(dc, displaced);
  ReleaseDC(window(), dc);
  if (wanted <= std::min(parts.text.right, width()) - parts.text.left) return;
  item_tip_.set_TipText(text);
  POINT place{parts.text.left, parts.row.top};
  if (!item_tip_.Create(window()) || !ClientToScreen(window(), &place)) return;
  item_tip_.show_at(place);
}

void USListBox::hide_item_tip() {
  tip_timer_.stop();
  tip_item_ = -1;
  item_tip_.Destroy();
}

}  // namespace kestrelon
