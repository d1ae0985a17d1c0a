#include "tests/unit/tags/tag_model_fixture.h"

#include <cstring>
#include <cwchar>

namespace tagtest {

LPWSTR Dup(LPCWSTR text) {
    if (!text) return nullptr;
    size_t bytes = (std::wcslen(text) + 1) * sizeof(WCHAR);
    auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc(bytes));
    if (copy) std::memcpy(copy, text, bytes);
    return copy;
}

BYTE* DupBytes(const std::vector<BYTE>& bytes) {
    auto* copy = static_cast<BYTE*>(CoTaskMemAlloc(bytes.size()));
    if (copy) std::memcpy(copy, bytes.data(), bytes.size());
    return copy;
}

void SetText(LPWSTR& slot, LPCWSTR text) {
    CoTaskMemFree(slot);
    slot = Dup(text);
}

void ScriptedEditor::GetTagsFromControls(_tagTrackTagValues* record) {
    *record = controls;
    for (int tag = 0; tag < KxTagCount; ++tag)
        if (KxTagFieldOf(tag).text) record->*KxTagFieldOf(tag).text = Dup(controls.*KxTagFieldOf(tag).text);
    record->art = controls.art ? DupBytes({controls.art, controls.art + controls.artSize}) : nullptr;
}

void ScriptedEditor::ControlsShowReadValues() {
    FreeTrackTagValues(&controls);
    controls = m_tags;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        if (field.text) controls.*field.text = Dup(m_tags.*field.text);
        controls.*field.flags = KX_TAGFLAGS_WRITABLE;
    }
    // the single-item dialog hands art only when it changed
    controls.art = nullptr;
    controls.artSize = 0;
    controls.artFlags = 0;
}

void TagModelTest::SetUp() {
    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    blocksBefore = kxhost::LiveTaskMemBlocks();
    lib = InMemoryLibrary::Create();

    for (LPCWSTR artist : {L"Zed", L"alpha", L"Beta", L"Beta"}) lib->AddContainer(ItemKind::Artist, artist);
    for (LPCWSTR genre : {L"Rock", L"jazz"}) lib->AddContainer(ItemKind::Genre, genre);
    ItemId album = lib->AddContainer(ItemKind::Album, L"Abbey");
    lib->AddContainer(ItemKind::Album, L"Zoo");
    for (int i = 0; i < 4; ++i) {
        tracks.push_back(lib->AddItem(ItemKind::Track, L"track " + std::to_wstring(i)));
        lib->AddMember(album, tracks.back());
        pidls.push_back(lib->NewPidl(tracks.back()));
    }
    // Track 0: all ten tags; title, rating and number can only be read.
    ItemId t0 = tracks[0];
    lib->SetString(t0, KxPropTitle, L"One", kxhost::kReadable);
    lib->SetInt(t0, KxPropTrackNumber, 3);
    lib->SetInt(t0, KxPropRating, 4, kxhost::kReadable);
    lib->SetInt(t0, KxPropTagInt12, 1234567, kxhost::kReadable);
    lib->SetValue(t0, KxPropAlbumArt, kxhost::PropertyValue::Blob({0xFF, 0xD8, 0x01}));
    // Track 1: title, artist, rating 0, no art, no track number. Tracks 2 and 3: a title each.
    lib->SetInt(tracks[1], KxPropRating, 0);
    struct Text { int track; const KxPropertyKey* key; LPCWSTR text; };
    for (Text t : {Text{0, &KxPropArtist, L"Zed"}, {0, &KxPropArtist2, L"Beta"}, {0, &KxPropAlbum, L"Abbey"},
                   {0, &KxPropGenre, L"Rock"}, {0, &KxPropYear, L"1999"}, {0, &KxPropLocation, L"Music"},
                   {0, &KxPropFilePath, L"C:\\Music\\one.mp3"}, {1, &KxPropTitle, L"Two"}, {1, &KxPropArtist, L"alpha"},
                   {1, &KxPropLocation, L"Music"}, {1, &KxPropFilePath, L"C:\\Music\\two.mp3"},
                   {2, &KxPropTitle, L"Three"}, {3, &KxPropTitle, L"Four"}})
        lib->SetString(tracks[static_cast<size_t>(t.track)], *t.key, t.text);
    lib->SetView(tracks, 0);
    ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
    ASSERT_EQ(S_OK, lib->CreateSite(&site));
    ownReferences = lib->OutstandingReferences();
}

void TagModelTest::TearDown() {
    editor.reset();
    if (site) site->Release();
    if (root) root->Release();
    for (KxPidl p : pidls) CoTaskMemFree(p);
    kxhost::ResetTaskMemFailures();
    EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
    EXPECT_EQ(0, lib->LiveObjects());
    lib.reset();
    EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks());
}

ScriptedEditor& TagModelTest::Editor(std::vector<int> which) {
    given.clear();
    for (int i : which) given.push_back(i < 0 ? nullptr : pidls[static_cast<size_t>(i)]);
    editor = std::make_unique<ScriptedEditor>(site, root, static_cast<UINT>(given.size()), given.data());
    return *editor;
}

ScriptedEditor& TagModelTest::StartedEditor(std::vector<int> which, BOOL* isLast, BOOL* isFirst) {
    ScriptedEditor& e = Editor(std::move(which));
    EXPECT_EQ(S_OK, e.InitEditTagModel(isLast, isFirst));
    return e;
}

ScriptedEditor& TagModelTest::Untouched(int track) {
    ScriptedEditor& e = StartedEditor({track});
    e.ControlsShowReadValues();
    return e;
}

Log TagModelTest::Writes() const {
    Log out;
    for (const WriteRecord& w : lib->Writes()) {
        int track = -1;
        for (size_t i = 0; i < tracks.size(); ++i)
            if (tracks[i] == w.item) track = static_cast<int>(i);
        out.push_back({track, IsEqualGUID(w.key.fmtid, KxPropAlbumArt.fmtid) ? 100 : w.key.pid, w.via});
    }
    return out;
}

}  // namespace tagtest
