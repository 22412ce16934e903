#include "services/nt_services/service_text.h"

#include <gtest/gtest.h>

#include "services/nt_services/service_phase.h"

namespace kestrelon {
namespace {

TEST(ServiceText, QuotesTheProgramAloneAndOnlyOneWithBlanks) {
  EXPECT_EQ(quoted_program(L"C:\\Meus Dados\\a.exe"), L"\"C:\\Meus Dados\\a.exe\"");
  EXPECT_EQ(quoted_program(L"C:\\Meus Dados\\a.EXE /s \"x y\""),
            L"\"C:\\Meus Dados\\a.EXE\" /s \"x y\"");
  EXPECT_EQ(quoted_program(L"C:\\a.exe b c"), L"C:\\a.exe b c");
  EXPECT_EQ(quoted_program(L" \"C:\\a b.exe\" c "), L"\"C:\\a b.exe\" c");
  // A folder's name that begins like the end of a program is passed by.
  EXPECT_EQ(quoted_program(L"C:\\x.executa b\\a.exe c"), L"\"C:\\x.executa b\\a.exe\" c");
  EXPECT_EQ(quoted_program(L"C:\\a b\\sem fim"), L"\"C:\\a b\\sem fim\"");
  EXPECT_EQ(quoted_program(L""), L"");
}

TEST(ServiceText, ListsNamesAndEndsThemWithTwoZeros) {
  const std::vector<std::wstring> names = name_list(L" a ;;b c; +grupo;");
  EXPECT_EQ(names, (std::vector<std::wstring>{L"a", L"b c", L"+grupo"}));
  EXPECT_EQ(multi_text(names), std::wstring(L"a\0b c\0+grupo\0\0", 14));
  EXPECT_TRUE(name_list(L" ; ").empty());
}

TEST(ServiceText, GivesPlainUsersTheMachine) {
  EXPECT_EQ(account_name(L""), L"");
  EXPECT_EQ(account_name(L"maria"), L".\\maria");
  EXPECT_EQ(account_name(L"LOJA\\maria"), L"LOJA\\maria");
  EXPECT_EQ(account_name(L"maria@loja"), L"maria@loja");
  EXPECT_EQ(account_name(L"localsystem"), L"localsystem");
  EXPECT_EQ(account_name(L"NetworkService"), L"NT AUTHORITY\\NetworkService");
}

TEST(ServiceText, ArgumentsComeBackThroughTheirText) {
  const std::vector<std::wstring> given{L"a", L"", L"b c", L"d\"e", L"\"", L"f\tg"};
  EXPECT_EQ(split_arguments(join_arguments(given)), given);
  EXPECT_EQ(split_arguments(L"  x   \"y z"), (std::vector<std::wstring>{L"x", L"y z"}));
  EXPECT_TRUE(split_arguments(L" \t").empty());
}

TEST(ServiceText, ErrorsSpeakPortuguese) {
  EXPECT_EQ(service_error_text(0), L"");
  EXPECT_EQ(service_error_text(5), L"Acesso negado. Execute como administrador.");
  EXPECT_NE(service_error_text(1066, 42).find(L"42"), std::wstring::npos);
  EXPECT_NE(service_error_text(4294967295u).find(L"4294967295"), std::wstring::npos);
}

TEST(ServicePhase, AStopDuringAnotherOrderIsNotUndoneByItsEnd) {
  ServicePhase phase;
  phase.begin();
  EXPECT_FALSE(phase.take(ServiceOrder::kStop));  // not before it has started
  phase.done(ServiceOrder::kInterrogate);
  ASSERT_EQ(phase.state(), ServiceState::kRunning);
  EXPECT_TRUE(phase.take(ServiceOrder::kPause));
  EXPECT_FALSE(phase.take(ServiceOrder::kPause));
  EXPECT_TRUE(phase.take(ServiceOrder::kStop));
  phase.done(ServiceOrder::kPause);
  EXPECT_EQ(phase.state(), ServiceState::kStopping);
  EXPECT_FALSE(phase.take(ServiceOrder::kShutdown));  // one end is enough
  EXPECT_FALSE(phase.take(static_cast<ServiceOrder>(200)));
  phase.done(ServiceOrder::kStop);
  EXPECT_EQ(phase.state(), ServiceState::kStopped);
}

TEST(ServicePhase, OnlyPendingStatesBeatAndEachCountsAnew) {
  ServicePhase phase;
  EXPECT_FALSE(phase.beat());
  phase.begin();
  const uint32_t first = phase.checkpoint();
  EXPECT_TRUE(phase.beat());
  EXPECT_GT(phase.checkpoint(), first);
  phase.done(ServiceOrder::kInterrogate);
  EXPECT_EQ(phase.checkpoint(), 0u);
  EXPECT_FALSE(phase.beat());
  EXPECT_TRUE(phase.take(ServiceOrder::kPause));
  phase.stop();
  phase.done(ServiceOrder::kPause);
  EXPECT_EQ(phase.state(), ServiceState::kStopped);
}

TEST(ServicePhase, TakesOwnOrdersWithinTheirRangeOnly) {
  ServicePhase phase;
  phase.begin();
  phase.done(ServiceOrder::kInterrogate);
  EXPECT_FALSE(phase.take(static_cast<ServiceOrder>(127)));
  EXPECT_TRUE(phase.take(static_cast<ServiceOrder>(128)));
  EXPECT_TRUE(phase.take(static_cast<ServiceOrder>(255)));
  EXPECT_FALSE(phase.take(static_cast<ServiceOrder>(256)));
  EXPECT_FALSE(phase.take(ServiceOrder::kContinue));
  EXPECT_EQ(phase.state(), ServiceState::kRunning);
}

}  // namespace
}  // namespace kestrelon
