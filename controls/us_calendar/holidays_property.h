// The calendar's own holidays as one persisted text; the text is made only when somebody reads it.
#pragma once

#include "frame/property.h"
#include "lists/calendar/holidays.h"

namespace kestrelon {

class HolidaysProperty final : public PropertyBase {
 public:
  template <class Owner, class Base>
  HolidaysProperty(Owner& owner, PropertyName name, void (Base::*effect)())
      : PropertyBase(owner, name) {
    effect_ = [&owner, effect] { (owner.*effect)(); };
  }

  const Holidays& days() const { return days_; }
  std::wstring get() const { return days_.text(); }
  void put(const std::wstring& lines) {
    change([&](Holidays& days) { days.set_text(lines); });
  }
  template <class Change>
  void change(Change&& change_days) {
    change_days(days_);
    changed();
    effect_();
  }

  Variant empty_value() const override {
    Variant out;
    V_VT(&out) = VT_BSTR;
    return out;
  }
  void load(const VARIANT& value) override {
    Variant text;
    const bool usable =
        SUCCEEDED(VariantChangeType(&text, const_cast<VARIANT*>(&value), 0, VT_BSTR));
    days_.set_text(usable ? to_wstring(V_BSTR(&text)) : std::wstring());
  }
  void reset() override { days_.clear(); }
  Variant save() const override { return Variant(std::wstring_view(days_.text())); }
  bool is_default() const override { return days_.own_count() == 0; }

 private:
  Holidays days_;
  std::function<void()> effect_;
};

}  // namespace kestrelon
