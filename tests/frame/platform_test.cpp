#include "frame/platform.h"

#include <gtest/gtest.h>

#include "base/com_win.h"
#include "frame/dib_section.h"
#include "frame/region.h"
#include "frame/text.h"
#include "tests/frame/gdi_handles.h"
#include "tests/frame/test_window.h"

namespace kestrelon {
namespace {

TEST(Platform, ExportsAreFoundWithoutLeavingTheLibraryLoaded) {
  EXPECT_TRUE(IsFunctionExported("TrackMouseEvent", "User32"));
  EXPECT_FALSE(IsFunctionExported("TrackMouseEventually", "User32"));
  EXPECT_FALSE(IsFunctionExported("TrackMouseEvent", "no-such-library"));
  EXPECT_FALSE(IsFunctionExported(nullptr, "User32"));
  EXPECT_FALSE(IsFunctionExported("TrackMouseEvent", nullptr));
  ASSERT_EQ(GetModuleHandleA("avicap32"), nullptr);
  EXPECT_TRUE(IsFunctionExported("capCreateCaptureWindowA", "avicap32"));
  EXPECT_EQ(GetModuleHandleA("avicap32"), nullptr);
}

TEST(Platform, ThisSystemIsNtAndNotOlderThan61) {
  EXPECT_TRUE(IsNtPlatform());
  EXPECT_FALSE(IsBeforeWindows7());
}

TEST(Platform, LeaveIsAskedForOnce) {
  const TestWindow window;
  TrackMouseLeave(window);
  TrackMouseLeave(nullptr);
  TRACKMOUSEEVENT query = {};
  query.cbSize = sizeof query;
  query.dwFlags = TME_QUERY;
  ASSERT_TRUE(TrackMouseEvent(&query));
  // A notice for a window the pointer is not on is due at once; until then it is on the list.
  EXPECT_TRUE(query.hwndTrack == nullptr || query.hwndTrack == static_cast<HWND>(window));
}

// An object that answers "hWnd" and nothing else.
class Form : public IDispatch {
 public:
  explicit Form(Variant window) : window_(std::move(window)) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* id) override {
    *id = 5;
    return _wcsicmp(names[0], L"hwnd") == 0 && V_VT(&window_) != VT_EMPTY ? S_OK
                                                                          : DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* out,
                                   EXCEPINFO*, UINT*) override {
    return id == 5 ? VariantCopy(out, &window_) : DISP_E_MEMBERNOTFOUND;
  }

 private:
  Variant window_;
};

TEST(Platform, OpacityReplacesTheExtendedStyle) {
  const TestWindow window;
  SetWindowLongW(window, GWL_EXSTYLE, WS_EX_TOOLWINDOW);
  Form form(Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(static_cast<HWND>(window)))));
  SetWindowOpacity(&form, 100);
  EXPECT_EQ(GetWindowLongW(window, GWL_EXSTYLE) & (WS_EX_LAYERED | WS_EX_TOOLWINDOW),
            WS_EX_LAYERED);
  BYTE alpha = 0;
  DWORD flags = 0;
  COLORREF key = 0;
  ASSERT_TRUE(GetLayeredWindowAttributes(window, &key, &alpha, &flags));
  EXPECT_EQ(alpha, 100);
  EXPECT_EQ(flags, static_cast<DWORD>(LWA_ALPHA));
  SetWindowOpacity(nullptr, 1);
  Form windowless{Variant()}, nonsense{Variant(L"text")};
  SetWindowOpacity(&windowless, 1);
  SetWindowOpacity(&nonsense, 1);
}

TEST(Text, LengthsEmptinessAndModification) {
  DibSection surface;
  ASSERT_TRUE(surface.create(200, 40));
  RECT whole = {0, 0, 200, 40}, part = whole, longer = whole, empty = {1, 2, 3, 4};
  EXPECT_GT(DrawTextUnicode(surface.dc(), L"Ação do usuário", -1, &whole, DT_CALCRECT), 0);
  DrawTextUnicode(surface.dc(), L"Ação do usuário", 4, &part, DT_CALCRECT);
  DrawTextUnicode(surface.dc(), L"Ação do usuário", 4000, &longer, DT_CALCRECT);
  EXPECT_LT(part.right, whole.right);
  EXPECT_EQ(longer.right, whole.right);
  EXPECT_EQ(DrawTextUnicode(surface.dc(), L"", -1, &empty, DT_CALCRECT), 0);
  EXPECT_EQ(DrawTextUnicode(surface.dc(), L"text", 0, &empty, DT_CALCRECT), 0);
  EXPECT_EQ(empty.right, 3);
  RECT narrow = {0, 0, 20, 40};
  std::wstring text = L"A text that is far too long";
  DrawTextUnicode(surface.dc(), text, -1, &narrow, DT_END_ELLIPSIS | DT_MODIFYSTRING);
  EXPECT_EQ(text, L"A text that is far too long");
}

TEST(Region, SquareHalvesLoseTheirRounding) {
  const auto corner_cut = [](SquareSides square, int x, int y) {
    const HRGN region = round_region(20, 12, 3, 3, square);
    const bool cut = !PtInRegion(region, x, y);
    DeleteObject(region);
    return cut;
  };
  for (const int y : {0, 11}) {
    EXPECT_TRUE(corner_cut(SquareSides::kNone, 0, y));
    EXPECT_TRUE(corner_cut(SquareSides::kNone, 19, y));
    EXPECT_FALSE(corner_cut(SquareSides::kLeft, 0, y));
    EXPECT_TRUE(corner_cut(SquareSides::kLeft, 19, y));
    EXPECT_TRUE(corner_cut(SquareSides::kRight, 0, y));
    EXPECT_FALSE(corner_cut(SquareSides::kRight, 19, y));
    EXPECT_FALSE(corner_cut(SquareSides::kBoth, 0, y));
    EXPECT_FALSE(corner_cut(SquareSides::kBoth, 19, y));
  }
}

TEST(Region, TheWindowTakesItsShape) {
  const TestWindow window;
  SetRoundRegion(window, 50, 50, 5, 5);
  const HRGN seen = CreateRectRgn(0, 0, 0, 0);
  EXPECT_NE(GetWindowRgn(window, seen), ERROR);
  EXPECT_FALSE(PtInRegion(seen, 0, 0));
  EXPECT_TRUE(PtInRegion(seen, 25, 0));
  DeleteObject(seen);
  const size_t before = free_gdi_handles();
  for (int i = 0; i < 100; ++i) {
    SetRoundRegion(window, 50, 50, 5, 5);
    SetRoundRegion(nullptr, 50, 50, 5, 5);
  }
  EXPECT_EQ(free_gdi_handles(), before);
}

}  // namespace
}  // namespace kestrelon
