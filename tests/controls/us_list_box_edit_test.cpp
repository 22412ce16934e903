// Editing in place, and handlers that pull the floor away.
#include "tests/controls/us_list_box_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class ListBoxEditTest : public ListBoxTest {
 protected:
  ListBoxEditTest() {
    put(L"AllowEdit", Variant(true));
    put(L"AllowDrag", Variant(true));
    fill_numbers(5);
    focus();
    put(L"ListIndex", Variant(1L));
    take_log(*site_);
  }
  void start() {
    key_press(VK_F2);
    ASSERT_NE(GetFocus(), window()) << "the editor has the focus";
  }
  bool editing() { return GetWindow(window(), GW_CHILD) != nullptr; }
};

TEST_F(ListBoxEditTest, EnterAndLeavingTakeEscapeDrops) {
  start();
  type_text(L"novo");
  key_press(VK_RETURN);
  EXPECT_FALSE(editing());
  EXPECT_EQ(text(1), L"novo");
  EXPECT_EQ(GetFocus(), window());
  start();
  type_text(L"outro");
  key_press(VK_ESCAPE);
  EXPECT_EQ(text(1), L"novo");
  start();
  type_text(L"clicado");
  click_item(3);
  EXPECT_EQ(text(1), L"clicado");
  const auto other = place(L"USCheckBox", RECT{20, 160, 100, 180});
  put(L"ListIndex", Variant(1L));
  focus();
  start();
  type_text(L"sa\u00edda");
  other->take_focus();
  pump_for(30);
  EXPECT_EQ(text(1), L"sa\u00edda");
}

TEST_F(ListBoxEditTest, AnUnchangedTextIsNoEditAndCancelKeepsTheEditorOpen) {
  start();
  key_press(VK_RETURN);
  Names names = take_names(*site_);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"BeforeEdit"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"AfterEdit"), 0);
  site_->on_event([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"AfterEdit") set_event_argument(params, 2, Variant(true));
  });
  start();
  type_text(L"x");
  key_press(VK_RETURN);
  EXPECT_TRUE(editing());
  EXPECT_EQ(text(1), L"Item 1");
  site_->on_event([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"AfterEdit") set_event_argument(params, 1, Variant(L"do programa"));
  });
  key_press(VK_RETURN);
  EXPECT_EQ(text(1), L"do programa");
}

TEST_F(ListBoxEditTest, TheEditStaysWithItsItem) {
  start();
  type_text(L"zzz");
  call(L"AddItem", {Variant(L"acima"), Variant(0L)});
  call(L"Sort", {Variant(2L)});
  key_press(VK_RETURN);
  Names wanted{L"Item 4", L"Item 3", L"Item 2", L"zzz", L"Item 0", L"acima"};
  EXPECT_EQ(texts(), wanted);
  put(L"ListIndex", Variant(3L));
  start();
  type_text(L"perdido");
  call(L"RemoveItem", {Variant(3L)});
  pump_for(20);
  EXPECT_FALSE(editing());
  wanted.erase(wanted.begin() + 3);
  EXPECT_EQ(texts(), wanted);
}

// What handlers do in the middle of each event.
enum class Deed { kClear, kSort, kRemoveItem, kRemoveControl, kRefill };

class ListBoxHandlerTest : public ListBoxEditTest, public testing::WithParamInterface<Deed> {
 protected:
  void live_through(const std::wstring& event, const std::function<void()>& user) {
    bool done = false;
    site_->on_event([&, event](const std::wstring& name, DISPPARAMS&) {
      if (name != event || std::exchange(done, true)) return;
      perform();
    });
    user();
    pump_for(40);
    EXPECT_TRUE(done) << "the event came";
  }
  void perform() {
    switch (GetParam()) {
      case Deed::kClear:
        call(L"Clear");
        break;
      case Deed::kSort:
        call(L"Sort", {Variant(2L)});
        break;
      case Deed::kRemoveItem:
        call(L"RemoveItem", {Variant(1L)});
        break;
      case Deed::kRefill:
        call(L"Clear");
        fill(L"x\ny");
        break;
      case Deed::kRemoveControl:
        form_.remove(*site_);
    }
  }
};

TEST_P(ListBoxHandlerTest, SelectionChanged) {
  live_through(L"SelectionChanged", [&] { key_press(VK_DOWN); });
}
TEST_P(ListBoxHandlerTest, MouseDown) {
  const int y = middle_of(2);
  live_through(L"MouseDown", [&] { mouse_click(window(), 60, y); });
}
TEST_P(ListBoxHandlerTest, KeyDown) {
  live_through(L"KeyDown", [&] { key_press(VK_END); });
}
TEST_P(ListBoxHandlerTest, KeyPress) {
  live_through(L"KeyPress", [&] { type_text(L"i"); });
}
TEST_P(ListBoxHandlerTest, BeforeEdit) {
  live_through(L"BeforeEdit", [&] { key_press(VK_F2); });
}
TEST_P(ListBoxHandlerTest, AfterEdit) {
  start();
  type_text(L"q");
  live_through(L"AfterEdit", [&] { key_press(VK_RETURN); });
}
TEST_P(ListBoxHandlerTest, BeforeMove) {
  live_through(L"BeforeMove", [&] { key_chord(VK_MENU, VK_DOWN); });
}
TEST_P(ListBoxHandlerTest, AfterMove) {
  live_through(L"AfterMove", [&] { key_chord(VK_MENU, VK_DOWN); });
}
TEST_P(ListBoxHandlerTest, ItemChecked) {
  put(L"CheckBoxes", Variant(true));
  live_through(L"ItemChecked", [&] { key_press(VK_SPACE); });
}
TEST_P(ListBoxHandlerTest, RequestItem) {
  live_through(L"RequestItem", [&] { put(L"VirtualCount", Variant(1000L)); });
}
TEST_P(ListBoxHandlerTest, Scroll) {
  fill_numbers(50);
  mouse_move(window(), 60, 30);
  live_through(L"Scroll", [&] { mouse_wheel(-120); });
}
TEST_P(ListBoxHandlerTest, DblClick) {
  const int y = middle_of(2);
  part_clicks();
  live_through(L"DblClick", [&] { mouse_double_click(window(), 60, y); });
}

INSTANTIATE_TEST_SUITE_P(Deeds, ListBoxHandlerTest,
                         testing::Values(Deed::kClear, Deed::kSort, Deed::kRemoveItem,
                                         Deed::kRefill, Deed::kRemoveControl));

}  // namespace
}  // namespace kestrelon::host
