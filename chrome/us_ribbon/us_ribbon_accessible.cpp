// Names, roles and states of all elements for screen readers.
#include <algorithm>

#include "chrome/us_ribbon/us_ribbon.h"
#include "frame/kit/access_key.h"

namespace kestrelon {

using namespace ribbon;

// Tabs, then each category with its buttons and its launcher, then the tab buttons.
std::vector<Target> USRibbon::targets() const {
  std::vector<Target> out;
  const auto add = [&](Part part, size_t at) { out.push_back({part, static_cast<int>(at)}); };
  for (size_t i = 0; i < scene_.tabs.size(); ++i) add(Part::kTab, i);
  for (size_t i = 0; i < scene_.categories.size(); ++i) {
    add(Part::kCategory, i);
    for (size_t j = 0; j < scene_.buttons.size(); ++j)
      if (scene_.buttons[j].category == static_cast<int>(i)) add(Part::kButton, j);
    if (!scene_.categories[i].launcher.empty()) add(Part::kLauncher, i);
  }
  for (size_t i = 0; i < scene_.tab_buttons.size(); ++i) add(Part::kTabButton, i);
  return out;
}

long USRibbon::number_of_target(const Target& target) const {
  const std::vector<Target> all = targets();
  const auto found = std::find(all.begin(), all.end(), target);
  return found == all.end() ? CHILDID_SELF : static_cast<long>(found - all.begin()) + 1;
}

void USRibbon::describe(AccessibleItem& item) const {
  item.role = ROLE_SYSTEM_TOOLBAR;
}

bool USRibbon::accessible_item(long child, AccessibleItem& item) const {
  if (child == CHILDID_SELF) return ControlFrame::accessible_item(child, item);
  const std::vector<Target> all = targets();
  if (child < 1 || static_cast<size_t>(child) > all.size()) return false;
  const Target target = all[static_cast<size_t>(child) - 1];
  const auto at = static_cast<size_t>(target.at);
  const PixelRect area = area_of(scene_, target);
  item.place = {area.left, area.top, area.right, area.bottom};
  item.role = ROLE_SYSTEM_PUSHBUTTON;
  item.default_action = L"Clicar";
  switch (target.part) {
    case Part::kTab: {
      const int entry = scene_.tabs[at].entry;
      item.role = ROLE_SYSTEM_PAGETAB;
      item.default_action = L"Mostrar";
      item.state |= STATE_SYSTEM_SELECTABLE;
      if (entry == model_.selected()) item.state |= STATE_SYSTEM_SELECTED;
      name_after(item, model_.tabs()[static_cast<size_t>(entry)].caption);
      break;
    }
    case Part::kCategory:
    case Part::kLauncher: {
      const auto entry = static_cast<size_t>(scene_.categories[at].entry);
      const std::wstring& caption = model_.categories()[entry].caption;
      item.name = target.part == Part::kLauncher ? caption + L": opções" : caption;
      if (target.part == Part::kLauncher) break;
      item.role = ROLE_SYSTEM_GROUPING;
      item.default_action.clear();
      break;
    }
    case Part::kTabButton:
      item.name = model_.tab_buttons()[static_cast<size_t>(scene_.tab_buttons[at].entry)].tip;
      break;
    default:
      describe_button(target, item);
  }
  if (!Enabled.get()) item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (target == pressed_) item.state |= STATE_SYSTEM_PRESSED;
  if (target == hot_) item.state |= STATE_SYSTEM_HOTTRACKED;
  return true;
}

void USRibbon::describe_button(const Target& target, AccessibleItem& item) const {
  const int entry = scene_.buttons[static_cast<size_t>(target.at)].entry;
  const ribbon::Button& button = model_.buttons()[static_cast<size_t>(entry)];
  const ButtonState& state = model_.state_of(button);
  if (state.style == ribbon::ButtonStyle::kCheck) item.role = ROLE_SYSTEM_CHECKBUTTON;
  if (state.style == ribbon::ButtonStyle::kDropDown) item.role = ROLE_SYSTEM_BUTTONDROPDOWN;
  if (state.style == ribbon::ButtonStyle::kSplit) item.role = ROLE_SYSTEM_SPLITBUTTON;
  name_after(item, button.caption.empty() ? button.tip : button.caption);
  if (button.tip != without_access_marks(button.caption)) item.description = button.tip;
  if (!usable(entry)) item.state |= STATE_SYSTEM_UNAVAILABLE;
  if (state.checked) item.state |= STATE_SYSTEM_CHECKED;
}

long USRibbon::accessible_at(POINT point) const {
  Target target = ribbon::hit(scene_, point.x, point.y);
  if (target.part == Part::kDrop) target.part = Part::kButton;
  return number_of_target(target);
}

long USRibbon::accessible_focus() const {
  if (focus_ != Model::kNone) return number_of_target(button_target(focus_));
  for (size_t i = 0; i < scene_.tabs.size(); ++i)
    if (scene_.tabs[i].entry == model_.selected())
      return number_of_target({Part::kTab, static_cast<int>(i)});
  return CHILDID_SELF;
}

void USRibbon::accessible_default_action(long child) {
  const std::vector<Target> all = targets();
  if (child < 1 || static_cast<size_t>(child) > all.size()) return;
  const Target target = all[static_cast<size_t>(child) - 1];
  if (live(target) && target.part != Part::kCategory) act(target);
}

}  // namespace kestrelon
