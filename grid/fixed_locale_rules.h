// Locales that are the same on every machine.
#pragma once

#include "grid/locale_rules.h"

namespace kestrelon {

/// Latin letters are ordered without case and, at first, without accents, as Portuguese and English
/// dictionaries do; marks come before digits, digits before letters. The code page is the Western
/// one.
class FixedLocaleRules final : public LocaleRules {
 public:
  using LocaleRules::LocaleRules;
  void append_sort_key(std::wstring_view text, std::string& keys) const override;
  std::optional<double> wordy_date(std::wstring_view) const override { return std::nullopt; }
  std::optional<std::string> code_page_bytes(std::wstring_view text) const override;
};

FixedLocaleRules brazilian_locale_rules();
FixedLocaleRules american_locale_rules();

}  // namespace kestrelon
