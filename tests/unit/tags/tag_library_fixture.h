// The fixture the tag model tests share: an in-memory library with a few tracks in the host's
// view, its root and site, and after each test the audit: no reference, no live object and no
// task-memory block left.
#pragma once

#include "host/library/in_memory_library.h"
#include "host/library/taskmem_audit.h"
#include "tests/unit/tags/write_log_text.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace kxtest {

// One value of one track: the track's index, the key, the value and its capabilities.
struct TrackValue { size_t track; const KxPropertyKey* key; kxhost::PropertyValue value; DWORD caps; };

class TagLibraryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(kxhost::StartTaskMemAudit());
        blocksBefore = kxhost::LiveTaskMemBlocks();
        lib = kxhost::InMemoryLibrary::Create();
    }
    // The tracks by name with their values, all in the view, the first current; then the root and site.
    void AddTracks(std::initializer_list<LPCWSTR> names, std::initializer_list<TrackValue> values) {
        for (LPCWSTR name : names) {
            tracks.push_back(lib->AddItem(kxhost::ItemKind::Track, name));
            pidls.push_back(lib->NewPidl(tracks.back()));
        }
        for (const TrackValue& v : values) lib->SetValue(tracks[v.track], *v.key, v.value, v.caps);
        lib->SetView(tracks, 0);
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        ASSERT_EQ(S_OK, lib->CreateSite(&site));
    }
    // Derived fixtures drop their models first.
    void TearDown() override {
        if (site) site->Release();
        if (root) root->Release();
        for (KxPidl p : pidls) CoTaskMemFree(p);
        kxhost::ResetTaskMemFailures();
        EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
        EXPECT_EQ(0, lib->LiveObjects());
        lib.reset();
        EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks());
    }
    std::string Writes() { return TakeWritesText(*lib, tracks); }

    static constexpr DWORD r = kxhost::kReadable, rw = kxhost::kReadWrite;
    std::shared_ptr<kxhost::InMemoryLibrary> lib;
    std::vector<kxhost::ItemId> tracks;
    std::vector<KxPidl> pidls;  // one per track, the test's own
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    long blocksBefore = 0;
};

}  // namespace kxtest
