// The balloon tip objects that the host and the dialogs hold: small reference-counted objects that
// own a bubble window object and remember what it says about which window. CKxBalloonlTip is shown
// and hidden on request (IKxBalloonTip); CKxBalloonlTipControl gets the target's messages relayed
// and lets its tip come and go by itself (IKxBalloonTipControl). The logic is portable: the bubble
// window and the few platform calls reach it through IKxBubble and IKxBalloonPlatform.
#pragma once

#include <cstddef>
#include <new>

#include "balloon/bubble_constants.h"
#include "kx/IKxBalloonTip.h"

// The bubble window as the tips use it (CKXBubbleToolTip on Win32).
class IKxBubble {
public:
    virtual ~IKxBubble() = default;
    // 1 when the bubble is showing, 0 on failure (no window remains then).
    virtual BOOL ShowBubble(LPCWSTR text, LPCWSTR title, HWND target, LPCWSTR skinPath, int x, int y, DWORD timeout,
                            UINT flags, BOOL sticky) = 0;
    virtual HRESULT RelayMessage(HWND targetWindow, const MSG& message, UINT flags, LPCWSTR title, LPCWSTR text,
                                 LPCWSTR skinPath, DWORD timeout) = 0;
    virtual void HideBubble() = 0;
    virtual void ResetBubble() = 0;
    virtual BOOL CheckPlacement(POINT* flipPoint, POINT* movePoint, HWND targetWindow) = 0;
    virtual bool HasWindow() = 0;
    virtual bool IsVisible() = 0;  // the window exists and is visible
    // SetWindowPos of the window to a new top left: SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW.
    virtual void MoveWindowTo(POINT topLeft) = 0;
};

// Storage for the platform's switch to the module's framework state, held on the stack.
struct KxModuleStateSlot {
    alignas(void*) unsigned char bytes[4 * sizeof(void*)];
};

// What the tips need of the platform. One object serves every tip of the process.
class IKxBalloonPlatform {
public:
    virtual BOOL FileExists(LPCWSTR path) = 0;
    virtual BOOL IsWindow(HWND hWnd) = 0;  // false for null
    virtual BOOL GetWindowRect(HWND hWnd, RECT* rc) = 0;
    // True when `bytes` at `p` cannot be written (IsBadWritePtr).
    virtual bool IsBadWritePtr(void* p, size_t bytes) = 0;
    // True when `bytes` at `p` cannot be read (IsBadReadPtr); a platform that cannot tell answers false.
    virtual bool IsBadReadPtr(const void* p, size_t bytes) {
        (void)p;
        (void)bytes;
        return false;
    }
    // A new bubble object, null when there is no memory for one.
    virtual IKxBubble* NewBubble() = 0;
    // Enters the module's framework state into `slot`; LeaveModuleState restores the former one.
    virtual void EnterModuleState(KxModuleStateSlot* slot) = 0;
    virtual void LeaveModuleState(KxModuleStateSlot* slot) = 0;

protected:
    ~IKxBalloonPlatform() = default;
};

// Holds the module's framework state for a scope.
class CKxBalloonStateSwitch {
public:
    explicit CKxBalloonStateSwitch(IKxBalloonPlatform& platform) : m_platform(platform) {
        m_platform.EnterModuleState(&m_slot);
    }
    ~CKxBalloonStateSwitch() { m_platform.LeaveModuleState(&m_slot); }
    CKxBalloonStateSwitch(const CKxBalloonStateSwitch&) = delete;
    CKxBalloonStateSwitch& operator=(const CKxBalloonStateSwitch&) = delete;

private:
    IKxBalloonPlatform& m_platform;
    KxModuleStateSlot m_slot;
};

class CKxBaloontipBase {
public:
    explicit CKxBaloontipBase(IKxBalloonPlatform& platform);
    virtual ~CKxBaloontipBase();
    CKxBaloontipBase(const CKxBaloontipBase&) = delete;
    CKxBaloontipBase& operator=(const CKxBaloontipBase&) = delete;

    // Clears, then takes the target, flags and mode and copies the texts (a null title: the
    // default title; a null text: empty) and at most 259 characters of the skin path.
    void Init(HWND hwndTarget, LPCWSTR text, LPCWSTR title, UINT flags, LPCWSTR skinFile, LPCWSTR defaultTitle,
              BOOL controlMode);
    // Frees the texts, empties the skin path, ends the bubble, and back to a target-less tip.
    void Clear();
    HRESULT ShowAt(POINT point, DWORD timeout);
    HRESULT FollowTarget();
    HRESULT EnsureBubble();
    HRESULT RelayMessage(const MSG& message, DWORD timeout);
    HRESULT Hide();

    static constexpr int kSkinFileChars = 260;

    HWND m_hTarget;
    LPWSTR m_pszText;       // own CoTaskMem block
    LPWSTR m_pszTitle;      // own CoTaskMem block
    UINT m_nFlags;
    IKxBubble* m_pBubble;   // owned
    BOOL m_bControlMode;
    POINT m_ptPosition;
    WCHAR m_szSkinFile[kSkinFileChars];
    DWORD m_nLastTimeout;

protected:
    IKxBalloonPlatform& m_platform;

private:
    // The first two steps of the operations that show: the tip is of the wanted sort (0x80070057
    // otherwise) and the skin package is there (0x80070002 otherwise).
    HRESULT CheckSortAndSkin(BOOL wantControlMode);
};

// The tip objects live in CoTaskMem blocks, so that an out-of-memory creation can be reached and
// every object is counted where task memory is audited.
struct KxTaskMemObject {
    static void* operator new(size_t size, const std::nothrow_t&) noexcept;
    static void operator delete(void* p) noexcept;
    static void operator delete(void* p, const std::nothrow_t&) noexcept;
};

class CKxBalloonlTip : public IKxBalloonTip, public CKxBaloontipBase, public KxTaskMemObject {
public:
    explicit CKxBalloonlTip(IKxBalloonPlatform& platform) : CKxBaloontipBase(platform) {}

    // Always 0x80004001, `ppv` untouched: a tip is reached only through CreateBalloonTip.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE SetPosition(const POINT* point) override;
    HRESULT STDMETHODCALLTYPE Show(BOOL bShow, DWORD timeout) override;
    HRESULT STDMETHODCALLTYPE UpdatePosition() override;
    void STDMETHODCALLTYPE Close() override;

    BOOL m_bPositionSet = FALSE;
    volatile LONG m_cRef = 1;
};

class CKxBalloonlTipControl : public IKxBalloonTipControl, public CKxBaloontipBase, public KxTaskMemObject {
public:
    explicit CKxBalloonlTipControl(IKxBalloonPlatform& platform) : CKxBaloontipBase(platform) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE SetTimeout(DWORD timeout) override;
    HRESULT STDMETHODCALLTYPE RelayEvent(MSG* msg) override;
    void STDMETHODCALLTYPE Close() override;

    DWORD m_nTimeout = kBalloonControlTimeout;
    volatile LONG m_cRef = 1;
};

// CreateBalloonTip of IKxCommonResource, in its fixed order: the out pointer, the skin file, the
// target, then the kind of tip. `skinFile` and `defaultTitle` are the plug-in object's.
HRESULT KxCreateBalloonTip(IKxBalloonPlatform& platform, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                           LPCWSTR pszTitle, UINT flags, LPCWSTR skinFile, LPCWSTR defaultTitle, void** ppTip);
