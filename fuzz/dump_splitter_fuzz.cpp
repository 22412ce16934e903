// Lines and statements of dump files: no byte of a statement is lost or seen twice.
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "services/mysql/dump_lines.h"
#include "services/mysql/statement_gatherer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kestrelon;
  std::istringstream bytes(std::string(reinterpret_cast<const char*>(data), size));
  LineReader reader(bytes);
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
