#include "frame/tooltip.h"

#include <gtest/gtest.h>

#include "tests/frame/test_window.h"

namespace kestrelon {
namespace {

class TooltipTest : public testing::Test {
 protected:
  std::string text_of_tool() {
    char buffer[200] = {};
    TOOLINFOA info{};
    info.cbSize = TTTOOLINFOA_V2_SIZE;
    info.hwnd = window_.handle();
    info.uId = reinterpret_cast<UINT_PTR>(window_.handle());
    info.lpszText = buffer;
    SendMessageA(tip_.hWnd(), TTM_GETTEXTA, sizeof buffer, reinterpret_cast<LPARAM>(&info));
    return buffer;
  }
  // Height of the tip as it would show: a title adds a line.
  int bubble_height() {
    TOOLINFOA info{};
    info.cbSize = TTTOOLINFOA_V2_SIZE;
    info.hwnd = window_.handle();
    info.uId = reinterpret_cast<UINT_PTR>(window_.handle());
    return HIWORD(SendMessageA(tip_.hWnd(), TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&info)));
  }
  LRESULT ask(UINT message, WPARAM wparam = 0) {
    return SendMessageA(tip_.hWnd(), message, wparam, 0);
  }

  TestWindow window_;
  CTooltip tip_;
};

TEST_F(TooltipTest, MakesATipForAWindowWithItsValues) {
  tip_.set_TipText(L"Grava a emiss\u00e3o");
  tip_.ForeColor = 0x0000FF;
  tip_.BackColor = 0xD7FCFE;
  tip_.VisibleTime = 1234;
  tip_.DelayTime = 567;
  ASSERT_TRUE(tip_.Create(window_.handle()));
  EXPECT_EQ(ask(TTM_GETTOOLCOUNT), 1);
  EXPECT_EQ(text_of_tool(), "Grava a emiss\xE3o");
  EXPECT_EQ(ask(TTM_GETTIPTEXTCOLOR), 0x0000FF);
  EXPECT_EQ(ask(TTM_GETTIPBKCOLOR), 0xD7FCFE);
  EXPECT_EQ(ask(TTM_GETDELAYTIME, TTDT_AUTOPOP), 1234);
  EXPECT_EQ(ask(TTM_GETDELAYTIME, TTDT_INITIAL), 567);
  const LONG style = GetWindowLongW(tip_.hWnd(), GWL_STYLE);
  EXPECT_EQ(style & (TTS_ALWAYSTIP | TTS_NOPREFIX | TTS_BALLOON), TTS_ALWAYSTIP | TTS_NOPREFIX);
}

TEST_F(TooltipTest, LeavesTheColoursOfTheSystemForZero) {
  ASSERT_TRUE(tip_.Create(window_.handle()));
  const LRESULT ink = ask(TTM_GETTIPTEXTCOLOR), paper = ask(TTM_GETTIPBKCOLOR);
  tip_.ForeColor = tip_.BackColor = 0;
  ASSERT_TRUE(tip_.Create(window_.handle()));
  EXPECT_EQ(ask(TTM_GETTIPTEXTCOLOR), ink);
  EXPECT_EQ(ask(TTM_GETTIPBKCOLOR), paper);
}

TEST_F(TooltipTest, ReplacesTheTipOfAnEarlierCreate) {
  ASSERT_TRUE(tip_.Create(window_.handle()));
  const HWND first = tip_.hWnd();
  tip_.Style = ToolTip_Balloon;
  ASSERT_TRUE(tip_.Create(window_.handle()));
  EXPECT_FALSE(IsWindow(first));
  EXPECT_TRUE(GetWindowLongW(tip_.hWnd(), GWL_STYLE) & TTS_BALLOON);
  const HWND second = tip_.hWnd();
  tip_.Destroy();
  EXPECT_FALSE(IsWindow(second));
  EXPECT_EQ(tip_.hWnd(), nullptr);
}

TEST_F(TooltipTest, ChangesTextAndTitleOfALivingTip) {
  tip_.set_TipText(L"antes");
  ASSERT_TRUE(tip_.Create(window_.handle()));
  tip_.set_TipText(L"depois");
  EXPECT_EQ(text_of_tool(), "depois");
  const int plain = bubble_height();
  tip_.set_Title(L"Pedido");  // without an icon it waits
  EXPECT_EQ(bubble_height(), plain);
  tip_.set_Icon(Icon_Info);
  const int titled = bubble_height();
  EXPECT_GT(titled, plain);
  tip_.set_Title(L"");
  EXPECT_EQ(bubble_height(), titled);
}

TEST_F(TooltipTest, OutlivesTheWindowItServes) {
  {
    TestWindow passing;
    ASSERT_TRUE(tip_.Create(passing.handle()));
  }
  tip_.set_TipText(L"ningu\u00e9m v\u00ea");
  tip_.Destroy();
  EXPECT_EQ(tip_.hWnd(), nullptr);
}

}  // namespace
}  // namespace kestrelon
