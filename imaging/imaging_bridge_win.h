// The system behind the image engine, and what a process may choose about it.
#pragma once

#include <functional>
#include <string>

namespace kestrelon {

/// Puts the Windows side behind the image engine: the system's picture decoder, AlphaBlend, the
/// optional imaging library, zlib. Done at the start of the library; harmless when repeated.
void start_imaging();

/// Who tells the user when a reader breaks; an empty function, as at the start, shows a message
/// box. An unattended process routes the text elsewhere. Returns the one before.
using MessageHook = std::function<void(const std::wstring& text)>;
MessageHook set_message_hook(MessageHook hook);

/// Whether PNG files go to the platform's imaging library before our own reader; off at the start,
/// for the whole process.
bool platform_png_first();
void set_platform_png_first(bool on);

}  // namespace kestrelon
