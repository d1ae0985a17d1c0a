// The part of the tag-editing dialog that needs no window: the connection to the host's content
// library, the values of the shown item, the lists of known values, what several items allow,
// writing back, and stepping through the host's view. The Win32 dialog CDialogEditTag derives
// from this class and overrides the three operations that talk to its controls.
#pragma once

#include "base/owners.h"
#include "kx/KxContentTree.h"
#include "tags/track_tag_records.h"

#include <string>
#include <vector>

// Known values of a text field, kept sorted by CompareStrings; duplicates stay.
typedef std::vector<std::wstring> KxStringList;
// Ascending numbers (the year and track-number lists).
typedef std::vector<DWORD> KxNumberList;

// m_nMode bits.
enum : DWORD {
    KX_EDITMODE_SINGLE = 0x01,
    KX_EDITMODE_SEVERAL = 0x10,
    KX_EDITMODE_NO_PATH = 0x100,  // m_itemPath is not valid
};

// Room of m_itemPath, end mark included.
enum : int { KX_ITEM_PATH_CHARS = 520 };

class CEditTagModel {
public:
    // The site, folder and items stay the caller's; none of them is released here.
    CEditTagModel(IKxContentSite* site, IKxContentFolder* folder, UINT itemCount, const KxPcPidl* items);
    virtual ~CEditTagModel();

    CEditTagModel(const CEditTagModel&) = delete;
    CEditTagModel& operator=(const CEditTagModel&) = delete;

    // ---- start of a tag dialog --------------------------------------------------------------------
    // The reading part of InitEditTag: connects, reads the first readable item, the capabilities
    // of several items, the current item of the view with the is-first / is-last flags (only ever
    // set to 1) and the item's path text. On failure m_hrResult is 0x80004003 and the same code is
    // returned; the dialog then closes itself.
    HRESULT InitEditTagModel(BOOL* isLast, BOOL* isFirst);
    HRESULT ConnectNamespace();
    void ReleaseNamespace();

    // ---- reading ------------------------------------------------------------------------------------
    HRESULT ReadItemTags(IKxItemProperties* properties, KxPcPidl item);
    HRESULT LoadItemTags(KxPcPidl item);
    HRESULT ReadKnownValues(LPCWSTR folderName, KxStringList& list);
    HRESULT ReadItemCapabilities(IKxItemProperties* properties, const KxPcPidl* items, UINT count);
    void FreeItemCapabilities();
    // 1 if some item's record allows writing the tag (a KxTag), else 0; 0 without records.
    BOOL AnyItemWritable(int tag) const;
    static void FreeTrackTagValues(_tagTrackTagValues* record);

    // ---- writing ------------------------------------------------------------------------------------
    HRESULT WriteItemTags(KxPcPidl item);
    HRESULT WriteAllItems();
    HRESULT SaveCurrentItem();

    // ---- the host's view ----------------------------------------------------------------------------
    HRESULT MoveToItem(BOOL* isFirst, BOOL* isLast, BOOL forward);
    // The view's current item, owned by the caller (CoTaskMemFree), or null.
    KxPidl GetSelectedItem(LONG* index);

    // ---- known-value lists --------------------------------------------------------------------------
    static void SortStrings(KxStringList& list);
    static int FindOrInsertString(KxStringList& list, LPCWSTR value, BOOL* found);
    static int FindOrInsertNumber(KxNumberList& list, DWORD value, BOOL* found);
    // qsort/bsearch order of two slots that each hold a string pointer: null first, then wcscmp.
    static int CompareStrings(const void* a, const void* b);

    // ---- what the dialogs provide -------------------------------------------------------------------
    // Fills a zeroed record from the controls of the single-item dialog.
    virtual void GetTagsFromControls(_tagTrackTagValues* record);
    // Fills a record with the ticked fields of the multiple-item dialog.
    virtual void GetChangedTags(_tagTrackTagValues* record);
    // Shows a record in the controls.
    virtual void SetTagsToControls(const _tagTrackTagValues* record);
    // The shown picture is dropped when the dialog moves to another item.
    virtual void ClearShownArt();
    // Owner window for the property objects asked of the folder.
    virtual HWND OwnerWindow() const;

    // ---- state --------------------------------------------------------------------------------------
    IKxContentSite* m_pSite;
    IKxContentFolder* m_pFolder;
    UINT m_itemCount;
    const KxPcPidl* m_items;

    CKxComPtr<IKxItemProperties> m_properties;
    CKxComPtr<IKxContentView> m_view;
    CKxComPtr<IKxItemCursor> m_cursor;
    CKxComPtr<IKxContentRoot> m_librarySource;
    CKxComPtr<IKxContentFolder> m_library;

    CKxTaskMem<KxPidl> m_currentItem;
    LONG m_currentIndex;

    _tagTrackTagValues m_tags;  // as read: the baseline of every comparison
    std::vector<CKxTaskMem<_tagTrackTagAttribute*>> m_itemCapabilities;

    KxStringList m_artistList;
    KxStringList m_albumList;
    KxStringList m_secondArtistList;
    KxStringList m_genreList;
    // The lists are read at the next read of an item: at the start, and after a write of a name.
    BOOL m_knownValuesStale;
    // How often the lists were read: a dialog that shows them knows from it when to show them anew.
    UINT m_knownValuesReads;

    DWORD m_nMode;
    WCHAR m_itemPath[KX_ITEM_PATH_CHARS];
    HRESULT m_hrResult;

    // Art state shared with the picture handling.
    CKxTaskMem<BYTE*> m_pArtBytes;
    ULONG m_nArtSize;
    BOOL m_bArtChanged;
    BOOL m_bArtRemoved;
    BOOL m_deleteArtOnAll;
    BOOL m_artEditable;

private:
    bool CopyItemPath(LPCWSTR path);
    // The property object of one item, asked of the bound folder; false without one.
    bool ItemProperties(KxPcPidl item, CKxComPtr<IKxItemProperties>& properties);
    void ReleaseInterfaces();
};
