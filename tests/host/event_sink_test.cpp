#include "host/event_sink.h"

#include "host/late_bound.h"
#include "tests/host/host_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;

class EventSinkTest : public HostTest {};

TEST_F(EventSinkTest, ReportsEventsByNameWithArgumentsInWrittenOrder) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  ASSERT_NE(site->events(), nullptr);
  EXPECT_THAT(site->events()->event_names(), ElementsAre(L"Changing", L"Pressed"));
  probe_of(site)->raise_pressed(2, -1.5f);
  probe_of(site)->raise_changing(L"a \"b\"");
  EXPECT_THAT(site->events()->log(),
              ElementsAre(L"Pressed(2, -1.5)", L"Changing(\"a \"b\"\", False)"));
}

TEST_F(EventSinkTest, AHandlerAltersByReferenceArgumentsOfEachType) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  site->on_event([](const std::wstring&, DISPPARAMS& params) {
    EXPECT_EQ(to_text(event_value(params, 0)), L"old");
    EXPECT_TRUE(set_event_argument(params, 0, Variant(L"new")));
    EXPECT_TRUE(set_event_argument(params, 1, Variant(1L)));
    EXPECT_FALSE(set_event_argument(params, 1, Variant(L"neither yes nor no")));
  });
  EXPECT_EQ(probe_of(site)->raise_changing(L"old"), std::make_pair(std::wstring(L"new"), true));
}

TEST_F(EventSinkTest, AHandlersExceptionDoesNotReachTheControl) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  site->on_event([](const std::wstring&, DISPPARAMS&) { throw ComError(E_FAIL); });
  probe_of(site)->raise_pressed(1, 0);
  EXPECT_EQ(site->events()->log().size(), 1u);
}

TEST_F(EventSinkTest, CountsEventsThatComeWhileFrozen) {
  Form form;
  const auto site = add_probe(form, L"Probe1");
  site->freeze_events(true);
  probe_of(site)->raise_pressed(1, 0);
  site->freeze_events(false);
  probe_of(site)->raise_pressed(1, 0);
  EXPECT_EQ(site->events_while_frozen(), 1);
}

TEST_F(EventSinkTest, StopsAtDisconnectAndRefusesObjectsWithoutEvents) {
  const auto probe = make_com<ProbeControl>(ProbeOptions{});
  IUnknown* unknown = static_cast<IOleObject*>(probe.get());
  int calls = 0;
  const auto sink = EventSink::connect(unknown, [&](auto&, auto&) { ++calls; });
  ASSERT_TRUE(sink);
  probe->raise_pressed(1, 0);
  sink->disconnect();
  probe->raise_pressed(1, 0);
  EXPECT_EQ(calls, 1);
  Form form;
  EXPECT_FALSE(EventSink::connect(form.dispatch(), nullptr));
}

}  // namespace
}  // namespace kestrelon::host
