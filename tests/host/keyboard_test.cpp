// Focus, Tab order, access keys and default buttons, by real key strokes.
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "tests/host/host_fixture.h"

namespace kestrelon::host {
namespace {

class KeyboardTest : public HostTest {
 protected:
  std::wstring active(const Form& form) {
    return form.active_item() ? form.active_item()->name() : L"";
  }
  ComPtr<ControlSite> add(Form& form, const wchar_t* name, const ProbeOptions& options = {},
                          ContainerWindow* box = nullptr) {
    const int row = static_cast<int>(form.all_items().size());
    return add_probe(form, name, options, box, make_rect(10, 10 + 40 * row, 60, 30));
  }
  static ProbeOptions button() {
    ProbeOptions options;
    options.misc_status |= OLEMISC_ACTSLIKEBUTTON;
    return options;
  }
};

TEST_F(KeyboardTest, TabGoesRoundInTabOrderThroughFramesAndPastWhatTakesNoFocus) {
  Form form;
  const auto frame = form.add_frame(L"Box", make_rect(100, 0, 200, 200));
  const auto a = add(form, L"A");
  const auto b = add(form, L"B", {}, frame.get());
  const auto c = add(form, L"C");
  const auto hidden = add(form, L"Hidden");
  const auto disabled = add(form, L"Disabled");
  const auto skipped = add(form, L"Skipped");
  hidden->set_visible(false);
  EnableWindow(disabled->window(), FALSE);
  skipped->tab_stop = false;
  form.set_tab_index(*c.get(), 0);
  bring_up(form);
  std::wstring walk = active(form);
  for (int i = 0; i < 3; ++i) {
    key_press(VK_TAB);
    walk += active(form);
  }
  EXPECT_EQ(walk, L"CABC");
  EXPECT_EQ(GetFocus(), c->window());
  key_chord(VK_SHIFT, VK_TAB);
  EXPECT_EQ(active(form), L"B");
  frame->set_visible(false);
  key_press(VK_TAB);
  key_press(VK_TAB);
  key_press(VK_TAB);
  EXPECT_NE(active(form), L"B") << "what stands in a hidden frame takes no focus";
}

TEST_F(KeyboardTest, ArrowsAreLeftToTheControls) {
  Form form;
  add(form, L"A");
  add(form, L"B");
  bring_up(form);
  const std::wstring before = active(form);
  for (WORD key : {VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) key_press(key);
  EXPECT_EQ(active(form), before);
}

TEST_F(KeyboardTest, AnAccessKeyGoesRoundAmongThoseThatShareIt) {
  Form form;
  ProbeOptions options;
  options.access_key = L's';
  add(form, L"Plain");
  const auto first = add(form, L"First", options);
  const auto second = add(form, L"Second", options);
  bring_up(form);
  key_chord(VK_MENU, 'S');
  EXPECT_EQ(active(form), L"First");
  key_chord(VK_MENU, 'S');
  EXPECT_EQ(active(form), L"Second");
  second->set_visible(false);
  key_chord(VK_MENU, 'S');
  EXPECT_EQ(active(form), L"First");
  EXPECT_EQ(probe_of(first)->mnemonics, 2);
  EXPECT_EQ(probe_of(second)->mnemonics, 1);
}

TEST_F(KeyboardTest, EnterAndEscapeReachDefaultAndCancelButtons) {
  Form form;
  const auto text = add(form, L"Text");
  const auto ok = add(form, L"Ok", button());
  const auto other = add(form, L"Other", button());
  put_property(ok->dispatch(), L"Default", Variant(true));
  put_property(other->dispatch(), L"Cancel", Variant(true));
  bring_up(form);
  ASSERT_EQ(active(form), L"Text");
  EXPECT_TRUE(to_bool(probe_of(ok)->ambient(DISPID_AMBIENT_DISPLAYASDEFAULT)));
  key_press(VK_RETURN);
  EXPECT_EQ(probe_of(ok)->mnemonics, 1);
  key_press(VK_ESCAPE);
  EXPECT_EQ(probe_of(other)->mnemonics, 1);
  // A button with the focus is the default for that time.
  other->take_focus();
  EXPECT_FALSE(to_bool(probe_of(ok)->ambient(DISPID_AMBIENT_DISPLAYASDEFAULT)));
  EXPECT_TRUE(to_bool(probe_of(other)->ambient(DISPID_AMBIENT_DISPLAYASDEFAULT)));
  key_press(VK_RETURN);
  EXPECT_EQ(probe_of(ok)->mnemonics, 1);
  EXPECT_EQ(probe_of(other)->mnemonics, 2);
}

}  // namespace
}  // namespace kestrelon::host
