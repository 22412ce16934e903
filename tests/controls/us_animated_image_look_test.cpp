// What an animation looks like in its control.
#include "frame/control_frame.h"
#include "tests/controls/us_animated_image_fixture.h"

namespace kestrelon::host {
namespace {

class AnimatedImageLookTest : public AnimatedImageTest {
 protected:
  AnimatedImageLookTest() : site_(image({20, 20, 60, 50}, kDontAnimate)) { load(*site_, halves()); }

  void set(const wchar_t* name, long value) { put(*site_, name, Variant(value)); }
  Picture shown() { return draw_control(*site_, 40, 30, kBehind); }
  /// The size that is covered, from the top left.
  static std::pair<int, int> extent(const Picture& picture) {
    int width = 0, height = 0;
    for (int y = 0; y < picture.height; ++y) {
      for (int x = 0; x < picture.width; ++x) {
        if (picture.at(x, y) == kBehindPixel) continue;
        width = std::max(width, x + 1);
        height = std::max(height, y + 1);
      }
    }
    return {width, height};
  }
  long repaints() {
    static const UINT message = RegisterWindowMessageW(kFullRepaintsMessage);
    LRESULT out = 0;
    EXPECT_EQ(site_->windowless()->OnWindowMessage(message, 0, 0, &out), S_OK);
    return static_cast<long>(out);
  }

  ComPtr<ControlSite> site_;
};

TEST_F(AnimatedImageLookTest, ScalesByItsRule) {
  using Size = std::pair<int, int>;
  EXPECT_EQ(extent(shown()), Size(40, 20));
  set(L"Stretch", kClip);
  EXPECT_EQ(extent(shown()), Size(4, 2));
  set(L"Stretch", kStretch);
  EXPECT_EQ(extent(shown()), Size(40, 30));
  set(L"Stretch", kShrink);
  EXPECT_EQ(extent(shown()), Size(4, 2));
  set(L"Stretch", kActual);
  EXPECT_EQ(extent(shown()), Size(4, 2));
  set(L"OffsetX", 5);
  set(L"OffsetY", 7);
  EXPECT_EQ(extent(shown()), Size(9, 9));
  EXPECT_EQ(shown().at(5, 7), kGreen);
  EXPECT_EQ(shown().at(4, 7), kBehindPixel);
  load(*site_, three(0, 80, 20));
  set(L"Stretch", kShrink);
  set(L"OffsetX", 0);
  set(L"OffsetY", 0);
  EXPECT_EQ(extent(shown()), Size(40, 10));
  set(L"Stretch", kClip);
  EXPECT_EQ(extent(shown()), Size(40, 20));
}

TEST_F(AnimatedImageLookTest, MirrorsAndUndoesIt) {
  set(L"Stretch", kClip);
  const auto corner = [&] {
    const Picture picture = shown();
    for (const auto& [x, y] : {std::pair{0, 0}, {3, 0}, {0, 1}, {3, 1}})
      if (picture.at(x, y) == kGreen) return std::pair{x, y};
    return std::pair{-1, -1};
  };
  using Place = std::pair<int, int>;
  EXPECT_EQ(corner(), Place(0, 0));
  set(L"Mirrored", 1);
  EXPECT_EQ(corner(), Place(3, 0));
  set(L"Mirrored", 2);
  EXPECT_EQ(corner(), Place(0, 1));
  set(L"Mirrored", 3);
  EXPECT_EQ(corner(), Place(3, 1));
  act(*site_, kForward);  // what is shown next is mirrored too
  EXPECT_EQ(corner(), Place(3, 1));
  set(L"Mirrored", 0);
  EXPECT_EQ(corner(), Place(0, 0));
}

TEST_F(AnimatedImageLookTest, ShowsWhatLiesBehindOrItsOwnGround) {
  const Bytes hole = test::screen_of(2, 1) + test::control(1, 2) +
                     test::frame_at(0, 0, 2, 1, {1, 2}) + test::kTrailer;
  load(*site_, hole);
  set(L"Stretch", kClip);
  EXPECT_EQ(shown().at(0, 0), kRed);
  EXPECT_EQ(shown().at(1, 0), kBehindPixel);
  EXPECT_EQ(shown().at(30, 20), kBehindPixel);
  set(L"BackStyle", 1);
  set(L"BackColor", RGB(1, 2, 3));
  EXPECT_EQ(shown().at(0, 0), kRed);
  EXPECT_EQ(shown().at(1, 0), 0x010203u);
  EXPECT_EQ(shown().at(39, 29), 0x010203u);
  set(L"BackColor", static_cast<long>(0x80000000u | COLOR_WINDOW));
  EXPECT_EQ(shown().at(39, 29), 0xFFFFFFu);
}

TEST_F(AnimatedImageLookTest, IsSeenInTheDesignerWhileItIsEmpty) {
  load(*site_, {});
  EXPECT_EQ(extent(shown()), std::pair(0, 0));
  form_.set_user_mode(false);
  EXPECT_EQ(extent(shown()), std::pair(40, 30));
  load(*site_, halves());
  set(L"Stretch", kClip);
  EXPECT_EQ(extent(shown()), std::pair(4, 2));
  load(*site_, {});
  form_.set_user_mode(true);
  EXPECT_EQ(extent(shown()), std::pair(0, 0));
}

TEST_F(AnimatedImageLookTest, LooksTheSameInAWindowOfItsOwn) {
  for (const bool windowless : {true, false}) {
    SCOPED_TRACE(windowless);
    Form form;
    form.create_object = form_.create_object;
    form.allow_windowless = windowless;
    form.set_back_color(RGB(40, 160, 220));
    ControlState state;
    const auto bag = make_com<PropertyBag>();
    bag->set(L"GIF", bytes_variant(halves()));
    bag->set(L"DelayLoad", Variant(kDontAnimate));
    bag->set(L"Stretch", Variant(kClip));
    state.bag = bag.get();
    const auto site = form.add_control(L"Kestrelon2012.USAnimatedImage", L"", RECT{30, 20, 70, 60},
                                       nullptr, state);
    bring_up(form);
    EXPECT_EQ(site->window() == nullptr, windowless);
    const auto pixel_at = [&](int x, int y) {
      pump_for(20);
      const HDC dc = GetDC(form.hwnd());
      const COLORREF colour = GetPixel(dc, 30 + x, 20 + y);
      ReleaseDC(form.hwnd(), dc);
      return colour;
    };
    EXPECT_EQ(pixel_at(0, 0), RGB(0, 255, 0));
    EXPECT_EQ(pixel_at(10, 10), RGB(40, 160, 220));
    put(*site, L"BackStyle", Variant(1L));
    put(*site, L"BackColor", Variant(static_cast<long>(RGB(9, 8, 7))));
    EXPECT_EQ(pixel_at(10, 10), RGB(9, 8, 7));
    EXPECT_EQ(pixel_at(0, 0), RGB(0, 255, 0));
  }
}

TEST_F(AnimatedImageLookTest, DrawsNothingAnewForALookThatIsTheSame) {
  bring_up(form_);
  const long before = repaints();
  act(*site_, kForward);  // a frame without a visible pixel
  set(L"Mirrored", 0);
  set(L"OffsetX", 0);
  set(L"BackColor", RGB(1, 2, 3));  // no ground is shown
  set(L"MinFrameDelay", 70);
  EXPECT_EQ(repaints(), before);
  set(L"OffsetX", 1);
  EXPECT_EQ(repaints(), before + 1);
  load(*site_, three());
  EXPECT_EQ(repaints(), before + 2);
  act(*site_, kForward);
  EXPECT_EQ(repaints(), before + 3);
  call_method(site_->control_dispatch().get(), L"Refresh");
  EXPECT_EQ(repaints(), before + 4);
}

TEST_F(AnimatedImageLookTest, TakesTheSizeOfTheAnimation) {
  bring_up(form_);
  const auto size = [&] {
    const RECT bounds = site_->bounds();
    return std::pair<long, long>(bounds.right - bounds.left, bounds.bottom - bounds.top);
  };
  using Size = std::pair<long, long>;
  put(*site_, L"AutoSize", Variant(true));
  EXPECT_EQ(size(), Size(40, 20));  // scaled
  set(L"Stretch", kClip);
  EXPECT_EQ(size(), Size(4, 2));
  load(*site_, three(0, 33, 17));
  EXPECT_EQ(size(), Size(33, 17));
  set(L"Stretch", kStretch);  // whatever the control has
  EXPECT_EQ(size(), Size(33, 17));
  put(*site_, L"AutoSize", Variant(false));
  set(L"Stretch", kActual);
  load(*site_, halves());
  EXPECT_EQ(size(), Size(33, 17));
  put(*site_, L"AutoSize", Variant(true));
  put_property(site_->dispatch(), L"Width", Variant(3000L));  // the container's wish comes second
  EXPECT_EQ(size(), Size(4, 2));
}

TEST_F(AnimatedImageLookTest, ChangesColoursAndPutsThemBack) {
  const auto palette = [&](const wchar_t* method, long frame, Variant& entries) {
    Variant reference;
    V_VT(&reference) = VT_VARIANT | VT_BYREF;
    V_VARIANTREF(&reference) = &entries;
    return call(*site_, method, {Variant(frame), reference});
  };
  Variant entries;
  ASSERT_TRUE(palette(L"GetPalette", 1, entries));
  ASSERT_EQ(V_VT(&entries), VT_ARRAY | VT_VARIANT) << "scripts read no other";
  ASSERT_EQ(V_ARRAY(&entries)->rgsabound[0].cElements, 4u);
  const auto colour = [](Variant& list, int index) -> LONG& {
    return V_I4(static_cast<VARIANT*>(V_ARRAY(&list)->pvData) + index);
  };
  EXPECT_EQ(colour(entries, 1), static_cast<LONG>(RGB(255, 0, 0)));
  EXPECT_EQ(colour(entries, 3), static_cast<LONG>(RGB(0, 0, 255)));
  const Picture before = shown();
  call_method(site_->control_dispatch().get(), L"CacheColorTables");
  colour(entries, 1) = RGB(250, 200, 10);
  ASSERT_TRUE(palette(L"SetPalette", 2, entries));  // both frames share the table
  set(L"Stretch", kClip);
  EXPECT_EQ(shown().at(1, 0), 0xFAC80Au);
  set(L"Stretch", kAlways);
  Variant again;
  palette(L"GetPalette", 1, again);
  EXPECT_EQ(colour(again, 1), static_cast<LONG>(RGB(250, 200, 10)));
  call_method(site_->control_dispatch().get(), L"RestoreColorTables", {Variant(false)});
  EXPECT_EQ(shown(), before);
  ASSERT_TRUE(palette(L"SetPalette", 1, entries));
  call_method(site_->control_dispatch().get(), L"RestoreColorTables", {Variant(true)});
  EXPECT_EQ(shown(), before);
  ASSERT_TRUE(palette(L"SetPalette", 1, entries));
  call_method(site_->control_dispatch().get(), L"RestoreColorTables");  // nothing is kept any more
  EXPECT_NE(shown(), before);

  for (const long frame : {0L, 3L, -1L}) EXPECT_FALSE(palette(L"GetPalette", frame, entries));
  Variant wrong(L"texto");
  EXPECT_ANY_THROW(palette(L"SetPalette", 1, wrong));
  // A typed array of the language, of a fixed size, takes what fits.
  SAFEARRAY* fixed = SafeArrayCreateVector(VT_I4, 0, 2);
  fixed->fFeatures |= FADF_FIXEDSIZE;
  Variant typed;
  V_VT(&typed) = VT_ARRAY | VT_I4 | VT_BYREF;
  V_ARRAYREF(&typed) = &fixed;
  EXPECT_TRUE(call(*site_, L"GetPalette", {Variant(1L), typed}));
  EXPECT_EQ(static_cast<LONG*>(fixed->pvData)[1], static_cast<LONG>(RGB(250, 200, 10)));
  SafeArrayDestroy(fixed);
}

TEST_F(AnimatedImageLookTest, IsAPictureAndTakesOne) {
  const auto picture = to_object(get(*site_, L"AnimatedGIF")).as<IPicture>();
  ASSERT_TRUE(picture);
  SHORT type = 0;
  picture->get_Type(&type);
  EXPECT_EQ(type, PICTYPE_BITMAP);

  // A picture object made from a GIF file gives all its frames back.
  const auto stream = stream_over(three(4));
  ComPtr<IPictureDisp> loaded;
  ASSERT_EQ(OleLoadPicture(stream.get(), 0, FALSE, IID_IPictureDisp, loaded.put_void()), S_OK);
  put(*site_, L"AnimatedGIF", Variant(static_cast<IDispatch*>(loaded.get())));
  EXPECT_EQ(number(*site_, L"FrameCount"), 3);
  EXPECT_EQ(number(*site_, L"Loops"), 4);

  // Any other is one frame.
  const auto other = image({100, 20, 140, 50}, kDontAnimate);
  put(*other, L"AnimatedGIF", get(*site_, L"AnimatedGIF"));
  EXPECT_EQ(number(*other, L"FrameCount"), 1);
  EXPECT_EQ(number(*other, L"ActualWidth"), 4);
  EXPECT_EQ(draw_control(*other, 40, 30, kBehind).at(20, 10), kRed);

  put(*site_, L"AnimatedGIF", Variant(static_cast<IDispatch*>(nullptr)));
  EXPECT_EQ(number(*site_, L"FrameCount"), 0);
}

}  // namespace
}  // namespace kestrelon::host
