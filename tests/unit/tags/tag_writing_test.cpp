// Writing back: one item by comparison with what was read, several items all at once.
#include "tests/unit/tags/tag_model_fixture.h"

#include <algorithm>

namespace tagtest {
namespace {

using Writing = TagModelTest;
const WriteRecord::Kind S = WriteRecord::String, I = WriteRecord::Int, B = WriteRecord::Blob,
                        P = WriteRecord::Properties, R = WriteRecord::Remove;

// The log in item order (a call for several items may log them in any order).
Log ByItem(Log log) {
    std::stable_sort(log.begin(), log.end(), [](const Written& a, const Written& b) { return a.track < b.track; });
    return log;
}

TEST_F(Writing, EachEnabledControlByItsKindsRule) {
    ScriptedEditor& e = Untouched(0);
    for (const KxPropertyKey& key : {KxPropTitle, KxPropRating, KxPropTagInt12})
        lib->SetCapabilities(tracks[0], key, kxhost::kReadWrite);
    SetText(e.controls.title, L"one");       // case differs: a change
    SetText(e.controls.artist2, L"Beta");    // same: none
    SetText(e.controls.album, nullptr);      // emptied field: no change
    SetText(e.controls.year, L"2001");
    e.controls.yearFlags = KX_TAGFLAGS_WRITE_NEEDS;  // 5 is enough
    SetText(e.controls.artist, L"New artist");
    e.controls.artistFlags = KX_TAGFLAGS_PRESENT;  // disabled control
    SetText(e.controls.genre, L"Pop");
    e.controls.genreFlags = KX_TAGFLAG_WRITABLE;  // no value bit
    e.controls.trackNumber = -1;  // nothing typed
    e.controls.rating = 0;        // 0 is a value
    e.controls.tagInt12 = 0;      // an emptied number field writes 0
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[0]));
    EXPECT_EQ((Log{{0, 1, S}, {0, 5, S}, {0, 13, I}, {0, 12, I}}), Writes());
    EXPECT_EQ(L"one", lib->Value(tracks[0], KxPropTitle)->text);
    EXPECT_EQ(0, lib->Value(tracks[0], KxPropRating)->number);
}

TEST_F(Writing, AnItemWithoutArtHasItRemovedOnEverySave) {
    lib->SetView(tracks, 1);
    ScriptedEditor& e = StartedEditor({1});  // no track number, rating 0
    e.ControlsShowReadValues();
    ASSERT_TRUE(e.m_bArtRemoved);
    e.controls.trackNumber = 5;  // against an absent number
    e.controls.tagInt12 = 0;     // the absent number reads as 0: unchanged
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[1]));
    EXPECT_EQ((Log{{1, 7, I}, {1, 100, R}}), Writes());  // the art removal comes last
    EXPECT_FALSE(e.m_bArtRemoved);
    // the flag is used up: a second save with nothing changed writes nothing
    e.controls.trackNumber = -1;
    EXPECT_EQ(E_NOTIMPL, e.WriteItemTags(pidls[1]));
    // reading the item again brings the removal back, and it alone counts as a write
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[1]));
    lib->ClearWrites();
    e.ControlsShowReadValues();
    EXPECT_EQ(S_OK, e.SaveCurrentItem());
    EXPECT_EQ((Log{{1, 100, R}}), Writes());
}

TEST_F(Writing, NewArtGoesAsBytesAndRemovedArtIsDeleted) {
    ScriptedEditor& e = Untouched(0);
    e.controls.art = DupBytes({9, 8, 7, 6});
    e.controls.artSize = 4;
    e.controls.artFlags = KX_TAGFLAGS_WRITABLE;
    EXPECT_EQ(E_NOTIMPL, e.WriteItemTags(pidls[0]));  // bytes without the changed mark: nothing
    EXPECT_EQ(Log{}, Writes());
    e.m_bArtChanged = TRUE;
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[0]));
    EXPECT_FALSE(e.m_bArtChanged);
    EXPECT_EQ((Log{{0, 100, B}}), Writes());
    EXPECT_EQ((std::vector<BYTE>{9, 8, 7, 6}), lib->Value(tracks[0], KxPropAlbumArt)->bytes);

    lib->ClearWrites();
    e.m_bArtRemoved = TRUE;  // the user removed the art
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[0]));
    EXPECT_EQ((Log{{0, 100, R}}), Writes());
    EXPECT_FALSE(lib->Value(tracks[0], KxPropAlbumArt).has_value());
}

TEST_F(Writing, ResultIsSuccessIfOneWriteSucceededElseTheLastFailure) {
    const HRESULT kSharingViolation = static_cast<HRESULT>(0x80070020u);
    ScriptedEditor& e = Untouched(0);
    SetText(e.controls.title, L"read-only title");  // refused by the library
    SetText(e.controls.artist, L"Someone");
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[0]));
    EXPECT_EQ((Log{{0, 3, S}}), Writes());

    // every write fails: the last failure is the result, and no failure stops the later writes
    SetText(e.controls.artist, L"Another");
    e.controls.rating = 2;
    lib->FailOperation(Op::SetStringProperty, E_OUTOFMEMORY, 1, -1);
    lib->FailOperation(Op::SetIntProperty, kSharingViolation, 1, -1);
    long stringWrites = lib->Calls(Op::SetStringProperty);
    EXPECT_EQ(kSharingViolation, e.WriteItemTags(pidls[0]));
    EXPECT_EQ(stringWrites + 2, lib->Calls(Op::SetStringProperty));

    lib->FailOperation(Op::RemoveProperties, E_ACCESSDENIED, 1);
    e.m_bArtRemoved = TRUE;
    EXPECT_EQ(E_ACCESSDENIED, e.WriteItemTags(pidls[0]));
}

TEST_F(Writing, MissingItemOrObject) {
    ScriptedEditor& e = Untouched(0);
    SetText(e.controls.artist, L"Someone");
    EXPECT_EQ(E_POINTER, e.WriteItemTags(nullptr));
    lib->FailOperation(Op::GetItemObject, E_FAIL, 1);
    EXPECT_EQ(E_POINTER, e.WriteItemTags(pidls[0]));
    EXPECT_EQ(Log{}, Writes());

    lib->SetView(tracks, -1);  // the view has no current item
    ScriptedEditor& unseen = Editor({0});
    ASSERT_EQ(S_OK, unseen.ConnectNamespace());
    EXPECT_EQ(E_POINTER, unseen.SaveCurrentItem());
    EXPECT_EQ(-1, unseen.m_currentIndex);
}

TEST_F(Writing, SeveralItemsGetTheTickedValuesThatSomeItemCanTakeInOneCall) {
    lib->SetCapabilities(tracks[0], KxPropRating, kxhost::kReadWrite);
    lib->SetCapabilities(tracks[0], KxPropGenre, kxhost::kReadable);  // and the others have no genre
    ScriptedEditor& e = StartedEditor({0, 1, 2});
    int tag = 0;
    for (LPCWSTR text : {L"never for several", L"Band", L"Guest", L"Live", L"Pop", L"0042"})
        e.controls.*KxTagFieldOf(tag++).text = Dup(text);  // title to year
    e.controls.rating = 0;
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ(1, lib->Calls(Op::SetProperties));
    Log expected;
    for (int item = 0; item < 3; ++item)
        for (DWORD pid : {3u, 8u, 2u, 5u, 13u}) expected.push_back({item, pid, P});
    EXPECT_EQ(expected, ByItem(Writes()));
    EXPECT_EQ(L"0042", lib->Value(tracks[2], KxPropYear)->text);  // the text typed, not a number
    EXPECT_EQ(0, lib->Value(tracks[2], KxPropRating)->number);

    // nothing ticked and rating -1 still makes the call, with no pairs
    lib->ClearWrites();
    CEditTagModel::FreeTrackTagValues(&e.controls);
    e.controls.rating = -1;
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ(2, lib->Calls(Op::SetProperties));
    EXPECT_EQ(Log{}, Writes());
}

TEST_F(Writing, SeveralItemsArtIsSetOrDeletedOnAll) {
    ScriptedEditor& e = StartedEditor({0, 1});
    e.controls.rating = -1;
    e.controls.art = DupBytes({1, 2, 3});
    e.controls.artSize = 3;
    e.controls.artFlags = KX_TAGFLAG_WRITABLE;
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ((Log{{0, 100, B}, {1, 100, B}}), ByItem(Writes()));

    lib->ClearWrites();
    e.m_deleteArtOnAll = TRUE;
    e.m_bArtRemoved = TRUE;
    EXPECT_EQ(S_OK, e.WriteAllItems());  // deleting wins over new bytes
    EXPECT_EQ((Log{{0, 100, R}, {1, 100, R}}), ByItem(Writes()));
    EXPECT_FALSE(e.m_deleteArtOnAll);
    EXPECT_FALSE(e.m_bArtRemoved);

    lib->ClearWrites();
    e.controls.artFlags = KX_TAGFLAGS_PRESENT;  // not ticked
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ(Log{}, Writes());
}

TEST_F(Writing, SeveralItemsReportNothingOfWhatTheLibraryAnswered) {
    ScriptedEditor& e = StartedEditor({0, 1});
    e.controls.artist = Dup(L"Band");
    e.controls.rating = -1;
    e.m_deleteArtOnAll = TRUE;
    lib->FailOperation(Op::SetProperties, E_ACCESSDENIED, 1);
    lib->FailOperation(Op::RemoveProperties, E_FAIL, 1);
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ(Log{}, Writes());
    EXPECT_FALSE(e.m_deleteArtOnAll);

    // a copy of a value that can't be made leaves that value out (the first allocation is the
    // scripted dialog's own copy of the artist)
    kxhost::FailTaskMemAllocations(2);
    EXPECT_EQ(S_OK, e.WriteAllItems());
    kxhost::ResetTaskMemFailures();
    EXPECT_EQ(Log{}, Writes());
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ((Log{{0, 3, P}, {1, 3, P}}), ByItem(Writes()));

    e.ReleaseNamespace();
    EXPECT_EQ(E_POINTER, e.WriteAllItems());
}

}  // namespace
}  // namespace tagtest
