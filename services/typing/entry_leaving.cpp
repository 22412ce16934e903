#include "services/typing/entry_leaving.h"

#include <algorithm>

#include "base/text.h"
#include "services/kn_date_format.h"
#include "services/typing/entry_field.h"
#include "services/typing/mask_entry.h"
#include "services/typing/number_entry.h"

namespace kestrelon {
namespace {

bool is_number(const EntrySettings& settings) {
  return settings.kind == EntryKind::kNumber || settings.kind == EntryKind::kCurrency;
}

// Digits alone, "05032026" or "050326", with separators where the format has them.
std::wstring with_separators(std::wstring_view text, std::wstring_view format) {
  if (!is_all_digits(text) || (text.size() != 6 && text.size() != 8)) return std::wstring(text);
  std::wstring parted;
  for (const wchar_t c : format) {
    if (c == L'/' || c == L'-' || c == L'.') {
      parted += c;
      continue;
    }
    if (!parted.empty() && is_digit(parted.back())) continue;
    const size_t width = fold_case(c) == L'y' ? text.size() - 4 : 2;
    const size_t done = static_cast<size_t>(std::count_if(parted.begin(), parted.end(), is_digit));
    if (done < text.size()) parted += text.substr(done, width);
  }
  return parted;
}

std::optional<std::wstring> as_date(std::wstring_view text, const std::wstring& format) {
  const std::optional<int> number = find_date_format(format);
  if (!number || trim_blanks(text).empty()) return {};
  const std::wstring parted = with_separators(trim_blanks(text), format);
  // The text itself must be real too: the format may leave out its day.
  std::wstring date = format_date(parted, format);
  if (date.empty() || !is_valid_date(parted, *number) || !is_valid_date(date, *number)) return {};
  return date;
}

std::wstring as_currency(const Amount& amount, const EntrySettings& settings) {
  const std::wstring prefix = settings.currency.empty() ? L"" : settings.currency + L' ';
  return format_amount(amount, settings.decimals, settings.marks, prefix);
}

// One part of a date or time: the places it takes and what it counts.
struct SpunPart {
  size_t first, length;
  int lowest, highest;
};

int number_at(std::wstring_view text, const SpunPart& part) {
  int number = 0;
  for (const wchar_t c : text.substr(part.first, part.length))
    if (is_digit(c)) number = number * 10 + (c - L'0');
  return number;
}

void write_at(std::wstring& text, const SpunPart& part, int number) {
  for (size_t i = part.length; i-- > 0; number /= 10)
    text[part.first + i] = static_cast<wchar_t>(L'0' + number % 10);
}

constexpr SpunPart kDay{0, 2, 1, 31}, kMonth{3, 2, 1, 12}, kYear{6, 4, 1, kLastYear};
constexpr SpunPart kHour{0, 2, 0, 23}, kMinute{3, 2, 0, 59};

const SpunPart& date_part(size_t caret) {
  if (caret < kMonth.first) return kDay;
  return caret < kYear.first ? kMonth : kYear;
}

// Past the end of a part it begins anew; the parts beside it stay.
int turned(int number, int step, const SpunPart& part) {
  const int count = part.highest - part.lowest + 1;
  const int from = std::clamp(number, part.lowest, part.highest) - part.lowest;
  return part.lowest + ((from + step) % count + count) % count;
}

EntryState spun_date(const EntryState& state, int step, const CalendarDate& today,
                     const EntrySettings& settings) {
  EntryState spun = state;
  const SpunPart& part = date_part(state.caret);
  if (state.text.find(L' ') != std::wstring::npos) {
    if (!mask_entry::is_empty(state.text, settings)) return state;
    write_at(spun.text, kDay, today.day);
    write_at(spun.text, kMonth, today.month);
    write_at(spun.text, kYear, today.year);
  } else {
    write_at(spun.text, part, turned(number_at(state.text, part), step, part));
    // From the 31st a shorter month shows its last day.
    SpunPart day = kDay;
    day.highest = days_in_month(number_at(spun.text, kYear), number_at(spun.text, kMonth));
    if (day.highest == 0) return state;
    if (&part == &kDay) {
      write_at(spun.text, day, turned(number_at(state.text, day), step, day));
    } else {
      write_at(spun.text, day, std::min(number_at(spun.text, day), day.highest));
    }
  }
  spun.anchor = part.first;
  spun.caret = part.first + part.length;
  return spun;
}

EntryState spun_time(const EntryState& state, int step) {
  EntryState spun = state;
  const SpunPart& part = state.caret < kMinute.first ? kHour : kMinute;
  for (const SpunPart& other : {kHour, kMinute})
    if (other.first != part.first) write_at(spun.text, other, number_at(state.text, other));
  write_at(spun.text, part, turned(number_at(state.text, part), step, part));
  spun.anchor = part.first;
  spun.caret = part.first + part.length;
  return spun;
}

EntryState spun_number(const EntryState& state, int step, const EntrySettings& settings,
                       const LeavingRules& rules) {
  const Amount now = number_entry::value(state.text, settings);
  Amount next = plus(now, step);
  if (rules.least && next < *rules.least) next = *rules.least;
  if (rules.most && next > *rules.most) next = *rules.most;
  if (next.negative && !settings.allow_negative && !next.is_zero()) next = Amount{};
  const EntryState shown = number_entry::showing(next, settings);
  if (!number_entry::is_well_formed(shown.text, settings)) return state;
  const size_t behind = state.text.size() - std::min(state.text.size(), state.caret);
  const size_t caret = shown.text.size() - std::min(shown.text.size(), behind);
  return number_entry::settled(state_at(shown.text, caret), settings);
}

}  // namespace

std::optional<Amount> entry_amount(std::wstring_view text, const EntrySettings& settings) {
  if (trim_blanks(text).empty()) return {};
  if (is_number(settings)) return number_entry::value(text, settings);
  return read_amount(text, settings.marks);
}

std::wstring entry_left(std::wstring_view text, const EntrySettings& settings,
                        const LeavingRules& rules) {
  std::wstring left = preset_finished(rules.preset, text);
  if (is_number(settings)) left = number_entry::finished(left, settings);
  if (entry_is_empty(left, settings)) return left;
  if (rules.format_date)
    if (std::optional<std::wstring> date = as_date(left, rules.date_format)) return *date;
  if (rules.format_currency && settings.kind != EntryKind::kMask)
    if (const std::optional<Amount> amount = entry_amount(left, settings))
      return as_currency(*amount, settings);
  return left;
}

std::wstring_view entry_fault(std::wstring_view text, const EntrySettings& settings,
                              const LeavingRules& rules) {
  if (entry_is_empty(text, settings)) return rules.required ? L"Preenchimento obrigatório." : L"";
  if (const std::wstring_view fault = preset_fault(rules.preset, text); !fault.empty())
    return fault;
  if (settings.kind == EntryKind::kMask && !mask_entry::is_complete(text, settings))
    return L"Preenchimento incompleto.";
  if (rules.format_date && !as_date(text, rules.date_format)) return L"Data inválida.";
  if (!rules.least && !rules.most) return L"";
  const std::optional<Amount> amount = entry_amount(text, settings);
  if (!amount) return L"Número inválido.";
  if (rules.least && *amount < *rules.least) return L"Valor abaixo do mínimo.";
  return rules.most && *amount > *rules.most ? L"Valor acima do máximo." : L"";
}

EntryState entry_spun(const EntryState& state, int step, const CalendarDate& today,
                      const EntrySettings& settings, const LeavingRules& rules) {
  if (is_number(settings)) return spun_number(state, step, settings, rules);
  if (settings.kind != EntryKind::kMask || !mask_entry::is_well_formed(state.text, settings))
    return state;
  if (rules.preset == MaskPreset::kDate) return spun_date(state, step, today, settings);
  return rules.preset == MaskPreset::kTime ? spun_time(state, step) : state;
}

}  // namespace kestrelon
