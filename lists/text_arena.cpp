#include "lists/text_arena.h"

#include <algorithm>
#include <new>
#include <utility>

namespace kestrelon {

TextRef TextArena::add(std::wstring_view text) {
  text = text.substr(0, kMaxItemText);
  if (text.empty()) return {};
  const auto length = static_cast<uint32_t>(text.size());
  if (fill_ + length > kBlock) {
    if (blocks_.size() == kBlock) throw std::bad_alloc();
    blocks_.emplace_back(new wchar_t[kBlock]);
    fill_ = 0;
  }
  std::copy(text.begin(), text.end(), blocks_.back().get() + fill_);
  const auto at = static_cast<uint32_t>((blocks_.size() - 1) * kBlock + fill_);
  fill_ += length;
  used_ += length;
  return {at, static_cast<uint16_t>(length)};
}

TextRef TextArena::replace(TextRef former, std::wstring_view text) {
  text = text.substr(0, kMaxItemText);
  if (text.size() > former.length) {
    const TextRef added = add(text);
    release(former);
    return added;
  }
  wasted_ += former.length - text.size();
  if (text.empty()) return {};
  // The new text may be a piece of the old one.
  std::char_traits<wchar_t>::move(blocks_[former.at / kBlock].get() + former.at % kBlock,
                                  text.data(), text.size());
  return {former.at, static_cast<uint16_t>(text.size())};
}

std::wstring_view TextArena::view(TextRef text) const {
  if (text.length == 0) return {};
  return {blocks_[text.at / kBlock].get() + text.at % kBlock, text.length};
}

void TextArena::clear() {
  blocks_.clear();
  fill_ = kBlock;
  used_ = wasted_ = 0;
}

void TextArena::swap(TextArena& other) noexcept {
  blocks_.swap(other.blocks_);
  std::swap(fill_, other.fill_);
  std::swap(used_, other.used_);
  std::swap(wasted_, other.wasted_);
}

}  // namespace kestrelon
