// Animated images: moments of one animation, scale rules, mirrors, grounds and changed colours.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/sample_files.h"
#include "host/late_bound.h"
#include "host/units.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kControl[] = L"Kestrelon2012.USAnimatedImage";
constexpr int kGap = 16;
constexpr int kLabel = 42;  // two lines below a tile
constexpr long kDontAnimate = 2, kForward = 3, kActualSize = 4;

// The sample, at rest on a frame counted from 1, in its own size.
void show_frame(IDispatch* control, long frame) {
  put_property(control, L"DelayAnimation", Variant(kDontAnimate));
  put_property(control, L"Stretch", Variant(kActualSize));
  call_method(control, L"LoadAnimatedGIF_File", {Variant(sample_file(L"delivery.gif"))});
  for (long i = 1; i < frame; ++i) put_property(control, L"Action", Variant(kForward));
}

using Ground = std::function<void(HDC, const RECT&)>;

void paper(HDC hdc, const RECT& area) {
  const HBRUSH fill = CreateSolidBrush(look::kSide), rule = CreateSolidBrush(look::kRule);
  FillRect(hdc, &area, fill);
  RECT around = area;
  InflateRect(&around, 1, 1);
  FrameRect(hdc, &around, rule);
  DeleteObject(fill);
  DeleteObject(rule);
}

void stripes(HDC hdc, const RECT& area) {
  const HBRUSH light = CreateSolidBrush(RGB(232, 240, 250)),
               dark = CreateSolidBrush(RGB(198, 216, 238));
  for (int x = area.left; x < area.right; x += 12) {
    const RECT band{x, area.top, std::min<LONG>(x + 12, area.right), area.bottom};
    FillRect(hdc, &band, (x - area.left) / 12 % 2 == 0 ? light : dark);
  }
  DeleteObject(light);
  DeleteObject(dark);
}

// Tiles from the left to the right, each with a control on a ground and two lines below.
class Row {
 public:
  Row(Page& page, int width, int height) : page_(page), width_(width), height_(height) {}
  ~Row() { page_.skip(height_ + kLabel); }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;

  void add(const std::wstring& label, const std::wstring& facts, const Prepare& prepare,
           const Ground& ground = paper) {
    const RECT place = make_rect(x_, page_.y() + 1, width_, height_);
    page_.paint(make_rect(x_ - 1, page_.y(), width_ + 2, height_ + 2),
                [ground](HDC hdc, const RECT& area) {
                  RECT inside = area;
                  InflateRect(&inside, -1, -1);
                  ground(hdc, inside);
                });
    page_.control(kControl, place, prepare);
    page_.text(make_rect(x_, page_.y() + height_ + 5, width_ + kGap - 4, 16), label);
    page_.text(make_rect(x_, page_.y() + height_ + 21, width_ + kGap - 4, 14), facts,
               TextStyle::kSmall);
    x_ += width_ + kGap;
  }

 private:
  Page& page_;
  int width_, height_;
  int x_ = look::kMargin;
};

void moments(Page& page) {
  Row row(page, 112, 80);
  for (const long frame : {1L, 3L, 6L}) {
    row.add(L"Quadro " + std::to_wstring(frame), L"Animation Forward", [frame](IDispatch* control) {
      show_frame(control, frame);
      put_property(control, L"OffsetX", Variant(8L));
      put_property(control, L"OffsetY", Variant(8L));
    });
  }
  row.add(L"Em curso", L"DelayAnimation = 1", [](IDispatch* control) {
    put_property(control, L"Stretch", Variant(kActualSize));
    put_property(control, L"OffsetX", Variant(8L));
    put_property(control, L"OffsetY", Variant(8L));
    call_method(control, L"LoadAnimatedGIF_File", {Variant(sample_file(L"delivery.gif"))});
  });
}

void scale_rules(Page& page) {
  const struct {
    const wchar_t* name;
    long rule;
  } rules[] = {{L"Clip", 0},
               {L"Scale Always", 1},
               {L"Scale Stretch", 2},
               {L"Shrink Scale To Fit", 3},
               {L"Preserve ActualSize", 4}};
  for (const auto& [width, height, about] :
       {std::tuple{146, 110, L"controle maior"}, std::tuple{146, 40, L"controle menor"}}) {
    Row row(page, width, height);
    for (const auto& rule : rules)
      row.add(rule.name, about, [value = rule.rule](IDispatch* control) {
        show_frame(control, 4);
        put_property(control, L"Stretch", Variant(value));
      });
  }
}

void mirrors(Page& page) {
  Row row(page, 146, 80);
  const wchar_t* const names[] = {L"None Mirror", L"Horizontal Mirror", L"Vertical Mirror",
                                  L"Horizontal And Vertical"};
  for (long mirror = 0; mirror < 4; ++mirror)
    row.add(names[mirror], L"Mirrored = " + std::to_wstring(mirror), [mirror](IDispatch* control) {
      show_frame(control, 4);
      put_property(control, L"OffsetX", Variant(25L));
      put_property(control, L"OffsetY", Variant(8L));
      put_property(control, L"Mirrored", Variant(mirror));
    });
}

// Red and blue changed places.
void swap_colours(IDispatch* control) {
  Variant entries, reference;
  V_VT(&reference) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&reference) = &entries;
  call_method(control, L"GetPalette", {Variant(1L), reference});
  if (V_VT(&entries) != (VT_ARRAY | VT_I4)) return;
  auto* const colours = static_cast<LONG*>(V_ARRAY(&entries)->pvData);
  for (ULONG i = 0; i < V_ARRAY(&entries)->rgsabound[0].cElements; ++i) {
    const auto colour = static_cast<COLORREF>(colours[i]);
    colours[i] = static_cast<LONG>(RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour)));
  }
  call_method(control, L"SetPalette", {Variant(1L), reference});
}

void grounds(Page& page) {
  Row row(page, 184, 110);
  const auto large = [](IDispatch* control) {
    show_frame(control, 2);
    put_property(control, L"Stretch", Variant(1L));
  };
  row.add(L"Transparent Gif", L"sobre listras", large, stripes);
  row.add(
      L"Solid Gif", L"BackColor = RGB(255, 243, 214)",
      [large](IDispatch* control) {
        put_property(control, L"BackStyle", Variant(1L));
        put_property(control, L"BackColor", Variant(static_cast<long>(RGB(255, 243, 214))));
        large(control);
      },
      stripes);
  row.add(L"SetPalette", L"vermelho e azul trocados", [large](IDispatch* control) {
    large(control);
    swap_colours(control);
  });
}

}  // namespace

void build_animated_image_page(Page& page) {
  page.title(L"USAnimatedImage", L"GIF animado: quadros em seu tempo, escalas, espelhos e cores.");
  page.section(L"Momentos de uma animação");
  moments(page);
  page.section(L"Stretch");
  scale_rules(page);
  page.section(L"Mirrored");
  mirrors(page);
  page.section(L"Fundo e cores");
  grounds(page);
}

}  // namespace kestrelon::host
