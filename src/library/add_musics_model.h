// The logic of the add-music dialog, without a window: the folder tree behind the breadcrumb bar,
// the two virtual track lists with their caches of fetched rows, the search through the host's
// track filter, choosing, removing and moving tracks, and the identifiers handed back.
#pragma once

#include <string>
#include <vector>

#include "base/owners.h"
#include "kx/KxContentTree.h"

// One node of the folder tree behind the bar, made when its parent's children are listed.
class CTBItemInfo {
public:
    // With owned 1 the node takes over `pidl` and one reference on `folder`; the name is copied.
    CTBItemInfo(IKxContentFolder* parentFolder, IKxContentFolder* folder, KxPidl pidl, LPCWSTR name, BOOL owned);
    ~CTBItemInfo();
    CTBItemInfo(const CTBItemInfo&) = delete;
    CTBItemInfo& operator=(const CTBItemInfo&) = delete;

    // Lists the child containers: 0 with at least one child, 1 with none, or the failure.
    HRESULT LoadChildren(BOOL refresh);
    void ClearChildren();
    // 1 when the item keeps all three attribute bits: it can be opened further.
    BOOL CanOpen() const;

    IKxContentFolder* m_pParentFolder;  // not counted
    IKxContentFolder* m_pFolder;
    KxPidl m_pidl;
    LPWSTR m_pszName;  // CoTaskMemAlloc, always the node's
    BOOL m_bOwned;
    std::vector<CTBItemInfo*> m_children;  // owned
};

// One fetched track row.
struct CLSTTracksInfo {
    KxPidl m_pidl = nullptr;
    LPWSTR m_pszTitle = nullptr;
    UINT m_nTrackNumber = 0;
    UINT m_nDuration = 0;

    CLSTTracksInfo() = default;
    ~CLSTTracksInfo() { Clear(); }
    CLSTTracksInfo(const CLSTTracksInfo&) = delete;
    CLSTTracksInfo& operator=(const CLSTTracksInfo&) = delete;
    void Clear();
    // Clears, then copies what it is given; false when a copy could not be made.
    bool Set(KxPcPidl pidl, LPCWSTR title, UINT trackNumber, UINT duration);
    // A copy of the record; null when memory runs out.
    CLSTTracksInfo* Clone() const;
};

// "07", "100"; an unread number shows as "00".
std::wstring FormatTrackNumber(UINT number);
// "0:59", "59:59", "1:00:00".
std::wstring FormatDuration(UINT seconds);

// What the model needs of the breadcrumb bar.
class IAddMusicsBar {
public:
    virtual ~IAddMusicsBar() = default;
    virtual int GetButtonCount() = 0;
    virtual int CommandToIndex(UINT command) = 0;
    virtual void* GetButtonData(int index) = 0;
    virtual void SetButtonData(int index, void* data) = 0;
    virtual bool SetCrumbs(int firstIndex, LPCWSTR path, bool lastHasDropDown) = 0;
};

// What the model needs of the dialog's controls: the search box 1062, the lists 1063 and 1064.
class IAddMusicsControls {
public:
    virtual ~IAddMusicsControls() = default;
    virtual HWND OwnerWindow() = 0;
    virtual void SetSearchText(LPCWSTR text) = 0;
    virtual void SetTrackCount(int count) = 0;   // LVM_SETITEMCOUNT
    virtual void SetChosenCount(int count) = 0;  // SetItemCountEx, LVSICF_NOINVALIDATEALL
    // Selected rows in rising order, at most as many as the list counts selected.
    virtual std::vector<int> SelectedTracks() = 0;
    virtual std::vector<int> SelectedChosen() = 0;
    // Selects chosen rows first to first + count - 1 and deselects every other row.
    virtual void SelectChosenRows(int first, int count) = 0;
    virtual void EnsureChosenVisible(int row) = 0;
};

// One entry of a crumb's drop-down menu.
struct CAddMusicsMenuEntry {
    UINT command;
    std::wstring text;
    CTBItemInfo* data;
};

class CAddMusicsModel {
public:
    static constexpr UINT kRootEntryCommand = 7999;
    static constexpr UINT kFirstEntryCommand = 8000;
    static constexpr UINT kLastEntryCommand = 9000;

    CAddMusicsModel(ULONG_PTR reserved, IKxContentSite* site, IKxContentFolder* rootFolder, IKxTrackList* givenTracks,
                    LPCWSTR rootName);
    ~CAddMusicsModel();
    CAddMusicsModel(const CAddMusicsModel&) = delete;
    CAddMusicsModel& operator=(const CAddMusicsModel&) = delete;

    void Attach(IAddMusicsBar* bar, IAddMusicsControls* controls) { m_pBar = bar, m_pControls = controls; }

    // The opening steps before the window's work: the arguments, the root's identifier, the root
    // node. 0, or the status the dialog closes with (also in m_hrResult).
    HRESULT Open();
    // After the bar was created and emptied: the root and Albums crumbs, the tracks, the given list.
    HRESULT InitBreadCrumb();
    HRESULT ShowFolderTracks();
    void PrepareChosenList();

    // The record of a row, fetched on its first draw; null when it cannot be read (asked again
    // on the next draw).
    const CLSTTracksInfo* TrackRow(int row);
    const CLSTTracksInfo* ChosenRow(int row);
    // The text of a cell (columns 0 number, 1 title, 2 duration), empty for an unread row.
    static std::wstring CellText(const CLSTTracksInfo* record, int column);
    HRESULT LoadTrackRow(int row);
    HRESULT LoadChosenRow(int row, BOOL withDetails);

    // The drop-down of crumb `index`: the entries to show, empty when nothing comes of it.
    std::vector<CAddMusicsMenuEntry> OnDropDown(int index);
    // An entry 8000 to 9000 was picked: its item data and the menu's data (the crumb index).
    void OnMenuEntry(CTBItemInfo* child, int menuIndex);
    // A crumb 5000 to 5100 was clicked; the bar has already cut the row behind it.
    void OnCrumbCommand(UINT command);
    // The bar's truncation callback; owner is the model.
    static int CALLBACK OnCrumbTruncate(int kind, void* owner, int level);
    void Truncate(int kind, int level);

    void OnSearchUpdate(const std::wstring& text);
    HRESULT SearchAllTracks(LPCWSTR text, BOOL stayInPlace);
    bool IsAtAllTracks();

    // Double click on a row of 1063: a fetched row joins the chosen list.
    void AddTrack(int row);
    void AddSelectedTracks();
    // Double click on a row of 1064.
    void RemoveChosen(int row);
    void RemoveChosenTracks();
    // Moves the selected chosen rows in front of `position`, keeping their order; -1 for a
    // position out of range.
    int MoveChosenTracks(int position);

    // OK: fetches the identifiers of the given tracks never drawn and drops what cannot be read.
    void PrepareHandOver();
    // Cancel: the chosen list is emptied.
    void ClearChosen();
    // WM_DESTROY: everything but the chosen records.
    void Destroy();
    HRESULT HandOverChosen(INT* count, KxPidl** array);

    int ChosenCount() const { return int(m_chosen.size()); }
    int TrackCount() const { return int(m_tracks.size()); }

    ULONG_PTR m_reserved;
    IKxContentSite* m_pSite;
    IKxContentFolder* m_pRootFolder;
    IKxTrackList* m_pGivenTracks;
    CKxTaskMem<KxPidl> m_pidlRoot;
    CTBItemInfo* m_pRootItem = nullptr;
    CKxTaskMemString m_pszRootName;
    CKxComPtr<IKxTrackList> m_pTrackList;
    CKxTaskMem<KxPidl> m_pidlAlbums;
    CKxComPtr<IKxContentFolder> m_pAlbumsFolder;
    CKxTaskMem<KxPidl> m_pidlAllTracks;
    HRESULT m_hrResult = S_OK;
    std::vector<CLSTTracksInfo*> m_tracks;
    // A chosen row's record, null while a track of the given list is not fetched yet. Beside it,
    // m_chosenOrigin keeps for every row its place in the given list (-1 for rows added here), so
    // a null slot stays tied to its track when rows before it are removed or moved.
    std::vector<CLSTTracksInfo*> m_chosen;
    std::vector<int> m_chosenOrigin;
    std::wstring m_strSearch;
    int m_nGivenCount = 0;
    int m_nCurrentCrumb = -1;
    int m_nDropCrumb = -1;

private:
    CTBItemInfo* Crumb(int index);
    CTBItemInfo* LastCrumb();
    void ClearTracks();
    void ClearCrumbChildren(int from);
    HRESULT ReadRow(IKxContentFolder* folder, KxPcPidl pidl, BOOL withDetails, CLSTTracksInfo** record);
    void AppendChosen(CLSTTracksInfo* record, int origin);
    void EraseChosen(int row);
    void SetTrackCount();

    IAddMusicsBar* m_pBar = nullptr;
    IAddMusicsControls* m_pControls = nullptr;
};
