// The status bar by real mouse, its records, its automatic texts, and handlers that do their worst.
#include <oleacc.h>

#include <algorithm>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class StatusBarTest : public ControlTest {
 protected:
  StatusBarTest() : bar_(place(L"USStatusBar", RECT{0, 290, 480, 314})) {}

  long call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    const Variant answer = call_method(bar_->control_dispatch().get(), name, std::move(arguments));
    return V_VT(&answer) == VT_EMPTY ? 0 : to_long(answer);
  }
  long add(const wchar_t* caption, const wchar_t* key = L"", long style = 0, long width = 100,
           long sizing = 0) {
    return call(L"AddPanel",
                {Variant(style), Variant(caption), Variant(key), Variant(width), Variant(sizing)});
  }
  Variant field(const wchar_t* name, long index) {
    return get_property(bar_->control_dispatch().get(), name, {Variant(index)});
  }
  void put_field(const wchar_t* name, long index, const Variant& value) {
    put_property(bar_->control_dispatch().get(), name, value, {Variant(index)});
  }
  int left(long index) { return static_cast<int>(to_long(field(L"PanelLeft", index)) / 15); }
  void click(long index) {
    part_clicks();
    mouse_click(bar_->window(), left(index) + 5, 12);
  }
  LRESULT repaints(WPARAM parts = 0) {
    return SendMessageW(bar_->window(), RegisterWindowMessageW(L"Kestrelon2012.FullRepaints"),
                        parts, 0);
  }
  Names clicks(const wchar_t* event = L"PanelClick") {
    Names out;
    const std::wstring head = event + std::wstring(L"(");
    for (const std::wstring& line : take_log(*bar_))
      if (line.starts_with(head))
        out.push_back(line.substr(head.size(), line.find(L',', line.find(L',') + 1) - head.size()));
    return out;
  }
  ComPtr<IAccessible> reader() { return query<IAccessible>(bar_->control()); }
  std::wstring spoken(long index) {
    Bstr name;
    reader()->get_accName(Variant(index), name.put());
    return to_wstring(name.get());
  }

  ComPtr<ControlSite> bar_;
};

TEST_F(StatusBarTest, AnswersPositionsAndRefusesASecondKey) {
  EXPECT_EQ(add(L"a", L"um"), 1);
  EXPECT_EQ(add(L"b", L"dois"), 2);
  EXPECT_EQ(add(L"c", L"um"), 0);
  EXPECT_EQ(add(L"d"), 3);
  EXPECT_EQ(add(L"e"), 4);  // no key is no key twice
  EXPECT_EQ(call(L"PanelIndex", {Variant(L"dois")}), 2);
  EXPECT_EQ(call(L"PanelIndex", {Variant(L"")}), 0);
  put_field(L"PanelKey", 3, Variant(L"um"));
  EXPECT_EQ(to_text(field(L"PanelKey", 3)), L"");
  EXPECT_EQ(call(L"MovePanel", {Variant(1L), Variant(1L)}), 2);
  EXPECT_EQ(call(L"PanelIndex", {Variant(L"um")}), 2);
  EXPECT_EQ(call(L"MovePanel", {Variant(1L), Variant(0L)}), 0);
  EXPECT_EQ(call(L"MovePanel", {Variant(1L), Variant(2L)}), 0);
  for (const long bad : {0L, -1L, 5L, 0x7FFFFFFFL, -0x7FFFFFFFL - 1}) {
    EXPECT_EQ(call(L"DeletePanel", {Variant(bad)}), 0);
    EXPECT_EQ(call(L"MovePanel", {Variant(bad), Variant(0L)}), 0);
    EXPECT_EQ(to_text(field(L"PanelCaption", bad)), L"");
    EXPECT_EQ(to_long(field(L"PanelWidth", bad)), 0);
    EXPECT_EQ(to_long(field(L"PanelLeft", bad)), 0);
    put_field(L"PanelCaption", bad, Variant(L"x"));
  }
  EXPECT_EQ(call(L"DeletePanel", {Variant(1L)}), 3);
  for (long i = 4; i <= 64; ++i) EXPECT_EQ(add(L"x"), i);
  EXPECT_EQ(add(L"x"), 0);
  EXPECT_EQ(number(*bar_, L"PanelCount"), 64);
}

TEST_F(StatusBarTest, ClicksTellPanelAndPlaceAndReleasesElsewhereDoNot) {
  add(L"Pronto", L"texto");
  add(L"Linha 1", L"linha");
  add(L"Desligado", L"d");
  put_field(L"PanelEnabled", 3, Variant(false));
  bring_up(form_);
  click(2);
  EXPECT_EQ(take_names(*bar_),
            (Names{L"MouseEnter", L"MouseDown", L"MouseUp", L"PanelClick", L"Click"}));
  click(3);
  mouse_move(bar_->window(), left(1) + 5, 12);
  mouse_down();
  mouse_move(bar_->window(), left(2) + 5, 12);
  mouse_up();
  EXPECT_EQ(clicks(), Names{});
  part_clicks();
  mouse_double_click(bar_->window(), left(1) + 5, 12);
  EXPECT_EQ(clicks(L"PanelDblClick"), (Names{L"1, \"texto\""}));
}

TEST_F(StatusBarTest, HandlersMayRemoveThePanelOrAllOrTheControl) {
  for (int i = 0; i < 3; ++i) add(L"x");
  bring_up(form_);
  const auto when = [&](std::wstring event, std::function<void()> act) {
    bar_->events()->set_handler([=](const std::wstring& name, DISPPARAMS&) {
      if (name == event) act();
    });
  };
  when(L"MouseDown", [&] { call(L"DeletePanel", {Variant(1L)}); });
  click(1);
  EXPECT_EQ(clicks(), Names{});  // the panel that was pressed is no more
  when(L"PanelClick", [&] {
    while (number(*bar_, L"PanelCount") > 0) call(L"DeletePanel", {Variant(1L)});
  });
  click(1);
  EXPECT_EQ(number(*bar_, L"PanelCount"), 0);
  when(L"PanelClick", [&] { form_.remove(*bar_); });
  add(L"x");
  const HWND window = bar_->window();
  click(1);
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(StatusBarTest, AChangedCaptionDrawsItsPanelAlone) {
  add(L"a", L"", 0, 100, 1);
  add(L"b");
  bring_up(form_);
  const LRESULT whole = repaints(), parts = repaints(1);
  for (long i = 0; i < 100; ++i) put_field(L"PanelCaption", 2, Variant(i));
  UpdateWindow(bar_->window());
  EXPECT_EQ(repaints(), whole);
  EXPECT_EQ(repaints(1), parts + 1);
  put_field(L"PanelCaption", 2, Variant(99L));
  UpdateWindow(bar_->window());
  EXPECT_EQ(repaints(1), parts + 1);
}

TEST_F(StatusBarTest, AContentsPanelGrowsAndTheSpringBesideItGivesWay) {
  add(L"Pronto", L"", 0, 0, 1);
  add(L"1", L"", 0, 0, 2);
  bring_up(form_);
  const int before = left(2);
  put_field(L"PanelCaption", 2, Variant(L"Registro 1.234 de 56.789"));
  EXPECT_LT(left(2), before - 40);
  put_field(L"PanelVisible", 2, Variant(false));
  EXPECT_EQ(to_long(field(L"PanelHeight", 2)), 0);
  EXPECT_FALSE(to_bool(field(L"PanelVisible", 2)));
}

TEST_F(StatusBarTest, PushedTextsCoverTheFirstTextPanelInTurn) {
  add(L"", L"", 2);
  add(L"Pronto");
  bring_up(form_);
  call(L"PopText");
  call(L"PushText", {Variant(L"Abre um arquivo")});
  call(L"PushText", {Variant(L"Salva o arquivo")});
  EXPECT_EQ(spoken(2), L"Salva o arquivo");
  EXPECT_EQ(to_text(field(L"PanelCaption", 2)), L"Pronto");
  call(L"PopText");
  EXPECT_EQ(spoken(2), L"Abre um arquivo");
  call(L"PopText");
  EXPECT_EQ(spoken(2), L"Pronto");
  for (int i = 0; i < 1000; ++i) call(L"PushText", {Variant(L"x")});
  for (int i = 0; i < 1000; ++i) call(L"PopText");
  EXPECT_EQ(spoken(2), L"Pronto");
}

TEST_F(StatusBarTest, AClockWithSecondsGoesOnByItselfAndStopsWhenHidden) {
  add(L"", L"", 2, 80);
  put_field(L"PanelFormat", 1, Variant(L"hh:nn:ss"));
  bring_up(form_);
  const std::wstring first = spoken(1);
  EXPECT_EQ(first.size(), 8u);
  const LRESULT whole = repaints(), parts = repaints(1);
  pump_for(2200);
  EXPECT_NE(spoken(1), first);
  EXPECT_EQ(repaints(), whole);
  EXPECT_GE(repaints(1), parts + 2);
  EXPECT_LE(repaints(1), parts + 3);
  const HWND window = bar_->window();
  ShowWindow(window, SW_HIDE);
  const LRESULT hidden = repaints(1);
  pump_for(1200);
  EXPECT_EQ(repaints(1), hidden);
}

TEST_F(StatusBarTest, LockPanelsFollowTheirKeys) {
  add(L"", L"", 4, 40);
  bring_up(form_);
  const auto reader_state = [&] {
    Variant state;
    reader()->get_accState(Variant(1L), state.put());
    return (to_long(state) & STATE_SYSTEM_CHECKED) != 0;
  };
  const bool before = reader_state();
  const LRESULT parts = repaints(1);
  key_press(VK_CAPITAL);
  pump_for(600);
  EXPECT_NE(reader_state(), before);
  EXPECT_EQ(repaints(1), parts + 1);
  key_press(VK_CAPITAL);
  pump_for(600);
  EXPECT_EQ(reader_state(), before);
  EXPECT_EQ(spoken(1), L"CAPS");
}

TEST_F(StatusBarTest, TheGripSizesTheHostAndGoesWhenTheHostIsMaximized) {
  add(L"Pronto", L"", 0, 0, 1);
  bring_up(form_);
  int asked = 0;
  form_.message_filter = [&](UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
    if (message != WM_NCLBUTTONDOWN) return false;
    asked += wparam == HTBOTTOMRIGHT ? 1 : 0;
    result = 0;
    return true;
  };
  mouse_click(bar_->window(), 476, 20);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(clicks(), Names{});
  put(*bar_, L"ShowSizeGrip", Variant(false));
  UpdateWindow(bar_->window());
  part_clicks();
  mouse_click(bar_->window(), 476, 20);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(clicks(), (Names{L"1, \"\""}));
}

TEST_F(StatusBarTest, RecordsComeBackAsTheyWereSaved) {
  add(L"Um", L"k1", 0, 55);
  add(L"", L"k2", 8, 77);
  put_field(L"PanelImage", 1, Variant(L"casa"));
  put_field(L"PanelImage", 2, Variant(3L));
  put_field(L"PanelValue", 2, Variant(12.5));
  put_field(L"PanelForeColor", 2, Variant(0xFFL));
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(bar_->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  const auto copy = place(L"USStatusBar", RECT{10, 50, 510, 80}, bag.get());
  const auto again = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(copy->control())->Save(again.get(), TRUE, TRUE), S_OK);
  bar_ = copy;
  EXPECT_EQ(number(*bar_, L"PanelCount"), 2);
  EXPECT_EQ(to_text(field(L"PanelImage", 1)), L"casa");
  EXPECT_EQ(to_long(field(L"PanelImage", 2)), 3);
  EXPECT_EQ(to_long(field(L"PanelForeColor", 1)), -1);
  EXPECT_EQ(to_long(field(L"PanelWidth", 2)), 77);
  bag->set(L"PanelCount", Variant(0x7FFFFFFFL));  // more than there are keys
  bag->set(L"PanelStyle1", Variant(99L));
  bag->set(L"PanelWidth1", Variant(0x7FFFFFFFL));
  bar_ = place(L"USStatusBar", RECT{10, 90, 310, 114}, bag.get());
  EXPECT_EQ(number(*bar_, L"PanelCount"), 2);
  bring_up(form_);
  EXPECT_EQ(to_long(field(L"PanelLeft", 2)), 0);  // pushed out of the bar
}

}  // namespace
}  // namespace kestrelon::host
