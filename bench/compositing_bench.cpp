// Drawing beside pixman, libyuv and Qt, whichever are there. Each row prints our speed, and for
// each peer its time over ours, from the same run, and its speed in Mpixel/s: above 1 we are
// faster.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <string_view>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "imaging/row_kernels.h"

#if defined(KESTRELON_PIXMAN)
#include <pixman.h>
#endif
#if defined(KESTRELON_LIBYUV)
#include <libyuv.h>
#endif
#if defined(KESTRELON_QT)
#include <QImage>
#include <QPainter>
#endif

namespace {

using kestrelon::c32bppDIB;
using kestrelon::RenderArguments;

double cpu_seconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

using Work = std::function<void()>;

double timed(const Work& work, int repeats) {
  const double start = cpu_seconds();
  for (int i = 0; i < repeats; ++i) work();
  return (cpu_seconds() - start) / repeats;
}

struct Peer {
  const char* name;
  Work work;
};

// Words of the command line: with any, only rows whose name holds one of them are measured.
std::vector<std::string_view> wanted;

bool is_wanted(std::string_view name) {
  return wanted.empty() || std::any_of(wanted.begin(), wanted.end(), [&](std::string_view word) {
           return name.find(word) != std::string_view::npos;
         });
}

// Ours and the peers take turns, so that a slow moment of the machine meets all of them. Medians of
// CPU time.
void report(const char* name, double pixels, const Work& ours, const std::vector<Peer>& peers) {
  if (!is_wanted(name)) return;
  const auto repeats_of = [](const Work& work) {
    work();
    int repeats = 1;
    while (timed(work, repeats) * repeats < 0.01) repeats *= 2;
    return repeats;
  };
  std::vector<Peer> all = {{"ours", ours}};
  all.insert(all.end(), peers.begin(), peers.end());
  std::vector<int> repeats;
  for (const Peer& one : all) repeats.push_back(repeats_of(one.work));
  constexpr size_t kRounds = 15;
  std::vector<std::vector<double>> times(all.size());
  for (size_t round = 0; round < kRounds; ++round)
    for (size_t i = 0; i < all.size(); ++i) times[i].push_back(timed(all[i].work, repeats[i]));
  for (auto& t : times) std::nth_element(t.begin(), t.begin() + kRounds / 2, t.end());
  const auto median = [&](size_t i) { return times[i][kRounds / 2]; };
  std::printf("%-28s %8.1f Mpixel/s %9.2f us", name, pixels / median(0) * 1e-6, median(0) * 1e6);
  for (size_t i = 1; i < all.size(); ++i)
    std::printf("  %5.2f x %s (%.0f)", median(i) / median(0), all[i].name,
                pixels / median(i) * 1e-6);
  std::printf("\n");
}

void fill(c32bppDIB& image, int32_t width, int32_t height, unsigned seed) {
  image.InitializeDIB(width, height);
  std::mt19937 random(seed);
  for (size_t i = 0; i < image.pixel_count(); ++i) {
    uint8_t* p = image.bits() + i * 4;
    p[3] = static_cast<uint8_t>(random());
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(random() % (p[3] + 1u));
  }
  image.set_alpha(kestrelon::AlphaType::Complex);
}

#if defined(KESTRELON_PIXMAN)
class PixmanImage {
 public:
  explicit PixmanImage(c32bppDIB& image)
      : image_(pixman_image_create_bits(PIXMAN_a8r8g8b8, image.Width(), image.Height(),
                                        reinterpret_cast<uint32_t*>(image.bits()),
                                        static_cast<int>(image.scanWidth()))) {}
  ~PixmanImage() { pixman_image_unref(image_); }
  PixmanImage(const PixmanImage&) = delete;
  PixmanImage& operator=(const PixmanImage&) = delete;
  pixman_image_t* get() const { return image_; }
  void transform(double a, double b, double c, double d, pixman_filter_t filter) const {
    pixman_transform_t t;
    pixman_transform_init_identity(&t);
    t.matrix[0][0] = pixman_double_to_fixed(a);
    t.matrix[0][1] = pixman_double_to_fixed(b);
    t.matrix[1][0] = pixman_double_to_fixed(c);
    t.matrix[1][1] = pixman_double_to_fixed(d);
    pixman_image_set_transform(image_, &t);
    pixman_image_set_filter(image_, filter, nullptr, 0);
  }

 private:
  pixman_image_t* image_;
};
#endif

#if defined(KESTRELON_QT)
QImage qt_image(c32bppDIB& image) {
  return {image.bits(), image.Width(), image.Height(), QImage::Format_ARGB32_Premultiplied};
}
#endif

void blend(const char* name, int32_t width, int32_t height, int32_t opacity) {
  c32bppDIB source, host;
  fill(source, width, height, 1);
  fill(host, width, height, 2);
  RenderArguments args;
  args.destHostDIB = &host;
  args.Opacity = opacity;
  std::vector<Peer> peers;
#if defined(KESTRELON_PIXMAN)
  PixmanImage from(source), to(host);
  const pixman_color_t half = {0, 0, 0, static_cast<uint16_t>(opacity * 65535 / 100)};
  pixman_image_t* mask = opacity == 100 ? nullptr : pixman_image_create_solid_fill(&half);
  peers.push_back({"pixman", [&] {
                     pixman_image_composite32(PIXMAN_OP_OVER, from.get(), mask, to.get(), 0, 0, 0,
                                              0, 0, 0, width, height);
                   }});
#endif
#if defined(KESTRELON_QT)
  const QImage qt_from = qt_image(source);
  QImage qt_to = qt_image(host);
  QPainter painter(&qt_to);
  painter.setOpacity(opacity / 100.0);
  peers.push_back({"Qt", [&] { painter.drawImage(0, 0, qt_from); }});
#endif
  report(
      name, double{1} * width * height, [&] { source.Render(nullptr, args); }, peers);
#if defined(KESTRELON_PIXMAN)
  if (mask) pixman_image_unref(mask);
#endif
}

void scale(const char* name, double factor, bool smooth) {
  c32bppDIB source, dest;
  fill(source, 1920, 1080, 1);
  source.set_HighQualityInterpolation(smooth);
  const auto width = static_cast<int32_t>(std::lround(1920 * factor));
  const auto height = static_cast<int32_t>(std::lround(1080 * factor));
  dest.InitializeDIB(width, height);
  std::vector<Peer> peers;
#if defined(KESTRELON_PIXMAN)
  PixmanImage from(source), to(dest);
  from.transform(1920.0 / width, 0, 0, 1080.0 / height,
                 smooth ? PIXMAN_FILTER_BILINEAR : PIXMAN_FILTER_NEAREST);
  peers.push_back({"pixman", [&] {
                     pixman_image_composite32(PIXMAN_OP_SRC, from.get(), nullptr, to.get(), 0, 0, 0,
                                              0, 0, 0, width, height);
                   }});
#endif
#if defined(KESTRELON_LIBYUV)
  peers.push_back({"libyuv", [&] {
                     libyuv::ARGBScale(source.bits(), 1920 * 4, 1920, 1080, dest.bits(), width * 4,
                                       width, height,
                                       smooth ? libyuv::kFilterBilinear : libyuv::kFilterNone);
                   }});
#endif
  report(
      name, double{1} * width * height, [&] { source.CopyImageTo(dest, width, height); }, peers);
}

void rotate(const char* name, bool smooth) {
  c32bppDIB source, host;
  fill(source, 1024, 1024, 1);
  fill(host, 1024, 1024, 2);
  source.set_HighQualityInterpolation(smooth);
  RenderArguments args;
  args.destHostDIB = &host;
  args.Angle = 30;
  std::vector<Peer> peers;
#if defined(KESTRELON_PIXMAN)
  PixmanImage from(source), to(host);
  const double sine = std::sin(0.5235987755982988), cosine = std::cos(0.5235987755982988);
  from.transform(cosine, sine, -sine, cosine,
                 smooth ? PIXMAN_FILTER_BILINEAR : PIXMAN_FILTER_NEAREST);
  peers.push_back({"pixman", [&] {
                     pixman_image_composite32(PIXMAN_OP_OVER, from.get(), nullptr, to.get(), 0, 0,
                                              0, 0, 0, 0, 1024, 1024);
                   }});
#endif
#if defined(KESTRELON_QT)
  const QImage qt_from = qt_image(source);
  QImage qt_to = qt_image(host);
  QPainter painter(&qt_to);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
  painter.translate(512, 512);
  painter.rotate(30);
  painter.translate(-512, -512);
  peers.push_back({"Qt", [&] { painter.drawImage(0, 0, qt_from); }});
#endif
  report(
      name, 1024.0 * 1024, [&] { source.Render(nullptr, args); }, peers);
}

}  // namespace

int main(int argc, char** argv) {
  wanted.assign(argv + 1, argv + argc);
  std::printf("row loops: %s\n", kestrelon::row_kernels().name);
  blend("over, 1920x1080", 1920, 1080, 100);
  blend("over at 60 %, 1920x1080", 1920, 1080, 60);
  for (int32_t size : {16, 24, 32, 48, 64}) {
    char name[64];
    std::snprintf(name, sizeof name, "over, %dx%d", size, size);
    blend(name, size, size, 100);
    std::snprintf(name, sizeof name, "over at 60 %%, %dx%d", size, size);
    blend(name, size, size, 60);
  }
  scale("bilinear x0.37", 0.37, true);
  scale("bilinear x2.7", 2.7, true);
  scale("bilinear x0.873", 0.873, true);
  scale("nearest x0.37", 0.37, false);
  scale("nearest x2.7", 2.7, false);
  rotate("rotate 30 degrees, bilinear", true);
  rotate("rotate 30 degrees, nearest", false);

  c32bppDIB image, shadow;
  fill(image, 1920, 1080, 3);
  const double pixels = 1920.0 * 1080;
  report("gray", pixels, [&] { image.MakeGrayScale(kestrelon::GrayScale::NtscPal); }, {});
  report("light", pixels, [&] { image.MakeLighterDarker(20); }, {});
  report("shadow", pixels, [&] { image.CreateDropShadow(5, 0, shadow); }, {});
  return 0;
}
