// `ppgTheme`: theme and colours of every control that has a theme, with the control itself as the
// preview.
#pragma once

#include "frame/face/type_browser.h"
#include "frame/pages/preview_control.h"
#include "frame/pages/property_page.h"

namespace kestrelon {

class ThemePage final : public PropertyPage {
 public:
  ThemePage();
  static const ClassInfo& static_class_info();
  const ClassInfo& class_info() const override { return static_class_info(); }

 private:
  struct Color {
    DISPID id;
    std::wstring name;
    OLE_COLOR value;
  };

  void build() override;
  void show_objects() override;
  bool write_objects() override;
  void command(int id, UINT code) override;
  bool draw_item(const DRAWITEMSTRUCT& item) override;
  void edit_property(DISPID id) override;

  void read_colors();
  void show_colors();
  void theme_chosen();
  void choose_color();
  void draw_color(const DRAWITEMSTRUCT& item) const;
  void redraw_preview();

  std::vector<Color> colors_;
  std::vector<EnumChoice> themes_;
  PreviewControl preview_;
  HWND theme_box_ = nullptr;
  HWND color_list_ = nullptr;
  HWND preview_box_ = nullptr;
};

}  // namespace kestrelon
