#include "frame/async_read.h"

#include <servprov.h>
#include <shlwapi.h>
#include <urlmon.h>

#include "base/counted_win.h"

namespace kestrelon {
namespace {

constexpr DWORD kLongestAddress = 2084;  // the system's own limit

// The system's reader of addresses, loaded at the first use: most forms never need it.
class AddressReader {
 public:
  AddressReader()
      : module_(LoadLibraryW(L"urlmon.dll")),
        create_moniker_(find<decltype(&CreateURLMonikerEx)>("CreateURLMonikerEx")),
        create_context_(find<decltype(&CreateAsyncBindCtx)>("CreateAsyncBindCtx")) {}

  HRESULT bind(const std::wstring& address, IBindStatusCallback* sink,
               ComPtr<IStream>& stream) const {
    if (create_moniker_ == nullptr || create_context_ == nullptr) return E_NOTIMPL;
    ComPtr<IMoniker> moniker;
    ComPtr<IBindCtx> context;
    HRESULT hr = create_moniker_(nullptr, address.c_str(), moniker.put(), URL_MK_UNIFORM);
    if (SUCCEEDED(hr)) hr = create_context_(0, sink, nullptr, context.put());
    if (FAILED(hr)) return hr;
    return moniker->BindToStorage(context.get(), nullptr, IID_IStream, stream.put_void());
  }

 private:
  template <class Function>
  Function find(const char* name) const {
    if (module_ == nullptr) return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }

  HMODULE module_;  // stays: the system's threads may be at work in it
  decltype(&CreateURLMonikerEx) create_moniker_;
  decltype(&CreateAsyncBindCtx) create_context_;
};

// A path as an address; an address as it is; empty for what is neither.
std::wstring address_of(const std::wstring& name) {
  if (name.empty()) return {};
  if (PathIsURLW(name.c_str())) return name;
  wchar_t path[MAX_PATH], address[kLongestAddress];
  const DWORD length = GetFullPathNameW(name.c_str(), MAX_PATH, path, nullptr);
  DWORD size = kLongestAddress;
  if (length == 0 || length >= MAX_PATH || UrlCreateFromPathW(path, address, &size, 0) != S_OK)
    return {};
  return address;
}

}  // namespace

// What the system reports to; lives as long as a binding holds it, and forgets a reader that goes
// first.
class AsyncRead::Sink final : public Counted<IBindStatusCallback> {
 public:
  Sink(AsyncRead& owner, size_t limit) : owner_(&owner), limit_(limit) {}

  /// Nothing is reported from here on.
  void leave() {
    owner_ = nullptr;
    const ComPtr<IBinding> binding = std::move(binding_);
    if (binding) binding->Abort();
  }
  std::vector<uint8_t> take() { return std::move(bytes_); }
  /// Whether a binding has ever said a word.
  bool heard() const { return heard_; }
  /// Takes what has come so far.
  HRESULT read_all(IStream& stream) {
    uint8_t piece[16384];
    for (;;) {
      ULONG got = 0;
      const HRESULT hr = stream.Read(piece, sizeof piece, &got);
      if (got > limit_ - bytes_.size()) {
        too_long_ = true;
        bytes_ = {};
        if (const ComPtr<IBinding> binding = binding_) binding->Abort();
        return E_ABORT;
      }
      bytes_.insert(bytes_.end(), piece, piece + got);
      if (hr != S_OK || got == 0) return S_OK;
    }
  }

  STDMETHODIMP OnStartBinding(DWORD, IBinding* binding) override {
    heard_ = true;
    if (owner_ == nullptr) return E_ABORT;
    binding_ = ComPtr<IBinding>(binding);
    return S_OK;
  }
  STDMETHODIMP GetPriority(LONG* priority) override {
    if (priority == nullptr) return E_POINTER;
    *priority = THREAD_PRIORITY_NORMAL;
    return S_OK;
  }
  STDMETHODIMP OnLowResource(DWORD) override { return S_OK; }
  STDMETHODIMP OnProgress(ULONG, ULONG, ULONG, LPCWSTR) override {
    return owner_ != nullptr ? S_OK : E_ABORT;
  }
  STDMETHODIMP OnStopBinding(HRESULT result, LPCWSTR) override {
    return guarded(IID_IBindStatusCallback, [&] {
      heard_ = true;
      binding_.reset();
      if (owner_ != nullptr) owner_->finish(too_long_ ? E_OUTOFMEMORY : result);
    });
  }
  STDMETHODIMP GetBindInfo(DWORD* flags, BINDINFO* info) override {
    if (flags == nullptr || info == nullptr) return E_POINTER;
    *flags = BINDF_ASYNCHRONOUS | BINDF_ASYNCSTORAGE | BINDF_PULLDATA | BINDF_NO_UI;
    const ULONG size = info->cbSize;
    ZeroMemory(info, size);
    info->cbSize = size;
    info->dwBindVerb = BINDVERB_GET;
    return S_OK;
  }
  STDMETHODIMP OnDataAvailable(DWORD, DWORD, FORMATETC*, STGMEDIUM* medium) override {
    return guarded(IID_IBindStatusCallback, [&]() -> HRESULT {
      heard_ = true;
      if (owner_ == nullptr) return E_ABORT;
      if (medium == nullptr || medium->tymed != TYMED_ISTREAM || medium->pstm == nullptr)
        return S_OK;
      return read_all(*medium->pstm);
    });
  }
  STDMETHODIMP OnObjectAvailable(REFIID, IUnknown*) override { return S_OK; }

 private:
  AsyncRead* owner_;
  size_t limit_;
  ComPtr<IBinding> binding_;
  std::vector<uint8_t> bytes_;
  bool too_long_ = false;
  bool heard_ = false;
};

AsyncRead::AsyncRead() = default;

AsyncRead::~AsyncRead() {
  cancel();
}

bool AsyncRead::running() const {
  return static_cast<bool>(sink_);
}

bool AsyncRead::start(IOleClientSite* site, const std::wstring& name, size_t limit, Done done) {
  cancel();
  if (address_of(name).empty()) return false;
  done_ = std::move(done);
  sink_ = ComPtr<Sink>(new Sink(*this, limit));
  const ComPtr<Sink> sink = sink_;
  ComPtr<IStream> stream;
  const HRESULT hr = bind(site, name, stream);
  // What fails or is complete at once need not have told the sink.
  if (sink_.get() != sink.get() || delivery_.running()) return true;
  if (FAILED(hr)) {
    finish(hr);
  } else if (hr == S_OK && !sink->heard()) {
    finish(stream ? sink->read_all(*stream) : E_FAIL);
  }
  return true;
}

HRESULT AsyncRead::bind(IOleClientSite* site, const std::wstring& name, ComPtr<IStream>& stream) {
  const ComPtr<Sink> sink = sink_;
  ComPtr<IBindHost> host;
  if (const auto services = query<IServiceProvider>(site))
    services->QueryService(SID_SBindHost, IID_IBindHost, host.put_void());
  ComPtr<IMoniker> moniker;
  ComPtr<IBindCtx> context;
  auto text = name;
  if (host && SUCCEEDED(CreateBindCtx(0, context.put())) &&
      SUCCEEDED(host->CreateMoniker(text.data(), context.get(), moniker.put(), 0)) && moniker) {
    return host->MonikerBindToStorage(moniker.get(), context.get(), sink.get(), IID_IStream,
                                      stream.put_void());
  }
  static const AddressReader reader;
  return reader.bind(address_of(name), sink.get(), stream);
}

void AsyncRead::cancel() {
  delivery_.stop();
  done_ = nullptr;
  const ComPtr<Sink> sink = std::move(sink_);
  sink_ = nullptr;
  if (sink) sink->leave();
}

// The system may call from within bind(); the caller hears of it from the message loop.
void AsyncRead::finish(HRESULT result) {
  delivery_.start(USER_TIMER_MINIMUM, [this, result] { deliver(result); });
}

void AsyncRead::deliver(HRESULT result) {
  delivery_.stop();
  const Done done = std::move(done_);
  auto bytes = sink_->take();
  cancel();
  if (FAILED(result)) bytes = {};
  done(result, std::move(bytes));
}

}  // namespace kestrelon
