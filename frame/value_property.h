// A property of any plain type: a number, a text, a date.
#pragma once

#include "frame/property.h"

namespace kestrelon {

class ValueProperty final : public PropertyBase {
 public:
  using PropertyBase::PropertyBase;

  const VARIANT& get() const { return value_; }
  void assign(const VARIANT& value) { value_ = plain(value); }
  void put(const VARIANT& value) {
    assign(value);
    owner().property_changed(name());
  }

  Variant empty_value() const override { return {}; }
  void load(const VARIANT& value) override { assign(value); }
  void reset() override { value_ = Variant(); }
  Variant save() const override { return value_; }
  bool is_default() const override { return V_VT(&value_) == VT_EMPTY; }

 private:
  /// The value itself where it came by reference; nothing for arrays and objects, which no bag of
  /// values keeps.
  static Variant plain(const VARIANT& value) {
    Variant out;
    if (FAILED(VariantCopyInd(&out, const_cast<VARIANT*>(&value)))) return {};
    if ((V_VT(&out) & VT_ARRAY) != 0 || V_VT(&out) == VT_UNKNOWN) return {};
    if (V_VT(&out) == VT_DISPATCH && FAILED(VariantChangeType(&out, &out, 0, VT_BSTR))) return {};
    return out;
  }

  Variant value_;
};

}  // namespace kestrelon
