// USLabel: alignments, borders, wrapping, two colours, links; over a picture that shows through.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USLabel";

struct Setting {
  const wchar_t* name;
  Variant value;
};

Prepare with(const wchar_t* caption, std::vector<Setting> settings = {}) {
  return [caption, settings = std::move(settings)](IDispatch* control) {
    put_property(control, L"Caption", Variant(caption));
    for (const Setting& each : settings) put_property(control, each.name, each.value);
  };
}

constexpr int kColumn = 270, kWidth = 250;

void row(Page& page, int height, const std::vector<Prepare>& labels) {
  int x = look::kMargin;
  for (const Prepare& prepare : labels) {
    page.control(kProgId, make_rect(x, page.y(), kWidth, height), prepare);
    x += kColumn;
  }
  page.skip(height + 10);
}

const Variant kOn(true);

}  // namespace

void build_us_label_page(Page& page) {
  const Setting border{L"BorderStyle", Variant(1L)}, opaque{L"BackStyle", Variant(1L)};
  const Setting pale{L"BackColor", Variant(0xFEF9F4L)};
  constexpr const wchar_t* kLong =
      L"Informe o CNPJ do emitente como consta no cadastro da Receita Federal, sem pontos";
  page.title(L"USLabel", L"Texto de formulário: nome de campo, título, link.");
  page.section(L"Alinhamento e borda");
  row(page, 26,
      {with(L"À &esquerda", {border}), with(L"No &centro", {border, {L"Alignment", Variant(1L)}}),
       with(L"À &direita", {border, {L"Alignment", Variant(2L)}})});
  row(page, 44,
      {with(L"Centrado na vertical", {border, opaque, pale, {L"VerticalCenter", kOn}}),
       with(kLong, {border, {L"WordWrap", kOn}}),
       with(kLong, {border, {L"WordWrap", kOn}, {L"DisplayEllipsis", kOn}})});
  page.section(L"Duas cores, link, inativo");
  row(page, 20,
      {with(L"Cliente - pessoa jurídica", {{L"CaptionDelimiter", Variant(L"-")}}),
       with(L"Consultar a nota fiscal", {{L"LinkUrl", Variant(L"https://exemplo.invalid/")}}),
       with(L"Cliente inativo", {{L"Enabled", Variant(false)}})});
  page.section(L"Sobre uma imagem");
  page.paint(make_rect(look::kMargin, page.y(), look::kPageWidth - 48, 40),
             [](HDC hdc, const RECT& area) {
               TRIVERTEX corners[] = {{area.left, area.top, 0x9000, 0xC800, 0xF000, 0},
                                      {area.right, area.bottom, 0xFF00, 0xE000, 0xA000, 0}};
               GRADIENT_RECT whole = {0, 1};
               GradientFill(hdc, corners, 2, &whole, 1, GRADIENT_FILL_RECT_H);
             });
  page.skip(10);
  row(page, 20, {with(L"Total do pedido"), with(L"R$ 1.234,56"), with(L"12 itens")});
  page.skip(10);
  page.section(L"Ampliação de quatro vezes: normal, link sob o ponteiro, duas cores");
  const Prepare samples[] = {with(L"&Nome"),
                             with(L"Manual", {{L"LinkUrl", Variant(L"https://exemplo.invalid/")}}),
                             with(L"A - B", {border, {L"CaptionDelimiter", Variant(L"-")}})};
  int x = look::kMargin;
  for (const Prepare& sample : samples) {
    const auto situation = &sample == &samples[1] ? Situation::kOver : Situation::kAway;
    page.picture(x, page.y(), page.snapshot(kProgId, 60, 20, situation, sample), 4);
    x += kColumn;
  }
  page.skip(90);
}

}  // namespace kestrelon::host
