// What a control made in a test program needs beside the frame: a dispatch interface of no use to
// anybody.
#pragma once

#include "frame/control_frame.h"

namespace kestrelon {

class ProbeControl : public ControlFrame, public IDispatch {
 public:
  using ControlFrame::ControlFrame;

  HWND hwnd() const { return window(); }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override { return outer_query(iid, out); }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_add_ref(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_release(); }
  STDMETHODIMP GetTypeInfoCount(UINT* out) override {
    *out = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }
  IDispatch* dispatch() override { return this; }
};

}  // namespace kestrelon
