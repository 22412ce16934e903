// Properties that are lists of records, saved as a count and one key a field and record:
//
//   struct Panel { std::wstring caption; long width = 100; };
//   RecordList<Panel> panels{*this, L"PanelCount", &USStatusBar::repaint,
//                            field(L"PanelCaption", &Panel::caption),
//                            field(L"PanelWidth", &Panel::width)};
//
// is saved as "PanelCount", then "PanelCaption1", "PanelWidth1", "PanelCaption2" ... The default of
// a field is that of a record made anew.
#pragma once

#include <memory>

#include "base/decimal.h"
#include "frame/property.h"

namespace kestrelon {

/// One field of a record as persistence sees it.
template <class Record>
class RecordField {
 public:
  virtual ~RecordField() = default;
  /// False when the bag holds nothing under the field's key for this record.
  virtual bool read(BagReader& bag, const std::wstring& index, Record& record) const = 0;
  virtual void write(BagWriter& bag, const std::wstring& index, const Record& record) const = 0;
};

namespace property_detail {

template <class Record, class T>
class MemberField final : public RecordField<Record> {
  using Holder = Automation<T>;

 public:
  MemberField(const wchar_t* key, T Record::*member) : key_(key), member_(member) {}
  bool read(BagReader& bag, const std::wstring& index, Record& record) const override {
    Variant value;
    V_VT(&value) = Holder::kType;
    if (!bag.read(key_ + index, value)) return false;
    Variant converted;
    if (V_VT(&value) != VT_EMPTY && V_VT(&value) != VT_NULL &&
        SUCCEEDED(VariantChangeType(&converted, &value, 0, Holder::kType)))
      record.*member_ = Holder::from(converted);
    return true;
  }
  void write(BagWriter& bag, const std::wstring& index, const Record& record) const override {
    bag.write(key_ + index, Holder::to(record.*member_));
  }

 private:
  std::wstring key_;
  T Record::*member_;
};

/// An object of the record's own: a picture, a font. Null is kept as such.
template <class Record, class I>
class ObjectField final : public RecordField<Record> {
 public:
  ObjectField(const wchar_t* key, ComPtr<I> Record::*member) : key_(key), member_(member) {}
  bool read(BagReader& bag, const std::wstring& index, Record& record) const override {
    Variant value(static_cast<IUnknown*>(nullptr));
    if (!bag.read(key_ + index, value)) return false;
    const bool object = V_VT(&value) == VT_UNKNOWN || V_VT(&value) == VT_DISPATCH;
    record.*member_ = object ? query<I>(V_UNKNOWN(&value)) : nullptr;
    return true;
  }
  void write(BagWriter& bag, const std::wstring& index, const Record& record) const override {
    bag.write(key_ + index, Variant(static_cast<IUnknown*>((record.*member_).get())));
  }

 private:
  std::wstring key_;
  ComPtr<I> Record::*member_;
};

/// A value that is a number or a text as the program chooses.
template <class Record>
class VariantField final : public RecordField<Record> {
 public:
  VariantField(const wchar_t* key, Variant Record::*member) : key_(key), member_(member) {}
  bool read(BagReader& bag, const std::wstring& index, Record& record) const override {
    Variant value;
    if (!bag.read(key_ + index, value)) return false;
    const bool usable = V_VT(&value) == VT_BSTR || value.change(VT_I4);
    if (usable) record.*member_ = std::move(value);
    return true;
  }
  void write(BagWriter& bag, const std::wstring& index, const Record& record) const override {
    bag.write(key_ + index, record.*member_);
  }

 private:
  std::wstring key_;
  Variant Record::*member_;
};

}  // namespace property_detail

/// A field that is a plain member; its key gets the record's index behind it.
template <class Record, class T>
std::unique_ptr<RecordField<Record>> field(const wchar_t* key, T Record::*member) {
  return std::make_unique<property_detail::MemberField<Record, T>>(key, member);
}

/// A field that is a number or a text.
template <class Record>
std::unique_ptr<RecordField<Record>> field(const wchar_t* key, Variant Record::*member) {
  return std::make_unique<property_detail::VariantField<Record>>(key, member);
}

/// A field that holds a picture or a font.
template <class Record, class I>
std::unique_ptr<RecordField<Record>> field(const wchar_t* key, ComPtr<I> Record::*member) {
  return std::make_unique<property_detail::ObjectField<Record, I>>(key, member);
}

/// A persisted list. Records count from 0 here and from 1 in the keys.
template <class Record>
class RecordList final : public PropertyBase {
 public:
  /// More are not read: a bag that declares millions must not cost memory.
  static constexpr size_t kMost = 4096;

  template <class Owner, class Base, class... Field>
  RecordList(Owner& owner, PropertyName count_key, void (Base::*effect)(), Field... fields)
      : PropertyBase(owner, count_key), effect_([&owner, effect] { (owner.*effect)(); }) {
    (fields_.push_back(std::move(fields)), ...);
  }

  const std::vector<Record>& get() const { return records_; }
  size_t size() const { return records_.size(); }
  bool contains(long index) const { return index >= 0 && static_cast<size_t>(index) < size(); }
  const Record& operator[](size_t index) const { return records_[index]; }
  /// Changes the list or a record of it, reports under `name`, takes effect.
  template <class Change>
  void change(const wchar_t* as, Change&& change_list) {
    change_list(records_);
    owner().property_changed(as);
    effect_();
  }
  /// For what must not be reported: marks of a moment, positions.
  std::vector<Record>& quietly() { return records_; }

  Variant empty_value() const override { return Variant(0L); }
  void load(const VARIANT&) override {}
  void reset() override { records_.clear(); }
  Variant save() const override { return Variant(static_cast<long>(size())); }
  bool is_default() const override { return records_.empty(); }

  void read(BagReader& bag) override {
    records_.clear();
    Variant count = empty_value();
    if (!bag.read(key(), count) || !count.change(VT_I4)) return;
    const auto wanted = static_cast<size_t>(V_I4(&count) < 0 ? 0 : V_I4(&count));
    while (records_.size() < wanted && records_.size() < kMost) {
      const std::wstring index = decimal_text(static_cast<int64_t>(records_.size()) + 1);
      Record record{};
      bool found = false;
      for (const auto& each : fields_) found = each->read(bag, index, record) || found;
      if (!found) return;  // a count larger than the keys ends with them
      records_.push_back(std::move(record));
    }
  }
  void write(BagWriter& bag) const override {
    bag.write(key(), save());
    for (size_t i = 0; i < size(); ++i)
      for (const auto& each : fields_)
        each->write(bag, decimal_text(static_cast<int64_t>(i) + 1), records_[i]);
  }

 private:
  std::vector<Record> records_;
  std::vector<std::unique_ptr<RecordField<Record>>> fields_;
  std::function<void()> effect_;
};

}  // namespace kestrelon
