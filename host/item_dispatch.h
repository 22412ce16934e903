// The late-bound members that every item of a form has.
#pragma once

#include "host/form_item.h"
#include "host/late_bound.h"

namespace kestrelon::host {

/// Left, Top, Width and Height are in the ScaleMode of the item's container. An item that has left
/// its form answers every member with error 398.
class ItemDispatch : public LateBound {
 public:
  ItemDispatch(FormItem& item, std::wstring type_name);

  /// The item is gone; the object may still be held by others.
  void detach() { item_ = nullptr; }

 protected:
  void before_call() override;
  FormItem& item() const { return *item_; }
  bool attached() const { return item_ != nullptr; }

 private:
  void add_place();
  void add_identity();
  void add_behaviour();
  void add_side(const wchar_t* name, LONG RECT::*side, Axis axis);
  void add_length(const wchar_t* name, LONG RECT::*from, LONG RECT::*to, Axis axis);

  FormItem* item_;
};

}  // namespace kestrelon::host
