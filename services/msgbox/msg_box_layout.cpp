#include "services/msgbox/msg_box_layout.h"

#include <algorithm>
#include <numeric>

namespace kestrelon::msg_box {
namespace {

// At 96 dots an inch.
constexpr int kStripHeight = 28, kCloseWidth = 34;
constexpr int kMargin = 18;      // around the text
constexpr int kPictureGap = 14;  // from the picture to the text
constexpr int kCheckGap = 14, kCheckHeight = 20;
constexpr int kFooterMargin = 12;  // around the buttons
constexpr int kButtonHeight = 26, kButtonLeast = 86, kButtonGap = 8, kCaptionMargin = 14;
constexpr int kDetailsHeight = 132;
constexpr int kLeastWidth = 240;

class Arranger {
 public:
  Arranger(const Content& content, Scale scale) : c_(content), s_(scale) {}

  Places run() {
    measure();
    place_strip();
    place_body();
    place_footer();
    if (c_.right_to_left) mirror();
    return std::move(out_);
  }

 private:
  int button_width(int caption) const {
    return std::max(s_(kButtonLeast), caption + 2 * s_(kCaptionMargin));
  }
  int footer_width() const {
    const int count = static_cast<int>(c_.caption_widths.size());
    int width = 2 * s_(kFooterMargin) + std::max(0, count - 1) * s_(kButtonGap);
    for (const int caption : c_.caption_widths) width += button_width(caption);
    if (c_.details_width > 0) width += button_width(c_.details_width) + 2 * s_(kButtonGap);
    return width;
  }
  int text_left() const {
    return s_(kMargin) + (c_.picture ? s_(kPictureSide) + s_(kPictureGap) : 0);
  }

  void measure() {
    view_height_ = std::min(c_.text_height, c_.work_height * kTextHeightPercent / 100);
    scrolls_ = view_height_ < c_.text_height;
    const int bar = scrolls_ ? c_.bar_width + s_(kButtonGap) : 0;
    const int body = text_left() + c_.text_width + bar + s_(kMargin);
    const int check = c_.check_width > 0 ? text_left() + c_.check_width + s_(kMargin) : 0;
    const int strip = c_.title_width + 2 * s_(kFooterMargin) + (c_.closes ? s_(kCloseWidth) : 0);
    out_.width = std::max({s_(kLeastWidth), body, check, footer_width(),
                           std::min(strip, text_left() + s_(kTextRoom) + s_(kMargin))});
    out_.width = std::min(out_.width, std::max(c_.work_width, 1));
  }

  void place_strip() {
    const int height = s_(kStripHeight);
    out_.strip = {0, 0, out_.width, height};
    int right = out_.width - s_(kFooterMargin);
    if (c_.closes) {
      out_.close = {out_.width - s_(kCloseWidth), 0, out_.width, height};
      right = out_.close.left;
    }
    out_.title = {s_(kFooterMargin), 0, std::max(right, s_(kFooterMargin)), height};
    y_ = height;
  }

  void place_body() {
    y_ += s_(kMargin);
    const int picture = c_.picture ? s_(kPictureSide) : 0;
    const int height = std::max(view_height_, picture);
    if (c_.picture) out_.picture = {s_(kMargin), y_, s_(kMargin) + picture, y_ + picture};
    // A text lower than the picture stands at its middle.
    const int top = y_ + (height - view_height_) / 2;
    int right = out_.width - s_(kMargin);
    if (scrolls_) {
      out_.bar = {right - c_.bar_width, top, right, top + view_height_};
      right = out_.bar.left - s_(kButtonGap);
    }
    out_.text = {text_left(), top, std::max(right, text_left()), top + view_height_};
    y_ += height;
    if (c_.check_width > 0) {
      y_ += s_(kCheckGap);
      out_.check = {text_left(), y_, std::max(text_left(), out_.width - s_(kMargin)),
                    y_ + s_(kCheckHeight)};
      y_ = out_.check.bottom;
    }
    y_ += s_(kMargin);
  }

  void place_footer() {
    const int top = y_ + s_(kFooterMargin), bottom = top + s_(kButtonHeight);
    int right = out_.width - s_(kFooterMargin);
    out_.buttons.resize(c_.caption_widths.size());
    for (size_t i = c_.caption_widths.size(); i-- > 0;) {
      const int left = right - button_width(c_.caption_widths[i]);
      out_.buttons[i] = {left, top, right, bottom};
      right = left - s_(kButtonGap);
    }
    const int left = s_(kFooterMargin);
    if (c_.details_width > 0)
      out_.details_button = {left, top, left + button_width(c_.details_width), bottom};
    int end = bottom + s_(kFooterMargin);
    if (c_.details_width > 0 && c_.details_open) {
      out_.details = {left, end, out_.width - left, end + s_(kDetailsHeight)};
      end = out_.details.bottom + s_(kFooterMargin);
    }
    out_.footer = {0, y_, out_.width, end};
    out_.height = end;
  }

  void mirror() {
    const auto turn = [this](PixelRect& rect) {
      if (rect.empty()) return;
      const int left = out_.width - rect.right;
      rect.right = out_.width - rect.left;
      rect.left = left;
    };
    for (PixelRect* rect : {&out_.close, &out_.title, &out_.picture, &out_.text, &out_.bar,
                            &out_.check, &out_.details_button, &out_.details})
      turn(*rect);
    for (PixelRect& rect : out_.buttons) turn(rect);
  }

  const Content& c_;
  Scale s_;
  Places out_;
  int view_height_ = 0;
  bool scrolls_ = false;
  int y_ = 0;
};

// The start of a stretch centred at `middle`, moved inside [low, high]; its head stays in view when
// it is too long.
int centred(int middle, int length, int low, int high) {
  return std::max(low, std::min(middle - length / 2, high - length));
}

}  // namespace

Places arrange(const Content& content, Scale scale) {
  return Arranger(content, scale).run();
}

PixelRect place_box(int width, int height, const PixelRect& owner, const PixelRect& work_area) {
  const int left =
      centred(std::midpoint(owner.left, owner.right), width, work_area.left, work_area.right);
  const int top =
      centred(std::midpoint(owner.top, owner.bottom), height, work_area.top, work_area.bottom);
  return {left, top, left + width, top + height};
}

}  // namespace kestrelon::msg_box
