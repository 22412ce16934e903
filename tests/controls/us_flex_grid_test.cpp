#include "tests/controls/us_flex_grid_fixture.h"

namespace kestrelon::host {
namespace {

using testing::Contains;
using testing::Not;

TEST_F(FlexGridTest, KeepsWhatIsAddedAndAnswersWhatLiesOutside) {
  row(L"sem coluna");
  EXPECT_EQ(number(*site_, L"Cols"), 1);
  EXPECT_EQ(text(0, 0), L"sem coluna");
  EXPECT_EQ(text(99, 0), L"sem coluna");  // beyond the last row is the last row
  EXPECT_EQ(text(0, 9), L"");
  call(L"RemoveRow", {Variant(0L)});
  EXPECT_EQ(number(*site_, L"Rows"), 0);
  EXPECT_EQ(number(*site_, L"Row"), -1);
  EXPECT_EQ(text(0, 0), L"");
}

TEST_F(FlexGridTest, SortsByTypeAndComesBackToTheNaturalOrder) {
  fill();
  call(L"Sort", {Variant(1L), Variant(1L)});
  EXPECT_EQ(text(0, 0), L"Ana");
  EXPECT_EQ(text(2, 0), L"Caio");
  call(L"Sort", {Variant(1L), Variant(0L)});
  EXPECT_EQ(text(0, 0), L"Bia");
  EXPECT_DOUBLE_EQ(to_double(get_property(grid(), L"TotalColumns", {Variant(1L)})), 123.0);
}

TEST_F(FlexGridTest, KeepsItsPropertiesUnderTheirKeys) {
  const auto bag = make_com<PropertyBag>();
  put(*site_, L"AllowEdit", Variant(true));
  put(*site_, L"HeaderFormatString", Variant(L"Nome;100|Valor;80;6;1"));
  EXPECT_EQ(number(*site_, L"Cols"), 2);
  const auto saver = query<IPersistPropertyBag>(grid());
  ASSERT_TRUE(saver);
  ASSERT_EQ(saver->Save(bag.get(), TRUE, FALSE), S_OK);
  const auto again = place(L"USFlexGrid", RECT{0, 0, kWidth, kHeight}, bag.get());
  EXPECT_TRUE(to_bool(get(*again, L"AllowEdit")));
  EXPECT_EQ(number(*again, L"Cols"), 2);
  EXPECT_EQ(number(*again, L"Rows"), 0);
}

TEST_F(FlexGridTest, MovesByKeysAndCommitsWhatWasTyped) {
  fill();
  put(*site_, L"AllowEdit", Variant(true));
  show();
  focus();
  key_press(VK_DOWN);
  EXPECT_EQ(number(*site_, L"Row"), 0);
  EXPECT_THAT(take_names(*site_), Contains(L"RowColChanged"));
  key_press(VK_DOWN);
  EXPECT_EQ(number(*site_, L"Row"), 1);
  put(*site_, L"Col", Variant(0L));
  key_press(VK_F2);
  ASSERT_TRUE(to_bool(get(*site_, L"EditPending")));
  type_text(L"Zeca");
  key_press(VK_RETURN);
  EXPECT_FALSE(to_bool(get(*site_, L"EditPending")));
  EXPECT_EQ(text(1, 0), L"Zeca");
  const Names names = take_names(*site_);
  EXPECT_THAT(names, Contains(L"BeforeEdit"));
  EXPECT_THAT(names, Contains(L"AfterEdit"));
  key_press(VK_F2);
  type_text(L"x");
  key_press(VK_ESCAPE);
  EXPECT_EQ(text(1, 0), L"Zeca");
  EXPECT_THAT(take_names(*site_), Not(Contains(L"AfterEdit")));
}

TEST_F(FlexGridTest, LosesNothingTypedWhenTheHeaderIsClicked) {
  fill();
  put(*site_, L"AllowEdit", Variant(true));
  put(*site_, L"AllowColumnSort", Variant(true));
  show();
  focus();
  call(L"ForceCellEdit", {Variant(0L), Variant(0L)});
  type_text(L"Abel");
  mouse_click(window(), 20, 8);
  EXPECT_FALSE(to_bool(get(*site_, L"EditPending")));
  EXPECT_EQ(text(0, 0), L"Abel");
  const Names names = take_names(*site_);
  EXPECT_THAT(names, Contains(L"ColumnClick"));
  EXPECT_THAT(names, Contains(L"SortComplete"));
}

TEST_F(FlexGridTest, DrawsRowsOnlyWhenTheyAreShown) {
  fill();
  show();
  const Picture full = draw_control(*site_, kWidth, kHeight);
  call(L"Clear");
  const Picture empty = draw_control(*site_, kWidth, kHeight);
  EXPECT_FALSE(full == empty);
  EXPECT_EQ(number(*site_, L"Cols"), 2);
}

}  // namespace
}  // namespace kestrelon::host
