// Common pieces of the in-memory library tests: a fixture that opens the root folder, hands out
// item identifier lists and property objects, and audits references and CoTaskMem blocks after
// every test, small owners, and the walk of a well-known
// folder as dialogs do it.
#pragma once

#include "host/library/in_memory_library.h"
#include "host/library/sample_library.h"
#include "host/library/taskmem_audit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kxtest {

// Owners of an interface pointer and of a CoTaskMem block for one scope.
template <class I>
struct Ref {
    I* p = nullptr;
    Ref() = default;
    Ref(const Ref&) = delete;
    ~Ref() { Reset(); }
    void Reset() {
        if (p) p->Release();
        p = nullptr;
    }
    I** Out() { return Reset(), &p; }
    void** OutVoid() { return reinterpret_cast<void**>(Out()); }
    I* operator->() const { return p; }
    explicit operator bool() const { return p != nullptr; }
};

template <class T>
struct TaskMem {
    T* p = nullptr;
    explicit TaskMem(T* q = nullptr) : p(q) {}
    TaskMem(const TaskMem&) = delete;
    ~TaskMem() { CoTaskMemFree(p); }
    T** Out() { return CoTaskMemFree(p), p = nullptr, &p; }
};

struct WalkResult {
    HRESULT status = S_OK;  // first failure of ParseName, BindToFolder or EnumItems; else the last Next
    HRESULT enumStatus = S_OK;
    std::vector<std::wstring> names;
};

// ParseName (flags 8), BindToFolder, EnumItems (flags 1), Next until not S_OK, GetItemName (flags 1).
inline WalkResult WalkWellKnownFolder(IKxContentFolder* root, LPCWSTR name) {
    WalkResult r;
    TaskMem<KxItemIdList> id;
    Ref<IKxContentFolder> folder;
    Ref<IKxItemEnum> items;
    if ((r.status = root->ParseName(name, KX_PARSE_WELLKNOWN, id.Out())) != S_OK ||
        FAILED(r.status = root->BindToFolder(id.p, IID_IKxContentFolder, folder.OutVoid())) ||
        FAILED(r.enumStatus = r.status = folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid())))
        return r;
    if (!items) r.status = E_POINTER;  // S_FALSE too hands out an enumerator
    for (bool first = true; items && (first || r.status == S_OK); first = false) {
        TaskMem<KxItemIdList> child;
        TaskMem<WCHAR> childName;
        ULONG fetched = 0;
        if (SUCCEEDED(r.status = items->Next(1, child.Out(), &fetched)) && fetched &&
            folder->GetItemName(child.p, KX_NAME_NORMAL, childName.Out()) == S_OK)
            r.names.push_back(childName.p);
    }
    return r;
}

class LibraryTest : public ::testing::Test {
protected:
    explicit LibraryTest(kxhost::SampleOptions options = kxhost::DefaultSampleOptions())
        : sample(kxhost::BuildSampleLibrary(options)), lib(*sample.library) {}
    void SetUp() override {
        ASSERT_TRUE(kxhost::StartTaskMemAudit());
        blocksBefore = kxhost::LiveTaskMemBlocks();
        ASSERT_EQ(S_OK, lib.GetRootFolder(root.Out()));
    }
    void TearDown() override {
        props.Reset();
        root.Reset();
        for (KxPidl p : pidls) CoTaskMemFree(p);
        kxhost::ResetTaskMemFailures();
        EXPECT_EQ(0, lib.OutstandingReferences()) << lib.DescribeLiveObjects();
        EXPECT_EQ(0, lib.LiveObjects());
        EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks()) << "CoTaskMem blocks left behind";
    }

    // An identifier list of the item, freed after the test.
    KxPcPidl P(kxhost::ItemId id) { return pidls.push_back(lib.NewPidl(id)), pidls.back(); }
    // The property object of the root for the item, in `props`.
    void OpenProperties(kxhost::ItemId id) {
        KxPcPidl item = P(id);
        ASSERT_EQ(S_OK, root->GetItemObject(nullptr, nullptr, 1, &item, IID_IKxItemProperties, props.OutVoid()));
    }

    kxhost::SampleLibrary sample;
    kxhost::InMemoryLibrary& lib;
    Ref<IKxContentFolder> root;  // opened for every test
    Ref<IKxItemProperties> props;
    std::vector<KxPidl> pidls;
    long blocksBefore = 0;
};

}  // namespace kxtest
