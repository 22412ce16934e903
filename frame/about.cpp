#include "frame/about.h"

#include "base/module_win.h"
#include "base/resource_ids.h"
#include "frame/kit/gradient.h"
#include "frame/surface.h"

namespace kestrelon {
namespace {

constexpr ColorRef kBandTop = 0xB17F3C, kBandBottom = 0xDBC9BA;  // the blues of the newest theme
constexpr int kTitlePoints = 20;

struct AboutFonts {
  HFONT title = nullptr;
  ~AboutFonts() {
    if (title != nullptr) DeleteObject(title);
  }
};

HFONT title_font(HWND dialog) {
  LOGFONTW look{};
  const auto font = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
  if (font == nullptr || GetObjectW(font, sizeof look, &look) == 0) return nullptr;
  const HDC dc = GetDC(dialog);
  look.lfHeight = -MulDiv(kTitlePoints, GetDeviceCaps(dc, LOGPIXELSY), 72);
  look.lfWeight = FW_SEMIBOLD;
  ReleaseDC(dialog, dc);
  return CreateFontIndirectW(&look);
}

RECT band_of(HWND dialog) {
  RECT band{0, 0, 0, 36};  // dialog units
  MapDialogRect(dialog, &band);
  RECT client{};
  GetClientRect(dialog, &client);
  band.right = client.right;
  return band;
}

void paint_band(HWND dialog, HDC dc, HFONT font) {
  const RECT band = band_of(dialog);
  Surface surface;
  if (!surface.resize(static_cast<int>(band.right), static_cast<int>(band.bottom))) return;
  DrawGradient(surface.pixels(), kBandTop, kBandBottom, 50, 0, 0, -1, -1);
  const HGDIOBJ displaced = SelectObject(surface.dc(), font);
  SetTextColor(surface.dc(), RGB(255, 255, 255));
  RECT place = band;
  place.left += (band.bottom - band.top) / 3;
  DrawTextW(surface.dc(), L"Kestrelon 2012", -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  SelectObject(surface.dc(), displaced);
  BitBlt(dc, 0, 0, surface.width(), surface.height(), surface.dc(), 0, 0, SRCCOPY);
}

INT_PTR CALLBACK about_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const fonts = reinterpret_cast<AboutFonts*>(GetWindowLongPtrW(dialog, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG:
      SetWindowLongPtrW(dialog, DWLP_USER, lparam);
      reinterpret_cast<AboutFonts*>(lparam)->title = title_font(dialog);
      return TRUE;
    case WM_PAINT: {
      PAINTSTRUCT paint;
      const HDC dc = BeginPaint(dialog, &paint);
      if (dc != nullptr && fonts != nullptr) paint_band(dialog, dc, fonts->title);
      EndPaint(dialog, &paint);
      return TRUE;
    }
    case WM_COMMAND:
      if (LOWORD(wparam) != IDOK && LOWORD(wparam) != IDCANCEL) return FALSE;
      EndDialog(dialog, IDOK);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

void show_about_window(HWND owner) {
  AboutFonts fonts;
  DialogBoxParamW(module_instance(), MAKEINTRESOURCEW(IDD_ABOUT),
                  owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr, about_procedure,
                  reinterpret_cast<LPARAM>(&fonts));
}

}  // namespace kestrelon
