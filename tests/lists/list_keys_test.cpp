#include "lists/list_keys.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

constexpr int kTab = 9, kEnter = 13, kEscape = 27, kSpace = 32, kEnd = 35, kLeft = 37, kUp = 38,
              kDown = 40, kA = 65, kF2 = 113, kF4 = 115;

TEST(ListKeys, TheFormKeepsItsKeys) {
  for (const SelectMode mode : {SelectMode::kSingle, SelectMode::kStandard, SelectMode::kLatch})
    for (const int key : {kTab, kEnter, kEscape, kF4})
      for (int shift = 0; shift < 8; ++shift)
        EXPECT_EQ(list_command(key, shift, {mode, true, true, true}).act, ListAct::kNone);
}

TEST(ListKeys, ModifiersChooseHowTheMarkMoves) {
  const auto how = [](int shift, SelectMode mode) {
    return list_command(kDown, shift, {mode}).how;
  };
  for (int shift = 0; shift < 4; ++shift)
    EXPECT_EQ(how(shift, SelectMode::kSingle), Choice::kPlain);
  EXPECT_EQ(how(0, SelectMode::kStandard), Choice::kPlain);
  EXPECT_EQ(how(1, SelectMode::kStandard), Choice::kExtend);
  EXPECT_EQ(how(2, SelectMode::kStandard), Choice::kMark);
  EXPECT_EQ(how(3, SelectMode::kStandard), Choice::kExtendKeep);
  EXPECT_EQ(how(0, SelectMode::kLatch), Choice::kMark);
  EXPECT_EQ(choice_of_click(0, SelectMode::kLatch), Choice::kToggle);
  EXPECT_EQ(choice_of_click(2, SelectMode::kStandard), Choice::kToggle);
  EXPECT_EQ(choice_of_click(1, SelectMode::kSingle), Choice::kPlain);
}

TEST(ListKeys, WhatIsNotAllowedIsNotTheListsKey) {
  ListKeySettings plain;
  EXPECT_EQ(list_command(kF2, 0, plain).act, ListAct::kNone);
  EXPECT_EQ(list_command(kUp, kAltMask, plain).act, ListAct::kNone);
  EXPECT_EQ(list_command(kA, kControlMask, plain).act, ListAct::kNone);
  ListKeySettings all{SelectMode::kStandard, true, true, true};
  EXPECT_EQ(list_command(kF2, 0, all).act, ListAct::kEdit);
  EXPECT_EQ(list_command(kUp, kAltMask, all).act, ListAct::kMoveItemUp);
  EXPECT_EQ(list_command(kA, kControlMask, all).act, ListAct::kSelectAll);
  EXPECT_EQ(list_command(kA, 0, all).act, ListAct::kNone);
  EXPECT_EQ(list_command(kEnd, kAltMask, all).act, ListAct::kNone);
  EXPECT_EQ(list_command(kSpace, 0, all).act, ListAct::kCheck);
  EXPECT_EQ(list_command(kSpace, kControlMask, plain).act, ListAct::kToggle);
}

TEST(ListKeys, SidewaysFollowsTheReadingDirection) {
  EXPECT_EQ(list_command(kLeft, 0, {}).act, ListAct::kScrollLeft);
  EXPECT_EQ(list_command(kLeft, 0, {.mode = SelectMode::kSingle, .mirrored = true}).act,
            ListAct::kScrollRight);
}

}  // namespace
}  // namespace kestrelon
