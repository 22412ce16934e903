// What a designer reaches of a control: its pages, the names of its choices, a page at work.
#include <olectl.h>

#include <algorithm>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

constexpr CLSID kThemePage = {
    0xb5c3f1a0, 0x7d42, 0x4e19, {0x9c, 0x0b, 0x2f, 0x6a, 0x51, 0xd0, 0x80, 0x01}};

class PropertyPagesTest : public ControlTest {
 protected:
  PropertyPagesTest() {
    form_.show();
    bring_up(form_);
    button_ = place(L"USButton", RECT{10, 10, 110, 40});
    put(*button_, L"Caption", Variant(L"Gravar"));
  }
  DISPID id_of(const wchar_t* name) {
    DISPID out = DISPID_UNKNOWN;
    auto copy = const_cast<LPOLESTR>(name);
    button_->control_dispatch()->GetIDsOfNames(IID_NULL, &copy, 1, 0, &out);
    return out;
  }
  template <class Interface>
  ComPtr<Interface> face() {
    return button_->control_dispatch().as<Interface>();
  }

  ComPtr<ControlSite> button_;
};

TEST_F(PropertyPagesTest, ListsItsOwnPageBeforeTheSystemsAndEachOnce) {
  CAUUID pages{};
  ASSERT_EQ(face<ISpecifyPropertyPages>()->GetPages(&pages), S_OK);
  const std::vector<CLSID> found(pages.pElems, pages.pElems + pages.cElems);
  CoTaskMemFree(pages.pElems);
  ASSERT_FALSE(found.empty());
  EXPECT_TRUE(found.front() == kThemePage);
  EXPECT_EQ(std::count(found.begin(), found.end(), CLSID_CColorPropPage), 1);
  CLSID page{};
  EXPECT_EQ(face<IPerPropertyBrowsing>()->MapPropertyToPage(id_of(L"Theme"), &page), S_OK);
  EXPECT_TRUE(page == kThemePage);
  EXPECT_EQ(face<IPerPropertyBrowsing>()->MapPropertyToPage(id_of(L"Caption"), &page),
            PERPROP_E_NOPAGEAVAILABLE);
}

TEST_F(PropertyPagesTest, NamesTheChoicesOfEnumerationsAsDesignersShowThem) {
  const auto browsing = face<IPerPropertyBrowsing>();
  CALPOLESTR names{};
  CADWORD cookies{};
  ASSERT_EQ(browsing->GetPredefinedStrings(id_of(L"Theme"), &names, &cookies), S_OK);
  ASSERT_EQ(names.cElems, 3u);
  ASSERT_EQ(cookies.cElems, 3u);
  EXPECT_STREQ(names.pElems[1], L"Office Silver");
  Variant value;
  EXPECT_EQ(browsing->GetPredefinedValue(id_of(L"Theme"), cookies.pElems[1], &value), S_OK);
  EXPECT_EQ(V_I4(&value), 1);
  EXPECT_EQ(browsing->GetPredefinedValue(id_of(L"Theme"), 99, &value), E_INVALIDARG);
  for (ULONG i = 0; i < names.cElems; ++i) CoTaskMemFree(names.pElems[i]);
  CoTaskMemFree(names.pElems);
  CoTaskMemFree(cookies.pElems);
  BSTR shown = nullptr;
  put(*button_, L"Theme", Variant(0L));
  EXPECT_EQ(browsing->GetDisplayString(id_of(L"Theme"), &shown), S_OK);
  EXPECT_STREQ(shown, L"Office Blue");
  SysFreeString(shown);
  EXPECT_NE(browsing->GetPredefinedStrings(id_of(L"Caption"), &names, &cookies), S_OK);
}

class ThemePageTest : public PropertyPagesTest {
 protected:
  ThemePageTest() : page_(library().create(kThemePage).as<IPropertyPage2>()) {
    IUnknown* object = button_->control_dispatch().get();
    page_->SetObjects(1, &object);
    const RECT place{150, 10, 490, 240};
    form_.set_client_size(500, 260);
    page_->Activate(form_.hwnd(), &place, FALSE);
    window_ = FindWindowExW(form_.hwnd(), nullptr, L"KestrelonPropertyPage2012", nullptr);
    theme_ = GetDlgItem(window_, 101);
    pump_for(30);
  }
  ~ThemePageTest() override { page_->Deactivate(); }
  void choose_theme(int index) {
    SendMessageW(theme_, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(window_, WM_COMMAND, MAKEWPARAM(101, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(theme_));
  }

  ComPtr<IPropertyPage2> page_;
  HWND window_ = nullptr;
  HWND theme_ = nullptr;
};

TEST_F(ThemePageTest, ShowsTheThemeThatTheControlHasAndAllItsColors) {
  EXPECT_EQ(SendMessageW(theme_, CB_GETCURSEL, 0, 0), 2);
  EXPECT_GT(SendMessageW(GetDlgItem(window_, 102), LB_GETCOUNT, 0, 0), 15);
  EXPECT_EQ(page_->IsPageDirty(), S_FALSE);
}

TEST_F(ThemePageTest, ChangesTheControlAtApplyAndNotBefore) {
  const long before = number(*button_, L"GradientColor2");
  choose_theme(0);
  EXPECT_EQ(page_->IsPageDirty(), S_OK);
  EXPECT_EQ(number(*button_, L"Theme"), 2);
  EXPECT_EQ(number(*button_, L"GradientColor2"), before);
  EXPECT_EQ(page_->Apply(), S_OK);
  EXPECT_EQ(number(*button_, L"Theme"), 0);
  EXPECT_NE(number(*button_, L"GradientColor2"), before);
  EXPECT_EQ(page_->IsPageDirty(), S_FALSE);
}

TEST_F(ThemePageTest, LeavesAColorThatTheUserHadChosenAsItWasWhenOnlyTheThemeIsApplied) {
  // What Apply writes is what the page shows; an untouched page writes nothing.
  put(*button_, L"ForeColor", Variant(0x123456L));
  EXPECT_EQ(page_->Apply(), S_OK);
  EXPECT_EQ(number(*button_, L"ForeColor"), 0x123456);
}

TEST_F(ThemePageTest, TakesOtherObjectsAndOutlivesThem) {
  const auto check = place(L"USCheckBox", RECT{10, 60, 110, 90});
  IUnknown* object = check->control_dispatch().get();
  EXPECT_EQ(page_->SetObjects(1, &object), S_OK);
  form_.remove(*check);
  choose_theme(1);
  EXPECT_TRUE(SUCCEEDED(page_->Apply()));
  EXPECT_EQ(page_->SetObjects(0, nullptr), S_OK);
  EXPECT_EQ(page_->Deactivate(), S_OK);
  EXPECT_FALSE(IsWindow(window_));
}

}  // namespace
}  // namespace kestrelon::host
