#include "services/mysql/dump_lines.h"

#include <filesystem>

#include "base/text.h"
#include "services/mysql/file_errors.h"

namespace kestrelon {

void LineWriter::line(std::wstring_view text) {
  bytes(to_ansi(text));
}

void LineWriter::bytes(std::string_view text) {
  target_.write(text);
  target_.write("\r\n");
  target_.flush();
  ++count_;
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
  if (!bytes || error) throw path_access_error(path);
  return bytes;
}

}  // namespace kestrelon
