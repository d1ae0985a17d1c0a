#include "host/win32/demo_library.h"

#include <windows.h>

namespace kxdemo {

kxhost::SampleLibrary MakeDemoLibrary(const std::wstring& outDir) {
    kxhost::SampleOptions options = kxhost::DefaultSampleOptions();
    std::wstring folder = outDir + L"\\library";
    CreateDirectoryW(outDir.c_str(), nullptr);
    if (CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS)
        options.pictureFolder = folder;
    return kxhost::BuildSampleLibrary(options);
}

std::vector<std::wstring> DescribeLibrary(kxhost::InMemoryLibrary& library) {
    std::vector<std::wstring> lines;
    IKxContentFolder* root = nullptr;
    if (FAILED(library.GetRootFolder(&root))) return lines;
    for (int i = 0; i < kxhost::kWellKnownCount; ++i) {
        const kxhost::WellKnown which = static_cast<kxhost::WellKnown>(i);
        std::wstring line = library.NameOf(library.Folder(which)) + L":";
        KxPidl id = nullptr;
        IKxContentFolder* folder = nullptr;
        IKxItemEnum* items = nullptr;
        int count = 0;
        if (root->ParseName(kxhost::WellKnownName(which), KX_PARSE_WELLKNOWN, &id) == S_OK &&
            SUCCEEDED(root->BindToFolder(id, IID_IKxContentFolder, reinterpret_cast<void**>(&folder))) &&
            SUCCEEDED(folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, reinterpret_cast<void**>(&items)))) {
            for (;;) {
                KxPidl child = nullptr;
                ULONG fetched = 0;
                HRESULT hr = items->Next(1, &child, &fetched);
                LPWSTR name = nullptr;
                if ((hr == S_OK || hr == S_FALSE) && fetched &&
                    folder->GetItemName(child, KX_NAME_NORMAL, &name) == S_OK) {
                    // the first few names, then only the count
                    if (++count <= 4) line += (count > 1 ? L", " : L" ") + std::wstring(name);
                }
                CoTaskMemFree(name);
                CoTaskMemFree(child);
                if (hr != S_OK) break;
            }
        }
        if (count > 4) line += L", ...";
        line += L" (" + std::to_wstring(count) + L")";
        if (items) items->Release();
        if (folder) folder->Release();
        CoTaskMemFree(id);
        lines.push_back(line);
    }
    root->Release();
    const auto& all = library.Members(library.Folder(kxhost::WellKnown::AllTracks));
    lines.push_back(L"tracks: " + std::to_wstring(all.size()));
    return lines;
}

}  // namespace kxdemo
