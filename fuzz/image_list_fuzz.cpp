// The import of image lists against hostile files: a list that can be drawn and exported again, or
// one of two errors and nothing else changed.
#include <cstdlib>
#include <cstring>

#include "imaging/image_list/image_lists.h"

using namespace kestrelon;

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

void use(ImageList& list) {
  c32bppDIB cell;
  for (int32_t i = 1; i <= std::min(list.Count(), 50); ++i) {
    const auto image = list.Item(i);
    require(image->position == i);
    require(image->key.empty() || list.IsKeyAssigned(image->key) == i);
    require(list.extract(i, cell));
    for (size_t at = 0; at < cell.pixel_count() * 4; at += 4)
      for (size_t c = 0; c < 3; ++c) require(cell.bits()[at + c] <= cell.bits()[at + 3]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ImageLists lists;
  lists.Add(8, 8, L"antes", 1);
  try {
    const auto list = lists.ImportImageList({data, size}, L"nova");
    require(lists.Count() == 2 && list->Count() <= list->MaxImages());
    try {
      use(*list);
    } catch (const ImageListError& error) {
      require(error.number == 1975 && list->is_packed());  // broken pixels of a list left packed
      return 0;
    }
    const auto bytes = lists.ExportImageList(2);
    ImageLists other;
    const auto again = other.ImportImageList(bytes, {});
    require(again->Count() == list->Count() && again->key == L"nova");
  } catch (const ImageListError& error) {
    require(error.number == 1974 || error.number == 1975);
    require(lists.Count() == 1);
  }
  return 0;
}
