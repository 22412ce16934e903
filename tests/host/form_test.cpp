#include "host/form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/late_bound.h"
#include "tests/host/host_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class FormTest : public HostTest {};

HRESULT error_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const ComError& error) {
    return error.hr;
  }
  return S_OK;
}

ComPtr<IDispatch> controls_of(const Form& form) {
  return to_object(get_property(form.dispatch(), L"Controls"));
}

TEST_F(FormTest, ScalesClientSizeByModeAndKeepsOuterSizeInTwips) {
  Form form({.width = 300, .height = 200});
  IDispatch* object = form.dispatch();
  const double twips_x = twips_per_pixel(Axis::kX);
  EXPECT_DOUBLE_EQ(to_double(get_property(object, L"ScaleWidth")), 300 * twips_x);
  put_property(object, L"ScaleMode", Variant(3L));
  EXPECT_DOUBLE_EQ(to_double(get_property(object, L"ScaleWidth")), 300);
  EXPECT_DOUBLE_EQ(to_double(get_property(object, L"ScaleHeight")), 200);
  put_property(object, L"Width", Variant(6000L));
  EXPECT_EQ(width_of(form.window_rect()), 6000 / twips_x);
  EXPECT_DOUBLE_EQ(to_double(get_property(object, L"Width")), 6000);
  EXPECT_EQ(error_of([&] { put_property(object, L"ScaleMode", Variant(8L)); }),
            numbered_error(380));
  EXPECT_EQ(error_of([&] { put_property(object, L"hWnd", Variant(1L)); }), numbered_error(383));
}

TEST_F(FormTest, BorderStyleAndButtonsShapeTheWindow) {
  Form form;
  const auto style = [&] { return GetWindowLongW(form.hwnd(), GWL_STYLE); };
  EXPECT_TRUE(style() & WS_THICKFRAME);
  EXPECT_TRUE(style() & WS_MINIMIZEBOX);
  put_property(form.dispatch(), L"MinButton", Variant(false));
  EXPECT_FALSE(style() & WS_MINIMIZEBOX);
  EXPECT_TRUE(style() & WS_MAXIMIZEBOX);
  put_property(form.dispatch(), L"BorderStyle", Variant(0L));
  EXPECT_FALSE(style() & (WS_CAPTION | WS_THICKFRAME | WS_SYSMENU));
  put_property(form.dispatch(), L"BorderStyle", Variant(3L));
  EXPECT_EQ(style() & (WS_CAPTION | WS_THICKFRAME | WS_MAXIMIZEBOX), WS_CAPTION);
}

TEST_F(FormTest, ControlsAnswersByIndexNameAndEnumerationAndRemoves) {
  Form form;
  const auto first = add_probe(form, L"First");
  const auto second = add_probe(form, L"Second");
  const auto controls = controls_of(form);
  EXPECT_EQ(to_long(get_property(controls.get(), L"Count")), 2);
  EXPECT_EQ(to_object(call_method(controls.get(), L"Item", {Variant(L"SECOND")})).get(),
            second->dispatch());
  EXPECT_EQ(to_object(get_property(form.dispatch(), L"Controls", {Variant(0L)})).get(),
            first->dispatch());
  EXPECT_EQ(error_of([&] { call_method(controls.get(), L"Item", {Variant(2L)}); }),
            numbered_error(9));
  EXPECT_EQ(error_of([&] { call_method(controls.get(), L"Item", {Variant(L"Third")}); }),
            numbered_error(730));
  EXPECT_EQ(error_of([&] { add_probe(form, L"first"); }), numbered_error(727));

  const Variant enumerator = get_property(controls.get(), L"_NewEnum");
  ASSERT_EQ(enumerator.vt, VT_UNKNOWN);
  const auto items = kestrelon::query<IEnumVARIANT>(enumerator.punkVal);
  call_method(controls.get(), L"Remove", {Variant(L"First")});
  EXPECT_EQ(to_long(get_property(controls.get(), L"Count")), 1);
  // The enumeration goes on over the items of its start; the removed one answers no more.
  Variant item[2];
  ULONG fetched = 0;
  EXPECT_EQ(items->Next(2, item, &fetched), S_OK);
  EXPECT_EQ(error_of([&] { get_property(item[0].pdispVal, L"Name"); }), numbered_error(398));
  EXPECT_EQ(to_text(get_property(item[1].pdispVal, L"Name")), L"Second");
  EXPECT_EQ(items->Next(1, item[0].put(), &fetched), S_FALSE);
}

TEST_F(FormTest, AddMakesHiddenItemsInAnyContainer) {
  Form form;
  form.create_object = [](const std::wstring&) { return make_probe({}); };
  const auto controls = controls_of(form);
  const auto frame =
      to_object(call_method(controls.get(), L"Add", {Variant(L"VB.Frame"), Variant(L"Box")}));
  EXPECT_FALSE(to_bool(get_property(frame.get(), L"Visible")));
  put_property(frame.get(), L"Visible", Variant(true));
  const auto added = to_object(call_method(
      controls.get(), L"Add", {Variant(L"Test.Probe"), Variant(L"Inside"), Variant(frame.get())}));
  auto* site = dynamic_cast<ControlSite*>(form.find(L"Inside"));
  ASSERT_NE(site, nullptr);
  EXPECT_EQ(site->window(), nullptr) << "not activated before it is shown";
  put_property(added.get(), L"Visible", Variant(true));
  EXPECT_EQ(GetParent(site->window()), form.find(L"Box")->window());
  EXPECT_EQ(to_object(get_property(added.get(), L"Container")).get(), frame.get());
  EXPECT_EQ(to_object(get_property(added.get(), L"Parent")).get(), form.dispatch());
  put_property(added.get(), L"Container", Variant(form.dispatch()));
  EXPECT_EQ(GetParent(site->window()), form.hwnd());
}

TEST_F(FormTest, RemovingAFrameRemovesWhatStandsOnIt) {
  Form form;
  const auto frame = form.add_frame(L"Box", make_rect(10, 10, 200, 100));
  const auto inside = add_probe(form, L"Inside", {}, frame.get());
  form.remove(*frame.get());
  EXPECT_TRUE(form.all_items().empty());
  EXPECT_TRUE(inside->closed());
}

TEST_F(FormTest, ExtenderPlacesInTheContainersScaleAndPassesTheRestOn) {
  Form form({.scale_mode = ScaleMode::kPixel});
  const auto site = add_probe(form, L"Probe1");
  IDispatch* extender = site->dispatch();
  call_method(extender, L"Move", {Variant(20L), Variant(30L), Variant(90L)});
  EXPECT_EQ(to_long(get_property(extender, L"Height")), 40) << "a length left out stays";
  RECT now = {};
  GetWindowRect(site->window(), &now);
  MapWindowPoints(nullptr, form.hwnd(), reinterpret_cast<POINT*>(&now), 2);
  EXPECT_EQ(now.left, 20);
  EXPECT_EQ(now.top, 30);
  EXPECT_EQ(width_of(now), 90);
  put_property(form.dispatch(), L"ScaleMode", Variant(1L));
  put_property(extender, L"Left", Variant(600L));
  EXPECT_EQ(site->bounds().left, 600 / twips_per_pixel(Axis::kX));
  put_property(extender, L"Text", Variant(L"hello"));
  EXPECT_EQ(probe_of(site)->text, L"hello");
  EXPECT_EQ(to_text(get_property(extender, L"text")), L"hello");
  EXPECT_EQ(error_of([&] { get_property(extender, L"Nonsense"); }), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(type_name_of(class_info_of(extender).get()), L"Probe");
  EXPECT_EQ(type_name_of(class_info_of(form.dispatch()).get()), L"Form");
}

TEST_F(FormTest, AlignedItemsShareTheClientAreaInOrder) {
  Form form({.width = 300, .height = 200});
  const auto top = add_probe(form, L"Top");
  const auto left = add_probe(form, L"Left1");
  // The later one is on top and is placed first.
  left->set_align(Align::kLeft);
  top->set_align(Align::kTop);
  EXPECT_THAT(left->bounds(), RectIs(0, 0, 60, 200));
  EXPECT_THAT(top->bounds(), RectIs(60, 0, 240, 40));
  form.set_client_size(400, 100);
  EXPECT_THAT(top->bounds(), RectIs(60, 0, 340, 40));
}

TEST_F(FormTest, AmbientMembersReachControlsAndCanBeMissing) {
  Form form({.user_mode = false});
  const auto site = add_probe(form, L"Probe1");
  ProbeControl* probe = probe_of(site);
  EXPECT_FALSE(to_bool(probe->ambient(DISPID_AMBIENT_USERMODE)));
  EXPECT_EQ(to_text(probe->ambient(DISPID_AMBIENT_DISPLAYNAME)), L"Probe1");
  probe->log.clear();
  put_property(form.dispatch(), L"BackColor", Variant(0x00FCEDE1L));
  EXPECT_THAT(probe->log, ElementsAre(L"ambient " + std::to_wstring(DISPID_AMBIENT_BACKCOLOR)));
  EXPECT_EQ(to_long(probe->ambient(DISPID_AMBIENT_BACKCOLOR)), 0x00FCEDE1);
  form.set_missing_ambients({DISPID_AMBIENT_BACKCOLOR});
  EXPECT_EQ(probe->ambient(DISPID_AMBIENT_BACKCOLOR).vt, VT_EMPTY);
}

TEST_F(FormTest, ControlsAreOpenedInTheOrderOfTheirStatusAndClosedOnce) {
  Form form;
  const auto early = add_probe(form, L"Early");
  EXPECT_THAT(probe_of(early)->log, ElementsAre(L"site", L"new", L"verb -5"));
  ProbeOptions late_options;
  late_options.misc_status &= ~static_cast<DWORD>(OLEMISC_SETCLIENTSITEFIRST);
  const auto late = add_probe(form, L"Late", late_options);
  const ComPtr<ProbeControl> probe(probe_of(late));
  EXPECT_THAT(probe->log, ElementsAre(L"new", L"site", L"verb -5"));
  probe->log.clear();
  form.remove(*late.get());
  late->close();
  EXPECT_THAT(probe->log, ElementsAre(L"inactive", L"close", L"no site"));
}

TEST_F(FormTest, TheCodeBehindCanRefuseToUnload) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  const ComPtr<IDispatch> object(form.dispatch());
  std::vector<std::wstring> events;
  bool refuse = true;
  form.on_event = [&](const std::wstring& name, DISPPARAMS& params) {
    events.push_back(name);
    if (name == L"QueryUnload" && refuse) set_event_argument(params, 0, Variant(true));
  };
  EXPECT_FALSE(form.unload());
  EXPECT_FALSE(site->closed());
  EXPECT_THAT(events, ElementsAre(L"QueryUnload"));
  refuse = false;
  SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(form.loaded());
  EXPECT_TRUE(site->closed());
  EXPECT_EQ(error_of([&] { get_property(object.get(), L"ScaleMode"); }), numbered_error(398));
}

TEST_F(FormTest, AControlMayBeRemovedByTheHandlerOfItsOwnEvent) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  const ComPtr<ProbeControl> probe(probe_of(site));
  site->on_event([&](const std::wstring&, DISPPARAMS&) {
    call_method(controls_of(form).get(), L"Remove", {Variant(L"Probe1")});
  });
  probe->raise_pressed(1, 2.0f);
  EXPECT_TRUE(form.all_items().empty());
  EXPECT_EQ(probe->site(), nullptr);
}

}  // namespace
}  // namespace kestrelon::host
