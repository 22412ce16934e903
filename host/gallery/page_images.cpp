// c32bppDIB: a contact sheet of files of every format, transforms, icon sizes and enlargements.
#include <algorithm>
#include <filesystem>

#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.c32bppDIB";
constexpr int kColumns = 6;
constexpr int kStep = look::kPageWidth / kColumns - 6;
constexpr int kTile = kStep - 10, kTileHeight = 100;
constexpr long kBoardLight = 0xFFFFFF, kBoardDark = 0xEEEAE6;  // 0x00BBGGRR

// An image of the library, late-bound.
class Image {
 public:
  Image() : object_(create_control(kProgId).as<IDispatch>()) {}

  IDispatch* get() const { return object_.get(); }
  explicit operator bool() const { return static_cast<bool>(object_); }
  long number(const wchar_t* name) const { return to_long(get_property(get(), name)); }
  bool call(const wchar_t* name, std::vector<Variant> arguments) const {
    return to_bool(call_method(get(), name, std::move(arguments)));
  }
  bool load(const std::wstring& file, long icon_size = 0) const {
    return call(L"LoadPicture_File", {Variant(file), Variant(icon_size), Variant(icon_size)});
  }

 private:
  ComPtr<IDispatch> object_;
};

struct Effects {
  long opacity = 100, gray = -1;
  float light = 0, angle = 0;
};

// Draws an image into a rectangle of another one or, without one, of a device context.
void render(const Image& image, HDC hdc, const RECT& to, const Effects& effects = {},
            IDispatch* host = nullptr) {
  image.call(L"Render",
             {Variant(static_cast<long>(reinterpret_cast<INT_PTR>(hdc))), Variant(to.left),
              Variant(to.top), Variant(to.right - to.left), Variant(to.bottom - to.top),
              Variant(0L), Variant(0L), Variant(0L), Variant(0L), Variant(effects.opacity),
              Variant(true), Variant(true), Variant(host), Variant(effects.gray),
              Variant(effects.light), Variant(effects.angle)});
}

// The place of a picture in the middle of a tile, made smaller where it must be.
RECT centred(const Image& image, long width, long height, double scale = 0) {
  double w = static_cast<double>(image.number(L"Width"));
  double h = static_cast<double>(image.number(L"Height"));
  if (scale == 0) scale = std::min({1.0, (width - 8) / w, (height - 8) / h});
  w *= scale, h *= scale;
  return make_rect(static_cast<int>((width - w) / 2), static_cast<int>((height - h) / 2),
                   static_cast<int>(w), static_cast<int>(h));
}

Image checker_board(long width, long height) {
  Image board;
  board.call(L"InitializeDIB", {Variant(width), Variant(height)});
  board.call(L"CreateCheckerBoard", {Variant(8L), Variant(kBoardLight), Variant(kBoardDark)});
  return board;
}

// Lays a checkered tile with a frame on the page; `draw` puts the picture on it.
void tile(Page& page, int column, const std::wstring& label, const std::wstring& facts,
          const std::function<void(const Image& board)>& draw) {
  const Image board = checker_board(kTile, kTileHeight);
  draw(board);
  const int x = look::kMargin + column * kStep;
  page.paint(make_rect(x, page.y(), kTile, kTileHeight), [board](HDC hdc, const RECT& area) {
    render(board, hdc, area);
    const HBRUSH rule = CreateSolidBrush(look::kRule);
    FrameRect(hdc, &area, rule);
    DeleteObject(rule);
  });
  page.text(make_rect(x, page.y() + kTileHeight + 3, kTile, 16), label);
  page.text(make_rect(x, page.y() + kTileHeight + 19, kTile, 14), facts, TextStyle::kSmall);
}

// The folder of the sample pictures, beside or above the program; empty if there is none.
std::filesystem::path sample_folder() {
  wchar_t name[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, name, MAX_PATH);
  for (std::filesystem::path at = std::filesystem::path(name).parent_path(); at.has_relative_path();
       at = at.parent_path()) {
    const auto folder = at / L"resources" / L"samples";
    if (std::filesystem::is_directory(folder)) return folder;
  }
  return {};
}

std::wstring facts_of(const Image& image) {
  constexpr const wchar_t* kAlpha[] = {L"opaca", L"recortada", L"com alfa"};
  const long alpha = image.number(L"Alpha");
  return std::to_wstring(image.number(L"Width")) + L" × " +
         std::to_wstring(image.number(L"Height")) + L", " +
         kAlpha[alpha >= 0 && alpha <= 2 ? alpha : 0];
}

void contact_sheet(Page& page, const std::vector<std::filesystem::path>& files) {
  int column = 0;
  for (const auto& file : files) {
    const Image image;
    if (!image.load(file.wstring(), 48)) continue;
    tile(page, column, file.filename().wstring(), facts_of(image), [&](const Image& board) {
      render(image, nullptr, centred(image, kTile, kTileHeight), {}, board.get());
    });
    if (++column == kColumns) {
      column = 0;
      page.skip(kTileHeight + 44);
    }
  }
  if (column != 0) page.skip(kTileHeight + 44);
}

// What is done to a picture on its way to a tile.
struct Transform {
  const wchar_t* label;
  const wchar_t* facts;
  Effects effects;
  double scale;
  bool mirrored;
  void (*change)(const Image& image);
};

void transforms(Page& page, const std::filesystem::path& file) {
  constexpr double kScale = 0.75;
  const Transform list[] = {
      {L"Original", L"Render", {}, kScale, false, nullptr},
      {L"Reduzida", L"um terço", {}, kScale / 3, false, nullptr},
      {L"Girada", L"Angle = 30", {100, -1, 0, 30}, kScale, false, nullptr},
      {L"Espelhada", L"largura negativa", {}, kScale, true, nullptr},
      {L"Tons de cinza", L"GrayScale = 0", {100, 0}, kScale, false, nullptr},
      {L"Mais clara", L"LightAdjustment = 40", {100, -1, 40}, kScale, false, nullptr},
      {L"Mais escura", L"LightAdjustment = -40", {100, -1, -40}, kScale, false, nullptr},
      {L"Translúcida", L"Opacity = 40", {40}, kScale, false, nullptr},
      {L"Com sombra", L"CreateDropShadow", {}, kScale, false, nullptr},
      {L"Inversa",
       L"MakeImageInverse",
       {},
       kScale,
       false,
       [](const Image& image) { image.call(L"MakeImageInverse", {}); }},
      {L"Tingida",
       L"BlendToColor, 60",
       {},
       kScale,
       false,
       [](const Image& image) {
         image.call(L"BlendToColor", {Variant(static_cast<long>(RGB(43, 108, 176))), Variant(60L)});
       }},
      {L"Girada, cinza", L"Angle 200, Opacity 60", {60, 1, 0, 200}, kScale, false, nullptr}};
  int column = 0;
  for (const Transform& t : list) {
    const Image image;
    if (!image.load(file.wstring())) return;
    if (t.change != nullptr) t.change(image);
    tile(page, column, t.label, t.facts, [&](const Image& board) {
      RECT to = centred(image, kTile, kTileHeight,
                        t.scale * (kTileHeight - 8) / static_cast<double>(image.number(L"Height")));
      if (t.facts == std::wstring(L"CreateDropShadow")) {
        image.call(L"Resize", {Variant(to.right - to.left), Variant(to.bottom - to.top)});
        image.call(L"RenderDropShadow_JIT",
                   {Variant(0L), Variant(to.left - 1), Variant(to.top), Variant(5L), Variant(0L),
                    Variant(55L), Variant(0.0f), Variant(-1L), Variant(board.get())});
      }
      if (t.mirrored) to.right = 2 * to.left - to.right;  // the negative width
      render(image, nullptr, to, t.effects, board.get());
    });
    if (++column == kColumns) {
      column = 0;
      page.skip(kTileHeight + 44);
    }
  }
}

// One icon file at its sizes, and its smallest picture enlarged both ways.
void icons(Page& page, const std::filesystem::path& file) {
  int column = 0;
  for (const long size : {16L, 32L, 48L}) {
    const Image image;
    if (!image.load(file.wstring(), size)) return;
    tile(page, column++, std::to_wstring(size) + L" pedidos", facts_of(image),
         [&](const Image& board) {
           render(image, nullptr, centred(image, kTile, kTileHeight), {}, board.get());
         });
  }
  for (const bool smooth : {false, true}) {
    const Image image;
    if (!image.load(file.wstring(), 16)) return;
    put_property(image.get(), L"isGDIplusEnabled", Variant(false));
    put_property(image.get(), L"HighQualityInterpolation", Variant(smooth));
    tile(page, column++, L"Seis vezes", smooth ? L"bilinear" : L"vizinho mais próximo",
         [&](const Image& board) {
           const double scale = 96.0 / static_cast<double>(image.number(L"Width"));
           render(image, nullptr, centred(image, kTile, kTileHeight, scale), {}, board.get());
         });
  }
  page.skip(kTileHeight + 44);
}

}  // namespace

void build_images_page(Page& page) {
  page.title(L"c32bppDIB", L"Imagens de 32 bits com transparência, sobre um tabuleiro.");
  const auto folder = sample_folder();
  if (folder.empty()) {
    page.text(make_rect(look::kMargin, page.y(), look::kPageWidth, 20),
              L"As imagens de amostra (resources\\samples) não foram encontradas.");
    return;
  }
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.is_regular_file() && entry.path().extension() != L".sh")
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  page.section(L"Formatos: BMP, GIF, ícones e cursores, JPEG, PNG, TGA");
  contact_sheet(page, files);
  page.section(L"Transformações");
  transforms(page, folder / L"kestrel.png");
  page.section(L"Tamanhos de um arquivo de ícone; ampliação");
  icons(page, folder / L"invoice.ico");
}

}  // namespace kestrelon::host
