#include "frame/sub_class.h"

#include <gtest/gtest.h>

#include <functional>

#include "base/com_win.h"
#include "tests/frame/test_window.h"

namespace kestrelon {
namespace {

constexpr UINT kA = WM_USER, kB = WM_USER + 1;

class Client : public ISubclass {
 public:
  Client(std::string& log, std::string name, eMsgResponse response)
      : log_(log), name_(std::move(name)), response_(response) {}
  eMsgResponse MsgResponse() const override { return response_; }
  void set_MsgResponse(eMsgResponse response) override { response_ = response; }
  LRESULT WindowProc(HWND, UINT message, WPARAM, LPARAM) override {
    log_ += name_ + std::to_string(message - WM_USER) + " ";
    if (action) action();
    return 50;
  }
  std::function<void()> action;

 private:
  std::string& log_;
  std::string name_;
  eMsgResponse response_;
};

class SubClass : public testing::Test {
 protected:
  TestWindow window_;
  Client before_{window_.log, "b", eMsgResponse::kBefore};
  Client after_{window_.log, "a", eMsgResponse::kAfter};
  Client consumer_{window_.log, "c", eMsgResponse::kConsume};

  LRESULT send(UINT message = kA) {
    window_.log.clear();
    return SendMessageW(window_, message, 7, 0);
  }
  int properties() const {
    int count = 0;
    EnumPropsExW(
        window_,
        [](HWND, LPWSTR, HANDLE, ULONG_PTR total) CALLBACK -> BOOL {
          ++*reinterpret_cast<int*>(total);
          return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
  }
};

void expect_error(int number, const std::function<void()>& action) {
  try {
    action();
    ADD_FAILURE() << "no error " << number;
  } catch (const ComError& error) {
    EXPECT_EQ(error.hr, numbered_error(number));
    EXPECT_FALSE(error.description.empty());
    EXPECT_EQ(error.source, L".WindowProc");
    if (number == 13083) {
      EXPECT_EQ(error.description, L"Invalid window");
    }
    if (number == 13082) {
      EXPECT_EQ(error.description, L"Message already handled by another class");
    }
  }
}

TEST_F(SubClass, ErrorsAreNumberedAndLeaveNothingBehind) {
  const HWND nowhere = reinterpret_cast<HWND>(0x7FFF0);
  expect_error(13083, [&] { AttachMessage(&before_, nowhere, kA); });
  expect_error(13083, [&] { AttachMessage(&before_, nullptr, kA); });
  expect_error(13084, [&] { AttachMessage(&before_, GetDesktopWindow(), kA); });
  AttachMessage(&before_, window_, kA);
  expect_error(13082, [&] { AttachMessage(&before_, window_, kA); });
  send();
  EXPECT_EQ(window_.log, "b0 w0 ");
  DetachMessage(&before_, window_, kA);
  EXPECT_EQ(properties(), 0);
  DetachMessage(&before_, window_, kA);
  DetachMessage(&before_, nowhere, kA);
}

TEST_F(SubClass, EachResponseHasItsPlaceAndAnswer) {
  AttachMessage(&after_, window_, kA);
  AttachMessage(&before_, window_, kA);
  EXPECT_EQ(send(), 50);
  EXPECT_EQ(window_.log, "b0 w0 a0 ");
  DetachMessage(&after_, window_, kA);
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "b0 w0 ");
  AttachMessage(&consumer_, window_, kA);
  EXPECT_EQ(send(), 50);
  EXPECT_EQ(window_.log, "b0 c0 ");
  consumer_.set_MsgResponse(eMsgResponse::kBefore);
  send();
  EXPECT_EQ(window_.log, "b0 c0 w0 ");
  send(kB);
  EXPECT_EQ(window_.log, "w1 ");
  DetachMessage(&before_, window_, kA);
  DetachMessage(&consumer_, window_, kA);
}

TEST_F(SubClass, MessagesAreCountedApartAndTheLastClientRestoresTheProcedure) {
  const LONG_PTR first = GetWindowLongPtrW(window_, GWLP_WNDPROC);
  for (const UINT message : {kA, kB, WM_USER + 23u}) {
    AttachMessage(&before_, window_, message);
    AttachMessage(&after_, window_, message);
  }
  EXPECT_NE(GetWindowLongPtrW(window_, GWLP_WNDPROC), first);
  DetachMessage(&before_, window_, kA);
  DetachMessage(&after_, window_, kB);
  send(kA);
  EXPECT_EQ(window_.log, "w0 a0 ");
  send(kB);
  EXPECT_EQ(window_.log, "b1 w1 ");
  DetachMessage(&after_, window_, kA);
  DetachMessage(&before_, window_, kB);
  DetachMessage(&before_, window_, WM_USER + 23u);
  EXPECT_NE(GetWindowLongPtrW(window_, GWLP_WNDPROC), first);
  DetachMessage(&after_, window_, WM_USER + 23u);
  EXPECT_EQ(GetWindowLongPtrW(window_, GWLP_WNDPROC), first);
  EXPECT_EQ(properties(), 0);
}

TEST_F(SubClass, AClientDetachedByAnotherIsNotCalledAnyMore) {
  Client second(window_.log, "s", eMsgResponse::kBefore);
  AttachMessage(&before_, window_, kA);
  AttachMessage(&second, window_, kA);
  before_.action = [&] {
    DetachMessage(&second, window_, kA);
    DetachMessage(&before_, window_, kA);
  };
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "b0 w0 ");
  EXPECT_EQ(properties(), 0);
}

TEST_F(SubClass, AClientMayKeepOneMessageFromTheWindowWhileItIsCalled) {
  AttachMessage(&before_, window_, kA);
  AttachMessage(&after_, window_, kA);
  before_.action = [&] { before_.set_MsgResponse(eMsgResponse::kConsume); };
  send();
  EXPECT_EQ(window_.log, "b0 a0 ");
  DetachMessage(&after_, window_, kA);
  EXPECT_EQ(send(), 50);
  EXPECT_EQ(window_.log, "b0 ");
  before_.action = nullptr;
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "b0 w0 ");
  before_.action = [&] {
    before_.set_MsgResponse(eMsgResponse::kConsume);
    DetachMessage(&before_, window_, kA);
  };
  EXPECT_EQ(send(), 7);
}

TEST_F(SubClass, AProcedurePutAboveKeepsWorkingAfterTheLastClientHasGone) {
  static WNDPROC below = nullptr;
  AttachMessage(&before_, window_, kA);
  below = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
      window_, GWLP_WNDPROC,
      reinterpret_cast<LONG_PTR>(+[](HWND w, UINT m, WPARAM wp, LPARAM lp) CALLBACK -> LRESULT {
        return CallWindowProcW(below, w, m, wp, lp) + (m >= WM_USER ? 1000 : 0);
      })));
  DetachMessage(&before_, window_, kA);
  EXPECT_EQ(send(), 1007);
  EXPECT_EQ(window_.log, "w0 ");
  AttachMessage(&before_, window_, kA);  // takes up the procedure that stayed
  EXPECT_EQ(send(), 1007);
  EXPECT_EQ(window_.log, "b0 w0 ");
}

TEST_F(SubClass, WindowsMayDieWithClientsAndInsideThem) {
  AttachMessage(&before_, window_, kA);
  AttachMessage(&after_, window_, kA);
  before_.action = [&] { window_.destroy(); };
  const HWND dead = window_;
  send();
  EXPECT_EQ(window_.log, "b0 ");
  EXPECT_FALSE(IsWindow(dead));
  DetachMessage(&before_, dead, kA);
}

TEST_F(SubClass, AnExceptionOfAClientDoesNotKeepTheMessageFromTheWindow) {
  AttachMessage(&before_, window_, kA);
  before_.action = [] { throw 1; };
  EXPECT_EQ(send(), 7);
  EXPECT_EQ(window_.log, "b0 w0 ");
  DetachMessage(&before_, window_, kA);
}

// A wide window stays one: text set through it keeps characters outside the code page.
TEST_F(SubClass, WideTextsStayWhole) {
  AttachMessage(&before_, window_, kA);
  SetWindowTextW(window_, L"\x416\x4E2D");
  wchar_t text[8] = {};
  GetWindowTextW(window_, text, 8);
  EXPECT_STREQ(text, L"\x416\x4E2D");
  DetachMessage(&before_, window_, kA);
}

}  // namespace
}  // namespace kestrelon
