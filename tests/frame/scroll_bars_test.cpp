#include "frame/scroll/scroll_bars.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "base/com_win.h"
#include "frame/self_sub.h"
#include "tests/frame/test_window.h"

namespace kestrelon {
namespace {

constexpr int kBoth[] = {SB_HORZ, SB_VERT};

class ScrollBars : public testing::Test, public ScrollBarsOwner {
 public:
  ScrollBars() : engine_(std::make_unique<IAPP_ScrollBars>(*this)) {
    SetWindowLongPtrW(window_, GWL_STYLE, WS_POPUP);
    SetWindowPos(window_, nullptr, 0, 0, 200, 200, SWP_NOZORDER | SWP_FRAMECHANGED);
    engine_->set_Orientation(ScrollOrientation::kBoth);
    engine_->Create(window_);
    for (const int bar : kBoth) {
      engine_->set_Max(bar, 100);
      engine_->set_LargeChange(bar, 10);
    }
    log_.clear();
  }

  void BarMouseDown(int bar, int button) override {
    log_ += "d" + std::to_string(bar) + std::to_string(button) + " ";
  }
  void BarScroll(int bar) override { log_ += "s" + std::to_string(bar) + " "; }
  void BarChange(int bar) override {
    log_ += "c" + std::to_string(bar) + " ";
    if (on_change) on_change();
  }
  void BarMouseWheel(int bar, long& amount) override {
    log_ += "w" + std::to_string(bar) + ":" + std::to_string(amount) + " ";
    if (on_wheel) on_wheel(amount);
  }

 protected:
  std::string scroll(int bar, int code, HWND control = nullptr) {
    log_.clear();
    SendMessageW(window_, bar == SB_HORZ ? WM_HSCROLL : WM_VSCROLL, MAKEWPARAM(code, 0),
                 reinterpret_cast<LPARAM>(control));
    return log_;
  }
  std::string wheel(int delta) {
    log_.clear();
    SendMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    return log_;
  }
  SCROLLINFO info(int bar) {
    SCROLLINFO out{};
    out.cbSize = sizeof out;
    out.fMask = SIF_ALL;
    GetScrollInfo(window_, bar, &out);
    return out;
  }
  bool shown(LONG_PTR style) { return (GetWindowLongPtrW(window_, GWL_STYLE) & style) != 0; }

  TestWindow window_;
  std::string log_;
  std::function<void()> on_change;
  std::function<void(long&)> on_wheel;
  std::unique_ptr<IAPP_ScrollBars> engine_;
};

TEST_F(ScrollBars, TheLastPageEndsWhereTheInfoDoes) {
  EXPECT_EQ(info(SB_VERT).nMax, 109);
  EXPECT_EQ(engine_->Max(SB_VERT), 100);
  engine_->set_LargeChange(SB_VERT, 25);
  EXPECT_EQ(engine_->Max(SB_VERT), 100);
  engine_->set_Min(SB_VERT, -40);
  EXPECT_EQ(engine_->Max(SB_VERT), 100);
  EXPECT_EQ(engine_->Min(SB_VERT), -40);
  engine_->set_LargeChange(SB_VERT, 0);
  EXPECT_EQ(engine_->Max(SB_VERT), 100);
  engine_->set_Value(SB_VERT, 5000);
  EXPECT_EQ(engine_->Value(SB_VERT), 100);
  engine_->set_Min(SB_VERT, 300);  // beyond the maximum, which follows
  EXPECT_EQ(engine_->Max(SB_VERT), 300);
  engine_->set_Max(SB_VERT, -300);
  EXPECT_EQ(engine_->Min(SB_VERT), -300);
}

TEST_F(ScrollBars, SettersTellOnlyOfValuesThatMoved) {
  engine_->set_Value(SB_VERT, 90);
  EXPECT_EQ(log_, "c1 ");
  engine_->set_Value(SB_VERT, 90);
  engine_->set_Max(SB_VERT, 95);
  engine_->set_Value(SB_HORZ, 0);
  EXPECT_EQ(log_, "c1 ");
  engine_->set_Max(SB_VERT, 50);
  EXPECT_EQ(log_, "c1 c1 ");
  EXPECT_EQ(engine_->Value(SB_VERT), 50);
}

TEST_F(ScrollBars, EachCodeMovesItsBarAndStopsAtTheEnds) {
  for (const int bar : kBoth) {
    const std::string change = "c" + std::to_string(bar) + " ";
    engine_->set_SmallChange(bar, 3);
    EXPECT_EQ(scroll(bar, SB_LINEDOWN), change);
    EXPECT_EQ(engine_->Value(bar), 3);
    EXPECT_EQ(scroll(bar, SB_PAGEDOWN), change);
    EXPECT_EQ(engine_->Value(bar), 13);
    EXPECT_EQ(scroll(bar, SB_LINEUP), change);
    EXPECT_EQ(engine_->Value(bar), 10);
    EXPECT_EQ(scroll(bar, SB_PAGEUP), change);
    EXPECT_EQ(scroll(bar, SB_PAGEUP), "");
    EXPECT_EQ(scroll(bar, SB_LINEUP), "");
    EXPECT_EQ(engine_->Value(bar), 0);
    EXPECT_EQ(scroll(bar, SB_BOTTOM), change);
    EXPECT_EQ(engine_->Value(bar), 100);
    EXPECT_EQ(scroll(bar, SB_LINEDOWN), "");
    EXPECT_EQ(scroll(bar, SB_PAGEDOWN), "");
    EXPECT_EQ(scroll(bar, SB_TOP), change);
    EXPECT_EQ(scroll(bar, SB_ENDSCROLL), "");
    engine_->set_SmallChange(bar, LONG_MAX);
    EXPECT_EQ(scroll(bar, SB_LINEDOWN), change);
    EXPECT_EQ(engine_->Value(bar), 100);
  }
}

TEST_F(ScrollBars, TracksTheThumbWithoutAChangeUntilItIsLetGo) {
  // Inside a track the platform reports where the thumb is; outside, where the value stands.
  SetScrollPos(window_, SB_VERT, 42, FALSE);
  EXPECT_EQ(scroll(SB_VERT, SB_THUMBTRACK), "s1 ");
  EXPECT_EQ(engine_->Value(SB_VERT), 42);
  EXPECT_EQ(scroll(SB_VERT, SB_ENDSCROLL), "c1 ");
  EXPECT_EQ(scroll(SB_VERT, SB_ENDSCROLL), "");
}

TEST_F(ScrollBars, LeavesBarsThatAreControlsAlone) {
  EXPECT_EQ(scroll(SB_VERT, SB_LINEDOWN, window_), "");
  EXPECT_EQ(engine_->Value(SB_VERT), 0);
}

TEST_F(ScrollBars, TurnsTheWheelByWholeNotches) {
  engine_->set_SmallChange(SB_VERT, 2);
  EXPECT_EQ(wheel(-120), "w1:6 c1 ");
  EXPECT_EQ(engine_->Value(SB_VERT), 6);
  EXPECT_EQ(wheel(-60), "");
  EXPECT_EQ(wheel(-60), "w1:6 c1 ");
  EXPECT_EQ(wheel(240), "w1:-12 c1 ");
  EXPECT_EQ(wheel(120), "w1:-6 ");  // at the end already
  engine_->set_SmallChange(SB_VERT, LONG_MAX);
  EXPECT_EQ(wheel(-32768), "w1:2147483647 c1 ");
  EXPECT_EQ(engine_->Value(SB_VERT), 100);
}

TEST_F(ScrollBars, TheOwnerMayChangeOrRefuseATurn) {
  engine_->Create(nullptr);
  struct Below final : cSelfSub {
    int wheels = 0;
    void WindowProcHook(bool, bool&, LRESULT&, HWND, UINT, WPARAM, LPARAM, LPARAM) override {
      ++wheels;
    }
  } below;
  ASSERT_TRUE(below.sc_Subclass(window_));
  below.sc_AddMsg(window_, WM_MOUSEWHEEL, MSG_BEFORE);
  engine_->Create(window_);
  const auto reached_window = [&] {
    wheel(-120);
    return std::exchange(below.wheels, 0) == 1;
  };
  EXPECT_FALSE(reached_window());
  on_wheel = [](long& amount) { amount = 0; };
  EXPECT_TRUE(reached_window());
  EXPECT_EQ(engine_->Value(SB_VERT), 3);
  on_wheel = [](long& amount) { amount = 50; };
  EXPECT_FALSE(reached_window());
  EXPECT_EQ(engine_->Value(SB_VERT), 53);
}

TEST_F(ScrollBars, ReportsPressesOnBarsAlone) {
  const auto press = [&](UINT message, WPARAM place) {
    log_.clear();
    // A captionless point: the platform finds no bar there to track.
    SendMessageW(window_, message, place, MAKELPARAM(-1, -1));
    return log_;
  };
  EXPECT_EQ(press(WM_NCRBUTTONDOWN, HTVSCROLL), "d12 ");
  EXPECT_EQ(press(WM_NCRBUTTONDOWN, HTHSCROLL), "d02 ");
  EXPECT_EQ(press(WM_NCMBUTTONDOWN, HTVSCROLL), "d14 ");
  EXPECT_EQ(press(WM_NCRBUTTONDOWN, HTCLIENT), "");
  EXPECT_EQ(press(WM_NCLBUTTONDOWN, HTBORDER), "");
}

TEST_F(ScrollBars, ShowsTheBarsThatExistAndAreVisible) {
  EXPECT_TRUE(shown(WS_HSCROLL));
  EXPECT_TRUE(shown(WS_VSCROLL));
  engine_->set_Orientation(ScrollOrientation::kVertical);
  EXPECT_FALSE(shown(WS_HSCROLL));
  engine_->set_Max(SB_HORZ, 1000);  // a new range does not bring it back
  EXPECT_FALSE(shown(WS_HSCROLL));
  engine_->set_Visible(SB_VERT, false);
  engine_->set_Max(SB_VERT, 1000);
  EXPECT_FALSE(shown(WS_VSCROLL));
  engine_->set_Visible(SB_VERT, true);
  EXPECT_TRUE(shown(WS_VSCROLL));
  engine_->set_Orientation(ScrollOrientation::kNone);
  EXPECT_FALSE(shown(WS_VSCROLL));
}

TEST_F(ScrollBars, FallsBackToPlainBarsWhereThereAreNoFlatOnes) {
  engine_->SetFlat(true);
  EXPECT_EQ(engine_->CanBeFlat(), engine_->Style() == ScrollStyle::kFlat);
  EXPECT_EQ(scroll(SB_VERT, SB_PAGEDOWN), "c1 ");
  EXPECT_EQ(engine_->Max(SB_VERT), 100);
  engine_->SetFlat(false);
  EXPECT_FALSE(engine_->CanBeFlat());
  EXPECT_EQ(engine_->Value(SB_VERT), 10);
}

TEST_F(ScrollBars, LetsGoOfAFormerWindowAndSurvivesDeadOnes) {
  const LONG_PTR subclassed = GetWindowLongPtrW(window_, GWLP_WNDPROC);
  {
    TestWindow other;
    engine_->Create(other);
    EXPECT_NE(GetWindowLongPtrW(window_, GWLP_WNDPROC), subclassed);
    EXPECT_EQ(scroll(SB_VERT, SB_PAGEDOWN), "");
  }
  engine_->set_Value(SB_VERT, 5);
  EXPECT_EQ(engine_->Value(SB_VERT), 0);
  EXPECT_THROW(engine_->Create(reinterpret_cast<HWND>(0x7FFF0)), ComError);
  EXPECT_EQ(engine_->hWnd(), nullptr);
  EXPECT_EQ(engine_->Max(SB_VERT), 0);
  engine_->Create(window_);
  EXPECT_EQ(scroll(SB_VERT, SB_PAGEDOWN), "c1 ");
}

TEST_F(ScrollBars, MayBeDestroyedInItsOwnEvents) {
  on_change = [&] { engine_.reset(); };
  EXPECT_EQ(wheel(-120), "w1:3 c1 ");
  EXPECT_EQ(engine_, nullptr);
  EXPECT_EQ(wheel(-120), "");
  engine_ = std::make_unique<IAPP_ScrollBars>(*this);
  engine_->Create(window_);
  on_wheel = [&](long&) { engine_.reset(); };
  EXPECT_EQ(wheel(-120), "w1:3 ");
}

}  // namespace
}  // namespace kestrelon
