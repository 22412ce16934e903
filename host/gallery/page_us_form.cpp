// USForm: whole windows under the skin, photographed from the screen.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "host/property_bag.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USForm";

struct Wish {
  long theme = 2;
  bool active = true;
  bool maximized = false;
  POINT pointer{-1, -1};  // from the right end of the title
  bool pressed = false;
};

Picture photograph(const Wish& wish, int width, int height,
                   const std::function<void(IDispatch*)>& prepare = nullptr) {
  FormOptions options;
  options.caption = L"Pedidos de venda - Pedido 1042";
  options.width = width;
  options.height = height;
  Form form(options);
  form.create_object = create_control;
  const auto bag = make_com<PropertyBag>();
  bag->set(L"Theme", Variant(wish.theme));
  bag->set(L"AllowResize", Variant(true));
  bag->set(L"UseGradient", Variant(true));
  ControlState state;
  state.bag = bag.get();
  const auto skin = form.add_control(kProgId, L"Skin", RECT{0, 0, width, 28}, nullptr, state);
  skin->set_align(Align::kTop);
  const auto button = form.add_control(L"Kestrelon2012.USButton", L"", RECT{20, 50, 120, 78});
  put_property(button->dispatch(), L"Caption", Variant(L"&Gravar"));
  form.move_window(make_rect(40, 40, width, height));
  put_property(skin->dispatch(), L"Theme", Variant(wish.theme));
  if (prepare) prepare(skin->dispatch());
  bring_up(form);
  if (wish.maximized) form.set_window_state(2);
  if (!wish.active) SendMessageW(form.hwnd(), WM_NCACTIVATE, FALSE, 0);
  pump_for(60);
  if (wish.pointer.x >= 0) {
    RECT client{};
    GetClientRect(skin->window(), &client);
    mouse_move(skin->window(), static_cast<int>(client.right - wish.pointer.x),
               static_cast<int>(wish.pointer.y));
    if (wish.pressed) mouse_down();
  }
  pump_for(30);
  RedrawWindow(form.hwnd(), nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
  Picture out = client_picture(form.hwnd());
  if (wish.pressed) {
    form.message_filter = [](UINT message, WPARAM, LPARAM, LRESULT&) {
      return message == WM_CLOSE || message == WM_SYSCOMMAND;
    };
    mouse_up();
  }
  mouse_away();
  return out;
}

void themes(Page& page) {
  constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
  constexpr int kWidth = 380, kHeight = 150;
  for (long theme = 0; theme < 3; ++theme) {
    page.text(make_rect(look::kMargin, page.y(), 400, 16),
              std::wstring(kThemes[theme]) + L": ativa e inativa", TextStyle::kSmall);
    page.picture(look::kMargin, page.y() + 20, photograph({theme, true}, kWidth, kHeight));
    page.picture(look::kMargin + kWidth + 20, page.y() + 20,
                 photograph({theme, false}, kWidth, kHeight));
    page.skip(kHeight + 36);
  }
}

void boxes(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const POINT close{theme == 2 ? 29 : 15, 14};
    const POINT minimize{theme == 2 ? 92 : 64, 14};
    const Picture over = photograph({theme, true, false, minimize}, 300, 90);
    const Picture down = photograph({theme, true, false, close, true}, 300, 90);
    const RECT part{180, 0, 300, 28};
    page.picture(look::kMargin, page.y(), over.part(part), 3);
    page.picture(look::kMargin + 380, page.y(), down.part(part), 3);
    page.skip(28 * 3 + 12);
  }
}

void maximized(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const Picture whole = photograph({theme, true, true}, 300, 90);
    const RECT left{0, 0, 380, 60}, right{whole.width() - 380, 0, whole.width(), 60};
    page.picture(look::kMargin, page.y(), whole.part(left));
    page.picture(look::kMargin + 400, page.y(), whole.part(right));
    page.skip(72);
  }
}

void hidden(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const Picture shot = photograph({theme}, 380, 70, [](IDispatch* skin) {
      put_property(skin, L"ShowMinimize", Variant(false));
      put_property(skin, L"EnableMaximizeButton", Variant(false));
    });
    page.picture(look::kMargin, page.y(), shot);
    page.skip(82);
  }
}

}  // namespace

void build_us_form_page(Page& page) {
  page.title(L"USForm", L"A janela inteira com aparência própria: título, botões, bordas e fundo.");
  page.section(L"Os três temas");
  themes(page);
  page.section(L"Sob o ponteiro e pressionado, três vezes ampliado");
  boxes(page);
  page.section(L"Maximizada");
  maximized(page);
  page.section(L"Sem minimizar, com maximizar desativado");
  hidden(page);
}

}  // namespace kestrelon::host
