// The base of every class the library exposes: identity, aggregation, automation, errors, events.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <initializer_list>
#include <memory>

#include "base/com_win.h"
#include "base/events_win.h"
#include "base/module_win.h"

namespace kestrelon {

/// What the server knows of a class without an instance.
struct ClassInfo {
  const wchar_t* name;  ///< as in the type library and, after "Kestrelon2012.", in the ProgID
  const CLSID& clsid;
  const IID& interface_id;  ///< the dual interface `_Name`
  const IID* events_id;     ///< the source interface `__Name`, null for a class without events
};

/// One COM object of the library. A class derives from its generated glue (see tools/idl_glue.py),
/// which joins its dual interface with this base or with ControlFrame.
///
/// Lifetime: starts with one reference; aggregable. While one of the object's own methods or
/// messages runs, a Hold keeps it alive whatever an event handler releases.
class AutomationObject : public ISupportErrorInfo,
                         public IProvideClassInfo2,
                         public IConnectionPointContainer {
 public:
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;

  /// Makes this object part of `outer` (not referenced, as aggregation demands); call before first
  /// use.
  void aggregate_into(IUnknown* outer) { outer_ = outer; }
  /// The object's own IUnknown, which an aggregating object and the class factory hold.
  IUnknown* own_unknown() { return &own_; }
  virtual const ClassInfo& class_info() const = 0;
  virtual IDispatch* dispatch() = 0;

  // ISupportErrorInfo
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;
  // IProvideClassInfo2
  STDMETHODIMP GetClassInfo(ITypeInfo** out) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* out) override;
  // IConnectionPointContainer
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** out) override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;

  /// Keeps the object alive for the time of a call into it.
  class Hold {
   public:
    explicit Hold(AutomationObject& object) : object_(object) { object_.own_.AddRef(); }
    ~Hold() { object_.own_.Release(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    AutomationObject& object_;
  };

 protected:
  AutomationObject() : own_(*this) {}
  virtual ~AutomationObject() = default;

  /// The interface pointer for `iid` without a reference, or null; overridden to add interfaces.
  virtual void* find_interface(REFIID iid);
  /// Called once when the last reference is gone, before destruction, while calls are still
  /// possible.
  virtual void on_final_release() {}
  /// The points of the object, events first; overridden to add others.
  virtual std::vector<ConnectionPoint*> connection_points();
  ConnectionPoint& events();
  /// Tells the listeners of the source interface; the object outlives the call whatever they do.
  virtual void raise(DISPID event, std::initializer_list<VARIANT> arguments);

  HRESULT outer_query(REFIID iid, void** out) { return outer_->QueryInterface(iid, out); }
  ULONG outer_add_ref() { return outer_->AddRef(); }
  ULONG outer_release() { return outer_->Release(); }

  /// Runs the body of an interface method: keeps the object alive, turns exceptions into HRESULTs.
  template <class Body>
  HRESULT call(Body&& body) noexcept {
    const Hold hold(*this);
    return guarded(class_info().interface_id, std::forward<Body>(body));
  }

  // IDispatch by the type library; the glue forwards here with its own interface pointer.
  HRESULT get_type_info(UINT index, ITypeInfo** out);
  HRESULT ids_of_names(REFIID iid, LPOLESTR* names, UINT count, DISPID* ids);
  HRESULT invoke(void* interface_pointer, DISPID member, REFIID iid, LCID locale, WORD flags,
                 DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* bad_argument);

 private:
  // The IUnknown that answers for this object itself; every other interface goes through outer_.
  class OwnUnknown final : public IUnknown {
   public:
    explicit OwnUnknown(AutomationObject& object) : object_(object) {}
    STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

   private:
    AutomationObject& object_;
    ULONG references_ = 1;
    bool finished_ = false;
  };

  OwnUnknown own_;
  IUnknown* outer_ = &own_;
  std::unique_ptr<ConnectionPoint> events_;
  ModuleLock module_lock_;
};

// Conversions between automation arguments and C++ values, used by the generated glue.
namespace glue {

inline std::wstring from_bstr(BSTR text) {
  return to_wstring(text);
}
inline bool from_bool(VARIANT_BOOL value) {
  return value != VARIANT_FALSE;
}

inline void to_bstr(BSTR* out, std::wstring_view value) {
  if (out == nullptr) throw ComError(E_POINTER);
  *out = Bstr(value).detach();
}
inline void to_bool(VARIANT_BOOL* out, bool value) {
  if (out == nullptr) throw ComError(E_POINTER);
  *out = value ? VARIANT_TRUE : VARIANT_FALSE;
}
template <class T, class U>
void to_value(T* out, U&& value) {
  if (out == nullptr) throw ComError(E_POINTER);
  if constexpr (std::is_same_v<std::remove_cvref_t<U>, T>) {
    *out = value;  // an array, for one: the caller owns it from here on
  } else if constexpr (std::is_constructible_v<ComPtr<std::remove_pointer_t<T>>, U> &&
                       std::is_pointer_v<T>) {
    value.copy_to(out);
  } else if constexpr (std::is_same_v<std::remove_cvref_t<U>, Variant>) {
    VariantInit(out);
    std::swap(*out, static_cast<VARIANT&>(value));
  } else {
    *out = static_cast<T>(value);
  }
}

}  // namespace glue
}  // namespace kestrelon
