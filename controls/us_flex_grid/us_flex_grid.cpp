// Life, and what the properties of the looks do.
#include "controls/us_flex_grid/us_flex_grid.h"

#include "controls/us_flex_grid/container_units.h"
#include "frame/kit/theme.h"
#include "frame/task_bar.h"
#include "grid/store/store_check.h"
#include "grid/values/cell_number.h"

namespace kestrelon {
namespace {

ControlTraits grid_traits() {
  ControlTraits traits;
  traits.initial_pixels = {320, 200};
  return traits;
}

LOGFONTW logical_font(HFONT font) {
  LOGFONTW out{};
  GetObjectW(font, sizeof out, &out);
  return out;
}

}  // namespace

USFlexGrid::USFlexGrid()
    : USFlexGridGlue(grid_traits()),
      store_([this](std::wstring_view text) { return cell_number(text, locale_->facts()); }) {
  bars_.set_Orientation(ScrollOrientation::kBoth);
}

void USFlexGrid::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
  FontHeader.set_default(ambient().font().get());
  Font.reset();
  FontHeader.reset();
  const double height = unit_text_height(Font);
  CaptionHeight.set_default(static_cast<float>(2 * height));
  MinRowHeight.set_default(static_cast<float>(height));
  CaptionHeight.reset();
  MinRowHeight.reset();
}

void USFlexGrid::properties_read() {
  GridLines.assign(static_cast<GRID_LINES>(std::abs(static_cast<long>(GridLines.get()))));
  MultiSelect.assign(static_cast<GRID_MULTISELECT>(std::abs(static_cast<long>(MultiSelect.get()))));
  ready();
  if (!HeaderFormatString.get().empty()) rebuild_columns();
}

void USFlexGrid::ready() {
  store_.set_scale(pixels_per_unit());
  store_.set_exact_rules(ExactRules.get());
  ready_ = true;
  fonts_changed();
  look_changed();
}

double USFlexGrid::unit_text_height(FontProperty& font) {
  const HDC screen = GetDC(nullptr);
  const HGDIOBJ before = SelectObject(screen, font.handle());
  TEXTMETRICW metrics{};
  GetTextMetricsW(screen, &metrics);
  SelectObject(screen, before);
  ReleaseDC(nullptr, screen);
  return metrics.tmHeight / pixels_per_unit();
}

double USFlexGrid::pixels_per_unit() const {
  long mode = 1;
  try {
    LateObject self(extender());
    if (self)
      mode = static_cast<long>(number_of(self.get_object(L"Parent").get_property(L"ScaleMode")));
  } catch (const ComError&) {  // a container that tells no scale counts in twips
  }
  return kestrelon::pixels_per_unit(mode, scale().dpi());
}

void USFlexGrid::set_fonts() {
  if (fonts_set_) return;
  fonts_.set(logical_font(Font.handle()), logical_font(FontHeader.handle()));
  Bstr name;
  Font.font().get_Name(name.put());
  font_name_ = std::wstring(name.view());
  fonts_set_ = true;
}

void USFlexGrid::fonts_changed() {
  fonts_set_ = false;
  if (!ready_) return;
  store_.set_scale(pixels_per_unit());
  look_changed();
}

// New cells take the grid's colours and font; those that are there keep theirs.
void USFlexGrid::look_changed() {
  if (!ready_) return;
  set_fonts();
  GridLook look;
  look.back_color = BackColor.get();
  look.fore_color = ForeColor.get();
  look.font_name = font_name_;
  store_.set_default_look(look);
  changed();
}

void USFlexGrid::rules_changed() {
  store_.set_exact_rules(ExactRules.get());
  changed();
}

// Whatever a property changes of sizes or looks: all is laid out and drawn anew.
void USFlexGrid::changed() {
  if (!ready_) return;
  set_fonts();
  const int height = metrics().row_h;
  if (height != default_row_height_) {
    for (int i = 0; i < store_.row_count(); ++i)
      if (store_.row_info(i).height == default_row_height_) store_.set_row_height(i, height);
    default_row_height_ = height;
    store_.set_default_row_height(height);
  }
  touch();
}

void USFlexGrid::refresh() {
  store_.set_scale(pixels_per_unit());
  images_.set_list(images_.list().get());
  fonts_set_ = false;
  changed();
}

void USFlexGrid::set_redraw(bool value) {
  redraw_ = value;
  property_changed(L"Redraw");
  if (value) changed();
}

void USFlexGrid::set_image_list(IDispatch* list) {
  images_.set_list(list);
  changed();
}

void USFlexGrid::set_expand_row_image(const VARIANT& image) {
  expand_image_ = images_.number_of(image);
  changed();
}

void USFlexGrid::theme_changed() {
  const Pause pause(*this);
  apply_theme(theme::kFlexGrid, Theme.get(), [this](const wchar_t* name, uint32_t value) {
    for (PropertyBase* property : properties())
      if (wcscmp(property->name(), name) == 0)
        if (auto* const color = dynamic_cast<Property<OLE_COLOR>*>(property)) color->put(value);
  });
}

void USFlexGrid::enabled_changed() {
  apply_enabled();
  if (!Enabled.get()) {
    update_cell(false);
    end_press();
  }
  touch();
}

void USFlexGrid::window_created() {
  if (!user_mode()) return;
  syncing_ = true;
  bars_.Create(window());
  syncing_ = false;
  sync_bars();
}

void USFlexGrid::resized() {
  page_valid_ = false;
  if (syncing_ || !ready_) return;
  if (edit_pending_) update_cell(false);
  touch();
  sync_bars();
}

// For those who look for a fault: 1 while nothing in the store contradicts anything else.
bool USFlexGrid::answer_check(UINT message, LRESULT& result) const {
  static const UINT check = RegisterWindowMessageW(kGridFaultMessage);
  if (message != check) return false;
  const std::string fault = GridStoreCheck::fault(store_);
  if (!fault.empty()) OutputDebugStringA(fault.c_str());
  result = fault.empty() ? 1 : 2;
  return true;
}

void USFlexGrid::closing() {
  close_editor(false);
}

void USFlexGrid::terminate() {
  request_timer_.stop();
  scroll_timer_.stop();
  hide_cell_tip();
  close_editor(false);
  bars_.Create(nullptr);
  box_.destroy();
}

void USFlexGrid::got_focus() {
  if (FocusRectHide.get()) touch();
}

void USFlexGrid::lost_focus() {
  if (FocusRectHide.get()) touch();
  // A question that is being asked may show a window of its own: that is no leaving.
  if (!edit_pending_ || committing_ || in_event_edit_) return;
  // A control without a window types into the container's, which has the focus then.
  if (bound_.active() && bound_.window() == nullptr) return;
  if (!update_cell(false) && edit_pending_) want_focus_back();
}

void USFlexGrid::drag(Drag& step) {
  if (step.stage != Drag::Stage::kDrop) return;
  IDispatch* data = ComPtr<IDispatch>(step.data).detach();
  raise_ole_drag_drop(data, step.effect, step.button, step.shift, step.x, step.y);
  if (data != nullptr) data->Release();
}

// The room for cells in the container's unit, which is what columns are measured in.
float USFlexGrid::visible_width() {
  const grid_layout::GridPage& now = page();
  const int room = std::max(now.inner.right - std::max(now.inner.left, now.number_width), 0);
  return static_cast<float>(room / pixels_per_unit());
}

float USFlexGrid::visible_height() {
  return static_cast<float>(std::max(page().inner.bottom - page().inner.top, 0) /
                            pixels_per_unit());
}

// --- the button of the task bar -----------------------------------------------------------------

long USFlexGrid::task_bar_set_progress_state(long window, ENUM_TASKBAR flags) {
  return task_bar::set_state(window, flags);
}
long USFlexGrid::task_bar_set_progress_value(long window, long percent) {
  return task_bar::set_value(window, percent);
}
long USFlexGrid::task_bar_set_overlay_icon(long window, long icon,
                                           const std::wstring& description) {
  return task_bar::set_overlay(window, icon, description);
}
long USFlexGrid::task_bar_set_thumbnail_clip(long window, long left, long top, long right,
                                             long bottom) {
  return task_bar::set_clip(window, {left, top, right, bottom});
}
long USFlexGrid::task_bar_set_thumbnail_tooltip(long window, const std::wstring& tip) {
  return task_bar::set_tip(window, tip);
}
long USFlexGrid::task_bar_thumb_bar_add_buttons(long window, long buttons, const VARIANT& icons) {
  return task_bar::add_buttons(window, buttons, icons);
}

}  // namespace kestrelon
