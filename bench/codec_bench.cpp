// Decoding to 32 bits and encoding, beside other libraries in the same run. The peers write
// straight colours of their own byte order, so they have less to do.
#include <benchmark/benchmark.h>
#include <gif_lib.h>

#include <cmath>
#include <cstring>

#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wsign-compare"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

#include "imaging/bmp_parser.h"
#include "imaging/gif_parser.h"
#include "imaging/jpeg_writer.h"
#include "imaging/tga_parser.h"

namespace kestrelon {
namespace {

constexpr int32_t kWidth = 4000, kHeight = 3000;
using Bytes = std::vector<uint8_t>;

// Smooth waves with a little noise: no run longer than a pixel, many colours.
const c32bppDIB& photo() {
  static const auto image = [] {
    auto made = std::make_unique<c32bppDIB>();
    made->InitializeDIB(kWidth, kHeight);
    uint32_t state = 1;
    for (int32_t y = 0; y < kHeight; ++y) {
      uint8_t* p = made->row(y);
      for (int32_t x = 0; x < kWidth; ++x, p += 4) {
        state = state * 1664525 + 1013904223;
        const auto wave = [&](double fx, double fy) {
          return static_cast<uint8_t>(120 + 110 * std::sin(x * fx + y * fy) + (state >> 28));
        };
        p[0] = wave(.004, .002), p[1] = wave(.001, .006), p[2] = wave(.003, .003), p[3] = 255;
      }
    }
    return made;
  }();
  return *image;
}

// A drawing: flat areas, as run lengths and screens like them.
const c32bppDIB& drawing() {
  static const auto image = [] {
    auto made = std::make_unique<c32bppDIB>();
    made->InitializeDIB(kWidth, kHeight);
    for (int32_t y = 0; y < kHeight; ++y) {
      uint8_t* p = made->row(y);
      for (int32_t x = 0; x < kWidth; ++x, p += 4) {
        const uint32_t cell =
            static_cast<uint32_t>(x / 23 * 7 + y / 40 * 13 + (x * y % 31 == 0)) % 200;
        p[0] = static_cast<uint8_t>(cell), p[1] = static_cast<uint8_t>(cell * 3);
        p[2] = static_cast<uint8_t>(255 - cell), p[3] = 255;
      }
    }
    return made;
  }();
  return *image;
}

template <class Make>
const Bytes& file(Make make) {
  static const Bytes bytes = [&] {
    Bytes out;
    make(out);
    return out;
  }();
  return bytes;
}

const Bytes& bmp24() {
  return file([](Bytes& out) { cBMPparser::SaveAsBMP(photo(), {}, out); });
}
const Bytes& bmp32() {
  return file([](Bytes& out) {
    cBMPparser::SaveAsBMP(photo(), {}, out);
    // The same header with 32 bits, and the pixels as they are.
    const size_t size = static_cast<size_t>(kWidth) * kHeight * 4;
    out.resize(54 + size);
    out[28] = 32;
    std::memcpy(&out[54], photo().bits(), size);
  });
}
const Bytes& bmp8() {
  return file([](Bytes& out) {
    cBMPparser::SaveAsBMP(drawing(), {}, out);
    out.resize(54 + 1024 + static_cast<size_t>(kWidth) * kHeight);
    out[28] = 8;
    out[10] = 0x36, out[11] = 4;
    for (size_t i = 0; i < 1024; ++i) out[54 + i] = static_cast<uint8_t>(i * 7);
    for (size_t i = 0; i < out.size() - 1078; ++i) out[1078 + i] = drawing().bits()[4 * i];
  });
}
const Bytes& tga24() {
  return file([](Bytes& out) { cTGAparser::SaveAsTGA(photo(), {.reduce_bit_depth = true}, out); });
}
// The drawing has few colours, so a pixel more of them keeps the writer off a palette.
const Bytes& tga24_runs() {
  return file([](Bytes& out) {
    c32bppDIB image;
    image.InitializeDIB(kWidth, kHeight);
    std::memcpy(image.bits(), drawing().bits(), static_cast<size_t>(kWidth) * kHeight * 4);
    std::memcpy(image.bits(), photo().bits(), 4000);
    cTGAparser::SaveAsTGA(image, {.compress = true, .reduce_bit_depth = true}, out);
  });
}
const Bytes& gif_photo() {
  return file([](Bytes& out) { cGIFparser::SaveAsGIF(photo(), {}, out); });
}
const Bytes& gif_drawing() {
  return file([](Bytes& out) { cGIFparser::SaveAsGIF(drawing(), {}, out); });
}

using Reader = bool (*)(std::span<const uint8_t>, c32bppDIB&);

void ours(benchmark::State& state, Reader read, const Bytes& (*source)()) {
  const Bytes& bytes = source();
  for (auto _ : state) {
    c32bppDIB image;
    if (!read(bytes, image)) state.SkipWithError("not read");
    benchmark::DoNotOptimize(image.bits());
  }
}

void stb(benchmark::State& state, const Bytes& (*source)()) {
  const Bytes& bytes = source();
  for (auto _ : state) {
    int width, height, channels;
    void* pixels = stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &width,
                                         &height, &channels, 4);
    if (pixels == nullptr) state.SkipWithError("not read");
    stbi_image_free(pixels);
  }
}

struct GifSource {
  const Bytes& bytes;
  size_t at = 0;
};

int read_gif_bytes(GifFileType* gif, GifByteType* out, int count) {
  auto& source = *static_cast<GifSource*>(gif->UserData);
  const size_t size = std::min(static_cast<size_t>(count), source.bytes.size() - source.at);
  std::memcpy(out, &source.bytes[source.at], size);
  source.at += size;
  return static_cast<int>(size);
}

void giflib(benchmark::State& state, const Bytes& (*source)()) {
  const Bytes& bytes = source();
  for (auto _ : state) {
    GifSource from{bytes};
    GifFileType* gif = DGifOpen(&from, read_gif_bytes, nullptr);
    if (gif == nullptr || DGifSlurp(gif) != GIF_OK) {
      state.SkipWithError("not read");
      break;
    }
    const SavedImage& frame = gif->SavedImages[0];
    const size_t count = static_cast<size_t>(kWidth) * kHeight;
    std::vector<uint32_t> pixels(count);
    uint32_t table[256] = {};
    for (int i = 0; i < gif->SColorMap->ColorCount; ++i) {
      const GifColorType& c = gif->SColorMap->Colors[i];
      table[i] = 0xFF000000u | static_cast<uint32_t>(c.Red) << 16 |
                 static_cast<uint32_t>(c.Green) << 8 | c.Blue;
    }
    for (size_t i = 0; i < count; ++i) pixels[i] = table[frame.RasterBits[i]];
    benchmark::DoNotOptimize(pixels.data());
    DGifCloseFile(gif, nullptr);
  }
}

template <class Write>
void encode(benchmark::State& state, Write write) {
  Bytes out;
  for (auto _ : state) {
    write(out);
    benchmark::DoNotOptimize(out.data());
  }
  state.counters["bytes"] = static_cast<double>(out.size());
}

#define CODEC(...) BENCHMARK_CAPTURE(__VA_ARGS__)->Unit(benchmark::kMillisecond)
CODEC(ours, bmp24, cBMPparser::LoadStream, bmp24);
CODEC(stb, bmp24, bmp24);
CODEC(ours, bmp32, cBMPparser::LoadStream, bmp32);
CODEC(stb, bmp32, bmp32);
CODEC(ours, bmp8, cBMPparser::LoadStream, bmp8);
CODEC(stb, bmp8, bmp8);
CODEC(ours, tga24, cTGAparser::LoadStream, tga24);
CODEC(stb, tga24, tga24);
CODEC(ours, tga24_runs, cTGAparser::LoadStream, tga24_runs);
CODEC(stb, tga24_runs, tga24_runs);
CODEC(ours, gif_photo, cGIFparser::LoadStream, gif_photo);
CODEC(giflib, gif_photo, gif_photo);
CODEC(stb, gif_photo, gif_photo);
CODEC(ours, gif_drawing, cGIFparser::LoadStream, gif_drawing);
CODEC(giflib, gif_drawing, gif_drawing);
CODEC(stb, gif_drawing, gif_drawing);
CODEC(encode, gif_adaptive, [](Bytes& out) { cGIFparser::SaveAsGIF(photo(), {}, out); });
CODEC(encode, gif_exact, [](Bytes& out) { cGIFparser::SaveAsGIF(drawing(), {}, out); });
CODEC(encode, jpeg_75, [](Bytes& out) { write_jpeg(photo(), {}, out); });

}  // namespace
}  // namespace kestrelon

BENCHMARK_MAIN();
