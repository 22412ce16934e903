// The system's dialogs for colours and fonts.
#include <windows.h>

#include <commdlg.h>

#include "chrome/us_tool_bar/us_tool_bar.h"
#include "frame/himetric.h"
#include "frame/translate_color.h"

namespace kestrelon {
namespace {

HWND window_of(long handle) {
  const HWND window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle));
  return IsWindow(window) ? window : nullptr;
}

constexpr long kPointsPerInch = 72;

void apply(IFont* font, const CHOOSEFONTW& chosen) {
  const LOGFONTW& look = *chosen.lpLogFont;
  font->put_Name(Bstr(look.lfFaceName).get());
  CY size{};
  size.int64 = chosen.iPointSize * 1000LL;  // tenths of points to ten thousandths
  font->put_Size(size);
  font->put_Weight(static_cast<SHORT>(look.lfWeight));
  font->put_Italic(look.lfItalic != 0);
  font->put_Underline(look.lfUnderline != 0);
  font->put_Strikethrough(look.lfStrikeOut != 0);
  font->put_Charset(look.lfCharSet);
}

}  // namespace

long USToolBar::show_color(long parent, OLE_COLOR color) {
  static COLORREF own_colors[16];  // the user's own, kept from dialog to dialog
  CHOOSECOLORW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = window_of(parent);
  dialog.rgbResult = TranslateColor(color);
  dialog.lpCustColors = own_colors;
  dialog.Flags = CC_RGBINIT | CC_FULLOPEN;
  return static_cast<long>(ChooseColorW(&dialog) ? dialog.rgbResult : color);
}

bool USToolBar::show_font(IFontDisp* shown) {
  const auto font = query<IFont>(shown);
  HFONT handle = nullptr;
  LOGFONTW look{};
  if (!font || FAILED(font->get_hFont(&handle)) || GetObjectW(handle, sizeof look, &look) == 0)
    return false;
  CY size{};
  font->get_Size(&size);
  look.lfHeight = -MulDiv(static_cast<int>(size.int64 / 100), screen_resolution().y,
                          static_cast<int>(kPointsPerInch * 100));
  CHOOSEFONTW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = window();
  dialog.lpLogFont = &look;
  dialog.Flags = CF_SCREENFONTS | CF_EFFECTS | CF_INITTOLOGFONTSTRUCT;
  if (!ChooseFontW(&dialog)) return false;
  apply(font.get(), dialog);
  refresh();
  return true;
}

}  // namespace kestrelon
