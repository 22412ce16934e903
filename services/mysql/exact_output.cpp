#include "services/mysql/exact_output.h"

#include <algorithm>

#include "services/mysql/sql_text.h"
#include "services/mysql/utf8_text.h"

namespace kestrelon {
namespace {

// A delimiter that the text does not hold.
std::string delimiter_for(std::string_view text) {
  std::string delimiter = ";;";
  while (text.find(delimiter) != std::string_view::npos) delimiter.push_back(';');
  return delimiter;
}

}  // namespace

void ExactOutput::write(std::string_view bytes) {
  constexpr size_t kMostPending = 1 << 20;
  lines_ += std::count(bytes.begin(), bytes.end(), '\n');
  if (pending_.size() + bytes.size() > kMostPending) flush();
  if (bytes.size() > kMostPending)
    target_.write(bytes);
  else
    pending_ += bytes;
}

void ExactOutput::flush() {
  target_.write(pending_);
  pending_.clear();
}

void ExactOutput::statement(std::wstring_view sql) {
  statement_bytes(to_utf8(sql));
}

void ExactOutput::statement_bytes(std::string_view sql) {
  write(sql);
  write(";\n");
  ++statements_;
}

// The line end before the delimiter ends a comment that the text may end in.
void ExactOutput::delimited(std::wstring_view sql) {
  const std::string text = to_utf8(sql);
  const std::string delimiter = delimiter_for(text);
  write("DELIMITER " + delimiter + "\n");
  write(text);
  write("\n" + delimiter + "\nDELIMITER ;\n");
  ++statements_;
}

void ExactOutput::comment(std::wstring_view text) {
  line("--  " + to_utf8(comment_text(text)));
}

void ExactOutput::line(std::string_view text) {
  write(text);
  write("\n");
}

void ExactOutput::complete() {
  flush();
  target_.complete();
}

}  // namespace kestrelon
