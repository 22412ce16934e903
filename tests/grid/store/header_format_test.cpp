#include "grid/store/header_format.h"

#include <gtest/gtest.h>

#include "grid/store/grid_store.h"
#include "tests/grid/store/test_numbers.h"

namespace kestrelon {
namespace {

GridStore grid_of(std::wstring_view header) {
  GridStore store(test_number);
  for (GridNewColumn& column : parse_header_format(header)) store.add_column(std::move(column));
  return store;
}

TEST(HeaderFormat, ReadsAllElevenFields) {
  const auto columns = parse_header_format(
      L"Valor;1200,5;6;1;#,##0.00;0123456789,;10;True;1;False;Verdadeiro|Data;90");
  ASSERT_EQ(columns.size(), 2u);
  EXPECT_EQ(columns[0].heading, L"Valor");
  EXPECT_EQ(columns[0].width, 1200.5);
  EXPECT_EQ(columns[0].alignment, GridAlignment::RightCenter);
  EXPECT_EQ(columns[0].type, GridDataType::Numeric);
  EXPECT_EQ(columns[0].format, L"#,##0.00");
  EXPECT_EQ(columns[0].input_filter, L"0123456789,");
  EXPECT_EQ(columns[0].image_alignment, GridAlignment::RightBottom);
  EXPECT_TRUE(columns[0].word_wrap);
  EXPECT_EQ(columns[0].position, 1);
  EXPECT_FALSE(columns[0].visible);
  EXPECT_TRUE(columns[0].locked);
  EXPECT_EQ(columns[1].heading, L"Data");
  EXPECT_EQ(columns[1].alignment, GridAlignment::LeftCenter) << "a field that is missing";
  EXPECT_TRUE(columns[1].visible);
}

TEST(HeaderFormat, StopsAtTheFirstBadColumn) {
  EXPECT_EQ(parse_header_format(L"").size(), 0u);
  EXPECT_EQ(parse_header_format(L"A|").size(), 1u);
  EXPECT_EQ(parse_header_format(L"A;10|B;dez|C;10").size(), 1u);
  EXPECT_EQ(parse_header_format(L"A;10;4;0;;;4;talvez|B").size(), 0u);
  EXPECT_EQ(parse_header_format(L"A;1e999").size(), 0u);
  EXPECT_EQ(parse_header_format(L"A;10;99999").size(), 0u);
  EXPECT_EQ(parse_header_format(L"A;nan").size(), 0u);
  EXPECT_EQ(parse_header_format(L"A;;;;;;;;;;;surplus;more|B").size(), 2u);
}

TEST(HeaderFormat, QuotesWhatWouldPart) {
  for (const wchar_t* heading : {L"a;b", L"a|b", L"\"", L"\"a\"", L"15\" tela", L";;", L"\";\"",
                                 L"|", L"a\"\"b", L" \"x\" "}) {
    GridNewColumn column;
    column.heading = heading;
    column.format = L"#.##0;(#.##0)";
    column.input_filter = L"\"|;";
    GridStore store(test_number);
    store.add_column(column);
    store.add_column({.heading = L"next"});
    for (const bool exact : {false, true}) {
      const auto again = parse_header_format(build_header_format(store, exact));
      ASSERT_EQ(again.size(), 2u) << exact;
      EXPECT_EQ(again[0].heading, heading);
      EXPECT_EQ(again[0].format, column.format);
      EXPECT_EQ(again[0].input_filter, column.input_filter);
      EXPECT_EQ(again[1].heading, L"next");
    }
  }
  // Quotes that nothing closes are what they look like, as are quotes inside a field.
  EXPECT_EQ(parse_header_format(L"\"abc;10|d").size(), 2u);
  EXPECT_EQ(parse_header_format(L"\"abc;10|d")[0].heading, L"\"abc");
  EXPECT_EQ(parse_header_format(L"tela 15\";10")[0].heading, L"tela 15\"");
}

TEST(HeaderFormat, BuildsPixelsAndFlagsUnlessExact) {
  GridStore store(test_number);
  store.set_scale(1.0 / 15);
  store.add_column({.heading = L"Nome", .width = 1499, .word_wrap = true, .locked = true});
  EXPECT_EQ(build_header_format(store, false), L"Nome;100;4;0;;;4;256;0;True;True");
  EXPECT_EQ(build_header_format(store, true), L"Nome;1499;4;0;;;4;True;0;True;True");
  const GridStore again = grid_of(build_header_format(store, true));
  EXPECT_EQ(again.column(0).width, 1500);
  EXPECT_EQ(again.column(0).flags, kGridWordWrap);
}

TEST(HeaderFormat, TakesHugeTextsWithoutHugeColumns) {
  EXPECT_EQ(parse_header_format(std::wstring(100'000, L'|')).size(), 0u);
  std::wstring many;
  for (int i = 0; i < 40'000; ++i) many += L"a|";
  EXPECT_EQ(parse_header_format(many).size(), 32'767u);
  EXPECT_EQ(parse_header_format(std::wstring(100'000, L'"')).size(), 1u);
  EXPECT_EQ(parse_header_format(std::wstring(100'000, L';')).size(), 1u);
}

}  // namespace
}  // namespace kestrelon
