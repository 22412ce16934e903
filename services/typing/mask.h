// Character masks: places to fill between fixed characters, in one or more shapes that share the
// same contents. A telephone number moves from its shape of eight digits to that of nine as digits
// are typed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

enum class PlaceKind : uint8_t { kFixed, kDigit, kLetter, kLetterOrDigit };

struct MaskCell {
  PlaceKind kind = PlaceKind::kFixed;
  wchar_t fixed = 0;      // the character of a fixed cell
  wchar_t lowest = L'0';  // bounds of a digit
  wchar_t highest = L'9';
  bool capital = false;  // an ASCII letter, turned into a capital
  bool pads = false;     // a digit above `highest` goes into the next place, behind a zero
};

/// One shape: its cells and where its places are.
class Mask {
 public:
  explicit Mask(std::vector<MaskCell> cells);

  size_t length() const { return cells_.size(); }
  size_t places() const { return positions_.size(); }
  const MaskCell& cell(size_t position) const { return cells_[position]; }
  const MaskCell& place(size_t index) const { return cells_[positions_[index]]; }

  /// Where a place stands; behind the last place for an index past it.
  size_t position(size_t index) const;
  /// The first place at or behind a position; `places()` for none.
  size_t index_at(size_t position) const;
  bool accepts(size_t index, wchar_t c) const;
  /// The shape with its places filled; a blank stands for an empty place.
  std::wstring text(std::wstring_view contents) const;
  /// The contents of a text of this shape; nothing when it has another.
  std::optional<std::wstring> contents(std::wstring_view text) const;

 private:
  std::vector<MaskCell> cells_;
  std::vector<size_t> positions_;
};

/// Shapes from the preferred one on.
class MaskSet {
 public:
  std::vector<Mask> shapes;
  std::wstring_view alike;  // characters that are typed for any fixed one among them
  bool pads_groups =
      false;  // a fixed character typed behind one digit of two puts a zero before it
  bool drops_country = false;  // "55" in front of a pasted telephone number is no part of it
  bool is_date = false;        // pasted dates may have another order

  size_t most_places() const;
  /// The first shape that takes the contents; the last one for contents that none takes.
  const Mask& shape_for(std::wstring_view contents) const;
  bool takes(std::wstring_view contents) const;
};

/// The mask of a pattern in which "#" and "@" are places and all else is fixed.
MaskSet mask_of(std::wstring_view pattern, PlaceKind places);

}  // namespace kestrelon
