#include "imaging/picture_convert_win.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "base/com_win.h"
#include "imaging/alpha_classify.h"
#include "imaging/dib_section_win.h"
#include "imaging/flatten.h"
#include "imaging/ico_parser.h"
#include "imaging/premultiply.h"

namespace kestrelon {
namespace {

constexpr int kHimetricPerInch = 2540;

struct BitmapHandle {
  explicit BitmapHandle(HBITMAP bitmap) : value(bitmap) {}
  ~BitmapHandle() {
    if (value != nullptr) DeleteObject(value);
  }
  BitmapHandle(const BitmapHandle&) = delete;
  BitmapHandle& operator=(const BitmapHandle&) = delete;
  HBITMAP value;
};

struct ScreenDc {
  ScreenDc() : value(GetDC(nullptr)) {}
  ~ScreenDc() { ReleaseDC(nullptr, value); }
  ScreenDc(const ScreenDc&) = delete;
  ScreenDc& operator=(const ScreenDc&) = delete;
  HDC value;
};

// Room for a colour table behind the header.
struct BitmapInfo {
  BITMAPINFOHEADER header = {};
  RGBQUAD colors[256] = {};

  BitmapInfo(int32_t width, int32_t height, WORD depth) {
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = depth;
  }
  BITMAPINFO* get() { return reinterpret_cast<BITMAPINFO*>(this); }
};

bool fetch(HBITMAP bitmap, int32_t width, int32_t height, WORD depth, uint8_t* bits) {
  const ScreenDc screen;
  BitmapInfo info(width, height, depth);
  const int rows = GetDIBits(screen.value, bitmap, 0, static_cast<UINT>(height), bits, info.get(),
                             DIB_RGB_COLORS);
  return rows == height;
}

// The image with the bitmap's pixels as they are, bottom-up; the fourth byte has a meaning only at
// 32 bits.
bool fetch_image(HBITMAP bitmap, int32_t height, c32bppDIB& out, int32_t& depth) {
  BITMAP facts = {};
  if (GetObjectW(bitmap, sizeof facts, &facts) != sizeof facts) return false;
  depth = facts.bmBitsPixel * facts.bmPlanes;
  return out.InitializeDIB(facts.bmWidth, height > 0 ? height : facts.bmHeight) &&
         fetch(bitmap, out.Width(), out.Height(), 32, out.bits());
}

void make_opaque(c32bppDIB& image) {
  uint8_t* const bits = image.bits();
  for (size_t i = 0; i < image.pixel_count(); ++i) bits[i * 4 + 3] = 255;
}

bool has_no_alpha(const c32bppDIB& image) {
  const uint8_t* const bits = image.bits();
  uint8_t any = 0;
  for (size_t i = 0; i < image.pixel_count(); ++i) any |= bits[i * 4 + 3];
  return any == 0;
}

bool keep_or_drop(bool success, c32bppDIB& out) {
  if (!success) out.DestroyDIB();
  return success;
}

// One bit a pixel, rows from the bottom padded to four bytes.
std::vector<uint8_t> mask_bits(HBITMAP mask) {
  BITMAP facts = {};
  if (GetObjectW(mask, sizeof facts, &facts) != sizeof facts || facts.bmWidth <= 0 ||
      facts.bmHeight <= 0) {
    return {};
  }
  std::vector<uint8_t> bits(static_cast<size_t>(bitmap_row_length(1, facts.bmWidth)) *
                            facts.bmHeight);
  if (!fetch(mask, facts.bmWidth, facts.bmHeight, 1, bits.data())) return {};
  return bits;
}

bool convert_colour_icon(const ICONINFO& parts, c32bppDIB& out) {
  int32_t depth = 0;
  if (!fetch_image(parts.hbmColor, 0, out, depth)) return false;
  if (depth == 32 && has_no_alpha(out)) depth = 24;
  if (depth != 32) make_opaque(out);
  apply_icon_mask(out, depth, depth == 32 ? std::vector<uint8_t>() : mask_bits(parts.hbmMask),
                  !parts.fIcon);
  return true;
}

// Without a colour bitmap the mask has double height: what is cut out, then what is turned round.
bool convert_masked_icon(HICON icon, const ICONINFO& parts, c32bppDIB& out) {
  BITMAP facts = {};
  if (GetObjectW(parts.hbmMask, sizeof facts, &facts) != sizeof facts) return false;
  const int32_t height = facts.bmHeight / 2;
  if (!out.InitializeDIB(facts.bmWidth, height)) return false;
  const auto store = make_dib_section_store(facts.bmWidth, height);
  if (!store) return false;
  {
    const BitmapDc memory(reinterpret_cast<HBITMAP>(store->handle()));
    if (!memory ||
        !DrawIconEx(memory.get(), 0, 0, icon, facts.bmWidth, height, 0, nullptr, DI_NORMAL)) {
      return false;
    }
    GdiFlush();
  }
  std::memcpy(out.bits(), store->bits(), out.pixel_count() * 4);
  make_opaque(out);
  const std::vector<uint8_t> mask = mask_bits(parts.hbmMask);
  const size_t half = mask.size() / 2;  // the upper half comes last
  apply_icon_mask(out, 1, std::span(mask).subspan(half), !parts.fIcon);
  return true;
}

// Draws itself into a rectangle of a device context from the origin on.
using Painter = std::function<bool(HDC dc, int32_t width, int32_t height)>;

// What is painted over one colour, or null.
std::unique_ptr<PixelStore> paint_over(const Painter& paint, int32_t width, int32_t height,
                                       uint8_t background) {
  auto store = make_dib_section_store(width, height);
  if (!store) return nullptr;
  std::memset(store->bits(), background, static_cast<size_t>(width) * height * 4);
  const BitmapDc memory(reinterpret_cast<HBITMAP>(store->handle()));
  if (!memory || !paint(memory.get(), width, height)) return nullptr;
  GdiFlush();
  return store;
}

// Paints once over white and once over black: only what was never touched keeps both, whatever GDI
// leaves in the fourth byte.
bool convert_painting(const Painter& paint, const SIZEL& himetric, ImageFormat type,
                      c32bppDIB& out) {
  const ScreenDc screen;
  const int32_t width =
      MulDiv(himetric.cx, GetDeviceCaps(screen.value, LOGPIXELSX), kHimetricPerInch);
  const int32_t height =
      MulDiv(himetric.cy, GetDeviceCaps(screen.value, LOGPIXELSY), kHimetricPerInch);
  if (width <= 0 || height <= 0 || !out.InitializeDIB(width, height)) return false;
  const auto on_white = paint_over(paint, width, height, 0xFF);
  const auto on_black = on_white ? paint_over(paint, width, height, 0x00) : nullptr;
  if (!on_black) return keep_or_drop(false, out);
  for (size_t i = 0; i < out.pixel_count(); ++i) {
    uint32_t white, black;
    std::memcpy(&white, on_white->bits() + i * 4, 4);
    std::memcpy(&black, on_black->bits() + i * 4, 4);
    const bool untouched = (white & 0xFFFFFF) == 0xFFFFFF && (black & 0xFFFFFF) == 0;
    const uint32_t pixel = untouched ? 0 : white | 0xFF000000;
    std::memcpy(out.bits() + i * 4, &pixel, 4);
  }
  ImageFormat unused = ImageFormat::None;
  out.set_alpha(classify_alpha(out.bits(), out.pixel_count(), false, unused));
  out.set_image_type(type);
  return true;
}

bool convert_enhanced_metafile(HENHMETAFILE metafile, c32bppDIB& out) {
  ENHMETAHEADER header = {};
  if (GetEnhMetaFileHeader(metafile, sizeof header, &header) == 0) return false;
  const RECTL& frame = header.rclFrame;
  const auto paint = [metafile](HDC dc, int32_t width, int32_t height) {
    const RECT bounds = {0, 0, width, height};
    PlayEnhMetaFile(dc, metafile, &bounds);  // fails when a single record does
    return true;
  };
  return convert_painting(paint, {frame.right - frame.left, frame.bottom - frame.top},
                          ImageFormat::Emf, out);
}

bool convert_metafile(IPicture& picture, c32bppDIB& out) {
  SIZEL extent = {};
  if (FAILED(picture.get_Width(&extent.cx)) || FAILED(picture.get_Height(&extent.cy))) return false;
  const auto paint = [&](HDC dc, int32_t width, int32_t height) {
    const RECT bounds = {0, 0, width, height};
    // A picture's own coordinates rise from its lower edge.
    return SUCCEEDED(
        picture.Render(dc, 0, 0, width, height, 0, extent.cy, extent.cx, -extent.cy, &bounds));
  };
  return convert_painting(paint, extent, ImageFormat::Wmf, out);
}

}  // namespace

bool convert_bitmap(HBITMAP bitmap, c32bppDIB& out) {
  int32_t depth = 0;
  out.DestroyDIB();
  if (!fetch_image(bitmap, 0, out, depth)) return keep_or_drop(false, out);
  if (depth != 32) {
    make_opaque(out);
    out.set_image_type(ImageFormat::Bitmap);
    out.set_alpha(AlphaType::None);
    return true;
  }
  ImageFormat type = ImageFormat::None;
  out.set_alpha(classify_alpha(out.bits(), out.pixel_count(), true, type));
  out.set_image_type(type);
  return true;
}

bool convert_icon(HICON icon, c32bppDIB& out) {
  out.DestroyDIB();
  ICONINFO parts = {};
  if (!GetIconInfo(icon, &parts)) return false;
  const BitmapHandle color(parts.hbmColor), mask(parts.hbmMask);
  return keep_or_drop(parts.hbmColor != nullptr ? convert_colour_icon(parts, out)
                                                : convert_masked_icon(icon, parts, out),
                      out);
}

bool convert_picture(IPicture& picture, c32bppDIB& out) {
  out.DestroyDIB();
  SHORT type = PICTYPE_NONE;
  OLE_HANDLE number = 0;
  if (FAILED(picture.get_Type(&type)) || FAILED(picture.get_Handle(&number))) return false;
  // Handles have 32 significant bits, which OLE passes in a 32-bit number.
  const auto handle = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(static_cast<LONG>(number)));
  switch (type) {
    case PICTYPE_BITMAP:
      return convert_bitmap(static_cast<HBITMAP>(handle), out);
    case PICTYPE_ICON:
      return convert_icon(static_cast<HICON>(handle), out);
    case PICTYPE_ENHMETAFILE:
      return convert_enhanced_metafile(static_cast<HENHMETAFILE>(handle), out);
    case PICTYPE_METAFILE:
      return convert_metafile(picture, out);
    default:
      return false;
  }
}

bool convert_windows_metafile(HMETAFILE metafile, SIZEL himetric, c32bppDIB& out) {
  out.DestroyDIB();
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_METAFILE;
  description.wmf.hmeta = metafile;
  description.wmf.xExt = himetric.cx;
  description.wmf.yExt = himetric.cy;
  ComPtr<IPicture> picture;
  return SUCCEEDED(
             OleCreatePictureIndirect(&description, IID_IPicture, FALSE, picture.put_void())) &&
         picture && convert_metafile(*picture, out);
}

bool convert_handle(HANDLE handle, c32bppDIB& out) {
  out.DestroyDIB();
  switch (GetObjectType(handle)) {
    case OBJ_BITMAP:
      return convert_bitmap(static_cast<HBITMAP>(handle), out);
    case OBJ_METAFILE:
      return convert_windows_metafile(static_cast<HMETAFILE>(handle), {}, out);
    case OBJ_ENHMETAFILE:
      return convert_enhanced_metafile(static_cast<HENHMETAFILE>(handle), out);
    default:
      return convert_icon(static_cast<HICON>(handle), out);
  }
}

HICON make_icon(const c32bppDIB& image, bool cursor, POINT hot_spot) {
  if (!image.has_image()) return nullptr;
  const int32_t width = image.Width(), height = image.Height();
  const auto store = make_dib_section_store(width, height);
  if (!store) return nullptr;
  // Icons hold straight colour.
  unpremultiply_row(store->bits(), image.bits(), image.pixel_count());
  const size_t mask_row = static_cast<size_t>((width + 15) / 16) * 2;
  std::vector<uint8_t> mask(mask_row * height);
  for (int32_t y = 0; y < height; ++y)
    for (int32_t x = 0; x < width; ++x)
      if (image.row(y)[x * 4 + 3] == 0)
        mask[y * mask_row + x / 8] |= static_cast<uint8_t>(0x80 >> (x % 8));
  const BitmapHandle mask_bitmap(CreateBitmap(width, height, 1, 1, mask.data()));
  ICONINFO parts = {};
  parts.fIcon = !cursor;
  parts.xHotspot = static_cast<DWORD>(std::max(hot_spot.x, LONG{0}));
  parts.yHotspot = static_cast<DWORD>(std::max(hot_spot.y, LONG{0}));
  parts.hbmColor = reinterpret_cast<HBITMAP>(store->handle());
  parts.hbmMask = mask_bitmap.value;
  return mask_bitmap.value == nullptr ? nullptr : CreateIconIndirect(&parts);
}

HBITMAP make_flat_bitmap(const c32bppDIB& image, COLORREF background) {
  if (!image.has_image()) return nullptr;
  BitmapInfo info(image.Width(), image.Height(), 24);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, info.get(), DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap == nullptr) return nullptr;
  const auto row_bytes = static_cast<size_t>(bitmap_row_length(24, image.Width()));
  for (int32_t y = 0; y < image.Height(); ++y)
    flatten_row_24(static_cast<uint8_t*>(bits) + y * row_bytes,
                   image.bits() + y * image.scanWidth(), static_cast<size_t>(image.Width()),
                   background);
  return bitmap;
}

}  // namespace kestrelon
