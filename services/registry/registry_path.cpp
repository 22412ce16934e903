#include "services/registry/registry_path.h"

#include <algorithm>

namespace kestrelon {
namespace {

struct RootName {
  std::string_view short_name;
  std::string_view long_name;
  RegistryRoot root;
};

constexpr RootName kRoots[] = {{"HKCR", "HKEY_CLASSES_ROOT", RegistryRoot::kClassesRoot},
                               {"HKCU", "HKEY_CURRENT_USER", RegistryRoot::kCurrentUser},
                               {"HKLM", "HKEY_LOCAL_MACHINE", RegistryRoot::kLocalMachine},
                               {"HKUS", "HKEY_USERS", RegistryRoot::kUsers},
                               {"HKPD", "HKEY_PERFORMANCE_DATA", RegistryRoot::kPerformanceData},
                               {"HKCC", "HKEY_CURRENT_CONFIG", RegistryRoot::kCurrentConfig},
                               {"HKDD", "HKEY_DYN_DATA", RegistryRoot::kDynData}};

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

bool is_name(std::string_view text, std::string_view name) {
  return std::equal(text.begin(), text.end(), name.begin(), name.end(),
                    [](char a, char b) { return upper(a) == b; });
}

}  // namespace

RegistryPath split_registry_path(std::string_view path) {
  constexpr size_t kShortRoot = 4;
  const size_t slash = path.find('\\');
  const std::string_view head = path.substr(0, slash);
  RegistryPath split;
  if (slash != std::string_view::npos) split.sub_path = path.substr(slash + 1);
  const std::string_view tip = slash == std::string_view::npos ? head : head.substr(0, kShortRoot);
  for (const RootName& name : kRoots)
    if (is_name(head, name.long_name) || is_name(tip, name.short_name)) split.root = name.root;
  return split;
}

std::string long_registry_path(std::string_view path) {
  const size_t slash = std::min(path.find('\\'), path.size());
  for (const RootName& name : kRoots)
    if (is_name(path.substr(0, slash), name.short_name))
      return std::string(name.long_name).append(path.substr(slash));
  return std::string(path);
}

}  // namespace kestrelon
