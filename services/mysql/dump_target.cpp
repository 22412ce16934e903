#include "services/mysql/dump_target.h"

#include <filesystem>

#include "services/mysql/db_connection.h"
#include "services/mysql/file_errors.h"

namespace kestrelon {
namespace fs = std::filesystem;
namespace {

// A device or a pipe has no place that another file could take.
std::wstring partial_path(const std::wstring& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  const bool is_special = fs::exists(status) && !fs::is_regular_file(status);
  return is_special ? path : path + L".parcial";
}

}  // namespace

DumpTarget::DumpTarget(const std::wstring& path)
    : path_(path),
      partial_(partial_path(path)),
      file_(fs::path(partial_), std::ios::binary | std::ios::trunc) {
  if (path.empty() || !file_) throw path_access_error(path);
}

DumpTarget::~DumpTarget() {
  if (!is_open_) return;
  file_.close();
  std::error_code error;
  if (!fs::exists(fs::path(path_), error)) fs::rename(partial_, path_, error);
}

void DumpTarget::write(std::string_view bytes) {
  file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  check();
}

void DumpTarget::flush() {
  file_.flush();
  check();
}

void DumpTarget::complete() {
  file_.close();
  check();
  std::error_code error;
  if (partial_ != path_) fs::rename(partial_, path_, error);
  if (error) throw path_access_error(path_);
  is_open_ = false;
}

void DumpTarget::check() const {
  if (!file_) throw DbError(kDiskFull, L"Disco cheio ou erro de gravação no arquivo.");
}

}  // namespace kestrelon
