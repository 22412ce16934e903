#include "chrome/us_form/skin_sheet.h"

#include "base/decimal.h"
#include "base/module_win.h"
#include "frame/kit/blit.h"
#include "imaging/dib_win.h"

namespace kestrelon {

void SkinSheet::load(long theme, Scale scale) {
  const int percent = skin::sheet_percent(scale);
  if (theme == theme_ && percent == percent_) return;
  theme_ = theme;
  percent_ = percent;
  pixels_.reset();
  if (skin::picture_base(theme) == 0) return;
  const std::wstring name = L"FORM_" + decimal_text(theme) + L"_" + decimal_text(percent);
  WindowsImage image;
  if (load_resource_image(image, module_instance(), name.c_str(),
                          reinterpret_cast<const wchar_t*>(RT_RCDATA)) &&
      pixels_.create(static_cast<int>(image.Width()), static_cast<int>(image.Height())))
    render_to_dc(image, pixels_.dc(), 0, 0);
}

void SkinSheet::draw(const PixelView& target, const PixelRect& area, const PixelRect& from) const {
  if (pixels_) stretch_blit(target, area, pixels_.pixels(), from);
}

void SkinSheet::draw(HDC target, const RECT& area, const PixelRect& from) const {
  if (!pixels_) return;
  SetStretchBltMode(target, COLORONCOLOR);
  StretchBlt(target, static_cast<int>(area.left), static_cast<int>(area.top),
             static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top),
             pixels_.dc(), from.left, from.top, from.right - from.left, from.bottom - from.top,
             SRCCOPY);
}

}  // namespace kestrelon
