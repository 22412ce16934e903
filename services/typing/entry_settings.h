// The rules by which an input field takes text.
#pragma once

#include <memory>
#include <string>

#include "services/typing/amount.h"
#include "services/typing/letters.h"

namespace kestrelon {

class MaskSet;

enum class EntryKind { kText, kNumber, kCurrency, kMask };

/// Whole digits that a number field takes, the width of its grouping pattern.
inline constexpr size_t kMostWholeDigits = 27;

struct EntrySettings {
  EntryKind kind = EntryKind::kText;

  // Text.
  TextCase text_case = TextCase::kNormal;
  bool number_only = false;  // digits alone are let through
  bool multiline = false;
  bool pix_key = false;   // characters of a key of the instant payment system alone
  size_t max_length = 0;  // 0 is no limit

  // Numbers.
  bool allow_negative = true;
  bool from_right = false;  // the last `decimals` digits typed are the fraction
  size_t decimals = 2;
  AmountMarks marks;
  std::wstring currency = L"R$";

  // Masks: not null for kMask.
  std::shared_ptr<const MaskSet> masks;
};

}  // namespace kestrelon
