// The readers and writers an image can call on.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kestrelon {

class c32bppDIB;
struct LoadOptions;

/// Null entries decline. Readers answer true if the data is of their format, even if no image came
/// of it; writers answer success.
struct ImageCodecs {
  using Reader = bool (*)(std::span<const uint8_t>, c32bppDIB&);

  Reader read_png = nullptr;
  Reader read_gif = nullptr;
  bool (*read_ico)(std::span<const uint8_t>, const LoadOptions&, c32bppDIB&) = nullptr;
  Reader read_bmp = nullptr;
  Reader read_tga = nullptr;

  bool (*write_bmp)(const c32bppDIB&, bool keep_premultiplied, int32_t fill_color,
                    std::vector<uint8_t>&) = nullptr;
  bool (*write_png)(const c32bppDIB&, std::vector<uint8_t>&) = nullptr;
  bool (*write_jpeg)(const c32bppDIB&, uint8_t quality, int32_t fill_color,
                     std::vector<uint8_t>&) = nullptr;
  bool (*write_gif)(const c32bppDIB&, bool adaptive_palette, int32_t tolerance,
                    std::vector<uint8_t>&) = nullptr;
  bool (*write_tga)(const c32bppDIB&, bool compress, bool reduce_depth, bool premultiplied,
                    std::vector<uint8_t>&) = nullptr;
};

/// The codecs in force.
const ImageCodecs& image_codecs();
/// Puts others in force, for tests; returns those before.
ImageCodecs set_image_codecs(const ImageCodecs& codecs);

}  // namespace kestrelon
