// Loading: every reader in turn looks at the bytes until one takes them.
#include <algorithm>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "base/file_bytes.h"
#include "imaging/alpha_classify.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/codecs.h"
#include "imaging/ico_directory.h"

namespace kestrelon {
namespace {

constexpr uint64_t kSmallestFile = 57;
constexpr size_t kSmallestStream = 20;
constexpr uint64_t kLargestFile = INT32_MAX;

LoadOptions settle(LoadOptions options) {
  options.icon_cx = std::max(options.icon_cx, 0);
  options.icon_cy = std::max(options.icon_cy, 0);
  if (options.icon_bit_depth < 0 || options.icon_bit_depth > 32) options.icon_bit_depth = 32;
  return options;
}

// Runs a reader; what it throws counts as declined, and a decline leaves no image behind.
template <class Reader>
bool attempt(c32bppDIB& image, bool tell_user, Reader&& read) {
  try {
    if (read()) return true;
  } catch (const std::exception& error) {
    if (tell_user) {
      const std::string text = error.what();
      imaging_bridge().show_message(std::wstring(text.begin(), text.end()));
    }
  }
  image.DestroyDIB();
  return false;
}

bool load_by_library(std::span<const uint8_t> data, c32bppDIB& image) {
  if (!imaging_bridge().library_load(data, image) || !image.has_image()) return false;
  ImageFormat type = ImageFormat::None;
  image.set_alpha(classify_alpha(image.bits(), image.pixel_count(), true, type));
  image.set_image_type(type);
  return true;
}

// Bitmaps and GIFs are read whole by our own readers. What those refuse is damaged, and a decoder
// of the platform would make a picture of the missing part.
bool is_read_by_us_alone(std::span<const uint8_t> data) {
  const auto starts = [&](std::string_view text) {
    return data.size() >= text.size() &&
           std::equal(text.begin(), text.end(), data.begin(), [](char wanted, uint8_t byte) {
             return static_cast<uint8_t>(wanted) == byte;
           });
  };
  return starts("BM") || starts("GIF8");
}

}  // namespace

// Leaves in `kept` the bytes to keep if they are no longer those of `data`.
bool c32bppDIB::run_readers(std::span<const uint8_t> data, const LoadOptions& options,
                            std::vector<uint8_t>& kept) {
  const ImageCodecs& codecs = image_codecs();
  auto run = [&](ImageCodecs::Reader reader, bool tell_user = false) {
    return reader && attempt(*this, tell_user, [&] { return reader(data, *this); });
  };
  // A damaged PNG stays a failure: what our reader refuses goes to no other.
  if (run(codecs.read_png, true)) return has_image();
  const bool own = is_read_by_us_alone(data);
  const bool taken =
      run(codecs.read_gif) ||
      (codecs.read_ico &&
       attempt(*this, false, [&] { return codecs.read_ico(data, options, *this); })) ||
      run(codecs.read_bmp) ||
      (!own && attempt(*this, false, [&] { return imaging_bridge().decode_picture(data, *this); }));
  if (has_image()) return true;
  if (!own && isGDIplusEnabled() &&
      attempt(*this, false, [&] { return load_by_library(data, *this); })) {
    if (options.save_format && imaging_bridge().library_save_png(*this, kept))
      image_type_ = ImageFormat::Png;
    return true;
  }
  if (!taken) run(codecs.read_tga);
  return has_image();
}

bool c32bppDIB::LoadPicture_Stream(std::span<const uint8_t> stream, const LoadOptions& options,
                                   int64_t offset, int64_t length) {
  // The caller may hand in this image's own original bytes.
  std::vector<uint8_t> own;
  if (!stream.empty() && !original_bytes_.empty() && stream.data() >= original_bytes_.data() &&
      stream.data() < original_bytes_.data() + original_bytes_.size()) {
    own.assign(stream.begin(), stream.end());
    stream = own;
  }
  DestroyDIB();
  const auto start = static_cast<uint64_t>(std::max<int64_t>(offset, 0));
  if (start >= stream.size() || length < 0) return false;
  stream = stream.subspan(static_cast<size_t>(start));
  if (length > 0 && static_cast<uint64_t>(length) < stream.size())
    stream = stream.first(static_cast<size_t>(length));
  if (stream.size() < kSmallestStream) return false;

  const LoadOptions settled = settle(options);
  std::vector<uint8_t> kept;
  if (!run_readers(stream, settled, kept)) {
    DestroyDIB();
    return false;
  }
  if (settled.save_format) {
    if (kept.empty()) kept.assign(stream.begin(), stream.end());
    original_bytes_ = std::move(kept);
  }
  return true;
}

bool c32bppDIB::LoadPicture_File(const std::wstring& file_name, const LoadOptions& options) {
  DestroyDIB();
  const auto size = file_size(file_name);
  if (!size || *size < kSmallestFile) return false;
  const auto bytes = read_file(file_name, kLargestFile);
  return bytes && LoadPicture_Stream(*bytes, options);
}

bool c32bppDIB::LoadPicture_FromOrignalFormat(int32_t icon_cx, int32_t icon_cy,
                                              int32_t icon_bit_depth) {
  const std::vector<uint8_t> bytes = std::move(original_bytes_);
  return LoadPicture_Stream(bytes, {icon_cx, icon_cy, icon_bit_depth, true});
}

bool c32bppDIB::SourceIconSizes(std::vector<IconSize>& sizes) const {
  sizes.clear();
  const auto directory = icon_entries(original_bytes_);
  if (!directory) return false;
  for (const IconEntry& entry : directory->entries)
    sizes.push_back({entry.Width, entry.Height, entry.bitDepth});
  return true;
}

}  // namespace kestrelon
