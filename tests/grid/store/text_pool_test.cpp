#include "grid/store/text_pool.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace kestrelon {
namespace {

constexpr size_t kPage = 32768;

TEST(TextPool, KeepsTextsAroundTheSizesWhereItsPagesChange) {
  TextPool pool;
  std::map<TextPool::Ref, std::wstring> kept;
  wchar_t letter = L'a';
  for (const size_t size : {size_t{1}, size_t{2047}, size_t{2048}, size_t{2049}, kPage - 2,
                            kPage - 1, kPage, kPage + 1, 3 * kPage})
    for (int twice = 0; twice < 20; ++twice) {
      const std::wstring text(size, letter++);
      const TextPool::Ref ref = pool.add(text);
      ASSERT_NE(ref, 0u);
      ASSERT_TRUE(kept.emplace(ref, text).second) << "a reference in use was given out";
    }
  for (const auto& [ref, text] : kept) ASSERT_EQ(pool.view(ref), text);
  for (const auto& [ref, text] : kept) pool.remove(ref);
  EXPECT_EQ(pool.live_units(), 0u);
  EXPECT_LE(pool.page_units(), kPage) << "an empty pool holds one open page at most";
}

TEST(TextPool, TakesTextsOutOfItself) {
  TextPool pool;
  TextPool::Ref ref = pool.add(L"um texto com meio");
  ref = pool.replace(ref, pool.view(ref).substr(3));
  EXPECT_EQ(pool.view(ref), L"texto com meio");
  TextPool::Ref large = pool.add(std::wstring(5000, L'x') + L"fim");
  large = pool.replace(large, pool.view(large).substr(1));
  EXPECT_EQ(pool.view(large).size(), 5002u);
  large = pool.replace(large, pool.view(large).substr(4999));
  EXPECT_EQ(pool.view(large), L"fim");
  EXPECT_EQ(pool.replace(large, {}), 0u);
}

TEST(TextPool, GivesSpaceBackThroughSweeps) {
  TextPool pool;
  std::mt19937 random(7);
  std::vector<std::wstring> texts(4000);
  std::vector<TextPool::Ref> refs(texts.size());
  size_t most = 0;
  int sweeps = 0;
  for (int step = 0; step < 200'000; ++step) {
    const size_t i = random() % texts.size();
    texts[i].assign(random() % 60, static_cast<wchar_t>(L'a' + random() % 26));
    refs[i] = pool.replace(refs[i], texts[i]);
    if (pool.wants_sweep()) {
      ++sweeps;
      pool.begin_sweep();
      for (TextPool::Ref& ref : refs) ref = pool.swept(ref);
      pool.end_sweep();
      ASSERT_FALSE(pool.wants_sweep());
      for (size_t k = 0; k < refs.size(); ++k) ASSERT_EQ(pool.view(refs[k]), texts[k]);
    }
    most = std::max(most, pool.page_units());
  }
  EXPECT_GT(sweeps, 3);
  // 4,000 texts of 30 units live; garbage may weigh as much and four pages more.
  EXPECT_LT(most, 4000 * 31 * 2 + 8 * kPage);
}

}  // namespace
}  // namespace kestrelon
