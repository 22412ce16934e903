// Rows, scroll bars and the border.
#include <algorithm>

#include "controls/us_tree_view/us_tree_view.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr int kCheckSide = 13;  // at 96 dots an inch
constexpr int kSideStep = 16;   // of a press on the horizontal bar's arrows
constexpr long kMostIndent = 200;
constexpr int kWidestIndent = 1 << 24;  // pixels that deep levels may shift a row by

}  // namespace

void USTreeView::measure_items() {
  metrics_ = item_metrics(scale().dpi(), line_height());
  if (has_checks()) metrics_.check_side = scale()(kCheckSide);
  const SIZE image = image_size();
  metrics_.image_width = scale()(static_cast<int>(image.cx));
  metrics_.image_height = scale()(static_cast<int>(image.cy));
  metrics_.expander = scale()(static_cast<int>(std::clamp(Indent.get(), 0L, kMostIndent)));
  const int wanted = static_cast<int>(std::clamp(ItemHeight.get(), 0L, 1000L));
  row_height_ = wanted > 0 ? scale()(wanted) : item_height(metrics_);
  heights_ = FixedRowHeights(row_height_);
}

void USTreeView::lay_out() {
  if (laying_out_) return;
  laying_out_ = true;
  measure_items();
  top_ = rows().limit_top(top_);
  lay_out_bars();
  place_editor();
  laying_out_ = false;
}

void USTreeView::lay_out_bars() {
  if (bars_.hWnd() == nullptr) return;
  const auto wanted = static_cast<ScrollOrientation>(ScrollBars.get());
  if (bars_.Orientation() != wanted) bars_.set_Orientation(wanted);
  // A bar that comes takes room from the other one: twice is enough.
  for (int i = 0; i < 2; ++i) {
    const RowWindow shown = rows();
    bars_.set_LargeChange(SB_VERT, shown.whole_rows(top_));
    bars_.set_Max(SB_VERT, shown.last_top());
    bars_.set_Value(SB_VERT, top_);
    const int over = std::max(widest_ - width(), 0);
    left_ = std::min(left_, over);
    bars_.set_SmallChange(SB_HORZ, scale()(kSideStep));
    bars_.set_LargeChange(SB_HORZ, width());
    bars_.set_Max(SB_HORZ, over);
    bars_.set_Value(SB_HORZ, left_);
  }
}

// --- places --------------------------------------------------------------------------------------

int USTreeView::first_row() {
  ensure_layout();
  return top_ = rows().limit_top(top_);
}

// Without root lines the first level has no column for expanders.
int USTreeView::indent_of(NodeId id) const {
  const int64_t level = store_.node(id).level - (ShowRootLines.get() ? 0 : 1);
  return static_cast<int>(std::min<int64_t>(level * metrics_.expander, kWidestIndent));
}

ItemParts USTreeView::parts_of(int row) {
  const int top = rows().y_of(row, first_row());
  const int left = right_to_left() ? left_ : -left_;
  const PixelRect whole{left, top,
                        left + std::max(width(), right_to_left() ? width() : width() + left_),
                        top + row_height_};
  const NodeId id = store_.node_at(row);
  ItemMetrics metrics = metrics_;
  if (store_.node(id).has(NodeFlag::kNoCheckBox)) metrics.check_side = 0;
  int indent = indent_of(id);
  if (indent < 0) {
    metrics.expander = 0;
    indent = 0;
  }
  if (image_number_of(id) == 0) metrics.image_width = 0;
  return layout_item(whole, metrics, indent, right_to_left());
}

NodeId USTreeView::node_at_point(int y) {
  const int top = first_row();
  return store_.node_at(rows().row_at(y, top));
}

// --- scrolling -----------------------------------------------------------------------------------

void USTreeView::show_row_of(NodeId id, bool by_user) {
  const int row = store_.row_of(id);
  if (row >= 0) scroll_to(rows().top_showing(row, first_row()), by_user);
}

void USTreeView::scroll_to(int64_t top, bool by_user) {
  const int former = first_row();
  top_ = rows().limit_top(top);
  if (top_ == former) return;
  laying_out_ = true;  // what the bar reports is what it is told here
  bars_.set_Value(SB_VERT, top_);
  laying_out_ = false;
  hide_node_tip();
  place_editor();
  redraw();
  if (by_user) raise_scroll();
}

void USTreeView::scroll_sideways(int64_t left) {
  const int former = left_;
  left_ = static_cast<int>(std::clamp<int64_t>(left, 0, std::max(widest_ - width(), 0)));
  if (left_ == former) return;
  laying_out_ = true;
  bars_.set_Value(SB_HORZ, left_);
  laying_out_ = false;
  place_editor();
  redraw();
  raise_scroll();
}

void USTreeView::take_bar(int bar) {
  if (laying_out_) return;
  const Hold hold(*this);
  if (bar == SB_HORZ) return scroll_sideways(bars_.Value(SB_HORZ));
  scroll_to(bars_.Value(SB_VERT), true);
}

void USTreeView::BarScroll(int bar) {
  if (ScrollTrack.get()) take_bar(bar);
}

void USTreeView::BarChange(int bar) {
  take_bar(bar);
}

void USTreeView::BarMouseWheel(int, long& amount) {
  if (GetKeyState(VK_SHIFT) >= 0) return;
  scroll_sideways(left_ + int64_t{amount} * scale()(kSideStep));
  amount = 0;
}

// --- border: outside the client area, so that the bars lie within it
// -------------------------------

void USTreeView::border_changed() {
  if (window() != nullptr)
    SetWindowPos(window(), nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  relayout();
}

bool USTreeView::window_message_before(UINT message, WPARAM wparam, LPARAM lparam,
                                       LRESULT& result) {
  const HWND window = this->window();
  switch (message) {
    case WM_NCCALCSIZE: {
      auto& area = *reinterpret_cast<RECT*>(lparam);  // first in either form of the message
      InflateRect(&area, -border(), -border());
      result = DefWindowProcW(window, message, wparam, lparam);
      return true;
    }
    case WM_NCPAINT:
      result = DefWindowProcW(window, message, wparam, lparam);
      paint_border();
      return true;
    default:
      return ItemControl::window_message_before(message, wparam, lparam, result);
  }
}

void USTreeView::paint_border() {
  RECT place{};
  if (border() == 0 || !GetWindowRect(window(), &place)) return;
  const HDC dc = GetWindowDC(window());
  OffsetRect(&place, -place.left, -place.top);
  const COLORREF color = high_contrast() ? GetSysColor(COLOR_WINDOWTEXT)
                         : Enabled.get() ? TranslateColor(BorderColor.get())
                                         : 0xC8D0D4;
  const HBRUSH brush = CreateSolidBrush(color);
  FrameRect(dc, &place, brush);
  DeleteObject(brush);
  ReleaseDC(window(), dc);
}

}  // namespace kestrelon
