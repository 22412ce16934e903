#include "imaging/memory_stream_win.h"

#include <cstring>

namespace kestrelon {

ComPtr<IStream> stream_over(std::span<const uint8_t> bytes) {
  ComPtr<IStream> stream;
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.empty() ? 1 : bytes.size());
  if (memory == nullptr) return stream;
  if (!bytes.empty()) std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
  GlobalUnlock(memory);
  if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.put()))) {
    GlobalFree(memory);
    return {};
  }
  ULARGE_INTEGER size = {};
  size.QuadPart = bytes.size();
  stream->SetSize(size);
  return stream;
}

bool stream_content(IStream& stream, std::vector<uint8_t>& out) {
  STATSTG state = {};
  if (FAILED(stream.Stat(&state, STATFLAG_NONAME)) || state.cbSize.QuadPart > INT32_MAX)
    return false;
  out.resize(static_cast<size_t>(state.cbSize.QuadPart));
  stream.Seek({}, STREAM_SEEK_SET, nullptr);
  ULONG read = 0;
  return SUCCEEDED(stream.Read(out.data(), static_cast<ULONG>(out.size()), &read)) &&
         read == out.size();
}

}  // namespace kestrelon
