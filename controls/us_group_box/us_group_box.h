// USGroupBox: a framed and titled container. Other controls stand on it; the container of the form
// holds them, and this control shows it the messages of its window.
#pragma once

#include "controls/items/images_pack.h"
#include "controls/us_group_box/barred_children.h"
#include "controls/us_group_box/group_layout.h"
#include "frame/standing_controls.h"
#include "frame/themed_display.h"
#include "frame/value_property.h"
#include "us_group_box_glue.h"

namespace kestrelon {

/// What the pack of images needs of its base.
class GroupFace : public ThemedDisplay {
 public:
  Property<bool> ShowFocusRect{*this, L"ShowFocusRect", true, &GroupFace::relayout};

 protected:
  using ThemedDisplay::ThemedDisplay;
  void relayout() { redraw(); }
};

class USGroupBox final : public USGroupBoxGlue<USGroupBox, ImagesPack<GroupFace>> {
 public:
  USGroupBox();

  // In the order of the property bag, after those of the base.
  Property<ENUM_ALIGNMENTS> Alignment{*this, L"Alignment", To_Left_Justify, &USGroupBox::relayout};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USGroupBox::relayout};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USGroupBox::caption_changed};
  Property<bool> CheckBoxMode{*this, L"CheckBoxMode", false, &USGroupBox::bars_changed};
  Property<bool> Collapsed{*this, L"Collapsed", false};
  Property<bool> Collapsible{*this, L"Collapsible", false, &USGroupBox::relayout};
  Property<long> ExpandedHeight{*this, L"ExpandedHeight", 0};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0x9C321F, &USGroupBox::relayout};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xFEF9F4, &USGroupBox::relayout};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xF1F0EC, &USGroupBox::relayout};
  Property<OLE_COLOR> GradientHeader1{*this, L"GradientHeader1", 0xFEF9F4, &USGroupBox::relayout};
  Property<OLE_COLOR> GradientHeader2{*this, L"GradientHeader2", 0xF1F0EC, &USGroupBox::relayout};
  Property<long> HeaderHeight{*this, L"HeaderHeight", 22, &USGroupBox::header_changed};
  ValueProperty HeaderImage{*this, L"HeaderImage"};
  Property<bool> RoundCorners{*this, L"RoundCorners", true, &USGroupBox::relayout};
  Property<bool> ShowHeader{*this, L"ShowHeader", true, &USGroupBox::header_changed};
  Property<bool> UseGradient{*this, L"UseGradient", true, &USGroupBox::relayout};
  Property<bool> Value{*this, L"Value", true};

  // Members of the interface.
  const VARIANT& header_image() const { return HeaderImage.get(); }
  void set_header_image(const VARIANT& image);
  void set_collapsed(bool collapsed);
  void set_expanded_height(long height);
  void set_value(bool value);

 private:
  struct Colors {
    COLORREF border, text, body1, body2, header1, header2;
  };

  // us_group_box.cpp
  void init_properties() override;
  void properties_read() override;
  void shown() override { apply_bars(); }
  void rescaled() override { redraw(); }
  void terminate() override;
  void theme_changed() override;
  void describe(AccessibleItem& item) const override;
  void accessible_default_action(long child) override;
  void enabled_changed() override;
  void caption_changed();
  void header_changed();
  void bars_changed();
  void apply_bars();
  bool barred() const;
  void fold(bool collapsed);
  void toggle_value() { set_value(!Value.get()); }
  bool wants_input_again(HWND child);
  std::vector<StandingControl> standing();

  // us_group_box_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void hover_changed() override;
  void key_down(short& key, short& shift) override;
  bool wants_key(int key, short shift) const override;
  void got_focus() override;
  void lost_focus() override { redraw(); }
  void access_key_press(short key) override;
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  bool focusable() const { return CheckBoxMode.get() || can_fold(); }
  bool can_fold() const { return Collapsible.get() && ShowHeader.get(); }
  void press(GroupPart part);
  bool focus_first_child();

  // us_group_box_draw.cpp
  bool has_alpha() const override { return true; }
  void draw() override;
  GroupPlaces places();
  int header_height();
  Colors colors() const;
  void draw_body(const Colors& colors);
  void draw_header(const GroupPlaces& places, const Colors& colors);
  void draw_box(const PixelRect& area, const Colors& colors);
  void draw_arrow(const PixelRect& area, const Colors& colors);
  void draw_caption(const PixelRect& area, const Colors& colors);
  void settle_alpha(int header);

  BarredChildren bars_{[this](HWND child) { return wants_input_again(child); }};
  GroupPart hot_ = GroupPart::kNone;
  bool folding_ = false;
};

}  // namespace kestrelon
