// Image lists for the tests of the store and its format.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "imaging/image_list/image_lists.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {

/// A picture whose pixels tell `seed` apart, with every kind of alpha.
inline void paint_cell(c32bppDIB& image, int32_t width, int32_t height, uint32_t seed) {
  image.InitializeDIB(width, height);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const uint32_t n = (seed * 977 + static_cast<uint32_t>(y * width + x)) * 2654435761u;
      const uint32_t alpha = n % 5 == 0 ? 0 : n % 5 == 1 ? 255 : n >> 24;
      const auto part = [&](int shift) { return (n >> shift & 255) * alpha / 255; };
      set_pixel(image, x, y, alpha << 24 | part(3) << 16 | part(9) << 8 | part(15));
    }
  }
}

/// Adds a picture of the cell's size at `place`, or at the end.
inline void add_cell(ImageList& list, uint32_t seed, std::wstring key = {}, std::wstring tag = {},
                     int32_t place = 0) {
  c32bppDIB image;
  paint_cell(image, list.Width(), list.Height(), seed);
  list.add(image, place == 0 ? list.Count() + 1 : place, std::move(key), std::move(tag), true);
}

/// What makes two lists equal, as text: size, keys, tags, order, pixels.
inline std::vector<std::wstring> contents(ImageList& list) {
  std::vector<std::wstring> out = {std::to_wstring(list.Width()) + L"x" +
                                   std::to_wstring(list.Height())};
  for (int32_t i = 1; i <= list.Count(); ++i) {
    c32bppDIB cell;
    EXPECT_TRUE(list.extract(i, cell));
    std::wstring line = list.Item(i)->key + L"|" + list.Item(i)->tag + L"|";
    for (const uint32_t value : pixels(cell)) line += std::to_wstring(value) + L" ";
    out.push_back(line);
  }
  return out;
}

inline std::vector<std::wstring> contents(ImageLists& lists) {
  std::vector<std::wstring> out;
  for (int32_t i = 1; i <= lists.Count(); ++i) {
    out.push_back(lists.Item(i)->key);
    for (auto& line : contents(*lists.Item(i))) out.push_back(std::move(line));
  }
  return out;
}

/// The error that `call` throws as "number text (source)"; empty if it throws none.
template <class Call>
std::wstring error_of(Call&& call) {
  try {
    call();
  } catch (const ImageListError& error) {
    return std::to_wstring(error.number) + L" " + error.description + L" (" + error.source + L")";
  }
  return {};
}

}  // namespace kestrelon::test
