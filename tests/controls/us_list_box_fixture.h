// A USListBox on a form of our own container.
#pragma once

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {

class ListBoxTest : public ControlTest {
 protected:
  using Names = std::vector<std::wstring>;
  using Items = std::vector<long>;

  ListBoxTest() : site_(place(L"USListBox", RECT{20, 20, 180, 140})) {
    bring_up(form_);
    mouse_away();
    take_log(*site_);
  }

  IDispatch* list() { return site_->control_dispatch().get(); }
  HWND window() { return site_->window(); }
  Variant call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(list(), name, std::move(arguments));
  }
  long number(const wchar_t* name) { return ControlTest::number(*site_, name); }
  void put(const wchar_t* name, const Variant& value) { ControlTest::put(*site_, name, value); }
  /// A property of an item.
  Variant item(const wchar_t* name, long index) {
    return get_property(list(), name, {Variant(index)});
  }
  void put_item(const wchar_t* name, long index, Variant value) {
    const ComPtr<IDispatch> object = site_->control_dispatch();
    std::wstring member(name);
    LPOLESTR names = member.data();
    DISPID id = 0, put = DISPID_PROPERTYPUT;
    ASSERT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
    VARIANT arguments[] = {value, Variant(index)};
    DISPPARAMS parameters{arguments, &put, 2, 1};
    ASSERT_EQ(object->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr,
                             nullptr),
              S_OK);
  }
  std::wstring text(long index) { return to_text(item(L"List", index)); }
  Names texts() {
    Names out;
    for (long i = 0; i < number(L"ListCount"); ++i) out.push_back(text(i));
    return out;
  }
  Items selection() {
    Items out;
    for (long i = 0; i < number(L"ListCount"); ++i)
      if (to_bool(item(L"Selected", i))) out.push_back(i);
    return out;
  }
  void fill(const wchar_t* lines) { call(L"AddItems", {Variant(std::wstring_view(lines))}); }
  void fill_numbers(int count) {
    std::wstring lines;
    for (int i = 0; i < count; ++i) lines += L"Item " + std::to_wstring(i) + L"\n";
    fill(lines.c_str());
    pump_for(20);
  }
  /// The height of a row, found by where the next one begins.
  int row_height() {
    for (int y = 1; y < 100; ++y)
      if (item_at(y) != item_at(0)) return y;
    return 0;
  }
  long item_at(int y) {
    return to_long(call(L"HitTest", {Variant(60.0f), Variant(static_cast<float>(y))}));
  }
  int middle_of(long index) {
    const int height = row_height();
    return static_cast<int>(index - number(L"TopIndex")) * height + height / 2;
  }
  void click_item(long index) {
    part_clicks();
    mouse_click(window(), 60, middle_of(index));
  }
  void focus() {
    site_->take_focus();
    pump_for(20);
    take_log(*site_);
  }
  LRESULT repaints() {
    pump_for(30);
    return SendMessageW(window(), RegisterWindowMessageW(L"Kestrelon2012.FullRepaints"), 0, 0);
  }

  ComPtr<ControlSite> site_;
};

}  // namespace kestrelon::host
