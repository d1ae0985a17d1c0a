// The drag lists: drag image, capture and keys.
#include "library/win32/drag_lists.h"

#include <vector>

#include "ui/gdi_handles.h"

namespace {

const COLORREF kTransparent = 0x808080;
const UINT kRowTextFlags = DT_END_ELLIPSIS | DT_NOPREFIX | DT_NOCLIP | DT_SINGLELINE | DT_VCENTER;  // 0x8924

void DestroyImageList(HIMAGELIST list) { ImageList_Destroy(list); }
typedef CKxUnique<HIMAGELIST, &DestroyImageList> CKxImageList;

}  // namespace

CKxDragListBase::CKxDragListBase()
    : m_pDragImage(nullptr),
      m_hCursorDrop(LoadCursorW(nullptr, IDC_ARROW)),
      m_hCursorNoDrop(LoadCursorW(nullptr, IDC_NO)),
      m_bDragging(FALSE) {}

CKxDragListBase::~CKxDragListBase() { DeleteDragImage(); }

void CKxDragListBase::DeleteDragImage() {
    if (m_pDragImage) ImageList_Destroy(m_pDragImage);
    m_pDragImage = nullptr;
}

BOOL CKxDragListBase::BuildDragImage() {
    std::vector<int> rows;
    RECT all = {};
    for (int row = GetNextItem(-1, LVNI_SELECTED); row >= 0; row = GetNextItem(row, LVNI_SELECTED)) {
        RECT bounds;
        if (!GetItemRect(row, &bounds, LVIR_BOUNDS)) continue;
        if (rows.empty())
            all = bounds;
        else
            UnionRect(&all, &all, &bounds);
        rows.push_back(row);
    }
    const int width = all.right - all.left, height = all.bottom - all.top;
    if (rows.empty() || width <= 0 || height <= 0) return FALSE;

    CKxWindowDC client(m_hWnd, false);
    CKxMemoryDC memory(client.Get());
    CKxBitmap bitmap(client ? CreateCompatibleBitmap(client.Get(), width, height) : nullptr);
    if (!memory || !bitmap) return FALSE;
    {
        CKxSelectObject selectedBitmap(memory.Get(), bitmap.Get());
        const RECT whole = {0, 0, width, height};
        CKxBrush background(CreateSolidBrush(kTransparent));
        FillRect(memory.Get(), &whole, background.Get());
        HFONT font = GetFont();
        if (!font && GetParent()) font = GetParent()->GetFont();
        CKxSelectObject selectedFont(memory.Get(), font);
        SetBkMode(memory.Get(), TRANSPARENT);
        for (int row : rows) {
            RECT bounds, icon = {};
            GetItemRect(row, &bounds, LVIR_BOUNDS);
            GetItemRect(row, &icon, LVIR_ICON);
            POINT origin = {};
            CKxImageList rowImage(ListView_CreateDragImage(m_hWnd, row, &origin));
            if (!rowImage) continue;  // that row is missing from the picture
            IMAGELISTDRAWPARAMS draw = {};
            draw.cbSize = sizeof(draw);
            draw.himl = rowImage.Get();
            draw.hdcDst = memory.Get();
            draw.x = bounds.left - all.left;
            draw.y = bounds.top - all.top;
            draw.cx = bounds.right - bounds.left;
            draw.cy = bounds.bottom - bounds.top;
            draw.rgbBk = CLR_DEFAULT;
            draw.rgbFg = CLR_DEFAULT;
            draw.fStyle = ILD_NORMAL;
            draw.dwRop = SRCCOPY;
            ImageList_DrawIndirect(&draw);
            RECT text = {bounds.left - all.left + (icon.right - icon.left), bounds.top - all.top,
                         bounds.right - all.left, bounds.bottom - all.top};
            const std::wstring title = GetItemText(row, 1);
            DrawTextW(memory.Get(), title.c_str(), -1, &text, kRowTextFlags);
        }
    }
    DeleteDragImage();
    // 32-bit colour beside the mask, so the rows keep their colours in the moving picture.
    m_pDragImage = ImageList_Create(width, height, ILC_MASK | ILC_COLOR32, 0, 1);
    if (!m_pDragImage) return FALSE;
    if (ImageList_AddMasked(m_pDragImage, bitmap.Get(), kTransparent) < 0) {
        DeleteDragImage();
        return FALSE;
    }
    return TRUE;
}

void CKxDragListBase::OnBeginDrag(LRESULT* pResult) {
    *pResult = 0;
    if (!BuildDragImage() || !m_pDragImage) return;
    m_bDragging = TRUE;
    ImageList_BeginDrag(m_pDragImage, 0, 0, 0);
    ImageList_DragEnter(nullptr, 0, 0);  // locked to the desktop: moves use screen coordinates
    SetCapture(m_hWnd);
}

void CKxDragListBase::EndDragImage() {
    ImageList_DragLeave(m_hWnd);
    ImageList_EndDrag();
    ReleaseCapture();
    SetCursor(m_hCursorDrop);
    DeleteDragImage();
}

void CKxDragListBase::PostToParent(UINT message, LPARAM lParam) {
    HWND parent = ::GetParent(m_hWnd);
    if (parent && IsWindow(parent)) ::PostMessageW(parent, message, 0, lParam);
}

LRESULT CKxDragListBase::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MOUSEMOVE:
        if (m_bDragging) {
            POINT screen = {LONG(short(LOWORD(lParam))), LONG(short(HIWORD(lParam)))};
            ::ClientToScreen(m_hWnd, &screen);
            OnDragMove(screen);
        }
        break;
    case WM_LBUTTONUP:
        if (m_bDragging) {
            m_bDragging = FALSE;
            POINT client = {LONG(short(LOWORD(lParam))), LONG(short(HIWORD(lParam)))};
            POINT screen = client;
            ::ClientToScreen(m_hWnd, &screen);
            OnDragDrop(client, screen);
        }
        break;
    case WM_KEYDOWN:
        if (wParam == 'A' && GetKeyState(VK_CONTROL) < 0 && !(GetStyle() & LVS_SINGLESEL))
            SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED);
        break;
    case WM_KEYUP:
        OnKeyUp(UINT(wParam));
        return 0;  // a key's release goes no further
    case WM_DESTROY:
        DeleteDragImage();
        break;
    default: break;
    }
    return Default();
}

// ---- CListCtrlDragFrom ---------------------------------------------------------------------------------

HWND CListCtrlDragFrom::TargetWindow() const {
    HWND parent = ::GetParent(m_hWnd);
    if (!parent || !IsWindow(parent) || !m_pTarget) return nullptr;
    return m_pTarget->m_hWnd;
}

void CListCtrlDragFrom::OnDragMove(POINT screen) {
    HWND under = WindowFromPoint(screen);
    SetCursor(under && under == TargetWindow() ? m_hCursorDrop : m_hCursorNoDrop);
    ImageList_DragMove(screen.x, screen.y);
}

void CListCtrlDragFrom::OnDragDrop(POINT, POINT screen) {
    HWND target = TargetWindow();
    if (target && WindowFromPoint(screen) == target) PostToParent(WMU_ADD_SELECTED);
    EndDragImage();
}

void CListCtrlDragFrom::OnKeyUp(UINT key) {
    if (key == VK_SPACE) PostToParent(WMU_ADD_SELECTED);
}

// ---- CListCtrlSelfDrag ---------------------------------------------------------------------------------

void CListCtrlSelfDrag::OnDragMove(POINT screen) {
    SetCursor(WindowFromPoint(screen) == m_hWnd ? m_hCursorDrop : m_hCursorNoDrop);
    ImageList_DragMove(screen.x, screen.y);
}

void CListCtrlSelfDrag::OnDragDrop(POINT client, POINT) {
    // A release outside the list moves the rows as well, to where the point says.
    const int position = InsertPosition(client);
    PostToParent(WMU_MOVE_SELECTED, position);
    EndDragImage();
}

void CListCtrlSelfDrag::OnKeyUp(UINT key) {
    if (key == VK_DELETE) PostToParent(WMU_REMOVE_SELECTED);
}
