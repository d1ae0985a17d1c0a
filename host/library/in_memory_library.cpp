#include "host/library/in_memory_library.h"

#include "host/library/library_object.h"
#include "host/library/text_fold.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>

namespace kxhost {

namespace {

std::atomic<uint32_t> g_nextTag{0x4B580001u};

#pragma pack(push, 1)
struct ItemRecord {
    USHORT cb;
    uint32_t tag;
    uint32_t id;
    USHORT terminator;
};
#pragma pack(pop)
static_assert(sizeof(ItemRecord) == 12, "one record of 10 bytes and the terminator");

const std::vector<ItemId> kNoItems;

bool SameKey(const KxPropertyKey& a, const KxPropertyKey& b) {
    return a.pid == b.pid && IsEqualGUID(a.fmtid, b.fmtid);
}

}  // namespace

LPCWSTR WellKnownName(WellKnown folder) {
    switch (folder) {
        case WellKnown::Playlists: return KxFolderPlaylists;
        case WellKnown::Slideshows: return KxFolderSlideshows;
        case WellKnown::Albums: return KxFolderAlbums;
        case WellKnown::Artists: return KxFolderArtists;
        case WellKnown::Genres: return KxFolderGenres;
        case WellKnown::AllTracks: return KxFolderAllTracks;
    }
    return L"";
}

const char* OpName(Op op) {
    static const char* const names[kOpCount] = {
        "EnumItems", "GetItemAttributes", "GetItemName", "GetItemObject", "BindToFolder", "ParseName",
        "GetOwnId", "QueryInterface(IKxContentRoot)", "QueryInterface(IKxContentFolder)", "Next",
        "IKxTrackList::GetCount", "MoveTo", "GetCurrentId", "Reset", "QueryInterface(IKxTrackFilter)",
        "SetFilterText", "PrefetchProperties", "GetPropertyInfo", "GetStringProperty", "SetStringProperty",
        "GetIntProperty", "SetIntProperty", "GetBlobProperty", "SetBlobProperty", "GetProperties",
        "SetProperties", "RemoveProperties", "GetPreviewSource", "GetPreviewBitmap", "QueryService",
        "QueryInterface(IKxItemCursor)", "IKxItemCursor::GetCount", "GetCurrentItems", "GetItemAt"};
    int i = static_cast<int>(op);
    return i >= 0 && i < kOpCount ? names[i] : "?";
}

// ---- values -------------------------------------------------------------------------------------------

PropertyValue PropertyValue::String(std::wstring s) {
    PropertyValue v;
    v.kind = ValueKind::String;
    v.text = std::move(s);
    return v;
}
PropertyValue PropertyValue::Int(LONG n) {
    PropertyValue v;
    v.kind = ValueKind::Int32;
    v.number = n;
    return v;
}
PropertyValue PropertyValue::UInt(ULONG n) {
    PropertyValue v;
    v.kind = ValueKind::UInt32;
    v.number = n;
    return v;
}
PropertyValue PropertyValue::Size(ULONGLONG n) {
    PropertyValue v;
    v.kind = ValueKind::UInt64;
    v.number = static_cast<LONGLONG>(n);
    return v;
}
PropertyValue PropertyValue::Rational(DWORD numerator, DWORD denominator) {
    PropertyValue v;
    v.kind = ValueKind::Rational;
    v.number = static_cast<LONGLONG>(KxMakeRational(numerator, denominator));
    return v;
}
PropertyValue PropertyValue::Float(float f) {
    PropertyValue v;
    v.kind = ValueKind::Float;
    v.real = f;
    return v;
}
PropertyValue PropertyValue::Blob(std::vector<BYTE> b) {
    PropertyValue v;
    v.kind = ValueKind::Blob;
    v.bytes = std::move(b);
    return v;
}
bool PropertyValue::operator==(const PropertyValue& o) const {
    if (kind != o.kind) return false;
    switch (kind) {
        case ValueKind::String: return text == o.text;
        case ValueKind::Float: return real == o.real;
        case ValueKind::Blob: return bytes == o.bytes;
        default: return number == o.number;
    }
}

// ---- the library ---------------------------------------------------------------------------------------

std::shared_ptr<InMemoryLibrary> InMemoryLibrary::Create() {
    return std::shared_ptr<InMemoryLibrary>(new InMemoryLibrary());
}

InMemoryLibrary::InMemoryLibrary() : tag_(g_nextTag++) {
    strings_.emplace_back();  // pool entry 0: the empty name
    nodes_.emplace_back();    // id 0: no item
    nodes_[0].kind = ItemKind::Root;
    NewNode(ItemKind::Root, L"Library", 0);
    static const wchar_t* const names[kWellKnownCount] = {L"Playlists", L"Slideshows", L"Albums",
                                                          L"Artists",   L"Genres",     L"All tracks"};
    for (int i = 0; i < kWellKnownCount; ++i) NewNode(ItemKind::Folder, names[i], Root());
    // Browsing order of the root; All tracks is reached by name only.
    nodes_[Root()].containers = {Folder(WellKnown::Albums), Folder(WellKnown::Artists), Folder(WellKnown::Genres),
                                 Folder(WellKnown::Playlists), Folder(WellKnown::Slideshows)};
}

InMemoryLibrary::~InMemoryLibrary() = default;

ItemId InMemoryLibrary::NewNode(ItemKind kind, const std::wstring& name, ItemId parent) {
    Node n;
    n.kind = kind;
    n.parent = parent;
    if (!name.empty()) {
        n.name = static_cast<uint32_t>(strings_.size());
        strings_.push_back(name);
    }
    nodes_.push_back(std::move(n));
    return static_cast<ItemId>(nodes_.size() - 1);
}

ItemId InMemoryLibrary::AddContainer(ItemKind kind, const std::wstring& name, ItemId parent) {
    if (!Valid(parent)) {
        switch (kind) {
            case ItemKind::Album: parent = Folder(WellKnown::Albums); break;
            case ItemKind::Artist: parent = Folder(WellKnown::Artists); break;
            case ItemKind::Genre: parent = Folder(WellKnown::Genres); break;
            case ItemKind::Playlist: parent = Folder(WellKnown::Playlists); break;
            case ItemKind::Slideshow: parent = Folder(WellKnown::Slideshows); break;
            default: parent = Root(); break;
        }
    }
    ItemId id = NewNode(kind, name, parent);
    nodes_[parent].containers.push_back(id);
    return id;
}

ItemId InMemoryLibrary::AddItem(ItemKind kind, const std::wstring& name) {
    ItemId id = NewNode(kind, name, 0);
    if (kind == ItemKind::Track) {
        nodes_[id].parent = Folder(WellKnown::AllTracks);
        nodes_[Folder(WellKnown::AllTracks)].members.push_back(id);
    }
    return id;
}

void InMemoryLibrary::AddMember(ItemId container, ItemId item) {
    if (Valid(container) && Valid(item)) nodes_[container].members.push_back(item);
}

void InMemoryLibrary::SetName(ItemId id, const std::wstring& name) {
    if (!Valid(id)) return;
    nodes_[id].name = static_cast<uint32_t>(strings_.size());
    strings_.push_back(name);
}

int InMemoryLibrary::FindKey(const KxPropertyKey& key) const {
    for (size_t i = 0; i < keys_.size(); ++i)
        if (SameKey(keys_[i], key)) return static_cast<int>(i);
    return -1;
}

uint16_t InMemoryLibrary::KeyIndex(const KxPropertyKey& key) {
    int i = FindKey(key);
    if (i >= 0) return static_cast<uint16_t>(i);
    keys_.push_back(key);
    return static_cast<uint16_t>(keys_.size() - 1);
}

const InMemoryLibrary::Prop* InMemoryLibrary::FindProp(ItemId id, const KxPropertyKey& key) const {
    int k = FindKey(key);
    if (k < 0 || id == 0 || id >= nodes_.size()) return nullptr;
    for (const Prop& p : nodes_[id].props)
        if (p.key == k) return &p;
    return nullptr;
}

InMemoryLibrary::Prop* InMemoryLibrary::FindPropMutable(ItemId id, const KxPropertyKey& key) {
    return const_cast<Prop*>(FindProp(id, key));
}

void InMemoryLibrary::Store(ItemId id, const KxPropertyKey& key, const PropertyValue& value, DWORD caps,
                            bool keepCaps) {
    if (!Valid(id)) return;
    Prop* p = FindPropMutable(id, key);
    if (!p) {
        Prop fresh{};
        fresh.key = KeyIndex(key);
        nodes_[id].props.push_back(fresh);
        p = &nodes_[id].props.back();
        keepCaps = false;
    }
    if (!keepCaps) p->caps = static_cast<uint8_t>(caps);
    p->kind = value.kind;
    switch (value.kind) {
        case ValueKind::String:
            p->pool = static_cast<uint32_t>(strings_.size());
            strings_.push_back(value.text);
            break;
        case ValueKind::Blob:
            p->pool = static_cast<uint32_t>(blobs_.size());
            blobs_.push_back(value.bytes);
            break;
        case ValueKind::Float: p->real = value.real; break;
        default: p->number = value.number; break;
    }
}

void InMemoryLibrary::SetValue(ItemId id, const KxPropertyKey& key, const PropertyValue& value, DWORD caps) {
    Store(id, key, value, caps, false);
}
void InMemoryLibrary::SetString(ItemId id, const KxPropertyKey& key, const std::wstring& s, DWORD caps) {
    SetValue(id, key, PropertyValue::String(s), caps);
}
void InMemoryLibrary::SetInt(ItemId id, const KxPropertyKey& key, LONG v, DWORD caps) {
    SetValue(id, key, PropertyValue::Int(v), caps);
}
void InMemoryLibrary::SetUInt(ItemId id, const KxPropertyKey& key, ULONG v, DWORD caps) {
    SetValue(id, key, PropertyValue::UInt(v), caps);
}
void InMemoryLibrary::SetCapabilities(ItemId id, const KxPropertyKey& key, DWORD caps) {
    if (Prop* p = FindPropMutable(id, key)) p->caps = static_cast<uint8_t>(caps);
}
void InMemoryLibrary::RemoveValue(ItemId id, const KxPropertyKey& key) {
    const Prop* p = FindProp(id, key);
    if (!p) return;
    auto& props = nodes_[id].props;
    props.erase(props.begin() + (p - props.data()));
}
void InMemoryLibrary::SetReadOnly(ItemId id, bool readOnly) {
    if (Valid(id)) nodes_[id].readOnly = readOnly;
}

void InMemoryLibrary::SetPreview(ItemId id, PreviewPicture picture) {
    if (!Valid(id)) return;
    previews_.push_back(std::move(picture));
    nodes_[id].preview = static_cast<uint32_t>(previews_.size());
}

const PreviewPicture* InMemoryLibrary::PreviewOf(ItemId id) const {
    if (!Valid(id)) return nullptr;
    uint32_t p = nodes_[id].preview;
    return p ? &previews_[p - 1] : nullptr;
}

ItemKind InMemoryLibrary::KindOf(ItemId id) const { return nodes_[Valid(id) ? id : 0].kind; }

std::wstring InMemoryLibrary::NameOf(ItemId id) const {
    if (!Valid(id)) return std::wstring();
    if (const Prop* title = FindProp(id, KxPropTitle))
        if (title->kind == ValueKind::String && !strings_[title->pool].empty()) return strings_[title->pool];
    return strings_[nodes_[id].name];
}

PropertyValue InMemoryLibrary::ValueOf(const Prop& p) const {
    PropertyValue v;
    v.kind = p.kind;
    switch (p.kind) {
        case ValueKind::String: v.text = strings_[p.pool]; break;
        case ValueKind::Blob: v.bytes = blobs_[p.pool]; break;
        case ValueKind::Float: v.real = p.real; break;
        default: v.number = p.number; break;
    }
    return v;
}

std::optional<PropertyValue> InMemoryLibrary::Value(ItemId id, const KxPropertyKey& key) const {
    const Prop* p = FindProp(id, key);
    if (!p) return std::nullopt;
    return ValueOf(*p);
}

DWORD InMemoryLibrary::Capabilities(ItemId id, const KxPropertyKey& key) const {
    const Prop* p = FindProp(id, key);
    return p ? p->caps : 0;
}

const std::vector<ItemId>& InMemoryLibrary::Containers(ItemId id) const {
    return id < nodes_.size() ? nodes_[id].containers : kNoItems;
}

const std::vector<ItemId>& InMemoryLibrary::Members(ItemId id) const {
    if (id >= nodes_.size()) return kNoItems;
    if (id == Root() || id == Folder(WellKnown::Albums) || id == Folder(WellKnown::Artists) ||
        id == Folder(WellKnown::Genres))
        return nodes_[Folder(WellKnown::AllTracks)].members;
    return nodes_[id].members;
}

bool InMemoryLibrary::IsChildOf(ItemId folder, ItemId item) const {
    if (!Valid(folder) || !Valid(item)) return false;
    if (nodes_[item].parent == folder) return true;
    const std::vector<ItemId>& members = Members(folder);
    return std::find(members.begin(), members.end(), item) != members.end();
}

DWORD InMemoryLibrary::AttributesOf(ItemId id) const {
    switch (nodes_[id].kind) {
        case ItemKind::Root: return 7;
        case ItemKind::Folder: return id == Folder(WellKnown::AllTracks) ? 3 : 7;
        case ItemKind::Album:
        case ItemKind::Artist:
        case ItemKind::Genre:
        case ItemKind::Playlist:
        case ItemKind::Slideshow: return nodes_[id].containers.empty() ? 3 : 7;
        default: return 0;
    }
}

// ---- identifiers ---------------------------------------------------------------------------------------

KxPidl InMemoryLibrary::NewPidl(ItemId id) const {
    void* p = CoTaskMemAlloc(sizeof(ItemRecord));
    if (!p) return nullptr;
    ItemRecord r{10, tag_, id, 0};
    std::memcpy(p, &r, sizeof(r));
    return static_cast<KxPidl>(p);
}

const InMemoryLibrary::Node* InMemoryLibrary::Find(KxPcPidl pidl) const {
    if (!pidl) return nullptr;
    ItemRecord r;
    std::memcpy(&r.cb, pidl, sizeof(USHORT));
    if (r.cb != 10) return nullptr;
    std::memcpy(&r, pidl, sizeof(r));
    if (r.terminator != 0 || r.tag != tag_ || r.id == 0 || r.id >= nodes_.size()) return nullptr;
    return &nodes_[r.id];
}

ItemId InMemoryLibrary::ItemOf(KxPcPidl pidl) const {
    const Node* n = Find(pidl);
    return n ? IdOfNode(n) : 0;
}

// ---- objects -----------------------------------------------------------------------------------------------

HRESULT InMemoryLibrary::GetRootFolder(IKxContentFolder** folder) { return GetFolder(Root(), folder); }

HRESULT InMemoryLibrary::GetFolder(ItemId container, IKxContentFolder** folder) {
    if (!folder) return E_POINTER;
    *folder = nullptr;
    if (container == 0 || container >= nodes_.size() || AttributesOf(container) == 0) return E_INVALIDARG;
    return CreateFolderObject(shared_from_this(), container, IID_IKxContentFolder, reinterpret_cast<void**>(folder));
}

HRESULT InMemoryLibrary::CreateSite(IKxContentSite** site) {
    if (!site) return E_POINTER;
    *site = nullptr;
    return CreateSiteObject(shared_from_this(), IID_IUnknown, reinterpret_cast<void**>(site));
}

HRESULT InMemoryLibrary::CreateTrackList(ItemId container, IKxTrackList** list) {
    if (!list) return E_POINTER;
    *list = nullptr;
    if (container == 0 || container >= nodes_.size()) return E_INVALIDARG;
    return CreateTrackListObject(shared_from_this(), container, IID_IKxTrackList, reinterpret_cast<void**>(list));
}

void InMemoryLibrary::SetView(std::vector<ItemId> items, LONG current) {
    view_ = std::move(items);
    viewCurrent_ = current;
}

// ---- audit --------------------------------------------------------------------------------------------------

void InMemoryLibrary::ObjectBorn(LibraryObject* o) {
    ++liveObjects_;
    ++outstandingRefs_;
    live_.push_back(o);
}

void InMemoryLibrary::ObjectDied(LibraryObject* o) {
    --liveObjects_;
    live_.erase(std::remove(live_.begin(), live_.end(), o), live_.end());
}

std::string InMemoryLibrary::DescribeLiveObjects() const {
    std::string out;
    for (const LibraryObject* o : live_) {
        char line[160];
        std::snprintf(line, sizeof(line), "%s of item %u: %ld reference(s)\n", o->ClassName(),
                      static_cast<unsigned>(o->Item()), static_cast<long>(o->References()));
        out += line;
    }
    return out;
}

// ---- failure injection -----------------------------------------------------------------------------------

void InMemoryLibrary::FailOperation(Op op, HRESULT status, int nth, int count) {
    int i = static_cast<int>(op);
    if (i < 0 || i >= kOpCount) return;
    Failure& f = failures_[i];
    f.status = status;
    f.from = count == 0 ? 0 : calls_[i] + (nth < 1 ? 1 : nth);
    f.until = count < 0 ? -1 : f.from + count - 1;
}

void InMemoryLibrary::ResetFailures() {
    for (Failure& f : failures_) f = Failure();
}

HRESULT InMemoryLibrary::Enter(Op op) {
    int i = static_cast<int>(op);
    long call = ++calls_[i];
    const Failure& f = failures_[i];
    if (f.from == 0 || call < f.from) return S_OK;
    if (f.until >= 0 && call > f.until) return S_OK;
    return f.status;
}

// ---- properties through the interface ----------------------------------------------------------------------

HRESULT InMemoryLibrary::ToVariant(const Prop& p, PROPVARIANT* v) const {
    switch (p.kind) {
        case ValueKind::String: {
            LPWSTR s = TaskMemString(strings_[p.pool].c_str());
            if (!s) return E_OUTOFMEMORY;
            v->vt = VT_LPWSTR;
            v->pwszVal = s;
            return S_OK;
        }
        case ValueKind::Int32:
            v->vt = VT_I4;
            v->lVal = static_cast<LONG>(p.number);
            return S_OK;
        case ValueKind::UInt32:
            v->vt = VT_UI4;
            v->ulVal = static_cast<ULONG>(p.number);
            return S_OK;
        case ValueKind::UInt64:
        case ValueKind::Rational:
            v->vt = VT_UI8;
            v->uhVal.QuadPart = static_cast<ULONGLONG>(p.number);
            return S_OK;
        case ValueKind::Float:
            v->vt = VT_R4;
            v->fltVal = p.real;
            return S_OK;
        case ValueKind::Blob: {
            const std::vector<BYTE>& b = blobs_[p.pool];
            BYTE* data = nullptr;
            if (!b.empty()) {
                data = static_cast<BYTE*>(CoTaskMemAlloc(b.size()));
                if (!data) return E_OUTOFMEMORY;
                std::memcpy(data, b.data(), b.size());
            }
            v->vt = VT_BLOB;
            v->blob.cbSize = static_cast<ULONG>(b.size());
            v->blob.pBlobData = data;
            return S_OK;
        }
    }
    return E_UNEXPECTED;
}

namespace {

bool IsNumber32(ValueKind k) { return k == ValueKind::Int32 || k == ValueKind::UInt32; }

bool KindsAgree(ValueKind stored, ValueKind written) {
    if (stored == written) return true;
    if (IsNumber32(stored) && IsNumber32(written)) return true;
    return (stored == ValueKind::UInt64 || stored == ValueKind::Rational) &&
           (written == ValueKind::UInt64 || written == ValueKind::Rational);
}

}  // namespace

HRESULT InMemoryLibrary::CanWrite(UINT count, const KxPcPidl* items, const KxPropertyKey& key, ValueKind kind) const {
    if (count == 0) return E_INVALIDARG;
    if (!items) return E_POINTER;
    for (UINT i = 0; i < count; ++i)
        if (!Find(items[i])) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i) {
        ItemId id = ItemOf(items[i]);
        if (nodes_[id].readOnly) return E_ACCESSDENIED;
        if (const Prop* p = FindProp(id, key)) {
            if (!(p->caps & kWritable)) return E_ACCESSDENIED;
            if (!KindsAgree(p->kind, kind)) return DISP_E_TYPEMISMATCH;
        }
    }
    return S_OK;
}

void InMemoryLibrary::Write(ItemId id, const KxPropertyKey& key, const PropertyValue& value, WriteRecord::Kind via) {
    PropertyValue stored = value;
    if (const Prop* p = FindProp(id, key)) {
        // a number keeps the kind the item has for it
        if (p->kind != value.kind) stored.kind = p->kind;
        if (p->kind == ValueKind::Int32) stored.number = static_cast<LONG>(value.number);
        if (p->kind == ValueKind::UInt32) stored.number = static_cast<ULONG>(value.number);
    }
    Store(id, key, stored, kReadWrite, true);
    writes_.push_back(WriteRecord{via, id, key, stored});
}

HRESULT InMemoryLibrary::Remove(UINT count, const KxPcPidl* items, ULONG keyCount, const KxPropertyKey* keys) {
    if (count == 0 || keyCount == 0) return E_INVALIDARG;
    if (!items || !keys) return E_POINTER;
    for (UINT i = 0; i < count; ++i) {
        const Node* n = Find(items[i]);
        if (!n) return E_INVALIDARG;
        for (ULONG k = 0; k < keyCount; ++k) {
            const Prop* p = FindProp(IdOfNode(n), keys[k]);
            if (p && (n->readOnly || !(p->caps & kWritable))) return E_ACCESSDENIED;
        }
    }
    for (UINT i = 0; i < count; ++i) {
        ItemId id = ItemOf(items[i]);
        for (ULONG k = 0; k < keyCount; ++k) {
            RemoveValue(id, keys[k]);
            writes_.push_back(WriteRecord{WriteRecord::Remove, id, keys[k], std::nullopt});
        }
    }
    return S_OK;
}

std::vector<WriteRecord> InMemoryLibrary::WritesTo(ItemId id) const {
    std::vector<WriteRecord> out;
    for (const WriteRecord& w : writes_)
        if (w.item == id) out.push_back(w);
    return out;
}

const WriteRecord* InMemoryLibrary::LastWrite(ItemId id, const KxPropertyKey& key) const {
    for (auto it = writes_.rbegin(); it != writes_.rend(); ++it)
        if (it->item == id && SameKey(it->key, key)) return &*it;
    return nullptr;
}

bool InMemoryLibrary::Matches(ItemId track, const std::wstring& folded) const {
    if (folded.empty()) return true;
    static const KxPropertyKey* const keys[] = {&KxPropTitle, &KxPropArtist, &KxPropAlbum};
    for (const KxPropertyKey* key : keys) {
        const Prop* p = FindProp(track, *key);
        if (p && p->kind == ValueKind::String && ContainsFolded(strings_[p->pool], folded)) return true;
    }
    return false;
}

LPWSTR TaskMemString(LPCWSTR s) {
    size_t n = 0;
    while (s[n]) ++n;
    auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc((n + 1) * sizeof(WCHAR)));
    if (copy) std::memcpy(copy, s, (n + 1) * sizeof(WCHAR));
    return copy;
}

}  // namespace kxhost
