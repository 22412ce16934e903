// Columns that are edited by a control of the form: ours, a foreign one, a bare window.
#include "tests/controls/us_flex_grid_fixture.h"

namespace kestrelon::host {
namespace {

using testing::Contains;
using testing::Not;

/// What a program may hand over: an edit box of the system with a few late-bound members, or with
/// none but its window.
class ForeignBox final : public LateBound {
 public:
  ForeignBox(HWND form, bool bare) : LateBound(L"ForeignBox") {
    window_ =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 40, 20, form, nullptr, nullptr, nullptr);
    property(L"hWnd", [this] { return Variant(static_cast<long>(HandleToLong(window_))); });
    if (bare) return;
    property(
        L"Text", [this] { return Variant(text()); },
        [this](const VARIANT& value) { SetWindowTextW(window_, to_text(value).c_str()); });
    property(
        L"Visible", [this] { return Variant(IsWindowVisible(window_) != FALSE); },
        [this](const VARIANT& value) { ShowWindow(window_, to_bool(value) ? SW_SHOW : SW_HIDE); });
    property(
        L"ForeColor", [] { return Variant(0L); },
        [](const VARIANT&) { throw ComError(E_FAIL, L"never"); });
  }
  ~ForeignBox() override {
    if (IsWindow(window_)) DestroyWindow(window_);
  }
  HWND window() const { return window_; }
  std::wstring text() const {
    wchar_t out[100] = {};
    GetWindowTextW(window_, out, 100);
    return out;
  }

 private:
  HWND window_;
};

enum class Kind { kTextBox, kForeign, kBare };

class FlexGridBoundTest : public FlexGridTest, public testing::WithParamInterface<Kind> {
 protected:
  FlexGridBoundTest() {
    editable();
    if (GetParam() == Kind::kTextBox) {
      text_box_ = place(L"USTextBox", RECT{20, 230, 120, 254});
      put(*text_box_, L"AutoSelect", Variant(true));
      put_property(text_box_->dispatch(), L"Visible", Variant(false));
      bind(text_box_->dispatch());
    } else {
      foreign_ = make_com<ForeignBox>(form_.hwnd(), GetParam() == Kind::kBare);
      bind(foreign_.get());
    }
    focus();
    take_log(*site_);
  }
  void bind(IDispatch* control, long bits = 15) {
    call(L"BindControl", {Variant(0L), Variant(control), Variant(bits)});
  }
  HWND editor() { return text_box_ ? text_box_->window() : foreign_->window(); }
  std::wstring editor_text() {
    return text_box_ ? to_text(get(*text_box_, L"Text")) : foreign_->text();
  }
  bool editor_has_focus() { return GetFocus() == editor() || IsChild(editor(), GetFocus()); }
  void select_all() { SendMessageW(GetFocus(), EM_SETSEL, 0, -1); }
  void begin() {
    key_press(VK_F2);
    ASSERT_TRUE(editing());
    ASSERT_TRUE(editor_has_focus());
    select_all();
  }

  ComPtr<ControlSite> text_box_;
  ComPtr<ForeignBox> foreign_;
};

TEST_P(FlexGridBoundTest, StandsOverItsCellAndGoesHome) {
  const HWND home = form_.hwnd();
  begin();
  EXPECT_EQ(editor_text(), L"Bia");
  EXPECT_EQ(GetParent(editor()), window());
  EXPECT_TRUE(IsWindowVisible(editor()));
  RECT place{};
  GetWindowRect(editor(), &place);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_LE(place.left, 4);
  EXPECT_NEAR(place.right - place.left, 80, 3);
  EXPECT_NEAR(place.top, header_height(), 2);
  EXPECT_NEAR(place.bottom - place.top, row_height(), 2);
  key_press(VK_ESCAPE);
  EXPECT_FALSE(editing());
  EXPECT_FALSE(IsWindowVisible(editor()));
  EXPECT_TRUE(GetParent(editor()) == home || GetParent(editor()) == nullptr);
  EXPECT_EQ(GetFocus(), window());
  EXPECT_THAT(take_names(*site_), Not(Contains(L"AfterEdit")));
}

TEST_P(FlexGridBoundTest, KeysAndClicksCommitWhatWasTyped) {
  begin();
  type_text(L"Elza");
  key_press(VK_RETURN);
  EXPECT_FALSE(editing());
  EXPECT_EQ(text(0, 0), L"Elza");
  begin();
  type_text(L"Rute");
  key_press(VK_TAB);
  EXPECT_EQ(text(0, 0), L"Rute");
  EXPECT_EQ(count(L"Col"), 1);
  EXPECT_EQ(GetFocus(), window());
  call(L"RowColSet", {Variant(1L), Variant(0L)});
  begin();
  type_text(L"Noemi");
  click_cell(2, 1);
  EXPECT_EQ(text(1, 0), L"Noemi");
  EXPECT_EQ(count(L"Row"), 2);
  call(L"RowColSet", {Variant(1L), Variant(0L)});
  begin();
  type_text(L"Sara");
  const auto other = place(L"USButton", RECT{150, 240, 220, 264});
  other->take_focus();
  pump_for(30);
  EXPECT_EQ(text(1, 0), L"Sara");
  EXPECT_FALSE(editing());
  EXPECT_FALSE(IsWindowVisible(editor()));
}

TEST_P(FlexGridBoundTest, ATypedCharacterBeginsAndReplaces) {
  type_text(L"k");
  ASSERT_TRUE(editing());
  EXPECT_EQ(editor_text(), L"k");
  type_text(L"i");
  key_press(VK_RETURN);
  EXPECT_EQ(text(0, 0), L"ki");
}

TEST_P(FlexGridBoundTest, UntouchedWritesNothingAndRefusedStays) {
  begin();
  key_press(VK_RETURN);
  EXPECT_THAT(take_names(*site_), Not(Contains(L"AfterEdit")));
  site_->on_event([](const std::wstring& name, DISPPARAMS& params) {
    if (name == L"AfterEdit") set_event_argument(params, 3, Variant(true));
  });
  begin();
  type_text(L"ruim");
  key_press(VK_RETURN);
  EXPECT_TRUE(editing());
  EXPECT_TRUE(IsWindowVisible(editor()));
  EXPECT_EQ(editor_text(), L"ruim");
  key_press(VK_ESCAPE);
  EXPECT_EQ(text(0, 0), L"Bia");
}

TEST_P(FlexGridBoundTest, SurvivesTheEndOfEither) {
  begin();
  type_text(L"x");
  if (text_box_) {
    form_.remove(*text_box_);
  } else {
    DestroyWindow(foreign_->window());
  }
  pump_for(20);
  EXPECT_FALSE(editing());
  EXPECT_TRUE(sound());
}

TEST_P(FlexGridBoundTest, TheGridMayGoFirst) {
  begin();
  type_text(L"x");
  form_.remove(*site_);
  pump_for(20);
  EXPECT_TRUE(IsWindow(editor())) << "it went home in time";
}

TEST_P(FlexGridBoundTest, WithoutBitsItStaysWhereItStands) {
  bind(text_box_ ? text_box_->dispatch() : static_cast<IDispatch*>(foreign_.get()), 0);
  RECT before{}, after{};
  GetClientRect(editor(), &before);
  begin();
  GetClientRect(editor(), &after);
  EXPECT_TRUE(EqualRect(&before, &after));
  key_press(VK_ESCAPE);
}

std::string kind_name(const testing::TestParamInfo<Kind>& each) {
  static const char* const kNames[] = {"TextBox", "Foreign", "Bare"};
  return kNames[static_cast<int>(each.param)];
}

INSTANTIATE_TEST_SUITE_P(Kinds, FlexGridBoundTest,
                         testing::Values(Kind::kTextBox, Kind::kForeign, Kind::kBare), kind_name);

}  // namespace
}  // namespace kestrelon::host
