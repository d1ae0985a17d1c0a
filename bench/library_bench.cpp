// The in-memory library at the size of a large collection: how long it takes to build, and what
// the walks and reads that the dialogs make cost on it.
#include "host/library/sample_library.h"

#include <benchmark/benchmark.h>

namespace {

using kxhost::BuildSampleLibrary;
using kxhost::LargeSampleOptions;

// 100,000 tracks, 10,000 artists, 5,000 albums, 500 genres; the goal is well under a second.
void BM_BuildLargeLibrary(benchmark::State& state) {
    for (auto _ : state) {
        kxhost::SampleLibrary sample = BuildSampleLibrary(LargeSampleOptions());
        benchmark::DoNotOptimize(sample.library.get());
    }
    state.counters["tracks"] = 100000;
}
BENCHMARK(BM_BuildLargeLibrary)->Unit(benchmark::kMillisecond);

void BM_BuildDefaultLibrary(benchmark::State& state) {
    for (auto _ : state) {
        kxhost::SampleLibrary sample = BuildSampleLibrary(kxhost::DefaultSampleOptions());
        benchmark::DoNotOptimize(sample.library.get());
    }
}
BENCHMARK(BM_BuildDefaultLibrary)->Unit(benchmark::kMicrosecond);

const kxhost::SampleLibrary& Large() {
    static const kxhost::SampleLibrary sample = BuildSampleLibrary(LargeSampleOptions());
    return sample;
}

// The walk every dialog makes: ParseName, BindToFolder, EnumItems (flag 1), Next one at a time,
// GetItemName, freeing as it goes. Argument: the well-known folder.
size_t Walk(IKxContentFolder* root, LPCWSTR name) {
    size_t count = 0;
    KxPidl id = nullptr;
    if (root->ParseName(name, KX_PARSE_WELLKNOWN, &id) != S_OK) return 0;
    IKxContentFolder* folder = nullptr;
    HRESULT hr = root->BindToFolder(id, IID_IKxContentFolder, reinterpret_cast<void**>(&folder));
    CoTaskMemFree(id);
    if (FAILED(hr)) return 0;
    IKxItemEnum* items = nullptr;
    if (SUCCEEDED(folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, reinterpret_cast<void**>(&items)))) {
        for (;;) {
            KxPidl child = nullptr;
            ULONG fetched = 0;
            hr = items->Next(1, &child, &fetched);
            if ((hr == S_OK || hr == S_FALSE) && fetched) {
                LPWSTR childName = nullptr;
                if (folder->GetItemName(child, KX_NAME_NORMAL, &childName) == S_OK) ++count;
                CoTaskMemFree(childName);
            }
            CoTaskMemFree(child);
            if (hr != S_OK) break;
        }
        items->Release();
    }
    folder->Release();
    return count;
}

void BM_WalkWellKnownFolder(benchmark::State& state) {
    static const LPCWSTR names[] = {KxFolderAlbums, KxFolderArtists, KxFolderGenres, KxFolderPlaylists};
    const LPCWSTR name = names[state.range(0)];
    IKxContentFolder* root = nullptr;
    Large().library->GetRootFolder(&root);
    size_t count = 0;
    for (auto _ : state) benchmark::DoNotOptimize(count = Walk(root, name));
    root->Release();
    state.counters["items"] = static_cast<double>(count);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
}
BENCHMARK(BM_WalkWellKnownFolder)->Arg(0)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kMillisecond);

// Typing in the add-music search box: Reset, SetFilterText, GetCount over all 100,000 tracks.
void BM_FilterAllTracks(benchmark::State& state) {
    IKxTrackList* list = nullptr;
    Large().library->CreateTrackList(Large().library->Folder(kxhost::WellKnown::AllTracks), &list);
    IKxTrackFilter* filter = nullptr;
    list->QueryInterface(IID_IKxTrackFilter, reinterpret_cast<void**>(&filter));
    INT count = 0;
    for (auto _ : state) {
        list->Reset();
        filter->SetFilterText(L"KAR");
        list->GetCount(&count);
    }
    filter->Release();
    list->Release();
    state.counters["matches"] = count;
}
BENCHMARK(BM_FilterAllTracks)->Unit(benchmark::kMillisecond);

// The image properties dialog's one call of 21 keys.
void BM_GetPropertiesOfAPicture(benchmark::State& state) {
    const kxhost::SampleLibrary& s = Large();
    IKxContentFolder* root = nullptr;
    s.library->GetRootFolder(&root);
    KxPidl item = s.library->NewPidl(s.pictures[0]);
    KxPcPidl items[] = {item};
    IKxItemProperties* props = nullptr;
    root->GetItemObject(nullptr, nullptr, 1, items, IID_IKxItemProperties, reinterpret_cast<void**>(&props));
    const KxPropertyKey keys[21] = {KxPropImage12, KxPropImage13, KxPropLocation, KxPropImage11, KxPropImage1,
                                    KxPropImage2,  KxPropImage13, KxPropImage7,   KxPropImage8,  KxPropImage9,
                                    KxPropImage10, KxPropImage14, KxPropImage15,  KxPropImage16, KxPropImage18,
                                    KxPropFileSize, KxPropImage3, KxPropImage5,   KxPropImage17, KxPropImage6,
                                    KxPropImage4};
    for (auto _ : state) {
        PROPVARIANT values[21] = {};
        props->GetProperties(item, 21, keys, values);
        for (PROPVARIANT& v : values) PropVariantClear(&v);
    }
    props->Release();
    root->Release();
    CoTaskMemFree(item);
}
BENCHMARK(BM_GetPropertiesOfAPicture)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
