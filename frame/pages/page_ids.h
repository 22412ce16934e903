// The classes of the library's property pages. They are registered but not in the type library.
#pragma once

#include <windows.h>

namespace kestrelon {

// {B5C3F1A0-7D42-4E19-9C0B-2F6A51D08001}
inline constexpr CLSID kThemePage = {
    0xb5c3f1a0, 0x7d42, 0x4e19, {0x9c, 0x0b, 0x2f, 0x6a, 0x51, 0xd0, 0x80, 0x01}};

}  // namespace kestrelon
