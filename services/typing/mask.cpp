#include "services/typing/mask.h"

#include <algorithm>

#include "base/text.h"
#include "services/typing/letters.h"

namespace kestrelon {
namespace {

bool shape_takes(const Mask& mask, std::wstring_view contents) {
  for (size_t i = 0; i < contents.size(); ++i)
    if (contents[i] != L' ' && (i >= mask.places() || !mask.accepts(i, contents[i]))) return false;
  return true;
}

}  // namespace

Mask::Mask(std::vector<MaskCell> cells) : cells_(std::move(cells)) {
  for (size_t i = 0; i < cells_.size(); ++i)
    if (cells_[i].kind != PlaceKind::kFixed) positions_.push_back(i);
}

size_t Mask::position(size_t index) const {
  if (positions_.empty()) return 0;
  return index < positions_.size() ? positions_[index] : positions_.back() + 1;
}

size_t Mask::index_at(size_t position) const {
  const auto found = std::lower_bound(positions_.begin(), positions_.end(), position);
  return static_cast<size_t>(found - positions_.begin());
}

bool Mask::accepts(size_t index, wchar_t c) const {
  const MaskCell& cell = place(index);
  const bool letter =
      cell.capital ? c >= L'A' && c <= L'Z' : cell.kind != PlaceKind::kDigit && is_letter(c);
  const bool digit = c >= cell.lowest && c <= cell.highest && is_digit(c);
  if (cell.kind == PlaceKind::kDigit) return digit;
  return cell.kind == PlaceKind::kLetter ? letter : letter || digit;
}

std::wstring Mask::text(std::wstring_view contents) const {
  std::wstring text(cells_.size(), L' ');
  for (size_t i = 0; i < cells_.size(); ++i)
    if (cells_[i].kind == PlaceKind::kFixed) text[i] = cells_[i].fixed;
  for (size_t i = 0; i < positions_.size() && i < contents.size(); ++i)
    text[positions_[i]] = contents[i];
  return text;
}

std::optional<std::wstring> Mask::contents(std::wstring_view text) const {
  if (text.size() != cells_.size()) return {};
  std::wstring contents;
  for (size_t i = 0; i < cells_.size(); ++i) {
    if (cells_[i].kind == PlaceKind::kFixed) {
      if (text[i] != cells_[i].fixed) return {};
    } else {
      if (text[i] != L' ' && !accepts(contents.size(), text[i])) return {};
      contents += text[i];
    }
  }
  return contents;
}

size_t MaskSet::most_places() const {
  size_t most = 0;
  for (const Mask& shape : shapes) most = std::max(most, shape.places());
  return most;
}

const Mask& MaskSet::shape_for(std::wstring_view contents) const {
  const auto found = std::find_if(shapes.begin(), shapes.end(), [contents](const Mask& shape) {
    return shape_takes(shape, contents);
  });
  return found == shapes.end() ? shapes.back() : *found;
}

bool MaskSet::takes(std::wstring_view contents) const {
  return std::any_of(shapes.begin(), shapes.end(),
                     [contents](const Mask& shape) { return shape_takes(shape, contents); });
}

MaskSet mask_of(std::wstring_view pattern, PlaceKind places) {
  std::vector<MaskCell> cells(pattern.size());
  for (size_t i = 0; i < pattern.size(); ++i) {
    const bool place = pattern[i] == L'#' || pattern[i] == L'@';
    cells[i].kind = place ? places : PlaceKind::kFixed;
    cells[i].fixed = pattern[i];
  }
  MaskSet set;
  set.shapes.emplace_back(std::move(cells));
  return set;
}

}  // namespace kestrelon
