// Reduces the colours of a picture to a table: an octree whose branches are folded together, those
// of the fewest pixels first (after Gervautz and Purgathofer, 1988).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrelon {

class ColourTree {
 public:
  ColourTree();

  /// Counts one pixel of colour 0x00RRGGBB.
  void add(uint32_t colour) { add(colour, 1); }
  void add(uint32_t colour, uint32_t pixels);
  /// Folds branches until at most `limit` (1 or more) colours are left and settles the table.
  /// Nothing is added afterwards.
  void reduce(size_t limit);
  /// The table after reduce(): the mean colour of each leaf, 0x00RRGGBB.
  const std::vector<uint32_t>& colours() const { return colours_; }
  /// Index of the table's colour for a colour that was added.
  uint8_t index_of(uint32_t colour) const;

 private:
  static constexpr int kDepth = 6;
  struct Node {
    uint32_t children[8] = {};  // 0: none
    uint32_t parent = 0;
    uint64_t pixels = 0, red = 0, green = 0, blue = 0;
    uint8_t index = 0;
    uint8_t branches = 0;  // children that are not leaves
    bool leaf = false;
  };
  static uint32_t octant(uint32_t colour, int level) {
    const int bit = 7 - level;
    return (colour >> (16 + bit) & 1) << 2 | (colour >> (8 + bit) & 1) << 1 | (colour >> bit & 1);
  }
  size_t fold(Node& node);

  std::vector<Node> nodes_;  // the first is the root
  std::vector<uint32_t> colours_;
  size_t leaves_ = 0;
};

}  // namespace kestrelon
