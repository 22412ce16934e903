// A control made in the test program that uses every mechanism of the frame at once: an edit box
// inside, a button of ours inside, a list of records, a popup, items for screen readers.
#pragma once

#include <string>
#include <vector>

#include "controls/us_button/us_button.h"
#include "frame/inner/child_edit.h"
#include "frame/inner/inner_control.h"
#include "frame/popup/popup.h"
#include "frame/record_property.h"
#include "tests/frame/probe_control.h"

namespace kestrelon {

struct ProbePanel {
  std::wstring caption = L"Painel";
  long width = 100;
  bool enabled = true;
};

class FrameProbe final : public ProbeControl, private ChildEditOwner, private PopupOwner {
 public:
  FrameProbe();

  RecordList<ProbePanel> panels{*this,
                                L"PanelCount",
                                &FrameProbe::draw_all,
                                field(L"PanelCaption", &ProbePanel::caption),
                                field(L"PanelWidth", &ProbePanel::width),
                                field(L"PanelEnabled", &ProbePanel::enabled)};
  Property<bool> Enabled{*this, L"Enabled", true, &FrameProbe::apply_enabled};

  std::vector<std::wstring> log;
  ChildEdit edit{*this, *this};
  std::unique_ptr<InnerControl<USButton>> button;
  std::function<void()> on_key;  // called within key_down
  std::function<void()> on_popup_end;
  short key_becomes = -1;  // what the host's handler makes of a key; -1 leaves it
  bool keeps_escape = false;
  std::vector<std::wstring> items{L"Um", L"Dois", L"Tr\u00EAs"};
  long selected = 0;

  bool open_popup(SIZE size);
  Popup& popup() { return popup_; }
  using ControlFrame::focus_within;
  using ControlFrame::pointer_over_window;
  using ControlFrame::set_access_keys;

  const ClassInfo& class_info() const override;

 private:
  void window_created() override;
  void resized() override;
  void terminate() override;
  void got_focus() override { log.push_back(L"got focus"); }
  void lost_focus() override { log.push_back(L"lost focus"); }
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override;
  void mouse_down(short button, short shift, float x, float y) override;
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return true; }
  HWND focus_target() override { return edit.hwnd(); }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void draw_all();

  void edit_changed(ChildEdit&) override { log.push_back(L"changed " + edit.text()); }
  void popup_draw(Surface& surface) override { surface.clear(0x00FF00); }
  void popup_closed(PopupEnd why) override;

  void describe(AccessibleItem& item) const override;
  long accessible_count() const override { return static_cast<long>(items.size()); }
  bool accessible_item(long child, AccessibleItem& item) const override;
  long accessible_at(POINT point) const override;
  std::vector<long> accessible_selection() const override;
  bool accessible_select(long child, long flags) override;
  void accessible_default_action(long child) override;

  Popup popup_;
};

}  // namespace kestrelon
