// Runs VBScript or JScript as the code behind a form.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <activscp.h>

#include <map>
#include <string>
#include <vector>

#include "base/com_win.h"

namespace kestrelon::host {

class Form;
class ScriptSite;

struct ScriptError {
  long number = 0;  // Err.Number: the low word of a Basic error, the HRESULT of any other
  std::wstring description;
  int line = 0;  // from 1
};

class ScriptHost {
 public:
  /// `language` is `VBScript` or `JScript`; throws ComError when the system has no such engine.
  explicit ScriptHost(const std::wstring& language = L"VBScript");
  ~ScriptHost();
  ScriptHost(const ScriptHost&) = delete;
  ScriptHost& operator=(const ScriptHost&) = delete;

  /// Makes `object` known to the script by name. The host keeps it until the end.
  void add_item(const std::wstring& name, IDispatch* object);
  /// The form and each of its controls by their names. Events go to the subs `name_Event`, those of
  /// the form itself to `Form_Event`; a sub that is not there is passed over. The form must outlive
  /// the host or be given up by leave_form(). Controls added later need add_item.
  void add_form(Form& form);
  void leave_form();

  /// Runs code at the top level. False when it failed; the error is the last of errors().
  bool run(const std::wstring& code);
  /// Calls a sub or function with arguments in written order; by-reference ones come back changed
  /// where the engine supports it. False when there is none of this name or it failed.
  bool call(const std::wstring& name, DISPPARAMS& params, Variant* result = nullptr);
  Variant evaluate(const std::wstring& expression);
  const std::vector<ScriptError>& errors() const;

 private:
  ComPtr<ScriptSite> site_;
  ComPtr<IActiveScript> engine_;
  ComPtr<IActiveScriptParse> parser_;
  Form* form_ = nullptr;
};

}  // namespace kestrelon::host
