#include "host/gallery/page.h"

#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "host/property_bag.h"

namespace kestrelon::host {
namespace {

struct TextLook {
  int height;  // pixels of the em
  int weight;
  COLORREF color;
  UINT format;
};

TextLook look_of(TextStyle style) {
  constexpr UINT kLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  switch (style) {
    case TextStyle::kTitle:
      return {26, FW_SEMIBOLD, look::kInk, kLine};
    case TextStyle::kSubtitle:
      return {14, FW_NORMAL, look::kQuiet, kLine};
    case TextStyle::kSection:
      return {15, FW_SEMIBOLD, look::kAccent, kLine};
    case TextStyle::kSmall:
      return {11, FW_NORMAL, look::kQuiet, kLine};
    case TextStyle::kCentred:
      return {11, FW_NORMAL, look::kQuiet, kLine | DT_CENTER};
    case TextStyle::kLabel:
      break;
  }
  return {13, FW_NORMAL, look::kInk, kLine};
}

constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
constexpr const wchar_t* kStates[] = {L"Normal", L"Sobre", L"Pressão", L"Inativo"};

// A bare window for one control, away from the page, on which the mouse does its work.
class Stage {
 public:
  Stage(int width, int height, OLE_COLOR back)
      : form_({.name = L"Stage",
               .caption = L"",
               .width = width + 2 * kEdge,
               .height = height + 2 * kEdge,
               .border = FormBorder::kNone}),
        area_(make_rect(kEdge, kEdge, width, height)) {
    form_.create_object = create_control;
    form_.set_ambient_back_color(back);
    SetWindowPos(form_.hwnd(), HWND_TOPMOST, 40, 40, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
  }

  Picture take(const std::wstring& prog_id, Situation situation, const Prepare& prepare) {
    // Loaded from an empty bag: a control that was saved and opened again, which reacts to the
    // mouse.
    const auto bag = make_com<PropertyBag>();
    const auto site = form_.add_control(prog_id, L"", area_, nullptr, {.bag = bag.get()});
    if (prepare) prepare(site->dispatch());
    site->tab_stop = situation == Situation::kFocused;
    bring_up(form_);
    mouse_move(form_.hwnd(), 1, 1);
    if (situation == Situation::kOver || situation == Situation::kPressed)
      mouse_move(form_.hwnd(), spot_on(*site.get()).x, spot_on(*site.get()).y);
    if (situation == Situation::kPressed) mouse_down();
    pump_for(30);
    const Picture picture = client_picture(form_.hwnd()).part(area_);
    if (situation == Situation::kPressed) {
      mouse_move(form_.hwnd(), 1, 1);
      mouse_up();
    }
    return picture;
  }

 private:
  // A point of the form where the control is hit: its middle, or, where the window has holes, the
  // first such point from the left at that height.
  POINT spot_on(const ControlSite& site) const {
    const int y = (area_.top + area_.bottom) / 2;
    const POINT middle = {(area_.left + area_.right) / 2, y};
    const auto hits = [&](POINT at) {
      ClientToScreen(form_.hwnd(), &at);
      return !site.window() || WindowFromPoint(at) == site.window();
    };
    if (hits(middle)) return middle;
    for (LONG x = area_.left; x < area_.right; ++x)
      if (hits({x, y})) return {x, y};
    return middle;
  }

  static constexpr int kEdge = 6;
  Form form_;
  RECT area_;
};

}  // namespace

void draw_text(HDC hdc, const RECT& place, const std::wstring& text, TextStyle style, UINT align) {
  const TextLook how = look_of(style);
  HFONT font = CreateFontW(-how.height, 0, 0, 0, how.weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                           DEFAULT_PITCH | FF_SWISS, L"Segoe UI");
  HGDIOBJ before = SelectObject(hdc, font);
  SetBkMode(hdc, TRANSPARENT);
  SetTextColor(hdc, how.color);
  RECT area = place;
  DrawTextW(hdc, text.c_str(), static_cast<int>(text.size()), &area, how.format | align);
  SelectObject(hdc, before);
  DeleteObject(font);
}

void Page::paint(const RECT& place, std::function<void(HDC, const RECT&)> painter) {
  form_.add_drawing(place, std::move(painter), &box_);
}

void Page::text(const RECT& place, const std::wstring& text, TextStyle style) {
  paint(place, [text, style](HDC hdc, const RECT& area) { draw_text(hdc, area, text, style); });
}

void Page::title(const std::wstring& heading, const std::wstring& subtitle) {
  text(make_rect(look::kMargin, y_, look::kPageWidth, 34), heading, TextStyle::kTitle);
  text(make_rect(look::kMargin, y_ + 34, look::kPageWidth, 20), subtitle, TextStyle::kSubtitle);
  y_ += 60;
}

void Page::section(const std::wstring& heading) {
  y_ += 10;
  text(make_rect(look::kMargin, y_, look::kPageWidth, 20), heading, TextStyle::kSection);
  paint(make_rect(look::kMargin, y_ + 22, look::kPageWidth, 1), [](HDC hdc, const RECT& area) {
    SetBkColor(hdc, look::kRule);
    ExtTextOutW(hdc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
  });
  y_ += 30;
}

void Page::picture(int x, int y, const Picture& picture, int scale) {
  paint(make_rect(x, y, picture.width() * scale, picture.height() * scale),
        [picture, scale](HDC hdc, const RECT& area) {
          picture.draw(hdc, area.left, area.top, scale);
        });
}

ComPtr<ControlSite> Page::control(const std::wstring& prog_id, const RECT& place,
                                  const Prepare& prepare) {
  const auto bag = make_com<PropertyBag>();
  const auto site = form_.add_control(prog_id, L"", place, &box_, {.bag = bag.get()});
  if (prepare) prepare(site->dispatch());
  return site;
}

Picture Page::snapshot(const std::wstring& prog_id, int width, int height, Situation situation,
                       const Prepare& prepare) const {
  return Stage(width, height, form_.ambients().back_color).take(prog_id, situation, prepare);
}

void Page::state_table(const std::wstring& prog_id, int cell_width, int cell_height,
                       const std::vector<Variation>& rows) {
  constexpr int kLabelWidth = 100;
  constexpr int kGap = 16;
  const int theme_width = 4 * cell_width;
  for (int theme = 0; theme < 3; ++theme) {
    const int left = look::kMargin + kLabelWidth + theme * (theme_width + kGap);
    text(make_rect(left, y_, theme_width, 18), kThemes[theme]);
    for (int state = 0; state < 4; ++state)
      text(make_rect(left + state * cell_width, y_ + 18, cell_width, 16), kStates[state],
           TextStyle::kSmall);
    int y = y_ + 38;
    for (const Variation& row : rows) {
      if (theme == 0) text(make_rect(look::kMargin, y, kLabelWidth, cell_height - 4), row.label);
      for (int state = 0; state < 4; ++state) {
        const Prepare prepare = [&](IDispatch* control) {
          put_property(control, L"Theme", Variant(static_cast<long>(theme)));
          if (state == 3) put_property(control, L"Enabled", Variant(false));
          row.prepare(control);
        };
        const int x = left + state * cell_width;
        if (state == 0 || state == 3)
          control(prog_id, make_rect(x, y, cell_width - 4, cell_height - 4), prepare);
        else
          picture(x, y,
                  snapshot(prog_id, cell_width - 4, cell_height - 4,
                           state == 1 ? Situation::kOver : Situation::kPressed, prepare));
      }
      y += cell_height;
    }
  }
  y_ += 38 + static_cast<int>(rows.size()) * cell_height;
}

}  // namespace kestrelon::host
