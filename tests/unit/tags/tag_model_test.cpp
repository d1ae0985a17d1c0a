// The tag model without a window, over the in-memory library: what the dialogs' controls would
// hand in is scripted; what the model reads, shows and writes is recorded as text. The start of a
// dialog and its reading, the known values, what several items allow, writing back and stepping
// through the host's view.
#include "tests/unit/tags/tag_library_fixture.h"
#include "tags/edit_tag_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::ItemKind;
using kxhost::Op;

inline LPWSTR Dup(LPCWSTR text) {
    const size_t bytes = text ? (std::wcslen(text) + 1) * sizeof(WCHAR) : 0;
    auto* copy = static_cast<LPWSTR>(text ? CoTaskMemAlloc(bytes) : nullptr);
    return copy ? static_cast<LPWSTR>(std::memcpy(copy, text, bytes)) : nullptr;
}
inline void SetText(LPWSTR& slot, LPCWSTR text) {
    CoTaskMemFree(slot);
    slot = Dup(text);
}
inline void SetArt(_tagTrackTagValues& record, std::vector<BYTE> bytes, DWORD flags) {
    record.art = static_cast<BYTE*>(std::memcpy(CoTaskMemAlloc(bytes.size()), bytes.data(), bytes.size()));
    record.artSize = static_cast<ULONG>(bytes.size());
    record.artFlags = flags;
}
// A key as the tests name it: its number in the track set, or "art".
inline std::string KeyName(const KxPropertyKey& key) {
    return IsEqualGUID(key.fmtid, KxPropAlbumArt.fmtid) ? "art" : std::to_string(key.pid);
}
inline std::string Narrow(LPCWSTR text) { return text ? std::string(text, text + std::wcslen(text)) : "-"; }
// The ten values with their flags in record order, "One/3 Zed/7 ... art3/7"; "-" for no value.
inline std::string Describe(const _tagTrackTagValues& t) {
    std::string out;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& f = KxTagFieldOf(tag);
        std::string value = f.text ? Narrow(t.*f.text) : f.number ? std::to_string(t.*f.number) : "-";
        if (t.art && tag == KxTagArt) value = "art" + std::to_string(t.artSize);
        out += (tag ? " " : "") + value + "/" + std::to_string(t.*f.flags);
    }
    return out;
}

class ScriptedEditor : public CEditTagModel {
public:
    using CEditTagModel::CEditTagModel;
    ~ScriptedEditor() override { FreeTrackTagValues(&controls); }

    // What GetTagsFromControls and GetChangedTags hand out (a deep copy each time).
    _tagTrackTagValues controls = {};
    // The values as read, every control enabled, no art: a dialog the user didn't touch.
    void ControlsShowReadValues() {
        FreeTrackTagValues(&controls);
        CopyRecord(&controls, m_tags);
        for (int tag = 0; tag < KxTagCount; ++tag) controls.*KxTagFieldOf(tag).flags = KX_TAGFLAGS_WRITABLE;
        CoTaskMemFree(controls.art);  // the single-item dialog hands art only when it changed
        controls.art = nullptr;
        controls.artSize = controls.artFlags = 0;
    }
    static void CopyRecord(_tagTrackTagValues* record, const _tagTrackTagValues& from) {
        *record = from;
        for (int tag = 0; tag < KxTagCount; ++tag)
            if (KxTagFieldOf(tag).text) record->*KxTagFieldOf(tag).text = Dup(from.*KxTagFieldOf(tag).text);
        if (from.art) SetArt(*record, {from.art, from.art + from.artSize}, from.artFlags);
    }
    void GetTagsFromControls(_tagTrackTagValues* record) override { CopyRecord(record, controls); }
    void GetChangedTags(_tagTrackTagValues* record) override { CopyRecord(record, controls); }
    void SetTagsToControls(const _tagTrackTagValues* record) override { shown += Narrow(record->title) + " "; }
    void ClearShownArt() override { shown += "~"; }

    std::string shown;  // "~" for each picture dropped, the title of each record shown
};

// An album of four tracks in the host's view, artists (one name twice), albums and genres.
// Track 0 carries all ten tags, with title, rating and tag 12 read-only; track 1 a title, an
// artist, rating 0, a location and a path; tracks 2 and 3 a title each.
class TagModelTest : public kxtest::TagLibraryTest {
protected:
    void SetUp() override {
        TagLibraryTest::SetUp();
        for (LPCWSTR name : {L"Zed", L"alpha", L"\u00c9lan", L"Beta", L"Beta"})
            lib->AddContainer(ItemKind::Artist, name);
        for (LPCWSTR name : {L"Rock", L"jazz"}) lib->AddContainer(ItemKind::Genre, name);
        for (LPCWSTR name : {L"Abbey", L"Zoo"}) lib->AddContainer(ItemKind::Album, name);
        typedef kxhost::PropertyValue V;
        AddTracks({L"One", L"Two", L"Three", L"Four"},
                  {{0, &KxPropTitle, V::String(L"One"), r}, {0, &KxPropArtist, V::String(L"Zed"), rw},
                   {0, &KxPropArtist2, V::String(L"Beta"), rw}, {0, &KxPropAlbum, V::String(L"Abbey"), rw},
                   {0, &KxPropGenre, V::String(L"Rock"), rw}, {0, &KxPropYear, V::String(L"1999"), rw},
                   {0, &KxPropTrackNumber, V::Int(3), rw}, {0, &KxPropRating, V::Int(4), r},
                   {0, &KxPropTagInt12, V::Int(1234567), r}, {0, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 1}), rw},
                   {0, &KxPropLocation, V::String(L"Music"), rw},
                   {0, &KxPropFilePath, V::String(L"C:\\Music\\one.mp3"), rw},
                   {1, &KxPropTitle, V::String(L"Two"), rw}, {1, &KxPropArtist, V::String(L"alpha"), rw},
                   {1, &KxPropRating, V::Int(0), rw}, {1, &KxPropLocation, V::String(L"Music"), rw},
                   {1, &KxPropFilePath, V::String(L"C:\\Music\\two.mp3"), rw},
                   {2, &KxPropTitle, V::String(L"Three"), rw}, {3, &KxPropTitle, V::String(L"Four"), rw}});
        ownReferences = lib->OutstandingReferences();
    }
    void TearDown() override {
        editor.reset();
        TagLibraryTest::TearDown();
    }

    // An editor for the given tracks (indices into tracks), over the root.
    ScriptedEditor& Editor(std::vector<int> which) {
        given.clear();
        for (int i : which) given.push_back(pidls[static_cast<size_t>(i)]);
        editor = std::make_unique<ScriptedEditor>(site, root, static_cast<UINT>(given.size()), given.data());
        return *editor;
    }
    // An editor that has run the reading start of a dialog; `untouched`: its controls show the
    // values as read.
    ScriptedEditor& Started(std::vector<int> which, bool untouched = false, BOOL* isLast = nullptr,
                            BOOL* isFirst = nullptr) {
        ScriptedEditor& e = Editor(std::move(which));
        EXPECT_EQ(S_OK, e.InitEditTagModel(isLast, isFirst));
        if (untouched) e.ControlsShowReadValues();
        return e;
    }
    // The writes since the last call, one word each: track, key and operation; "0:3S" is a
    // string write of key 3 to track 0 (I number, B bytes, P SetProperties, R removal).
    std::string Writes() {
        std::string out;
        for (const kxhost::WriteRecord& w : lib->Writes()) {
            const auto track = std::find(tracks.begin(), tracks.end(), w.item) - tracks.begin();
            out += (out.empty() ? "" : " ") + std::to_string(track) + ":" + KeyName(w.key) + "SIBPR"[w.via];
        }
        lib->ClearWrites();
        return out;
    }

    // A step through the view: its code, "F" at the first item, "L" at the last, and the index.
    static std::string Step(ScriptedEditor& e, BOOL forward) {
        BOOL first = 7, last = 7;
        char code[10];
        std::snprintf(code, sizeof code, "%X", static_cast<unsigned>(e.MoveToItem(&first, &last, forward)));
        return code + std::string(first ? " F" : "") + (last ? " L" : "") + " @" + std::to_string(e.m_currentIndex);
    }

    std::unique_ptr<ScriptedEditor> editor;
    std::vector<KxPcPidl> given;  // the items handed to the editor
    long ownReferences = 0;  // the test's own references to the root and the site
};

typedef CEditTagModel M;
using Reading = TagModelTest;
using Writing = TagModelTest;
using Stepping = TagModelTest;

TEST(KnownValues, FindOrInsertKeepsTheOrderOfCodeUnits) {
    KxStringList list;
    KxNumberList numbers;
    BOOL found = FALSE;
    std::string log;  // index and found (y/n) of each call
    auto note = [&](int index) { log += std::to_string(index) + "ny"[found] + " "; };
    for (LPCWSTR value : {L"b", L"abc", L"abd", L"b", L"Zulu", static_cast<LPCWSTR>(nullptr)})
        note(M::FindOrInsertString(list, value, &found));
    for (DWORD n : {30u, 1u, 40u, 2u, 31u, 30u}) note(M::FindOrInsertNumber(numbers, n, &found));
    EXPECT_EQ("0n 0n 1n 2y 0n 0n 0n 0n 2n 1n 3n 2y ", log);
    EXPECT_EQ((KxStringList{L"", L"Zulu", L"abc", L"abd", L"b"}), list);  // null stands for the empty text
    EXPECT_EQ((KxNumberList{1, 2, 30, 31, 40}), numbers);
}

TEST_F(Reading, TagsInRecordOrderArePrefetchedInTheirOwnOrder) {
    std::string record, prefetch;
    for (int tag = 0; tag < KxTagCount; ++tag) record += KeyName(*KxTagFieldOf(tag).key) + " ";
    Started({0});
    for (const KxPropertyKey& key : lib->LastPrefetch()) prefetch += KeyName(key) + " ";
    EXPECT_EQ("1 3 8 2 4 5 7 13 12 art ", record);  // title artist artist2 album genre year number rating 12 art
    EXPECT_EQ("1 3 8 2 4 7 12 5 13 art ", prefetch);
}

TEST_F(Reading, ValuesWithFlagsThreeOrSevenAndFailedReadsKeepingTheFlags) {
    ScriptedEditor& e = Started({0});
    EXPECT_EQ("One/3 Zed/7 Beta/7 Abbey/7 Rock/7 1999/7 3/7 4/3 1234567/3 art3/7", Describe(e.m_tags));
    EXPECT_EQ(0xD8, e.m_tags.art[1]);
    EXPECT_FALSE(e.m_bArtRemoved);
    // the information succeeds, the read fails: flags without a value, and the reading goes on
    lib->FailOperation(Op::GetStringProperty, E_FAIL, 1);  // the title
    lib->FailOperation(Op::GetIntProperty, E_FAIL, 1);     // the track number
    lib->FailOperation(Op::GetBlobProperty, E_OUTOFMEMORY, 1);
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[0]));
    EXPECT_EQ("-/3 Zed/7 Beta/7 Abbey/7 Rock/7 1999/7 -1/7 4/3 1234567/3 -/7", Describe(e.m_tags));
    EXPECT_TRUE(e.m_bArtRemoved);  // a failed art read counts as no art
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[1]));  // absent tags are empty, without flags; rating 0 is a value
    EXPECT_EQ("Two/7 alpha/7 -/0 -/0 -/0 -/0 -1/0 0/7 0/0 -/0", Describe(e.m_tags));
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[0]));
    EXPECT_TRUE(e.m_bArtRemoved);  // reading art leaves a removal alone
    lib->FailOperation(Op::GetItemObject, E_FAIL, 1);
    EXPECT_EQ(E_POINTER, e.LoadItemTags(pidls[1]));
    EXPECT_EQ("One", Narrow(e.m_tags.title));  // values stay until a real read
}

TEST_F(Reading, PathTextOnlyForOneItemWithALocationAndAPathThatFits) {
    ScriptedEditor& e = Started({0});
    EXPECT_EQ(std::wstring(L"C:\\Music\\one.mp3"), e.m_itemPath);
    const std::wstring fits(KX_ITEM_PATH_CHARS - 1, L'p');  // with its end mark the room is full
    e.m_hrResult = E_FAIL;  // the member behind the room: not overrun
    struct Case { DWORD mode; std::wstring path; bool kept; };
    for (const Case& c : {Case{KX_EDITMODE_SEVERAL, fits, false}, {KX_EDITMODE_SINGLE, fits, true},
                          {KX_EDITMODE_SINGLE | KX_EDITMODE_NO_PATH, fits, false},
                          {KX_EDITMODE_SINGLE, fits + L"q", false}}) {
        e.m_nMode = c.mode;
        lib->SetString(tracks[0], KxPropFilePath, c.path);
        EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties.Get(), pidls[0]));
        EXPECT_EQ(c.kept ? fits : L"", std::wstring(e.m_itemPath)) << c.mode << " " << c.path.size();
    }
    EXPECT_EQ(E_FAIL, e.m_hrResult);
    lib->RemoveValue(tracks[0], KxPropLocation);  // without a location the path is not asked for
    const long reads = lib->Calls(Op::GetStringProperty);
    EXPECT_EQ(S_OK, e.ReadItemTags(e.m_properties.Get(), pidls[0]));
    EXPECT_EQ(reads + 6 + 1, lib->Calls(Op::GetStringProperty));  // six tags and the location

    // a path that can't be read or doesn't fit at the start marks the mode for every later item
    for (bool overlong : {false, true}) {
        if (overlong) lib->SetString(tracks[0], KxPropFilePath, fits + L"q");
        else lib->RemoveValue(tracks[0], KxPropFilePath);
        EXPECT_EQ(KX_EDITMODE_SINGLE | KX_EDITMODE_NO_PATH, Started({0}).m_nMode) << overlong;
        EXPECT_EQ(L'\0', editor->m_itemPath[0]);
    }
}

// The lists are read with the first item and kept for the next ones, until the dialog writes a
// name: only then may the library's folders differ.
TEST_F(Reading, KnownValuesByCodeUnitKeptUntilANameIsWrittenAndAFailedWalkEmptiesOnlyItsList) {
    lib->SetNextEndsWithLastItem(true);  // the last name comes with the end of the walk
    ScriptedEditor& e = Started({0}, true);
    EXPECT_EQ((KxStringList{L"Beta", L"Beta", L"Zed", L"alpha", L"\u00c9lan"}), e.m_artistList);
    EXPECT_EQ(e.m_artistList, e.m_secondArtistList);
    EXPECT_EQ((KxStringList{L"Abbey", L"Zoo"}), e.m_albumList);
    EXPECT_EQ((KxStringList{L"Rock", L"jazz"}), e.m_genreList);

    lib->AddContainer(ItemKind::Genre, L"Blues");
    struct Case { int tag; const wchar_t* text; bool readAnew; } cases[] = {
        {KxTagYear, L"2001", false}, {KxTagGenre, L"Blues", true}};
    for (const Case& c : cases) {
        const UINT reads = e.m_knownValuesReads;
        e.ControlsShowReadValues();
        CoTaskMemFree(e.controls.*KxTagFieldOf(c.tag).text);
        e.controls.*KxTagFieldOf(c.tag).text = Dup(c.text);
        EXPECT_EQ(S_OK, e.WriteItemTags(pidls[0]));
        EXPECT_EQ(S_OK, e.LoadItemTags(pidls[0]));
        EXPECT_EQ(c.readAnew ? reads + 1 : reads, e.m_knownValuesReads) << Narrow(c.text);
        EXPECT_EQ(c.readAnew ? 3u : 2u, e.m_genreList.size()) << Narrow(c.text);
    }
    EXPECT_EQ("0:5S 0:4S", Writes());

    e.m_knownValuesStale = TRUE;
    lib->FailOperation(Op::ParseName, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), 1);  // albums
    lib->FailOperation(Op::BindToFolder, E_FAIL, 2);  // the second artist list
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[1]));
    EXPECT_TRUE(e.m_albumList.empty() && e.m_secondArtistList.empty());
    EXPECT_EQ(5u, e.m_artistList.size());
    EXPECT_EQ((KxStringList{L"Blues", L"Rock", L"jazz"}), e.m_genreList);
    KxStringList list{L"kept"};
    lib->FailOperation(Op::EnumItems, E_ACCESSDENIED, 1);
    EXPECT_EQ(E_FAIL, e.ReadKnownValues(KxFolderGenres, list));
    EXPECT_EQ(KxStringList{L"kept"}, list);
    lib->FailOperation(Op::GetItemName, E_FAIL, 1);  // a name that fails is left out
    EXPECT_EQ(S_OK, e.ReadKnownValues(KxFolderAlbums, list));
    EXPECT_EQ(KxStringList{L"Zoo"}, list);
}

TEST_F(Reading, CapabilityWordsPerItemAndTagAndNoneWithoutMemory) {
    lib->SetCapabilities(tracks[1], KxPropTitle, 0);
    lib->SetCapabilities(tracks[1], KxPropRating, kxhost::kWritable);
    ScriptedEditor& e = Started({0, 1, 2});
    std::string words;  // title, album and rating of each item
    for (const auto& record : e.m_itemCapabilities)
        for (int tag : {KxTagTitle, KxTagAlbum, KxTagRating}) words += std::to_string(record.Get()->tags[tag]);
    EXPECT_EQ("373105700", words);
    EXPECT_TRUE(e.AnyItemWritable(KxTagAlbum));   // the first item's
    EXPECT_TRUE(e.AnyItemWritable(KxTagRating));  // the second item's
    EXPECT_FALSE(e.AnyItemWritable(KxTagTagInt12) || e.AnyItemWritable(-1) || e.AnyItemWritable(KxTagCount));

    kxhost::FailTaskMemAllocations(2);  // the second record: without the whole set nothing is writable
    EXPECT_EQ(E_OUTOFMEMORY, e.ReadItemCapabilities(e.m_properties.Get(), given.data(), 3));
    kxhost::ResetTaskMemFailures();
    EXPECT_TRUE(e.m_itemCapabilities.empty());
    EXPECT_FALSE(e.AnyItemWritable(KxTagAlbum));
}

// A host folder that leaves items without an identifier out of the sets it makes objects for, so
// that such an item reaches the editor's reading; the names come from the root it hands out.
struct NullSkippingFolder : IKxContentFolder {
    IKxContentFolder* in;
    explicit NullSkippingFolder(IKxContentFolder* inner) : in(inner) {}
    HRESULT STDMETHODCALLTYPE GetItemObject(IKxContentSite* s, HWND o, UINT n, const KxPcPidl* items, REFIID r,
                                            void** p) override {
        std::vector<KxPcPidl> known;
        std::copy_if(items, items + n, std::back_inserter(known), [](KxPcPidl i) { return i != nullptr; });
        return in->GetItemObject(s, o, static_cast<UINT>(known.size()), known.data(), r, p);
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID r, void** p) override { return in->QueryInterface(r, p); }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE EnumItems(DWORD, DWORD, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemAttributes(UINT, const KxPcPidl*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemName(KxPcPidl, DWORD, LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BindToFolder(KxPcPidl, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ParseName(LPCWSTR, DWORD, KxPidl*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOwnId(KxPidl*) override { return E_NOTIMPL; }
};

TEST_F(Reading, TheStartShowsTheFirstItemThatReadsWithTheFirstAndLastFlagsOfTheView) {
    BOOL isLast = FALSE, isFirst = FALSE;
    EXPECT_EQ(KX_EDITMODE_SINGLE, Started({0}, false, &isLast, &isFirst).m_nMode);
    EXPECT_TRUE(isFirst && !isLast && editor->m_itemCapabilities.empty());  // capabilities only for several
    lib->SetView({tracks[2]}, 0);  // a view of one item
    isLast = isFirst = FALSE;
    Started({2}, false, &isLast, &isFirst);
    EXPECT_TRUE(isFirst && isLast);

    NullSkippingFolder folder(root);
    KxPcPidl items[] = {nullptr, pidls[1], pidls[2]};
    {
        ScriptedEditor e(site, &folder, 3, items);
        EXPECT_EQ(S_OK, e.InitEditTagModel(nullptr, nullptr));
        EXPECT_EQ(KX_EDITMODE_SEVERAL, e.m_nMode);
        EXPECT_EQ("Two", Narrow(e.m_tags.title));
        EXPECT_EQ(std::wstring(L"C:\\Music\\two.mp3"), e.m_itemPath);  // the shown item's path
        ASSERT_EQ(3u, e.m_itemCapabilities.size());
        for (DWORD word : e.m_itemCapabilities[0].Get()->tags) EXPECT_EQ(0u, word);  // the item without an id
    }
    items[1] = nullptr;
    ScriptedEditor none(site, &folder, 2, items);  // no item reads
    EXPECT_EQ(E_POINTER, none.InitEditTagModel(nullptr, nullptr));
    EXPECT_EQ(E_POINTER, none.m_hrResult);
}

TEST_F(Reading, AFailedStartClosesWithAMissingPointerCodeAndTheNamingFolderIsOptional) {
    struct Case { Op op; HRESULT result; };
    for (Case c : {Case{Op::GetItemObject, E_POINTER}, {Op::PrefetchProperties, E_POINTER},
                   {Op::QueryService, E_POINTER}, {Op::QueryItemCursor, E_POINTER}, {Op::QueryContentRoot, S_OK},
                   {Op::QueryContentFolder, S_OK}}) {
        lib->FailOperation(c.op, E_NOINTERFACE, 1);
        ScriptedEditor& e = Editor({0});
        EXPECT_EQ(c.result, e.InitEditTagModel(nullptr, nullptr)) << static_cast<int>(c.op);
        EXPECT_EQ(c.result, e.m_hrResult);
        EXPECT_TRUE(!e.m_librarySource && e.m_artistList.empty());  // given back, or never had
        editor.reset();
        EXPECT_EQ(ownReferences, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
        lib->ResetFailures();
    }
    EXPECT_EQ(E_POINTER, Editor({}).InitEditTagModel(nullptr, nullptr));
    EXPECT_EQ(E_POINTER, ScriptedEditor(nullptr, root, 1, pidls.data()).InitEditTagModel(nullptr, nullptr));
}

TEST_F(Writing, EachEnabledControlByTheRuleOfItsKind) {
    ScriptedEditor& e = Started({0}, true);
    for (const KxPropertyKey& key : {KxPropTitle, KxPropRating, KxPropTagInt12})
        lib->SetCapabilities(tracks[0], key, kxhost::kReadWrite);
    SetText(e.controls.title, L"one");     // case differs: a change
    SetText(e.controls.artist2, L"Beta");  // same: none
    SetText(e.controls.album, nullptr);    // emptied field: no change
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
    EXPECT_EQ("0:1S 0:5S 0:13I 0:12I", Writes());
    EXPECT_EQ(L"one", lib->Value(tracks[0], KxPropTitle)->text);
    EXPECT_EQ(0, lib->Value(tracks[0], KxPropRating)->number);
}

TEST_F(Writing, ArtGoesWithItsChangedMarkAndIsRemovedWithItsRemovedMarkEvenWithoutArt) {
    lib->SetView(tracks, 1);
    ScriptedEditor& e = Started({1}, true);  // no art, no track number, rating 0
    ASSERT_TRUE(e.m_bArtRemoved);
    e.controls.trackNumber = 5;  // against an absent number
    e.controls.tagInt12 = 0;     // the absent number reads as 0: unchanged
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[1]));
    EXPECT_EQ("1:7I 1:artR", Writes());  // the removal comes last
    EXPECT_FALSE(e.m_bArtRemoved);
    e.controls.trackNumber = -1;
    EXPECT_EQ(E_NOTIMPL, e.WriteItemTags(pidls[1]));  // the mark is used up: nothing written
    EXPECT_EQ(S_OK, e.LoadItemTags(pidls[1]));        // reading the item again brings it back
    e.ControlsShowReadValues();
    EXPECT_EQ(S_OK, e.SaveCurrentItem());
    EXPECT_EQ("1:artR", Writes());

    SetArt(e.controls, {9, 8, 7, 6}, KX_TAGFLAGS_WRITABLE);
    EXPECT_EQ(E_NOTIMPL, e.WriteItemTags(pidls[1]));  // bytes without the changed mark: nothing
    e.m_bArtChanged = TRUE;
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[1]));
    EXPECT_FALSE(e.m_bArtChanged);
    EXPECT_EQ("1:artB", Writes());
    EXPECT_EQ((std::vector<BYTE>{9, 8, 7, 6}), lib->Value(tracks[1], KxPropAlbumArt)->bytes);
}

// A tag the item has but whose value could not be read compares as no value: what the user typed
// is written.
TEST_F(Writing, ATypedTextIsWrittenWhereTheTagExistedWithoutAValue) {
    lib->SetValue(tracks[1], KxPropAlbum, kxhost::PropertyValue::String(L"unread"), kxhost::kWritable);
    lib->SetView(tracks, 1);
    ScriptedEditor& e = Started({1}, true);
    ASSERT_EQ(nullptr, e.m_tags.album);
    ASSERT_EQ(static_cast<DWORD>(KX_TAGFLAGS_PRESENT | KX_TAGFLAG_WRITABLE), e.m_tags.albumFlags);
    SetText(e.controls.album, L"Typed");
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[1]));
    EXPECT_EQ("1:2S 1:artR", Writes());
}

TEST_F(Writing, SuccessIfOneWriteSucceededElseTheLastFailure) {
    const HRESULT kSharingViolation = static_cast<HRESULT>(0x80070020u);
    ScriptedEditor& e = Started({0}, true);
    SetText(e.controls.title, L"read-only title");  // refused by the library
    SetText(e.controls.artist, L"Someone");
    EXPECT_EQ(S_OK, e.WriteItemTags(pidls[0]));
    EXPECT_EQ("0:3S", Writes());

    // every write fails: no failure stops the later writes, the last one is the result
    e.controls.rating = 2;
    lib->FailOperation(Op::SetStringProperty, E_OUTOFMEMORY, 1, -1);
    lib->FailOperation(Op::SetIntProperty, kSharingViolation, 1, -1);
    const long stringWrites = lib->Calls(Op::SetStringProperty);
    EXPECT_EQ(kSharingViolation, e.WriteItemTags(pidls[0]));
    EXPECT_EQ(stringWrites + 2, lib->Calls(Op::SetStringProperty));
    lib->FailOperation(Op::RemoveProperties, E_ACCESSDENIED, 1);
    e.m_bArtRemoved = TRUE;
    EXPECT_EQ(E_ACCESSDENIED, e.WriteItemTags(pidls[0]));

    EXPECT_EQ(E_POINTER, e.WriteItemTags(nullptr));
    lib->FailOperation(Op::GetItemObject, E_FAIL, 1);
    EXPECT_EQ(E_POINTER, e.WriteItemTags(pidls[0]));
    EXPECT_EQ("", Writes());
}

TEST_F(Writing, SeveralItemsGetTheTickedValuesThatSomeItemTakesInOneCallAndTheResultIsZero) {
    lib->SetCapabilities(tracks[0], KxPropRating, kxhost::kReadWrite);
    ScriptedEditor& e = Started({0, 1, 2});
    int tag = 0;
    for (LPCWSTR text : {L"never for several", L"Band", L"Guest", L"Live", L"Pop", L"0042"})
        e.controls.*KxTagFieldOf(tag++).text = Dup(text);  // title to year
    e.controls.rating = 0;
    EXPECT_EQ(S_OK, e.WriteAllItems());  // six pairs, the most there are
    EXPECT_EQ("0:3P 0:8P 0:2P 0:4P 0:5P 0:13P 1:3P 1:8P 1:2P 1:4P 1:5P 1:13P 2:3P 2:8P 2:2P 2:4P 2:5P 2:13P",
              Writes());
    EXPECT_EQ(1, lib->Calls(Op::SetProperties));
    EXPECT_EQ(L"0042", lib->Value(tracks[2], KxPropYear)->text);  // the text typed, not a number
    EXPECT_EQ(kxhost::ValueKind::UInt32, lib->Value(tracks[2], KxPropRating)->kind);

    for (int t : {0, 1, 2}) lib->SetCapabilities(tracks[t], KxPropGenre, kxhost::kReadable);  // no item takes it
    ASSERT_EQ(S_OK, e.ReadItemCapabilities(e.m_properties.Get(), given.data(), 3));
    e.controls.rating = -1;
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ("0:3P 0:8P 0:2P 0:5P 1:3P 1:8P 1:2P 1:5P 2:3P 2:8P 2:2P 2:5P", Writes());  // no genre, no rating

    CEditTagModel::FreeTrackTagValues(&e.controls);
    e.controls.rating = -1;
    SetArt(e.controls, {1, 2, 3}, KX_TAGFLAG_WRITABLE);
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ("0:artB 1:artB 2:artB", Writes());
    e.m_deleteArtOnAll = e.m_bArtRemoved = TRUE;
    EXPECT_EQ(S_OK, e.WriteAllItems());  // deleting wins over new bytes
    EXPECT_EQ("0:artR 1:artR 2:artR", Writes());
    EXPECT_FALSE(e.m_deleteArtOnAll || e.m_bArtRemoved);
    // what the library answers is not reported
    lib->FailOperation(Op::SetProperties, E_ACCESSDENIED, 1);
    lib->FailOperation(Op::SetBlobProperty, E_FAIL, 1);
    EXPECT_EQ(S_OK, e.WriteAllItems());
    EXPECT_EQ("", Writes());
}

TEST_F(Stepping, EachStepSavesFirstThenShowsTheNeighbourWithinTheView) {
    ScriptedEditor& e = Started({0}, true);
    SetText(e.controls.artist, L"Changed");
    std::string steps;
    for (BOOL forward : {TRUE, TRUE, TRUE, TRUE, FALSE, FALSE, FALSE, FALSE}) {
        steps += Step(e, forward) + ", ";
        e.ControlsShowReadValues();  // touching nothing: a save only removes missing art
    }
    // past either end the step is refused after the save, and the shown item keeps its place
    EXPECT_EQ("0 @1, 0 @2, 0 L @3, 80004001 L @3, 0 @2, 0 @1, 0 F @0, 80004001 F @0, ", steps);
    EXPECT_EQ("~Two ~Three ~Four ~Three ~Two ~One ", e.shown);
    EXPECT_EQ("0:3S 1:artR 2:artR 3:artR 2:artR 1:artR", Writes());  // each item before its step
}

TEST_F(Stepping, AFailedLookupKeepsTheShownItemAndWithoutACountTheViewBoundsTheStep) {
    ScriptedEditor& e = Started({0}, true);
    lib->FailOperation(Op::CursorGetItemAt, E_UNEXPECTED, 1, 2);
    EXPECT_EQ("8000FFFF L @1", Step(e, TRUE));  // the index stays where the step put it
    EXPECT_EQ("8000FFFF F @0", Step(e, FALSE));
    EXPECT_EQ(tracks[0], lib->ItemOf(e.m_currentItem.Get()));
    EXPECT_EQ("", e.shown);

    lib->SetView(tracks, 2);
    lib->FailOperation(Op::CursorGetCount, E_FAIL, 1, -1);
    BOOL first = FALSE, last = FALSE;
    ScriptedEditor& s = Started({2}, false, &last, &first);
    EXPECT_FALSE(first || last);          // left alone
    EXPECT_EQ(nullptr, s.m_currentItem.Get());  // found when first needed
    EXPECT_EQ("0 @3", Step(s, TRUE));     // the last is not known without the count
    EXPECT_EQ("80070057 L @4", Step(s, TRUE));  // past the end the view refuses
    EXPECT_EQ(tracks[3], lib->ItemOf(s.m_currentItem.Get()));
    EXPECT_EQ("~Four ", s.shown);
}

TEST_F(Stepping, WithoutAConnectionOrACurrentItemNothingIsSaved) {
    ScriptedEditor& e = Editor({0});
    EXPECT_EQ("80004003 @0", Step(e, TRUE));  // not connected: the flags are cleared
    lib->SetView(tracks, -1);
    ASSERT_EQ(S_OK, e.ConnectNamespace());
    EXPECT_EQ("80004005 F L @0", Step(e, TRUE));
    EXPECT_EQ(E_POINTER, e.SaveCurrentItem());
    EXPECT_EQ(-1, e.m_currentIndex);
    EXPECT_EQ("", Writes());
    lib->SetView(tracks, 2);
    ASSERT_EQ(S_OK, e.ConnectNamespace());  // a new connection sees the new view
    EXPECT_EQ(S_OK, e.MoveToItem(nullptr, nullptr, FALSE));  // out flags may be null
    EXPECT_EQ(1, e.m_currentIndex);
}

}  // namespace
