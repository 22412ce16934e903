// Life, layout and the list of panels.
#include "chrome/us_status_bar/us_status_bar.h"

#include <algorithm>

namespace kestrelon {
namespace {

ControlTraits bar_traits() {
  ControlTraits traits;
  traits.misc_status |= OLEMISC_NOUIACTIVATE;
  traits.initial_pixels = {480, 24};
  return traits;
}

constexpr size_t kMostPushed = 64;
constexpr int kProgressWidth = 60;  // what a progress panel asks for beside its text, at 96 dpi

constexpr ThemeEntry kThemeEntries[] = {
    {L"BorderColor", {0xE2A981, 0xBEBEBE, 0xDBC9BA}},
    {L"ForeColor", {theme::kAccentText[0], theme::kAccentText[1], theme::kAccentText[2]}},
    {L"GradientColor1", {0xFDEEE3, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientColor2", {0xF7DECA, 0xE7DCD6, 0xF1F0EC}},
};

}  // namespace

USStatusBar::USStatusBar() : USStatusBarGlue(bar_traits()) {}

void USStatusBar::init_properties() {
  DisplayControl::init_properties();
  panels_changed();
}

void USStatusBar::properties_read() {
  images_read();
  DisplayControl::properties_read();
  panels_changed();
}

void USStatusBar::font_changed() {
  relayout();
  redraw();
}

void USStatusBar::hidden() {
  tip_.Destroy();
  stop_watching();
}

void USStatusBar::terminate() {
  stop_watching();
  tip_.Destroy();
  skin_.reset();
  DisplayControl::terminate();
}

void USStatusBar::apply_theme() {
  assign_theme(kThemeEntries, Theme.get());
}

void USStatusBar::relayout() {
  layout_stale_ = true;
  if (draws()) invalidate();
}

// Records were added, removed, moved, or changed their kind.
void USStatusBar::panels_changed() {
  clock_text_.clear();
  read_locks();
  watch();
  relayout();
  redraw();
}

void USStatusBar::about_to_show() {
  if (!draws() || !surface()) return;
  if (layout_stale_ && lay_out()) mark_stale();
  DisplayControl::about_to_show();
  // The form may have been hidden until now.
  if (!clock_.running() && !lock_poll_.running()) watch();
  if (stale_.none()) return;
  for (size_t i = 0; i < stale_.size(); ++i)
    if (stale_[i]) paint_panel(static_cast<long>(i) + 1);
  stale_.reset();
  part_drawn();
}

status_bar::Content USStatusBar::content_of(long index) {
  const StatusPanel& panel = at(index);
  status_bar::Content out;
  out.alignment = static_cast<int>(panel.alignment);
  out.text_width = text_width(text_of(index), panel.bold);
  if (image_of(images().number(panel.image)) != nullptr) {
    const SIZE size = image_size();
    out.image_width = scale()(static_cast<int>(size.cx));
    out.image_height = scale()(static_cast<int>(size.cy));
    const int room = std::max(1, height() - scale()(6));
    if (out.image_height > room) {
      out.image_width = MulDiv(out.image_width, room, out.image_height);
      out.image_height = room;
    }
  }
  return out;
}

status_bar::Item USStatusBar::item_of(long index) {
  const StatusPanel& panel = at(index);
  const auto scaled = [&](long pixels) {
    return static_cast<int64_t>(pixels) * scale().dpi() / Scale::kUnit;
  };
  status_bar::Item out;
  out.visible = panel.visible;
  out.sizing = static_cast<status_bar::Sizing>(panel.auto_size);
  out.width = scaled(panel.width);
  out.min_width = scaled(panel.min_width);
  if (panel.auto_size == Panel_Contents && panel.visible) {
    out.content = status_bar::needed_width(content_of(index), scale());
    if (panel.style == Panel_Progress) out.content += scale()(kProgressWidth);
  }
  return out;
}

// True when something has another place.
bool USStatusBar::lay_out() {
  layout_stale_ = false;
  std::vector<status_bar::Item> items;
  if (!SimpleMode.get())
    for (long i = 1; i <= panel_count(); ++i) items.push_back(item_of(i));
  auto fresh = status_bar::arrange({width(), height(), wants_grip(), scale()}, items);
  if (fresh == bar_) return false;
  bar_ = std::move(fresh);
  return true;
}

void USStatusBar::ensure_layout() {
  if (layout_stale_ && surface() && lay_out()) redraw();
}

PixelRect USStatusBar::area_of(long index) {
  const auto place = static_cast<size_t>(index - 1);
  return index > 0 && place < bar_.panels.size() ? bar_.panels[place] : PixelRect{};
}

short USStatusBar::panel_index(const std::wstring& key) const {
  if (key.empty()) return 0;
  for (long i = 1; i <= panel_count(); ++i)
    if (at(i).key == key) return static_cast<short>(i);
  return 0;
}

short USStatusBar::add_panel(ENUM_PANEL_STYLE style, std::wstring caption, std::wstring key,
                             long width, ENUM_PANEL_SIZE auto_size, ENUM_ALIGNMENTS alignment,
                             const VARIANT& image, std::wstring tool_tip) {
  if (panels.size() >= kMostPanels || panel_index(key) != 0) return 0;
  StatusPanel added;
  added.style = style;
  added.caption = std::move(caption);
  added.key = std::move(key);
  added.width = width;
  added.auto_size = auto_size;
  added.alignment = alignment;
  added.image = images().value(images().number(image));
  added.tool_tip = std::move(tool_tip);
  forget_input();
  panels.change(L"PanelCount",
                [&](std::vector<StatusPanel>& list) { list.push_back(std::move(added)); });
  const auto position = static_cast<short>(panels.size());
  tell_readers(EVENT_OBJECT_CREATE, position);
  return position;
}

short USStatusBar::delete_panel(long index) {
  if (!known(index)) return 0;
  forget_input();
  panels.change(L"PanelCount",
                [&](std::vector<StatusPanel>& list) { list.erase(list.begin() + (index - 1)); });
  tell_readers(EVENT_OBJECT_DESTROY, index);
  return static_cast<short>(panels.size());
}

short USStatusBar::move_panel(long index, ENUM_MOVE direction) {
  const bool told = direction == Move_ToLeft || direction == Move_ToRight;
  if (!told || !known(index)) return 0;
  const long to = direction == Move_ToLeft ? index - 1 : index + 1;
  if (!known(to)) return 0;
  forget_input();
  panels.change(L"PanelCount", [&](std::vector<StatusPanel>& list) {
    std::swap(list[static_cast<size_t>(index - 1)], list[static_cast<size_t>(to - 1)]);
  });
  tell_readers(EVENT_OBJECT_REORDER);
  return static_cast<short>(to);
}

// Deeper than kMostPushed the newest text takes the place of the one before it.
void USStatusBar::push_text(std::wstring text) {
  if (pushed_.size() >= kMostPushed) pushed_.pop_back();
  pushed_.push_back(std::move(text));
  panel_text_changed(first_text_panel());
}

void USStatusBar::pop_text() {
  if (pushed_.empty()) return;
  pushed_.pop_back();
  panel_text_changed(first_text_panel());
}

}  // namespace kestrelon
