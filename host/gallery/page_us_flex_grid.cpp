// USFlexGrid: an order in three themes, with cells of every type, totals and the row under the
// caret.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

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

}  // namespace

void build_us_flex_grid_page(Page& page) {
  page.title(L"USFlexGrid",
             L"Grade de dados com colunas de texto, data, número, lógico e progresso.");
  page.section(L"Os três temas");
  theme(page, L"Office Blue", 0);
  theme(page, L"Office Silver", 1);
  theme(page, L"Windows 8", 2);
}

}  // namespace kestrelon::host
