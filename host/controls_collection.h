// The Controls collection of a form.
#pragma once

#include "host/form_object.h"

namespace kestrelon::host {

/// Count, Item (by index from 0, or by name), enumeration, Add(ProgID, Name, Container) and
/// Remove(index, name or object). Enumeration goes over the items of the moment it began.
class ControlsCollection final : public LateBound {
 public:
  explicit ControlsCollection(FormObject& form);

 private:
  Form& form() const;
  class FormItem& item(const VARIANT& key) const;
  Variant add(const Arguments& arguments);
  Variant enumerate() const;

  ComPtr<FormObject> object_;
};

}  // namespace kestrelon::host
