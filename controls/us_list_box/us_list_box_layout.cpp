// Heights, rows, scroll bars and the border.
#include <algorithm>

#include "controls/us_list_box/us_list_box.h"
#include "frame/screen.h"
#include "frame/translate_color.h"
#include "lists/column_widths.h"

namespace kestrelon {
namespace {

constexpr int kCheckSide = 13;  // at 96 dots an inch
constexpr int kSideStep = 16;   // of a press on the horizontal bar's arrows

}  // namespace

// --- measures ------------------------------------------------------------------------------------

int USListBox::border() const {
  return BorderStyle.get() == Fixed_Single ? 1 : 0;
}

void USListBox::measure_items() {
  metrics_ = item_metrics(scale().dpi(), line_height());
  if (CheckBoxes.get()) metrics_.check_side = scale()(kCheckSide);
  const SIZE image = image_size();
  metrics_.image_width = scale()(static_cast<int>(image.cx));
  metrics_.image_height = scale()(static_cast<int>(image.cy));
  columns_ = parse_column_widths(ColumnWidths.get(), scale().dpi());
  const int wanted = static_cast<int>(std::clamp(ItemHeight.get(), 0L, 1000L));
  row_height_ = wanted > 0 ? scale()(wanted) : item_height(metrics_);
  wrapped_.clear();
}

// Heights of wrapped texts are measured when their rows come near the view.
int USListBox::height(int row) const {
  if (!WordWrap.get() || model_.is_virtual()) return row_height_;
  const int index = model_.index_of_row(row);
  const auto [known, fresh] = wrapped_.try_emplace(index, row_height_);
  if (!fresh) return known->second;
  const PixelRect whole{0, 0, width(), row_height_};
  const PixelRect area = layout_item(whole, metrics_, 0, false).text;
  const HDC dc = GetDC(nullptr);
  const HGDIOBJ displaced = SelectObject(dc, const_cast<USListBox*>(this)->plain_font());
  const int text = wrapped_height(dc, model_.store().text(index), area.right - area.left);
  SelectObject(dc, displaced);
  ReleaseDC(nullptr, dc);
  return known->second = std::max(row_height_, text + 2 * metrics_.vertical);
}

void USListBox::lay_out() {
  if (laying_out_) return;
  laying_out_ = true;
  measure_items();
  virtual_.set_page(view_height() / row_height_ + 2);
  keep_integral_height();
  top_ = rows().limit_top(top_);
  lay_out_bars();
  place_editor();
  laying_out_ = false;
}

void USListBox::keep_integral_height() {
  const int over = view_height() % row_height_;
  RECT whole{};
  if (!IntegralHeight.get() || WordWrap.get() || over == 0 || view_height() < row_height_ ||
      window() == nullptr || !GetWindowRect(window(), &whole))
    return;
  request_size(static_cast<int>(whole.right - whole.left),
               static_cast<int>(whole.bottom - whole.top) - over);
}

void USListBox::lay_out_bars() {
  if (bars_.hWnd() == nullptr) return;
  const auto wanted = static_cast<ScrollOrientation>(ScrollBars.get());
  if (bars_.Orientation() != wanted) bars_.set_Orientation(wanted);
  // A bar that comes takes room from the other one: twice is enough.
  for (int i = 0; i < 2; ++i) {
    const RowWindow shown = rows();
    bars_.set_LargeChange(SB_VERT, shown.whole_rows(top_));
    bars_.set_Max(SB_VERT, shown.last_top());
    bars_.set_Value(SB_VERT, top_);
    const int over = WordWrap.get() || !columns_.empty() ? 0 : std::max(widest_ - width(), 0);
    left_ = std::min(left_, over);
    bars_.set_SmallChange(SB_HORZ, scale()(kSideStep));
    bars_.set_LargeChange(SB_HORZ, width());
    bars_.set_Max(SB_HORZ, over);
    bars_.set_Value(SB_HORZ, left_);
  }
}

// --- places --------------------------------------------------------------------------------------

int USListBox::first_row() {
  ensure_layout();
  return top_ = rows().limit_top(top_);
}

PixelRect USListBox::row_rect(int row) {
  const int top = rows().y_of(row, first_row());
  const int left = right_to_left() ? left_ : -left_;
  return {left, top, left + std::max(width(), right_to_left() ? width() : width() + left_),
          top + height(row)};
}

ItemParts USListBox::parts_of(int row) {
  return layout_item(row_rect(row), metrics_, 0, right_to_left());
}

int USListBox::item_at(int y) {
  const int top = first_row();
  return model_.index_of_row(rows().row_at(y, top));
}

long USListBox::hit_test(float x, float y) {
  if (x < 0 || y < 0 || x >= static_cast<float>(width()) || y >= static_cast<float>(view_height()))
    return -1;
  return item_at(static_cast<int>(y));
}

// --- scrolling -----------------------------------------------------------------------------------

long USListBox::top_index() {
  return model_.index_of_row(first_row());
}

void USListBox::set_top_index(long index) {
  if (model_.has(static_cast<int>(index)))
    scroll_to(model_.row_of_index(static_cast<int>(index)), false);
}

void USListBox::ensure_visible(long index) {
  show_item(static_cast<int>(index), false);
}

void USListBox::show_item(int index, bool by_user) {
  if (!model_.shows(index)) return;
  scroll_to(rows().top_showing(model_.row_of_index(index), first_row()), by_user);
}

void USListBox::scroll_to(int64_t top, bool by_user) {
  const int former = first_row();
  top_ = rows().limit_top(top);
  if (top_ == former) return;
  laying_out_ = true;  // what the bar reports is what it is told here
  bars_.set_Value(SB_VERT, top_);
  laying_out_ = false;
  hide_item_tip();
  place_editor();
  redraw();
  if (by_user) raise_scroll();
}

void USListBox::scroll_sideways(int64_t left) {
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

void USListBox::take_bar(int bar) {
  if (laying_out_) return;
  const Hold hold(*this);
  if (bar == SB_HORZ) return scroll_sideways(bars_.Value(SB_HORZ));
  scroll_to(bars_.Value(SB_VERT), true);
}

void USListBox::BarScroll(int bar) {
  if (ScrollTrack.get()) take_bar(bar);
}

void USListBox::BarChange(int bar) {
  take_bar(bar);
}

void USListBox::BarMouseWheel(int, long& amount) {
  if (GetKeyState(VK_SHIFT) >= 0) return;
  scroll_sideways(left_ + int64_t{amount} * scale()(kSideStep));
  amount = 0;
}

// --- border: outside the client area, so that the bars lie within it
// -------------------------------

void USListBox::border_changed() {
  if (window() != nullptr)
    SetWindowPos(window(), nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  relayout();
}

bool USListBox::window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
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
    case WM_MOUSEHWHEEL:
      scroll_sideways(left_ + GET_WHEEL_DELTA_WPARAM(wparam) / WHEEL_DELTA * scale()(kSideStep));
      return true;
    default:
      return ItemControl::window_message_before(message, wparam, lparam, result);
  }
}

void USListBox::paint_border() {
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
