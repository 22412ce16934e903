// Who hears of a running backup, restore or maintenance.
#pragma once

#include <cstdint>
#include <string>

namespace kestrelon {

/// Calls come on the caller's thread, in the order of the work. They may re-enter the application.
class MaintenanceObserver {
 public:
  virtual ~MaintenanceObserver() = default;

  /// A message for the user, in Brazilian Portuguese.
  virtual void status(const std::wstring& message) = 0;
  /// A command of a file; a restore runs what the listener leaves in `sql`, a script ran it
  /// already.
  virtual void command(std::wstring& sql) = 0;
  virtual void script_totals(long commands, long errors) = 0;
  /// The range of a progress bar and its position; failures of the bar do not matter.
  virtual void progress(int64_t max, int64_t value) = 0;
  /// Lets waiting messages of the application run.
  virtual void pump() = 0;
  /// True once the user gave up; asked between rows and statements.
  virtual bool is_cancelled() { return false; }
};

}  // namespace kestrelon
