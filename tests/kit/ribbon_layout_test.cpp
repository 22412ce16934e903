// The ribbon's model and scene: numbers that refer to each other, what fits, what must not overlap.
#include <gtest/gtest.h>

#include <set>

#include "chrome/us_ribbon/ribbon_layout.h"

namespace kestrelon::ribbon {
namespace {

// Six pixels a character; marks take no room.
class SixPixels final : public TextRuler {
 public:
  int width(std::wstring_view caption) override {
    int out = 0;
    for (const wchar_t c : caption) out += c == L'&' ? 0 : 6;
    return out;
  }
  int line_height() override { return 13; }
};

class RibbonLayout : public testing::Test {
 protected:
  RibbonLayout() {
    spec_.width = 800;
    spec_.height = 116;
  }
  Scene lay_out() {
    spec_.built_tabs = static_cast<int>(model_.tabs().size());
    spec_.built_tab_buttons = static_cast<int>(model_.tab_buttons().size());
    return arrange(model_, spec_, ruler_);
  }
  /// Eight categories of one to five buttons in the one tab there is.
  void fill() {
    model_.add_tab(1, L"Arquivo");
    model_.select(0);
    for (int i = 0, button = 0; i < 8; ++i) {
      model_.add_category(i, 1, L"Categoria", i % 2 == 0);
      for (int j = 0; j <= i % 5; ++j, ++button)
        model_.add_button(button, i, button % 3 == 0 ? L"Relação de pedidos" : L"Novo", 0,
                          button % 4 == 0, L"");
    }
  }

  Model model_;
  Spec spec_;
  SixPixels ruler_;
};

bool apart(const PixelRect& a, const PixelRect& b) {
  return intersect(a, b).empty();
}

bool lies_in(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

// What must hold of any scene.
void expect_sound(const Scene& scene, int width) {
  for (size_t i = 0; i < scene.categories.size(); ++i) {
    EXPECT_TRUE(lies_in(scene.categories[i].area, scene.body)) << width;
    EXPECT_TRUE(apart(scene.categories[i].area, scene.scroll_left)) << width;
    EXPECT_TRUE(apart(scene.categories[i].area, scene.scroll_right)) << width;
    for (size_t j = 0; j < i; ++j)
      EXPECT_TRUE(apart(scene.categories[i].area, scene.categories[j].area)) << width;
  }
  for (size_t i = 0; i < scene.buttons.size(); ++i) {
    const ButtonPlace& button = scene.buttons[i];
    const CategoryPlace& category = scene.categories[static_cast<size_t>(button.category)];
    EXPECT_TRUE(lies_in(button.area, category.area)) << width;
    EXPECT_TRUE(apart(button.area, category.strip)) << width;
    for (const PixelRect* part :
         {&button.icon, &button.lines[0].area, &button.lines[1].area, &button.arrow, &button.drop})
      EXPECT_TRUE(part->empty() || lies_in(*part, button.area)) << width;
    EXPECT_TRUE(apart(button.icon, button.lines[0].area)) << width;
    EXPECT_TRUE(apart(button.arrow, button.lines[1].area)) << width;
    for (size_t j = 0; j < i; ++j) EXPECT_TRUE(apart(button.area, scene.buttons[j].area)) << width;
  }
  for (size_t i = 0; i < scene.tabs.size(); ++i) {
    EXPECT_LE(scene.tabs[i].area.right, width);
    for (const TabButtonPlace& button : scene.tab_buttons)
      EXPECT_TRUE(apart(scene.tabs[i].area, button.area)) << width;
    for (size_t j = 0; j < i; ++j)
      EXPECT_TRUE(apart(scene.tabs[i].area, scene.tabs[j].area)) << width;
  }
}

TEST_F(RibbonLayout, NothingOverlapsAtAnyWidthAndTheSameWidthGivesTheSamePicture) {
  fill();
  for (int i = 0; i < 6; ++i) model_.add_tab(10 + i, L"Ferramentas");
  for (int i = 0; i < 3; ++i) model_.add_tab_button(i, 0, L"");
  for (const bool shrink : {false, true})
    for (const int dpi : {96, 144, 288}) {
      spec_.scale = Scale(dpi);
      spec_.shrink = shrink;
      std::vector<size_t> down;
      for (spec_.width = 1920; spec_.width >= 0; spec_.width -= 7) {
        const Scene scene = lay_out();
        expect_sound(scene, spec_.width);
        down.push_back(scene.buttons.size());
      }
      for (spec_.width += 7; spec_.width <= 1920; spec_.width += 7) {
        EXPECT_EQ(lay_out().buttons.size(), down.back());
        down.pop_back();
      }
    }
}

TEST_F(RibbonLayout, EveryCategoryCanBeScrolledTo) {
  fill();
  for (spec_.width = 60; spec_.width < 1500; spec_.width += 40) {
    std::set<int> seen;
    for (spec_.first = 0; spec_.first < 10; ++spec_.first)
      for (const CategoryPlace& place : lay_out().categories) seen.insert(place.entry);
    EXPECT_EQ(seen.size(), 8u) << spec_.width;
    spec_.first = 1000;  // as far as it goes: the last is whole, and there is nothing to its right
    const Scene last = lay_out();
    EXPECT_EQ(last.categories.back().entry, 7);
    EXPECT_TRUE(last.scroll_right.empty());
    EXPECT_EQ(last.scroll_left.empty(), last.first == 0);
    spec_.first = 0;
    const Scene from_start = lay_out();
    EXPECT_EQ(from_start.categories.front().entry, 0);
    EXPECT_TRUE(from_start.scroll_left.empty());
    EXPECT_EQ(from_start.scroll_right.empty(), from_start.categories.size() == 8);
  }
}

TEST_F(RibbonLayout, RelationsGoByTheNumbersAProgramGave) {
  model_.add_category(7, 500, L"A", false);
  model_.add_category(3, 500, L"B", false);
  model_.add_category(4, 1, L"C", false);
  model_.add_tab(1, L"Um");
  model_.add_tab(500, L"Dois");
  model_.add_button(99, 3, L"Em B", 0, false, L"");
  model_.add_button(0, 7, L"Em A", 0, false, L"");
  model_.add_button(5, 8, L"Em nada", 0, false, L"");
  model_.select(model_.find_tab(500));
  const Scene scene = lay_out();
  ASSERT_EQ(scene.categories.size(), 2u);
  ASSERT_EQ(scene.buttons.size(), 2u);
  EXPECT_EQ(scene.buttons[0].entry, 1);
  EXPECT_EQ(scene.buttons[0].category, 0);
  EXPECT_EQ(scene.buttons[1].entry, 0);
  model_.remove_tabs();
  EXPECT_TRUE(lay_out().categories.empty());
}

TEST_F(RibbonLayout, EntriesEndAtAHundredUnlessMoreAreAskedFor) {
  for (int i = 0; i < 150; ++i) {
    EXPECT_EQ(model_.add_tab(i, L"t"), i < 100);
    EXPECT_EQ(model_.add_category(i, i, L"c", false), i < 100);
    EXPECT_EQ(model_.add_tab_button(i % 100, 0, L""), i < 100);
  }
  EXPECT_FALSE(model_.add_button(100, 0, L"x", 0, false, L""));
  EXPECT_FALSE(model_.add_button(-1, 0, L"x", 0, false, L""));
  EXPECT_TRUE(model_.buttons().empty());
  for (int i = 0; i < 150; ++i)
    EXPECT_EQ(model_.add_button(i % 100, 0, L"b", 0, false, L""), i < 100);
  model_.set_unlimited(true);
  EXPECT_TRUE(model_.add_button(32767, 0, L"x", 0, false, L""));
  EXPECT_FALSE(model_.add_button(32768, 0, L"x", 0, false, L""));
  EXPECT_TRUE(model_.state(32767)->enabled);
  model_.set_unlimited(false);
  EXPECT_EQ(model_.state(100), nullptr);
  EXPECT_TRUE(model_.state_of(model_.buttons().back()).enabled);  // what is there stays readable
}

TEST_F(RibbonLayout, ButtonsOfOneNumberShareTheirState) {
  model_.add_button(4, 0, L"A", 7, false, L"");
  model_.state(4)->enabled = false;
  model_.add_button(4, 1, L"B", 9, false, L"");
  EXPECT_TRUE(model_.state_of(model_.buttons()[0]).enabled);  // adding enables
  EXPECT_EQ(model_.state_of(model_.buttons()[0]).image, 9);
}

TEST(RibbonText, LineEndsAndMarks) {
  EXPECT_EQ(one_line(L"a\r\nb\nc\rd\r"), L"a b\nc\rd\r");
  EXPECT_EQ(tip_text(L"", L"&Salvar\r\ncomo"), L"Salvar como");
  EXPECT_EQ(tip_text(L"R&D\r\n", L"x"), L"RD ");
}

TEST_F(RibbonLayout, CaptionsBreakWhereTheWiderLineIsShortest) {
  const auto lines = [&](const wchar_t* text, int arrow = 0) {
    const BrokenCaption out = break_caption(text, arrow, ruler_);
    return out.first + L"|" + out.second;
  };
  EXPECT_EQ(lines(L"Novo"), L"Novo|");
  EXPECT_EQ(lines(L"Contas a pagar"), L"Contas|a pagar");
  EXPECT_EQ(lines(L"Contas a pagar", 30), L"Contas a|pagar");
  EXPECT_EQ(lines(L"Novo "), L"Novo |");
  EXPECT_EQ(lines(L" Novo"), L" Novo|");
  EXPECT_EQ(lines(L""), L"|");
}

TEST_F(RibbonLayout, CategoriesAreAsWideAsButtonsOrCaptionAndMayCentreTheirButtons) {
  model_.add_tab(1, L"T");
  model_.select(0);
  model_.add_category(1, 1, L"Um título bem comprido", false);
  model_.add_button(1, 1, L"Ok", 0, false, L"");
  Scene scene = lay_out();
  const PixelRect category = scene.categories[0].area;
  EXPECT_GE(category.right - category.left, 22 * 6);
  EXPECT_LT(scene.buttons[0].area.left - category.left, 6);
  spec_.center = true;
  scene = lay_out();
  const int left = scene.buttons[0].area.left - category.left;
  const int right = category.right - scene.buttons[0].area.right;
  EXPECT_LE(std::abs(left - right), 1);
}

TEST_F(RibbonLayout, ShrinkingMakesButtonsSmallerBeforeAnythingIsHidden) {
  fill();
  spec_.shrink = true;
  size_t most = 0;
  for (spec_.width = 1900; spec_.width > 300; spec_.width -= 11) {
    const Scene scene = lay_out();
    if (scene.buttons.size() < 21u) {
      for (const ButtonPlace& button : scene.buttons)
        EXPECT_EQ(button.size, ButtonSize::kSmall) << spec_.width;
      continue;
    }
    most = std::max(most, scene.buttons.size());
    // From the right to the left: a step further left is never further reduced.
    for (size_t i = 1; i < scene.categories.size(); ++i)
      EXPECT_LE(scene.categories[i - 1].step, scene.categories[i].step) << spec_.width;
  }
  EXPECT_EQ(most, 21u);
}

TEST_F(RibbonLayout, HitsAndHoverFindOneElementAtATime) {
  fill();
  model_.add_tab_button(0, 0, L"");
  model_.state(0)->style = ButtonStyle::kSplit;
  const Scene scene = lay_out();
  const auto middle = [&](const PixelRect& area) {
    return hit(scene, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
  };
  for (size_t i = 1; i < scene.buttons.size(); ++i)
    EXPECT_EQ(middle(scene.buttons[i].area), (Target{Part::kButton, static_cast<int>(i)}));
  EXPECT_EQ(middle(scene.buttons[0].icon), (Target{Part::kButton, 0}));
  EXPECT_EQ(middle(scene.buttons[0].drop), (Target{Part::kDrop, 0}));
  EXPECT_EQ(middle(scene.categories[0].launcher), (Target{Part::kLauncher, 0}));
  EXPECT_EQ(middle(scene.categories[0].caption), (Target{Part::kCategory, 0}));
  EXPECT_EQ(middle(scene.tab_buttons[0].area), (Target{Part::kTabButton, 0}));
  EXPECT_EQ(hit(scene, 400, 5), Target{});
  // Within a category the button alone is drawn again, between two both categories.
  const Target category{Part::kCategory, 1}, button{Part::kButton, 1}, other{Part::kButton, 0};
  EXPECT_EQ(hover_damage(scene, category, button).areas[0], PixelRect{});
  EXPECT_EQ(hover_damage(scene, category, button).areas[1], scene.buttons[1].area);
  EXPECT_EQ(hover_damage(scene, other, button).areas[0], scene.categories[0].area);
  EXPECT_EQ(hover_damage(scene, other, button).areas[1], scene.categories[1].area);
  EXPECT_EQ(hover_damage(scene, button, {}).areas[0], scene.categories[1].area);
}

}  // namespace
}  // namespace kestrelon::ribbon
