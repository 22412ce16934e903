// USButton in a form: events from real input, faces on the window, values, persistence.
#include <gmock/gmock.h>

#include "controls/us_button/us_button_face.h"
#include "frame/dib_section.h"
#include "frame/kit/lines.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

constexpr int kWidth = 121, kHeight = 41;
const std::wstring kSamples = std::wstring(L"" KESTRELON_SOURCE_DIR) + L"/resources/samples/";

class ButtonTest : public ControlTest {
 protected:
  ButtonTest() : site_(place(L"USButton", RECT{20, 20, 20 + kWidth, 20 + kHeight})) {
    other_ = place(L"USButton", RECT{20, 90, 140, 120});
    put(*site_, L"Caption", Variant(L"&Gravar"));
    bring_up(form_);
    other_->take_focus();
    mouse_away();
    take_log(*site_);
  }

  HWND window() { return site_->window(); }
  Names names() { return take_names(*site_); }
  Picture shot() { return draw_control(*site_, kWidth, kHeight); }
  void set(const wchar_t* name, long value) { put(*site_, name, Variant(value)); }
  void set(const wchar_t* name, bool value) { put(*site_, name, Variant(value)); }
  bool flag(const wchar_t* name) { return to_bool(get(*site_, name)); }
  Variant call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(site_->control_dispatch().get(), name, std::move(arguments));
  }
  long color(const std::wstring& name) { return number(*site_, name.c_str()); }

  // The face a button of this size would have, from the colours it tells.
  std::vector<uint32_t> face(const std::wstring& prefix) {
    DibSection memory;
    memory.create(kWidth, kHeight);
    FaceStops stops{};
    for (size_t i = 0; i < 4; ++i)
      stops[i] = static_cast<ColorRef>(color(prefix + std::to_wstring(i + 1)));
    paint_face(memory.pixels(), stops, number(*site_, L"GradientColors") == 1);
    std::vector<uint32_t> rows;
    for (int y = 0; y < kHeight; ++y) rows.push_back(memory.pixels().row(y)[4] & kColorBits);
    return rows;
  }
  void expect_face(const std::wstring& prefix, const std::wstring& border) {
    const Picture shown = shot();
    const auto rows = face(prefix);
    for (int y = 1; y < kHeight - 1; ++y)
      ASSERT_EQ(shown.at(4, y), rows[static_cast<size_t>(y)]) << y;
    EXPECT_EQ(to_color(shown.at(0, 20)), static_cast<ColorRef>(color(border)));
    EXPECT_EQ(to_color(shown.at(60, kHeight - 1)), static_cast<ColorRef>(color(border)));
  }

  ComPtr<ControlSite> site_;
  ComPtr<ControlSite> other_;
};

TEST_F(ButtonTest, ClicksInOrder) {
  mouse_move(window(), 10, 10);
  mouse_move(window(), 11, 10);
  EXPECT_EQ(take_log(*site_), (Names{L"MouseEnter", L"MouseMove(0, 0, 11, 10)"}));
  part_clicks();
  mouse_click(window(), 10, 10);
  EXPECT_EQ(names(), (Names{L"MouseDown", L"MouseUp", L"Click"}));
  mouse_away();
  EXPECT_EQ(names(), Names{L"MouseExit"});
}

TEST_F(ButtonTest, ShowsEveryStateInEveryTheme) {
  set(L"ShowFocusRect", false);
  for (long theme : {0L, 1L, 2L}) {
    set(L"Theme", theme);
    other_->take_focus();
    mouse_away();
    expect_face(L"GradientColor", L"BorderColor");
    mouse_move(window(), 10, 10);
    expect_face(L"GradientColorOver", L"BorderColorOver");
    mouse_down();
    expect_face(L"GradientColorDown", L"BorderColorDown");
    mouse_up();
    expect_face(L"GradientColorOver", L"BorderColorOver");
    set(L"Enabled", false);
    expect_face(L"GradientColorDisabled", L"BorderColorDisabled");
    set(L"Enabled", true);
    site_->take_focus();  // it went with Enabled
    part_clicks();
  }
  mouse_click(window(), 10, 10);
  mouse_away();
  expect_face(L"GradientColorOver", L"BorderColorOver");  // lit while it has the focus
  other_->take_focus();
  expect_face(L"GradientColor", L"BorderColor");
}

TEST_F(ButtonTest, RaisesNoClickForAReleaseOutsideOrTheRightButton) {
  mouse_move(window(), 10, 10);
  part_clicks();
  mouse_down();
  mouse_move(window(), 10, 200);
  mouse_up();
  pump_for(60);
  const Names outside = names();
  EXPECT_EQ(std::count(outside.begin(), outside.end(), L"MouseUp"), 1);
  EXPECT_EQ(std::count(outside.begin(), outside.end(), L"Click"), 0);
  mouse_move(window(), 10, 10);
  names();
  mouse_click(window(), 10, 10, MouseButton::kRight);
  EXPECT_EQ(names(), Names{L"MouseDown"});
}

TEST_F(ButtonTest, DoubleClicksThenClicks) {
  part_clicks();
  mouse_double_click(window(), 10, 10);
  EXPECT_EQ(names(),
            (Names{L"MouseEnter", L"MouseDown", L"MouseUp", L"Click", L"DblClick", L"MouseUp"}));
  part_clicks();
  mouse_click(window(), 10, 10);
  EXPECT_EQ(names(), (Names{L"MouseDown", L"MouseUp", L"Click"}));
}

TEST_F(ButtonTest, MovesButKeepsSilentWhenLocked) {
  set(L"Locked", true);
  part_clicks();
  mouse_click(window(), 10, 10);
  EXPECT_EQ(names(), (Names{L"MouseEnter", L"MouseDown", L"MouseUp"}));
}

TEST_F(ButtonTest, ClicksByKeys) {
  site_->take_focus();
  pump_for(20);
  take_log(*site_);
  key_press(VK_SPACE);
  EXPECT_EQ(names(), (Names{L"KeyDown", L"KeyPress", L"Click", L"KeyUp"}));
  key_down(VK_SPACE);
  key_press(VK_RIGHT);
  key_up(VK_SPACE);
  const Names arrow = names();
  EXPECT_EQ(std::count(arrow.begin(), arrow.end(), L"Click"), 1);
  EXPECT_EQ(std::count(arrow.begin(), arrow.end(), L"KeyDown"), 1);
  EXPECT_TRUE(pump_until([&] { return GetFocus() == other_->window(); }, 500));
  key_chord(VK_MENU, 'G');
  EXPECT_TRUE(pump_until([&] { return std::ranges::count(names(), L"Click") == 1; }, 500));
}

TEST_F(ButtonTest, TogglesInCheckMode) {
  set(L"CheckBoxMode", true);
  set(L"ShowFocusRect", false);
  part_clicks();
  mouse_click(window(), 10, 10);
  EXPECT_TRUE(flag(L"Value"));
  part_clicks();
  mouse_down();  // a chosen button shows its normal face while it is pressed, that is the chosen
                 // one
  const Picture held = shot();
  mouse_up();
  EXPECT_FALSE(flag(L"Value"));
  set(L"Value", true);
  mouse_away();
  EXPECT_EQ(held.at(4, 20), shot().at(4, 20));
  set(L"CheckBoxMode", false);
  EXPECT_FALSE(flag(L"Value"));
}

TEST_F(ButtonTest, ClicksWhenValueIsSetByCode) {
  set(L"Value", true);
  EXPECT_EQ(names(), Names{L"Click"});
  EXPECT_FALSE(flag(L"Value"));
}

TEST_F(ButtonTest, LosesAPressWhenSwitchedOffOrTheFocusGoes) {
  for (const bool by_focus : {false, true}) {
    mouse_move(window(), 10, 10);
    part_clicks();
    mouse_down();
    names();
    if (by_focus) {
      other_->take_focus();
    } else {
      set(L"Enabled", false);
    }
    mouse_up();
    pump_for(30);
    const Names after = names();
    EXPECT_EQ(std::count(after.begin(), after.end(), L"Click"), by_focus ? 1 : 0);
    set(L"Enabled", true);
    mouse_away();
  }
}

TEST_F(ButtonTest, CutsItsCornersByShape) {
  struct Case {
    long shape;
    bool left, right;
  };
  const HRGN region = CreateRectRgn(0, 0, 0, 0);
  for (const auto& [shape, left, right] :
       {Case{0, true, true}, Case{1, false, true}, Case{2, true, false}, Case{3, false, false},
        Case{0, true, true}}) {
    set(L"ButtonShape", shape);
    // A window that is a plain rectangle has no region at all.
    if (GetWindowRgn(window(), region) == ERROR) SetRectRgn(region, 0, 0, kWidth, kHeight);
    EXPECT_EQ(!PtInRegion(region, 0, 0), left) << shape;
    EXPECT_EQ(!PtInRegion(region, 0, kHeight - 1), left) << shape;
    EXPECT_EQ(!PtInRegion(region, kWidth - 1, 0), right) << shape;
    EXPECT_EQ(!PtInRegion(region, kWidth - 1, kHeight - 1), right) << shape;
    EXPECT_TRUE(PtInRegion(region, 0, 20) && PtInRegion(region, kWidth - 1, 20));
  }
  DeleteObject(region);
}

TEST_F(ButtonTest, DrawsItsOutlineWithoutAWindowToo) {
  const ComPtr<IUnknown> loose = library().create(L"Kestrelon2012.USButton");
  query<IPersistStreamInit>(loose.get())->InitNew();
  constexpr COLORREF kBehind = RGB(255, 0, 255);
  constexpr RECTL kPlace{5, 7, 105, 39};
  DibSection memory;
  memory.create(120, 60);
  fill_rect(memory.pixels(), memory.pixels().bounds(), kBehind);
  put_property(query<IDispatch>(loose.get()).get(), L"ButtonShape", Variant(1L));  // left square
  query<IViewObject>(loose.get())
      ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, memory.dc(), &kPlace, nullptr,
             nullptr, 0);
  EXPECT_NE(GetPixel(memory.dc(), 5, 7), kBehind);
  EXPECT_EQ(GetPixel(memory.dc(), 104, 7), kBehind);
  EXPECT_EQ(GetPixel(memory.dc(), 104, 38), kBehind);
  EXPECT_NE(GetPixel(memory.dc(), 104, 20), kBehind);
  SetPixel(memory.dc(), 0, 0, 0);  // the context clips no more
  EXPECT_EQ(GetPixel(memory.dc(), 0, 0), 0u);
}

TEST_F(ButtonTest, GrowsToFifteenPixels) {
  site_->move(RECT{20, 20, 34, 30});
  pump_for(20);
  RECT client{};
  GetClientRect(window(), &client);
  EXPECT_EQ(client.right, 15);
  EXPECT_EQ(client.bottom, 15);
}

TEST_F(ButtonTest, DrawsAnImageAtItsPlaceAndClearsIt) {
  put(*site_, L"Caption", Variant(L""));
  mouse_away();
  const Picture bare = shot();
  EXPECT_FALSE(to_bool(call(L"LoadImage_FromFile", {Variant(L"Z:/missing.png")})));
  ASSERT_TRUE(to_bool(
      call(L"LoadImage_FromFile", {Variant(std::wstring_view(L"Z:" + kSamples + L"disc.png"))})));
  const Picture with = shot();
  // 16 by 16 in the middle of 121 by 41
  int left = kWidth, right = -1, top = kHeight, bottom = -1;
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x)
      if (with.at(x, y) != bare.at(x, y)) {
        left = std::min(left, x), right = std::max(right, x);
        top = std::min(top, y), bottom = std::max(bottom, y);
      }
  EXPECT_GE(left, 52);
  EXPECT_LE(right, 67);
  EXPECT_GE(top, 12);
  EXPECT_LE(bottom, 27);
  EXPECT_GT(right - left, 8);
  EXPECT_FALSE(to_bool(call(L"LoadImage_FromFile", {Variant(L"Z:/missing.png")})));
  EXPECT_EQ(shot(), with);  // the one before stays
  set(L"PictureOpacity", 0L);
  EXPECT_EQ(shot(), bare);
  set(L"PictureOpacity", 300L);
  EXPECT_EQ(number(*site_, L"PictureOpacity"), 100);
  EXPECT_EQ(shot(), with);
  const auto again = place(L"USButton", RECT{200, 20, 200 + kWidth, 20 + kHeight},
                           save_properties(site_->control()).get());
  // Kept as a file of straight colours, the image comes back within a step or two a channel.
  const Picture back = draw_control(*again, kWidth, kHeight);
  for (size_t i = 0; i < with.pixels.size(); ++i)
    for (int bits = 0; bits < 24; bits += 8)
      ASSERT_NEAR(static_cast<int>(back.pixels[i] >> bits & 255),
                  static_cast<int>(with.pixels[i] >> bits & 255), 2);
  call(L"ClearPicture32Dib");
  EXPECT_EQ(shot(), bare);
}

// A bitmap object of one colour with a key-coloured top left pixel.
ComPtr<IPictureDisp> bitmap_picture(int width, int height, uint32_t pixel, uint32_t corner) {
  DibSection memory;
  memory.create(width, height);
  for (int y = 0; y < height; ++y) std::fill_n(memory.pixels().row(y), width, pixel);
  memory.pixels().row(0)[0] = corner;
  const HDC screen = GetDC(nullptr);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = CreateCompatibleBitmap(screen, width, height);
  const HDC copy = CreateCompatibleDC(screen);
  const HGDIOBJ old = SelectObject(copy, description.bmp.hbitmap);
  BitBlt(copy, 0, 0, width, height, memory.dc(), 0, 0, SRCCOPY);
  SelectObject(copy, old);
  DeleteDC(copy);
  ReleaseDC(nullptr, screen);
  ComPtr<IPictureDisp> out;
  OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, out.put_void());
  return out;
}

TEST_F(ButtonTest, ChoosesThePictureOfItsState) {
  put(*site_, L"Caption", Variant(L""));
  const auto set_picture = [&](const wchar_t* name, uint32_t pixel, int size) {
    put(*site_, name, Variant(bitmap_picture(size, size, pixel, 0xC0C0C0).get()));
  };
  set_picture(L"PictureOn", 0x00FF00, 10);  // goes to Picture: there is none yet
  EXPECT_NE(to_object(get(*site_, L"Picture")).get(), nullptr);
  EXPECT_EQ(to_object(get(*site_, L"PictureOn")).get(), nullptr);
  EXPECT_EQ(number(*site_, L"PictureSizeX"), 10);
  set_picture(L"PictureOver", 0x0000FF, 10);
  EXPECT_EQ(number(*site_, L"PictureSize"), 0);
  set_picture(L"PictureOn", 0xFF0000, 11);
  EXPECT_EQ(number(*site_, L"PictureSize"), 5);
  mouse_away();
  EXPECT_EQ(shot().at(60, 20), 0x00FF00u);
  const Picture rest = shot();
  EXPECT_EQ(rest.at((kWidth - 10) / 2, (kHeight - 10) / 2),
            rest.at(10, (kHeight - 10) / 2));  // the key
  mouse_move(window(), 10, 10);
  EXPECT_EQ(shot().at(60, 20), 0x0000FFu);
  mouse_down();
  EXPECT_EQ(shot().at(60, 20), 0xFF0000u);
  mouse_up();
  set(L"Enabled", false);
  const ColorRef behind = to_color(shot().at(10, 20));
  EXPECT_EQ(to_color(shot().at(60, 20)), BlendColor(behind, 0x00FF00, 0.2));
}

TEST_F(ButtonTest, SizesItsPictures) {
  for (const auto& [size, side] :
       {std::pair{1L, 16L}, {2L, 24L}, {3L, 32L}, {4L, 48L}, {5L, 48L}}) {
    set(L"PictureSize", size);
    EXPECT_EQ(number(*site_, L"PictureSizeX"), side);
    EXPECT_EQ(number(*site_, L"PictureSizeY"), side);
  }
}

TEST_F(ButtonTest, TakesTheHandAwayForAnotherPointer) {
  EXPECT_EQ(number(*site_, L"MousePointer"), 99);
  set(L"MousePointer", 2L);
  EXPECT_FALSE(flag(L"HandPointer"));
  EXPECT_EQ(number(*site_, L"MousePointer"), 2);
  set(L"HandPointer", true);
  EXPECT_EQ(number(*site_, L"MousePointer"), 99);
}

TEST_F(ButtonTest, KeepsAColourSetAfterTheTheme) {
  set(L"Theme", 0L);
  EXPECT_EQ(number(*site_, L"BorderColor"), 0xE2A981);
  EXPECT_EQ(number(*site_, L"ButtonShape"), 0);
  set(L"BorderColor", 0x112233L);
  const auto again =
      place(L"USButton", RECT{200, 20, 300, 50}, save_properties(site_->control()).get());
  EXPECT_EQ(number(*again, L"BorderColor"), 0x112233);
  EXPECT_EQ(number(*again, L"GradientColorOver3"), 0x49D3FF);
  set(L"Theme", 9L);  // none: the colours stay
  EXPECT_EQ(number(*site_, L"BorderColor"), 0x112233);
}

TEST_F(ButtonTest, DrawsNothingAnewForAMoveThatShowsNothingElse) {
  mouse_move(window(), 10, 10);
  UpdateWindow(window());
  mouse_move(window(), 11, 11);
  EXPECT_FALSE(GetUpdateRect(window(), nullptr, FALSE));
}

}  // namespace
}  // namespace kestrelon::host
