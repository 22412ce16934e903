#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class GroupBoxTest : public ControlTest {
 protected:
  ComPtr<ControlSite> group(const wchar_t* caption = L"&Grupo",
                            const RECT& bounds = {20, 20, 220, 140},
                            ContainerWindow* box = nullptr) {
    const auto site = inside(L"USGroupBox", bounds, box);
    put(*site, L"Caption", Variant(caption));
    return site;
  }
  ComPtr<ControlSite> inside(const std::wstring& class_name, const RECT& bounds,
                             ContainerWindow* box) {
    const auto empty = make_com<PropertyBag>();
    ControlState state;
    state.bag = empty.get();
    return form_.add_control(L"Kestrelon2012." + class_name, L"", bounds, box, state);
  }
  ComPtr<ControlSite> option(ControlSite& in, int top) {
    return inside(L"USOptionButton", RECT{10, top, 110, top + 20}, in.box());
  }
  void show() {
    bring_up(form_);
    mouse_away();
  }
  void click(HWND window, int x, int y) {
    part_clicks();
    mouse_click(window, x, y);
  }
  static bool on(ControlSite& site) { return to_bool(get(site, L"Value")); }
  static long height(ControlSite& site) { return site.bounds().bottom - site.bounds().top; }
  bool focus_comes_to(ControlSite& site) {
    return pump_until([&] { return GetFocus() == site.window(); }, 1000);
  }
};

TEST_F(GroupBoxTest, HoldsAGroupOfOptionsOfItsOwn) {
  const auto outer = group();
  const auto first = option(*outer, 30), second = option(*outer, 52);
  const auto nested = group(L"&Dentro", {100, 30, 190, 110}, outer->box());
  const auto other = option(*nested, 30);
  show();
  EXPECT_EQ(GetParent(first->window()), outer->window());
  EXPECT_EQ(GetParent(other->window()), nested->window());
  click(first->window(), 10, 10);
  click(other->window(), 10, 10);
  EXPECT_TRUE(on(*first));
  EXPECT_TRUE(on(*other));
  click(second->window(), 10, 10);
  EXPECT_FALSE(on(*first));
  EXPECT_TRUE(on(*second));
  EXPECT_TRUE(on(*other));
}

TEST_F(GroupBoxTest, LeadsTheAccessKeyToItsFirstControl) {
  const auto before = place(L"USCheckBox", RECT{20, 150, 120, 170});
  const auto outer = group();
  const auto first = option(*outer, 30), second = option(*outer, 52);
  show();
  before->take_focus();
  ASSERT_TRUE(focus_comes_to(*before));
  key_chord(VK_MENU, 'G');
  EXPECT_TRUE(focus_comes_to(*first));
  put(*first, L"Enabled", Variant(false));
  before->take_focus();
  ASSERT_TRUE(focus_comes_to(*before));
  key_chord(VK_MENU, 'G');
  EXPECT_TRUE(focus_comes_to(*second));
}

TEST_F(GroupBoxTest, BarsInputWithoutTouchingTheEnabledOfWhatStandsOnIt) {
  const auto outer = group();
  const auto first = option(*outer, 30), off = option(*outer, 52), third = option(*outer, 74);
  put(*off, L"Enabled", Variant(false));
  put(*outer, L"CheckBoxMode", Variant(true));
  show();
  put(*outer, L"Value", Variant(false));
  EXPECT_FALSE(IsWindowEnabled(first->window()));
  EXPECT_TRUE(to_bool(get(*first, L"Enabled")));
  EXPECT_TRUE(IsWindowEnabled(outer->window()));
  // Programs go on setting the property; it counts when the bar goes.
  put(*off, L"Enabled", Variant(true));
  put(*third, L"Enabled", Variant(false));
  EXPECT_FALSE(IsWindowEnabled(off->window()));
  const auto late = option(*outer, 96);
  pump_for(20);
  EXPECT_FALSE(IsWindowEnabled(late->window()));
  click(outer->window(), 14, 11);  // the box in the header
  EXPECT_TRUE(on(*outer));
  EXPECT_TRUE(IsWindowEnabled(first->window()));
  EXPECT_TRUE(IsWindowEnabled(off->window()));
  EXPECT_FALSE(IsWindowEnabled(third->window()));
  EXPECT_TRUE(IsWindowEnabled(late->window()));
  put(*outer, L"Enabled", Variant(false));
  EXPECT_FALSE(IsWindowEnabled(outer->window()));
  EXPECT_TRUE(to_bool(get(*first, L"Enabled")));
}

TEST_F(GroupBoxTest, KeepsInputFromLabelsWithoutWindows) {
  const auto outer = group();
  put(*outer, L"CheckBoxMode", Variant(true));
  const auto label = inside(L"USLabel", RECT{10, 40, 110, 60}, outer->box());
  put(*label, L"Caption", Variant(L"Texto"));
  show();
  ASSERT_EQ(label->window(), nullptr);
  take_log(*label);
  click(outer->window(), 30, 50);
  EXPECT_EQ(take_names(*label).back(), L"Click");
  put(*outer, L"Value", Variant(false));
  mouse_away();
  take_log(*label);
  click(outer->window(), 30, 50);
  EXPECT_EQ(take_names(*label), Names{});
}

TEST_F(GroupBoxTest, FoldsToItsHeaderAndComesBackToItsHeight) {
  const auto outer = group();
  put(*outer, L"Collapsible", Variant(true));
  const auto child = option(*outer, 30);
  show();
  take_log(*outer);
  click(outer->window(), 190, 11);
  EXPECT_EQ(height(*outer), 22);
  EXPECT_EQ(number(*outer, L"ExpandedHeight"), 120);
  EXPECT_FALSE(IsWindowEnabled(child->window()));
  const Names names = take_names(*outer);
  const auto fold = std::find(names.begin(), names.end(), L"BeforeCollapse");
  ASSERT_NE(fold, names.end());
  EXPECT_EQ(*(fold + 1), L"AfterCollapse");

  // A form saved folded and read again opens to the same height.
  const auto bag = make_com<PropertyBag>();
  query<IPersistPropertyBag>(outer->control())->Save(bag.get(), TRUE, FALSE);
  const auto copy = place(L"USGroupBox", RECT{240, 20, 440, 42}, bag.get());
  EXPECT_TRUE(to_bool(get(*copy, L"Collapsed")));
  put(*copy, L"Collapsed", Variant(false));
  EXPECT_EQ(height(*copy), 120);

  outer->on_event([&](const std::wstring& name, DISPPARAMS& parameters) {
    if (name == L"BeforeCollapse") *V_BOOLREF(&parameters.rgvarg[0]) = VARIANT_TRUE;
  });
  put(*outer, L"Collapsed", Variant(false));
  EXPECT_EQ(height(*outer), 22);
  outer->on_event({});
  put(*outer, L"Collapsed", Variant(false));
  EXPECT_EQ(height(*outer), 120);
  EXPECT_TRUE(IsWindowEnabled(child->window()));
}

TEST_F(GroupBoxTest, TakesSpaceAndEnterForBoxAndArrowOnly) {
  const auto outer = group();
  put(*outer, L"CheckBoxMode", Variant(true));
  put(*outer, L"Collapsible", Variant(true));
  show();
  outer->take_focus();
  ASSERT_TRUE(focus_comes_to(*outer));
  key_press(VK_SPACE);
  EXPECT_FALSE(on(*outer));
  EXPECT_EQ(height(*outer), 120);
  key_press(VK_RETURN);
  EXPECT_EQ(height(*outer), 22);
  key_press(VK_RETURN);
  put(*outer, L"CheckBoxMode", Variant(false));
  key_press(VK_SPACE);
  EXPECT_EQ(height(*outer), 22);
  EXPECT_FALSE(on(*outer));
}

TEST_F(GroupBoxTest, ShowsTheFormThroughItsCornersAndItsBody) {
  const auto outer = group(L"");
  const Picture round = draw_control(*outer, 200, 120);
  EXPECT_EQ(round.at(0, 0), 0xFF00FFu);
  EXPECT_EQ(round.at(199, 119), 0xFF00FFu);
  EXPECT_NE(round.at(100, 80), 0xFF00FFu);
  EXPECT_EQ(round.at(100, 0), 0xBAC9DBu);
  put(*outer, L"RoundCorners", Variant(false));
  put(*outer, L"UseGradient", Variant(false));
  const Picture clear = draw_control(*outer, 200, 120);
  for (const auto& [x, y] : {std::pair{0, 0}, {199, 0}, {0, 119}, {199, 119}, {100, 119}, {0, 60}})
    EXPECT_EQ(clear.at(x, y), 0xBAC9DBu) << x << ", " << y;
  EXPECT_EQ(clear.at(100, 80), 0xFF00FFu);
  EXPECT_NE(clear.at(100, 10), 0xFF00FFu);
  put(*outer, L"HeaderHeight", Variant(-50L));
  EXPECT_NE(draw_control(*outer, 200, 120).at(100, 10), 0xFF00FFu);
  put(*outer, L"ShowHeader", Variant(false));
  EXPECT_EQ(draw_control(*outer, 200, 120).at(100, 10), 0xFF00FFu);
}

TEST_F(GroupBoxTest, SurvivesHandlersThatRemoveIt) {
  for (const wchar_t* event :
       {L"BeforeCollapse", L"AfterCollapse", L"ValueChanged", L"MouseDown"}) {
    auto outer = group();
    option(*outer, 30);
    put(*outer, L"CheckBoxMode", Variant(true));
    put(*outer, L"Collapsible", Variant(true));
    form_.show();
    mouse_away();
    bool removed = false;
    outer->on_event([&](const std::wstring& name, DISPPARAMS&) {
      if (name != event || removed) return;
      removed = true;
      form_.remove(*outer);
    });
    click(outer->window(), 14, 11);
    if (!removed) click(outer->window(), 190, 11);
    EXPECT_TRUE(removed) << std::string(event, event + wcslen(event));
    outer.reset();
    pump_for(50);
  }
}

}  // namespace
}  // namespace kestrelon::host
