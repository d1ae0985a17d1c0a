#include "tests/unit/tags/tag_model_fixture.h"

#include <cstring>
#include <cwchar>
#include <ostream>

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

void CopyRecord(const _tagTrackTagValues& from, _tagTrackTagValues* to) {
    *to = from;
    for (int tag = 0; tag < KxTagCount; ++tag) {
        const KxTagField& field = KxTagFieldOf(tag);
        if (field.text) to->*field.text = Dup(from.*field.text);
    }
    to->art = from.art ? DupBytes(std::vector<BYTE>(from.art, from.art + from.artSize)) : nullptr;
}

ScriptedEditor::~ScriptedEditor() { FreeTrackTagValues(&controls); }

void ScriptedEditor::ControlsShowReadValues() {
    FreeTrackTagValues(&controls);
    CopyRecord(m_tags, &controls);
    for (int tag = 0; tag < KxTagCount; ++tag) controls.*KxTagFieldOf(tag).flags = KX_TAGFLAGS_WRITABLE;
    // the single-item dialog hands art only when it changed
    CoTaskMemFree(controls.art);
    controls.art = nullptr;
    controls.artSize = 0;
    controls.artFlags = 0;
}

void ScriptedEditor::GetTagsFromControls(_tagTrackTagValues* record) { CopyRecord(controls, record); }
void ScriptedEditor::GetChangedTags(_tagTrackTagValues* record) { CopyRecord(controls, record); }

void ScriptedEditor::SetTagsToControls(const _tagTrackTagValues* record) {
    ++shown;
    shownTitle = record && record->title ? record->title : L"";
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
        ItemId t = lib->AddItem(ItemKind::Track, L"track " + std::to_wstring(i));
        lib->AddMember(album, t);
        tracks.push_back(t);
        pidls.push_back(lib->NewPidl(t));
    }
    // Track 0: all ten tags; title, rating and number can only be read.
    ItemId t0 = tracks[0];
    lib->SetString(t0, KxPropTitle, L"One", kxhost::kReadable);
    lib->SetString(t0, KxPropArtist, L"Zed");
    lib->SetString(t0, KxPropArtist2, L"Beta");
    lib->SetString(t0, KxPropAlbum, L"Abbey");
    lib->SetString(t0, KxPropGenre, L"Rock");
    lib->SetString(t0, KxPropYear, L"1999");
    lib->SetInt(t0, KxPropTrackNumber, 3);
    lib->SetInt(t0, KxPropRating, 4, kxhost::kReadable);
    lib->SetInt(t0, KxPropTagInt12, 1234567, kxhost::kReadable);
    lib->SetValue(t0, KxPropAlbumArt, PropertyValue::Blob({0xFF, 0xD8, 0x01}));
    lib->SetString(t0, KxPropLocation, L"Music");
    lib->SetString(t0, KxPropFilePath, L"C:\\Music\\one.mp3");
    // Track 1: title, artist, rating 0, no art, no track number.
    lib->SetString(tracks[1], KxPropTitle, L"Two");
    lib->SetString(tracks[1], KxPropArtist, L"alpha");
    lib->SetInt(tracks[1], KxPropRating, 0);
    lib->SetString(tracks[1], KxPropLocation, L"Music");
    lib->SetString(tracks[1], KxPropFilePath, L"C:\\Music\\two.mp3");
    // Tracks 2 and 3: a title each.
    lib->SetString(tracks[2], KxPropTitle, L"Three");
    lib->SetString(tracks[3], KxPropTitle, L"Four");

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

int TagModelTest::TrackIndex(ItemId id) const {
    for (size_t i = 0; i < tracks.size(); ++i)
        if (tracks[i] == id) return static_cast<int>(i);
    return -1;
}

std::vector<Written> TagModelTest::Writes() const {
    std::vector<Written> out;
    for (const WriteRecord& w : lib->Writes()) {
        DWORD pid = IsEqualGUID(w.key.fmtid, KxPropAlbumArt.fmtid) ? 100 : w.key.pid;
        out.push_back({TrackIndex(w.item), pid, w.via});
    }
    return out;
}

void PrintTo(const Written& w, std::ostream* os) {
    static const char* const kVia[] = {"String", "Int", "Blob", "Properties", "Remove"};
    *os << "{track " << w.track << ", key " << w.pid << ", " << kVia[w.via] << "}";
}

}  // namespace tagtest
