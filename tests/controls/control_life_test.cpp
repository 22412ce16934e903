// What every control must stand: any order of a container's calls, hostile streams, thousands of
// lives.
#include <gmock/gmock.h>
#include <windows.h>
//
#include <psapi.h>

#include "tests/controls/control_fixture.h"
#include "tests/frame/gdi_handles.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;

constexpr RECT kPlace{20, 20, 180, 50};

class ControlLifeTest : public ControlTest {};

TEST_F(ControlLifeTest, TakesAmbientValuesWhenItIsNew) {
  const auto site = form_.add_control(L"Kestrelon2012.USCheckBox", L"chkPago", kPlace);
  EXPECT_EQ(to_text(get(*site, L"Caption")), L"chkPago");
  EXPECT_EQ(number(*site, L"BackColor"), static_cast<long>(form_.ambients().back_color));
  EXPECT_EQ(number(*site, L"Theme"), 2);
}

TEST_F(ControlLifeTest, NeverHoversWhenItIsNew) {
  const auto site = place_new(L"USCheckBox", kPlace);
  bring_up(form_);
  mouse_move(site->window(), 6, 15);
  mouse_move(site->window(), 7, 15);
  mouse_away();
  EXPECT_THAT(take_log(*site), testing::IsEmpty());
  part_clicks();
  mouse_click(site->window(), 6, 15);  // a click still works
  EXPECT_EQ(number(*site, L"Value"), 1);
}

TEST_F(ControlLifeTest, StandsInForAmbientValuesThatAreMissing) {
  form_.set_missing_ambients({DISPID_AMBIENT_DISPLAYNAME, DISPID_AMBIENT_FONT,
                              DISPID_AMBIENT_BACKCOLOR, DISPID_AMBIENT_USERMODE});
  const auto site = place_new(L"USCheckBox", kPlace);
  EXPECT_EQ(to_text(get(*site, L"Caption")), L"");
  EXPECT_EQ(static_cast<unsigned>(number(*site, L"BackColor")), 0x8000000Fu);
  EXPECT_GT(number(*site, L"FontSize"), 0);
}

TEST_F(ControlLifeTest, WritesItsKeysInOrderAndReadsThemBackEqual) {
  const auto site = place(L"USCheckBox", kPlace);
  put(*site, L"Caption", Variant(L"Op\u00e7\u00e3o &A"));
  put(*site, L"Value", Variant(2L));
  put(*site, L"ForeColor", Variant(0x123456L));
  put(*site, L"Alignment", Variant(1L));
  put(*site, L"FontBold", Variant(true));
  const auto bag = make_com<PropertyBag>();
  const auto persist = query<IPersistPropertyBag>(site->control());
  ASSERT_EQ(persist->Save(bag.get(), TRUE, TRUE), S_OK);
  EXPECT_THAT(bag->keys(), ElementsAre(L"Font", L"Caption", L"Enabled", L"Alignment",
                                       L"ShowFocusRect", L"BackStyle", L"BackColor", L"ForeColor",
                                       L"MousePointer", L"MouseIcon", L"Value", L"Theme"));
  const auto again = place(L"USCheckBox", kPlace, bag.get());
  for (const wchar_t* name :
       {L"Caption", L"Value", L"ForeColor", L"Alignment", L"FontBold", L"Theme"})
    EXPECT_EQ(describe_value(get(*again, name)), describe_value(get(*site, name))) << name;
}

TEST_F(ControlLifeTest, WritesOnlyWhatDiffersWhenNotAskedForAll) {
  const auto site = place(L"USCheckBox", kPlace);
  put(*site, L"Value", Variant(1L));
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(site->control())->Save(bag.get(), TRUE, FALSE), S_OK);
  EXPECT_THAT(bag->keys(), ElementsAre(L"Font", L"Value"));
}

TEST_F(ControlLifeTest, LoadsAStreamCutAnywhereOrFailsAndStaysUsable) {
  const auto site = place(L"USCheckBox", kPlace);
  put(*site, L"Caption", Variant(L"texto"));
  put(*site, L"Value", Variant(1L));
  const auto whole = save_stream(site->control());
  for (size_t cut = 0; cut <= whole.size(); ++cut) {
    auto part = whole;
    part.resize(cut);
    const auto control = library().create(L"USCheckBox");
    const HRESULT hr = load_stream(control.get(), part);
    EXPECT_EQ(SUCCEEDED(hr), cut >= 8) << cut;
    const auto dispatch = control.as<IDispatch>();
    put_property(dispatch.get(), L"Value", Variant(2L));
    EXPECT_EQ(to_long(get_property(dispatch.get(), L"Value")), 2);
  }
  auto longer = whole;
  longer.insert(longer.end(), 100, 0xAA);
  const auto control = library().create(L"USCheckBox");
  EXPECT_EQ(load_stream(control.get(), longer), S_OK);
  EXPECT_EQ(to_text(get_property(control.as<IDispatch>().get(), L"Caption")), L"texto");
}

TEST_F(ControlLifeTest, StandsAFlippedBitAnywhereInAStream) {
  const auto site = place(L"USCheckBox", kPlace);
  const auto whole = save_stream(site->control());
  for (size_t bit = 0; bit < whole.size() * 8; bit += 3) {
    auto bytes = whole;
    bytes[bit / 8] = static_cast<uint8_t>(bytes[bit / 8] ^ 1u << (bit % 8));
    const auto control = library().create(L"USCheckBox");
    load_stream(control.get(), bytes);
    EXPECT_NO_THROW(get_property(control.as<IDispatch>().get(), L"Caption"));
  }
}

TEST_F(ControlLifeTest, SavesToAStorageAndComesBack) {
  const auto site = place(L"USCheckBox", kPlace);
  put(*site, L"Caption", Variant(L"em storage"));
  const auto storage = save_storage(site->control());
  const auto control = library().create(L"USCheckBox");
  ASSERT_EQ(load_storage(control.get(), storage.get()), S_OK);
  EXPECT_EQ(to_text(get_property(control.as<IDispatch>().get(), L"Caption")), L"em storage");
}

TEST_F(ControlLifeTest, DrawsItselfWithoutBeingActive) {
  const auto active = place(L"USCheckBox", kPlace);
  put(*active, L"Caption", Variant(L"Igual"));
  put(*active, L"ShowFocusRect", Variant(false));
  bring_up(form_);
  mouse_away();
  const Picture shown = draw_control(*active, 160, 30);
  active->deactivate();
  EXPECT_EQ(draw_control(*active, 160, 30), shown);
  put(*active, L"Value", Variant(1L));
  EXPECT_NE(draw_control(*active, 160, 30), shown);
}

TEST_F(ControlLifeTest, DrawsNothingUntilRefreshAfterDisableRefresh) {
  const auto site = place(L"USCheckBox", kPlace);
  const Picture before = draw_control(*site, 160, 30);
  call_method(site->control_dispatch().get(), L"DisableRefresh");
  put(*site, L"Value", Variant(1L));
  put(*site, L"Caption", Variant(L"Outro"));
  EXPECT_EQ(draw_control(*site, 160, 30), before);
  call_method(site->control_dispatch().get(), L"Refresh");
  EXPECT_NE(draw_control(*site, 160, 30), before);
}

TEST_F(ControlLifeTest, LeavesTheMarkOnAPartlyTransparentWindow) {
  const auto site = place(L"USCheckBox", kPlace);
  put(*site, L"Caption", Variant(L"X"));
  bring_up(form_);
  const HRGN region = CreateRectRgn(0, 0, 0, 0);
  EXPECT_EQ(GetWindowRgn(site->window(), region), COMPLEXREGION);
  EXPECT_TRUE(PtInRegion(region, 6, 14));
  EXPECT_FALSE(PtInRegion(region, 150, 25));
  put(*site, L"BackStyle", Variant(1L));
  EXPECT_EQ(GetWindowRgn(site->window(), region), ERROR);
  DeleteObject(region);
}

TEST_F(ControlLifeTest, MovesToAnotherContainerAndBack) {
  const auto frame = form_.add_frame(L"Frame1", RECT{200, 20, 400, 200});
  const auto site = place(L"USCheckBox", kPlace);
  bring_up(form_);
  site->set_container(*frame);
  EXPECT_EQ(GetParent(site->window()), frame->hwnd());
  site->set_container(form_);
  EXPECT_EQ(GetParent(site->window()), form_.hwnd());
  part_clicks();
  mouse_click(site->window(), 6, 15);
  EXPECT_EQ(number(*site, L"Value"), 1);
}

TEST_F(ControlLifeTest, AnswersWrongTypesWithTheAutomationError) {
  const auto site = place(L"USCheckBox", kPlace);
  const auto dispatch = site->control_dispatch();
  for (const wchar_t* name : {L"Value", L"Theme", L"ForeColor", L"Enabled"}) {
    Variant wrong(L"not a number");
    DISPID id = 0, named = DISPID_PROPERTYPUT;
    auto* text = const_cast<wchar_t*>(name);
    ASSERT_EQ(dispatch->GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
    DISPPARAMS parameters{&wrong, &named, 1, 1};
    EXPECT_EQ(dispatch->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr,
                               nullptr),
              DISP_E_TYPEMISMATCH);
  }
}

TEST_F(ControlLifeTest, ShowsAllOfItselfAgainWhenTheContainerGrows) {
  const auto site = place(L"USScrollBar", RECT{20, 20, 40, 220});
  const auto reach = [&] {
    RECT visible{};
    return GetWindowRgnBox(site->window(), &visible) == ERROR ? 200
                                                              : static_cast<int>(visible.bottom);
  };
  form_.set_client_size(300, 120);
  EXPECT_EQ(reach(), 100);
  form_.set_client_size(300, 180);
  EXPECT_EQ(reach(), 160);
  form_.set_client_size(300, 300);
  EXPECT_EQ(reach(), 200);
}

// An object that takes a control into itself, as some designers do with their extender.
class Outer final : public IUnknown {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (iid != IID_IUnknown) return inner->QueryInterface(iid, out);
    *out = this;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  ULONG references = 1;
  ComPtr<IUnknown> inner;
};

TEST_F(ControlLifeTest, CanBeAggregated) {
  const auto plain = library().create(L"USCheckBox");
  CLSID clsid{};
  query<IPersistStreamInit>(plain.get())->GetClassID(&clsid);
  const HMODULE module = GetModuleHandleW(L"kestrelon2012.ocx");
  const auto get_class_object = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(get_class_object(clsid, IID_IClassFactory, factory.put_void()), S_OK);
  Outer outer;
  void* refused = nullptr;
  EXPECT_EQ(factory->CreateInstance(&outer, IID_IDispatch, &refused), CLASS_E_NOAGGREGATION);
  ASSERT_EQ(factory->CreateInstance(&outer, IID_IUnknown, outer.inner.put_void()), S_OK);
  {
    const auto dispatch = query<IDispatch>(&outer);
    const auto back = dispatch.as<IUnknown>();
    EXPECT_EQ(back.get(), &outer);
    EXPECT_EQ(outer.references, 3u);
  }
  EXPECT_EQ(outer.references, 1u);
  outer.inner.reset();
}

struct Holdings {
  size_t free_gdi = free_gdi_handles();
  DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  size_t bytes = [] {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return static_cast<size_t>(counters.PrivateUsage);
  }();
};

struct Life {
  const wchar_t* class_name;
  int times;
  void (*live)(ControlSite& site);
};

void PrintTo(const Life& life, std::ostream* out) {
  *out << std::string(life.class_name, life.class_name + wcslen(life.class_name));
}

class ControlLives : public ControlTest, public testing::WithParamInterface<Life> {};

TEST_P(ControlLives, LeaveNothingBehindAfterThousands) {
  form_.show();
  const auto live = [&](int times) {
    for (int i = 0; i < times; ++i) {
      const auto site = place(GetParam().class_name, kPlace);
      GetParam().live(*site);
      RedrawWindow(form_.hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
      form_.remove(*site);
    }
    drain_messages();
  };
  live(GetParam().times / 6);  // caches fill
  const Holdings before;
  live(GetParam().times);
  const Holdings after;
  EXPECT_GE(after.free_gdi + 2, before.free_gdi);
  EXPECT_LE(after.user, before.user + 2);
  EXPECT_LE(after.bytes, before.bytes + (1u << 20));
}

void live_as_check_box(ControlSite& site) {
  put_property(site.control_dispatch().get(), L"Caption", Variant(L"&Vida"));
}

// With a mask, a shadow, a hit area, the image handed out, a fade under way and a drop target.
void live_as_alpha_image(ControlSite& site) {
  const auto control = site.control_dispatch();
  call_method(control.get(), L"LoadImage_FromFile",
              {Variant(L"" KESTRELON_SOURCE_DIR L"/resources/samples/coins-4bit.bmp")});
  for (const auto& [name, value] :
       {std::pair{L"MaskUsed", 2L}, {L"HitTest", 3L}, {L"OLEDropMode", 1L}, {L"Rotation", 30L}})
    put_property(control.get(), name, Variant(value));
  for (const wchar_t* name : {L"ShadowEnabled", L"RotateEnabled", L"InversedImage"})
    put_property(control.get(), name, Variant(true));
  const auto image = to_object(get_property(control.get(), L"dibClass"));
  call_method(image.get(), L"LoadDIBinDC", {Variant(true)});
  ComPtr<IDropTarget> target;
  query<IOleInPlaceObjectWindowless>(site.control())->GetDropTarget(target.put());
  DWORD hit = 0;
  const RECT bounds{0, 0, 160, 30};
  query<IViewObjectEx>(site.control())
      ->QueryHitPoint(DVASPECT_CONTENT, &bounds, POINT{80, 15}, 0, &hit);
  call_method(control.get(), L"FadeInOut", {Variant(0L)});
}

INSTANTIATE_TEST_SUITE_P(Of, ControlLives,
                         testing::Values(Life{L"USCheckBox", 2000, live_as_check_box},
                                         Life{L"USAlphaImage", 1200, live_as_alpha_image}));

}  // namespace
}  // namespace kestrelon::host
