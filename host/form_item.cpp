#include "host/form_item.h"

#include "host/container_window.h"
#include "host/form.h"

namespace kestrelon::host {

FormItem::FormItem(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds)
    : bounds_(bounds), form_(&form), container_(&container), name_(std::move(name)) {}

void FormItem::move(const RECT& bounds) {
  if (closed_ || EqualRect(&bounds, &bounds_)) return;
  const ComPtr<FormItem> alive(this);
  if (!window()) container_->invalidate(bounds_);
  bounds_ = bounds;
  place();
  if (closed_) return;
  if (!window()) container_->invalidate(bounds_);
  container_->update_tip(*this);
}

void FormItem::set_visible(bool visible) {
  if (closed_ || visible == visible_) return;
  visible_ = visible;
  show(visible);
  if (!closed_ && !window()) container_->invalidate(bounds_);
}

void FormItem::set_align(Align align) {
  align_ = align;
  if (!closed_) container_->align_items();
}

void FormItem::set_container(ContainerWindow& container) {
  if (closed_ || &container == container_) return;
  const ComPtr<FormItem> alive(this);
  leave_container();
  container_->remove_item(*this);
  container_ = &container;
  container_->add_item(*this);
  enter_container();
}

void FormItem::set_tool_tip(const std::wstring& text) {
  tool_tip_ = text;
  if (!closed_) container_->update_tip(*this);
}

void FormItem::close() {
  if (closed_) return;
  const ComPtr<FormItem> alive(this);
  closed_ = true;
  on_close();
  container_->remove_item(*this);
}

}  // namespace kestrelon::host
