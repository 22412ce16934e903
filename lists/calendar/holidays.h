// Brazilian holidays: the national ones by law, the optional days, and a program's own (state,
// city, company). Days are day numbers (base/calendar.h).
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/calendar.h"

namespace kestrelon {

/// Easter Sunday of a year by the Gregorian rule; 0 for a year outside the range of a date value.
int32_t easter_day(int year);

/// What the calendar knows of one day. Several reasons may fall on one: their names are joined.
struct DayNote {
  bool holiday = false;       ///< nobody works
  bool optional = false;      ///< shown, but worked
  bool banks_closed = false;  ///< no holiday, yet banks are shut
  std::wstring name;          ///< "" for an ordinary day
};

class Holidays {
 public:
  /// A holiday of the program's own; year 0 is every year. False, and nothing changed, for a day no
  /// calendar has or one that has been added already.
  bool add(int day, int month, std::wstring_view name, int year = 0, bool optional = false);
  bool remove(int day, int month, int year = 0);
  void clear();
  size_t own_count() const { return own_.size(); }

  /// Own holidays as lines "dd/mm Name", "dd/mm/yyyy Name"; "*" behind the date marks an optional
  /// day. Reading replaces all of them; a line that is no holiday is left out.
  std::wstring text() const;
  void set_text(std::wstring_view lines);

  DayNote note(int32_t day) const;
  /// The days of one year on which nobody works (`bank`: or banks are shut), each once, in order,
  /// weekends included.
  std::vector<int32_t> days_off(int year, bool bank) const;
  /// Grows with every change of the own ones.
  uint32_t version() const { return version_; }

 private:
  struct Own {
    std::wstring name;
    bool optional = false;
  };
  void own_days_off(int year, int filed_under, std::vector<int32_t>& days) const;

  std::map<uint32_t, Own> own_;  // by year, month and day, so that a year's stand together
  uint32_t version_ = 0;
};

/// The two ways to count business days; the numbers of ENUM_BUSINESS_DAYS.
enum class BusinessCount { kNational = 0, kBank = 1 };

constexpr bool is_day_off(const DayNote& note, BusinessCount count) {
  return note.holiday || (count == BusinessCount::kBank && note.banks_closed);
}

}  // namespace kestrelon
