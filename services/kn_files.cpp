#include "services/kn_files.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "services/kn_paths.h"

namespace kestrelon {
namespace {

bool has_wildcards(std::wstring_view path) {
  return path.find_first_of(L"*?") != std::wstring_view::npos;
}

// Names that the system takes for devices in every folder, whatever stands behind a point.
bool is_device(std::wstring_view path) {
  const size_t slash = path.find_last_of(L"\\/:");
  if (slash != std::wstring_view::npos) path.remove_prefix(slash + 1);
  const std::wstring name = fold_case(trim_blanks(path.substr(0, path.find(L'.'))));
  for (const wchar_t* device : {L"con", L"prn", L"aux", L"nul"})
    if (name == device) return true;
  return name.size() == 4 && (name.starts_with(L"com") || name.starts_with(L"lpt")) &&
         name[3] >= L'1' && name[3] <= L'9';
}

bool any_empty(std::initializer_list<std::wstring_view> names) {
  return std::any_of(names.begin(), names.end(),
                     [](auto name) { return trim_blanks(name).empty(); });
}

bool is_ini_name(std::wstring_view file) {
  return !trim_blanks(file).empty() && file.size() <= kLongestIniName;
}

// Whether the file can hold all of the texts, made so if it is a new one.
bool takes_texts(KnPlatform& platform, const std::wstring& file,
                 std::initializer_list<const std::wstring*> texts) {
  if (std::all_of(texts.begin(), texts.end(),
                  [&](const std::wstring* text) { return platform.fits_page(*text); }))
    return true;
  const KnPlatform::IniForm form = platform.ini_form(file);
  return form == KnPlatform::IniForm::kWide ||
         (form == KnPlatform::IniForm::kNew && platform.begin_wide_ini(file));
}

}  // namespace

bool file_exists(KnPlatform& platform, std::wstring_view path, bool folder_only) {
  if (folder_only) return folder_exists(platform, path);
  path = trim_blanks(path);
  return !path.empty() && !is_device(path) &&
         platform.find(std::wstring(path)) == KnPlatform::Kind::kFile;
}

bool folder_exists(KnPlatform& platform, std::wstring_view path) {
  path = trim_blanks(path);
  if (path.empty() || has_wildcards(path)) return false;
  return platform.find(without_trailing_separator(path)) == KnPlatform::Kind::kDirectory;
}

bool drive_exists(KnPlatform& platform, std::wstring_view path) {
  path = trim_blanks(path);
  if (path.empty() || (path.size() > 1 && path[1] != L':')) return false;
  const wchar_t letter = fold_case(path[0]);
  return letter >= L'a' && letter <= L'z' &&
         platform.drive_exists(static_cast<wchar_t>(L'A' + (letter - L'a')));
}

bool create_folders(KnPlatform& platform, std::wstring_view path) {
  path = trim_blanks(path);
  if (path.empty() || has_wildcards(path)) return false;
  for (const std::wstring& level : folder_levels(path))
    if (platform.find(level) == KnPlatform::Kind::kMissing) platform.create_directory(level);
  return folder_exists(platform, path);
}

bool delete_file(KnPlatform& platform, std::wstring_view path) {
  path = trim_blanks(path);
  if (path.empty() || has_wildcards(path)) return false;
  return platform.delete_file(std::wstring(path));
}

bool files_are_equal(KnPlatform& platform, std::wstring_view first, std::wstring_view second) {
  const auto a = platform.open_file(std::wstring(trim_blanks(first)));
  const auto b = platform.open_file(std::wstring(trim_blanks(second)));
  if (!a || !b || a->size() != b->size()) return false;
  std::vector<uint8_t> block_a(kFileBlock), block_b(kFileBlock);
  while (true) {
    const auto read_a = a->read(block_a);
    const auto read_b = b->read(block_b);
    if (!read_a || read_a != read_b) return false;
    if (*read_a == 0) return true;
    if (!std::equal(block_a.begin(), block_a.begin() + static_cast<std::ptrdiff_t>(*read_a),
                    block_b.begin()))
      return false;
  }
}

std::wstring read_ini(KnPlatform& platform, std::wstring_view file, std::wstring_view section,
                      std::wstring_view key) {
  constexpr size_t kLongest = size_t{1} << 20;  // a line of a hostile file ends here
  if (!is_ini_name(file) || any_empty({section, key})) return {};
  const std::wstring file_text(file), section_text(section), key_text(key);
  std::wstring value(256, L'\0');
  while (true) {
    const size_t length = platform.read_ini(file_text, section_text, key_text, value);
    if (length + 1 < value.size() || value.size() >= kLongest) {
      value.resize(std::min(length, value.size()));
      return value;
    }
    value.resize(value.size() * 4);
  }
}

bool write_ini(KnPlatform& platform, std::wstring_view file, std::wstring_view section,
               std::wstring_view key, std::wstring_view value) {
  if (!is_ini_name(file) || any_empty({section, key})) return false;
  const std::wstring file_text(file), section_text(section), key_text(key), value_text(value);
  return takes_texts(platform, file_text, {&section_text, &key_text, &value_text}) &&
         platform.write_ini(file_text, section_text, key_text, value_text);
}

}  // namespace kestrelon
