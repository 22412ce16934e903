// The menu under real keys and presses: popups run in the system's loop, input comes from a timer.
#include "frame/private_timer.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

HWND open_popup() {
  return FindWindowW(L"#32768", nullptr);
}

void send_key(WORD key, WORD modifier = 0) {
  std::vector<INPUT> input;
  const auto add = [&](WORD code, DWORD flags) {
    INPUT one{};
    one.type = INPUT_KEYBOARD;
    one.ki.wVk = code;
    one.ki.dwFlags = flags;
    input.push_back(one);
  };
  if (modifier != 0) add(modifier, 0);
  add(key, 0);
  add(key, KEYEVENTF_KEYUP);
  if (modifier != 0) add(modifier, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(input.size()), input.data(), sizeof(INPUT));
}

class MenuTest : public ControlTest {
 protected:
  MenuTest() : menu_(place(L"USMenu", RECT{0, 0, 400, 24})) {
    add(L"&Arquivo", L"arquivo");
    add(L"&Novo", L"novo", L"arquivo");
    add(L"-", L"", L"arquivo");
    add(L"&Salvar", L"salvar", L"arquivo");
    add(L"&Exportar", L"exportar", L"arquivo");
    add(L"&CSV", L"csv", L"exportar");
    add(L"&XML", L"xml", L"exportar");
    add(L"&Editar", L"editar");
    add(L"&Copiar", L"copiar", L"editar");
    bring_up(form_);
    mouse_away();
    take_log(*menu_);
  }
  long add(const wchar_t* caption, const wchar_t* key, const wchar_t* parent = L"") {
    return to_long(call_method(menu_->control_dispatch().get(), L"AddItem",
                               {Variant(caption), Variant(key), Variant(parent)}));
  }
  /// Sends keys, one a turn, once a popup is open; Escape ends what is then still open.
  void keys(std::vector<WORD> wanted) {
    next_ = 0;
    timer_.start(50, [this, wanted = std::move(wanted)] {
      if (open_popup() == nullptr) return;
      if (next_ < wanted.size()) return send_key(wanted[next_++]);
      if (next_++ > wanted.size() + 10) send_key(VK_ESCAPE);
    });
  }
  std::wstring popup(const wchar_t* key) {
    const std::wstring out = to_text(call_method(menu_->control_dispatch().get(), L"PopupMenu",
                                                 {Variant(key), Variant(200L), Variant(200L)}));
    timer_.stop();
    return out;
  }
  Names names() {
    Names out;
    for (std::wstring line : take_log(*menu_)) {
      std::erase(line, L'"');
      if (line.rfind(L"ItemHighlight", 0) != 0 && line.rfind(L"Mouse", 0) != 0) out.push_back(line);
    }
    return out;
  }

  ComPtr<ControlSite> menu_;
  PrivateTimer timer_;
  size_t next_ = 0;
};

TEST_F(MenuTest, ChoosesByKeysThroughTwoLevels) {
  keys({VK_DOWN, VK_RETURN});
  EXPECT_EQ(popup(L"arquivo"), L"novo");
  EXPECT_EQ(names(),
            (Names{L"BeforePopup(arquivo, False)", L"PopupClosed(arquivo)", L"ItemClick(novo)"}));
  keys({'E', 'X'});
  EXPECT_EQ(popup(L"arquivo"), L"xml");
  EXPECT_EQ(names(), (Names{L"BeforePopup(arquivo, False)", L"BeforePopup(exportar, False)",
                            L"PopupClosed(arquivo)", L"ItemClick(xml)"}));
  keys({VK_ESCAPE});
  EXPECT_EQ(popup(L"arquivo"), L"");
}

TEST_F(MenuTest, KeepsRecordsUnderTheirParents) {
  EXPECT_EQ(add(L"Imprimir", L"imprimir", L"arquivo"), 8);
  EXPECT_EQ(add(L"Outro", L"imprimir"), 0);
  EXPECT_EQ(add(L"Sem pai", L"x", L"ninguem"), 0);
  call_method(menu_->control_dispatch().get(), L"RemoveItem", {Variant(L"exportar")});
  EXPECT_EQ(number(*menu_, L"ItemCount"), 7);
  call_method(menu_->control_dispatch().get(), L"Clear", {Variant(L"arquivo")});
  EXPECT_EQ(number(*menu_, L"ItemCount"), 3);
  call_method(menu_->control_dispatch().get(), L"Clear");
  EXPECT_EQ(number(*menu_, L"ItemCount"), 0);
}

TEST_F(MenuTest, OpensFromTheBarAndGoesOnToTheNext) {
  keys({VK_RIGHT, VK_RETURN});
  send_key('A', VK_MENU);
  EXPECT_TRUE(pump_until([this] { return open_popup() == nullptr && next_ >= 2; }, 3000));
  timer_.stop();
  const Names log = names();
  ASSERT_FALSE(log.empty());
  EXPECT_EQ(log.back(), L"ItemClick(copiar)");
}

TEST_F(MenuTest, OpensByAPressAndClosesByEscape) {
  keys({VK_ESCAPE});
  mouse_click(menu_->window(), 20, 10);
  pump_until([this] { return next_ >= 1 && open_popup() == nullptr; }, 2000);
  timer_.stop();
  EXPECT_EQ(names(), (Names{L"BeforePopup(arquivo, False)", L"PopupClosed(arquivo)"}));
}

TEST_F(MenuTest, FiresShortCutsOnlyWhileTheItemIsLive) {
  const auto put_item = [this](const wchar_t* name, const Variant& value) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<wchar_t*>(name);
    const auto object = menu_->control_dispatch();
    ASSERT_EQ(object->GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
    DISPID named = DISPID_PROPERTYPUT;
    Variant arguments[] = {value, Variant(L"salvar")};
    DISPPARAMS all{arguments, &named, 2, 1};
    ASSERT_EQ(
        object->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &all, nullptr, nullptr, nullptr),
        S_OK);
  };
  put_item(L"ItemShortCut", Variant(L"Ctrl+S"));
  take_log(*menu_);
  key_chord(VK_CONTROL, 'S');
  EXPECT_EQ(names(), Names{L"ItemClick(salvar)"});
  put_item(L"ItemEnabled", Variant(false));
  key_chord(VK_CONTROL, 'S');
  EXPECT_EQ(names(), Names{});
}

TEST_F(MenuTest, SurvivesHandlersThatClearCancelNestOrRemove) {
  const auto object = menu_->control_dispatch();
  std::wstring inner = L"?";
  menu_->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name != L"ItemHighlight") return;
    call_method(object.get(), L"Clear");
    inner = to_text(call_method(object.get(), L"PopupMenu", {Variant(L"")}));
  });
  keys({VK_DOWN, VK_RETURN});
  EXPECT_EQ(popup(L"arquivo"), L"novo");
  EXPECT_EQ(inner, L"");
  add(L"A", L"a");
  bool removed = false;
  menu_->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name != L"ItemHighlight" || removed) return;
    removed = true;
    form_.remove(*menu_);
  });
  keys({VK_DOWN, VK_RETURN});
  popup(L"");
  EXPECT_TRUE(removed);
}

TEST_F(MenuTest, RefusesWhatAHandlerCancels) {
  menu_->on_event([&](const std::wstring& name, DISPPARAMS& arguments) {
    if (name == L"BeforePopup") *V_BOOLREF(&event_argument(arguments, 1)) = VARIANT_TRUE;
  });
  EXPECT_EQ(popup(L"arquivo"), L"");
  EXPECT_EQ(names(), Names{L"BeforePopup(arquivo, False)"});
}

TEST_F(MenuTest, SavesItsRecords) {
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(menu_->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  const auto copy = place(L"USMenu", RECT{0, 30, 400, 54}, bag.get());
  EXPECT_EQ(number(*copy, L"ItemCount"), 9);
  const auto again = make_com<PropertyBag>();
  query<IPersistPropertyBag>(copy->control())->Save(again.get(), TRUE, TRUE);
  EXPECT_EQ(bag->entries().size(), again->entries().size());
}

}  // namespace
}  // namespace kestrelon::host
