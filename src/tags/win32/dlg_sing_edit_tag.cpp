// The single-item tag dialog's window: its controls for the model, the warnings, the picture,
// the step buttons and keys, the help balloon and the store link.
#include "tags/win32/dlg_sing_edit_tag.h"

#include <commctrl.h>
#include <commdlg.h>
#include <gdiplus.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <new>

#include "balloon/win32/balloon_platform.h"
#include "frame/settings_table.h"
#include "frame/win32/shell_execute.h"
#include "frame/win32/skin_statics.h"
#include "imaging/fit_box.h"
#include "imaging/win32/art_files_win32.h"
#include "imaging/win32/gdiplus_flat_win32.h"
#include "ui/resource_string.h"

namespace {

const DWORD kHelpShowTime = 6000;  // milliseconds

bool AnyModifierDown() {
    for (int vk : {VK_LSHIFT, VK_RSHIFT, VK_LCONTROL, VK_RCONTROL, VK_LMENU, VK_RMENU, VK_LWIN, VK_RWIN})
        if (::GetKeyState(vk) < 0) return true;
    return false;
}

}  // namespace

CDlgSingEditTag::CDlgSingEditTag(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount,
                                 const KxPcPidl* items, CWnd* pParentWnd, IEditTipMaker* tipMaker)
    : CKxSkinnedDialog(IDD, pParentWnd),
      m_model(*this, site, folder, itemCount, items),
      m_szSkinFile{},
      m_tipMaker(m_szSkinFile),
      m_digitBalloon(tipMaker ? *tipMaker : m_tipMaker),
      m_lengthBalloon(tipMaker ? *tipMaker : m_tipMaker),
      m_helpBalloon(nullptr),
      m_tips{},
      m_art(KxGdiplusPlatform(), KxArtFiles()) {}

CDlgSingEditTag::~CDlgSingEditTag() = default;

BOOL CDlgSingEditTag::PreTranslateMessage(MSG* pMsg) {
    for (HWND tip : m_tips)
        if (tip && ::IsWindow(tip)) ::SendMessageW(tip, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(pMsg));
    if (pMsg->message == WM_KEYUP && (pMsg->wParam == VK_LEFT || pMsg->wParam == VK_RIGHT)) {
        if (m_model.OnStepKey(static_cast<UINT>(pMsg->wParam), AnyModifierDown())) return TRUE;
    }
    if (pMsg->message == WM_KEYDOWN) {
        const bool control = ::GetKeyState(VK_LCONTROL) < 0 || ::GetKeyState(VK_RCONTROL) < 0;
        m_model.OnKeyDown(static_cast<UINT>(pMsg->wParam), control);
    }
    return CDialog::PreTranslateMessage(pMsg);
}

BOOL CDlgSingEditTag::OnInitDialog() {
    CDialog::OnInitDialog();
    KxGetSkinPackagePath(m_szSkinFile);
    if (FAILED(m_model.InitDialog())) {
        PostMessage(WM_CLOSE);  // the host sees a cancelled dialog
        return TRUE;
    }
    AttachSkin();  // the platform look if it fails

    ::SendMessageW(Item(KX_IDC_TAG_RATING), TBM_SETRANGE, FALSE, MAKELPARAM(0, 5));
    SetDlgItemText(KX_IDC_TAG_NOTE, ResourceString(KX_IDS_TAG_NOTE).c_str());
    ::SendMessageW(Item(KX_IDC_TAG_YEAR), CB_LIMITTEXT, 4, 0);
    ::SendMessageW(Item(KX_IDC_TAG_TRACK), CB_LIMITTEXT, 20, 0);
    ::SendMessageW(Item(KX_IDC_TAG_NUMBER), EM_LIMITTEXT, 7, 0);
    m_picture.Attach(Item(KX_IDC_TAG_ART));
    // A picture file dropped on the dialog becomes the art when the drop target's rules allow it;
    // without OLE on the thread the dialog simply takes no drops.
    m_dropTarget.Register(m_hWnd, this);
    // Nothing gives the flat help button an icon of the skin's: it shows the system's question
    // mark in the small size, a copy of its own that it destroys with its window.
    if (m_helpButton.SubclassDlgItem(KX_IDC_TAG_HELP, this)) {
        m_helpButton.SetIcon(static_cast<HICON>(
            ::CopyImage(::LoadIconW(nullptr, IDI_QUESTION), IMAGE_ICON, ::GetSystemMetrics(SM_CXSMICON),
                        ::GetSystemMetrics(SM_CYSMICON), 0)));
    }
    AddToolTips();

    Focus(KX_IDC_TAG_NEXT);
    return FALSE;  // the focus has been set
}

KxMessageMap CDlgSingEditTag::GetMessageMap() const {
    typedef CDlgSingEditTag D;
    static const KxMessageEntry kEntries[] = {
        KxOnCommand(KX_IDC_TAG_TITLE, EN_UPDATE, &D::OnFieldChange<KX_IDC_TAG_TITLE>),
        KxOnCommand(KX_IDC_TAG_ARTIST, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_TAG_ARTIST>),
        KxOnCommand(KX_IDC_TAG_ARTIST2, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_TAG_ARTIST2>),
        KxOnCommand(KX_IDC_TAG_ALBUM, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_TAG_ALBUM>),
        KxOnCommand(KX_IDC_TAG_GENRE, CBN_EDITUPDATE, &D::OnFieldChange<KX_IDC_TAG_GENRE>),
        KxOnCommand(KX_IDC_TAG_YEAR, CBN_EDITCHANGE, &D::OnFieldChange<KX_IDC_TAG_YEAR>),
        KxOnCommand(KX_IDC_TAG_TRACK, CBN_EDITCHANGE, &D::OnFieldChange<KX_IDC_TAG_TRACK>),
        KxOnCommand(KX_IDC_TAG_NUMBER, EN_UPDATE, &D::OnFieldChange<KX_IDC_TAG_NUMBER>),
        KxOnCommand(KX_IDC_TAG_BROWSE, BN_CLICKED, &D::OnBrowseArt),
        KxOnCommand(KX_IDC_TAG_REMOVE, BN_CLICKED, &D::OnRemoveArt),
        KxOnCommand(KX_IDM_ART_BROWSE, 0, &D::OnBrowseArt),
        KxOnCommand(KX_IDM_ART_PASTE, 0, &D::OnPasteArt),
        KxOnCommand(KX_IDM_ART_REMOVE, 0, &D::OnRemoveArt),
        KxOnCommand(KX_IDM_ART_LOOKUP, 0, &D::OnLookupArt),
        KxOnCommand(KX_IDC_TAG_PREV, BN_CLICKED, &D::OnPrevItem),
        KxOnCommand(KX_IDC_TAG_NEXT, BN_CLICKED, &D::OnNextItem),
        KxOnCommand(KX_IDC_TAG_HELP, BN_CLICKED, &D::OnHelp),
        KxOnCommand(KX_IDC_TAG_CLOSE, BN_CLICKED, &D::OnClose),
        KxOnCommand(KX_IDC_TAG_STORE, BN_CLICKED, &D::OnStore),
    };
    return KxMakeMessageMap(kEntries);  // IDOK (Return) and IDCANCEL (Escape, close box): the base
}

void CDlgSingEditTag::OnShowWindow(BOOL bShow, UINT nStatus) {
    CDialog::OnShowWindow(bShow, nStatus);
    m_model.OnShowWindow(bShow != FALSE);
}

BOOL CDlgSingEditTag::OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == KX_WM_LOOKUP_DONE) {
        m_lookup.OnLookupDone();
        *pResult = 0;
        return TRUE;
    }
    if (message == WM_MOVE) {
        // the warnings point at where their fields were
        m_digitBalloon.Hide();
        m_lengthBalloon.Hide();
        if (m_helpBalloon) m_helpBalloon->UpdatePosition();
    } else if (message == WM_CONTEXTMENU && reinterpret_cast<HWND>(wParam) == Item(KX_IDC_TAG_ART)) {
        // from the keyboard (-1, -1) the menu opens at the picture's middle
        POINT at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        RECT rc;
        if (lParam == -1 && ::GetWindowRect(Item(KX_IDC_TAG_ART), &rc))
            at = {(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
        ShowArtMenu(at);
        *pResult = 0;
        return TRUE;
    } else if (message == WM_SETCURSOR) {
        RECT rc;
        POINT pt;
        HWND store = Item(KX_IDC_TAG_STORE);
        if (store && ::GetWindowRect(store, &rc) && ::GetCursorPos(&pt) && ::PtInRect(&rc, pt)) {
            ::SetCursor(::LoadCursorW(nullptr, IDC_HAND));
            *pResult = TRUE;
            return TRUE;
        }
    }
    return CDialog::OnDialogMessage(message, wParam, lParam, pResult);
}

void CDlgSingEditTag::OnDestroy() {
    // First, while the art and the controls are all still there for an answer that comes in.
    m_lookup.ReleaseNetContentMgr();
    if (m_helpBalloon) {
        m_helpBalloon->Show(FALSE, 0);
        m_helpBalloon->Release();
        m_helpBalloon = nullptr;
    }
    m_digitBalloon.Release();
    m_lengthBalloon.Release();
    m_dropTarget.Revoke();
    m_picture.Free();
    m_model.ClearShownArt();
    m_model.ReleaseNamespace();
    CDialog::OnDestroy();
}

void CDlgSingEditTag::OnOK() {
    if (m_model.OnOK() == CSingleTagModel::OkOutcome::Close) CDialog::OnOK();
}

// One tip window per control, owned by the dialog, which destroys them with itself.
void CDlgSingEditTag::AddToolTips() {
    static const struct {
        int id;
        UINT text;
    } kTips[] = {{KX_IDC_TAG_CLOSE, 182}, {KX_IDC_TAG_BROWSE, 50}, {KX_IDC_TAG_REMOVE, 107}, {KX_IDC_TAG_STORE, 243}};
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

// A step by key happens only with its button enabled, so never during a lookup: there the cancel
// would have nothing to do.
void CDlgSingEditTag::StepWithWaitCursor(bool forward) {
    m_lookup.CancelNetContentMgr();
    HCURSOR before = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
    m_model.Step(forward);
    ::SetCursor(before);
}

void CDlgSingEditTag::OnPrevItem() { StepWithWaitCursor(false); }

void CDlgSingEditTag::OnNextItem() { StepWithWaitCursor(true); }

void CDlgSingEditTag::OnRemoveArt() { m_model.OnRemoveArt(); }

void CDlgSingEditTag::OnLookupArt() { m_lookup.StartArtworkLookup(m_model.m_itemPath); }

bool CDlgSingEditTag::ControlHasText(int id) {
    std::wstring text;
    return GetText(id, &text) && !text.empty();
}

// Shown first: bytes that are no picture leave the art as it was. A picture is kept as the item's
// new art (shown again from the kept copy).
bool CDlgSingEditTag::ShowFoundArt(const BYTE* bytes, ULONG size) {
    return m_picture.ShowBytes(bytes, size) && m_model.SetNewArt(bytes, size);
}

// Nothing found: the default picture, and the item's art marked for removal whether it had any.
void CDlgSingEditTag::ShowNoArt() {
    m_model.m_pArtBytes.Reset();
    m_model.m_nArtSize = 0;
    m_model.m_bArtChanged = FALSE;
    m_model.m_bArtRemoved = TRUE;
    ShowDefaultArt();
}

void CDlgSingEditTag::OnBrowseArt() {
    if (BrowseForArt()) Enable(KX_IDC_TAG_REMOVE, true);
}

bool CDlgSingEditTag::BrowseForArt() {
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

void CDlgSingEditTag::OnPasteArt() {
    if (PasteArt()) Enable(KX_IDC_TAG_REMOVE, true);
}

bool CDlgSingEditTag::GetArtScreenRect(RECT* rect) {
    HWND picture = Item(KX_IDC_TAG_ART);
    return picture && ::GetWindowRect(picture, rect);
}

void CDlgSingEditTag::ShowArtMenu(POINT at) {
    ArtMenuState state;
    state.artRemoved = m_model.m_bArtRemoved != FALSE;
    state.commandsEnabled = m_art.m_bArtCommandsEnabled != FALSE;
    state.hasLookup = m_lookup.WantsMenuEntry((m_model.m_nMode & KX_EDITMODE_SINGLE) != 0,
                                              !(m_model.m_nMode & KX_EDITMODE_NO_PATH));
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

bool CDlgSingEditTag::PasteArt() {
    if (m_art.m_szPastedPath[0]) {
        const std::wstring path = m_art.m_szPastedPath;
        m_art.m_szPastedPath[0] = L'\0';
        return ::PathFileExistsW(path.c_str()) && LoadArtFromFile(path.c_str());
    }
    if (!m_art.m_pPastedBytes) return false;
    const bool taken = m_model.SetNewArt(m_art.m_pPastedBytes, m_art.m_nPastedSize);
    CoTaskMemFree(m_art.m_pPastedBytes);  // the model keeps its own copy
    m_art.m_pPastedBytes = nullptr;
    m_art.m_nPastedSize = 0;
    return taken;
}

bool CDlgSingEditTag::LoadArtFromFile(LPCWSTR path) {
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
    return m_model.SetNewArt(bytes.Get(), size);
}

void CDlgSingEditTag::OnHelp() {
    if (!m_helpBalloon) {
        auto* made = new (std::nothrow) CKxBalloonlTip(KxWin32BalloonPlatform());
        if (!made) return;
        const std::wstring text = ResourceString(KX_IDS_TAG_HELP_TEXT);
        const std::wstring title = ResourceString(KX_IDS_TAG_HELP_TITLE);
        made->Init(Item(KX_IDC_TAG_HELP), text.c_str(), title.c_str(), 0x40, m_szSkinFile, title.c_str(), FALSE);
        m_helpBalloon = made;
    }
    if (FAILED(m_helpBalloon->Show(TRUE, kHelpShowTime))) {
        m_helpBalloon->Release();
        m_helpBalloon = nullptr;
    }
}

void CDlgSingEditTag::OnClose() { OnCancel(); }

void CDlgSingEditTag::OnStore() { OpenMusicStore(KxWin32ShellExecute()); }

// ---- IEditTagControls ------------------------------------------------------------------------------

HWND CDlgSingEditTag::DialogWindow() { return m_hWnd; }

bool CDlgSingEditTag::Exists(int id) { return Item(id) != nullptr; }

bool CDlgSingEditTag::GetText(int id, std::wstring* text) {
    HWND control = Item(id);
    if (!control) return false;
    text->assign(static_cast<size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
    text->resize(static_cast<size_t>(::GetWindowTextW(control, &(*text)[0], static_cast<int>(text->size()))));
    return true;
}

void CDlgSingEditTag::SetText(int id, const std::wstring& text) { SetDlgItemText(id, text.c_str()); }

void CDlgSingEditTag::Enable(int id, bool enable) {
    if (HWND control = Item(id)) ::EnableWindow(control, enable ? TRUE : FALSE);
}

bool CDlgSingEditTag::IsEnabled(int id) {
    HWND control = Item(id);
    return control && ::IsWindowEnabled(control);
}

void CDlgSingEditTag::Focus(int id) {
    // through the dialog manager, so that the default button follows the focus
    if (HWND control = Item(id)) ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

int CDlgSingEditTag::FocusedControl() {
    HWND focus = ::GetFocus();
    if (!focus || !::IsChild(m_hWnd, focus)) return 0;
    HWND parent = ::GetParent(focus);
    if (parent != m_hWnd) focus = parent;  // the edit part of a combo box
    return ::GetDlgCtrlID(focus);
}

void CDlgSingEditTag::SelectAllText(int id, bool editControl) {
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

void CDlgSingEditTag::ResetList(int id) { ::SendMessageW(Item(id), CB_RESETCONTENT, 0, 0); }

void CDlgSingEditTag::AddToList(int id, const std::wstring& text) {
    ::SendMessageW(Item(id), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void CDlgSingEditTag::InsertInList(int id, int index, const std::wstring& text) {
    ::SendMessageW(Item(id), CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.c_str()));
}

void CDlgSingEditTag::SelectInList(int id, int index) {
    ::SendMessageW(Item(id), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

int CDlgSingEditTag::GetSliderPos(int id) { return static_cast<int>(::SendMessageW(Item(id), TBM_GETPOS, 0, 0)); }

void CDlgSingEditTag::SetSliderPos(int id, int pos) { ::SendMessageW(Item(id), TBM_SETPOS, TRUE, pos); }

void CDlgSingEditTag::ShowArtBytes(const BYTE* bytes, ULONG size) { m_picture.ShowBytes(bytes, size); }

void CDlgSingEditTag::ShowDefaultArt() { m_picture.ShowDefault(); }

bool CDlgSingEditTag::ShowWarning(KxFieldWarning which, int id, const std::wstring& text, const std::wstring& title) {
    CEditWarningTip& tip = which == KxFieldWarning::Digits ? m_digitBalloon : m_lengthBalloon;
    return tip.Show(Item(id), text.c_str(), title.c_str());
}

void CDlgSingEditTag::HideWarning(KxFieldWarning which) {
    (which == KxFieldWarning::Digits ? m_digitBalloon : m_lengthBalloon).Hide();
}

std::wstring CDlgSingEditTag::ResourceString(UINT id) { return KxLoadResourceString(id); }

void CDlgSingEditTag::ShowMessage(UINT textId, UINT captionId) {
    const std::wstring text = ResourceString(textId);
    const std::wstring caption = ResourceString(captionId);
    ::MessageBoxW(m_hWnd, text.c_str(), caption.c_str(), MB_OK);
}
