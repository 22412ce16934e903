// USAlphaImage: a picture drawn with its alpha over whatever lies behind it.
#pragma once

#include "frame/control_frame.h"
#include "frame/hover.h"
#include "imaging/dib_win.h"
#include "us_alpha_image_glue.h"

namespace kestrelon {

class USAlphaImage final : public USAlphaImageGlue<USAlphaImage, ControlFrame> {
 public:
  USAlphaImage();

  // In the order of the property bag.
  Property<long> Opacity{*this, L"Opacity", 100, &USAlphaImage::redraw};
  Property<ENUM_HITTEST_STYLE> HitTest{*this, L"HitTest", Entire_Control, &USAlphaImage::redraw};
  Property<bool> Enabled{*this, L"Enabled", true, &USAlphaImage::redraw};

  bool load_image_from_file(const std::wstring& name, long width, long height, long depth);
  bool is_mouse_over() { return hover_.over(); }
  void refresh() { redraw(); }

 private:
  void redraw();
  void resized() override { redraw(); }
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  bool has_alpha() const override { return true; }
  bool hit(POINT point) const override;
  const Property<bool>* enabled_property() const override { return &Enabled; }

  WindowsImage image_;
  Hover hover_;
};

}  // namespace kestrelon
