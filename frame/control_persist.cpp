// Property bags in their three forms: the container's own bag, a stream, a storage.
#include <span>

#include "frame/control_frame.h"
#include "frame/object_bytes.h"

namespace kestrelon {
namespace {

constexpr wchar_t kStorageStream[] = L"Contents";

// A container's bag.
class ContainerReader final : public BagReader {
 public:
  ContainerReader(IPropertyBag& bag, IErrorLog* log) : bag_(bag), log_(log) {}
  bool read(const std::wstring& key, Variant& value) override {
    return SUCCEEDED(bag_.Read(key.c_str(), &value, log_));
  }

 private:
  IPropertyBag& bag_;
  IErrorLog* log_;
};

class ContainerWriter final : public BagWriter {
 public:
  explicit ContainerWriter(IPropertyBag& bag) : bag_(bag) {}
  void write(const std::wstring& key, const Variant& value) override {
    Variant copy = value;
    const HRESULT hr = bag_.Write(key.c_str(), &copy);
    if (FAILED(hr)) throw ComError(hr);
  }

 private:
  IPropertyBag& bag_;
};

// The records of a stream, so that there is one way of reading.
class RecordReader final : public BagReader {
 public:
  explicit RecordReader(std::vector<PropertyRecord> records) : records_(std::move(records)) {}
  bool read(const std::wstring& key, Variant& value) override {
    const PropertyRecord* const record = find(key);
    if (record == nullptr) return false;
    Variant found = from_record(*record);
    if (V_VT(&found) == VT_EMPTY) return false;
    value = std::move(found);
    return true;
  }

 private:
  // Keys are asked for in the order in which they were written, so the search goes on from the
  // last.
  const PropertyRecord* find(const std::wstring& key) {
    for (size_t i = 0; i < records_.size(); ++i) {
      const PropertyRecord& record = records_[(next_ + i) % records_.size()];
      if (record.key != key) continue;
      next_ = (next_ + i + 1) % records_.size();
      return &record;
    }
    return nullptr;
  }

  std::vector<PropertyRecord> records_;
  size_t next_ = 0;
};

class RecordWriter final : public BagWriter {
 public:
  void write(const std::wstring& key, const Variant& value) override {
    records.push_back(to_record(key, value));
  }
  std::vector<PropertyRecord> records;
};

// While it lives, changes of properties are not reported.
class Loading {
 public:
  explicit Loading(bool& flag) : flag_(flag) { flag_ = true; }
  ~Loading() { flag_ = false; }
  Loading(const Loading&) = delete;
  Loading& operator=(const Loading&) = delete;

 private:
  bool& flag_;
};

// Reads up to `wanted` bytes; fewer when the stream ends.
std::vector<uint8_t> read_bytes(IStream& stream, size_t wanted) {
  constexpr size_t kStep = 1u << 20;  // memory grows with what is there, not with what is declared
  std::vector<uint8_t> out;
  while (out.size() < wanted) {
    const size_t start = out.size();
    const size_t step = std::min(kStep, wanted - start);
    out.resize(start + step);
    ULONG read = 0;
    const HRESULT hr = stream.Read(out.data() + start, static_cast<ULONG>(step), &read);
    out.resize(start + read);
    if (FAILED(hr) || read == 0) break;
  }
  return out;
}

}  // namespace

STDMETHODIMP ControlFrame::GetClassID(CLSID* out) {
  if (out == nullptr) return E_POINTER;
  *out = class_info().clsid;
  return S_OK;
}

void ControlFrame::run_init_properties() {
  ambient_missing_ = !site_;
  was_initialised_ = true;
  {
    const Loading loading(loading_);
    take_ambient_defaults();
    init_properties();
  }
  apply_enabled();
  invalidate();
}

void ControlFrame::ensure_initialised() {
  if (!was_read_ && !was_initialised_) run_init_properties();
}

STDMETHODIMP ControlFrame::InitNew() {
  if (was_read_ || was_initialised_) return CO_E_ALREADYINITIALIZED;
  return call([&] { run_init_properties(); });
}

void ControlFrame::read_properties(BagReader& bag) {
  user_mode_ = ambient_.user_mode();
  was_read_ = true;
  const Loading loading(loading_);
  take_ambient_defaults();
  for (PropertyBase* property : properties()) property->read(bag);
  apply_enabled();
  apply_mouse_pointer();
  properties_read();
  dirty_ = false;
  invalidate();
}

STDMETHODIMP ControlFrame::Load(IPropertyBag* bag, IErrorLog* log) {
  if (bag == nullptr) return E_POINTER;
  return call([&] {
    ContainerReader reader(*bag, log);
    read_properties(reader);
  });
}

STDMETHODIMP ControlFrame::Save(IPropertyBag* bag, BOOL clear_dirty, BOOL save_all) {
  if (bag == nullptr) return E_POINTER;
  return call([&] {
    ContainerWriter writer(*bag);
    for (const PropertyBase* property : properties())
      if (property->is_saved() && (save_all || !property->is_default())) property->write(writer);
    if (clear_dirty) dirty_ = false;
  });
}

HRESULT ControlFrame::load_payload(std::span<const uint8_t> payload) {
  RecordReader reader(read_property_records(payload));
  read_properties(reader);
  return S_OK;
}

STDMETHODIMP ControlFrame::Load(IStream* stream) {
  if (stream == nullptr) return E_POINTER;
  return call([&]() -> HRESULT {
    uint32_t length = 0;
    if (!read_property_header(read_bytes(*stream, kPropertyHeaderBytes), length)) {
      load_payload({});  // the control stays usable, with its defaults
      return E_FAIL;
    }
    return load_payload(read_bytes(*stream, length));
  });
}

std::vector<PropertyRecord> ControlFrame::records() const {
  RecordWriter writer;
  for (const PropertyBase* property : properties())
    if (property->is_saved()) property->write(writer);
  return std::move(writer.records);
}

STDMETHODIMP ControlFrame::Save(IStream* stream, BOOL clear_dirty) {
  if (stream == nullptr) return E_POINTER;
  return call([&]() -> HRESULT {
    const auto bytes = write_property_stream(records());
    ULONG written = 0;
    const HRESULT hr = stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    if (FAILED(hr)) return hr;
    if (written != bytes.size()) return STG_E_MEDIUMFULL;
    if (clear_dirty) dirty_ = false;
    return S_OK;
  });
}

STDMETHODIMP ControlFrame::GetSizeMax(ULARGE_INTEGER* out) {
  if (out == nullptr) return E_POINTER;
  return call([&] { out->QuadPart = write_property_stream(records()).size(); });
}

STDMETHODIMP ControlFrame::InitNew(IStorage*) {
  return InitNew();
}

STDMETHODIMP ControlFrame::Load(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  ComPtr<IStream> stream;
  const HRESULT hr = storage->OpenStream(kStorageStream, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE,
                                         0, stream.put());
  return FAILED(hr) ? hr : Load(stream.get());
}

STDMETHODIMP ControlFrame::Save(IStorage* storage, BOOL) {
  if (storage == nullptr) return E_POINTER;
  ComPtr<IStream> stream;
  const HRESULT hr = storage->CreateStream(
      kStorageStream, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.put());
  return FAILED(hr) ? hr : Save(stream.get(), TRUE);
}

}  // namespace kestrelon
