#include "lists/row_window.h"

#include <algorithm>
#include <cstdlib>

namespace kestrelon {

int RowWindow::last_top() const {
  int row = rows_, room = height_;
  while (row > 0 && room >= heights_.height(row - 1)) room -= heights_.height(--row);
  return std::max(std::min(row, rows_ - 1), 0);
}

int RowWindow::limit_top(int64_t top) const {
  if (top <= 0) return 0;
  // Only a top near the end needs the walk that finds the last one.
  if (top < rows_ - height_) return static_cast<int>(top);
  return static_cast<int>(std::min<int64_t>(top, last_top()));
}

int RowWindow::whole_rows(int top) const {
  int row = top, room = height_;
  while (row < rows_ && room >= heights_.height(row)) room -= heights_.height(row++);
  return std::max(row - top, 1);
}

int RowWindow::touched_rows(int top) const {
  int row = top, room = height_;
  while (row < rows_ && room > 0) room -= heights_.height(row++);
  return row - top;
}

int RowWindow::top_showing(int row, int top) const {
  if (row <= top) return limit_top(row);
  int first = row, room = height_ - heights_.height(row);
  while (first > top && room >= heights_.height(first - 1)) room -= heights_.height(--first);
  return first;
}

int RowWindow::row_at(int y, int top) const {
  if (y < 0) return -1;
  for (int row = top; row < rows_; ++row)
    if ((y -= heights_.height(row)) < 0) return row;
  return -1;
}

int RowWindow::y_of(int row, int top) const {
  int y = 0;
  for (int i = top; i < row; ++i) y += heights_.height(i);
  for (int i = row; i < top; ++i) y -= heights_.height(i);
  return y;
}

int RowWindow::page_target(int row, int top, bool down) const {
  if (!down) {
    if (row > top) return top;
    int first = row, room = height_ - heights_.height(row);
    while (first > 0 && room >= heights_.height(first - 1)) room -= heights_.height(--first);
    return first == row ? std::max(row - 1, 0) : first;
  }
  const int bottom = std::min(top + whole_rows(top), rows_) - 1;
  if (row < bottom && row >= top) return bottom;
  return std::min(row + std::max(whole_rows(row) - 1, 1), rows_ - 1);
}

int edge_scroll_rows(int beyond, int row_height) {
  if (beyond == 0) return 0;
  const int speed = 1 + std::min(std::abs(beyond) / std::max(row_height, 1), 50);
  // The square of the distance, so that the far end of a long list is reached.
  return (beyond > 0 ? 1 : -1) * (speed < 4 ? speed : speed * speed / 4);
}

}  // namespace kestrelon
