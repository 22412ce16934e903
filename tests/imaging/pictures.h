// Pictures and files for the tests of readers and writers.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon::test {

using Bytes = std::vector<uint8_t>;

/// Pixel (x, y) from the top left as 0xAARRGGBB, premultiplied as stored.
inline uint32_t pixel(const c32bppDIB& image, int32_t x, int32_t y) {
  const uint8_t* p = image.row(y) + 4 * x;
  return static_cast<uint32_t>(p[3]) << 24 | static_cast<uint32_t>(p[2]) << 16 |
         static_cast<uint32_t>(p[1]) << 8 | p[0];
}

/// All pixels from the top left.
inline std::vector<uint32_t> pixels(const c32bppDIB& image) {
  std::vector<uint32_t> out;
  for (int32_t y = 0; y < image.Height(); ++y) {
    for (int32_t x = 0; x < image.Width(); ++x) out.push_back(pixel(image, x, y));
  }
  return out;
}

inline void set_pixel(c32bppDIB& image, int32_t x, int32_t y, uint32_t argb) {
  uint8_t* p = image.row(y) + 4 * x;
  for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(argb >> (8 * i));
}

/// Opaque colours that differ from pixel to pixel, `colours` of them at most.
inline void fill_opaque(c32bppDIB& image, int32_t width, int32_t height,
                        uint32_t colours = 1 << 24) {
  image.InitializeDIB(width, height);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const uint32_t n = static_cast<uint32_t>(y * width + x) * 7 % colours;
      set_pixel(image, x, y, 0xFF000000u | (n * 2654435761u >> 8));
    }
  }
  image.set_alpha(AlphaType::None);
  image.set_image_type(ImageFormat::Bitmap);
}

/// Premultiplied pixels of every alpha, transparent ones included.
inline void fill_translucent(c32bppDIB& image, int32_t width, int32_t height) {
  image.InitializeDIB(width, height);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const uint32_t alpha = static_cast<uint32_t>(x * 255 / std::max(width - 1, 1));
      const auto part = [&](uint32_t c) { return c * alpha / 255; };
      set_pixel(
          image, x, y,
          alpha << 24 | part(200) << 16 | part(static_cast<uint32_t>(y) * 9 & 255) << 8 | part(40));
    }
  }
  image.set_alpha(AlphaType::Complex);
  image.set_image_type(ImageFormat::BitmapPargb);
}

/// Little-endian numbers put together: {value, bytes} pairs, of any length.
struct Field {
  uint64_t value;
  int bytes;
};
inline Bytes wire(std::initializer_list<Field> fields) {
  Bytes out;
  for (const Field& field : fields) {
    for (int i = 0; i < field.bytes; ++i)
      out.push_back(i < 8 ? static_cast<uint8_t>(field.value >> (8 * i)) : 0);
  }
  return out;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

inline Bytes read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
  return {bytes.begin(), bytes.end()};
}

inline Bytes test_data(const std::string& name) {
  Bytes bytes = read_file(std::filesystem::path(KESTRELON_SOURCE_DIR) / "tests/data" / name);
  EXPECT_FALSE(bytes.empty()) << name;
  return bytes;
}

#if !defined(_WIN32)
/// A folder of its own that goes with the object; runs independent tools in it.
class Workshop {
 public:
  Workshop() {
    std::string name = (std::filesystem::temp_directory_path() / "kestrelon-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Workshop() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;

  static bool has(const std::string& tool) {
    return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0;
  }
  /// True if the command ran without an error.
  bool run(const std::string& command) const {
    return std::system(("cd '" + path_.string() + "' && " + command + " 2>/dev/null").c_str()) == 0;
  }
  Bytes read(const std::string& name) const { return read_file(path_ / name); }
  void write(const std::string& name, const Bytes& bytes) const {
    std::ofstream(path_ / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  /// Straight pixels of any file as ImageMagick reads it, 0xAARRGGBB from the top left.
  std::vector<uint32_t> reference(const std::string& name) const {
    if (!run("convert '" + name + "' -auto-orient -depth 8 RGBA:reference.raw")) return {};
    const Bytes raw = read("reference.raw");
    std::vector<uint32_t> out;
    for (size_t i = 0; i + 4 <= raw.size(); i += 4)
      out.push_back(static_cast<uint32_t>(raw[i + 3]) << 24 | static_cast<uint32_t>(raw[i]) << 16 |
                    static_cast<uint32_t>(raw[i + 1]) << 8 | raw[i + 2]);
    return out;
  }

 private:
  std::filesystem::path path_;
};
#endif

}  // namespace kestrelon::test
