#include "imaging/image_list/image_lists.h"

#include <algorithm>
#include <new>

#include "imaging/image_list/list_codec.h"

namespace kestrelon {
namespace {

constexpr wchar_t kAdd[] = L"ImageLists.Add";

}  // namespace

std::shared_ptr<ImageList> ImageLists::Add(int64_t width, int64_t height, std::wstring key,
                                           int64_t init_image_count) {
  if (lists_.find(key) != 0) throw_duplicated_key(kAdd);
  const int64_t first = std::max<int64_t>(init_image_count, 1);
  if (first > max_images(width, height)) throw_too_many_images(kAdd);
  auto list = std::make_shared<ImageList>(static_cast<int32_t>(width), static_cast<int32_t>(height),
                                          factory_);
  list->key = std::move(key);
  list->set_second_count(static_cast<int32_t>(first));
  list->reserve(static_cast<int32_t>(first));
  list->position = Count() + 1;
  lists_.insert(Count() + 1, list);
  return list;
}

std::vector<uint8_t> ImageLists::ExportImageList(int32_t position) {
  return export_image_list(*Item(position), compression_);
}

std::shared_ptr<ImageList> ImageLists::ImportImageList(std::span<const uint8_t> data,
                                                       std::wstring key) {
  const ImageListReader reader(data);
  if (key.empty()) key = reader.key();
  if (lists_.find(key) != 0) throw_duplicated_key(kAdd);
  auto list = reader.read(factory_);
  list->key = std::move(key);
  lists_.insert(Count() + 1, list);
  return list;
}

std::vector<uint8_t> ImageLists::save() {
  std::vector<uint8_t> out;
  for (int32_t position = 1; position <= Count(); ++position) {
    const auto bytes = ExportImageList(position);
    out.insert(out.end(), bytes.begin(), bytes.end());
  }
  return out;
}

void ImageLists::load(std::span<const uint8_t> data) {
  Clear();
  try {
    while (!data.empty()) {
      const ImageListReader reader(data);
      compression_ = reader.compression();
      ImportImageList(data, {});
      data = data.subspan(reader.size());
    }
  } catch (const ImageListError&) {
    // The lists before it stay.
  }
}

int32_t ImageLists::ClassDataLong(const ListItem& item, ItemDatum which) const {
  const auto& list = static_cast<const ImageList&>(item);
  if (which == ItemDatum::Width) return list.Width();
  if (which == ItemDatum::Height) return list.Height();
  if (item.position == 0) throw_invalid_index(L"ImageLists.Index");
  return item.position;
}

const std::wstring& ImageLists::ClassDataString(const ListItem& item, ItemDatum) const {
  if (item.position == 0) throw_invalid_key(L"ImageLists.Key");
  return item.key;
}

void ImageLists::set_ClassDataString(ListItem& item, ItemDatum, std::wstring_view text) {
  if (item.position == 0) throw_invalid_key(L"ImageLists.Key");
  const int32_t holder = lists_.find(text);
  if (holder != 0 && holder != item.position) throw_duplicated_key(kAdd);
  lists_.set_key(static_cast<ImageList&>(item), text);
}

}  // namespace kestrelon
