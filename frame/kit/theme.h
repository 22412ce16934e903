// What the three themes give to each control's colour properties, in the order of assignment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrelon {

/// `ENUM_THEME`.
enum class ThemeId : int32_t { OfficeBlue = 0, OfficeSilver = 1, Windows8 = 2 };

/// One property and its value in each theme: an OLE_COLOR, 0x00BBGGRR or a system colour with its
/// high bit set, or the value of an enumeration.
struct ThemeEntry {
  const wchar_t* property;
  uint32_t values[3];
};

using ThemeTable = std::span<const ThemeEntry>;

namespace theme {

extern const ThemeTable kButton, kGroupBox, kProgressBar, kPictureLcd, kTextBox, kComboBox,
    kListBox, kTreeView, kToolBar, kFlexGrid;

// The roles that recur, for controls with a table of their own.
inline constexpr uint32_t kFieldBorder[3] = {0xF2CEB3, 0xBEBEBE, 0xDBC9BA};
inline constexpr uint32_t kGradientLight[3] = {0xFEF9F4, 0xF8F4F1, 0xFEF9F4};
inline constexpr uint32_t kGradientDark[3] = {0xFFEADA, 0xE7DCD6, 0xF5E7DC};
inline constexpr uint32_t kAccentText[3] = {0xB75F31, 0x917069, 0xB75F31};

}  // namespace theme

/// Hands each entry of a table to `assign(property, value)`, which goes through the property's own
/// setter. A number that is no theme assigns nothing.
template <class Assign>
void apply_theme(ThemeTable table, int32_t number, Assign&& assign) {
  if (number < 0 || number > 2) return;
  for (const ThemeEntry& entry : table)
    assign(entry.property, entry.values[static_cast<size_t>(number)]);
}

}  // namespace kestrelon
