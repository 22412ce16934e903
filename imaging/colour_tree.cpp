#include "imaging/colour_tree.h"

#include <functional>
#include <queue>
#include <utility>

namespace kestrelon {

ColourTree::ColourTree() : nodes_(1) {}

void ColourTree::add(uint32_t colour, uint32_t pixels) {
  uint32_t at = 0;
  for (int level = 0; level < kDepth; ++level) {
    const uint32_t which = octant(colour, level);
    uint32_t next = nodes_[at].children[which];
    if (next == 0) {
      next = static_cast<uint32_t>(nodes_.size());
      nodes_[at].children[which] = next;
      nodes_.emplace_back();
      nodes_[next].parent = at;
      if (level == kDepth - 1) {
        nodes_[next].leaf = true;
        ++leaves_;
      } else {
        ++nodes_[at].branches;
      }
    }
    at = next;
  }
  Node& leaf = nodes_[at];
  leaf.pixels += pixels;
  leaf.red += uint64_t{pixels} * (colour >> 16 & 255);
  leaf.green += uint64_t{pixels} * (colour >> 8 & 255);
  leaf.blue += uint64_t{pixels} * (colour & 255);
}

// Takes the sums of the children, all leaves; answers how many leaves were lost.
size_t ColourTree::fold(Node& node) {
  size_t lost = 0;
  for (const uint32_t child : node.children) {
    if (child == 0) continue;
    const Node& leaf = nodes_[child];
    node.pixels += leaf.pixels;
    node.red += leaf.red;
    node.green += leaf.green;
    node.blue += leaf.blue;
    ++lost;
  }
  node.leaf = true;
  return lost - 1;
}

void ColourTree::reduce(size_t limit) {
  using Candidate = std::pair<uint64_t, uint32_t>;  // pixels below, node
  std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> candidates;
  const auto offer = [&](uint32_t at) {
    uint64_t pixels = 0;
    for (const uint32_t child : nodes_[at].children)
      pixels += child != 0 ? nodes_[child].pixels : 0;
    candidates.emplace(pixels, at);
  };
  for (uint32_t at = 0; at < nodes_.size(); ++at) {
    if (!nodes_[at].leaf && nodes_[at].branches == 0) offer(at);
  }
  while (leaves_ > limit && !candidates.empty()) {
    const uint32_t at = candidates.top().second;
    candidates.pop();
    leaves_ -= fold(nodes_[at]);
    const uint32_t parent = nodes_[at].parent;
    if (at != 0 && --nodes_[parent].branches == 0) offer(parent);
  }

  std::vector<uint32_t> open = {0};
  while (!open.empty()) {
    Node& node = nodes_[open.back()];
    open.pop_back();
    if (!node.leaf) {
      for (const uint32_t child : node.children) {
        if (child != 0) open.push_back(child);
      }
      continue;
    }
    node.index = static_cast<uint8_t>(colours_.size());
    const auto mean = [&](uint64_t sum) {
      return static_cast<uint32_t>((sum + node.pixels / 2) / node.pixels);
    };
    colours_.push_back(mean(node.red) << 16 | mean(node.green) << 8 | mean(node.blue));
  }
}

uint8_t ColourTree::index_of(uint32_t colour) const {
  const Node* node = &nodes_[0];
  for (int level = 0; !node->leaf; ++level) node = &nodes_[node->children[octant(colour, level)]];
  return node->index;
}

}  // namespace kestrelon
