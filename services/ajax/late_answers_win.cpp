#include "services/ajax/late_answers_win.h"

#include <vector>

namespace kestrelon {
namespace {

constexpr int64_t kComplete = 4;
// A host that asks again and again a server that is silent does not fill the memory.
constexpr size_t kMostKept = 64;

// Never freed: at the end of a thread its objects may be gone.
std::vector<LateObject>& kept_of_this_thread() {
  thread_local std::vector<LateObject>* kept = nullptr;
  if (kept == nullptr) kept = new std::vector<LateObject>;
  return *kept;
}

bool may_go(LateObject& request) {
  try {
    return is_answered(request);
  } catch (const ComError&) {
    return true;
  }
}

}  // namespace

bool is_answered(LateObject& request) {
  return number_of(request.get_property(L"readyState")) == kComplete;
}

KeptUntilAnswered::~KeptUntilAnswered() {
  std::vector<LateObject>& kept = kept_of_this_thread();
  std::erase_if(kept, may_go);
  if (may_go(request_)) return;
  if (kept.size() == kMostKept) kept.erase(kept.begin());
  kept.push_back(std::move(request_));
}

}  // namespace kestrelon
