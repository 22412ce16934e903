// One category by itself: its buttons in columns, from its left top corner on.
#pragma once

#include "chrome/us_ribbon/ribbon_layout.h"

namespace kestrelon::ribbon {

/// Lengths in pixels at 96 dots an inch. Those in comments are twips, of which 15 make a pixel.
namespace measure {
inline constexpr int kTabRow = 23, kWhole = 116;          // 340 and 1740
inline constexpr int kTabTop = 3;                         // 50
inline constexpr int kCategoryTop = 2;                    // 30
inline constexpr int kStripTop = 73, kStripHeight = 15;   // 1090
inline constexpr int kButtonTop = 2, kButtonHeight = 69;  // 30
inline constexpr int kIconTop = 3, kLargeIcon = 32, kSmallIcon = 16;
inline constexpr int kTextTop = 37;
inline constexpr int kRowHeight = 23;  // three rows of small buttons
inline constexpr int kLeastLarge = 42, kLargePad = 5;
inline constexpr int kCategoryPad = 3, kCategoryGap = 2;
inline constexpr int kCaptionPad = 6;  // 90
inline constexpr int kLauncher = 15;
inline constexpr int kArrow = 5, kArrowGap = 4;  // 60
inline constexpr int kScroll = 13;
inline constexpr int kDropWidth = 13;
}  // namespace measure

struct Block {
  Step step = Step::kFull;
  int width = 0;
  std::vector<ButtonPlace> buttons;  ///< areas count from the block's left top corner
};

Block build_block(const Model& model, const Category& category, Step step, const Spec& spec,
                  TextRuler& ruler);

/// Moves a button with all its parts.
void move_button(ButtonPlace& button, int x, int y);

bool has_arrow(const Button& button, const ButtonState& state);

}  // namespace kestrelon::ribbon
