// Texts of many items in few blocks of memory, so that a hundred thousand of them cost as many
// copies and no allocations of their own.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace kestrelon {

/// Longest text of an item, in code units; longer ones are cut.
inline constexpr size_t kMaxItemText = 32767;

/// Where a text lies. The empty text lies nowhere.
struct TextRef {
  uint32_t at = 0;
  uint16_t length = 0;
};

/// Blocks are never moved, so a view lasts until `clear` or until its own text is replaced.
class TextArena {
 public:
  /// Takes a copy; cut to kMaxItemText. Throws std::bad_alloc when memory, or the 2^32 code units
  /// that a TextRef can name, run out.
  TextRef add(std::wstring_view text);
  /// The text in place of a former one, in its memory where it fits.
  TextRef replace(TextRef former, std::wstring_view text);
  void release(TextRef text) { wasted_ += text.length; }
  std::wstring_view view(TextRef text) const;

  void clear();
  void swap(TextArena& other) noexcept;
  /// True when released texts hold more memory than the living ones: time for the owner to copy
  /// those into a new arena.
  bool wasteful() const { return wasted_ > kBlock && wasted_ > used_ / 2; }

 private:
  static constexpr uint32_t kBlock = 1u << 16;  // code units; holds two of the longest texts

  std::vector<std::unique_ptr<wchar_t[]>> blocks_;
  uint32_t fill_ = kBlock;  // code units taken in the last block
  uint64_t used_ = 0;       // by all texts ever added
  uint64_t wasted_ = 0;     // by those that were released
};

}  // namespace kestrelon
