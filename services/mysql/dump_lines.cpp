#include "services/mysql/dump_lines.h"

#include <filesystem>

#include "base/text.h"
#include "services/mysql/db_connection.h"

namespace kestrelon {
namespace {

// The numbers and words by which the hosts' language tells file errors.
constexpr long kFileNotFound = 53;
constexpr long kDeviceError = 57;
constexpr long kDiskFull = 61;
constexpr long kPathAccess = 75;

}  // namespace

LineWriter::LineWriter(const std::wstring& path)
    : file_(std::filesystem::path(path), std::ios::binary | std::ios::trunc) {
  if (!file_) throw DbError(kPathAccess, L"Erro de acesso ao caminho/arquivo: " + path);
}

void LineWriter::line(std::wstring_view text) {
  bytes(to_ansi(text));
}

void LineWriter::bytes(std::string_view text) {
  file_.write(text.data(), static_cast<std::streamsize>(text.size()));
  file_.write("\r\n", 2);
  file_.flush();
  check();
  ++count_;
}

void LineWriter::close() {
  file_.close();
  check();
}

void LineWriter::check() const {
  if (!file_) throw DbError(kDiskFull, L"Disco cheio ou erro de gravação no arquivo.");
}

bool LineReader::fill() {
  block_.resize(kBlock);
  bytes_.read(block_.data(), kBlock);
  block_.resize(static_cast<size_t>(bytes_.gcount()));
  at_ = 0;
  if (bytes_.bad()) throw DbError(kDeviceError, L"Erro de leitura no arquivo.");
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

std::ifstream open_lines(const std::wstring& path, int64_t& length) {
  const std::filesystem::path file(path);
  std::error_code error;
  if (path.empty() || !std::filesystem::is_regular_file(file, error))
    throw DbError(kFileNotFound, L"Arquivo não encontrado: " + path);
  std::ifstream bytes(file, std::ios::binary);
  length = static_cast<int64_t>(std::filesystem::file_size(file, error));
  if (!bytes || error) throw DbError(kPathAccess, L"Erro de acesso ao caminho/arquivo: " + path);
  return bytes;
}

}  // namespace kestrelon
