// A small order entry form in which the basic controls work together.
#include "host/ambients.h"
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/sample_files.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr COLORREF kFieldBorder = RGB(0xB3, 0xCE, 0xF2);
constexpr COLORREF kHeader = RGB(0xE3, 0xEF, 0xFF);
constexpr int kWidth = 792;
constexpr int kBar = 18;  // of the list's scroll bar, with its line

void box(HDC hdc, const RECT& area, COLORREF border, COLORREF inside) {
  const auto fill = [&](const RECT& r, COLORREF color) {
    SetBkColor(hdc, color);
    ExtTextOutW(hdc, 0, 0, ETO_OPAQUE, &r, nullptr, 0, nullptr);
  };
  fill(area, border);
  fill({area.left + 1, area.top + 1, area.right - 1, area.bottom - 1}, inside);
}

void field(Page& page, int x, int y, int width, const wchar_t* label, const wchar_t* value) {
  page.text(make_rect(x, y, width, 16), label, TextStyle::kSmall);
  page.paint(make_rect(x, y + 16, width, 24), [=](HDC hdc, const RECT& area) {
    box(hdc, area, kFieldBorder, look::kPaper);
    draw_text(hdc, {area.left + 6, area.top + 4, area.right - 4, area.bottom}, value,
              TextStyle::kLabel);
  });
}

// The font of the labels.
void set_font(IDispatch* control) {
  const ComPtr<IFontDisp> font = make_font(L"Segoe UI", 9);
  put_property(control, L"Font", Variant(static_cast<IDispatch*>(font.get())));
}

struct Item {
  const wchar_t* cells[5];
};
constexpr Item kItems[] = {
    {{L"1020", L"Parafuso sextavado 1/4\" zincado", L"200", L"0,85", L"170,00"}},
    {{L"1044", L"Arruela lisa 1/4\"", L"400", L"0,12", L"48,00"}},
    {{L"2310", L"Chave combinada 10 mm", L"6", L"21,90", L"131,40"}},
    {{L"2315", L"Chave combinada 13 mm", L"6", L"24,50", L"147,00"}},
    {{L"5002", L"Luva de vaqueta, par", L"25", L"18,70", L"467,50"}},
    {{L"5110", L"Óculos de proteção incolor", L"25", L"9,90", L"247,50"}},
};

void items(Page& page, int y) {
  constexpr int kColumns[] = {0, 70, 440, 530, 650, kWidth - kBar};
  constexpr int kFirstNumber = 2;  // this column and those after it hold numbers
  constexpr Item kHeads = {{L"Código", L"Descrição", L"Quant.", L"Unitário", L"Total"}};
  constexpr int kRow = 22;
  const int rows = static_cast<int>(std::size(kItems));
  page.paint(
      make_rect(look::kMargin, y, kWidth, kRow * (rows + 1) + 2), [=](HDC hdc, const RECT& area) {
        box(hdc, area, kFieldBorder, look::kPaper);
        for (int row = 0; row <= rows; ++row) {
          const Item& item = row == 0 ? kHeads : kItems[row - 1];
          const LONG top = area.top + 1 + row * kRow;
          if (row % 2 == 0)
            box(hdc, {area.left + 1, top, area.right - 1, top + kRow},
                row == 0 ? kHeader : look::kSide, row == 0 ? kHeader : look::kSide);
          for (int i = 0; i < 5; ++i)
            draw_text(
                hdc,
                {area.left + kColumns[i] + 8, top + 3, area.left + kColumns[i + 1] - 8, top + kRow},
                item.cells[i], TextStyle::kLabel, i < kFirstNumber ? DT_LEFT : DT_RIGHT);
        }
      });
  page.control(L"Kestrelon2012.USScrollBar",
               make_rect(look::kMargin + kWidth - kBar, y + 1, kBar - 1, kRow * (rows + 1)),
               [](IDispatch* control) {
                 put_property(control, L"Orientation", Variant(0L));
                 put_property(control, L"LargeChange", Variant(40L));
                 put_property(control, L"Value", Variant(30L));
               });
}

void button(Page& page, const RECT& place, const wchar_t* caption, const wchar_t* file,
            bool enabled = true) {
  page.control(L"Kestrelon2012.USButton", place, [=](IDispatch* control) {
    set_font(control);
    put_property(control, L"Caption", Variant(caption));
    put_property(control, L"Theme", Variant(0L));
    if (file != nullptr)
      call_method(control, L"LoadImage_FromFile",
                  {Variant(sample_file(file)), Variant(16L), Variant(16L), Variant(32L)});
    put_property(control, L"ToolTipTitle", Variant(L"Pedido 10.482"));
    put_property(control, L"ToolTipDescription", Variant(caption));
    if (!enabled) put_property(control, L"Enabled", Variant(false));
  });
}

void choice(Page& page, const wchar_t* class_name, int x, int y, const wchar_t* caption,
            bool chosen) {
  page.control(std::wstring(L"Kestrelon2012.") + class_name, make_rect(x, y, 170, 20),
               [=](IDispatch* control) {
                 set_font(control);
                 put_property(control, L"Caption", Variant(caption));
                 if (chosen) put_property(control, L"Value", Variant(1L));
               });
}

}  // namespace

void build_order_entry_page(Page& page) {
  page.title(L"Pedido de venda", L"Os controles básicos juntos, como em uma tela de cadastro.");
  int y = page.y() + 10;
  const int x = look::kMargin;
  field(page, x, y, 110, L"Número", L"10.482");
  field(page, x + 122, y, 430, L"Cliente", L"Ferragens Três Irmãos Ltda.");
  field(page, x + 564, y, 110, L"Emissão", L"15/03/2012");
  button(page, make_rect(x + 682, y + 14, 110, 28), L"&Calendário", L"calendar.ico");
  y += 56;
  items(page, y);
  y += 22 * 7 + 18;

  page.text(make_rect(x, y, 170, 18), L"Pagamento");
  choice(page, L"USOptionButton", x, y + 22, L"À &vista", false);
  choice(page, L"USOptionButton", x, y + 44, L"&30 dias", true);
  choice(page, L"USOptionButton", x, y + 66, L"30 e &60 dias", false);
  page.text(make_rect(x + 190, y, 170, 18), L"Entrega");
  choice(page, L"USCheckBox", x + 190, y + 22, L"&Emitir nota fiscal", true);
  choice(page, L"USCheckBox", x + 190, y + 44, L"Enviar por e-&mail", true);
  choice(page, L"USCheckBox", x + 190, y + 66, L"Entrega &parcial", false);
  field(page, x + 632, y, 160, L"Total do pedido", L"R$ 1.211,40");
  y += 104;
  page.paint(make_rect(x, y, kWidth, 1),
             [](HDC hdc, const RECT& area) { box(hdc, area, look::kRule, look::kRule); });
  y += 12;
  constexpr int kStep = 120;
  button(page, make_rect(x, y, 112, 32), L"&Novo", nullptr);
  button(page, make_rect(x + kStep, y, 112, 32), L"&Itens", L"invoice.ico");
  button(page, make_rect(x + 2 * kStep, y, 112, 32), L"Pa&gar", L"coins.ico");
  button(page, make_rect(x + 3 * kStep, y, 112, 32), L"Cancelar", nullptr, false);
  button(page, make_rect(x + kWidth - 112 - kStep, y, 112, 32), L"&Gravar", L"disc.png");
  button(page, make_rect(x + kWidth - 112, y, 112, 32), L"&Sair", nullptr);
  page.skip(y + 48 - page.y());
}

}  // namespace kestrelon::host
