// The tool bar by real mouse and keys, its records, and handlers that do their worst.
#include <algorithm>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class ToolBarTest : public ControlTest {
 protected:
  ToolBarTest() : bar_(place(L"USToolBar", RECT{10, 10, 460, 40})) {}

  long add(const wchar_t* caption, long style = 0, long type = 0) {
    Variant missing;
    V_VT(&missing) = VT_ERROR;
    V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
    const std::wstring key = L"k" + std::wstring(caption);
    return to_long(
        call_method(bar_->control_dispatch().get(), L"AddButton",
                    {Variant(type), Variant(caption), Variant(std::wstring_view(key)), missing,
                     missing, missing, missing, missing, missing, Variant(style)}));
  }
  long call(const wchar_t* name, std::vector<Variant> arguments) {
    return to_long(call_method(bar_->control_dispatch().get(), name, std::move(arguments)));
  }
  Variant field(const wchar_t* name, long index) {
    return get_property(bar_->control_dispatch().get(), name, {Variant(index)});
  }
  /// Sets an indexed property; the new value is the last argument.
  void put_field(const wchar_t* name, long index, const Variant& value) {
    IDispatch* target = bar_->control_dispatch().get();
    LPOLESTR text = const_cast<LPOLESTR>(name);
    DISPID id = 0, put = DISPID_PROPERTYPUT;
    ASSERT_EQ(target->GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
    VARIANT arguments[] = {value, Variant(index)};
    DISPPARAMS params{arguments, &put, 2, 1};
    EXPECT_EQ(
        target->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr),
        S_OK);
  }
  POINT middle(long index) {
    const long dpi = 96, twips = 1440;
    return {(to_long(field(L"ButtonLeft", index)) + to_long(field(L"ButtonWidth", index)) / 2) *
                dpi / twips,
            (to_long(field(L"ButtonTop", index)) + to_long(field(L"ButtonHeight", index)) / 2) *
                dpi / twips};
  }
  void click(long index) {
    const POINT at = middle(index);
    part_clicks();
    mouse_click(bar_->window(), at.x, at.y);
  }
  /// The lines of ButtonClick, without place and size.
  Names clicks() {
    Names out;
    for (const std::wstring& line : take_log(*bar_))
      if (line.starts_with(L"ButtonClick("))
        out.push_back(line.substr(12, line.find(L',', line.find(L',') + 1) - 12));
    return out;
  }
  void on_click(std::function<void()> handler) {
    bar_->events()->set_handler([handler](const std::wstring& name, DISPPARAMS&) {
      if (name == L"ButtonClick") handler();
    });
  }

  ComPtr<ControlSite> bar_;
};

TEST_F(ToolBarTest, AnswersPositionsAndWhatIsLeft) {
  EXPECT_EQ(add(L"a"), 1);
  EXPECT_EQ(add(L"b"), 2);
  EXPECT_EQ(add(L"c"), 3);
  EXPECT_EQ(call(L"MoveButton", {Variant(1L), Variant(1L)}), 2);
  EXPECT_EQ(to_text(field(L"ButtonKey", 1)), L"kb");
  EXPECT_EQ(call(L"MoveButton", {Variant(1L), Variant(0L)}), 0);
  EXPECT_EQ(call(L"MoveButton", {Variant(3L), Variant(1L)}), 0);
  EXPECT_EQ(call(L"MoveButton", {Variant(2L), Variant(7L)}), 0);
  for (const long bad : {0L, -1L, 4L, 0x7FFFFFFFL, -0x7FFFFFFFL - 1}) {
    EXPECT_EQ(call(L"DeleteButton", {Variant(bad)}), 0);
    EXPECT_EQ(call(L"MoveButton", {Variant(bad), Variant(0L)}), 0);
    EXPECT_EQ(to_text(field(L"ButtonCaption", bad)), L"");
    put_field(L"ButtonCaption", bad, Variant(L"x"));
  }
  EXPECT_EQ(call(L"DeleteButton", {Variant(1L)}), 2);
  EXPECT_EQ(to_text(field(L"ButtonCaption", 1)), L"a");
  EXPECT_EQ(number(*bar_, L"ButtonCount"), 2);
  EXPECT_EQ(to_long(field(L"ButtonForeColor", 1)), 0xB75F31);
  EXPECT_EQ(to_long(field(L"ButtonIconSize", 1)), 16);
}

TEST_F(ToolBarTest, ClicksTellNumberKeyAndPlaceInTwips) {
  add(L"Novo");
  add(L"Abrir");
  bring_up(form_);
  mouse_away();
  click(2);
  const auto log = take_log(*bar_);
  std::wstring wanted = L"ButtonClick(2, \"kAbrir\"";
  for (const wchar_t* name : {L"ButtonLeft", L"ButtonTop", L"ButtonWidth", L"ButtonHeight"})
    wanted += L", " + to_text(field(name, 2));
  EXPECT_EQ(std::count(log.begin(), log.end(), wanted + L")"), 1);
  click(2);
  EXPECT_EQ(take_names(*bar_), (Names{L"MouseDown", L"MouseUp", L"ButtonClick"}));
}

TEST_F(ToolBarTest, ReleasesElsewhereSeparatorsAndDisabledButtonsClickNothing) {
  add(L"Um");
  add(L"", 0, 1);
  add(L"Dois");
  add(L"Tres");
  put_field(L"ButtonEnabled", 3, Variant(false));
  put_field(L"ButtonState", 4, Variant(5L));
  bring_up(form_);
  for (const long index : {2L, 3L, 4L}) click(index);
  mouse_move(bar_->window(), middle(1).x, middle(1).y);
  mouse_down();
  mouse_move(bar_->window(), middle(3).x, middle(3).y);
  mouse_up();
  part_clicks();
  mouse_click(bar_->window(), middle(1).x, middle(1).y, MouseButton::kRight);
  EXPECT_EQ(clicks(), Names{});
  click(1);
  EXPECT_EQ(clicks(), Names{L"1, \"kUm\""});
}

TEST_F(ToolBarTest, CheckButtonsFlipBeforeTheyTell) {
  add(L"Negrito", 1);
  bring_up(form_);
  std::vector<bool> seen;
  on_click([&] { seen.push_back(to_bool(field(L"ButtonValue", 1))); });
  click(1);
  click(1);
  EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

TEST_F(ToolBarTest, DropdownsTellAtThePress) {
  add(L"Mais", 2);
  bring_up(form_);
  mouse_move(bar_->window(), middle(1).x, middle(1).y);
  take_log(*bar_);
  mouse_down();
  EXPECT_EQ(take_names(*bar_), (Names{L"MouseDown", L"ButtonClick"}));
  mouse_up();
  EXPECT_EQ(clicks(), Names{});
}

TEST_F(ToolBarTest, HoverDrawsTheButtonsConcernedAlone) {
  add(L"Um");
  add(L"Dois");
  bring_up(form_);
  mouse_away();
  const UINT repaints = RegisterWindowMessageW(L"Kestrelon2012.FullRepaints");
  const LRESULT whole = SendMessageW(bar_->window(), repaints, 0, 0);
  const LRESULT parts = SendMessageW(bar_->window(), repaints, 1, 0);
  mouse_move(bar_->window(), middle(1).x, middle(1).y);
  mouse_move(bar_->window(), middle(1).x + 1, middle(1).y);
  mouse_move(bar_->window(), middle(2).x, middle(2).y);
  EXPECT_EQ(SendMessageW(bar_->window(), repaints, 0, 0), whole);
  EXPECT_EQ(SendMessageW(bar_->window(), repaints, 1, 0), parts + 3);
}

TEST_F(ToolBarTest, HandlersMayRemoveTheButtonOrAllOrTheControl) {
  for (const long style : {0L, 1L, 2L}) {
    add(L"Um", style);
    add(L"Dois", style);
  }
  bring_up(form_);
  on_click([&] { call(L"DeleteButton", {Variant(1L)}); });
  for (long left = 5; left >= 0; --left) {
    click(1);
    EXPECT_EQ(number(*bar_, L"ButtonCount"), left);
  }
  add(L"Mais", 2);
  const POINT at = middle(1);
  const HWND window = bar_->window();
  on_click([&] { form_.remove(*bar_); });
  part_clicks();
  mouse_click(window, at.x, at.y);
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(ToolBarTest, TheKeyboardWalksPastWhatCannotBeChosen) {
  add(L"&Um");
  add(L"", 0, 1);
  add(L"Dois");
  add(L"&Tres");
  put_field(L"ButtonEnabled", 3, Variant(false));
  bring_up(form_);
  bar_->take_focus();
  pump_for(20);
  key_press(VK_RIGHT);
  key_press(VK_SPACE);
  key_press(VK_RIGHT);
  key_press(VK_RETURN);
  key_press(VK_END);
  key_press(VK_RETURN);
  EXPECT_EQ(clicks(), (Names{L"4, \"k&Tres\"", L"1, \"k&Um\"", L"4, \"k&Tres\""}));
  key_chord(VK_MENU, 'U');
  EXPECT_EQ(clicks(), Names{L"1, \"k&Um\""});
}

TEST_F(ToolBarTest, GripperAndEndPanelTellOfTheirClicks) {
  bring_up(form_);
  take_log(*bar_);
  mouse_click(bar_->window(), 3, 12);
  part_clicks();
  mouse_click(bar_->window(), 445, 12);
  EXPECT_EQ(take_names(*bar_), (Names{L"MouseDown", L"MouseUp", L"GripperClick", L"MouseDown",
                                      L"MouseUp", L"EndPanelClick"}));
}

TEST_F(ToolBarTest, RecordsComeBackAsTheyWereSaved) {
  add(L"Um", 1);
  add(L"", 0, 1);
  put_field(L"ButtonToolTipText", 1, Variant(L"Dica"));
  put_field(L"ButtonValue", 1, Variant(true));
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(bar_->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  const auto copy = place(L"USToolBar", RECT{10, 50, 510, 80}, bag.get());
  const auto again = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(copy->control())->Save(again.get(), TRUE, TRUE), S_OK);
  EXPECT_EQ(number(*copy, L"ButtonCount"), 2);
  bar_ = copy;
  EXPECT_EQ(to_text(field(L"ButtonToolTipText", 1)), L"Dica");
  EXPECT_TRUE(to_bool(field(L"ButtonValue", 1)));
  EXPECT_EQ(to_long(field(L"ButtonType", 2)), 1);
  bag->set(L"ButtonCount", Variant(0x7FFFFFFFL));  // more than there are keys
  EXPECT_EQ(number(*place(L"USToolBar", RECT{10, 90, 510, 120}, bag.get()), L"ButtonCount"), 2);
}

}  // namespace
}  // namespace kestrelon::host
