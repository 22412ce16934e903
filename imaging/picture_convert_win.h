// Bitmaps, icons and metafiles of the system turned into images.
#pragma once

#include <windows.h>

#include <olectl.h>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

// Each replaces `out`; false leaves it without an image. Handles stay the caller's.

/// 32-bit pixels are classified; any other depth is opaque. Format Bitmap, BitmapArgb, BitmapPargb.
bool convert_bitmap(HBITMAP bitmap, c32bppDIB& out);
/// Formats Icon, IconArgb, Cursor, CursorArgb. Colour pixels of 32 bits whose alpha is 0 everywhere
/// are shown through the mask, as the system does: every icon has 32 bits on such a screen.
bool convert_icon(HICON icon, c32bppDIB& out);
/// A metafile of the older kind, which does not know its size: hundredths of a millimetre.
bool convert_windows_metafile(HMETAFILE metafile, SIZEL himetric, c32bppDIB& out);
/// A picture object of any kind; false for an empty one. What a metafile does not draw on is
/// transparent, all else opaque; its size on this screen counts. Formats Wmf, Emf.
bool convert_picture(IPicture& picture, c32bppDIB& out);
/// A bitmap, metafile, enhanced metafile, icon or cursor.
bool convert_handle(HANDLE handle, c32bppDIB& out);

/// An icon, or a cursor with its hot spot, that looks like the image; the caller's to destroy. Null
/// without an image.
HICON make_icon(const c32bppDIB& image, bool cursor = false, POINT hot_spot = {});
/// The image laid over a colour, as a 24-bit bitmap; the caller's to delete. Null without an image.
HBITMAP make_flat_bitmap(const c32bppDIB& image, COLORREF background);

}  // namespace kestrelon
