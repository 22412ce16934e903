// One item of a list: what the store keeps of it beside its text.
#pragma once

#include <cstdint>

namespace kestrelon {

/// No colour of its own.
inline constexpr uint32_t kNoColor = 0xFFFFFFFFu;

enum class ItemFlag : uint8_t {
  kChecked = 1,
  kDisabled = 2,
  kBold = 4,
  kHeader = 8,   ///< a group heading; cannot be chosen
  kHidden = 16,  ///< by a filter or by the program
};

/// Fixed size, since a list holds a hundred thousand of them: what varies lies in the arenas.
struct ListEntry {
  uint32_t text_at = 0;
  uint32_t tag_at = 0;
  uint32_t key_at = 0;  ///< into the sort keys; meaningless with a key_length of 0
  uint32_t rank = 0;    ///< in the language's order, equal texts alike; see ListStore
  int32_t data = 0;
  int32_t image = 0;  ///< above 0 a position, below 0 a name's number, 0 none
  uint32_t fore_color = kNoColor;
  uint32_t back_color = kNoColor;
  uint16_t text_length = 0;
  uint16_t tag_length = 0;
  uint16_t key_length = 0;
  uint8_t flags = 0;

  bool has(ItemFlag flag) const { return (flags & static_cast<uint8_t>(flag)) != 0; }
};

static_assert(sizeof(ListEntry) == 40);

}  // namespace kestrelon
