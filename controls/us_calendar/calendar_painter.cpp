#include "controls/us_calendar/calendar_painter.h"
#include "base/decimal.h"

#include <string_view>

#include "frame/kit/color.h"
#include "frame/kit/gradient.h"
#include "frame/kit/lines.h"
#include "lists/calendar/day_text.h"

namespace kestrelon {
namespace {

// Selects a font for as long as it lives.
class WithFont {
 public:
  WithFont(HDC dc, HFONT font) : dc_(dc), former_(SelectObject(dc, font)) {}
  ~WithFont() { SelectObject(dc_, former_); }
  WithFont(const WithFont&) = delete;
  WithFont& operator=(const WithFont&) = delete;

 private:
  HDC dc_;
  HGDIOBJ former_;
};

PixelRect inset(const PixelRect& rect, int by) {
  return {rect.left + by, rect.top + by, rect.right - by, rect.bottom - by};
}

// `width` pixels thick, inwards.
void draw_border(const PixelView& view, const PixelRect& rect, ColorRef color, int width) {
  for (int i = 0; i < width; ++i) {
    const PixelRect ring = inset(rect, i);
    if (!ring.empty()) DrawFrame(view, color, ring.left, ring.top, ring.right, ring.bottom);
  }
}

// One line in the middle of a cell; what does not fit is clipped.
void draw_centered(HDC dc, std::wstring_view text, const PixelRect& cell, ColorRef color) {
  if (text.empty() || cell.empty()) return;
  SIZE size{};
  const int length = static_cast<int>(text.size());
  GetTextExtentPoint32W(dc, text.data(), length, &size);
  SetTextColor(dc, color);
  const RECT clip{cell.left, cell.top, cell.right, cell.bottom};
  ExtTextOutW(dc, cell.left + (cell.right - cell.left - size.cx) / 2,
              cell.top + (cell.bottom - cell.top - size.cy) / 2, ETO_CLIPPED, &clip, text.data(),
              static_cast<UINT>(length), nullptr);
}

// A filled triangle in the middle of an area: to the left, to the right or down.
enum class Arrow { kLeft, kRight, kDown };
void draw_arrow(const PixelView& view, const PixelRect& area, Arrow arrow, ColorRef color,
                Scale scale) {
  const int reach = scale(4);
  const int x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2;
  for (int i = 0; i < reach; ++i) {
    if (arrow == Arrow::kDown) {
      fill_rect(view, {x - reach + i + 1, y - reach / 2 + i, x + reach - i, y - reach / 2 + i + 1},
                color);
      continue;
    }
    const int column = arrow == Arrow::kLeft ? x + reach / 2 - i : x - reach / 2 + i;
    fill_rect(view, {column, y - reach + i + 1, column + 1, y + reach - i}, color);
  }
}

class PanelPainter {
 public:
  PanelPainter(Surface& surface, const CalendarPanel& panel, const CalendarColors& colors,
               const CalendarFonts& fonts, Scale scale)
      : view_(surface.pixels()),
        dc_(surface.dc()),
        panel_(panel),
        colors_(colors),
        fonts_(fonts),
        scale_(scale) {}

  void paint_title(const PixelRect& area, const std::wstring& text, bool hot) {
    fill_system_gradient(view_, area, colors_.header1, colors_.header2,
                         GradientDirection::TopToBottom);
    const WithFont font(dc_, fonts_.bold);
    draw_centered(dc_, text, area, colors_.header_text);
    if (!hot) return;
    SIZE size{};
    GetTextExtentPoint32W(dc_, text.data(), static_cast<int>(text.size()), &size);
    const int middle = (area.left + area.right) / 2;
    const int line = (area.top + area.bottom + size.cy) / 2;
    fill_rect(view_, {middle - size.cx / 2, line, middle + size.cx / 2, line + scale_.line()},
              colors_.header_text);
  }

  void paint_month(int index, const DayLook* days) {
    const MonthPlaces& month = panel_.places().months[static_cast<size_t>(index)];
    paint_title(month.title, month_title_of(index),
                panel_.hot() == CalendarHit{CalendarPart::kTitle, index, 0});
    paint_weekdays(month);
    if (!month.weeks.empty()) paint_weeks(index, month);
    for (int cell = 0; cell < kCellsOfMonth; ++cell)
      if (!days[cell].text.empty()) paint_day(day_cell(month, cell), days[cell]);
  }

  void paint_choices() {
    const CalendarPlaces& places = panel_.places();
    paint_title(places.chooser_title, panel_.title(), panel_.hot().part == CalendarPart::kTitle);
    for (int cell = 0; cell < kChooserCells; ++cell) {
      DayLook look;
      look.text = panel_.choice_text(cell);
      look.color = colors_.text;
      look.selected = look.marked = panel_.is_marked_choice(cell);
      look.hot = panel_.hot() == CalendarHit{CalendarPart::kChoice, 0, cell};
      paint_day(choice_cell(places, cell), look);
    }
  }

  void paint_arrows() {
    const auto arrow = [&](const PixelRect& area, CalendarPart part, Arrow which) {
      if (panel_.hot().part == part)
        fill_rect(view_, inset(area, scale_(3)), LightenColor(colors_.hot, 90));
      draw_arrow(view_, area, which, colors_.header_text, scale_);
    };
    arrow(panel_.places().previous, CalendarPart::kPrevious, Arrow::kLeft);
    arrow(panel_.places().next, CalendarPart::kNext, Arrow::kRight);
  }

  void paint_today(const std::wstring& text) {
    const PixelRect& area = panel_.places().today;
    if (area.empty()) return;
    fill_rect(view_, {area.left, area.top, area.right, area.top + scale_.line()}, colors_.border);
    const bool hot = panel_.hot().part == CalendarPart::kToday;
    const WithFont font(dc_, hot ? fonts_.bold : fonts_.plain);
    draw_centered(dc_, text, area, colors_.text);
    SIZE size{};
    GetTextExtentPoint32W(dc_, text.data(), static_cast<int>(text.size()), &size);
    const int side = scale_(9), right = (area.left + area.right - size.cx) / 2 - scale_(5);
    const int top = (area.top + area.bottom - side) / 2;
    if (right - side > area.left)
      draw_border(view_, {right - side, top, right, top + side}, colors_.today, scale_.line(2));
  }

 private:
  std::wstring month_title_of(int index) const;

  void paint_weekdays(const MonthPlaces& month) {
    const WithFont font(dc_, fonts_.plain);
    for (int column = 0; column < kWeekDays; ++column) {
      const int weekday = column_weekday(column, panel_.first_weekday());
      const PixelRect cell = weekday_cell(month, column);
      draw_centered(dc_, weekday_name(weekday, cell), cell,
                    is_weekend(weekday) ? colors_.weekend : colors_.header_text);
    }
    fill_rect(view_,
              {month.weekdays.left, month.weekdays.bottom - scale_.line(), month.weekdays.right,
               month.weekdays.bottom},
              colors_.border);
  }

  // Three letters where they fit, else one.
  std::wstring weekday_name(int weekday, const PixelRect& cell) const;

  void paint_weeks(int index, const MonthPlaces& month) {
    const WithFont font(dc_, fonts_.plain);
    const int32_t start = grid_start(panel_.month_at(index), panel_.first_weekday());
    for (int row = 0; row < kGridWeeks; ++row) {
      const int32_t first = start + row * kWeekDays;
      const bool shown = panel_.day_at(index, row * kWeekDays).has_value() ||
                         panel_.day_at(index, row * kWeekDays + kWeekDays - 1).has_value();
      if (shown)
        draw_centered(dc_, decimal_text(iso_week_of_row(first).week), week_cell(month, row),
                      colors_.faint);
    }
    fill_rect(
        view_,
        {month.weeks.right - scale_.line(), month.weeks.top, month.weeks.right, month.weeks.bottom},
        colors_.border);
  }

  void paint_day(const PixelRect& cell, const DayLook& look) {
    const PixelRect face = inset(cell, scale_.line());
    if (look.has_back) fill_rect(view_, face, look.back);
    if (look.selected)
      fill_system_gradient(view_, face, colors_.selected1, colors_.selected2,
                           GradientDirection::TopToBottom);
    if (look.hot) draw_border(view_, face, colors_.hot, scale_.line());
    if (look.today) draw_border(view_, face, colors_.today, scale_.line(2));
    if (look.marked) draw_border(view_, cell, colors_.focus, scale_.line());
    {
      const WithFont font(dc_, look.bold ? fonts_.bold : fonts_.plain);
      draw_centered(dc_, look.text, cell, look.color);
    }
    if (!look.dot) return;
    const int side = scale_(3), middle = (cell.left + cell.right) / 2;
    const int bottom = face.bottom - scale_.line();
    fill_rect(view_, {middle - side / 2, bottom - side, middle - side / 2 + side, bottom},
              look.color);
  }

  PixelView view_;
  HDC dc_;
  const CalendarPanel& panel_;
  const CalendarColors& colors_;
  const CalendarFonts& fonts_;
  Scale scale_;
};

std::wstring PanelPainter::month_title_of(int index) const {
  return month_title(panel_.month_at(index));
}

std::wstring PanelPainter::weekday_name(int weekday, const PixelRect& cell) const {
  std::wstring name = short_weekday(weekday);
  SIZE size{};
  GetTextExtentPoint32W(dc_, name.data(), static_cast<int>(name.size()), &size);
  return size.cx <= cell.right - cell.left ? name : name.substr(0, 1);
}

}  // namespace

void paint_calendar(Surface& surface, const CalendarPanel& panel, const std::vector<DayLook>& days,
                    const CalendarColors& colors, const CalendarFonts& fonts, Scale scale,
                    const std::wstring& today_text) {
  surface.clear(colors.back);
  PanelPainter painter(surface, panel, colors, fonts, scale);
  if (panel.view() != CalendarView::kDays)
    painter.paint_choices();
  else
    for (int index = 0; index < panel.month_count(); ++index)
      if (days.size() >= static_cast<size_t>(index + 1) * kCellsOfMonth)
        painter.paint_month(index, &days[static_cast<size_t>(index) * kCellsOfMonth]);
  painter.paint_arrows();
  painter.paint_today(today_text);
  draw_border(surface.pixels(), panel.places().bounds, colors.border, scale.line());
}

void paint_date_field(Surface& surface, const DateFieldPlaces& places, const std::wstring& text,
                      FieldButton button, const CalendarColors& colors, HFONT font, Scale scale) {
  const PixelView view = surface.pixels();
  surface.clear(colors.back);
  const auto shade = [&](ColorRef color) {
    if (button == FieldButton::kDown) return ShiftColor(color, -0.1);
    return button == FieldButton::kHot ? LightenColor(color, 70) : color;
  };
  fill_system_gradient(view, places.button, shade(colors.header1), shade(colors.header2),
                       GradientDirection::TopToBottom);
  draw_arrow(view, places.button, Arrow::kDown,
             button == FieldButton::kDisabled ? colors.faint : colors.header_text, scale);
  if (!text.empty()) {
    const WithFont with(surface.dc(), font);
    RECT area{places.text.left, places.text.top, places.text.right, places.text.bottom};
    SetTextColor(surface.dc(), colors.text);
    DrawTextW(surface.dc(), text.data(), static_cast<int>(text.size()), &area,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }
  draw_border(view, places.frame, colors.field_border, scale.line());
}

}  // namespace kestrelon
