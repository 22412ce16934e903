// KN_AJAX: one HTTP request at a time through the system's XMLHTTP object.
#pragma once

#include "kn_ajax_glue.h"
#include "services/ajax/ajax_text.h"
#include "services/late_object_win.h"

namespace kestrelon {

class KN_AJAX final : public KN_AJAXGlue<KN_AJAX, AutomationObject> {
 public:
  KN_AJAX();

  bool ajax_internet_on_line();
  short ajax_ready_state_wait() const { return wait_seconds_; }
  void set_ajax_ready_state_wait(short seconds) { wait_seconds_ = seconds; }
  bool ajax_get(const std::wstring& url, const std::wstring& charset);
  bool ajax_post(const std::wstring& url, const std::wstring& charset, bool encode_value);
  const std::wstring& ajax_response_text() const { return response_; }
  std::wstring url_encode(const std::wstring& text) { return kestrelon::url_encode(text); }
  std::wstring ajax_response_url_decoded() const { return decode_entities(response_); }
  bool is_ajax_initialized() const { return can_request_; }
  void add_ajax_field(const std::wstring& field, const std::wstring& value);
  void clear_ajax() { fields_.clear(); }

 private:
  /// Sends and waits; stores the answer and tells whether it has a text.
  bool finish(LateObject& request, const Variant& body);
  /// Lets messages run until the answer is whole or the time is over.
  static void wait(LateObject& request, int seconds, bool shows_pointer);

  bool can_request_;
  FormFields fields_;
  std::wstring response_;
  short wait_seconds_ = 30;
};

}  // namespace kestrelon
