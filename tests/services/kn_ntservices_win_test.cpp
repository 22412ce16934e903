#include "services/nt_services/kn_ntservices_win.h"

#include <filesystem>

#include "tests/services/nt_service_program_win.h"
#include "tests/services/service_fixture_win.h"

namespace kestrelon::testing {
namespace {

using ::testing::ElementsAre;

// A service of this very program, installed for the test and gone behind it.
class NtServicesTest : public ServiceTest {
 protected:
  void SetUp() override {
    std::filesystem::remove(log_);
    services_->UninstallService(name_.get(), 10, &done_);
    ASSERT_TRUE(install()) << error();
  }
  void TearDown() override {
    services_->UninstallService(name_.get(), 10, &done_);
    std::filesystem::remove(log_);
  }

  bool install() {
    return truth_of([&](VARIANT_BOOL* out) {
      return services_->InstallService(name_.get(), Bstr(L"Teste de serviço").get(),
                                       Bstr(service_command()).get(), Bstr(L"Só um teste").get(),
                                       Start_Manual, none_.get(), none_.get(), none_.get(), out);
    });
  }
  bool start(const wchar_t* manner = L"serve") {
    const Bstr arguments(service_arguments(log_.wstring(), manner));
    return truth_of([&](VARIANT_BOOL* out) {
      return services_->StartService(name_.get(), arguments.get(), kPatience, out);
    });
  }
  bool stop() {
    return truth_of([&](VARIANT_BOOL* out) {
      return services_->StopService(name_.get(), kPatience, VARIANT_FALSE, out);
    });
  }
  bool command(long code) {
    return truth_of(
        [&](VARIANT_BOOL* out) { return services_->SendCommand(name_.get(), code, out); });
  }
  ENUM_SERVICE_STATE state() {
    ENUM_SERVICE_STATE state = Service_Unknown;
    EXPECT_EQ(services_->get_State(name_.get(), &state), S_OK);
    return state;
  }
  long process() {
    return number_from([&](long* out) { return services_->get_ProcessId(name_.get(), out); });
  }
  long error_number() {
    return number_from([&](long* out) { return services_->get_ErrNumber(out); });
  }
  std::wstring error() {
    return text_of([&](BSTR* out) { return services_->get_ErrDescription(out); });
  }
  // What the service wrote down, once there are so many lines.
  std::vector<std::string> heard(size_t count) {
    const ULONGLONG end = GetTickCount64() + kPatience * 1000;
    while (lines_of(log_.wstring()).size() < count && GetTickCount64() < end) Sleep(20);
    return lines_of(log_.wstring());
  }

  static constexpr long kPatience = 30;  // seconds

  Bstr name_{L"KestrelonTest"}, none_{L""};
  VARIANT_BOOL done_ = VARIANT_FALSE;
  std::filesystem::path log_ = std::filesystem::temp_directory_path() / L"kestrelon serviço.txt";
  ComPtr<_KN_NTSERVICES> services_ = make_service<_KN_NTSERVICES, KN_NTSERVICES>();
};

TEST_F(NtServicesTest, AnInstalledServiceTellsWhatItIs) {
  EXPECT_EQ(state(), Service_Stopped);
  EXPECT_EQ(process(), 0);
  EXPECT_FALSE(install()) << "the name is taken";
  EXPECT_EQ(error_number(), ERROR_SERVICE_EXISTS);
  EXPECT_NE(error(), L"");
  ENUM_SERVICE_START start = Start_Automatic;
  EXPECT_EQ(services_->get_StartType(name_.get(), &start), S_OK);
  EXPECT_EQ(start, Start_Manual);
  EXPECT_EQ(error_number(), 0) << "a call that succeeds clears the error";
  EXPECT_EQ(services_->put_StartType(name_.get(), Start_Disabled), S_OK);
  services_->get_StartType(name_.get(), &start);
  EXPECT_EQ(start, Start_Disabled);
  EXPECT_FALSE(this->start()) << "disabled";
  EXPECT_EQ(error_number(), ERROR_SERVICE_DISABLED);
  services_->put_StartType(name_.get(), static_cast<ENUM_SERVICE_START>(1));
  EXPECT_EQ(error_number(), ERROR_INVALID_PARAMETER) << "drivers are not made here";
  EXPECT_EQ(text_of([&](BSTR* out) { return services_->get_PathName(name_.get(), out); }),
            service_command());
  EXPECT_EQ(text_of([&](BSTR* out) { return services_->get_Description(name_.get(), out); }),
            L"Só um teste");
  services_->put_DisplayName(name_.get(), Bstr(L"Outro nome").get());
  EXPECT_EQ(text_of([&](BSTR* out) { return services_->get_DisplayName(name_.get(), out); }),
            L"Outro nome");
}

TEST_F(NtServicesTest, OrdersReachTheProgramOnItsOwnThreadInTheirOrder) {
  ASSERT_TRUE(start()) << error();
  EXPECT_EQ(state(), Service_Running);
  EXPECT_NE(process(), 0);
  EXPECT_FALSE(start()) << "it runs";
  EXPECT_TRUE(truth_of([&](VARIANT_BOOL* out) {
    return services_->PauseService(name_.get(), kPatience, out);
  })) << error();
  EXPECT_EQ(state(), Service_Paused);
  EXPECT_TRUE(truth_of([&](VARIANT_BOOL* out) {
    return services_->ContinueService(name_.get(), kPatience, out);
  })) << error();
  EXPECT_EQ(state(), Service_Running);
  EXPECT_TRUE(command(130)) << error();
  EXPECT_TRUE(command(255)) << error();
  EXPECT_FALSE(command(127)) << "the system's own";
  EXPECT_FALSE(command(256));
  EXPECT_EQ(heard(5).size(), 5u);
  EXPECT_TRUE(stop()) << error();
  EXPECT_EQ(state(), Service_Stopped);
  EXPECT_THAT(heard(6), ElementsAre("2", "3", "4", "5 130", "5 255", "6"));
  EXPECT_FALSE(stop()) << "it does not run";
  EXPECT_EQ(error_number(), ERROR_SERVICE_NOT_ACTIVE);
}

TEST_F(NtServicesTest, AServiceThatFailsEndsTheWaitWithItsOwnCode) {
  EXPECT_FALSE(start(L"fail"));
  EXPECT_EQ(error_number(), ERROR_SERVICE_SPECIFIC_ERROR);
  EXPECT_NE(error().find(L'7'), std::wstring::npos) << "the code that it gave";
  EXPECT_EQ(state(), Service_Stopped);
}

TEST_F(NtServicesTest, ARestartMakesAnotherProcess) {
  ASSERT_TRUE(start()) << error();
  const long first = process();
  EXPECT_TRUE(truth_of([&](VARIANT_BOOL* out) {
    return services_->RestartService(name_.get(), kPatience, out);
  })) << error();
  EXPECT_EQ(state(), Service_Running);
  EXPECT_NE(process(), first);
  SAFEARRAY *names = nullptr, *shown = nullptr, *states = nullptr;
  const long count = number_from([&](long* out) {
    return services_->EnumServices(&names, &shown, &states, VARIANT_TRUE, out);
  });
  bool found = false;
  for (LONG i = 0; i < count; ++i) {
    Bstr name;
    long at = 0;
    SafeArrayGetElement(names, &i, name.put());
    SafeArrayGetElement(states, &i, &at);
    if (name.view() == name_.view()) found = at == Service_Running;
  }
  EXPECT_TRUE(found) << count;
  for (SAFEARRAY* array : {names, shown, states}) SafeArrayDestroy(array);
}

TEST_F(NtServicesTest, ARunningServiceIsStoppedToBeRemoved) {
  ASSERT_TRUE(start()) << error();
  EXPECT_TRUE(truth_of([&](VARIANT_BOOL* out) {
    return services_->UninstallService(name_.get(), kPatience, out);
  })) << error();
  EXPECT_FALSE(
      truth_of([&](VARIANT_BOOL* out) { return services_->ServiceExists(name_.get(), out); }));
  EXPECT_EQ(state(), Service_Unknown);
  EXPECT_EQ(error_number(), ERROR_SERVICE_DOES_NOT_EXIST);
}

TEST_F(NtServicesTest, AProgramThatNoManagerStartedIsNoService) {
  EXPECT_FALSE(
      truth_of([&](VARIANT_BOOL* out) { return services_->RunAsService(name_.get(), out); }));
  EXPECT_EQ(error_number(), ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  EXPECT_EQ(services_->ReportStopped(0), S_OK) << "and has nothing to stop";
}

}  // namespace
}  // namespace kestrelon::testing
