// An observer that keeps what it hears.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "services/mysql/maintenance_observer.h"

namespace kestrelon::testing {

struct RecordingObserver final : MaintenanceObserver {
  void status(const std::wstring& message) override { statuses.push_back(message); }
  void command(std::wstring& sql) override { commands.push_back(sql); }
  void script_totals(long count, long errors) override { totals.emplace_back(count, errors); }
  void progress(int64_t max, int64_t value) override { steps.emplace_back(max, value); }
  void pump() override { ++pumps; }

  std::vector<std::wstring> statuses;
  std::vector<std::wstring> commands;
  std::vector<std::pair<long, long>> totals;
  std::vector<std::pair<int64_t, int64_t>> steps;
  int pumps = 0;
};

}  // namespace kestrelon::testing
