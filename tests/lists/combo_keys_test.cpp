#include "lists/combo_keys.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

constexpr int kTab = 9, kEnter = 13, kEscape = 27, kSpace = 32, kHome = 36, kUp = 38, kDown = 40,
              kDelete = 46, kF4 = 115, kShift = 1, kControl = 2, kAlt = 4;

TEST(ComboKeys, ClosedBoxesLeaveTheFormItsKeys) {
  for (const bool editable : {false, true})
    for (const int key : {kTab, kEnter, kEscape, kSpace})
      EXPECT_EQ(combo_act(key, 0, {.open = false, .editable = editable}), ComboAct::kNone);
}

TEST(ComboKeys, OpenListsTakeThem) {
  const ComboState open{.open = true, .editable = true, .check_boxes = true};
  EXPECT_EQ(combo_act(kEnter, 0, open), ComboAct::kAccept);
  EXPECT_EQ(combo_act(kTab, kShift, open), ComboAct::kAcceptAndPass);
  EXPECT_EQ(combo_act(kEscape, 0, open), ComboAct::kClose);
  EXPECT_EQ(combo_act(kSpace, 0, open), ComboAct::kCheck);
  ComboState typing = open;
  typing.word_begun = true;
  EXPECT_EQ(combo_act(kSpace, 0, typing), ComboAct::kNone);
}

TEST(ComboKeys, TheFieldKeepsHomeAndShiftedKeysForItsText) {
  EXPECT_EQ(combo_act(kHome, 0, {.editable = true}), ComboAct::kNone);
  EXPECT_EQ(combo_act(kHome, 0, {.editable = false}), ComboAct::kHome);
  EXPECT_EQ(combo_act(kHome, 0, {.open = true, .editable = true}), ComboAct::kHome);
  EXPECT_EQ(combo_act(kUp, kShift, {.editable = true}), ComboAct::kNone);
  EXPECT_EQ(combo_act(kUp, kControl, {}), ComboAct::kNone);
  EXPECT_EQ(combo_act(kUp, 0, {.editable = true}), ComboAct::kUp);
}

TEST(ComboKeys, AltAndF4Toggle) {
  EXPECT_EQ(combo_act(kF4, 0, {}), ComboAct::kToggle);
  EXPECT_EQ(combo_act(kDown, kAlt, {.open = true}), ComboAct::kToggle);
  EXPECT_EQ(combo_act(kF4, kAlt, {.open = true}), ComboAct::kNone) << "that closes the window";
}

TEST(ComboKeys, DeleteEmptiesChosenTextsOnly) {
  EXPECT_EQ(combo_act(kDelete, 0, {}), ComboAct::kEmpty);
  EXPECT_EQ(combo_act(kDelete, 0, {.required = true}), ComboAct::kNone);
  EXPECT_EQ(combo_act(kDelete, 0, {.editable = true}), ComboAct::kNone);
}

}  // namespace
}  // namespace kestrelon
