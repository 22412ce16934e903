#include "tests/controls/us_alpha_image_fixture.h"

namespace kestrelon::host {
namespace {

using testing::Each;
using testing::ElementsAre;

class AlphaImageFadeTest : public AlphaImageTest {
 protected:
  AlphaImageFadeTest() : site_(disc({30, 20, 222, 212})) {
    bring_up(form_);
    mouse_away();
    take_log(*site_);
  }
  void fade(long final_opacity, long step = 10, long delay = 10) {
    call(*site_, L"FadeInOut", {Variant(final_opacity), Variant(step), Variant(delay)});
  }
  bool ended(size_t events = 1) {
    return pump_until([&] { return site_->events()->log().size() >= events; }, 2000);
  }
  long opacity() { return number(*site_, L"Opacity"); }

  ComPtr<ControlSite> site_;
};

TEST_F(AlphaImageFadeTest, GoesThereAndBackAndTellsOnceEachTime) {
  fade(0, 40);
  EXPECT_EQ(opacity(), 100);
  ASSERT_TRUE(ended());
  pump_for(60);
  EXPECT_THAT(take_log(*site_), ElementsAre(L"FadeTerminated(0)"));
  EXPECT_EQ(shown(*site_).at(96, 96), kThrough);
  fade(70, -30);
  ASSERT_TRUE(ended());
  pump_for(60);
  EXPECT_THAT(take_log(*site_), ElementsAre(L"FadeTerminated(70)"));
}

TEST_F(AlphaImageFadeTest, RunsShortDelaysAtTenMilliseconds) {
  const DWORD start = GetTickCount();
  fade(0, 5, 1);  // twenty steps
  ASSERT_TRUE(ended());
  EXPECT_GE(GetTickCount() - start, 190u);
}

TEST_F(AlphaImageFadeTest, DoesNothingWithoutAWayAStepOrAPicture) {
  fade(100);
  fade(50, 0);
  fade(900);
  pump_for(60);
  EXPECT_EQ(opacity(), 100);
  call(*site_, L"ClearImage");
  fade(0);
  pump_for(60);
  EXPECT_EQ(opacity(), 100);
  EXPECT_TRUE(take_log(*site_).empty());
}

TEST_F(AlphaImageFadeTest, ReplacesAFadeWithoutAWord) {
  fade(0, 1);
  pump_for(50);
  fade(100, 100);
  ASSERT_TRUE(ended());
  pump_for(60);
  EXPECT_THAT(take_log(*site_), ElementsAre(L"FadeTerminated(100)"));
  fade(0, 1);
  pump_for(40);
  fade(0, 0);  // only stops it
  const long stopped = opacity();
  pump_for(60);
  EXPECT_EQ(opacity(), stopped);
  EXPECT_TRUE(take_log(*site_).empty());
}

TEST_F(AlphaImageFadeTest, BeginsTheNextFadeInItsEnd) {
  site_->on_event([this](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"FadeTerminated" && to_long(event_value(params, 0)) == 0) fade(60, 30);
  });
  fade(0, 50);
  ASSERT_TRUE(ended(2));
  pump_for(60);
  EXPECT_THAT(take_log(*site_), ElementsAre(L"FadeTerminated(0)", L"FadeTerminated(60)"));
}

TEST_F(AlphaImageFadeTest, LetsAHandlerDestroyTheControlOrCloseTheForm) {
  bool told = false;
  site_->on_event([&](const std::wstring&, DISPPARAMS&) {
    told = true;
    form_.remove(*site_);
  });
  fade(0, 50);
  EXPECT_TRUE(pump_until([&] { return told; }, 2000));
  pump_for(60);
  EXPECT_THAT(site_->events()->log(), ElementsAre(L"FadeTerminated(0)"));
}

// Who listens beyond the site, as a class that was handed the control does.
TEST_F(AlphaImageFadeTest, EndsWithOneEventWhenTheControlIsClosedOnTheWay) {
  const auto own = EventSink::connect(site_->control(), nullptr);
  fade(0, 1);
  pump_for(60);
  const long reached = opacity();
  EXPECT_LT(reached, 100);
  EXPECT_GT(reached, 0);
  ComPtr<IUnknown> control(site_->control());
  form_.remove(*site_);
  pump_for(60);
  EXPECT_THAT(own->log(), ElementsAre(L"FadeTerminated(" + std::to_wstring(reached) + L")"));
  control.reset();
  EXPECT_EQ(own->log().size(), 1u);
  own->disconnect();
}

// Notifications come in the middle of a step.
TEST_F(AlphaImageFadeTest, IsReplacedByAFadeThatAChangeOfTheOpacityBegins) {
  fade(0, 100);
  bool begun = false;
  const auto watch = [&] {
    if (begun || site_->changes().empty()) return begun;
    begun = true;
    return true;
  };
  ASSERT_TRUE(pump_until(watch, 2000));
  fade(90, 45);
  ASSERT_TRUE(pump_until([&] { return opacity() == 90; }, 2000));
  pump_for(40);
  EXPECT_THAT(take_log(*site_), ElementsAre(L"FadeTerminated(0)", L"FadeTerminated(90)"));
}

TEST_F(AlphaImageFadeTest, DrawsEachStepOnce) {
  pump_for(40);
  const LONG before = drawings(*site_);
  fade(0, 20);
  ASSERT_TRUE(ended());
  pump_for(40);
  EXPECT_LE(drawings(*site_), before + 5);
  EXPECT_GE(drawings(*site_), before + 1);
}

}  // namespace
}  // namespace kestrelon::host
