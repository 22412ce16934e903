// Saving controls to bytes and storages and opening them again.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "base/com_win.h"

namespace kestrelon::host {

/// A stream in memory that starts at the first of these bytes. Throws ComError without memory.
ComPtr<IStream> stream_over(const std::vector<uint8_t>& bytes);
/// What `save` writes; throws ComError with its failure.
std::vector<uint8_t> save_bytes(const std::function<HRESULT(IStream*)>& save);

/// A control's state as a stream (IPersistStreamInit).
std::vector<uint8_t> save_stream(IUnknown* control);
HRESULT load_stream(IUnknown* control, const std::vector<uint8_t>& bytes);

/// A control's state as a storage in memory (IPersistStorage).
ComPtr<IStorage> make_storage();
ComPtr<IStorage> save_storage(IUnknown* control);
HRESULT load_storage(IUnknown* control, IStorage* storage);

}  // namespace kestrelon::host
