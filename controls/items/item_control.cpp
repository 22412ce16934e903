#include "controls/items/item_control.h"

#include "frame/kit/color.h"
#include "frame/screen.h"
#include "frame/translate_color.h"

namespace kestrelon {

ItemControl::~ItemControl() {
  if (bold_ != nullptr) DeleteObject(bold_);
}

// --- life ----------------------------------------------------------------------------------------

void ItemControl::take_ambient_defaults() {
  Font.set_default(ambient().font().get());
}

void ItemControl::init_properties() {
  Font.reset();
  refresh();
}

void ItemControl::ambient_changed(DISPID) {
  relayout();
}

void ItemControl::terminate() {
  redraw_enabled_ = false;
  tip_.Destroy();
}

void ItemControl::enabled_changed() {
  apply_enabled();
  redraw();
}

void ItemControl::apply_theme() {
  kestrelon::apply_theme(theme_table(), Theme.get(), [this](const wchar_t* name, uint32_t value) {
    for (PropertyBase* property : properties())
      if (wcscmp(property->name(), name) == 0)
        if (auto* const color = dynamic_cast<Property<OLE_COLOR>*>(property)) color->put(value);
  });
  theme_applied(Theme.get());
  redraw();
}

// --- drawing on demand ---------------------------------------------------------------------------

void ItemControl::refresh() {
  redraw_enabled_ = true;
  relayout();
}

void ItemControl::redraw() {
  dirty_ = true;
  if (!redraw_enabled_ || asked_to_show_) return;
  asked_to_show_ = true;  // a loop that fills the control asks the system once
  invalidate();
}

void ItemControl::relayout() {
  layout_dirty_ = true;
  redraw();
}

void ItemControl::ensure_layout() {
  // What is laid out may change the size of the client area, by bars that come and go.
  constexpr int kMostRounds = 4;
  for (int i = 0; layout_dirty_ && i < kMostRounds; ++i) {
    layout_dirty_ = false;
    lay_out();
  }
}

void ItemControl::draw_if_needed() {
  if (!dirty_ || !redraw_enabled_ || !surface()) return;
  ensure_layout();
  dirty_ = asked_to_show_ = false;
  draw();
  surface_drawn();
}

bool ItemControl::window_message_before(UINT message, WPARAM, LPARAM, LRESULT&) {
  // Bars that come and go change the size of what is painted: before the painting begins.
  if (message == WM_PAINT && redraw_enabled_) {
    ensure_layout();
    draw_if_needed();
  }
  return false;
}

// --- font ----------------------------------------------------------------------------------------

void ItemControl::font_changed() {
  line_height_ = 0;
  if (bold_ != nullptr) DeleteObject(bold_);
  bold_ = bold_of_ = nullptr;
  relayout();
}

HFONT ItemControl::bold_font() {
  const HFONT plain = plain_font();
  if (bold_ != nullptr && bold_of_ == plain) return bold_;
  if (bold_ != nullptr) DeleteObject(bold_);
  LOGFONTW look{};
  GetObjectW(plain, sizeof look, &look);
  look.lfWeight = FW_BOLD;
  bold_ = CreateFontIndirectW(&look);
  bold_of_ = plain;
  return bold_;
}

int ItemControl::line_height() {
  if (line_height_ != 0) return line_height_;
  const HDC dc = GetDC(nullptr);
  const HGDIOBJ displaced = SelectObject(dc, plain_font());
  TEXTMETRICW metric{};
  GetTextMetricsW(dc, &metric);
  SelectObject(dc, displaced);
  ReleaseDC(nullptr, dc);
  return line_height_ = static_cast<int>(metric.tmHeight);
}

// --- colours -------------------------------------------------------------------------------------

ItemColors ItemControl::base_colors(OLE_COLOR back, OLE_COLOR text) const {
  ItemColors out;
  if (high_contrast()) {
    const auto system = [](int index) { return static_cast<ColorRef>(GetSysColor(index)); };
    out.back = system(COLOR_WINDOW);
    out.text = out.heading = out.line = out.tick = system(COLOR_WINDOWTEXT);
    out.current1 = out.current2 = out.current_border = system(COLOR_HIGHLIGHT);
    out.selected_back = system(COLOR_HIGHLIGHT);
    out.selected_text = system(COLOR_HIGHLIGHTTEXT);
    out.hot = out.back;
    out.disabled_text = system(COLOR_GRAYTEXT);
    return out;
  }
  const auto theme = static_cast<size_t>(Theme.get() < 0 || Theme.get() > 2 ? 2 : Theme.get());
  out.back = TranslateColor(back);
  out.text = TranslateColor(text);
  out.heading = out.tick = theme::kAccentText[theme];
  out.line = BlendColor(theme::kFieldBorder[theme], 0x808080, 0.4);
  return out;
}

// --- pointer and tip -----------------------------------------------------------------------------

void ItemControl::mouse_move(short button, short shift, float x, float y) {
  if (!user_mode()) return;
  switch (hover_.moved(pointer_over_window())) {
    case Hover::Move::kEnter:
      track_leave();
      raise_mouse_enter();
      hover_changed();
      break;
    case Hover::Move::kInside:
      raise_mouse_move(button, shift, x, y);
      break;
    case Hover::Move::kExit:
      raise_mouse_exit();
      hover_changed();
      break;
    case Hover::Move::kNothing:
      break;
  }
  pointer_moved(button, shift, x, y);
}

void ItemControl::window_message_after(UINT message, WPARAM, LPARAM) {
  if (message != WM_MOUSELEAVE || !user_mode()) return;
  hover_.left();
  raise_mouse_exit();
  hover_changed();
}

void ItemControl::create_tool_tip() {
  if (ToolTipDescription.get().empty() || !user_mode() || window() == nullptr) return;
  tip_.Destroy();
  tip_.BackColor = ToolTipBackColor.get();
  tip_.Centered = ToolTipCentered.get();
  tip_.DelayTime = ToolDelayTime.get();
  tip_.ForeColor = ToolTipForeColor.get();
  tip_.set_Icon(ToolTipIcon.get());
  tip_.Style = ToolTipStyle.get();
  tip_.set_TipText(ToolTipDescription.get());
  tip_.set_Title(ToolTipTitle.get());
  tip_.VisibleTime = ToolTipVisibleTime.get();
  tip_.Create(window());
}

// A change reaches a tip that is there; a tip left without a text goes.
void ItemControl::tip() {
  if (!user_mode()) return;
  ToolTipDescription.get().empty() ? tip_.Destroy() : create_tool_tip();
}

}  // namespace kestrelon
