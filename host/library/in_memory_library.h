// An in-memory content library that plays the host's side of the content tree for tests, benchmarks
// and the demo host. It is portable and never part of the plug-in.
//
// What it is
//   A library of items (tracks, pictures, videos) and containers (albums, artists, genres,
//   playlists, slideshows, folders) with properties, behind real reference-counted COM objects for
//   all ten interfaces of kx/KxContentTree.h. Reserved table slots answer E_NOTIMPL.
//
//   root                       GetRootFolder(); answers IKxContentRoot and IKxContentFolder
//    +- Albums, Artists, Genres, Playlists, Slideshows   enumerated with flag 1, found by name too
//    +- All tracks             found by name only (ParseName), never enumerated
//
//   Every folder lists its child containers with EnumItems flag 1 (IKxItemEnum) and its tracks with
//   flag 4 (IKxTrackList, which also answers IKxTrackFilter). The root and the Albums, Artists and
//   Genres folders list all tracks with flag 4; an album, artist or genre lists its own tracks, a
//   playlist its tracks, a slideshow its pictures and videos. An empty list answers S_FALSE and
//   still gives an object.
//
// Identifiers
//   Every item and container has an ItemId. Its KxPidl is one record {library tag, id} and the
//   terminator, so a folder's child, the name it resolves and the result of GetOwnId compare equal
//   bytewise. GetItemName names only the folder's own children (the items it lists with either
//   flag, and those whose parent it is): a name is asked of the folder that enumerated the item.
//   GetItemAttributes and GetItemObject accept any identifier of this library on any folder (the
//   track dialogs read given tracks through the Albums folder); BindToFolder accepts only the
//   folder's own child containers. Identifiers of another library instance are refused with
//   E_INVALIDARG, and so is a name asked of a folder the item is not a child of.
//
// Decisions where the host is free
//   - GetItemAttributes keeps bit 1 for containers, bit 2 for what BindToFolder opens and bit 4 for
//     containers that hold containers (the root, the five well-known parents, and any container
//     given children): only those keep all three bits (7). All tracks and the leaf containers keep 3;
//     tracks, pictures and videos clear all three.
//   - A child folder asked for IKxContentRoot hands out the root, so a dialog given any folder
//     reaches the names.
//   - GetProperties answers S_FALSE when at least one key was absent (left VT_EMPTY), else S_OK.
//   - Reads of the wrong kind (a string read of a number) answer DISP_E_TYPEMISMATCH; numbers of
//     32 bits read and write as either sign.
//   - A write checks every item first and writes nothing unless all can take it: an item that is
//     read-only, or whose property lacks the write bit, makes the call answer E_ACCESSDENIED. A write
//     to a property an item does not have yet adds it as readable and writable.
//   - Removing a property the item does not have succeeds.
//   - A property whose word lacks the read bit answers E_ACCESSDENIED to the single reads and stays
//     VT_EMPTY in GetProperties; GetPropertyInfo still gives its word.
//   - GetPreviewSource with kind 2 also hands out a string (the item's name), which the caller frees
//     like a path. GetPreviewBitmap of a picture that is a file answers E_UNEXPECTED.
//   - The view's GetCurrentItems answers S_FALSE with nothing fetched when no item is current.
//   - The property object answers for any item of the library, not only the set it was made for
//     (the tag dialogs remove art through the object of the first item after stepping on).
//   - ParseName is case-sensitive, takes flags 8 only and resolves names only on the root; an
//     unknown name answers 0x80070002 (file not found).
//   - A track list starts at position 0; Reset clears the filter and goes back to 0; MoveTo outside
//     the list answers E_INVALIDARG; GetCurrentId of an empty list answers E_FAIL. A null filter text
//     counts as empty.
//
// Audit, failure injection, write log: see the sections of the class below.
#pragma once

#include "kx/KxContentTree.h"
#include "host/library/library_ops.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kxhost {

typedef uint32_t ItemId;  // 0 is no item

enum class ItemKind : uint8_t { Root, Folder, Album, Artist, Genre, Playlist, Slideshow, Track, Picture, Video };

enum class WellKnown : uint8_t { Playlists, Slideshows, Albums, Artists, Genres, AllTracks };
constexpr int kWellKnownCount = 6;

// The name by which ParseName resolves the folder (KxFolderPlaylists...).
LPCWSTR WellKnownName(WellKnown folder);

// A property value as a test or a builder sees it.
enum class ValueKind : uint8_t { String, Int32, UInt32, UInt64, Rational, Float, Blob };

struct PropertyValue {
    ValueKind kind = ValueKind::String;
    LONGLONG number = 0;  // Int32, UInt32, UInt64, Rational (numerator high, denominator low)
    float real = 0;       // Float
    std::wstring text;    // String
    std::vector<BYTE> bytes;  // Blob

    static PropertyValue String(std::wstring s);
    static PropertyValue Int(LONG v);
    static PropertyValue UInt(ULONG v);
    static PropertyValue Size(ULONGLONG v);
    static PropertyValue Rational(DWORD numerator, DWORD denominator);
    static PropertyValue Float(float v);
    static PropertyValue Blob(std::vector<BYTE> b);
    bool operator==(const PropertyValue& o) const;
    bool operator!=(const PropertyValue& o) const { return !(*this == o); }
};

// Capability words of GetPropertyInfo.
constexpr DWORD kReadable = KX_PROPINFO_READ;
constexpr DWORD kWritable = KX_PROPINFO_WRITE;
constexpr DWORD kReadWrite = kReadable | kWritable;

// One write the library received, per item and key. Removals have kind Remove and no value.
struct WriteRecord {
    enum Kind { String, Int, Blob, Properties, Remove } via;  // the operation that carried it
    ItemId item;
    KxPropertyKey key;
    std::optional<PropertyValue> value;
};

// The picture behind IKxItemPreview: a file (kind 1) or pixels turned into a bitmap (kind 2).
struct PreviewPicture {
    std::wstring path;          // set: GetPreviewSource gives this path
    LONG width = 0, height = 0;  // otherwise: 32-bit BGRA pixels, top row first
    std::vector<DWORD> pixels;
};

// Makes the bitmap of GetPreviewBitmap from pixels that already fit the asked size. On Windows the
// default makes a DIB section; off Windows there is no default (GetPreviewBitmap answers E_NOTIMPL)
// and tests install their own.
typedef HRESULT (*PreviewBitmapMaker)(LONG width, LONG height, const DWORD* pixels, HBITMAP* bitmap);
void SetPreviewBitmapMaker(PreviewBitmapMaker maker);
PreviewBitmapMaker DefaultPreviewBitmapMaker();

class LibraryObject;

class InMemoryLibrary : public std::enable_shared_from_this<InMemoryLibrary> {
public:
    // A library with the root and the six well-known folders and nothing else.
    static std::shared_ptr<InMemoryLibrary> Create();
    ~InMemoryLibrary();
    InMemoryLibrary(const InMemoryLibrary&) = delete;
    InMemoryLibrary& operator=(const InMemoryLibrary&) = delete;

    // ---- building ------------------------------------------------------------------------------
    ItemId Root() const { return 1; }
    ItemId Folder(WellKnown folder) const { return 2 + static_cast<ItemId>(folder); }
    // A container under `parent` (Album, Artist and Genre go under their well-known folder when
    // parent is 0 or not an item, Playlist and Slideshow likewise).
    ItemId AddContainer(ItemKind kind, const std::wstring& name, ItemId parent = 0);
    // A track (also listed by All tracks), a picture or a video. `name` is the display name when
    // the item has no title.
    ItemId AddItem(ItemKind kind, const std::wstring& name);
    // Puts an item into a container's list (album tracks, playlist entries, slideshow pictures).
    void AddMember(ItemId container, ItemId item);
    void SetName(ItemId id, const std::wstring& name);

    void SetValue(ItemId id, const KxPropertyKey& key, const PropertyValue& value, DWORD caps = kReadWrite);
    void SetString(ItemId id, const KxPropertyKey& key, const std::wstring& s, DWORD caps = kReadWrite);
    void SetInt(ItemId id, const KxPropertyKey& key, LONG v, DWORD caps = kReadWrite);
    void SetUInt(ItemId id, const KxPropertyKey& key, ULONG v, DWORD caps = kReadWrite);
    void SetCapabilities(ItemId id, const KxPropertyKey& key, DWORD caps);
    void RemoveValue(ItemId id, const KxPropertyKey& key);
    // A read-only item refuses every write (E_ACCESSDENIED).
    void SetReadOnly(ItemId id, bool readOnly);
    void SetPreview(ItemId id, PreviewPicture picture);

    // ---- reading back ---------------------------------------------------------------------------
    // Builders ignore ids that are not items of this library; readers answer as for no item.
    bool Valid(ItemId id) const { return id != 0 && id < nodes_.size(); }
    ItemKind KindOf(ItemId id) const;
    std::wstring NameOf(ItemId id) const;  // what GetItemName gives
    std::optional<PropertyValue> Value(ItemId id, const KxPropertyKey& key) const;
    DWORD Capabilities(ItemId id, const KxPropertyKey& key) const;  // 0 when absent
    const std::vector<ItemId>& Containers(ItemId id) const;
    const std::vector<ItemId>& Members(ItemId id) const;  // what EnumItems flag 4 lists
    size_t ItemCount() const { return nodes_.size() - 1; }

    // ---- identifiers ------------------------------------------------------------------------------
    KxPidl NewPidl(ItemId id) const;  // from CoTaskMemAlloc; null when that fails
    ItemId ItemOf(KxPcPidl pidl) const;  // 0 when the list is not one of this library's

    // ---- objects (each out pointer carries one reference) -------------------------------------------
    HRESULT GetRootFolder(IKxContentFolder** folder);
    HRESULT GetFolder(ItemId container, IKxContentFolder** folder);
    HRESULT CreateSite(IKxContentSite** site);
    HRESULT CreateTrackList(ItemId container, IKxTrackList** list);

    // The host's view behind the site: ordered items and the current one (-1: none).
    void SetView(std::vector<ItemId> items, LONG current);

    // ---- audit ----------------------------------------------------------------------------------
    // Objects alive and references held on them; both are 0 when every reference handed out was
    // released.
    long LiveObjects() const { return liveObjects_; }
    long OutstandingReferences() const { return outstandingRefs_; }
    // One line per live object: its class, the item it is for and its reference count.
    std::string DescribeLiveObjects() const;

    // ---- failure injection ----------------------------------------------------------------------
    // The `nth` call of `op` from now (1 = the next) and the `count` - 1 after it answer `status`;
    // count < 0: every call from the nth on. What an injected status does is what a host may do:
    //   - a success other than S_OK (S_FALSE) does the operation and reaches the caller as it is,
    //     with whatever the operation handed out;
    //   - a failure of an operation that hands out an interface (EnumItems, GetItemObject,
    //     BindToFolder, the QueryInterface steps, QueryService) still does it and leaves the object
    //     in the out pointer, for the caller to release; SetFailuresHandOut(false) nulls it instead;
    //   - any other failure does nothing (out pointers nulled).
    void FailOperation(Op op, HRESULT status, int nth = 1, int count = 1);
    void SetFailuresHandOut(bool on) { failuresHandOut_ = on; }
    void ResetFailures();
    // Calls of an operation since the library was made (failed ones included).
    long Calls(Op op) const { return calls_[static_cast<int>(op)]; }
    // Next delivers the last item of an enumeration together with S_FALSE instead of S_OK.
    void SetNextEndsWithLastItem(bool on) { nextEndsWithLast_ = on; }

    // ---- write log ------------------------------------------------------------------------------
    const std::vector<WriteRecord>& Writes() const { return writes_; }
    void ClearWrites() { writes_.clear(); }
    // The writes one item received, in order.
    std::vector<WriteRecord> WritesTo(ItemId id) const;
    // The last write of a key to an item; null when there was none.
    const WriteRecord* LastWrite(ItemId id, const KxPropertyKey& key) const;
    // What the last GetItemObject call with valid items was given, whether the interface was there
    // or not: the site (compared, never used), the owner window, the items and the interface.
    struct ItemObjectCall {
        IKxContentSite* site = nullptr;
        HWND owner = nullptr;
        std::vector<ItemId> items;
        IID iid = {};
    };
    const ItemObjectCall& LastItemObjectCall() const { return lastItemObject_; }
    void NoteItemObjectCall(ItemObjectCall call) { lastItemObject_ = std::move(call); }
    // The keys of the last PrefetchProperties call that went through, in the caller's order.
    const std::vector<KxPropertyKey>& LastPrefetch() const { return lastPrefetch_; }

    // ---- used by the COM objects ---------------------------------------------------------------------
    struct Prop {
        uint16_t key;  // index into keys_
        ValueKind kind;
        uint8_t caps;
        union {
            LONGLONG number;
            float real;
            uint32_t pool;  // strings_ or blobs_
        };
    };
    struct Node {
        ItemKind kind;
        bool readOnly = false;
        ItemId parent = 0;
        uint32_t name = 0;  // strings_
        uint32_t preview = 0;  // previews_ + 1, 0 for none
        std::vector<ItemId> containers;
        std::vector<ItemId> members;
        std::vector<Prop> props;
    };

    HRESULT Enter(Op op);  // counts the call; the status to inject, else S_OK
    // Counts the call and runs `body` (the operation proper) under the status to inject, as the
    // failure injection above says; `handsOut` for an operation that hands out an interface.
    template <typename Body>
    HRESULT Run(Op op, bool handsOut, Body body) {
        const HRESULT injected = Enter(op);
        if (FAILED(injected) && !(handsOut && failuresHandOut_)) return injected;
        const HRESULT real = body();
        if (injected == S_OK) return real;
        if (FAILED(injected)) return injected;
        return SUCCEEDED(real) ? injected : real;
    }
    // True when the folder lists `item` or is its parent.
    bool IsChildOf(ItemId folder, ItemId item) const;
    bool NextEndsWithLastItem() const { return nextEndsWithLast_; }
    void NotePrefetch(const KxPropertyKey* keys, ULONG count) { lastPrefetch_.assign(keys, keys + count); }
    const Node* Find(KxPcPidl pidl) const;
    const Node& NodeAt(ItemId id) const { return nodes_[id]; }
    ItemId IdOfNode(const Node* node) const { return static_cast<ItemId>(node - nodes_.data()); }
    DWORD AttributesOf(ItemId id) const;
    const Prop* FindProp(ItemId id, const KxPropertyKey& key) const;
    // Fills a PROPVARIANT from CoTaskMemAlloc'd memory; E_OUTOFMEMORY when that fails.
    HRESULT ToVariant(const Prop& p, PROPVARIANT* v) const;
    LPCWSTR Text(uint32_t pool) const { return strings_[pool].c_str(); }
    const std::vector<BYTE>& BytesAt(uint32_t pool) const { return blobs_[pool]; }
    const PreviewPicture* PreviewOf(ItemId id) const;
    // Checks that every item can take the value of this kind (all-or-nothing writes).
    HRESULT CanWrite(UINT count, const KxPcPidl* items, const KxPropertyKey& key, ValueKind kind) const;
    // Writes without checks and logs the write.
    void Write(ItemId id, const KxPropertyKey& key, const PropertyValue& value, WriteRecord::Kind via);
    HRESULT Remove(UINT count, const KxPcPidl* items, ULONG keyCount, const KxPropertyKey* keys);
    const std::vector<ItemId>& ViewItems() const { return view_; }
    LONG ViewCurrent() const { return viewCurrent_; }
    // Case-insensitive substring of title, artist or album; `folded` is already folded.
    bool Matches(ItemId track, const std::wstring& folded) const;

    void ObjectBorn(LibraryObject* o);
    void ObjectDied(LibraryObject* o);
    void RefAdded() { ++outstandingRefs_; }
    void RefReleased() { --outstandingRefs_; }

private:
    InMemoryLibrary();
    ItemId NewNode(ItemKind kind, const std::wstring& name, ItemId parent);
    uint16_t KeyIndex(const KxPropertyKey& key);
    int FindKey(const KxPropertyKey& key) const;
    Prop* FindPropMutable(ItemId id, const KxPropertyKey& key);
    void Store(ItemId id, const KxPropertyKey& key, const PropertyValue& value, DWORD caps, bool keepCaps);
    PropertyValue ValueOf(const Prop& p) const;

    friend class SampleBuilder;

    uint32_t tag_;
    std::vector<Node> nodes_;
    std::vector<KxPropertyKey> keys_;
    std::vector<std::wstring> strings_;
    std::vector<std::vector<BYTE>> blobs_;
    std::vector<PreviewPicture> previews_;
    std::vector<ItemId> view_;
    LONG viewCurrent_ = -1;

    // Reference counts may move on any thread; everything else of the library belongs to the thread
    // that runs the dialog, as the tree's calls do.
    std::atomic<long> liveObjects_{0};
    std::atomic<long> outstandingRefs_{0};
    std::vector<LibraryObject*> live_;

    struct Failure {
        long from = 0, until = 0;  // call numbers (1-based); from 0: none; until < 0: no end
        HRESULT status = S_OK;
    };
    long calls_[kOpCount] = {};
    Failure failures_[kOpCount];
    bool nextEndsWithLast_ = false;
    bool failuresHandOut_ = true;

    std::vector<WriteRecord> writes_;
    std::vector<KxPropertyKey> lastPrefetch_;
    ItemObjectCall lastItemObject_;
};

}  // namespace kxhost
