// gallery.exe: a page for every control. Without arguments it shows a window; `--shot DIR` writes
// one PNG a page, `--page NAME` limits that or opens the window at a page, `--list` names the
// pages.
#include <windows.h>
//
#include <ole2.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <memory>

#include "host/gallery/library.h"
#include "host/gallery/page.h"
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"

namespace kestrelon::host {
namespace {

constexpr int kSideWidth = 128;
constexpr int kWholeWidth = look::kPageWidth + 2 * look::kMargin;
constexpr int kListId = 100;
constexpr int kRowHeight = 28;
constexpr int kScrollStep = 40;

struct Options {
  std::wstring shot_folder;
  std::wstring page;
  bool list = false;
  bool wrong = false;
};

Options parse(int argc, wchar_t** argv) {
  Options out;
  for (int i = 1; i < argc; ++i) {
    const std::wstring word = argv[i];
    const bool more = i + 1 < argc;
    if (word == L"--shot" && more)
      out.shot_folder = argv[++i];
    else if (word == L"--page" && more)
      out.page = argv[++i];
    else if (word == L"--list")
      out.list = true;
    else
      out.wrong = true;
  }
  return out;
}

bool same_name(const std::wstring& a, const std::wstring& b) {
  return lower_case(a) == lower_case(b);
}

// Takes the picture of a form as it stands without pointer and focus.
void shoot_form(Form& form, const std::wstring& path) {
  for (const auto& item : form.all_items()) item->tab_stop = false;
  bring_up(form);
  mouse_away();
  pump_for(100);
  save_png(client_picture(form.hwnd()), path);
}

int shoot_pages(const Options& options) {
  int taken = 0;
  quicken_mouse_leave();
  for (const PageEntry& entry : pages()) {
    if (!options.page.empty() && !same_name(options.page, entry.name)) continue;
    Form form({.name = L"Page",
               .caption = entry.name,
               .width = kWholeWidth,
               .height = 700,
               .border = FormBorder::kNone});
    form.create_object = create_control;
    form.set_ambient_back_color(look::kPaper);
    Page page(form, form);
    entry.build(page);
    form.set_client_size(kWholeWidth, page.y() + look::kMargin);
    shoot_form(form, options.shot_folder + L"\\" + entry.name + L".png");
    ++taken;
  }
  return taken > 0 ? 0 : 1;
}

// The window with the list of pages at its left and one page at its right.
class GalleryWindow {
 public:
  GalleryWindow()
      : form_({.name = L"Gallery",
               .caption = L"Kestrelon",
               .width = kSideWidth + kWholeWidth,
               .height = 700}) {
    form_.create_object = create_control;
    form_.set_ambient_back_color(look::kPaper);
    form_.message_filter = [this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      return on_message(message, wparam, lparam, result);
    };
    RECT client = {};
    GetClientRect(form_.hwnd(), &client);
    list_ = CreateWindowExW(0, L"LISTBOX", L"",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | LBS_NOTIFY | LBS_HASSTRINGS |
                                LBS_OWNERDRAWFIXED | LBS_NOINTEGRALHEIGHT,
                            0, 0, kSideWidth, client.bottom, form_.hwnd(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(kListId)),
                            GetModuleHandleW(nullptr), nullptr);
    SendMessageW(list_, LB_SETITEMHEIGHT, 0, kRowHeight);
    for (size_t i = 0; i < pages().size(); ++i) {
      const PageEntry& entry = pages()[i];
      if (i == 0 || wcscmp(entry.group, pages()[i - 1].group) != 0)
        rows_.push_back({entry.group, nullptr});
      rows_.push_back({entry.name, &entry});
    }
    for (const Row& row : rows_)
      SendMessageW(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.text));
  }

  void open(const std::wstring& name) {
    int index = 1;  // the first page, below its heading
    for (size_t i = 0; i < rows_.size(); ++i)
      if (rows_[i].page && same_name(name, rows_[i].text)) index = static_cast<int>(i);
    select(index);
  }

  Form& form() { return form_; }

  int run() {
    form_.show();
    return run_message_loop();
  }

 private:
  // A page, or the heading of a group of pages.
  struct Row {
    const wchar_t* text;
    const PageEntry* page;
  };

  // Headings are passed over in the direction of the choice.
  void select(int index) {
    const int last = static_cast<int>(rows_.size()) - 1;
    if (index < 0 || index > last) return;
    if (!rows_[static_cast<size_t>(index)].page) index += index < selected_ && index > 0 ? -1 : 1;
    SendMessageW(list_, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    if (index == selected_) return;
    selected_ = index;
    show_page(*rows_[static_cast<size_t>(index)].page);
  }

  void show_page(const PageEntry& entry) {
    if (box_) form_.remove(*box_.get());
    RECT client = {};
    GetClientRect(form_.hwnd(), &client);
    box_ = form_.add_frame(L"PageBox",
                           make_rect(kSideWidth, 0, client.right - kSideWidth, client.bottom));
    box_->set_border(false);
    offset_ = 0;
    POINT pointer = {};
    GetCursorPos(&pointer);
    Page page(form_, *box_.get());
    entry.build(page);
    page_height_ = page.y() + look::kMargin;
    place_page();
    // The pictures of states borrowed the pointer.
    SetCursorPos(pointer.x, pointer.y);
    SetForegroundWindow(form_.hwnd());
  }

  // The box has the page's whole height; the window's scroll bar moves it.
  void place_page() {
    RECT client = {};
    GetClientRect(form_.hwnd(), &client);
    SCROLLINFO info = {sizeof info,
                       SIF_RANGE | SIF_PAGE | SIF_POS,
                       0,
                       page_height_ - 1,
                       static_cast<UINT>(client.bottom),
                       offset_,
                       0};
    SetScrollInfo(form_.hwnd(), SB_VERT, &info, TRUE);
    // Showing or hiding the bar changed the width.
    GetClientRect(form_.hwnd(), &client);
    offset_ = std::clamp(offset_, 0, std::max<int>(0, page_height_ - client.bottom));
    box_->move(make_rect(kSideWidth, -offset_, client.right - kSideWidth,
                         std::max<int>(page_height_, client.bottom)));
  }

  void scroll(WORD code) {
    SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(form_.hwnd(), SB_VERT, &info);
    const int page = static_cast<int>(info.nPage);
    switch (code) {
      case SB_LINEUP:
        offset_ -= kScrollStep;
        break;
      case SB_LINEDOWN:
        offset_ += kScrollStep;
        break;
      case SB_PAGEUP:
        offset_ -= page;
        break;
      case SB_PAGEDOWN:
        offset_ += page;
        break;
      case SB_THUMBTRACK:
      case SB_THUMBPOSITION:
        offset_ = info.nTrackPos;
        break;
      default:
        return;
    }
    offset_ = std::clamp(offset_, 0, std::max(0, page_height_ - page));
    if (box_) place_page();
  }

  void draw_row(const DRAWITEMSTRUCT& row) const {
    if (row.itemID >= rows_.size()) return;
    const Row& entry = rows_[row.itemID];
    const bool selected = (row.itemState & ODS_SELECTED) != 0;
    SetBkColor(row.hDC, selected ? look::kPaper : look::kSide);
    ExtTextOutW(row.hDC, 0, 0, ETO_OPAQUE, &row.rcItem, nullptr, 0, nullptr);
    if (selected) {
      RECT mark = row.rcItem;
      mark.right = mark.left + 4;
      SetBkColor(row.hDC, look::kAccent);
      ExtTextOutW(row.hDC, 0, 0, ETO_OPAQUE, &mark, nullptr, 0, nullptr);
    }
    RECT place = row.rcItem;
    place.left += 12;
    if (!entry.page) place.top += kRowHeight / 4;
    draw_text(row.hDC, place, entry.text, entry.page ? TextStyle::kLabel : TextStyle::kSmall);
  }

  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    switch (message) {
      case WM_COMMAND:
        if (LOWORD(wparam) != kListId || HIWORD(wparam) != LBN_SELCHANGE) return false;
        select(static_cast<int>(SendMessageW(list_, LB_GETCURSEL, 0, 0)));
        return true;
      case WM_DRAWITEM:
        draw_row(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
        result = TRUE;
        return true;
      case WM_CTLCOLORLISTBOX:
        result = reinterpret_cast<LRESULT>(side_brush_.get());
        return true;
      case WM_SIZE:
        if (list_) MoveWindow(list_, 0, 0, kSideWidth, HIWORD(lparam), TRUE);
        if (box_) place_page();
        return false;
      case WM_VSCROLL:
        scroll(LOWORD(wparam));
        return true;
      case WM_MOUSEWHEEL:
        scroll(GET_WHEEL_DELTA_WPARAM(wparam) > 0 ? SB_LINEUP : SB_LINEDOWN);
        return true;
      case WM_DESTROY:
        PostQuitMessage(0);
        return false;
      default:
        return false;
    }
  }

  struct BrushDeleter {
    void operator()(HBRUSH brush) const { DeleteObject(brush); }
  };
  std::unique_ptr<HBRUSH__, BrushDeleter> side_brush_{CreateSolidBrush(look::kSide)};
  HWND list_ = nullptr;
  std::vector<Row> rows_;
  int selected_ = -1;
  int page_height_ = 0;
  int offset_ = 0;
  ComPtr<FrameBox> box_;
  Form form_;
};

int run(const Options& options) {
  open_library();
  const bool shooting = !options.shot_folder.empty();
  if (shooting && shoot_pages(options) != 0) return 1;
  if (shooting && !options.page.empty()) return 0;
  GalleryWindow window;
  window.open(options.page);
  if (shooting) {
    shoot_form(window.form(), options.shot_folder + L"\\gallery.png");
    return 0;
  }
  return window.run();
}

}  // namespace
}  // namespace kestrelon::host

int wmain(int argc, wchar_t** argv) {
  using namespace kestrelon::host;
  const Options options = parse(argc, argv);
  if (options.wrong) {
    std::fputs("gallery [--list] [--shot DIR] [--page NAME]\n", stderr);
    return 2;
  }
  if (options.list) {
    for (const PageEntry& entry : pages()) std::printf("%ls\n", entry.name);
    return 0;
  }
  OleInitialize(nullptr);
  int code = 1;
  try {
    code = run(options);
  } catch (const kestrelon::ComError& error) {
    std::fprintf(stderr, "gallery: %ls (%08lx)\n", error.description.c_str(),
                 static_cast<unsigned long>(error.hr));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "gallery: %s\n", error.what());
  }
  close_library();
  OleUninitialize();
  return code;
}
