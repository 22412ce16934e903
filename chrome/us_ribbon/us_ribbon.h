// USRibbon: a bar of tabs, each with categories of large buttons. One painted surface; its elements
// are the rectangles of a scene (ribbon_layout.h), made anew when the ribbon is refreshed.
#pragma once

#include <map>
#include <memory>

#include "chrome/us_ribbon/ribbon_painter.h"
#include "controls/items/item_images.h"
#include "frame/control_frame.h"
#include "frame/tooltip.h"
#include "us_ribbon_glue.h"

namespace kestrelon {

class USRibbon final : public USRibbonGlue<USRibbon, ControlFrame>, private ribbon::Pictures {
 public:
  USRibbon();

  // In the order of the property bag.
  /// The name of the image list's control on the form; the object itself is never saved.
  Property<std::wstring> ImageListName{*this, L"ImageList", L""};
  Property<std::wstring> ImageListKey{*this, L"ImageListKey", L"", &USRibbon::images_changed};
  FontProperty Font{*this, L"Font", &USRibbon::font_changed};
  Property<bool> ButtonHandPointer{*this, L"ButtonHandPointer", false};
  Property<bool> TabButtonHandPointer{*this, L"TabButtonHandPointer", false};
  Property<bool> ShowButtonFocus{*this, L"ShowButtonFocus", false, &USRibbon::draw};
  Property<bool> ShowTabs{*this, L"ShowTabs", true, &USRibbon::shape_changed};
  Property<bool> ButtonCenter{*this, L"ButtonCenter", false, &USRibbon::rebuild};
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USRibbon::apply_theme};
  Property<OLE_COLOR> ForeColorCat{*this, L"ForeColorCat", 0xB86A3E, &USRibbon::draw};
  Property<OLE_COLOR> ForeColorButton{*this, L"ForeColorButton", 0x8B4215, &USRibbon::draw};
  Property<OLE_COLOR> ForeColorTabNormal{*this, L"ForeColorTabNormal", 0x8B4215, &USRibbon::draw};
  Property<OLE_COLOR> ForeColorTabSelected{*this, L"ForeColorTabSelected", 0x8B4215,
                                           &USRibbon::draw};
  Property<bool> Enabled{*this, L"Enabled", true, &USRibbon::enabled_changed};
  Property<bool> UnlimitedItems{*this, L"UnlimitedItems", false, &USRibbon::limit_changed};
  Property<bool> ShrinkGroups{*this, L"ShrinkGroups", false, &USRibbon::rebuild};

  // us_ribbon_members.cpp
  void add_tab(short index, const std::wstring& caption);
  void add_cat(short index, short tab, const std::wstring& caption, bool launcher);
  void add_button(short index, short category, const std::wstring& caption, IDispatch* picture,
                  short image, bool arrow, const std::wstring& tip);
  void add_tab_button(short index, IDispatch* picture, short image, const std::wstring& tip);
  void activate_tab(short index);
  void refresh();
  void clear();
  void remove_button();
  void remove_cat();
  void remove_tab();
  bool button_enabled(short index);
  void set_button_enabled(short index, bool enabled);
  std::wstring button_caption(short index) const;
  void set_button_caption(short index, const std::wstring& caption);
  RIBBON_BUTTON_STYLE button_style(short index);
  void set_button_style(short index, RIBBON_BUTTON_STYLE style);
  bool button_value(short index);
  void set_button_value(short index, bool value);
  RIBBON_BUTTON_SIZE button_size(short index);
  void set_button_size(short index, RIBBON_BUTTON_SIZE size);
  bool tab_visible(short index) const;
  void set_tab_visible(short index, bool visible);
  OLE_COLOR tab_color(short index) const;
  void set_tab_color(short index, OLE_COLOR color);
  short active_tab() const;
  long h_dc() const { return static_cast<long>(reinterpret_cast<LONG_PTR>(surface_dc())); }

  // us_ribbon_pictures.cpp
  ComPtr<IDispatch> image_list();
  void set_image_list(IDispatch* list);
  void bind_picture_array(VARIANT* pictures);
  void remove_picture_array(VARIANT* pictures);

 private:
  using Target = ribbon::Target;
  using Part = ribbon::Part;

  // us_ribbon.cpp
  void take_ambient_defaults() override;
  void init_properties() override { properties_read(); }
  void properties_read() override;
  void resized() override;
  void rescaled() override { forget_texts(); }
  void hidden() override { tip_.Destroy(); }
  void ambient_changed(DISPID id) override;
  void terminate() override;
  const Property<bool>* enabled_property() const override { return &Enabled; }
  FontProperty* font_property() override { return &Font; }
  HDC surface_dc() const;
  int wanted_height() const;
  void keep_height();
  void font_changed();
  void enabled_changed();
  void limit_changed() { model_.set_unlimited(UnlimitedItems.get()); }
  void shape_changed();
  void apply_theme();
  void forget_texts() { widths_.clear(); }
  void forget_input();
  void rebuild();
  void draw();
  void draw_part(const PixelRect& area);
  void draw_target(const Target& target) { draw_part(ribbon::area_of(scene_, target)); }
  void draw_button(int index);
  ribbon::Look look();
  void paint(const PixelRect& clip);
  void activate(int entry);

  // us_ribbon_pictures.cpp
  const c32bppDIB* button_picture(int entry) override;
  const c32bppDIB* tab_button_picture(int entry) override;
  const c32bppDIB* own_picture(std::map<int, std::unique_ptr<WindowsImage>>& kept, int entry,
                               const ComPtr<IDispatch>& object);
  const c32bppDIB* list_picture(int position);
  void images_changed();

  // us_ribbon_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void double_click() override { press(target_at(last_x_, last_y_)); }
  bool mouse_wheel(bool horizontal, int delta, short shift) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  Target target_at(float x, float y) const;
  bool live(const Target& target) const;
  void press(const Target& target);
  void set_hot(Target target);
  void set_pressed(const Target& target);
  void show_tip();
  void act(const Target& target);
  void click_button(int entry, const PixelRect& area);
  void drop_down(const Target& target);
  void scroll(int categories);

  // us_ribbon_keys.cpp
  bool wants_key(int key, short shift) const override;
  void key_down(short& key, short& shift) override;
  void got_focus() override;
  void lost_focus() override;
  void access_key_press(short key) override;
  void update_access_keys();
  void step_tab(int direction);
  void step_focus(int direction);
  void set_focus(int entry);
  bool bring_into_view(int entry);
  bool usable(int entry) const;
  Target button_target(int entry) const;

  // us_ribbon_accessible.cpp
  std::vector<Target> targets() const;
  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return static_cast<long>(targets().size()); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  void describe_button(const Target& target, AccessibleItem& item) const;
  long accessible_at(POINT point) const override;
  long accessible_focus() const override;
  void accessible_default_action(long child) override;
  long number_of_target(const Target& target) const;

  ribbon::Model model_;
  ribbon::Scene scene_;
  int built_tabs_ = 0, built_tab_buttons_ = 0;  // tabs there are elements for
  int first_ = 0;                               // categories the user has scrolled out
  std::map<std::wstring, int> widths_;          // measured texts, in pixels
  int asked_height_ = 0;                        // a container that refuses is asked once

  ItemImages images_{[this] { draw(); }};
  std::vector<ComPtr<IDispatch>> button_objects_, tab_button_objects_;  // by entry; may be null
  std::map<int, ComPtr<IUnknown>> bound_;                               // by number of a button
  std::map<int, std::unique_ptr<WindowsImage>> button_images_, tab_button_images_, bound_images_;

  CTooltip tip_;
  Target hot_, pressed_;
  int focus_ = ribbon::Model::kNone;  // the button the keyboard is on, by entry
  float last_x_ = 0, last_y_ = 0;
  bool left_alone_ = false;  // in a batch of changes: drawn once, at the end
};

}  // namespace kestrelon
