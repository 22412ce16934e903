#include "chrome/us_ribbon/ribbon_block.h"

#include <algorithm>
#include <utility>

namespace kestrelon::ribbon {
namespace {

using namespace measure;

constexpr int kRows = 3;

void move(PixelRect& area, int x, int y) {
  if (area.empty()) return;
  area = {area.left + x, area.top + y, area.right + x, area.bottom + y};
}

PixelRect box(int left, int top, int width, int height) {
  return {left, top, left + width, top + height};
}

ButtonSize reduced(ButtonSize size, Step step) {
  if (step == Step::kSmall) return ButtonSize::kSmall;
  if (step == Step::kMedium && size == ButtonSize::kLarge) return ButtonSize::kMedium;
  return size;
}

// The face of one button, its area from (0, 0) on.
class Face {
 public:
  Face(const Button& button, const ButtonState& state, Scale scale, TextRuler& ruler)
      : button_(button),
        scale_(scale),
        ruler_(ruler),
        arrow_(has_arrow(button, state)),
        split_(state.style == ButtonStyle::kSplit) {}

  ButtonPlace large() {
    ButtonPlace out;
    const int icon = scale_(kLargeIcon), height = scale_(kButtonHeight);
    const int line = ruler_.line_height(), top = scale_(kTextTop);
    const int mark = arrow_ ? scale_(kArrow) + scale_(kArrowGap) : 0;
    BrokenCaption text = break_caption(button_.caption, mark, ruler_);
    const int width = std::max(scale_(kLeastLarge), text.width + 2 * scale_(kLargePad));
    out.area = box(0, 0, width, height);
    out.icon = box((width - icon) / 2, scale_(kIconTop), icon, icon);
    const int first = ruler_.width(text.first), second = ruler_.width(text.second);
    out.lines[0] = {text.first, box((width - first) / 2, top, first, line)};
    const bool alone = text.second.empty();
    const int used = alone ? scale_(kArrow) : second + mark;
    const int left = (width - used) / 2;
    out.lines[1] = {text.second, box(left, top + line, second, line)};
    if (arrow_)
      out.arrow =
          box(alone ? left : left + second + scale_(kArrowGap), top + line, scale_(kArrow), line);
    if (split_) out.drop = {0, top - scale_(1), width, height};
    return out;
  }

  ButtonPlace flat(ButtonSize size) {
    ButtonPlace out;
    out.size = size;
    const int icon = scale_(kSmallIcon), height = scale_(kRowHeight), pad = scale_(3);
    out.icon = box(pad, (height - icon) / 2, icon, icon);
    int right = out.icon.right + pad;
    if (size == ButtonSize::kMedium) {
      const int line = ruler_.line_height(), wide = ruler_.width(button_.caption);
      out.lines[0] = {button_.caption, box(right, (height - line) / 2, wide, line)};
      right += wide + scale_(4);
    }
    if (arrow_) {
      const int drop = scale_(kDropWidth);
      out.arrow = box(right + (drop - scale_(kArrow)) / 2, 0, scale_(kArrow), height);
      if (split_) out.drop = box(right, 0, drop, height);
      right += drop;
    }
    out.area = box(0, 0, right, height);
    return out;
  }

 private:
  const Button& button_;
  Scale scale_;
  TextRuler& ruler_;
  bool arrow_, split_;
};

// Large buttons stand side by side; the others fill columns of three.
class Columns {
 public:
  Columns(Block& block, Scale scale) : block_(block), scale_(scale), left_(scale(kCategoryPad)) {}

  void add(ButtonPlace place) {
    const int top = scale_(kButtonTop);
    if (place.size == ButtonSize::kLarge) {
      close();
      const int width = place.area.right;
      move_button(place, left_, top);
      left_ += width;
    } else {
      if (row_ == kRows) close();
      const int width = place.area.right;
      move_button(place, left_, top + row_++ * scale_(kRowHeight));
      column_ = std::max(column_, width);
    }
    block_.buttons.push_back(std::move(place));
  }
  int end() {
    close();
    return left_;
  }

 private:
  void close() {
    left_ += std::exchange(column_, 0);
    row_ = 0;
  }

  Block& block_;
  Scale scale_;
  int left_, row_ = 0, column_ = 0;
};

}  // namespace

bool has_arrow(const Button& button, const ButtonState& state) {
  return button.arrow || state.style == ButtonStyle::kDropDown ||
         state.style == ButtonStyle::kSplit;
}

void move_button(ButtonPlace& button, int x, int y) {
  for (PixelRect* area : {&button.area, &button.icon, &button.lines[0].area, &button.lines[1].area,
                          &button.arrow, &button.drop})
    move(*area, x, y);
}

Block build_block(const Model& model, const Category& category, Step step, const Spec& spec,
                  TextRuler& ruler) {
  const Scale scale = spec.scale;
  Block out;
  out.step = step;
  Columns columns(out, scale);
  for (size_t i = 0; i < model.buttons().size(); ++i) {
    const Button& button = model.buttons()[i];
    if (button.category != category.index) continue;
    const ButtonState& state = model.state_of(button);
    const ButtonSize size = reduced(state.size, step);
    Face face(button, state, scale, ruler);
    ButtonPlace place = size == ButtonSize::kLarge ? face.large() : face.flat(size);
    place.entry = static_cast<int>(i);
    columns.add(std::move(place));
  }
  const int pad = scale(kCategoryPad), used = columns.end() + pad;
  const int caption = ruler.width(category.caption) + 2 * scale(kCaptionPad) +
                      (category.launcher ? scale(kLauncher) : 0);
  out.width = std::max(used, caption);
  if (spec.center)
    for (ButtonPlace& button : out.buttons) move_button(button, (out.width - used) / 2, 0);
  return out;
}

}  // namespace kestrelon::ribbon
