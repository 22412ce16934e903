// Registry files, and what comes of them exported in the escaped form and read again.
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "services/registry/regedit4.h"
#include "tests/services/registry_fake.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kestrelon;
  testing::FakeRegistry store;
  RegistryService registry(store);
  if (!import_registry(registry, {reinterpret_cast<const char*>(data), size})) return 0;

  RegExportOptions options;
  options.escaped = true;
  std::ostringstream out;
  if (!export_registry(registry, "HKCU\\a", options, out)) abort();
  testing::FakeRegistry copy;
  RegistryService again(copy);
  if (!import_registry(again, out.str())) abort();
  return 0;
}
