// The pictures of buttons: a program's own, those of an image list, those of a bound array.
#include "chrome/us_ribbon/us_ribbon.h"
#include "imaging/c32bpp_dib/native_image_win.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

// The name a form knows a control by; empty where it has none.
std::wstring name_on_form(IDispatch* object) {
  try {
    Variant name = LateObject(ComPtr<IDispatch>(object)).get_property(L"Name");
    return name.change(VT_BSTR) ? to_wstring(V_BSTR(&name)) : std::wstring();
  } catch (const ComError&) {
    return {};
  }
}

std::unique_ptr<WindowsImage> load(IUnknown* object) {
  auto image = std::make_unique<WindowsImage>();
  if (const auto native = native_image_of(object)) {
    if (!native->native_image().CopyImageTo(*image)) image.reset();
  } else if (!load_std_picture(*image, object)) {
    image.reset();
  }
  return image;
}

// The one-dimensional array in a variant, by reference or not; null for anything else.
SAFEARRAY* array_of(VARIANT* value) {
  while (value != nullptr && V_VT(value) == (VT_VARIANT | VT_BYREF)) value = V_VARIANTREF(value);
  if (value == nullptr || (V_VT(value) & VT_ARRAY) == 0) return nullptr;
  SAFEARRAY* const out = (V_VT(value) & VT_BYREF) != 0 ? *V_ARRAYREF(value) : V_ARRAY(value);
  return out != nullptr && SafeArrayGetDim(out) == 1 ? out : nullptr;
}

// An element that is an object; empty for any other.
ComPtr<IUnknown> object_at(SAFEARRAY* array, LONG index) {
  VARTYPE type = VT_EMPTY;
  SafeArrayGetVartype(array, &type);
  ComPtr<IUnknown> out;
  if (type == VT_DISPATCH || type == VT_UNKNOWN) {
    SafeArrayGetElement(array, &index, out.put_void());
  } else if (type == VT_VARIANT) {
    Variant element;
    if (SUCCEEDED(SafeArrayGetElement(array, &index, &element)) &&
        (V_VT(&element) == VT_DISPATCH || V_VT(&element) == VT_UNKNOWN))
      out = ComPtr<IUnknown>(V_UNKNOWN(&element));
  }
  return out;
}

}  // namespace

ComPtr<IDispatch> USRibbon::image_list() {
  return images_.source(extender().get());
}

void USRibbon::set_image_list(IDispatch* list) {
  images_.set_object(ComPtr<IDispatch>(list));
  const std::wstring name = list != nullptr ? name_on_form(list) : std::wstring();
  if (list == nullptr) images_.set_form_source({});
  ImageListName.put(name);
  draw();
}

void USRibbon::images_changed() {
  images_.set_key(ImageListKey.get());
  draw();
}

const c32bppDIB* USRibbon::own_picture(std::map<int, std::unique_ptr<WindowsImage>>& kept,
                                       int entry, const ComPtr<IDispatch>& object) {
  const auto known = kept.find(entry);
  if (known != kept.end()) return known->second.get();
  return (kept[entry] = load(object.get())).get();
}

const c32bppDIB* USRibbon::list_picture(int position) {
  return position > 0 ? images_.find(position, extender().get()) : nullptr;
}

const c32bppDIB* USRibbon::button_picture(int entry) {
  const auto place = static_cast<size_t>(entry);
  if (place < button_objects_.size() && button_objects_[place])
    return own_picture(button_images_, entry, button_objects_[place]);
  const ribbon::Button& button = model_.buttons()[place];
  if (const c32bppDIB* const listed = list_picture(model_.state_of(button).image)) return listed;
  const auto bound = bound_.find(button.index);
  if (bound == bound_.end()) return nullptr;
  const auto known = bound_images_.find(button.index);
  if (known != bound_images_.end()) return known->second.get();
  return (bound_images_[button.index] = load(bound->second.get())).get();
}

const c32bppDIB* USRibbon::tab_button_picture(int entry) {
  const auto place = static_cast<size_t>(entry);
  if (place < tab_button_objects_.size() && tab_button_objects_[place])
    return own_picture(tab_button_images_, entry, tab_button_objects_[place]);
  return list_picture(model_.tab_button_image(model_.tab_buttons()[place]));
}

// An element serves the button of its subscript.
void USRibbon::bind_picture_array(VARIANT* pictures) {
  SAFEARRAY* const array = array_of(pictures);
  LONG low = 0, high = -1;
  if (array == nullptr || FAILED(SafeArrayGetLBound(array, 1, &low)) ||
      FAILED(SafeArrayGetUBound(array, 1, &high)))
    return;
  bound_.clear();
  bound_images_.clear();
  const LONG last = std::min<LONG>(high, ribbon::Model::kFullLimit - 1);
  for (LONG i = std::max<LONG>(low, 0); i <= last; ++i)
    if (const ComPtr<IUnknown> object = object_at(array, i)) bound_[static_cast<int>(i)] = object;
  draw();
}

void USRibbon::remove_picture_array(VARIANT*) {
  bound_.clear();
  bound_images_.clear();
  draw();
}

}  // namespace kestrelon
