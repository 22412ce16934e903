// Statements of an SQL file, beside a splitter that holds the whole text and knows one rule at a
// time: both must hand over the same ones, however the bytes come.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "services/mysql/sql_splitter.h"
#include "services/mysql/statement_text.h"
#include "tests/services/plain_splitter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kestrelon;
  const std::string text(reinterpret_cast<const char*>(data), size);
  // Modes change what a quote is; the plain splitter knows the usual ones.
  for (size_t i = 0; i + 3 <= text.size(); ++i)
    if ((text[i] == 's' || text[i] == 'S') && (text[i + 1] == 'q' || text[i + 1] == 'Q')) return 0;
  const std::vector<std::string> expected = testing::PlainSplitter(text).all();
  SqlSplitter splitter(testing::source_of(text));
  StatementText reader(true);
  size_t count = 0;
  for (std::string_view statement; splitter.next(statement); ++count) {
    if (count >= expected.size() || statement != expected[count]) abort();
    std::wstring sql;
    try {
      reader.read(statement, sql);
    } catch (const std::exception&) {
      // Bytes outside quotes that are no text are refused.
    }
  }
  if (count != expected.size()) abort();
  return 0;
}
