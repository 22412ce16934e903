#include "host/script_host.h"

#include "host/com_object.h"
#include "host/control_site.h"
#include "host/event_sink.h"
#include "host/form.h"
#include "host/late_bound.h"

namespace kestrelon::host {

// What the engine sees of its host.
class ScriptSite final : public ComObject<IActiveScriptSite, IActiveScriptSiteWindow> {
 public:
  void add(const std::wstring& name, IDispatch* object) {
    items_[lower_case(name)] = ComPtr<IDispatch>(object);
  }
  void clear() { items_.clear(); }
  std::vector<ScriptError> errors;

  HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
    if (!locale) return E_POINTER;
    *locale = LOCALE_USER_DEFAULT;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** object,
                                        ITypeInfo** info) override {
    if (info) *info = nullptr;
    if (object) *object = nullptr;
    const auto item = items_.find(lower_case(name));
    if (item == items_.end()) return TYPE_E_ELEMENTNOTFOUND;
    if (mask & SCRIPTINFO_IUNKNOWN) {
      *object = item->second.get();
      (*object)->AddRef();
    }
    if (mask & SCRIPTINFO_ITYPEINFO) return item->second->GetTypeInfo(0, LOCALE_USER_DEFAULT, info);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
    EXCEPINFO info = {};
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    error->GetSourcePosition(&context, &line, &column);
    error->GetExceptionInfo(&info);
    if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
    const HRESULT code = info.scode ? info.scode : numbered_error(info.wCode);
    const bool basic = HRESULT_FACILITY(code) == FACILITY_CONTROL;
    errors.push_back({basic ? HRESULT_CODE(code) : code, to_wstring(info.bstrDescription),
                      static_cast<int>(line) + 1});
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrHelpFile);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    if (!window) return E_POINTER;
    *window = GetActiveWindow();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnableModeless(WINBOOL) override { return S_OK; }

 private:
  std::map<std::wstring, ComPtr<IDispatch>> items_;
};

namespace {

// The arguments of an event as the engine takes them: each a reference to a variant of its own,
// whose change goes back to the event's argument.
class EventArguments {
 public:
  explicit EventArguments(DISPPARAMS& event) : event_(event) {
    for (UINT i = 0; i < event.cArgs; ++i) values_.push_back(plain_value(event.rgvarg[i]));
    before_ = values_;
    raw_.resize(values_.size());
    for (size_t i = 0; i < values_.size(); ++i) {
      raw_[i].vt = VT_VARIANT | VT_BYREF;
      raw_[i].pvarVal = &values_[i];
    }
    params_ = {raw_.data(), nullptr, static_cast<UINT>(raw_.size()), 0};
  }

  DISPPARAMS& params() { return params_; }
  void give_back() {
    for (UINT i = 0; i < event_.cArgs; ++i) {
      const bool same =
          values_[i].vt == before_[i].vt &&
          VarCmp(&values_[i], &before_[i], LOCALE_INVARIANT, 0) == static_cast<HRESULT>(VARCMP_EQ);
      if (!same) set_event_argument(event_, event_.cArgs - 1 - i, values_[i]);
    }
  }

 private:
  DISPPARAMS& event_;
  std::vector<Variant> values_;
  std::vector<Variant> before_;
  std::vector<VARIANT> raw_;
  DISPPARAMS params_ = {};
};

}  // namespace

ScriptHost::ScriptHost(const std::wstring& language) : site_(make_com<ScriptSite>()) {
  CLSID clsid;
  HRESULT hr = CLSIDFromProgID(language.c_str(), &clsid);
  if (SUCCEEDED(hr))
    hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                          engine_.put_void());
  // By __uuidof: the import library lacks the constant of the 64-bit interface.
  if (SUCCEEDED(hr)) parser_ = engine_.as<IActiveScriptParse>();
  if (SUCCEEDED(hr)) hr = parser_ ? parser_->InitNew() : E_NOINTERFACE;
  if (SUCCEEDED(hr)) hr = engine_->SetScriptSite(site_.get());
  if (SUCCEEDED(hr)) hr = engine_->SetScriptState(SCRIPTSTATE_STARTED);
  if (FAILED(hr)) throw ComError(hr, L"The script engine " + language + L" is not there");
}

ScriptHost::~ScriptHost() {
  leave_form();
  engine_->Close();
  site_->clear();
}

void ScriptHost::add_item(const std::wstring& name, IDispatch* object) {
  site_->add(name, object);
  engine_->AddNamedItem(name.c_str(), SCRIPTITEM_ISVISIBLE);
}

void ScriptHost::add_form(Form& form) {
  form_ = &form;
  add_item(form.name(), form.dispatch());
  for (const auto& item : form.all_items()) add_item(item->name(), item->dispatch());
  form.on_control_event = [this](ControlSite& site, const std::wstring& event, DISPPARAMS& params) {
    call(site.name() + L"_" + event, params);
  };
  form.on_event = [this](const std::wstring& event, DISPPARAMS& params) {
    call(L"Form_" + event, params);
  };
}

void ScriptHost::leave_form() {
  if (Form* form = std::exchange(form_, nullptr)) {
    form->on_control_event = nullptr;
    form->on_event = nullptr;
  }
}

bool ScriptHost::run(const std::wstring& code) {
  EXCEPINFO error = {};
  return SUCCEEDED(parser_->ParseScriptText(code.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                            SCRIPTTEXT_ISVISIBLE, nullptr, &error));
}

Variant ScriptHost::evaluate(const std::wstring& expression) {
  EXCEPINFO error = {};
  Variant value;
  const HRESULT hr = parser_->ParseScriptText(expression.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                              SCRIPTTEXT_ISEXPRESSION, value.put(), &error);
  if (FAILED(hr)) throw ComError(hr, errors().empty() ? L"" : errors().back().description);
  return value;
}

bool ScriptHost::call(const std::wstring& name, DISPPARAMS& params, Variant* result) {
  ComPtr<IDispatch> code;
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name.c_str())};
  if (FAILED(engine_->GetScriptDispatch(nullptr, code.put())) || !code ||
      FAILED(code->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)))
    return false;
  EventArguments arguments(params);
  EXCEPINFO error = {};
  const HRESULT hr =
      code->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments.params(),
                   result ? result->put() : nullptr, &error, nullptr);
  SysFreeString(error.bstrDescription);
  SysFreeString(error.bstrSource);
  SysFreeString(error.bstrHelpFile);
  arguments.give_back();
  return SUCCEEDED(hr);
}

const std::vector<ScriptError>& ScriptHost::errors() const {
  return site_->errors;
}

}  // namespace kestrelon::host
