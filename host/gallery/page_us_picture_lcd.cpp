// USPictureLCD: themes, bars of seven and fourteen, font, places, clock and countdown.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USPictureLCD";
constexpr int kColumn = 270, kWidth = 250;

struct Setting {
  const wchar_t* name;
  Variant value;
};

Prepare with(const wchar_t* title, Variant value, std::vector<Setting> settings = {}) {
  return [title, value, settings = std::move(settings)](IDispatch* control) {
    put_property(control, L"Caption", Variant(title));
    for (const Setting& each : settings) put_property(control, each.name, each.value);
    put_property(control, L"Value", value);
  };
}

void row(Page& page, const std::vector<Prepare>& panels, int height = 70) {
  int x = look::kMargin;
  for (const Prepare& prepare : panels) {
    page.control(kProgId, make_rect(x, page.y(), kWidth, height), prepare);
    x += kColumn;
  }
  page.skip(height + 10);
}

Setting number(const wchar_t* name, long value) {
  return {name, Variant(value)};
}

}  // namespace

void build_us_picture_lcd_page(Page& page) {
  const Variant total(1234.56);
  page.title(L"USPictureLCD", L"Painel com título e valor em dígitos grandes.");
  page.section(L"Temas: Office Blue, Office Silver, Windows 8");
  row(page, {with(L"Total do pedido", total, {number(L"Theme", 0)}),
             with(L"Total do pedido", total, {number(L"Theme", 1)}),
             with(L"Total do pedido", total, {number(L"Theme", 2)})});
  page.section(L"Quatorze segmentos, fonte, valor que não cabe");
  row(page, {with(L"Senha", Variant(L"GUICHÊ 07")),
             with(L"Total", total, {number(L"DigitStyle", 0), number(L"Alignment", 1)}),
             with(L"Total", Variant(123456.5), {number(L"Digits", 6)})});
  page.section(L"Relógio, contagem regressiva, inativo");
  row(page,
      {with(L"Horário de Brasília", Variant(L""), {number(L"Mode", 1), number(L"Alignment", 1)}),
       with(L"Faltam", Variant(5025L),
            {number(L"Mode", 2), number(L"Digits", 6), {L"LeadingZeros", Variant(true)}}),
       with(L"Caixa fechado", total, {{L"Enabled", Variant(false)}, number(L"Digits", 8)})});
  page.section(L"Todos os caracteres");
  const Prepare letters = with(L"", Variant(L"ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
  const Prepare signs = with(L"", Variant(L"0123456789 -_=+*/\\$%()<>'\"|?"));
  for (const Prepare& each : {letters, signs}) {
    page.control(kProgId, make_rect(look::kMargin, page.y(), look::kPageWidth - 48, 46), each);
    page.skip(54);
  }
  page.section(L"Ampliação de quatro vezes");
  page.picture(look::kMargin, page.y(),
               page.snapshot(kProgId, 120, 44, Situation::kAway, with(L"Peso", Variant(-83.25))),
               4);
  page.skip(200);
}

}  // namespace kestrelon::host
