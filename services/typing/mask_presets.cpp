#include "services/typing/mask_presets.h"

#include <array>

#include "base/text.h"
#include "services/kn_contacts.h"
#include "services/kn_date.h"
#include "services/kn_date_format.h"
#include "services/kn_documents.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kDateFormat = L"dd/mm/yyyy";
constexpr int kDateFormatNumber = 1;

// A shape told by one character a cell: "0" to "9" a digit up to that one, "A" a capital, "X" a
// capital or digit, anything else fixed.
Mask shape_of(std::wstring_view picture, bool pads = false) {
  std::vector<MaskCell> cells;
  for (const wchar_t c : picture) {
    MaskCell cell;
    cell.fixed = c;
    cell.capital = c == L'A' || c == L'X';
    if (c == L'A') cell.kind = PlaceKind::kLetter;
    if (c == L'X') cell.kind = PlaceKind::kLetterOrDigit;
    if (is_digit(c)) {
      cell.kind = PlaceKind::kDigit;
      cell.highest = c;
      cell.pads = pads && c != L'9';
    }
    cells.push_back(cell);
  }
  return Mask(std::move(cells));
}

MaskSet set_of(std::initializer_list<std::wstring_view> pictures, bool pads = false) {
  MaskSet set;
  for (const std::wstring_view picture : pictures) set.shapes.push_back(shape_of(picture, pads));
  set.pads_groups = pads;
  return set;
}

MaskSet made(MaskPreset preset) {
  MaskSet set;
  switch (preset) {
    case MaskPreset::kCpf:
      return set_of({L"999.999.999-99"});
    case MaskPreset::kCnpj:
      return set_of({L"XX.XXX.XXX/XXXX-99"});
    case MaskPreset::kCpfOrCnpj:
      return set_of({L"999.999.999-99", L"XX.XXX.XXX/XXXX-99"});
    case MaskPreset::kPostalCode:
      return set_of({L"99999-999"});
    case MaskPreset::kPlate:
      return set_of({L"AAA-9999", L"AAA9A99"});
    case MaskPreset::kPhone:
      // Mobile numbers begin with 9; eleven digits of any kind need the long shape too.
      set = set_of({L"(99) 8999-9999", L"(99) 99999-9999"});
      set.drops_country = true;
      return set;
    case MaskPreset::kDate:
      set = set_of({L"39/19/9999"}, true);
      set.alike = L"/-.";
      set.is_date = true;
      return set;
    case MaskPreset::kTime:
      set = set_of({L"29:59"}, true);
      set.alike = L":.,hH";
      return set;
    default:
      return set;
  }
}

// "26" becomes "2026", "99" becomes 1999, as short years do everywhere in the library.
std::wstring finished_date(std::wstring_view text) {
  const std::wstring_view bare = text.substr(0, text.find_last_not_of(L' ') + 1);
  if (bare.size() != text.size() && bare.size() != std::wstring_view(L"dd/mm/yy").size())
    return std::wstring(text);
  const std::wstring whole = format_date(bare, kDateFormat);
  return is_valid_date(whole, kDateFormatNumber) ? whole : std::wstring(text);
}

std::wstring finished_random_key(std::wstring_view text) {
  constexpr size_t kHexDigits = 32;
  std::wstring key;
  for (const wchar_t c : text) {
    if (c == L'-') continue;
    if (hex_digit_value(c) < 0 || key.size() > kHexDigits + 4) return {};
    if (key.size() == 8 || key.size() == 13 || key.size() == 18 || key.size() == 23) key += L'-';
    key += fold_case(c);
  }
  return key.size() == kHexDigits + 4 ? key : std::wstring();
}

std::wstring finished_pix_key(std::wstring_view text) {
  const std::wstring_view key = trim_blanks(text);
  if (key.find(L'@') != std::wstring_view::npos) return fold_case(key);
  if (std::wstring random = finished_random_key(key); !random.empty()) return random;
  if (is_valid_cpf(key) || is_valid_cnpj(key)) return format_cpf_or_cnpj(key);
  if (is_valid_phone(key)) {
    std::wstring digits;
    for (const wchar_t c : key)
      if (is_digit(c)) digits += c;
    constexpr size_t kWithArea = 11;
    return L"+" + (digits.size() <= kWithArea ? L"55" + digits : digits);
  }
  return std::wstring(key);
}

std::wstring_view date_fault(std::wstring_view text) {
  return is_valid_date(text, kDateFormatNumber) ? L"" : L"Data inválida.";
}

}  // namespace

std::shared_ptr<const MaskSet> preset_masks(MaskPreset preset) {
  constexpr size_t kCount = 10;
  static const auto sets = [] {
    std::array<std::shared_ptr<const MaskSet>, kCount> all;
    for (size_t i = 0; i < kCount; ++i) {
      MaskSet set = made(static_cast<MaskPreset>(i));
      if (!set.shapes.empty()) all[i] = std::make_shared<const MaskSet>(std::move(set));
    }
    return all;
  }();
  const auto number = static_cast<size_t>(preset);
  return number < kCount ? sets[number] : nullptr;
}

std::wstring_view preset_fault(MaskPreset preset, std::wstring_view text) {
  switch (preset) {
    case MaskPreset::kCpf:
      return is_valid_cpf(text) ? L"" : L"CPF inválido.";
    case MaskPreset::kCnpj:
      return is_valid_cnpj(text) ? L"" : L"CNPJ inválido.";
    case MaskPreset::kCpfOrCnpj:
      return is_valid_cpf(text) || is_valid_cnpj(text) ? L"" : L"CPF ou CNPJ inválido.";
    case MaskPreset::kPostalCode:
      return is_valid_postal_code(text) ? L"" : L"CEP inválido.";
    case MaskPreset::kPhone:
      return is_valid_phone(text) ? L"" : L"Telefone inválido.";
    case MaskPreset::kPlate:
      return text.find(L' ') == std::wstring_view::npos ? L"" : L"Placa incompleta.";
    case MaskPreset::kDate:
      return date_fault(text);
    case MaskPreset::kTime:
      return is_valid_time(text) ? L"" : L"Hora inválida.";
    case MaskPreset::kPixKey:
      return is_valid_pix_key(text) ? L"" : L"Chave PIX inválida.";
    default:
      return L"";
  }
}

std::wstring preset_finished(MaskPreset preset, std::wstring_view text) {
  if (preset == MaskPreset::kDate) return finished_date(text);
  if (preset == MaskPreset::kPixKey) return finished_pix_key(text);
  return std::wstring(text);
}

}  // namespace kestrelon
