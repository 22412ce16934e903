// Finds what must never be in a store. For tests, and for those who look for a fault.
#pragma once

#include <string>

#include "grid/store/grid_store.h"

namespace kestrelon {

/// Reads everything, so it takes as long as the store is large.
class GridStoreCheck {
 public:
  /// The first contradiction in words, or nothing.
  static std::string fault(const GridStore& store);

 private:
  explicit GridStoreCheck(const GridStore& store) : store_(store) {}
  void orders();
  void rows();
  void cells();
  void totals();
  void marks();
  void expect(bool holds, const char* what) {
    if (!holds && fault_.empty()) fault_ = what;
  }

  const GridStore& store_;
  std::string fault_;
};

}  // namespace kestrelon
