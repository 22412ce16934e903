#include "lists/tree/tree_fill.h"

#include <algorithm>
#include <vector>

namespace kestrelon {
namespace {

// All rows as children of the root, in their order; kNoNode for those that were not taken.
std::vector<NodeId> add_flat(TreeStore& tree, std::span<const TreeRow> rows) {
  tree.clear();
  tree.reserve(static_cast<uint32_t>(std::min<size_t>(rows.size(), TreeStore::kMaxNodes)), true);
  std::vector<NodeId> ids;
  ids.reserve(rows.size());
  for (const TreeRow& row : rows) {
    ids.push_back(tree.add(row.text, row.key, kNoNode, NodePosition::kLastChild));
    if (TreeNode* node = tree.contents(ids.back())) node->image = row.image;
  }
  return ids;
}

// Cuts every link of a cycle, so that its nodes stand at the root whatever their order was.
// `parents` is by node.
void cut_cycles(std::vector<NodeId>& parents) {
  enum : uint8_t { kNew, kOnPath, kDone };
  std::vector<uint8_t> state(parents.size(), kNew);
  for (NodeId start = 1; start < parents.size(); ++start) {
    NodeId at = start;
    for (; at != kNoNode && state[at] == kNew; at = parents[at]) state[at] = kOnPath;
    if (at != kNoNode && state[at] == kOnPath)
      while (parents[at] != kNoNode) at = std::exchange(parents[at], kNoNode);
    for (at = start; at != kNoNode && state[at] == kOnPath; at = parents[at]) state[at] = kDone;
  }
}

int32_t hang(TreeStore& tree, std::vector<NodeId> ids, const std::vector<NodeId>& parents_by_node) {
  std::erase(ids, kNoNode);
  std::vector<NodeId> parents;
  parents.reserve(ids.size());
  for (const NodeId id : ids) parents.push_back(parents_by_node[id]);
  tree.adopt(ids, parents);
  return static_cast<int32_t>(ids.size());
}

// The nearest ancestor of a code that is there.
NodeId find_above(const TreeStore& tree, std::wstring_view code, std::wstring_view separator) {
  while (!code.empty()) {
    const size_t cut = separator.empty() ? code.size() - 1 : code.rfind(separator);
    if (cut == std::wstring_view::npos) return kNoNode;
    code = code.substr(0, cut);
    if (const NodeId found = tree.find_key(code); found != kNoNode) return found;
  }
  return kNoNode;
}

}  // namespace

int32_t fill_by_parents(TreeStore& tree, std::span<const TreeRow> rows) {
  const std::vector<NodeId> ids = add_flat(tree, rows);
  std::vector<NodeId> parents(size_t{tree.count()} + 1, kNoNode);
  for (size_t i = 0; i < rows.size(); ++i)
    if (ids[i] != kNoNode) parents[ids[i]] = tree.find_key(rows[i].parent);
  cut_cycles(parents);
  return hang(tree, ids, parents);
}

int32_t fill_by_codes(TreeStore& tree, std::span<const TreeRow> rows, std::wstring_view separator) {
  const std::vector<NodeId> ids = add_flat(tree, rows);
  std::vector<NodeId> parents(size_t{tree.count()} + 1, kNoNode);
  for (size_t i = 0; i < rows.size(); ++i)
    if (ids[i] != kNoNode) parents[ids[i]] = find_above(tree, rows[i].key, separator);
  return hang(tree, ids, parents);
}

}  // namespace kestrelon
