// One image list from and to the bytes of the export format.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "imaging/image_list/image_list.h"

namespace kestrelon {

/// The list as bytes; throws the error of a failed export.
std::vector<uint8_t> export_image_list(ImageList& list, bool compression);

/// Reads a list in two steps, so that its key can be judged before its pixels are.
class ImageListReader {
 public:
  /// Reads all but the images. Throws the errors of an import: version or failure.
  explicit ImageListReader(std::span<const uint8_t> data);

  const std::wstring& key() const { return key_; }
  bool compression() const { return compression_; }
  /// Bytes of this list; others may follow.
  size_t size() const { return size_; }
  /// The list with its images; throws if they are not sound.
  std::shared_ptr<ImageList> read(const PixelStoreFactory& factory) const;

 private:
  void read_closing(std::span<const uint8_t> data);
  void read_list(std::span<const uint8_t> body);
  void read_texts(ImageList& list) const;

  std::wstring key_;
  bool compression_ = true;
  bool delay_loaded_ = false;
  uint8_t mode_ = 0;
  size_t size_ = 0;
  int32_t count_ = 0, second_count_ = 0, width_ = 0, height_ = 0;
  std::span<const uint8_t> pixels_, texts_;
};

}  // namespace kestrelon
