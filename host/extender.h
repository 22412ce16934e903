// The object that the form's code sees in place of a control: the container's members, and behind
// them the control's own.
#pragma once

#include "host/item_dispatch.h"

namespace kestrelon::host {

class ControlSite;

/// Answers for the control's interfaces too, so that asking it for a class's default interface
/// tells what kind of control it is. Names that the container does not know go to the control.
class Extender final : public ItemDispatch {
 public:
  explicit Extender(ControlSite& site);

  /// The control's Enabled; true for a control without one.
  bool enabled() const;

  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;

 protected:
  bool answer(REFIID iid, void** out) override;
  HRESULT unknown_name(LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  HRESULT unknown_id(DISPID id, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result,
                     EXCEPINFO* error, UINT* bad) override;

 private:
  ComPtr<IDispatch> control() const;
  bool has_own_enabled() const;

  ControlSite& site_;
};

}  // namespace kestrelon::host
