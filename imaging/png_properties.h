// The texts and settings that an application attaches to an image for its PNG files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kestrelon {

/// `ENUM_PNG_PROPERTIES`. The texts come in the order in which they are written.
enum class PngProperty : int32_t {
  ClearProps = -1,
  Title = 1,
  Author = 2,
  Description = 4,
  Copyright = 8,
  CreationTime = 16,
  Software = 32,
  Disclaimer = 64,
  Warning = 128,
  Source = 256,
  Comment = 512,
  Miscellaneous = 1024,
  DateTimeModified = 2048,
  DefaultBkgColor = 4096,
  FilterMethod = 8192,
};

/// `ENUM_FILTER_METHODS`, the value of PngProperty::FilterMethod.
enum class PngFilter : int32_t { Default, None, AdjLeft, AdjTop, AdjAvg, Paeth, Adaptive };

/// A colour or filter as whole number, a text, or a date (days since 30 December 1899, local time).
using PngPropertyValue = std::variant<int32_t, std::wstring, double>;

struct PngPropertyEntry {
  PngProperty id;
  std::wstring keyword;  ///< of Miscellaneous alone; empty otherwise
  PngPropertyValue value;
};

/// At most one entry per property; Miscellaneous has one per keyword.
class PngProperties {
 public:
  /// Adds or replaces. A value of the wrong kind for `id`, or an unknown `id`: false, no change.
  bool set(PngProperty id, PngPropertyValue value, std::wstring_view keyword = {});
  void remove(PngProperty id, std::wstring_view keyword = {});
  /// The entry, owned by the store and valid until the next change, or null. An empty keyword finds
  /// the first Miscellaneous entry.
  const PngPropertyEntry* find(PngProperty id, std::wstring_view keyword = {}) const;
  /// All entries in rising order of id, Miscellaneous in the order set.
  const std::vector<PngPropertyEntry>& entries() const { return entries_; }

  /// The text of `id`, or an empty one.
  std::wstring text(PngProperty id, std::wstring_view keyword = {}) const;
  PngFilter filter() const;
  /// What stands for a property that is not set: colour -1, date 0, empty text, filter Default.
  static PngPropertyValue default_value(PngProperty id);

 private:
  std::vector<PngPropertyEntry> entries_;
};

}  // namespace kestrelon
