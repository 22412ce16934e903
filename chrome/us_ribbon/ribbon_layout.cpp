#include "chrome/us_ribbon/ribbon_layout.h"

#include <algorithm>

#include "chrome/us_ribbon/ribbon_block.h"

namespace kestrelon::ribbon {
namespace {

using namespace measure;

constexpr int kTabPad = 12, kLeastTabPad = 4, kLeastTab = 24;
constexpr int kTabButton = 22;
constexpr int kEdge = 4;  // left of the first tab, right of the last tab button

bool inside(const PixelRect& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

void place_tab_buttons(Scene& scene, const Spec& spec) {
  const Scale scale = spec.scale;
  const int side = scale(kTabButton), icon = scale(kSmallIcon);
  int left = spec.width - scale(kEdge) - spec.built_tab_buttons * side;
  for (int i = 0; i < spec.built_tab_buttons; ++i, left += side) {
    TabButtonPlace place;
    place.entry = i;
    place.area = {left, scene.strip.top + scale(1), left + side, scene.strip.bottom - scale(1)};
    const int x = left + (side - icon) / 2, middle = (place.area.top + place.area.bottom) / 2;
    place.icon = {x, middle - icon / 2, x + icon, middle - icon / 2 + icon};
    if (left >= 0) scene.tab_buttons.push_back(place);
  }
}

// Padding goes first when the tabs need more room than there is, then captions are cut.
void place_tabs(Scene& scene, const Model& model, const Spec& spec, TextRuler& ruler) {
  const Scale scale = spec.scale;
  std::vector<int> entries, texts;
  int sum = 0;
  for (int i = 0; i < spec.built_tabs && i < static_cast<int>(model.tabs().size()); ++i) {
    if (!model.tabs()[static_cast<size_t>(i)].visible) continue;
    entries.push_back(i);
    texts.push_back(ruler.width(model.tabs()[static_cast<size_t>(i)].caption));
    sum += texts.back();
  }
  if (entries.empty()) return;
  const int end = scene.tab_buttons.empty() ? spec.width - scale(kEdge)
                                            : scene.tab_buttons.front().area.left - scale(kEdge);
  const int count = static_cast<int>(entries.size()), room = end - scale(kEdge);
  const int pad = std::clamp((room - sum) / (2 * count), scale(kLeastTabPad), scale(kTabPad));
  const bool cut = sum + 2 * pad * count > room;
  int left = scale(kEdge);
  for (int i = 0; i < count; ++i) {
    const int own = texts[static_cast<size_t>(i)] + 2 * pad;
    // The widest give way: nobody gets more than an equal part of what is left.
    const int part = cut ? std::max((end - left) / (count - i), scale(kLeastTab)) : own;
    const int width = std::min(own, part);
    if (left + width > end) break;
    TabPlace place;
    place.entry = entries[static_cast<size_t>(i)];
    place.area = {left, scene.strip.top + scale(kTabTop), left + width,
                  scene.strip.bottom + scale.line()};
    place.text = {left + pad, place.area.top, left + width - pad, place.area.bottom};
    scene.tabs.push_back(place);
    left += width;
  }
}

class CategoryRow {
 public:
  CategoryRow(Scene& scene, const Model& model, const Spec& spec, TextRuler& ruler)
      : scene_(scene), model_(model), spec_(spec), ruler_(ruler) {
    const Scale scale = spec.scale;
    left_ = scene.body.left + scale(kCategoryPad);
    right_ = scene.body.right - scale(kCategoryPad);
    for (size_t i = 0; i < model.categories().size(); ++i)
      if (model.selected_shows(model.categories()[i])) {
        entries_.push_back(static_cast<int>(i));
        blocks_.push_back(block(entries_.back(), Step::kFull));
      }
  }

  void place() {
    if (blocks_.empty()) return;
    if (spec_.shrink) shrink();
    const size_t last = blocks_.size();
    if (width(0, last) <= right_ - left_) return put(0, last, left_, right_);
    const int arrow = spec_.scale(kScroll) + spec_.scale(1);
    size_t first = last - 1;  // the page that ends with the last category
    while (first > 0 && width(first - 1, last) <= right_ - left_ - arrow) --first;
    first = std::min(first, static_cast<size_t>(std::max(spec_.first, 0)));
    const int from = first > 0 ? left_ + arrow : left_;
    size_t end = last;
    if (width(first, last) > right_ - from)
      while (end > first + 1 && width(first, end) > right_ - from - arrow) --end;
    const int to = end < last ? right_ - arrow : right_;
    if (end == first + 1) narrow(first, to - from);
    if (first > 0) scene_.scroll_left = arrow_at(left_);
    if (end < last) scene_.scroll_right = arrow_at(right_ - spec_.scale(kScroll));
    put(first, end, from, to);
  }

 private:
  Block block(int entry, Step step) {
    return build_block(model_, model_.categories()[static_cast<size_t>(entry)], step, spec_,
                       ruler_);
  }
  int width(size_t from, size_t to) const {
    int sum = 0;
    for (size_t i = from; i < to; ++i) sum += blocks_[i].width;
    return sum + (to > from ? static_cast<int>(to - from - 1) * spec_.scale(kCategoryGap) : 0);
  }
  // From the right to the left, a step at a time, and no further than needed.
  void shrink() {
    for (const Step step : {Step::kMedium, Step::kSmall})
      for (size_t i = blocks_.size(); i-- > 0;) {
        if (width(0, blocks_.size()) <= right_ - left_) return;
        blocks_[i] = block(entries_[i], step);
      }
  }
  // A category by itself that is wider than the bar.
  void narrow(size_t i, int room) {
    for (const Step step : {Step::kMedium, Step::kSmall})
      if (blocks_[i].width > room) blocks_[i] = block(entries_[i], step);
    if (blocks_[i].width <= room) return;
    blocks_[i].width = std::max(room, 0);
    std::erase_if(blocks_[i].buttons,
                  [&](const ButtonPlace& button) { return button.area.right > room; });
  }
  PixelRect arrow_at(int left) const {
    const Scale scale = spec_.scale;
    return {left, scene_.body.top + scale(kCategoryTop), left + scale(kScroll),
            scene_.body.bottom - scale(kCategoryTop)};
  }
  void put(size_t first, size_t end, int left, int limit) {
    const Scale scale = spec_.scale;
    scene_.first = static_cast<int>(first);
    const int top = scene_.body.top + scale(kCategoryTop);
    for (size_t i = first; i < end; ++i) {
      const Category& category = model_.categories()[static_cast<size_t>(entries_[i])];
      CategoryPlace place;
      place.entry = entries_[i];
      place.step = blocks_[i].step;
      place.area = {left, top, std::min(left + blocks_[i].width, limit),
                    top + scale(kStripTop) + scale(kStripHeight)};
      place.strip = place.area;
      place.strip.top = top + scale(kStripTop);
      place.caption = place.strip;
      if (category.launcher) {
        place.launcher = place.strip;
        place.launcher.left = place.strip.right - scale(kLauncher);
        place.caption.right = place.launcher.left;
      }
      for (ButtonPlace& button : blocks_[i].buttons) {
        button.category = static_cast<int>(i - first);
        move_button(button, left, top);
        scene_.buttons.push_back(std::move(button));
      }
      left = place.area.right + scale(kCategoryGap);
      scene_.categories.push_back(place);
    }
  }

  Scene& scene_;
  const Model& model_;
  const Spec& spec_;
  TextRuler& ruler_;
  int left_ = 0, right_ = 0;
  std::vector<int> entries_;
  std::vector<Block> blocks_;
};

}  // namespace

BrokenCaption break_caption(std::wstring_view caption, int arrow, TextRuler& ruler) {
  BrokenCaption best{std::wstring(caption), {}, std::max(ruler.width(caption), arrow)};
  bool broken = false;
  for (size_t at = caption.find(L' '); at != caption.npos; at = caption.find(L' ', at + 1)) {
    const std::wstring_view first = caption.substr(0, at), second = caption.substr(at + 1);
    if (first.empty() || second.find_first_not_of(L' ') == second.npos) continue;
    const int width = std::max(ruler.width(first), ruler.width(second) + arrow);
    if (broken && width >= best.width) continue;
    broken = true;
    best = {std::wstring(first), std::wstring(second), width};
  }
  return best;
}

Scene arrange(const Model& model, const Spec& spec, TextRuler& ruler) {
  Scene scene;
  const Scale scale = spec.scale;
  const int row = spec.tabs_shown ? scale(kTabRow) : 0;
  scene.strip = {0, 0, spec.width, row};
  scene.body = {scale(1), row, spec.width - scale(1), row + scale(kWhole) - scale(kTabRow)};
  if (spec.tabs_shown) {
    place_tab_buttons(scene, spec);
    place_tabs(scene, model, spec, ruler);
  }
  CategoryRow(scene, model, spec, ruler).place();
  return scene;
}

namespace {

template <class T>
int find_at(const std::vector<T>& places, int x, int y) {
  for (size_t i = 0; i < places.size(); ++i)
    if (inside(places[i].area, x, y)) return static_cast<int>(i);
  return -1;
}

}  // namespace

Target hit(const Scene& scene, int x, int y) {
  if (const int at = find_at(scene.tab_buttons, x, y); at >= 0) return {Part::kTabButton, at};
  if (const int at = find_at(scene.tabs, x, y); at >= 0) return {Part::kTab, at};
  if (inside(scene.scroll_left, x, y)) return {Part::kScrollLeft, 0};
  if (inside(scene.scroll_right, x, y)) return {Part::kScrollRight, 0};
  if (const int at = find_at(scene.buttons, x, y); at >= 0) {
    const bool drop = inside(scene.buttons[static_cast<size_t>(at)].drop, x, y);
    return {drop ? Part::kDrop : Part::kButton, at};
  }
  if (const int at = find_at(scene.categories, x, y); at >= 0) {
    const bool launcher = inside(scene.categories[static_cast<size_t>(at)].launcher, x, y);
    return {launcher ? Part::kLauncher : Part::kCategory, at};
  }
  if (inside(scene.body, x, y)) return {Part::kBody, 0};
  return {};
}

PixelRect area_of(const Scene& scene, const Target& target) {
  const auto at = static_cast<size_t>(target.at);
  if (target.at < 0) return {};
  switch (target.part) {
    case Part::kTab:
      return at < scene.tabs.size() ? scene.tabs[at].area : PixelRect{};
    case Part::kCategory:
      return at < scene.categories.size() ? scene.categories[at].area : PixelRect{};
    case Part::kLauncher:
      return at < scene.categories.size() ? scene.categories[at].launcher : PixelRect{};
    case Part::kButton:
    case Part::kDrop:
      return at < scene.buttons.size() ? scene.buttons[at].area : PixelRect{};
    case Part::kTabButton:
      return at < scene.tab_buttons.size() ? scene.tab_buttons[at].area : PixelRect{};
    case Part::kScrollLeft:
      return scene.scroll_left;
    case Part::kScrollRight:
      return scene.scroll_right;
    default:
      return {};
  }
}

int category_of(const Scene& scene, const Target& target) {
  const bool button = target.part == Part::kButton || target.part == Part::kDrop;
  if (button && target.at >= 0 && static_cast<size_t>(target.at) < scene.buttons.size())
    return scene.buttons[static_cast<size_t>(target.at)].category;
  return target.part == Part::kCategory || target.part == Part::kLauncher ? target.at : -1;
}

Damage hover_damage(const Scene& scene, const Target& from, const Target& to) {
  Damage out;
  if (from == to) return out;
  const int left = category_of(scene, from), entered = category_of(scene, to);
  const auto wider = [&](const Target& target, int category) {
    return category >= 0 && left != entered ? area_of(scene, {Part::kCategory, category})
                                            : area_of(scene, target);
  };
  // Within one category the frame of the category itself stays as it is.
  const bool same = left == entered;
  if (!same || from.part != Part::kCategory) out.areas[0] = wider(from, left);
  if (!same || to.part != Part::kCategory) out.areas[1] = wider(to, entered);
  if (out.areas[0] == out.areas[1]) out.areas[1] = {};
  return out;
}

}  // namespace kestrelon::ribbon
