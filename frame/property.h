// Persisted properties: one declaration holds the name, the key, the type, the default and what a
// change causes; get, put, the notification and both directions of persistence follow from it.
//
//   class USThing : public USThingGlue<USThing, ControlFrame> {
//    public:
//     Property<std::wstring> Caption{*this, L"Caption", L"", &repaint};
//     Property<long> PictureSizeX{*this, {L"PictureSizeX", L"PicSizeW"}, 16, &relayout};
//
// The order of declaration is the order of the keys in a property bag.
#pragma once

#include <olectl.h>

#include <functional>
#include <string>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {

class PropertyBase;

/// Where saved values come from: a container's bag or the records of a stream.
class BagReader {
 public:
  /// The value of a key, converted to the type `value` comes with where the source can. False, and
  /// `value` as it was, when the key is missing.
  virtual bool read(const std::wstring& key, Variant& value) = 0;

 protected:
  ~BagReader() = default;
};

/// Where values are saved to.
class BagWriter {
 public:
  /// Throws ComError when the value cannot be kept.
  virtual void write(const std::wstring& key, const Variant& value) = 0;

 protected:
  ~BagWriter() = default;
};

/// What owns properties: a control. Implemented by ControlFrame.
class PropertyOwner {
 public:
  /// Marks the object as changed and tells the container by the public name.
  virtual void property_changed(const wchar_t* name) = 0;

 protected:
  ~PropertyOwner() = default;
  const std::vector<PropertyBase*>& properties() const { return properties_; }

 private:
  friend class PropertyBase;
  std::vector<PropertyBase*> properties_;
};

/// The names of a property: the public one and, where it differs, the key it is saved under.
struct PropertyName {
  PropertyName(const wchar_t* both) : name(both), key(both) {}  // NOLINT: as a string reads well
  PropertyName(const wchar_t* public_name, const wchar_t* saved_as)
      : name(public_name), key(saved_as) {}
  const wchar_t* name;
  const wchar_t* key;
};

/// One persisted property as persistence sees it. A plain one is one key with one value; a property
/// of another shape (frame/record_property.h) overrides read() and write().
class PropertyBase {
 public:
  PropertyBase(PropertyOwner& owner, PropertyName name) : owner_(owner), name_(name) {
    owner.properties_.push_back(this);
  }
  PropertyBase(const PropertyBase&) = delete;
  PropertyBase& operator=(const PropertyBase&) = delete;

  const wchar_t* name() const { return name_.name; }
  const wchar_t* key() const { return name_.key; }

  /// A value for Read to fill: its type tells the bag what is expected.
  virtual Variant empty_value() const = 0;
  /// Takes a value from a bag, without notification; an unusable one leaves the default.
  virtual void load(const VARIANT& value) = 0;
  /// Back to the default, without notification: what reading does for a key that is missing.
  virtual void reset() = 0;
  virtual Variant save() const = 0;
  virtual bool is_default() const = 0;
  /// Through the setter of a property that is a colour, an enumeration or another whole number;
  /// false for one that is none.
  virtual bool put_number(uint32_t) { return false; }
  /// Takes what a bag holds for this property; what is missing is reset.
  virtual void read(BagReader& bag);
  /// Keys in the order in which they are saved.
  virtual void write(BagWriter& bag) const { bag.write(key(), save()); }
  /// A property that is saved only under a condition, for instance while it is in use.
  void saved_when(std::function<bool()> condition) { saved_when_ = std::move(condition); }
  bool is_saved() const { return !saved_when_ || saved_when_(); }

 protected:
  ~PropertyBase() = default;
  void changed() const { owner_.property_changed(name_.name); }
  PropertyOwner& owner() const { return owner_; }

 private:
  PropertyOwner& owner_;
  PropertyName name_;
  std::function<bool()> saved_when_;
};

namespace property_detail {

template <class T>
struct Automation;  // how a C++ type is held in a VARIANT

template <>
struct Automation<bool> {
  static constexpr VARTYPE kType = VT_BOOL;
  static bool from(const VARIANT& v) { return V_BOOL(&v) != VARIANT_FALSE; }
  static Variant to(bool value) { return Variant(value); }
};
template <>
struct Automation<short> {
  static constexpr VARTYPE kType = VT_I2;
  static short from(const VARIANT& v) { return V_I2(&v); }
  static Variant to(short value) { return Variant(value); }
};
template <>
struct Automation<float> {
  static constexpr VARTYPE kType = VT_R4;
  static float from(const VARIANT& v) { return V_R4(&v); }
  static Variant to(float value) { return Variant(value); }
};
template <>
struct Automation<std::wstring> {
  static constexpr VARTYPE kType = VT_BSTR;
  static std::wstring from(const VARIANT& v) { return to_wstring(V_BSTR(&v)); }
  static Variant to(const std::wstring& value) { return Variant(std::wstring_view(value)); }
};
template <class T>
requires(std::is_enum_v<T> || std::is_same_v<T, long> ||
         std::is_same_v<T, OLE_COLOR>) struct Automation<T> {
  static constexpr VARTYPE kType = VT_I4;
  static T from(const VARIANT& v) { return static_cast<T>(V_I4(&v)); }
  static Variant to(T value) { return Variant(static_cast<long>(value)); }
};
/// Bytes travel as an array of VT_UI1.
template <>
struct Automation<std::vector<uint8_t>> {
  static constexpr VARTYPE kType = VT_ARRAY | VT_UI1;
  static std::vector<uint8_t> from(const VARIANT& v);
  static Variant to(const std::vector<uint8_t>& value);
};

}  // namespace property_detail

/// A property that the object itself holds.
template <class T>
class Property final : public PropertyBase {
  using Automation = property_detail::Automation<T>;

 public:
  /// `effect` runs after a change has been stored and reported; it gets the owner.
  Property(PropertyOwner& owner, PropertyName name, T initial)
      : PropertyBase(owner, name), value_(initial), default_(std::move(initial)) {}
  template <class Owner, class Base>
  Property(Owner& owner, PropertyName name, T initial, void (Base::*effect)())
      : PropertyBase(owner, name), value_(initial), default_(std::move(initial)) {
    effect_ = [&owner, effect] { (owner.*effect)(); };
  }

  const T& get() const { return value_; }
  /// The setter of every property: store, report, take effect. No comparison, no validation.
  void put(T value) {
    value_ = std::move(value);
    changed();
    if (effect_) effect_();
  }
  /// Stores without report or effect.
  void assign(T value) { value_ = std::move(value); }
  /// The default for this instance, where a container decides it (ambient properties).
  void set_default(T value) { default_ = std::move(value); }

  Variant empty_value() const override {
    Variant out;
    V_VT(&out) = Automation::kType;
    return out;
  }
  void load(const VARIANT& value) override {
    Variant converted;
    if (V_VT(&value) == VT_EMPTY || V_VT(&value) == VT_NULL ||
        FAILED(VariantChangeType(&converted, const_cast<VARIANT*>(&value), 0, Automation::kType))) {
      value_ = default_;
      return;
    }
    value_ = Automation::from(converted);
  }
  void reset() override { value_ = default_; }
  Variant save() const override { return Automation::to(value_); }
  bool is_default() const override { return value_ == default_; }
  bool put_number(uint32_t number) override {
    if constexpr (std::is_enum_v<T> || std::is_integral_v<T>) {
      put(static_cast<T>(number));
      return true;
    } else {
      return PropertyBase::put_number(number);
    }
  }

 private:
  T value_;
  T default_;
  std::function<void()> effect_;
};

}  // namespace kestrelon
