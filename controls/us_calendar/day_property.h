// A persisted day: a date value without time, or Empty.
#pragma once

#include <cmath>
#include <optional>

#include "base/calendar.h"
#include "frame/property.h"

namespace kestrelon {

/// The day of a date value as hosts hold it; the time is left out. Nothing out of range.
inline std::optional<int32_t> day_of_value(double value) {
  const double whole = std::trunc(value);
  if (!(whole >= -1e6 && whole <= 1e7)) return std::nullopt;
  const auto day = static_cast<int32_t>(whole);
  return date_of_day_number(day) ? std::optional(day) : std::nullopt;
}

inline Variant day_variant(std::optional<int32_t> day) {
  Variant out;
  if (!day) return out;
  V_VT(&out) = VT_DATE;
  V_DATE(&out) = *day;
  return out;
}

class DayProperty final : public PropertyBase {
 public:
  template <class Owner, class Base>
  DayProperty(Owner& owner, PropertyName name, std::optional<int32_t> initial,
              void (Base::*effect)())
      : PropertyBase(owner, name), day_(initial), default_(initial) {
    effect_ = [&owner, effect] { (owner.*effect)(); };
  }

  std::optional<int32_t> day() const { return day_; }
  double get() const { return day_.value_or(0); }
  /// A value that is no day changes nothing.
  void put(double value) {
    const auto day = day_of_value(value);
    if (!day) return;
    day_ = day;
    report();
    effect_();
  }
  void assign(std::optional<int32_t> day) { day_ = day; }
  void report() { changed(); }

  Variant empty_value() const override { return {}; }
  void load(const VARIANT& value) override {
    Variant converted;
    const bool is_date =
        V_VT(&value) != VT_EMPTY && V_VT(&value) != VT_NULL &&
        SUCCEEDED(VariantChangeType(&converted, const_cast<VARIANT*>(&value), 0, VT_DATE));
    day_ = is_date ? day_of_value(V_DATE(&converted)) : std::nullopt;
    if (!day_) day_ = default_;
  }
  void reset() override { day_ = default_; }
  Variant save() const override { return day_variant(day_); }
  bool is_default() const override { return day_ == default_; }

 private:
  std::optional<int32_t> day_;
  std::optional<int32_t> default_;
  std::function<void()> effect_;
};

}  // namespace kestrelon
