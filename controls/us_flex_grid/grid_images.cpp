#include "controls/us_flex_grid/grid_images.h"

#include <olectl.h>

#include <algorithm>

namespace kestrelon {
namespace {

// A list of another make may lack a member or refuse; the image is left out then.
template <class Body>
bool tried(Body&& body) {
  try {
    body();
    return true;
  } catch (const ComError&) {
    return false;
  }
}

constexpr long kSelectedStyle = 1;
constexpr int kHimetricPerInch = 2540;

}  // namespace

void GridImages::set_list(IDispatch* list) {
  list_ = LateObject(ComPtr<IDispatch>(list));
  images_ = {};
  size_ = {};
  if (!list_) return;
  const bool known = tried([&] {
    size_.width = static_cast<int>(kestrelon::number_of(list_.get_property(L"imageWidth")));
    size_.height = static_cast<int>(kestrelon::number_of(list_.get_property(L"imageHeight")));
    images_ = list_.get_object(L"ListImages");
  });
  if (!known) size_ = {};
}

LateObject GridImages::item(const Variant& index) const {
  return object_of(images_.call(L"Item", {index}));
}

int32_t GridImages::number_of(const VARIANT& image) const {
  Variant plain;
  if (FAILED(VariantCopyInd(&plain, const_cast<VARIANT*>(&image)))) return 0;
  if (V_VT(&plain) == VT_BSTR) {
    int32_t index = 0;
    tried([&] {
      index = -static_cast<int32_t>(kestrelon::number_of(item(plain).get_property(L"Index")));
    });
    return std::max<int32_t>(index, INT16_MIN);
  }
  return plain.change(VT_I4) ? std::clamp<int32_t>(V_I4(&plain), INT16_MIN, INT16_MAX) : 0;
}

Variant GridImages::shown(int32_t image) const {
  if (image >= 0) return Variant(static_cast<long>(image));
  Variant key{std::wstring_view()};
  tried([&] { key = item(Variant(static_cast<long>(-image))).get_property(L"Key"); });
  return key;
}

grid_layout::Size GridImages::image_size(int32_t image) const {
  return image != 0 ? size_ : grid_layout::Size{};
}

void GridImages::draw_image(HDC dc, int32_t image, const PixelRect& area, bool selected) const {
  tried([&] {
    const Variant index(static_cast<long>(std::abs(image)));
    item(index).call(L"Draw",
                     {Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(dc))),
                      Variant(static_cast<long>(area.left)), Variant(static_cast<long>(area.top)),
                      Variant(selected ? kSelectedStyle : 0L)});
  });
}

grid_layout::Size GridImages::picture_size(const void* picture) const {
  const auto object = query<IPicture>(static_cast<IPictureDisp*>(const_cast<void*>(picture)));
  if (!object) return {};
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  object->get_Width(&width);
  object->get_Height(&height);
  const HDC screen = GetDC(nullptr);
  const grid_layout::Size out = {
      MulDiv(width, GetDeviceCaps(screen, LOGPIXELSX), kHimetricPerInch),
      MulDiv(height, GetDeviceCaps(screen, LOGPIXELSY), kHimetricPerInch)};
  ReleaseDC(nullptr, screen);
  return out;
}

void GridImages::draw_picture(HDC dc, const void* picture, const PixelRect& area) const {
  const auto object = query<IPicture>(static_cast<IPictureDisp*>(const_cast<void*>(picture)));
  if (!object) return;
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  object->get_Width(&width);
  object->get_Height(&height);
  object->Render(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, 0, height,
                 width, -height, nullptr);
}

}  // namespace kestrelon
