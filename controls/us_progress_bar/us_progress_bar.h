// USProgressBar: how far a long work is. Values come by the million from loops that let no message
// run, so a value that changes nothing to be seen costs nothing, and one that does shows at once.
#pragma once

#include "controls/us_progress_bar/progress_layout.h"
#include "frame/private_timer.h"
#include "frame/themed_display.h"
#include "frame/tip_properties.h"
#include "us_progress_bar_glue.h"

namespace kestrelon {

class USProgressBar final : public USProgressBarGlue<USProgressBar, ThemedDisplay>,
                            public TipProperties {
 public:
  USProgressBar();

  // In the order of the property bag, after those of the two bases.
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0xFFFFFF, &USProgressBar::redraw};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USProgressBar::redraw};
  Property<std::wstring> Caption{*this, L"Caption", L"", &USProgressBar::caption_changed};
  Property<OLE_COLOR> Color{*this, L"Color", 0x22C203, &USProgressBar::redraw};
  Property<OLE_COLOR> ForeColor1{*this, L"ForeColor1", 0xC56A31, &USProgressBar::redraw};
  Property<OLE_COLOR> ForeColor2{*this, L"ForeColor2", 0xFFFFFF, &USProgressBar::redraw};
  Property<OLE_COLOR> ColorError{*this, L"ColorError", 0x2B2BD9, &USProgressBar::redraw};
  Property<OLE_COLOR> ColorPaused{*this, L"ColorPaused", 0x00B4F0, &USProgressBar::redraw};
  Property<short> Decimals{*this, L"Decimals", 0, &USProgressBar::redraw};
  Property<double> Max{*this, L"Max", 100};
  Property<double> Min{*this, L"Min", 0};
  Property<ENUM_POSITION> Orientation{*this, L"Orientation", Horizontal, &USProgressBar::redraw};
  Property<ENUM_TASKBAR> State{*this, L"State", TASKBAR_NORMAL, &USProgressBar::state_changed};
  Property<ENUM_PROGRESS_STYLE> Style{*this, L"Style", Progress_Continuous, &USProgressBar::redraw};
  Property<bool> TaskBar{*this, L"TaskBar", false, &USProgressBar::task_bar_changed};
  Property<ENUM_PROGRESS_TEXT> TextMode{*this, L"TextMode", Progress_Percent,
                                        &USProgressBar::redraw};
  Property<double> Value{*this, L"Value", 0};

  // Members of the interface.
  void set_max(double max);
  void set_min(double min);
  void set_value(double value);
  double percent() const;
  long seconds_left() const { return static_cast<long>(clock_.seconds_left()); }
  void increment(const VARIANT& step);
  void reset();
  void draw_progress_bar();

 private:
  // All that a picture of the bar is made of and that a value can change.
  struct Look {
    int filled = 0;        // pixels
    int64_t percent = 0;   // in units of the last place
    double value = 0;      // steps, where the text tells the value
    double max = 0;        // where the text tells it
    int64_t seconds = -1;  // where the text tells them
    bool operator==(const Look&) const = default;
  };
  struct Colors {
    COLORREF back, border, fill, text, text_on_fill;
  };

  // us_progress_bar.cpp
  void properties_read() override;
  void shown() override;
  void hidden() override;
  void closing() override { clear_task_bar(); }
  void terminate() override;
  void theme_changed() override;
  void rescaled() override { redraw(); }
  void describe(AccessibleItem& item) const override;
  HWND tip_place(RECT& area) const override;
  void caption_changed();
  void state_changed();
  void task_bar_changed();
  void range_changed();
  void progressed();
  void mirror();
  void clear_task_bar();
  void watch_runner();
  bool endless() const { return State.get() == TASKBAR_INDETERMINATE; }
  ProgressRange range() const { return {Min.get(), Max.get()}; }

  // us_progress_bar_draw.cpp
  void draw() override;
  Look look() const;
  PixelRect bar() const;
  bool upright() const { return Orientation.get() == Vertical; }
  int bar_length() const;
  Colors colors() const;
  COLORREF state_color() const;
  std::wstring text() const;
  void draw_fill(const PixelRect& part, COLORREF color);
  /// These answer the parts they have filled.
  std::vector<PixelRect> draw_runner(COLORREF color);
  std::vector<PixelRect> draw_filled(COLORREF color);
  void draw_text(const std::vector<PixelRect>& filled, const Colors& colors);
  bool text_tells(ENUM_PROGRESS_TEXT mode, wchar_t mark) const;

  ProgressClock clock_;
  PrivateTimer runner_;
  bool seen_ = false;
  ULONGLONG runner_began_ = 0;
  Look drawn_;
  std::wstring drawn_text_;
  long told_percent_ = 0;       // whole, of which screen readers and the task bar know
  HWND mirrored_in_ = nullptr;  // the window whose task bar button shows the progress
  std::wstring caption_marks_;  // those of {p}, {v}, {m} and {t} that the caption mentions
};

}  // namespace kestrelon
