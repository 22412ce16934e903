#include "imaging/image_list/list_codec.h"

#include <new>

#include "base/byte_reader.h"
#include "base/byte_writer.h"
#include "base/property_stream.h"
#include "imaging/image_list/huffman_block.h"
#include "imaging/image_list/list_format.h"
#include "imaging/png_format.h"

namespace kestrelon {
namespace {

using namespace list_format;

// Texts that would need more are not read.
constexpr size_t kMostTextBytes = size_t{1} << 28;

void write_text(ByteWriter& out, std::wstring_view text) {
  const auto bytes = utf16_bytes(text);
  out.u32le(static_cast<uint32_t>(bytes.size()));
  out.bytes(bytes);
}

// Keys, then tags; nothing if all are empty.
std::vector<uint8_t> text_run(const ImageList& list) {
  std::vector<uint8_t> keys, tags;
  ByteWriter key_writer(keys), tag_writer(tags);
  bool any = false;
  for (int32_t position = 1; position <= list.Count(); ++position) {
    const ImageSlot* const slot = list.peek(position);
    any = any || (slot != nullptr && (!slot->key.empty() || !slot->tag.empty()));
    write_text(key_writer, slot != nullptr ? slot->key : std::wstring());
    write_text(tag_writer, slot != nullptr ? slot->tag : std::wstring());
  }
  if (!any) return {};
  keys.insert(keys.end(), tags.begin(), tags.end());
  return keys;
}

bool read_text(ByteReader& reader, std::wstring& text) {
  const uint32_t length = reader.u32le();
  if (length % 2 != 0) return false;
  text = utf16_text(reader.take(length));
  return reader.ok();
}

PackedPixels packed_form(std::span<const uint8_t> bytes, uint8_t mode) {
  PackedPixels packed;
  packed.bytes.assign(bytes.begin(), bytes.end());
  // No premultiplied pixel begins as a PNG does: its blue would exceed its alpha.
  const bool png = bytes.size() >= png::kSignature.size() &&
                   std::equal(png::kSignature.begin(), png::kSignature.end(), bytes.begin());
  packed.form = (mode & kModePixels) != 0 ? PackedPixels::Form::Huffman
                : png                     ? PackedPixels::Form::Png
                                          : PackedPixels::Form::Raw;
  return packed;
}

void write_list(ImageList& list, bool compression, ByteWriter& out, std::vector<uint8_t>& bytes) {
  const PackedPixels pixels = list.packed_pixels(compression);
  uint8_t mode = pixels.form == PackedPixels::Form::Huffman ? kModePixels : 0;
  std::vector<uint8_t> texts = text_run(list);
  if (texts.size() > kLongestTexts) {
    texts = huffman_pack(texts);
    mode |= kModeTexts;
  }
  const auto key = utf16_bytes(list.key);
  const uint64_t closing = uint64_t{kHeaderBytes} + key.size() + 20 + pixels.bytes.size() +
                           ((mode & kModeTexts) != 0 ? 4 : 0) + texts.size();
  if (closing + kClosingBytes > INT32_MAX) throw_failed_export();
  bytes.reserve(static_cast<size_t>(closing) + kClosingBytes);
  out.u32le(kMagic);
  out.u32le(kVersion);
  out.u32le(static_cast<uint32_t>(closing));
  out.u32le(static_cast<uint32_t>(closing + kClosingBytes));
  out.u32le(static_cast<uint32_t>(key.size()));
  out.bytes(key);
  for (const int32_t number : {list.Count(), list.second_count(), list.Width(), list.Height()})
    out.u32le(static_cast<uint32_t>(number));
  out.u32le(static_cast<uint32_t>(pixels.bytes.size()));
  out.bytes(pixels.bytes);
  if ((mode & kModeTexts) != 0) out.u32le(static_cast<uint32_t>(texts.size()));
  out.bytes(texts);
  out.u32le(kClosingBytes);
  out.u16le((compression ? kFlagCompression : 0u) | (list.DelayLoaded() ? kFlagDelayLoaded : 0u));
  out.u8(mode);
}

}  // namespace

std::vector<uint8_t> export_image_list(ImageList& list, bool compression) {
  try {
    std::vector<uint8_t> bytes;
    ByteWriter out(bytes);
    write_list(list, compression, out, bytes);
    return bytes;
  } catch (const std::bad_alloc&) {
    throw_failed_export();
  }
}

ImageListReader::ImageListReader(std::span<const uint8_t> data) {
  ByteReader reader(data);
  const uint32_t magic = reader.u32le();
  const int32_t version = reader.i32le();
  const uint64_t closing = reader.u32le();
  const uint64_t total = reader.u32le();
  const uint32_t key_bytes = reader.u32le();
  if (!reader.ok() || magic != kMagic || total > data.size()) throw_failed_import();
  if (closing < kHeaderBytes || closing + 4 > total) throw_failed_import();
  data = data.first(static_cast<size_t>(total));
  size_ = data.size();
  const uint64_t length = ByteReader(data.subspan(static_cast<size_t>(closing))).u32le();
  if (closing + length != total) throw_failed_import();
  if (version > kVersion) throw_invalid_version();
  read_closing(data.subspan(static_cast<size_t>(closing)));
  const auto body = data.subspan(kHeaderBytes, static_cast<size_t>(closing) - kHeaderBytes);
  if (key_bytes % 2 != 0 || key_bytes > body.size()) throw_failed_import();
  key_ = utf16_text(body.first(key_bytes));
  read_list(body.subspan(key_bytes));
}

void ImageListReader::read_closing(std::span<const uint8_t> data) {
  ByteReader reader(data);
  reader.skip(4);
  const uint16_t flags = reader.u16le();
  mode_ = reader.u8();
  if (!reader.ok()) throw_failed_import();
  compression_ = (flags & kFlagCompression) != 0;
  delay_loaded_ = (flags & kFlagDelayLoaded) != 0;
}

void ImageListReader::read_list(std::span<const uint8_t> body) {
  ByteReader reader(body);
  count_ = reader.i32le();
  second_count_ = reader.i32le();
  width_ = reader.i32le();
  height_ = reader.i32le();
  pixels_ = reader.take(reader.u32le());
  const int32_t most = max_images(width_, height_);
  if (!reader.ok() || most == 0 || count_ < 0 || count_ > most) throw_failed_import();
  if ((mode_ & kModeTexts) != 0) {
    texts_ = reader.take(reader.u32le());
    if (reader.remaining() != 0) throw_failed_import();
  } else {
    texts_ = reader.rest();
  }
  if (!reader.ok()) throw_failed_import();
}

std::shared_ptr<ImageList> ImageListReader::read(const PixelStoreFactory& factory) const {
  try {
    auto list = std::make_shared<ImageList>(width_, height_, factory);
    list->key = key_;
    list->second_count_ = second_count_;
    list->delay_loaded_ = delay_loaded_;
    list->kept_ = packed_form(pixels_, mode_);
    if (!holds_cells(list->kept_, width_, height_, count_)) throw_failed_import();
    read_texts(*list);
    list->packed_ = count_ != 0;
    if (!delay_loaded_) list->unpack();
    return list;
  } catch (const std::bad_alloc&) {
    throw_failed_import();
  }
}

void ImageListReader::read_texts(ImageList& list) const {
  std::optional<std::vector<uint8_t>> plain;
  std::span<const uint8_t> run = texts_;
  if ((mode_ & kModeTexts) != 0) {
    plain = huffman_unpack(texts_, kMostTextBytes);
    if (!plain) throw_failed_import();
    run = *plain;
  }
  list.slots_.append_plain(count_);
  if (run.empty()) return;
  ByteReader reader(run);
  std::wstring text;
  for (int32_t position = 1; position <= count_; ++position) {
    if (!read_text(reader, text) || list.slots_.find(text) != 0) throw_failed_import();
    if (!text.empty()) list.slots_.set_key(*list.slots_.at(position), text);
  }
  for (int32_t position = 1; position <= count_; ++position) {
    if (!read_text(reader, text)) throw_failed_import();
    if (!text.empty()) list.slots_.at(position)->tag = text;
  }
  if (reader.remaining() != 0) throw_failed_import();
}

}  // namespace kestrelon
