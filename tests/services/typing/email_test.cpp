#include "services/typing/email.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrelon {
namespace {

TEST(IsValidEmail, FollowsItsRulesToTheLetter) {
  for (const wchar_t* text :
       {L"ana@firma.com.br", L"  ana@firma.com.br  ", L"ANA@FIRMA.COM", L"a.b-c_d@x.org",
        L"a@b.om",  // a fragment of the list
        L"a@b.c", L"1@2.co", L"a@b.museum", L"a@-b.com", L"_@x.zw", L"a@b.e"})
    EXPECT_TRUE(is_valid_email(text)) << std::wstring(text).size();
  // The last part is "B@C", which the list does not hold.
  EXPECT_FALSE(is_valid_email(L"a.b@c"));
}

TEST(IsValidEmail, RefusesEachBrokenRule) {
  for (const wchar_t* text : {L"",
                              L"   ",
                              L"ana",
                              L"ana@firma",
                              L"ana.firma.com",
                              L"a@b@c.com",
                              L"@firma.com",
                              L"ana.com@",
                              L"ana@.com",
                              L"ana.@firma.com",
                              L".ana@firma.com",
                              L"ana@firma.com.",
                              L"ana@firma..com",
                              L"an a@firma.com",
                              L"ana+x@firma.com",
                              L"aná@firma.com",
                              L"ana@firma.xyz",
                              L"ana@firma.dev",
                              L"\"ana\"@firma.com",
                              L"ana@[127.0.0.1]"})
    EXPECT_FALSE(is_valid_email(text)) << std::wstring(text).size();
}

TEST(IsValidEmailEx, TakesPlusSignsAndAnyEndingOfLetters) {
  for (const wchar_t* text : {L"ana+loja@firma.com.br", L"a@b.dev", L"a@b.photography", L"a@b.br"})
    EXPECT_TRUE(is_valid_email_ex(text)) << std::wstring(text).size();
  for (const wchar_t* text : {L"a@b.c", L"a@b.c1", L"a@b+c.com", L"a@b", L"a.b@c", L"", L"a@b@c.br",
                              L"a@b.çé", L"a b@c.br"})
    EXPECT_FALSE(is_valid_email_ex(text)) << std::wstring(text).size();
}

// Examples that the mail standards give (RFC 822 and its successors, RFC 3696), with what the rules
// of each check say.
TEST(IsValidEmail, AnswersTheExamplesOfTheMailStandards) {
  const struct {
    const wchar_t* text;
    bool plain, extended;
  } cases[] = {{L"user@example.com", true, true},
               {L"customer/department=shipping@example.com", false, false},
               {L"$A12345@example.com", false, false},
               {L"!def!xyz%abc@example.com", false, false},
               {L"_somename@example.com", true, true},
               {L"user+mailbox@example.com", false, true},
               {L"\"Abc@def\"@example.com", false, false},
               {L"Abc\\@def@example.com", false, false},
               {L"Joe.\\\\Blow@example.com", false, false},
               {L"jdoe@machine.example", false, true},
               {L"john.q.public@example.com", true, true},
               {L"one@y.test", false, true},
               {L"jdoe@example.org", true, true},
               {L"boss@nil.test", false, true},
               {L"sysservices@example.net", true, true},
               {L"pete@silly.test", false, true},
               {L"c@(Chris's host.)public.example", false, false},
               {L"Fred Foo@example.com", false, false},
               {L"mark@uts.edu.au", true, true}};
  for (const auto& c : cases) {
    EXPECT_EQ(is_valid_email(c.text), c.plain) << std::string(c.text, c.text + wcslen(c.text));
    EXPECT_EQ(is_valid_email_ex(c.text), c.extended)
        << std::string(c.text, c.text + wcslen(c.text));
  }
}

}  // namespace
}  // namespace kestrelon
