// Speed of the tag model over the in-memory library: reading an item (which walks the Albums,
// Artists twice and Genres folders) against the bare walk of those names, one step through the
// view, the capabilities and write of 10,000 items, and the same through the multiple-item
// dialog's model against the bare namespace calls.
#include "host/library/sample_library.h"
#include "tags/edit_tag_model.h"
#include "tags/multiple_tag_model.h"
#include "tests/unit/tags/fake_multi_controls.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <iterator>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::InMemoryLibrary;
using kxhost::ItemId;

constexpr size_t kViewTracks = 100;

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

// The large sample (100,000 tracks, 10,000 artists, 5,000 albums, 500 genres), its first tracks
// in the host's view.
struct Library {
    kxhost::SampleLibrary sample = kxhost::BuildSampleLibrary(kxhost::LargeSampleOptions());
    std::shared_ptr<InMemoryLibrary> lib = sample.library;
    std::vector<KxPidl> pidls;  // the ordinary tracks, without the edge items
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;

    Library() {
        const ItemId edges[] = {sample.trackWithoutTags, sample.trackReadOnlyTags, sample.trackReadOnlyItem,
                                sample.trackLongTitle};
        std::vector<ItemId> view;
        for (ItemId t : sample.tracks) {
            if (std::find(std::begin(edges), std::end(edges), t) != std::end(edges)) continue;
            pidls.push_back(lib->NewPidl(t));
            if (view.size() < kViewTracks) view.push_back(t);
        }
        lib->SetView(view, 0);
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
    static Library* large = new Library;  // lives to the end of the process
    return *large;
}

void BM_ReadItemTags(benchmark::State& state) {
    Library& l = LargeLibrary();
    KxPcPidl item = l.pidls[0];
    QuietEditor editor(l.site, l.root, 1, &item);
    if (FAILED(editor.InitEditTagModel(nullptr, nullptr))) state.SkipWithError("start failed");
    for (auto _ : state) {
        editor.m_knownValuesStale = TRUE;  // the opening's read, with the lists
        benchmark::DoNotOptimize(editor.ReadItemTags(editor.m_properties.Get(), item));
    }
    state.counters["names"] = static_cast<double>(editor.m_artistList.size() * 2 + editor.m_albumList.size() +
                                                  editor.m_genreList.size());
    state.counters["reads"] = static_cast<double>(editor.m_knownValuesReads);
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

// One step through the view: save the shown item (nothing changed), fetch the neighbour, read it
// (the lists are kept).
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
    Library& l = LargeLibrary();
    const size_t count = static_cast<size_t>(state.range(0));
    std::vector<KxPcPidl> items(l.pidls.begin(), l.pidls.begin() + static_cast<std::ptrdiff_t>(count));
    QuietEditor editor(l.site, l.root, static_cast<UINT>(count), items.data());
    if (FAILED(editor.ConnectNamespace())) state.SkipWithError("connect failed");
    for (auto _ : state) {
        editor.ReadItemCapabilities(editor.m_properties.Get(), items.data(), static_cast<UINT>(count));
        editor.WriteAllItems();
        state.PauseTiming();
        l.lib->ClearWrites();
        state.ResumeTiming();
    }
    if (editor.m_itemCapabilities.size() != count) state.SkipWithError("capabilities not read");
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(count));
}
BENCHMARK(BM_CapabilitiesAndWriteAll)->Arg(10000)->Unit(benchmark::kMillisecond);

// OK of the multiple-item dialog on 10,000 items with the artist ticked: what each item allows
// (ten tags each), the checks, the record of the ticked fields and the one write to all, timed
// against the same namespace calls made bare. The counter "ratio" is model time / bare time.
void BM_SeveralItemsOkAgainstBareCalls(benchmark::State& state) {
    Library& l = LargeLibrary();
    const size_t count = static_cast<size_t>(state.range(0));
    std::vector<KxPcPidl> items(l.pidls.begin(), l.pidls.begin() + static_cast<std::ptrdiff_t>(count));
    kxtest::FakeMultiControls ui;
    CMultipleTagModel model(ui, l.site, l.root, static_cast<UINT>(count), items.data());
    if (FAILED(model.ConnectNamespace())) state.SkipWithError("connect failed");
    IKxItemProperties* properties = model.m_properties.Get();
    KxPropertyKey keys[KxTagCount];
    for (int i = 0; i < KxTagCount; ++i) keys[i] = *KxTagFieldOf(i).key;
    typedef std::chrono::steady_clock Clock;
    double modelSeconds = 0;
    double bareSeconds = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        model.ReadItemCapabilities(properties, items.data(), static_cast<UINT>(count));
        ui.c[KX_IDC_MTAG_ARTIST].text = L"Band";
        ui.c[KX_IDC_MTAG_ARTIST_CHECK].checked = true;
        model.OnOK();
        const Clock::time_point modelDone = Clock::now();
        l.lib->ClearWrites();

        const Clock::time_point bareStart = Clock::now();
        size_t writable = 0;
        for (KxPcPidl item : items) {
            for (const KxPropertyKey& key : keys) {
                DWORD flags = 0;
                if (SUCCEEDED(properties->GetPropertyInfo(item, &key, &flags, nullptr)) && (flags & KX_PROPINFO_WRITE))
                    ++writable;
            }
        }
        PROPVARIANT value;
        PropVariantInit(&value);
        value.vt = VT_LPWSTR;
        value.pwszVal = TaskText(L"Band");
        properties->SetProperties(static_cast<UINT>(count), items.data(), 1, &KxPropArtist, &value);
        PropVariantClear(&value);
        const Clock::time_point bareDone = Clock::now();
        benchmark::DoNotOptimize(writable);
        l.lib->ClearWrites();

        const double modelTime = std::chrono::duration<double>(modelDone - start).count();
        modelSeconds += modelTime;
        bareSeconds += std::chrono::duration<double>(bareDone - bareStart).count();
        state.SetIterationTime(modelTime);
    }
    state.counters["bare_ms"] = bareSeconds * 1000 / static_cast<double>(state.iterations());
    state.counters["ratio"] = bareSeconds > 0 ? modelSeconds / bareSeconds : 0;
}
BENCHMARK(BM_SeveralItemsOkAgainstBareCalls)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
