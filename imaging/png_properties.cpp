#include "imaging/png_properties.h"

#include <algorithm>

namespace kestrelon {
namespace {

bool is_known(PngProperty id) {
  const auto bits = static_cast<int32_t>(id);
  return bits >= 1 && bits <= static_cast<int32_t>(PngProperty::FilterMethod) &&
         (bits & (bits - 1)) == 0;
}

bool matches(const PngPropertyEntry& entry, PngProperty id, std::wstring_view keyword) {
  return entry.id == id &&
         (id != PngProperty::Miscellaneous || keyword.empty() || entry.keyword == keyword);
}

}  // namespace

bool PngProperties::set(PngProperty id, PngPropertyValue value, std::wstring_view keyword) {
  if (!is_known(id) || value.index() != default_value(id).index()) return false;
  const bool keyed = id == PngProperty::Miscellaneous;
  auto same = [&](const PngPropertyEntry& e) {
    return e.id == id && (!keyed || e.keyword == keyword);
  };
  auto found = std::find_if(entries_.begin(), entries_.end(), same);
  if (found != entries_.end()) {
    found->value = std::move(value);
    return true;
  }
  auto after = std::find_if(entries_.begin(), entries_.end(),
                            [&](const PngPropertyEntry& e) { return e.id > id; });
  entries_.insert(after,
                  {id, std::wstring(keyed ? keyword : std::wstring_view{}), std::move(value)});
  return true;
}

void PngProperties::remove(PngProperty id, std::wstring_view keyword) {
  std::erase_if(entries_, [&](const PngPropertyEntry& e) { return matches(e, id, keyword); });
}

const PngPropertyEntry* PngProperties::find(PngProperty id, std::wstring_view keyword) const {
  auto found = std::find_if(entries_.begin(), entries_.end(),
                            [&](const PngPropertyEntry& e) { return matches(e, id, keyword); });
  return found == entries_.end() ? nullptr : &*found;
}

std::wstring PngProperties::text(PngProperty id, std::wstring_view keyword) const {
  const PngPropertyEntry* entry = find(id, keyword);
  const std::wstring* value = entry ? std::get_if<std::wstring>(&entry->value) : nullptr;
  return value ? *value : std::wstring();
}

PngFilter PngProperties::filter() const {
  const PngPropertyEntry* entry = find(PngProperty::FilterMethod);
  const int32_t value = entry ? std::get<int32_t>(entry->value) : 0;
  const bool known = value >= 0 && value <= static_cast<int32_t>(PngFilter::Adaptive);
  return known ? static_cast<PngFilter>(value) : PngFilter::Default;
}

PngPropertyValue PngProperties::default_value(PngProperty id) {
  switch (id) {
    case PngProperty::DefaultBkgColor:
      return int32_t{-1};
    case PngProperty::FilterMethod:
      return int32_t{0};
    case PngProperty::DateTimeModified:
      return 0.0;
    default:
      return std::wstring();
  }
}

}  // namespace kestrelon
