#include "tests/grid/paint_fixture_win.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "frame/kit/theme.h"

namespace kestrelon {
namespace {

struct Record {
  const wchar_t* texts[8];
};
constexpr Record kRecords[] = {
    {{L"Abacaxi pérola", L"1.234,56", L"02/01/2026", L"", L"25%", L"Abrir", L"A",
      L"Entregar cedo"}},
    {{L"Água mineral sem gás de Petrópolis", L"-10,00", L"28/02/2026", L"", L"80%", L"Abrir", L"B",
      L"Remarcado duas vezes; o cliente pede que se ligue antes de sair, pois a rua está fechada"}},
    {{L"Jabuticaba", L"7,50", L"", L"", L"100%", L"Fechar", L"C", L""}},
    {{L"Queijo minas", L"100.000,00", L"10/10/2026", L"", L"a fazer", L"Abrir", L"D",
      L"gyjpq ÁÇÕ"}},
};

void fill(HDC dc, const PixelRect& area, COLORREF color) {
  const HBRUSH brush = CreateSolidBrush(color);
  const RECT rect = to_rect(area);
  FillRect(dc, &rect, brush);
  DeleteObject(brush);
}

LOGFONTW font(int pixels, bool bold) {
  LOGFONTW font = {};
  font.lfHeight = -pixels;
  font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  font.lfQuality = CLEARTYPE_QUALITY;
  wcscpy(font.lfFaceName, L"Tahoma");
  return font;
}

ColorRef themed(const wchar_t* name, int theme) {
  ColorRef found = 0;
  apply_theme(theme::kFlexGrid, theme, [&](const wchar_t* property, uint32_t value) {
    if (std::wstring_view(property) == name) found = value;
  });
  return found;
}

void apply(GridColors& colors, int theme) {
  colors.border = themed(L"BorderColor", theme);
  colors.selected1 = themed(L"BackColorSelected1", theme);
  colors.selected2 = themed(L"BackColorSelected2", theme);
  colors.even_rows = themed(L"BackColorEvenRows", theme);
  colors.fore_header = themed(L"ForeColorHeader", theme);
  colors.fore_header_over = themed(L"ForeColorHeaderOver", theme);
  colors.header1 = colors.caption1 = themed(L"HeaderGradientColor1", theme);
  colors.header2 = colors.caption2 = themed(L"HeaderGradientColor2", theme);
  colors.grid = themed(L"GridColor", theme);
  colors.progress2 = themed(L"ProgressBarColor2", theme);
  colors.progress_border = themed(L"ProgressBarBorderColor", theme);
  colors.focus = themed(L"FocusRectColor", theme);
}

}  // namespace

RowFacts OrderContents::row(int32_t row) const {
  return {std::find(selected.begin(), selected.end(), row) != selected.end(), row % 3 == 0,
          row == group_row, row == 1 ? 1 : 0};
}

void OrderContents::cell(int32_t row, int32_t column, CellFacts& facts) const {
  facts.text = kRecords[row % 4].texts[column];
  if (column == 1) facts.alignment = 6;
  if (column == 2) facts.alignment = 5;
  if (column == 3) {
    facts.kind = CellKind::kCheckBox;
    facts.alignment = 5;
    facts.checked = row % 2 == 0;
  }
  if (column == 4) {
    facts.kind = CellKind::kProgress;
    facts.alignment = 5;
    constexpr double kValues[] = {25, 80, 100, -1};
    facts.progress = kValues[row % 4];
  }
  if (column == 5) {
    facts.kind = CellKind::kButton;
    facts.alignment = 5;
    facts.pressed = row == 1;
  }
  if (column == 6) {
    facts.image = row % 2 == 0 ? 1 : 0;
    facts.picture = row % 2 == 1 ? this : nullptr;
    facts.image_alignment = row % 4 < 2 ? 4 : 6;
  }
  facts.wrap = column == 7;
  if (column == 7) facts.alignment = 0;
  if (column == 1 && row % 4 == 1) {
    facts.own_fore = true;
    facts.fore = 0x0000C0;
    facts.bold = true;
  }
  if (column == 0 && row % 4 == 2) {
    facts.own_back = true;
    facts.back = 0xC0FFFF;
    facts.italic = facts.underline = true;
  }
  if (column == 0 && row % 4 == 3) facts.strikethrough = true;
}

void OrderContents::group_cell(int32_t, CellFacts& facts) const {
  facts.text = L"Grupo: frutas e bebidas do litoral paulista";
  facts.bold = true;
}

HeadingFacts OrderContents::heading(int32_t column) const {
  static constexpr const wchar_t* kHeadings[] = {
      L"Produto", L"Valor", L"Data", L"Pago",
      L"Entrega", L"Ação",  L"Foto", L"Observação do vendedor e do cliente"};
  constexpr int kAlignments[] = {4, 6, 5, 5, 5, 5, 4, 4};
  const int state = column == pressed ? 3 : column == hovered ? 2 : 1;
  return {kHeadings[column], kAlignments[column], state, column == sorted ? 2 : 0};
}

void OrderContents::total(int32_t column, TotalFacts& facts) const {
  if (column == 1) facts.text = L"Total 101.232,06";
}

void ColorPictures::draw_image(HDC dc, int32_t image, const PixelRect& area, bool) const {
  fill(dc, area, image == 2 ? 0xB75F31 : 0x40A060);
}

void ColorPictures::draw_picture(HDC dc, const void*, const PixelRect& area) const {
  fill(dc, area, 0x3050D0);
}

PaintedGrid::PaintedGrid(int dpi, int theme) {
  scale.dpi = pictures.scale.dpi = dpi;
  look.theme = theme;
  look.row_check_boxes = true;
  look.word_wrap = true;
  look.lines = grid_lines(1);
  apply(look.colors, theme);
  fonts.set(font(scale.px(11), false), font(scale.px(11), false));
  metrics.scale = scale;
  metrics.text_height = fonts.header().height;
  metrics.min_row_height = fonts.cell({}, {}).height;
  metrics.has_caption = true;
  metrics.caption_height = 2 * fonts.cell({}, {}).height;
  metrics.row_check_boxes = true;
  metrics.any_row_image = true;
  metrics.image_width = metrics.image_height = scale.px(16);
  input.width = scale.px(760);
  input.height = scale.px(300);
  input.row_numbers = true;
  input.digit_width = fonts.cell({}, {}).digit_width;
  input.total_line = true;
  input.bar_size = scale.px(17);
  constexpr int kWidths[] = {170, 90, 80, 50, 90, 70, 80, 180};
  for (int i = 0; i < 8; ++i) columns.push_back({i, scale.px(kWidths[i]), true, false});
  rows.rows = 9;
}

void PaintedGrid::lay() {
  input.metrics = ComputeMetrics(metrics);
  rows.high = input.metrics.row_h;
  if (rows.heights.empty())
    rows.heights = {rows.high, rows.high, rows.high, rows.high, 2 * rows.high};
  input.columns = columns;
  input.rows = &rows;
  page = lay_out(input);
}

GridScene PaintedGrid::scene() {
  return {page,  look,      contents,
          fonts, &pictures, focus_rect(page, look.focus_mode, caret_row, caret_column),
          -1,    0};
}

void PaintedGrid::draw() {
  lay();
  surface.resize(input.width, input.height);
  DrawGrid(surface, scene(), look.colors.border);
}

std::vector<uint32_t> PaintedGrid::pixels() {
  const PixelView view = surface.pixels();
  std::vector<uint32_t> all;
  for (int y = 0; y < view.height; ++y)
    for (int x = 0; x < view.width; ++x) all.push_back(view.row(y)[x] & kColorBits);
  return all;
}

void PaintedGrid::save(const char* name) {
  const char* const folder = std::getenv("KESTRELON_SHEETS");
  if (folder == nullptr) return;
  const PixelView view = surface.pixels();
  BITMAPFILEHEADER file = {0x4D42, 0, 0, 0, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)};
  BITMAPINFOHEADER info = {sizeof info, view.width, -view.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const std::string path = std::string(folder) + "/" + name + ".bmp";
  FILE* const out = std::fopen(path.c_str(), "wb");
  if (out == nullptr) return;
  std::fwrite(&file, sizeof file, 1, out);
  std::fwrite(&info, sizeof info, 1, out);
  std::fwrite(view.bits, 4, static_cast<size_t>(view.width) * static_cast<size_t>(view.height),
              out);
  std::fclose(out);
}

}  // namespace kestrelon
