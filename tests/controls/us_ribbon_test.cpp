// The ribbon by real mouse and keys: what it tells of, what it repaints, and handlers that do their
// worst.
#include <oleacc.h>

#include <algorithm>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

Variant missing() {
  Variant out;
  V_VT(&out) = VT_ERROR;
  V_ERROR(&out) = DISP_E_PARAMNOTFOUND;
  return out;
}

class RibbonTest : public ControlTest {
 protected:
  RibbonTest() : ribbon_(place(L"USRibbon", RECT{10, 10, 450, 60})) {}

  IDispatch* object() { return ribbon_->control_dispatch().get(); }
  void call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    call_method(object(), name, std::move(arguments));
  }
  Variant field(const wchar_t* name, long index) {
    return get_property(object(), name, {Variant(index)});
  }
  void put_field(const wchar_t* name, long index, const Variant& value) {
    LPOLESTR text = const_cast<LPOLESTR>(name);
    DISPID id = 0, put = DISPID_PROPERTYPUT;
    IDispatch* const target = object();
    ASSERT_EQ(target->GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
    VARIANT arguments[] = {value, Variant(index)};
    DISPPARAMS params{arguments, &put, 2, 1};
    EXPECT_EQ(
        target->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr),
        S_OK);
  }
  /// Two tabs; in the first two categories of two buttons each, numbered 10 to 13.
  void fill() {
    call(L"AddTab", {Variant(0L), Variant(L"Início")});
    call(L"AddTab", {Variant(1L), Variant(L"Vendas")});
    call(L"AddCat", {Variant(5L), Variant(0L), Variant(L"Pedidos"), Variant(true)});
    call(L"AddCat", {Variant(6L), Variant(0L), Variant(L"Clientes")});
    call(L"AddCat", {Variant(7L), Variant(1L), Variant(L"Outros")});
    const wchar_t* const captions[] = {L"&Novo", L"Abrir", L"Salvar", L"&Imprimir"};
    for (long i = 0; i < 4; ++i)
      call(L"AddButton", {Variant(10 + i), Variant(5 + i / 2), Variant(captions[i])});
    call(L"AddButton", {Variant(20L), Variant(7L), Variant(L"Relatório")});
    call(L"AddTabButton", {Variant(3L), missing(), missing(), Variant(L"Ajuda")});
    call(L"Refresh");
    bring_up(form_);
    mouse_away();
  }
  /// The middle of an element, found by its name as a reader finds it.
  POINT middle(const std::wstring& name) {
    const auto reader = query<IAccessible>(ribbon_->control());
    long count = 0;
    if (reader) reader->get_accChildCount(&count);
    for (long i = 1; i <= count; ++i) {
      Bstr found;
      reader->get_accName(Variant(i), found.put());
      if (found.view() != name) continue;
      RECT r{};
      reader->accLocation(&r.left, &r.top, &r.right, &r.bottom, Variant(i));
      POINT at{r.left + r.right / 2, r.top + r.bottom / 2};
      ScreenToClient(ribbon_->window(), &at);
      return at;
    }
    ADD_FAILURE() << "no element of that name";
    return {300, 5};  // where nothing is
  }
  void click(const std::wstring& name) {
    const POINT at = middle(name);
    part_clicks();
    mouse_click(ribbon_->window(), at.x, at.y);
  }
  void hover(const std::wstring& name) {
    const POINT at = middle(name);
    mouse_move(ribbon_->window(), at.x, at.y);
  }
  /// Events up to the first argument: "ButtonClick 10".
  Names told() {
    Names out;
    for (std::wstring line : take_log(*ribbon_)) {
      line = line.substr(0, line.find_first_of(L",)"));
      std::replace(line.begin(), line.end(), L'(', L' ');
      out.push_back(std::move(line));
    }
    return out;
  }
  LRESULT repaints(bool parts) {
    return SendMessageW(ribbon_->window(), RegisterWindowMessageW(L"Kestrelon2012.FullRepaints"),
                        parts ? 1 : 0, 0);
  }
  void on_event(std::function<void()> handler) {
    ribbon_->events()->set_handler([handler](const std::wstring& name, DISPPARAMS&) {
      if (name != L"MouseMove") handler();
    });
  }

  ComPtr<ControlSite> ribbon_;
};

TEST_F(RibbonTest, TellsOfEachElementWithItsNumber) {
  fill();
  click(L"Abrir");
  click(L"Pedidos: opções");
  click(L"Ajuda");
  const POINT caption{middle(L"Clientes").x, 105};  // a category by itself tells nothing
  part_clicks();
  mouse_click(ribbon_->window(), caption.x, caption.y);
  click(L"Vendas");
  click(L"Relatório");
  EXPECT_EQ(told(), (Names{L"ButtonClick 11", L"CatClick 5", L"TabButtonClick 3", L"TabClick 1",
                           L"ButtonClick 20"}));
  EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 1);
}

TEST_F(RibbonTest, PositionsAreLeftAndTopInTwips) {
  fill();
  click(L"Novo");
  const auto log = take_log(*ribbon_);
  ASSERT_EQ(log.size(), 1u);
  long index = 0, x = 0, y = 0;
  ASSERT_EQ(swscanf(log[0].c_str(), L"ButtonClick(%ld, %ld, %ld)", &index, &x, &y), 3);
  const POINT at = middle(L"Novo");
  EXPECT_LT(x / 15, at.x);
  EXPECT_GT(x / 15, at.x - 60);
  EXPECT_LT(y / 15, at.y);
  EXPECT_GT(y / 15, 22);
  EXPECT_EQ(x % 15 + y % 15, 0);
}

TEST_F(RibbonTest, TheHeightIsTheBarsOwn) {
  RECT bounds{};
  GetClientRect(ribbon_->window(), &bounds);
  EXPECT_EQ(bounds.bottom, 116);
  put(*ribbon_, L"ShowTabs", Variant(false));
  GetClientRect(ribbon_->window(), &bounds);
  EXPECT_EQ(bounds.bottom, 93);
  put(*ribbon_, L"ShowTabs", Variant(true));
  GetClientRect(ribbon_->window(), &bounds);
  EXPECT_EQ(bounds.bottom, 116);
}

TEST_F(RibbonTest, WhatIsAddedWaitsForRefresh) {
  bring_up(form_);
  const LRESULT before = repaints(false);
  call(L"AddTab", {Variant(0L), Variant(L"Início")});
  call(L"AddCat", {Variant(0L), Variant(0L), Variant(L"C")});
  call(L"AddButton", {Variant(0L), Variant(0L), Variant(L"B")});
  EXPECT_EQ(repaints(false), before);
  EXPECT_EQ(number(*ribbon_, L"ActiveTab"), -1);
  call(L"Refresh");
  EXPECT_EQ(repaints(false), before + 1);
  EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 0);
}

TEST_F(RibbonTest, ActivateTabTakesItsBoundsAndTellsNothing) {
  fill();
  for (const long bad : {-1L, 2L, 3L, 32767L}) {
    call(L"ActivateTab", {Variant(bad)});
    EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 0);
  }
  call(L"ActivateTab", {Variant(1L)});
  EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 1);
  EXPECT_EQ(told(), Names{});
}

TEST_F(RibbonTest, DisabledButtonsAndReleasesElsewhereTellNothing) {
  fill();
  put_field(L"ButtonEnabled", 10, Variant(false));
  EXPECT_FALSE(to_bool(field(L"ButtonEnabled", 10)));
  click(L"Novo");
  hover(L"Abrir");
  mouse_down();
  hover(L"Salvar");
  mouse_up();
  part_clicks();
  const POINT at = middle(L"Abrir");
  mouse_click(ribbon_->window(), at.x, at.y, MouseButton::kRight);
  EXPECT_EQ(told(), Names{});
  put_field(L"ButtonEnabled", 10, Variant(true));
  click(L"Novo");
  EXPECT_EQ(told(), Names{L"ButtonClick 10"});
  for (const long bad : {-1L, 100L, 32767L, -32768L}) {
    put_field(L"ButtonEnabled", bad, Variant(true));
    EXPECT_FALSE(to_bool(field(L"ButtonEnabled", bad)));
  }
}

TEST_F(RibbonTest, HoverRepaintsTheElementsConcernedAlone) {
  fill();
  const LRESULT whole = repaints(false);
  const auto parts_of = [&](auto&& action) {
    const LRESULT before = repaints(true);
    action();
    return repaints(true) - before;
  };
  EXPECT_EQ(parts_of([&] { hover(L"Novo"); }), 1);    // with its category
  EXPECT_EQ(parts_of([&] { hover(L"Abrir"); }), 2);   // one plain, one hot
  EXPECT_EQ(parts_of([&] { hover(L"Salvar"); }), 2);  // two categories
  EXPECT_EQ(parts_of([&] { mouse_move(ribbon_->window(), 410, 60); }), 1);
  EXPECT_EQ(parts_of([&] { mouse_move(ribbon_->window(), 411, 61); }), 0);
  hover(L"Novo");
  EXPECT_EQ(parts_of([&] { put_field(L"ButtonEnabled", 13, Variant(false)); }), 1);
  EXPECT_EQ(parts_of([&] { put_field(L"ButtonEnabled", 13, Variant(false)); }), 0);
  EXPECT_EQ(repaints(false), whole);
}

TEST_F(RibbonTest, LeavingEndsHover) {
  fill();
  const Picture plain = draw_control(*ribbon_, 440, 116);
  hover(L"Novo");
  EXPECT_NE(draw_control(*ribbon_, 440, 116), plain);
  mouse_move(ribbon_->window(), 410, 60);
  EXPECT_EQ(draw_control(*ribbon_, 440, 116), plain);
  hover(L"Vendas");
  mouse_away();
  pump_for(60);
  EXPECT_EQ(draw_control(*ribbon_, 440, 116), plain);
}

TEST_F(RibbonTest, HandlersMayRemoveClearSwitchOrDestroy) {
  const wchar_t* const elements[] = {L"Novo", L"Pedidos: opções", L"Ajuda", L"Vendas"};
  const wchar_t* const calls[] = {L"RemoveButton", L"RemoveCat", L"RemoveTab", L"Clear",
                                  L"Refresh"};
  for (const wchar_t* element : elements) {
    for (const wchar_t* name : calls) {
      fill();
      on_event([&] { call(name); });
      click(element);
      on_event([] {});
      call(L"Clear");
    }
    fill();
    on_event([&] { call(L"ActivateTab", {Variant(1L)}); });
    click(element);
    EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 1);
    on_event([] {});
    call(L"Clear");
  }
  for (const wchar_t* element : elements) {
    fill();
    const POINT at = middle(element);
    const HWND window = ribbon_->window();
    on_event([&] { form_.remove(*ribbon_); });
    part_clicks();
    mouse_click(window, at.x, at.y);
    EXPECT_FALSE(IsWindow(window));
    ribbon_ = place(L"USRibbon", RECT{10, 10, 450, 60});
  }
}

TEST_F(RibbonTest, DropDownsTellAtThePressAndMayEndTheControl) {
  fill();
  put_field(L"ButtonStyle", 10, Variant(2L));
  hover(L"Novo");
  mouse_down();
  EXPECT_EQ(told(), Names{L"ButtonDropDown 10"});
  mouse_up();
  EXPECT_EQ(told(), Names{});
  const POINT at = middle(L"Novo");
  const HWND window = ribbon_->window();
  on_event([&] { form_.remove(*ribbon_); });
  part_clicks();
  mouse_click(window, at.x, at.y);
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(RibbonTest, CheckButtonsFlipBeforeTheyTell) {
  fill();
  put_field(L"ButtonStyle", 12, Variant(1L));
  std::vector<bool> seen;
  on_event([&] { seen.push_back(to_bool(field(L"ButtonValue", 12))); });
  click(L"Salvar");
  click(L"Salvar");
  EXPECT_EQ(seen, (std::vector<bool>{true, false}));
}

TEST_F(RibbonTest, TheKeyboardChangesTabsAndWalksOverEnabledButtons) {
  fill();
  put_field(L"ButtonEnabled", 11, Variant(false));
  ribbon_->take_focus();
  pump_for(20);
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  key_press(VK_DOWN);
  key_press(VK_SPACE);
  for (int i = 0; i < 5; ++i) key_press(VK_DOWN);
  key_press(VK_RETURN);
  key_press(VK_UP);
  key_press(VK_RETURN);
  EXPECT_EQ(told(),
            (Names{L"ButtonClick 10", L"ButtonClick 12", L"ButtonClick 13", L"ButtonClick 12"}));
  key_press(VK_RIGHT);
  key_press(VK_RIGHT);
  EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 1);
  key_press(VK_RETURN);  // no button: the form's
  EXPECT_EQ(told(), Names{});
  key_press(VK_LEFT);
  key_press(VK_LEFT);
  EXPECT_EQ(number(*ribbon_, L"ActiveTab"), 0);
  key_chord(VK_MENU, 'I');
  EXPECT_EQ(told(), Names{L"ButtonClick 13"});
  put_field(L"ButtonEnabled", 13, Variant(false));
  key_chord(VK_MENU, 'I');
  EXPECT_EQ(told(), Names{});
}

TEST_F(RibbonTest, TooManyCategoriesScrollByMouseAndKeyboard) {
  fill();
  for (long i = 0; i < 8; ++i) {
    call(L"AddCat", {Variant(30 + i), Variant(0L), Variant(L"Mais")});
    call(L"AddButton", {Variant(30 + i), Variant(30 + i), Variant(L"Botão")});
  }
  call(L"Refresh");
  ribbon_->take_focus();
  for (int i = 0; i < 12; ++i) key_press(VK_DOWN);
  key_press(VK_RETURN);
  for (int i = 0; i < 14; ++i) key_press(VK_UP);
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_EQ(told(), (Names{L"ButtonClick 37", L"ButtonClick 10"}));
  part_clicks();
  mouse_click(ribbon_->window(), 431, 60);  // the arrow at the right end
  click(L"Salvar");
  EXPECT_EQ(told(), Names{L"ButtonClick 12"});
}

TEST_F(RibbonTest, AThemeGivesItsColorsAndARebuild) {
  fill();
  const LRESULT before = repaints(false);
  put(*ribbon_, L"Theme", Variant(1L));
  EXPECT_EQ(repaints(false), before + 1);
  EXPECT_NE(number(*ribbon_, L"ForeColorCat"), 0xB86A3E);
  const long silver = number(*ribbon_, L"ForeColorButton");
  put(*ribbon_, L"Theme", Variant(77L));
  EXPECT_EQ(number(*ribbon_, L"ForeColorButton"), silver);
}

TEST_F(RibbonTest, TheModelIsNotSavedAndTheImageListGoesByItsName) {
  fill();
  const auto images =
      form_.add_control(L"Kestrelon2012.USImageList", L"Figuras", RECT{0, 0, 20, 20});
  ASSERT_TRUE(images);
  put_property(object(), L"ImageList", Variant(images->dispatch()));
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(ribbon_->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  const auto copy = place(L"USRibbon", RECT{10, 200, 610, 316}, bag.get());
  EXPECT_EQ(number(*copy, L"ActiveTab"), -1);
  const Variant list = get(*copy, L"ImageList");
  EXPECT_EQ(V_VT(&list), VT_DISPATCH);
  EXPECT_NE(V_DISPATCH(&list), nullptr);
}

TEST_F(RibbonTest, ReadersHearOfEveryElement) {
  fill();
  put_field(L"ButtonEnabled", 12, Variant(false));
  const auto reader = query<IAccessible>(ribbon_->control());
  ASSERT_TRUE(reader);
  long count = 0;
  reader->get_accChildCount(&count);
  EXPECT_EQ(count, 2 + 2 + 4 + 1 + 1);
  Names unavailable;
  for (long i = 1; i <= count; ++i) {
    Variant state;
    Bstr name;
    reader->get_accState(Variant(i), &state);
    reader->get_accName(Variant(i), name.put());
    EXPECT_FALSE(name.view().empty()) << i;
    if ((V_I4(&state) & STATE_SYSTEM_UNAVAILABLE) != 0) unavailable.emplace_back(name.view());
  }
  EXPECT_EQ(unavailable, Names{L"Salvar"});
  call(L"Clear");
  Bstr gone;
  EXPECT_NE(reader->get_accName(Variant(5L), gone.put()), S_OK);
  EXPECT_NE(reader->accDoDefaultAction(Variant(5L)), E_UNEXPECTED);
}

}  // namespace
}  // namespace kestrelon::host
