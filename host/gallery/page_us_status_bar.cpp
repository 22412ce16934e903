// USStatusBar: themes, kinds of panels, states.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USStatusBar";

struct Panel {
  long style;
  const wchar_t* caption;
  long width = 100;
  long sizing = 0;
  long alignment = 0;
};

void add(IDispatch* bar, const Panel& panel) {
  call_method(bar, L"AddPanel",
              {Variant(panel.style), Variant(panel.caption), Variant(L""), Variant(panel.width),
               Variant(panel.sizing), Variant(panel.alignment)});
}

void put_field(IDispatch* bar, const wchar_t* name, long index, const Variant& value) {
  put_property(bar, name, value, {Variant(index)});
}

Prepare orders(long theme, bool enabled = true) {
  return [=](IDispatch* bar) {
    put_property(bar, L"Theme", Variant(theme));
    add(bar, {0, L"Pedido gravado", 0, 1});
    add(bar, {8, L"", 110});
    put_field(bar, L"PanelValue", 2, Variant(65.0));
    add(bar, {0, L"Itens: 12", 0, 2});
    add(bar, {0, L"Filial 03", 80, 0, 1});
    put_field(bar, L"PanelBold", 4, Variant(true));
    add(bar, {4, L"", 44, 0, 1});
    add(bar, {5, L"", 40, 0, 1});
    add(bar, {7, L"", 36, 0, 1});
    if (!enabled) put_property(bar, L"Enabled", Variant(false));
  };
}

void themes(Page& page) {
  constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
  for (long theme = 0; theme < 3; ++theme) {
    page.text(make_rect(look::kMargin, page.y(), 200, 16), kThemes[theme], TextStyle::kSmall);
    page.control(kProgId, make_rect(look::kMargin, page.y() + 20, 620, 24), orders(theme));
    page.skip(56);
  }
}

void states(Page& page) {
  page.control(kProgId, make_rect(look::kMargin, page.y(), 620, 24), orders(2, false));
  page.skip(34);
  page.control(kProgId, make_rect(look::kMargin, page.y(), 620, 24), [](IDispatch* bar) {
    put_property(bar, L"SimpleMode", Variant(true));
    put_property(bar, L"SimpleText", Variant(L"Imprimindo a página 3 de 12..."));
  });
  page.skip(34);
  page.control(kProgId, make_rect(look::kMargin, page.y(), 220, 24), orders(0));
  page.skip(40);
}

void close_up(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const Picture shot = page.snapshot(kProgId, 190, 24, Situation::kAway, [=](IDispatch* bar) {
      put_property(bar, L"Theme", Variant(theme));
      add(bar, {0, L"Pronto", 0, 1});
      add(bar, {8, L"", 70});
      put_field(bar, L"PanelValue", 2, Variant(40.0));
    });
    page.picture(look::kMargin, page.y(), shot, 4);
    page.skip(104);
  }
}

}  // namespace

void build_us_status_bar_page(Page& page) {
  page.title(L"USStatusBar",
             L"Barra de status com painéis de texto, relógio, teclas, progresso e alça.");
  page.section(L"Os três temas");
  themes(page);
  page.section(L"Desabilitada, modo simples, estreita");
  states(page);
  page.section(L"Quatro vezes ampliada");
  close_up(page);
}

}  // namespace kestrelon::host
