// The multiple-item tag dialog without its window, over the in-memory library: which fields the
// items allow, which box each change ticks, and what OK writes to all items (the library's write
// log), with a read-only item among writable ones and a first item that has no tags.
#include "tags/multiple_tag_model.h"
#include "tests/unit/tags/fake_multi_controls.h"
#include "tests/unit/tags/tag_library_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::ItemKind;
using kxtest::BoxOf;
using kxtest::FakeMultiControls;
typedef CMultipleTagModel M;

// Four tracks. 0: no tags at all. 1: every tag writable, with art. 2: a read-only item whose
// tags are readable only. 3: writable, a genre that only it can take, and a year.
class MultipleTagTest : public kxtest::TagLibraryTest {
protected:
    void SetUp() override {
        TagLibraryTest::SetUp();
        for (LPCWSTR name : {L"Zed", L"Beta"}) lib->AddContainer(ItemKind::Artist, name);
        lib->AddContainer(ItemKind::Album, L"Abbey");
        typedef kxhost::PropertyValue V;
        AddTracks({L"t", L"t", L"t", L"t"},
                  {{1, &KxPropArtist, V::String(L"Zed"), rw}, {1, &KxPropArtist2, V::String(L"Newcomer"), rw},
                   {1, &KxPropAlbum, V::String(L"Abbey"), rw}, {1, &KxPropGenre, V::String(L"Rock"), r},
                   {1, &KxPropYear, V::String(L"1985"), rw}, {1, &KxPropRating, V::Int(9), rw},
                   {1, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 1}), rw},
                   {2, &KxPropArtist, V::String(L"Beta"), r}, {2, &KxPropAlbum, V::String(L"Abbey"), r},
                   {2, &KxPropRating, V::Int(2), r}, {2, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 2, 2}), r},
                   {3, &KxPropArtist, V::String(L"Zed"), rw}, {3, &KxPropAlbum, V::String(L"Abbey"), rw},
                   {3, &KxPropGenre, V::String(L"Pop"), rw}, {3, &KxPropYear, V::String(L"2000"), rw},
                   {3, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 3}), rw}});
        lib->SetReadOnly(tracks[2], true);
    }
    void TearDown() override {
        model.reset();
        TagLibraryTest::TearDown();
    }
    // The dialog opened on the tracks named by their indexes and shown.
    M& Open(std::vector<int> which) {
        model.reset();
        ui = FakeMultiControls();
        items.clear();
        for (int i : which) items.push_back(pidls[static_cast<size_t>(i)]);
        model = std::make_unique<M>(ui, site, root, static_cast<UINT>(items.size()), items.data());
        EXPECT_EQ(S_OK, model->InitDialog());
        model->OnShowWindow(true);
        ui.log.clear();
        lib->ClearWrites();
        return *model;
    }
    void Type(int id, const std::wstring& text) {
        ui.c[id].text = text;
        model->OnFieldChanged(id);
    }

    std::vector<KxPcPidl> items;
    FakeMultiControls ui;
    std::unique_ptr<M> model;
};

TEST_F(MultipleTagTest, FirstItemIsShownAndWritabilityIsMergedOverAllItems) {
    struct Case { std::vector<int> items; const char* fields; } cases[] = {
        // a rating of 9 shows 0; the genre only some item can take is enabled
        {{1, 3}, "Zed Newcomer Abbey Rock 1985 0 111"},
        {{1, 2}, "Zed Newcomer Abbey Rock/d 1985 0 111"},
        // an item without tags shows empty fields, enabled by what the others allow; the art
        // box waits for an album
        {{0, 3}, " /d    0/d 000"},
        // nothing writable: the values of the first item are shown all the same
        {{2, 2}, "Beta/d /d Abbey/d /d /d 2/d 000"},
    };
    for (const Case& c : cases) {
        Open(c.items);
        EXPECT_EQ(c.fields, ui.Fields()) << c.fields;
        EXPECT_EQ("", ui.Ticked()) << c.fields;
    }
    Open({1, 3});
    EXPECT_EQ(L"1985", ui.c[KX_IDC_MTAG_YEAR].list.front());  // put before 1990
    EXPECT_EQ(19u, ui.c[KX_IDC_MTAG_YEAR].list.size());
    EXPECT_EQ(L"Beta", ui.c[KX_IDC_MTAG_ARTIST].list.front());
}

// (The Wine test ticks every field through the real controls; these are the model's own cases.)
TEST_F(MultipleTagTest, EachChangeTicksOnlyItsOwnBox) {
    const BYTE jpeg[] = {0xFF, 0xD8, 0xFF, 9};
    struct Case { const char* what; std::function<void(M&)> act; const char* ticked; } cases[] = {
        {"album typed", [&](M&) { Type(KX_IDC_MTAG_ALBUM, L"A"); }, "10011 "},
        {"year typed", [&](M&) { Type(KX_IDC_MTAG_YEAR, L"2"); }, "10026 "},
        {"artist chosen", [](M& m) { m.OnSelectionChanged(KX_IDC_MTAG_ARTIST); }, "10006 "},
        {"slider moving", [](M& m) { m.OnRatingScroll(5); }, ""},
        {"slider let go", [](M& m) { m.OnRatingScroll(4); }, "10023 "},
        {"art taken", [&](M& m) { m.SetNewArt(jpeg, sizeof jpeg); }, "10017 "},
        {"art removed", [](M& m) { m.OnRemoveArt(); }, "10017 "},
        // an emptied album takes the art away with it
        {"album emptied", [&](M&) { Type(KX_IDC_MTAG_ALBUM, L""); }, "10011 10017 "},
    };
    for (const Case& c : cases) {
        Open({1, 3});
        c.act(*model);
        EXPECT_EQ(c.ticked, ui.Ticked()) << c.what;
    }
    // choosing an album from the list brings its text in at once: the art controls follow it
    Open({0, 3});
    ui.c[KX_IDC_MTAG_ALBUM].selected = 0;
    model->OnSelectionChanged(KX_IDC_MTAG_ALBUM);
    EXPECT_EQ(L"Abbey", ui.c[KX_IDC_MTAG_ALBUM].text);
    EXPECT_TRUE(ui.c[KX_IDC_MTAG_ART_CHECK].enabled && ui.c[KX_IDC_MTAG_BROWSE].enabled);
}

TEST_F(MultipleTagTest, OkWritesOnlyTheTickedFieldsToEveryItem) {
    const BYTE jpeg[] = {0xFF, 0xD8, 0xFF, 9};
    struct Case { const char* what; std::vector<int> items; std::function<void(M&)> act; const char* writes; } cases[] = {
        {"nothing ticked", {0, 1, 3}, [](M&) {}, ""},
        {"artist only", {0, 1, 3}, [&](M&) { Type(KX_IDC_MTAG_ARTIST, L"Beta"); }, "0:3 1:3 3:3"},
        {"ticked but empty", {1, 3}, [&](M&) { Type(KX_IDC_MTAG_ARTIST, L""); }, ""},
        {"a value unlike the others' unticked", {1, 3}, [&](M&) { ui.c[KX_IDC_MTAG_GENRE].text = L"Jazz"; }, ""},
        {"rating 0", {1, 3}, [&](M& m) { ui.c[KX_IDC_MTAG_RATING].pos = 0; m.OnRatingScroll(8); }, "1:13 3:13"},
        {"year and genre, in record order", {0, 3},
         [&](M&) { Type(KX_IDC_MTAG_YEAR, L"2001"); Type(KX_IDC_MTAG_GENRE, L"Jazz"); }, "0:4 0:5 3:4 3:5"},
        {"art box ticked, art unchanged: the first item's art", {1, 3},
         [&](M&) { ui.c[KX_IDC_MTAG_ART_CHECK].checked = true; }, "1:art 3:art"},
        {"new art", {1, 3}, [&](M& m) { m.SetNewArt(jpeg, sizeof jpeg); }, "1:art 3:art"},
        {"art removed", {1, 3}, [](M& m) { m.OnRemoveArt(); }, "1:artR 3:artR"},
        {"album emptied", {1, 3}, [&](M&) { Type(KX_IDC_MTAG_ALBUM, L""); }, "1:artR 3:artR"},
        {"art box ticked with no art to give", {0, 3}, [&](M&) { ui.c[KX_IDC_MTAG_ART_CHECK].checked = true; },
         "0:artR 3:artR"},
    };
    for (const Case& c : cases) {
        for (size_t t : {1, 3}) lib->SetValue(tracks[t], KxPropAlbumArt, kxhost::PropertyValue::Blob({0xFF, 0xD8, 1}));
        Open(c.items);
        c.act(*model);
        const long calls = lib->Calls(kxhost::Op::SetProperties);
        EXPECT_EQ(M::OkOutcome::Close, model->OnOK()) << c.what;
        EXPECT_EQ(1, lib->Calls(kxhost::Op::SetProperties) - calls) << c.what << ": one call for all items";
        EXPECT_EQ(c.writes, Writes()) << c.what;
        EXPECT_EQ(S_OK, model->m_hrResult) << c.what;
    }
    // the new art's bytes, not the first item's, went to the second item
    Open({1, 3});
    model->SetNewArt(jpeg, sizeof jpeg);
    model->OnOK();
    EXPECT_EQ(std::vector<BYTE>(jpeg, jpeg + sizeof jpeg), lib->Value(tracks[3], KxPropAlbumArt)->bytes);
}

TEST_F(MultipleTagTest, AReadOnlyItemAmongWritableOnesIsTheHostsToRefuse) {
    Open({1, 2, 3});
    Type(KX_IDC_MTAG_ARTIST, L"Beta");
    EXPECT_EQ(M::OkOutcome::Close, model->OnOK());
    // the write went to all three at once; this library takes all or nothing
    EXPECT_EQ(1, lib->Calls(kxhost::Op::SetProperties));
    EXPECT_EQ("", Writes());
    EXPECT_EQ(L"Zed", lib->Value(tracks[1], KxPropArtist)->text);
    EXPECT_EQ(S_OK, model->m_hrResult) << "the host sees success";
}

TEST_F(MultipleTagTest, OkChecksHoldTheDialog) {
    struct Case { const char* what; std::vector<int> items; int id; std::wstring text; const char* log; const char* writes; }
    cases[] = {
        {"long artist", {1, 3}, KX_IDC_MTAG_ARTIST, std::wstring(256, L'x'), "length10031 ", ""},
        {"a letter in a shown year", {1, 3}, KX_IDC_MTAG_YEAR, L"19a", "select10028 digits10028 ", ""},
        // a year that was empty when shown is not checked
        {"a letter in an empty year", {0, 3}, KX_IDC_MTAG_YEAR, L"x", "", "0:5 3:5"},
    };
    for (const Case& c : cases) {
        Open(c.items);
        ui.c[c.id].text = c.text;  // pasted
        ui.c[BoxOf(c.id)].checked = true;
        const bool stays = *c.log != 0;
        EXPECT_EQ(stays ? M::OkOutcome::Stay : M::OkOutcome::Close, model->OnOK()) << c.what;
        EXPECT_EQ(c.log, ui.log) << c.what;
        EXPECT_EQ(c.writes, Writes()) << c.what;
    }
}

}  // namespace
