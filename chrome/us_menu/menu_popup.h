// One popup of a menu: the system's own menu loop over items that are drawn here. Keyboard,
// monitors, delays and screen readers are the system's.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "chrome/us_menu/menu_model.h"
#include "frame/surface.h"
#include "imaging/dib_win.h"

namespace kestrelon {

/// How items are drawn; colours as GDI takes them.
struct MenuLook {
  COLORREF back, border_over, ink, ink_disabled, ink_over, column1, column2, over1, over2;
  HFONT font = nullptr;
  Scale scale;
  int image_size = 16;
  bool short_cuts = true;
  bool right_to_left = false;
};

/// Who a popup belongs to. Any of these may change or destroy everything.
class MenuPopupOwner {
 public:
  virtual const std::vector<MenuItem>& menu_items() const = 0;
  virtual const c32bppDIB* menu_image(const std::wstring& image) = 0;
  /// A sub-menu is about to be filled.
  virtual void submenu_opening(const std::wstring& key) = 0;
  virtual void menu_highlight(const std::wstring& key, const std::wstring& description) = 0;
  /// A key that leaves the popup to either side, or the pointer over the screen: the index of the
  /// item of the bar to go to; nothing to stay.
  virtual std::optional<int> bar_step(int step) = 0;
  virtual std::optional<int> bar_at(POINT screen) = 0;

 protected:
  ~MenuPopupOwner() = default;
};

class MenuPopup {
 public:
  MenuPopup(MenuPopupOwner& owner, const MenuLook& look);
  ~MenuPopup();
  MenuPopup(const MenuPopup&) = delete;
  MenuPopup& operator=(const MenuPopup&) = delete;

  /// Whether one is open on this thread: a second is refused.
  static bool is_open();
  /// Closes the open one.
  static void cancel();

  struct Outcome {
    bool chosen = false;
    std::wstring key;              ///< of the chosen item
    std::optional<int> switch_to;  ///< the item of the bar to open instead
  };
  /// Runs until the menu is closed. `under` are TPM_ flags, `spare` a rectangle to leave free.
  Outcome run(HWND form, int parent, POINT at, UINT flags, const RECT* spare, bool select_first);

 private:
  /// What screen readers look for at the data of an item that its program draws.
  struct ReaderText {
    DWORD signature;
    DWORD length;
    wchar_t* text;
  };
  struct Entry {
    ReaderText reader;  // must be first
    MenuItem item;
    std::wstring text;
    HMENU submenu;
  };

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  static LRESULT CALLBACK filter(int code, WPARAM wparam, LPARAM lparam);
  bool handle(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  bool wants(const MSG& message);
  void fill(HMENU menu, const std::vector<MenuItem>& items, int parent);
  void fill_submenu(HMENU menu);
  void measure(MEASUREITEMSTRUCT& out);
  void draw(const DRAWITEMSTRUCT& what);
  void draw_mark(const Entry& entry, const PixelRect& column, bool disabled);
  LRESULT choose_by_letter(HMENU menu, wchar_t letter) const;
  void highlight(UINT id, UINT flags, HMENU menu);
  const Entry* entry_of(ULONG_PTR data) const;

  MenuPopupOwner& owner_;
  MenuLook look_;
  HWND window_ = nullptr;
  HMENU root_ = nullptr;
  std::deque<Entry> entries_;  // stay where they are while menus point to them
  std::map<HMENU, const Entry*> parents_;
  Outcome outcome_;
  HMENU highlighted_menu_ = nullptr;
  bool highlighted_opens_ = false;
  Surface scratch_;
};

}  // namespace kestrelon
