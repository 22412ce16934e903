// Controls that stand on another control, with windows of their own and without.
#include <gtest/gtest.h>

#include <functional>

#include "host/form.h"
#include "host/input.h"
#include "host/message_loop.h"
#include "tests/frame/probe_control.h"

namespace kestrelon {
namespace {

using host::drain_messages;

constexpr COLORREF kGreen = RGB(0, 255, 0), kRed = RGB(255, 0, 0);

// A control of one colour that counts the presses it gets.
class Plate final : public ProbeControl {
 public:
  Plate(DWORD extra_status, bool windowless, COLORREF color)
      : ProbeControl(traits(extra_status, windowless)), color_(color) {}

  int presses = 0;
  std::function<void()> on_press;

  const ClassInfo& class_info() const override {
    static const ClassInfo kInfo{L"Plate", GUID{0x5e6a3d11, 0, 0, {1}}, GUID{0x5e6a3d12, 0, 0, {1}},
                                 nullptr};
    return kInfo;
  }

 private:
  static ControlTraits traits(DWORD extra_status, bool windowless) {
    ControlTraits traits;
    traits.misc_status |= extra_status;
    traits.windowless = windowless;
    return traits;
  }
  void resized() override {
    surface().clear(color_);
    surface_changed();
  }
  void mouse_down(short, short, float, float) override {
    ++presses;
    const auto handler = on_press;
    if (handler) handler();
  }

  COLORREF color_;
};

class SimpleFrameTest : public testing::Test {
 protected:
  SimpleFrameTest() {
    OleInitialize(nullptr);
    form_ = std::make_unique<host::Form>();
    form_->show();
    frame_site_ = add(frame_, {20, 20, 220, 120});
    drain_messages();
  }
  ~SimpleFrameTest() override {
    form_.reset();
    drain_messages();
    OleUninitialize();
  }

  ComPtr<host::ControlSite> add(Plate* plate, const RECT& place,
                                host::ContainerWindow* box = nullptr) {
    ComPtr<IUnknown> life;
    life.attach(plate->own_unknown());
    return form_->add_object(life, L"", place, box);
  }
  COLORREF pixel(HWND window, int x, int y) {
    drain_messages();
    UpdateWindow(window);
    const HDC dc = GetDC(window);
    const COLORREF color = GetPixel(dc, x, y);
    ReleaseDC(window, dc);
    return color;
  }

  std::unique_ptr<host::Form> form_;
  Plate* frame_ = new Plate(OLEMISC_SIMPLEFRAME, false, kGreen);
  ComPtr<host::ControlSite> frame_site_;
};

TEST_F(SimpleFrameTest, CarriesTheWindowsOfControls) {
  Plate* const child = new Plate(0, false, kRed);
  const auto site = add(child, {10, 10, 60, 40}, frame_site_->box());
  ASSERT_NE(child->hwnd(), nullptr);
  EXPECT_EQ(GetParent(child->hwnd()), frame_->hwnd());
  frame_site_->set_visible(false);
  EXPECT_FALSE(IsWindowVisible(child->hwnd()));
  frame_site_->set_visible(true);
  EXPECT_TRUE(IsWindowVisible(child->hwnd()));
  EXPECT_EQ(pixel(frame_->hwnd(), 5, 5), kGreen);
  EXPECT_EQ(pixel(child->hwnd(), 5, 5), kRed);
  frame_site_->deactivate();
  EXPECT_EQ(child->hwnd(), nullptr);
  frame_site_->activate();
  ASSERT_NE(child->hwnd(), nullptr);
  EXPECT_EQ(GetParent(child->hwnd()), frame_->hwnd());
  form_->remove(*frame_site_.get());
  EXPECT_TRUE(form_->all_items().empty());
}

TEST_F(SimpleFrameTest, DrawsAndFeedsControlsWithoutWindows) {
  Plate* const child = new Plate(0, true, kRed);
  const auto site = add(child, {10, 10, 60, 40}, frame_site_->box());
  ASSERT_EQ(child->hwnd(), nullptr);
  EXPECT_EQ(pixel(frame_->hwnd(), 20, 20), kRed);
  EXPECT_EQ(pixel(frame_->hwnd(), 5, 5), kGreen);
  host::mouse_click(frame_->hwnd(), 20, 20);
  EXPECT_EQ(child->presses, 1);
  EXPECT_EQ(frame_->presses, 0);
  host::mouse_click(frame_->hwnd(), 100, 80);
  EXPECT_EQ(child->presses, 1);
  EXPECT_EQ(frame_->presses, 1);
  site->move({100, 10, 150, 40});
  EXPECT_EQ(pixel(frame_->hwnd(), 20, 20), kGreen);
  EXPECT_EQ(pixel(frame_->hwnd(), 120, 20), kRed);
}

TEST_F(SimpleFrameTest, SurvivesAHandlerThatTakesTheFrameAway) {
  Plate* const child = new Plate(0, true, kRed);
  add(child, {10, 10, 60, 40}, frame_site_->box());
  child->on_press = [this] { form_->remove(*frame_site_.get()); };
  host::mouse_click(frame_->hwnd(), 20, 20);
  drain_messages();
  EXPECT_TRUE(form_->all_items().empty());
}

TEST_F(SimpleFrameTest, KeepsTheFocusOutOfADisabledFrame) {
  Plate* const outside = new Plate(0, false, kRed);
  const auto outer = add(outside, {300, 20, 350, 40});
  Plate* const child = new Plate(0, false, kRed);
  const auto site = add(child, {10, 10, 60, 40}, frame_site_->box());
  EnableWindow(frame_->hwnd(), FALSE);
  outer->take_focus();
  form_->move_focus(false);
  EXPECT_EQ(form_->active_item(), outer.get());
  EnableWindow(frame_->hwnd(), TRUE);
  frame_site_->tab_stop = false;
  form_->move_focus(false);
  EXPECT_EQ(form_->active_item(), site.get());
}

}  // namespace
}  // namespace kestrelon
