// What handlers, the mouse and the form do to an animation that plays.
#include "tests/controls/us_animated_image_fixture.h"
//
#include <psapi.h>

#include "tests/frame/gdi_handles.h"

namespace kestrelon::host {
namespace {

TEST_F(AnimatedImageTest, StandsWhatAHandlerDoes) {
  auto site = image({20, 20, 60, 40}, kDontAnimate);
  load(*site, three());
  bring_up(form_);
  bool once = false;
  const auto in_handler = [&](const std::function<void()>& deed) {
    once = true;
    site->events()->set_handler([&once, deed](const std::wstring&, DISPPARAMS&) {
      if (std::exchange(once, false)) deed();
    });
    take_log(*site);
    act(*site, kPlay);
    pump_for(120);
  };
  in_handler([&] { act(*site, kStop); });
  EXPECT_EQ(number(*site, L"Action"), kStop);
  EXPECT_EQ(take_log(*site), (Names{L"FrameChanged(2, True)", L"FrameChanged(1, False)"}));

  in_handler([&] { load(*site, three(1, 9, 9)); });
  EXPECT_EQ(number(*site, L"ActualWidth"), 9);
  in_handler([&] { load(*site, {}); });
  EXPECT_EQ(frame(*site), 0);

  // A message box of the handler's does not hold the animation up.
  load(*site, three());
  long within = 0;
  in_handler([&] {
    const size_t before = site->events()->log().size();
    pump_for(150);
    within = static_cast<long>(site->events()->log().size() - before);
  });
  EXPECT_GE(within, 2);

  in_handler([&] { put(*site, L"AutoSize", Variant(true)); });
  EXPECT_EQ(site->bounds().right - site->bounds().left, 40);
  in_handler([&] {
    form_.remove(*site);
    site.reset();
  });
  EXPECT_FALSE(site);
}

TEST_F(AnimatedImageTest, MayBeDestroyedWhenItsLoopsEnd) {
  auto site = image();
  load(*site, three(1));
  bool gone = false;
  site->events()->set_handler([&](const std::wstring& event, DISPPARAMS&) {
    if (event != L"LoopsEnded") return;
    gone = true;
    form_.remove(*site);
    site.reset();
  });
  bring_up(form_);
  EXPECT_TRUE(pump_until([&] { return gone; }, 3000));
  pump_for(60);

  auto again = image();
  load(*again, three(1));
  bool restarted = false;
  again->events()->set_handler([&](const std::wstring& event, DISPPARAMS&) {
    if (event == L"LoopsEnded" && !std::exchange(restarted, true)) act(*again, kPlay);
  });
  const auto twice = [&] {
    const auto& log = again->events()->log();
    return std::ranges::count(log, L"LoopsEnded") == 2;
  };
  EXPECT_TRUE(pump_until(twice, 3000));
}

TEST_F(AnimatedImageTest, StopsWhenTheFormCloses) {
  const auto site = image();
  load(*site, three());
  bring_up(form_);
  events_until(*site, 1);
  const auto control = site->control_dispatch();  // held by a program beyond the form
  form_.remove(*site);
  pump_for(40);
  const long then = to_long(get_property(control.get(), L"CurrentFrame"));
  pump_for(120);
  EXPECT_EQ(to_long(get_property(control.get(), L"CurrentFrame")), then);
}

TEST_F(AnimatedImageTest, PassesTheMouseOn) {
  const auto site = image({30, 30, 90, 60}, kDontAnimate);
  load(*site, three());
  bring_up(form_);
  mouse_away();
  take_log(*site);
  mouse_move(form_.hwnd(), 40, 40);
  EXPECT_EQ(take_log(*site), Names{L"MouseMove(0, 0, 10, 10)"});
  mouse_click(form_.hwnd(), 40, 40);
  EXPECT_EQ(take_names(*site), (Names{L"MouseDown", L"MouseUp", L"Click"}));
  part_clicks();
  mouse_click(form_.hwnd(), 40, 40, MouseButton::kRight);
  EXPECT_EQ(take_names(*site), (Names{L"MouseDown", L"MouseUp"}));
  part_clicks();
  mouse_double_click(form_.hwnd(), 40, 40);
  EXPECT_EQ(take_names(*site),
            (Names{L"MouseDown", L"MouseUp", L"Click", L"MouseDown", L"MouseUp"}));
  put(*site, L"Enabled", Variant(false));
  part_clicks();
  mouse_click(form_.hwnd(), 40, 40);
  EXPECT_EQ(take_names(*site), Names{});
}

TEST_F(AnimatedImageTest, LeavesTheFocusWhereItIs) {
  const auto box = place(L"USCheckBox", {120, 30, 200, 60});
  for (const bool windowless : {true, false}) {
    SCOPED_TRACE(windowless);
    form_.allow_windowless = windowless;
    const auto site = image({30, 30, 90, 60}, kDontAnimate);
    load(*site, three());
    bring_up(form_);
    mouse_click(box->window(), 5, 5);
    ASSERT_EQ(GetFocus(), box->window());
    part_clicks();
    take_log(*site);
    mouse_click(form_.hwnd(), 40, 40);
    EXPECT_EQ(take_names(*site), (Names{L"MouseDown", L"MouseUp", L"Click"}));
    EXPECT_EQ(GetFocus(), box->window());
    key_press(VK_TAB);
    EXPECT_EQ(GetFocus(), box->window());
    part_clicks();
    form_.remove(*site);
  }
}

TEST_F(AnimatedImageTest, LeavesNothingBehindAfterHundredsOfLives) {
  bring_up(form_);
  const auto private_bytes = [] {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return static_cast<size_t>(counters.PrivateUsage);
  };
  const Bytes bytes = three(0, 64, 64);
  const auto live = [&](int times) {
    for (int i = 0; i < times; ++i) {
      const auto site = image({20, 20, 84, 84}, kDelayNone);
      load(*site, bytes);
      act(*site, kForward);
      act(*site, kPlay);
      get(*site, L"AnimatedGIF");
      form_.remove(*site);
    }
    drain_messages();
  };
  live(100);
  const size_t gdi = free_gdi_handles(), memory = private_bytes();
  const DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  live(600);
  EXPECT_GE(free_gdi_handles() + 2, gdi);
  EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), user + 2);
  EXPECT_LE(private_bytes(), memory + (1u << 20));
}

}  // namespace
}  // namespace kestrelon::host
