// USMenu: a bar of menus, or menus that a program pops up, with images and themes.
#pragma once

#include "chrome/us_menu/menu_popup.h"
#include "controls/items/images_pack.h"
#include "frame/display_control.h"
#include "frame/record_property.h"
#include "frame/self_sub.h"
#include "us_menu_glue.h"

namespace kestrelon {

class MenuControl : public DisplayControl {
 public:
  using DisplayControl::DisplayControl;

 protected:
  void relayout() { redraw(); }
};

class USMenu final : public USMenuGlue<USMenu, ImagesPack<MenuControl>>, private MenuPopupOwner {
 public:
  USMenu();

  // In the order of the property bag, after those of the bases.
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USMenu::apply_theme};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0xFFFFFF, &USMenu::redraw};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USMenu::redraw};
  Property<OLE_COLOR> BorderColorOver{*this, L"BorderColorOver", 0xB17F3C, &USMenu::redraw};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USMenu::redraw};
  Property<OLE_COLOR> ForeColorDisabled{*this, L"ForeColorDisabled", 0x80000011, &USMenu::redraw};
  Property<OLE_COLOR> ForeColorOver{*this, L"ForeColorOver", 0, &USMenu::redraw};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFEF9F4, &USMenu::redraw};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xF5E7DC, &USMenu::redraw};
  Property<OLE_COLOR> GradientColorImage1{*this, L"GradientColorImage1", 0xFEF9F4, &USMenu::redraw};
  Property<OLE_COLOR> GradientColorImage2{*this, L"GradientColorImage2", 0xF5E7DC, &USMenu::redraw};
  Property<OLE_COLOR> GradientColorOver1{*this, L"GradientColorOver1", 0xFDF5E8, &USMenu::redraw};
  Property<OLE_COLOR> GradientColorOver2{*this, L"GradientColorOver2", 0xFCF1DC, &USMenu::redraw};
  Property<short> ImageSize{*this, L"ImageSize", 16, &USMenu::redraw};
  Property<ENUM_MENU_MODE> Mode{*this, L"Mode", Menu_Bar, &USMenu::mode_changed};
  Property<bool> ShowShortCuts{*this, L"ShowShortCuts", true, &USMenu::redraw};
  RecordList<MenuItem> items{*this,
                             L"ItemCount",
                             &USMenu::items_changed,
                             field(L"ItemCaption", &MenuItem::caption),
                             field(L"ItemChecked", &MenuItem::checked),
                             field(L"ItemDefault", &MenuItem::is_default),
                             field(L"ItemDescription", &MenuItem::description),
                             field(L"ItemEnabled", &MenuItem::enabled),
                             field(L"ItemImage", &MenuItem::image),
                             field(L"ItemKey", &MenuItem::key),
                             field(L"ItemLevel", &MenuItem::level),
                             field(L"ItemRadio", &MenuItem::radio),
                             field(L"ItemShortCut", &MenuItem::short_cut),
                             field(L"ItemTag", &MenuItem::tag),
                             field(L"ItemVisible", &MenuItem::visible)};

  // us_menu_items.cpp: items by their position from 1 or by their key. What names none reads as
  // empty and sets nothing.
  short image_size() const { return ImageSize.get(); }
  void set_image_size(short side) { ImageSize.put(side); }
  long item_count() const { return static_cast<long>(items.size()); }
  std::wstring item_caption(const VARIANT& item) const { return get(item, &MenuItem::caption); }
  void set_item_caption(const VARIANT& item, const std::wstring& caption) {
    set(L"ItemCaption", item, &MenuItem::caption, caption);
  }
  bool item_checked(const VARIANT& item) const { return get(item, &MenuItem::checked); }
  void set_item_checked(const VARIANT& item, bool checked) {
    set(L"ItemChecked", item, &MenuItem::checked, checked);
  }
  bool item_default(const VARIANT& item) const { return get(item, &MenuItem::is_default); }
  void set_item_default(const VARIANT& item, bool is_default) {
    set(L"ItemDefault", item, &MenuItem::is_default, is_default);
  }
  std::wstring item_description(const VARIANT& item) const {
    return get(item, &MenuItem::description);
  }
  void set_item_description(const VARIANT& item, const std::wstring& text) {
    set(L"ItemDescription", item, &MenuItem::description, text);
  }
  bool item_enabled(const VARIANT& item) const {
    return find(item) >= 0 && get(item, &MenuItem::enabled);
  }
  void set_item_enabled(const VARIANT& item, bool enabled) {
    set(L"ItemEnabled", item, &MenuItem::enabled, enabled);
  }
  Variant item_image(const VARIANT& item) const;
  void set_item_image(const VARIANT& item, const VARIANT& image);
  std::wstring item_key(const VARIANT& item) const { return get(item, &MenuItem::key); }
  void set_item_key(const VARIANT& item, const std::wstring& key);
  short item_level(const VARIANT& item) const { return get(item, &MenuItem::level); }
  void set_item_level(const VARIANT& item, short level) {
    set(L"ItemLevel", item, &MenuItem::level, level);
  }
  bool item_radio(const VARIANT& item) const { return get(item, &MenuItem::radio); }
  void set_item_radio(const VARIANT& item, bool radio) {
    set(L"ItemRadio", item, &MenuItem::radio, radio);
  }
  std::wstring item_short_cut(const VARIANT& item) const { return get(item, &MenuItem::short_cut); }
  void set_item_short_cut(const VARIANT& item, const std::wstring& keys) {
    set(L"ItemShortCut", item, &MenuItem::short_cut, keys);
  }
  std::wstring item_tag(const VARIANT& item) const { return get(item, &MenuItem::tag); }
  void set_item_tag(const VARIANT& item, const std::wstring& tag) {
    set(L"ItemTag", item, &MenuItem::tag, tag);
  }
  bool item_visible(const VARIANT& item) const {
    return find(item) >= 0 && get(item, &MenuItem::visible);
  }
  void set_item_visible(const VARIANT& item, bool visible) {
    set(L"ItemVisible", item, &MenuItem::visible, visible);
  }
  short add_item(const std::wstring& caption, const std::wstring& key, const std::wstring& parent,
                 const VARIANT& image, const std::wstring& short_cut, const std::wstring& before);
  void remove_item(const VARIANT& item);
  void clear(const std::wstring& parent);
  short item_index(const std::wstring& key) const;

  // us_menu_open.cpp
  std::wstring popup_menu(const std::wstring& key, long x, long y, ENUM_ALIGNMENTS alignment);
  void close_menu();

 private:
  int find(const VARIANT& item) const;
  template <class T>
  T get(const VARIANT& item, T MenuItem::*member) const;
  template <class T>
  void set(const wchar_t* name, const VARIANT& item, T MenuItem::*member, T value);

  // us_menu.cpp
  void init_properties() override;
  void properties_read() override;
  void window_created() override;
  void shown() override;
  void hidden() override { MenuPopup::cancel(); }
  void terminate() override;
  void closing() override { end(); }
  void font_changed() override { items_changed(); }
  void rescaled() override { redraw(); }
  void ambient_changed(DISPID id) override;
  void apply_theme();
  void mode_changed();
  void items_changed();
  void end();
  bool is_bar() { return Mode.get() != Menu_Popup; }
  HWND form_window() const;
  void listen();
  static LRESULT CALLBACK key_hook(int code, WPARAM wparam, LPARAM lparam);
  bool short_cut_pressed(const MSG& message);
  /// Alt or F10 alone, and Alt with a letter that no control has taken, come to the form as a
  /// command of its system menu.
  class FormListener final : public kestrelon::SelfSubOwner {
   public:
    explicit FormListener(USMenu& menu) : menu_(menu) {}
    void WindowProcHook(bool before, bool& handled, LRESULT& result, HWND window, UINT message,
                        WPARAM wparam, LPARAM lparam, LPARAM user) override;

   private:
    USMenu& menu_;
  };

  // us_menu_bar.cpp
  void draw() override;
  void lay_out();
  void draw_bar_item(int place);
  std::vector<int> bar_items() const;
  int place_at(POINT point);
  void set_hot(int place);
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void hover_changed() override;
  bool wants_key(int key, short shift) const override;
  void key_down(short& key, short& shift) override;
  void lost_focus() override;
  void access_key_press(short key) override;
  bool enter_bar(wchar_t letter);
  void leave_bar();
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override;
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override { return hot_ + 1; }
  void accessible_default_action(long child) override;

  // us_menu_open.cpp
  MenuLook look();
  void open_place(int place, bool by_key);
  MenuPopup::Outcome open_popup(int parent, POINT at, UINT flags, const RECT* spare, bool by_key);
  void choose(const std::wstring& key);
  const std::vector<MenuItem>& menu_items() const override { return items.get(); }
  const c32bppDIB* menu_image(const std::wstring& image) override;
  void submenu_opening(const std::wstring& key) override;
  void menu_highlight(const std::wstring& key, const std::wstring& description) override;
  std::optional<int> bar_step(int step) override;
  std::optional<int> bar_at(POINT screen) override;

  menu_model::Bar bar_;
  bool laid_out_ = false;
  int hot_ = menu_model::kNone;   // the place under the pointer or the keyboard
  int open_ = menu_model::kNone;  // the place whose menu is open
  HWND focus_before_ = nullptr;   // the keyboard came from there
  bool ended_ = false;
  HHOOK hook_ = nullptr;
  FormListener listener_{*this};
  cSelfSub form_listener_;
  HWND listened_ = nullptr;
};

}  // namespace kestrelon
