// Balloon tips handed to the host by IKxCommonResource::CreateBalloonTip. The host releases them
// before it lets the plug-in unload.
#pragma once

#include "kx/KxPlatform.h"

KX_DEFINE_IID(IID_IKxBalloonTip, 0x6E3346D4, 0xD115, 0x4933, 0xB2, 0xEB, 0x8F, 0xFE, 0x25, 0x38, 0xBD, 0x8C);
KX_DEFINE_IID(IID_IKxBalloonTipControl, 0x085B4591, 0x87F4, 0x4F13, 0x9A, 0x6E, 0x5A, 0x02, 0x47, 0x0C, 0x59, 0x01);

// A tip that is shown and hidden on request.
struct IKxBalloonTip : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetPosition(const POINT* point) = 0;
    virtual HRESULT STDMETHODCALLTYPE Show(BOOL bShow, DWORD timeout) = 0;
    virtual HRESULT STDMETHODCALLTYPE UpdatePosition() = 0;
    virtual void STDMETHODCALLTYPE Close() = 0;
};

// A tip that comes and goes by itself from the target window's messages, which the host relays.
struct IKxBalloonTipControl : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetTimeout(DWORD timeout) = 0;
    virtual HRESULT STDMETHODCALLTYPE RelayEvent(MSG* msg) = 0;
    virtual void STDMETHODCALLTYPE Close() = 0;
};
