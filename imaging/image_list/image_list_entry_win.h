// Images of an image list, for the other classes of the library.
//
//   bool USThing::load_image_from_us_image_list(IDispatch* list, const VARIANT& index,
//                                               const VARIANT& key) {
//     WindowsImage fresh;
//     return copy_image_list_entry(list, key, index, fresh) && show(fresh);
//   }
#pragma once

#include <windows.h>

#include "base/com_win.h"
#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// What USImageList, cImageLists, cImageList and cListImages answer inside this library. Not part
/// of the public contract.
class NativeImageLists : public IUnknown {
 public:
  /// Makes `out` a copy of an image; false, and `out` as it was, if there is none. `list` is a
  /// position from 1 or a key, a missing or empty one stands for the first list; what is a single
  /// list itself does not look at it. `image` is a position from 1 or a key.
  virtual bool copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) = 0;
};

inline constexpr IID IID_NativeImageLists = {
    0xB5C3F1A0, 0x7D42, 0x4E19, {0x9C, 0x0B, 0x2F, 0x6A, 0x51, 0xD0, 0x29, 0x91}};

/// Makes `out` a copy of an image of `source`: a USImageList (also inside a container's extender),
/// a cImageLists, a cImageList or a cListImages. Arguments as for NativeImageLists::copy_entry.
/// False, and `out` as it was, for anything else; never throws an automation error.
bool copy_image_list_entry(IDispatch* source, const VARIANT& list, const VARIANT& image,
                           c32bppDIB& out);

}  // namespace kestrelon
