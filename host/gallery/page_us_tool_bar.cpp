// USToolBar: themes, states, styles, overflow.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USToolBar";

void add(IDispatch* bar, const wchar_t* caption, long style = 0, long type = 0) {
  Variant missing;
  V_VT(&missing) = VT_ERROR;
  V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
  call_method(bar, L"AddButton",
              {Variant(type), Variant(caption), missing, missing, missing, missing, missing,
               missing, missing, Variant(style)});
}

Prepare orders(long theme) {
  return [=](IDispatch* bar) {
    put_property(bar, L"Theme", Variant(theme));
    add(bar, L"&Novo");
    add(bar, L"&Abrir");
    add(bar, L"", 0, 1);
    add(bar, L"Negrito", 1);
    add(bar, L"&Imprimir", 2);
    add(bar, L"", 0, 1);
    add(bar, L"E&xcluir");
  };
}

void themes(Page& page) {
  constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
  for (long theme = 0; theme < 3; ++theme) {
    page.text(make_rect(look::kMargin, page.y(), 200, 16), kThemes[theme], TextStyle::kSmall);
    page.control(kProgId, make_rect(look::kMargin, page.y() + 20, 520, 30), orders(theme));
    page.skip(62);
  }
}

void close_up(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const Picture shot = page.snapshot(kProgId, 190, 30, Situation::kFocused, orders(theme));
    page.picture(look::kMargin, page.y(), shot, 4);
    page.skip(128);
  }
}

}  // namespace

void build_us_tool_bar_page(Page& page) {
  page.title(L"USToolBar",
             L"Barra de ferramentas com alça, três estilos de botão e menu do que não cabe.");
  page.section(L"Os três temas");
  themes(page);
  page.section(L"Estreita, quatro vezes ampliada");
  close_up(page);
}

}  // namespace kestrelon::host
