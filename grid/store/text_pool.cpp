#include "grid/store/text_pool.h"

#include <algorithm>
#include <new>

namespace kestrelon {

// A reference is page * kPageUnits + offset of the first character, which never is 0: the length
// stands before the characters, and a page of its own keeps one unit free for that reason.

std::wstring_view TextPool::view(Ref ref) const {
  if (ref == 0) return {};
  const Page& page = pages_[ref >> kOffsetBits];
  const wchar_t* first = page.units.get() + (ref & (kPageUnits - 1));
  return {first, is_long(page) ? page.length : static_cast<uint32_t>(first[-1])};
}

uint32_t TextPool::cost(Ref ref) const {
  return static_cast<uint32_t>(view(ref).size()) + 1;
}

uint32_t TextPool::new_page(uint32_t capacity) {
  auto units = std::make_unique_for_overwrite<wchar_t[]>(capacity);
  uint32_t index = static_cast<uint32_t>(pages_.size());
  if (!free_pages_.empty()) {
    index = free_pages_.back();
    free_pages_.pop_back();
  } else {
    if (index > UINT32_MAX >> kOffsetBits) throw std::bad_alloc();
    free_pages_.reserve(pages_.size() + 1);  // so that freeing a page needs no memory
    pages_.emplace_back();
  }
  pages_[index] = {std::move(units), capacity, 0, 0, 0, false};
  capacity_ += capacity;
  return index;
}

void TextPool::free_page(uint32_t index) {
  Page& page = pages_[index];
  capacity_ -= page.capacity;
  used_ -= page.used;
  page = {};
  free_pages_.push_back(index);
  if (open_ == index) open_ = UINT32_MAX;
}

TextPool::Ref TextPool::add_long(std::wstring_view text) {
  if (text.size() >= INT32_MAX) throw std::bad_alloc();
  const auto length = static_cast<uint32_t>(text.size());
  const uint32_t index = new_page(length + 1);
  Page& page = pages_[index];
  std::copy(text.begin(), text.end(), page.units.get() + 1);
  page.used = page.live = length + 1;
  page.length = length;
  used_ += page.used;
  live_ += page.live;
  return (index << kOffsetBits) + 1;
}

TextPool::Ref TextPool::add(std::wstring_view text) {
  if (text.empty()) return 0;
  if (text.size() >= kLongText) return add_long(text);
  const auto length = static_cast<uint32_t>(text.size());
  if (open_ == UINT32_MAX || pages_[open_].capacity - pages_[open_].used < length + 1)
    open_ = new_page(kPageUnits);
  Page& page = pages_[open_];
  wchar_t* at = page.units.get() + page.used;
  *at = static_cast<wchar_t>(length);
  std::copy(text.begin(), text.end(), at + 1);
  const Ref ref = (open_ << kOffsetBits) + page.used + 1;
  page.used += length + 1;
  page.live += length + 1;
  used_ += length + 1;
  live_ += length + 1;
  return ref;
}

TextPool::Ref TextPool::replace(Ref old, std::wstring_view text) {
  const std::wstring_view before = view(old);
  if (old == 0 || text.empty() || before.size() >= kLongText || text.size() > before.size()) {
    const Ref fresh = add(text);
    remove(old);
    return fresh;
  }
  Page& page = pages_[old >> kOffsetBits];
  wchar_t* first = page.units.get() + (old & (kPageUnits - 1));
  const auto spare = static_cast<uint32_t>(before.size() - text.size());
  std::char_traits<wchar_t>::move(first, text.data(), text.size());
  first[-1] = static_cast<wchar_t>(text.size());
  page.live -= spare;
  live_ -= spare;
  return old;
}

void TextPool::remove(Ref ref) {
  if (ref == 0) return;
  const uint32_t units = cost(ref);
  const uint32_t index = ref >> kOffsetBits;
  Page& page = pages_[index];
  page.live -= units;
  live_ -= units;
  if (page.live != 0) return;
  if (index != open_) return free_page(index);
  used_ -= page.used;
  page.used = 0;
}

void TextPool::clear() {
  *this = TextPool();
}

void TextPool::begin_sweep() {
  for (Page& page : pages_) page.sparse = page.units && page.live < page.used / 4 * 3;
  if (open_ != UINT32_MAX && pages_[open_].sparse) open_ = UINT32_MAX;
}

TextPool::Ref TextPool::swept(Ref ref) {
  if (ref == 0 || !pages_[ref >> kOffsetBits].sparse) return ref;
  const Ref moved = add(view(ref));
  remove(ref);
  return moved;
}

void TextPool::end_sweep() {
  for (Page& page : pages_) page.sparse = false;
}

}  // namespace kestrelon
