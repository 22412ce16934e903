// GIF files put together block by block.
#pragma once

#include <string>

#include "imaging/gif_lzw.h"
#include "tests/imaging/pictures.h"

namespace kestrelon::test {

constexpr uint32_t kBlack = 0xFF000000, kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;

inline const Bytes kTable = {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255};  // black red green blue
inline const Bytes kTrailer = {59};

inline Bytes screen(const Bytes& table = kTable, const std::string& signature = "GIF89a",
                    uint32_t width = 99, uint32_t height = 77) {
  const uint32_t flags = table.empty() ? 0 : table.size() == 6 ? 0x80 : 0x81;
  return Bytes(signature.begin(), signature.end()) +
         wire({{width, 2}, {height, 2}, {flags, 1}, {0, 2}}) + table;
}
inline Bytes screen_of(uint32_t width, uint32_t height, const Bytes& table = kTable) {
  return screen(table, "GIF89a", width, height);
}

/// `flags` holds the disposal, times 4, and 1 for transparency; `delay` in hundredths of a second.
inline Bytes control(uint32_t flags, uint32_t transparent, uint32_t delay = 0) {
  return wire({{33, 1}, {249, 1}, {4, 1}, {flags, 1}, {delay, 2}, {transparent, 1}, {0, 1}});
}

inline Bytes frame_at(uint32_t left, uint32_t top, uint32_t width, uint32_t height,
                      const Bytes& indexes, uint32_t flags = 0, const Bytes& local = {},
                      uint8_t code_size = 2) {
  Bytes out = wire({{44, 1}, {left, 2}, {top, 2}, {width, 2}, {height, 2}, {flags, 1}}) + local;
  out.push_back(code_size);
  gif::lzw_encode(indexes, code_size, out);
  return out;
}
inline Bytes frame(uint32_t width, uint32_t height, const Bytes& indexes, uint32_t flags = 0,
                   const Bytes& local = {}, uint8_t code_size = 2) {
  return frame_at(5, 6, width, height, indexes, flags, local, code_size);
}

/// How often the file wants to be played.
inline Bytes netscape(uint32_t loops) {
  Bytes out = {33, 255, 11};
  for (const char c : std::string("NETSCAPE2.0")) out.push_back(static_cast<uint8_t>(c));
  return out + wire({{3, 1}, {1, 1}, {loops, 2}, {0, 1}});
}

}  // namespace kestrelon::test
