// USGroupBox: themes, headers, what stands on it, and how the form shows through.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USGroupBox";
constexpr int kColumn = 270, kWidth = 250;

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

void row(Page& page, int height, const std::vector<Prepare>& groups) {
  int x = look::kMargin;
  for (const Prepare& prepare : groups) {
    page.control(kProgId, make_rect(x, page.y(), kWidth, height), prepare);
    x += kColumn;
  }
  page.skip(height + 10);
}

// Option buttons that are one group, and a label without a window.
void fill(Page& page, ControlSite& group) {
  const wchar_t* const choices[] = {L"&Dinheiro", L"&Cartão", L"&Boleto"};
  int y = 32;
  for (const wchar_t* choice : choices) {
    const auto option = page.form().add_control(L"Kestrelon2012.USOptionButton", L"",
                                                make_rect(12, y, 100, 20), group.box());
    put_property(option->control_dispatch().get(), L"Caption", Variant(choice));
    if (y == 32) put_property(option->control_dispatch().get(), L"Value", Variant(true));
    y += 24;
  }
  const auto label = page.form().add_control(L"Kestrelon2012.USLabel", L"",
                                             make_rect(130, 34, 110, 20), group.box());
  put_property(label->control_dispatch().get(), L"Caption", Variant(L"Até 12 parcelas"));
}

const Variant kOn(true), kOff(false);

}  // namespace

void build_us_group_box_page(Page& page) {
  page.title(L"USGroupBox", L"Moldura com título para outros controles.");
  page.section(L"Temas: Office Blue, Office Silver, Windows 8");
  row(page, 70,
      {with(L"&Entrega", {{L"Theme", Variant(0L)}}), with(L"&Entrega", {{L"Theme", Variant(1L)}}),
       with(L"&Entrega", {{L"Theme", Variant(2L)}})});
  page.section(L"Título: caixa, seta, à direita; inativo, sem título, cantos retos");
  row(page, 60,
      {with(L"Endereço de cobrança", {{L"CheckBoxMode", kOn}, {L"Collapsible", kOn}}),
       with(L"Observações", {{L"CheckBoxMode", kOn}, {L"Value", kOff}}),
       with(L"Totais", {{L"Alignment", Variant(1L)}, {L"Collapsible", kOn}})});
  row(page, 50,
      {with(L"Frete", {{L"Enabled", kOff}, {L"CheckBoxMode", kOn}, {L"Collapsible", kOn}}),
       with(L"", {{L"ShowHeader", kOff}}),
       with(L"Cantos retos", {{L"RoundCorners", kOff}, {L"Alignment", Variant(2L)}})});
  page.section(L"Com controles; transparente sobre uma imagem");
  fill(page,
       *page.control(kProgId, make_rect(look::kMargin, page.y(), kWidth, 112), with(L"Pagamento")));
  page.paint(make_rect(look::kMargin + kColumn, page.y(), 520, 112), [](HDC hdc, const RECT& area) {
    TRIVERTEX corners[] = {{area.left, area.top, 0x9000, 0xC800, 0xF000, 0},
                           {area.right, area.bottom, 0xFF00, 0xE000, 0xA000, 0}};
    GRADIENT_RECT whole = {0, 1};
    GradientFill(hdc, corners, 2, &whole, 1, GRADIENT_FILL_RECT_H);
  });
  fill(page,
       *page.control(kProgId, make_rect(look::kMargin + kColumn + 10, page.y() + 6, kWidth, 100),
                     with(L"Transparente", {{L"UseGradient", kOff}})));
  page.control(kProgId, make_rect(look::kMargin + 2 * kColumn + 10, page.y() + 6, kWidth - 20, 100),
               with(L"Com degradê"));
  page.skip(124);
  page.section(L"Ampliação de quatro vezes");
  page.picture(look::kMargin, page.y(),
               page.snapshot(kProgId, 130, 34, Situation::kFocused,
                             with(L"Grupo", {{L"CheckBoxMode", kOn}, {L"Collapsible", kOn}})),
               4);
  page.skip(160);
}

}  // namespace kestrelon::host
