// Measuring and drawing a message box.
#include <algorithm>

#include "base/module_win.h"
#include "frame/kit/access_key.h"
#include "frame/kit/gradient.h"
#include "frame/screen.h"
#include "frame/selected_font.h"
#include "frame/text.h"
#include "services/msgbox/msg_box_window_win.h"

namespace kestrelon {
namespace {

struct Look {
  COLORREF strip1, strip2, title, border, paper, ink, footer, rule, link;
};

// The strip is that of the form skin.
constexpr Look kLooks[3] = {
    {0xFFF1E6, 0xEFCBB0, 0xB75F31, 0x825A3B, 0xFFFFFF, 0x000000, 0xFFF7F1, 0xF2CEB3, 0xB75F31},
    {0xF4F4F0, 0xBABABB, 0x4A4038, 0x807872, 0xFFFFFF, 0x000000, 0xF8F4F1, 0xBEBEBE, 0x917069},
    {0xCF953F, 0xCF953F, 0xFFFFFF, 0x594A35, 0xFFFFFF, 0x000000, 0xFEF9F4, 0xDBC9BA, 0xB75F31},
};

Look look_of(ENUM_THEME theme) {
  if (high_contrast())
    return {GetSysColor(COLOR_ACTIVECAPTION), GetSysColor(COLOR_ACTIVECAPTION),
            GetSysColor(COLOR_CAPTIONTEXT),   GetSysColor(COLOR_WINDOWFRAME),
            GetSysColor(COLOR_WINDOW),        GetSysColor(COLOR_WINDOWTEXT),
            GetSysColor(COLOR_WINDOW),        GetSysColor(COLOR_WINDOWFRAME),
            GetSysColor(COLOR_HOTLIGHT)};
  return kLooks[theme >= Office_Blue && theme <= Windows_8 ? theme : Windows_8];
}

RECT to_rect(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

int text_width(HDC dc, const std::wstring& text) {
  SIZE size{};
  GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

constexpr size_t kLongest = 32000;  // characters shown; the system measures no more at a time

}  // namespace

HFONT MsgBoxWindow::font() const {
  return (*buttons_.front())->Font.handle();
}

void MsgBoxWindow::measure() {
  // The surface's own measures: a window's may differ by its smoothing of text.
  if (!surface_ && !surface_.resize(1, 1)) return;
  const HDC dc = surface_.dc();
  {
    const SelectedFont selected(dc, font());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    line_height_ = static_cast<int>(metrics.tmHeight) + scale_.line();
    const size_t length = std::min(request_.text.size(), kLongest);
    ends_.resize(length);
    SIZE size{};
    if (length > 0)
      GetTextExtentExPointW(dc, request_.text.c_str(), static_cast<int>(length), 0, nullptr,
                            ends_.data(), &size);
  }
}

void MsgBoxWindow::lay_out() {
  RECT owner{};
  if (owner_ == nullptr || !GetWindowRect(owner_, &owner)) GetWindowRect(window_, &owner);
  const RECT work = work_area(owner);
  msg_box::Content content;
  content.closes = escape_ != msg_box::kNone;
  content.picture = picture_.handle() != 0;
  content.line_height = line_height_;
  content.work_width = static_cast<int>(work.right - work.left);
  content.work_height = static_cast<int>(work.bottom - work.top);
  content.bar_width = GetSystemMetrics(SM_CXVSCROLL);
  content.right_to_left = request_.rules.right_to_left;
  content.details_open = details_open_;
  const std::wstring_view shown = std::wstring_view(request_.text).substr(0, ends_.size());
  lines_ = break_lines(shown, ends_, scale_(msg_box::kTextRoom));
  content.text_height = static_cast<int>(lines_.size()) * line_height_;
  for (const TextLine& line : lines_) content.text_width = std::max(content.text_width, line.width);
  content.text_width = std::min(content.text_width, scale_(msg_box::kTextRoom));
  {
    const HDC dc = surface_.dc();
    const SelectedFont selected(dc, font());
    content.title_width = text_width(dc, request_.title);
    const size_t chosen = request_.rules.chosen;
    for (size_t i = 0; i < captions_.size(); ++i) {
      std::wstring caption = captions_[i];
      // Room for the count from the beginning: the box does not change its size.
      if (i == chosen && request_.time_out > 0)
        caption = msg_box::counting_caption(caption, static_cast<int32_t>(request_.time_out));
      content.caption_widths.push_back(text_width(dc, without_access_marks(caption)));
    }
    if (details_button_)
      content.details_width =
          text_width(dc, without_access_marks((*details_button_)->Caption.get()));
    if (check_)
      content.check_width =
          text_width(dc, without_access_marks(request_.check_caption)) + scale_(24);
  }
  places_ = msg_box::arrange(content, scale_);
}

void MsgBoxWindow::place_parts() {
  for (size_t i = 0; i < buttons_.size(); ++i)
    buttons_[i]->place(window_, to_rect(places_.buttons[i]));
  if (details_button_) details_button_->place(window_, to_rect(places_.details_button));
  if (check_) check_->place(window_, to_rect(places_.check));
  if (details_ != nullptr) {
    const PixelRect& r = places_.details;
    MoveWindow(details_, r.left, r.top, r.right - r.left, r.bottom - r.top, FALSE);
    ShowWindow(details_, details_open_ ? SW_SHOWNA : SW_HIDE);
  }
  if (places_.bar.empty()) return;
  const PixelRect& r = places_.bar;
  if (bar_ == nullptr)
    bar_ = CreateWindowExW(0, L"SCROLLBAR", nullptr, WS_CHILD | WS_VISIBLE | SBS_VERT, r.left,
                           r.top, r.right - r.left, r.bottom - r.top, window_, nullptr,
                           module_instance(), nullptr);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = std::max(static_cast<int>(lines_.size()) * line_height_ - 1, 0);
  info.nPage = static_cast<UINT>(places_.text.bottom - places_.text.top);
  info.nPos = scroll_;
  SetScrollInfo(bar_, SB_CTL, &info, TRUE);
}

void MsgBoxWindow::scroll_to(int top) {
  const int view = places_.text.bottom - places_.text.top;
  const int most = std::max(static_cast<int>(lines_.size()) * line_height_ - view, 0);
  top = std::clamp(top, 0, most);
  if (top == scroll_) return;
  scroll_ = top;
  if (bar_ != nullptr) SetScrollPos(bar_, SB_CTL, top, TRUE);
  draw();
  const RECT changed = to_rect(places_.text);
  InvalidateRect(window_, &changed, FALSE);
}

void MsgBoxWindow::scroll_by_bar(int code) {
  const int page = places_.text.bottom - places_.text.top - line_height_;
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (code) {
    case SB_LINEUP:
      return scroll_to(scroll_ - line_height_);
    case SB_LINEDOWN:
      return scroll_to(scroll_ + line_height_);
    case SB_PAGEUP:
      return scroll_to(scroll_ - page);
    case SB_PAGEDOWN:
      return scroll_to(scroll_ + page);
    case SB_TOP:
      return scroll_to(0);
    case SB_BOTTOM:
      return scroll_to(static_cast<int>(lines_.size()) * line_height_);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      if (bar_ != nullptr && GetScrollInfo(bar_, SB_CTL, &info)) scroll_to(info.nTrackPos);
      return;
    default:
      return;
  }
}

void MsgBoxWindow::draw() {
  if (window_ == nullptr || !surface_.resize(places_.width, places_.height)) return;
  const Look look = look_of(request_.theme);
  surface_.clear(look.paper);
  draw_strip();
  const PixelView view = surface_.pixels();
  const PixelRect& footer = places_.footer;
  fill_rect(view, footer, look.footer);
  fill_rect(view, {0, footer.top, places_.width, footer.top + scale_.line()}, look.rule);
  draw_text(places_.text);
  const PixelRect& at = places_.picture;
  if (!at.empty())
    render_to_dc(picture_, surface_.dc(), at.left, at.top, at.right - at.left, at.bottom - at.top);
  DrawFrame(surface_.pixels(), look.border, 0, 0, places_.width, places_.height);
}

void MsgBoxWindow::draw_strip() {
  const Look look = look_of(request_.theme);
  const PixelView view = surface_.pixels();
  fill_system_gradient(view, places_.strip, look.strip1, look.strip2,
                       GradientDirection::TopToBottom);
  const HDC dc = surface_.dc();
  {
    const SelectedFont selected(dc, font());
    SetTextColor(dc, look.title);
    RECT place = to_rect(places_.title);
    UINT flags = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;
    if (request_.rules.right_to_left) flags |= DT_RIGHT | DT_RTLREADING;
    DrawTextUnicode(dc, request_.title, -1, &place, flags);
  }
  const PixelRect& close = places_.close;
  if (close.empty()) return;
  // A cross of two slanting bars.
  const int half = scale_(4), thick = scale_.line(2);
  const int x = (close.left + close.right) / 2, y = (close.top + close.bottom) / 2;
  for (int i = -half; i <= half; ++i) {
    fill_rect(view, {x + i - thick / 2, y + i, x + i - thick / 2 + thick, y + i + 1}, look.title);
    fill_rect(view, {x - i - thick / 2, y + i, x - i - thick / 2 + thick, y + i + 1}, look.title);
  }
}

RECT MsgBoxWindow::link_rect(const msg_box::Link& link, const TextLine& line, int top) const {
  const size_t start = std::max(link.start, line.start);
  const size_t end = std::min(link.start + link.length, line.start + line.length);
  if (start >= end || request_.rules.right_to_left || request_.rules.align_right) return {};
  const int left = places_.text.left + part_width(ends_, line.start, start - line.start);
  return {left, top, left + part_width(ends_, start, end - start), top + line_height_};
}

// Each stretch of a line at its measured place, so that an address lies where it is pressed.
void MsgBoxWindow::draw_line(const TextLine& line, int top) {
  const HDC dc = surface_.dc();
  const Look look = look_of(request_.theme);
  const bool right = request_.rules.right_to_left != request_.rules.align_right;
  const UINT flags = DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP | (right ? DT_RIGHT : DT_LEFT) |
                     (request_.rules.right_to_left ? DT_RTLREADING : 0u);
  const auto stretch = [&](size_t start, size_t end, bool link) {
    if (start >= end) return;
    const SelectedFont selected(dc, font(), link);
    SetTextColor(dc, link ? look.link : look.ink);
    const int left =
        places_.text.left + (right ? 0 : part_width(ends_, line.start, start - line.start));
    RECT place{left, top, places_.text.right, top + line_height_};
    DrawTextUnicode(dc, std::wstring_view(request_.text).substr(start, end - start), -1, &place,
                    flags);
  };
  const size_t line_end = line.start + line.length;
  size_t done = line.start;
  for (const msg_box::Link& link : links_) {
    const RECT place = link_rect(link, line, top);
    if (IsRectEmpty(&place)) continue;
    const size_t start = std::max(link.start, line.start);
    stretch(done, start, false);
    done = std::min(link.start + link.length, line_end);
    stretch(start, done, true);
  }
  stretch(done, line_end, false);
}

void MsgBoxWindow::draw_text(const PixelRect& view) {
  const int saved = SaveDC(surface_.dc());
  IntersectClipRect(surface_.dc(), view.left, view.top, view.right, view.bottom);
  int top = view.top - scroll_;
  for (const TextLine& line : lines_) {
    if (top + line_height_ > view.top && top < view.bottom) draw_line(line, top);
    top += line_height_;
  }
  RestoreDC(surface_.dc(), saved);
}

int MsgBoxWindow::link_at(POINT point) const {
  const PixelRect& view = places_.text;
  if (point.x < view.left || point.x >= view.right || point.y < view.top || point.y >= view.bottom)
    return -1;
  int top = view.top - scroll_;
  for (const TextLine& line : lines_) {
    for (size_t i = 0; i < links_.size(); ++i) {
      const RECT place = link_rect(links_[i], line, top);
      if (PtInRect(&place, point)) return static_cast<int>(i);
    }
    top += line_height_;
  }
  return -1;
}

void MsgBoxWindow::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window_, &paint);
  if (dc == nullptr) return;
  const RECT& area = paint.rcPaint;
  if (surface_)
    BitBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, surface_.dc(),
           area.left, area.top, SRCCOPY);
  EndPaint(window_, &paint);
}

LRESULT MsgBoxWindow::hit_test(POINT screen) const {
  ScreenToClient(window_, &screen);
  const auto inside = [screen](const PixelRect& r) {
    return screen.x >= r.left && screen.x < r.right && screen.y >= r.top && screen.y < r.bottom;
  };
  if (inside(places_.close)) return HTCLOSE;
  return inside(places_.strip) ? HTCAPTION : HTCLIENT;
}

}  // namespace kestrelon
