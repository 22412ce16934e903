#include "services/typing/mask_entry.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "services/kn_date_format.h"
#include "services/typing/mask.h"

namespace kestrelon::mask_entry {
namespace {

constexpr wchar_t kBlank = L' ';

// A field as the contents of its places; `contents` has room for the largest shape.
struct Filling {
  std::wstring contents;
  size_t from = 0, to = 0;  // places of the selection; equal without one
};

const MaskSet& masks_of(const EntrySettings& settings) {
  return *settings.masks;
}

const Mask* shape_of_text(std::wstring_view text, const EntrySettings& settings,
                          std::wstring& contents) {
  const MaskSet& set = masks_of(settings);
  for (const Mask& shape : set.shapes) {
    std::optional<std::wstring> found = shape.contents(text);
    if (!found) continue;
    contents = std::move(*found);
    contents.resize(set.most_places(), kBlank);
    return &shape;
  }
  return nullptr;
}

EntryState placed(std::wstring_view contents, size_t index, const EntrySettings& settings) {
  const Mask& shape = masks_of(settings).shape_for(contents);
  return state_at(shape.text(contents), shape.position(index));
}

// The character as the place takes it: in the field's case, or as the capital that it must be.
std::optional<wchar_t> taken(std::wstring& contents, size_t index, wchar_t c,
                             const EntrySettings& settings) {
  const MaskSet& set = masks_of(settings);
  if (index >= contents.size() || c == kBlank) return {};
  const wchar_t before = contents[index];
  const wchar_t cased = with_case(c, settings.text_case);
  for (const wchar_t candidate : {cased, to_capital(cased)}) {
    contents[index] = candidate;
    if (set.takes(contents)) return candidate;
  }
  contents[index] = before;
  return {};
}

bool alike(const MaskSet& set, wchar_t fixed, wchar_t typed) {
  return fixed == typed || (set.alike.find(typed) != std::wstring_view::npos &&
                            set.alike.find(fixed) != std::wstring_view::npos);
}

// Fixed cells directly before a place hold the character, so that it was typed a little late.
bool stands_before(const MaskSet& set, const Mask& shape, size_t index, wchar_t c) {
  for (size_t at = shape.position(index); at > 0 && shape.cell(at - 1).kind == PlaceKind::kFixed;
       --at)
    if (alike(set, shape.cell(at - 1).fixed, c)) return true;
  return false;
}

// The place behind the next run of fixed cells if that holds the character.
std::optional<size_t> behind_next(const MaskSet& set, const Mask& shape, size_t index, wchar_t c) {
  size_t at = shape.position(index);
  while (at < shape.length() && shape.cell(at).kind != PlaceKind::kFixed) ++at;
  for (size_t cell = at; cell < shape.length() && shape.cell(cell).kind == PlaceKind::kFixed;
       ++cell)
    if (alike(set, shape.cell(cell).fixed, c)) return shape.index_at(cell);
  return {};
}

// "5/" in a date means the fifth: the digit moves into the second place behind a zero.
void pad_group(std::wstring& contents, size_t index) {
  if (index == 0 || index >= contents.size() || contents[index] != kBlank) return;
  if (!is_digit(contents[index - 1])) return;
  contents[index] = contents[index - 1];
  contents[index - 1] = L'0';
}

// One character at a place; false when it means nothing there. `index` moves on.
bool put(std::wstring& contents, size_t& index, wchar_t c, const EntrySettings& settings) {
  const MaskSet& set = masks_of(settings);
  if (taken(contents, index, c, settings)) {
    ++index;
    return true;
  }
  const Mask& shape = set.shape_for(contents);
  const bool pads = index < shape.places() && shape.place(index).pads && is_digit(c);
  if (pads && index + 1 < contents.size()) {
    contents[index] = L'0';
    contents[index + 1] = c;
    index += 2;
    return true;
  }
  if (stands_before(set, shape, index, c)) return true;
  const std::optional<size_t> behind = behind_next(set, shape, index, c);
  if (!behind) return false;
  const bool inside_group =
      index > 0 && shape.position(index) == shape.position(index - 1) + 1 && *behind == index + 1;
  if (set.pads_groups && inside_group) pad_group(contents, index);
  index = *behind;
  return true;
}

bool put_all(std::wstring& contents, size_t& index, std::wstring_view text,
             const EntrySettings& settings) {
  bool fits = true;
  for (const wchar_t c : text) fits = put(contents, index, c, settings) && fits;
  return fits;
}

std::wstring blanks(const EntrySettings& settings) {
  return std::wstring(masks_of(settings).most_places(), kBlank);
}

// Contents of any text: those of its shape, or as much of it as places take.
Filling open(const EntryState& state, const EntrySettings& settings) {
  Filling filling;
  if (const Mask* shape = shape_of_text(state.text, settings, filling.contents)) {
    filling.from = shape->index_at(state.begin());
    filling.to = state.has_selection() ? shape->index_at(state.end()) : filling.from;
    return filling;
  }
  filling.contents = blanks(settings);
  size_t index = 0;
  put_all(filling.contents, index, state.text.substr(0, 4 * filling.contents.size()), settings);
  const bool all = state.has_selection() && state.begin() == 0 && state.end() == state.text.size();
  filling.from = all ? 0 : index;
  filling.to = all ? filling.contents.size() : index;
  return filling;
}

void blank_selection(Filling& filling) {
  for (size_t i = filling.from; i < filling.to && i < filling.contents.size(); ++i)
    filling.contents[i] = kBlank;
  filling.to = filling.from;
}

// What a person means by a pasted text: without the country in front of a telephone number, with
// day and month before the year.
std::wstring meant(std::wstring_view text, const MaskSet& set) {
  std::wstring bare(trim_blanks(text.substr(0, text.find_first_of(L"\r\n\t"))));
  if (set.drops_country) {
    const auto digits = std::count_if(bare.begin(), bare.end(), is_digit);
    if (bare.starts_with(L"+55")) {
      bare.erase(0, 3);
    } else if (digits > 11 && bare.starts_with(L"55")) {
      bare.erase(0, 2);
    } else if (digits > 10 && bare.starts_with(L'0')) {
      bare.erase(0, 1);
    }
    bare.erase(0, std::min(bare.find_first_not_of(L' '), bare.size()));
  }
  if (set.is_date &&
      std::any_of(bare.begin(), bare.end(), [](wchar_t c) { return !is_digit(c); })) {
    constexpr int kDayMonthYear = 1;
    std::wstring date = format_date(bare, L"dd/mm/yyyy");
    if (is_valid_date(date, kDayMonthYear)) return date;
  }
  return bare;
}

// A telephone number without its area code.
bool lacks_area(std::wstring_view text, const MaskSet& set) {
  std::wstring digits;
  for (const wchar_t c : text)
    if (is_digit(c)) digits += c;
  return set.drops_country && (digits.size() == 8 || (digits.size() == 9 && digits[0] == L'9'));
}

bool fills_all(std::wstring_view text, const MaskSet& set) {
  const auto count = static_cast<size_t>(std::count_if(
      text.begin(), text.end(), [](wchar_t c) { return is_digit(c) || is_letter(c); }));
  return std::any_of(set.shapes.begin(), set.shapes.end(),
                     [count](const Mask& shape) { return count >= shape.places(); });
}

// Behind the last place nothing can be typed, so the caret gets there only when that is filled.
size_t last_index(const Mask& shape, std::wstring_view contents) {
  const size_t places = shape.places();
  return places > 0 && contents[places - 1] == kBlank ? places - 1 : places;
}

}  // namespace

EntryState empty(const EntrySettings& settings) {
  return placed(blanks(settings), 0, settings);
}

bool is_empty(std::wstring_view text, const EntrySettings& settings) {
  std::wstring contents;
  if (!shape_of_text(text, settings, contents)) return trim_blanks(text).empty();
  return contents.find_first_not_of(kBlank) == std::wstring::npos;
}

EntryState showing(std::wstring_view given, const EntrySettings& settings) {
  std::wstring contents;
  const std::wstring text = with_case(given, settings.text_case);
  if (const Mask* shape = shape_of_text(text, settings, contents)) {
    const size_t first = std::min(contents.find(kBlank), shape->places());
    return state_at(text, shape->position(first));
  }
  contents = blanks(settings);
  size_t index = 0;
  constexpr size_t kLongest = 256;
  if (text.size() > kLongest ||
      !put_all(contents, index, meant(text, masks_of(settings)), settings))
    return state_at(text, text.size());
  return placed(contents, index, settings);
}

EntryState type(const EntryState& state, wchar_t c, const EntrySettings& settings) {
  Filling filling = open(state, settings);
  blank_selection(filling);
  size_t index = filling.from;
  if (!put(filling.contents, index, c, settings)) return state;
  return placed(filling.contents, index, settings);
}

EntryState paste(const EntryState& state, std::wstring_view text, const EntrySettings& settings) {
  constexpr size_t kLongest = 1024;
  const MaskSet& set = masks_of(settings);
  const std::wstring whole = meant(text.substr(0, kLongest), set);
  Filling filling = open(state, settings);
  std::wstring contents;
  if (shape_of_text(whole, settings, contents) || fills_all(whole, set)) {
    filling.contents = blanks(settings);
    filling.from = filling.to = 0;
  } else if (lacks_area(whole, set)) {
    constexpr size_t kAreaDigits = 2;
    filling.from = kAreaDigits;
    filling.to = filling.contents.size();
  }
  blank_selection(filling);
  const std::wstring blanked = filling.contents;
  size_t index = filling.from;
  put_all(filling.contents, index, whole, settings);
  if (filling.contents == blanked && index == filling.from) return state;
  return placed(filling.contents, index, settings);
}

EntryState erase_backward(const EntryState& state, const EntrySettings& settings) {
  Filling filling = open(state, settings);
  if (filling.from == filling.to && !state.has_selection()) {
    if (filling.from == 0) return placed(filling.contents, 0, settings);
    --filling.from;
  }
  blank_selection(filling);
  return placed(filling.contents, filling.from, settings);
}

EntryState erase_forward(const EntryState& state, const EntrySettings& settings) {
  Filling filling = open(state, settings);
  if (state.has_selection()) {
    blank_selection(filling);
  } else {
    const size_t filled = filling.contents.find_first_not_of(kBlank, filling.from);
    if (filled != std::wstring::npos) filling.contents[filled] = kBlank;
  }
  return placed(filling.contents, filling.from, settings);
}

EntryState settled(EntryState state, const EntrySettings& settings) {
  state.caret = std::min(state.caret, state.text.size());
  state.anchor = std::min(state.anchor, state.text.size());
  std::wstring contents;
  const Mask* shape = shape_of_text(state.text, settings, contents);
  if (state.has_selection() || !shape) return state;
  // A click into an empty field, or behind a field that is not full, means where typing goes on.
  const size_t filled = contents.find_last_not_of(kBlank) + 1;
  size_t index = shape->index_at(state.caret);
  if (filled == 0 || index > last_index(*shape, contents)) index = filled;
  state.caret = state.anchor = shape->position(index);
  return state;
}

size_t moved(const EntryState& state, Step step, const EntrySettings& settings) {
  std::wstring contents;
  const Mask* shape = shape_of_text(state.text, settings, contents);
  if (!shape) {
    if (step == Step::kHome) return 0;
    if (step == Step::kEnd) return state.text.size();
    if (step == Step::kLeft) return state.caret - std::min<size_t>(state.caret, 1);
    return std::min(state.caret + 1, state.text.size());
  }
  const size_t index = shape->index_at(state.caret);
  switch (step) {
    case Step::kLeft:
      return shape->position(index - std::min<size_t>(index, 1));
    case Step::kRight:
      return shape->position(std::min(index + 1, last_index(*shape, contents)));
    case Step::kHome:
      return shape->position(0);
    case Step::kEnd:
      return shape->position(contents.find_last_not_of(kBlank) + 1);
  }
  return state.caret;
}

bool is_well_formed(std::wstring_view text, const EntrySettings& settings) {
  std::wstring contents;
  return shape_of_text(text, settings, contents) != nullptr;
}

bool is_complete(std::wstring_view text, const EntrySettings& settings) {
  std::wstring contents;
  const Mask* shape = shape_of_text(text, settings, contents);
  return shape && contents.substr(0, shape->places()).find(kBlank) == std::wstring::npos;
}

}  // namespace kestrelon::mask_entry
