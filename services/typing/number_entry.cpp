#include "services/typing/number_entry.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "services/typing/number_line.h"

namespace kestrelon::number_entry {
namespace {

// Where the caret stands in a line: so many digits of the whole part behind it, or so many places
// before it. Edits in one part leave positions in the other as they are.
struct LineCaret {
  bool in_places = false;
  size_t digits = 0;
  bool operator==(const LineCaret&) const = default;
};

// A field taken apart for one edit.
struct Editing {
  NumberLine line;
  LineCaret from, to;        // the selection, equal without one
  bool before_mark = false;  // the caret stood before a group mark, not behind it

  bool selected() const { return !(from == to); }
  bool all_selected() const {
    return selected() && !from.in_places && from.digits == line.whole.size() &&
           to.digits == (to.in_places ? line.places.size() : 0) && to.in_places == line.mark;
  }
};

LineCaret caret_at(const std::wstring& text, const NumberLine& line, size_t position) {
  const size_t right = right_of(text, line, position);
  if (line.mark && right <= line.places.size()) return {true, line.places.size() - right};
  return {false, right - line.places.size() - (line.mark ? 1 : 0)};
}

EntryState placed(const NumberLine& line, const LineCaret& caret, bool before_mark,
                  const EntrySettings& settings) {
  std::wstring text = text_of(line, settings);
  const size_t behind_whole = line.places.size() + (line.mark ? 1 : 0);
  const size_t right = caret.in_places
                           ? line.places.size() - std::min(caret.digits, line.places.size())
                           : behind_whole + caret.digits;
  const size_t position = position_of(text, line, right, before_mark, settings);
  return state_at(std::move(text), position);
}

bool in_bounds(const NumberLine& line, const EntrySettings& settings) {
  return line.whole.size() <= kMostWholeDigits && line.places.size() <= most_places(settings);
}

// A text that is not the field's own becomes its own before it is edited.
EntryState adopted(const EntryState& state, const EntrySettings& settings) {
  if (is_well_formed(state.text, settings)) return state;
  EntryState own = showing(value(state.text, settings), settings);
  const bool all = state.has_selection() && state.begin() == 0 && state.end() == state.text.size();
  if (all) own.anchor = 0, own.caret = own.text.size();
  return own;
}

Editing open(const EntryState& state, const EntrySettings& settings) {
  Editing editing;
  editing.line = line_of(state.text, settings);
  const size_t first = prefix_length(editing.line, settings);
  const size_t begin = std::max(state.begin(), first), end = std::max(state.end(), first);
  editing.from = caret_at(state.text, editing.line, begin);
  editing.to = end == begin ? editing.from : caret_at(state.text, editing.line, end);
  editing.before_mark = end < state.text.size() && !editing.to.in_places && editing.to.digits > 0 &&
                        !is_digit(state.text[end]);
  return editing;
}

// Takes the selection out; the caret stays at `to`. Places are not filled up yet.
void erase_selection(Editing& editing, const EntrySettings& settings) {
  NumberLine& line = editing.line;
  LineCaret& from = editing.from;
  LineCaret& to = editing.to;
  if (from.in_places) {
    line.places.erase(from.digits, to.digits - from.digits);
    to = from;
  } else if (!to.in_places) {
    line.whole.erase(line.whole.size() - from.digits, from.digits - to.digits);
  } else {
    line.whole.resize(line.whole.size() - from.digits);
    line.places.erase(0, to.digits);
    to = {false, 0};
    if (settings.kind == EntryKind::kNumber) {  // the mark went along
      to.digits = line.places.size();
      line.whole += line.places;
      line.places.clear();
      line.mark = false;
    }
  }
  from = to;
}

// Digits of a field that fills from the right, as one row; the caret counts those behind it.
struct DigitRow {
  std::wstring digits;
  size_t from = 0, to = 0;
  bool in_places = false;
};

DigitRow row_of(const Editing& editing) {
  const auto behind = [&editing](const LineCaret& caret) {
    const size_t places = editing.line.places.size();
    return caret.in_places ? places - caret.digits : places + caret.digits;
  };
  return {editing.line.whole + editing.line.places, behind(editing.from), behind(editing.to),
          editing.to.in_places};
}

EntryState placed(const DigitRow& row, bool negative, bool before_mark,
                  const EntrySettings& settings) {
  NumberLine line;
  line.negative = negative;
  const size_t places = settings.decimals;
  const size_t missing = places - std::min(places, row.digits.size());
  line.places = std::wstring(missing, L'0') + row.digits;
  line.whole = line.places.substr(0, line.places.size() - places);
  line.places.erase(0, line.whole.size());
  tidy(line, settings);
  if (line.is_zero()) return placed(line, {line.mark, places}, false, settings);
  const bool in_places = line.mark && (row.to < places || (row.to == places && row.in_places));
  const LineCaret caret = in_places
                              ? LineCaret{true, places - row.to}
                              : LineCaret{false, std::min(row.to - places, line.whole.size())};
  return placed(line, caret, before_mark, settings);
}

std::optional<EntryState> type_digit(Editing editing, wchar_t c, const EntrySettings& settings) {
  if (settings.kind == EntryKind::kCurrency && settings.from_right) {
    DigitRow row = row_of(editing);
    row.digits.erase(row.digits.size() - row.from, row.from - row.to);
    row.digits.insert(row.digits.size() - row.to, 1, c);
    const size_t zeros = std::min(row.digits.find_first_not_of(L'0'), row.digits.size());
    if (row.digits.size() - zeros > kMostWholeDigits + settings.decimals) return {};
    return placed(row, editing.line.negative, editing.before_mark, settings);
  }
  const bool overtyped = editing.selected();
  if (overtyped) erase_selection(editing, settings);
  NumberLine& line = editing.line;
  LineCaret& caret = editing.to;
  if (!caret.in_places) {
    if (line.whole == L"0") {
      line.whole.clear();
      caret.digits = 0;
    }
    line.whole.insert(line.whole.size() - caret.digits, 1, c);
  } else if (settings.kind == EntryKind::kCurrency && !overtyped) {
    if (caret.digits == line.places.size()) return {};
    line.places[caret.digits++] = c;
  } else {
    if (line.places.size() >= most_places(settings)) return {};
    line.places.insert(caret.digits++, 1, c);
  }
  tidy(line, settings);
  if (!in_bounds(line, settings)) return {};
  caret.digits = std::min(caret.digits, caret.in_places ? line.places.size() : line.whole.size());
  return placed(line, caret, editing.before_mark, settings);
}

std::optional<EntryState> type_mark(Editing editing, const EntrySettings& settings) {
  const bool from_right = settings.kind == EntryKind::kCurrency && settings.from_right;
  if (most_places(settings) == 0 || from_right) return {};
  if (editing.selected()) erase_selection(editing, settings);
  NumberLine& line = editing.line;
  LineCaret& caret = editing.to;
  if (!line.mark) {
    if (caret.digits > most_places(settings)) return {};
    line.places = line.whole.substr(line.whole.size() - caret.digits);
    line.whole.resize(line.whole.size() - caret.digits);
    line.mark = true;
    caret = {true, 0};
  } else if (!caret.in_places) {
    caret = {true, 0};
  }
  tidy(line, settings);
  if (!in_bounds(line, settings)) return {};
  return placed(line, caret, false, settings);
}

EntryState toggle_sign(const EntryState& state, const Editing& editing,
                       const EntrySettings& settings) {
  if (editing.all_selected()) {
    EntryState negative_zero = zero(settings);
    negative_zero.text.insert(0, 1, L'-');
    return state_at(std::move(negative_zero.text), negative_zero.caret + 1);
  }
  EntryState toggled = state;
  if (editing.line.negative) {
    toggled.text.erase(0, 1);
    toggled.anchor -= std::min<size_t>(toggled.anchor, 1);
    toggled.caret -= std::min<size_t>(toggled.caret, 1);
  } else {
    toggled.text.insert(0, 1, L'-');
    ++toggled.anchor;
    ++toggled.caret;
  }
  return settled(std::move(toggled), settings);
}

EntryState erased(Editing editing, const EntrySettings& settings) {
  if (settings.kind == EntryKind::kCurrency && settings.from_right) {
    DigitRow row = row_of(editing);
    row.digits.erase(row.digits.size() - row.from, row.from - row.to);
    return placed(row, editing.line.negative, editing.before_mark, settings);
  }
  erase_selection(editing, settings);
  tidy(editing.line, settings);
  editing.to.digits = std::min(editing.to.digits, editing.to.in_places ? editing.line.places.size()
                                                                       : editing.line.whole.size());
  return placed(editing.line, editing.to, editing.before_mark, settings);
}

// What stays after the selection is taken out; the state itself when too many digits would join.
EntryState without_selection(const EntryState& own, const EntrySettings& settings) {
  const Editing editing = open(own, settings);
  if (!editing.selected()) return settled(state_at(own.text, own.begin()), settings);
  EntryState result = erased(editing, settings);
  const bool everything = editing.all_selected() && editing.line.negative;
  if (everything) return zero(settings);
  return in_bounds(line_of(result.text, settings), settings) ? result : own;
}

}  // namespace

EntryState zero(const EntrySettings& settings) {
  return showing({}, settings);
}

EntryState showing(const Amount& amount, const EntrySettings& settings) {
  Amount rounded = amount;
  const size_t most = most_places(settings);
  NumberLine line;
  if (settings.kind == EntryKind::kCurrency || rounded.places.size() > most)
    round_places(rounded, most);
  line.negative = rounded.negative && !rounded.is_zero();
  line.whole = rounded.whole;
  line.places = rounded.places;
  line.mark = !line.places.empty();
  tidy(line, settings);
  const bool at_end = settings.kind == EntryKind::kNumber || settings.from_right;
  const LineCaret caret = at_end && line.mark ? LineCaret{true, line.places.size()} : LineCaret{};
  return placed(line, caret, false, settings);
}

bool is_well_formed(std::wstring_view text, const EntrySettings& settings) {
  const NumberLine line = line_of(text, settings);
  return in_bounds(line, settings) && text_of(line, settings) == text;
}

Amount value(std::wstring_view text, const EntrySettings& settings) {
  const NumberLine line = line_of(text, settings);
  if (text_of(line, settings) == text) return line.amount();
  return read_amount(text, settings.marks).value_or(Amount{});
}

EntryState type(const EntryState& state, wchar_t c, const EntrySettings& settings) {
  const EntryState own = adopted(state, settings);
  const Editing editing = open(own, settings);
  if (c == L'-' && settings.allow_negative) return toggle_sign(own, editing, settings);
  const AmountMarks& marks = settings.marks;
  const bool mark = c == L'.' || c == L',' || c == marks.decimal;
  if (mark) return type_mark(editing, settings).value_or(state);
  if (is_digit(c)) return type_digit(editing, c, settings).value_or(state);
  return state;
}

EntryState paste(const EntryState& state, std::wstring_view text, const EntrySettings& settings) {
  constexpr size_t kLongestNumber = 256;
  const std::wstring_view trimmed = trim_blanks(text.substr(0, text.find_first_of(L"\r\n")));
  const bool from_right = settings.kind == EntryKind::kCurrency && settings.from_right;
  if (trimmed.size() <= kLongestNumber && (from_right || !is_all_digits(trimmed))) {
    if (std::optional<Amount> amount = read_amount(trimmed, settings.marks)) {
      if (amount->whole.size() > kMostWholeDigits) return state;
      amount->negative = amount->negative && settings.allow_negative;
      EntryState shown = showing(*amount, settings);
      if (line_of(shown.text, settings).whole.size() > kMostWholeDigits) return state;
      return state_at(shown.text, shown.text.size());
    }
  }
  EntryState pasted = state;
  for (const wchar_t c : trimmed.substr(0, kLongestNumber))
    if (is_digit(c)) pasted = type(pasted, c, settings);
  return pasted;
}

EntryState erase_backward(const EntryState& state, const EntrySettings& settings) {
  const EntryState own = adopted(state, settings);
  if (own.has_selection()) return without_selection(own, settings);
  const size_t first = first_position(own.text, settings);
  const NumberLine line = line_of(own.text, settings);
  EntryState result = own;
  if (own.caret > first) {
    const bool at_digit = is_digit(own.text[own.caret - 1]);
    const bool lone_mark = line.mark && line.places.empty() && own.caret == own.text.size();
    if (!at_digit && !lone_mark) return state_at(own.text, own.caret - 1);
    result.anchor = own.caret - 1;
    result = without_selection(result, settings);
  }
  // Nothing left to delete but the sign.
  if (result.text == own.text && result.caret == own.caret && line.negative)
    return state_at(own.text.substr(1), own.caret - 1);
  return result;
}

EntryState erase_forward(const EntryState& state, const EntrySettings& settings) {
  EntryState own = adopted(state, settings);
  if (own.has_selection()) return without_selection(own, settings);
  const size_t caret = std::max(own.caret, first_position(own.text, settings));
  if (caret >= own.text.size()) return own;
  const NumberLine line = line_of(own.text, settings);
  const bool lone_mark = line.mark && line.places.empty() && caret + 1 == own.text.size();
  if (!is_digit(own.text[caret]) && !lone_mark) return state_at(own.text, caret + 1);

  Editing editing = open({own.text, caret, caret + 1}, settings);
  editing.before_mark = true;  // the caret stays with the digit before it
  return erased(editing, settings);
}

size_t first_position(std::wstring_view text, const EntrySettings& settings) {
  return prefix_length(line_of(text, settings), settings);
}

EntryState settled(EntryState state, const EntrySettings& settings) {
  state.caret = std::min(state.caret, state.text.size());
  state.anchor = std::min(state.anchor, state.text.size());
  if (state.has_selection() || !is_well_formed(state.text, settings)) return state;
  const NumberLine line = line_of(state.text, settings);
  state.caret = std::max(state.caret, prefix_length(line, settings));
  const bool fills = settings.kind == EntryKind::kCurrency && settings.from_right;
  if (fills && line.is_zero()) state.caret = state.text.size();
  state.anchor = state.caret;
  return state;
}

std::wstring finished(std::wstring_view text, const EntrySettings& settings) {
  if (!is_well_formed(text, settings)) return std::wstring(text);
  NumberLine line = line_of(text, settings);
  if (line.is_zero()) line.negative = false;
  if (line.places.empty()) line.mark = false;
  return text_of(line, settings);
}

}  // namespace kestrelon::number_entry
