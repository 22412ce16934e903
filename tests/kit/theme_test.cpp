#include "frame/kit/theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace kestrelon {
namespace {

const std::vector<ThemeTable> kTables = {theme::kButton,     theme::kGroupBox, theme::kProgressBar,
                                         theme::kPictureLcd, theme::kTextBox,  theme::kComboBox,
                                         theme::kListBox,    theme::kTreeView, theme::kToolBar};

TEST(Theme, AssignsOneColumnInTheOrderOfTheTable) {
  std::vector<std::wstring> order;
  std::vector<uint32_t> values;
  apply_theme(theme::kButton, 2, [&](const wchar_t* property, uint32_t value) {
    order.push_back(property);
    values.push_back(value);
  });
  ASSERT_EQ(order.size(), theme::kButton.size());
  EXPECT_EQ(order.front(), L"GradientColors");
  EXPECT_EQ(order.back(), L"GradientColorOver4");
  EXPECT_EQ(values[1], 3u);  // a flat button is square
  EXPECT_EQ(values.back(), 0xF6DBABu);
}

TEST(Theme, AnUnknownNumberAssignsNothing) {
  for (const int32_t number : {-1, 3, INT32_MIN, INT32_MAX})
    for (const ThemeTable table : kTables)
      apply_theme(table, number, [&](const wchar_t*, uint32_t) { ADD_FAILURE() << number; });
}

TEST(Theme, TablesNameAPropertyOnceAndHoldColours) {
  for (const ThemeTable table : kTables) {
    std::set<std::wstring> seen;
    for (const ThemeEntry& entry : table) {
      EXPECT_TRUE(seen.insert(entry.property).second);
      for (const uint32_t value : entry.values)
        EXPECT_TRUE(value <= 0xFFFFFF || (value & ~0xFFu) == 0x80000000) << std::hex << value;
    }
  }
}

TEST(Theme, InputFieldsAndListsShareOneBorder) {
  for (const ThemeTable table :
       {theme::kTextBox, theme::kComboBox, theme::kListBox, theme::kTreeView}) {
    const auto border = std::find_if(table.begin(), table.end(), [](const ThemeEntry& entry) {
      return entry.property == std::wstring(L"BorderColor");
    });
    ASSERT_NE(border, table.end());
    EXPECT_TRUE(std::equal(border->values, border->values + 3, theme::kFieldBorder));
  }
}

}  // namespace
}  // namespace kestrelon
