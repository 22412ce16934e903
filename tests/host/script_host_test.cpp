#include "host/script_host.h"

#include "host/late_bound.h"
#include "tests/host/host_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;

class ScriptHostTest : public HostTest {};

TEST_F(ScriptHostTest, CodeBehindAFormReachesItsControlsAndHearsTheirEvents) {
  Form form;
  const auto probe = probe_of(add_probe(form, L"Probe1"));
  add_probe(form, L"Probe2");
  ScriptHost script;
  script.add_form(form);
  ASSERT_TRUE(
      script.run(L"Dim heard\n"
                 L"Sub Probe1_Pressed(Button, X)\n"
                 L"  heard = heard & Button & \":\" & X\n"
                 L"  Probe2.Text = \"from \" & Probe1.Name\n"
                 L"End Sub\n"
                 L"Sub Form_QueryUnload(Cancel, Mode)\n"
                 L"  heard = heard & \" mode \" & Mode\n"
                 L"End Sub\n"
                 L"Probe1.Text = \"set\""));
  EXPECT_EQ(probe->text, L"set");
  probe->raise_pressed(3, 7.0f);
  EXPECT_EQ(to_text(script.evaluate(L"Probe2.Text")), L"from Probe1");
  EXPECT_EQ(to_text(script.evaluate(L"TypeName(Probe1) & TypeName(Form1)")), L"ProbeForm");
  EXPECT_TRUE(form.unload());
  EXPECT_EQ(to_text(script.evaluate(L"heard")), L"3:7 mode 1");
}

TEST_F(ScriptHostTest, WalksControlsAndSeesTheNumbersOfTheFormModelsErrors) {
  Form form;
  add_probe(form, L"Probe1");
  form.add_frame(L"Box", make_rect(0, 0, 50, 50));
  ScriptHost script;
  script.add_form(form);
  EXPECT_TRUE(
      script.run(L"Dim names, c\nFor Each c In Form1.Controls\n"
                 L"names = names & TypeName(c) & \" \"\nNext\n"
                 L"On Error Resume Next\nForm1.Controls.Item(\"None\")\n"
                 L"names = names & Err.Number\nErr.Clear"));
  EXPECT_EQ(to_text(script.evaluate(L"names")), L"Probe Frame 730");
  EXPECT_FALSE(script.run(L"x = 1\nForm1.ScaleMode = 99\n"));
  ASSERT_EQ(script.errors().size(), 1u);
  EXPECT_EQ(script.errors()[0].number, 380);
  EXPECT_EQ(script.errors()[0].line, 2);
}

TEST_F(ScriptHostTest, JScriptReachesTheSameForm) {
  Form form;
  const auto probe = probe_of(add_probe(form, L"Probe1"));
  ScriptHost script(L"JScript");
  script.add_form(form);
  ASSERT_TRUE(
      script.run(L"function Probe1_Pressed(b, x) { Probe1.Text = 'b' + b; }\n"
                 L"Form1.Caption = Form1.Controls.Count + ' item';"));
  probe->raise_pressed(2, 0);
  EXPECT_EQ(probe->text, L"b2");
  EXPECT_EQ(form.caption(), L"1 item");
  EXPECT_THROW(ScriptHost(L"NoSuchScript"), ComError);
}

}  // namespace
}  // namespace kestrelon::host
