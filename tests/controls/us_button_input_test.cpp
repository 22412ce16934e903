// The state table of the button, row by row, without a window.
#include "controls/us_button/us_button_input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrelon {
namespace {

using Log = std::vector<std::string>;

// Writes down what the transitions ask for.
class Recorder final : public ButtonHost {
 public:
  bool enabled() const override { return is_enabled; }
  bool locked() const override { return is_locked; }
  bool check_mode() const override { return in_check_mode; }
  bool pointer_inside() const override { return inside; }
  void set_state(int state, bool force) override {
    log.push_back("state " + std::to_string(state) + (force ? "!" : ""));
  }
  void flip_value() override { log.push_back("flip"); }
  void clear_value() override { log.push_back("clear"); }
  void click_event() override { log.push_back("Click"); }
  bool captured() const override { return has_capture; }
  void capture() override {
    has_capture = true;
    log.push_back("capture");
  }
  void release() override {
    has_capture = false;
    log.push_back("release");
  }
  void track_leave() override { log.push_back("track"); }
  void move_focus(bool backwards) override { log.push_back(backwards ? "back" : "forth"); }
  bool ask_default() const override { return is_default; }

  Log take() { return std::exchange(log, {}); }

  Log log;
  bool is_enabled = true, is_locked = false, in_check_mode = false, inside = false;
  bool has_capture = false, is_default = false;
};

class ButtonInputTest : public testing::Test {
 protected:
  void enter() {
    host_.inside = true;
    input_.mouse_move();
    host_.take();
  }
  void press() {
    input_.mouse_down(1);
    host_.has_capture = true;
    host_.take();
  }
  void leave_pressed() {
    host_.inside = false;
    input_.mouse_move();
    host_.take();
  }

  Recorder host_;
  ButtonInput input_{host_};
};

constexpr int kSpace = 32, kLeft = 37, kUp = 38, kRight = 39, kDown = 40, kAlt = 4;

TEST_F(ButtonInputTest, EntersOnceThenMoves) {
  host_.inside = true;
  EXPECT_EQ(input_.mouse_move(), Hover::Move::kEnter);
  EXPECT_EQ(host_.take(), (Log{"state 1", "track"}));
  EXPECT_EQ(input_.mouse_move(), Hover::Move::kInside);
  EXPECT_EQ(host_.take(), Log{"state 1"});
}

TEST_F(ButtonInputTest, ClicksAfterPressAndRelease) {
  enter();
  input_.mouse_down(1);
  EXPECT_EQ(host_.take(), Log{"state 2"});
  EXPECT_TRUE(input_.has_focus() && input_.mouse_pressed());
  input_.click();  // before the release nothing fires
  EXPECT_EQ(host_.take(), Log{});
  host_.has_capture = true;
  EXPECT_TRUE(input_.mouse_up(1));
  EXPECT_EQ(host_.take(), Log{"release"});
  input_.click();
  EXPECT_EQ(host_.take(), (Log{"state 1!", "Click", "clear"}));
}

TEST_F(ButtonInputTest, FlipsInCheckModeAndKeepsItsValue) {
  host_.in_check_mode = true;
  press();
  input_.mouse_up(1);
  host_.take();
  input_.click();
  EXPECT_EQ(host_.take(), (Log{"flip", "state 0!", "Click"}));
}

TEST_F(ButtonInputTest, DrawsButDoesNotTellWhenLockedOrOff) {
  for (bool* cause : {&host_.is_locked, &host_.is_enabled}) {
    *cause = !*cause;
    press();
    input_.mouse_up(1);
    host_.take();
    input_.click();
    EXPECT_EQ(host_.take(), (Log{"state 0!", "clear"}));
    *cause = !*cause;
  }
}

TEST_F(ButtonInputTest, IgnoresTheRightButton) {
  enter();
  input_.mouse_down(2);
  EXPECT_FALSE(input_.mouse_up(2));
  input_.click();
  EXPECT_EQ(host_.take(), Log{});
  EXPECT_FALSE(input_.mouse_pressed());
}

TEST_F(ButtonInputTest, LooksReadyWhileHeldOutsideUntilTheFocusGoes) {
  enter();
  press();
  host_.inside = false;
  EXPECT_EQ(input_.mouse_move(), Hover::Move::kExit);
  EXPECT_EQ(host_.take(), Log{});  // the exit itself draws nothing while held
  EXPECT_EQ(input_.mouse_move(), Hover::Move::kNothing);
  EXPECT_EQ(host_.take(), Log{"state 1"});
  EXPECT_TRUE(input_.mouse_leave());  // the leave notice comes under capture too
  EXPECT_EQ(host_.take(), Log{"state -1"});
  EXPECT_TRUE(input_.mouse_up(1));
  EXPECT_EQ(host_.take(), Log{"release"});
}

TEST_F(ButtonInputTest, ComesBackPressed) {
  enter();
  press();
  leave_pressed();
  host_.inside = true;
  EXPECT_EQ(input_.mouse_move(), Hover::Move::kInside);
  EXPECT_EQ(host_.take(), Log{"state 2"});
}

TEST_F(ButtonInputTest, StaysLitWhenThePointerLeavesAfterAClickUntilTheFocusGoes) {
  enter();
  input_.window_focus(true);
  press();
  input_.mouse_up(1);
  input_.click();
  host_.take();
  EXPECT_TRUE(input_.mouse_leave());
  EXPECT_EQ(host_.take(), Log{"state -1"});
  input_.lost_focus();
  EXPECT_EQ(host_.take(), Log{"state 0!"});
  enter();
  input_.mouse_down(2);
  host_.take();
  EXPECT_TRUE(input_.mouse_leave());  // the right button does not hold it
  EXPECT_EQ(host_.take(), Log{"state 0"});
}

TEST_F(ButtonInputTest, PressesAgainOnADoubleClickWithoutASecondClick) {
  enter();
  press();
  input_.mouse_up(1);
  input_.click();
  host_.take();
  EXPECT_TRUE(input_.double_click());
  EXPECT_EQ(host_.take(), (Log{"state 2", "capture"}));
  EXPECT_TRUE(input_.mouse_up(1));
  EXPECT_EQ(host_.take(), (Log{"state 1", "release"}));
  input_.click();
  EXPECT_EQ(host_.take(), Log{});
  press();  // and then an ordinary click
  input_.mouse_up(1);
  host_.take();
  input_.click();
  EXPECT_EQ(host_.take(), (Log{"state 1!", "Click", "clear"}));
}

TEST_F(ButtonInputTest, TakesNoDoubleClickOfAnotherButton) {
  input_.mouse_down(2);
  EXPECT_FALSE(input_.double_click());
}

TEST_F(ButtonInputTest, ClicksWhenSpaceComesUp) {
  EXPECT_TRUE(input_.key_down(kSpace, 0));
  EXPECT_EQ(host_.take(), (Log{"capture", "state 2"}));
  input_.key_up(kSpace);
  EXPECT_EQ(host_.take(), (Log{"state 0!", "Click", "clear", "release"}));
}

TEST_F(ButtonInputTest, ClicksOnceWithSpaceHeldAndAnArrowPressed) {
  input_.key_down(kSpace, 0);
  host_.take();
  EXPECT_FALSE(input_.key_down(kRight, 0));
  EXPECT_EQ(host_.take(), (Log{"forth", "release", "state 0!", "Click", "clear"}));
  input_.key_up(kSpace);
  EXPECT_EQ(host_.take(), Log{"release"});
}

TEST_F(ButtonInputTest, MovesTheFocusWithArrowsUnlessShifted) {
  for (const auto& [key, moved] :
       {std::pair{kLeft, "back"}, {kUp, "back"}, {kRight, "forth"}, {kDown, "forth"}}) {
    EXPECT_FALSE(input_.key_down(key, 0));
    EXPECT_EQ(host_.take(), Log{moved});
    EXPECT_FALSE(input_.key_down(key, 1));
    EXPECT_EQ(host_.take(), Log{});
  }
}

TEST_F(ButtonInputTest, DropsSpaceForAnyOtherKey) {
  enter();
  input_.key_down(kSpace, 0);
  host_.take();
  EXPECT_TRUE(input_.key_down('A', 0));
  EXPECT_EQ(host_.take(), (Log{"release", "state 1"}));
  input_.key_up(kSpace);
  EXPECT_EQ(host_.take(), Log{"release"});
  EXPECT_TRUE(input_.key_down(kSpace, kAlt));  // the window menu's Space
  EXPECT_EQ(host_.take(), Log{});
}

TEST_F(ButtonInputTest, KeepsTheMouseWhenSpaceComesUpUnderAPress) {
  enter();
  press();
  input_.key_down(kSpace, 0);
  EXPECT_EQ(host_.take(), Log{"capture"});
  input_.key_up(kSpace);
  EXPECT_EQ(host_.take(), Log{});  // no click yet, capture kept
  input_.mouse_up(1);
  input_.click();
  EXPECT_EQ(host_.take(), (Log{"release", "state 1!", "Click", "clear"}));
}

TEST_F(ButtonInputTest, ShowsSpaceWhileTheMouseIsPressedElsewhere) {
  input_.key_down(kSpace, 0);
  host_.take();
  input_.mouse_down(1);  // the pointer is not over
  EXPECT_EQ(host_.take(), Log{"state 0"});
  EXPECT_TRUE(input_.mouse_pressed());
  EXPECT_TRUE(input_.mouse_up(1));
  EXPECT_EQ(host_.take(), (Log{"state 2", "release"}));
  EXPECT_FALSE(input_.mouse_leave());  // Space keeps it down
  EXPECT_EQ(host_.take(), Log{});
}

TEST_F(ButtonInputTest, AnswersItsAccessKeyUnlessOffOrCheckedByReturn) {
  input_.access_key('s');
  EXPECT_EQ(host_.take(), (Log{"state 0!", "Click", "clear"}));
  host_.in_check_mode = true;
  input_.access_key(13);
  input_.access_key(27);
  EXPECT_EQ(host_.take(), Log{});
  host_.is_enabled = false;
  input_.access_key('s');
  EXPECT_EQ(host_.take(), Log{});
}

TEST_F(ButtonInputTest, DrawsTheFocusOnlyInAnActiveWindow) {
  input_.got_focus();
  EXPECT_EQ(host_.take(), Log{"state -1"});
  input_.window_focus(true);
  EXPECT_EQ(host_.take(), Log{"state -1!"});
  EXPECT_TRUE(input_.window_active());
  input_.lost_focus();
  EXPECT_EQ(host_.take(), Log{"state 0!"});
  input_.window_focus(true);  // neither focus nor default: nothing to show
  EXPECT_EQ(host_.take(), Log{});
}

TEST_F(ButtonInputTest, ForgetsAPressWhenTheFocusGoes) {
  press();
  input_.lost_focus();
  input_.mouse_up(1);
  host_.take();
  EXPECT_FALSE(input_.mouse_pressed());
  input_.window_focus(true);
  press();
  input_.window_focus(false);  // from outside the thread
  EXPECT_EQ(host_.take(), Log{"state 0!"});
  EXPECT_FALSE(input_.mouse_pressed());
  EXPECT_TRUE(input_.has_focus());
}

TEST_F(ButtonInputTest, FollowsTheDefaultOfTheContainer) {
  press();
  input_.lost_focus();
  host_.take();
  input_.default_changed();
  EXPECT_EQ(host_.take(), Log{"state -1!"});
  input_.got_focus();
  host_.take();
  input_.default_changed();
  EXPECT_EQ(host_.take(), Log{});
}

TEST_F(ButtonInputTest, LetsGoWhenItIsSwitchedOff) {
  press();
  host_.is_enabled = false;
  input_.disabled();
  EXPECT_EQ(host_.take(), Log{"release"});
  EXPECT_FALSE(input_.mouse_pressed());
  EXPECT_TRUE(input_.mouse_leave());
  EXPECT_EQ(host_.take(), Log{});
}

}  // namespace
}  // namespace kestrelon
