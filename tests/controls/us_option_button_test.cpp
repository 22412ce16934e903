#include "controls/us_option_button/us_option_button_layout.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

class OptionButtonTest : public ControlTest {
 protected:
  ComPtr<ControlSite> option(int y, ContainerWindow* box = nullptr) {
    ControlState state;
    state.bag = bag_.get();
    return form_.add_control(L"Kestrelon2012.USOptionButton", L"", RECT{10, y, 150, y + 24}, box,
                             state);
  }
  static bool chosen(ControlSite& site) { return to_bool(get(site, L"Value")); }
  static void choose(ControlSite& site, bool value = true) { put(site, L"Value", Variant(value)); }

  ComPtr<PropertyBag> bag_ = make_com<PropertyBag>();
};

TEST_F(OptionButtonTest, ChoosesOneOfItsGroupByMouseAndTellsInOrder) {
  const auto first = option(10), second = option(40);
  bring_up(form_);
  choose(*first);
  mouse_away();
  take_log(*second);
  part_clicks();
  mouse_click(second->window(), 6, 12);
  EXPECT_EQ(take_names(*second), (Names{L"MouseEnter", L"MouseDown", L"MouseUp", L"Click"}));
  EXPECT_TRUE(chosen(*second));
  EXPECT_FALSE(chosen(*first));
  part_clicks();
  mouse_click(second->window(), 6, 12);  // again: stays chosen
  EXPECT_TRUE(chosen(*second));
}

TEST_F(OptionButtonTest, ChoosesWithSpaceAndAccessKey) {
  const auto first = option(10), second = option(40);
  put(*second, L"Caption", Variant(L"A &prazo"));
  bring_up(form_);
  first->take_focus();
  pump_for(20);
  key_press(VK_SPACE);
  EXPECT_TRUE(chosen(*first));
  key_chord(VK_MENU, 'P');
  EXPECT_TRUE(pump_until([&] { return chosen(*second); }, 500));
  EXPECT_FALSE(chosen(*first));
}

TEST_F(OptionButtonTest, GroupsByContainer) {
  const auto left = form_.add_frame(L"Frame1", RECT{200, 10, 380, 120});
  const auto right = form_.add_frame(L"Frame2", RECT{200, 130, 380, 240});
  const auto on_form = option(10), on_form_too = option(40);
  const auto in_left = option(10, left.get()), in_left_too = option(40, left.get());
  const auto in_right = option(10, right.get());
  bring_up(form_);
  for (const auto& site : {on_form, in_left, in_right}) choose(*site);
  EXPECT_TRUE(chosen(*on_form) && chosen(*in_left) && chosen(*in_right));
  choose(*in_left_too);
  EXPECT_FALSE(chosen(*in_left));
  EXPECT_TRUE(chosen(*on_form) && chosen(*in_right));
  choose(*on_form_too);
  EXPECT_FALSE(chosen(*on_form));
  EXPECT_TRUE(chosen(*in_left_too) && chosen(*in_right));
}

TEST_F(OptionButtonTest, ClearsItsGroupWhateverValueIsSet) {
  const auto first = option(10), second = option(40);
  bring_up(form_);
  choose(*first);
  choose(*second, false);
  EXPECT_FALSE(chosen(*first));
  EXPECT_FALSE(chosen(*second));
}

TEST_F(OptionButtonTest, ComesToAnEndWhenAllWereSavedAsChosen) {
  bag_->set(L"Value", Variant(true));
  const auto first = option(10), second = option(40), third = option(70);
  bring_up(form_);
  choose(*second);
  EXPECT_TRUE(chosen(*second));
  EXPECT_FALSE(chosen(*first) || chosen(*third));
}

TEST_F(OptionButtonTest, TakesTheMarkOfItsState) {
  using option_layout::strip_row;
  EXPECT_EQ(strip_row(false, true, 0, false), 2);
  EXPECT_EQ(strip_row(false, true, 0, true), 15);
  EXPECT_EQ(strip_row(true, true, 2, true), 78);
  EXPECT_EQ(strip_row(true, false, 2, true), 91);
  const auto site = option(10);
  put(*site, L"BackStyle", Variant(1L));
  bring_up(form_);
  mouse_away();
  const Picture plain = draw_control(*site, 140, 24);
  choose(*site);
  const Picture marked = draw_control(*site, 140, 24);
  EXPECT_EQ(plain.at(0, 0), marked.at(0, 0));    // outside the ring
  EXPECT_NE(plain.at(6, 11), marked.at(6, 11));  // the dot
  EXPECT_NE(plain.at(6, 5), plain.at(0, 5));     // the ring's top row
}

}  // namespace
}  // namespace kestrelon::host
