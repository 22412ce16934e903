// Registry files, and what comes of them exported in the escaped form and read again.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "services/registry/regedit4.h"
#include "tests/services/registry_fake.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kestrelon;
  testing::FakeRegistry store;
  RegistryService registry(store);
  if (!import_registry(registry, {reinterpret_cast<const char*>(data), size})) return 0;

  RegExportOptions options;
  options.escaped = true;
  std::string out;
  const auto keep = [&out](std::string_view piece) { return out += piece, true; };
  if (!export_registry(registry, "HKCU\\a", options, keep)) abort();
  testing::FakeRegistry copy;
  RegistryService again(copy);
  if (!import_registry(again, out)) abort();
  return 0;
}
