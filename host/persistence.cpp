#include "host/persistence.h"

namespace kestrelon::host {
namespace {

void check(HRESULT hr, const wchar_t* text) {
  if (FAILED(hr)) throw ComError(hr, text);
}

}  // namespace

ComPtr<IStream> stream_over(const std::vector<uint8_t>& bytes) {
  ComPtr<IStream> stream;
  check(CreateStreamOnHGlobal(nullptr, TRUE, stream.put()), L"No memory for a stream");
  check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr),
        L"No memory for a stream");
  check(stream->Seek({}, STREAM_SEEK_SET, nullptr), L"The stream cannot seek");
  return stream;
}

std::vector<uint8_t> save_bytes(const std::function<HRESULT(IStream*)>& save) {
  const ComPtr<IStream> stream = stream_over({});
  check(save(stream.get()), L"The object could not be saved");
  STATSTG stat = {};
  check(stream->Stat(&stat, STATFLAG_NONAME), L"The stream cannot be measured");
  std::vector<uint8_t> bytes(static_cast<size_t>(stat.cbSize.QuadPart));
  check(stream->Seek({}, STREAM_SEEK_SET, nullptr), L"The stream cannot seek");
  ULONG read = 0;
  check(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read),
        L"The stream cannot be read");
  bytes.resize(read);
  return bytes;
}

std::vector<uint8_t> save_stream(IUnknown* control) {
  const auto persist = query<IPersistStreamInit>(control);
  if (!persist) throw ComError(E_NOINTERFACE, L"The control saves no stream");
  return save_bytes([&](IStream* stream) { return persist->Save(stream, TRUE); });
}

HRESULT load_stream(IUnknown* control, const std::vector<uint8_t>& bytes) {
  const auto persist = query<IPersistStreamInit>(control);
  return persist ? persist->Load(stream_over(bytes).get()) : E_NOINTERFACE;
}

ComPtr<IStorage> make_storage() {
  ComPtr<ILockBytes> bytes;
  ComPtr<IStorage> storage;
  check(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.put()), L"No memory for a storage");
  check(StgCreateDocfileOnILockBytes(
            bytes.get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.put()),
        L"No memory for a storage");
  return storage;
}

ComPtr<IStorage> save_storage(IUnknown* control) {
  const auto persist = query<IPersistStorage>(control);
  if (!persist) throw ComError(E_NOINTERFACE, L"The control saves no storage");
  ComPtr<IStorage> storage = make_storage();
  check(persist->Save(storage.get(), FALSE), L"The control could not be saved");
  check(persist->SaveCompleted(nullptr), L"The control could not be saved");
  return storage;
}

HRESULT load_storage(IUnknown* control, IStorage* storage) {
  const auto persist = query<IPersistStorage>(control);
  return persist ? persist->Load(storage) : E_NOINTERFACE;
}

}  // namespace kestrelon::host
