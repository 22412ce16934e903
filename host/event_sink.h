// Listens to the events of any object by its type description and reports them by name.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/com_object.h"

namespace kestrelon::host {

/// Called for each event. By-reference arguments may be altered in place; they lie in `params` in
/// reverse order, as automation passes them (see event_argument).
using EventHandler = std::function<void(const std::wstring& name, DISPPARAMS& params)>;

class EventSink final : public ComObject<IDispatch> {
 public:
  /// Connects to the default source dispinterface of `object`; empty when the object describes none
  /// or refuses. The sink stays connected until disconnect(), whoever else holds it.
  static ComPtr<EventSink> connect(IUnknown* object, EventHandler handler);
  void disconnect();

  /// One line an event: `Name` or `Name(1, 0, 12.5)`, with the arguments as they came in, before
  /// the handler saw them.
  const std::vector<std::wstring>& log() const { return log_; }
  void clear_log() { log_.clear(); }
  void set_handler(EventHandler handler) { handler_ = std::move(handler); }
  /// The names that the dispinterface declares, in its order.
  std::vector<std::wstring> event_names() const;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override;

 protected:
  bool answer(REFIID iid, void** out) override;

 private:
  template <class T, class... Args>
  friend ComPtr<T> make_com(Args&&... args);
  EventSink(ComPtr<ITypeInfo> source, const TYPEATTR& attributes, EventHandler handler);

  ComPtr<ITypeInfo> source_;
  IID source_iid_;
  std::map<DISPID, std::wstring> names_;
  std::vector<DISPID> order_;
  EventHandler handler_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  std::vector<std::wstring> log_;
};

/// The class description of an object: IProvideClassInfo, or the type information of its IDispatch.
ComPtr<ITypeInfo> class_info_of(IUnknown* object);
/// The default source dispinterface of a class description.
ComPtr<ITypeInfo> source_interface_of(ITypeInfo* coclass);
/// The name of a description without the underscore of an interface; empty without one.
std::wstring type_name_of(ITypeInfo* info);

/// Argument `index` of an event in written order, the reference itself when it came by reference.
VARIANT& event_argument(DISPPARAMS& params, UINT index);
/// The value of an argument, whether by reference or not.
Variant event_value(const DISPPARAMS& params, UINT index);
/// Stores into a by-reference argument, converted to its type; false when it came by value.
bool set_event_argument(DISPPARAMS& params, UINT index, const Variant& value);

/// A value as a log line shows it.
std::wstring describe_value(const VARIANT& value);

}  // namespace kestrelon::host
