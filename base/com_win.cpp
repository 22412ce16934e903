#include "base/com_win.h"

namespace kestrelon {

void publish_error(const ComError& error, const IID& iid) noexcept {
  if (error.description.empty()) return;
  ComPtr<ICreateErrorInfo> info;
  if (FAILED(CreateErrorInfo(info.put()))) return;
  info->SetGUID(iid);
  info->SetDescription(const_cast<wchar_t*>(error.description.c_str()));
  const std::wstring source = error.source.empty() ? L"Kestrelon2012" : error.source;
  info->SetSource(const_cast<wchar_t*>(source.c_str()));
  if (const auto object = info.as<IErrorInfo>()) SetErrorInfo(0, object.get());
}

}  // namespace kestrelon
