#include "frame/pages/preview_control.h"

#include <olectl.h>

#include <algorithm>

#include "base/module_win.h"
#include "frame/himetric.h"

namespace kestrelon {
namespace {

// Of this very module, so that a library that is not registered can show previews too.
ComPtr<IUnknown> create(const CLSID& clsid) {
  using GetClassObject = HRESULT WINAPI(REFCLSID, REFIID, void**);
  auto* const get = reinterpret_cast<GetClassObject*>(
      reinterpret_cast<void*>(GetProcAddress(module_instance(), "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  ComPtr<IUnknown> out;
  if (get != nullptr && SUCCEEDED(get(clsid, IID_IClassFactory, factory.put_void())))
    factory->CreateInstance(nullptr, IID_IUnknown, out.put_void());
  return out;
}

}  // namespace

void PreviewControl::copy(IDispatch* original) {
  copy_.reset();
  const auto source = query<IPersistStreamInit>(original);
  CLSID clsid{};
  ComPtr<IStream> stream;
  if (!source || FAILED(source->GetClassID(&clsid)) ||
      FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())))
    return;
  const ComPtr<IUnknown> made = create(clsid);
  const auto target = made.as<IPersistStreamInit>();
  if (!target || FAILED(source->Save(stream.get(), FALSE))) return;
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  target->Load(stream.get());
  SIZEL size{};
  const auto from = query<IOleObject>(original);
  const auto to = made.as<IOleObject>();
  if (from && to && SUCCEEDED(from->GetExtent(DVASPECT_CONTENT, &size)))
    to->SetExtent(DVASPECT_CONTENT, &size);
  copy_ = made.as<IDispatch>();
}

void PreviewControl::draw(HDC dc, const RECT& place) const {
  const auto view = copy_.as<IViewObject>();
  const auto object = copy_.as<IOleObject>();
  SIZEL extent{};
  if (!view || !object || FAILED(object->GetExtent(DVASPECT_CONTENT, &extent))) return;
  const SIZE pixels = to_pixels(extent);
  const LONG width = std::min(pixels.cx, place.right - place.left);
  const LONG height = std::min(pixels.cy, place.bottom - place.top);
  const LONG left = place.left + (place.right - place.left - width) / 2;
  const LONG top = place.top + (place.bottom - place.top - height) / 2;
  const RECTL bounds{left, top, left + width, top + height};
  view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
}

bool get_by_id(IDispatch* object, DISPID id, VARTYPE type, Variant& out) {
  DISPPARAMS none{};
  return SUCCEEDED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                  out.put(), nullptr, nullptr)) &&
         out.change(type);
}

bool put_by_id(IDispatch* object, DISPID id, const Variant& value) {
  Variant argument = value;
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS arguments{&argument, &named, 1, 1};
  return SUCCEEDED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                                  &arguments, nullptr, nullptr, nullptr));
}

DISPID id_of(IDispatch* object, const wchar_t* name) {
  DISPID out = DISPID_UNKNOWN;
  LPOLESTR copy = const_cast<LPOLESTR>(name);
  object->GetIDsOfNames(IID_NULL, &copy, 1, LOCALE_USER_DEFAULT, &out);
  return out;
}

}  // namespace kestrelon
