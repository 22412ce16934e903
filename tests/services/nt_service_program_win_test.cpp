#include "tests/services/nt_service_program_win.h"

#include <filesystem>
#include <fstream>

#include "services/nt_services/kn_ntservices_win.h"
#include "services/nt_services/service_text.h"
#include "tests/services/service_fixture_win.h"

namespace kestrelon::testing {
namespace {

constexpr wchar_t kServiceName[] = L"KestrelonTest";
enum Event : DISPID { kStarted = 2, kPaused, kContinued, kCommand, kStop, kShutdown };

// Writes down every event. Command 200 ends the service with failure 7, and so does the start if
// the second argument says "fail".
class Listener final : public IDispatch {
 public:
  explicit Listener(_KN_NTSERVICES& service) : service_(service) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == DIID___KN_NTSERVICES;
    *out = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    bool fails = false;
    std::string line = std::to_string(event);
    if (event == kStarted) {
      const auto arguments = split_arguments(to_wstring(*V_BSTRREF(given->rgvarg)));
      if (!arguments.empty()) log_ = arguments[0];
      fails = arguments.size() > 1 && arguments[1] == L"fail";
    } else if (event == kCommand) {
      const long code = *V_I4REF(given->rgvarg);
      line += " " + std::to_string(code);
      fails = code == 200;
    }
    if (GetCurrentThreadId() != thread_) line += " on another thread";
    std::ofstream(std::filesystem::path(log_), std::ios::app) << line << "\n";
    if (fails) service_.ReportStopped(7);
    if (fails || event == kStop || event == kShutdown) PostQuitMessage(0);
    return S_OK;
  }

 private:
  _KN_NTSERVICES& service_;
  std::wstring log_;
  DWORD thread_ = GetCurrentThreadId();
};

// Not a test: what the service manager starts.
TEST(NtServiceProgram, DISABLED_Serves) {
  OleInitialize(nullptr);
  {
    const auto service = make_service<_KN_NTSERVICES, KN_NTSERVICES>();
    Listener listener(*service.get());
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(service.as<IConnectionPointContainer>()->FindConnectionPoint(DIID___KN_NTSERVICES,
                                                                           point.put()),
              S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(&listener, &cookie), S_OK);
    ASSERT_TRUE(truth_of(
        [&](VARIANT_BOOL* out) { return service->RunAsService(Bstr(kServiceName).get(), out); }));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    point->Unadvise(cookie);
  }
  OleUninitialize();
}

}  // namespace

std::wstring service_command() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::wstring(path) + L" --gtest_filter=NtServiceProgram.* --gtest_also_run_disabled_tests";
}

std::wstring service_arguments(const std::wstring& log, const wchar_t* manner) {
  return join_arguments({log, manner});
}

std::vector<std::string> lines_of(const std::wstring& file) {
  std::ifstream in{std::filesystem::path(file)};
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace kestrelon::testing
