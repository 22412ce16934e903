// Image lists: the images of a list with their keys, one image with the effects of drawing, and a
// list that went through bytes into another collection.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/sample_files.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr int kColumns = 6;
constexpr int kStep = look::kPageWidth / kColumns;
constexpr int kTile = 76;

// Where an image comes from, and the key under which it is found again.
struct Source {
  const wchar_t* file;
  const wchar_t* key;
};
constexpr Source kSources[] = {
    {L"invoice.ico", L"nota"},   {L"coins.ico", L"moedas"}, {L"calendar.ico", L"agenda"},
    {L"kestrel.png", L"falcao"}, {L"disc.png", L"disco"},   {L"pointer.cur", L"seta"},
};

Variant missing() {
  Variant out;
  V_VT(&out) = VT_ERROR;
  V_ERROR(&out) = DISP_E_PARAMNOTFOUND;
  return out;
}

ComPtr<IDispatch> new_lists() {
  return create_control(L"Kestrelon2012.cImageLists").as<IDispatch>();
}

ComPtr<IDispatch> images_of(const ComPtr<IDispatch>& list) {
  return to_object(get_property(list.get(), L"Images"));
}

// A list of the sample pictures, each fitted into cells of one size.
ComPtr<IDispatch> sample_list(IDispatch* lists, long side, const wchar_t* name) {
  const auto list = to_object(
      call_method(lists, L"Add", {Variant(side), Variant(side), Variant(name), Variant(8L)}));
  const auto images = images_of(list);
  for (const Source& source : kSources)
    call_method(images.get(), L"AddImage_fromFile",
                {Variant(sample_file(source.file)), missing(), Variant(source.key)});
  return list;
}

struct Effects {
  long width = 0, height = 0;  // 0: as it is
  long opacity = 100, gray = -1;
  float light = 0, angle = 0;
};

// A framed tile with an image in its middle, a name and a line below.
void tile(Page& page, int column, const ComPtr<IDispatch>& images, const std::wstring& key,
          const std::wstring& label, const std::wstring& facts, const Effects& effects = {}) {
  const int x = look::kMargin + column * kStep;
  page.paint(make_rect(x, page.y(), kTile, kTile), [=](HDC hdc, const RECT& area) {
    const HBRUSH paper = CreateSolidBrush(look::kSide), rule = CreateSolidBrush(look::kRule);
    FillRect(hdc, &area, paper);
    FrameRect(hdc, &area, rule);
    DeleteObject(paper);
    DeleteObject(rule);
    call_method(images.get(), L"Render",
                {Variant(key), Variant(static_cast<long>(reinterpret_cast<INT_PTR>(hdc))),
                 Variant(area.left + kTile / 2), Variant(area.top + kTile / 2),
                 Variant(effects.width), Variant(effects.height), Variant(0L), Variant(0L),
                 Variant(0L), Variant(0L), Variant(effects.opacity), Variant(effects.gray),
                 Variant(effects.light), Variant(effects.angle), Variant(true)});
  });
  page.text(make_rect(x, page.y() + kTile + 3, kStep - 4, 16), label);
  page.text(make_rect(x, page.y() + kTile + 19, kStep - 4, 14), facts, TextStyle::kSmall);
}

void whole_list(Page& page, const ComPtr<IDispatch>& images) {
  int column = 0;
  for (const Source& source : kSources)
    tile(page, column++, images, source.key, source.key, source.file);
  page.skip(kTile + 46);
}

void effects(Page& page, const ComPtr<IDispatch>& images) {
  constexpr wchar_t kKey[] = L"agenda";
  const struct {
    const wchar_t* label;
    const wchar_t* facts;
    Effects effects;
  } list[] = {
      {L"Metade", L"24 × 24", {24, 24}},
      {L"Ampliada", L"64 × 64", {64, 64}},
      {L"Tons de cinza", L"grayScale = 0", {0, 0, 100, 0}},
      {L"Mais clara", L"LightAdjustment = 40", {0, 0, 100, -1, 40}},
      {L"Translúcida", L"Opacity = 40", {0, 0, 40}},
      {L"Girada", L"Angle = 30", {0, 0, 100, -1, 0, 30}},
      {L"Espelhada", L"largura negativa", {-48, 48}},
      {L"Mais escura", L"LightAdjustment = -40", {0, 0, 100, -1, -40}},
      {L"Desativada", L"cinza, Opacity = 50", {0, 0, 50, 0}},
      {L"Cinza e clara", L"grayScale = 2, 25", {0, 0, 100, 2, 25}},
      {L"Um quarto", L"12 × 12", {12, 12}},
      {L"Cabeça abaixo", L"Angle = 180", {0, 0, 100, -1, 0, 180}},
  };
  int column = 0;
  for (const auto& entry : list) {
    tile(page, column, images, kKey, entry.label, entry.facts, entry.effects);
    if (++column == kColumns) {
      column = 0;
      page.skip(kTile + 46);
    }
  }
}

// The list as bytes and back, drawn side by side by one call.
void round_trip(Page& page, IDispatch* lists) {
  for (const long side : {16L, 24L, 32L}) {
    const std::wstring name = std::to_wstring(side) + L" × " + std::to_wstring(side);
    sample_list(lists, side, name.c_str());
    Variant bytes;
    Variant reference;
    V_VT(&reference) = VT_VARIANT | VT_BYREF;
    V_VARIANTREF(&reference) = &bytes;
    call_method(lists, L"ExportImageList", {Variant(name), reference});
    const auto other = new_lists();
    const auto images = images_of(to_object(call_method(other.get(), L"ImportImageList", {bytes})));
    const int height = static_cast<int>(side) + 8;
    page.text(make_rect(look::kMargin, page.y() + (height - 16) / 2, 90, 16), name);
    page.paint(make_rect(look::kMargin + 90, page.y(), 400, height),
               [images](HDC hdc, const RECT& area) {
                 call_method(images.get(), L"RenderRange",
                             {Variant(1L), Variant(L"seta"),
                              Variant(static_cast<long>(reinterpret_cast<INT_PTR>(hdc))),
                              Variant(area.left), Variant(area.top + 4), missing(), missing(),
                              missing(), missing(), missing(), missing(), missing(), missing(),
                              missing(), missing(), missing(), missing(), Variant(12L)});
               });
    const std::wstring size = std::to_wstring(V_ARRAY(&bytes)->rgsabound[0].cElements);
    page.text(make_rect(look::kMargin + 500, page.y() + (height - 14) / 2, 300, 14),
              size + L" bytes exportados", TextStyle::kSmall);
    page.skip(height);
  }
}

}  // namespace

void build_image_list_page(Page& page) {
  page.title(L"USImageList", L"Listas de imagens com chaves, para os controles de um formulário.");
  const auto lists = new_lists();
  if (!lists) return;
  const auto images = images_of(sample_list(lists.get(), 48, L"grandes"));
  page.section(L"Uma lista de 48 × 48: chave e arquivo de origem");
  whole_list(page, images);
  page.section(L"Uma imagem, desenhada com Render");
  effects(page, images);
  page.section(L"Exportadas, importadas em outra coleção e desenhadas com RenderRange");
  round_trip(page, lists.get());
}

}  // namespace kestrelon::host
