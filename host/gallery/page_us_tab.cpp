// USTab: themes, styles, sides, overflow, marks.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USTab";

Prepare orders(long theme, long count = 4) {
  return [=](IDispatch* tab) {
    constexpr const wchar_t* kCaptions[] = {L"&Cliente", L"&Itens do pedido", L"&Entrega",
                                            L"&Faturas", L"&Anexos",          L"&Observações"};
    put_property(tab, L"Theme", Variant(theme));
    put_property(tab, L"TabCount", Variant(count));
    for (long i = 0; i < count; ++i)
      put_property(tab, L"TabCaption", Variant(kCaptions[i % 6]), {Variant(i)});
    if (count > 3) put_property(tab, L"TabEnabled", Variant(false), {Variant(3L)});
    put_property(tab, L"ActiveTab", Variant(1L));
  };
}

Prepare with(const Prepare& first, std::vector<std::pair<const wchar_t*, Variant>> values) {
  return [=](IDispatch* tab) {
    first(tab);
    for (const auto& [name, value] : values) put_property(tab, name, value);
  };
}

void themes(Page& page) {
  constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
  for (long theme = 0; theme < 3; ++theme) {
    page.text(make_rect(look::kMargin, page.y(), 200, 16), kThemes[theme], TextStyle::kSmall);
    page.control(kProgId, make_rect(look::kMargin, page.y() + 20, 400, 70), orders(theme));
    page.control(kProgId, make_rect(look::kMargin + 420, page.y() + 20, 400, 70),
                 with(orders(theme), {{L"TabStyle", Variant(1L)},
                                      {L"ShowCloseMarks", Variant(true)},
                                      {L"UseControlBox", Variant(true)}}));
    page.skip(104);
  }
}

void sides(Page& page) {
  for (long side = 1; side < 4; ++side)
    page.control(
        kProgId, make_rect(look::kMargin + static_cast<int>(side - 1) * 275, page.y(), 260, 110),
        with(orders(2, 3), {{L"TabPlacement", Variant(side)}, {L"TabStyle", Variant(1L)}}));
  page.skip(124);
  page.control(kProgId, make_rect(look::kMargin, page.y(), 260, 60),
               with(orders(0, 12), {{L"TabStyle", Variant(1L)}}));
  page.control(kProgId, make_rect(look::kMargin + 275, page.y(), 260, 60),
               with(orders(2), {{L"Enabled", Variant(false)}}));
  page.control(kProgId, make_rect(look::kMargin + 550, page.y(), 260, 60),
               with(orders(1), {{L"ShowTabsCorner", Variant(false)}, {L"TabStyle", Variant(1L)}}));
  page.skip(74);
}

void close_up(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const Picture shot = page.snapshot(
        kProgId, 200, 34, Situation::kFocused,
        with(orders(theme, 3), {{L"TabStyle", Variant(1L)}, {L"ShowCloseMarks", Variant(true)}}));
    page.picture(look::kMargin, page.y(), shot, 4);
    page.skip(144);
  }
}

}  // namespace

void build_us_tab_page(Page& page) {
  page.title(L"USTab", L"Abas que contêm outros controles, dos quatro lados.");
  page.section(L"Os três temas, nos dois estilos");
  themes(page);
  page.section(L"Embaixo, à esquerda, à direita; mais abas do que cabem; desabilitada; sem cantos");
  sides(page);
  page.section(L"Com o foco, quatro vezes ampliada");
  close_up(page);
}

}  // namespace kestrelon::host
