#include "controls/us_label/us_label_layout.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class LabelTest : public ControlTest {
 protected:
  ComPtr<ControlSite> label(const wchar_t* caption, const RECT& place_at = {20, 20, 180, 50}) {
    const auto site = place(L"USLabel", place_at);
    put(*site, L"Caption", Variant(caption));
    return site;
  }
  void show() {
    bring_up(form_);
    mouse_away();
  }
  void click(int x, int y) {
    part_clicks();
    mouse_click(form_.hwnd(), x, y);
  }
  static int inked(const Picture& picture, uint32_t behind) {
    return static_cast<int>(picture.pixels.size()) -
           static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), behind));
  }
  static bool has(const Picture& picture, uint32_t color) {
    return std::count(picture.pixels.begin(), picture.pixels.end(), color) > 0;
  }
};

TEST_F(LabelTest, LivesWithoutAWindowAndReportsTheMouse) {
  const auto site = label(L"Cliente");
  show();
  EXPECT_EQ(site->window(), nullptr);
  EXPECT_EQ(number(*site, L"hWnd"), 0);
  take_log(*site);
  click(30, 30);
  EXPECT_EQ(take_names(*site), (Names{L"MouseEnter", L"MouseDown", L"MouseUp", L"Click"}));
  part_clicks();
  mouse_click(form_.hwnd(), 30, 30, MouseButton::kRight);
  EXPECT_EQ(take_names(*site), (Names{L"MouseDown", L"MouseUp"}));
  mouse_away();
  EXPECT_EQ(take_names(*site), Names{L"MouseExit"});
}

TEST_F(LabelTest, RepeatsTheExitForEachMovementOutsideUnderCapture) {
  const auto site = label(L"Cliente");
  show();
  mouse_move(form_.hwnd(), 30, 30);
  mouse_down();
  take_log(*site);
  for (int x = 300; x < 303; ++x) mouse_move(form_.hwnd(), x, 30);
  const Names names = take_names(*site);
  EXPECT_GE(std::count(names.begin(), names.end(), L"MouseExit"), 3);
  mouse_up();
  EXPECT_EQ(std::count(names.begin(), names.end(), L"Click"), 0);
}

TEST_F(LabelTest, IsClearBesideItsTextAndOpaqueWhenToldSo) {
  const auto site = label(L"Cliente");
  const Picture over_magenta = draw_control(*site, 160, 30);
  EXPECT_EQ(over_magenta.at(155, 25), 0xFF00FFu);
  EXPECT_GT(inked(over_magenta, 0xFF00FF), 20);
  put(*site, L"BackStyle", Variant(1L));
  put(*site, L"BackColor", Variant(0x332211L));
  EXPECT_EQ(draw_control(*site, 160, 30).at(155, 25), 0x112233u);
  put(*site, L"BorderStyle", Variant(1L));
  put(*site, L"BorderColor", Variant(0x0000FFL));
  const Picture framed = draw_control(*site, 160, 30);
  for (const auto& [x, y] : {std::pair{0, 0}, {159, 0}, {0, 29}, {159, 29}})
    EXPECT_EQ(framed.at(x, y), 0xFF0000u) << x << ", " << y;
}

TEST_F(LabelTest, TurnsTheColorAtTheLastDelimiterAndNotUnderThePointerOfALink) {
  const auto site = label(L"||||-||||-||||");
  put(*site, L"ForeColor", Variant(0x0000FFL));
  put(*site, L"ForeColorDelimiter", Variant(0xFF0000L));
  EXPECT_FALSE(has(draw_control(*site, 160, 30, 0), 0x0000FF));
  put(*site, L"CaptionDelimiter", Variant(L"-"));
  const Picture both = draw_control(*site, 160, 30, 0);
  int last_red = 0, first_blue = 160;
  for (int x = 0; x < 160; ++x)
    for (int y = 0; y < 30; ++y) {
      const uint32_t pixel = both.at(x, y);
      if ((pixel >> 16) > (pixel & 0xFF)) last_red = x;
      if ((pixel & 0xFF) > (pixel >> 16)) first_blue = std::min(first_blue, x);
    }
  EXPECT_GT(last_red, 10);
  EXPECT_LT(first_blue, 160);
  EXPECT_LE(last_red, first_blue);
}

TEST_F(LabelTest, TakesTheSizeOfItsText) {
  const auto site = label(L"um dois tres quatro cinco seis", {20, 20, 80, 50});
  put(*site, L"AutoSize", Variant(true));
  const RECT one_line = site->bounds();
  EXPECT_GT(one_line.right - one_line.left, 100);
  put(*site, L"Caption", Variant(L"um"));
  EXPECT_LT(site->bounds().right - site->bounds().left, 60);
  EXPECT_EQ(site->bounds().bottom - site->bounds().top, one_line.bottom - one_line.top);
  site->move(RECT{20, 20, 80, 50});
  put(*site, L"WordWrap", Variant(true));
  put(*site, L"Caption", Variant(L"um dois tres quatro cinco seis"));
  EXPECT_EQ(site->bounds().right, 80);
  EXPECT_GT(site->bounds().bottom - site->bounds().top, one_line.bottom - one_line.top);
  put(*site, L"Caption", Variant(L""));
  EXPECT_EQ(site->bounds().bottom - site->bounds().top, one_line.bottom - one_line.top);
}

TEST_F(LabelTest, RaisesClickBeforeALinkOpensAndHeedsAnEmptiedAddress) {
  const auto site = label(L"Manual");
  put(*site, L"LinkUrl", Variant(L"https://exemplo.invalid/"));
  std::wstring address = L"?";
  site->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name != L"Click") return;
    put(*site, L"LinkUrl", Variant(L""));
    address = to_text(get(*site, L"LinkUrl"));
  });
  show();
  click(30, 30);
  EXPECT_EQ(address, L"");
}

TEST_F(LabelTest, UnderlinesALinkUnderThePointerAndTakesItsColor) {
  const auto site = label(L"Manual");
  put(*site, L"ForeColor", Variant(0x0000FFL));
  put(*site, L"ForeColorOver", Variant(0x00FF00L));
  show();
  const Picture away = draw_control(*site, 160, 30, 0);
  mouse_move(form_.hwnd(), 30, 30);
  EXPECT_EQ(draw_control(*site, 160, 30, 0), away);
  put(*site, L"LinkUrl", Variant(L"https://exemplo.invalid/"));
  const Picture over = draw_control(*site, 160, 30, 0);
  EXPECT_TRUE(has(over, 0x00FF00));
  EXPECT_FALSE(has(over, 0xFF0000));
  EXPECT_GT(inked(over, 0), inked(away, 0));
  mouse_away();
  EXPECT_TRUE(has(draw_control(*site, 160, 30, 0), 0xFF0000));
}

TEST_F(LabelTest, HandsItsAccessKeyToTheNextControl) {
  const auto site = label(L"&Nome");
  const auto box = place(L"USCheckBox", RECT{20, 80, 180, 110});
  const auto other = place(L"USCheckBox", RECT{20, 120, 180, 150});
  show();
  other->take_focus();
  key_chord(VK_MENU, 'N');
  EXPECT_TRUE(pump_until([&] { return GetFocus() == box->window(); }, 500));
  put(*site, L"UseMnemonic", Variant(false));
  other->take_focus();
  ASSERT_TRUE(pump_until([&] { return GetFocus() == other->window(); }, 500));
  key_chord(VK_MENU, 'N');
  pump_for(50);
  EXPECT_EQ(GetFocus(), other->window());
}

TEST_F(LabelTest, SurvivesHandlersThatRemoveIt) {
  for (const wchar_t* event : {L"Change", L"MouseEnter", L"MouseDown", L"Click"}) {
    auto site = label(L"Cliente");
    put(*site, L"LinkUrl", Variant(L"nenhum endereço"));
    put(*site, L"AutoSize", Variant(true));
    form_.show();
    mouse_away();
    bool removed = false;
    site->on_event([&](const std::wstring& name, DISPPARAMS&) {
      if (name != event || removed) return;
      removed = true;
      form_.remove(*site);
    });
    put(*site, L"Caption", Variant(L"Outro texto"));
    if (!removed) click(24, 24);
    EXPECT_TRUE(removed) << std::string(event, event + wcslen(event));
    site.reset();
    pump_for(50);
  }
}

TEST_F(LabelTest, TakesAMouseIconAsItsPointer) {
  const auto site = label(L"Cliente");
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION));
  ComPtr<IDispatch> icon;
  OleCreatePictureIndirect(&description, IID_IDispatch, FALSE, icon.put_void());
  put(*site, L"MouseIcon", Variant(icon.get()));
  EXPECT_EQ(number(*site, L"MousePointer"), 99);
}

TEST_F(LabelTest, AsksBeforeItsBoundCaptionChanges) {
  const auto site = label(L"Cliente");
  site->on_request_edit = [](DISPID id) { return id != 0; };
  put(*site, L"Caption", Variant(L"Outro"));
  EXPECT_EQ(to_text(get(*site, L"Caption")), L"Cliente");
}

TEST(LabelText, FindsKeyAndDelimiterInWhatIsLeftOfTheCaption) {
  const LabelText text = label_text(L"A && &B - C - D", true, L"- ");
  EXPECT_EQ(text.text, L"A & B - C - D");
  EXPECT_EQ(text.underlined, 4u);
  EXPECT_EQ(text.delimiter, 10u);
  EXPECT_EQ(label_text(L"fim&", true, L"").text, L"fim");
  EXPECT_EQ(label_text(L"&a", false, L"").text, L"&a");
  EXPECT_EQ(label_text(L"a", true, L"-").delimiter, LabelText::kNone);
  EXPECT_EQ(label_text(std::wstring(40000, L'x'), true, L"").text.size(), kLongestLabel);
}

TEST(LabelText, KeepsTheLinesThatFitAndRoomForDots) {
  LabelText text = label_text(L"abcdef", false, L"");
  text.ends = {10, 20, 30, 40, 50, 60};
  text.lines = break_lines(text.text, text.ends, 0);
  text.line_height = 10;
  EXPECT_EQ(cut_label(text, 60, 10, 15), -1);
  EXPECT_EQ(cut_label(text, 59, 10, 15), 4);
  EXPECT_EQ(cut_label(text, 5, 10, 15), 0);
  text.lines = {{0, 3, 30}, {3, 3, 30}};
  EXPECT_EQ(cut_label(text, 60, 3, 15), 3);  // the second line has no room: dots behind the first
  EXPECT_EQ(text.lines.size(), 1u);
}

}  // namespace
}  // namespace kestrelon::host
