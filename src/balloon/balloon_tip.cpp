#include "balloon/balloon_tip.h"
#include "base/owners.h"

#include <cstring>

#include "balloon/bubble_constants.h"
#include "balloon/bubble_messages.h"
#include "base/boundary.h"

namespace {

const HRESULT kNoSkinFile = static_cast<HRESULT>(0x80070002u);  // ComRcRes.bff is not there
const HRESULT kNoWindow = static_cast<HRESULT>(0x80070006u);    // the target is no window

}  // namespace

void* KxTaskMemObject::operator new(size_t size, const std::nothrow_t&) noexcept { return CoTaskMemAlloc(size); }
void KxTaskMemObject::operator delete(void* p) noexcept { CoTaskMemFree(p); }
void KxTaskMemObject::operator delete(void* p, const std::nothrow_t&) noexcept { CoTaskMemFree(p); }

CKxBaloontipBase::CKxBaloontipBase(IKxBalloonPlatform& platform)
    : m_hTarget(nullptr),
      m_pszText(nullptr),
      m_pszTitle(nullptr),
      m_nFlags(kBalloonDefaultFlags),
      m_pBubble(nullptr),
      m_bControlMode(TRUE),
      m_ptPosition{0, 0},
      m_szSkinFile{},
      m_nLastTimeout(kBalloonDefaultTimeout),
      m_platform(platform) {}

CKxBaloontipBase::~CKxBaloontipBase() { Clear(); }

namespace {

// A CoTaskMem copy of at most kBubbleMaxTextChars characters, never cut inside a surrogate pair.
LPWSTR CopyTipText(const WCHAR* text) {
    size_t count = 0;
    while (count < kBubbleMaxTextChars && text[count]) ++count;
    if (count == kBubbleMaxTextChars && text[count] && text[count - 1] >= 0xD800 && text[count - 1] <= 0xDBFF) --count;
    return KxTaskMemCopy(text, count);
}

}  // namespace

void CKxBaloontipBase::Init(HWND hwndTarget, LPCWSTR text, LPCWSTR title, UINT flags, LPCWSTR skinFile,
                            LPCWSTR defaultTitle, BOOL controlMode) {
    CKxBalloonStateSwitch state(m_platform);
    Clear();
    m_hTarget = hwndTarget;
    m_nFlags = flags;
    m_bControlMode = controlMode;
    if (skinFile) {
        std::memset(m_szSkinFile, 0, sizeof(m_szSkinFile));
        for (int i = 0; i < kSkinFileChars - 1 && skinFile[i]; ++i) m_szSkinFile[i] = skinFile[i];
    }
    m_pszTitle = CopyTipText(title ? title : defaultTitle ? defaultTitle : L"");
    m_pszText = CopyTipText(text ? text : L"");
}

void CKxBaloontipBase::Clear() {
    CKxBalloonStateSwitch state(m_platform);
    CoTaskMemFree(m_pszText);
    CoTaskMemFree(m_pszTitle);
    m_pszText = nullptr;
    m_pszTitle = nullptr;
    m_szSkinFile[0] = L'\0';
    if (m_pBubble) {
        m_pBubble->ResetBubble();
        delete m_pBubble;
        m_pBubble = nullptr;
    }
    m_hTarget = nullptr;
    m_ptPosition = POINT{0, 0};
    m_nFlags = kBalloonDefaultFlags;
    m_bControlMode = TRUE;
}

HRESULT CKxBaloontipBase::CheckSortAndSkin(BOOL wantControlMode) {
    if (!m_bControlMode != !wantControlMode) return E_INVALIDARG;
    if (!m_platform.FileExists(m_szSkinFile)) return kNoSkinFile;
    return S_OK;
}

HRESULT CKxBaloontipBase::ShowAt(POINT point, DWORD timeout) {
    CKxBalloonStateSwitch state(m_platform);
    HRESULT hr = CheckSortAndSkin(FALSE);
    if (FAILED(hr)) return hr;
    if (!m_hTarget) return E_INVALIDARG;  // a tip without a target is refused like one of the wrong sort
    if (m_pBubble && m_pBubble->IsVisible()) return S_FALSE;
    if (!m_pBubble) {
        m_pBubble = m_platform.NewBubble();
        if (!m_pBubble) return E_OUTOFMEMORY;
    }
    m_nLastTimeout = timeout ? timeout : kBalloonDefaultTimeout;
    // a time of 0 goes to the bubble as it came: the tip stays until it is closed
    if (m_pBubble->ShowBubble(m_pszText, m_pszTitle, m_hTarget, m_szSkinFile, point.x, point.y, timeout, m_nFlags,
                              TRUE))
        return S_OK;
    m_nLastTimeout = kBalloonDefaultTimeout;
    return E_FAIL;
}

HRESULT CKxBaloontipBase::FollowTarget() {
    CKxBalloonStateSwitch state(m_platform);
    HRESULT hr = CheckSortAndSkin(FALSE);
    if (FAILED(hr)) return hr;
    if (!m_platform.IsWindow(m_hTarget)) return kNoWindow;
    if (!m_pBubble) return E_POINTER;
    POINT flip = {0, 0}, move = {0, 0};
    if (m_pBubble->CheckPlacement(&flip, &move, m_hTarget)) {
        // the other corner, with half the time that was left to the tip
        m_ptPosition = POINT{0, 0};
        Hide();
        ShowAt(flip, m_nLastTimeout / 2);
    } else {
        m_pBubble->MoveWindowTo(move);
    }
    return S_OK;
}

HRESULT CKxBaloontipBase::EnsureBubble() {
    CKxBalloonStateSwitch state(m_platform);
    HRESULT hr = CheckSortAndSkin(TRUE);
    if (FAILED(hr)) return hr;
    if (!m_platform.IsWindow(m_hTarget)) return kNoWindow;
    if (!m_pBubble) {
        m_pBubble = m_platform.NewBubble();
        if (!m_pBubble) return E_OUTOFMEMORY;
    } else if (m_pBubble->IsVisible()) {
        return S_FALSE;
    }
    return S_OK;
}

HRESULT CKxBaloontipBase::RelayMessage(const MSG& message, DWORD timeout) {
    CKxBalloonStateSwitch state(m_platform);
    HRESULT hr = CheckSortAndSkin(TRUE);
    if (FAILED(hr)) return hr;
    if (!m_platform.IsWindow(m_hTarget)) return kNoWindow;
    if (!m_pBubble) return E_POINTER;
    return m_pBubble->RelayMessage(m_hTarget, message, m_nFlags, m_pszTitle, m_pszText, m_szSkinFile, timeout);
}

HRESULT CKxBaloontipBase::Hide() {
    CKxBalloonStateSwitch state(m_platform);
    if (!m_pBubble) return E_POINTER;
    m_pBubble->ResetBubble();
    return S_OK;
}

namespace {

// The Release of both tips: a count already at zero is left alone (a Release too many does
// nothing), the last one closes the tip and frees it.
template <typename Tip>
ULONG ReleaseTip(Tip* tip) {
    if (tip->m_cRef <= 0) return 0;
    const LONG n = InterlockedDecrement(&tip->m_cRef);
    if (n > 0) return static_cast<ULONG>(n);
    if (n == 0) {
        tip->Close();
        delete tip;
    }
    return 0;
}

}  // namespace

// ---- CKxBalloonlTip ---------------------------------------------------------------------------

HRESULT STDMETHODCALLTYPE CKxBalloonlTip::QueryInterface(REFIID, void**) { return E_NOTIMPL; }

ULONG STDMETHODCALLTYPE CKxBalloonlTip::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&m_cRef)); }

ULONG STDMETHODCALLTYPE CKxBalloonlTip::Release() { return ReleaseTip(this); }

HRESULT STDMETHODCALLTYPE CKxBalloonlTip::SetPosition(const POINT* point) {
    return KxGuardStatus(L"CKxBalloonlTip::SetPosition", [&]() -> HRESULT {
        CKxBalloonStateSwitch state(m_platform);
        // a point that cannot be read is no point, like a null one
        if (point && !m_platform.IsBadReadPtr(point, sizeof(POINT))) {
            m_ptPosition = *point;
            m_bPositionSet = TRUE;
        }
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE CKxBalloonlTip::Show(BOOL bShow, DWORD timeout) {
    return KxGuardStatus(L"CKxBalloonlTip::Show", [&]() -> HRESULT {
        CKxBalloonStateSwitch state(m_platform);
        if (!bShow) {
            // hiding forgets the position but not that one was set
            m_ptPosition = POINT{0, 0};
            return Hide();
        }
        RECT rc;
        if (!m_bPositionSet && m_platform.IsWindow(m_hTarget) && m_platform.GetWindowRect(m_hTarget, &rc))
            m_ptPosition = POINT{rc.left + (rc.right - rc.left) / 2, rc.top + (rc.bottom - rc.top) / 2};
        return ShowAt(m_ptPosition, timeout);
    });
}

HRESULT STDMETHODCALLTYPE CKxBalloonlTip::UpdatePosition() {
    return KxGuardStatus(L"CKxBalloonlTip::UpdatePosition", [&]() -> HRESULT {
        CKxBalloonStateSwitch state(m_platform);
        if (!m_pBubble || !m_pBubble->HasWindow()) return S_OK;
        return FollowTarget();
    });
}

void STDMETHODCALLTYPE CKxBalloonlTip::Close() {
    KxGuard(L"CKxBalloonlTip::Close", [&] {
        CKxBalloonStateSwitch state(m_platform);
        Clear();
    }, [](KxExceptionKind) {});
}

// ---- CKxBalloonlTipControl --------------------------------------------------------------------

HRESULT STDMETHODCALLTYPE CKxBalloonlTipControl::QueryInterface(REFIID, void**) { return E_NOTIMPL; }

ULONG STDMETHODCALLTYPE CKxBalloonlTipControl::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&m_cRef));
}

ULONG STDMETHODCALLTYPE CKxBalloonlTipControl::Release() { return ReleaseTip(this); }

HRESULT STDMETHODCALLTYPE CKxBalloonlTipControl::SetTimeout(DWORD timeout) {
    return KxGuardStatus(L"CKxBalloonlTipControl::SetTimeout", [&]() -> HRESULT {
        CKxBalloonStateSwitch state(m_platform);
        if (m_cRef <= 0) return E_POINTER;
        if (timeout > 0) m_nTimeout = timeout;
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE CKxBalloonlTipControl::RelayEvent(MSG* msg) {
    return KxGuardStatus(L"CKxBalloonlTipControl::RelayEvent", [&]() -> HRESULT {
        CKxBalloonStateSwitch state(m_platform);
        if (m_cRef <= 0) return E_POINTER;
        // A null message is outside the contract. It is refused with the code this interface already
        // gives for a pointer it cannot use, rather than 0, which would read as "not dealt with" and
        // hide the caller's mistake.
        if (!msg || m_platform.IsBadReadPtr(msg, sizeof(MSG))) return E_POINTER;
        const HRESULT hr = (msg->message == WM_DESTROY && msg->hwnd == m_hTarget) ? Hide() : RelayMessage(*msg, m_nTimeout);
        return hr == S_OK ? 1 : 0;
    });
}

void STDMETHODCALLTYPE CKxBalloonlTipControl::Close() {
    KxGuard(L"CKxBalloonlTipControl::Close", [&] {
        CKxBalloonStateSwitch state(m_platform);
        Clear();
    }, [](KxExceptionKind) {});
}

// ---- creation ---------------------------------------------------------------------------------

HRESULT KxCreateBalloonTip(IKxBalloonPlatform& platform, REFIID riid, HWND hwndTarget, LPCWSTR pszText,
                           LPCWSTR pszTitle, UINT flags, LPCWSTR skinFile, LPCWSTR defaultTitle, void** ppTip) {
    CKxBalloonStateSwitch state(platform);
    // the whole pointer must be writable: 4 bytes in the shipped 32-bit build
    if (platform.IsBadWritePtr(ppTip, sizeof(void*))) return E_POINTER;
    // the skin file, not the resource library, decides whether tips can exist
    if (!platform.FileExists(skinFile)) return kNoSkinFile;
    // a target that is not a window (null, or one the host has destroyed) can carry no tip
    if (!platform.IsWindow(hwndTarget)) return E_INVALIDARG;
    if (IsEqualIID(riid, IID_IKxBalloonTip)) {
        CKxBalloonlTip* tip = new (std::nothrow) CKxBalloonlTip(platform);
        *ppTip = tip ? static_cast<IKxBalloonTip*>(tip) : nullptr;
        if (!tip) return E_OUTOFMEMORY;
        tip->Init(hwndTarget, pszText, pszTitle, flags, skinFile, defaultTitle, FALSE);
        return S_OK;
    }
    if (IsEqualIID(riid, IID_IKxBalloonTipControl)) {
        CKxBalloonlTipControl* tip = new (std::nothrow) CKxBalloonlTipControl(platform);
        *ppTip = tip ? static_cast<IKxBalloonTipControl*>(tip) : nullptr;
        if (!tip) return E_OUTOFMEMORY;
        tip->Init(hwndTarget, pszText, pszTitle, flags, skinFile, defaultTitle, TRUE);
        tip->EnsureBubble();  // a control tip without a bubble answers every RelayEvent with 0
        return S_OK;
    }
    return E_NOINTERFACE;
}
