// How an animation is saved and read again.
#include <gmock/gmock.h>

#include "host/property_text.h"
#include "tests/controls/us_animated_image_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;

class AnimatedImagePersistTest : public AnimatedImageTest {
 protected:
  AnimatedImagePersistTest() : site_(image({20, 20, 60, 50}, kDontAnimate)) {
    load(*site_, halves());
  }

  void set(const wchar_t* name, long value) { put(*site_, name, Variant(value)); }

  ComPtr<ControlSite> site_;
};

ComPtr<PropertyBag> saved(ControlSite& site, BOOL all = TRUE) {
  auto bag = make_com<PropertyBag>();
  EXPECT_EQ(query<IPersistPropertyBag>(site.control())->Save(bag.get(), TRUE, all), S_OK);
  return bag;
}

TEST_F(AnimatedImagePersistTest, WritesItsKeysInOrder) {
  set(L"Loops", 0);
  EXPECT_THAT(saved(*site_)->keys(),
              ElementsAre(L"GIF", L"Delay", L"Stretch", L"Loops", L"DelayLoad", L"Mirror",
                          L"MouseIcon", L"MousePointer", L"Enabled", L"OffsetX", L"OffsetY",
                          L"BkgFill", L"BkgUsed", L"StepDelay"));
  const auto plain = place(L"USAnimatedImage", {100, 20, 140, 50});
  EXPECT_THAT(saved(*plain, FALSE)->keys(), ElementsAre());
  const auto all = saved(*plain)->keys();
  EXPECT_EQ(std::ranges::count(all, L"GIF") + std::ranges::count(all, L"Loops"), 0);
  EXPECT_EQ(all.size(), 12u);
}

TEST_F(AnimatedImagePersistTest, GoesThroughEveryKindOfPersistenceEqual) {
  load(*site_, three(6));
  set(L"Stretch", kClip);
  set(L"Mirrored", 3);
  set(L"OffsetX", 4);
  set(L"BackStyle", 1);
  set(L"BackColor", 0x445566);
  set(L"SteppedDelay", 321);
  const auto expect_equal = [&](IDispatch* other) {
    for (const wchar_t* name :
         {L"FrameCount", L"Stretch", L"Mirrored", L"OffsetX", L"OffsetY", L"BackStyle",
          L"BackColor", L"SteppedDelay", L"MinFrameDelay", L"Loops", L"DelayAnimation", L"Enabled"})
      EXPECT_EQ(describe_value(get_property(other, name)), describe_value(get(*site_, name)))
          << name;
  };
  const auto again = place(L"USAnimatedImage", {100, 20, 140, 50}, saved(*site_).get());
  expect_equal(again->control_dispatch().get());
  EXPECT_EQ(draw_control(*again, 40, 30, kBehind), draw_control(*site_, 40, 30, kBehind));
  EXPECT_EQ(to_property_text(saved(*again)->entries()), to_property_text(saved(*site_)->entries()));
  // The file's loops are not taken for set ones: another file brings its own.
  load(*again, three(2));
  EXPECT_EQ(number(*again, L"Loops"), 2);
  const auto fresh = library().create(L"USAnimatedImage");
  ASSERT_EQ(load_stream(fresh.get(), save_stream(site_->control())), S_OK);
  expect_equal(fresh.as<IDispatch>().get());
  const auto stored = library().create(L"USAnimatedImage");
  ASSERT_EQ(load_storage(stored.get(), save_storage(site_->control()).get()), S_OK);
  expect_equal(stored.as<IDispatch>().get());
}

TEST_F(AnimatedImagePersistTest, LoadsASavedFileThatIsBroken) {
  const Bytes whole = halves();
  for (size_t cut = 0; cut < whole.size(); cut += 3) {
    const auto bag = make_com<PropertyBag>();
    bag->set(L"GIF",
             bytes_variant(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(cut))));
    bag->set(L"Loops", Variant(L"muitas"));
    const auto other = place(L"USAnimatedImage", {100, 20, 140, 50}, bag.get());
    EXPECT_EQ(number(*other, L"FrameCount"), 0);
    EXPECT_TRUE(load(*other, whole));
    form_.remove(*other);
  }
}

}  // namespace
}  // namespace kestrelon::host
