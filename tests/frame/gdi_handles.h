// How many GDI handles the process has left, found by taking them all: Wine does not count them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace kestrelon {

inline size_t free_gdi_handles() {
  std::vector<HGDIOBJ> taken;
  while (const HGDIOBJ region = CreateRectRgn(0, 0, 1, 1)) taken.push_back(region);
  for (const HGDIOBJ region : taken) DeleteObject(region);
  return taken.size();
}

}  // namespace kestrelon
