// USScrollBar: both directions in all states, buttons and thumbs enlarged, lengths and breadths.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USScrollBar";
constexpr long kDown = 0, kAcross = 1;  // the control's own numbers for its directions
constexpr int kBreadth = 17;

Prepare bar(long orientation, long value, long page = 20, bool enabled = true,
            bool buttons = true) {
  return [=](IDispatch* control) {
    put_property(control, L"Orientation", Variant(orientation));
    put_property(control, L"LargeChange", Variant(page));
    put_property(control, L"Value", Variant(value));
    put_property(control, L"ShowButtons", Variant(buttons));
    put_property(control, L"Enabled", Variant(enabled));
  };
}

// What a bar goes through; the pointer is always in its middle.
struct State {
  const wchar_t* label;
  Situation situation;
  long value;  // 50 puts the thumb under the pointer, 0 the track
  bool enabled;
};

constexpr State kStates[] = {
    {L"Normal", Situation::kAway, 50, true},
    {L"Sobre a trilha", Situation::kOver, 0, true},
    {L"Trilha pressionada", Situation::kPressed, 0, true},
    {L"Sobre o indicador", Situation::kOver, 50, true},
    {L"Indicador pressionado", Situation::kPressed, 50, true},
    {L"Inativo", Situation::kAway, 50, false},
};

void states(Page& page) {
  constexpr int kLong = 130, kTall = 78, kStep = 140;
  const int y = page.y();
  int x = look::kMargin;
  for (const State& state : kStates) {
    page.text(make_rect(x, y, kStep - 4, 16), state.label, TextStyle::kSmall);
    page.picture(x, y + 20,
                 page.snapshot(kProgId, kLong, kBreadth, state.situation,
                               bar(kAcross, state.value, 20, state.enabled)));
    page.picture(x, y + 46,
                 page.snapshot(kProgId, kBreadth, kTall, state.situation,
                               bar(kDown, state.value, 20, state.enabled)));
    x += kStep;
  }
  page.skip(46 + kTall + 8);
}

// Bars of two buttons and of a thumb alone, so that the pointer in the middle is on the part shown.
void enlarged(Page& page) {
  constexpr int kScale = 4, kPair = 36, kThumbBar = 30;
  constexpr struct {
    const wchar_t* label;
    Situation situation;
    bool enabled;
  } kLooks[] = {{L"Normal", Situation::kAway, true},
                {L"Sobre", Situation::kOver, true},
                {L"Pressão", Situation::kPressed, true},
                {L"Inativo", Situation::kAway, false}};
  const int y = page.y();
  int x = look::kMargin;
  for (const auto& one : kLooks) {
    page.text(make_rect(x, y, 190, 16), one.label, TextStyle::kSmall);
    const auto show = [&](int left, int top, int width, int height, const Prepare& prepare) {
      page.picture(left, top, page.snapshot(kProgId, width, height, one.situation, prepare),
                   kScale);
    };
    const bool on = one.enabled;
    show(x, y + 20, kBreadth, kPair, bar(kDown, 0, 20, on));
    show(x + 80, y + 20, kThumbBar, kBreadth, bar(kAcross, 0, 101, on, false));
    show(x + 80, y + 96, 28, kBreadth, bar(kAcross, 50, 10, on, false));
    show(x, y + 176, kPair, kBreadth, bar(kAcross, 0, 20, on));
    x += 212;
  }
  page.skip(176 + kBreadth * kScale + 12);
}

void sizes(Page& page) {
  const int y = page.y();
  int row = 0;
  for (const long large_change : {1L, 10L, 34L, 101L}) {
    page.text(make_rect(look::kMargin, y + 24 * row, 120, kBreadth),
              L"LargeChange " + std::to_wstring(large_change));
    page.control(kProgId, make_rect(look::kMargin + 124, y + 24 * row++, 260, kBreadth),
                 bar(kAcross, 30, large_change));
  }
  int x = look::kMargin + 420;
  for (const int length : {12, 24, 36, 43, 44, 50, 60, 96}) {
    page.control(kProgId, make_rect(x, y, kBreadth, length), bar(kDown, 40));
    x += 24;
  }
  for (const int breadth : {9, 13, 17, 24, 32}) {
    page.control(kProgId, make_rect(x, y, breadth, 96), bar(kDown, 40));
    x += breadth + 8;
  }
  page.control(kProgId, make_rect(x, y, kBreadth, 96), bar(kDown, 40, 20, true, false));
  page.skip(108);
}

}  // namespace

void build_us_scroll_bar_page(Page& page) {
  page.title(L"USScrollBar", L"Barra de rolagem desenhada com imagens, em duas direções.");
  page.section(L"Estados");
  states(page);
  page.section(L"Botões e indicadores, quatro vezes ampliados");
  enlarged(page);
  page.section(L"Tamanho da página; comprimentos, larguras, sem botões");
  sizes(page);
}

}  // namespace kestrelon::host
