#include "lists/tree/key_map.h"

#include "base/text.h"

namespace kestrelon {
namespace {

constexpr size_t kSmallest = 16;

}  // namespace

uint32_t hash_key(std::wstring_view key) {
  uint64_t hash = 0x9E3779B97F4A7C15u;
  for (const wchar_t c : key) {
    hash = (hash ^ code_unit(c)) * 0xFF51AFD7ED558CCDu;
    hash ^= hash >> 32;
  }
  return static_cast<uint32_t>(hash);
}

void KeyMap::insert(uint32_t hash, NodeId id) {
  if ((count_ + 1) * 3 > slots_.size() * 2) grow(slots_.empty() ? kSmallest : slots_.size() * 2);
  size_t at = hash & mask();
  while (slots_[at].id != kNoNode) at = (at + 1) & mask();
  slots_[at] = {hash, id};
  ++count_;
}

// What stands behind the gap moves into it unless it would then stand before its own place.
void KeyMap::erase(uint32_t hash, NodeId id) {
  if (slots_.empty()) return;
  size_t gap = hash & mask();
  while (slots_[gap].id != id) {
    if (slots_[gap].id == kNoNode) return;
    gap = (gap + 1) & mask();
  }
  for (size_t at = (gap + 1) & mask(); slots_[at].id != kNoNode; at = (at + 1) & mask()) {
    const size_t home = slots_[at].hash & mask();
    if (((at - home) & mask()) < ((at - gap) & mask())) continue;
    slots_[gap] = slots_[at];
    gap = at;
  }
  slots_[gap] = {};
  --count_;
}

void KeyMap::reserve(size_t keys) {
  size_t size = kSmallest;
  while (size * 2 < keys * 3) size *= 2;
  if (size > slots_.size()) grow(size);
}

void KeyMap::clear() {
  slots_ = {};
  count_ = 0;
}

void KeyMap::grow(size_t size) {
  std::vector<Slot> former(size);
  former.swap(slots_);
  count_ = 0;
  for (const Slot& slot : former)
    if (slot.id != kNoNode) insert(slot.hash, slot.id);
}

}  // namespace kestrelon
