// Pixels that did not come through a reader: what their alpha says.
#pragma once

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// The alpha type that the pixels have.
AlphaType alpha_type_of(const ImageView& view);

/// Makes pixels that a program stored as bytes a valid image: where any colour is above its alpha
/// all of them are taken for straight colours and premultiplied. Tells the alpha type anew.
void settle_stored_pixels(c32bppDIB& image);

}  // namespace kestrelon
