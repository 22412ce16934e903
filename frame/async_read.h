// Bytes from an address, read without waiting: through the container where it offers that, else by
// the system.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/com_win.h"
#include "frame/private_timer.h"

namespace kestrelon {

/// One read at a time. It reports from the message loop of the thread that started it, never within
/// start(), and never once it has been cancelled or destroyed.
class AsyncRead {
 public:
  /// The bytes, or a failure and none.
  using Done = std::function<void(HRESULT, std::vector<uint8_t>)>;

  AsyncRead();
  AsyncRead(const AsyncRead&) = delete;
  AsyncRead& operator=(const AsyncRead&) = delete;
  ~AsyncRead();

  /// Reads what `name` names: an address, or a path of a file. What ran before is cancelled. `site`
  /// is the control's place in its container, or null. More than `limit` bytes are a failure.
  /// `done` is called exactly once unless cancel() comes first; it may destroy this object. False,
  /// and no call, for a name that cannot be an address.
  bool start(IOleClientSite* site, const std::wstring& name, size_t limit, Done done);
  void cancel();
  bool running() const;

 private:
  class Sink;

  HRESULT bind(IOleClientSite* site, const std::wstring& name, ComPtr<IStream>& stream);
  void finish(HRESULT result);
  void deliver(HRESULT result);

  ComPtr<Sink> sink_;
  Done done_;
  PrivateTimer delivery_;
};

}  // namespace kestrelon
