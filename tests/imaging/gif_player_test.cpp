#include "imaging/gif_animation/gif_player.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace kestrelon::test {
namespace {

using enum AnimationAction;

// A player with a clock, and a log of what it did: the frame, "E" for the end of the loops.
class Script {
 public:
  explicit Script(std::vector<int32_t> delays = {100, 200, 300}) { player.open(std::move(delays)); }

  void act(AnimationAction action) { note(player.act(action, now)); }
  void tick(uint64_t after) {
    now += after;
    note(player.tick(now));
  }
  /// Ticks whenever the player wants one, for so many milliseconds.
  void run(uint64_t milliseconds) {
    const uint64_t end = now + milliseconds;
    for (auto wait = player.wait(now); wait && now + *wait <= end; wait = player.wait(now))
      tick(*wait);
    now = end;
  }
  std::string take() { return std::exchange(log_, {}); }

  GifPlayer player;
  uint64_t now = 1000;

 private:
  void note(GifPlayer::Outcome outcome) {
    if (outcome.frame_changed) log_ += std::to_string(player.current());
    if (outcome.loops_ended) log_ += "E";
  }
  std::string log_;
};

TEST(GifPlayer, ShowsEachFrameForItsOwnTime) {
  Script script;
  EXPECT_EQ(script.player.current(), 1);
  EXPECT_FALSE(script.player.wait(script.now));
  script.act(Play);
  EXPECT_EQ(script.take(), "");  // the first frame shows already
  script.run(99);
  EXPECT_EQ(script.take(), "");
  script.run(1);
  EXPECT_EQ(script.take(), "2");
  script.run(199);
  EXPECT_EQ(script.take(), "");
  script.run(301);
  EXPECT_EQ(script.take(), "31");
  script.run(6000);
  EXPECT_EQ(script.take(), "231231231231231231231231231231");
}

TEST(GifPlayer, NeitherSkipsNorDoublesForALateOrEarlyTick) {
  Script script;
  script.act(Play);
  script.tick(5000);
  EXPECT_EQ(script.take(), "2");
  EXPECT_EQ(script.player.wait(script.now), 200u);  // counts from the late tick
  script.tick(0);
  script.tick(150);
  EXPECT_EQ(script.take(), "");
  script.tick(40);  // within the grain of the clock
  EXPECT_EQ(script.take(), "3");
  script.tick(0);
  EXPECT_EQ(script.take(), "");
}

TEST(GifPlayer, ClampsDelays) {
  Script script(std::vector<int32_t>{0, 10, 500});
  script.act(Play);
  EXPECT_EQ(script.player.wait(script.now), 50u);  // the default minimum
  script.player.set_min_delay(120);
  script.run(50);
  EXPECT_EQ(script.player.wait(script.now), 120u);
  script.player.set_min_delay(-5);
  script.run(120);
  EXPECT_EQ(script.player.wait(script.now), 500u);
  script.run(500);
  EXPECT_EQ(script.player.wait(script.now), 10u);
  script.player.set_stepped_delay(70);
  script.run(10);
  EXPECT_EQ(script.player.wait(script.now), 70u);
  script.player.set_min_delay(80);
  script.run(70);
  EXPECT_EQ(script.player.wait(script.now), 80u);
  EXPECT_EQ(script.take(), "23123");
}

TEST(GifPlayer, EndsAfterTheLastFrameOfTheLastLoopHasShown) {
  Script script;
  script.player.set_loops(2);
  EXPECT_EQ(script.player.loops_remaining(), 2);
  script.act(Play);
  script.run(599);
  EXPECT_EQ(script.take(), "23");
  script.run(1);
  EXPECT_EQ(script.player.loops_remaining(), 1);
  script.run(599);
  EXPECT_EQ(script.take(), "123");
  script.run(1);
  EXPECT_EQ(script.take(), "E");
  EXPECT_EQ(script.player.loops_remaining(), 0);
  EXPECT_EQ(script.player.state(), Stop);
  EXPECT_EQ(script.player.current(), 3);  // the last frame stays
  script.run(5000);
  EXPECT_EQ(script.take(), "");
  script.act(Play);  // again from the first, as often
  EXPECT_EQ(script.take(), "1");
  script.run(5000);
  EXPECT_EQ(script.take(), "23123E");
}

TEST(GifPlayer, ObeysTheFiveActions) {
  Script script;
  script.player.set_loops(2);
  script.act(Pause);  // only what plays can pause
  EXPECT_EQ(script.player.state(), Stop);
  script.act(Play);
  script.run(700);
  EXPECT_EQ(script.take(), "2312");
  script.act(Play);  // plays already: the frame's time goes on
  EXPECT_EQ(script.player.wait(script.now), 200u);
  script.act(Pause);
  EXPECT_EQ(script.player.state(), Pause);
  script.run(5000);
  script.act(Pause);
  EXPECT_EQ(script.take(), "");
  script.act(Play);  // goes on where it was
  EXPECT_EQ(script.player.current(), 2);
  EXPECT_EQ(script.player.loops_remaining(), 1);
  script.act(Forward);
  EXPECT_EQ(script.player.state(), Pause);
  script.act(Forward);  // past the last
  EXPECT_EQ(script.take(), "31");
  script.act(Stop);
  EXPECT_EQ(script.take(), "1");  // told though it showed
  EXPECT_EQ(script.player.loops_remaining(), 2);
  script.act(Forward);
  script.act(Reset);
  EXPECT_EQ(script.take(), "21");
  EXPECT_EQ(script.player.state(), Play);
  EXPECT_EQ(script.player.wait(script.now), 100u);
  script.act(static_cast<AnimationAction>(5));
  script.act(static_cast<AnimationAction>(-1));
  EXPECT_EQ(script.player.state(), Play);
  script.act(Stop);
  script.run(5000);
  EXPECT_EQ(script.take(), "1");
}

TEST(GifPlayer, DoesNothingWithoutFramesAndLittleWithOne) {
  Script empty(std::vector<int32_t>{});
  for (const auto action : {Stop, Play, Pause, Forward, Reset}) empty.act(action);
  empty.tick(1000);
  EXPECT_EQ(empty.take(), "");
  EXPECT_EQ(empty.player.current(), 0);
  EXPECT_EQ(empty.player.state(), Stop);

  Script one(std::vector<int32_t>{40});
  one.act(Play);
  EXPECT_FALSE(one.player.wait(one.now));  // for ever the same
  one.player.set_loops(2);
  one.run(1000);
  EXPECT_EQ(one.take(), "1E");
  one.player.open({10, 20});
  EXPECT_EQ(one.player.loops_remaining(), 2);
  EXPECT_EQ(one.player.state(), Stop);
}

TEST(GifPlayer, CountsAnewWhenTheLoopsAreSetOnTheWay) {
  Script script;
  script.act(Play);
  script.run(700);
  script.player.set_loops(1);
  script.take();
  script.run(5000);
  EXPECT_EQ(script.take(), "3E");
  script.player.set_loops(-4);
  EXPECT_EQ(script.player.loops(), 0);
  script.act(Reset);
  script.run(1200);
  EXPECT_EQ(script.take(), "1231231");
}

}  // namespace
}  // namespace kestrelon::test
