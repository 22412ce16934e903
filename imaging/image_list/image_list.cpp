#include "imaging/image_list/image_list.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>

namespace kestrelon {
namespace {

constexpr wchar_t kAdd[] = L"Images.Add";

// Copies the part of `image` that lies in the cell when its corner is at (x, y), not negative.
void copy_into(const c32bppDIB& image, int32_t x, int32_t y, const MutableImageView& cell) {
  const int32_t width = std::min(image.Width(), cell.width - x);
  const int32_t height = std::min(image.Height(), cell.height - y);
  for (int32_t row = 0; row < height; ++row)
    std::memcpy(cell.pixel(x, y + row), image.row(row), static_cast<size_t>(width) * 4);
}

}  // namespace

void ImageList::reserve(int32_t count) {
  if (!strip_.reserve(count)) throw_low_resources();
  try {
    slots_.reserve(static_cast<size_t>(count));
  } catch (const std::bad_alloc&) {
    throw_low_resources();
  }
}

int32_t ImageList::place_for(const ItemIndex* before, std::wstring_view name) const {
  if (slots_.find(name) != 0) throw_duplicated_key(kAdd);
  if (Count() >= MaxImages()) throw_too_many_images(kAdd);
  if (before == nullptr) return Count() + 1;
  const auto* const number = std::get_if<int64_t>(before);
  if (number != nullptr && *number == Count() + 1) return Count() + 1;
  return slots_.resolve(*before, kAdd);
}

void ImageList::add(c32bppDIB& image, int32_t at, std::wstring name, std::wstring tag,
                    bool scaled) {
  unpack();
  std::optional<c32bppDIB> fitted;
  const c32bppDIB* shown = &image;
  int32_t width = image.Width(), height = image.Height();
  if (scaled) image.ScaleImage(Width(), Height(), width, height, ScaleOption::ToSize);
  if (width != image.Width() || height != image.Height()) {
    image.set_HighQualityInterpolation(true);
    width = std::max(width, 1), height = std::max(height, 1);
    if (!image.CopyImageTo(fitted.emplace(), width, height)) throw_low_resources();
    shown = &*fitted;
  }
  if (!strip_.reserve(Count() + 1)) throw_low_resources();
  try {
    std::shared_ptr<ImageSlot> slot;
    if (!name.empty() || !tag.empty()) {
      slot = std::make_shared<ImageSlot>();
      slot->key = std::move(name);
      slot->tag = std::move(tag);
    }
    slots_.insert(at, std::move(slot));
  } catch (const std::bad_alloc&) {
    throw_low_resources();
  }
  strip_.insert(at - 1);
  const int32_t x = scaled ? (Width() - width) / 2 : 0, y = scaled ? (Height() - height) / 2 : 0;
  copy_into(*shown, std::max(x, 0), std::max(y, 0), strip_.cell(at - 1));
  pixels_changed();
}

void ImageList::Remove(int32_t at) {
  unpack();
  slots_.remove(at);
  strip_.remove(at - 1);
  pixels_changed();
}

void ImageList::Clear() {
  packed_ = false;
  pixels_changed();
  slots_.clear();
  strip_.clear();
}

bool ImageList::Render(int32_t at, DrawingSurface* destination, const RenderArguments& args) {
  unpack();
  return strip_.render(at - 1, destination, args);
}

bool ImageList::extract(int32_t at, c32bppDIB& out) {
  unpack();
  return strip_.extract(at - 1, out);
}

void ImageList::set_DelayLoaded(bool on) {
  if (!on) unpack();
  delay_loaded_ = on;
}

void ImageList::unpack() {
  if (!packed_) return;
  if (!unpack_cells(kept_, Count(), strip_)) throw_failed_import();
  packed_ = false;
  if (!kept_.is_png()) pixels_changed();  // only a PNG is worth keeping
}

PackedPixels ImageList::packed_pixels(bool compression) {
  if (kept_.is_png()) return kept_;
  unpack();
  return pack_cells(strip_, compression);
}

int32_t ImageList::ClassDataLong(const ListItem& item, ItemDatum which) const {
  if (which == ItemDatum::Width) return Width();
  if (which == ItemDatum::Height) return Height();
  if (item.position == 0) throw_invalid_index(L"Images.Index");
  return item.position;
}

const std::wstring& ImageList::ClassDataString(const ListItem& item, ItemDatum which) const {
  if (item.position == 0) throw_invalid_key(L"Images.Key");
  return which == ItemDatum::Tag ? static_cast<const ImageSlot&>(item).tag : item.key;
}

void ImageList::set_ClassDataString(ListItem& item, ItemDatum which, std::wstring_view text) {
  if (item.position == 0) throw_invalid_key(L"Images.Key");
  auto& slot = static_cast<ImageSlot&>(item);
  if (which == ItemDatum::Tag) {
    slot.tag = text;
    return;
  }
  const int32_t holder = slots_.find(text);
  if (holder != 0 && holder != slot.position) throw_duplicated_key(kAdd);
  slots_.set_key(slot, text);
}

}  // namespace kestrelon
