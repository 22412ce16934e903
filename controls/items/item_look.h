// What one item of a list, combo box or tree looks like: everything its painter is told.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "imaging/c32bpp_dib.h"
#include "lists/item_layout.h"
#include "lists/list_entry.h"
#include "lists/text_match.h"

namespace kestrelon {

/// Plain colours, 0x00BBGGRR, system colours resolved.
struct ItemColors {
  ColorRef back = 0xFFFFFF;
  ColorRef text = 0;
  ColorRef current1 = 0, current2 = 0, current_border = 0;  ///< selected and focused
  ColorRef selected_back = 0;                               ///< selected otherwise
  ColorRef selected_text = 0;
  ColorRef hot = 0;  ///< ground under the pointer
  ColorRef disabled_text = 0x99A8AC;
  ColorRef heading = 0;
  ColorRef line = 0xBEBEBE;  ///< under headings, around check boxes
  ColorRef tick = 0;
  ColorRef shadow = 0;
  bool shadowed = false;  ///< texts cast a shadow
};

enum class TickBox { kNone, kEmpty, kTicked, kMixed };

struct ItemLook {
  std::wstring_view text;
  std::optional<TextMatch> bold_part;  ///< of the text
  const c32bppDIB* image = nullptr;
  const std::vector<int>* columns = nullptr;  ///< widths; null: one column
  TickBox tick = TickBox::kNone;
  uint32_t fore_color = kNoColor, back_color = kNoColor;  ///< its own
  bool current = false;                                   ///< the focused one, and selected
  bool selected = false;
  bool focus_rect = false;
  bool hot = false;
  bool disabled = false;
  bool bold = false;
  bool heading = false;
  bool wrapped = false;  ///< the text may take several lines
  bool mirrored = false;
};

}  // namespace kestrelon
