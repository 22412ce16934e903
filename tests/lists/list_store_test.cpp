#include "lists/list_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/fold.h"

namespace kestrelon {
namespace {

/// What the store must be, in the plainest form: one struct an item, moved about whole.
struct PlainItem {
  std::wstring text, tag;
  int32_t data = 0;
  bool checked = false, hidden = false;
};

class PlainList {
 public:
  std::vector<PlainItem> items;

  void insert(const std::wstring& text, int at) {
    const bool inside = at >= 0 && at <= count();
    items.insert(inside ? items.begin() + at : items.end(), {.text = text, .tag = {}});
  }
  void sort(bool descending) {
    std::stable_sort(items.begin(), items.end(), [=](const PlainItem& a, const PlainItem& b) {
      return descending ? key(b.text) < key(a.text) : key(a.text) < key(b.text);
    });
  }
  void move(int from, int to) {
    const PlainItem item = items[static_cast<size_t>(from)];
    items.erase(items.begin() + from);
    items.insert(items.begin() + to, item);
  }
  int count() const { return static_cast<int>(items.size()); }

 private:
  static std::pair<std::wstring, std::wstring> key(const std::wstring& text) {
    return {folded_text(text), text};
  }
};

void expect_same(const ListStore& store, const PlainList& plain) {
  ASSERT_EQ(store.count(), plain.count());
  std::vector<int32_t> shown;
  int checked = 0;
  for (int i = 0; i < plain.count(); ++i) {
    const PlainItem& item = plain.items[static_cast<size_t>(i)];
    ASSERT_EQ(store.text(i), item.text);
    ASSERT_EQ(store.tag(i), item.tag);
    ASSERT_EQ(store.item(i).data, item.data);
    checked += item.checked;
    if (!item.hidden) shown.push_back(i);
  }
  ASSERT_EQ(store.checked_count(), checked);
  ASSERT_EQ(std::vector<int32_t>(store.shown().begin(), store.shown().end()), shown);
}

std::wstring random_text(std::mt19937& random) {
  std::wstring text(random() % 6, L'a');
  for (wchar_t& c : text) c = L"abcAB\u00e9 z"[random() % 8];
  if (random() % 50 == 0) text.append(random() % 40000, L'x');  // beyond what is kept
  return text;
}

TEST(ListStore, AgreesWithAPlainListUnderAnyOperations) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    std::mt19937 random(seed);
    ListStore store;
    PlainList plain;
    for (int step = 0; step < 600; ++step) {
      const int at = static_cast<int>(random() % static_cast<unsigned>(plain.count() + 3)) - 1;
      const bool has = at >= 0 && at < plain.count();
      PlainItem scratch;
      PlainItem& item = has ? plain.items[static_cast<size_t>(at)] : scratch;
      std::wstring text = random_text(random);
      std::wstring kept = text.substr(0, kMaxItemText);
      switch (random() % 11) {
        case 0:
        case 1:
        case 2:
          store.add(text, at);
          plain.insert(kept, at);
          break;
        case 3:
          store.remove(at);
          if (has) plain.items.erase(plain.items.begin() + at);
          break;
        case 4:
          store.set_text(at, text);
          item.text = kept;
          break;
        case 5:
          store.set_tag(at, text);
          item.tag = kept;
          break;
        case 6:
          store.set_data(at, step);
          item.data = step;
          break;
        case 7:
          EXPECT_EQ(store.set_flag(at, ItemFlag::kChecked, step % 2 != 0),
                    has && item.checked != (step % 2 != 0));
          item.checked = step % 2 != 0;
          break;
        case 8: {
          const int to = static_cast<int>(random() % static_cast<unsigned>(plain.count() + 1));
          const bool valid = has && to < plain.count();
          EXPECT_EQ(store.move(at, to), valid);
          if (valid) plain.move(at, to);
          break;
        }
        case 9:
          store.set_flag(at, ItemFlag::kHidden, step % 3 != 0);
          item.hidden = step % 3 != 0;
          if (step % 20 == 0) {
            store.show_all();
            for (PlainItem& each : plain.items) each.hidden = false;
          }
          break;
        default:
          store.sort(step % 2 != 0);
          plain.sort(step % 2 != 0);
      }
      ASSERT_NO_FATAL_FAILURE(expect_same(store, plain)) << "seed " << seed << " step " << step;
    }
  }
}

TEST(ListStore, EqualTextsKeepTheirOrderWhicheverWayTheyAreSorted) {
  ListStore store;
  for (int i = 0; i < 300; ++i) {
    store.add(i % 3 == 0 ? L"same" : i % 3 == 1 ? L"other" : L"");
    store.set_data(i, i);
  }
  for (const bool descending : {false, true, true, false}) {
    store.sort(descending);
    for (int i = 1; i < 300; ++i) {
      const std::wstring_view former = store.text(i - 1), text = store.text(i);
      if (former == text)
        EXPECT_LT(store.item(i - 1).data, store.item(i).data);
      else
        EXPECT_EQ(former > text, descending);
    }
  }
}

TEST(ListStore, ATextFindsItsPlaceBehindItsEquals) {
  ListStore store;
  for (const wchar_t* text : {L"b", L"d", L"b", L"a"}) store.add(text);
  store.sort(false);
  EXPECT_EQ(store.sorted_position(L""), 0);
  EXPECT_EQ(store.sorted_position(L"b"), 3);
  EXPECT_EQ(store.sorted_position(L"c"), 3);
  EXPECT_EQ(store.sorted_position(L"e"), 4);
}

TEST(ListStore, AFilterNarrowsAndChangesNoIndex) {
  ListStore store;
  for (const wchar_t* text : {L"rosca", L"porca", L"arruela", L"porca rosca"}) store.add(text);
  EXPECT_TRUE(store.hide_others({L"rosca", SearchMode::kLike, false}));
  EXPECT_EQ(std::vector<int32_t>(store.shown().begin(), store.shown().end()),
            (std::vector<int32_t>{0, 3}));
  EXPECT_TRUE(store.hide_others({L"porca", SearchMode::kLike, false}));
  EXPECT_EQ(store.shown().size(), 1u);
  EXPECT_FALSE(store.hide_others({L"porca", SearchMode::kLike, false}));
  EXPECT_FALSE(store.hide_others({L"", SearchMode::kLike, false}));
  EXPECT_EQ(store.text(2), L"arruela");
  EXPECT_EQ(store.find({L"arru", SearchMode::kBeginsWith, false}), 2);
  EXPECT_TRUE(store.show_all());
  EXPECT_FALSE(store.show_all());
  EXPECT_TRUE(store.all_shown());
}

TEST(ListStore, MemoryOfReplacedTextsComesBack) {
  ListStore store;
  for (int i = 0; i < 10; ++i) store.add(L"text");
  const std::wstring_view kept = store.text(3);
  for (int i = 0; i < 20'000; ++i) store.set_text(i % 3, std::wstring(1000 + i % 7, L'y'));
  EXPECT_EQ(store.text(3), L"text");
  EXPECT_EQ(store.text(2).size(), 1000u + 19'997 % 7);
  (void)kept;
}

TEST(ListStore, ATextMayBeReplacedByAPieceOfItself) {
  ListStore store;
  store.add(L"uma palavra");
  store.set_text(0, store.text(0).substr(4));
  EXPECT_EQ(store.text(0), L"palavra");
  store.set_tag(0, store.text(0));
  store.set_text(0, L"");
  EXPECT_EQ(store.tag(0), L"palavra");
}

}  // namespace
}  // namespace kestrelon
