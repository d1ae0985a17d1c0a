#include "library/drag_drop_rules.h"

#include "imaging/album_art.h"

namespace {

constexpr DWORD kNoFile = 0xFFFFFFFFu;           // INVALID_FILE_ATTRIBUTES
constexpr DWORD kFolderAttribute = 0x10u;        // FILE_ATTRIBUTE_DIRECTORY

// PtInRect: the left and top edges are inside, the right and bottom ones are not.
bool Inside(const RECT& rect, POINT pt) {
    return pt.x >= rect.left && pt.x < rect.right && pt.y >= rect.top && pt.y < rect.bottom;
}

}  // namespace

CDragDropRules::CDragDropRules(IKxDropPlatform& platform)
    : m_bCanDrop(0), m_szDropFile(), m_pOwner(nullptr), m_platform(platform) {}

bool CDragDropRules::OwnerIsThere() { return m_pOwner && m_pOwner->IsDropOwnerWindow(); }

DWORD CDragDropRules::Refuse() {
    m_bCanDrop = 0;
    m_szDropFile[0] = L'\0';
    return kDropEffectNone;
}

bool CDragDropRules::AdmitEntry(bool windowAndData) {
    RECT art;
    if (!windowAndData || !OwnerIsThere() || !m_pOwner->GetArtScreenRect(&art)) {
        Refuse();
        return false;
    }
    // Several items: some item must take art now. One item: its art value must be writable; its
    // album field is looked at only over the picture, by CanAcceptArtwork.
    const bool writable = m_pOwner->GetDropItemCount() > 1
                              ? m_pOwner->CanAcceptArtwork()
                              : (m_pOwner->GetArtValueFlags() & kArtFlagWritable) != 0;
    if (!writable) {
        Refuse();
        return false;
    }
    m_szDropFile[0] = L'\0';
    return true;
}

DWORD CDragDropRules::TakeFiles(bool hasFiles, UINT count, const WCHAR* first) {
    m_szDropFile[0] = L'\0';
    if (hasFiles) {
        // several files are refused even if each would be taken alone
        if (count != 1) return Refuse();
        if (first) {
            int i = 0;
            for (; i < kDropPathChars - 1 && first[i]; ++i) m_szDropFile[i] = first[i];
            m_szDropFile[i] = L'\0';
        }
    }
    const DWORD attributes = m_szDropFile[0] ? m_platform.GetFileAttributesW(m_szDropFile) : kNoFile;
    if (attributes == kNoFile) return Refuse();
    // A folder normally has no accepted extension. One whose name ends like a picture's ("Scans.jpg")
    // is no picture either: it is refused on entry rather than failing at the drop.
    if (!CAlbumArt::IsAcceptedImageFile(m_szDropFile) || (attributes & kFolderAttribute)) return Refuse();
    m_bCanDrop = 1;
    return kDropEffectCopy;
}

DWORD CDragDropRules::DragOver() {
    if (!m_bCanDrop) return kDropEffectNone;
    if (OwnerIsThere()) {
        // refused here, the drag stays accepted: it may come back to the picture
        RECT art;
        POINT cursor;
        if (!m_pOwner->GetArtScreenRect(&art) || !m_platform.GetCursorPos(&cursor) || !Inside(art, cursor) ||
            !m_pOwner->CanAcceptArtwork())
            return kDropEffectNone;
    }
    return kDropEffectCopy;
}

bool CDragDropRules::Drop(bool hasWindow) {
    if (!hasWindow || m_bCanDrop != 1) return false;
    // a file the dialog cannot load leaves the old art; the drop still counts as taken
    if (OwnerIsThere()) m_pOwner->LoadArtFromFile(m_szDropFile);
    return true;
}

void CDragDropRules::Leave() { m_szDropFile[0] = L'\0'; }
