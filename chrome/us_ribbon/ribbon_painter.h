// Paints a ribbon. Reads no control and no window: scene, look and pictures give the pixels.
#pragma once

#include "chrome/us_ribbon/ribbon_layout.h"
#include "chrome/us_ribbon/ribbon_palette.h"
#include "frame/surface.h"

namespace kestrelon {
class c32bppDIB;
}

namespace kestrelon::ribbon {

struct Look {
  const Palette* palette = nullptr;
  ColorRef category = 0, button = 0, tab_normal = 0, tab_selected = 0;
  HFONT font = nullptr;
  bool enabled = true;
  bool right_to_left = false;
  Target hot, pressed;
  int focus = Model::kNone;  ///< the button the keyboard is on, by entry; looks as under a pointer
  bool focus_mark = false;   ///< and has a dotted frame
  bool tab_focus = false;    ///< the keyboard is on the selected tab
};

/// Where pictures come from; null where there is none. By entry.
class Pictures {
 public:
  virtual const c32bppDIB* button_picture(int entry) = 0;
  virtual const c32bppDIB* tab_button_picture(int entry) = 0;

 protected:
  ~Pictures() = default;
};

class Painter {
 public:
  Painter(Surface& surface, const Model& model, const Scene& scene, const Look& look,
          Pictures& pictures, Scale scale);

  /// All that lies in `clip`, which is the area of an element or the whole surface.
  void paint(const PixelRect& clip);

 private:
  void paint_strip();
  void paint_tab(size_t at);
  void paint_body();
  void paint_category(size_t at);
  void paint_launcher(size_t at);
  void paint_button(size_t at);
  void paint_drop(const ButtonPlace& place, bool lit);
  void paint_tab_button(size_t at);
  void paint_scroll(const PixelRect& area, Part part);
  void paint_picture(const c32bppDIB* picture, const PixelRect& area, bool dim);
  void paint_text(std::wstring_view text, const PixelRect& area, ColorRef color, UINT flags);

  bool touched(const PixelRect& area) const { return !intersect(area, canvas_.clip).empty(); }
  bool is(const Target& target, Part part, size_t at) const {
    return target.part == part && target.at == static_cast<int>(at);
  }
  /// The box of a lit element; null while it is plain.
  const BoxColors* lit(Part part, size_t at) const;
  const BoxColors* button_box(const ButtonPlace& place, size_t at) const;
  ColorRef ink(ColorRef property, bool lit) const;
  int radius(int pixels) const { return palette_.frames ? scale_(pixels) : 0; }

  Surface& surface_;
  const Model& model_;
  const Scene& scene_;
  const Look& look_;
  const Palette& palette_;
  Pictures& pictures_;
  Scale scale_;
  Canvas canvas_;
};

}  // namespace kestrelon::ribbon
