// What the grid takes from the user's locale: everything that differs between two machines showing
// the same rows.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

enum class DateOrder { kDayMonthYear, kMonthDayYear, kYearMonthDay };

/// The plain answers, read once.
struct LocaleFacts {
  wchar_t decimal_mark = L',';
  wchar_t group_mark = L'.';
  /// How amounts of money are written, with n for the number and $ for `currency`.
  std::wstring currency = L"R$";
  std::wstring currency_pattern = L"$ n";
  std::wstring negative_currency_pattern = L"-$ n";
  int currency_decimals = 2;
  /// Marks that a number may carry before or behind it, upper case.
  std::vector<std::wstring> currency_marks = {L"R$", L"US$", L"\u20AC"};
  DateOrder date_order = DateOrder::kDayMonthYear;
  wchar_t date_separator = L'/';
  std::wstring true_word = L"Verdadeiro", false_word = L"Falso";
  std::wstring yes_word = L"Sim", no_word = L"N\u00E3o";
};

class LocaleRules {
 public:
  explicit LocaleRules(LocaleFacts facts) : facts_(std::move(facts)) {}
  virtual ~LocaleRules() = default;
  LocaleRules(const LocaleRules&) = delete;
  LocaleRules& operator=(const LocaleRules&) = delete;

  const LocaleFacts& facts() const { return facts_; }

  /// Appends bytes whose order is that of the texts in the locale without case. They end with one
  /// byte 0 and hold no other.
  virtual void append_sort_key(std::wstring_view text, std::string& keys) const = 0;
  /// The date value of a text that is not written in plain numbers ("5 de maio de 2012").
  virtual std::optional<double> wordy_date(std::wstring_view text) const = 0;
  /// The text in the machine's own code page; nothing where a character would be lost.
  virtual std::optional<std::string> code_page_bytes(std::wstring_view text) const = 0;

 private:
  LocaleFacts facts_;
};

/// The rules of this machine's user as they are now.
std::unique_ptr<LocaleRules> system_locale_rules();

}  // namespace kestrelon
