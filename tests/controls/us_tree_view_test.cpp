// USTreeView in our container: its objects, keys, mouse, editing, drag and events.
#include <oleacc.h>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

using Node = ComPtr<IDispatch>;

class USTreeViewTest : public ControlTest {
 protected:
  USTreeViewTest() {
    bring_up(form_);
    site_ = place(L"USTreeView", RECT{10, 10, 210, 210});
  }

  IDispatch* tree() { return site_->control_dispatch().get(); }
  Variant call(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(site_->control_dispatch().get(), name, std::move(arguments));
  }
  Node add(const wchar_t* text, const wchar_t* key = L"", const Node& parent = nullptr) {
    return to_object(call(L"AddNode", {Variant(text), Variant(key), Variant(parent.get())}));
  }
  static std::wstring text(const Variant& node) {
    const Node object = V_VT(&node) == VT_DISPATCH ? to_object(node) : nullptr;
    return object ? to_text(get_property(object.get(), L"Text")) : L"-";
  }
  static std::wstring text_of(const Node& node, const wchar_t* name = L"Text") {
    return to_text(get_property(node.get(), name));
  }
  static long long_of(const Node& node, const wchar_t* name) {
    return to_long(get_property(node.get(), name));
  }
  std::wstring current() { return text(get(*site_, L"SelectedNode")); }
  /// a(a1, a2(a21)), b
  void fill() {
    a_ = add(L"a", L"ka");
    a1_ = add(L"a1", L"", a_);
    a2_ = add(L"a2", L"ka2", a_);
    a21_ = add(L"a21", L"", a2_);
    b_ = add(L"b", L"kb");
    call(L"ExpandAll");
    SetFocus(site_->window());
    drain_messages();
    take_log(*site_);
  }
  /// The middle of the node's text row as screen readers are told it.
  POINT place_of(const std::wstring& name) {
    const auto reader = query<IAccessible>(site_->control());
    long count = 0;
    reader->get_accChildCount(&count);
    for (long child = 1; child <= count; ++child) {
      const Variant which(child);
      Bstr text;
      reader->get_accName(which, text.put());
      if (text.view() != name) continue;
      long left = 0, top = 0, width = 0, height = 0;
      reader->accLocation(&left, &top, &width, &height, which);
      POINT point{left + 100, top + height / 2};
      ScreenToClient(site_->window(), &point);
      return point;
    }
    ADD_FAILURE() << "no such row";
    return {};
  }
  std::vector<std::wstring> own_events() {
    std::vector<std::wstring> out;
    for (const std::wstring& name : take_names(*site_))
      if (name.find(L"Key") != 0 && name.find(L"Mouse") != 0 && name != L"Click")
        out.push_back(name);
    return out;
  }

  ComPtr<ControlSite> site_;
  Node a_, a1_, a2_, a21_, b_;
};

using Names = std::vector<std::wstring>;

TEST_F(USTreeViewTest, ViewsReadTheirNodesAndNothingOfThoseThatHaveGone) {
  fill();
  EXPECT_EQ(text_of(a21_, L"FullPath"), L"a\\a2\\a21");
  EXPECT_EQ(long_of(a21_, L"Level"), 2);
  EXPECT_EQ(long_of(a2_, L"Index"), 1);
  EXPECT_EQ(text(get_property(a2_.get(), L"Parent")), L"a");
  EXPECT_EQ(text(get_property(a_.get(), L"NextNode")), L"b");
  EXPECT_EQ(text(get_property(b_.get(), L"NextNode")), L"-");
  const Node nodes = to_object(get(*site_, L"Nodes"));
  EXPECT_EQ(long_of(nodes, L"Count"), 5);
  EXPECT_EQ(text(get_property(nodes.get(), L"Item", {Variant(L"ka2")})), L"a2");
  const long handle = long_of(a1_, L"Handle");
  EXPECT_EQ(text(get_property(nodes.get(), L"Item", {Variant(handle)})), L"a1");
  EXPECT_EQ(text(get_property(nodes.get(), L"Item", {Variant(L"1")})), L"-");
  put_property(a21_.get(), L"Tag", Variant(L"x"));
  call_method(a_.get(), L"Remove");
  EXPECT_EQ(text_of(a21_), L"");
  EXPECT_EQ(V_VT(&static_cast<const VARIANT&>(get_property(a21_.get(), L"Tag"))), VT_EMPTY);
  EXPECT_EQ(text(get_property(nodes.get(), L"Item", {Variant(handle)})), L"-");
  const Node c = add(L"c");
  EXPECT_EQ(text_of(a1_), L"");
  put_property(a1_.get(), L"Text", Variant(L"late"));
  EXPECT_EQ(text_of(c), L"c");
}

TEST_F(USTreeViewTest, RefusesWhatItDoesNotKnow) {
  fill();
  EXPECT_FALSE(to_object(call(L"AddNode", {Variant(L"x"), Variant(L"ka")})));
  EXPECT_FALSE(to_object(call(L"AddNode", {Variant(L"x"), Variant(L""), Variant(L"none")})));
  EXPECT_FALSE(to_object(call(L"AddNode", {Variant(L"x"), Variant(L""), Variant(12345L)})));
  EXPECT_FALSE(to_bool(call_method(a_.get(), L"MoveTo", {Variant(a21_.get()), Variant(0L)})));
  const auto other = place(L"USTreeView", RECT{220, 10, 300, 100});
  const Node foreign =
      to_object(call_method(other->control_dispatch().get(), L"AddNode", {Variant(L"f")}));
  EXPECT_FALSE(to_object(call(L"AddNode", {Variant(L"x"), Variant(L""), Variant(foreign.get())})));
  EXPECT_TRUE(to_bool(call_method(b_.get(), L"MoveTo", {Variant(L"ka2"), Variant(1L)})));
  EXPECT_EQ(text_of(b_, L"FullPath"), L"a\\a2\\b");
  form_.remove(*other);
  EXPECT_EQ(text_of(foreign), L"");
}

TEST_F(USTreeViewTest, MovesExpandsAndChecksByKeys) {
  put(*site_, L"CheckBoxes", Variant(2L));
  fill();
  key_press(VK_HOME);
  EXPECT_EQ(current(), L"a");
  EXPECT_EQ(own_events(), Names{L"SelectionChanged"});
  key_press(VK_LEFT);
  EXPECT_EQ(own_events(), (Names{L"BeforeCollapse", L"AfterCollapse"}));
  EXPECT_EQ(number(*site_, L"VisibleCount"), 2);
  key_press(VK_RIGHT);
  EXPECT_EQ(own_events(), (Names{L"BeforeExpand", L"AfterExpand"}));
  key_press(VK_RIGHT);
  EXPECT_EQ(current(), L"a1");
  key_press(VK_SPACE);
  EXPECT_EQ(long_of(a_, L"Checked"), 2);
  EXPECT_EQ(own_events(), (Names{L"SelectionChanged", L"NodeChecked"}));
  key_press(VK_END);
  EXPECT_EQ(current(), L"b");
  type_text(L"a2");
  EXPECT_EQ(current(), L"a2");
  key_press(VK_BACK);
  EXPECT_EQ(current(), L"a");
  // A handler that takes the key away keeps the tree still.
  form_.on_control_event = [](ControlSite&, const std::wstring& name, DISPPARAMS& params) {
    if (name == L"KeyDown") set_event_argument(params, 0, Variant(short{0}));
  };
  key_press(VK_DOWN);
  EXPECT_EQ(current(), L"a");
  form_.on_control_event = nullptr;
}

TEST_F(USTreeViewTest, LoadsBranchesWhenTheyAreFirstExpanded) {
  const Node lazy = add(L"lazy", L"k");
  put_property(lazy.get(), L"HasChildren", Variant(true));
  form_.on_control_event = [&](ControlSite&, const std::wstring& name, DISPPARAMS&) {
    if (name == L"BeforeExpand") add(L"child", L"", lazy);
  };
  put_property(lazy.get(), L"Expanded", Variant(true));
  EXPECT_EQ(long_of(lazy, L"ChildCount"), 1);
  EXPECT_EQ(number(*site_, L"VisibleCount"), 2);
  form_.on_control_event = nullptr;
  const Node empty = add(L"empty");
  put_property(empty.get(), L"HasChildren", Variant(true));
  put_property(empty.get(), L"Expanded", Variant(true));
  EXPECT_FALSE(to_bool(get_property(empty.get(), L"HasChildren")));
}

TEST_F(USTreeViewTest, ChoosesByMouseAndTogglesByDoubleClick) {
  fill();
  POINT at = place_of(L"a1");
  mouse_click(site_->window(), at.x, at.y);
  EXPECT_EQ(current(), L"a1");
  EXPECT_EQ(own_events(), (Names{L"SelectionChanged", L"NodeClick"}));
  at = place_of(L"a2");
  part_clicks();
  mouse_double_click(site_->window(), at.x, at.y);
  EXPECT_EQ(number(*site_, L"VisibleCount"), 4);
  put_property(a_.get(), L"Expanded", Variant(false));
  EXPECT_EQ(current(), L"a");  // the hidden selection goes to the parent
}

TEST_F(USTreeViewTest, EditsATextInPlace) {
  put(*site_, L"AllowEdit", Variant(true));
  fill();
  key_press(VK_HOME);
  key_press(VK_F2);
  type_text(L"novo");
  key_press(VK_RETURN);
  EXPECT_EQ(text_of(a_), L"novo");
  EXPECT_EQ(own_events(), (Names{L"SelectionChanged", L"BeforeEdit", L"AfterEdit"}));
  key_press(VK_F2);
  type_text(L"x");
  key_press(VK_ESCAPE);
  EXPECT_EQ(text_of(a_), L"novo");
  key_press(VK_F2);
  key_press(VK_RETURN);
  EXPECT_EQ(own_events(), (Names{L"BeforeEdit", L"BeforeEdit"}));  // unchanged: no AfterEdit
}

TEST_F(USTreeViewTest, DragsANodeIntoAnother) {
  put(*site_, L"AllowDrag", Variant(1L));
  fill();
  const POINT from = place_of(L"b"), to = place_of(L"a1");
  mouse_move(site_->window(), from.x, from.y);
  mouse_down();
  mouse_move(site_->window(), from.x + 2, from.y - 8);
  mouse_move(site_->window(), to.x, to.y);
  EXPECT_EQ(text(get(*site_, L"DropNode")), L"a1");
  mouse_up();
  EXPECT_EQ(text_of(b_, L"FullPath"), L"a\\a1\\b");
  // Into its own branch it is refused.
  const POINT root = place_of(L"a"), below = place_of(L"a21");
  part_clicks();
  mouse_move(site_->window(), root.x, root.y);
  mouse_down();
  mouse_move(site_->window(), root.x, root.y + 9);
  mouse_move(site_->window(), below.x, below.y);
  mouse_up();
  EXPECT_EQ(long_of(a_, L"Level"), 0);
}

// In each event the program clears the tree, removes the node, or takes the control away.
TEST_F(USTreeViewTest, SurvivesWhatHandlersDoInEveryEvent) {
  for (const std::wstring event :
       {L"SelectionChanged", L"NodeClick", L"BeforeExpand", L"AfterExpand", L"BeforeCollapse",
        L"AfterCollapse", L"NodeChecked", L"BeforeEdit", L"AfterEdit", L"BeforeDrag",
        L"NodeDragOver", L"NodeDrop", L"KeyDown", L"MouseDown", L"DblClick"})
    for (int deed = 0; deed < 3; ++deed) {
      form_.remove(*site_);
      site_ = place(L"USTreeView", RECT{10, 10, 210, 210});
      for (const wchar_t* name : {L"CheckBoxes", L"AllowDrag"}) put(*site_, name, Variant(1L));
      put(*site_, L"AllowEdit", Variant(true));
      fill();
      bool done = false;
      form_.on_control_event = [&](ControlSite& from, const std::wstring& name, DISPPARAMS&) {
        if (name != event || done) return;
        done = true;
        if (deed == 0) call_method(to_object(get(from, L"Nodes")).get(), L"Clear");
        if (deed == 1) call_method(a_.get(), L"Remove");
        if (deed == 2) form_.remove(from);
      };
      const POINT at = place_of(L"a"), to = place_of(L"b");
      const auto go = [&](auto step) {
        if (!done) step();
        drain_messages();
      };
      go([&] { mouse_click(site_->window(), at.x, at.y); });
      for (const WORD key :
           {WORD{VK_HOME}, WORD{VK_SUBTRACT}, WORD{VK_ADD}, WORD{VK_SPACE}, WORD{VK_F2}})
        go([&] { key_press(key); });
      go([&] { type_text(L"x"); });
      go([&] { key_press(VK_RETURN); });
      part_clicks();
      go([&] { mouse_double_click(site_->window(), at.x, at.y); });
      go([&] {
        put_property(a_.get(), L"Expanded", Variant(true));
        mouse_move(site_->window(), at.x, at.y);
        part_clicks();
        mouse_down();
        mouse_move(site_->window(), at.x, at.y + 8);
        if (site_->window()) mouse_move(site_->window(), to.x, to.y);
        mouse_up();
      });
      EXPECT_TRUE(done) << std::string(event.begin(), event.end()) << " " << deed;
      mouse_up();
      form_.on_control_event = nullptr;
      drain_messages();
    }
}

TEST_F(USTreeViewTest, TellsReadersOfRowsOnDemand) {
  for (int i = 0; i < 1000; ++i) add(L"x");
  fill();
  const auto reader = query<IAccessible>(site_->control());
  long count = 0;
  ASSERT_EQ(reader->get_accChildCount(&count), S_OK);
  EXPECT_EQ(count, 1005);
  Variant role, state;
  Bstr level;
  ASSERT_EQ(reader->get_accRole(Variant(1001L), role.put()), S_OK);
  EXPECT_EQ(to_long(role), ROLE_SYSTEM_OUTLINEITEM);
  ASSERT_EQ(reader->get_accState(Variant(1001L), state.put()), S_OK);
  EXPECT_NE(to_long(state) & STATE_SYSTEM_EXPANDED, 0);
  ASSERT_EQ(reader->get_accValue(Variant(1004L), level.put()), S_OK);
  EXPECT_EQ(level.view(), L"2");
  call_method(to_object(get(*site_, L"Nodes")).get(), L"Clear");
  EXPECT_NE(reader->get_accState(Variant(1001L), state.put()), S_OK);
}

TEST_F(USTreeViewTest, RestoresWhatWasExpanded) {
  fill();
  const std::wstring keys = to_text(get(*site_, L"ExpandedKeys"));
  EXPECT_EQ(keys, L"ka\r\nka2");
  call(L"CollapseAll");
  EXPECT_EQ(number(*site_, L"VisibleCount"), 2);
  put(*site_, L"ExpandedKeys", Variant(std::wstring_view(keys)));
  EXPECT_EQ(number(*site_, L"VisibleCount"), 5);
}

}  // namespace
}  // namespace kestrelon::host
