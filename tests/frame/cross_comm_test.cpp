#include "frame/cross_comm.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/frame/test_window.h"

namespace kestrelon {
namespace {

HWND hidden_window(HWND parent) {
  return FindWindowExA(parent, nullptr, "Static", "GDI+Safe Patch");
}

// What the delay would bring, at once.
void let_time_pass(HWND window) {
  SendMessageW(window, WM_TIMER, 1, 0);
}

class CrossComm : public testing::Test {
 protected:
  cCrossComm& shared_ = cCrossComm::instance();
  TestWindow form_;
  long locks_before_ = module_locks();

  void TearDown() override {
    EXPECT_EQ(shared_.gdiToken(), 0u);
    EXPECT_EQ(hidden_window(form_), nullptr);
    EXPECT_EQ(module_locks(), locks_before_);
  }
};

TEST_F(CrossComm, TheTokenLivesAsLongAsAnyClientInAnyOrder) {
  std::vector<int> order = {0, 1, 2};
  do {
    TestWindow a(form_.handle()), b(form_.handle()), c(form_.handle());
    const HWND clients[] = {a, b, c};
    for (const HWND client : clients) shared_.AddRef(client);
    shared_.AddRef(a);  // twice is once
    const ULONG_PTR token = shared_.gdiToken();
    ASSERT_NE(token, 0u);
    const HWND hidden = hidden_window(form_);
    ASSERT_NE(hidden, nullptr);
    EXPECT_FALSE(IsWindowVisible(hidden));
    EXPECT_GT(module_locks(), locks_before_);
    for (const int i : order) {
      let_time_pass(hidden);
      EXPECT_EQ(shared_.gdiToken(), token);
      shared_.RemoveRef(clients[i]);
      shared_.RemoveRef(clients[i]);
    }
    EXPECT_EQ(shared_.gdiToken(), token) << "closed without delay";
    let_time_pass(hidden);
    EXPECT_EQ(shared_.gdiToken(), 0u);
    EXPECT_FALSE(IsWindow(hidden));
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(CrossComm, AClientThatComesDuringTheDelayKeepsTheToken) {
  TestWindow a(form_.handle()), b(form_.handle());
  shared_.AddRef(a);
  const ULONG_PTR token = shared_.gdiToken();
  const HWND hidden = hidden_window(form_);
  shared_.RemoveRef(a);
  shared_.AddRef(b);
  let_time_pass(hidden);  // a notice that was already on its way
  EXPECT_EQ(shared_.gdiToken(), token);
  shared_.RemoveRef(b);
  let_time_pass(hidden);
}

TEST_F(CrossComm, TheTimerItselfClosesTheToken) {
  TestWindow a(form_.handle());
  shared_.AddRef(a);
  shared_.RemoveRef(a);
  MSG message;
  while (shared_.gdiToken() != 0 && GetMessageW(&message, nullptr, 0, 0) > 0)
    DispatchMessageW(&message);
}

TEST_F(CrossComm, TheFormThatHoldsTheWindowMayCloseFirst) {
  TestWindow elsewhere(form_.handle());
  TestWindow closing;
  TestWindow a(closing.handle());
  const HWND client = a;
  shared_.AddRef(client);
  shared_.AddRef(elsewhere);
  const ULONG_PTR token = shared_.gdiToken();
  ASSERT_NE(hidden_window(closing), nullptr);
  closing.destroy();
  shared_.RemoveRef(client);
  EXPECT_EQ(shared_.gdiToken(), token);
  const HWND hidden = hidden_window(HWND_MESSAGE);
  ASSERT_NE(hidden, nullptr);
  shared_.RemoveRef(elsewhere);
  EXPECT_EQ(shared_.gdiToken(), token);
  let_time_pass(hidden);
}

TEST_F(CrossComm, OneControlHoldsTheMouseAtATime) {
  struct Control : ICrossComm {
    int asked = 0;
    void ReleaseMouseCapture() override { ++asked; }
    cCrossComm& CrossTalkClass() override { return cCrossComm::instance(); }
  } first, second;
  first.CrossTalkClass().set_CapturedControl(&first);
  shared_.set_CapturedControl(&first);
  EXPECT_EQ(first.asked, 0);
  second.CrossTalkClass().set_CapturedControl(&second);
  EXPECT_EQ(first.asked, 1);
  EXPECT_EQ(shared_.CapturedControl(), &second);
  shared_.set_CapturedControl(nullptr);
  EXPECT_EQ(second.asked, 0);
}

}  // namespace
}  // namespace kestrelon
