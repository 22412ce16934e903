// USMenu: the bar in three themes, open menus of two levels, overflow.
#include <algorithm>

#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/input.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USMenu";
constexpr UINT kAfterDrawing = 250;  // milliseconds

void put_item(IDispatch* menu, const wchar_t* name, const wchar_t* key, const Variant& value) {
  DISPID id = DISPID_UNKNOWN, named = DISPID_PROPERTYPUT;
  auto* text = const_cast<wchar_t*>(name);
  if (FAILED(menu->GetIDsOfNames(IID_NULL, &text, 1, 0, &id))) return;
  Variant arguments[] = {value, Variant(key)};
  DISPPARAMS all{arguments, &named, 2, 1};
  menu->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &all, nullptr, nullptr, nullptr);
}

void fill(IDispatch* menu, long theme) {
  put_property(menu, L"Theme", Variant(theme));
  const auto add = [menu](const wchar_t* caption, const wchar_t* key, const wchar_t* parent = L"",
                          const wchar_t* cut = L"") {
    call_method(menu, L"AddItem",
                {Variant(caption), Variant(key), Variant(parent), Variant(0L), Variant(cut)});
  };
  add(L"&Arquivo", L"arquivo");
  add(L"&Novo pedido", L"novo", L"arquivo", L"Ctrl+N");
  add(L"&Salvar", L"salvar", L"arquivo", L"Ctrl+S");
  add(L"-", L"", L"arquivo");
  add(L"Mostrar &impostos", L"impostos", L"arquivo");
  add(L"Valores em &reais", L"reais", L"arquivo");
  add(L"&Transmitir", L"transmitir", L"arquivo", L"F9");
  add(L"&Exportar", L"exportar", L"arquivo");
  add(L"&CSV", L"csv", L"exportar");
  add(L"&Planilha", L"planilha", L"exportar");
  add(L"&Editar", L"editar");
  add(L"&Copiar", L"copiar", L"editar");
  add(L"&Relat\u00f3rios", L"relatorios");
  add(L"A&juda", L"ajuda");
  put_item(menu, L"ItemDefault", L"novo", Variant(true));
  put_item(menu, L"ItemChecked", L"impostos", Variant(true));
  put_item(menu, L"ItemChecked", L"reais", Variant(true));
  put_item(menu, L"ItemRadio", L"reais", Variant(true));
  put_item(menu, L"ItemEnabled", L"transmitir", Variant(false));
  put_item(menu, L"ItemEnabled", L"relatorios", Variant(false));
}

Picture taken;
int turns = 0;

// Runs in the menu's loop: goes down to an item, takes the picture, leaves.
void CALLBACK take(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND popup = FindWindowW(L"#32768", nullptr);
  if (popup == nullptr) return;
  if (turns++ == 0) {
    keybd_event(VK_DOWN, 0, 0, 0);
    keybd_event(VK_DOWN, 0, KEYEVENTF_KEYUP, 0);
    return;
  }
  KillTimer(nullptr, timer);
  RECT place{};
  GetWindowRect(popup, &place);
  const HDC screen = GetDC(nullptr);
  taken = Picture(place.right - place.left, place.bottom - place.top);
  taken.take(screen, place.left, place.top);
  ReleaseDC(nullptr, screen);
  keybd_event(VK_ESCAPE, 0, 0, 0);
  keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
}

Picture picture_of(Page& page, long theme, const wchar_t* key) {
  Form form;
  form.create_object = create_control;
  const auto site = form.add_control(kProgId, L"", RECT{0, 0, 300, 24});
  fill(site->control_dispatch().get(), theme);
  bring_up(form);
  taken = Picture();
  turns = 0;
  SetTimer(nullptr, 0, kAfterDrawing, take);
  call_method(site->control_dispatch().get(), L"PopupMenu",
              {Variant(key), Variant(300L), Variant(200L)});
  bring_up(page.form());
  return taken;
}

}  // namespace

void build_us_menu_page(Page& page) {
  page.title(L"USMenu", L"Menu com imagens: barra, menu suspenso, menu de contexto.");
  const wchar_t* const themes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
  std::vector<Picture> popups;
  for (long theme = 0; theme < 3; ++theme) {
    page.section(themes[theme]);
    page.control(kProgId, make_rect(look::kMargin, page.y(), 420, 24),
                 [theme](IDispatch* menu) { fill(menu, theme); });
    page.control(kProgId, make_rect(look::kMargin + 440, page.y(), 170, 24),
                 [theme](IDispatch* menu) { fill(menu, theme); });
    page.skip(34);
    popups.push_back(picture_of(page, theme, L"arquivo"));
  }
  page.section(L"Menus abertos");
  int x = look::kMargin, height = 0;
  for (const Picture& popup : popups) {
    if (!popup) continue;
    page.picture(x, page.y(), popup);
    x += popup.width() + 20;
    height = std::max(height, popup.height());
  }
  page.skip(height + 10);
}

}  // namespace kestrelon::host
