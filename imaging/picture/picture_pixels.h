// Pixels that did not come through a reader: what their alpha says.
#pragma once

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// The alpha type that the pixels have.
AlphaType alpha_type_of(const ImageView& view);

/// The picture was pixels and nothing more: what a file of another kind tells beside them, such as
/// the sizes of an icon, it does not have.
constexpr bool is_plain_bitmap(ImageFormat type) {
  return type == ImageFormat::Bitmap || type == ImageFormat::BitmapArgb ||
         type == ImageFormat::BitmapPargb;
}

/// Makes pixels that a program stored as bytes a valid image: where any colour is above its alpha
/// all of them are taken for straight colours and premultiplied. Tells the alpha type anew.
void settle_stored_pixels(c32bppDIB& image);

}  // namespace kestrelon
