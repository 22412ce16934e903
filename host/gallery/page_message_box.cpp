// KN_MSGBOX: the four icons in three themes, long text, check box and details, from the right.
#include <algorithm>

#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.KN_MSGBOX";
constexpr UINT kAfterDrawing = 60;  // milliseconds

Picture taken;
IDispatch* shown = nullptr;

// Runs in the box's own loop: takes its picture and closes it.
void CALLBACK take(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  const HWND box = FindWindowW(L"FormMsgBox", nullptr);
  if (box == nullptr) return;
  UpdateWindow(box);
  taken = client_picture(box);
  call_method(shown, L"CloseBox", {Variant(2L)});
}

Picture picture_of(long theme, long buttons, const wchar_t* text,
                   const Prepare& prepare = nullptr) {
  const auto box = create_control(kProgId).as<IDispatch>();
  put_property(box.get(), L"Theme", Variant(theme));
  put_property(box.get(), L"Sound", Variant(false));
  if (prepare) prepare(box.get());
  taken = Picture();
  shown = box.get();
  SetTimer(nullptr, 0, kAfterDrawing, take);
  call_method(box.get(), L"Show", {Variant(text), Variant(buttons), Variant(L"Clientes")});
  return taken;
}

void row(Page& page, const std::vector<Picture>& pictures) {
  int x = look::kMargin, height = 0;
  for (const Picture& picture : pictures) {
    page.picture(x, page.y(), picture);
    x += picture.width() + 16;
    height = std::max(height, picture.height());
  }
  page.skip(height + 14);
}

constexpr wchar_t kLong[] =
    L"A nota fiscal 1.234 foi rejeitada pela Sefaz porque o CNPJ do destinat\u00e1rio n\u00e3o "
    L"confere com a inscri\u00e7\u00e3o estadual informada.\r\n\r\nConsulte "
    L"https://exemplo.invalid/rejeicoes antes de transmitir de novo.";

}  // namespace

void build_message_box_page(Page& page) {
  page.title(L"KN_MSGBOX", L"Caixa de mensagem: \u00edcones, bot\u00f5es, detalhes, tempo.");
  const wchar_t* const themes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};
  for (long theme = 0; theme < 3; ++theme) {
    page.section(themes[theme]);
    row(page, {picture_of(theme, 4 + 32 + 256, L"Excluir o cliente?"),
               picture_of(theme, 2 + 16, L"O arquivo est\u00e1 em uso.")});
    row(page, {picture_of(theme, 1 + 48, L"O prazo venceu ontem."),
               picture_of(theme, 64, L"C\u00f3pia conclu\u00edda.")});
  }
  page.section(L"Texto longo com link; marca\u00e7\u00e3o e detalhes; da direita para a esquerda");
  row(page, {picture_of(2, 5 + 16, kLong)});
  row(page,
      {picture_of(0, 3 + 32, L"Gravar as altera\u00e7\u00f5es do pedido?", [](IDispatch* box) {
        put_property(box, L"CheckBoxCaption", Variant(L"N\u00e3o perguntar de novo"));
        put_property(box, L"Details", Variant(L"3 itens, 1 desconto"));
        put_property(box, L"TimeOut", Variant(30L));
      })});
  row(page, {picture_of(1, 1 + 64 + 1048576, L"Da direita para a esquerda")});
}

}  // namespace kestrelon::host
