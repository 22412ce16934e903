// A USFlexGrid on a form of our own container.
#pragma once

#include <gmock/gmock.h>

#include "host/put_indexed.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {

class FlexGridTest : public ControlTest {
 public:  // tables of cases call it
  using Names = std::vector<std::wstring>;
  static constexpr int kWidth = 300, kHeight = 200;
  static constexpr long kString = 0, kNumeric = 1, kDate = 2, kBoolean = 3, kButton = 6;

  FlexGridTest() : site_(place(L"USFlexGrid", RECT{20, 20, 20 + kWidth, 20 + kHeight})) {}

  void show() {
    bring_up(form_);
    mouse_away();
    part_clicks();
    take_log(*site_);
  }
  IDispatch* grid() { return site_->control_dispatch().get(); }
  HWND window() { return site_->window(); }
  Variant call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(grid(), name, std::move(arguments));
  }
  void set(const wchar_t* name, const Variant& value) { put(*site_, name, value); }
  bool flag(const wchar_t* name) { return to_bool(get(*site_, name)); }
  long count(const wchar_t* name) { return number(*site_, name); }
  /// A property with arguments, the value last.
  void put_indexed(const wchar_t* name, std::vector<Variant> arguments) {
    const Variant value = std::move(arguments.back());
    arguments.pop_back();
    host::put_indexed(grid(), name, std::move(arguments), value);
  }
  long column(const wchar_t* heading, long type = kString, const wchar_t* filter = L"") {
    return to_long(call(L"AddColumn", {Variant(heading), Variant(1200.0), Variant(4L),
                                       Variant(type), Variant(L""), Variant(filter)}));
  }
  void row(const wchar_t* texts) { call(L"AddItem", {Variant(texts)}); }
  std::wstring text(long r, long c) {
    return to_text(get_property(grid(), L"CellText", {Variant(r), Variant(c)}));
  }
  bool selected(long r) { return to_bool(get_property(grid(), L"RowSelected", {Variant(r)})); }
  /// Two columns, names and amounts, three rows.
  void fill() {
    column(L"Nome");
    column(L"Valor", kNumeric);
    row(L"Bia\t20");
    row(L"Ana\t3");
    row(L"Caio\t100");
  }
  /// Ready to be edited at the first cell.
  void editable() {
    fill();
    set(L"AllowEdit", Variant(true));
    show();
    focus();
    call(L"RowColSet", {Variant(0L), Variant(0L)});
    take_log(*site_);
  }
  void focus() { SetFocus(window()); }
  bool editing() { return flag(L"EditPending"); }
  /// A point in a cell of the first page; columns are 80 pixels wide.
  POINT cell(long r, long c) { return {40 + 80 * c, header_height() + row_height() * r + 6}; }
  int header_height() { return top_of(0); }
  int row_height() {
    return static_cast<int>(to_long(get_property(grid(), L"RowHeight", {Variant(0L)})));
  }
  /// The first pixel line of a row in view, by the cell that the mouse is told to be over.
  int top_of(long r) {
    for (int y = 1; y < kHeight; ++y)
      if (row_at(y) == r) return y;
    return -1;
  }
  long row_at(int y) {
    SendMessageW(window(), WM_MOUSEMOVE, 0, MAKELPARAM(40, y));
    return count(L"MouseRow");
  }
  void click_cell(long r, long c) {
    const POINT at = cell(r, c);
    part_clicks();
    mouse_click(window(), at.x, at.y);
  }
  HWND box() { return FindWindowExW(window(), nullptr, L"Edit", nullptr); }
  std::wstring box_text() {
    wchar_t out[200] = {};
    GetWindowTextW(box(), out, 200);
    return out;
  }
  /// Nothing in the store contradicts anything else.
  bool sound() {
    return SendMessageW(window(), RegisterWindowMessageW(L"Kestrelon2012.GridFault"), 0, 0) == 1;
  }

  ComPtr<ControlSite> site_;
};

}  // namespace kestrelon::host
