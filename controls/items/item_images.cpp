#include "controls/items/item_images.h"

#include <algorithm>

#include "imaging/image_list/image_list_entry_win.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

constexpr size_t kMostKept = 512;  // images

// The control of a name on the form that an extender belongs to; empty if there is none.
ComPtr<IDispatch> control_on_form(IDispatch* extender, const std::wstring& name) {
  if (extender == nullptr) return {};
  try {
    LateObject controls =
        LateObject(ComPtr<IDispatch>(extender)).get_object(L"Parent").get_object(L"Controls");
    return ComPtr<IDispatch>(
        object_of(controls.call(DISPID{DISPID_VALUE}, {Variant(std::wstring_view(name))})).get());
  } catch (const ComError&) {  // a container without such members has no images for us
  }
  return {};
}

}  // namespace

STDMETHODIMP ItemImages::Listener::OnChanged(DISPID) {
  if (images_ == nullptr) return S_OK;
  const std::function<void()> changed = images_->changed_;
  images_->forget();
  changed();
  return S_OK;
}

ItemImages::~ItemImages() {
  stop_listening();
}

int32_t ItemImages::number(const VARIANT& image) {
  const VARIANT* value = &image;
  while (V_VT(value) == (VT_VARIANT | VT_BYREF)) value = V_VARIANTREF(value);
  if (V_VT(value) == VT_ERROR || V_VT(value) == VT_EMPTY || V_VT(value) == VT_NULL) return 0;
  Variant copy;
  if (V_VT(value) != VT_BSTR) {
    if (FAILED(VariantChangeType(&copy, const_cast<VARIANT*>(value), 0, VT_I4))) return 0;
    return std::max<int32_t>(static_cast<int32_t>(V_I4(&copy)), 0);
  }
  const std::wstring key = to_wstring(V_BSTR(value));
  if (key.empty()) return 0;
  const auto known = std::find(keys_.begin(), keys_.end(), key);
  if (known != keys_.end()) return -static_cast<int32_t>(known - keys_.begin()) - 1;
  keys_.push_back(key);
  return -static_cast<int32_t>(keys_.size());
}

Variant ItemImages::value(int32_t number) const {
  if (number >= 0) return Variant(static_cast<long>(number));
  const auto at = static_cast<size_t>(-(number + 1));
  return at < keys_.size() ? Variant(std::wstring_view(keys_[at])) : Variant(0L);
}

void ItemImages::set_key(const std::wstring& key) {
  list_key_ = key;
  forget();
}

void ItemImages::set_object(ComPtr<IDispatch> object) {
  stop_listening();
  object_ = std::move(object);
  source_.reset();
  looked_ = false;
  forget();
  if (object_) use_source(object_.get());
}

void ItemImages::set_form_source(std::wstring name) {
  name_ = std::move(name);
  if (!object_) set_object({});
}

void ItemImages::forget() {
  kept_.clear();
}

void ItemImages::use_source(IDispatch* source) {
  source_ = ComPtr<IDispatch>(source);
  looked_ = true;
  const auto container = query<IConnectionPointContainer>(source);
  if (!container || FAILED(container->FindConnectionPoint(IID_IPropertyNotifySink, point_.put())))
    return;
  listener_ = ComPtr<Listener>(new Listener(this));
  if (FAILED(point_->Advise(listener_.get(), &cookie_))) point_.reset();
}

void ItemImages::stop_listening() {
  if (listener_) listener_->detach();
  if (point_) point_->Unadvise(cookie_);
  point_.reset();
  listener_.reset();
}

void ItemImages::look_for_source(IDispatch* extender) {
  if (looked_ || name_.empty()) return;
  looked_ = true;
  const ComPtr<IDispatch> found = control_on_form(extender, name_);
  if (found) use_source(found.get());
}

const c32bppDIB* ItemImages::find(int32_t number, IDispatch* extender) {
  if (number == 0) return nullptr;
  look_for_source(extender);
  if (!source_) return nullptr;
  if (const auto kept = kept_.find(number); kept != kept_.end()) return kept->second.get();
  if (kept_.size() >= kMostKept) kept_.clear();
  auto image = std::make_unique<WindowsImage>();
  const Variant list{std::wstring_view(list_key_)}, which = value(number);
  if (!copy_image_list_entry(source_.get(), list, which, *image)) image.reset();
  return (kept_[number] = std::move(image)).get();
}

SIZE ItemImages::size(IDispatch* extender) {
  const c32bppDIB* const first = has_source() ? find(1, extender) : nullptr;
  return first == nullptr ? SIZE{} : SIZE{first->Width(), first->Height()};
}

}  // namespace kestrelon
