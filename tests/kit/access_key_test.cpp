#include "frame/kit/access_key.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

TEST(AccessKey, IsTheCharacterBehindTheFirstSingleMark) {
  EXPECT_EQ(access_key_from_start(L"&Gravar"), L"g");
  EXPECT_EQ(access_key_from_start(L"Con&firmar &tudo"), L"f");
  EXPECT_EQ(access_key_from_start(L"Compra && &Venda"), L"v");
  EXPECT_EQ(access_key_from_start(L"&&&x"), L"x");
  EXPECT_EQ(access_key_from_start(L"& a"), L" ");
}

TEST(AccessKey, IsMissingWhereNoMarkCounts) {
  for (const wchar_t* caption : {L"", L"&", L"a", L"a&", L"&&", L"a&&", L"&&&", L"Salvar"})
    EXPECT_EQ(access_key_from_start(caption), L"") << caption;
}

TEST(AccessKey, IsTheLastSingleMarkFromTheEnd) {
  EXPECT_EQ(access_key_from_end(L"Con&firmar &tudo"), L"t");
  EXPECT_EQ(access_key_from_end(L"&Compra && Venda"), L"c");
  EXPECT_EQ(access_key_from_end(L"Compra && &Venda &"), L"v");
  EXPECT_EQ(access_key_from_end(L"&&&X"), L"x");
  EXPECT_EQ(access_key_from_end(L"&& &a &&&&"), L"a");
  for (const wchar_t* caption : {L"", L"&", L"a", L"a&", L"&&", L"a&&", L"&&&", L"A && B"})
    EXPECT_EQ(access_key_from_end(caption), L"") << caption;
}

}  // namespace
}  // namespace kestrelon
