#include <fstream>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class PictureLcdTest : public ControlTest {
 protected:
  ComPtr<ControlSite> panel(const RECT& bounds = {20, 20, 220, 80}) {
    const auto site = place(L"USPictureLCD", bounds);
    put(*site, L"GradientColor1", Variant(0xFFFFFFL));
    put(*site, L"GradientColor2", Variant(0xFFFFFFL));
    put(*site, L"ForeColor2", Variant(0L));
    put(*site, L"GhostOpacity", Variant(0L));
    return site;
  }
  void show() {
    bring_up(form_);
    mouse_away();
  }
  static LRESULT repaints(ControlSite& site, WPARAM parts = 0) {
    static const UINT message = RegisterWindowMessageW(L"Kestrelon2012.FullRepaints");
    return SendMessageW(site.window(), message, parts, 0);
  }
  static Picture shown(ControlSite& site) { return draw_control(site, 200, 60); }
  static Picture shown(ControlSite& site, const Variant& value) {
    put(site, L"Value", value);
    return shown(site);
  }
  // Columns in which something dark stands, borders left out.
  static std::vector<bool> columns(const Picture& picture) {
    std::vector<bool> out;
    for (int x = 1; x < picture.width - 1; ++x) {
      bool dark = false;
      for (int y = 1; y < picture.height - 1; ++y) dark |= (picture.at(x, y) & 0xFF) < 100;
      out.push_back(dark);
    }
    return out;
  }
  static long last_dark(const Picture& picture) {
    const auto dark = columns(picture);
    return static_cast<long>(dark.rend() - std::find(dark.rbegin(), dark.rend(), true));
  }
};

TEST_F(PictureLcdTest, ShowsEachKindOfValueAlikeWhereItMeansTheSame) {
  const auto site = panel();
  const Picture price = shown(*site, Variant(1234.5));
  EXPECT_EQ(shown(*site, Variant(L"1.234,50")), price);
  EXPECT_EQ(shown(*site, Variant(1234.5f)), price);
  Variant money;
  V_VT(&money) = VT_CY;
  V_CY(&money).int64 = 12345000;
  EXPECT_EQ(shown(*site, money), price);
  EXPECT_NE(shown(*site, Variant(1234.51)), price);
  put(*site, L"Format", Variant(L"000"));
  const Picture three = shown(*site, Variant(7L));
  EXPECT_EQ(shown(*site, Variant(L"007")), three);
  put(*site, L"Format", Variant(L""));
  Variant date;
  V_VT(&date) = VT_DATE;
  V_DATE(&date) = 0.5;
  EXPECT_EQ(shown(*site, date), shown(*site, Variant(L"12:00:00")));
  const Picture nothing = shown(*site, Variant());
  EXPECT_EQ(columns(nothing), std::vector<bool>(198, false));
  EXPECT_EQ(shown(*site, Variant(L"")), nothing);
}

TEST_F(PictureLcdTest, KeepsPlacesAndShowsDashesForTooMany) {
  const auto site = panel();
  put(*site, L"Decimals", Variant(0L));
  put(*site, L"Digits", Variant(3L));
  const Picture dashes = shown(*site, Variant(L"---"));
  EXPECT_EQ(shown(*site, Variant(1234L)), dashes);
  EXPECT_NE(shown(*site, Variant(123L)), dashes);
  const Picture padded = shown(*site, Variant(L"007"));
  EXPECT_NE(shown(*site, Variant(7L)), padded);
  put(*site, L"LeadingZeros", Variant(true));
  EXPECT_EQ(shown(*site), padded);
}

TEST_F(PictureLcdTest, AlignsAndShrinksToTheWidth) {
  const auto site = panel();
  const long right = last_dark(shown(*site, Variant(L"8")));
  put(*site, L"Alignment", Variant(0L));
  const long left = last_dark(shown(*site));
  EXPECT_LT(left, 60);
  EXPECT_GT(right, 150);
  const Picture many = shown(*site, Variant(std::wstring_view(std::wstring(40, L'8'))));
  EXPECT_LE(last_dark(many), 195);
  EXPECT_GT(last_dark(many), 170);
  const Picture font = [&] {
    put(*site, L"DigitStyle", Variant(0L));
    return shown(*site);
  }();
  EXPECT_LE(last_dark(font), 197);
  EXPECT_GT(last_dark(font), 100);
}

TEST_F(PictureLcdTest, DrawsAChangedDigitAlone) {
  const auto site = panel();
  put(*site, L"Value", Variant(L"12.345"));
  show();
  const LRESULT whole = repaints(*site), parts = repaints(*site, 1);
  put(*site, L"Value", Variant(L"12.346"));
  pump_for(30);
  EXPECT_EQ(repaints(*site), whole);
  EXPECT_EQ(repaints(*site, 1), parts + 1);
  put(*site, L"Value", Variant(L"12.346"));
  EXPECT_EQ(repaints(*site, 1), parts + 1);
  // What was drawn in parts is what is drawn at once.
  for (const wchar_t* text : {L"88.888", L"1,1111", L"-    ", L"00:00:0"})
    put(*site, L"Value", Variant(text));
  const Picture by_parts = shown(*site);
  call_method(site->control_dispatch().get(), L"Refresh");
  EXPECT_EQ(shown(*site), by_parts);
}

TEST_F(PictureLcdTest, TellsOnlyChangesThatShow) {
  const auto site = panel();
  put(*site, L"Value", Variant(1.001));
  put(*site, L"Value", Variant(1.002));
  put(*site, L"Value", Variant(1.01));
  EXPECT_EQ(take_names(*site), (Names{L"Change", L"Change"}));
  site->on_request_edit = [](DISPID id) { return id != 0; };
  put(*site, L"Value", Variant(5L));
  EXPECT_EQ(to_double(get(*site, L"Value")), 1.01);
}

TEST_F(PictureLcdTest, RunsAsAClockOnlyWhileItIsSeen) {
  const auto site = panel();
  put(*site, L"Mode", Variant(1L));
  show();
  const auto drawings = [&] { return repaints(*site) + repaints(*site, 1); };
  const LRESULT began = drawings();
  pump_for(2300);
  // Two or three seconds have begun; at most three places change with each.
  EXPECT_GE(drawings(), began + 2);
  EXPECT_LE(drawings(), began + 18);
  ShowWindow(site->window(), SW_HIDE);
  pump_for(50);
  const LRESULT hidden = drawings();
  pump_for(1200);
  EXPECT_EQ(drawings(), hidden);
}

TEST_F(PictureLcdTest, CountsDownAndTellsTheEndOnce) {
  const auto site = panel();
  put(*site, L"Mode", Variant(2L));
  put(*site, L"Value", Variant(2L));
  show();
  take_log(*site);
  ASSERT_TRUE(pump_until([&] { return number(*site, L"Value") == 0; }, 5000));
  pump_for(1200);
  EXPECT_EQ(take_names(*site), (Names{L"Change", L"Change", L"CountdownEnd"}));
  int ends = 0;
  site->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name == L"CountdownEnd" && ++ends == 1) put(*site, L"Value", Variant(1L));
  });
  put(*site, L"Value", Variant(1L));
  EXPECT_TRUE(pump_until([&] { return ends == 2; }, 6000));
}

TEST_F(PictureLcdTest, SurvivesHandlersThatRemoveIt) {
  for (const wchar_t* event : {L"Change", L"CountdownEnd", L"MouseEnter", L"Click"}) {
    auto site = panel();
    form_.show();
    mouse_away();
    bool removed = false;
    site->on_event([&](const std::wstring& name, DISPPARAMS&) {
      if (name != event || removed) return;
      removed = true;
      form_.remove(*site);
    });
    put(*site, L"Mode", Variant(2L));
    put(*site, L"Value", Variant(1L));
    pump_until([&] { return removed; }, 1500);
    if (!removed) {
      part_clicks();
      mouse_click(form_.hwnd(), 30, 30);
    }
    EXPECT_TRUE(removed) << std::string(event, event + wcslen(event));
    site.reset();
    pump_for(50);
  }
}

TEST_F(PictureLcdTest, DrawsDigitsFromAPictureOfCellsAndSavesItsBytes) {
  // Ten cells of 4 by 8 pixels as a bitmap file of 24 bits; only the cell of "7" is blue.
  constexpr int kCell = 4, kHigh = 8, kWide = 10 * kCell, kRow = kWide * 3;
  std::vector<uint8_t> file(54 + kRow * kHigh, 0xFF);
  std::fill_n(file.begin(), 54, uint8_t{0});
  file[0] = 'B', file[1] = 'M', file[2] = static_cast<uint8_t>(file.size() & 0xFF);
  file[3] = static_cast<uint8_t>(file.size() >> 8), file[10] = 54, file[14] = 40;
  file[18] = kWide, file[22] = kHigh, file[26] = 1, file[28] = 24;
  for (int y = 0; y < kHigh; ++y)
    for (int x = 7 * kCell; x < 8 * kCell; ++x)
      for (int c = 1; c < 3; ++c) file[static_cast<size_t>(54 + y * kRow + x * 3 + c)] = 0;
  wchar_t folder[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  const std::wstring name = std::wstring(folder) + L"kestrelon_digits.bmp";
  std::ofstream(std::string(name.begin(), name.end()), std::ios::binary)
      .write(reinterpret_cast<const char*>(file.data()), static_cast<long>(file.size()));

  const auto site = panel();
  const auto control = site->control_dispatch();
  put(*site, L"DigitStyle", Variant(2L));
  put(*site, L"DigitChars", Variant(L"0123456789"));
  EXPECT_FALSE(to_bool(call_method(control.get(), L"LoadDigits_FromFile", {Variant(L"")})));
  EXPECT_TRUE(to_bool(call_method(control.get(), L"LoadDigits_FromFile", {Variant(name.c_str())})));
  DeleteFileW(name.c_str());
  const auto blue = [](const Picture& picture) {
    return std::count(picture.pixels.begin(), picture.pixels.end(), 0x0000FFu);
  };
  EXPECT_EQ(blue(shown(*site, Variant(L"123"))), 0);
  const auto one = blue(shown(*site, Variant(L"172")));
  EXPECT_GT(one, 50);
  EXPECT_GT(blue(shown(*site, Variant(L"777"))), 2 * one);
  EXPECT_EQ(blue(shown(*site, Variant(L"x"))), 0);

  const auto bag = make_com<PropertyBag>();
  query<IPersistPropertyBag>(site->control())->Save(bag.get(), TRUE, FALSE);
  const auto copy = place(L"USPictureLCD", RECT{20, 20, 220, 80}, bag.get());
  EXPECT_EQ(blue(shown(*copy, Variant(L"172"))), one);
  call_method(copy->control_dispatch().get(), L"ClearDigits");
  EXPECT_EQ(blue(shown(*copy)), 0);
}

}  // namespace
}  // namespace kestrelon::host
