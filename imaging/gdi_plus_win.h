// The optional imaging library of the platform (`cGDIPlus`): gdiplus.dll, loaded when first asked
// for.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <vector>

#include "imaging/imaging_bridge.h"

namespace kestrelon {

/// The library started; while one such object lives, others start and end at little cost.
class GdiPlusSession {
 public:
  GdiPlusSession();
  ~GdiPlusSession();
  GdiPlusSession(const GdiPlusSession&) = delete;
  GdiPlusSession& operator=(const GdiPlusSession&) = delete;
  explicit operator bool() const { return token_ != 0; }

 private:
  intptr_t token_;
};

/// A token of the started library for a caller to keep, 0 if there is no library.
intptr_t start_gdi_plus();
void stop_gdi_plus(intptr_t token);

/// Every routine starts the library for its own time and answers false where that, or a call into
/// it, fails.
class cGDIPlus {
 public:
  /// The library can be started; tried once in the life of the process.
  static bool isGDIplusOk();
  /// Replaces `out` by any file the library knows, as premultiplied pixels whose types are still to
  /// be classified. Sizes are checked before pixels are decoded.
  static bool load(std::span<const uint8_t> file, c32bppDIB& out);
  /// Draws with scaling, mirroring, rotation, opacity, gray and light onto a device context or,
  /// with true alpha, onto a host.
  static bool render(const DrawRequest& request);
  static bool SaveToPNG(const c32bppDIB& image, std::vector<uint8_t>& out);
  /// `quality` 0 to 100; `fill` (0x00BBGGRR) lies under what is transparent.
  static bool SaveToJPG(const c32bppDIB& image, int32_t quality, int32_t fill,
                        std::vector<uint8_t>& out);
};

}  // namespace kestrelon
