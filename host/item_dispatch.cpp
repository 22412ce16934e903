#include "host/item_dispatch.h"

#include <algorithm>

#include "host/container_window.h"
#include "host/form.h"

namespace kestrelon::host {
namespace {

int pixels_of(const VARIANT& value, const FormItem& item, Axis axis) {
  return to_pixels(to_double(value), item.container().scale_mode(), axis);
}

}  // namespace

ItemDispatch::ItemDispatch(FormItem& item, std::wstring type_name)
    : LateBound(std::move(type_name)), item_(&item) {
  add_place();
  add_identity();
  add_behaviour();
}

void ItemDispatch::before_call() {
  if (!item_ || item_->closed()) throw ComError(numbered_error(398), L"Client site not available");
}

void ItemDispatch::add_side(const wchar_t* name, LONG RECT::*side, Axis axis) {
  property(
      name,
      [this, side, axis] {
        return Variant(static_cast<float>(
            from_pixels(item().bounds().*side, item().container().scale_mode(), axis)));
      },
      [this, side, axis](const VARIANT& value) {
        RECT place = item().bounds();
        const int by = pixels_of(value, item(), axis) - place.*side;
        OffsetRect(&place, axis == Axis::kX ? by : 0, axis == Axis::kY ? by : 0);
        item().move(place);
      });
}

void ItemDispatch::add_length(const wchar_t* name, LONG RECT::*from, LONG RECT::*to, Axis axis) {
  property(
      name,
      [this, from, to, axis] {
        const RECT& place = item().bounds();
        return Variant(static_cast<float>(
            from_pixels(place.*to - place.*from, item().container().scale_mode(), axis)));
      },
      [this, from, to, axis](const VARIANT& value) {
        RECT place = item().bounds();
        place.*to = place.*from + std::max(0, pixels_of(value, item(), axis));
        item().move(place);
      });
}

void ItemDispatch::add_place() {
  add_side(L"Left", &RECT::left, Axis::kX);
  add_side(L"Top", &RECT::top, Axis::kY);
  add_length(L"Width", &RECT::left, &RECT::right, Axis::kX);
  add_length(L"Height", &RECT::top, &RECT::bottom, Axis::kY);
  property(
      L"Align", [this] { return Variant(static_cast<long>(item().align())); },
      [this](const VARIANT& value) {
        const long align = to_long(value);
        if (align < 0 || align > 4) throw ComError(numbered_error(380), L"Invalid property value");
        item().set_align(static_cast<Align>(align));
      });
  action(L"Move", [this](const Arguments& arguments) {
    const RECT& now = item().bounds();
    const auto length = [&](UINT index, int present, Axis axis) {
      return arguments.has(index) ? pixels_of(arguments.raw(index), item(), axis) : present;
    };
    const int left = length(0, now.left, Axis::kX);
    const int top = length(1, now.top, Axis::kY);
    const int width = std::max(0, length(2, width_of(now), Axis::kX));
    const int height = std::max(0, length(3, height_of(now), Axis::kY));
    item().move(make_rect(left, top, width, height));
  });
  action(L"ZOrder", [this](const Arguments& arguments) {
    const bool to_front = !arguments.has(0) || arguments.integer(0) == 0;
    item().container().order_item(item(), to_front);
  });
}

void ItemDispatch::add_identity() {
  property(L"Name", [this] { return Variant(item().name()); });
  property(
      L"Tag", [this] { return Variant(item().tag); },
      [this](const VARIANT& value) { item().tag = to_text(value); });
  property(L"Parent", [this] { return Variant(item().form().dispatch()); });
  property(
      L"Container", [this] { return Variant(item().container().container_dispatch()); },
      [this](const VARIANT& value) {
        item().set_container(item().form().box_of(to_object(value).get()));
      });
}

void ItemDispatch::add_behaviour() {
  property(
      L"Visible", [this] { return Variant(item().visible()); },
      [this](const VARIANT& value) { item().set_visible(to_bool(value)); });
  property(
      L"TabIndex", [this] { return Variant(static_cast<long>(item().form().tab_index(item()))); },
      [this](const VARIANT& value) { item().form().set_tab_index(item(), to_long(value)); });
  property(
      L"TabStop", [this] { return Variant(item().tab_stop); },
      [this](const VARIANT& value) { item().tab_stop = to_bool(value); });
  property(
      L"ToolTipText", [this] { return Variant(item().tool_tip()); },
      [this](const VARIANT& value) { item().set_tool_tip(to_text(value)); });
  property(
      L"Default", [this] { return Variant(item().is_default); },
      [this](const VARIANT& value) { item().form().set_default(item(), to_bool(value)); });
  property(
      L"Cancel", [this] { return Variant(item().is_cancel); },
      [this](const VARIANT& value) { item().form().set_cancel(item(), to_bool(value)); });
  action(L"SetFocus", [this](const Arguments&) {
    if (!item().visible()) throw ComError(numbered_error(5), L"Invalid procedure call or argument");
    item().take_focus();
  });
}

}  // namespace kestrelon::host
