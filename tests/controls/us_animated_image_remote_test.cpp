// Loading from an address: what arrives, what does not, and what the form does meanwhile.
#include <filesystem>
#include <fstream>

#include "tests/controls/us_animated_image_fixture.h"
#include "tests/services/loopback_http_win.h"

namespace kestrelon::host {
namespace {

class AnimatedImageRemoteTest : public AnimatedImageTest {
 protected:
  AnimatedImageRemoteTest() {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    path_ = std::wstring(folder) + L"kestrelon animada.gif";
    write(three(3));
    site_ = image({20, 20, 60, 40}, kDontAnimate);
    bring_up(form_);
    take_log(*site_);
  }
  ~AnimatedImageRemoteTest() override { DeleteFileW(path_.c_str()); }

  void write(const Bytes& bytes) {
    std::ofstream(std::filesystem::path(path_), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  bool start(const std::wstring& name) {
    return call(*site_, L"LoadAnimatedGIF_Remote", {Variant(name)});
  }
  std::wstring address() const {
    std::wstring out = L"file:///" + path_;
    std::ranges::replace(out, L'\\', L'/');
    for (size_t at; (at = out.find(L' ')) != std::wstring::npos;) out.replace(at, 1, L"%20");
    return out;
  }

  std::wstring path_;
  ComPtr<ControlSite> site_;
};

TEST_F(AnimatedImageRemoteTest, LoadsWithoutWaiting) {
  for (const std::wstring& name : {address(), path_}) {
    load(*site_, {});
    put(*site_, L"DelayAnimation", Variant(kDelayNone));
    ASSERT_TRUE(start(name));
    EXPECT_EQ(take_log(*site_), Names{});  // not within the call
    EXPECT_EQ(number(*site_, L"FrameCount"), 0);
    const Names log = events_until(*site_, 2);
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[0], L"RemoteLoadComplete(4, 2, False)");
    EXPECT_EQ(log[1], L"FrameChanged(2, True)");
  }
}

TEST_F(AnimatedImageRemoteTest, StandsStillWhenTheHandlerCancels) {
  put(*site_, L"DelayAnimation", Variant(kDelayNone));
  long frames_at_event = 0;
  site_->events()->set_handler([&](const std::wstring& event, DISPPARAMS& parameters) {
    if (event != L"RemoteLoadComplete") return;
    frames_at_event = number(*site_, L"FrameCount");
    set_event_argument(parameters, 2, Variant(true));
  });
  ASSERT_TRUE(start(address()));
  EXPECT_EQ(events_until(*site_, 1), Names{L"RemoteLoadComplete(4, 2, False)"});
  pump_for(100);
  EXPECT_EQ(take_log(*site_), Names{});
  EXPECT_EQ(frames_at_event, 3);
  EXPECT_EQ(frame(*site_), 1);
  EXPECT_EQ(number(*site_, L"Action"), kStop);
}

TEST_F(AnimatedImageRemoteTest, TellsOfAFailureOnce) {
  load(*site_, three());
  ASSERT_TRUE(start(L"file:///C:/nada/nada.gif"));
  EXPECT_EQ(events_until(*site_, 1), Names{L"RemoteLoadFailure"});
  pump_for(60);
  EXPECT_EQ(take_log(*site_), Names{});
  EXPECT_EQ(number(*site_, L"FrameCount"), 3);  // what could not be reached takes nothing away
  write({'n', 'a', 'd', 'a'});
  ASSERT_TRUE(start(address()));
  EXPECT_EQ(events_until(*site_, 1), Names{L"RemoteLoadFailure"});
  EXPECT_EQ(number(*site_, L"FrameCount"), 0);
  EXPECT_FALSE(start(L""));
  pump_for(60);
  EXPECT_EQ(take_log(*site_), Names{});
}

TEST_F(AnimatedImageRemoteTest, AsksServers) {
  const ::kestrelon::testing::LoopbackHttp server;
  for (const wchar_t* path : {L"/echo", L"/drop"}) {  // no animation; no answer
    ASSERT_TRUE(start(L"http://" + server.address(path)));
    EXPECT_EQ(events_until(*site_, 1, 10000), Names{L"RemoteLoadFailure"}) << path;
  }
  EXPECT_GE(server.requests(), 2);
  ASSERT_TRUE(start(L"http://" + server.address(L"/never")));
  pump_for(100);
  form_.remove(*site_);
  site_.reset();
  pump_for(100);
}

TEST_F(AnimatedImageRemoteTest, LastLoadWins) {
  ASSERT_TRUE(start(L"file:///C:/nada/nada.gif"));
  ASSERT_TRUE(start(address()));
  EXPECT_EQ(events_until(*site_, 1), Names{L"RemoteLoadComplete(4, 2, False)"});
  ASSERT_TRUE(start(address()));
  load(*site_, three(0, 9, 9));  // by other means
  pump_for(200);
  EXPECT_EQ(take_log(*site_), Names{});
  EXPECT_EQ(number(*site_, L"ActualWidth"), 9);
}

TEST_F(AnimatedImageRemoteTest, MayBeDestroyedOrLoadedAnewOnTheWay) {
  ASSERT_TRUE(start(address()));
  form_.remove(*site_);
  site_.reset();
  pump_for(200);

  site_ = image({20, 20, 60, 40}, kDelayNone);
  site_->events()->set_handler([&](const std::wstring& event, DISPPARAMS&) {
    if (event == L"RemoteLoadComplete") load(*site_, three(0, 9, 9));
  });
  ASSERT_TRUE(start(address()));
  events_until(*site_, 2);
  EXPECT_EQ(number(*site_, L"ActualWidth"), 9);

  bool gone = false;
  site_->events()->set_handler([&](const std::wstring& event, DISPPARAMS&) {
    if (event != L"RemoteLoadComplete") return;
    gone = true;
    form_.remove(*site_);
    site_.reset();
  });
  ASSERT_TRUE(start(address()));
  EXPECT_TRUE(pump_until([&] { return gone; }, 3000));
  pump_for(60);
}

}  // namespace
}  // namespace kestrelon::host
