#include "frame/self_sub.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/frame/test_window.h"

namespace kestrelon {
namespace {

constexpr UINT kA = WM_USER, kB = WM_USER + 1;

class Owner : public SelfSubOwner {
 public:
  Owner(std::string& log, std::string name) : log_(log), name_(std::move(name)) {}

  void WindowProcHook(bool bBefore, bool& bHandled, LRESULT& lReturn, HWND lng_hWnd, UINT uMsg,
                      WPARAM, LPARAM, LPARAM lParamUser) override {
    user = lParamUser;
    if (uMsg >= WM_USER)
      log_ += name_ + (bBefore ? "<" : ">") + std::to_string(uMsg - WM_USER) + " ";
    if (action) action(bBefore, bHandled, lReturn, lng_hWnd, uMsg);
  }

  std::function<void(bool, bool&, LRESULT&, HWND, UINT)> action;
  LPARAM user = 0;

 private:
  std::string& log_;
  std::string name_;
};

class SelfSub : public testing::Test {
 protected:
  TestWindow window_;
  Owner owner_{window_.log, "o"};
  std::unique_ptr<cSelfSub> sub_ = std::make_unique<cSelfSub>();

  bool attach(eMsgWhen when, UINT message = kA) {
    const bool done = sub_->sc_Subclass(window_, 42, 1, &owner_, false);
    sub_->sc_AddMsg(window_, message, when);
    return done;
  }
  LRESULT send(UINT message = kA, WPARAM wparam = 7) {
    window_.log.clear();
    return SendMessageW(window_, message, wparam, 0);
  }
};

TEST_F(SelfSub, DeliversBeforeAndAfterAndNothingThatWasNotAskedFor) {
  ASSERT_TRUE(attach(MSG_BEFORE_AFTER));
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "o<0 w0 o>0 ");
  EXPECT_EQ(owner_.user, 42);
  send(kB);
  EXPECT_EQ(window_.log, "w1 ");
  sub_->sc_AddMsg(window_, kB);  // after, when nothing is said
  send(kB);
  EXPECT_EQ(window_.log, "w1 o>1 ");
  sub_->sc_DelMsg(window_, kA, MSG_BEFORE);
  send();
  EXPECT_EQ(window_.log, "w0 o>0 ");
}

TEST_F(SelfSub, AllMessagesCoverEveryOneUntilTheyAreTakenBack) {
  attach(MSG_AFTER, ALL_MESSAGES);
  send(kB);
  EXPECT_EQ(window_.log, "w1 o>1 ");
  sub_->sc_DelMsg(window_, ALL_MESSAGES);
  send(kB);
  EXPECT_EQ(window_.log, "w1 ");
}

TEST_F(SelfSub, HandledKeepsTheMessageFromTheWindowAndAnswersForIt) {
  attach(MSG_BEFORE_AFTER);
  owner_.action = [](bool, bool& handled, LRESULT& answer, HWND, UINT) {
    handled = true;
    answer = 99;
  };
  EXPECT_EQ(send(), 99);
  EXPECT_EQ(window_.log, "o<0 ");
}

TEST_F(SelfSub, AfterwardsTheAnswerIsSeenAndMayBeChanged) {
  attach(MSG_AFTER);
  owner_.action = [](bool, bool&, LRESULT& answer, HWND, UINT) { answer += 100; };
  EXPECT_EQ(send(), 107);
}

TEST_F(SelfSub, RefusesWhatIsNoWindowOfThisProcess) {
  EXPECT_FALSE(sub_->sc_Subclass(nullptr, 0, 1, &owner_));
  EXPECT_FALSE(sub_->sc_Subclass(reinterpret_cast<HWND>(0x7FFF0), 0, 1, &owner_));
  DWORD process = 0;
  GetWindowThreadProcessId(GetDesktopWindow(), &process);
  ASSERT_NE(process, GetCurrentProcessId());
  EXPECT_FALSE(sub_->sc_Subclass(GetDesktopWindow(), 0, 1, &owner_));
  EXPECT_TRUE(attach(MSG_AFTER));
  EXPECT_FALSE(attach(MSG_AFTER));  // a second time
  sub_->sc_AddMsg(GetDesktopWindow(), kA);
  sub_->sc_UnSubclass(GetDesktopWindow());
  send();
  EXPECT_EQ(window_.log, "w0 o>0 ");
}

TEST_F(SelfSub, LetsGoWhileOthersSubclassedAboveIt) {
  static WNDPROC below = nullptr;
  attach(MSG_BEFORE);
  below = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
      window_, GWLP_WNDPROC,
      reinterpret_cast<LONG_PTR>(+[](HWND w, UINT m, WPARAM wp, LPARAM lp) CALLBACK -> LRESULT {
        return CallWindowProcW(below, w, m, wp, lp) + (m >= WM_USER ? 1000 : 0);
      })));
  EXPECT_EQ(send(), 1007);
  EXPECT_EQ(window_.log, "o<0 w0 ");
  sub_.reset();
  EXPECT_EQ(send(), 1007);
  EXPECT_EQ(window_.log, "w0 ");
}

TEST_F(SelfSub, SeveralListenersGoInAnyOrder) {
  attach(MSG_BEFORE);
  Owner second_owner(window_.log, "p"), third_owner(window_.log, "q");
  cSelfSub second, third;
  second.sc_Subclass(window_, 0, 1, &second_owner);
  second.sc_AddMsg(window_, kA, MSG_BEFORE);
  third.sc_Subclass(window_, 0, 1, &third_owner);
  third.sc_AddMsg(window_, kA, MSG_BEFORE);
  send();
  EXPECT_EQ(window_.log, "q<0 p<0 o<0 w0 ");
  second.sc_Terminate();
  send();
  EXPECT_EQ(window_.log, "q<0 o<0 w0 ");
  sub_.reset();
  third.sc_UnSubclass(window_);
  send();
  EXPECT_EQ(window_.log, "w0 ");
}

TEST_F(SelfSub, MessagesSentFromTheCallbackAreDeliveredWithin) {
  attach(MSG_BEFORE_AFTER);
  sub_->sc_AddMsg(window_, kB, MSG_BEFORE_AFTER);
  owner_.action = [](bool before, bool&, LRESULT&, HWND w, UINT message) {
    if (message == kA && before) SendMessageW(w, kB, 0, 0);
  };
  send();
  EXPECT_EQ(window_.log, "o<0 o<1 w1 o>1 w0 o>0 ");
}

TEST_F(SelfSub, TheListenerMayDieInItsOwnCallback) {
  attach(MSG_BEFORE_AFTER);
  owner_.action = [&](bool, bool&, LRESULT&, HWND, UINT) { sub_.reset(); };
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "o<0 w0 ");
  send();
  EXPECT_EQ(window_.log, "w0 ");
}

TEST_F(SelfSub, TheWindowMayDieInTheCallback) {
  for (const bool in_before : {true, false}) {
    TestWindow window;
    Owner owner(window.log, "o");
    cSelfSub sub;
    sub.sc_Subclass(window, 0, 1, &owner);
    sub.sc_AddMsg(window, kA, MSG_BEFORE_AFTER);
    owner.action = [&](bool before, bool&, LRESULT&, HWND w, UINT) {
      if (before == in_before) DestroyWindow(w);
    };
    SendMessageW(window, kA, 7, 0);
    EXPECT_EQ(window.log, in_before ? "o<0 " : "o<0 w0 o>0 ");
    EXPECT_EQ(static_cast<HWND>(window), nullptr);
  }
}

TEST_F(SelfSub, AWindowThatDiedIsForgotten) {
  attach(MSG_AFTER, WM_NCDESTROY);
  int last_words = 0;
  owner_.action = [&](bool, bool&, LRESULT&, HWND, UINT) { ++last_words; };
  const HWND dead = window_;
  window_.destroy();
  EXPECT_EQ(last_words, 1);
  sub_->sc_AddMsg(dead, kA);
  sub_->sc_UnSubclass(dead);
  sub_->sc_Terminate();
}

TEST_F(SelfSub, AnExceptionEndsAtTheWindow) {
  attach(MSG_BEFORE_AFTER);
  owner_.action = [](bool, bool&, LRESULT&, HWND, UINT) { throw 1; };
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "o<0 w0 o>0 ");
}

TEST_F(SelfSub, WithoutAnOwnerTheObjectIsItsOwn) {
  struct Own : cSelfSub {
    int calls = 0;
    void WindowProcHook(bool, bool&, LRESULT&, HWND, UINT, WPARAM, LPARAM, LPARAM) override {
      ++calls;
    }
  } own;
  own.sc_Subclass(window_);
  own.sc_AddMsg(window_, kA);
  send();
  EXPECT_EQ(own.calls, 1);
  own.sc_Terminate();
}

}  // namespace
}  // namespace kestrelon
