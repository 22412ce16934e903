#include "services/mysql/dump_lines.h"

#include "base/text.h"
#include "services/mysql/db_connection.h"

namespace kestrelon {
namespace {

// The numbers and words by which the hosts' language tells file errors.
constexpr long kFileNotFound = 53;
constexpr long kDeviceError = 57;
constexpr long kDiskFull = 61;
constexpr long kPathAccess = 75;

void check(bool written) {
  if (!written) throw DbError(kDiskFull, L"Disco cheio ou erro de gravação no arquivo.");
}

}  // namespace

LineWriter::LineWriter(const std::wstring& path) : file_(SystemFile::create(path)) {
  if (!file_) throw DbError(kPathAccess, L"Erro de acesso ao caminho/arquivo: " + path);
}

void LineWriter::line(std::wstring_view text) {
  bytes(to_ansi(text));
}

void LineWriter::bytes(std::string_view text) {
  line_.assign(text);
  line_ += "\r\n";
  check(file_.write(line_));
  ++count_;
}

void LineWriter::close() {
  check(file_.close());
}

bool LineReader::fill() {
  block_.resize(kBlock);
  const auto length = source_({reinterpret_cast<uint8_t*>(block_.data()), kBlock});
  if (!length) throw DbError(kDeviceError, L"Erro de leitura no arquivo.");
  block_.resize(*length);
  at_ = 0;
  return !block_.empty();
}

bool LineReader::next(std::string& line) {
  line.clear();
  bool has_any = false;
  while (at_ < block_.size() || fill()) {
    if (after_cr_) {
      after_cr_ = false;
      if (block_[at_] == '\n') {
        ++at_;
        continue;
      }
    }
    const size_t end = block_.find_first_of("\r\n", at_);
    line.append(block_, at_, end == std::string::npos ? end : end - at_);
    has_any = true;
    if (end == std::string::npos) {
      at_ = block_.size();
      continue;
    }
    after_cr_ = block_[end] == '\r';
    at_ = end + 1;
    return true;
  }
  return has_any;
}

SystemFile open_lines(const std::wstring& path, int64_t& length) {
  if (file_kind(path) != FileKind::kPlain)
    throw DbError(kFileNotFound, L"Arquivo não encontrado: " + path);
  SystemFile file = SystemFile::open(path);
  const auto size = file ? file.size() : std::nullopt;
  if (!size) throw DbError(kPathAccess, L"Erro de acesso ao caminho/arquivo: " + path);
  length = static_cast<int64_t>(*size);
  return file;
}

}  // namespace kestrelon
