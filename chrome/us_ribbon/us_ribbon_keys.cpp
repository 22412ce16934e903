// The keyboard: left and right change tabs, up and down walk over the buttons of the tab.
#include <algorithm>
#include <cwctype>

#include "chrome/us_ribbon/us_ribbon.h"
#include "frame/kit/access_key.h"

namespace kestrelon {

using namespace ribbon;

namespace {

// The buttons of the selected tab in the order of the bar, those scrolled out too.
std::vector<int> entries_of_tab(const Model& model) {
  std::vector<int> out;
  for (const Category& category : model.categories()) {
    if (!model.selected_shows(category)) continue;
    for (size_t i = 0; i < model.buttons().size(); ++i)
      if (model.buttons()[i].category == category.index) out.push_back(static_cast<int>(i));
  }
  return out;
}

}  // namespace

bool USRibbon::wants_key(int key, short) const {
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
      return true;
    case VK_RETURN:
    case VK_SPACE:
      return focus_ != Model::kNone;
    default:
      return false;
  }
}

bool USRibbon::usable(int entry) const {
  const auto place = static_cast<size_t>(entry);
  return Enabled.get() && entry >= 0 && place < model_.buttons().size() &&
         model_.state_of(model_.buttons()[place]).enabled;
}

Target USRibbon::button_target(int entry) const {
  for (size_t i = 0; i < scene_.buttons.size(); ++i)
    if (scene_.buttons[i].entry == entry) return {Part::kButton, static_cast<int>(i)};
  return {};
}

void USRibbon::set_focus(int entry) {
  if (entry == focus_) return;
  const int old = std::exchange(focus_, entry);
  set_hot({});
  draw_target(button_target(old));
  draw_target(button_target(focus_));
  if ((old == Model::kNone) != (focus_ == Model::kNone))
    for (size_t i = 0; i < scene_.tabs.size(); ++i)
      if (scene_.tabs[i].entry == model_.selected()) draw_part(scene_.tabs[i].area);
  key_wishes_changed();
  tell_readers(EVENT_OBJECT_FOCUS, accessible_focus());
}

// Scrolls until the button's category is on the bar.
bool USRibbon::bring_into_view(int entry) {
  for (size_t turn = 0; turn <= model_.categories().size(); ++turn) {
    if (button_target(entry) != Target{}) return true;
    const int before = scene_.first;
    const std::vector<int> all = entries_of_tab(model_);
    const auto place = std::find(all.begin(), all.end(), entry);
    const auto seen = scene_.buttons.empty()
                          ? all.begin()
                          : std::find(all.begin(), all.end(), scene_.buttons.front().entry);
    scroll(place < seen ? -1 : 1);
    if (scene_.first == before) return button_target(entry) != Target{};
  }
  return false;
}

// Above the first button lies the tab itself, and nothing above that.
void USRibbon::step_focus(int direction) {
  if (focus_ == Model::kNone && direction < 0) return;
  const std::vector<int> all = entries_of_tab(model_);
  const int count = static_cast<int>(all.size());
  const auto found = std::find(all.begin(), all.end(), focus_);
  int at = found != all.end() ? static_cast<int>(found - all.begin()) : -1;
  while ((at += direction) >= 0 && at < count) {
    const int entry = all[static_cast<size_t>(at)];
    if (usable(entry) && bring_into_view(entry)) return set_focus(entry);
  }
  if (direction < 0) set_focus(Model::kNone);
}

void USRibbon::step_tab(int direction) {
  const int next = model_.neighbour(direction);
  if (next != Model::kNone && next != model_.selected()) activate(next);
}

void USRibbon::key_down(short& key, short&) {
  if (!Enabled.get()) return;
  switch (key) {
    case VK_LEFT:
      return step_tab(-1);
    case VK_RIGHT:
      return step_tab(1);
    case VK_UP:
      return step_focus(-1);
    case VK_DOWN:
      return step_focus(1);
    case VK_RETURN:
    case VK_SPACE: {
      const Target target = button_target(focus_);
      if (!live(target)) return;
      const auto& button = model_.buttons()[static_cast<size_t>(focus_)];
      if (model_.state_of(button).style == ribbon::ButtonStyle::kDropDown) return drop_down(target);
      return click_button(focus_, area_of(scene_, target));
    }
    default:
      return;
  }
}

void USRibbon::got_focus() {
  draw();
}

void USRibbon::lost_focus() {
  focus_ = Model::kNone;
  draw();
}

void USRibbon::update_access_keys() {
  std::wstring keys;
  for (const TabPlace& place : scene_.tabs)
    if (static_cast<size_t>(place.entry) < model_.tabs().size())
      keys += access_key_from_start(model_.tabs()[static_cast<size_t>(place.entry)].caption);
  for (const int entry : entries_of_tab(model_))
    if (usable(entry)) keys += model_.buttons()[static_cast<size_t>(entry)].access_key;
  set_access_keys(keys);
}

void USRibbon::access_key_press(short key) {
  if (!Enabled.get()) return;
  const std::wstring wanted(1, static_cast<wchar_t>(std::towlower(static_cast<wint_t>(key))));
  for (const int entry : entries_of_tab(model_)) {
    if (!usable(entry) || model_.buttons()[static_cast<size_t>(entry)].access_key != wanted)
      continue;
    if (!bring_into_view(entry)) return;
    return click_button(entry, area_of(scene_, button_target(entry)));
  }
  for (size_t i = 0; i < scene_.tabs.size(); ++i) {
    const auto entry = static_cast<size_t>(scene_.tabs[i].entry);
    if (access_key_from_start(model_.tabs()[entry].caption) == wanted)
      return act({Part::kTab, static_cast<int>(i)});
  }
}

}  // namespace kestrelon
