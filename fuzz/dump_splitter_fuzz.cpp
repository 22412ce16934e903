// Lines and statements of dump files: no byte of a statement is lost or seen twice.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "services/mysql/dump_lines.h"
#include "services/mysql/statement_gatherer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kestrelon;
  std::span<const uint8_t> left(data, size);
  LineReader reader([&left](std::span<uint8_t> room) {
    const size_t length = std::min(room.size(), left.size());
    std::copy_n(left.begin(), length, room.begin());
    left = left.subspan(length);
    return std::optional(length);
  });
  StatementGatherer gatherer;
  size_t gathered = 0;
  size_t joints = 0;
  size_t read = 0;
  for (std::string line; reader.next(line);) {
    if (line.find_first_of("\r\n") != std::string::npos) abort();
    read += line.size();
    if (read > size) abort();
    if (gatherer.is_gathering() || starts_command(line)) gathered += line.size(), ++joints;
    const auto statement = gatherer.feed(line);
    if (statement.has_value() && gatherer.is_gathering()) abort();
    if (!statement) continue;
    if (!statement->ends_with(';') || !starts_command(*statement)) abort();
    if (statement->size() < gathered || statement->size() > gathered + 2 * joints) abort();
    gathered = joints = 0;
  }
  return 0;
}
