// A list of 100,000 items: filling, sorting, searching, filtering, clearing. Each row prints the
// time in milliseconds and the ratio to the plainest way of the standard library in the same run:
// above 1 we are faster.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "lists/list_model.h"

namespace {

using kestrelon::ListModel;
using kestrelon::SearchMode;
using kestrelon::TextMatcher;

constexpr int kItems = 100'000;

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

std::wstring text_of(int i) {
  return L"Cliente n\u00famero " + std::to_wstring(i * 7919 % 1'000'003);
}

}  // namespace

int main() {
  std::vector<std::wstring> texts;
  for (int i = 0; i < kItems; ++i) texts.push_back(text_of(i));
  ListModel list;
  std::vector<std::wstring> plain;
  volatile long found = 0;
  const auto fill = [&] {
    for (const std::wstring& text : texts) list.add(text);
  };
  const auto refill = [&] {
    list.clear();
    fill();
  };
  report("fill", median([&] { list.clear(); }, fill),
         median([&] { plain = {}; }, [&] { plain.assign(texts.begin(), texts.end()); }));
  const auto sort = [&] { list.sort(false); };
  const auto sort_plain = [&] { std::stable_sort(plain.begin(), plain.end()); };
  report("sort, first", median(refill, sort), median([&] { plain = texts; }, sort_plain));
  report("sort, again", median([&] { list.sort(true); }, sort),
         median([&] { std::reverse(plain.begin(), plain.end()); }, sort_plain));
  const auto find = [&](const wchar_t* sought, SearchMode mode) {
    return median([] {}, [&] { (void)list.store().find(TextMatcher(sought, mode, false)); });
  };
  const auto find_plain = [&](const wchar_t* sought) {
    return median([] {},
                  [&] {
                    found =
                        std::count_if(plain.begin(), plain.end(), [&](const std::wstring& text) {
                          return text.find(sought) != std::wstring::npos;
                        });
                  });
  };
  const double exact = find_plain(L"numero 99x");
  report("prefix, none", find(L"cliente x", SearchMode::kBeginsWith), exact);
  report("contains, none", find(L"numero 99x", SearchMode::kLike), exact);
  report("filter",
         median([&] { list.filter_off(); },
                [&] {
                  list.filter({L"numero 9", SearchMode::kLike, false});
                }),
         exact);
  report("clear", median(fill, [&] { list.clear(); }),
         median([&] { plain = texts; }, [&] { plain = {}; }));
  return 0;
}
