// Property bags in their three forms: the container's own bag, a stream, a storage.
#include <span>

#include "frame/control_frame.h"
#include "frame/object_bytes.h"

namespace kestrelon {
namespace {

constexpr wchar_t kStorageStream[] = L"Contents";

// The records of a stream seen as a property bag, so that there is one way of reading.
class RecordBag final : public IPropertyBag {
 public:
  explicit RecordBag(std::vector<PropertyRecord> records) : records_(std::move(records)) {}
  // Lives on the stack of the load that uses it.
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = iid == IID_IUnknown || iid == IID_IPropertyBag ? this : nullptr;
    return *out != nullptr ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP Read(LPCOLESTR key, VARIANT* value, IErrorLog*) override {
    if (key == nullptr || value == nullptr) return E_POINTER;
    return guarded(IID_IPropertyBag, [&]() -> HRESULT {
      for (const PropertyRecord& record : records_) {
        if (record.key != key) continue;
        Variant found = from_record(record);
        VariantClear(value);
        std::swap(*value, static_cast<VARIANT&>(found));
        return V_VT(value) == VT_EMPTY ? E_FAIL : S_OK;
      }
      return E_INVALIDARG;
    });
  }
  STDMETHODIMP Write(LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }

 private:
  std::vector<PropertyRecord> records_;
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

void ControlFrame::read_properties(IPropertyBag& bag, IErrorLog* log) {
  user_mode_ = ambient_.user_mode();
  was_read_ = true;
  const Loading loading(loading_);
  take_ambient_defaults();
  for (PropertyBase* property : properties()) {
    Variant value = property->empty_value();
    if (SUCCEEDED(bag.Read(property->key(), &value, log))) {
      property->load(value);
    } else {
      property->reset();
    }
  }
  apply_enabled();
  apply_mouse_pointer();
  properties_read();
  dirty_ = false;
  invalidate();
}

STDMETHODIMP ControlFrame::Load(IPropertyBag* bag, IErrorLog* log) {
  if (bag == nullptr) return E_POINTER;
  return call([&] { read_properties(*bag, log); });
}

STDMETHODIMP ControlFrame::Save(IPropertyBag* bag, BOOL clear_dirty, BOOL save_all) {
  if (bag == nullptr) return E_POINTER;
  return call([&] {
    for (const PropertyBase* property : properties()) {
      if (!property->is_saved() || (!save_all && property->is_default())) continue;
      Variant value = property->save();
      const HRESULT hr = bag->Write(property->key(), &value);
      if (FAILED(hr)) throw ComError(hr);
    }
    if (clear_dirty) dirty_ = false;
  });
}

HRESULT ControlFrame::load_payload(std::span<const uint8_t> payload) {
  RecordBag bag(read_property_records(payload));
  read_properties(bag, nullptr);
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
  std::vector<PropertyRecord> out;
  for (const PropertyBase* property : properties())
    if (property->is_saved()) out.push_back(to_record(property->key(), property->save()));
  return out;
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
