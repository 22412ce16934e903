// Small owners for COM things: pointers, strings, variants, and the one funnel for errors.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace kestrelon {

/// Owns one reference to a COM object.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}  // NOLINT: as a raw pointer converts
  /// Takes a reference of its own.
  explicit ComPtr(T* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~ComPtr() { reset(); }
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Releases. The pointer is empty before the object hears of it, so re-entry sees it gone.
  void reset() {
    if (T* old = std::exchange(object_, nullptr)) old->Release();
  }
  /// For output arguments: releases, then gives the place to fill.
  T** put() {
    reset();
    return &object_;
  }
  void** put_void() { return reinterpret_cast<void**>(put()); }
  /// Takes over a reference the caller owned.
  void attach(T* object) {
    reset();
    object_ = object;
  }
  T* detach() { return std::exchange(object_, nullptr); }
  /// A reference for a caller: the usual end of a getter.
  HRESULT copy_to(T** out) const {
    if (out == nullptr) return E_POINTER;
    if (object_ != nullptr) object_->AddRef();
    *out = object_;
    return S_OK;
  }
  /// Another interface of the same object, or empty.
  template <class U>
  ComPtr<U> as() const {
    ComPtr<U> other;
    if (object_ != nullptr) object_->QueryInterface(__uuidof(U), other.put_void());
    return other;
  }

 private:
  T* object_ = nullptr;
};

template <class U, class T>
ComPtr<U> query(T* object) {
  ComPtr<U> out;
  if (object != nullptr) object->QueryInterface(__uuidof(U), out.put_void());
  return out;
}

/// Owns a BSTR.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(std::wstring_view text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
  }
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr(const Bstr&) = delete;
  Bstr& operator=(Bstr other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }
  BSTR get() const { return text_; }
  BSTR* put() {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  BSTR detach() { return std::exchange(text_, nullptr); }
  std::wstring_view view() const {
    return text_ == nullptr ? std::wstring_view() : std::wstring_view(text_, SysStringLen(text_));
  }

 private:
  BSTR text_ = nullptr;
};

/// The text of a BSTR, null meaning empty; embedded zeros are kept.
inline std::wstring to_wstring(BSTR text) {
  return text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
}

/// A VARIANT that clears itself.
class Variant : public VARIANT {
 public:
  Variant() { VariantInit(this); }
  Variant(const Variant& other) : Variant() { VariantCopy(this, const_cast<Variant*>(&other)); }
  Variant(Variant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
  Variant& operator=(Variant other) noexcept {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
    return *this;
  }
  ~Variant() { VariantClear(this); }

  explicit Variant(std::wstring_view text) : Variant() {
    V_BSTR(this) = Bstr(text).detach();
    V_VT(this) = VT_BSTR;
  }
  explicit Variant(const wchar_t* text) : Variant(std::wstring_view(text)) {}
  explicit Variant(bool value) : Variant() {
    V_VT(this) = VT_BOOL;
    V_BOOL(this) = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  explicit Variant(short value) : Variant() {
    V_VT(this) = VT_I2;
    V_I2(this) = value;
  }
  explicit Variant(long value) : Variant() {
    V_VT(this) = VT_I4;
    V_I4(this) = value;
  }
  explicit Variant(float value) : Variant() {
    V_VT(this) = VT_R4;
    V_R4(this) = value;
  }
  explicit Variant(double value) : Variant() {
    V_VT(this) = VT_R8;
    V_R8(this) = value;
  }
  explicit Variant(IDispatch* object) : Variant() {
    V_VT(this) = VT_DISPATCH;
    V_DISPATCH(this) = object;
    if (object != nullptr) object->AddRef();
  }
  explicit Variant(IUnknown* object) : Variant() {
    V_VT(this) = VT_UNKNOWN;
    V_UNKNOWN(this) = object;
    if (object != nullptr) object->AddRef();
  }

  /// Converts in place by the system's automation rules.
  bool change(VARTYPE type) { return SUCCEEDED(VariantChangeType(this, this, 0, type)); }
  VARIANT* put() {
    VariantClear(this);
    return this;
  }
};

/// An automation error on its way to the caller: becomes EXCEPINFO or Err.Number, .Description,
/// .Source.
struct ComError : std::exception {
  explicit ComError(HRESULT code, std::wstring text = {}, std::wstring from = {})
      : hr(code), description(std::move(text)), source(std::move(from)) {}
  const char* what() const noexcept override { return "automation error"; }

  HRESULT hr;
  std::wstring description;
  std::wstring source;
};

/// The code under which a script sees error `number` (1 to 65535) in Err.Number.
constexpr HRESULT numbered_error(int number) {
  return static_cast<HRESULT>(0x800A0000u | static_cast<unsigned>(number));
}

/// Makes `error` the thread's error object, as callers of a dual interface expect.
void publish_error(const ComError& error, const IID& iid) noexcept;

/// Runs `body` and turns whatever leaves it into an HRESULT; no exception may cross a COM method or
/// a window procedure, where it would end the process.
template <class Body>
HRESULT guarded(const IID& iid, Body&& body) noexcept {
  try {
    if constexpr (std::is_same_v<decltype(body()), HRESULT>) {
      return body();
    } else {
      body();
      return S_OK;
    }
  } catch (const ComError& error) {
    publish_error(error, iid);
    return error.hr;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

}  // namespace kestrelon
