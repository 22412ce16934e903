#include "host/controls_collection.h"

#include "host/form.h"
#include "host/list_enumerator.h"

namespace kestrelon::host {

ControlsCollection::ControlsCollection(FormObject& form) : LateBound(L"Controls"), object_(&form) {
  property(L"Count",
           [this] { return Variant(static_cast<long>(this->form().all_items().size())); });
  method(
      L"Item",
      [this](const Arguments& arguments) { return Variant(item(arguments.raw(0)).dispatch()); },
      DISPID_VALUE);
  method(
      L"_NewEnum", [this](const Arguments&) { return enumerate(); }, DISPID_NEWENUM);
  method(L"Add", [this](const Arguments& arguments) { return add(arguments); });
  action(L"Remove",
         [this](const Arguments& arguments) { this->form().remove(item(arguments.raw(0))); });
}

Form& ControlsCollection::form() const {
  if (Form* form = object_->form()) return *form;
  throw ComError(numbered_error(398), L"Client site not available");
}

FormItem& ControlsCollection::item(const VARIANT& key) const {
  const Variant plain = plain_value(key);
  if (plain.vt == VT_BSTR) {
    const std::wstring name = to_wstring(plain.bstrVal);
    if (FormItem* found = form().find(name)) return *found;
    throw ComError(numbered_error(730), L"Control '" + name + L"' not found");
  }
  if (plain.vt == VT_DISPATCH || plain.vt == VT_UNKNOWN) {
    const ComPtr<IDispatch> object = to_object(plain);
    for (const auto& candidate : form().all_items())
      if (candidate->dispatch() == object.get()) return *candidate.get();
    throw ComError(numbered_error(730), L"Control not found");
  }
  const long index = to_long(plain);
  const auto& items = form().all_items();
  if (index < 0 || static_cast<size_t>(index) >= items.size())
    throw ComError(numbered_error(9), L"Subscript out of range");
  return *items[static_cast<size_t>(index)].get();
}

Variant ControlsCollection::add(const Arguments& arguments) {
  // A new item starts small and hidden; code places and shows it.
  constexpr RECT kStart = {0, 0, 80, 30};
  const std::wstring prog_id = arguments.text(0);
  const std::wstring name = arguments.text(1);
  const ComPtr<IDispatch> container = arguments.has(2) ? arguments.object(2) : nullptr;
  ContainerWindow* box = container ? &form().box_of(container.get()) : nullptr;
  if (lower_case(prog_id) == L"vb.frame") {
    const auto frame = form().add_frame(name, kStart, box);
    frame->set_visible(false);
    return Variant(frame->dispatch());
  }
  ControlState state;
  state.hidden = true;
  return Variant(form().add_control(prog_id, name, kStart, box, state)->dispatch());
}

Variant ControlsCollection::enumerate() const {
  std::vector<Variant> items;
  for (const auto& item : form().all_items()) items.emplace_back(item->dispatch());
  const auto enumerator =
      make_com<ListEnumerator<IEnumVARIANT, VARIANT, Variant>>(std::move(items));
  return Variant(static_cast<IUnknown*>(enumerator.get()));
}

}  // namespace kestrelon::host
