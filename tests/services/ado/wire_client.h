// A client of the MariaDB wire protocol, from its public documentation: enough to run statements
// and to read their results as text.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon::testing {

struct WireError : std::runtime_error {
  WireError(int code, const std::string& text) : std::runtime_error(text), number(code) {}
  int number;
};

struct WireColumn {
  std::string name;
  int type = 0;
  unsigned charset = 0;
  unsigned long length = 0;
};

struct WireResult {
  std::vector<WireColumn> columns;  // none for a statement without rows
  std::vector<std::vector<std::optional<std::string>>> rows;
};

/// One connection as root, without a password, in utf8mb4.
class WireClient {
 public:
  WireClient(unsigned port, const std::string& database);
  ~WireClient();
  WireClient(const WireClient&) = delete;
  WireClient& operator=(const WireClient&) = delete;

  /// Runs one statement and holds its rows. Throws WireError.
  WireResult query(std::string_view sql);

 private:
  std::string read_packet();
  void read_exactly(char* out, size_t size);
  void write_packet(std::string_view payload);
  void log_in(const std::string& database);

  uintptr_t socket_;
  uint8_t sequence_ = 0;
  std::string buffer_;
  size_t at_ = 0;
};

}  // namespace kestrelon::testing
