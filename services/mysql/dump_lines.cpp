#include "services/mysql/dump_lines.h"

#include "base/text.h"
#include "services/mysql/file_errors.h"

namespace kestrelon {

void LineWriter::line(std::wstring_view text) {
  bytes(to_ansi(text));
}

void LineWriter::bytes(std::string_view text) {
  line_.assign(text);
  line_ += "\r\n";
  target_.write(line_);
  ++count_;
}

bool LineReader::fill() {
  block_.resize(kBlock);
  const auto length = source_({reinterpret_cast<uint8_t*>(block_.data()), kBlock});
  if (!length) throw read_error();
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
  if (!size) throw path_access_error(path);
  length = static_cast<int64_t>(*size);
  return file;
}

}  // namespace kestrelon
