// USFlexGrid: an order in three themes, with cells of every type, totals and the row under the
// caret.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/put_indexed.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USFlexGrid";
constexpr int kWidth = 600, kHeight = 190;
constexpr long kLeft = 4, kCenter = 5, kRight = 6;  // alignments
constexpr long kString = 0, kNumeric = 1, kDate = 2, kBoolean = 3, kProgress = 4;

void add_column(IDispatch* grid, const wchar_t* caption, double twips, long alignment, long type,
                const wchar_t* format = L"") {
  call_method(
      grid, L"AddColumn",
      {Variant(caption), Variant(twips), Variant(alignment), Variant(type), Variant(format)});
}

void fill(IDispatch* grid) {
  put_property(grid, L"Redraw", Variant(false));
  add_column(grid, L"Produto", 2700, kLeft, kString);
  add_column(grid, L"Entrega", 1350, kCenter, kDate);
  add_column(grid, L"Quantidade", 1200, kRight, kNumeric, L"#,##0");
  add_column(grid, L"Valor", 1350, kRight, kNumeric, L"#,##0.00");
  add_column(grid, L"Pago", 750, kCenter, kBoolean);
  add_column(grid, L"Separado", 1350, kCenter, kProgress);
  for (const wchar_t* row : {L"Parafuso sextavado\t05/03/2026\t1200\t420\tTrue\t40",
                             L"Porca\t05/03/2026\t1200\t264\tTrue\t100",
                             L"Arruela lisa\t09/03/2026\t2400\t192\tFalse\t15",
                             L"Rebite de alum\u00EDnio\t12/03/2026\t850\t127\tFalse\t0"})
    call_method(grid, L"AddItem", {Variant(row)});
  put_property(grid, L"TotalLineShow", Variant(true));
  put_property(grid, L"Row", Variant(1L));
  put_property(grid, L"Redraw", Variant(true));
}

void theme(Page& page, const wchar_t* label, long number) {
  page.text(make_rect(look::kMargin, page.y(), 400, 16), label);
  page.skip(20);
  page.control(kProgId, make_rect(look::kMargin, page.y(), kWidth, kHeight),
               [number](IDispatch* grid) {
                 put_property(grid, L"Theme", Variant(number));
                 fill(grid);
               });
  page.skip(kHeight + 16);
}

/// Selections and focus marks, and a grid on which the pointer finds something to do.
void states(Page& page) {
  page.control(kProgId, make_rect(look::kMargin, page.y(), kWidth, kHeight), [](IDispatch* grid) {
    fill(grid);
    put_property(grid, L"Redraw", Variant(false));
    put_property(grid, L"Caption", Variant(L"Pedidos em aberto"));
    put_property(grid, L"ShowRowNumbers", Variant(true));
    put_property(grid, L"RowCheckBoxes", Variant(true));
    put_property(grid, L"AlphaBlendSelection", Variant(true));
    put_property(grid, L"BackColorSelected2", Variant(0xF0C080L));
    put_property(grid, L"FocusRectMode", Variant(2L));
    put_property(grid, L"FocusRectStyle", Variant(2L));
    put_property(grid, L"MultiSelect", Variant(1L));
    put_property(grid, L"AllowColumnSort", Variant(true));
    put_indexed(grid, L"RowChecked", {Variant(2L)}, Variant(true));
    put_indexed(grid, L"RowSelected", {Variant(2L)}, Variant(true));
    put_indexed(grid, L"CellBackColor", {Variant(3L), Variant(0L)}, Variant(0xC0E0FFL));
    put_indexed(grid, L"CellForeColor", {Variant(3L), Variant(3L)}, Variant(0x0000C0L));
    put_indexed(grid, L"CellFontBold", {Variant(0L), Variant(0L)}, Variant(true));
    call_method(grid, L"Sort", {Variant(0L), Variant(1L)});
    put_property(grid, L"Redraw", Variant(true));
  });
  page.skip(kHeight + 16);
}

constexpr long kManyRows = 200000;

std::wstring posting(long i) {
  static const wchar_t* const kClients[] = {
      L"Ferragens Três Irmãos", L"Comercial Aurora", L"Padaria São João", L"Oficina Guimarães",
      L"Livraria Conceição",    L"Mercado Ipê",      L"Têxtil Paraná"};
  static const wchar_t* const kCities[] = {L"Curitiba", L"São Paulo", L"Belém", L"Goiânia",
                                           L"Florianópolis"};
  wchar_t text[160];
  swprintf(text, std::size(text), L"%ld\t%ls\t%ls\t%02ld/%02ld/2012\t%ld,%02ld\t%ls", 100000 + i,
           kClients[i % 7], kCities[i % 5], 1 + i % 28, 1 + i / 28 % 12, i * 7919 % 9000,
           i * 31 % 100, i % 3 == 0 ? L"False" : L"True");
  return text;
}

void fill_many(IDispatch* grid) {
  put_property(grid, L"Redraw", Variant(false));
  put_property(grid, L"CacheIncrement", Variant(kManyRows));
  add_column(grid, L"Lançamento", 1300, kRight, kNumeric);
  add_column(grid, L"Cliente", 2900, kLeft, kString);
  add_column(grid, L"Cidade", 1700, kLeft, kString);
  add_column(grid, L"Data", 1300, kCenter, kDate);
  add_column(grid, L"Valor", 1500, kRight, kNumeric, L"#,##0.00");
  add_column(grid, L"Pago", 750, kCenter, kBoolean);
  for (const wchar_t* const name :
       {L"AllowEdit", L"AllowColumnSort", L"AllowColumnDrag", L"AllowColumnResizing",
        L"AllowRowResizing", L"ShowRowNumbers", L"TotalLineShow", L"AllowClipboard"})
    put_property(grid, name, Variant(true));
  put_property(grid, L"MultiSelect", Variant(1L));
  put_property(grid, L"FocusRectMode", Variant(2L));
  for (long i = 0; i < kManyRows; ++i) call_method(grid, L"AddItem", {Variant(posting(i))});
  call_method(grid, L"RowColSet", {Variant(0L), Variant(1L)});
  put_property(grid, L"Redraw", Variant(true));
}

/// Rows enough to scroll, sort, edit and filter; the box above filters by client as one types.
void many_rows(Page& page) {
  page.text(make_rect(look::kMargin, page.y() + 4, 110, 16), L"Cliente contém:");
  const auto box =
      page.control(L"Kestrelon2012.USTextBox", make_rect(look::kMargin + 116, page.y(), 220, 24),
                   [](IDispatch* control) {
                     put_property(control, L"PlaceHolder", Variant(L"padaria, irmãos ..."));
                   });
  page.skip(32);
  constexpr int kTall = 330;
  const auto site =
      page.control(kProgId, make_rect(look::kMargin, page.y(), 660, kTall), fill_many);
  page.skip(kTall + 16);
  box->on_event([grid = site->control_dispatch(), text = box->control_dispatch()](
                    const std::wstring& name, DISPPARAMS&) {
    constexpr long kClient = 1, kContains = 2;
    if (name != L"Change") return;
    put_property(grid.get(), L"Redraw", Variant(false));
    call_method(grid.get(), L"FilterOff");
    call_method(grid.get(), L"FilterOn",
                {get_property(text.get(), L"Text"), Variant(kClient), Variant(kContains)});
    put_property(grid.get(), L"Redraw", Variant(true));
  });
}

}  // namespace

void build_us_flex_grid_page(Page& page) {
  page.title(L"USFlexGrid",
             L"Grade de dados com colunas de texto, data, número, lógico e progresso.");
  page.section(L"200.000 lançamentos");
  many_rows(page);
  page.section(L"Estados");
  states(page);
  page.section(L"Os três temas");
  theme(page, L"Office Blue", 0);
  theme(page, L"Office Silver", 1);
  theme(page, L"Windows 8", 2);
}

}  // namespace kestrelon::host
