// Masks for what Brazilian forms ask for.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "services/typing/mask.h"

namespace kestrelon {

/// Numbered as the interface numbers them. A key of the instant payment system has no places; it is
/// text of certain characters.
enum class MaskPreset {
  kNone = 0,
  kCpf = 1,
  kCnpj = 2,
  kPostalCode = 3,
  kPhone = 4,
  kPlate = 5,
  kDate = 6,
  kTime = 7,
  kPixKey = 8,
  kCpfOrCnpj = 9
};

/// Null for presets without places and for unknown numbers. Made once, never freed.
std::shared_ptr<const MaskSet> preset_masks(MaskPreset preset);

/// Why a finished text is no valid one, in the user's language; "" when it is valid.
std::wstring_view preset_fault(MaskPreset preset, std::wstring_view text);

/// The usual form of a finished text: short years get their century, keys of the instant payment
/// system their marks. A text that is not understood comes back as it is.
std::wstring preset_finished(MaskPreset preset, std::wstring_view text);

}  // namespace kestrelon
