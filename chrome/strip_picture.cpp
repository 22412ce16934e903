#include "chrome/strip_picture.h"

#include "controls/us_button/us_button_face.h"
#include "frame/kit/blit.h"
#include "frame/mem_dc.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

constexpr double kDimOpacity = 0.4;

}  // namespace

void paint_picture(Surface& surface, const StripPicture& what) {
  const auto picture = query<IPicture>(what.picture);
  const PixelView view = surface.pixels();
  const PixelRect& place = what.place;
  const PixelRect seen = intersect(place, view.bounds());
  if (!picture || seen.empty()) return;
  const int edge = place.right - place.left;
  DibSection drawn;
  if (!drawn.create(edge, edge)) return;
  short type = PICTYPE_NONE;
  picture->get_Type(&type);
  PictureMix mix;
  mix.has_key = what.use_mask_color && type == PICTYPE_BITMAP;
  mix.key = TranslateColor(what.mask_color);
  mix.opacity = what.dim ? kDimOpacity : 1;
  if (type == PICTYPE_ICON) {
    OLE_HANDLE icon = 0;
    picture->get_Handle(&icon);
    blit(drawn.pixels(), {0, 0, edge, edge, place.left, place.top}, view);
    DrawIconEx(drawn.dc(), 0, 0, reinterpret_cast<HICON>(static_cast<LONG_PTR>(icon)), edge, edge,
               0, nullptr, DI_NORMAL);
  } else {
    pcMemDC source;
    if (!source.CreateFromPicture(picture.get())) return;
    stretch_blit(drawn.pixels(), {0, 0, edge, edge}, source.pixels(),
                 {0, 0, source.Width(), source.Height()});
  }
  const PixelView whole = drawn.pixels();
  const PixelView part{whole.row(seen.top - place.top) + (seen.left - place.left),
                       seen.right - seen.left, seen.bottom - seen.top, whole.stride};
  mix_picture(view, seen.left, seen.top, part, mix);
}

}  // namespace kestrelon
