// Many short texts without an allocation each.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace kestrelon {

/// Texts in pages, named by 32-bit references; 0 is the empty text. A short text costs its
/// characters and one unit for its length. The space of removed texts comes back with its page, or
/// when the owner of the references sweeps: with `begin_sweep` it learns that garbage outweighs
/// what lives, passes every reference it holds through `swept`, and calls `end_sweep`.
class TextPool {
 public:
  using Ref = uint32_t;

  /// Keeps a copy; `text` may be a view into this pool. Throws std::bad_alloc when full.
  Ref add(std::wstring_view text);
  /// The same text under a reference that is spent: in place where it fits, else anew.
  Ref replace(Ref old, std::wstring_view text);
  void remove(Ref ref);
  std::wstring_view view(Ref ref) const;
  void clear();

  bool wants_sweep() const { return used_ - live_ > kSweepUnits && used_ - live_ > live_; }
  void begin_sweep();
  Ref swept(Ref ref);
  void end_sweep();

  /// Units (of wchar_t) in texts and their lengths, and in all pages.
  size_t live_units() const { return live_; }
  size_t page_units() const { return capacity_; }

 private:
  static constexpr uint32_t kOffsetBits = 15;
  static constexpr uint32_t kPageUnits = 1u << kOffsetBits;
  static constexpr uint32_t kLongText = kPageUnits / 16;  // has a page of its own from here on
  static constexpr size_t kSweepUnits = 4 * kPageUnits;

  struct Page {
    std::unique_ptr<wchar_t[]> units;
    uint32_t capacity = 0;
    uint32_t used = 0;
    uint32_t live = 0;
    uint32_t length = 0;  // of the one text of a page of its own
    bool sparse = false;  // being emptied by a sweep
  };

  bool is_long(const Page& page) const { return page.length != 0; }
  uint32_t cost(Ref ref) const;
  uint32_t new_page(uint32_t capacity);
  void free_page(uint32_t index);
  Ref add_long(std::wstring_view text);

  std::vector<Page> pages_;
  std::vector<uint32_t> free_pages_;  // entries of pages_ without memory
  uint32_t open_ = UINT32_MAX;        // the page that short texts are added to
  size_t used_ = 0;
  size_t live_ = 0;
  size_t capacity_ = 0;
};

}  // namespace kestrelon
