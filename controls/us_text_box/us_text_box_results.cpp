// What the text tells: counts, numbers, words; and text files.
#include "base/decimal.h"
#include "base/file_bytes.h"
#include "base/text.h"
#include "controls/us_text_box/us_text_box.h"
#include "services/kn_number_words.h"
#include "services/kn_text.h"
#include "services/typing/email.h"
#include "services/typing/text_counts.h"
#include "services/typing/text_file.h"

namespace kestrelon {
namespace {

constexpr uint64_t kLargestFile = 256u << 20;

// In place of the file only once the new one is whole.
bool replace_file(const std::wstring& name, std::span<const uint8_t> bytes) {
  const std::wstring fresh = name + L".tmp" + decimal_text(GetCurrentProcessId());
  if (!write_file(fresh, bytes)) return false;
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED;
  if (MoveFileExW(fresh.c_str(), name.c_str(), kHow)) return true;
  delete_file(fresh);
  return false;
}

// Each text as a Variant, since scripts index no other kind of array.
Variant array_of(const std::vector<std::wstring_view>& pieces) {
  Variant out;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(pieces.size()));
  if (array == nullptr) throw ComError(E_OUTOFMEMORY);
  V_VT(&out) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&out) = array;
  LONG index = 0;
  for (const std::wstring_view piece : pieces) {
    Variant item(piece);
    SafeArrayPutElement(array, &index, &item);
    ++index;
  }
  return out;
}

}  // namespace

bool USTextBox::is_valid_email() {
  return kestrelon::is_valid_email(box_.text());
}

bool USTextBox::is_valid_email_ex() {
  return kestrelon::is_valid_email_ex(box_.text());
}

double USTextBox::text_cdbl() {
  if (kept_amount_ && kept_text_ == box_.text()) return to_double(*kept_amount_);
  const std::optional<Amount> amount = entry_amount(box_.text(), box_.rules());
  return amount ? to_double(*amount) : 0;
}

std::wstring USTextBox::text_extenso() {
  const CurrencyWords words{CoinIntSingularText.get(), CoinIntPluralText.get(),
                            CoinDecSingularText.get(), CoinDecPluralText.get()};
  return number_to_words(text_cdbl(), words);
}

long USTextBox::text_len_ex() {
  return static_cast<long>(trim_blanks(box_.text()).size());
}

Variant USTextBox::text_split(const std::wstring& delimiter) {
  return array_of(split(box_.text(), delimiter));
}

std::wstring USTextBox::text_field(long column) {
  return std::wstring(tab_field(box_.text(), static_cast<int>(column)));
}

std::wstring USTextBox::return_numbers_only() {
  return keep_digits(box_.text());
}

long USTextBox::numbers_of() {
  return static_cast<long>(return_numbers_only().size());
}

long USTextBox::lines_of() {
  return count_lines(box_.text());
}

void USTextBox::save_text_file(const std::wstring& name) {
  replace_file(name, encode_text_file(box_.text()));
}

void USTextBox::append_text_file(const std::wstring& name) {
  const std::optional<uint64_t> size = file_size(name);
  if (!size) return save_text_file(name);
  if (const auto old = read_file(name, kLargestFile))
    replace_file(name, append_to_text_file(*old, box_.text()));
}

void USTextBox::load_text_file(const std::wstring& name) {
  if (const auto bytes = read_file(name, kLargestFile)) set_text(decode_text_file(*bytes));
}

}  // namespace kestrelon
