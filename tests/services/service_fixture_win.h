// What the tests of service classes share: COM for the process, and the classes by their
// interfaces.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/com_win.h"

namespace kestrelon::testing {

class ServiceTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }
};

template <class Interface, class Class>
ComPtr<Interface> make_service() {
  ComPtr<IUnknown> object;
  object.attach((new Class)->own_unknown());
  return object.as<Interface>();
}

/// Calls a method that answers a text.
template <class Call>
std::wstring text_of(Call&& call) {
  Bstr text;
  EXPECT_EQ(call(text.put()), S_OK);
  return std::wstring(text.view());
}

template <class Call>
bool truth_of(Call&& call) {
  VARIANT_BOOL value = VARIANT_FALSE;
  EXPECT_EQ(call(&value), S_OK);
  return value != VARIANT_FALSE;
}

template <class Call>
long number_from(Call&& call) {
  long value = 0;
  EXPECT_EQ(call(&value), S_OK);
  return value;
}

}  // namespace kestrelon::testing
