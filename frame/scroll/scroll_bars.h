// `IAPP_ScrollBars`: the two scroll bars of a window, which the platform draws, as values and
// events.
#pragma once

#include <windows.h>

#include <memory>

#include "frame/kit/scroll_math.h"
#include "frame/scroll/platform_bars.h"
#include "frame/sub_class.h"

namespace kestrelon {

/// Which bars a window has. Bars themselves are numbered as the platform does: 0 horizontal
/// (SB_HORZ), 1 vertical (SB_VERT); any other number means the vertical one.
enum class ScrollOrientation { kHorizontal = 0, kVertical = 1, kBoth = 2, kNone = 3 };

/// How the platform draws them; the numbers are its own (FSB_...).
enum class ScrollStyle { kRegular = 0, kEncarta = 1, kFlat = 2 };

/// Who is told of what the bars do. Anything may be done in an event, the destruction of the
/// engine or of its window included.
class ScrollBarsOwner {
 public:
  /// A press on a bar, before the platform acts on it: 1 left, 2 right, 4 middle.
  virtual void BarMouseDown(int /*bar*/, int /*button*/) {}
  /// The thumb is being dragged; `Value` has followed it.
  virtual void BarScroll(int bar) = 0;
  /// The value differs from the one reported last.
  virtual void BarChange(int bar) = 0;
  /// The wheel has turned by at least a notch: `amount` is what the vertical value is about to
  /// move by. Setting it to 0 keeps the value and leaves the message to the window.
  virtual void BarMouseWheel(int /*bar*/, long& /*amount*/) {}

 protected:
  ~ScrollBarsOwner() = default;
};

/// The values live in the window's own scroll info, where anybody may read them; without a window
/// all values are 0 and setters do nothing. Belongs to the thread of its window.
class IAPP_ScrollBars final : private ISubclass {
 public:
  /// The owner must outlive the engine.
  explicit IAPP_ScrollBars(ScrollBarsOwner& owner) : owner_(owner) {}
  ~IAPP_ScrollBars() { release(); }
  IAPP_ScrollBars(const IAPP_ScrollBars&) = delete;
  IAPP_ScrollBars& operator=(const IAPP_ScrollBars&) = delete;

  /// Lets go of the former window and takes this one: styles and shows its bars and listens to
  /// them. Throws ComError, and has no window, when hWnd cannot be listened to; null only lets go.
  void Create(HWND hWnd);
  HWND hWnd() const { return window_; }

  /// The ends of the values. Of two that are swapped the one set last holds for both.
  long Min(int bar) const;
  void set_Min(int bar, long value);
  long Max(int bar) const;
  void set_Max(int bar, long value);
  /// Values are limited by the platform.
  long Value(int bar) const;
  void set_Value(int bar, long value);
  /// The step, 1 at first.
  long SmallChange(int bar) const { return bars_[index(bar)].small_change; }
  void set_SmallChange(int bar, long value) { bars_[index(bar)].small_change = value; }
  /// The page; it is the length of the thumb as well.
  long LargeChange(int bar) const;
  void set_LargeChange(int bar, long value);

  bool Enabled(int bar) const { return bars_[index(bar)].enabled; }
  void set_Enabled(int bar, bool value);
  /// The platform hides a visible bar whose values all fit on one page.
  bool Visible(int bar) const { return bars_[index(bar)].visible; }
  void set_Visible(int bar, bool value);

  ScrollOrientation Orientation() const { return orientation_; }
  void set_Orientation(ScrollOrientation value);
  /// Where flat bars cannot be had, plain ones take their place and the style reads as regular.
  ScrollStyle Style() const { return style_; }
  void set_Style(ScrollStyle value);
  /// Flat or regular.
  void SetFlat(bool flat) { set_Style(flat ? ScrollStyle::kFlat : ScrollStyle::kRegular); }
  /// Whether the window's bars are under the flat engine's control.
  bool CanBeFlat() const { return platform_.flat(); }

 private:
  struct Bar {
    long small_change = 1;
    long reported = 0;
    bool enabled = true;
    bool visible = true;
  };
  static int index(int bar) { return bar == SB_HORZ ? SB_HORZ : SB_VERT; }

  // ISubclass
  eMsgResponse MsgResponse() const override { return response_; }
  void set_MsgResponse(eMsgResponse response) override { response_ = response; }
  LRESULT WindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) override;

  SCROLLINFO info(int bar, UINT mask) const;
  void set_info(int bar, SCROLLINFO info, UINT mask);
  ScrollRange range(int bar) const;
  void set_range(int bar, int32_t min, int32_t max, int32_t page);
  void apply_style();
  void apply_bar(int bar);
  bool exists(int bar) const;
  void release();
  void scrolled(int bar, int code);
  void wheel_turned(WPARAM wparam);
  void report(int bar);

  ScrollBarsOwner& owner_;
  HWND window_ = nullptr;
  Bar bars_[2];
  ScrollOrientation orientation_ = ScrollOrientation::kVertical;
  ScrollStyle style_ = ScrollStyle::kRegular;
  PlatformBars platform_;
  int wheel_lines_ = 3;
  WheelNotches wheel_;
  eMsgResponse response_ = eMsgResponse::kBefore;
  std::shared_ptr<bool> life_ = std::make_shared<bool>(true);
};

}  // namespace kestrelon
