#include "frame/inner/child_edit.h"

#include <commctrl.h>

#include <utility>

#include "frame/text.h"

namespace kestrelon {

ChildEdit::~ChildEdit() {
  destroy();
  if (brush_ != nullptr) DeleteObject(brush_);
}

bool ChildEdit::create(DWORD style, const RECT& place) {
  return InnerWindow::create(WC_EDITW, style, 0, place);
}

void ChildEdit::set_font(HFONT font) {
  if (hwnd() == nullptr) return;
  SendMessageW(hwnd(), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  // The control leaves the margins; the system would take some of the width for its own.
  SendMessageW(hwnd(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
}

void ChildEdit::set_colors(COLORREF text, COLORREF back) {
  if (brush_ != nullptr && text == text_color_ && back == back_color_) return;
  const HBRUSH former = brush_;
  text_color_ = text;
  back_color_ = back;
  brush_ = CreateSolidBrush(back);
  if (hwnd() != nullptr) InvalidateRect(hwnd(), nullptr, TRUE);
  if (former != nullptr) DeleteObject(former);
}

std::wstring ChildEdit::text() const {
  if (hwnd() == nullptr) return {};
  std::wstring out(static_cast<size_t>(GetWindowTextLengthW(hwnd())), L'\0');
  const int copied = GetWindowTextW(hwnd(), out.data(), static_cast<int>(out.size()) + 1);
  out.resize(static_cast<size_t>(copied));
  return out;
}

void ChildEdit::set_text(std::wstring_view text) {
  const std::wstring wanted(text);
  if (hwnd() != nullptr && wanted != this->text()) SetWindowTextW(hwnd(), wanted.c_str());
}

TextRange ChildEdit::selection() const {
  DWORD start = 0, end = 0;
  if (hwnd() != nullptr)
    SendMessageW(hwnd(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
  return {static_cast<int>(start), static_cast<int>(end)};
}

void ChildEdit::select(TextRange range) {
  if (hwnd() == nullptr) return;
  SendMessageW(hwnd(), EM_SETSEL, static_cast<WPARAM>(range.start), range.end);
  SendMessageW(hwnd(), EM_SCROLLCARET, 0, 0);
}

void ChildEdit::replace_selection(std::wstring_view text) {
  const std::wstring copy(text);
  if (hwnd() != nullptr)
    SendMessageW(hwnd(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(copy.c_str()));
}

void ChildEdit::set_limit(int characters) {
  if (hwnd() != nullptr) SendMessageW(hwnd(), EM_SETLIMITTEXT, static_cast<WPARAM>(characters), 0);
}

void ChildEdit::set_read_only(bool read_only) {
  if (hwnd() != nullptr) SendMessageW(hwnd(), EM_SETREADONLY, read_only, 0);
}

void ChildEdit::set_cue(const std::wstring& text, COLORREF color) {
  if (text == cue_ && color == cue_color_) return;
  cue_ = text;
  cue_color_ = color;
  if (hwnd() != nullptr) InvalidateRect(hwnd(), nullptr, TRUE);
}

bool ChildEdit::paint_cue() {
  if (cue_.empty() || GetWindowTextLengthW(hwnd()) > 0) return false;
  RECT area{};
  GetClientRect(hwnd(), &area);
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(hwnd(), &paint);
  if (const HBRUSH brush = colors(dc)) FillRect(dc, &area, brush);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(hwnd(), WM_GETFONT, 0, 0));
  const HGDIOBJ displaced = font != nullptr ? SelectObject(dc, font) : nullptr;
  const bool right = (GetWindowLongPtrW(hwnd(), GWL_STYLE) & ES_RIGHT) != 0;
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, cue_color_);
  DrawTextUnicode(dc, cue_, -1, &area, DT_NOPREFIX | DT_SINGLELINE | (right ? DT_RIGHT : DT_LEFT));
  if (displaced != nullptr) SelectObject(dc, displaced);
  EndPaint(hwnd(), &paint);
  return true;
}

int ChildEdit::line_height() const {
  if (hwnd() == nullptr) return 0;
  const HDC dc = GetDC(hwnd());
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(hwnd(), WM_GETFONT, 0, 0));
  const HGDIOBJ displaced = font != nullptr ? SelectObject(dc, font) : nullptr;
  TEXTMETRICW metric{};
  GetTextMetricsW(dc, &metric);
  if (displaced != nullptr) SelectObject(dc, displaced);
  ReleaseDC(hwnd(), dc);
  return static_cast<int>(metric.tmHeight);
}

void ChildEdit::command(UINT code) {
  if (code != EN_CHANGE) return;
  const bool empty = GetWindowTextLengthW(hwnd()) == 0;
  if (std::exchange(showed_empty_, empty) != empty && !cue_.empty())
    InvalidateRect(hwnd(), nullptr, TRUE);
  owner_.edit_changed(*this);
}

HBRUSH ChildEdit::colors(HDC dc) {
  if (brush_ == nullptr) return nullptr;
  SetTextColor(dc, text_color_);
  SetBkColor(dc, back_color_);
  return brush_;
}

bool ChildEdit::message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (owner_.edit_message(*this, message, wparam, lparam, result)) return true;
  if (message == WM_PAINT && wparam == 0 && hwnd() != nullptr && paint_cue()) {
    result = 0;
    return true;
  }
  const bool single_line =
      hwnd() != nullptr && (GetWindowLongPtrW(hwnd(), GWL_STYLE) & ES_MULTILINE) == 0;
  // Keys that a box of one line has no use for; the system would beep.
  const bool idle = wparam == VK_RETURN || wparam == VK_ESCAPE || wparam == VK_TAB;
  if (message != WM_CHAR || !single_line || !idle) return false;
  result = 0;
  return true;
}

}  // namespace kestrelon
