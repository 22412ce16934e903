#include "grid/values/csv_text.h"

#include <gtest/gtest.h>

#include "grid/fixed_locale_rules.h"
#include "grid/store/grid_store.h"
#include "grid/values/cell_number.h"

namespace kestrelon {
namespace {

class CsvTextTest : public ::testing::Test {
 protected:
  CsvTextTest() {
    column(L"Nome", GridDataType::String);
    column(L"Valor", GridDataType::Numeric);
    column(L"Pago", GridDataType::Boolean);
    column(L"Oculta", GridDataType::String, false);
    store.add_item(L"Ana\t1,5\tTrue\tx");
    store.add_item(L"\"Z\u00E9\", filho\t2,5\tFalse\ty");
    store.add_item(L"=1+1\t-3\t\tz");
  }
  void column(const wchar_t* heading, GridDataType type, bool visible = true) {
    GridNewColumn spec;
    spec.heading = heading;
    spec.type = type;
    spec.visible = visible;
    store.add_column(spec);
  }
  std::string written(const std::wstring& caption = L"") const {
    std::string bytes;
    EXPECT_TRUE(write_csv(store, brazil, options, caption, [&](std::string_view block) {
      bytes += block;
      return true;
    }));
    return bytes;
  }

  const FixedLocaleRules brazil = brazilian_locale_rules();
  GridStore store{[this](std::wstring_view text) { return cell_number(text, brazil.facts()); }};
  CsvOptions options;
};

TEST_F(CsvTextTest, PlainFormHasNoQuotesAndATrailingCommaOnEachLine) {
  EXPECT_EQ(written(L"Vendas, maio"),
            "Vendas, maio\r\nNome,Valor,Pago,\r\nAna,1,5,True,\r\n\"Z\xE9\", filho,2,5,False,\r\n"
            "=1+1,-3,,\r\n");
  options.visible_columns_only = false;
  EXPECT_EQ(written().substr(0, 26), "Nome,Valor,Pago,Oculta,\r\nA");
}

TEST_F(CsvTextTest, FollowsTheShownOrderOfRowsAndColumns) {
  store.swap_columns(0, 1);
  ASSERT_TRUE(store.set_row_order({2, 0, 1}));
  options.boolean_as_text = false;
  EXPECT_EQ(written(),
            "Valor,Nome,Pago,\r\n-3,=1+1,0,\r\n1,5,Ana,-1,\r\n2,5,\"Z\xE9\", filho,0,\r\n");
}

TEST_F(CsvTextTest, HiddenRowsLeaveAnEmptyLineOrNone) {
  store.set_row_visible(0, false);
  store.set_row_visible(2, false);
  const std::string both = "Nome,Valor,Pago,\r\n\r\n\"Z\xE9\", filho,2,5,False,\r\n\r\n";
  options.visible_rows_only = true;
  EXPECT_EQ(written(), both);
  options.skip_hidden_rows = true;
  EXPECT_EQ(written(), "Nome,Valor,Pago,\r\n\"Z\xE9\", filho,2,5,False,\r\n");
  store.set_row_visible(1, false);
  EXPECT_EQ(written(), "Nome,Valor,Pago,\r\n");
}

TEST_F(CsvTextTest, OptionsMakeFieldsSafe) {
  options.quotes = options.semicolons = options.guard_formulas = true;
  store.set_text(0, 0, L"a;b\r\nc");
  EXPECT_EQ(written(),
            "Nome;Valor;Pago;\r\n\"a;b\r\nc\";1,5;True;\r\n\"\"\"Z\xE9\"\", filho\";2,5;False;\r\n"
            "'=1+1;-3;;\r\n");
  store.set_text(0, 0, L"-cmd|x");
  store.set_text(1, 0, L"@soma;");
  const std::string bytes = written();
  EXPECT_NE(bytes.find("\r\n'-cmd|x;"), std::string::npos);
  EXPECT_NE(bytes.find("\r\n\"'@soma;\";"), std::string::npos);
}

TEST_F(CsvTextTest, TotalLineHoldsFiguresOfNumericColumnsAndCaptions) {
  options.total_line = true;
  const auto last_line = [this] {
    const std::string bytes = written();
    const size_t start = bytes.rfind("\r\n", bytes.size() - 3) + 2;
    return bytes.substr(start);
  };
  EXPECT_EQ(last_line(), ",1,,\r\n");
  store.edit_total_line(0).caption = L"Total";
  store.edit_total_line(1).caption = L"R$";
  store.edit_total_line(1).average = true;
  EXPECT_EQ(last_line(), "Total,R$ 0,5,,\r\n") << "one less than the rows";
  options.totals.exact = true;
  store.set_row_visible(2, false);
  options.totals.visible_only = true;
  EXPECT_EQ(last_line(), "Total,R$ 2,,\r\n");
}

TEST_F(CsvTextTest, CharactersOutsideThePageMakeTheWholeTextUtf8) {
  store.set_text(2, 0, L"\u4E2D");
  const std::string bytes = written();
  EXPECT_EQ(bytes.substr(0, 7), "\xEF\xBB\xBFNome");
  EXPECT_NE(bytes.find("\"Z\xC3\xA9\", filho"), std::string::npos);
  EXPECT_NE(bytes.find("\xE4\xB8\xAD,-3,"), std::string::npos);
}

TEST_F(CsvTextTest, ARefusingSinkEndsTheWriting) {
  for (int i = 0; i < 20000; ++i) store.add_item(L"linha comprida o bastante\t1\tTrue");
  int blocks = 0;
  EXPECT_FALSE(
      write_csv(store, brazil, options, L"", [&](std::string_view) { return ++blocks < 2; }));
  EXPECT_EQ(blocks, 2);
}

TEST(TotalText, ShowsTheSureDigitsOfASum) {
  const FixedLocaleRules brazil = brazilian_locale_rules();
  EXPECT_EQ(total_text(0.1 + 0.2, L"", brazil.facts()), L"0,3");
  EXPECT_EQ(total_text(1234.5, L"#,##0.00", brazil.facts()), L"1.234,50");
  EXPECT_EQ(total_text(-1e20, L"", brazil.facts()), L"-100000000000000000000");
  EXPECT_EQ(total_text(1.0 / 0.0, L"", brazil.facts()), L"");
}

}  // namespace
}  // namespace kestrelon
