// Pictures of office commands, drawn by code.
#pragma once

#include "base/com_win.h"

namespace kestrelon::host {

enum class Glyph {
  kPaste,
  kCopy,
  kNew,
  kOpen,
  kSave,
  kPrint,
  kPerson,
  kMail,
  kChart,
  kFind,
  kHelp
};

/// An icon of `size` pixels as a picture object; empty when the system refuses.
ComPtr<IDispatch> glyph_picture(Glyph glyph, int size);

}  // namespace kestrelon::host
