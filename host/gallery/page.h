// A page of the gallery, laid out from the top down: headings, labels, controls, and pictures of
// states that only last while a mouse button or a pointer rests on a control.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "host/form.h"
#include "host/gallery/picture.h"

namespace kestrelon::host {

/// Looks shared by all pages.
namespace look {
constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(31, 45, 61);
constexpr COLORREF kQuiet = RGB(96, 110, 126);
constexpr COLORREF kRule = RGB(216, 222, 230);
constexpr COLORREF kAccent = RGB(43, 108, 176);
constexpr COLORREF kSide = RGB(243, 245, 248);
constexpr int kMargin = 24;
constexpr int kPageWidth = 840;
}  // namespace look

enum class TextStyle { kTitle, kSubtitle, kSection, kLabel, kSmall, kCentred };
/// `align` is added to the style's own flags of DrawText.
void draw_text(HDC hdc, const RECT& place, const std::wstring& text, TextStyle style,
               UINT align = DT_LEFT);

/// What a control goes through when its picture is taken.
enum class Situation { kAway, kOver, kPressed, kFocused };

using Prepare = std::function<void(IDispatch*)>;

class Page {
 public:
  Page(Form& form, ContainerWindow& box) : form_(form), box_(box) {}

  Form& form() const { return form_; }
  // What the page lies on.
  ContainerWindow& box() const { return box_; }
  /// Where the next thing goes, in pixels from the top.
  int y() const { return y_; }
  void skip(int pixels) { y_ += pixels; }

  void title(const std::wstring& text, const std::wstring& subtitle);
  void section(const std::wstring& text);
  void text(const RECT& place, const std::wstring& text, TextStyle style = TextStyle::kLabel);
  void picture(int x, int y, const Picture& picture, int scale = 1);
  void paint(const RECT& place, std::function<void(HDC, const RECT&)> painter);
  /// A live control.
  ComPtr<ControlSite> control(const std::wstring& prog_id, const RECT& place,
                              const Prepare& prepare = nullptr);

  /// The pixels of a control in a state that real mouse input brought about.
  Picture snapshot(const std::wstring& prog_id, int width, int height, Situation situation,
                   const Prepare& prepare) const;

  /// One row a variant; for each theme the states normal, over, pressed and disabled side by side.
  struct Variation {
    std::wstring label;
    Prepare prepare;
  };
  void state_table(const std::wstring& prog_id, int cell_width, int cell_height,
                   const std::vector<Variation>& rows);

 private:
  Form& form_;
  ContainerWindow& box_;
  int y_ = look::kMargin - 8;
};

struct PageEntry {
  const wchar_t* name;  // of the control, the file and the command line
  const wchar_t* group;
  void (*build)(Page& page);
};

/// All pages, in the order of the list.
const std::vector<PageEntry>& pages();

/// Makes controls for every form of the gallery: from the library beside the program when it is
/// there, registered or not, else by the registry.
ComPtr<IUnknown> create_control(const std::wstring& prog_id);
/// A bitmap resource of the library; empty when it is not loaded from a file.
Picture library_bitmap(int id);

}  // namespace kestrelon::host
