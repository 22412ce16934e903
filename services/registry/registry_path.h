// Registry paths: a root, written long or short, and a sub path behind a backslash. Registry text
// is UTF-8 within the program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrelon {

/// The numbers of RegistryMainKey; kNone for a root that is not among the seven.
enum class RegistryRoot : uint32_t {
  kNone = 0,
  kClassesRoot = 0x80000000u,
  kCurrentUser = 0x80000001u,
  kLocalMachine = 0x80000002u,
  kUsers = 0x80000003u,
  kPerformanceData = 0x80000004u,
  kCurrentConfig = 0x80000005u,
  kDynData = 0x80000006u
};

struct RegistryPath {
  RegistryRoot root = RegistryRoot::kNone;
  std::string sub_path;
};

/// Splits a path. Only the first four characters of a short root tell, in either case.
RegistryPath split_registry_path(std::string_view path);

/// The path with a short root at its start written long; other paths come back as they are.
std::string long_registry_path(std::string_view path);

}  // namespace kestrelon
