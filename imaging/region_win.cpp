#include "imaging/region_win.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestrelon {
namespace {

// Older systems refuse longer lists.
constexpr size_t kBatch = 2000;

HRGN region_from_batch(std::span<const RECT> rects) {
  std::vector<uint8_t> block(sizeof(RGNDATAHEADER) + rects.size_bytes());
  RGNDATAHEADER header = {};
  header.dwSize = sizeof header;
  header.iType = RDH_RECTANGLES;
  header.nCount = static_cast<DWORD>(rects.size());
  header.nRgnSize = static_cast<DWORD>(rects.size_bytes());
  header.rcBound = rects.front();
  for (const RECT& r : rects) {
    RECT& bound = header.rcBound;
    bound = {std::min(bound.left, r.left), std::min(bound.top, r.top),
             std::max(bound.right, r.right), std::max(bound.bottom, r.bottom)};
  }
  std::memcpy(block.data(), &header, sizeof header);
  std::memcpy(block.data() + sizeof header, rects.data(), rects.size_bytes());
  return ExtCreateRegion(nullptr, static_cast<DWORD>(block.size()),
                         reinterpret_cast<const RGNDATA*>(block.data()));
}

}  // namespace

HRGN region_from_rects(std::span<const RECT> rects) {
  if (rects.empty()) return CreateRectRgn(0, 0, 0, 0);
  const HRGN whole = region_from_batch(rects.first(std::min(kBatch, rects.size())));
  for (size_t done = kBatch; whole != nullptr && done < rects.size(); done += kBatch) {
    const HRGN part = region_from_batch(rects.subspan(done, std::min(kBatch, rects.size() - done)));
    const int kind = part != nullptr ? CombineRgn(whole, whole, part, RGN_OR) : ERROR;
    if (part != nullptr) DeleteObject(part);
    if (kind == ERROR) {
      DeleteObject(whole);
      return nullptr;
    }
  }
  return whole;
}

HRGN image_region(const c32bppDIB& image, RegionStyle style, int32_t offset_x, int32_t offset_y) {
  const auto list = image.CreateRegion(style, offset_x, offset_y);
  if (!list) return nullptr;
  std::vector<RECT> rects;
  rects.reserve(list->size());
  for (const ImageRect& r : *list) rects.push_back({r.x, r.y, r.x + r.width, r.y + r.height});
  return region_from_rects(rects);
}

}  // namespace kestrelon
