// Playing: what shows when, and which events come.
#include "tests/controls/us_animated_image_fixture.h"

namespace kestrelon::host {
namespace {

TEST_F(AnimatedImageTest, TellsOfTheFileItLoaded) {
  const auto site = image();
  EXPECT_EQ(number(*site, L"FrameCount"), 0);
  EXPECT_EQ(frame(*site), 0);
  ASSERT_TRUE(load(*site, three(7)));
  EXPECT_EQ(number(*site, L"FrameCount"), 3);
  EXPECT_EQ(frame(*site), 1);
  EXPECT_EQ(number(*site, L"ActualWidth"), 4);
  EXPECT_EQ(number(*site, L"ActualHeight"), 2);
  EXPECT_EQ(number(*site, L"Loops"), 7);
  EXPECT_EQ(number(*site, L"LoopsRemaining"), 7);
  put(*site, L"FrameCount", Variant(9L));
  EXPECT_EQ(number(*site, L"FrameCount"), 3);
  EXPECT_EQ(middle(*site), kRed);
  const std::wstring sample = L"Z:" KESTRELON_SOURCE_DIR L"/resources/samples/delivery.gif";
  EXPECT_TRUE(call(*site, L"LoadAnimatedGIF_File", {Variant(sample)}));
  EXPECT_EQ(number(*site, L"FrameCount"), 8);
  EXPECT_EQ(number(*site, L"ActualWidth"), 96);
}

TEST_F(AnimatedImageTest, AnswersFalseToBadInputAndShowsNothing) {
  const auto site = image();
  bring_up(form_);
  const Bytes good = three();
  const Bytes cut(good.begin(), good.end() - 1);
  const Bytes png = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
  for (const Bytes& bad : {cut, png, Bytes{}}) {
    ASSERT_TRUE(load(*site, good));
    EXPECT_FALSE(load(*site, bad));
    EXPECT_EQ(number(*site, L"FrameCount"), 0);
    EXPECT_EQ(frame(*site), 0);
    EXPECT_EQ(number(*site, L"ActualWidth"), 0);
    EXPECT_EQ(middle(*site), kBehindPixel);
    EXPECT_FALSE(to_object(get(*site, L"AnimatedGIF")));
  }
  ASSERT_TRUE(load(*site, good));
  EXPECT_FALSE(call(*site, L"LoadAnimatedGIF_File", {Variant(L"C:\\nada\\nada.gif")}));
  EXPECT_EQ(number(*site, L"FrameCount"), 0);
  take_log(*site);
  for (const long action : {kStop, kPlay, kPause, kForward, kReset, 5L, -1L}) act(*site, action);
  pump_for(60);
  EXPECT_EQ(take_log(*site), Names{});
  EXPECT_EQ(number(*site, L"Action"), kStop);
}

TEST_F(AnimatedImageTest, ShowsTheFramesInTurnAndTellsOfEach) {
  const auto site = image();
  load(*site, three());
  std::vector<uint32_t> seen;
  site->events()->set_handler(
      [&](const std::wstring&, DISPPARAMS&) { seen.push_back(middle(*site)); });
  bring_up(form_);
  pump_until([&] { return seen.size() >= 6; }, 3000);
  act(*site, kPause);
  seen.resize(6);
  EXPECT_EQ(seen, (std::vector<uint32_t>{kGreen, kBlue, kRed, kGreen, kBlue, kRed}));
  Names log = take_log(*site);
  log.resize(4);
  EXPECT_EQ(log, (Names{L"FrameChanged(2, True)", L"FrameChanged(3, True)",
                        L"FrameChanged(1, True)", L"FrameChanged(2, True)"}));
}

TEST_F(AnimatedImageTest, BeginsWhenItsDelayModeSays) {
  bring_up(form_);
  const auto at_once = image({20, 20, 60, 40}, kDelayNone, true);
  const auto shown = image({80, 20, 120, 40}, kDelayStartup, true);
  const auto never = image({140, 20, 180, 40}, kDontAnimate, true);
  for (const auto& site : {at_once, shown, never}) load(*site, three());
  EXPECT_FALSE(events_until(*at_once, 1).empty());
  EXPECT_EQ(take_log(*shown), Names{});
  EXPECT_EQ(number(*shown, L"Action"), kStop);
  for (const auto& site : {shown, never}) put_property(site->dispatch(), L"Visible", Variant(true));
  EXPECT_EQ(events_until(*shown, 1)[0], L"FrameChanged(2, True)");
  EXPECT_EQ(take_log(*never), Names{});
  EXPECT_EQ(frame(*never), 1);
  act(*never, kPlay);
  EXPECT_EQ(events_until(*never, 1)[0], L"FrameChanged(2, True)");
  // A file loaded after the first showing plays at once; showing again starts nothing.
  load(*shown, three());
  take_log(*shown);
  EXPECT_EQ(events_until(*shown, 1)[0], L"FrameChanged(2, True)");
  act(*shown, kStop);
  for (const bool visible : {false, true})
    put_property(shown->dispatch(), L"Visible", Variant(visible));
  EXPECT_EQ(number(*shown, L"Action"), kStop);
}

TEST_F(AnimatedImageTest, RunsInNoDesigner) {
  form_.set_user_mode(false);
  const auto site = image({20, 20, 60, 40}, kDelayNone);
  load(*site, three());
  bring_up(form_);
  pump_for(100);
  EXPECT_EQ(take_log(*site), Names{});
  EXPECT_EQ(middle(*site), kRed);
  form_.set_user_mode(true);
  EXPECT_FALSE(events_until(*site, 1).empty());
}

TEST_F(AnimatedImageTest, PlaysForAControlThatIsNew) {
  const auto site = place_new(L"USAnimatedImage", {20, 20, 60, 40});
  put(*site, L"MinFrameDelay", Variant(10L));
  bring_up(form_);
  load(*site, three());
  EXPECT_EQ(events_until(*site, 1)[0], L"FrameChanged(2, True)");
}

TEST_F(AnimatedImageTest, EndsAfterItsLoops) {
  const auto site = image();
  load(*site, three(2));
  bring_up(form_);
  const auto ended = [&] {
    return !site->events()->log().empty() && site->events()->log().back() == L"LoopsEnded";
  };
  EXPECT_TRUE(pump_until(ended, 3000));
  EXPECT_EQ(take_log(*site),
            (Names{L"FrameChanged(2, True)", L"FrameChanged(3, True)", L"FrameChanged(1, True)",
                   L"FrameChanged(2, True)", L"FrameChanged(3, True)", L"LoopsEnded"}));
  EXPECT_EQ(number(*site, L"LoopsRemaining"), 0);
  EXPECT_EQ(number(*site, L"Action"), kStop);
  EXPECT_EQ(middle(*site), kBlue);
  pump_for(60);
  EXPECT_EQ(take_log(*site), Names{});
  // A number that is set wins over the file's, also for the files to come.
  put(*site, L"Loops", Variant(1L));
  load(*site, three(5));
  EXPECT_EQ(number(*site, L"Loops"), 1);
  EXPECT_TRUE(pump_until(ended, 3000));
  EXPECT_EQ(take_log(*site).size(), 3u);
}

TEST_F(AnimatedImageTest, ObeysItsActions) {
  const auto site = image({20, 20, 60, 40}, kDontAnimate);
  load(*site, three());
  bring_up(form_);
  act(*site, kPause);  // only what plays
  EXPECT_EQ(number(*site, L"Action"), kStop);
  act(*site, kForward);
  EXPECT_EQ(middle(*site), kGreen);
  EXPECT_EQ(number(*site, L"Action"), kPause);
  act(*site, kForward);
  act(*site, kForward);  // past the last
  act(*site, kStop);
  EXPECT_EQ(take_log(*site), (Names{L"FrameChanged(2, False)", L"FrameChanged(3, False)",
                                    L"FrameChanged(1, False)", L"FrameChanged(1, False)"}));
  act(*site, kPlay);
  EXPECT_EQ(events_until(*site, 1)[0], L"FrameChanged(2, True)");
  act(*site, kPause);
  take_log(*site);
  const long paused_at = frame(*site);
  pump_for(80);
  EXPECT_EQ(frame(*site), paused_at);
  EXPECT_EQ(take_log(*site), Names{});
  act(*site, kReset);
  EXPECT_EQ(number(*site, L"Action"), kPlay);
  const Names log = events_until(*site, 2);
  ASSERT_GE(log.size(), 2u);
  EXPECT_EQ(log[0], L"FrameChanged(1, False)");
  EXPECT_EQ(log[1], L"FrameChanged(2, True)");
}

TEST_F(AnimatedImageTest, KeepsItsTimes) {
  const auto site = image({20, 20, 60, 40}, kDontAnimate);
  Bytes slow = test::screen_of(1, 1);
  for (const uint32_t hundredths : {8u, 16u})
    slow = slow + test::control(0, 0, hundredths) + test::frame_at(0, 0, 1, 1, {1});
  load(*site, slow + test::kTrailer);
  bring_up(form_);
  std::vector<DWORD> times;
  site->events()->set_handler(
      [&](const std::wstring&, DISPPARAMS&) { times.push_back(GetTickCount()); });
  const auto run = [&](size_t count) {
    times.assign(1, GetTickCount());
    act(*site, kReset);
    times.pop_back();  // the event of the reset itself stays as the start
    EXPECT_TRUE(pump_until([&] { return times.size() > count; }, 5000));
    act(*site, kPause);
    return times[count] - times[0];
  };
  // Lower bounds only, less the grain of the clock for each tick: a busy machine may be late.
  EXPECT_GE(run(4), 2u * (80 + 160) - 4 * 16);
  put(*site, L"MinFrameDelay", Variant(200L));
  EXPECT_GE(run(2), 2u * 200 - 2 * 16);
  put(*site, L"MinFrameDelay", Variant(10L));
  put(*site, L"SteppedDelay", Variant(300L));
  EXPECT_GE(run(1), 300u - 16);
}

}  // namespace
}  // namespace kestrelon::host
