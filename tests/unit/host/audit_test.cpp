// The audit catches forgotten releases and frees; injected failures reach the caller.
#include "tests/unit/host/library_test_support.h"

namespace kxtest {
namespace {

using kxhost::Op;

TEST(LibraryAudit, ForgottenReleasesAndFreesAreSeen) {
    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    auto lib = kxhost::InMemoryLibrary::Create();
    const long blocks = kxhost::LiveTaskMemBlocks();
    IKxContentFolder* root = nullptr;
    ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
    IKxItemEnum* children = nullptr;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, reinterpret_cast<void**>(&children)));
    IKxContentRoot* marker = nullptr;
    ASSERT_EQ(S_OK, root->QueryInterface(IID_IKxContentRoot, reinterpret_cast<void**>(&marker)));
    EXPECT_EQ(2, lib->LiveObjects());
    EXPECT_EQ(3, lib->OutstandingReferences());
    KxPidl id = nullptr;
    LPWSTR name = nullptr;
    ASSERT_EQ(S_OK, root->GetOwnId(&id));
    ASSERT_EQ(S_OK, root->GetItemName(id, KX_NAME_NORMAL, &name));
    EXPECT_EQ(blocks + 2, kxhost::LiveTaskMemBlocks());
    CoTaskMemFree(id);
    EXPECT_EQ(blocks + 1, kxhost::LiveTaskMemBlocks()) << "the name is still out";
    CoTaskMemFree(name);
    EXPECT_EQ(blocks, kxhost::LiveTaskMemBlocks());
    marker->Release();
    root->Release();
    // the enumerator is "forgotten"
    EXPECT_EQ(1, lib->LiveObjects());
    EXPECT_EQ(1, lib->OutstandingReferences());
    EXPECT_NE(std::string::npos, lib->DescribeLiveObjects().find("item enumerator"));
    EXPECT_EQ(std::string::npos, lib->DescribeLiveObjects().find("folder"));
    children->AddRef();
    EXPECT_EQ(2, lib->OutstandingReferences());
    children->Release();
    children->Release();
    EXPECT_EQ(0, lib->LiveObjects());
    EXPECT_TRUE(lib->DescribeLiveObjects().empty());
}

struct Injection : LibraryTest {};

TEST_F(Injection, TheNthCallFailsOnceOrFromThenOn) {
    const HRESULT status = static_cast<HRESULT>(0x80070015);
    auto parse = [&] {
        BYTE junk[4] = {};
        KxPidl id = reinterpret_cast<KxPidl>(junk);
        HRESULT hr = root->ParseName(KxFolderGenres, 8, &id);
        EXPECT_TRUE(SUCCEEDED(hr) || !id) << "out pointer nulled on failure";
        CoTaskMemFree(id);
        return hr;
    };
    lib.FailOperation(Op::ParseName, status, 2);
    EXPECT_EQ(S_OK, parse());
    EXPECT_EQ(status, parse());
    EXPECT_EQ(S_OK, parse());
    lib.FailOperation(Op::ParseName, E_FAIL, 1, -1);
    EXPECT_EQ(E_FAIL, parse());
    EXPECT_EQ(E_FAIL, parse());
    lib.ResetFailures();
    EXPECT_EQ(S_OK, parse());
    EXPECT_EQ(6, lib.Calls(Op::ParseName));
    lib.FailOperation(Op::ParseName, E_FAIL, 1, 0);  // count 0: nothing fails
    EXPECT_EQ(S_OK, parse());
}

TEST_F(Injection, WalkStepsFailWhereTold) {
    lib.FailOperation(Op::BindToFolder, E_ACCESSDENIED);
    EXPECT_EQ(E_ACCESSDENIED, WalkWellKnownFolder(root.p, KxFolderAlbums).status);
    lib.FailOperation(Op::EnumItems, E_OUTOFMEMORY);
    EXPECT_EQ(E_OUTOFMEMORY, WalkWellKnownFolder(root.p, KxFolderAlbums).status);
    // the third Next fails: two names, and the walk ends with that status
    lib.FailOperation(Op::Next, E_UNEXPECTED, 3);
    WalkResult walk = WalkWellKnownFolder(root.p, KxFolderAlbums);
    EXPECT_EQ(E_UNEXPECTED, walk.status);
    EXPECT_EQ(2u, walk.names.size());
    // names that fail are left out, the walk goes on
    lib.FailOperation(Op::GetItemName, E_FAIL, 1, 2);
    EXPECT_EQ(sample.albums.size() - 2, WalkWellKnownFolder(root.p, KxFolderAlbums).names.size());
}

TEST_F(Injection, InterfaceStepsCanBeRefused) {
    Ref<IKxContentRoot> marker;
    lib.FailOperation(Op::QueryContentRoot, E_NOINTERFACE);
    EXPECT_EQ(E_NOINTERFACE, root->QueryInterface(IID_IKxContentRoot, marker.OutVoid()));
    EXPECT_EQ(nullptr, marker.p);
    ASSERT_EQ(S_OK, root->QueryInterface(IID_IKxContentRoot, marker.OutVoid()));
    Ref<IKxContentFolder> folder;
    lib.FailOperation(Op::QueryContentFolder, S_FALSE);  // a success code still refuses the interface
    EXPECT_EQ(E_NOINTERFACE, marker->QueryInterface(IID_IKxContentFolder, folder.OutVoid()));
    Ref<IKxContentSite> site;
    Ref<IKxContentView> view;
    Ref<IKxItemCursor> cursor;
    ASSERT_EQ(S_OK, lib.CreateSite(site.Out()));
    lib.FailOperation(Op::QueryService, E_FAIL);
    EXPECT_EQ(E_FAIL, site->QueryService(IID_IKxContentView, 0, 0, view.OutVoid()));
    ASSERT_EQ(S_OK, site->QueryService(IID_IKxContentView, 0, 0, view.OutVoid()));
    lib.FailOperation(Op::QueryItemCursor, E_NOINTERFACE);
    EXPECT_EQ(E_NOINTERFACE, view->QueryInterface(IID_IKxItemCursor, cursor.OutVoid()));
    Ref<IKxTrackList> tracks;
    Ref<IKxTrackFilter> filter;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_TRACKS, IID_IKxTrackList, tracks.OutVoid()));
    lib.FailOperation(Op::QueryTrackFilter, E_NOINTERFACE);
    EXPECT_EQ(E_NOINTERFACE, tracks->QueryInterface(IID_IKxTrackFilter, filter.OutVoid()));
    ASSERT_EQ(S_OK, tracks->QueryInterface(IID_IKxTrackFilter, filter.OutVoid()));
    lib.FailOperation(Op::SetFilterText, E_ABORT);
    EXPECT_EQ(E_ABORT, filter->SetFilterText(L"x"));
}

TEST_F(Injection, FailedWritesAreNotLoggedAndItemObjectsCanBeRefused) {
    TaskMem<KxItemIdList> track(Pidl(sample.tracks[0]));
    KxPcPidl item = track.p;
    Ref<IKxItemProperties> props, none;
    ASSERT_EQ(S_OK, root->GetItemObject(nullptr, nullptr, 1, &item, IID_IKxItemProperties, props.OutVoid()));
    lib.FailOperation(Op::SetStringProperty, E_ACCESSDENIED);
    EXPECT_EQ(E_ACCESSDENIED, props->SetStringProperty(1, &item, &KxPropTitle, L"New"));
    EXPECT_TRUE(lib.Writes().empty());
    lib.FailOperation(Op::GetItemObject, E_FAIL);
    EXPECT_EQ(E_FAIL, root->GetItemObject(nullptr, nullptr, 1, &item, IID_IKxItemProperties, none.OutVoid()));
    EXPECT_EQ(nullptr, none.p);
}

TEST_F(Injection, OutOfMemoryInsideTheLibraryIsReported) {
    KxPidl id = nullptr;
    kxhost::FailTaskMemAllocations(1);
    EXPECT_EQ(E_OUTOFMEMORY, root->ParseName(KxFolderAlbums, 8, &id));
    EXPECT_EQ(nullptr, id);
    Ref<IKxItemEnum> items;
    ASSERT_EQ(S_OK, root->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid()));
    KxPidl batch[3] = {};
    ULONG fetched = 9;
    kxhost::FailTaskMemAllocations(3);  // the third identifier of the batch
    EXPECT_EQ(E_OUTOFMEMORY, items->Next(3, batch, &fetched));
    EXPECT_EQ(0u, fetched);
    kxhost::ResetTaskMemFailures();
    // nothing was consumed: the same first child comes next
    ASSERT_EQ(S_OK, items->Next(1, batch, &fetched));
    EXPECT_EQ(lib.Containers(lib.Root())[0], lib.ItemOf(batch[0]));
    CoTaskMemFree(batch[0]);
}

TEST_F(Injection, NullOutPointersAreRefused) {
    TaskMem<KxItemIdList> own;
    ASSERT_EQ(S_OK, root->GetOwnId(own.Out()));
    KxPcPidl item = own.p;
    Ref<IUnknown> unknown;
    IKxContentFolder* folder = reinterpret_cast<IKxContentFolder*>(&own);
    EXPECT_EQ(E_POINTER, root->GetOwnId(nullptr));
    EXPECT_EQ(E_POINTER, root->QueryInterface(IID_IKxContentFolder, nullptr));
    EXPECT_EQ(E_POINTER, root->GetItemName(own.p, 1, nullptr));
    EXPECT_EQ(E_POINTER, root->GetItemObject(nullptr, nullptr, 1, nullptr, IID_IKxItemProperties, nullptr));
    EXPECT_EQ(E_NOINTERFACE, root->GetItemObject(nullptr, nullptr, 1, &item, IID_IKxContentView, unknown.OutVoid()));
    EXPECT_EQ(E_INVALIDARG, root->GetItemObject(nullptr, nullptr, 0, &item, IID_IKxItemProperties, unknown.OutVoid()));
    EXPECT_EQ(E_POINTER, lib.CreateSite(nullptr));
    EXPECT_EQ(E_POINTER, lib.GetRootFolder(nullptr));
    EXPECT_EQ(E_INVALIDARG, lib.GetFolder(sample.tracks[0], &folder));
    EXPECT_EQ(nullptr, folder);
}

}  // namespace
}  // namespace kxtest
