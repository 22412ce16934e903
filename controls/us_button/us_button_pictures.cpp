// The pictures of a button: three picture objects by state, or one 32-bit image in their place.
#include "base/rounding.h"
#include "controls/us_button/us_button.h"
#include "frame/himetric.h"
#include "frame/kit/blit.h"
#include "frame/kit/lines.h"
#include "imaging/image_list/image_list_entry_win.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

constexpr double kDisabledOpacity = 0.2;

SIZE natural_size(const PictureProperty& picture) {
  const auto object = picture.get().as<IPicture>();
  SIZEL himetric{};
  if (!object || FAILED(object->get_Width(&himetric.cx)) ||
      FAILED(object->get_Height(&himetric.cy)))
    return {};
  return to_pixels(himetric);
}

bool same_size(const SIZE& a, const SIZE& b) {
  return a.cx == b.cx && a.cy == b.cy;
}

LoadOptions options(long width, long height, long depth) {
  LoadOptions out;
  out.icon_cx = static_cast<int32_t>(width);
  out.icon_cy = static_cast<int32_t>(height);
  if (depth != 0) out.icon_bit_depth = static_cast<int32_t>(depth);
  return out;
}

std::vector<uint8_t> bytes_of(SAFEARRAY* array) {
  Variant holder;
  V_VT(&holder) = VT_ARRAY | VT_UI1;
  V_ARRAY(&holder) = array;
  auto out = property_detail::Automation<std::vector<uint8_t>>::from(holder);
  V_VT(&holder) = VT_EMPTY;  // the array stays the caller's
  return out;
}

// A picture object in its own size on `ground`; empty when it has no pixels.
DibSection to_pixels(const PictureProperty& picture, ColorRef ground) {
  DibSection out;
  const SIZE size = natural_size(picture);
  const auto object = picture.get().as<IPicture>();
  if (!object || !out.create(static_cast<int>(size.cx), static_cast<int>(size.cy))) return out;
  fill_rect(out.pixels(), out.pixels().bounds(), ground);
  if (picture.type() == PICTYPE_ICON) {
    const auto icon = reinterpret_cast<HICON>(static_cast<LONG_PTR>(picture.handle()));
    DrawIconEx(out.dc(), 0, 0, icon, size.cx, size.cy, 0, nullptr, DI_NORMAL);
    return out;
  }
  SIZEL himetric{};
  object->get_Width(&himetric.cx);
  object->get_Height(&himetric.cy);
  object->Render(out.dc(), 0, 0, size.cx, size.cy, 0, himetric.cy, himetric.cx, -himetric.cy,
                 nullptr);
  return out;
}

}  // namespace

void USButton::put_picture(PictureProperty& which, IPictureDisp* picture) {
  PictureProperty& target = &which != &Picture && !Picture ? Picture : which;
  if (picture != nullptr && PictureSize.get() == Picture_Normal) {
    target.assign(picture);
    const SIZE size = natural_size(target);
    bool differs = false;
    for (const PictureProperty* other : {&Picture, &PictureOn, &PictureOver})
      differs = differs || (*other && !same_size(natural_size(*other), size));
    if (differs) {
      PictureSize.put(Picture_Custom);
    } else {
      PictureSizeX.assign(size.cx);
      PictureSizeY.assign(size.cy);
    }
  }
  target.put(picture);
}

void USButton::picture_size_changed() {
  constexpr long kSides[] = {0, 16, 24, 32, 48};
  const long chosen = PictureSize.get();
  if (chosen >= Picture_16x16 && chosen <= Picture_48x48) {
    PictureSizeX.assign(kSides[chosen]);
    PictureSizeY.assign(kSides[chosen]);
  } else if (chosen == Picture_Normal && Picture) {
    const SIZE size = natural_size(Picture);
    PictureSizeX.assign(size.cx);
    PictureSizeY.assign(size.cy);
  }
  relayout();
}

long USButton::picture_opacity() const {
  return round_half_even<int32_t>(double{PictureOpacity.get()} * 100);
}

void USButton::set_picture_opacity(long percent) {
  PictureOpacity.put(static_cast<float>(std::clamp(percent, 0L, 100L)) / 100);
}

const PictureProperty& USButton::picture_for(int state) const {
  if (state == kFaceDisabled) return Picture;
  if (state == kFaceOver && PictureOver) return PictureOver;
  if (state == kFaceDown || Value.get()) {
    if (PictureOn) return PictureOn;
    if (PictureOver) return PictureOver;
  }
  return Picture;
}

void USButton::draw_std_picture(const PictureProperty& picture) {
  if (!picture) return;
  const bool icon = picture.type() == PICTYPE_ICON;
  const PixelView view = surface().pixels();
  PictureMix mix;
  mix.has_key = UseMaskColor.get() || !icon;
  mix.key = derived_[kDerivedMask];
  mix.opacity = Enabled.get() ? double{PictureOpacity.get()} : kDisabledOpacity;
  const PixelRect& place = places_.picture;
  DibSection drawn;  // what the surface shows of the picture, in its final size
  if (!drawn.create(view.width, view.height)) return;
  if (!mix.has_key) {
    // An icon lets the face through by its own mask.
    blit(drawn.pixels(), {0, 0, view.width, view.height, 0, 0}, view);
    DrawIconEx(drawn.dc(), place.left, place.top,
               reinterpret_cast<HICON>(static_cast<LONG_PTR>(picture.handle())),
               place.right - place.left, place.bottom - place.top, 0, nullptr, DI_NORMAL);
  } else {
    const DibSection source = to_pixels(picture, mix.key);
    if (!source) return;
    if (!UseMaskColor.get()) mix.key = to_color(source.pixels().row(0)[0]);
    stretch_blit(drawn.pixels(), place, source.pixels(), source.pixels().bounds());
  }
  const PixelRect seen = intersect(place, view.bounds());
  if (seen.empty()) return;
  const PixelView whole = drawn.pixels();
  const PixelView part{whole.row(seen.top) + seen.left, seen.right - seen.left,
                       seen.bottom - seen.top, whole.stride};
  mix_picture(view, seen.left, seen.top, part, mix);
}

// The image that shows stays unless the new one loads.
template <class Loader>
bool USButton::load_image(Loader loader) {
  WindowsImage fresh;
  std::vector<uint8_t> png;
  if (!loader(fresh) || !fresh.has_image() || !fresh.SaveToStream_PNG(png)) return false;
  dib_.SwapDIBs(fresh);
  has_dib_ = true;
  Picture.assign(nullptr);
  if (PictureSizeX.get() == 0) PictureSizeX.assign(PictureSizeY.get());
  Picture32Dib.put(std::move(png));
  refresh();
  return true;
}

bool USButton::load_image_from_std_picture(IDispatch* picture) {
  return load_image([&](c32bppDIB& image) { return load_std_picture(image, picture); });
}

bool USButton::load_image_from_handle(long handle) {
  return load_image([&](c32bppDIB& image) {
    return load_handle(image, reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(handle)));
  });
}

bool USButton::load_image_from_array(SAFEARRAY** bytes, long width, long height, long depth) {
  if (bytes == nullptr) return false;
  const auto copy = bytes_of(*bytes);
  return load_image([&](c32bppDIB& image) {
    return image.LoadPicture_Stream(copy, options(width, height, depth));
  });
}

bool USButton::load_image_from_file(const std::wstring& name, long width, long height, long depth) {
  return load_image([&](c32bppDIB& image) {
    return image.LoadPicture_File(name, options(width, height, depth));
  });
}

bool USButton::load_image_from_resource(IDispatch* global, const VARIANT& section,
                                        const VARIANT& id, long width, long height, long depth) {
  try {
    LateObject app{ComPtr<IDispatch>(global)};
    if (!app) return false;
    Variant index, kind;
    VariantCopyInd(index.put(), const_cast<VARIANT*>(&id));
    VariantCopyInd(kind.put(), const_cast<VARIANT*>(&section));
    if (V_VT(&kind) != VT_BSTR) {
      LateObject picture = object_of(app.call(L"LoadResPicture", {index, kind}));
      return picture && load_image_from_std_picture(picture.get());
    }
    const Variant data = app.call(L"LoadResData", {index, kind});
    if (V_VT(&data) != (VT_ARRAY | VT_UI1)) return false;
    SAFEARRAY* bytes = V_ARRAY(&data);
    return load_image_from_array(&bytes, width, height, depth);
  } catch (const ComError&) {
    return false;
  }
}

bool USButton::load_image_from_us_image_list(IDispatch* list, const VARIANT& index,
                                             const VARIANT& key) {
  return load_image(
      [&](c32bppDIB& image) { return copy_image_list_entry(list, key, index, image); });
}

SAFEARRAY* USButton::picture32_dib() const {
  Variant holder = Picture32Dib.save();
  SAFEARRAY* const array = V_ARRAY(&holder);
  V_VT(&holder) = VT_EMPTY;  // the caller owns it
  return array;
}

bool USButton::show_bytes(const std::vector<uint8_t>& bytes) {
  if (bytes.empty()) return false;
  if (PictureSizeX.get() == 0) PictureSizeX.assign(PictureSizeY.get());
  WindowsImage fresh;
  if (!fresh.LoadPicture_Stream(bytes, options(PictureSizeX.get(), PictureSizeY.get(), 32)))
    return false;
  dib_.SwapDIBs(fresh);
  has_dib_ = true;
  Picture.assign(nullptr);
  return true;
}

void USButton::set_picture32_dib(SAFEARRAY* bytes) {
  auto copy = bytes_of(bytes);
  if (copy.empty()) return clear_picture32_dib();
  if (!show_bytes(copy)) return;
  Picture32Dib.put(std::move(copy));
  refresh();
}

void USButton::clear_picture32_dib() {
  dib_.DestroyDIB();
  has_dib_ = false;
  Picture32Dib.put({});
  refresh();
}

}  // namespace kestrelon
