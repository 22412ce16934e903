// Lists of 1,000 and 10,000 icons: adding, keyed look-up, drawing all, saving and loading. Each
// row prints the ratio to its peer measured in the same run: above 1 we are faster.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "imaging/image_list/image_lists.h"

#if defined(KESTRELON_PIXMAN)
#include <pixman.h>
#endif

namespace {

using kestrelon::c32bppDIB;
using kestrelon::ImageList;
using kestrelon::ImageLists;
using kestrelon::RenderArguments;

constexpr int kIcons = 1000;
constexpr int32_t kSide = 32;

double cpu_seconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Median CPU time of one call.
double measure(const std::function<void()>& work) {
  work();
  int repeats = 1;
  for (;; repeats *= 2) {
    const double start = cpu_seconds();
    for (int i = 0; i < repeats; ++i) work();
    if (cpu_seconds() - start > 0.02) break;
  }
  std::vector<double> times;
  for (int k = 0; k < 9; ++k) {
    const double start = cpu_seconds();
    for (int i = 0; i < repeats; ++i) work();
    times.push_back((cpu_seconds() - start) / repeats);
  }
  std::nth_element(times.begin(), times.begin() + 4, times.end());
  return times[4];
}

void report(const char* name, const std::function<void()>& ours, const char* peer = "",
            const std::function<void()>& theirs = {}) {
  const double us = measure(ours) * 1e6;
  std::printf("%-34s %9.1f us", name, us);
  if (theirs) {
    const double them = measure(theirs) * 1e6;
    std::printf("   %5.2f x %s (%.1f us)", them / us, peer, them);
  }
  std::printf("\n");
}

void paint(c32bppDIB& image, unsigned seed, int32_t side = kSide) {
  image.InitializeDIB(side, side);
  std::mt19937 random(seed);
  for (size_t i = 0; i < image.pixel_count(); ++i) {
    uint8_t* p = image.bits() + i * 4;
    p[3] = random() % 3 == 0 ? 0 : static_cast<uint8_t>(random());
    for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(random() % (p[3] + 1u));
  }
  image.set_alpha(kestrelon::AlphaType::Complex);
}

std::vector<std::wstring> shuffled_keys(int count = kIcons) {
  std::vector<std::wstring> keys;
  for (int i = 0; i < count; ++i) keys.push_back(L"icone " + std::to_wstring(i));
  std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
  return keys;
}

void add_all(ImageList& list, std::vector<c32bppDIB>& icons,
             const std::vector<std::wstring>& keys) {
  for (size_t i = 0; i < keys.size(); ++i)
    list.add(icons[i % icons.size()], list.place_for(nullptr, keys[i]), keys[i], {}, true);
}

// Adding to a list that grows and to one whose room was made. The peer keeps one copied picture an
// entry of the standard map.
void report_adding(int count, int32_t side) {
  std::vector<c32bppDIB> icons(16);
  for (unsigned i = 0; i < icons.size(); ++i) paint(icons[i], i, side);
  const auto keys = shuffled_keys(count);
  const auto into_map = [&] {
    std::map<std::wstring, std::vector<uint8_t>> map;
    for (size_t i = 0; i < keys.size(); ++i) {
      const c32bppDIB& icon = icons[i % icons.size()];
      map.emplace(keys[i], std::vector<uint8_t>(icon.bits(), icon.bits() + icon.pixel_count() * 4));
    }
  };
  for (const bool reserved : {false, true}) {
    char name[64];
    std::snprintf(name, sizeof name, "add %d icons of %d%s", count, side,
                  reserved ? ", room made" : "");
    const auto into_list = [&] {
      ImageLists lists;
      add_all(*lists.Add(side, side, L"", reserved ? count : 1), icons, keys);
    };
    report(name, into_list, "std::map of pixel vectors", into_map);
  }
}

}  // namespace

int main() {
  std::vector<c32bppDIB> icons(16);
  for (unsigned i = 0; i < icons.size(); ++i) paint(icons[i], i);
  const auto keys = shuffled_keys();

  report_adding(kIcons, kSide);
  report_adding(1000, 8);
  report_adding(10000, 8);
  ImageLists lists;
  const auto list = lists.Add(kSide, kSide, L"icones", 1);
  add_all(*list, icons, keys);
  std::map<std::wstring, int> map;
  for (int i = 0; i < kIcons; ++i) map.emplace(keys[static_cast<size_t>(i)], i + 1);
  long long sum = 0;
  report(
      "1,000 look-ups by key",
      [&] {
        for (const auto& key : keys) sum += list->IsKeyAssigned(key);
      },
      "std::map",
      [&] {
        for (const auto& key : keys) sum += map.find(key)->second;
      });

  c32bppDIB canvas;
  canvas.InitializeDIB(40 * kSide, 25 * kSide);
  const auto draw_all = [&](RenderArguments args) {
    args.destHostDIB = &canvas;
    for (int32_t i = 0; i < kIcons; ++i) {
      args.destX = i % 40 * kSide;
      args.destY = i / 40 * kSide;
      list->Render(i + 1, nullptr, args);
    }
  };
  std::function<void()> theirs, theirs_faint;
#if defined(KESTRELON_PIXMAN)
  // One picture that holds all icons, as the list has it, and as many composites out of it.
  std::vector<uint32_t> strip(size_t{kIcons} * kSide * kSide);
  for (size_t i = 0; i < kIcons; ++i)
    std::memcpy(&strip[i * kSide * kSide], icons[i % icons.size()].bits(), kSide * kSide * 4);
  pixman_image_t* const from =
      pixman_image_create_bits(PIXMAN_a8r8g8b8, kSide, kIcons * kSide, strip.data(), kSide * 4);
  pixman_image_t* const to = pixman_image_create_bits(
      PIXMAN_a8r8g8b8, canvas.Width(), canvas.Height(), reinterpret_cast<uint32_t*>(canvas.bits()),
      static_cast<int>(canvas.scanWidth()));
  const pixman_color_t half = {0, 0, 0, 32768};
  pixman_image_t* const mask = pixman_image_create_solid_fill(&half);
  const auto composite = [&](pixman_image_t* through) {
    for (int i = 0; i < kIcons; ++i)
      pixman_image_composite32(PIXMAN_OP_OVER, from, through, to, 0, i * kSide, 0, 0,
                               i % 40 * kSide, i / 40 * kSide, kSide, kSide);
  };
  theirs = [&] { composite(nullptr); };
  theirs_faint = [&] { composite(mask); };
#endif
  RenderArguments args;
  report(
      "draw all", [&] { draw_all(args); }, "pixman", theirs);
  args.Opacity = 50;
  report(
      "draw all at 50 %", [&] { draw_all(args); }, "pixman", theirs_faint);
  args = {};
  args.grayScale = kestrelon::GrayScale::NtscPal;
  report("draw all in gray", [&] { draw_all(args); });
  args = {};
  args.destWidth = args.destHeight = 24;
  report("draw all at three quarters", [&] { draw_all(args); });

  const auto bytes = lists.ExportImageList(1);  // no zlib here: the own packing
  report("export, Huffman", [&] { lists.ExportImageList(1); });
  report("import, Huffman", [&] {
    ImageLists other;
    other.ImportImageList(bytes, {});
  });
#if defined(KESTRELON_PIXMAN)
  for (pixman_image_t* image : {from, to, mask}) pixman_image_unref(image);
#endif
  return sum == 0;
}
