// USPictureLCD: a panel with a small title and a large value in digits of bars, pictures or a font;
// a clock and a countdown besides.
#pragma once

#include "controls/us_picture_lcd/lcd_segments.h"
#include "frame/private_timer.h"
#include "frame/themed_display.h"
#include "frame/tip_properties.h"
#include "frame/value_property.h"
#include "imaging/dib_win.h"
#include "us_picture_lcd_glue.h"

namespace kestrelon {

class USPictureLCD final : public USPictureLCDGlue<USPictureLCD, ThemedDisplay>,
                           public TipProperties {
 public:
  USPictureLCD();

  // In the order of the property bag, after those of the two bases.
  Property<ENUM_ALIGNMENTS> Alignment{*this, L"Alignment", To_Right_Justify, &USPictureLCD::redraw};
  Property<long> BlinkInterval{*this, L"BlinkInterval", 0, &USPictureLCD::watch_time};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USPictureLCD::redraw};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USPictureLCD::caption_changed};
  Property<short> Decimals{*this, L"Decimals", 2, &USPictureLCD::text_changed};
  Property<std::wstring> DigitChars{*this, L"DigitChars", L"0123456789,.:- ",
                                    &USPictureLCD::redraw};
  Property<std::vector<uint8_t>> DigitPicture{
      *this, L"DigitPicture", {}, &USPictureLCD::picture_changed};
  Property<long> Digits{*this, L"Digits", 0, &USPictureLCD::text_changed};
  Property<ENUM_LCD_STYLE> DigitStyle{*this, L"DigitStyle", Lcd_Segments, &USPictureLCD::redraw};
  Property<OLE_COLOR> ForeColor1{*this, L"ForeColor1", 0x3B3B3B, &USPictureLCD::redraw};
  Property<OLE_COLOR> ForeColor2{*this, L"ForeColor2", 0xB75F31, &USPictureLCD::redraw};
  Property<std::wstring> Format{*this, L"Format", L"", &USPictureLCD::text_changed};
  Property<long> GhostOpacity{*this, L"GhostOpacity", 12, &USPictureLCD::redraw};
  Property<OLE_COLOR> GradientColor1{*this, L"GradientColor1", 0xF9F9F9, &USPictureLCD::redraw};
  Property<OLE_COLOR> GradientColor2{*this, L"GradientColor2", 0xFFFFFF, &USPictureLCD::redraw};
  Property<bool> LeadingZeros{*this, L"LeadingZeros", false, &USPictureLCD::text_changed};
  Property<ENUM_LCD_MODE> Mode{*this, L"Mode", Lcd_Value, &USPictureLCD::mode_changed};
  ValueProperty Value{*this, L"Value"};

  // Members of the interface.
  const VARIANT& value() const { return Value.get(); }
  void set_value(const VARIANT& value);
  SAFEARRAY* digit_picture() const;
  void set_digit_picture(SAFEARRAY* bytes);
  bool load_digits_from_file(const std::wstring& file);
  bool load_digits_from_us_image_list(IDispatch* list, const VARIANT& key);
  void clear_digits();

 private:
  struct Colors {
    COLORREF top, bottom, border, title, value;
    float ghost;  // opacity of bars that are not lit, 0 to 1
  };

  // us_picture_lcd.cpp
  void init_properties() override;
  void properties_read() override;
  void shown() override;
  void hidden() override;
  void terminate() override;
  void theme_changed() override;
  void font_changed() override { redraw(); }
  void rescaled() override { redraw(); }
  void describe(AccessibleItem& item) const override;
  HWND tip_place(RECT& area) const override;
  void caption_changed();
  void mode_changed();
  void text_changed();
  void show_text();
  void watch_time();
  void tick();
  void count_down();
  void blink();
  void start_count();
  bool counts() const { return Mode.get() == Lcd_Countdown && seconds_ > 0; }
  /// What is shown, before it is cut into places.
  std::wstring text() const;
  std::wstring value_text() const;

  // us_picture_lcd_digits.cpp
  void picture_changed();
  bool take_digits(std::vector<uint8_t> bytes);

  // us_picture_lcd_draw.cpp
  void draw() override;
  Colors colors() const;
  PixelRect value_area();
  LcdLayout layout();
  int title_height();
  /// Draws the places that differ from what is there; false when all must be drawn.
  bool draw_changed_cells(const LcdCells& fresh);
  void draw_cell(int index, const PixelRect& clip, const Colors& colors);
  void draw_title(const Colors& colors);
  void draw_value(const Colors& colors);
  void draw_segments(const Colors& colors);
  void draw_in_font(const Colors& colors);
  void draw_pictures();

  std::wstring shown_text_;  // in places
  LcdCells cells_;           // as drawn
  LcdLayout layout_;         // as drawn
  bool cells_drawn_ = false;
  WindowsImage digits_;
  PrivateTimer clock_, blinker_;
  bool seen_ = false;
  bool blinked_off_ = false;
  long seconds_ = 0;  // of a countdown, when it was last looked at
  ULONGLONG end_of_count_ = 0;
};

}  // namespace kestrelon
