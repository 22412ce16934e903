// PNG against its peers. Each row carries "vs_<peer>": the peer's time over ours, from this run, so
// above 1 we are faster. "floor" is zlib's uncompress followed by our row filters
// and conversion, without check values.
#include <benchmark/benchmark.h>
#include <png.h>
#include <zlib.h>

#include <csetjmp>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "imaging/inflate.h"
#include "imaging/png_chunks.h"
#include "imaging/png_parser.h"
#include "imaging/png_rows.h"
#include "imaging/png_unfilter.h"
#include "imaging/png_writer.h"
#include "imaging/zlib_api.h"
#include "png_samples.h"

#ifdef KESTRELON_HAS_STB
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#include <stb_image.h>
#pragma GCC diagnostic pop
#endif
#ifdef KESTRELON_HAS_SPNG
#include <spng.h>
#endif

namespace kestrelon::bench {
namespace {

using Bytes = std::vector<uint8_t>;

// zlib with and without its functions for inflating in pieces.
const ZlibApi kPlainZlib = {::uncompress, ::crc32, ::compress2};
const ZlibApi kNativeZlib = {
    ::uncompress,
    ::crc32,
    ::compress2,
    [](ZlibStream* s) { return inflateInit(reinterpret_cast<z_stream*>(s)); },
    [](ZlibStream* s, int flush) { return ::inflate(reinterpret_cast<z_stream*>(s), flush); },
    [](ZlibStream* s) { return inflateEnd(reinterpret_cast<z_stream*>(s)); }};
const ZlibApi* native_zlib() {
  return &kNativeZlib;
}
const ZlibApi* plain_zlib() {
  return &kPlainZlib;
}

struct PackOptions {
  bool interlaced = false;
  int filters = PNG_ALL_FILTERS;
  int level = 6;
};

void append(png_structp png, png_bytep bytes, size_t size) {
  Bytes& out = *static_cast<Bytes*>(png_get_io_ptr(png));
  out.insert(out.end(), bytes, bytes + size);
}

// libpng's encoder makes the files, so that no reader meets its own writer.
Bytes pack(const Picture& p, PackOptions options = {}, const Bytes& palette = {}) {
  Bytes out;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &out, append, nullptr);
  const int type = p.channels == 1   ? PNG_COLOR_TYPE_PALETTE
                   : p.channels == 3 ? PNG_COLOR_TYPE_RGB
                                     : PNG_COLOR_TYPE_RGBA;
  png_set_IHDR(png, info, p.width, p.height, 8, type,
               options.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, 0, 0);
  if (!palette.empty()) {
    png_set_PLTE(png, info, reinterpret_cast<png_const_colorp>(palette.data()),
                 static_cast<int>(palette.size() / 3));
  }
  png_set_compression_level(png, options.level);
  png_set_filter(png, 0, options.filters);
  png_write_info(png, info);
  std::vector<png_bytep> rows;
  for (uint32_t y = 0; y < p.height; ++y) {
    rows.push_back(const_cast<png_bytep>(&p.pixels[size_t{y} * p.width * p.channels]));
  }
  png_write_image(png, rows.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return out;
}

bool read_ours(const Bytes& file) {
  c32bppDIB image;
  return cPNGparser::LoadStream(file, image) && image.has_image();
}

bool read_with_libpng(const Bytes& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, file.data(), file.size())) return false;
  image.format = PNG_FORMAT_BGRA;
  const auto pixels = std::make_unique_for_overwrite<uint8_t[]>(PNG_IMAGE_SIZE(image));
  return png_image_finish_read(&image, nullptr, pixels.get(), 0, nullptr) != 0;
}

// libpng's row interface, which is its fast one.
bool read_with_libpng_rows(const Bytes& file) {
  struct Cursor {
    const uint8_t* at;
  } cursor{file.data()};
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_read_fn(png, &cursor, [](png_structp p, png_bytep out, size_t size) {
    auto* c = static_cast<Cursor*>(png_get_io_ptr(p));
    std::memcpy(out, c->at, size);
    c->at += size;
  });
  png_read_info(png, info);
  png_set_expand(png);
  png_set_bgr(png);
  png_set_filler(png, 255, PNG_FILLER_AFTER);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
  const size_t stride = png_get_rowbytes(png, info);
  const uint32_t height = png_get_image_height(png, info);
  const auto pixels = std::make_unique_for_overwrite<uint8_t[]>(stride * height);
  std::vector<png_bytep> rows(height);
  for (uint32_t y = 0; y < height; ++y) rows[y] = pixels.get() + stride * y;
  png_read_image(png, rows.data());
  png_destroy_read_struct(&png, &info, nullptr);
  return true;
}

#ifdef KESTRELON_HAS_STB
bool read_with_stb(const Bytes& file) {
  int w, h, n;
  uint8_t* pixels =
      stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &w, &h, &n, 4);
  stbi_image_free(pixels);
  return pixels != nullptr;
}
#endif

#ifdef KESTRELON_HAS_SPNG
bool read_with_spng(const Bytes& file) {
  spng_ctx* ctx = spng_ctx_new(0);
  spng_set_crc_action(ctx, SPNG_CRC_USE, SPNG_CRC_USE);
  spng_set_png_buffer(ctx, file.data(), file.size());
  size_t size = 0;
  bool read = spng_decoded_image_size(ctx, SPNG_FMT_RGBA8, &size) == 0;
  if (read) {
    const auto pixels = std::make_unique_for_overwrite<uint8_t[]>(size);
    read = spng_decode_image(ctx, pixels.get(), size, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS) == 0;
  }
  spng_ctx_free(ctx);
  return read;
}
#endif

Bytes joined_data(const Bytes& file, png::Description& picture) {
  Bytes joined;
  png::read_chunks(file, nullptr, picture);
  for (const auto& part : picture.data) joined.insert(joined.end(), part.begin(), part.end());
  return joined;
}

// What no reader that calls uncompress can avoid: that call, the row filters and the conversion
// into an image.
bool run_floor(const Bytes& file) {
  png::Description picture;
  const Bytes packed = joined_data(file, picture);
  auto size = static_cast<uLongf>(picture.header.stream_bytes());
  const auto stream = std::make_unique_for_overwrite<uint8_t[]>(size + png::kRowSlack);
  if (uncompress(stream.get(), &size, packed.data(), packed.size()) != Z_OK) return false;
  c32bppDIB image;
  if (!image.InitializeDIB(static_cast<int32_t>(picture.header.width),
                           static_cast<int32_t>(picture.header.height))) {
    return false;
  }
  png::RowSink rows(picture, image);
  rows.feed({stream.get(), size});
  return rows.done();
}

double cpu_ms() {
  timespec t;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
}

using Reader = std::function<bool(const Bytes&)>;

struct Peer {
  std::string name;
  Reader read;
};

std::vector<Peer> peers() {
  return {
      {"ours", read_ours},
      {"libpng", read_with_libpng_rows},
      {"libpng_simple", read_with_libpng},
      {"floor", run_floor},
#ifdef KESTRELON_HAS_STB
      {"stb", read_with_stb},
#endif
#ifdef KESTRELON_HAS_SPNG
      {"libspng", read_with_spng},
#endif
  };
}

// Ours and the peers in turn, so that a slow moment of the machine meets all of them; medians.
void compare(benchmark::State& state, const std::vector<Bytes>& files, const ZlibLoader loader) {
  set_zlib_loader(loader);
  std::map<std::string, std::vector<double>> times;
  for (auto _ : state) {
    double ours = 0;
    for (const Peer& peer : peers()) {
      const double start = cpu_ms();
      for (const Bytes& file : files) {
        if (!peer.read(file)) state.SkipWithError((peer.name + " failed").c_str());
      }
      const double spent = cpu_ms() - start;
      times[peer.name].push_back(spent);
      if (peer.name == "ours") ours = spent;
    }
    state.SetIterationTime(ours / 1e3);
  }
  auto median = [&](const std::string& name) {
    std::vector<double>& t = times[name];
    std::nth_element(t.begin(), t.begin() + static_cast<ptrdiff_t>(t.size() / 2), t.end());
    return t[t.size() / 2];
  };
  const double ours = median("ours");
  for (const Peer& peer : peers()) {
    if (peer.name != "ours") state.counters["vs_" + peer.name] = median(peer.name) / ours;
  }
  state.counters["images_per_s"] = static_cast<double>(files.size()) * 1e3 / ours;
  set_zlib_loader(nullptr);
}

void compare_inflate(benchmark::State& state, const Bytes& file) {
  png::Description picture;
  const Bytes packed = joined_data(file, picture);
  Bytes out(static_cast<size_t>(picture.header.stream_bytes()));
  std::vector<double> ours, zlib;
  for (auto _ : state) {
    double start = cpu_ms();
    if (!inflate_exact(packed, out)) state.SkipWithError("own inflate failed");
    ours.push_back(cpu_ms() - start);
    start = cpu_ms();
    auto size = static_cast<uLongf>(out.size());
    uncompress(out.data(), &size, packed.data(), packed.size());
    zlib.push_back(cpu_ms() - start);
    state.SetIterationTime(ours.back() / 1e3);
  }
  std::sort(ours.begin(), ours.end());
  std::sort(zlib.begin(), zlib.end());
  state.counters["vs_zlib"] = zlib[zlib.size() / 2] / ours[ours.size() / 2];
}

// Size and time of our writer over those of libpng at level 9 with its own choice of filters; below
// 1 we are smaller, above 1 faster.
void compare_write(benchmark::State& state, const Picture& picture, PngFilter method) {
  set_zlib_loader(nullptr);
  c32bppDIB image;
  cPNGparser::LoadStream(pack(picture, {false, PNG_ALL_FILTERS, 1}), image);
  set_zlib_loader(native_zlib);
  PngProperties properties;
  properties.set(PngProperty::FilterMethod, static_cast<int32_t>(method));
  Bytes ours, theirs;
  double ours_ms = 0, theirs_ms = 0;
  for (auto _ : state) {
    double start = cpu_ms();
    if (!cPNGwriter::Save(image, properties, ours)) state.SkipWithError("writing failed");
    const double spent = cpu_ms() - start;
    ours_ms += spent;
    start = cpu_ms();
    theirs = pack(picture, {false, PNG_ALL_FILTERS, 9});
    theirs_ms += cpu_ms() - start;
    state.SetIterationTime(spent / 1e3);
  }
  state.counters["size_over_libpng"] =
      static_cast<double>(ours.size()) / static_cast<double>(theirs.size());
  state.counters["vs_libpng"] = theirs_ms / ours_ms;
  set_zlib_loader(nullptr);
}

// 256 colours out of a picture, for the palette sample.
Bytes make_indexed(Picture& p) {
  Bytes palette;
  for (uint32_t i = 0; i < 256; ++i) {
    for (uint32_t c : {i >> 5, (i >> 2) & 7, (i & 3) * 2}) {
      palette.push_back(static_cast<uint8_t>(c * 36));
    }
  }
  Bytes indices;
  for (size_t i = 0; i < p.pixels.size(); i += p.channels) {
    const uint8_t* s = &p.pixels[i];
    indices.push_back(static_cast<uint8_t>((s[0] >> 5) << 5 | (s[1] >> 5) << 2 | s[2] >> 6));
  }
  p.pixels = indices;
  p.channels = 1;
  return palette;
}

// Files are made when the first benchmark that reads them runs.
struct Case {
  std::string name;
  bool many;
  std::function<std::vector<Bytes>()> make;
  std::vector<Bytes> made;

  const std::vector<Bytes>& files() {
    if (made.empty()) made = make();
    return made;
  }
};

std::vector<Bytes> pack_icons(uint32_t size) {
  std::vector<Bytes> icons;
  for (uint32_t i = 0; i < 10000; ++i) icons.push_back(pack(draw_icon(size, i + 1)));
  return icons;
}

std::vector<Bytes> pack_indexed() {
  Picture indexed = draw_photo(2480, 1860, 3);
  const Bytes palette = make_indexed(indexed);
  return {pack(indexed, {false, PNG_FILTER_NONE, 6}, palette)};
}

std::vector<Case> cases() {
  auto photo = [](uint32_t channels, bool interlaced) {
    return [=] { return std::vector<Bytes>{pack(draw_photo(4000, 3000, channels), {interlaced})}; };
  };
  auto icons = [](uint32_t size) { return [=] { return pack_icons(size); }; };
  return {
      {"rgb_12MP", false, photo(3, false), {}},
      {"rgba_12MP", false, photo(4, false), {}},
      {"screenshot_8MP",
       false,
       [] { return std::vector<Bytes>{pack(draw_screenshot(3840, 2160))}; },
       {}},
      {"pal8_4.6MP", false, pack_indexed, {}},
      {"adam7_rgb_12MP", false, photo(3, true), {}},
      {"icons_32_x10000", true, icons(32), {}},
      {"icons_64_x10000", true, icons(64), {}},
  };
}

void register_writers() {
  static const std::map<std::string, Picture> pictures = {
      {"rgb_3MP", draw_photo(2000, 1500, 3)},
      {"rgba_3MP", draw_photo(2000, 1500, 4)},
      {"screenshot_3MP", draw_screenshot(2000, 1500)}};
  for (const auto& [name, picture] : pictures) {
    for (auto [filter, method] :
         {std::pair{"default", PngFilter::Default}, {"adaptive", PngFilter::Adaptive}}) {
      const Picture* const source = &picture;
      benchmark::RegisterBenchmark(
          ("png_write/" + name + "/" + filter).c_str(),
          [source, m = method](benchmark::State& s) { compare_write(s, *source, m); })
          ->UseManualTime()
          ->Iterations(1)
          ->Unit(benchmark::kMillisecond);
    }
  }
}

void register_all() {
  static std::vector<Case> all = cases();
  for (Case& c : all) {
    const int rounds = c.many ? 3 : 9;
    auto add = [&](const std::string& name, ZlibLoader loader) {
      benchmark::RegisterBenchmark(
          name.c_str(), [&c, loader](benchmark::State& s) { compare(s, c.files(), loader); })
          ->UseManualTime()
          ->Iterations(rounds)
          ->Unit(benchmark::kMillisecond);
    };
    add("png_read/" + c.name + "/own_inflate", nullptr);
    add("png_read/" + c.name + "/zlib", native_zlib);
    add("png_read/" + c.name + "/uncompress", plain_zlib);
    if (!c.many) {
      benchmark::RegisterBenchmark(
          ("inflate/" + c.name).c_str(),
          [&c](benchmark::State& s) { compare_inflate(s, c.files().front()); })
          ->UseManualTime()
          ->Iterations(9)
          ->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace
}  // namespace kestrelon::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  kestrelon::bench::register_writers();
  kestrelon::bench::register_all();
  benchmark::RunSpecifiedBenchmarks();
}
