// The late-bound object of a form: what code behind the form, and controls on it, call it by.
#pragma once

#include <windows.h>
//
#include <oleidl.h>

#include "host/late_bound.h"

namespace kestrelon::host {

class Form;

/// Left, Top, Width and Height are the outer sizes in twips; ScaleWidth and ScaleHeight the client
/// size in the form's ScaleMode. When the form has gone every member answers error 398.
class FormObject final : public LateBound, public IOleContainer {
 public:
  explicit FormObject(Form& form);

  void detach() { form_ = nullptr; }
  /// Null once the form has gone.
  Form* form() const;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    return LateBound::QueryInterface(iid, out);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return LateBound::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return LateBound::Release(); }

  HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker** out) override;
  HRESULT STDMETHODCALLTYPE EnumObjects(DWORD flags, IEnumUnknown** out) override;
  HRESULT STDMETHODCALLTYPE LockContainer(WINBOOL) override { return S_OK; }

 protected:
  bool answer(REFIID iid, void** out) override;
  void before_call() override;

 private:
  void add_identity();
  void add_place();
  void add_looks();
  void add_border();
  void add_methods();
  void add_outer(const wchar_t* name, std::function<int(const RECT&)> get,
                 std::function<void(RECT&, int)> set, bool horizontal);
  void add_style_flag(const wchar_t* name, bool Form::*flag);

  Form* form_;
};

}  // namespace kestrelon::host
