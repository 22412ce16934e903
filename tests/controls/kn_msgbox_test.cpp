// The message box as a program meets it: real keys and presses while its own loop runs.
#include "frame/accessible/oleacc.h"
#include "frame/private_timer.h"
#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

HWND open_box() {
  HWND found = nullptr;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM out) CALLBACK -> BOOL {
        wchar_t name[64] = {};
        GetClassNameW(window, name, 64);
        if (lstrcmpW(name, L"FormMsgBox") != 0) return TRUE;
        *reinterpret_cast<HWND*>(out) = window;  // the topmost comes first
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

// Input as the user gives it, left to the box's own loop.
void send_key(WORD key, WORD modifier = 0) {
  std::vector<INPUT> input;
  const auto add = [&](WORD code, DWORD flags) {
    INPUT one{};
    one.type = INPUT_KEYBOARD;
    one.ki.wVk = code;
    one.ki.dwFlags = flags;
    input.push_back(one);
  };
  if (modifier != 0) add(modifier, 0);
  add(key, 0);
  add(key, KEYEVENTF_KEYUP);
  if (modifier != 0) add(modifier, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(input.size()), input.data(), sizeof(INPUT));
}

std::wstring clipboard_text() {
  std::wstring out;
  if (!OpenClipboard(nullptr)) return out;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    out = static_cast<const wchar_t*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return out;
}

class KnMsgBoxTest : public ControlTest {
 protected:
  using Step = std::function<void(HWND box)>;

  KnMsgBoxTest() : service_(library().create(L"KN_MSGBOX").as<IDispatch>()) {
    sink_ = EventSink::connect(service_.get(), nullptr);
    bring_up(form_);
  }
  // The box closes as a key goes down; its way up is not for the next test's controls.
  ~KnMsgBoxTest() override { drain_messages(); }

  /// Shows a box and runs the steps, one a time, while it is open; a box that is then still open is
  /// closed with 99.
  long show(long buttons, std::vector<Step> steps,
            const std::wstring& text = L"Excluir o cliente?") {
    size_t next = 0;
    bool busy = false;  // a step that opens a loop of its own
    PrivateTimer timer;
    timer.start(60, [&, steps = std::move(steps)] {
      const HWND box = open_box();
      if (box == nullptr || busy) return;
      if (next < steps.size()) {
        busy = true;
        steps[next++](box);
        busy = false;
        return;
      }
      if (next++ > steps.size() + 40) call_method(service_.get(), L"CloseBox", {Variant(99L)});
    });
    return to_long(
        call_method(service_.get(), L"Show",
                    {Variant(std::wstring_view(text)), Variant(buttons), Variant(L"Clientes"),
                     Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(form_.hwnd())))}));
  }
  static Step key(WORD code, WORD modifier = 0) {
    return [=](HWND) { send_key(code, modifier); };
  }

  ComPtr<IDispatch> service_;
  ComPtr<EventSink> sink_;
};

TEST_F(KnMsgBoxTest, AnswersByEnterEscapeAndLettersInEverySet) {
  EXPECT_EQ(show(0, {key(VK_RETURN)}), 1);
  EXPECT_EQ(show(0, {key(VK_ESCAPE)}), 1);
  EXPECT_EQ(show(4 + 32 + 256, {key(VK_RETURN)}), 7);
  EXPECT_EQ(show(4 + 32, {key('N')}), 7);
  EXPECT_EQ(show(4 + 16, {key('S', VK_MENU)}), 6);
  EXPECT_EQ(show(3 + 48, {key(VK_ESCAPE)}), 2);
  EXPECT_EQ(show(2, {key('I')}), 5);
  EXPECT_EQ(show(6, {key('T')}), 10);
  EXPECT_EQ(show(5, {key(VK_F4, VK_MENU)}), 2);
  EXPECT_EQ(open_box(), nullptr);
}

TEST_F(KnMsgBoxTest, KeepsABoxThatHasNoCancelOpenAtEscape) {
  EXPECT_EQ(show(4, {key(VK_ESCAPE), key(VK_F4, VK_MENU), key('N')}), 7);
  EXPECT_EQ(show(2, {key(VK_ESCAPE), key('A')}), 3);
}

TEST_F(KnMsgBoxTest, MovesTheFocusByTabAndArrowsAndAnswersWithTheFocusedButton) {
  EXPECT_EQ(show(3, {key(VK_TAB), key(VK_RETURN)}), 7);
  EXPECT_EQ(show(3, {key(VK_RIGHT), key(VK_RIGHT), key(VK_RETURN)}), 2);
  EXPECT_EQ(show(3, {key(VK_LEFT), key(VK_RETURN)}), 2);
  EXPECT_EQ(show(3, {key(VK_TAB, VK_SHIFT), key(VK_SPACE)}), 2);
}

TEST_F(KnMsgBoxTest, IsModalAndGivesTheFocusBack) {
  const auto box = place(L"USCheckBox", RECT{20, 20, 180, 50});
  form_.show();
  SetFocus(box->window());
  bool disabled = false, centred = false;
  EXPECT_EQ(show(0, {[&](HWND window) {
                   disabled = !IsWindowEnabled(form_.hwnd());
                   RECT own{}, owner{};
                   GetWindowRect(window, &own);
                   GetWindowRect(form_.hwnd(), &owner);
                   centred = std::abs((own.left + own.right) - (owner.left + owner.right)) < 4;
                   send_key(VK_RETURN);
                 }}),
            1);
  EXPECT_TRUE(disabled);
  EXPECT_TRUE(centred);
  EXPECT_TRUE(IsWindowEnabled(form_.hwnd()));
  EXPECT_EQ(GetFocus(), box->window());
}

TEST_F(KnMsgBoxTest, LeavesAnOwnerDisabledThatWasSo) {
  EnableWindow(form_.hwnd(), FALSE);
  show(0, {key(VK_RETURN)});
  EXPECT_FALSE(IsWindowEnabled(form_.hwnd()));
}

TEST_F(KnMsgBoxTest, ClicksAButton) {
  EXPECT_EQ(show(4, {[](HWND box) {
                   RECT client{};
                   GetClientRect(box, &client);
                   // The right-most button is the last.
                   const POINT at{client.right - 30, client.bottom - 24};
                   const HWND button = ChildWindowFromPoint(box, at);
                   ASSERT_NE(button, box);
                   PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
                   PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
                 }}),
            7);
}

TEST_F(KnMsgBoxTest, CopiesItsTexts) {
  show(4, {key('C', VK_CONTROL), key('N')}, L"Linha 1\r\nLinha 2");
  EXPECT_EQ(clipboard_text(),
            L"---------------------------\r\nClientes\r\n---------------------------\r\n"
            L"Linha 1\r\nLinha 2\r\n---------------------------\r\nSim   N\u00e3o   \r\n"
            L"---------------------------\r\n");
}

TEST_F(KnMsgBoxTest, CountsDownAndChoosesTheDefaultButton) {
  put_property(service_.get(), L"TimeOut", Variant(1L));
  std::wstring left;
  sink_->set_handler([&](const std::wstring& name, DISPPARAMS& arguments) {
    if (name == L"Tick") left += to_text(event_value(arguments, 0)) + L";";
  });
  EXPECT_EQ(show(4 + 256, {}), 7);
  EXPECT_TRUE(to_bool(get_property(service_.get(), L"TimedOut")));
  EXPECT_EQ(left, L"0;");
  put_property(service_.get(), L"TimeOut", Variant(0L));
  EXPECT_EQ(show(4 + 256, {key('S')}), 6);
  EXPECT_FALSE(to_bool(get_property(service_.get(), L"TimedOut")));
}

TEST_F(KnMsgBoxTest, AnswersWhenItsOwnerGoes) {
  const auto gone = [this](HWND) { DestroyWindow(form_.hwnd()); };
  EXPECT_EQ(show(4, {gone}), 0);
  Form other;
  bring_up(other);
  EXPECT_EQ(to_long(call_method(service_.get(), L"Show",
                                {Variant(L"Texto"), Variant(15L), Variant(L"")})),
            0);
}

TEST_F(KnMsgBoxTest, LetsATimerOpenASecondBox) {
  long inner = -1;
  const auto second = [&](HWND) {
    const auto other = library().create(L"KN_MSGBOX").as<IDispatch>();
    PrivateTimer timer;
    timer.start(60, [] { send_key(VK_ESCAPE); });
    inner = to_long(call_method(other.get(), L"Show", {Variant(L"Outra"), Variant(1L)}));
  };
  EXPECT_EQ(show(4, {second, key('S')}), 6);
  EXPECT_EQ(inner, 2);
  EXPECT_TRUE(IsWindowEnabled(form_.hwnd()));
}

TEST_F(KnMsgBoxTest, ShowsOwnCaptionsAndKeepsTheCheck) {
  put_property(service_.get(), L"CheckBoxCaption", Variant(L"N\u00e3o &mostrar de novo"));
  put_property(service_.get(), L"Details", Variant(L"Detalhe 1\r\nDetalhe 2"));
  int low = 0, high = 0;
  const auto height = [](int& out) {
    return [&out](HWND box) {
      RECT rect{};
      GetWindowRect(box, &rect);
      out = static_cast<int>(rect.bottom - rect.top);
    };
  };
  EXPECT_EQ(show(1, {height(low), key('M'), key('D'), height(high), key(VK_ESCAPE)}), 2);
  EXPECT_GT(high, low + 100);
  EXPECT_TRUE(to_bool(get_property(service_.get(), L"CheckBoxValue")));
}

TEST_F(KnMsgBoxTest, PassesQuitOn) {
  show(4, {[](HWND) { PostQuitMessage(7); }});
  MSG message{};
  bool quit = false;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    if (message.message == WM_QUIT) {
      quit = message.wParam == 7;
      break;
    }
  EXPECT_TRUE(quit);
}

TEST_F(KnMsgBoxTest, TellsScreenReadersTitleAndTextAtOnce) {
  std::wstring name, text;
  long role = 0, children = 0;
  show(4, {[&](HWND box) {
         ComPtr<IAccessible> object;
         const auto ask =
             oleacc_function<decltype(AccessibleObjectFromWindow)>("AccessibleObjectFromWindow");
         ask(box, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, object.put_void());
         if (object) {
           Variant self(static_cast<long>(CHILDID_SELF)), answer;
           Bstr bytes;
           object->get_accName(self, bytes.put());
           name = to_wstring(bytes.get());
           object->get_accDescription(self, bytes.put());
           text = to_wstring(bytes.get());
           object->get_accRole(self, &answer);
           role = V_I4(&answer);
           object->get_accChildCount(&children);
         }
         send_key('N');
       }});
  EXPECT_EQ(name, L"Clientes");
  EXPECT_EQ(text, L"Excluir o cliente?");
  EXPECT_EQ(role, ROLE_SYSTEM_ALERT);
  EXPECT_EQ(children, 3);
}

TEST_F(KnMsgBoxTest, ServesThePublishedRoutines) {
  const auto utility = library().create(L"KN").as<IDispatch>();
  PrivateTimer timer;
  timer.start(60, [] {
    if (open_box() != nullptr) send_key('N');
  });
  EXPECT_EQ(to_long(call_method(utility.get(), L"USMsgBox",
                                {Variant(L"Excluir?"), Variant(4L), Variant(L"")})),
            7);
  EXPECT_EQ(
      to_long(call_method(utility.get(), L"USMsgBoxEx",
                          {Variant(static_cast<long>(reinterpret_cast<LONG_PTR>(form_.hwnd()))),
                           Variant(L"Excluir?"), Variant(4L)})),
      7);
}

}  // namespace
}  // namespace kestrelon::host
