// Tells what the alpha channel of freshly decoded pixels means, and premultiplies them if needed.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/image_types.h"

namespace kestrelon {

/// Classifies `count` pixels (bytes blue, green, red, alpha; memory order; owned by the caller).
///
/// - `type` Error on entry: nothing is scanned, the pixels count as opaque.
/// - All alphas 0, or all 255: no alpha. `type` becomes Bitmap, answer None; with `premultiply` all
///   alphas become 255.
/// - No colour above its alpha: premultiplied already. `type` becomes BitmapPargb, nothing changes.
/// - Otherwise straight colour: `type` becomes BitmapArgb, and with `premultiply` the pixels are
///   premultiplied. Without it the answer is what the scan saw up to the pixel that settled it.
///
/// A reader for one format sets its own type afterwards.
AlphaType classify_alpha(uint8_t* pixels, size_t count, bool premultiply, ImageFormat& type);

}  // namespace kestrelon
