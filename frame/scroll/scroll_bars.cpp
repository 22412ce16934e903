// Window, styles and values of the engine; its messages are in scroll_bars_messages.cpp.
#include "frame/scroll/scroll_bars.h"

#include <algorithm>
#include <utility>

namespace kestrelon {
namespace {

constexpr UINT kMessages[] = {WM_HSCROLL,       WM_VSCROLL,       WM_MOUSEWHEEL,
                              WM_NCLBUTTONDOWN, WM_NCMBUTTONDOWN, WM_NCRBUTTONDOWN};
constexpr int kBars[] = {SB_HORZ, SB_VERT};
constexpr int kDefaultWheelLines = 3;

// A setting of "one screen at a time" reads as a negative number here.
int wheel_lines() {
  int lines = 0;
  if (!SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0) || lines < 1)
    return kDefaultWheelLines;
  return lines;
}

}  // namespace

void IAPP_ScrollBars::Create(HWND hWnd) {
  release();
  if (hWnd == nullptr) return;
  window_ = hWnd;
  platform_ = PlatformBars(hWnd);
  wheel_lines_ = wheel_lines();
  try {
    apply_style();
    for (const UINT message : kMessages) AttachMessage(this, hWnd, message);
  } catch (...) {
    release();
    throw;
  }
  for (const int bar : kBars) bars_[bar].reported = Value(bar);
}

void IAPP_ScrollBars::release() {
  const HWND former = std::exchange(window_, nullptr);
  if (former == nullptr) return;
  for (const UINT message : kMessages) DetachMessage(this, former, message);
  platform_.make_plain();
  wheel_.reset();
}

// --- styles --------------------------------------------------------------------------------------

void IAPP_ScrollBars::apply_style() {
  if (window_ == nullptr) return;
  if (style_ == ScrollStyle::kRegular || !platform_.make_flat(static_cast<int>(style_))) {
    platform_.make_plain();
    style_ = ScrollStyle::kRegular;
  }
  for (const int bar : kBars) apply_bar(bar);
}

bool IAPP_ScrollBars::exists(int bar) const {
  switch (orientation_) {
    case ScrollOrientation::kBoth:
      return true;
    case ScrollOrientation::kHorizontal:
      return bar == SB_HORZ;
    case ScrollOrientation::kVertical:
      return bar == SB_VERT;
    default:
      return false;
  }
}

void IAPP_ScrollBars::apply_bar(int bar) {
  if (window_ == nullptr) return;
  const bool shown = exists(bar) && bars_[bar].visible;
  platform_.show(bar, shown);
  if (shown) platform_.enable(bar, bars_[bar].enabled);
}

void IAPP_ScrollBars::set_Enabled(int bar, bool value) {
  bars_[index(bar)].enabled = value;
  apply_bar(index(bar));
}

void IAPP_ScrollBars::set_Visible(int bar, bool value) {
  bars_[index(bar)].visible = value;
  apply_bar(index(bar));
}

void IAPP_ScrollBars::set_Orientation(ScrollOrientation value) {
  orientation_ = value;
  for (const int bar : kBars) apply_bar(bar);
}

void IAPP_ScrollBars::set_Style(ScrollStyle value) {
  style_ = value;
  apply_style();
}

// --- values --------------------------------------------------------------------------------------

SCROLLINFO IAPP_ScrollBars::info(int bar, UINT mask) const {
  SCROLLINFO out{};
  out.cbSize = sizeof out;
  out.fMask = mask;
  if (window_ == nullptr) return out;
  if (platform_.get_info(index(bar), out)) return out;
  SCROLLINFO none{};  // a bar that was never shown has no info yet
  none.cbSize = sizeof none;
  return none;
}

void IAPP_ScrollBars::set_info(int bar, SCROLLINFO info, UINT mask) {
  if (window_ == nullptr) return;
  bar = index(bar);
  info.cbSize = sizeof info;
  info.fMask = mask;
  const bool redraw = exists(bar) && bars_[bar].visible;
  platform_.set_info(bar, info, redraw);
  // A new range brings a hidden bar back and wakes its arrows.
  if ((mask & (SIF_RANGE | SIF_PAGE)) != 0 && (!redraw || !bars_[bar].enabled)) apply_bar(bar);
}

long IAPP_ScrollBars::Min(int bar) const {
  return info(bar, SIF_RANGE).nMin;
}

long IAPP_ScrollBars::Max(int bar) const {
  const SCROLLINFO now = info(bar, SIF_RANGE | SIF_PAGE);
  return max_of_info(now.nMax, static_cast<int32_t>(now.nPage));
}

long IAPP_ScrollBars::Value(int bar) const {
  return info(bar, SIF_POS).nPos;
}

long IAPP_ScrollBars::LargeChange(int bar) const {
  return static_cast<long>(info(bar, SIF_PAGE).nPage);
}

ScrollRange IAPP_ScrollBars::range(int bar) const {
  return {static_cast<int32_t>(Min(bar)), static_cast<int32_t>(Max(bar))};
}

void IAPP_ScrollBars::set_range(int bar, int32_t min, int32_t max, int32_t page) {
  SCROLLINFO next{};
  next.nMin = min;
  next.nMax = info_end(max, page);
  next.nPage = static_cast<UINT>(std::max(page, 0));
  set_info(bar, next, SIF_RANGE | SIF_PAGE);
  report(index(bar));
}

void IAPP_ScrollBars::set_Min(int bar, long value) {
  set_range(bar, value, std::max(value, Max(bar)), LargeChange(bar));
}

void IAPP_ScrollBars::set_Max(int bar, long value) {
  set_range(bar, std::min(value, Min(bar)), value, LargeChange(bar));
}

void IAPP_ScrollBars::set_LargeChange(int bar, long value) {
  set_range(bar, Min(bar), Max(bar), value);
}

void IAPP_ScrollBars::set_Value(int bar, long value) {
  SCROLLINFO next{};
  next.nPos = range(bar).limit(value);
  set_info(bar, next, SIF_POS);
  report(index(bar));
}

}  // namespace kestrelon
