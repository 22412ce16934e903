// Saved properties of a control: in memory in the order of their writing, and as a text file.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/com_object.h"

namespace kestrelon::host {

struct BagEntry;
using BagEntries = std::vector<BagEntry>;

/// One saved value. Objects are taken apart when they are written, so that a later change of the
/// object does not change the bag.
struct BagValue {
  enum class Kind {
    kPlain,         // a number, text, Boolean, Nothing, or a byte array (VT_ARRAY | VT_UI1)
    kFont,          // `nested` holds its members
    kObjectBag,     // an object of class `clsid` that saved itself to `nested`
    kObjectStream,  // an object of class `clsid` that saved itself to `bytes`
  };
  Kind kind = Kind::kPlain;
  Variant plain;
  CLSID clsid = {};
  BagEntries nested;
  std::vector<uint8_t> bytes;
};

struct BagEntry {
  std::wstring name;
  BagValue value;
};

/// Keys are found without case. A key that is written again keeps its place.
class PropertyBag final : public ComObject<IPropertyBag> {
 public:
  explicit PropertyBag(BagEntries entries = {}) : entries_(std::move(entries)) {}

  const BagEntries& entries() const { return entries_; }
  std::vector<std::wstring> keys() const;
  /// Puts a plain value without going through COM.
  void set(const std::wstring& name, Variant value);

  /// E_INVALIDARG for a key that is not there, which is how a control learns to take its default.
  /// The value comes in the type that `value` has on entry, or as it was saved when that is
  /// VT_EMPTY.
  HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) override;
  HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;

 private:
  BagEntry* find(std::wstring_view name);

  BagEntries entries_;
};

/// Collects what a control reports while it loads, one line an error: `Name: text`.
class ErrorLog final : public ComObject<IErrorLog> {
 public:
  const std::vector<std::wstring>& lines() const { return lines_; }
  HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR name, EXCEPINFO* error) override;

 private:
  std::vector<std::wstring> lines_;
};

/// What a control writes when it is saved; throws ComError with its failure. Keys equal to their
/// defaults are left out by the control itself.
ComPtr<PropertyBag> save_properties(IUnknown* control, bool clear_dirty = true);

/// A saved object from its parts, and back. Throw ComError when the object cannot be saved or made.
BagValue take_object(IUnknown* object, int depth = 0);
ComPtr<IUnknown> make_object(const BagValue& value);

}  // namespace kestrelon::host
