// c32bppDIB: saving to files and byte arrays.
#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/c32bpp_dib/image_object_win.h"

namespace kestrelon {
namespace {

template <class Encode>
bool save_to_array(SAFEARRAY** out, Encode&& encode) {
  GdiFlush();
  std::vector<uint8_t> bytes;
  return encode(bytes) && give_bytes(out, bytes);
}

// Calls `save` with the image, laid over a colour if one is given.
template <class Save>
bool save_over(const c32bppDIB& image, const VARIANT& fill, Save&& save) {
  Variant color;
  copy_value(color, fill);
  if (is_missing(fill) || !image.has_image() || V_VT(&color) == VT_EMPTY || !color.change(VT_I4) ||
      V_I4(&color) == -1) {
    return save(image);
  }
  c32bppDIB flat;
  const int32_t plain = plain_color(static_cast<OLE_COLOR>(V_I4(&color)));
  const int32_t whole = std::max(image.Width(), image.Height());
  RenderArguments args;
  args.destHostDIB = &flat;
  if (!flat.InitializeDIB(image.Width(), image.Height()) ||
      !flat.CreateCheckerBoard(whole, plain, plain) || !image.Render(nullptr, args)) {
    return false;
  }
  return save(flat);
}

}  // namespace

bool ImageObject::save_to_file_bitmap(Text file, bool keep_premultiplied, OLE_COLOR fill) {
  return image_.SaveToFile_Bitmap(file, keep_premultiplied, plain_color(fill));
}

bool ImageObject::save_to_stream_bitmap(Bytes out, bool keep_premultiplied, OLE_COLOR fill) {
  return save_to_array(out, [&](auto& bytes) {
    return image_.SaveToStream_Bitmap(bytes, keep_premultiplied, plain_color(fill));
  });
}

bool ImageObject::save_to_file_png(Text file, const VARIANT& fill) {
  return save_over(image_, fill,
                   [&](const c32bppDIB& image) { return image.SaveToFile_PNG(file); });
}

bool ImageObject::save_to_stream_png(Bytes out, const VARIANT& fill) {
  return save_to_array(out, [&](auto& bytes) {
    return save_over(image_, fill,
                     [&](const c32bppDIB& image) { return image.SaveToStream_PNG(bytes); });
  });
}

bool ImageObject::save_to_file_jpg(Text file, long quality, OLE_COLOR fill) {
  return image_.SaveToFile_JPG(file, quality, plain_color(fill));
}

bool ImageObject::save_to_stream_jpg(Bytes out, long quality, OLE_COLOR fill) {
  return save_to_array(
      out, [&](auto& bytes) { return image_.SaveToStream_JPG(bytes, quality, plain_color(fill)); });
}

bool ImageObject::save_to_file_gif(Text file, bool adaptive, long tolerance) {
  return image_.SaveToFile_GIF(file, adaptive, tolerance);
}

bool ImageObject::save_to_stream_gif(Bytes out, bool adaptive, long tolerance) {
  return save_to_array(
      out, [&](auto& bytes) { return image_.SaveToStream_GIF(bytes, adaptive, tolerance); });
}

bool ImageObject::save_to_file_tga(Text file, bool compress, bool reduce, bool premultiplied) {
  return image_.SaveToFile_TGA(file, compress, reduce, premultiplied);
}

bool ImageObject::save_to_stream_tga(Bytes out, bool compress, bool reduce, bool premultiplied) {
  return save_to_array(out, [&](auto& bytes) {
    return image_.SaveToStream_TGA(bytes, compress, reduce, premultiplied);
  });
}

bool ImageObject::png_property_set(ENUM_PNG_PROPERTIES id, const VARIANT& value, Text keyword) {
  const auto property = static_cast<PngProperty>(id);
  if (is_missing(value)) return image_.PngPropertySet(property, std::nullopt, keyword);
  Variant copy;
  copy_value(copy, value);
  switch (property) {
    case PngProperty::DefaultBkgColor:
    case PngProperty::FilterMethod:
      if (!copy.change(VT_I4)) return false;
      return image_.PngPropertySet(property,
                                   property == PngProperty::FilterMethod
                                       ? V_I4(&copy)
                                       : plain_color(static_cast<OLE_COLOR>(V_I4(&copy))),
                                   keyword);
    case PngProperty::DateTimeModified:
      return copy.change(VT_DATE) && image_.PngPropertySet(property, V_DATE(&copy), keyword);
    default:
      return copy.change(VT_BSTR) &&
             image_.PngPropertySet(property, to_wstring(V_BSTR(&copy)), keyword);
  }
}

Variant ImageObject::png_property_get(ENUM_PNG_PROPERTIES id, Text keyword) {
  const PngPropertyValue value = image_.PngPropertyGet(static_cast<PngProperty>(id), keyword);
  if (const auto* number = std::get_if<int32_t>(&value)) return Variant(long{*number});
  if (const auto* text = std::get_if<std::wstring>(&value))
    return Variant(std::wstring_view(*text));
  Variant date;
  V_VT(&date) = VT_DATE;
  V_DATE(&date) = std::get<double>(value);
  return date;
}

}  // namespace kestrelon
