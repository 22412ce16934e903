#include "tests/controls/us_alpha_image_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;

// The disc of the samples: opaque in the middle, transparent in the corners.
TEST_F(AlphaImageTest, ShowsTheFormThroughItsAlphaWithAndWithoutAWindow) {
  for (const bool windowless : {true, false}) {
    SCOPED_TRACE(windowless);
    Form form;
    form.create_object = form_.create_object;
    form.allow_windowless = windowless;
    form.set_back_color(kBehind);
    ControlState state;
    const auto bag = make_com<PropertyBag>();
    state.bag = bag.get();
    const auto site = form.add_control(L"Kestrelon2012.USAlphaImage", L"", RECT{30, 20, 222, 212},
                                       nullptr, state);
    ASSERT_TRUE(load(*site));
    bring_up(form);
    EXPECT_EQ(site->window() == nullptr, windowless);
    pump_for(20);
    const HDC dc = GetDC(form.hwnd());
    EXPECT_EQ(GetPixel(dc, 31, 21), kBehind);
    EXPECT_NE(GetPixel(dc, 126, 116), kBehind);
    const COLORREF opaque = GetPixel(dc, 126, 116);
    put(*site, L"Opacity", Variant(50L));
    pump_for(20);
    const COLORREF half = GetPixel(dc, 126, 116);
    ReleaseDC(form.hwnd(), dc);
    EXPECT_NEAR(GetRValue(half), (GetRValue(opaque) + GetRValue(kBehind)) / 2, 2);
    EXPECT_NEAR(GetBValue(half), (GetBValue(opaque) + GetBValue(kBehind)) / 2, 2);
  }
}

TEST_F(AlphaImageTest, TellsOfThePointerWithoutAWindowOfItsOwn) {
  const auto site = disc({30, 20, 222, 212});
  bring_up(form_);
  mouse_away();
  take_log(*site);
  mouse_move(form_.hwnd(), 125, 115);
  mouse_move(form_.hwnd(), 126, 116);
  EXPECT_EQ(take_names(*site), (Names{L"MouseEnter"}));
  EXPECT_TRUE(to_bool(call_method(site->control_dispatch().get(), L"isMouseOver", {})));
  mouse_move(form_.hwnd(), 250, 230);  // elsewhere on the form: no one tells the control
  const auto left = [&] {
    return !to_bool(call_method(site->control_dispatch().get(), L"isMouseOver", {}));
  };
  EXPECT_TRUE(pump_until(left, 1000));
  mouse_move(form_.hwnd(), 125, 115);
  EXPECT_EQ(take_names(*site), (Names{L"MouseExit", L"MouseEnter"}));
}

TEST_F(AlphaImageTest, LeavesWhenAnotherControlCoversThePointer) {
  const auto below = disc({30, 20, 222, 212});
  const auto above = disc({120, 20, 312, 212});
  bring_up(form_);
  mouse_away();
  mouse_move(form_.hwnd(), 100, 115);
  take_log(*below);
  mouse_move(form_.hwnd(), 180, 115);  // inside both
  EXPECT_TRUE(pump_until([&] { return !below->events()->log().empty(); }, 1000));
  EXPECT_EQ(take_names(*below), (Names{L"MouseExit"}));
  EXPECT_EQ(take_names(*above), (Names{L"MouseEnter"}));
}

TEST_F(AlphaImageTest, GivesTheMouseOutsideItsShapeToWhatLiesBelow) {
  for (const bool windowless : {true, false}) {
    SCOPED_TRACE(windowless);
    form_.allow_windowless = windowless;
    auto below = disc({30, 20, 222, 212});
    auto above = disc({30, 20, 222, 212});
    if (!windowless) std::swap(below, above);  // the window made first is the upper one
    put(*above, L"HitTest", Variant(3L));
    if (windowless) bring_up(form_);
    mouse_away();
    take_log(*below);
    take_log(*above);
    mouse_click(form_.hwnd(), 31, 21);  // the corner, transparent in both
    EXPECT_EQ(take_names(*below), (Names{L"MouseEnter", L"MouseDown", L"MouseUp"}));
    EXPECT_EQ(take_names(*above), (Names{}));
    part_clicks();
    mouse_click(form_.hwnd(), 126, 116);
    EXPECT_EQ(take_names(*above), (Names{L"MouseEnter", L"MouseDown", L"MouseUp"}));
    form_.remove(*above);
    form_.remove(*below);
  }
}

TEST_F(AlphaImageTest, TakesNoMouseWhileDisabled) {
  const auto site = disc({30, 20, 222, 212});
  bring_up(form_);
  put(*site, L"Enabled", Variant(false));
  take_log(*site);
  mouse_click(form_.hwnd(), 125, 115);
  EXPECT_EQ(take_names(*site), (Names{}));
}

TEST_F(AlphaImageTest, ScalesThePictureByTheMethodAroundItsMiddle) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 74, 50});  // 64 by 40
  ASSERT_TRUE(load_quarters(*site));
  struct Case {
    long method;
    POINT inside, outside;  // next to the picture's top left corner
  };
  for (const Case& c : {Case{0, {13, 1}, {10, 1}}, Case{1, {1, 1}, {-1, -1}},
                        Case{2, {25, 13}, {23, 13}}, Case{3, {25, 13}, {23, 11}}}) {
    put(*site, L"ScaleMethod", Variant(c.method));
    const Picture picture = shown(*site);
    EXPECT_EQ(picture.at(c.inside.x, c.inside.y), 0xFF0000u) << c.method;
    if (c.outside.x >= 0) {
      EXPECT_EQ(picture.at(c.outside.x, c.outside.y), kThrough) << c.method;
    }
    EXPECT_EQ(picture.at(62 - c.inside.x, 38 - c.inside.y), 0xFFFFFFu) << c.method;
  }
}

TEST_F(AlphaImageTest, LocksTheSizeThatShowsWhenItIsTold) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 42, 42});
  ASSERT_TRUE(load_quarters(*site));
  put(*site, L"ScaleMethod", Variant(4L));
  site->move(RECT{10, 10, 110, 110});
  const Picture picture = shown(*site);
  EXPECT_EQ(picture.at(35, 35), 0xFF0000u);  // 32 by 32 still, in the middle
  EXPECT_EQ(picture.at(33, 33), kThrough);
  EXPECT_EQ(picture.at(64, 64), 0xFFFFFFu);
  EXPECT_EQ(picture.at(66, 66), kThrough);
  ASSERT_TRUE(load_quarters(*site, 8));  // another picture keeps it
  EXPECT_EQ(shown(*site).at(35, 35), 0xFF0000u);
}

TEST_F(AlphaImageTest, MirrorsTurnsAndMovesThePicture) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 26, 26});
  ASSERT_TRUE(load_quarters(*site));
  const auto corners = [&] {
    const Picture p = shown(*site);
    return std::vector<uint32_t>{p.at(2, 2), p.at(13, 2), p.at(2, 13), p.at(13, 13)};
  };
  EXPECT_THAT(corners(), ElementsAre(0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF));
  put(*site, L"Mirror", Variant(1L));
  EXPECT_THAT(corners(), ElementsAre(0x00FF00, 0xFF0000, 0xFFFFFF, 0x0000FF));
  put(*site, L"Mirror", Variant(3L));
  EXPECT_THAT(corners(), ElementsAre(0xFFFFFF, 0x0000FF, 0x00FF00, 0xFF0000));
  put(*site, L"Mirror", Variant(0L));
  put(*site, L"Rotation", Variant(90L));
  EXPECT_THAT(corners(), ElementsAre(0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF));  // not enabled yet
  put(*site, L"RotateEnabled", Variant(true));
  EXPECT_THAT(corners(), ElementsAre(0x0000FF, 0xFF0000, 0xFFFFFF, 0x00FF00));
  put(*site, L"RotateEnabled", Variant(false));
  Variant x(8L), y(-3L), shadow;
  call(*site, L"OffsetImage", {Variant(true), reference_to(x), reference_to(y)});
  EXPECT_EQ(shown(*site).at(2, 2), kThrough);
  EXPECT_EQ(shown(*site).at(9, 2), 0xFF0000u);
  x = y = Variant();
  call(*site, L"OffsetImage",
       {Variant(false), reference_to(x), reference_to(y), reference_to(shadow)});
  EXPECT_EQ(to_long(x), 8);
  EXPECT_EQ(to_long(y), -3);
  EXPECT_EQ(to_long(shadow), 0);
}

TEST_F(AlphaImageTest, ShowsGraysLightAndNegatives) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 26, 26});
  ASSERT_TRUE(load_quarters(*site));
  EXPECT_EQ(number(*site, L"grayScale"), 0);
  put(*site, L"grayScale", Variant(3L));  // the plain mean
  const uint32_t gray = shown(*site).at(2, 2);
  EXPECT_NEAR(gray & 0xFF, 0x55, 1);
  EXPECT_EQ(gray, (gray & 0xFF) * 0x010101);
  put(*site, L"grayScale", Variant(0L));
  put(*site, L"IntensityOffset", Variant(-100.0f));
  EXPECT_EQ(shown(*site).at(13, 13), 0u);
  put(*site, L"IntensityOffset", Variant(0.0f));
  put(*site, L"InversedImage", Variant(true));
  EXPECT_EQ(shown(*site).at(2, 2), 0x00FFFFu);
  ASSERT_TRUE(load_quarters(*site, 8));  // the next picture too
  EXPECT_EQ(shown(*site).at(2, 2), 0x00FFFFu);
  put(*site, L"InversedImage", Variant(false));
  EXPECT_EQ(shown(*site).at(2, 2), 0xFF0000u);
}

TEST_F(AlphaImageTest, MasksTheColourOfACornerOrAnyAndUndoesIt) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 26, 26});
  ASSERT_TRUE(load_quarters(*site));
  const auto seen_through = [&] {
    const Picture p = shown(*site);
    std::vector<bool> out;
    for (const POINT at : {POINT{2, 2}, {13, 2}, {2, 13}, {13, 13}})
      out.push_back(p.at(at.x, at.y) == kThrough);
    return out;
  };
  for (long source = 2; source <= 5; ++source) {
    put(*site, L"MaskUsed", Variant(source));
    std::vector<bool> wanted(4);
    wanted[static_cast<size_t>(source - 2)] = true;
    EXPECT_EQ(seen_through(), wanted) << source;
  }
  put(*site, L"MaskColor", Variant(0x00FF00L));  // not the source at the moment
  EXPECT_THAT(seen_through(), ElementsAre(false, false, false, true));
  put(*site, L"MaskUsed", Variant(1L));
  EXPECT_THAT(seen_through(), ElementsAre(false, true, false, false));
  put(*site, L"MaskColor", Variant(0xFF0000L));
  EXPECT_THAT(seen_through(), ElementsAre(false, false, true, false));
  put(*site, L"InversedImage", Variant(true));  // the mask goes by the picture's own colours
  EXPECT_THAT(seen_through(), ElementsAre(false, false, true, false));
  EXPECT_EQ(shown(*site).at(2, 2), 0x00FFFFu);
  put(*site, L"MaskUsed", Variant(0L));
  EXPECT_THAT(seen_through(), ElementsAre(false, false, false, false));
  EXPECT_EQ(shown(*site).at(2, 13), 0xFFFF00u);
  put(*site, L"MaskUsed", Variant(true));  // as the Boolean it once was: the last source
  EXPECT_EQ(number(*site, L"MaskUsed"), 1);
  put(*site, L"MaskUsed", Variant(77L));
  EXPECT_THAT(seen_through(), ElementsAre(false, false, false, false));
}

TEST_F(AlphaImageTest, MasksNothingByACornerThatIsTransparentAlready) {
  const auto site = disc({10, 10, 202, 202});
  const Picture before = shown(*site);
  put(*site, L"MaskUsed", Variant(2L));
  EXPECT_EQ(shown(*site), before);
}

TEST_F(AlphaImageTest, FollowsWhatAProgramDoesToTheImage) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 26, 26});
  ASSERT_TRUE(load_quarters(*site));
  put(*site, L"InversedImage", Variant(true));
  const auto image = image_of(*site);
  call_method(image.get(), L"SetPixel", {Variant(2L), Variant(2L), Variant(0x123456L)});
  EXPECT_EQ(shown(*site).at(2, 2), 0x563412u);
  put(*site, L"InversedImage", Variant(false));
  EXPECT_EQ(shown(*site).at(2, 2), 0xA9CBEDu);
  EXPECT_EQ(shown(*site).at(13, 2), 0x00FF00u);
  call_method(image.get(), L"MakeGrayScale", {Variant(2L)});
  EXPECT_EQ(shown(*site).at(13, 2), 0x555555u);
  call_method(image.get(), L"DestroyDIB");
  EXPECT_EQ(shown(*site).at(13, 2), kThrough);
  EXPECT_EQ(number(*site, L"imageWidth"), 0);
  form_.remove(*site);  // the image outlives its control
  EXPECT_TRUE(to_bool(call_method(image.get(), L"InitializeDIB", {Variant(3L), Variant(3L)})));
}

TEST_F(AlphaImageTest, TreatsAPictureThatAProgramLoadsAsItsOwn) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 26, 26});
  const auto source = place(L"USAlphaImage", RECT{40, 10, 56, 26});
  ASSERT_TRUE(load(*site, L"disc.png"));
  ASSERT_TRUE(load_quarters(*source));
  put(*site, L"InversedImage", Variant(true));
  put(*site, L"MaskUsed", Variant(3L));
  Variant stream;
  call(*source, L"GetStream", {reference_to(stream)});
  const auto image = image_of(*site);
  ASSERT_TRUE(to_bool(call_method(image.get(), L"LoadPicture_Stream", {stream})));
  EXPECT_EQ(shown(*site).at(2, 2), 0x00FFFFu);
  EXPECT_EQ(shown(*site).at(13, 2), kThrough);
  // In another size it is the same picture still.
  ASSERT_TRUE(to_bool(call_method(image.get(), L"Resize", {Variant(32L), Variant(32L)})));
  EXPECT_EQ(shown(*site).at(2, 2), 0x00FFFFu);
  put(*site, L"InversedImage", Variant(false));
  EXPECT_EQ(shown(*site).at(2, 2), 0xFF0000u);
  EXPECT_EQ(shown(*site).at(13, 2), kThrough);  // the mask has become the picture's own
}

TEST_F(AlphaImageTest, TakesThePictureSizeWithAutoSize) {
  const auto fresh = place_new(L"USAlphaImage", RECT{10, 10, 60, 60});
  bring_up(form_);
  EXPECT_TRUE(to_bool(get(*fresh, L"AutoSize")));
  ASSERT_TRUE(load(*fresh, L"coins-4bit.bmp"));
  EXPECT_EQ(fresh->bounds().right, 74);
  const auto site = place(L"USAlphaImage", RECT{100, 10, 150, 60});
  EXPECT_FALSE(to_bool(get(*site, L"AutoSize")));  // the default of a saved form
  ASSERT_TRUE(load(*site, L"coins-4bit.bmp"));
  EXPECT_EQ(site->bounds().right, 150);
  put(*site, L"AutoSize", Variant(true));
  EXPECT_EQ(site->bounds().right, 164);
  EXPECT_TRUE(done(*site, L"ResizeImage", {Variant(20L), Variant(30L)}));  // height, width
  EXPECT_EQ(site->bounds().right, 130);
  EXPECT_EQ(site->bounds().bottom, 30);
}

TEST_F(AlphaImageTest, DrawsOnceForManyChangesAndNeverForNone) {
  const auto site = disc({30, 20, 222, 212});
  bring_up(form_);
  pump_for(30);
  const LONG before = drawings(*site);
  put(*site, L"Opacity", Variant(50L));
  put(*site, L"Mirror", Variant(1L));
  put(*site, L"grayScale", Variant(2L));
  pump_for(30);
  EXPECT_EQ(drawings(*site), before + 1);
  put(*site, L"Opacity", Variant(50L));
  put(*site, L"ShadowColor", Variant(255L));  // of a shadow that is not shown
  put(*site, L"Rotation", Variant(30L));      // likewise
  put(*site, L"Enabled", Variant(false));
  put(*site, L"Enabled", Variant(true));
  pump_for(30);
  EXPECT_EQ(drawings(*site), before + 1);
  call(*site, L"Refresh");
  pump_for(30);
  EXPECT_EQ(drawings(*site), before + 2);
  put(*site, L"AutoRedraw", Variant(true));
  for (long opacity = 60; opacity < 65; ++opacity) put(*site, L"Opacity", Variant(opacity));
  EXPECT_EQ(drawings(*site), before + 7);  // at once, without a turn of the message loop
}

TEST_F(AlphaImageTest, CastsAShadowBehindThePicture) {
  const auto site = place(L"USAlphaImage", RECT{10, 10, 50, 50});
  ASSERT_TRUE(load_quarters(*site));
  put(*site, L"ScaleMethod", Variant(3L));  // 16 by 16 from (12, 12)
  put(*site, L"ShadowOpacity", Variant(100L));
  put(*site, L"ShadowColor", Variant(0xFFL));
  put(*site, L"ShadowEnabled", Variant(true));
  EXPECT_EQ(shown(*site).at(13, 13), 0xFF0000u);
  EXPECT_NE(shown(*site).at(29, 20), kThrough);
  EXPECT_EQ(shown(*site).at(11, 20), kThrough);  // two pixels of blur, moved by two
  call(*site, L"OffsetShadow", {Variant(-10L), Variant(0L)});
  EXPECT_EQ(number(*site, L"ShadowOffsetX"), -10);
  EXPECT_EQ(shown(*site).at(29, 20), kThrough);
  EXPECT_EQ(shown(*site).at(6, 20), 0xFF0000u);
}

// A hit area is what is drawn, wherever that is; the real mouse tells.
TEST_F(AlphaImageTest, TakesTheMouseWhereThePictureIsDrawn) {
  const auto site = place(L"USAlphaImage", RECT{20, 20, 140, 140});
  ASSERT_TRUE(load_quarters(*site, 40));
  // A frame of three pixels, for what is enclosed and what is not.
  const auto image = image_of(*site);
  for (const long x : {0L, 39L})
    for (long y = 0; y < 40; ++y)
      call_method(image.get(), L"SetPixel", {Variant(x), Variant(y), Variant(0L), Variant(0L)});
  for (long y = 10; y < 30; ++y)
    for (long x = 10; x < 30; ++x)
      call_method(image.get(), L"SetPixel", {Variant(x), Variant(y), Variant(0L), Variant(0L)});
  put(*site, L"ScaleMethod", Variant(3L));  // from (40, 40) of the control, the first column empty
  bring_up(form_);
  const auto takes = [&](int x, int y) {
    mouse_away();
    take_log(*site);
    mouse_move(form_.hwnd(), 20 + x, 20 + y);
    return take_names(*site) == Names{L"MouseEnter"};
  };
  struct Case {
    long style;
    bool corner, empty_column, ring, hole;
  };
  for (const Case& c : {Case{0, true, true, true, true}, Case{1, false, false, true, true},
                        Case{2, false, false, true, true}, Case{3, false, false, true, false}}) {
    put(*site, L"HitTest", Variant(c.style));
    EXPECT_EQ(takes(5, 5), c.corner) << c.style;
    EXPECT_EQ(takes(40, 60), c.empty_column) << c.style;
    EXPECT_EQ(takes(45, 45), c.ring) << c.style;
    EXPECT_EQ(takes(60, 60), c.hole) << c.style;
  }
  put(*site, L"ScaleMethod", Variant(0L));  // 120 by 120: each pixel is three
  EXPECT_FALSE(takes(60, 60));
  EXPECT_TRUE(takes(15, 15));
  put(*site, L"ScaleMethod", Variant(3L));
  put(*site, L"Rotation", Variant(45L));
  put(*site, L"RotateEnabled", Variant(true));
  EXPECT_FALSE(takes(43, 43));  // a corner that has turned away
  EXPECT_TRUE(takes(60, 38));   // and one that has come here
  put(*site, L"Opacity", Variant(0L));
  EXPECT_TRUE(takes(60, 38));  // invisible is still there
  call(*site, L"ClearImage");
  EXPECT_FALSE(takes(60, 38));
}

TEST_F(AlphaImageTest, HearsKeysOnceItHasTheFocus) {
  const auto site = disc({30, 20, 222, 212});
  bring_up(form_);
  mouse_click(form_.hwnd(), 125, 115);
  take_log(*site);
  key_press('A');
  EXPECT_EQ(take_names(*site), (Names{L"KeyDown", L"KeyPress", L"KeyUp"}));
}

}  // namespace
}  // namespace kestrelon::host
