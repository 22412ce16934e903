// One image list: images of one size with keys and tags.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "imaging/image_list/image_strip.h"
#include "imaging/image_list/keyed_items.h"
#include "imaging/image_list/packed_pixels.h"

namespace kestrelon {

/// What a list keeps of an image beside its cell.
struct ImageSlot : ListItem {
  std::wstring tag;
};

/// `cImageList` and its `cListImages`. Throws ImageListError and then has changed nothing.
class ImageList final : public ListItem, public IItemData {
 public:
  /// Both sides are at least 1 and max_images() of them is not 0.
  ImageList(int32_t width, int32_t height, PixelStoreFactory factory)
      : strip_(width, height, std::move(factory)) {}

  int32_t Width() const { return strip_.cell_width(); }
  int32_t Height() const { return strip_.cell_height(); }
  int32_t MaxImages() const { return strip_.max_size(); }
  int32_t Count() const { return slots_.size(); }
  /// A number of the export format that nothing here uses.
  int32_t second_count() const { return second_count_; }
  void set_second_count(int32_t count) { second_count_ = count; }

  /// Position of the image with this key, or 0.
  int32_t IsKeyAssigned(std::wstring_view name) const { return slots_.find(name); }
  int32_t resolve(const ItemIndex& index, const wchar_t* source) const {
    return slots_.resolve(index, source);
  }
  std::shared_ptr<ImageSlot> Item(int32_t at) { return slots_.at(at); }
  const ImageSlot* peek(int32_t at) const { return slots_.peek(at); }

  /// Makes room for `count` images.
  void reserve(int32_t count);
  /// Where an image would go: `before` names the image it pushes up, or nothing. Throws what add()
  /// would throw.
  int32_t place_for(const ItemIndex* before, std::wstring_view name) const;
  /// Adds `image`, which is not empty, at a place that place_for() gave just now: scaled to the
  /// cell and centred, or cut at the cell's size.
  void add(c32bppDIB& image, int32_t at, std::wstring name, std::wstring tag, bool scaled);
  void Remove(int32_t at);
  void Clear();

  /// Draws an image; `destWidth` and `destHeight` of 0 are the cell's. See ImageStrip::render.
  bool Render(int32_t at, DrawingSurface* destination, const RenderArguments& args);
  /// Makes `out` a copy of an image.
  bool extract(int32_t at, c32bppDIB& out);

  /// Keeps the pixels packed after an import until they are needed; saved with the list.
  bool DelayLoaded() const { return delay_loaded_; }
  void set_DelayLoaded(bool on);
  bool is_packed() const { return packed_; }

  /// The pixels to export: those that were imported while nothing has changed them.
  PackedPixels packed_pixels(bool compression);

  // IItemData, for images
  int32_t ClassDataLong(const ListItem& item, ItemDatum which) const override;
  const std::wstring& ClassDataString(const ListItem& item, ItemDatum which) const override;
  void set_ClassDataString(ListItem& item, ItemDatum which, std::wstring_view text) override;
  std::shared_ptr<ListItem> ClassDataObject(int32_t at) override { return Item(at); }

 private:
  friend class ImageListReader;

  // Throws the error of a failed import if the packed pixels are not sound.
  void unpack();
  void pixels_changed() { kept_ = {}; }

  ImageStrip strip_;
  KeyedItems<ImageSlot> slots_;
  PackedPixels kept_;    // as imported
  bool packed_ = false;  // the strip is still to be filled from kept_
  bool delay_loaded_ = false;
  int32_t second_count_ = 0;
};

}  // namespace kestrelon
