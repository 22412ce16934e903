// The title strip and the edges, drawn from what the skin knows.
#include <algorithm>

#include "chrome/us_form/us_form.h"
#include "frame/kit/lines.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "frame/translate_color.h"

namespace kestrelon {

using skin::Button;

void USForm::redraw() {
  dirty_ = true;
  invalidate();
}

void USForm::redraw_chrome() {
  if (host_.gone() || closing_ || host_.minimized()) return;
  redraw();
  edges_.invalidate();
  cut_corners();
}

skin::BoxState USForm::box_state() const {
  if (!live()) return {};
  return {active_, host_.maximized(), hover_, (last_keys_ & MK_LBUTTON) != 0};
}

skin::Buttons USForm::buttons() const {
  return {ShowControlBox.get(),
          {ShowMinimize.get(), ShowMaximize.get(), ShowClose.get()},
          {EnableMinimizeButton.get(), EnableMaximizeButton.get(), EnableCloseButton.get()}};
}

void USForm::about_to_show() {
  if (!dirty_ || !surface()) return;
  dirty_ = false;
  draw();
  surface_drawn();
}

void USForm::draw() {
  sheet_.load(Theme.get(), scale());
  if (high_contrast() || !sheet_) {
    draw_contrast();
  } else {
    const PixelView view = surface().pixels();
    const long theme = Theme.get();
    const int height = strip_height(), width = unit_width();
    const PixelRect strip = skin::strip_in_sheet(theme, !live() || active_, scale());
    const PixelRect column{strip.right - 1, strip.top, strip.right, strip.bottom};
    sheet_.draw(view, {0, 0, scale()(skin::kStripWidth), height}, strip);
    const int filled = skin::kStripWidth + skin::fill_width(theme, ShowControlBox.get(), width);
    sheet_.draw(view, {scale()(skin::kStripWidth), 0, scale()(filled), height}, column);
    draw_box();
  }
  draw_icon();
  draw_caption();
}

void USForm::draw_box() {
  const PixelView view = surface().pixels();
  const long theme = Theme.get();
  const int height = strip_height(), width = unit_width();
  const PixelRect strip = skin::strip_in_sheet(theme, !live() || active_, scale());
  const PixelRect column{strip.right - 1, strip.top, strip.right, strip.bottom};
  const PixelRect box = skin::box_in_sheet(theme, skin::control_box_picture(box_state()), scale());
  // From the real end, so that the right border never lies a pixel off it.
  const int left = strip_width() - scale()(skin::box_width(theme));
  sheet_.draw(view, {left, 0, strip_width(), height}, box);
  const auto at = [&](int unit_x) {
    return left + scale()(unit_x - width + skin::box_width(theme));
  };
  const skin::Buttons now = buttons();
  const skin::Masks masks = skin::button_masks(theme, now, width);
  for (size_t i = 0; i < masks.count; ++i) {
    const skin::Mask& mask = masks.parts[i];
    sheet_.draw(view, {at(mask.x), 0, at(mask.x + mask.width), height}, column);
  }
  // A button that does not answer fades towards the strip behind it.
  DibSection plain;
  for (const Button button : {Button::kMinimize, Button::kMaximize, Button::kClose}) {
    if (!now.box || !now.shows(button) || now.answers(button)) continue;
    if (!plain && !plain.create(1, height)) return;
    sheet_.draw(plain.pixels(), {0, 0, 1, height}, column);
    const skin::Zone zone = skin::button_zone(theme, button);
    const int first = std::max(0, left + scale()(zone.first));
    const int last = std::min(view.width, left + scale()(zone.last + 1));
    constexpr double kFaded = 0.65;
    for (int y = 0; y < std::min(height, view.height); ++y) {
      const ColorRef behind = to_color(plain.pixels().row(y)[0] & kColorBits);
      for (int x = first; x < last; ++x)
        view.row(y)[x] =
            to_pixel(BlendColor(to_color(view.row(y)[x] & kColorBits), behind, kFaded));
    }
  }
}

// In high contrast, and for a theme without pictures: the system's colours and marks.
void USForm::draw_contrast() {
  const bool lit = !live() || active_;
  surface().clear(GetSysColor(lit ? COLOR_ACTIVECAPTION : COLOR_INACTIVECAPTION));
  const skin::Buttons now = buttons();
  const skin::BoxState state = box_state();
  const UINT marks[] = {DFCS_CAPTIONMIN,
                        state.maximized ? UINT{DFCS_CAPTIONRESTORE} : UINT{DFCS_CAPTIONMAX},
                        DFCS_CAPTIONCLOSE};
  const int left = strip_width() - scale()(skin::box_width(Theme.get()));
  for (const Button button : {Button::kMinimize, Button::kMaximize, Button::kClose}) {
    if (!now.box || !now.shows(button)) continue;
    const skin::Zone zone = skin::button_zone(Theme.get(), button);
    RECT area{left + scale()(zone.first), scale()(5), left + scale()(zone.last + 1), scale()(23)};
    UINT mark = marks[static_cast<size_t>(button) - 1];
    if (!now.answers(button)) mark |= DFCS_INACTIVE;
    if (state.hot == button) mark |= state.pressed ? DFCS_PUSHED : DFCS_HOT;
    DrawFrameControl(surface().dc(), &area, DFC_CAPTION, mark);
  }
}

void USForm::draw_icon() {
  const ComPtr<IPictureDisp> shown = icon();
  const auto picture = shown.as<IPicture>();
  if (!picture) return;
  short type = PICTYPE_NONE;
  OLE_HANDLE handle = 0;
  picture->get_Type(&type);
  picture->get_Handle(&handle);
  const int side = scale()(skin::kIconSide), x = scale()(8), y = scale()(6);
  const HDC dc = surface().dc();
  if (type == PICTYPE_ICON) {
    DrawIconEx(dc, x, y, reinterpret_cast<HICON>(static_cast<LONG_PTR>(static_cast<int>(handle))),
               side, side, 0, nullptr, DI_NORMAL);
    return;
  }
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  picture->get_Width(&width);
  picture->get_Height(&height);
  if (width > 0 && height > 0)
    picture->Render(dc, x, y, side, side, 0, height, width, -height, nullptr);
}

void USForm::draw_caption() {
  const std::wstring text = caption();
  if (text.empty()) return;
  const bool lit = !live() || active_;
  const PixelRect unit =
      skin::caption_place(static_cast<bool>(icon()), ShowControlBox.get(), unit_width());
  RECT area{scale()(unit.left), scale()(unit.top), scale()(unit.right), scale()(unit.bottom)};
  const HDC dc = surface().dc();
  const SelectedFont font(dc, Font.handle());
  skin::CaptionColors colors = skin::caption_colors(
      Theme.get(), lit,
      {TranslateColor(ForeColor.get()), TranslateColor(ForeColorDelimiter.get())});
  if (high_contrast()) {
    colors.main = colors.delimiter =
        GetSysColor(lit ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT);
  }
  constexpr UINT kFormat = DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
  const size_t split = skin::caption_split(text, CaptionDelimiter.get());
  const std::wstring_view first = std::wstring_view(text).substr(0, split);
  SetTextColor(dc, colors.main);
  DrawTextUnicode(dc, first, -1, &area, kFormat);
  if (split == text.size()) return;
  SIZE size{};
  GetTextExtentPoint32W(dc, first.data(), static_cast<int>(first.size()), &size);
  area.left += size.cx;
  if (area.left >= area.right) return;
  SetTextColor(dc, colors.delimiter);
  DrawTextUnicode(dc, std::wstring_view(text).substr(split), -1, &area, kFormat);
}

void USForm::paint_edge(skin::Edge edge, HDC dc, const RECT& area) {
  sheet_.load(Theme.get(), scale());
  if (high_contrast() || !sheet_) {
    FillRect(dc, &area, GetSysColorBrush(active_ ? COLOR_ACTIVEBORDER : COLOR_INACTIVEBORDER));
    return;
  }
  sheet_.draw(dc, area, skin::edge_in_sheet(Theme.get(), edge, active_, scale()));
}

}  // namespace kestrelon
