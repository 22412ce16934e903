#include "lists/calendar/calendar_layout.h"

#include <gtest/gtest.h>

#include "lists/calendar/day_text.h"

namespace kestrelon {
namespace {

bool inside(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

// Every pixel of every cell answers with that cell, and none with two.
TEST(CalendarLayout, EveryCellIsHitWhereItLies) {
  for (const int dpi : {96, 120, 144, 192})
    for (const int months : {1, 3})
      for (const bool extras : {false, true}) {
        CalendarShape shape{0, 0, dpi, 13 * dpi / 96, 7 * dpi / 96, months, 2, extras, extras};
        const CalendarSize size = natural_size(shape);
        shape.width = size.width + 17, shape.height = size.height + 5;
        const CalendarPlaces places = layout_calendar(shape);
        ASSERT_EQ(places.months.size(), static_cast<size_t>(months) * 2);
        for (size_t i = 0; i < places.months.size(); ++i)
          for (int cell = 0; cell < kWeekDays * kGridWeeks; ++cell) {
            const PixelRect rect = day_cell(places.months[i], cell);
            ASSERT_TRUE(inside(rect, places.bounds));
            ASSERT_FALSE(rect.empty());
            for (const int x : {rect.left, rect.right - 1})
              for (const int y : {rect.top, rect.bottom - 1})
                ASSERT_EQ(hit_calendar(places, CalendarView::kDays, x, y),
                          (CalendarHit{CalendarPart::kDay, static_cast<int>(i), cell}));
          }
        for (int cell = 0; cell < kChooserCells; ++cell) {
          const PixelRect rect = choice_cell(places, cell);
          ASSERT_EQ(hit_calendar(places, CalendarView::kYears, rect.right - 1, rect.bottom - 1),
                    (CalendarHit{CalendarPart::kChoice, 0, cell}));
        }
        ASSERT_EQ(places.months.front().weeks.empty(), !extras);
        ASSERT_EQ(places.today.empty(), !extras);
      }
}

TEST(CalendarLayout, GivesColumnsThatAreEqualToAPixel) {
  const CalendarPlaces places = layout_calendar({333, 251, 96, 13, 7, 2, 1, true, true});
  for (const MonthPlaces& month : places.months)
    for (int column = 0; column < kWeekDays; ++column) {
      const PixelRect head = weekday_cell(month, column), day = day_cell(month, column);
      EXPECT_EQ(head.left, day.left);
      EXPECT_EQ(head.right, day.right);
      EXPECT_NEAR(day.right - day.left, (month.days.right - month.days.left) / 7.0, 1);
    }
  EXPECT_EQ(places.months[1].days.right, 332);
}

TEST(CalendarLayout, SurvivesAnySize) {
  for (const int width : {-5, 0, 1, 2, 30, 100})
    for (const int height : {-5, 0, 1, 2, 20, 50})
      for (const int months : {-1, 1, 12, 30000}) {
        const CalendarPlaces places =
            layout_calendar({width, height, 96, 13, 7, months, months, true, true});
        EXPECT_LE(places.months.size(), 144u);
        for (int x = 0; x < width; x += 3)
          for (int y = 0; y < height; y += 3) hit_calendar(places, CalendarView::kDays, x, y);
        const DateFieldPlaces field = layout_date_field(width, height, 96);
        EXPECT_LE(field.text.left, field.button.left + 1);
      }
}

TEST(DayText, SpeaksOfDays) {
  Holidays holidays;
  const auto tell = [&](CalendarDate date, BusinessCount count = BusinessCount::kNational) {
    const int32_t day = day_number(date);
    return day_description(day, holidays.note(day), count);
  };
  EXPECT_EQ(tell({2026, 11, 15}),
            L"domingo, 15 de novembro de 2026, feriado: Proclamação da República");
  EXPECT_EQ(tell({2026, 3, 1}), L"domingo, 1º de março de 2026");
  EXPECT_EQ(tell({2026, 2, 17}),
            L"terça-feira, 17 de fevereiro de 2026, ponto facultativo: Carnaval");
  EXPECT_EQ(tell({2026, 2, 17}, BusinessCount::kBank),
            L"terça-feira, 17 de fevereiro de 2026, sem expediente bancário: Carnaval");
  holidays.add(2, 3, L"");
  EXPECT_EQ(tell({2026, 3, 2}), L"segunda-feira, 2 de março de 2026, feriado");
  EXPECT_EQ(long_day(INT32_MAX), L"");
  EXPECT_EQ(month_title({2026, 11}), L"Novembro de 2026");
  EXPECT_EQ(short_month(11), L"nov");
  EXPECT_EQ(short_month(0), L"");
  EXPECT_EQ(short_weekday(1), L"dom");
  EXPECT_EQ(short_weekday(7), L"sáb");
}

}  // namespace
}  // namespace kestrelon
