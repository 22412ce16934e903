// A program that runs as a service through the library, as a stranger's would: by COM alone. It
// writes what it hears to the file named by its first argument and answers to the name in its
// command line. Command 200 stops it with failure 7.
#include <cstdio>
#include <cwchar>
#include <string>

#include "host/class_library.h"
#include "host/event_sink.h"
#include "kestrelon2012.h"
#include "tests/library_path.h"

namespace {

using kestrelon::Bstr;
using kestrelon::ComPtr;

std::wstring log_name;

void note(const std::wstring& line) {
  FILE* const file = _wfopen(log_name.c_str(), L"ab");
  if (file == nullptr) return;
  std::fprintf(file, "%ls\n", line.c_str());
  std::fclose(file);
}

long number(const DISPPARAMS& params) {
  return params.cArgs == 1 && V_VT(params.rgvarg) == (VT_BYREF | VT_I4) ? *V_I4REF(params.rgvarg)
                                                                        : -1;
}

int serve(const wchar_t* name) {
  const kestrelon::host::ClassLibrary library(kestrelon::library_path());
  const ComPtr<IUnknown> object = library.create(std::wstring(L"KN_NTSERVICES"));
  const auto service = object.as<_KN_NTSERVICES>();
  if (!service) return 2;
  const DWORD thread = GetCurrentThreadId();
  const auto sink = kestrelon::host::EventSink::connect(
      object.get(), [&](const std::wstring& event, DISPPARAMS& params) {
        if (event == L"ServiceStarted") log_name = kestrelon::to_wstring(*V_BSTRREF(params.rgvarg));
        note(event + (GetCurrentThreadId() == thread ? L"" : L" on another thread") +
             (event == L"ServiceCommand" ? L" " + std::to_wstring(number(params)) : L""));
        if (event == L"ServiceCommand" && number(params) == 200) service->ReportStopped(7);
        if (event == L"ServiceStop" || (event == L"ServiceCommand" && number(params) == 200))
          PostQuitMessage(0);
      });
  VARIANT_BOOL runs = VARIANT_FALSE;
  service->RunAsService(Bstr(name).get(), &runs);
  if (runs == VARIANT_FALSE) return 3;
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  sink->disconnect();
  return 0;
}

}  // namespace

int wmain(int count, wchar_t** texts) {
  if (count < 2) return 1;
  OleInitialize(nullptr);
  return serve(texts[1]);
}
