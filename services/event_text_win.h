// Texts as event arguments.
#pragma once

#include "base/com_win.h"

namespace kestrelon {

/// A text that goes out by reference and that a listener may replace.
struct EventText {
  explicit EventText(std::wstring_view value) : text(Bstr(value).detach()) {}
  ~EventText() { SysFreeString(text); }
  EventText(const EventText&) = delete;
  EventText& operator=(const EventText&) = delete;

  BSTR text;
};

}  // namespace kestrelon
