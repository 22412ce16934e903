// USLabel: text on a form. Lives without a window where it may and is drawn over what lies behind.
#pragma once

#include <optional>

#include "controls/us_label/us_label_layout.h"
#include "frame/display_control.h"
#include "frame/tip_properties.h"
#include "us_label_glue.h"

namespace kestrelon {

class USLabel final : public USLabelGlue<USLabel, DisplayControl>, public TipProperties {
 public:
  USLabel();

  // In the order of the property bag, after those of the two bases.
  Property<ENUM_ALIGNMENTS> Alignment{*this, L"Alignment", To_Left_Justify, &USLabel::redraw};
  Property<bool> AutoSize{*this, L"AutoSize", false, &USLabel::text_changed};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0x8000000F, &USLabel::redraw};
  Property<ENUM_BACK_STYLE> BackStyle{*this, L"BackStyle", Transparent, &USLabel::redraw};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USLabel::redraw};
  Property<GRID_BORDER_STYLE> BorderStyle{*this, L"BorderStyle", No_Border, &USLabel::text_changed};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USLabel::caption_changed};
  Property<std::wstring> CaptionDelimiter{*this, L"CaptionDelimiter", L"", &USLabel::text_changed};
  Property<bool> DisplayEllipsis{*this, L"DisplayEllipsis", false, &USLabel::redraw};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0, &USLabel::redraw};
  Property<OLE_COLOR> ForeColorDelimiter{*this, L"ForeColorDelimiter", 0xB75F31, &USLabel::redraw};
  Property<OLE_COLOR> ForeColorOver{*this, L"ForeColorOver", 0xB75F31, &USLabel::redraw};
  Property<bool> HandPointer{*this, L"HandPointer", false};
  Property<std::wstring> LinkUrl{*this, L"LinkUrl", L"", &USLabel::redraw};
  Property<bool> UseMnemonic{*this, L"UseMnemonic", true, &USLabel::mnemonic_changed};
  Property<bool> VerticalCenter{*this, L"VerticalCenter", false, &USLabel::redraw};
  Property<bool> WordWrap{*this, L"WordWrap", false, &USLabel::text_changed};

  void set_caption(const std::wstring& caption);

 private:
  struct Colors {
    COLORREF text, delimiter, border, back;
  };

  // us_label.cpp
  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override;
  void resized() override;
  void rescaled() override { redraw(); }
  void shown() override;
  void hidden() override { destroy_tool_tip(); }
  void terminate() override;
  void ambient_changed(DISPID id) override;
  void font_changed() override { text_changed(); }
  void mouse_icon_changed() override;
  void mouse_move(short button, short shift, float x, float y) override;
  void hover_changed() override;
  void click() override;
  bool shows_hand() const override { return HandPointer.get() || is_link(); }
  void describe(AccessibleItem& item) const override;
  void accessible_default_action(long child) override;
  HWND tip_place(RECT& area) const override;
  bool is_link() const { return !LinkUrl.get().empty(); }
  void caption_changed();
  void mnemonic_changed();
  void text_changed();
  void follow_link();

  // us_label_draw.cpp
  bool has_alpha() const override { return true; }
  void draw() override;
  void fit();
  Colors colors() const;
  int padding() const;
  /// Breaks the text for a width of text in pixels; 0 for one that does not end.
  LabelText break_text(HDC dc, int room) const;
  struct Run {
    std::wstring_view text;
    int width;
    COLORREF color;
  };
  void draw_line(const DibSection& mask, const LabelText& text, const TextLine& line, POINT at,
                 const Colors& colors, bool dots);
  void draw_run(const DibSection& mask, const Run& run, const RECT& area);
  void draw_text(const Colors& colors);

  bool began_ = false;
  bool fitting_ = false;
};

}  // namespace kestrelon
