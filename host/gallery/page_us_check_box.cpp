// USCheckBox: themes, states, the strip of its marks, alignment, focus, transparency.
#include "base/resource_ids.h"
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USCheckBox";

Prepare with_value(long value, const wchar_t* caption) {
  return [value, caption](IDispatch* control) {
    put_property(control, L"Caption", Variant(caption));
    put_property(control, L"Value", Variant(value));
  };
}

// The fifteen looks of the strip, each 13 by 13, as they come from the library's resources.
void marks(Page& page) {
  constexpr int kMark = 13;
  constexpr int kScale = 4;
  constexpr int kStep = 56;
  struct Group {
    const wchar_t* label;
    int looks;
  };
  constexpr Group kGroups[] = {
      {L"Não marcado", 3}, {L"Marcado", 6}, {L"Indeterminado", 3}, {L"Inativo", 3}};
  constexpr const wchar_t* kLooks[] = {L"normal",  L"sobre",   L"pressão", L"sobre",   L"normal",
                                       L"(livre)", L"pressão", L"(livre)", L"(livre)", L"normal",
                                       L"sobre",   L"pressão", L"vazio",   L"marcado", L"indet."};
  const Picture strip = library_bitmap(IDB_CHECK_MARKS);
  if (!strip) return;
  int group_left = look::kMargin;
  for (const Group& group : kGroups) {
    page.text(make_rect(group_left, page.y(), group.looks * kStep, 16), group.label);
    group_left += group.looks * kStep;
  }
  page.skip(17);
  for (int row = 0; row < 15; ++row)
    page.text(make_rect(look::kMargin + row * kStep, page.y(), kStep, 14), kLooks[row],
              TextStyle::kSmall);
  page.skip(18);
  for (int column = 0; column < 2; ++column) {
    for (int row = 0; row < 15; ++row) {
      const Picture mark = strip.part(make_rect(column * kMark, row * kMark, kMark, kMark));
      const int x = look::kMargin + row * kStep;
      page.picture(x, page.y(), mark, kScale);
      page.picture(x + kMark * (kScale - 1) / 2, page.y() + kScale * kMark + 4, mark);
    }
    page.skip(kScale * kMark + 24);
  }
}

void looks(Page& page) {
  const Prepare focused = with_value(1, L"Com o foco do teclado");
  constexpr RECT kSize = {0, 0, 190, 24};
  const int y = page.y();
  const auto column = [&](int index) { return look::kMargin + index * 212; };
  page.control(kProgId, make_rect(column(0), y, kSize.right, kSize.bottom),
               with_value(1, L"Marca à &esquerda"));
  page.control(kProgId, make_rect(column(0), y + 28, kSize.right, kSize.bottom),
               [](IDispatch* control) {
                 with_value(1, L"Marca à &direita")(control);
                 put_property(control, L"Alignment", Variant(1L));
               });
  page.control(
      kProgId, make_rect(column(1), y, kSize.right, 52),
      with_value(0, L"Enviar a nota fiscal eletrônica por e-mail ao cliente e ao contador"));
  const Picture focus =
      page.snapshot(kProgId, kSize.right, kSize.bottom, Situation::kFocused, focused);
  page.picture(column(2), y, focus);
  page.control(kProgId, make_rect(column(2), y + 28, kSize.right, kSize.bottom),
               [](IDispatch* control) {
                 with_value(1, L"Desabilitado")(control);
                 put_property(control, L"Enabled", Variant(false));
               });
  // A control whose background is not drawn, over a picture of the page.
  page.paint(make_rect(column(3), y, 204, 52), [](HDC hdc, const RECT& area) {
    TRIVERTEX corners[] = {{area.left, area.top, 0x9000, 0xC800, 0xF000, 0},
                           {area.right, area.bottom, 0xFF00, 0xE000, 0xA000, 0}};
    GRADIENT_RECT whole = {0, 1};
    GradientFill(hdc, corners, 2, &whole, 1, GRADIENT_FILL_RECT_H);
  });
  for (long style = 0; style < 2; ++style)
    page.control(kProgId, make_rect(column(3) + 8, y + 4 + 22 * style, 180, 20),
                 [style](IDispatch* control) {
                   with_value(1, style == 0 ? L"Fundo transparente" : L"Fundo opaco")(control);
                   put_property(control, L"BackStyle", Variant(style));
                 });
  page.skip(62);
  constexpr Situation kSituations[] = {Situation::kOver, Situation::kPressed, Situation::kOver};
  for (long theme = 0; theme < 3; ++theme) {
    const Prepare prepare = [theme](IDispatch* control) {
      with_value(theme == 1 ? 2 : 1, L"&Ativo")(control);
      put_property(control, L"Theme", Variant(theme));
    };
    page.picture(look::kMargin + static_cast<int>(theme) * 292, page.y(),
                 page.snapshot(kProgId, 60, 22, kSituations[theme], prepare), 4);
  }
  page.skip(92);
}

}  // namespace

void build_us_check_box_page(Page& page) {
  page.title(L"USCheckBox", L"Caixa de seleção de três valores, em três temas.");
  page.section(L"Temas e estados");
  page.state_table(kProgId, 58, 24,
                   {{L"Não marcado", with_value(0, L"Sim")},
                    {L"Marcado", with_value(1, L"Sim")},
                    {L"Indeterminado", with_value(2, L"Sim")}});
  page.section(
      L"As quinze marcas: Office e Windows 8, quatro vezes ampliadas e no tamanho natural");
  marks(page);
  page.section(L"Alinhamento, quebra de linha, foco, fundo; ampliação de quatro vezes");
  looks(page);
}

}  // namespace kestrelon::host
