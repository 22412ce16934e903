// A small order entry form in which the basic controls work together.
#include "host/ambients.h"
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/sample_files.h"
#include "host/put_indexed.h"

namespace kestrelon::host {
namespace {

constexpr COLORREF kFieldBorder = RGB(0xB3, 0xCE, 0xF2);
constexpr int kWidth = 792;

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

constexpr const wchar_t* kItems[] = {
    L"1020\tParafuso sextavado 1/4\" zincado\t200\t0,85\t170,00",
    L"1044\tArruela lisa 1/4\"\t400\t0,12\t48,00",
    L"2310\tChave combinada 10 mm\t6\t21,90\t131,40",
    L"2315\tChave combinada 13 mm\t6\t24,50\t147,00",
    L"5002\tLuva de vaqueta, par\t25\t18,70\t467,50",
    L"5110\tÓculos de proteção incolor\t25\t9,90\t247,50",
};
constexpr int kItemsHeight = 172;

struct Column {
  const wchar_t* heading;
  int width;  // pixels
  long alignment;
  long type;
  const wchar_t* format;
  bool locked = false;
};
constexpr long kLeft = 4, kRight = 6, kText = 0, kNumber = 1;
constexpr Column kColumns[] = {
    {L"Código", 70, kLeft, kText, L""},
    {L"Descrição", 370, kLeft, kText, L""},
    {L"Quant.", 90, kRight, kNumber, L"#,##0"},
    {L"Unitário", 120, kRight, kNumber, L"#,##0.00"},
    {L"Total", 138, kRight, kNumber, L"#,##0.00", true},
};

// A changed quantity or price brings the total of its line up to date.
void multiply(IDispatch* grid, long row, long column, const std::wstring& text) {
  constexpr long kQuantity = 2, kPrice = 3, kTotal = 4;
  if (column != kQuantity && column != kPrice) return;
  put_indexed(grid, L"CellText", {Variant(row), Variant(column)}, Variant(text));
  const auto value = [&](long of) {
    return to_double(get_property(grid, L"CellValue", {Variant(row), Variant(of)}));
  };
  put_indexed(grid, L"CellValue", {Variant(row), Variant(kTotal)},
              Variant(value(kQuantity) * value(kPrice)));
}

void items(Page& page, int y) {
  const auto site = page.control(
      L"Kestrelon2012.USFlexGrid", make_rect(look::kMargin, y, kWidth, kItemsHeight),
      [](IDispatch* grid) {
        constexpr double kTwips = 15;
        put_property(grid, L"Redraw", Variant(false));
        set_font(grid);
        put_property(grid, L"Theme", Variant(0L));
        put_property(grid, L"ColumnHeaderLines", Variant(short{1}));
        for (const Column& column : kColumns)
          call_method(grid, L"AddColumn",
                      {Variant(column.heading), Variant(column.width * kTwips - 1),
                       Variant(column.alignment), Variant(column.type), Variant(column.format),
                       Variant(L""), Variant(kLeft), Variant(false), Variant(0L), Variant(true),
                       Variant(column.locked)});
        for (const wchar_t* const item : kItems) call_method(grid, L"AddItem", {Variant(item)});
        for (const wchar_t* const name : {L"AllowEdit", L"AllowInsert", L"AllowDelete",
                                          L"AllowColumnResizing", L"TotalLineShow"})
          put_property(grid, name, Variant(true));
        put_property(grid, L"FocusRectMode", Variant(2L));
        put_property(grid, L"EditMove", Variant(1L));
        call_method(grid, L"RowColSet", {Variant(2L), Variant(2L)});
        put_property(grid, L"Redraw", Variant(true));
      });
  const ComPtr<IDispatch> grid = site->control_dispatch();
  site->on_event([grid](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"AfterEdit")
      multiply(grid.get(), to_long(event_value(params, 0)), to_long(event_value(params, 1)),
               to_text(event_value(params, 2)));
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
  y += kItemsHeight + 16;

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
