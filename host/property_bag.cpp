#include "host/property_bag.h"

#include <olectl.h>

#include <algorithm>

#include "host/late_bound.h"
#include "host/persistence.h"

namespace kestrelon::host {
namespace {

// Objects that hold objects: deeper than any real nesting, shallow enough for the stack.
constexpr int kMaxDepth = 16;

BagValue plain(Variant value) {
  BagValue out;
  out.plain = std::move(value);
  return out;
}

BagValue take_font(IFont* font) {
  BagValue out;
  out.kind = BagValue::Kind::kFont;
  Bstr name;
  CY size = {};
  short weight = FW_NORMAL;
  short charset = DEFAULT_CHARSET;
  BOOL italic = FALSE;
  BOOL underline = FALSE;
  BOOL strike = FALSE;
  font->get_Name(name.put());
  font->get_Size(&size);
  font->get_Weight(&weight);
  font->get_Charset(&charset);
  font->get_Italic(&italic);
  font->get_Underline(&underline);
  font->get_Strikethrough(&strike);
  Variant points;
  points.vt = VT_CY;
  points.cyVal = size;
  out.nested.push_back({L"Name", plain(Variant(name.view()))});
  out.nested.push_back({L"Size", plain(std::move(points))});
  out.nested.push_back({L"Charset", plain(Variant(charset))});
  out.nested.push_back({L"Weight", plain(Variant(weight))});
  out.nested.push_back({L"Underline", plain(Variant(underline != FALSE))});
  out.nested.push_back({L"Italic", plain(Variant(italic != FALSE))});
  out.nested.push_back({L"Strikethrough", plain(Variant(strike != FALSE))});
  return out;
}

ComPtr<IUnknown> make_saved_font(const BagEntries& members) {
  const auto member = [&](const wchar_t* name, Variant fallback) {
    for (const BagEntry& entry : members)
      if (entry.name == name && entry.value.kind == BagValue::Kind::kPlain)
        return entry.value.plain;
    return fallback;
  };
  std::wstring name = to_text(member(L"Name", Variant(L"Tahoma")));
  Variant size;
  if (!convert_value(member(L"Size", Variant(8.25)), VT_CY, size))
    throw ComError(numbered_error(kTypeMismatch), L"Type mismatch");
  FONTDESC desc = {};
  desc.cbSizeofstruct = sizeof desc;
  desc.lpstrName = name.data();
  desc.cySize = size.cyVal;
  desc.sCharset = static_cast<SHORT>(to_long(member(L"Charset", Variant(1L))));
  desc.sWeight = static_cast<SHORT>(to_long(member(L"Weight", Variant(400L))));
  desc.fUnderline = to_bool(member(L"Underline", Variant(false)));
  desc.fItalic = to_bool(member(L"Italic", Variant(false)));
  desc.fStrikethrough = to_bool(member(L"Strikethrough", Variant(false)));
  ComPtr<IUnknown> font;
  const HRESULT hr = OleCreateFontIndirect(&desc, __uuidof(IFontDisp), font.put_void());
  if (FAILED(hr)) throw ComError(hr, L"The font could not be made");
  return font;
}

// A new, empty object of a saved class. Pictures are made directly: their class has no server of
// its own everywhere.
ComPtr<IUnknown> create_saved(const CLSID& clsid) {
  ComPtr<IUnknown> object;
  HRESULT hr = E_FAIL;
  if (IsEqualCLSID(clsid, CLSID_StdPicture)) {
    hr = OleCreatePictureIndirect(nullptr, __uuidof(IPicture), TRUE, object.put_void());
  } else {
    hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.put_void());
  }
  if (FAILED(hr)) throw ComError(hr, L"The class of a saved object is not there");
  return object;
}

}  // namespace

BagValue take_object(IUnknown* object, int depth) {
  if (!object) return plain(Variant(static_cast<IDispatch*>(nullptr)));
  if (depth >= kMaxDepth) throw ComError(E_INVALIDARG, L"Objects are nested too deeply");
  if (const auto font = kestrelon::query<IFont>(object)) return take_font(font.get());
  BagValue out;
  if (const auto bagged = kestrelon::query<IPersistPropertyBag>(object);
      bagged && SUCCEEDED(bagged->GetClassID(&out.clsid))) {
    const auto bag = make_com<PropertyBag>();
    if (SUCCEEDED(bagged->Save(bag.get(), TRUE, TRUE))) {
      out.kind = BagValue::Kind::kObjectBag;
      out.nested = bag->entries();
      return out;
    }
  }
  const auto streamed = kestrelon::query<IPersistStream>(object);
  if (!streamed || FAILED(streamed->GetClassID(&out.clsid)))
    throw ComError(E_NOINTERFACE, L"The object cannot be saved");
  out.kind = BagValue::Kind::kObjectStream;
  out.bytes = save_bytes([&](IStream* stream) { return streamed->Save(stream, TRUE); });
  return out;
}

ComPtr<IUnknown> make_object(const BagValue& value) {
  if (value.kind == BagValue::Kind::kFont) return make_saved_font(value.nested);
  ComPtr<IUnknown> object = create_saved(value.clsid);
  HRESULT hr = E_NOINTERFACE;
  if (value.kind == BagValue::Kind::kObjectBag) {
    const auto bag = make_com<PropertyBag>(value.nested);
    if (const auto bagged = object.as<IPersistPropertyBag>()) hr = bagged->Load(bag.get(), nullptr);
  } else if (value.kind == BagValue::Kind::kObjectStream) {
    const ComPtr<IStream> stream = stream_over(value.bytes);
    if (const auto streamed = object.as<IPersistStream>()) hr = streamed->Load(stream.get());
  }
  if (FAILED(hr)) throw ComError(hr, L"A saved object could not be read");
  return object;
}

BagEntry* PropertyBag::find(std::wstring_view name) {
  const std::wstring wanted = lower_case(name);
  const auto at = std::find_if(entries_.begin(), entries_.end(), [&](const BagEntry& entry) {
    return lower_case(entry.name) == wanted;
  });
  return at == entries_.end() ? nullptr : &*at;
}

std::vector<std::wstring> PropertyBag::keys() const {
  std::vector<std::wstring> out;
  for (const BagEntry& entry : entries_) out.push_back(entry.name);
  return out;
}

void PropertyBag::set(const std::wstring& name, Variant value) {
  if (BagEntry* entry = find(name))
    entry->value = plain(std::move(value));
  else
    entries_.push_back({name, plain(std::move(value))});
}

HRESULT PropertyBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) {
  if (!name || !value) return E_POINTER;
  const VARTYPE wanted = value->vt;
  const auto report = [&](HRESULT hr, const std::wstring& text) {
    if (errors) {
      EXCEPINFO info = {};
      info.scode = hr;
      info.bstrDescription = SysAllocString(text.c_str());
      errors->AddError(name, &info);
      SysFreeString(info.bstrDescription);
    }
    return hr;
  };
  try {
    const BagEntry* entry = find(name);
    if (!entry) return E_INVALIDARG;
    Variant out;
    if (entry->value.kind != BagValue::Kind::kPlain) {
      const ComPtr<IUnknown> object = make_object(entry->value);
      const ComPtr<IDispatch> dispatch = object.as<IDispatch>();
      out = dispatch && wanted != VT_UNKNOWN ? Variant(dispatch.get()) : Variant(object.get());
    } else {
      out = entry->value.plain;
      const bool as_saved = wanted == VT_EMPTY || wanted == VT_NULL || wanted == VT_VARIANT ||
                            wanted == out.vt || out.vt == VT_DISPATCH;
      if (!as_saved && !convert_value(entry->value.plain, wanted, out))
        return report(DISP_E_TYPEMISMATCH, L"The saved value is of another type");
    }
    VariantClear(value);
    *value = out;
    VariantInit(&out);
    return S_OK;
  } catch (const ComError& error) {
    return report(error.hr, error.description);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

HRESULT PropertyBag::Write(LPCOLESTR name, VARIANT* value) {
  if (!name || !value) return E_POINTER;
  try {
    const Variant direct = plain_value(*value);
    BagValue taken;
    if (direct.vt == VT_DISPATCH || direct.vt == VT_UNKNOWN)
      taken = take_object(direct.punkVal);
    else
      taken = plain(direct);
    if (BagEntry* entry = find(name))
      entry->value = std::move(taken);
    else
      entries_.push_back({name, std::move(taken)});
    return S_OK;
  } catch (const ComError& error) {
    return error.hr;
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

HRESULT ErrorLog::AddError(LPCOLESTR name, EXCEPINFO* error) {
  std::wstring line = name ? name : L"";
  if (error && error->bstrDescription) line += L": " + to_wstring(error->bstrDescription);
  lines_.push_back(std::move(line));
  return S_OK;
}

ComPtr<PropertyBag> save_properties(IUnknown* control, bool clear_dirty) {
  const auto persist = kestrelon::query<IPersistPropertyBag>(control);
  if (!persist) throw ComError(E_NOINTERFACE, L"The control saves no property bag");
  auto bag = make_com<PropertyBag>();
  const HRESULT hr = persist->Save(bag.get(), clear_dirty, TRUE);
  if (FAILED(hr)) throw ComError(hr, L"The control could not be saved");
  return bag;
}

}  // namespace kestrelon::host
