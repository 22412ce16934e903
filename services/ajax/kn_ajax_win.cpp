#include "services/ajax/kn_ajax_win.h"

#include <optional>

#include "base/decimal.h"
#include "services/ajax/answer_text.h"
#include "services/ajax/late_answers_win.h"

namespace kestrelon {
namespace {

// Newest first; each is tried only if the one before is not there.
constexpr const wchar_t* kRequestClasses[] = {L"Msxml2.XMLHTTP.6.0", L"Msxml2.XMLHTTP.5.0",
                                              L"Msxml2.XMLHTTP.4.0", L"Msxml2.XMLHTTP.3.0",
                                              L"Msxml2.XMLHTTP.2.0", L"Msxml2.XMLHTTP"};

constexpr wchar_t kProbeAddress[] = L"http://www.example.com/";
constexpr int kProbeSeconds = 10;
// How long the wait sleeps when no message comes, in milliseconds.
constexpr DWORD kStep = 10;

ComPtr<IDispatch> create_request() {
  for (const wchar_t* name : kRequestClasses) {
    CLSID clsid;
    ComPtr<IDispatch> request;
    if (SUCCEEDED(CLSIDFromProgID(name, &clsid)) &&
        SUCCEEDED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                   request.put_void())))
      return request;
  }
  return {};
}

void open(LateObject& request, const wchar_t* verb, const std::wstring& address) {
  request.call(L"Open", {Variant(verb), Variant(address), Variant(true)});
}

void set_header(LateObject& request, const wchar_t* name, const std::wstring& value) {
  request.call(L"SetRequestHeader", {Variant(name), Variant(value)});
}

// The object has no header or no bytes for every answer, and says so by an error.
Variant told_by(LateObject& request, const wchar_t* name,
                std::initializer_list<Variant> arguments) {
  try {
    return arguments.size() > 0 ? request.call(name, arguments) : request.get_property(name);
  } catch (const ComError&) {
    return Variant();
  }
}

std::optional<std::wstring> own_text(LateObject& request) {
  const Variant body = told_by(request, L"responseBody", {});
  if (V_VT(&body) != (VT_ARRAY | VT_UI1)) return std::nullopt;
  const Variant type = told_by(request, L"getResponseHeader", {Variant(L"Content-Type")});
  const std::wstring told = V_VT(&type) == VT_BSTR ? to_wstring(V_BSTR(&type)) : std::wstring();
  SAFEARRAY* const array = V_ARRAY(&body);
  void* data = nullptr;
  if (array == nullptr || FAILED(SafeArrayAccessData(array, &data))) return std::nullopt;
  auto text = answer_text({static_cast<const uint8_t*>(data), array->rgsabound[0].cElements}, told);
  SafeArrayUnaccessData(array);
  return text;
}

std::wstring response_text(LateObject& request) {
  if (auto own = own_text(request)) return std::move(*own);
  const Variant text = request.get_property(L"responseText");
  return V_VT(&text) == VT_BSTR ? to_wstring(V_BSTR(&text)) : std::wstring();
}

}  // namespace

// One object is made to learn whether there are any. Each request has its own: on one whose request
// ran out of time the next could get the former's answer.
KN_AJAX::KN_AJAX() : can_request_(static_cast<bool>(create_request())) {}

void KN_AJAX::wait(LateObject& request, int seconds, bool shows_pointer) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds < 0 ? 0 : seconds) * 1000;
  const HCURSOR busy = shows_pointer ? LoadCursorW(nullptr, IDC_APPSTARTING) : nullptr;
  while (GetTickCount64() < end && !is_answered(request)) {
    // A window under the pointer sets its own shape whenever messages run.
    if (busy != nullptr) SetCursor(busy);
    MsgWaitForMultipleObjectsEx(0, nullptr, kStep, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    const ULONGLONG now = GetTickCount64();
    if (now < end) pump_messages(end - now < kStep * 10 ? end - now : kStep * 10);
  }
  if (busy != nullptr) SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

// A handler that runs during the wait may use or drop the object; the request in hand is kept.
bool KN_AJAX::finish(LateObject& request, const Variant& body) {
  const KeptUntilAnswered kept(request);
  request.call(L"Send", {body});
  wait(request, wait_seconds_, true);
  response_ = response_text(request);
  return !response_.empty();
}

bool KN_AJAX::ajax_get(const std::wstring& url, const std::wstring& charset) {
  if (url.empty() || !can_request_) return false;
  try {
    LateObject request(create_request());
    open(request, L"GET", full_address(url));
    set_header(request, L"Content-type", content_type(L"text/html", charset));
    return finish(request, missing_argument());
  } catch (const ComError&) {
    return false;
  }
}

bool KN_AJAX::ajax_post(const std::wstring& url, const std::wstring& charset, bool encode_value) {
  if (url.empty() || !can_request_) return false;
  try {
    LateObject request(create_request());
    const std::wstring body = form_body(fields_, encode_value);
    open(request, L"POST", full_address(url));
    set_header(request, L"Content-type",
               content_type(L"application/x-www-form-urlencoded", charset));
    set_header(request, L"Content-length", decimal_text(wire_length(body)));
    set_header(request, L"Connection", L"close");
    return finish(request, Variant(body));
  } catch (const ComError&) {
    return false;
  }
}

bool KN_AJAX::ajax_internet_on_line() {
  if (!can_request_) return false;
  try {
    LateObject request(create_request());
    open(request, L"GET", kProbeAddress);
    set_header(request, L"Content-type", L"text/html");
    const KeptUntilAnswered kept(request);
    request.call(L"Send", {missing_argument()});
    wait(request, kProbeSeconds, false);
    return !response_text(request).empty();
  } catch (const ComError&) {
    return false;
  }
}

void KN_AJAX::add_ajax_field(const std::wstring& field, const std::wstring& value) {
  fields_.emplace_back(field, value);
}

}  // namespace kestrelon
