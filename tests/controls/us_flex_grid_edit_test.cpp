// The edit cycle by real keys and clicks.
#include "tests/controls/us_flex_grid_fixture.h"

namespace kestrelon::host {
namespace {

using testing::Contains;
using testing::Not;

class FlexGridEditTest : public FlexGridTest {
 protected:
  FlexGridEditTest() { editable(); }

  /// AfterEdit answers this from now on.
  void refuse(bool refused) {
    site_->on_event([refused](const std::wstring& name, DISPPARAMS& params) {
      if (name == L"AfterEdit") set_event_argument(params, 3, Variant(refused));
    });
  }
};

TEST_F(FlexGridEditTest, EachTriggerBeginsAndOnlyWhenItIsAllowed) {
  set(L"EditTrigger", Variant(0L));
  key_press(VK_F2);
  type_text(L"z");
  key_press(VK_RETURN);
  click_cell(0, 0);
  mouse_double_click(window(), cell(0, 0).x, cell(0, 0).y);
  EXPECT_FALSE(editing());
  set(L"EditTrigger", Variant(2L));
  key_press(VK_RETURN);
  EXPECT_TRUE(editing()) << "Enter";
  key_press(VK_ESCAPE);
  set(L"EditTrigger", Variant(4L));
  key_press(VK_F2);
  EXPECT_TRUE(editing()) << "F2";
  key_press(VK_ESCAPE);
  set(L"EditTrigger", Variant(8L));
  click_cell(1, 0);
  EXPECT_TRUE(editing()) << "click";
  EXPECT_EQ(box_text(), L"Ana");
  key_press(VK_ESCAPE);
  set(L"EditTrigger", Variant(16L));
  part_clicks();
  mouse_double_click(window(), cell(2, 0).x, cell(2, 0).y);
  EXPECT_TRUE(editing()) << "double click";
  EXPECT_EQ(box_text(), L"Caio");
  key_press(VK_ESCAPE);
  set(L"EditTrigger", Variant(32L));
  type_text(L"q");
  EXPECT_TRUE(editing()) << "a character";
  EXPECT_EQ(box_text(), L"q") << "which replaces the text";
  key_press(VK_ESCAPE);
  EXPECT_EQ(text(2, 0), L"Caio");
}

TEST_F(FlexGridEditTest, EveryWayOutKeepsWhatWasTyped) {
  const auto type = [&](const wchar_t* word) {
    call(L"ForceCellEdit", {Variant(1L), Variant(0L)});
    type_text(word);
  };
  type(L"enter");
  key_press(VK_RETURN);
  EXPECT_EQ(text(1, 0), L"enter");
  type(L"tab");
  key_press(VK_TAB);
  EXPECT_EQ(text(1, 0), L"tab");
  EXPECT_EQ(count(L"Col"), 1);
  type(L"down");
  key_press(VK_DOWN);
  EXPECT_EQ(text(1, 0), L"down");
  EXPECT_EQ(count(L"Row"), 2);
  type(L"up");
  key_press(VK_UP);
  EXPECT_EQ(text(1, 0), L"up");
  EXPECT_EQ(count(L"Row"), 0);
  type(L"right");
  key_press(VK_RIGHT);
  EXPECT_EQ(text(1, 0), L"right");
  EXPECT_EQ(count(L"Col"), 1);
  type(L"cell");
  click_cell(0, 1);
  EXPECT_EQ(text(1, 0), L"cell");
  type(L"wheel");
  mouse_wheel(-120);
  EXPECT_EQ(text(1, 0), L"wheel");
  type(L"sort");
  call(L"Sort", {Variant(1L), Variant(1L)});
  EXPECT_EQ(text(0, 0), L"sort");
  call(L"ForceCellEdit", {Variant(1L), Variant(0L)});
  type_text(L"foco");
  const auto other = place(L"USTextBox", RECT{20, 240, 120, 264});
  other->take_focus();
  pump_for(20);
  EXPECT_EQ(text(1, 0), L"foco");
  EXPECT_FALSE(editing());
  EXPECT_TRUE(IsChild(other->window(), GetFocus()) || GetFocus() == other->window());
}

TEST_F(FlexGridEditTest, KeysMoveInTheTextBeforeTheyMoveTheCell) {
  key_press(VK_F2);
  key_press(VK_HOME);
  key_press(VK_RIGHT);
  EXPECT_TRUE(editing());
  type_text(L"x");
  EXPECT_EQ(box_text(), L"Bxia");
  key_press(VK_END);
  key_press(VK_F2);  // Left and Right stay in the box from here on
  key_press(VK_RIGHT);
  EXPECT_TRUE(editing());
  key_press(VK_F2);
  key_press(VK_RIGHT);
  EXPECT_FALSE(editing());
  EXPECT_EQ(text(0, 0), L"Bxia");
}

TEST_F(FlexGridEditTest, AClickInTheBoxMovesItsCaretOnly) {
  key_press(VK_F2);
  type_text(L"abc");
  RECT place{};
  GetWindowRect(box(), &place);
  mouse_click(box(), 3, (place.bottom - place.top) / 2);
  EXPECT_TRUE(editing());
  EXPECT_EQ(box_text(), L"abc");
  key_press(VK_ESCAPE);
  EXPECT_EQ(text(0, 0), L"Bia");
}

TEST_F(FlexGridEditTest, UnchangedTextTellsNothing) {
  key_press(VK_F2);
  key_press(VK_RETURN);
  key_press(VK_F2);
  type_text(L"Bia");
  key_press(VK_RETURN);
  const Names names = take_names(*site_);
  EXPECT_THAT(names, Contains(L"BeforeEdit"));
  EXPECT_THAT(names, Not(Contains(L"AfterEdit")));
  EXPECT_FALSE(flag(L"CellsChanged"));
}

TEST_F(FlexGridEditTest, ARefusedTextStaysInTheBoxWhateverIsClicked) {
  refuse(true);
  key_press(VK_F2);
  type_text(L"ruim");
  key_press(VK_RETURN);
  EXPECT_TRUE(editing());
  click_cell(2, 1);
  EXPECT_TRUE(editing());
  EXPECT_EQ(count(L"Row"), 0);
  const auto other = place(L"USTextBox", RECT{20, 240, 120, 264});
  other->take_focus();
  pump_for(50);
  EXPECT_EQ(GetFocus(), box()) << "the box takes the focus back";
  other->take_focus();
  pump_for(50);
  EXPECT_NE(GetFocus(), box()) << "but only once";
  EXPECT_EQ(box_text(), L"ruim");
  refuse(false);
  EXPECT_TRUE(to_bool(call(L"UpdateCell")));
  EXPECT_EQ(text(0, 0), L"ruim");
}

TEST_F(FlexGridEditTest, AQuestionAskedInAfterEditKeepsItsFocus) {
  const auto other = place(L"USTextBox", RECT{20, 240, 120, 264});
  int asked = 0;
  site_->on_event([&](const std::wstring& name, DISPPARAMS& params) {
    if (name != L"AfterEdit") return;
    ++asked;
    other->take_focus();  // as a message box would
    pump_for(20);
    EXPECT_NE(GetFocus(), box());
    set_event_argument(params, 2, Variant(L"do programa"));
  });
  key_press(VK_F2);
  type_text(L"x");
  key_press(VK_RETURN);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(text(0, 0), L"do programa");
}

TEST_F(FlexGridEditTest, BeforeEditRefuses) {
  site_->on_event([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"BeforeEdit") set_event_argument(params, 2, Variant(true));
  });
  key_press(VK_F2);
  EXPECT_FALSE(editing());
  EXPECT_FALSE(box() != nullptr && IsWindowVisible(box()));
}

TEST_F(FlexGridEditTest, TheTextReachesItsRecordWhereverThatHasGone) {
  key_press(VK_F2);
  type_text(L"Zuleica");
  call(L"AddItem", {Variant(L"novo\t1"), Variant(0L)});
  put_indexed(L"RowVisible", {Variant(2L), Variant(false)});
  call(L"RemoveRow", {Variant(2L)});
  EXPECT_TRUE(editing());
  key_press(VK_RETURN);
  EXPECT_EQ(text(1, 0), L"Zuleica");
  EXPECT_EQ(text(0, 0), L"novo");
  EXPECT_TRUE(sound());
  call(L"ForceCellEdit", {Variant(1L), Variant(0L)});
  type_text(L"perdido");
  call(L"RemoveRow", {Variant(1L)});
  EXPECT_FALSE(editing());
  EXPECT_NE(text(1, 0), L"perdido");
}

TEST_F(FlexGridEditTest, FiltersTakeTheirCharactersOnly) {
  const long upper = column(L"Sigla", kString, L">");
  const long lower = column(L"Minúsculas", kString, L"<");
  const long few = column(L"Vogais", kString, L"aeiou");
  const auto typed = [&](long column, const wchar_t* keys) {
    call(L"ForceCellEdit", {Variant(0L), Variant(column)});
    EXPECT_TRUE(editing());
    type_text(keys);
    key_press(VK_RETURN);
    return text(0, column);
  };
  EXPECT_EQ(typed(upper, L"ab1ç"), L"AB1Ç");
  EXPECT_EQ(typed(lower, L"AB1"), L"ab1");
  EXPECT_EQ(typed(few, L"kaUse."), L"aUe.") << "case does not matter, a point passes";
  EXPECT_EQ(typed(1, L"x1.2,-3z"), L"1.2,-3");
  // What is no number counts as none.
  EXPECT_DOUBLE_EQ(to_double(get_property(grid(), L"TotalColumns", {Variant(1L)})), 103);
}

TEST_F(FlexGridEditTest, SeveralLinesKeepTheirBreaks) {
  put_indexed(L"CellText", {Variant(0L), Variant(0L), Variant(L"um\r\ndois")});
  key_press(VK_F2);
  key_press(VK_RETURN);
  EXPECT_EQ(text(0, 0), L"um\r\ndois") << "unchanged";
  key_press(VK_F2);
  key_press(VK_END);
  key_chord(VK_CONTROL, VK_END);
  call(L"ForceCellEdit", {Variant(0L), Variant(0L)});
  type_text(L"x");
  key_chord(VK_CONTROL, VK_RETURN);
  type_text(L"y");
  key_press(VK_UP);
  EXPECT_TRUE(editing()) << "Up stays within the lines";
  key_press(VK_UP);
  EXPECT_FALSE(editing()) << "and leaves from the first";
  EXPECT_EQ(text(0, 0), L"x\r\ny");
}

TEST_F(FlexGridEditTest, AnInputMethodOpensTheBox) {
  SendMessageW(window(), WM_IME_STARTCOMPOSITION, 0, 0);
  EXPECT_TRUE(editing());
  EXPECT_EQ(GetFocus(), box());
}

TEST_F(FlexGridEditTest, TheClipboardServesOnlyWhereAllowed) {
  const auto select = [&](long from, long to) {
    set(L"MultiSelect", Variant(1L));
    call(L"RowColSet", {Variant(from), Variant(0L)});
    for (long i = from; i < to; ++i) key_chord(VK_SHIFT, VK_DOWN);
  };
  select(0, 1);
  key_chord(VK_CONTROL, 'C');
  set(L"AllowClipboard", Variant(true));
  key_chord(VK_CONTROL, 'C');
  call(L"RowColSet", {Variant(1L), Variant(0L)});
  key_chord(VK_CONTROL, 'V');
  EXPECT_EQ(text(1, 0), L"Bia");
  EXPECT_EQ(text(2, 1), L"3");
  EXPECT_DOUBLE_EQ(to_double(get_property(grid(), L"TotalColumns", {Variant(1L)})), 43.0);
  put_indexed(L"ColLocked", {Variant(1L), Variant(true)});
  call(L"RowColSet", {Variant(0L), Variant(0L)});
  refuse(true);
  take_log(*site_);
  key_chord(VK_CONTROL, 'V');
  EXPECT_EQ(text(0, 0), L"Bia");
  EXPECT_TRUE(sound());
}

}  // namespace
}  // namespace kestrelon::host
