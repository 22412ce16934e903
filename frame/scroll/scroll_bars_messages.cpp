// Messages of the engine's window.
#include "frame/scroll/scroll_bars.h"

namespace kestrelon {
namespace {

constexpr int kLeft = 1, kRight = 2, kMiddle = 4;

int button_of(UINT message) {
  switch (message) {
    case WM_NCLBUTTONDOWN:
      return kLeft;
    case WM_NCRBUTTONDOWN:
      return kRight;
    default:
      return kMiddle;
  }
}

}  // namespace

LRESULT IAPP_ScrollBars::WindowProc(HWND, UINT uMsg, WPARAM wParam, LPARAM lParam) {
  switch (uMsg) {
    case WM_HSCROLL:
    case WM_VSCROLL:
      // With a handle the message comes from a control of its own, not from the window's bar.
      if (lParam == 0) scrolled(uMsg == WM_HSCROLL ? SB_HORZ : SB_VERT, LOWORD(wParam));
      break;
    case WM_MOUSEWHEEL:
      wheel_turned(wParam);
      break;
    default:
      if (wParam == HTVSCROLL) owner_.BarMouseDown(SB_VERT, button_of(uMsg));
      if (wParam == HTHSCROLL) owner_.BarMouseDown(SB_HORZ, button_of(uMsg));
      break;
  }
  return 0;
}

void IAPP_ScrollBars::scrolled(int bar, int code) {
  const ScrollRange ends = range(bar);
  const auto value = static_cast<int32_t>(Value(bar));
  const int64_t small = bars_[bar].small_change;
  const int64_t large = LargeChange(bar);
  SCROLLINFO next{};
  switch (code) {
    case SB_LINEUP:
      next.nPos = ends.moved(value, -small);
      break;
    case SB_LINEDOWN:
      next.nPos = ends.moved(value, small);
      break;
    case SB_PAGEUP:
      next.nPos = ends.moved(value, -large);
      break;
    case SB_PAGEDOWN:
      next.nPos = ends.moved(value, large);
      break;
    case SB_THUMBTRACK:
      // The message itself carries 16 bits of the position, the scroll info all of them.
      next.nPos = ends.limit(info(bar, SIF_TRACKPOS).nTrackPos);
      set_info(bar, next, SIF_POS);
      owner_.BarScroll(bar);
      return;
    case SB_TOP:
      next.nPos = ends.min;
      break;
    case SB_BOTTOM:
      next.nPos = ends.limit(ends.max);
      break;
    default:
      report(bar);
      return;
  }
  set_info(bar, next, SIF_POS);
  report(bar);
}

void IAPP_ScrollBars::wheel_turned(WPARAM wparam) {
  const int notches = wheel_.add(static_cast<short>(HIWORD(wparam)));
  if (notches != 0) {
    constexpr ScrollRange kLong{INT32_MIN, INT32_MAX};
    // The amount of one step is limited first: the product of all three could leave 64 bits.
    const int64_t one = kLong.limit(int64_t{notches} * wheel_lines_);
    long amount = kLong.limit(one * bars_[SB_VERT].small_change);
    const std::weak_ptr<bool> life = life_;
    owner_.BarMouseWheel(SB_VERT, amount);
    if (life.expired() || amount == 0) return;
    SCROLLINFO next{};
    next.nPos = range(SB_VERT).moved(static_cast<int32_t>(Value(SB_VERT)), amount);
    set_info(SB_VERT, next, SIF_POS);
    report(SB_VERT);
    if (life.expired()) return;
  }
  // Less than a notch is handled too: it is kept until it makes one.
  response_ = eMsgResponse::kConsume;
}

void IAPP_ScrollBars::report(int bar) {
  const long value = Value(bar);
  if (value == bars_[bar].reported) return;
  bars_[bar].reported = value;
  owner_.BarChange(bar);
}

}  // namespace kestrelon
