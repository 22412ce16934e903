// Handlers that pull the floor away, inside of every event.
#include "tests/controls/us_flex_grid_fixture.h"

namespace kestrelon::host {
namespace {

enum class Deed {
  kRemoveRow,
  kClear,
  kClearAll,
  kAddColumn,
  kSort,
  kTheme,
  kEdit,
  kFilter,
  kDestroy
};

struct Case {
  const wchar_t* event;
  void (*user)(class FlexGridEventsTest&);
};

ComPtr<IPictureDisp> small_picture() {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = CreateBitmap(12, 12, 1, 32, nullptr);
  ComPtr<IPictureDisp> picture;
  OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE,
                           reinterpret_cast<void**>(picture.put()));
  return picture;
}

class FlexGridEventsTest : public FlexGridTest,
                           public testing::WithParamInterface<std::tuple<Deed, Case>> {
 public:
  static constexpr long kText = 0, kTick = 1, kPush = 2, kOwn = 3;

  FlexGridEventsTest() {
    column(L"Nome");
    column(L"Pago", kBoolean);
    column(L"Abrir", kButton);
    column(L"Próprio", 5);
    for (int i = 0; i < 40; ++i) row((L"n" + std::to_wstring(40 - i) + L"\tTrue\tb\tc").c_str());
    for (const wchar_t* name : {L"AllowEdit", L"AllowDelete", L"AllowInsert", L"AllowColumnSort",
                                L"AllowColumnDrag", L"AllowColumnResizing", L"RowCheckBoxes"})
      set(name, Variant(true));
    set(L"MultiSelect", Variant(1L));
    put_indexed(L"CellHandPointer", {Variant(1L), Variant(0L), Variant(true)});
    const ComPtr<IPictureDisp> picture = small_picture();
    put_indexed(L"CellPicture",
                {Variant(3L), Variant(0L), Variant(static_cast<IDispatch*>(picture.get()))});
    show();
    focus();
    call(L"RowColSet", {Variant(2L), Variant(0L)});
  }

  void perform(Deed deed) {
    switch (deed) {
      case Deed::kRemoveRow:
        call(L"RemoveRow", {Variant(2L)});
        call(L"RemoveRow", {Variant(0L)});
        break;
      case Deed::kClear:
        call(L"Clear");
        break;
      case Deed::kClearAll:
        call(L"ClearAll");
        break;
      case Deed::kAddColumn:
        call(L"AddColumn", {Variant(L"Mais"), Variant(300.0), Variant(4L), Variant(0L),
                            Variant(L""), Variant(L""), Variant(4L), Variant(false), Variant(1L)});
        break;
      case Deed::kSort:
        call(L"Sort", {Variant(0L), Variant(1L)});
        break;
      case Deed::kTheme:
        set(L"Theme", Variant(0L));
        set(L"RowCheckBoxes", Variant(false));
        break;
      case Deed::kEdit:
        call(L"ForceCellEdit", {Variant(3L), Variant(0L)});
        break;
      case Deed::kFilter:
        call(L"FilterOn", {Variant(L"n1"), Variant(0L), Variant(5L)});
        break;
      case Deed::kDestroy:
        form_.remove(*site_);
        break;
    }
  }
  bool alive() { return site_->window() != nullptr; }
  void click_heading(int x) { mouse_click(window(), x, header_height() / 2); }
  void drag_heading(int from, int to) {
    mouse_move(window(), from, header_height() / 2);
    mouse_down();
    mouse_move(window(), (from + to) / 2, header_height() / 2);
    mouse_move(window(), to, header_height() / 2);
    mouse_up();
  }
  void edit_first() { call(L"ForceCellEdit", {Variant(2L), Variant(0L)}); }
  void press_at(long r, long c, int x) {
    mouse_click(window(), static_cast<int>(cell(r, c).x) + x, static_cast<int>(cell(r, c).y));
  }
};

using T = FlexGridEventsTest;

const Case kCases[] = {
    {L"Click", [](T& t) { t.click_cell(1, 0); }},
    {L"DblClick", [](T& t) { mouse_double_click(t.window(), t.cell(1, 0).x, t.cell(1, 0).y); }},
    {L"KeyDown", [](T&) { key_press(VK_DOWN); }},
    {L"KeyPress", [](T& t) { t.set(L"EditTrigger", Variant(0L)), type_text(L"n"); }},
    {L"KeyUp", [](T&) { key_press(VK_DOWN); }},
    {L"MouseDown", [](T& t) { t.click_cell(1, 0); }},
    {L"MouseMove", [](T& t) { mouse_move(t.window(), 30, 60), mouse_move(t.window(), 40, 62); }},
    {L"MouseUp", [](T& t) { t.click_cell(1, 0); }},
    {L"CellButtonClick", [](T& t) { t.click_cell(1, T::kPush); }},
    {L"CellImageClick", [](T& t) { t.press_at(3, 0, -12); }},
    {L"CellHandClick", [](T& t) { t.click_cell(1, 0); }},
    {L"CellClick", [](T& t) { t.click_cell(1, 0); }},
    {L"ColumnClick", [](T& t) { t.click_heading(40); }},
    {L"ColumnSizeChanged", [](T& t) { t.drag_heading(79, 110); }},
    {L"CustomSort",
     [](T& t) {
       t.call(L"Sort", {Variant(3L), Variant(1L)});
     }},
    {L"ColumnOrderChanged", [](T& t) { t.drag_heading(40, 120); }},
    {L"RowChecked", [](T& t) { t.press_at(1, 0, -32); }},
    {L"RowCountChanged", [](T& t) { t.row(L"novo"); }},
    {L"MouseEnter", [](T& t) { mouse_move(t.window(), 30, 60), mouse_move(t.window(), 40, 62); }},
    {L"MouseExit", [](T& t) { mouse_move(t.window(), 30, 60), mouse_away(); }},
    {L"RowColChanged", [](T&) { key_press(VK_DOWN); }},
    {L"Scroll", [](T& t) { mouse_move(t.window(), 40, 60), mouse_wheel(-120); }},
    {L"SelectionChanged", [](T&) { key_chord(VK_SHIFT, VK_DOWN); }},
    {L"SortComplete", [](T& t) { t.click_heading(40); }},
    {L"EditKeyPress", [](T& t) { t.edit_first(), type_text(L"q"); }},
    {L"BeforeEdit", [](T&) { key_press(VK_F2); }},
    {L"AfterEdit", [](T& t) { t.edit_first(), type_text(L"q"), key_press(VK_RETURN); }},
    {L"BeforeDelete", [](T&) { key_press(VK_DELETE); }},
    {L"AfterDelete", [](T&) { key_press(VK_DELETE); }},
    {L"BeforeInsert", [](T&) { key_press(VK_INSERT); }},
    {L"AfterInsert", [](T&) { key_press(VK_INSERT); }},
    {L"RequestRowData", [](T&) { key_chord(VK_CONTROL, VK_END), pump_for(60); }},
};

TEST_P(FlexGridEventsTest, LeavesTheGridWhole) {
  const auto [deed, each] = GetParam();
  int times = 0;
  site_->on_event(
      [&, deed = deed, event = std::wstring(each.event)](const std::wstring& name, DISPPARAMS&) {
        if (name == event && ++times == 1) perform(deed);
      });
  try {
    each.user(*this);
  } catch (const ComError&) {  // the control may be gone in the middle of what the test does
    EXPECT_EQ(deed, Deed::kDestroy);
  }
  pump_for(30);
  EXPECT_GE(times, 1) << "the event came";
  if (!alive()) return;
  EXPECT_TRUE(sound());
  site_->on_event(nullptr);
  key_press(VK_ESCAPE);
  key_press(VK_UP);
  mouse_wheel(120);
  EXPECT_TRUE(sound());
  EXPECT_EQ(count(L"Rows"), count(L"ListCount"));
  EXPECT_LT(count(L"Row"), std::max(count(L"Rows"), 1L));
}

std::string case_name(const testing::TestParamInfo<FlexGridEventsTest::ParamType>& each) {
  static const char* const kDeeds[] = {"RemoveRow", "Clear", "ClearAll", "AddColumn", "Sort",
                                       "Theme",     "Edit",  "Filter",   "Destroy"};
  std::string name = kDeeds[static_cast<int>(std::get<0>(each.param))];
  name += "In";
  for (const wchar_t* c = std::get<1>(each.param).event; *c != 0; ++c)
    name += static_cast<char>(*c);
  return name;
}

INSTANTIATE_TEST_SUITE_P(All, FlexGridEventsTest,
                         testing::Combine(testing::Values(Deed::kRemoveRow, Deed::kClear,
                                                          Deed::kClearAll, Deed::kAddColumn,
                                                          Deed::kSort, Deed::kTheme, Deed::kEdit,
                                                          Deed::kFilter, Deed::kDestroy),
                                          testing::ValuesIn(kCases)),
                         case_name);

}  // namespace
}  // namespace kestrelon::host
