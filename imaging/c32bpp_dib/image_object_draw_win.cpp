// c32bppDIB: drawing, text, and objects of the system made of images.
#include <olectl.h>

#include "imaging/c32bpp_dib/draw_target_win.h"
#include "imaging/c32bpp_dib/image_object_win.h"
#include "imaging/draw_text_win.h"
#include "imaging/picture_convert_win.h"
#include "imaging/region_win.h"

namespace kestrelon {
namespace {

TextPlacement placement_of(long x, long y, long width, long height, OLE_COLOR color, long opacity,
                           long format) {
  return {{x, y, width, height},
          static_cast<COLORREF>(plain_color(color)),
          opacity,
          static_cast<UINT>(format)};
}

}  // namespace

bool ImageObject::render(long dc, long x, long y, long width, long height, long from_x, long from_y,
                         long from_width, long from_height, long opacity, bool blend,
                         bool half_tone, IDispatch* host, long gray, float light, float angle,
                         bool centre) {
  DrawTarget target(dc, host);
  const RenderArguments args{x,
                             y,
                             width,
                             height,
                             from_x,
                             from_y,
                             from_width,
                             from_height,
                             opacity,
                             blend,
                             half_tone,
                             target.host(),
                             static_cast<GrayScale>(gray),
                             light,
                             static_cast<double>(angle),
                             centre};
  return !target.wrong() && image_.Render(target.surface(), args);
}

bool ImageObject::tile_image(long dc, long x, long y, long width, long height, long from_x,
                             long from_y, long from_width, long from_height, long opacity,
                             bool blend, bool half_tone, IDispatch* host, long gray, float light) {
  DrawTarget target(dc, host);
  const RenderArguments args{x,
                             y,
                             width,
                             height,
                             from_x,
                             from_y,
                             from_width,
                             from_height,
                             opacity,
                             blend,
                             half_tone,
                             target.host(),
                             static_cast<GrayScale>(gray),
                             light};
  return !target.wrong() && image_.TileImage(target.surface(), args);
}

bool ImageObject::render_drop_shadow_jit(long dc, long x, long y, long depth, OLE_COLOR color,
                                         long opacity, float light, long gray, IDispatch* host) {
  DrawTarget target(dc, host);
  return !target.wrong() &&
         image_.RenderDropShadow_JIT(target.surface(), x, y, depth, plain_color(color), opacity,
                                     light, static_cast<GrayScale>(gray), target.host());
}

bool ImageObject::draw_text_std_font(Text text, IDispatch* font, long x, long y, long width,
                                     long height, OLE_COLOR color, long opacity, long format) {
  return changed(draw_text(image_, text, query<IFont>(font).get(),
                           placement_of(x, y, width, height, color, opacity, format)));
}

bool ImageObject::draw_text_h_font(Text text, long font, long x, long y, long width, long height,
                                   OLE_COLOR color, long opacity, long format) {
  return changed(draw_text(image_, text, handle_of<HFONT>(font),
                           placement_of(x, y, width, height, color, opacity, format)));
}

long ImageObject::create_region(long style, long x, long y) {
  return number_of(image_region(image_, static_cast<RegionStyle>(style), x, y));
}

long ImageObject::create_icon(bool cursor, long x, long y) {
  return number_of(make_icon(image_, cursor, {x, y}));
}

ComPtr<IDispatch> ImageObject::create_picture(bool as_icon, OLE_COLOR back) {
  ComPtr<IDispatch> picture;
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  HANDLE handle = nullptr;
  if (as_icon) {
    description.picType = PICTYPE_ICON;
    handle = description.icon.hicon = make_icon(image_);
  } else {
    description.picType = PICTYPE_BITMAP;
    handle = description.bmp.hbitmap =
        make_flat_bitmap(image_, static_cast<COLORREF>(plain_color(back)));
  }
  if (handle != nullptr)
    OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.put_void());
  return picture;
}

}  // namespace kestrelon
