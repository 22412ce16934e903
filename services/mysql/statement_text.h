// Statements of a file as the text that goes to the connection.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// A file is bytes and a connection takes characters. Texts of UTF-8 pass as they are; bytes that
/// are none stand in quotes and become digits; a statement in another character set, which the file
/// tells by SET NAMES or SET character_set_client, is handed over as digits for the server to read.
class StatementText {
 public:
  /// `executes_immediate` tells a server that runs a statement out of a text.
  explicit StatementText(bool executes_immediate) : executes_immediate_(executes_immediate) {}

  /// Replaces `sql`. Throws DbError when the server cannot be given the statement unchanged.
  void read(std::string_view statement, std::wstring& sql);

 private:
  void follow_charset(std::string_view statement);

  bool executes_immediate_;
  std::string named_ = "utf8mb4";   // of the last SET NAMES
  std::string client_ = "utf8mb4";  // of the session now
};

/// True for well-formed UTF-8.
bool is_utf8(std::string_view bytes);

}  // namespace kestrelon
