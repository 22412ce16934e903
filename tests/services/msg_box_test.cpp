#include <gtest/gtest.h>

#include "services/msgbox/msg_box_layout.h"
#include "services/msgbox/msg_box_rules.h"

namespace kestrelon::msg_box {
namespace {

using Answers = std::vector<Answer>;

TEST(MsgBoxRules, TakesSetsIconsAndDefaultsAsTheSystemDoes) {
  const Rules delete_customer = read_rules(4 + 32 + 256);
  EXPECT_EQ(delete_customer.buttons, (Answers{kYes, kNo}));
  EXPECT_EQ(delete_customer.icon, Icon::kQuestion);
  EXPECT_EQ(delete_customer.chosen, 1u);
  EXPECT_EQ(read_rules(4 + 512).chosen, 0u);  // a third button that is not there
  EXPECT_EQ(read_rules(3 + 512).chosen, 2u);
  EXPECT_EQ(read_rules(6).buttons, (Answers{kCancel, kTryAgain, kContinue}));
  for (const int set : {7, 8, 15, -1}) EXPECT_TRUE(read_rules(set).buttons.empty()) << set;
  EXPECT_EQ(read_rules(80).icon, Icon::kNone);
  EXPECT_EQ(read_rules(0x4000 + 0x2000 + 64).icon, Icon::kInformation);
  EXPECT_TRUE(read_rules(4096).topmost);
  EXPECT_TRUE(read_rules(262144).topmost);
  EXPECT_FALSE(read_rules(65536).topmost);
}

TEST(MsgBoxRules, KnowsWhatEscapeMeansForEachSet) {
  const Answer expected[] = {kOk, kCancel, kNone, kCancel, kNone, kCancel, kCancel};
  const Answer gone[] = {kNone, kCancel, kNone, kCancel, kNone, kCancel, kCancel};
  for (int set = 0; set < 7; ++set) {
    EXPECT_EQ(escape_answer(read_rules(set).buttons), expected[set]) << set;
    EXPECT_EQ(gone_answer(read_rules(set).buttons), gone[set]) << set;
  }
}

TEST(MsgBoxRules, CopiesWhatIsRead) {
  const std::wstring captions[] = {L"&Sim", L"R&&D"};
  EXPECT_EQ(
      copied_text(L"Clientes", L"Excluir?", captions),
      L"---------------------------\r\nClientes\r\n---------------------------\r\nExcluir?\r\n"
      L"---------------------------\r\nSim   R&D   \r\n---------------------------\r\n");
}

TEST(MsgBoxRules, FindsAddressesWithoutTheMarksAroundThem) {
  const std::wstring text = L"Veja (https://exemplo.invalid/a?b=1), www.x.y. ou mailto:a@b; www.";
  const std::vector<Link> links = find_links(text);
  ASSERT_EQ(links.size(), 3u);
  EXPECT_EQ(text.substr(links[0].start, links[0].length), L"https://exemplo.invalid/a?b=1");
  EXPECT_EQ(text.substr(links[1].start, links[1].length), L"www.x.y");
  EXPECT_EQ(text.substr(links[2].start, links[2].length), L"mailto:a@b");
  EXPECT_TRUE(find_links(L"").empty());
  EXPECT_TRUE(find_links(L"(((").empty());
  EXPECT_TRUE(find_links(L"http://.,;").empty());
  EXPECT_EQ(find_links(L"HTTP://X\nhttp://y").size(), 2u);
}

Content sample() {
  Content content;
  content.picture = true;
  content.text_width = 200;
  content.text_height = 30;
  content.line_height = 15;
  content.bar_width = 17;
  content.caption_widths = {30, 120, 40};
  content.work_width = 1600;
  content.work_height = 1000;
  return content;
}

bool apart(const PixelRect& a, const PixelRect& b) {
  return intersect(a, b).empty();
}

// No part over another, none outside, nothing lost.
void expect_sound(const Places& places, const Content& content) {
  std::vector<PixelRect> parts = places.buttons;
  for (const PixelRect& rect : {places.picture, places.text, places.bar, places.check,
                                places.details_button, places.details, places.strip})
    if (!rect.empty()) parts.push_back(rect);
  const PixelRect whole{0, 0, places.width, places.height};
  for (size_t i = 0; i < parts.size(); ++i) {
    EXPECT_EQ(intersect(parts[i], whole), parts[i]) << i;
    for (size_t j = 0; j < i; ++j) EXPECT_TRUE(apart(parts[i], parts[j])) << i << ", " << j;
  }
  EXPECT_GE(places.text.right - places.text.left, content.text_width);
}

TEST(MsgBoxLayout, KeepsItsPartsApartWithEveryCombination) {
  for (const int dpi : {96, 120, 192})
    for (int bits = 0; bits < 64; ++bits) {
      Content content = sample();
      content.picture = (bits & 1) != 0;
      content.check_width = (bits & 2) != 0 ? 150 : 0;
      content.details_width = (bits & 4) != 0 ? 60 : 0;
      content.details_open = (bits & 8) != 0;
      content.right_to_left = (bits & 16) != 0;
      if ((bits & 32) != 0) content.text_height = 5000;
      const Places places = arrange(content, Scale(dpi));
      SCOPED_TRACE(bits);
      expect_sound(places, content);
      EXPECT_EQ(places.bar.empty(), (bits & 32) == 0);
      EXPECT_EQ(places.details.empty(), (bits & 12) != 12);
    }
}

TEST(MsgBoxLayout, ScrollsAboveSixtyPercentOfTheWorkArea) {
  Content content = sample();
  content.text_height = 600;
  EXPECT_TRUE(arrange(content, Scale()).bar.empty());
  content.text_height = 601;
  const Places places = arrange(content, Scale());
  EXPECT_FALSE(places.bar.empty());
  EXPECT_EQ(places.text.bottom - places.text.top, 600);
}

TEST(MsgBoxLayout, MirrorsForReadingFromTheRight) {
  Content content = sample();
  const Places plain = arrange(content, Scale());
  content.right_to_left = true;
  const Places turned = arrange(content, Scale());
  EXPECT_LT(plain.picture.left, plain.text.left);
  EXPECT_GT(turned.picture.left, turned.text.left);
  EXPECT_GT(turned.buttons[0].left, turned.buttons[1].left);
  EXPECT_EQ(turned.close.left, 0);
}

TEST(MsgBoxLayout, CutsALongTitleButNeverAButton) {
  Content content = sample();
  content.title_width = 5000;
  EXPECT_LE(arrange(content, Scale()).width, 600);
  content.caption_widths = {400, 400, 400};
  EXPECT_GE(arrange(content, Scale()).buttons[0].left, 0);
}

TEST(MsgBoxLayout, StaysInTheWorkAreaHeadFirst) {
  const PixelRect work{0, 0, 800, 600};
  EXPECT_EQ(place_box(200, 100, {300, 200, 500, 400}, work), (PixelRect{300, 250, 500, 350}));
  EXPECT_EQ(place_box(200, 100, {700, 550, 900, 700}, work), (PixelRect{600, 500, 800, 600}));
  EXPECT_EQ(place_box(200, 100, {-900, -900, -800, -800}, work), (PixelRect{0, 0, 200, 100}));
  EXPECT_EQ(place_box(200, 900, {0, 0, 800, 600}, work).top, 0);
}

}  // namespace
}  // namespace kestrelon::msg_box
