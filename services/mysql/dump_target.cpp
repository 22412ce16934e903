#include "services/mysql/dump_target.h"

#include "services/mysql/file_errors.h"

namespace kestrelon {
namespace {

// A device or a pipe has no place that another file could take.
std::wstring partial_path(const std::wstring& path) {
  return file_kind(path) == FileKind::kOther ? path : path + L".parcial";
}

void check(bool written) {
  if (!written) throw DbError(kDiskFull, L"Disco cheio ou erro de gravação no arquivo.");
}

}  // namespace

DumpTarget::DumpTarget(const std::wstring& path)
    : path_(path), partial_(partial_path(path)), file_(SystemFile::create(partial_)) {
  if (!file_) throw path_access_error(path);
}

DumpTarget::~DumpTarget() {
  if (!is_open_) return;
  file_.close();
  if (file_kind(path_) == FileKind::kNone) move_file(partial_, path_);
}

void DumpTarget::write(std::string_view bytes) {
  check(file_.write(bytes));
}

void DumpTarget::complete() {
  check(file_.close());
  if (partial_ != path_ && !move_file(partial_, path_)) throw path_access_error(path_);
  is_open_ = false;
}

}  // namespace kestrelon
