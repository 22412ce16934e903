// A font in a device context for as long as this lives.
#pragma once

#include <windows.h>

namespace kestrelon {

class SelectedFont {
 public:
  SelectedFont(HDC dc, HFONT font) : dc_(dc), displaced_(SelectObject(dc, font)) {}
  /// With `underlined` or `bold`, a copy of the font that is so.
  SelectedFont(HDC dc, HFONT font, bool underlined, bool bold = false) : dc_(dc) {
    if (underlined || bold) own_ = copy(font, underlined, bold);
    displaced_ = SelectObject(dc, own_ != nullptr ? own_ : font);
  }
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;
  ~SelectedFont() {
    SelectObject(dc_, displaced_);
    if (own_ != nullptr) DeleteObject(own_);
  }

 private:
  static HFONT copy(HFONT font, bool underlined, bool bold) {
    LOGFONTW description{};
    if (GetObjectW(font, sizeof description, &description) == 0) return nullptr;
    if (underlined) description.lfUnderline = TRUE;
    if (bold) description.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&description);
  }

  HDC dc_;
  HFONT own_ = nullptr;
  HGDIOBJ displaced_ = nullptr;
};

}  // namespace kestrelon
