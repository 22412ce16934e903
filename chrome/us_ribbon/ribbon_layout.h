// Where the elements of a ribbon lie: from its model, its size and the widths of its texts to a
// scene of rectangles. Numbers alone; the scene is what is painted, hit and told to readers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chrome/us_ribbon/ribbon_model.h"
#include "frame/kit/pixel_view.h"
#include "frame/kit/scale.h"

namespace kestrelon::ribbon {

/// Measures texts in the ribbon's font; pixels of the screen.
class TextRuler {
 public:
  /// The width of a caption in one line, without the marks of access keys.
  virtual int width(std::wstring_view caption) = 0;
  virtual int line_height() = 0;

 protected:
  ~TextRuler() = default;
};

/// How far a category is reduced to fit: its large buttons become medium, then all small.
enum class Step { kFull = 0, kMedium = 1, kSmall = 2 };

struct Spec {
  int width = 0;
  int height = 0;
  Scale scale;
  bool tabs_shown = true;
  bool center = false;  ///< buttons in the middle of a category that is wider than they
  bool shrink = false;  ///< reduces categories before they are scrolled
  int built_tabs = 0;   ///< tabs there are elements for
  int built_tab_buttons = 0;
  int first = 0;  ///< categories scrolled out on the left
};

struct TabPlace {
  int entry = 0;
  PixelRect area, text;
};

struct CategoryPlace {
  int entry = 0;
  Step step = Step::kFull;
  PixelRect area;
  PixelRect strip;     ///< where the caption stands
  PixelRect caption;   ///< the caption's own room in it
  PixelRect launcher;  ///< empty without one
};

struct CaptionLine {
  std::wstring text;
  PixelRect area;
};

struct ButtonPlace {
  int entry = 0;
  int category = 0;  ///< place in Scene::categories
  ButtonSize size = ButtonSize::kLarge;
  PixelRect area, icon;
  CaptionLine lines[2];  ///< small buttons have none, medium ones the first
  PixelRect arrow;       ///< empty without one
  PixelRect drop;        ///< the part of a split button that opens its list; else empty
};

struct TabButtonPlace {
  int entry = 0;
  PixelRect area, icon;
};

struct Scene {
  PixelRect strip, body;  ///< the row of tabs; the panel below it
  std::vector<TabPlace> tabs;
  std::vector<CategoryPlace> categories;
  std::vector<ButtonPlace> buttons;
  std::vector<TabButtonPlace> tab_buttons;
  PixelRect scroll_left, scroll_right;  ///< empty where nothing is scrolled out
  int first = 0;                        ///< categories scrolled out, as far as that is needed
};

Scene arrange(const Model& model, const Spec& spec, TextRuler& ruler);

/// A caption in two lines of about the same width, of which the second also holds an arrow of
/// `arrow` pixels; in one where there is no blank to break at.
struct BrokenCaption {
  std::wstring first, second;
  int width = 0;  ///< of the wider line, with the arrow
};
BrokenCaption break_caption(std::wstring_view caption, int arrow, TextRuler& ruler);

enum class Part : uint8_t {
  kNone,
  kBody,
  kTab,
  kCategory,
  kLauncher,
  kButton,
  kDrop,  ///< the lower part of a split button
  kTabButton,
  kScrollLeft,
  kScrollRight
};

/// An element of a scene: its kind and its place in the list of that kind.
struct Target {
  Part part = Part::kNone;
  int at = -1;
  bool operator==(const Target&) const = default;
};

Target hit(const Scene& scene, int x, int y);
PixelRect area_of(const Scene& scene, const Target& target);
/// The category that a target is or lies in, -1 without one.
int category_of(const Scene& scene, const Target& target);
/// What must be drawn again when the pointer passes from one element to another: at most two areas,
/// empty ones where nothing changes.
struct Damage {
  PixelRect areas[2];
};
Damage hover_damage(const Scene& scene, const Target& from, const Target& to);

}  // namespace kestrelon::ribbon
