// The collection of image lists, and their way into bytes and back.
#pragma once

#include <span>
#include <vector>

#include "imaging/image_list/image_list.h"

namespace kestrelon {

/// `cImageLists`. Throws ImageListError and then has changed nothing.
class ImageLists final : public IItemData {
 public:
  static constexpr int32_t Version = 2;

  /// The factory makes the memory of every strip; an empty one stands for the heap.
  explicit ImageLists(PixelStoreFactory factory = {}) : factory_(std::move(factory)) {}

  /// Whether an export packs the pixels by itself where no PNG can be written.
  bool Compression() const { return compression_; }
  void set_Compression(bool on) { compression_ = on; }
  /// No PNG can be written here, so that an export depends on Compression.
  static bool CompressionNeeded() { return !png_is_writable(); }

  int32_t Count() const { return lists_.size(); }
  int32_t IsKeyAssigned(std::wstring_view key) const { return lists_.find(key); }
  int32_t resolve(const ItemIndex& index, const wchar_t* source) const {
    return lists_.resolve(index, source);
  }
  std::shared_ptr<ImageList> Item(int32_t position) { return lists_.at_existing(position); }

  std::shared_ptr<ImageList> Add(int64_t width, int64_t height, std::wstring key,
                                 int64_t init_image_count);
  void Remove(int32_t position) { lists_.remove(position); }
  void Clear() { lists_.clear(); }

  /// The list as bytes; see list_format.h.
  std::vector<uint8_t> ExportImageList(int32_t position);
  /// Adds the list that the bytes hold, under `key` if that is not empty.
  std::shared_ptr<ImageList> ImportImageList(std::span<const uint8_t> data, std::wstring key);

  /// All lists one after another, and back: the form in which a control keeps them. What follows a
  /// list that cannot be read is left out. Takes Compression along.
  std::vector<uint8_t> save();
  void load(std::span<const uint8_t> data);

  // IItemData, for lists
  int32_t ClassDataLong(const ListItem& item, ItemDatum which) const override;
  const std::wstring& ClassDataString(const ListItem& item, ItemDatum which) const override;
  void set_ClassDataString(ListItem& item, ItemDatum which, std::wstring_view text) override;
  std::shared_ptr<ListItem> ClassDataObject(int32_t position) override { return Item(position); }

 private:
  PixelStoreFactory factory_;
  KeyedItems<ImageList> lists_;
  bool compression_ = true;
};

}  // namespace kestrelon
