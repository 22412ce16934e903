// The plain tree that the store is held against: pointers, recursion, no shortcuts.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "lists/tree/tree_store.h"

namespace kestrelon {

struct ModelNode {
  ModelNode* parent = nullptr;
  std::vector<std::unique_ptr<ModelNode>> children;
  std::wstring text, key;
  bool expanded = false, selected = false;
  int check = 0;
  NodeRef ref;

  size_t index() const {
    size_t i = 0;
    while (parent->children[i].get() != this) ++i;
    return i;
  }
  bool below(const ModelNode* other) const {
    return this == other || (parent && parent->below(other));
  }
  void spread(int state) {
    check = state;
    for (auto& child : children) child->spread(state);
  }
  // After a change of the children of this node.
  void follow() {
    if (!parent) return;
    const auto is = [&](int state) {
      return std::all_of(children.begin(), children.end(),
                         [&](const auto& child) { return child->check == state; });
    };
    if (children.empty())
      check = check == 2 ? 0 : check;
    else
      check = is(1) ? 1 : is(0) ? 0 : 2;
    parent->follow();
  }
  template <class Visit>
  void walk(Visit visit) {
    for (auto& child : children) {
      visit(child.get());
      child->walk(visit);
    }
  }
  void rows(std::vector<ModelNode*>& out) {
    for (auto& child : children) {
      out.push_back(child.get());
      if (child->expanded) child->rows(out);
    }
  }
  std::unique_ptr<ModelNode> take(size_t at) {
    auto node = std::move(children[at]);
    children.erase(children.begin() + static_cast<ptrdiff_t>(at));
    return node;
  }
  ModelNode* put(size_t at, std::unique_ptr<ModelNode> node) {
    node->parent = this;
    return children.insert(children.begin() + static_cast<ptrdiff_t>(at), std::move(node))->get();
  }
};

}  // namespace kestrelon
