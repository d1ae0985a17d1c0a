// The single-item tag dialog's window: its template's controls, the step buttons and keys, and
// the help balloon; the rest is the shared window side's.
#include "tags/win32/dlg_sing_edit_tag.h"

#include <commctrl.h>

#include <new>

#include "balloon/win32/balloon_platform.h"

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
    : CDialogEditTag(IDD, pParentWnd,
                     {KX_IDC_TAG_CLOSE, KX_IDC_TAG_BROWSE, KX_IDC_TAG_REMOVE, KX_IDC_TAG_ART, KX_IDC_TAG_STORE},
                     tipMaker),
      m_model(*this, site, folder, itemCount, items),
      m_helpBalloon(nullptr) {}

CDlgSingEditTag::~CDlgSingEditTag() = default;

bool CDlgSingEditTag::PreTranslateKey(MSG* pMsg) {
    return pMsg->message == WM_KEYUP && (pMsg->wParam == VK_LEFT || pMsg->wParam == VK_RIGHT) &&
           m_model.OnStepKey(static_cast<UINT>(pMsg->wParam), AnyModifierDown());
}

BOOL CDlgSingEditTag::OnInitDialog() {
    CDialog::OnInitDialog();
    InitSharedControls();
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
    // Nothing gives the flat help button an icon of the skin's: it shows the system's question
    // mark in the small size, a copy of its own that it destroys with its window.
    if (m_helpButton.SubclassDlgItem(KX_IDC_TAG_HELP, this)) {
        m_helpButton.SetIcon(static_cast<HICON>(
            ::CopyImage(::LoadIconW(nullptr, IDI_QUESTION), IMAGE_ICON, ::GetSystemMetrics(SM_CXSMICON),
                        ::GetSystemMetrics(SM_CYSMICON), 0)));
    }
    InitDropAndTips();

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
        // the known names come into a box when the user first goes to it
        KxOnCommand(KX_IDC_TAG_ARTIST, CBN_SETFOCUS, &D::OnListNeeded<KX_IDC_TAG_ARTIST>),
        KxOnCommand(KX_IDC_TAG_ARTIST, CBN_DROPDOWN, &D::OnListNeeded<KX_IDC_TAG_ARTIST>),
        KxOnCommand(KX_IDC_TAG_ARTIST2, CBN_SETFOCUS, &D::OnListNeeded<KX_IDC_TAG_ARTIST2>),
        KxOnCommand(KX_IDC_TAG_ARTIST2, CBN_DROPDOWN, &D::OnListNeeded<KX_IDC_TAG_ARTIST2>),
        KxOnCommand(KX_IDC_TAG_ALBUM, CBN_SETFOCUS, &D::OnListNeeded<KX_IDC_TAG_ALBUM>),
        KxOnCommand(KX_IDC_TAG_ALBUM, CBN_DROPDOWN, &D::OnListNeeded<KX_IDC_TAG_ALBUM>),
        KxOnCommand(KX_IDC_TAG_GENRE, CBN_SETFOCUS, &D::OnListNeeded<KX_IDC_TAG_GENRE>),
        KxOnCommand(KX_IDC_TAG_GENRE, CBN_DROPDOWN, &D::OnListNeeded<KX_IDC_TAG_GENRE>),
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
    if (message == WM_MOVE && m_helpBalloon) m_helpBalloon->UpdatePosition();
    return CDialogEditTag::OnDialogMessage(message, wParam, lParam, pResult);
}

void CDlgSingEditTag::OnDestroy() {
    // First, while the art and the controls are all still there for an answer that comes in.
    m_lookup.ReleaseNetContentMgr();
    if (m_helpBalloon) {
        m_helpBalloon->Show(FALSE, 0);
        m_helpBalloon->Release();
        m_helpBalloon = nullptr;
    }
    CDialogEditTag::OnDestroy();
}

void CDlgSingEditTag::OnOK() {
    if (m_model.OnOK() == CSingleTagModel::OkOutcome::Close) CDialog::OnOK();
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

bool CDlgSingEditTag::WantsLookupEntry() {
    return m_lookup.WantsMenuEntry((m_model.m_nMode & KX_EDITMODE_SINGLE) != 0, !(m_model.m_nMode & KX_EDITMODE_NO_PATH));
}

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

void CDlgSingEditTag::OnPasteArt() {
    if (PasteArt()) Enable(KX_IDC_TAG_REMOVE, true);
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

