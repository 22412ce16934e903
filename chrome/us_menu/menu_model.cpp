#include "chrome/us_menu/menu_model.h"

#include <algorithm>

#include "base/text.h"

namespace kestrelon::menu_model {
namespace {

struct KeyName {
  std::wstring_view name;
  int key;
};

constexpr int kBackspace = 8, kTab = 9, kEnter = 13, kEscape = 27, kSpace = 32, kPageUp = 33,
              kPageDown = 34, kEnd = 35, kHome = 36, kLeft = 37, kUp = 38, kRight = 39, kDown = 40,
              kInsert = 45, kDelete = 46, kF1 = 112;

constexpr KeyName kNames[] = {
    {L"backspace", kBackspace},
    {L"bksp", kBackspace},
    {L"tab", kTab},
    {L"enter", kEnter},
    {L"esc", kEscape},
    {L"space", kSpace},
    {L"espa\u00e7o", kSpace},
    {L"pgup", kPageUp},
    {L"pageup", kPageUp},
    {L"pgdn", kPageDown},
    {L"pagedown", kPageDown},
    {L"end", kEnd},
    {L"fim", kEnd},
    {L"home", kHome},
    {L"in\u00edcio", kHome},
    {L"left", kLeft},
    {L"esquerda", kLeft},
    {L"up", kUp},
    {L"acima", kUp},
    {L"right", kRight},
    {L"direita", kRight},
    {L"down", kDown},
    {L"abaixo", kDown},
    {L"ins", kInsert},
    {L"insert", kInsert},
    {L"del", kDelete},
    {L"delete", kDelete},
};

int modifier_of(std::wstring_view word) {
  if (equals_ignoring_case(word, L"shift")) return kShift;
  if (equals_ignoring_case(word, L"ctrl") || equals_ignoring_case(word, L"control"))
    return kControl;
  return equals_ignoring_case(word, L"alt") ? kAlt : 0;
}

// F1 to F24; 0 for any other word.
int function_key(std::wstring_view word) {
  if (word.size() < 2 || word.size() > 3 || fold_case(word[0]) != L'f') return 0;
  if (!is_all_digits(word.substr(1)) || word[1] == L'0') return 0;
  int number = 0;
  for (const wchar_t c : word.substr(1)) number = number * 10 + (c - L'0');
  return number <= 24 ? kF1 + number - 1 : 0;
}

int key_of(std::wstring_view word) {
  if (word.size() == 1) {
    const wchar_t c = fold_case(word[0]);
    if (is_digit(c)) return c;
    return c >= L'a' && c <= L'z' ? c - L'a' + 'A' : 0;
  }
  for (const KeyName& each : kNames)
    if (equals_ignoring_case(word, each.name)) return each.key;
  return function_key(word);
}

bool types_a_character(const ShortCut& cut) {
  const bool letter = (cut.key >= '0' && cut.key <= '9') || (cut.key >= 'A' && cut.key <= 'Z');
  return (letter || cut.key == kSpace) && (cut.modifiers & (kControl | kAlt)) == 0;
}

// At 96 dots an inch.
constexpr int kBarMargin = 10;  // on both sides of a caption in the bar
constexpr int kOverflowWidth = 22;
constexpr int kImageMargin = 4;  // around the image column's image
constexpr int kTextGap = 7;      // from the image column to the text
constexpr int kCutGap = 24;      // from the longest caption to the short cuts
constexpr int kArrowRoom = 20;   // behind the text, where the mark of a sub-menu stands
constexpr int kSeparatorHeight = 7, kTextMargin = 3;

}  // namespace

int find(Items items, std::wstring_view key) {
  if (key.empty()) return kNone;
  for (size_t i = 0; i < items.size(); ++i)
    if (items[i].key == key) return static_cast<int>(i);
  return kNone;
}

std::vector<int> levels(Items items) {
  std::vector<int> out;
  out.reserve(items.size());
  int last = -1;
  for (const MenuItem& item : items) {
    last = std::clamp(int{item.level}, 0, std::min(last + 1, kDeepest));
    out.push_back(last);
  }
  return out;
}

std::vector<int> children(Items items, int parent) {
  const std::vector<int> depth = levels(items);
  const auto count = static_cast<int>(items.size());
  std::vector<int> out;
  if (parent < kNone || parent >= count) return out;
  const int wanted = parent == kNone ? 0 : depth[static_cast<size_t>(parent)] + 1;
  for (int i = parent + 1; i < count; ++i) {
    const int own = depth[static_cast<size_t>(i)];
    if (own < wanted) break;
    if (own == wanted) out.push_back(i);
  }
  return out;
}

int subtree_end(Items items, int index) {
  const std::vector<int> depth = levels(items);
  const auto count = static_cast<int>(items.size());
  if (index < 0 || index >= count) return count;
  int end = index + 1;
  while (end < count && depth[static_cast<size_t>(end)] > depth[static_cast<size_t>(index)]) ++end;
  return end;
}

int parent_of(Items items, int index) {
  if (index < 0 || index >= static_cast<int>(items.size())) return kNone;
  const std::vector<int> depth = levels(items);
  int at = index;
  while (at >= 0 && depth[static_cast<size_t>(at)] >= depth[static_cast<size_t>(index)]) --at;
  return at;
}

ShortCut parse_short_cut(std::wstring_view text) {
  ShortCut out;
  const std::vector<std::wstring_view> words = split(text, L"+");
  for (size_t i = 0; i + 1 < words.size(); ++i) {
    const int modifier = modifier_of(trim_blanks(words[i]));
    if (modifier == 0) return {};
    out.modifiers |= modifier;
  }
  out.key = key_of(trim_blanks(words.back()));
  return out.key == 0 || types_a_character(out) ? ShortCut{} : out;
}

int find_short_cut(Items items, const ShortCut& pressed) {
  if (pressed.key == 0) return kNone;
  for (size_t i = 0; i < items.size(); ++i) {
    if (items[i].short_cut.empty() || parse_short_cut(items[i].short_cut) != pressed) continue;
    bool live = true;
    for (int at = static_cast<int>(i); at != kNone && live; at = parent_of(items, at)) {
      const MenuItem& item = items[static_cast<size_t>(at)];
      live = item.enabled && item.visible;
    }
    if (live) return static_cast<int>(i);
  }
  return kNone;
}

Bar lay_out_bar(std::span<const int> caption_widths, int width, int height, Scale scale,
                bool right_to_left) {
  Bar out;
  const int more = scale(kOverflowWidth);
  int all = 0;
  for (const int caption : caption_widths) all += caption + 2 * scale(kBarMargin);
  const int room = all > width ? width - more : width;
  int x = 0;
  for (const int caption : caption_widths) {
    const int end = x + caption + 2 * scale(kBarMargin);
    if (end > room) break;
    out.places.push_back({x, 0, end, height});
    x = end;
  }
  if (all > width) out.overflow = {std::max(0, width - more), 0, width, height};
  if (!right_to_left) return out;
  const auto turn = [width](PixelRect& rect) {
    rect = {width - rect.right, rect.top, width - rect.left, rect.bottom};
  };
  for (PixelRect& place : out.places) turn(place);
  if (!out.overflow.empty()) turn(out.overflow);
  return out;
}

ItemMetrics measure_item(bool separator, int caption_width, int short_cut_width, int text_height,
                         int image_size, Scale scale) {
  ItemMetrics out;
  const int image = scale(std::clamp(image_size, 8, 64));
  out.image_column = image + 2 * scale(kImageMargin);
  out.width = out.image_column + scale(kTextGap) + caption_width + scale(kArrowRoom);
  if (short_cut_width > 0) out.width += scale(kCutGap) + short_cut_width;
  out.height = separator
                   ? scale(kSeparatorHeight)
                   : std::max(text_height + 2 * scale(kTextMargin), image + 2 * scale(kTextMargin));
  return out;
}

}  // namespace kestrelon::menu_model
