// USCalendar in our container: its members, keys, mouse, field and events.
#include <oleacc.h>

#include <map>

#include "base/calendar.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

Variant date(int year, int month, int day) {
  Variant out;
  V_VT(&out) = VT_DATE;
  V_DATE(&out) = day_number({year, month, day});
  return out;
}

class USCalendarTest : public ControlTest {
 protected:
  USCalendarTest() { bring_up(form_); }

  ComPtr<ControlSite> calendar(long style = 0) {
    const auto bag = make_com<PropertyBag>();
    Variant value(style);
    bag->Write(L"Style", &value);
    auto site = place(L"USCalendar", style == 0 ? RECT{10, 10, 250, 220} : RECT{10, 10, 130, 34},
                      bag.get());
    put(*site, L"Value", date(2026, 11, 16));
    take_log(*site);
    return site;
  }
  static Variant call(ControlSite& site, const wchar_t* name, std::vector<Variant> arguments) {
    return call_method(site.control_dispatch().get(), name, std::move(arguments));
  }
  static int32_t day_of(const Variant& value) {
    EXPECT_EQ(V_VT(&value), VT_DATE);
    return static_cast<int32_t>(V_DATE(&value));
  }
  static int32_t value(ControlSite& site) { return day_of(get(site, L"Value")); }
  void focus(ControlSite& site) {
    SetFocus(site.window());
    drain_messages();
    take_log(site);
  }
  /// The place of a day as screen readers are told it, in pixels of the control.
  static POINT place_of(ControlSite& site, const std::wstring& name) {
    const auto reader = query<IAccessible>(site.control());
    long count = 0;
    EXPECT_TRUE(reader);
    if (!reader || FAILED(reader->get_accChildCount(&count))) return {};
    for (long child = 1; child <= count; ++child) {
      const Variant which(child);
      Bstr text;
      if (reader->get_accName(which, text.put()) != S_OK || text.view().find(name) != 0) continue;
      long left = 0, top = 0, width = 0, height = 0;
      reader->accLocation(&left, &top, &width, &height, which);
      POINT point{left + width / 2, top + height / 2};
      ScreenToClient(site.window(), &point);
      return point;
    }
    ADD_FAILURE() << "no such day among " << count;
    return {};
  }
  static std::vector<std::wstring> own_events(ControlSite& site) {
    std::vector<std::wstring> out;
    for (const std::wstring& name : take_names(site))
      if (name.find(L"Key") != 0 && name.find(L"Mouse") != 0 && name != L"RequestDay")
        out.push_back(name);
    return out;
  }
};

using Names = std::vector<std::wstring>;

TEST_F(USCalendarTest, CountsBusinessDaysForThePrograms) {
  const auto site = calendar();
  EXPECT_EQ(to_long(call(*site, L"BusinessDaysBetween", {date(2025, 12, 31), date(2026, 12, 31)})),
            252);
  EXPECT_EQ(day_of(call(*site, L"AddBusinessDays", {date(2026, 2, 13), Variant(1L)})),
            day_number({2026, 2, 16}));
  put(*site, L"BusinessDays", Variant(1L));
  EXPECT_EQ(day_of(call(*site, L"AddBusinessDays", {date(2026, 2, 13), Variant(1L)})),
            day_number({2026, 2, 18}));
  EXPECT_EQ(day_of(call(*site, L"EasterDate", {Variant(2026L)})), day_number({2026, 4, 5}));
  EXPECT_EQ(to_text(call(*site, L"HolidayName", {date(2026, 6, 4)})), L"Corpus Christi");
  EXPECT_EQ(day_of(call(*site, L"AddBusinessDays", {date(9999, 12, 30), Variant(100L)})), 0);
  call(*site, L"AddHoliday", {Variant(short{9}), Variant(short{7}), Variant(L"Revolução")});
  EXPECT_FALSE(to_bool(call(*site, L"IsBusinessDay", {date(2026, 7, 9)})));
  EXPECT_EQ(to_text(get(*site, L"Holidays")), L"09/07 Revolução");
  put(*site, L"Holidays", Variant(L"25/01 São Paulo\r\nnada\r\n"));
  EXPECT_EQ(to_text(get(*site, L"Holidays")), L"25/01 São Paulo");
  EXPECT_TRUE(to_bool(call(*site, L"IsBusinessDay", {date(2026, 7, 9)})));
}

TEST_F(USCalendarTest, ChoosesByKeysAndAsksTheProgramFirst) {
  const auto site = calendar();
  focus(*site);
  key_press(VK_RIGHT);
  EXPECT_EQ(value(*site), day_number({2026, 11, 17}));
  EXPECT_EQ(own_events(*site), (Names{L"BeforeChange", L"Change"}));
  key_press(VK_NEXT);
  EXPECT_EQ(value(*site), day_number({2026, 12, 17}));
  EXPECT_EQ(own_events(*site), (Names{L"BeforeChange", L"Change", L"MonthChanged"}));
  form_.on_control_event = [](ControlSite&, const std::wstring& name, DISPPARAMS& params) {
    if (name == L"BeforeChange") set_event_argument(params, 1, Variant(true));
  };
  key_press(VK_HOME);
  EXPECT_EQ(value(*site), day_number({2026, 12, 17}));
  form_.on_control_event = nullptr;
  put(*site, L"BlockWeekends", Variant(true));
  put(*site, L"BlockHolidays", Variant(true));
  put(*site, L"Value", date(2026, 12, 24));
  key_press(VK_RIGHT);
  EXPECT_EQ(value(*site), day_number({2026, 12, 28}));
  put(*site, L"Value", date(2026, 12, 25));  // code may
  EXPECT_EQ(value(*site), day_number({2026, 12, 25}));
  put(*site, L"MinDate", date(2027, 1, 1));
  put(*site, L"MaxDate", date(2026, 1, 1));
  put(*site, L"Value", date(2026, 12, 30));
  key_press(VK_LEFT);
  EXPECT_EQ(value(*site), day_number({2026, 12, 25}));
}

TEST_F(USCalendarTest, ChoosesByMouseInEachMode) {
  const auto site = calendar();
  POINT at = place_of(*site, L"sexta-feira, 20 de novembro de 2026, feriado: Dia Nacional");
  mouse_click(site->window(), at.x, at.y);
  EXPECT_EQ(value(*site), day_number({2026, 11, 20}));
  put(*site, L"SelectMode", Variant(1L));
  const POINT from = place_of(*site, L"segunda-feira, 9 de novembro");
  const POINT to = place_of(*site, L"quinta-feira, 12 de novembro");
  mouse_move(site->window(), from.x, from.y);
  mouse_down();
  mouse_move(site->window(), to.x, to.y);
  mouse_up();
  EXPECT_EQ(day_of(get(*site, L"RangeStart")), day_number({2026, 11, 9}));
  EXPECT_EQ(day_of(get(*site, L"RangeEnd")), day_number({2026, 11, 12}));
  put(*site, L"SelectMode", Variant(2L));
  part_clicks();
  mouse_click(site->window(), to.x, to.y);
  part_clicks();
  mouse_click(site->window(), at.x, at.y);
  EXPECT_TRUE(
      to_bool(get_property(site->control_dispatch().get(), L"DaySelected", {date(2026, 11, 12)})));
  EXPECT_FALSE(
      to_bool(get_property(site->control_dispatch().get(), L"DaySelected", {date(2026, 11, 13)})));
}

TEST_F(USCalendarTest, EmptyMeansTodayUnlessNothingIsAllowed) {
  const auto site = calendar();
  call(*site, L"ClearControl", {});
  SYSTEMTIME now{};
  GetLocalTime(&now);
  EXPECT_EQ(value(*site), day_number({now.wYear, now.wMonth, now.wDay}));
  put(*site, L"AllowNull", Variant(true));
  EXPECT_EQ(V_VT(&static_cast<const VARIANT&>(get(*site, L"Value"))), VT_EMPTY);
  EXPECT_EQ(to_text(get(*site, L"Text")), L"");
  put(*site, L"Value", Variant(L"29/02/2025"));
  EXPECT_EQ(to_text(get(*site, L"Text")), L"");
  put(*site, L"Text", Variant(L"290224"));
  EXPECT_EQ(to_text(get(*site, L"Text")), L"29/02/2024");
}

TEST_F(USCalendarTest, AsksForShownDaysOnceADrawing) {
  const auto site = calendar();
  put(*site, L"MonthsAcross", Variant(short{2}));
  take_log(*site);
  draw_control(*site, 240, 210);
  std::map<std::wstring, int> asked;
  for (const std::wstring& line : take_log(*site))
    if (line.find(L"RequestDay") == 0) ++asked[line];
  EXPECT_GE(asked.size(), 61u);
  for (const auto& [line, times] : asked) EXPECT_EQ(times, 1);
  draw_control(*site, 240, 210);
  EXPECT_TRUE(take_log(*site).empty());
  // A handler that changes a property in mid-drawing causes no drawing without end.
  form_.on_control_event = [](ControlSite& from, const std::wstring& name, DISPPARAMS& params) {
    if (name != L"RequestDay") return;
    put(from, L"ForeColor", Variant(0x102030L));
    set_event_argument(params, 1, Variant(L"x"));
  };
  put(*site, L"TodayColor", Variant(0L));
  drain_messages();
  form_.on_control_event = nullptr;
}

TEST_F(USCalendarTest, FieldTakesDigitsAlone) {
  const auto site = calendar(1);
  focus(*site);
  type_text(L"2512");
  EXPECT_EQ(to_text(get(*site, L"Text")), L"25/12/");
  key_press(VK_RETURN);
  SYSTEMTIME now{};
  GetLocalTime(&now);
  EXPECT_EQ(value(*site), day_number({now.wYear, 12, 25}));
  EXPECT_EQ(own_events(*site), (Names{L"BeforeChange", L"Change", L"MonthChanged"}));
}

TEST_F(USCalendarTest, FieldRefusesWhatIsNoDate) {
  const auto site = calendar(1);
  const auto other = place(L"USButton", RECT{10, 200, 100, 230});
  focus(*site);
  type_text(L"3102");
  SetFocus(other->window());
  drain_messages();
  EXPECT_EQ(own_events(*site), Names{L"InvalidDate"});
  EXPECT_EQ(to_text(get(*site, L"Text")), L"16/11/2026");
  put(*site, L"MaxDate", date(2026, 12, 31));
  focus(*site);
  type_text(L"01012027");
  SetFocus(other->window());
  drain_messages();
  EXPECT_EQ(own_events(*site), Names{L"InvalidDate"});
  EXPECT_EQ(value(*site), day_number({2026, 11, 16}));
}

TEST_F(USCalendarTest, FieldOpensAndClosesItsCalendar) {
  const auto site = calendar(1);
  focus(*site);
  key_press(VK_F4);
  EXPECT_TRUE(to_bool(get(*site, L"DroppedDown")));
  key_press(VK_DOWN);
  EXPECT_EQ(value(*site), day_number({2026, 11, 16}));  // not before it is taken
  key_press(VK_ESCAPE);
  EXPECT_FALSE(to_bool(get(*site, L"DroppedDown")));
  EXPECT_EQ(own_events(*site), (Names{L"DropDown", L"CloseUp"}));
  key_chord(VK_MENU, VK_DOWN);
  key_press(VK_DOWN);
  key_press(VK_RETURN);
  EXPECT_EQ(value(*site), day_number({2026, 11, 23}));
  EXPECT_EQ(own_events(*site), (Names{L"DropDown", L"BeforeChange", L"Change", L"CloseUp"}));
  call(*site, L"ShowDropDown", {});
  const auto other = place(L"USButton", RECT{10, 250, 100, 280});
  mouse_click(other->window(), 10, 10);
  EXPECT_FALSE(to_bool(get(*site, L"DroppedDown")));
}

// In each event the program takes the control away.
TEST_F(USCalendarTest, SurvivesItsEndInEveryEvent) {
  for (const std::wstring event :
       {L"BeforeChange", L"Change", L"MonthChanged", L"RequestDay", L"InvalidDate", L"DropDown",
        L"CloseUp", L"KeyDown", L"MouseDown"}) {
    const bool field = event == L"InvalidDate" || event == L"DropDown" || event == L"CloseUp";
    ComPtr<ControlSite> site = calendar(field ? 1 : 0);
    focus(*site);
    bool gone = false;
    form_.on_control_event = [&](ControlSite& from, const std::wstring& name, DISPPARAMS&) {
      if (name != event || gone) return;
      gone = true;
      form_.remove(from);
    };
    if (field) {
      type_text(L"9999");
      if (!gone) key_press(VK_RETURN);
      if (!gone) key_press(VK_F4);
      if (!gone) key_press(VK_F4);
    } else {
      put(*site, L"TodayColor", Variant(1L));
      drain_messages();
      if (!gone) mouse_click(site->window(), 100, 100);
      if (!gone) key_press(VK_NEXT);
    }
    EXPECT_TRUE(gone) << std::string(event.begin(), event.end());
    form_.on_control_event = nullptr;
    if (!gone) form_.remove(*site);
    drain_messages();
  }
}

TEST_F(USCalendarTest, ThemesAndSavesItsProperties) {
  const auto site = calendar();
  put(*site, L"Theme", Variant(1L));
  EXPECT_EQ(number(*site, L"BorderColor"), 0xBEBEBE);
  EXPECT_EQ(number(*site, L"GradientHeader2"), 0xE7DCD6);
  put(*site, L"Holidays", Variant(L"25/01 São Paulo\r\n09/07/2027* Um dia"));
  put(*site, L"MinDate", date(2020, 2, 29));
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(site->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  const auto copy = place(L"USCalendar", RECT{10, 10, 250, 220}, bag.get());
  EXPECT_EQ(to_text(get(*copy, L"Holidays")), L"25/01 São Paulo\r\n09/07/2027* Um dia");
  EXPECT_EQ(day_of(get(*copy, L"MinDate")), day_number({2020, 2, 29}));
  EXPECT_EQ(value(*copy), day_number({2026, 11, 16}));
}

}  // namespace
}  // namespace kestrelon::host
