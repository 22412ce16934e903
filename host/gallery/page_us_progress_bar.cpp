// USProgressBar: themes, styles, states and texts, lying and upright.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USProgressBar";
constexpr int kColumn = 270, kWidth = 250;

struct Setting {
  const wchar_t* name;
  Variant value;
};

Prepare with(double value, std::vector<Setting> settings = {}) {
  return [value, settings = std::move(settings)](IDispatch* control) {
    for (const Setting& each : settings) put_property(control, each.name, each.value);
    put_property(control, L"Value", Variant(value));
  };
}

void row(Page& page, const std::vector<Prepare>& bars, int height = 20) {
  int x = look::kMargin;
  for (const Prepare& prepare : bars) {
    page.control(kProgId, make_rect(x, page.y(), kWidth, height), prepare);
    x += kColumn;
  }
  page.skip(height + 10);
}

Setting number(const wchar_t* name, long value) {
  return {name, Variant(value)};
}

}  // namespace

void build_us_progress_bar_page(Page& page) {
  page.title(L"USProgressBar", L"Andamento de um trabalho demorado.");
  page.section(L"Temas: Office Blue, Office Silver, Windows 8");
  std::vector<Prepare> plain, blocks;
  for (long theme = 0; theme < 3; ++theme) {
    plain.push_back(with(52.5, {number(L"Theme", theme), number(L"Decimals", 1)}));
    blocks.push_back(with(52.5, {number(L"Theme", theme), number(L"Style", 1)}));
  }
  row(page, plain);
  row(page, blocks);
  page.section(L"Estados: indeterminada, erro, pausa; inativa, vazia, completa");
  row(page, {with(30, {number(L"State", 1)}), with(64, {number(L"State", 4)}),
             with(64, {number(L"State", 8)})});
  row(page, {with(40, {{L"Enabled", Variant(false)}}), with(0), with(100)});
  page.section(L"Texto: nenhum, valor, legenda");
  const Variant caption(L"Nota {v} de {m} ({p}) - faltam {t}");
  row(page,
      {with(80, {number(L"TextMode", 0)}),
       with(12345.6, {number(L"TextMode", 2), number(L"Decimals", 2), number(L"Max", 20000)}),
       with(48, {number(L"TextMode", 3), {L"Caption", caption}})},
      26);
  page.section(L"De baixo para cima; ampliação de quatro vezes");
  for (int i = 0; i < 3; ++i)
    page.control(kProgId, make_rect(look::kMargin + 60 * i, page.y(), 46, 150),
                 with(25 + 30 * i, {number(L"Orientation", 1), number(L"Style", i == 1)}));
  int x = look::kMargin + kColumn;
  for (const long style : {0L, 1L}) {
    page.picture(
        x, page.y(),
        page.snapshot(kProgId, 62, 20, Situation::kAway, with(52, {number(L"Style", style)})), 4);
    x += kColumn;
  }
  page.skip(170);
}

}  // namespace kestrelon::host
