// The window side shared by the tag dialogs: controls by id, warnings, the picture with its menu,
// file dialog, paste and drop, the tool tips and the store link.
#include "tags/win32/dialog_edit_tag.h"

#include <commctrl.h>
#include <commdlg.h>
#include <gdiplus.h>
#include <shellapi.h>
#include <shlwapi.h>

#include "frame/settings_table.h"
#include "frame/win32/shell_execute.h"
#include "frame/win32/skin_statics.h"
#include "imaging/fit_box.h"
#include "imaging/win32/art_files_win32.h"
#include "imaging/win32/gdiplus_flat_win32.h"
#include "resources/dialogs/edit_single_tags_ids.h"  // the picture's menu, the same in both dialogs
#include "ui/resource_string.h"

CDialogEditTag::CDialogEditTag(UINT nIDTemplate, CWnd* pParentWnd, const KxEditTagControlIds& ids,
                               IEditTipMaker* tipMaker)
    : CKxSkinnedDialog(nIDTemplate, pParentWnd),
      m_szSkinFile{},
      m_tipMaker(m_szSkinFile),
      m_digitBalloon(tipMaker ? *tipMaker : m_tipMaker),
      m_lengthBalloon(tipMaker ? *tipMaker : m_tipMaker),
      m_tips{},
      m_art(KxGdiplusPlatform(), KxArtFiles()),
      m_ids(ids) {}

CDialogEditTag::~CDialogEditTag() = default;

BOOL CDialogEditTag::PreTranslateMessage(MSG* pMsg) {
    for (HWND tip : m_tips)
        if (tip && ::IsWindow(tip)) ::SendMessageW(tip, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(pMsg));
    if (PreTranslateKey(pMsg)) return TRUE;
    if (pMsg->message == WM_KEYDOWN) {
        const bool control = ::GetKeyState(VK_LCONTROL) < 0 || ::GetKeyState(VK_RCONTROL) < 0;
        Model().OnKeyDown(static_cast<UINT>(pMsg->wParam), control);
    }
    return CDialog::PreTranslateMessage(pMsg);
}

bool CDialogEditTag::PreTranslateKey(MSG*) { return false; }

void CDialogEditTag::InitSharedControls() {
    KxGetSkinPackagePath(m_szSkinFile);
    m_picture.Attach(Item(m_ids.picture));
    m_artControl.SubclassDlgItem(m_ids.picture, this);  // without it, no art menu
}

void CDialogEditTag::InitDropAndTips() {
    // A picture file dropped on the dialog becomes the art when the drop target's rules allow it;
    // without OLE on the thread the dialog simply takes no drops.
    m_dropTarget.Register(m_hWnd, this);
    AddToolTips();
}

BOOL CDialogEditTag::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == WM_MOVE) {
        // the warnings point at where their fields were
        m_digitBalloon.Hide();
        m_lengthBalloon.Hide();
    } else if (message == WM_SETCURSOR) {
        RECT rc;
        POINT pt;
        HWND store = Item(m_ids.store);
        if (store && ::GetWindowRect(store, &rc) && ::GetCursorPos(&pt) && ::PtInRect(&rc, pt)) {
            ::SetCursor(::LoadCursorW(nullptr, IDC_HAND));
            *pResult = TRUE;
            return TRUE;
        }
    }
    return CDialog::OnDialogMessage(message, wParam, lParam, pResult);
}

void CDialogEditTag::OnDestroy() {
    m_digitBalloon.Release();
    m_lengthBalloon.Release();
    m_dropTarget.Revoke();
    m_picture.Free();
    Model().ClearShownArt();
    Model().ReleaseNamespace();
    CDialog::OnDestroy();
}

void CDialogEditTag::OnClose() { OnCancel(); }

void CDialogEditTag::OnStore() { OpenMusicStore(KxWin32ShellExecute()); }

bool CDialogEditTag::BrowseForArt() {
    if (!m_picture.m_hControl) return false;
    // "|" separates the filter's parts in the string; the dialog wants them ended by nulls.
    std::wstring filter = ResourceString(106);
    for (wchar_t& c : filter)
        if (c == L'|') c = L'\0';
    filter.push_back(L'\0');
    WCHAR file[MAX_PATH] = {};
    OPENFILENAMEW ofn = {};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = m_hWnd;
    ofn.lpstrFilter = filter.c_str();
    ofn.lpstrFile = file;
    ofn.nMaxFile = MAX_PATH;
    ofn.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST;
    if (!::GetOpenFileNameW(&ofn)) return false;
    return LoadArtFromFile(file);
}

bool CDialogEditTag::GetArtScreenRect(RECT* rect) {
    HWND picture = Item(m_ids.picture);
    return picture && ::GetWindowRect(picture, rect);
}

void CDialogEditTag::ShowArtMenu() {
    RECT rc;
    POINT at;
    if (!GetArtScreenRect(&rc) || !::GetCursorPos(&at)) return;
    if (!::PtInRect(&rc, at)) at = {(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
    ShowArtMenuAt(at);
}

void CDialogEditTag::ShowArtMenuAt(POINT at) {
    ArtMenuState state;
    state.artRemoved = Model().m_bArtRemoved != FALSE;
    state.commandsEnabled = m_art.m_bArtCommandsEnabled != FALSE;
    state.singleItem = (Model().m_nMode & KX_EDITMODE_SINGLE) != 0;
    std::wstring album;
    const int albumId = Model().m_albumId;
    state.albumHasText = albumId != 0 && GetText(albumId, &album) && !album.empty();
    HWND browse = Item(m_ids.browse);
    state.browseBlocked = browse && ::IsWindowVisible(browse) && !::IsWindowEnabled(browse);
    m_art.m_szPastedPath[0] = L'\0';
    if (!ArtMenuMayOpen(state)) return;
    state.hasLookup = WantsLookupEntry();
    ArtClipboardOffer offer;
    if (::OpenClipboard(m_hWnd)) {
        offer.hasBitmap = ::IsClipboardFormatAvailable(CF_BITMAP) != FALSE;
        if (offer.hasBitmap) {
            auto bitmap = static_cast<HBITMAP>(::GetClipboardData(CF_BITMAP));
            offer.bitmapStored = bitmap && m_art.StorePastedBitmap(bitmap);
        } else {
            offer.hasDib = ::IsClipboardFormatAvailable(CF_DIB) != FALSE;
            offer.hasFileList = ::IsClipboardFormatAvailable(CF_HDROP) != FALSE;
        }
        if (!offer.hasBitmap && !offer.hasDib && offer.hasFileList) {
            if (auto drop = static_cast<HDROP>(::GetClipboardData(CF_HDROP))) {
                offer.fileCount = static_cast<int>(::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0));
                WCHAR path[kArtPathChars] = {};
                if (offer.fileCount > 0 && ::DragQueryFileW(drop, 0, path, kArtPathChars)) offer.firstFile = path;
            }
            const UINT effectFormat = ::RegisterClipboardFormatW(L"Preferred DropEffect");
            if (HANDLE effect = effectFormat ? ::GetClipboardData(effectFormat) : nullptr) {
                if (const auto* first = static_cast<const BYTE*>(::GlobalLock(effect))) {
                    offer.hasDropEffect = true;
                    offer.dropEffect = *first;
                    ::GlobalUnlock(effect);
                }
            }
        }
        ::CloseClipboard();
    }
    const ArtMenuDecision d = DecideArtMenu(state, offer, &CAlbumArt::IsAcceptedImageFile);
    lstrcpynW(m_art.m_szPastedPath, d.pastedPath.c_str(), kArtPathChars);
    if (!d.open) return;

    HMENU menu = ::CreatePopupMenu();
    if (!menu) return;
    const struct {
        UINT id;
        UINT text;
        bool enabled;
    } kItems[] = {{KX_IDM_ART_BROWSE, 50, d.browse}, {KX_IDM_ART_PASTE, 52, d.paste}, {KX_IDM_ART_REMOVE, 107, d.remove}};
    for (const auto& item : kItems)
        ::AppendMenuW(menu, MF_STRING | (item.enabled ? 0 : MF_GRAYED), item.id, ResourceString(item.text).c_str());
    if (state.hasLookup)
        ::AppendMenuW(menu, MF_STRING | (d.lookup ? 0 : MF_GRAYED), KX_IDM_ART_LOOKUP, ResourceString(49).c_str());
    // The command comes back as a WM_COMMAND of the menu, through the message table.
    ::TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_RIGHTBUTTON, at.x, at.y, 0, m_hWnd, nullptr);
    ::DestroyMenu(menu);
}

bool CDialogEditTag::PasteArt() {
    if (m_art.m_szPastedPath[0]) {
        const std::wstring path = m_art.m_szPastedPath;
        m_art.m_szPastedPath[0] = L'\0';
        return ::PathFileExistsW(path.c_str()) && LoadArtFromFile(path.c_str());
    }
    if (!m_art.m_pPastedBytes) return false;
    const bool taken = Model().SetNewArt(m_art.m_pPastedBytes, m_art.m_nPastedSize);
    CoTaskMemFree(m_art.m_pPastedBytes);  // the model keeps its own copy
    m_art.m_pPastedBytes = nullptr;
    m_art.m_nPastedSize = 0;
    return taken;
}

bool CDialogEditTag::LoadArtFromFile(LPCWSTR path) {
    if (!path) return false;
    Gdiplus::GpBitmap* source = nullptr;
    if (Gdiplus::DllExports::GdipCreateBitmapFromFile(path, &source) != Gdiplus::Ok || !source) return false;
    UINT width = 0;
    UINT height = 0;
    Gdiplus::DllExports::GdipGetImageWidth(source, &width);
    Gdiplus::DllExports::GdipGetImageHeight(source, &height);
    Gdiplus::DllExports::GdipDisposeImage(source);
    if (width == 0 || height == 0) return false;
    UINT fitWidth = width;
    UINT fitHeight = height;
    ScaleToFitBox(&fitWidth, &fitHeight, kArtThumbnailBox, kArtThumbnailBox);
    // The picture shows what will be stored: the bytes are made first, and a picture whose bytes
    // cannot be made is not taken (the art shown and kept stay as they were).
    CKxTaskMem<BYTE*> bytes;
    ULONG size = 0;
    if (!m_art.PrepareArtBytes(bytes.Put(), &size, path, static_cast<INT>(fitWidth), static_cast<INT>(fitHeight),
                               static_cast<INT>(width), static_cast<INT>(height)))
        return false;
    return Model().SetNewArt(bytes.Get(), size);
}

// One tip window per control, owned by the dialog, which destroys them with itself.
void CDialogEditTag::AddToolTips() {
    const struct {
        int id;
        UINT text;
    } kTips[] = {{m_ids.close, 182}, {m_ids.browse, 50}, {m_ids.remove, 107}, {m_ids.store, 243}};
    for (size_t i = 0; i < 4; ++i) {
        HWND control = Item(kTips[i].id);
        if (!control) continue;
        HWND tip = ::CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT,
                                     CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr, nullptr, nullptr);
        if (!tip) continue;
        std::wstring text = ResourceString(kTips[i].text);
        TOOLINFOW tool = {};
        tool.cbSize = sizeof tool;
        tool.uFlags = TTF_IDISHWND;  // the dialog relays the mouse messages
        tool.hwnd = m_hWnd;
        tool.uId = reinterpret_cast<UINT_PTR>(control);
        tool.lpszText = &text[0];
        ::SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        m_tips[i] = tip;
    }
}

// ---- IEditTagControls ------------------------------------------------------------------------------

HWND CDialogEditTag::DialogWindow() { return m_hWnd; }

bool CDialogEditTag::Exists(int id) { return Item(id) != nullptr; }

bool CDialogEditTag::GetText(int id, std::wstring* text) {
    HWND control = Item(id);
    if (!control) return false;
    text->assign(static_cast<size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
    text->resize(static_cast<size_t>(::GetWindowTextW(control, &(*text)[0], static_cast<int>(text->size()))));
    return true;
}

void CDialogEditTag::SetText(int id, const std::wstring& text) { SetDlgItemText(id, text.c_str()); }

void CDialogEditTag::Enable(int id, bool enable) {
    if (HWND control = Item(id)) ::EnableWindow(control, enable ? TRUE : FALSE);
}

bool CDialogEditTag::IsEnabled(int id) {
    HWND control = Item(id);
    return control && ::IsWindowEnabled(control);
}

void CDialogEditTag::Focus(int id) {
    // through the dialog manager, so that the default button follows the focus
    if (HWND control = Item(id)) ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

int CDialogEditTag::FocusedControl() {
    HWND focus = ::GetFocus();
    if (!focus || !::IsChild(m_hWnd, focus)) return 0;
    HWND parent = ::GetParent(focus);
    if (parent != m_hWnd) focus = parent;  // the edit part of a combo box
    return ::GetDlgCtrlID(focus);
}

void CDialogEditTag::SelectAllText(int id, bool editControl) {
    HWND control = Item(id);
    if (!control) return;
    ::SetFocus(control);
    if (editControl) {
        ::SendMessageW(control, EM_SETSEL, 0, -1);
        ::SendMessageW(control, EM_SCROLLCARET, 0, 0);
    } else {
        ::SendMessageW(control, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
    }
}

void CDialogEditTag::ResetList(int id) { ::SendMessageW(Item(id), CB_RESETCONTENT, 0, 0); }

void CDialogEditTag::AddToList(int id, const std::wstring& text) {
    ::SendMessageW(Item(id), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void CDialogEditTag::InsertInList(int id, int index, const std::wstring& text) {
    ::SendMessageW(Item(id), CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.c_str()));
}

// Thousands of names: the box reserves their room once and does not redraw on every one.
void CDialogEditTag::SetList(int id, const std::vector<std::wstring>& values) {
    HWND box = Item(id);
    if (!box) return;
    size_t chars = 0;
    for (const std::wstring& value : values) chars += value.size() + 1;
    ::SendMessageW(box, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(box, CB_RESETCONTENT, 0, 0);
    ::SendMessageW(box, CB_INITSTORAGE, values.size(), static_cast<LPARAM>(chars * sizeof(WCHAR)));
    for (const std::wstring& value : values)
        ::SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(value.c_str()));
    ::SendMessageW(box, WM_SETREDRAW, TRUE, 0);
}

void CDialogEditTag::RemoveFromList(int id, int index) {
    ::SendMessageW(Item(id), CB_DELETESTRING, static_cast<WPARAM>(index), 0);
}

void CDialogEditTag::SelectInList(int id, int index) {
    ::SendMessageW(Item(id), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

int CDialogEditTag::GetSliderPos(int id) { return static_cast<int>(::SendMessageW(Item(id), TBM_GETPOS, 0, 0)); }

void CDialogEditTag::SetSliderPos(int id, int pos) { ::SendMessageW(Item(id), TBM_SETPOS, TRUE, pos); }

void CDialogEditTag::ShowArtBytes(const BYTE* bytes, ULONG size) { m_picture.ShowBytes(bytes, size); }

void CDialogEditTag::ShowDefaultArt() { m_picture.ShowDefault(); }

bool CDialogEditTag::ShowWarning(KxFieldWarning which, int id, const std::wstring& text, const std::wstring& title) {
    CEditWarningTip& tip = which == KxFieldWarning::Digits ? m_digitBalloon : m_lengthBalloon;
    return tip.Show(Item(id), text.c_str(), title.c_str());
}

void CDialogEditTag::HideWarning(KxFieldWarning which) {
    (which == KxFieldWarning::Digits ? m_digitBalloon : m_lengthBalloon).Hide();
}

std::wstring CDialogEditTag::ResourceString(UINT id) { return KxLoadResourceString(id); }

void CDialogEditTag::ShowMessage(UINT textId, UINT captionId) {
    const std::wstring text = ResourceString(textId);
    const std::wstring caption = ResourceString(captionId);
    ::MessageBoxW(m_hWnd, text.c_str(), caption.c_str(), MB_OK);
}

// ---- IMultipleTagControls ----------------------------------------------------------------------------

bool CDialogEditTag::IsChecked(int id) {
    // only a plain tick counts, not the third state
    return ::SendMessageW(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void CDialogEditTag::SetChecked(int id, bool checked) {
    ::SendMessageW(Item(id), BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool CDialogEditTag::GetSelectedText(int id, std::wstring* text) {
    HWND combo = Item(id);
    const LRESULT index = combo ? ::SendMessageW(combo, CB_GETCURSEL, 0, 0) : CB_ERR;
    if (index == CB_ERR) return false;
    const LRESULT length = ::SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length == CB_ERR) return false;
    text->assign(static_cast<size_t>(length) + 1, L'\0');
    const LRESULT got =
        ::SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&(*text)[0]));
    text->resize(got == CB_ERR ? 0 : static_cast<size_t>(got));
    return got != CB_ERR;
}
