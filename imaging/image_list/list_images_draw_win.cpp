// cListImages and cListImage: drawing, and icons made of images.
#include <algorithm>
#include <cstdlib>

#include "imaging/c32bpp_dib/draw_target_win.h"
#include "imaging/dib_win.h"
#include "imaging/image_list/image_list_object_win.h"
#include "imaging/image_list/list_arguments_win.h"
#include "imaging/picture_convert_win.h"

namespace kestrelon {
namespace {

constexpr long kIconDepth = 32;
constexpr long kLargestIcon = 1024;  // pixels a side

// Styles of cListImage.Draw, as other image lists number them.
constexpr long kStyleSelected = 2, kStyleFocus = 3;

RenderArguments arguments_of(long x, long y, long width, long height, long from_x, long from_y,
                             long from_width, long from_height, long opacity, long gray,
                             float light, float angle, bool centre, c32bppDIB* host) {
  RenderArguments args;
  args.destX = x, args.destY = y;
  args.destWidth = width, args.destHeight = height;
  args.SrcX = from_x, args.SrcY = from_y;
  args.SrcWidth = from_width, args.SrcHeight = from_height;
  args.Opacity = opacity;
  args.grayScale = static_cast<GrayScale>(gray);
  args.LightAdjustment = light;
  args.Angle = static_cast<double>(angle);
  args.CenterOnDestXY = centre;
  args.destHostDIB = host;
  return args;
}

// A wanted side of an icon.
long side_in(const VARIANT* wanted, long otherwise) {
  const long side = number_in(wanted, 0);
  return side > 0 ? std::min(side, std::max(kLargestIcon, otherwise)) : otherwise;
}

// Keeps sums of coordinates in 32 bits.
int32_t moved(int32_t at, int64_t by) {
  return static_cast<int32_t>(std::clamp<int64_t>(at + by, INT32_MIN, INT32_MAX));
}

}  // namespace

bool ListImagesObject::render(const VARIANT& index, long dc, long x, long y, long width,
                              long height, long from_x, long from_y, long from_width,
                              long from_height, long opacity, long gray, float light, float angle,
                              bool centre, IDispatch* host) {
  DrawTarget target(dc, host);
  const auto args = arguments_of(x, y, width, height, from_x, from_y, from_width, from_height,
                                 opacity, gray, light, angle, centre, target.host());
  return raising([&] {
    const int32_t position = list_->resolve(item_index(index), L"Images.Render");
    return !target.wrong() && list_->Render(position, target.surface(), args);
  });
}

bool ListImagesObject::render_range(const VARIANT& first, const VARIANT& last, long dc, long x,
                                    long y, long width, long height, long from_x, long from_y,
                                    long from_width, long from_height, long opacity, long gray,
                                    float light, float angle, bool centre, IDispatch* host,
                                    long spacing, bool vertical) {
  DrawTarget target(dc, host);
  auto args = arguments_of(x, y, width, height, from_x, from_y, from_width, from_height, opacity,
                           gray, light, angle, centre, target.host());
  const long side =
      vertical ? (height != 0 ? height : list_->Height()) : (width != 0 ? width : list_->Width());
  const int64_t step = std::abs(int64_t{side}) + spacing;
  return raising([&] {
    const int32_t from = list_->resolve(item_index(first), L"Images.RenderRange");
    const int32_t to = list_->resolve(item_index(last), L"Images.RenderRange");
    bool drawn = !target.wrong();
    for (int32_t position = from; drawn; position += from < to ? 1 : -1) {
      drawn = list_->Render(position, target.surface(), args);
      if (position == to) break;
      int32_t& moving = vertical ? args.destY : args.destX;
      moving = moved(moving, step);
    }
    return drawn;
  });
}

long ListImagesObject::extract_icon(const VARIANT& index, VARIANT* depth) {
  WindowsImage image;
  raising([&] {
    return list_->extract(list_->resolve(item_index(index), L"Images.ExtractIcon"), image);
  });
  give_number(depth, kIconDepth);
  return number_of(make_icon(image));
}

long ListImagesObject::extract_icon_ex(const VARIANT& index, bool mirror_x, bool mirror_y,
                                       long opacity, long gray, float light, float angle,
                                       VARIANT* width, VARIANT* height, VARIANT* depth) {
  const long wide = side_in(width, list_->Width()), high = side_in(height, list_->Height());
  WindowsImage image;
  raising([&] {
    const int32_t position = list_->resolve(item_index(index), L"Images.ExtractIconEx");
    if (!image.InitializeDIB(wide, high)) throw_low_resources();
    const auto args = arguments_of(0, 0, mirror_x ? -wide : wide, mirror_y ? -high : high, 0, 0, 0,
                                   0, opacity, gray, light, angle, false, &image);
    list_->Render(position, nullptr, args);
  });
  give_number(width, wide);
  give_number(height, high);
  give_number(depth, kIconDepth);
  return number_of(make_icon(image));
}

void ListImageObject::draw(long dc, long x, long y, long style) {
  WindowsImage image;
  const bool there = raising(
      [&] { return list_->extract(data().ClassDataLong(*item_, ItemDatum::Index), image); });
  if (!there) return;
  const long tint = style == kStyleSelected ? 50 : style == kStyleFocus ? 25 : 0;
  image.BlendToColor(static_cast<int32_t>(GetSysColor(COLOR_HIGHLIGHT)), tint);
  render_to_dc(image, handle_of<HDC>(dc), x, y);
}

}  // namespace kestrelon
