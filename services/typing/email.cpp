#include "services/typing/email.h"

#include <algorithm>

#include "base/text.h"
#include "services/typing/letters.h"

namespace kestrelon {
namespace {

// Looked up by plain search, so "OM" and "C" are endings too.
constexpr std::wstring_view kEndings =
    L"AERO BIZ COM COOP EDU GOV INFO INT MIL MUSEUM NAME NET ORG PRO AC AD AE AF AG AI AL AM "
    L"AN AO AQ AR AS AT AU AW AZ BA BB BD BE BF BG BH BI BJ BM BN BO BR BS BT BV BW BY BZ CA "
    L"CC CD CF CG CH CI CK CL CM CN CO CR CU CV CX CY CZ DE DJ DK DM DO DZ EC EE EG EH ER ES "
    L"ET FI FJ FK FM FO FR GA GD GE GF GG GH GI GL GM GN GP GQ GR GS GT GU GW GY HK HM HN HR "
    L"HT HU ID IE IL IM IN IO IQ IR IS IT JE JM JO JP KE KG KH KI KM KN KP KR KW KY KZ LA LB "
    L"LC LI LK LR LS LT LU LV LY MA MC MD MG MH MK ML MM MN MO MP MQ MR MS MT MU MV MW MX MY "
    L"MZ NA NC NE NF NG NI NL NO NP NR NU NZ OM PA PE PF PG PH PK PL PM PN PR PS PT PW PY QA "
    L"RE RO RU RW SA SB SC SD SE SG SH SI SJ SK SL SM SN SO SR ST SV SY SZ TC TD TF TG TH TJ "
    L"TK TM TN TO TP TR TT TV TW TZ UA UG UK UM US UY UZ VA VC VE VG VI VN VU WF WS YE YT YU "
    L"ZA ZM ZW";

bool is_ascii_letter(wchar_t c) {
  return code_unit(c) < 0x80 && is_letter(c);
}

// One "@" and a point, each inside and not beside each other, no two points in a row.
bool is_parted(std::wstring_view text) {
  constexpr auto kNone = std::wstring_view::npos;
  if (text.empty() || std::count(text.begin(), text.end(), L'@') != 1) return false;
  if (text.find(L'.') == kNone || text.find(L"..") != kNone) return false;
  for (const wchar_t edge : {text.front(), text.back()})
    if (edge == L'@' || edge == L'.') return false;
  return text.find(L"@.") == kNone && text.find(L".@") == kNone;
}

bool is_address_character(wchar_t c) {
  return is_ascii_letter(c) || is_digit(c) || c == L'@' || c == L'.' || c == L'-' || c == L'_';
}

}  // namespace

bool is_valid_email(std::wstring_view text) {
  text = trim_blanks(text);
  if (!is_parted(text) || !std::all_of(text.begin(), text.end(), is_address_character))
    return false;
  std::wstring ending(text.substr(text.rfind(L'.') + 1));
  for (wchar_t& c : ending) c = to_capital(c);
  return kEndings.find(ending) != std::wstring_view::npos;
}

bool is_valid_email_ex(std::wstring_view text) {
  text = trim_blanks(text);
  if (!is_parted(text)) return false;
  const size_t at = text.find(L'@');
  const std::wstring_view domain = text.substr(at + 1);
  const size_t point = domain.rfind(L'.');
  if (point == std::wstring_view::npos || domain.size() - point <= 2) return false;
  const std::wstring_view name = text.substr(0, at), ending = domain.substr(point + 1);
  const auto in_name = [](wchar_t c) { return is_address_character(c) || c == L'+'; };
  return std::all_of(name.begin(), name.end(), in_name) &&
         std::all_of(domain.begin(), domain.end(), is_address_character) &&
         std::all_of(ending.begin(), ending.end(), is_ascii_letter);
}

}  // namespace kestrelon
