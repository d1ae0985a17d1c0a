// The checks and warnings shared by the tag dialogs.
#include "tags/edit_tag_dialog_model.h"

#include "base/owners.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <cwctype>

namespace {

enum : UINT { kVkBack = 8, kVkTab = 9, kVkEscape = 27, kVkDelete = 46 };

}  // namespace

CEditTagDialogModel::CEditTagDialogModel(IEditTagControls& controls, IKxContentSite* site, IKxContentFolder* folder,
                                         UINT itemCount, const KxPcPidl* items)
    : CEditTagModel(site, folder, itemCount, items),
      m_controls(controls),
      m_albumId(0),
      m_restoreOverflow(FALSE),
      m_checkLength(TRUE),
      m_warningTarget{0, 0} {}

void CEditTagDialogModel::OnKeyDown(UINT vk, bool controlHeld) {
    m_restoreOverflow = TRUE;
    // Editing and leaving keys, and Ctrl+V (either case), add no typed character.
    if (vk == kVkBack || vk == kVkTab || vk == kVkEscape || vk == kVkDelete) m_restoreOverflow = FALSE;
    if ((vk == 0x56 || vk == 0x76) && controlHeld) m_restoreOverflow = FALSE;
}

bool CEditTagDialogModel::AllDigits(const std::wstring& text) {
    for (wchar_t c : text)
        if (!std::iswdigit(static_cast<wint_t>(c))) return false;
    return true;
}

bool CEditTagDialogModel::Warn(KxFieldWarning which, int id) {
    const std::wstring title = m_controls.ResourceString(KX_IDS_TAG_WARNING_TITLE);
    std::wstring text;
    if (which == KxFieldWarning::Digits) {
        text = m_controls.ResourceString(KX_IDS_TAG_WARNING_DIGITS);
    } else {
        const std::wstring format = m_controls.ResourceString(KX_IDS_TAG_WARNING_LENGTH);
        wchar_t buffer[512];
        // a format that does not fit says nothing useful: the warning then shows it as it stands
        const int n = std::swprintf(buffer, 512, format.c_str(), static_cast<int>(KX_TAG_MAX_TEXT));
        text = n >= 0 ? std::wstring(buffer, static_cast<size_t>(n)) : format;
    }
    if (!m_controls.ShowWarning(which, id, text, title)) return false;
    m_warningTarget[static_cast<int>(which)] = id;
    return true;
}

int CEditTagDialogModel::CheckDigits(int id, bool editControl) {
    std::wstring text;
    if (!m_controls.GetText(id, &text)) return 0;
    if (AllDigits(text)) return 1;
    m_controls.SelectAllText(id, editControl);
    Warn(KxFieldWarning::Digits, id);
    return 0;
}

int CEditTagDialogModel::CheckLength(int id, BOOL restore) {
    std::wstring text;
    if (!m_controls.GetText(id, &text)) return -1;
    if (text.size() <= static_cast<size_t>(KX_TAG_MAX_TEXT)) {
        m_lastText = text;
        return 1;
    }
    if (restore) {
        // The change notification of this call checks nothing.
        m_checkLength = FALSE;
        const std::wstring last = m_lastText;
        m_controls.SetText(id, last);
        // A combo box reports no change of its own text: nothing is left to skip.
        m_checkLength = TRUE;
    } else {
        m_lastText = text;
    }
    return Warn(KxFieldWarning::Length, id) ? 0 : -1;
}

void CEditTagDialogModel::HideDigitWarning(int id) {
    int& target = m_warningTarget[static_cast<int>(KxFieldWarning::Digits)];
    if (target != 0 && target == id && m_controls.Exists(id)) m_controls.HideWarning(KxFieldWarning::Digits);
}

bool CEditTagDialogModel::CanAcceptArtwork() {
    std::wstring album;
    const bool albumFilled = m_albumId != 0 && m_controls.GetText(m_albumId, &album) && !album.empty();
    if (m_nMode & KX_EDITMODE_SINGLE) return albumFilled && (m_tags.artFlags & KX_TAGFLAG_WRITABLE);
    if (!AnyItemWritable(KxTagArt)) return false;
    return !m_controls.Exists(m_albumId) || albumFilled;
}

void CEditTagDialogModel::FillYearAndTrackLists(int yearId, int trackId) {
    if (m_controls.Exists(yearId)) {
        for (DWORD year = 1990; year <= 2007; ++year) {
            m_controls.AddToList(yearId, std::to_wstring(year));
            m_yearValues.push_back(year);
        }
    }
    if (trackId != 0 && m_controls.Exists(trackId)) {
        for (DWORD track = 1; track <= 30; ++track) {
            m_controls.AddToList(trackId, std::to_wstring(track));
            m_trackValues.push_back(track);
        }
    }
}

bool CEditTagDialogModel::SetNewArt(const BYTE* bytes, ULONG size) {
    if (!bytes || size == 0) return false;
    CKxTaskMem<BYTE*> copy(static_cast<BYTE*>(CoTaskMemAlloc(size)));
    if (!copy) return false;
    std::memcpy(copy.Get(), bytes, size);
    m_pArtBytes = std::move(copy);
    m_nArtSize = size;
    m_bArtChanged = TRUE;
    m_bArtRemoved = FALSE;
    m_controls.ShowArtBytes(m_pArtBytes.Get(), m_nArtSize);
    OnArtChanged();
    return true;
}

bool CEditTagDialogModel::RemoveArt() {
    const bool present = (m_bArtChanged && m_pArtBytes) || m_tags.art;
    if (!present) return false;
    // Back to the default picture: the new art goes too.
    m_pArtBytes.Reset();
    m_nArtSize = 0;
    m_controls.ShowDefaultArt();
    m_bArtRemoved = TRUE;
    return true;
}

int KxLeadingInt(const std::wstring& text) {
    errno = 0;
    const long long value = std::wcstoll(text.c_str(), nullptr, 10);
    if (value < INT_MIN) return INT_MIN;
    if (value > INT_MAX) return INT_MAX;
    return static_cast<int>(value);
}
