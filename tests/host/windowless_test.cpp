// Controls without a window of their own: painting, mouse, capture and focus through the container.
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "tests/host/host_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr COLORREF kRed = RGB(200, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 200);

class WindowlessTest : public HostTest {
 protected:
  static ProbeOptions windowless(COLORREF color) {
    ProbeOptions options;
    options.windowless = true;
    options.color = color;
    return options;
  }
  static COLORREF pixel(const Form& form, int x, int y) {
    HDC hdc = GetDC(form.hwnd());
    const COLORREF color = GetPixel(hdc, x, y) & 0xFFFFFF;
    ReleaseDC(form.hwnd(), hdc);
    return color;
  }
};

TEST_F(WindowlessTest, PaintsInOrderOverTheFormAndLeavesTheRestTransparent) {
  Form form;
  form.set_ambient_back_color(RGB(10, 20, 30));
  // Each paints its left half: red up to 60, blue from 40 to 90.
  const auto red = add_probe(form, L"Red", windowless(kRed), nullptr, make_rect(20, 10, 80, 40));
  const auto blue =
      add_probe(form, L"Blue", windowless(kBlue), nullptr, make_rect(40, 10, 100, 40));
  bring_up(form);
  ASSERT_EQ(red->window(), nullptr);
  EXPECT_EQ(pixel(form, 30, 20), kRed);
  EXPECT_EQ(pixel(form, 50, 20), kBlue);
  EXPECT_EQ(pixel(form, 95, 20), RGB(10, 20, 30));
  form.order_item(*red.get(), true);
  pump_for(20);
  EXPECT_EQ(pixel(form, 50, 20), kRed);
  red->move(make_rect(20, 100, 80, 40));
  blue->set_visible(false);
  pump_for(20);
  EXPECT_EQ(pixel(form, 50, 20), RGB(10, 20, 30));
  EXPECT_EQ(pixel(form, 30, 120), kRed);
}

TEST_F(WindowlessTest, MouseGoesToWhatIsHitAndCaptureHoldsIt) {
  Form form;
  const auto below = add_probe(form, L"Below", windowless(kRed), nullptr, make_rect(0, 0, 200, 60));
  const auto above =
      add_probe(form, L"Above", windowless(kBlue), nullptr, make_rect(0, 0, 100, 60));
  bring_up(form);
  mouse_away();
  ProbeControl* low = probe_of(below);
  ProbeControl* high = probe_of(above);
  low->log.clear();
  high->log.clear();
  // The upper one is hit in its left half only.
  mouse_move(form.hwnd(), 70, 20);
  EXPECT_THAT(low->log, testing::Contains(L"move"));
  EXPECT_THAT(high->log, IsEmpty());
  mouse_move(form.hwnd(), 20, 30);
  mouse_down();
  EXPECT_EQ(GetCapture(), form.hwnd());
  low->log.clear();
  mouse_move(form.hwnd(), 150, 100);
  mouse_up();
  EXPECT_THAT(high->log, testing::Contains(L"down 20,30"));
  EXPECT_EQ(high->log.back(), L"up");
  EXPECT_THAT(low->log, IsEmpty());
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(WindowlessTest, FocusMovesBetweenWindowlessAndWindowedByClickAndTab) {
  Form form;
  const auto first = add_probe(form, L"First", windowless(kRed), nullptr, make_rect(0, 0, 60, 40));
  const auto second =
      add_probe(form, L"Second", windowless(kBlue), nullptr, make_rect(80, 0, 60, 40));
  const auto third = add_probe(form, L"Third", {}, nullptr, make_rect(160, 0, 60, 40));
  bring_up(form);
  mouse_click(form.hwnd(), 90, 10);
  EXPECT_TRUE(probe_of(second)->has_focus);
  EXPECT_FALSE(probe_of(first)->has_focus);
  type_text(L"a");
  EXPECT_EQ(probe_of(second)->log.back(), L"char");
  key_press(VK_TAB);
  EXPECT_FALSE(probe_of(second)->has_focus);
  EXPECT_TRUE(probe_of(third)->has_focus);
  key_press(VK_TAB);
  EXPECT_TRUE(probe_of(first)->has_focus);
  EXPECT_FALSE(probe_of(third)->has_focus);
  EXPECT_EQ(form.active_item(), first.get());
}

TEST_F(WindowlessTest, ARemovedControlTakesItsCaptureAndFocusAlong) {
  Form form;
  const auto site = add_probe(form, L"Red", windowless(kRed), nullptr, make_rect(0, 0, 60, 40));
  bring_up(form);
  mouse_move(form.hwnd(), 10, 10);
  mouse_down();
  ASSERT_EQ(form.captured(), site.get());
  form.remove(*site.get());
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(form.focused(), nullptr);
  mouse_move(form.hwnd(), 12, 12);
  mouse_up();
  type_text(L"a");
}

TEST_F(WindowlessTest, AContainerThatRefusesGetsAWindow) {
  Form form;
  form.allow_windowless = false;
  const auto site = add_probe(form, L"Red", windowless(kRed));
  EXPECT_NE(site->window(), nullptr);
}

}  // namespace
}  // namespace kestrelon::host
