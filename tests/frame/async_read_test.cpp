// Reads through a container that offers to bind, and through one that does not.
#include "frame/async_read.h"

#include <gtest/gtest.h>
#include <servprov.h>
#include <urlmon.h>

#include <optional>

#include "host/com_object.h"
#include "host/message_loop.h"
#include "host/persistence.h"

namespace kestrelon {
namespace {

using host::ComObject;
using host::pump_for;
using host::pump_until;
using Bytes = std::vector<uint8_t>;

/// A container that hands out monikers of its own and drives the bindings by hand.
class BindingSite final : public ComObject<IOleClientSite, IServiceProvider, IBindHost> {
 public:
  // What the last binding reports to, and what it was asked for.
  ComPtr<IBindStatusCallback> sink;
  std::wstring name;
  HRESULT answer_to_bind = MK_S_ASYNCHRONOUS;
  bool refuses_name = false;
  ComPtr<IStream> answer_at_once;

  void give(const Bytes& bytes) const {
    const auto stream = host::stream_over(bytes);
    FORMATETC format{};
    STGMEDIUM medium{};
    medium.tymed = TYMED_ISTREAM;
    medium.pstm = stream.get();
    sink->OnDataAvailable(BSCF_INTERMEDIATEDATANOTIFICATION, static_cast<DWORD>(bytes.size()),
                          &format, &medium);
  }

  STDMETHODIMP QueryService(REFGUID service, REFIID iid, void** out) override {
    return service == IID_IBindHost ? QueryInterface(iid, out) : E_NOINTERFACE;
  }
  STDMETHODIMP CreateMoniker(LPOLESTR text, IBindCtx*, IMoniker** out, DWORD) override {
    if (refuses_name) return MK_E_SYNTAX;
    name = text;
    return CreateItemMoniker(L"!", text, out);
  }
  STDMETHODIMP MonikerBindToStorage(IMoniker*, IBindCtx*, IBindStatusCallback* callback, REFIID,
                                    void** out) override {
    *out = answer_at_once.detach();
    sink = ComPtr<IBindStatusCallback>(callback);
    return answer_to_bind;
  }
  STDMETHODIMP MonikerBindToObject(IMoniker*, IBindCtx*, IBindStatusCallback*, REFIID,
                                   void**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOTIMPL; }
  STDMETHODIMP ShowObject() override { return E_NOTIMPL; }
  STDMETHODIMP OnShowWindow(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }
};

class AsyncReadTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }

  bool start(const std::wstring& name = L"fotos/a.gif", size_t limit = 100) {
    return read_->start(site_.get(), name, limit, [this](HRESULT result, Bytes bytes) {
      ++calls_;
      result_ = result;
      bytes_ = std::move(bytes);
      if (in_done_) in_done_();
    });
  }
  bool done() {
    return pump_until([&] { return calls_ > 0; }, 2000);
  }

  ComPtr<BindingSite> site_ = host::make_com<BindingSite>();
  std::optional<AsyncRead> read_{std::in_place};
  std::function<void()> in_done_;
  int calls_ = 0;
  HRESULT result_ = S_FALSE;
  Bytes bytes_;
};

TEST_F(AsyncReadTest, GathersWhatTheContainerGives) {
  ASSERT_TRUE(start());
  EXPECT_EQ(site_->name, L"fotos/a.gif");  // the container's to understand
  DWORD flags = 0;
  BINDINFO info{};
  info.cbSize = sizeof info;
  EXPECT_EQ(site_->sink->GetBindInfo(&flags, &info), S_OK);
  EXPECT_NE(flags & BINDF_ASYNCHRONOUS, 0u);
  site_->give({1, 2, 3});
  site_->give({4});
  site_->sink->OnStopBinding(S_OK, nullptr);
  EXPECT_EQ(calls_, 0);  // not within the container's call
  EXPECT_TRUE(done());
  EXPECT_EQ(result_, S_OK);
  EXPECT_EQ(bytes_, (Bytes{1, 2, 3, 4}));
  EXPECT_FALSE(read_->running());
  pump_for(60);
  EXPECT_EQ(calls_, 1);
}

TEST_F(AsyncReadTest, TakesWhatAContainerGivesAtOnce) {
  site_->answer_to_bind = S_OK;  // and no word to the sink
  site_->answer_at_once = host::stream_over({7, 8});
  ASSERT_TRUE(start());
  EXPECT_EQ(calls_, 0);
  EXPECT_TRUE(done());
  EXPECT_EQ(bytes_, (Bytes{7, 8}));
  calls_ = 0;
  ASSERT_TRUE(start());  // neither bytes nor a word
  EXPECT_TRUE(done());
  EXPECT_TRUE(FAILED(result_));
}

TEST_F(AsyncReadTest, FailsOnceWhicheverWayItFails) {
  ASSERT_TRUE(start());
  site_->give({1, 2, 3});
  site_->sink->OnStopBinding(E_FAIL, nullptr);
  EXPECT_TRUE(done());
  EXPECT_EQ(result_, E_FAIL);
  EXPECT_TRUE(bytes_.empty());

  calls_ = 0;
  site_->answer_to_bind = E_ACCESSDENIED;  // and no word to the sink
  ASSERT_TRUE(start());
  EXPECT_TRUE(done());
  EXPECT_EQ(result_, E_ACCESSDENIED);
  pump_for(60);
  EXPECT_EQ(calls_, 1);

  calls_ = 0;
  site_->answer_to_bind = MK_S_ASYNCHRONOUS;
  ASSERT_TRUE(start(L"a", 5));
  site_->give({1, 2, 3});
  site_->give({4, 5, 6});  // more than the limit
  site_->sink->OnStopBinding(S_OK, nullptr);
  EXPECT_TRUE(done());
  EXPECT_TRUE(FAILED(result_));
  EXPECT_TRUE(bytes_.empty());
}

TEST_F(AsyncReadTest, IsSilentOnceCancelledReplacedOrDestroyed) {
  ASSERT_TRUE(start());
  const auto first = site_->sink;
  ASSERT_TRUE(start(L"b.gif"));
  first->OnStopBinding(S_OK, nullptr);
  pump_for(60);
  EXPECT_EQ(calls_, 0);
  EXPECT_TRUE(read_->running());
  site_->sink->OnStopBinding(S_OK, nullptr);
  read_->cancel();  // the answer was on its way
  pump_for(60);
  EXPECT_EQ(calls_, 0);
  ASSERT_TRUE(start());
  read_.reset();
  EXPECT_TRUE(FAILED(site_->sink->OnStartBinding(0, nullptr)));
  site_->give({1});
  site_->sink->OnStopBinding(S_OK, nullptr);
  pump_for(60);
  EXPECT_EQ(calls_, 0);
}

TEST_F(AsyncReadTest, MayGoOrStartAgainInItsAnswer) {
  in_done_ = [&] { read_.reset(); };
  ASSERT_TRUE(start());
  site_->sink->OnStopBinding(S_OK, nullptr);
  EXPECT_TRUE(done());
  read_.emplace();
  calls_ = 0;
  in_done_ = [&] {
    if (calls_ == 1) start(L"next.gif");
  };
  ASSERT_TRUE(start());
  site_->sink->OnStopBinding(S_OK, nullptr);
  EXPECT_TRUE(done());
  EXPECT_EQ(site_->name, L"next.gif");
  EXPECT_TRUE(read_->running());
  in_done_ = nullptr;
}

TEST_F(AsyncReadTest, GoesToTheSystemWhenTheContainerDeclines) {
  site_->refuses_name = true;
  wchar_t folder[MAX_PATH], file[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  GetTempFileNameW(folder, L"kst", 0, file);
  const HANDLE handle = CreateFileW(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(handle, "abc", 3, &written, nullptr);
  CloseHandle(handle);
  ASSERT_TRUE(start(file));
  EXPECT_TRUE(done());
  EXPECT_EQ(result_, S_OK);
  EXPECT_EQ(bytes_, (Bytes{'a', 'b', 'c'}));
  EXPECT_FALSE(static_cast<bool>(site_->sink));
  calls_ = 0;
  DeleteFileW(file);
  ASSERT_TRUE(start(file));
  EXPECT_TRUE(done());
  EXPECT_TRUE(FAILED(result_));
  EXPECT_FALSE(start(L""));
}

}  // namespace
}  // namespace kestrelon
