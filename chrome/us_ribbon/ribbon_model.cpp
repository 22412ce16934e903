#include "chrome/us_ribbon/ribbon_model.h"

#include <algorithm>

#include "frame/kit/access_key.h"

namespace kestrelon::ribbon {
namespace {

// Kept by number: the list grows only for a program that asked for more than the told entries.
template <class T>
T* at_number(std::vector<T>& list, int index, int limit) {
  if (index < 0 || index >= limit) return nullptr;
  const auto place = static_cast<size_t>(index);
  if (place >= list.size()) list.resize(place + 1);
  return &list[place];
}

template <class T>
int find(const std::vector<T>& list, int index) {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](const T& each) { return each.index == index; });
  return found == list.end() ? Model::kNone : static_cast<int>(found - list.begin());
}

}  // namespace

std::wstring one_line(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const bool line_end = text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n';
    out += line_end ? L' ' : text[i];
    if (line_end) ++i;
  }
  return out;
}

std::wstring tip_text(std::wstring_view own, std::wstring_view caption) {
  std::wstring out = one_line(own.empty() ? caption : own);
  std::erase(out, L'&');
  return out;
}

bool Model::add_tab(int index, std::wstring_view caption) {
  if (full(tabs_)) return false;
  tabs_.push_back({index, one_line(caption)});
  return true;
}

bool Model::add_category(int index, int tab, std::wstring_view caption, bool launcher) {
  if (full(categories_)) return false;
  categories_.push_back({index, tab, one_line(caption), launcher});
  return true;
}

bool Model::add_button(int index, int category, std::wstring_view caption, int image, bool arrow,
                       std::wstring_view tip) {
  ButtonState* const kept = full(buttons_) ? nullptr : state(index);
  if (kept == nullptr) return false;
  *kept = {};
  kept->enabled = true;
  kept->image = image;
  std::wstring text = one_line(caption);
  std::wstring key = access_key_from_start(text);
  buttons_.push_back(
      {index, category, std::move(text), tip_text(tip, caption), std::move(key), arrow});
  return true;
}

bool Model::add_tab_button(int index, int image, std::wstring_view tip) {
  int* const kept = full(tab_buttons_) ? nullptr : at_number(tab_button_images_, index, limit_);
  if (kept == nullptr) return false;
  *kept = image;
  tab_buttons_.push_back({index, tip_text(tip, {})});
  return true;
}

void Model::remove_tabs() {
  tabs_.clear();
  selected_ = kNone;
}

void Model::remove_buttons() {
  buttons_.clear();
  states_.assign(kToldLimit, {});
}

void Model::remove_tab_buttons() {
  tab_buttons_.clear();
  tab_button_images_.assign(kToldLimit, 0);
}

ButtonState* Model::state(int index) {
  return at_number(states_, index, limit_);
}

const ButtonState& Model::state_of(const Button& button) const {
  return states_[static_cast<size_t>(button.index)];
}

int Model::tab_button_image(const TabButton& button) const {
  return tab_button_images_[static_cast<size_t>(button.index)];
}

int Model::find_tab(int index) const {
  return find(tabs_, index);
}

int Model::find_button(int index) const {
  return find(buttons_, index);
}

void Model::set_caption(int entry, std::wstring_view caption) {
  if (entry < 0 || entry >= count(buttons_)) return;
  Button& button = buttons_[static_cast<size_t>(entry)];
  // A tip that was made of the caption goes with it.
  if (button.tip == tip_text({}, button.caption)) button.tip = tip_text({}, caption);
  button.caption = one_line(caption);
  button.access_key = access_key_from_start(button.caption);
}

int Model::neighbour(int direction) const {
  for (int at = selected_ + direction; valid(at); at += direction)
    if (tabs_[static_cast<size_t>(at)].visible) return at;
  return selected_;
}

int Model::first_visible() const {
  const auto found =
      std::find_if(tabs_.begin(), tabs_.end(), [](const Tab& tab) { return tab.visible; });
  return found == tabs_.end() ? kNone : static_cast<int>(found - tabs_.begin());
}

bool Model::selected_shows(const Category& category) const {
  return valid(selected_) && tabs_[static_cast<size_t>(selected_)].index == category.tab;
}

}  // namespace kestrelon::ribbon
