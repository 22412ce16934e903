#include <shobjidl.h>

#include <limits>

#include "base/counted_win.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Names = std::vector<std::wstring>;

// Stands for the task bar of the system while it lives, and writes down what it is told.
class FakeTaskBar {
 public:
  FakeTaskBar() {
    factory_ = make_com<Factory>(*this);
    CoRegisterClassObject(CLSID_TaskbarList, factory_.get(), CLSCTX_INPROC_SERVER,
                          REGCLS_MULTIPLEUSE, &cookie_);
  }
  ~FakeTaskBar() { CoRevokeClassObject(cookie_); }

  std::vector<std::string> calls;
  HWND window = nullptr;

 private:
  class List final : public ComObject<ITaskbarList3> {
   public:
    explicit List(FakeTaskBar& owner) : owner_(owner) {}
    STDMETHODIMP HrInit() override { return S_OK; }
    STDMETHODIMP AddTab(HWND) override { return S_OK; }
    STDMETHODIMP DeleteTab(HWND) override { return S_OK; }
    STDMETHODIMP ActivateTab(HWND) override { return S_OK; }
    STDMETHODIMP SetActiveAlt(HWND) override { return S_OK; }
    STDMETHODIMP MarkFullscreenWindow(HWND, BOOL) override { return S_OK; }
    STDMETHODIMP SetProgressValue(HWND at, ULONGLONG done, ULONGLONG total) override {
      owner_.window = at;
      owner_.calls.push_back(std::to_string(done) + "/" + std::to_string(total));
      return S_OK;
    }
    STDMETHODIMP SetProgressState(HWND at, TBPFLAG state) override {
      owner_.window = at;
      owner_.calls.push_back("state " + std::to_string(static_cast<int>(state)));
      return S_OK;
    }
    STDMETHODIMP RegisterTab(HWND, HWND) override { return S_OK; }
    STDMETHODIMP UnregisterTab(HWND) override { return S_OK; }
    STDMETHODIMP SetTabOrder(HWND, HWND) override { return S_OK; }
    STDMETHODIMP SetTabActive(HWND, HWND, DWORD) override { return S_OK; }
    STDMETHODIMP ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override { return S_OK; }
    STDMETHODIMP ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override { return S_OK; }
    STDMETHODIMP ThumbBarSetImageList(HWND, HIMAGELIST) override { return S_OK; }
    STDMETHODIMP SetOverlayIcon(HWND, HICON, LPCWSTR) override { return S_OK; }
    STDMETHODIMP SetThumbnailTooltip(HWND, LPCWSTR) override { return S_OK; }
    STDMETHODIMP SetThumbnailClip(HWND, RECT*) override { return S_OK; }

   private:
    FakeTaskBar& owner_;
  };
  class Factory final : public ComObject<IClassFactory> {
   public:
    explicit Factory(FakeTaskBar& owner) : owner_(owner) {}
    STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** out) override {
      return make_com<List>(owner_)->QueryInterface(iid, out);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

   private:
    FakeTaskBar& owner_;
  };

  ComPtr<Factory> factory_;
  DWORD cookie_ = 0;
};

class ProgressBarTest : public ControlTest {
 protected:
  ComPtr<ControlSite> bar(const RECT& bounds = {20, 20, 122, 40}) {
    return place(L"USProgressBar", bounds);
  }
  void show() {
    bring_up(form_);
    mouse_away();
  }
  static void value(ControlSite& site, double number) { put(site, L"Value", Variant(number)); }
  static LRESULT repaints(ControlSite& site) {
    static const UINT message = RegisterWindowMessageW(L"Kestrelon2012.FullRepaints");
    return SendMessageW(site.window(), message, 0, 0);
  }
  // Without its text, so that what is counted is the bar.
  static int filled(ControlSite& site, uint32_t color, int width = 102, int height = 20) {
    put(site, L"TextMode", Variant(0L));
    const Picture picture = draw_control(site, width, height);
    return static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), color));
  }
};

TEST_F(ProgressBarTest, FillsByValueAndNeverBeyond) {
  const auto site = bar();
  put(*site, L"Color", Variant(0x0000FFL));
  value(*site, 50);
  const int half = filled(*site, 0xFF0000);
  EXPECT_GT(half, 0);
  EXPECT_EQ(half % 50, 0);  // columns of the bar's hundred
  for (const double all : {100.0, 1e300, std::numeric_limits<double>::infinity()}) {
    value(*site, all);
    EXPECT_EQ(filled(*site, 0xFF0000), 2 * half);
  }
  for (const double none : {0.0, -5.0, -1e300}) {
    value(*site, none);
    EXPECT_EQ(filled(*site, 0xFF0000), 0);
  }
  value(*site, 50);
  value(*site, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(to_double(get(*site, L"Value")), 50);
  put(*site, L"Max", Variant(0L));
  EXPECT_EQ(filled(*site, 0xFF0000), 0);
  EXPECT_EQ(to_double(get(*site, L"Percent")), 0);
}

TEST_F(ProgressBarTest, GrowsUpwardsWhenItStands) {
  const auto site = bar({20, 20, 40, 122});
  put(*site, L"Orientation", Variant(1L));
  put(*site, L"Color", Variant(0x0000FFL));
  put(*site, L"TextMode", Variant(0L));
  value(*site, 10);
  const Picture picture = draw_control(*site, 20, 102);
  EXPECT_EQ(picture.at(15, 100), 0xFF0000u);
  EXPECT_EQ(picture.at(15, 91), 0xFF0000u);
  EXPECT_EQ(picture.at(15, 90), 0xFFFFFFu);
}

TEST_F(ProgressBarTest, SplitsTheTextAtTheEdgeOfTheBar) {
  const auto site = bar();
  put(*site, L"Color", Variant(0x00FF00L));
  put(*site, L"ForeColor1", Variant(0x0000FFL));
  put(*site, L"ForeColor2", Variant(0xFF0000L));
  put(*site, L"TextMode", Variant(3L));
  put(*site, L"Caption", Variant(L"||||||||||||||||"));
  value(*site, 50);
  const Picture picture = draw_control(*site, 102, 20);
  int red_left = 0, red_right = 0, blue_left = 0, blue_right = 0;
  for (int x = 0; x < 102; ++x)
    for (int y = 1; y < 19; ++y) {
      const uint32_t pixel = picture.at(x, y);
      (x < 51 ? red_left : red_right) += pixel == 0xFF0000;
      (x < 51 ? blue_left : blue_right) += pixel == 0x0000FF;
    }
  EXPECT_GT(blue_left, 0);
  EXPECT_GT(red_right, 0);
  EXPECT_EQ(red_left + blue_right, 0);
}

TEST_F(ProgressBarTest, TellsChangesAndTheEndOnceInOrder) {
  const auto site = bar();
  value(*site, 99.6);
  EXPECT_EQ(to_double(get(*site, L"Percent")), 99);
  put(*site, L"Decimals", Variant(1L));
  EXPECT_EQ(to_double(get(*site, L"Percent")), 99.6);
  value(*site, 99.6);
  EXPECT_EQ(take_names(*site), Names{L"Change"});
  value(*site, 100);
  value(*site, 101);
  EXPECT_EQ(take_names(*site), (Names{L"Change", L"Complete", L"Change"}));
  call_method(site->control_dispatch().get(), L"Reset");
  call_method(site->control_dispatch().get(), L"Increment");
  EXPECT_EQ(to_double(get(*site, L"Value")), 1);
  call_method(site->control_dispatch().get(), L"Increment", {Variant(99L)});
  EXPECT_EQ(take_names(*site), (Names{L"Change", L"Change", L"Change", L"Complete"}));
}

TEST_F(ProgressBarTest, DrawsAtOnceWhatShowsAndNothingElse) {
  const auto site = bar();
  show();
  value(*site, 10);
  LRESULT before = repaints(*site);
  for (int i = 1; i < 1000; ++i) value(*site, 10 + i / 1001.0);
  EXPECT_EQ(repaints(*site), before);
  // No message runs in between.
  value(*site, 11);
  EXPECT_EQ(repaints(*site), ++before);
  put(*site, L"TextMode", Variant(2L));
  put(*site, L"Decimals", Variant(2L));
  pump_for(30);
  before = repaints(*site);
  value(*site, 11.001);
  EXPECT_EQ(repaints(*site), before);
  value(*site, 11.006);
  EXPECT_EQ(repaints(*site), before + 1);
  const auto control = site->control_dispatch();
  call_method(control.get(), L"DisableRefresh");
  value(*site, 80);
  EXPECT_EQ(repaints(*site), before + 1);
  call_method(control.get(), L"Refresh");
  call_method(control.get(), L"DrawProgressBar");
  EXPECT_EQ(repaints(*site), before + 2);
}

TEST_F(ProgressBarTest, RunsEndlesslyOnlyWhileItIsSeen) {
  const auto site = bar();
  show();
  put(*site, L"State", Variant(1L));
  const LRESULT began = repaints(*site);
  EXPECT_TRUE(pump_until([&] { return repaints(*site) > began + 3; }, 3000));
  ShowWindow(site->window(), SW_HIDE);
  pump_for(50);
  const LRESULT hidden = repaints(*site);
  pump_for(150);
  EXPECT_EQ(repaints(*site), hidden);
  ShowWindow(site->window(), SW_SHOW);
  EXPECT_TRUE(pump_until([&] { return repaints(*site) > hidden + 3; }, 3000));
  put(*site, L"State", Variant(2L));
  pump_for(50);
  const LRESULT ended = repaints(*site);
  pump_for(150);
  EXPECT_EQ(repaints(*site), ended);
}

TEST_F(ProgressBarTest, MarksTheFormByTheThemeAlone) {
  const auto site = bar();
  const long before = number(*site, L"Color");
  site->clear_changes();
  put(*site, L"Theme", Variant(0L));
  EXPECT_EQ(site->changes().size(), 1u);
  EXPECT_EQ(number(*site, L"Color"), 0xC56A31);
  EXPECT_NE(number(*site, L"Color"), before);
  put(*site, L"Theme", Variant(7L));
  EXPECT_EQ(number(*site, L"Color"), 0xC56A31);
}

TEST_F(ProgressBarTest, MirrorsWholePercentsAndStatesOnTheTaskBarAndClearsIt) {
  FakeTaskBar task_bar;
  const auto site = bar();
  show();
  value(*site, 5);
  EXPECT_TRUE(task_bar.calls.empty());
  put(*site, L"TaskBar", Variant(true));
  EXPECT_EQ(task_bar.calls, (std::vector<std::string>{"5/100", "state 2"}));
  EXPECT_EQ(task_bar.window, form_.hwnd());
  task_bar.calls.clear();
  for (int i = 0; i < 50; ++i) value(*site, 5 + i / 100.0);
  EXPECT_TRUE(task_bar.calls.empty());
  value(*site, 6);
  put(*site, L"State", Variant(4L));
  put(*site, L"State", Variant(1L));
  EXPECT_EQ(task_bar.calls,
            (std::vector<std::string>{"6/100", "state 2", "6/100", "state 4", "state 1"}));
  task_bar.calls.clear();
  form_.remove(*site);
  EXPECT_EQ(task_bar.calls, std::vector<std::string>{"state 0"});
}

TEST_F(ProgressBarTest, SurvivesHandlersThatRemoveIt) {
  for (const wchar_t* event : {L"Change", L"Complete", L"MouseEnter", L"Click"}) {
    auto site = bar();
    form_.show();
    mouse_away();
    bool removed = false;
    site->on_event([&](const std::wstring& name, DISPPARAMS&) {
      if (name != event || removed) return;
      removed = true;
      form_.remove(*site);
    });
    value(*site, 100);
    if (!removed) {
      part_clicks();
      mouse_click(form_.hwnd(), 30, 30);
    }
    EXPECT_TRUE(removed) << std::string(event, event + wcslen(event));
    site.reset();
    pump_for(50);
  }
}

TEST_F(ProgressBarTest, BearsAHandlerThatAssignsAgain) {
  const auto site = bar();
  int depth = 0;
  site->on_event([&](const std::wstring& name, DISPPARAMS&) {
    if (name == L"Change" && depth++ < 20) value(*site, 100.0 - depth);
    if (name == L"Complete") put(*site, L"Max", Variant(1L));
  });
  value(*site, 100);
  EXPECT_EQ(depth, 21);
  EXPECT_EQ(to_double(get(*site, L"Value")), 80);
  EXPECT_EQ(number(*site, L"Max"), 1);
}

}  // namespace
}  // namespace kestrelon::host
