#include "services/ajax/ajax_text.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

TEST(AjaxText, AddressesKeepTheirCaseAndGetAScheme) {
  EXPECT_EQ(full_address(L"Exemplo.com/A"), L"http://Exemplo.com/A");
  EXPECT_EQ(full_address(L"HTTPS://Exemplo.COM"), L"HTTPS://Exemplo.COM");
  EXPECT_EQ(full_address(L"Http://x"), L"Http://x");
  EXPECT_EQ(full_address(L"ftp://x"), L"http://ftp://x");
  EXPECT_EQ(full_address(L"httpsx"), L"http://httpsx");
}

TEST(AjaxText, EncodingTakesTheLowByteOfEveryCharacter) {
  EXPECT_EQ(url_encode(L"AB"), L"%41%42");
  EXPECT_EQ(url_encode(L"\x0Fé\x20AC"), L"%0F%E9%AC");
  EXPECT_EQ(url_encode(L""), L"");
}

TEST(AjaxText, BodiesKeepOrderAndDuplicatesAndNeverEncodeNames) {
  const FormFields fields = {{L"a b", L"1&2"}, {L"a b", L""}, {L"", L"z"}};
  EXPECT_EQ(form_body(fields, false), L"a b=1&2&a b=&=z");
  EXPECT_EQ(form_body(fields, true), L"a b=%31%26%32&a b=&=%7A");
  EXPECT_EQ(form_body({}, true), L"");
}

TEST(AjaxText, LengthsAreThoseOfTheWire) {
  EXPECT_EQ(wire_length(L"a=ação€"), 11u);
  EXPECT_EQ(wire_length(L"😀"), 4u);
  EXPECT_EQ(wire_length(L""), 0u);
}

TEST(AjaxText, EntitiesDecodeInTheToldOrder) {
  EXPECT_EQ(decode_entities(L"&lt;b&gt;&quot;x&quot;&nbsp;&amp;"), L"<b>\"x\" &");
  EXPECT_EQ(decode_entities(L"&amp;#65;"), L"A") << "decoded twice";
  EXPECT_EQ(decode_entities(L"&amp;lt;"), L"&lt;") << "lt had its turn before amp";
  EXPECT_EQ(decode_entities(L"&#38;#65;&#38;#34;"), L"A&#34;") << "34 had its turn before 38";
  EXPECT_EQ(decode_entities(L"&#128;&#233;&#255;&#129;"), L"\x20AC\xE9\xFF\x81");
  EXPECT_EQ(decode_entities(L"&#0;&#256;&#065;&#;&#x41;&#65"), L"&#0;&#256;&#065;&#;&#x41;&#65");
}

}  // namespace
}  // namespace kestrelon
