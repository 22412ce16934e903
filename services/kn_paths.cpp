#include "services/kn_paths.h"

#include <algorithm>

#include "base/text.h"

namespace kestrelon {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";
constexpr size_t npos = std::wstring_view::npos;

// Length of the part that no program can make: "C:", "C:\", "\\server\share" and "\\?\" forms of
// these.
size_t root_length(std::wstring_view path) {
  size_t from = 0;
  if (path.starts_with(L"\\\\?\\UNC\\"))
    from = 8;
  else if (path.starts_with(L"\\\\?\\"))
    from = 4;
  else if (path.starts_with(L"\\\\"))
    from = 2;
  if (from == 2 || from == 8) {
    const size_t share = path.find_first_of(kSeparators, from);
    return share == npos ? path.size()
                         : std::min(path.find_first_of(kSeparators, share + 1), path.size());
  }
  if (path.size() > from + 1 && path[from + 1] == L':') from += 2;
  if (path.size() > from && kSeparators.find(path[from]) != npos) ++from;
  return from;
}

}  // namespace

std::wstring file_extension(std::wstring_view path) {
  const size_t point = path.rfind(L'.');
  if (point == npos) return {};
  const size_t separator = path.rfind(L'\\');
  if (separator != npos && separator > point) return {};
  return std::wstring(path.substr(point + 1));
}

std::wstring folder_part(std::wstring_view path) {
  const size_t separator = path.rfind(L'\\');
  return separator == npos ? std::wstring() : std::wstring(path.substr(0, separator + 1));
}

bool is_valid_file_name(std::wstring_view name) {
  return !trim_blanks(name).empty() && name.find_first_of(L"\\/:*?\"<>|\r\n") == npos;
}

std::wstring without_trailing_separator(std::wstring_view path) {
  const size_t root = root_length(path);
  while (path.size() > root && kSeparators.find(path.back()) != npos) path.remove_suffix(1);
  return std::wstring(path);
}

std::vector<std::wstring> folder_levels(std::wstring_view path) {
  std::vector<std::wstring> levels;
  for (size_t end = root_length(path); end < path.size();) {
    const size_t begin = path.find_first_not_of(kSeparators, end);
    if (begin == npos) break;
    end = std::min(path.find_first_of(kSeparators, begin), path.size());
    levels.emplace_back(path.substr(0, end));
  }
  return levels;
}

std::wstring browsable_url(std::wstring_view text) {
  text = trim_blanks(text);
  if (equals_ignoring_case(text.substr(0, 4), L"www.")) return L"http://" + std::wstring(text);
  const std::wstring folded = fold_case(text);
  const size_t colon = folded.find(L':');
  const bool has_scheme =
      colon != npos && colon >= 2 && colon + 1 < text.size() && folded[0] >= L'a' &&
      folded[0] <= L'z' &&
      folded.find_first_not_of(L"abcdefghijklmnopqrstuvwxyz0123456789+-.") == colon;
  return has_scheme ? std::wstring(text) : std::wstring();
}

}  // namespace kestrelon
