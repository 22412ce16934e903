// What an item of a collection asks its parent.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kestrelon {

/// An item as its collection keeps it. A view that outlives the item's place in the collection sees
/// a position of 0.
struct ListItem {
  std::wstring key;      ///< empty, or unique in the collection
  int32_t position = 0;  ///< from 1; 0 once removed
};

/// Facts about an item that its parent knows.
enum class ItemDatum { Index, Width, Height, Key, Tag };

/// Implemented by a collection for the views of its items; not part of the public contract.
class IItemData {
 public:
  virtual ~IItemData() = default;
  /// Index, Width or Height. Throws for an item that has left, except for its size.
  virtual int32_t ClassDataLong(const ListItem& item, ItemDatum which) const = 0;
  /// Key or Tag. Throws for an item that has left.
  virtual const std::wstring& ClassDataString(const ListItem& item, ItemDatum which) const = 0;
  virtual void set_ClassDataString(ListItem& item, ItemDatum which, std::wstring_view text) = 0;
  /// The item at a position from 1, which must exist.
  virtual std::shared_ptr<ListItem> ClassDataObject(int32_t position) = 0;
};

}  // namespace kestrelon
