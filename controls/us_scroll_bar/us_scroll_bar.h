// USScrollBar: a scroll bar drawn from bitmaps.
#pragma once

#include <memory>

#include "controls/us_scroll_bar/scrollbar_draw.h"
#include "frame/control_frame.h"
#include "frame/hover.h"
#include "frame/kit/scroll_math.h"
#include "us_scroll_bar_glue.h"

namespace kestrelon {

class USScrollBar final : public USScrollBarGlue<USScrollBar, ControlFrame> {
 public:
  USScrollBar();

  // In the order of the property bag.
  Property<bool> Enabled{*this, L"Enabled", true, &USScrollBar::enabled_changed};
  Property<long> Min{*this, L"Min", 0, &USScrollBar::refresh};
  Property<long> Max{*this, L"Max", 100, &USScrollBar::refresh};
  Property<long> Value{*this, L"Value", 0, &USScrollBar::refresh};
  Property<long> SmallChange{*this, L"SmallChange", 1, &USScrollBar::refresh};
  Property<long> LargeChange{*this, L"LargeChange", 10, &USScrollBar::refresh};
  Property<long> ChangeDelay{*this, L"ChangeDelay", 500};         // milliseconds
  Property<long> ChangeFrequency{*this, L"ChangeFrequency", 50};  // milliseconds
  Property<ENUM_POSITION> Orientation{*this, L"Orientation", Horizontal, &USScrollBar::refresh};
  Property<bool> ShowButtons{*this, L"ShowButtons", true, &USScrollBar::refresh};

  /// Lays the bar out and draws it.
  void refresh();

 private:
  /// What a drawing shows of the parts: the states handed to the painter.
  struct Look {
    int top_left, bottom_right, before, after, thumb;
    bool operator==(const Look&) const = default;
  };

  // us_scroll_bar.cpp
  void init_properties() override;
  void properties_read() override { refresh(); }
  void resized() override;
  void window_created() override;
  void terminate() override;
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void enabled_changed();
  void describe(AccessibleItem& item) const override;
  bool accessible_set_value(long child, const std::wstring& value) override;
  ScrollRange range() const;
  void lay_out();
  // us_scroll_bar_input.cpp
  bool window_message_before(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void window_message_after(UINT message, WPARAM wparam, LPARAM lparam) override;
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void key_down(short& key, short& shift) override;
  void press();
  void release();
  void repeat();
  void drag();
  bool step(BarPart part);
  bool take_value(long value);
  bool pointer_in_pressed_part() const;
  void start_timer(long milliseconds);
  void stop_timer();
  // us_scroll_bar_paint.cpp
  Look look() const;
  void draw();
  void draw_if_changed();

  std::unique_ptr<cScrollbarDraw> painter_;  // made at the first drawing
  BarLayout layout_;
  Look shown_{};
  Hover hover_;
  POINT last_point_{-1, -1};
  BarPart hit_part_ = BarPart::kNone;  // pressed and not yet released
  int grab_offset_ = 0;                // of the pointer within the thumb
  long value_at_press_ = 0;
  bool timer_on_ = false;
};

}  // namespace kestrelon
