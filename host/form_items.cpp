// What stands on the form: adding, removing, finding, and which item is active.
#include <algorithm>

#include "host/form.h"
#include "host/in_place_frame.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

ComPtr<IUnknown> create_registered(const std::wstring& prog_id) {
  CLSID clsid;
  ComPtr<IUnknown> object;
  if (FAILED(CLSIDFromProgID(prog_id.c_str(), &clsid)) ||
      FAILED(
          CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.put_void())))
    throw ComError(numbered_error(429), L"ActiveX component can't create object");
  return object;
}

}  // namespace

std::wstring Form::free_name(const std::wstring& wanted, const std::wstring& kind) const {
  if (!wanted.empty()) {
    if (find(wanted))
      throw ComError(numbered_error(727), L"There is already a control with the name");
    return wanted;
  }
  // The lowest number that no item has, found in one pass: forms hold hundreds of items.
  std::vector<bool> taken(all_.size() + 2);
  for (const auto& item : all_) {
    const std::wstring& name = item->name();
    if (name.size() <= kind.size() || _wcsnicmp(name.c_str(), kind.c_str(), kind.size()) != 0)
      continue;
    wchar_t* end = nullptr;
    const unsigned long number = wcstoul(name.c_str() + kind.size(), &end, 10);
    if (*end == L'\0' && number < taken.size()) taken[number] = true;
  }
  size_t number = 1;
  while (taken[number]) ++number;
  return kind + std::to_wstring(number);
}

ComPtr<ControlSite> Form::add_control(const std::wstring& prog_id, const std::wstring& name,
                                      const RECT& bounds, ContainerWindow* box,
                                      const ControlState& state) {
  ComPtr<IUnknown> control = create_object ? create_object(prog_id) : create_registered(prog_id);
  if (!control) throw ComError(numbered_error(429), L"ActiveX component can't create object");
  return add_object(std::move(control), name, bounds, box, state);
}

ComPtr<ControlSite> Form::add_object(ComPtr<IUnknown> control, const std::wstring& name,
                                     const RECT& bounds, ContainerWindow* box,
                                     const ControlState& state) {
  const std::wstring kind = type_name_of(class_info_of(control.get()).get());
  const auto site =
      make_com<ControlSite>(*this, box ? *box : *this,
                            free_name(name, kind.empty() ? L"Control" : kind), bounds, control);
  enlist(*site.get());
  const HRESULT hr = site->open(state);
  if (FAILED(hr)) {
    remove(*site.get());
    throw ComError(hr, L"The control could not be opened");
  }
  return site;
}

ComPtr<FrameBox> Form::add_frame(const std::wstring& name, const RECT& bounds,
                                 ContainerWindow* box) {
  const auto frame =
      make_com<FrameBox>(*this, box ? *box : *this, free_name(name, L"Frame"), bounds);
  enlist(*frame.get());
  return frame;
}

ComPtr<DrawnItem> Form::add_drawing(const RECT& bounds, DrawnItem::Painter painter,
                                    ContainerWindow* box) {
  const auto drawing = make_com<DrawnItem>(*this, box ? *box : *this, free_name(L"", L"Drawing"),
                                           bounds, std::move(painter));
  enlist(*drawing.get());
  return drawing;
}

void Form::enlist(FormItem& item) {
  all_.emplace_back(&item);
  tab_order_.push_back(&item);
  item.container().add_item(item);
}

void Form::delist(FormItem& item) {
  tab_order_.erase(std::remove(tab_order_.begin(), tab_order_.end(), &item), tab_order_.end());
  const auto at = std::find_if(all_.begin(), all_.end(),
                               [&](const auto& entry) { return entry.get() == &item; });
  if (at != all_.end()) all_.erase(at);
}

void Form::remove(FormItem& item) {
  const ComPtr<FormItem> alive(&item);
  delist(item);
  item.close();
}

void Form::remove_items_of(ContainerWindow& box) {
  while (!box.items().empty()) remove(*box.items().front());
}

void Form::close_all() {
  while (!all_.empty()) remove(*ComPtr<FormItem>(all_.back()).get());
}

FormItem* Form::find(const std::wstring& name) const {
  const std::wstring wanted = lower_case(name);
  for (const auto& item : all_)
    if (lower_case(item->name()) == wanted) return item.get();
  return nullptr;
}

std::vector<ComPtr<ControlSite>> Form::sites() const {
  std::vector<ComPtr<ControlSite>> out;
  for (const auto& item : all_)
    if (auto* site = dynamic_cast<ControlSite*>(item.get())) out.emplace_back(site);
  return out;
}

ContainerWindow& Form::box_of(IDispatch* container) {
  if (container == dispatch()) return *this;
  for (const auto& item : all_)
    if (item->dispatch() == container && item->box()) return *item->box();
  throw ComError(numbered_error(380), L"Invalid property value");
}

size_t Form::tab_index(const FormItem& item) const {
  return static_cast<size_t>(std::find(tab_order_.begin(), tab_order_.end(), &item) -
                             tab_order_.begin());
}

void Form::set_tab_index(FormItem& item, long index) {
  if (index < 0) throw ComError(numbered_error(380), L"Invalid property value");
  tab_order_.erase(std::remove(tab_order_.begin(), tab_order_.end(), &item), tab_order_.end());
  const long last = static_cast<long>(tab_order_.size());
  tab_order_.insert(tab_order_.begin() + std::min(index, last), &item);
}

void Form::set_default(FormItem& item, bool wanted) {
  if (wanted)
    for (const auto& other : all_) other->is_default = false;
  item.is_default = wanted;
  update_default();
}

void Form::set_cancel(FormItem& item, bool wanted) {
  if (wanted)
    for (const auto& other : all_) other->is_cancel = false;
  item.is_cancel = wanted;
}

// A button that has the focus is the default for that time; otherwise the one named so.
void Form::update_default() {
  ControlSite* wanted = dynamic_cast<ControlSite*>(active_);
  if (!wanted || !(wanted->misc_status() & OLEMISC_ACTSLIKEBUTTON)) {
    wanted = nullptr;
    for (const auto& item : all_)
      if (item->is_default) wanted = dynamic_cast<ControlSite*>(item.get());
  }
  if (wanted == shown_default_) return;
  ControlSite* before = std::exchange(shown_default_, wanted);
  if (before) before->set_display_as_default(false);
  if (shown_default_) shown_default_->set_display_as_default(true);
}

ComPtr<IOleInPlaceFrame> Form::in_place_frame() {
  return frame_;
}
void Form::set_active_object(IOleInPlaceActiveObject* object) {
  active_object_ = ComPtr<IOleInPlaceActiveObject>(object);
}

void Form::item_ui_activated(ControlSite& site) {
  if (active_ == &site) return;
  FormItem* before = std::exchange(active_, &site);
  if (auto* previous = dynamic_cast<ControlSite*>(before)) previous->ui_deactivate();
  update_default();
}

void Form::item_focus_changed(ControlSite& site, bool got_focus) {
  if (got_focus && active_ != &site) item_ui_activated(site);
}

void Form::item_left(ControlSite& site) {
  if (shown_default_ == &site && site.closed()) shown_default_ = nullptr;
  if (active_ != &site) return;
  active_ = nullptr;
  active_object_.reset();
  if (!site.closed()) update_default();
}

}  // namespace kestrelon::host
