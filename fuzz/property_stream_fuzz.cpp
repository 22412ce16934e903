#include <cstddef>
#include <cstdint>

#include "base/property_stream.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // What is read must write back to a stream that reads the same.
  const auto records = kestrelon::read_property_records({data, size});
  const auto again = kestrelon::write_property_stream(records);
  const std::span<const uint8_t> payload =
      std::span(again).subspan(kestrelon::kPropertyHeaderBytes);
  if (kestrelon::read_property_records(payload) != records) __builtin_trap();
  return 0;
}
