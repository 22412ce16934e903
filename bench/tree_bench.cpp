// A tree of 100,000 nodes: filling, keys, expanding, checking, searching, removing. Each row prints
// the time in milliseconds and the ratio to the plainest way of the standard library in the same
// run (a tree of std::unique_ptr, a std::unordered_map of keys): above 1 we are faster.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "lists/tree/tree_store.h"

namespace {

using namespace kestrelon;

constexpr int kNodes = 100'000;
constexpr int kChildren = 10;  // of each node that has any

struct PlainNode {
  std::wstring text;
  bool expanded = false;
  int check = 0;
  std::vector<std::unique_ptr<PlainNode>> children;
};

double cpu_ms() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

double median(const std::function<void()>& prepare, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < 9; ++i) {
    prepare();
    const double start = cpu_ms();
    work();
    times.push_back(cpu_ms() - start);
  }
  std::nth_element(times.begin(), times.begin() + 4, times.end());
  return times[4];
}

void report(const char* name, double ours, double theirs) {
  std::printf("%-28s %8.2f ms   %5.2f x std (%.2f ms)\n", name, ours, theirs / ours, theirs);
}

void visit(PlainNode& node, const std::function<void(PlainNode&)>& what) {
  what(node);
  for (auto& child : node.children) visit(*child, what);
}

}  // namespace

int main() {
  std::vector<std::wstring> texts, keys;
  for (int i = 0; i < kNodes; ++i) {
    texts.push_back(L"Conta cont\u00e1bil " + std::to_wstring(i * 7919 % 1'000'003));
    keys.push_back(std::to_wstring(i * 31) + L".k");
  }
  TreeStore tree;
  std::vector<NodeId> ids(kNodes);
  PlainNode plain;
  std::vector<PlainNode*> nodes(kNodes);
  std::unordered_map<std::wstring, PlainNode*> index;
  const auto clear = [&] { tree.clear(); };
  const auto plain_clear = [&] {
    plain.children.clear();
    index.clear();
  };
  const auto fill = [&](bool keyed) {
    for (size_t i = 0; i < ids.size(); ++i)
      ids[i] = tree.add(texts[i], keyed ? keys[i] : L"",
                        i == 0 ? kNoNode : ids[(i - 1) / kChildren], NodePosition::kLastChild);
  };
  const auto plain_fill = [&](bool keyed) {
    for (size_t i = 0; i < nodes.size(); ++i) {
      PlainNode& parent = i == 0 ? plain : *nodes[(i - 1) / kChildren];
      nodes[i] = parent.children.emplace_back(std::make_unique<PlainNode>()).get();
      nodes[i]->text = texts[i];
      if (keyed) index.emplace(keys[i], nodes[i]);
    }
  };
  report("fill", median(clear, [&] { fill(false); }),
         median(plain_clear, [&] { plain_fill(false); }));
  report("fill with keys", median(clear, [&] { fill(true); }),
         median(plain_clear, [&] { plain_fill(true); }));
  volatile size_t sink = 0;
  report("look up every key",
         median([] {},
                [&] {
                  for (const auto& key : keys) sink = sink + tree.find_key(key);
                }),
         median([] {},
                [&] {
                  for (const auto& key : keys) sink = sink + index.find(key)->second->text.size();
                }));
  std::vector<PlainNode*> rows;
  const auto plain_rows = [&] {
    rows.clear();
    visit(plain, [&](PlainNode& node) { rows.push_back(&node); });
  };
  report("expand all, count rows",
         median(
             [&] {
               tree.expand_all(kNoNode, false);
               sink = static_cast<size_t>(tree.row_count());
             },
             [&] {
               tree.expand_all(kNoNode, true);
               sink = static_cast<size_t>(tree.row_count());
             }),
         median([] {},
                [&] {
                  visit(plain, [](PlainNode& node) { node.expanded = true; });
                  plain_rows();
                }));
  report("expand a parent of all",
         median(
             [&] {
               tree.expand(ids[0], false);
               sink = static_cast<size_t>(tree.row_count());
             },
             [&] {
               tree.expand(ids[0], true);
               sink = static_cast<size_t>(tree.row_count());
             }),
         median([] {}, plain_rows));
  tree.set_three_states(true);
  report("check the root",
         median([&] { tree.set_check(ids[0], kUnchecked); },
                [&] { tree.set_check(ids[0], kChecked); }),
         median([] {}, [&] { visit(plain, [](PlainNode& node) { node.check = !node.check; }); }));
  const TextMatcher matcher(L"nenhum destes", SearchMode::kLike, false);
  report("search all, contains", median([] {}, [&] { sink = tree.find_text(matcher); }),
         median([] {},
                [&] {
                  visit(plain, [&](PlainNode& node) {
                    sink = sink + (node.text.find(L"nenhum destes") != std::wstring::npos);
                  });
                }));
  report("remove the root",
         median(
             [&] {
               clear();
               fill(true);
             },
             [&] { tree.remove(ids[0]); }),
         median(
             [&] {
               plain_clear();
               plain_fill(true);
             },
             plain_clear));
  std::printf("bytes a node beside its texts %zu\n", sizeof(TreeNode));
}
