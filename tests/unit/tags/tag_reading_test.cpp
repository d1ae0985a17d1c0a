// Reading one item's ten tags and the known values, and what several items allow.
#include "tests/unit/tags/tag_model_fixture.h"

#include <string>

namespace tagtest {
namespace {

using Reading = TagModelTest;

std::wstring Text(LPCWSTR s) { return s ? s : L"<null>"; }

TEST_F(Reading, TenTagsWithTheirFlags) {
    ScriptedEditor& e = StartedEditor({0});
    const _tagTrackTagValues& t = e.m_tags;
    EXPECT_EQ(L"One|Zed|Beta|Abbey|Rock|1999", Text(t.title) + L"|" + Text(t.artist) + L"|" + Text(t.artist2) +
                                                   L"|" + Text(t.album) + L"|" + Text(t.genre) + L"|" + Text(t.year));
    EXPECT_EQ(KX_TAGFLAGS_PRESENT, t.titleFlags);  // read-only
    EXPECT_EQ(KX_TAGFLAGS_WRITABLE, t.trackNumberFlags);
    EXPECT_EQ(3, t.trackNumber);
    EXPECT_EQ(4, t.rating);
    EXPECT_EQ(1234567, t.tagInt12);
    EXPECT_EQ(KX_TAGFLAGS_PRESENT, t.tagInt12Flags);  // the read bit is not kept in this record
    ASSERT_EQ(3u, t.artSize);
    EXPECT_EQ(0xD8, t.art[1]);
    EXPECT_FALSE(e.m_bArtRemoved);
    e.m_bArtRemoved = TRUE;  // reading art leaves a removal the user asked for alone
    EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties, pidls[0]));
    EXPECT_TRUE(e.m_bArtRemoved);
}

TEST_F(Reading, InfoThatSucceedsWithAReadThatFailsKeepsFlagsWithoutValue) {
    ScriptedEditor& e = Editor({0});
    ASSERT_EQ(S_OK, e.ConnectNamespace());
    // the first string read is the title, the first number read the track number
    lib->FailOperation(Op::GetStringProperty, E_FAIL, 1);
    lib->FailOperation(Op::GetIntProperty, static_cast<HRESULT>(0x8002802Bu), 1);
    lib->FailOperation(Op::GetBlobProperty, E_OUTOFMEMORY, 1);
    EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties, pidls[0]));
    EXPECT_EQ(nullptr, e.m_tags.title);
    EXPECT_EQ(KX_TAGFLAGS_PRESENT, e.m_tags.titleFlags);
    EXPECT_EQ(-1, e.m_tags.trackNumber);
    EXPECT_EQ(KX_TAGFLAGS_WRITABLE, e.m_tags.trackNumberFlags);
    EXPECT_EQ(L"Zed", Text(e.m_tags.artist));  // the next reads go on
    EXPECT_EQ(nullptr, e.m_tags.art);
    EXPECT_EQ(KX_TAGFLAGS_WRITABLE, e.m_tags.artFlags);
    EXPECT_TRUE(e.m_bArtRemoved);  // a failed art read counts as no art
}

TEST_F(Reading, NullArgumentsAndAFreshReadReplacesEverything) {
    ScriptedEditor& e = StartedEditor({0});
    EXPECT_EQ(std::wstring(L"C:\\Music\\one.mp3"), e.m_itemPath);
    EXPECT_EQ(E_POINTER, e.ReadItemTags(nullptr, pidls[0]));
    EXPECT_EQ(L'\0', e.m_itemPath[0]);  // cleared even then
    EXPECT_EQ(E_POINTER, e.ReadItemTags(e.m_properties, nullptr));
    EXPECT_EQ(L"One", Text(e.m_tags.title));  // values stay until a real read

    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[1]));  // absent tags are empty, with no flags
    const _tagTrackTagValues& u = e.m_tags;
    EXPECT_EQ(L"Two", Text(u.title));
    EXPECT_EQ(nullptr, u.album);
    EXPECT_EQ(0u, u.albumFlags);
    EXPECT_EQ(-1, u.trackNumber);
    EXPECT_EQ(0u, u.trackNumberFlags);
    EXPECT_EQ(KX_TAGFLAGS_WRITABLE, u.ratingFlags);  // rating 0 is a value
    EXPECT_EQ(nullptr, u.art);
    EXPECT_EQ(0u, u.artFlags);
    EXPECT_TRUE(e.m_bArtRemoved);

    EXPECT_EQ(E_POINTER, e.LoadItemTags(nullptr));
    lib->FailOperation(Op::GetItemObject, E_FAIL, 1);
    EXPECT_EQ(E_POINTER, e.LoadItemTags(pidls[0]));
    EXPECT_EQ(L"Two", Text(e.m_tags.title));
}

TEST_F(Reading, PathTextOnlyForOneItemWithALocationAndAPathThatFits) {
    ScriptedEditor& e = Editor({0});
    ASSERT_EQ(S_OK, e.ConnectNamespace());
    std::wstring fits(KX_ITEM_PATH_CHARS - 1, L'p');
    lib->SetString(tracks[0], KxPropFilePath, fits);
    struct Case { DWORD mode; std::wstring path; bool expected; };
    for (Case c : {Case{KX_EDITMODE_SEVERAL, fits, false}, Case{KX_EDITMODE_SINGLE, fits, true},
                   Case{KX_EDITMODE_SINGLE | KX_EDITMODE_NO_PATH, fits, false},
                   Case{KX_EDITMODE_SINGLE, fits + L"q", false}}) {
        e.m_nMode = c.mode;
        lib->SetString(tracks[0], KxPropFilePath, c.path);
        EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties, pidls[0]));
        EXPECT_EQ(c.expected ? fits : L"", std::wstring(e.m_itemPath)) << c.mode << " " << c.path.size();
    }
    // without a location the path is not asked for
    e.m_nMode = KX_EDITMODE_SINGLE;
    lib->RemoveValue(tracks[0], KxPropLocation);
    long reads = lib->Calls(Op::GetStringProperty);
    EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties, pidls[0]));
    EXPECT_EQ(L'\0', e.m_itemPath[0]);
    EXPECT_EQ(reads + 6 + 1, lib->Calls(Op::GetStringProperty));  // six tags and the location
}

TEST_F(Reading, KnownValuesAreSortedByCodeUnitWithDuplicatesOnEveryRead) {
    lib->SetNextEndsWithLastItem(true);  // the last name comes with the end of the walk
    ScriptedEditor& e = StartedEditor({0});
    EXPECT_EQ((KxStringList{L"Beta", L"Beta", L"Zed", L"alpha"}), e.m_artistList);
    EXPECT_EQ(e.m_artistList, e.m_secondArtistList);
    EXPECT_EQ((KxStringList{L"Abbey", L"Zoo"}), e.m_albumList);
    EXPECT_EQ((KxStringList{L"Rock", L"jazz"}), e.m_genreList);
    EXPECT_EQ(4, lib->Calls(Op::ParseName));  // the Artists folder is walked twice

    lib->AddContainer(ItemKind::Genre, L"Blues");
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[1]));
    EXPECT_EQ((KxStringList{L"Blues", L"Rock", L"jazz"}), e.m_genreList);
    EXPECT_EQ(8, lib->Calls(Op::ParseName));
}

TEST_F(Reading, AFailedWalkLeavesOnlyItsListEmpty) {
    ScriptedEditor& e = Editor({0});
    KxStringList list{L"kept"};
    EXPECT_EQ(E_POINTER, e.ReadKnownValues(KxFolderGenres, list));  // not connected
    ASSERT_EQ(S_OK, e.ConnectNamespace());
    // walks go albums, artists, artists, genres
    lib->FailOperation(Op::ParseName, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), 1);
    lib->FailOperation(Op::BindToFolder, E_FAIL, 2);
    lib->FailOperation(Op::EnumItems, E_OUTOFMEMORY, 2);
    EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties, pidls[0]));
    EXPECT_TRUE(e.m_albumList.empty());
    EXPECT_EQ(4u, e.m_artistList.size());
    EXPECT_TRUE(e.m_secondArtistList.empty());
    EXPECT_TRUE(e.m_genreList.empty());
    EXPECT_EQ(L"One", Text(e.m_tags.title));

    lib->FailOperation(Op::EnumItems, E_ACCESSDENIED, 1);
    EXPECT_EQ(E_FAIL, e.ReadKnownValues(KxFolderGenres, list));
    EXPECT_EQ(KxStringList{L"kept"}, list);
    EXPECT_EQ(S_OK, e.ReadKnownValues(KxFolderPlaylists, list));  // an empty folder empties the list
    EXPECT_TRUE(list.empty());
    // a walk that breaks off in the middle keeps what it had; a name that fails is left out
    lib->FailOperation(Op::Next, E_FAIL, 2);
    EXPECT_EQ(S_OK, e.ReadKnownValues(KxFolderAlbums, e.m_albumList));
    EXPECT_EQ(KxStringList{L"Abbey"}, e.m_albumList);
    lib->FailOperation(Op::GetItemName, E_FAIL, 1);
    EXPECT_EQ(S_OK, e.ReadKnownValues(KxFolderAlbums, e.m_albumList));
    EXPECT_EQ(KxStringList{L"Zoo"}, e.m_albumList);
}

TEST_F(Reading, CapabilityWordsPerItemAndTagAndNoneWithoutMemory) {
    lib->SetCapabilities(tracks[1], KxPropTitle, 0);
    ScriptedEditor& e = StartedEditor({0, 1});
    ASSERT_EQ(2u, e.m_itemCapabilities.size());
    EXPECT_EQ(3u, e.m_itemCapabilities[0]->tags[KxTagTitle]);  // readable only
    EXPECT_EQ(1u, e.m_itemCapabilities[1]->tags[KxTagTitle]);  // there, without any capability bit
    EXPECT_EQ(0u, e.m_itemCapabilities[1]->tags[KxTagAlbum]);
    EXPECT_TRUE(e.AnyItemWritable(KxTagAlbum));   // the first item's
    EXPECT_TRUE(e.AnyItemWritable(KxTagRating));  // the second item's
    EXPECT_FALSE(e.AnyItemWritable(KxTagTitle));
    EXPECT_FALSE(e.AnyItemWritable(-1));
    EXPECT_FALSE(e.AnyItemWritable(KxTagCount));

    kxhost::FailTaskMemAllocations(2);  // the second record: without the whole set nothing is writable
    EXPECT_EQ(E_OUTOFMEMORY, e.ReadItemCapabilities(e.m_properties, given.data(), 2));
    kxhost::ResetTaskMemFailures();
    EXPECT_TRUE(e.m_itemCapabilities.empty());
    EXPECT_FALSE(e.AnyItemWritable(KxTagAlbum));
    EXPECT_EQ(E_POINTER, e.ReadItemCapabilities(nullptr, given.data(), 2));
    EXPECT_EQ(E_POINTER, e.ReadItemCapabilities(e.m_properties, nullptr, 2));
    EXPECT_EQ(E_POINTER, e.ReadItemCapabilities(e.m_properties, given.data(), 0));
}

}  // namespace
}  // namespace tagtest
