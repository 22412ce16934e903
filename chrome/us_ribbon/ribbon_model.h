// What a program has put into a ribbon: tabs, categories, buttons and tab buttons. They refer to
// each other by the numbers the program gave them, never by their place in a list.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon::ribbon {

enum class ButtonSize { kLarge = 0, kMedium = 1, kSmall = 2 };
enum class ButtonStyle { kNormal = 0, kCheck = 1, kDropDown = 2, kSplit = 3 };

struct Tab {
  int index = 0;
  std::wstring caption;
  bool visible = true;
  uint32_t color = 0;  ///< 0x00BBGGRR of a contextual tab; 0: a common one
};

struct Category {
  int index = 0;
  int tab = 0;
  std::wstring caption;
  bool launcher = false;
};

struct Button {
  int index = 0;
  int category = 0;
  std::wstring caption;
  std::wstring tip;
  std::wstring access_key;  ///< lower case; empty without one
  bool arrow = false;
};

struct TabButton {
  int index = 0;
  std::wstring tip;
};

/// What is kept by the number of a button and not by its entry: buttons of one number share it.
struct ButtonState {
  bool enabled = false;
  bool checked = false;
  int image = 0;  ///< position in the image list from 1; 0: none
  ButtonStyle style = ButtonStyle::kNormal;
  ButtonSize size = ButtonSize::kLarge;
};

class Model {
 public:
  /// Entries of each kind and numbers of buttons end at 100 unless a program asks for more.
  static constexpr int kToldLimit = 100, kFullLimit = 32768;
  static constexpr int kNone = -1;

  void set_unlimited(bool unlimited) { limit_ = unlimited ? kFullLimit : kToldLimit; }

  // False, and nothing changed, when there is no room or a button's number is out of range.
  bool add_tab(int index, std::wstring_view caption);
  bool add_category(int index, int tab, std::wstring_view caption, bool launcher);
  bool add_button(int index, int category, std::wstring_view caption, int image, bool arrow,
                  std::wstring_view tip);
  bool add_tab_button(int index, int image, std::wstring_view tip);

  void remove_tabs();
  void remove_categories() { categories_.clear(); }
  void remove_buttons();
  void remove_tab_buttons();

  const std::vector<Tab>& tabs() const { return tabs_; }
  const std::vector<Category>& categories() const { return categories_; }
  const std::vector<Button>& buttons() const { return buttons_; }
  const std::vector<TabButton>& tab_buttons() const { return tab_buttons_; }

  /// The state that belongs to a button's number; null out of range. Numbers that no button has
  /// have one too.
  ButtonState* state(int index);
  const ButtonState& state_of(const Button& button) const;
  int tab_button_image(const TabButton& button) const;
  /// The first entry of a number, kNone if there is none.
  int find_tab(int index) const;
  int find_button(int index) const;
  Tab* tab(int entry) { return valid(entry) ? &tabs_[static_cast<size_t>(entry)] : nullptr; }
  void set_caption(int entry, std::wstring_view caption);

  /// The selected tab as an entry, kNone without one.
  int selected() const { return selected_; }
  void select(int entry) { selected_ = valid(entry) ? entry : kNone; }
  /// Whether `ActivateTab` takes a number at all: 0 up to the number of tabs, both included.
  bool may_activate(int index) const { return index >= 0 && index <= count(tabs_); }
  /// The next visible tab from the selected one in a direction of 1 or -1; the selected one at the
  /// ends.
  int neighbour(int direction) const;
  /// The first tab that is visible, kNone without one.
  int first_visible() const;
  bool selected_shows(const Category& category) const;

 private:
  template <class T>
  static int count(const std::vector<T>& list) {
    return static_cast<int>(list.size());
  }
  template <class T>
  bool full(const std::vector<T>& list) const {
    return count(list) >= limit_;
  }
  bool valid(int entry) const { return entry >= 0 && entry < count(tabs_); }

  int limit_ = kToldLimit;
  std::vector<Tab> tabs_;
  std::vector<Category> categories_;
  std::vector<Button> buttons_;
  std::vector<TabButton> tab_buttons_;
  std::vector<ButtonState> states_ = std::vector<ButtonState>(kToldLimit);
  std::vector<int> tab_button_images_ = std::vector<int>(kToldLimit);
  int selected_ = kNone;
};

/// A caption on one line: every CR LF becomes a blank.
std::wstring one_line(std::wstring_view text);
/// The tip of a button: its own text, or the caption without marks; on one line, without any &.
std::wstring tip_text(std::wstring_view own, std::wstring_view caption);

}  // namespace kestrelon::ribbon
