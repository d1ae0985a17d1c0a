#include "library/win32/drag_drop_target.h"

#include <shellapi.h>

#include <cstring>

#include "base/boundary.h"

namespace {

class CWin32DropPlatform : public IKxDropPlatform {
public:
    DWORD GetFileAttributesW(const WCHAR* path) override { return ::GetFileAttributesW(path); }
    bool GetCursorPos(POINT* point) override { return ::GetCursorPos(point) != FALSE; }
};

CWin32DropPlatform g_platform;

// The CF_HDROP data of a data object as a block of our own. A block that the data object keeps
// for itself (it names an object to release) is copied, so what we hold is always ours to free.
CKxGlobal GetDropFilesData(IDataObject* data) {
    FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium = {};
    if (FAILED(data->GetData(&format, &medium))) return CKxGlobal();
    if (medium.tymed == TYMED_HGLOBAL && medium.hGlobal && !medium.pUnkForRelease) return CKxGlobal(medium.hGlobal);
    CKxGlobal copy;
    const SIZE_T size = medium.tymed == TYMED_HGLOBAL && medium.hGlobal ? GlobalSize(medium.hGlobal) : 0;
    const void* from = size ? GlobalLock(medium.hGlobal) : nullptr;
    if (from) {
        copy.Reset(GlobalAlloc(GMEM_MOVEABLE, size));
        void* to = copy ? GlobalLock(copy.Get()) : nullptr;
        if (to) {
            std::memcpy(to, from, size);
            GlobalUnlock(copy.Get());
        } else {
            copy.Reset();
        }
        GlobalUnlock(medium.hGlobal);
    }
    ReleaseStgMedium(&medium);
    return copy;
}

DWORD Effect(bool accepted) { return accepted ? DROPEFFECT_COPY : DROPEFFECT_NONE; }

}  // namespace

CDragDropTarget::CDragDropTarget() : CDragDropRules(g_platform), m_hDropData(), m_hWnd(nullptr), m_cRef(0) {}

CDragDropTarget::~CDragDropTarget() { Revoke(); }

BOOL CDragDropTarget::Register(HWND hWnd, IKxArtDropOwner* owner) {
    if (m_hWnd || !hWnd || FAILED(RegisterDragDrop(hWnd, this))) return FALSE;
    m_hWnd = hWnd;
    SetOwner(owner);
    return TRUE;
}

void CDragDropTarget::Revoke() {
    if (!m_hWnd) return;
    RevokeDragDrop(m_hWnd);
    m_hWnd = nullptr;
    SetOwner(nullptr);
}

STDMETHODIMP CDragDropTarget::QueryInterface(REFIID riid, void** ppv) {
    return KxGuardStatus(L"CDragDropTarget::QueryInterface", [&]() -> HRESULT {
        if (!ppv) return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDropTarget)) {
            *ppv = static_cast<IDropTarget*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    });
}

// The dialog owns the target: the count tells OLE's holders apart, and nothing is deleted at 0.
STDMETHODIMP_(ULONG) CDragDropTarget::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&m_cRef)); }

STDMETHODIMP_(ULONG) CDragDropTarget::Release() { return static_cast<ULONG>(InterlockedDecrement(&m_cRef)); }

DWORD CDragDropTarget::OnDragEnter(IDataObject* pDataObj) {
    // a drag that entered without leaving lets go of what it held
    m_hDropData.Reset();
    if (!AdmitEntry(m_hWnd && pDataObj)) return DROPEFFECT_NONE;
    m_hDropData = GetDropFilesData(pDataObj);
    bool hasFiles = false;
    UINT count = 0;
    WCHAR first[kDropPathChars] = {};
    if (m_hDropData && GlobalLock(m_hDropData.Get())) {
        hasFiles = true;
        HDROP drop = static_cast<HDROP>(m_hDropData.Get());
        count = DragQueryFileW(drop, 0xFFFFFFFFu, nullptr, 0);
        if (count == 1 && !DragQueryFileW(drop, 0, first, kDropPathChars)) first[0] = L'\0';
        GlobalUnlock(m_hDropData.Get());
    }
    // the data stay held until the drag ends; only the path is looked at again
    return TakeFiles(hasFiles, count, first);
}

void CDragDropTarget::OnDragLeave() {
    Leave();
    m_hDropData.Reset();
}

// The effect answered is the rules' one, provided the source allows a copy.
STDMETHODIMP CDragDropTarget::DragEnter(IDataObject* pDataObj, DWORD, POINTL, DWORD* pdwEffect) {
    return KxGuardStatus(L"CDragDropTarget::DragEnter", [&]() -> HRESULT {
        if (!pdwEffect) return E_INVALIDARG;
        const DWORD allowed = *pdwEffect;
        *pdwEffect = DROPEFFECT_NONE;
        *pdwEffect = OnDragEnter(pDataObj) & allowed;
        return S_OK;
    });
}

STDMETHODIMP CDragDropTarget::DragOver(DWORD, POINTL, DWORD* pdwEffect) {
    return KxGuardStatus(L"CDragDropTarget::DragOver", [&]() -> HRESULT {
        if (!pdwEffect) return E_INVALIDARG;
        const DWORD allowed = *pdwEffect;
        *pdwEffect = DROPEFFECT_NONE;
        *pdwEffect = CDragDropRules::DragOver() & allowed;
        return S_OK;
    });
}

STDMETHODIMP CDragDropTarget::DragLeave() {
    return KxGuardStatus(L"CDragDropTarget::DragLeave", [&]() -> HRESULT {
        OnDragLeave();
        return S_OK;
    });
}

// OLE ends a drag with a drop without DragLeave: the drag's data go here as well.
STDMETHODIMP CDragDropTarget::Drop(IDataObject*, DWORD, POINTL, DWORD* pdwEffect) {
    // the drag's data go even when loading the file throws
    struct EndDrag {
        CDragDropTarget* target;
        ~EndDrag() { target->OnDragLeave(); }
    } end{this};
    return KxGuardStatus(L"CDragDropTarget::Drop", [&]() -> HRESULT {
        const DWORD allowed = pdwEffect ? *pdwEffect : DROPEFFECT_COPY;
        const bool taken = (allowed & DROPEFFECT_COPY) && CDragDropRules::Drop(m_hWnd != nullptr);
        if (pdwEffect) *pdwEffect = Effect(taken);
        return S_OK;
    });
}
