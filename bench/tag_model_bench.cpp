// Speed of the tag model over the in-memory library: reading an item (which walks the Albums,
// Artists twice and Genres folders) against the bare walk of those names, one step through the
// view, and the capabilities and write of 10,000 items.
#include "host/library/in_memory_library.h"
#include "tags/edit_tag_model.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::InMemoryLibrary;
using kxhost::ItemId;
using kxhost::ItemKind;

constexpr int kArtists = 10000;
constexpr int kAlbums = 5000;
constexpr int kGenres = 500;
constexpr int kViewTracks = 100;

// Names in a scattered order, so the sort has work to do.
std::wstring Scattered(const wchar_t* prefix, int i, int n) {
    return prefix + std::to_wstring((static_cast<long long>(i) * 7919) % n);
}

LPWSTR TaskText(LPCWSTR text) {
    size_t bytes = (std::wcslen(text) + 1) * sizeof(WCHAR);
    auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc(bytes));
    if (copy) std::memcpy(copy, text, bytes);
    return copy;
}

// An editor whose controls change nothing, or, for several items, tick artist and rating.
class QuietEditor : public CEditTagModel {
public:
    using CEditTagModel::CEditTagModel;
    void GetChangedTags(_tagTrackTagValues* record) override {
        std::memset(record, 0, sizeof(*record));
        record->artist = TaskText(L"Band");
        record->artistFlags = KX_TAGFLAGS_WRITABLE;
        record->rating = 3;
        record->ratingFlags = KX_TAGFLAGS_WRITABLE;
    }
};

struct Library {
    std::shared_ptr<InMemoryLibrary> lib = InMemoryLibrary::Create();
    std::vector<ItemId> tracks;
    std::vector<KxPidl> pidls;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;

    void AddTracks(int count) {
        for (int i = 0; i < count; ++i) {
            ItemId t = lib->AddItem(ItemKind::Track, L"track " + std::to_wstring(i));
            lib->SetString(t, KxPropTitle, L"Title " + std::to_wstring(i));
            lib->SetString(t, KxPropArtist, L"Artist 1");
            lib->SetString(t, KxPropAlbum, L"Album 1");
            lib->SetString(t, KxPropGenre, L"Genre 1");
            lib->SetString(t, KxPropYear, L"1999");
            lib->SetInt(t, KxPropTrackNumber, i + 1);
            lib->SetInt(t, KxPropRating, 3);
            lib->SetValue(t, KxPropAlbumArt, kxhost::PropertyValue::Blob(std::vector<BYTE>(2048, 0x5A)));
            lib->SetString(t, KxPropLocation, L"Music");
            lib->SetString(t, KxPropFilePath, L"C:\\Music\\" + std::to_wstring(i) + L".mp3");
            tracks.push_back(t);
            pidls.push_back(lib->NewPidl(t));
        }
    }
    void AddKnownValues() {
        for (int i = 0; i < kArtists; ++i) lib->AddContainer(ItemKind::Artist, Scattered(L"Artist ", i, kArtists));
        for (int i = 0; i < kAlbums; ++i) lib->AddContainer(ItemKind::Album, Scattered(L"Album ", i, kAlbums));
        for (int i = 0; i < kGenres; ++i) lib->AddContainer(ItemKind::Genre, Scattered(L"Genre ", i, kGenres));
    }
    void Open() {
        lib->SetView(tracks, 0);
        lib->GetRootFolder(&root);
        lib->CreateSite(&site);
    }
    ~Library() {
        if (site) site->Release();
        if (root) root->Release();
        for (KxPidl p : pidls) CoTaskMemFree(p);
    }
};

Library& LargeLibrary() {
    static Library* large = [] {
        auto* l = new Library;
        l->AddKnownValues();
        l->AddTracks(kViewTracks);
        l->Open();
        return l;
    }();
    return *large;
}

void BM_ReadItemTags(benchmark::State& state) {
    Library& l = LargeLibrary();
    KxPcPidl item = l.pidls[0];
    QuietEditor editor(l.site, l.root, 1, &item);
    if (FAILED(editor.InitEditTagModel(nullptr, nullptr))) state.SkipWithError("start failed");
    for (auto _ : state) {
        benchmark::DoNotOptimize(editor.ReadItemTags(editor.m_properties, item));
    }
    state.counters["names"] = static_cast<double>(editor.m_artistList.size() * 2 + editor.m_albumList.size() +
                                                  editor.m_genreList.size());
}
BENCHMARK(BM_ReadItemTags)->Unit(benchmark::kMillisecond);

// The four walks of a read with nothing kept: resolve, bind, enumerate, name, free.
void BM_EnumerateKnownNames(benchmark::State& state) {
    Library& l = LargeLibrary();
    void* object = nullptr;
    l.root->QueryInterface(IID_IKxContentFolder, &object);
    auto* names = static_cast<IKxContentFolder*>(object);
    size_t total = 0;
    for (auto _ : state) {
        total = 0;
        for (LPCWSTR folderName : {KxFolderAlbums, KxFolderArtists, KxFolderArtists, KxFolderGenres}) {
            KxPidl id = nullptr;
            names->ParseName(folderName, KX_PARSE_WELLKNOWN, &id);
            void* f = nullptr;
            names->BindToFolder(id, IID_IKxContentFolder, &f);
            auto* folder = static_cast<IKxContentFolder*>(f);
            void* en = nullptr;
            folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, &en);
            auto* items = static_cast<IKxItemEnum*>(en);
            HRESULT hr;
            do {
                KxPidl child = nullptr;
                ULONG fetched = 0;
                hr = items->Next(1, &child, &fetched);
                if (fetched) {
                    LPWSTR name = nullptr;
                    folder->GetItemName(child, KX_NAME_NORMAL, &name);
                    total += name ? 1 : 0;
                    CoTaskMemFree(name);
                }
                CoTaskMemFree(child);
            } while (hr == S_OK);
            items->Release();
            folder->Release();
            CoTaskMemFree(id);
        }
        benchmark::DoNotOptimize(total);
    }
    names->Release();
    state.counters["names"] = static_cast<double>(total);
}
BENCHMARK(BM_EnumerateKnownNames)->Unit(benchmark::kMillisecond);

// One step through the view: save the shown item, fetch the neighbour, read it.
void BM_MoveToItem(benchmark::State& state) {
    Library& l = LargeLibrary();
    KxPcPidl item = l.pidls[0];
    QuietEditor editor(l.site, l.root, 1, &item);
    if (FAILED(editor.InitEditTagModel(nullptr, nullptr))) state.SkipWithError("start failed");
    BOOL forward = TRUE;
    for (auto _ : state) {
        BOOL isFirst = FALSE, isLast = FALSE;
        editor.MoveToItem(&isFirst, &isLast, forward);
        if (isLast) forward = FALSE;
        if (isFirst) forward = TRUE;
    }
    l.lib->ClearWrites();
}
BENCHMARK(BM_MoveToItem)->Unit(benchmark::kMillisecond);

// What several items allow, and the ticked artist and rating written to all of them.
void BM_CapabilitiesAndWriteAll(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    Library l;
    l.AddTracks(count);
    l.Open();
    std::vector<KxPcPidl> items(l.pidls.begin(), l.pidls.end());
    QuietEditor editor(l.site, l.root, static_cast<UINT>(count), items.data());
    if (FAILED(editor.ConnectNamespace())) state.SkipWithError("connect failed");
    for (auto _ : state) {
        editor.ReadItemCapabilities(editor.m_properties, items.data(), static_cast<UINT>(count));
        editor.WriteAllItems();
        state.PauseTiming();
        l.lib->ClearWrites();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_CapabilitiesAndWriteAll)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
