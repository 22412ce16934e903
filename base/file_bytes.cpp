#include "base/file_bytes.h"

#include "base/system_file.h"

namespace kestrelon {

std::optional<uint64_t> file_size(const std::wstring& name) {
  return plain_file_size(name);
}

std::optional<std::vector<uint8_t>> read_file(const std::wstring& name, uint64_t limit) {
  SystemFile file = SystemFile::open(name);
  if (!file) return std::nullopt;
  const auto size = file.size();
  if (!size || *size > limit) return std::nullopt;
  std::vector<uint8_t> bytes(static_cast<size_t>(*size));
  for (size_t at = 0; at < bytes.size();) {
    const auto length = file.read(std::span(bytes).subspan(at));
    if (length.value_or(0) == 0) return std::nullopt;
    at += *length;
  }
  return bytes;
}

bool write_file(const std::wstring& name, std::span<const uint8_t> bytes) {
  SystemFile file = SystemFile::create(name);
  if (!file) return false;
  const bool written = file.write(bytes);
  if (file.close() && written) return true;
  delete_file(name);
  return false;
}

bool delete_file(const std::wstring& name) {
  return remove_file(name) || file_kind(name) == FileKind::kNone;
}

}  // namespace kestrelon
