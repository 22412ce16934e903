// A container that is not ours: the system's own, which offers no ambient properties, initialises a
// control before it gives it a site, and passes extents in the wrong unit.
#include <gtest/gtest.h>
#include <windows.h>
//
#include <ocidl.h>

#include "base/com_win.h"
#include "host/class_library.h"
#include "host/event_sink.h"
#include "host/input.h"
#include "host/late_bound.h"
#include "host/message_loop.h"
#include "tests/library_path.h"

namespace kestrelon::host {
namespace {

class AxWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    OleInitialize(nullptr);
    atl_ = LoadLibraryW(L"atl100.dll");
    if (atl_ == nullptr) atl_ = LoadLibraryW(L"atl.dll");
    ASSERT_NE(atl_, nullptr);
    ASSERT_TRUE(entry<BOOL WINAPI()>("AtlAxWinInit")());
    parent_ = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 200,
                              nullptr, nullptr, nullptr, nullptr);
    const wchar_t* const window_class =
        GetModuleHandleW(L"atl100.dll") == atl_ ? L"AtlAxWin100" : L"AtlAxWin";
    container_ = CreateWindowExW(0, window_class, nullptr, WS_CHILD | WS_VISIBLE, 10, 10, 150, 40,
                                 parent_, nullptr, nullptr, nullptr);
    ASSERT_NE(container_, nullptr);
  }
  void TearDown() override {
    if (parent_ != nullptr) DestroyWindow(parent_);
    drain_messages();
    OleUninitialize();
  }

  template <class Function>
  Function* entry(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(atl_, name)));
  }

  HMODULE atl_ = nullptr;
  HWND parent_ = nullptr;
  HWND container_ = nullptr;
  ClassLibrary library_{library_path()};
};

TEST_F(AxWindowTest, HostsACheckBoxThatPaintsAndTakesARealClick) {
  const auto control = library_.create(L"USCheckBox");
  ComPtr<IUnknown> host;
  ASSERT_EQ(entry<HRESULT WINAPI(IUnknown*, HWND, IUnknown**)>("AtlAxAttachControl")(
                control.get(), container_, host.put()),
            S_OK);
  const auto dispatch = control.as<IDispatch>();
  put_property(dispatch.get(), L"Caption", Variant(L"Aceito"));
  put_property(dispatch.get(), L"BackStyle", Variant(1L));
  const auto window =
      reinterpret_cast<HWND>(static_cast<LONG_PTR>(to_long(get_property(dispatch.get(), L"hWnd"))));
  ASSERT_TRUE(IsWindow(window));
  RECT client{};
  GetClientRect(window, &client);
  EXPECT_EQ(client.right, 150);
  EXPECT_EQ(client.bottom, 40);

  const auto sink = EventSink::connect(control.get(), nullptr);
  SetForegroundWindow(parent_);
  mouse_click(window, 6, 20);
  EXPECT_EQ(to_long(get_property(dispatch.get(), L"Value")), 1);
  EXPECT_EQ(sink->log().back(), L"Click");

  UpdateWindow(window);
  const HDC dc = GetDC(window);
  int drawn = 0;
  const COLORREF back = GetPixel(dc, 149, 1);
  for (int x = 0; x < 60; ++x)
    for (int y = 10; y < 30; ++y) drawn += GetPixel(dc, x, y) != back;
  ReleaseDC(window, dc);
  EXPECT_GT(drawn, 13 * 13);
  sink->disconnect();
}

}  // namespace
}  // namespace kestrelon::host
