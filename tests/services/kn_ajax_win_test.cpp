#include "services/ajax/kn_ajax_win.h"

#include "tests/services/loopback_http_win.h"
#include "tests/services/service_fixture_win.h"

namespace kestrelon::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class AjaxTest : public ServiceTest {
 protected:
  bool get(const std::wstring& url, const wchar_t* charset = L"") {
    return truth_of([&](VARIANT_BOOL* out) {
      return ajax_->AjaxGET(Bstr(url).get(), Bstr(charset).get(), out);
    });
  }
  bool post(const std::wstring& url, bool encode = false, const wchar_t* charset = L"") {
    return truth_of([&](VARIANT_BOOL* out) {
      return ajax_->AjaxPOST(Bstr(url).get(), Bstr(charset).get(),
                             encode ? VARIANT_TRUE : VARIANT_FALSE, out);
    });
  }
  void add(const wchar_t* name, const wchar_t* value) {
    EXPECT_EQ(ajax_->AddAjaxField(Bstr(name).get(), Bstr(value).get()), S_OK);
  }
  std::wstring response() {
    return text_of([&](BSTR* out) { return ajax_->get_AjaxResponseText(out); });
  }

  LoopbackHttp server_;
  ComPtr<_KN_AJAX> ajax_ = make_service<_KN_AJAX, KN_AJAX>();
};

TEST_F(AjaxTest, AGetBringsTheAnswerAndSendsItsContentType) {
  short seconds = 0;
  ASSERT_EQ(ajax_->get_AjaxReadyStateWait(&seconds), S_OK);
  EXPECT_EQ(seconds, 30);
  EXPECT_TRUE(truth_of([&](VARIANT_BOOL* out) { return ajax_->get_IsAjaxInitialized(out); }));
  EXPECT_TRUE(get(server_.address(L"/echo?A=b"), L"iso-8859-1"));
  EXPECT_THAT(response(), HasSubstr(L"GET /echo?A=b HTTP/1.1\r\n"));
  EXPECT_THAT(response(), HasSubstr(L"text/html; charset=iso-8859-1\r\n"));
  EXPECT_TRUE(get(L"HTTP://" + server_.address(L"/echo")));
  EXPECT_THAT(response(), Not(HasSubstr(L"charset")));
}

TEST_F(AjaxTest, AnswersAreUnpackedAndReadByTheirCharacterSet) {
  for (const wchar_t* page : {L"/latin", L"/unnamed", L"/gzip"}) {
    EXPECT_TRUE(get(server_.address(page))) << page;
    EXPECT_EQ(response(), L"preço") << page;
  }
}

TEST_F(AjaxTest, APostSendsTheFieldsWithTheLengthInBytes) {
  add(L"nome", L"ação");
  add(L"nome", L"a b");
  EXPECT_TRUE(post(server_.address(L"/echo"), false, L"utf-8"));
  EXPECT_THAT(response(), HasSubstr(L"application/x-www-form-urlencoded; charset=utf-8\r\n"));
  EXPECT_THAT(response(), HasSubstr(L": 20\r\n"));
  EXPECT_TRUE(response().ends_with(L"\r\n\r\nnome=ação&nome=a b")) << "all bytes arrive";
  EXPECT_TRUE(post(server_.address(L"/echo"), true));
  EXPECT_TRUE(response().ends_with(L"\r\n\r\nnome=%61%E7%E3%6F&nome=%61%20%62"));
  ajax_->ClearAjax();
  EXPECT_TRUE(post(server_.address(L"/echo")));
  EXPECT_THAT(response(), HasSubstr(L": 0\r\n"));
}

TEST_F(AjaxTest, EntitiesAreDecodedFromTheAnswer) {
  EXPECT_TRUE(get(server_.address(L"/entities")));
  EXPECT_EQ(response(), L"&lt;b&gt;aç&#227;o&amp;#65;");
  EXPECT_EQ(text_of([&](BSTR* out) { return ajax_->get_AjaxResponseURLDecoded(out); }),
            L"<b>açãoA");
  EXPECT_EQ(text_of([&](BSTR* out) { return ajax_->URLEncode(Bstr(L"AB").get(), out); }),
            L"%41%42");
}

TEST_F(AjaxTest, MessagesRunDuringTheWait) {
  static int ticks;
  ticks = 0;
  const UINT_PTR timer =
      SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) CALLBACK { ++ticks; });
  EXPECT_TRUE(get(server_.address(L"/delay")));
  KillTimer(nullptr, timer);
  EXPECT_GT(ticks, 5);
}

TEST_F(AjaxTest, WhatDoesNotAnswerIsFalseAndKeepsTheOldText) {
  ASSERT_TRUE(get(server_.address(L"/entities")));
  const std::wstring before = response();
  EXPECT_FALSE(get(L""));
  EXPECT_EQ(server_.requests(), 1) << "an empty address touches no network";
  ajax_->put_AjaxReadyStateWait(1);
  EXPECT_FALSE(get(server_.address(L"/never")));
  EXPECT_FALSE(get(server_.address(L"/drop")));
  EXPECT_FALSE(get(L"127.0.0.1:1/refused"));
  ajax_->put_AjaxReadyStateWait(0);
  EXPECT_FALSE(get(server_.address(L"/delay")));
  ajax_->put_AjaxReadyStateWait(-5);
  EXPECT_FALSE(get(server_.address(L"/delay")));
  ajax_->put_AjaxReadyStateWait(10);
  EXPECT_TRUE(get(server_.address(L"/entities"))) << "the next request replaces the one before";
  EXPECT_EQ(response(), before);
}

TEST_F(AjaxTest, AHandlerMayDropTheObjectDuringTheWait) {
  static ComPtr<_KN_AJAX>* owner;
  owner = &ajax_;
  _KN_AJAX* const raw = ajax_.get();
  const UINT_PTR timer = SetTimer(nullptr, 0, 200, [](HWND, UINT, UINT_PTR id, DWORD) CALLBACK {
    KillTimer(nullptr, id);
    owner->reset();
  });
  VARIANT_BOOL answered = VARIANT_FALSE;
  EXPECT_EQ(raw->AjaxGET(Bstr(server_.address(L"/delay")).get(), Bstr(L"").get(), &answered), S_OK);
  EXPECT_EQ(answered, VARIANT_TRUE);
  EXPECT_EQ(server_.requests(), 1) << "the answer came from a cache, at once";
  EXPECT_FALSE(ajax_) << "the handler never ran";
  KillTimer(nullptr, timer);
}

}  // namespace
}  // namespace kestrelon::testing
