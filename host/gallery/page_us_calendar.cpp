// USCalendar: themes, modes, week numbers, several months, the date field and its states.
#include "base/calendar.h"
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USCalendar";
constexpr int kWidth = 250, kHeight = 210;

Variant date(int year, int month, int day) {
  Variant out;
  V_VT(&out) = VT_DATE;
  V_DATE(&out) = day_number({year, month, day});
  return out;
}

Prepare with(std::vector<std::pair<const wchar_t*, Variant>> properties) {
  return [properties](IDispatch* control) {
    put_property(control, L"Value", date(2026, 11, 17));
    for (const auto& [name, value] : properties) put_property(control, name, value);
  };
}

void months(Page& page, const wchar_t* label, long theme, const Prepare& left,
            const Prepare& right) {
  page.text(make_rect(look::kMargin, page.y(), 400, 16), label);
  page.skip(20);
  const auto themed = [theme](const Prepare& prepare) -> Prepare {
    return [=](IDispatch* control) {
      put_property(control, L"Theme", Variant(theme));
      prepare(control);
    };
  };
  page.control(kProgId, make_rect(look::kMargin, page.y(), kWidth, kHeight), themed(left));
  page.control(kProgId, make_rect(look::kMargin + kWidth + 20, page.y(), 2 * kWidth, kHeight),
               themed(right));
  page.skip(kHeight + 16);
}

}  // namespace

void build_us_calendar_page(Page& page) {
  page.title(L"USCalendar", L"Meses à vista ou campo de data, com feriados e dias úteis.");
  page.section(L"Temas");
  const Prepare one = with({{L"ShowWeekNumbers", Variant(true)}});
  const Prepare two = [](IDispatch* control) {
    with({{L"MonthsAcross", Variant(short{2})}, {L"SelectMode", Variant(1L)}})(control);
    put_property(control, L"RangeStart", date(2026, 11, 23));
    put_property(control, L"RangeEnd", date(2026, 12, 4));
  };
  months(page, L"Office Blue: números das semanas; um período", 0, one, two);
  months(page, L"Office Silver: números das semanas; um período", 1, one, two);
  months(page, L"Windows 8: números das semanas; um período", 2, one, two);
  page.section(L"Campo de data");
  const Prepare field = with({{L"Style", Variant(1L)}});
  page.state_table(kProgId, 110, 24,
                   {{L"Com data", field},
                    {L"Obrigatório", with({{L"Style", Variant(1L)},
                                           {L"AllowNull", Variant(true)},
                                           {L"Required", Variant(true)},
                                           {L"Value", Variant()}})}});
}

}  // namespace kestrelon::host
