// What a designer's property window asks of a control: its pages, and the names of its choices.
#pragma once

#include <ocidl.h>

#include "base/automation_win.h"
#include "frame/face/type_browser.h"

namespace kestrelon {

class BrowseFace : public ISpecifyPropertyPages, public IPerPropertyBrowsing {
 public:
  STDMETHODIMP GetPages(CAUUID* pages) override;
  STDMETHODIMP GetDisplayString(DISPID id, BSTR* out) override;
  STDMETHODIMP MapPropertyToPage(DISPID id, CLSID* page) override;
  STDMETHODIMP GetPredefinedStrings(DISPID id, CALPOLESTR* names, CADWORD* cookies) override;
  STDMETHODIMP GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* out) override;

 protected:
  explicit BrowseFace(AutomationObject& object) : object_(object) {}
  ~BrowseFace() = default;
  /// A page of the library's own that a property leads to, null for none; the pages of all
  /// properties are the control's pages, before the system's.
  virtual const CLSID* own_page(const BrowsedProperty& property) const;

 private:
  const IID& browsed() const { return object_.class_info().interface_id; }

  AutomationObject& object_;
};

}  // namespace kestrelon
