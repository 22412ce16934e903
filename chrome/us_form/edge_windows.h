// The three thin windows along a skinned form's left, right and bottom side.
#pragma once

#include <windows.h>

#include <array>

#include "chrome/us_form/skin_layout.h"

namespace kestrelon {

/// What the edges ask of the skin that owns them.
class EdgeOwner {
 public:
  virtual void paint_edge(skin::Edge edge, HDC dc, const RECT& area) = 0;
  /// The pointer has moved or the left key went down, alone, at a column of the edge.
  virtual void edge_moved(skin::Edge edge, int x, int width) = 0;
  virtual void edge_pressed(skin::Edge edge, int x, int width) = 0;

 protected:
  ~EdgeOwner() = default;
};

/// Children of the form, above the rest of it. They die with the form; the object may outlive them.
class EdgeWindows {
 public:
  explicit EdgeWindows(EdgeOwner& owner) : owner_(owner) {}
  EdgeWindows(const EdgeWindows&) = delete;
  EdgeWindows& operator=(const EdgeWindows&) = delete;
  ~EdgeWindows() { destroy(); }

  void create(HWND parent);
  void destroy();
  bool exist() const { return windows_[0] != nullptr; }
  /// Puts them in their places, above all other children but `above`.
  void place(const skin::Edges& places, HWND above);
  void invalidate();
  HWND window(skin::Edge edge) const { return windows_[static_cast<size_t>(edge)]; }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT handle(HWND window, skin::Edge edge, UINT message, WPARAM wparam, LPARAM lparam);

  EdgeOwner& owner_;
  std::array<HWND, 3> windows_{};
};

}  // namespace kestrelon
