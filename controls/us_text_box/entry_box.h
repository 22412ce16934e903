// The text box's two edit windows, one line and several, of which one is shown; the way of every
// key, paste, composition and undo through the typing rules.
#pragma once

#include <optional>
#include <string>

#include "frame/clipboard.h"
#include "frame/inner/child_edit.h"
#include "services/typing/entry_field.h"

namespace kestrelon {

class EntryBox final : private ChildEditOwner {
 public:
  class Owner {
   public:
    /// The text has changed; the owner may do anything, its own end included.
    virtual void entry_changed() = 0;
    /// A step up (1) or down (-1) by an arrow key; false when the key is not used for that.
    virtual bool entry_spin(int step) = 0;
    /// The first look at a key that may serve an open list; true when it was used.
    virtual bool entry_key(WPARAM key) = 0;
    /// Draws the hint of an empty box; false when there is none.
    virtual bool entry_hint(HDC dc, const RECT& area) = 0;

   protected:
    ~Owner() = default;
  };

  /// How the edit window is made; a change makes it anew.
  struct Form {
    bool multiline = false;
    int alignment = 0;    // 0 left, 1 right, 2 centre
    int scroll_bars = 0;  // bits: 1 horizontal, 2 vertical
    bool operator==(const Form&) const = default;
  };

  EntryBox(InnerWindowHost& host, Owner& owner)
      : owner_(owner), line_(host, *this), lines_(host, *this) {}

  void set_rules(EntrySettings settings);
  const EntrySettings& rules() const { return settings_; }
  void set_locked(bool locked);
  void set_password(wchar_t c);

  /// Makes the window, or makes it anew in another form, with text, selection and focus kept.
  void create(const Form& form);
  /// Without a window: remembers the form.
  void prepare(const Form& form);
  ChildEdit& window() { return form_.multiline ? lines_ : line_; }

  const std::wstring& text() const { return state_.text; }
  EntryState state();
  /// A text from the program: no history, one change told if it differs.
  void show(const EntryState& state);
  /// A text that was loaded: nothing is told.
  void adopt(const EntryState& state);
  /// A change that undo takes back, as by the user.
  void edit(const EntryState& state, EntryHistory::Kind kind);
  void select(size_t anchor, size_t caret);
  /// As if pasted at the selection.
  void insert(std::wstring_view text);

 private:
  void edit_changed(ChildEdit& box) override;
  bool edit_message(ChildEdit& box, UINT message, WPARAM wparam, LPARAM lparam,
                    LRESULT& result) override;
  bool key_down(WPARAM key);
  bool formatted_key(WPARAM key, bool shift, bool control);
  bool character(wchar_t c);
  bool formatted_character(wchar_t c);
  bool composition(LPARAM flags);
  bool paint(ChildEdit& box);
  bool formatted() const { return settings_.kind != EntryKind::kText; }
  void undo(bool again);
  void cut();
  void paste();
  void write(const EntryState& state);
  void apply_style();

  Owner& owner_;
  ChildEdit line_, lines_;  // TextN and TextM
  Form form_;
  EntrySettings settings_;
  EntryState state_;
  EntryHistory history_;
  bool locked_ = false;
  bool writing_ = false;  // what the window tells now comes from us
  wchar_t password_ = 0;
};

}  // namespace kestrelon
