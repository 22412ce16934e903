#include "controls/us_button/us_button_layout.h"

namespace kestrelon::button_layout {
namespace {

constexpr int kGap = 2;  // between picture and text side by side

void shift(PixelRect& r, int dx, int dy) {
  r.left += dx;
  r.right += dx;
  r.top += dy;
  r.bottom += dy;
}

PixelRect centred(int width, int height, int in_width, int in_height) {
  const int left = (in_width - width) / 2, top = (in_height - height) / 2;
  return {left, top, left + width, top + height};
}

// Half of what is free, if that is worth moving for.
int half_gap(int free) {
  const int half = free / 2;
  return half > 1 ? half : 0;
}

// Beside a caption that is not there is the middle.
PicturePlace without_text(PicturePlace place) {
  switch (place) {
    case PicturePlace::kBottomOfCaption:
    case PicturePlace::kLeftOfCaption:
    case PicturePlace::kRightOfCaption:
    case PicturePlace::kTopOfCaption:
      return PicturePlace::kBehindText;
    default:
      return place;
  }
}

}  // namespace

Places arrange(int width, int height, const Content& content) {
  Places out;
  PixelRect& text = out.text;
  PixelRect& picture = out.picture;
  if (content.has_text) text = centred(content.text_width, content.text_height, width, height);
  if (!content.has_picture) return out;
  const int gap = content.has_text ? kGap : 0;
  const PixelRect middle = centred(content.picture_width, content.picture_height, width, height);
  picture = {0, 0, content.picture_width, content.picture_height};
  const auto across = [&] { shift(picture, middle.left, 0); };
  const auto down = [&] { shift(picture, 0, middle.top); };
  const auto both = [&](int dx, int dy) {
    shift(picture, dx, dy);
    if (content.has_text) shift(text, dx, dy);
  };
  const auto move_text = [&](int dx, int dy) {
    if (content.has_text) shift(text, dx, dy);
  };

  switch (content.has_text ? content.place : without_text(content.place)) {
    case PicturePlace::kBehindText:
      picture = middle;
      break;
    case PicturePlace::kBottomEdge:
      across();
      shift(picture, 0, height - kMargin - picture.bottom);
      move_text(0, picture.top - text.bottom);
      move_text(0, -half_gap(text.top - kMargin));
      break;
    case PicturePlace::kLeftEdge:
      down();
      shift(picture, kMargin, 0);
      move_text(picture.right + gap - text.left, 0);
      move_text(half_gap(width - kMargin - text.right), 0);
      break;
    case PicturePlace::kRightEdge:
      down();
      shift(picture, width - kMargin - picture.right, 0);
      move_text(picture.left - gap - text.right, 0);
      move_text(-half_gap(text.left - kMargin), 0);
      break;
    case PicturePlace::kTopEdge:
      across();
      shift(picture, 0, kMargin);
      move_text(0, picture.bottom - text.top);
      move_text(0, half_gap(height - text.bottom - kMargin));
      break;
    case PicturePlace::kBottomOfCaption:
      across();
      shift(text, 0, -text.top);
      shift(picture, 0, text.bottom);
      both(0, (height - picture.bottom) / 2);
      break;
    case PicturePlace::kTopOfCaption:
      across();
      shift(text, 0, picture.bottom - text.top);
      both(0, (height - text.bottom) / 2);
      break;
    case PicturePlace::kLeftOfCaption:
      down();
      shift(text, picture.right + gap - text.left, 0);
      both((width - text.right) / 2, 0);
      break;
    case PicturePlace::kRightOfCaption:
      down();
      shift(text, -text.left, 0);
      shift(picture, text.right + gap, 0);
      both((width - picture.right) / 2, 0);
      break;
  }
  return out;
}

PixelRect align_text(const PixelRect& text, int alignment, int distance, int width) {
  PixelRect out = text;
  if (alignment == 0) shift(out, distance - out.left, 0);
  if (alignment == 2) shift(out, width - distance - out.right, 0);
  return out;
}

PixelRect focus_rect(int width, int height, bool square) {
  if (square) return {0, 0, width, height};
  return {2, 2, width - 2, height - 2};
}

}  // namespace kestrelon::button_layout
