// The single-item tag dialog without its window, over the in-memory library: fake controls keyed
// by id that report their changes as the real ones do, the write log of the library, and the
// picture menu's table.
#include "tags/art_menu_rules.h"
#include "tags/single_tag_model.h"
#include "tests/unit/tags/tag_library_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using kxhost::ItemKind;

inline std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

// The dialog's controls as a table. A text set in an edit control is reported to the model, as
// the platform's edit controls do before SetWindowText returns; combo boxes report only typing.
class FakeControls : public IEditTagControls {
public:
    struct Control {
        std::wstring text;
        bool enabled = true;
        std::vector<std::wstring> list;
        int selected = -1;
        int pos = 0;
    };
    CSingleTagModel* model = nullptr;
    std::map<int, Control> controls;
    int focus = 0;
    std::string log;  // warnings, selections, pictures and messages, in order

    FakeControls() {
        for (int id : {KX_IDC_TAG_TITLE, KX_IDC_TAG_ARTIST, KX_IDC_TAG_ARTIST2, KX_IDC_TAG_ALBUM, KX_IDC_TAG_GENRE,
                       KX_IDC_TAG_YEAR, KX_IDC_TAG_TRACK, KX_IDC_TAG_RATING, KX_IDC_TAG_NUMBER, KX_IDC_TAG_BROWSE,
                       KX_IDC_TAG_REMOVE, KX_IDC_TAG_PREV, KX_IDC_TAG_NEXT})
            controls[id];
    }
    // What the user types or pastes: the text, then the change notification.
    void Type(int id, const std::wstring& text) {
        controls[id].text = text;
        model->OnFieldChanged(id);
    }

    HWND DialogWindow() override { return nullptr; }
    bool Exists(int id) override { return controls.count(id) != 0; }
    bool GetText(int id, std::wstring* text) override {
        if (!Exists(id)) return false;
        *text = controls[id].text;
        return true;
    }
    void SetText(int id, const std::wstring& text) override {
        controls[id].text = text;
        if (model && (id == KX_IDC_TAG_TITLE || id == KX_IDC_TAG_NUMBER)) model->OnFieldChanged(id);
    }
    void Enable(int id, bool enable) override { controls[id].enabled = enable; }
    bool IsEnabled(int id) override { return Exists(id) && controls[id].enabled; }
    void Focus(int id) override { focus = id; }
    int FocusedControl() override { return focus; }
    void SelectAllText(int id, bool edit) override { log += "select" + std::to_string(id) + (edit ? "e " : "c "); }
    void ResetList(int id) override { controls[id].list.clear(); }
    void AddToList(int id, const std::wstring& text) override { controls[id].list.push_back(text); }
    void InsertInList(int id, int index, const std::wstring& text) override {
        auto& list = controls[id].list;
        list.insert(list.begin() + index, text);
    }
    void SelectInList(int id, int index) override {
        controls[id].selected = index;
        controls[id].text = controls[id].list.at(static_cast<size_t>(index));
    }
    void RemoveFromList(int id, int index) override {
        auto& list = controls[id].list;
        list.erase(list.begin() + index);
    }
    void SetList(int id, const std::vector<std::wstring>& values) override {
        fills += std::to_string(id) + " ";
        IEditTagControls::SetList(id, values);
    }
    std::string fills;  // the boxes filled whole, in order
    int GetSliderPos(int id) override { return controls[id].pos; }
    void SetSliderPos(int id, int pos) override { controls[id].pos = pos; }
    void ShowArtBytes(const BYTE*, ULONG size) override { log += "art" + std::to_string(size) + " "; }
    void ShowDefaultArt() override { log += "noart "; }
    bool ShowWarning(KxFieldWarning which, int id, const std::wstring& text, const std::wstring&) override {
        log += (which == KxFieldWarning::Digits ? "digits" : "length") + std::to_string(id) + "[" + Narrow(text) + "] ";
        return true;
    }
    void HideWarning(KxFieldWarning which) override { log += which == KxFieldWarning::Digits ? "hide " : "hideL "; }
    std::wstring ResourceString(UINT id) override { return id == KX_IDS_TAG_WARNING_LENGTH ? L"max %d" : L"s"; }
    void ShowMessage(UINT text, UINT caption) override {
        log += "message" + std::to_string(text) + "/" + std::to_string(caption) + " ";
    }

    // "text/d" per control in id order ("d" when disabled), for the ten tag fields.
    std::string Fields() {
        std::string out;
        for (int id : {KX_IDC_TAG_TITLE, KX_IDC_TAG_ARTIST, KX_IDC_TAG_ARTIST2, KX_IDC_TAG_ALBUM, KX_IDC_TAG_GENRE,
                       KX_IDC_TAG_YEAR, KX_IDC_TAG_TRACK, KX_IDC_TAG_NUMBER}) {
            out += Narrow(controls[id].text) + (controls[id].enabled ? " " : "/d ");
        }
        out += std::to_string(controls[KX_IDC_TAG_RATING].pos) + (controls[KX_IDC_TAG_RATING].enabled ? "" : "/d");
        return out;
    }
    std::string Buttons() {
        std::string out;
        for (int id : {KX_IDC_TAG_BROWSE, KX_IDC_TAG_REMOVE, KX_IDC_TAG_PREV, KX_IDC_TAG_NEXT})
            out += controls[id].enabled ? "1" : "0";
        return out + (focus ? " focus" + std::to_string(focus) : "");
    }
    std::string TakeLog() {
        std::string out = log;
        log.clear();
        return out;
    }
};

// Three tracks in the view. Track 0: all tags writable, title read-only, art; track 1: year
// "-5", track number -2, no art; track 2: a rating of 9 and year 1985.
class SingleTagTest : public kxtest::TagLibraryTest {
protected:
    void SetUp() override {
        TagLibraryTest::SetUp();
        for (LPCWSTR name : {L"Zed", L"Beta"}) lib->AddContainer(ItemKind::Artist, name);
        lib->AddContainer(ItemKind::Album, L"Abbey");
        typedef kxhost::PropertyValue V;
        AddTracks({L"t", L"t", L"t"},
                  {{0, &KxPropTitle, V::String(L"One"), r}, {0, &KxPropArtist, V::String(L"Zed"), rw},
                   {0, &KxPropArtist2, V::String(L"Newcomer"), rw}, {0, &KxPropAlbum, V::String(L"Abbey"), rw},
                   {0, &KxPropGenre, V::String(L"Rock"), r}, {0, &KxPropYear, V::String(L"1999"), rw},
                   {0, &KxPropTrackNumber, V::Int(3), rw}, {0, &KxPropRating, V::Int(4), rw},
                   {0, &KxPropTagInt12, V::Int(12), rw}, {0, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 1}), rw},
                   {1, &KxPropTitle, V::String(L"Two"), rw}, {1, &KxPropAlbum, V::String(L"Abbey"), rw},
                   {1, &KxPropYear, V::String(L"-5"), rw}, {1, &KxPropTrackNumber, V::Int(-2), rw},
                   {1, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 2}), rw},
                   {2, &KxPropTitle, V::String(L"Three"), rw}, {2, &KxPropYear, V::String(L"1985"), rw},
                   {2, &KxPropTrackNumber, V::Int(42), rw}, {2, &KxPropRating, V::Int(9), rw},
                   {2, &KxPropAlbumArt, V::Blob({0xFF, 0xD8, 3, 4}), rw}});
    }
    void TearDown() override {
        model.reset();
        TagLibraryTest::TearDown();
    }
    // The dialog opened on track `index` and shown.
    CSingleTagModel& Open(int index) {
        lib->SetView(tracks, index);
        model = std::make_unique<CSingleTagModel>(ui, site, root, 1, &pidls[static_cast<size_t>(index)]);
        ui.model = model.get();
        EXPECT_EQ(S_OK, model->InitDialog());
        model->OnShowWindow(true);
        ui.TakeLog();
        return *model;
    }
    FakeControls ui;
    std::unique_ptr<CSingleTagModel> model;
};

TEST(EditTagChecks, KeystrokeRuleTellsTypingFromPasteAndEditingKeys) {
    FakeControls ui;
    CSingleTagModel m(ui, nullptr, nullptr, 1, nullptr);
    struct Case { UINT vk; bool ctrl; BOOL restore; } cases[] = {
        {'A', false, TRUE}, {'V', false, TRUE}, {'V', true, FALSE}, {0x76, true, FALSE}, {'C', true, TRUE},
        {8, false, FALSE},  {9, false, FALSE},  {27, false, FALSE}, {46, false, FALSE},  {37, false, TRUE},
    };
    for (const Case& c : cases) {
        m.OnKeyDown(c.vk, c.ctrl);
        EXPECT_EQ(c.restore, m.m_restoreOverflow) << c.vk << " " << c.ctrl;
    }
}

TEST_F(SingleTagTest, ControlsShowTheRecordWithListsAndEnabling) {
    Open(0);
    EXPECT_EQ("One/d Zed Newcomer Abbey Rock/d 1999 3 12 4", ui.Fields());
    EXPECT_EQ("1101 focus1028", ui.Buttons());
    // eighteen years and thirty track numbers
    EXPECT_EQ(18u, ui.controls[KX_IDC_TAG_YEAR].list.size());
    EXPECT_EQ(L"2007", ui.controls[KX_IDC_TAG_YEAR].list.back());
    EXPECT_EQ(30u, ui.controls[KX_IDC_TAG_TRACK].list.size());
}

TEST_F(SingleTagTest, OkWritesExactlyTheChangedTags) {
    struct Case { const char* name; int id; std::wstring text; int rating; const char* writes; HRESULT hr; } cases[] = {
        {"nothing", 0, L"", 4, "", E_NOTIMPL},
        {"artist and rating", KX_IDC_TAG_ARTIST, L"Beta", 2, "0:3 0:13", S_OK},
        {"year", KX_IDC_TAG_YEAR, L"2001", 4, "0:5", S_OK},
        {"emptied track", KX_IDC_TAG_TRACK, L"", 4, "0:7", S_OK},
        {"number", KX_IDC_TAG_NUMBER, L"77", 4, "0:12", S_OK},
        {"same text again", KX_IDC_TAG_ALBUM, L"Abbey", 4, "", E_NOTIMPL},
    };
    for (const Case& c : cases) {
        Open(0);
        if (c.id) ui.Type(c.id, c.text);
        ui.controls[KX_IDC_TAG_RATING].pos = c.rating;
        EXPECT_EQ(CSingleTagModel::OkOutcome::Close, model->OnOK()) << c.name;
        EXPECT_EQ(c.writes, Writes()) << c.name;
        EXPECT_EQ(c.hr, model->m_hrResult) << c.name;
        lib->SetString(tracks[0], KxPropArtist, L"Zed");
        lib->SetValue(tracks[0], KxPropRating, kxhost::PropertyValue::Int(4));
        lib->SetValue(tracks[0], KxPropYear, kxhost::PropertyValue::String(L"1999"));
        lib->SetValue(tracks[0], KxPropTrackNumber, kxhost::PropertyValue::Int(3));
        lib->SetValue(tracks[0], KxPropTagInt12, kxhost::PropertyValue::Int(12));
        lib->ClearWrites();
    }
}

TEST_F(SingleTagTest, OkChecksInTheirOrderAndStaysOnTheFirstFailure) {
    const std::wstring long256(256, L'x');
    struct Case { std::vector<std::pair<int, std::wstring>> edits; const char* log; } cases[] = {
        // the title is checked first, the digits only after all lengths
        {{{KX_IDC_TAG_YEAR, L"19a9"}, {KX_IDC_TAG_GENRE, long256}}, "length1010[max 255] "},
        {{{KX_IDC_TAG_NUMBER, L"1x"}, {KX_IDC_TAG_TRACK, L"t"}}, "select1022c digits1022[s] "},
        {{{KX_IDC_TAG_NUMBER, L"-3"}}, "select1023e digits1023[s] "},
        {{{KX_IDC_TAG_ARTIST, std::wstring(255, L'y')}}, ""},  // 255 characters are valid
    };
    for (const auto& c : cases) {
        Open(0);
        ui.controls[KX_IDC_TAG_GENRE].enabled = true;
        for (const auto& edit : c.edits) ui.controls[edit.first].text = edit.second;  // pasted, unchecked
        const bool stays = *c.log != 0;
        EXPECT_EQ(stays ? CSingleTagModel::OkOutcome::Stay : CSingleTagModel::OkOutcome::Close, model->OnOK()) << c.log;
        EXPECT_EQ(c.log, ui.TakeLog());
        EXPECT_EQ(stays ? "" : "0:3", Writes()) << c.log;
    }
}

TEST_F(SingleTagTest, TypedCharacterPastTheLimitIsTakenBackAPasteStays) {
    Open(0);
    const std::wstring at255(255, L'a');
    model->OnKeyDown('A', false);
    ui.Type(KX_IDC_TAG_ARTIST, at255);
    EXPECT_EQ("", ui.TakeLog());
    model->OnKeyDown('A', false);
    ui.Type(KX_IDC_TAG_ARTIST, at255 + L"a");
    EXPECT_EQ(at255, ui.controls[KX_IDC_TAG_ARTIST].text);  // the 256th character vanishes
    EXPECT_EQ("length1004[max 255] ", ui.TakeLog());
    EXPECT_TRUE(model->m_checkLength);

    // a paste past the limit stays, warned of, and holds OK up
    model->OnKeyDown('V', true);
    ui.Type(KX_IDC_TAG_ARTIST, at255 + L"bb");
    EXPECT_EQ(257u, ui.controls[KX_IDC_TAG_ARTIST].text.size());
    EXPECT_EQ("length1004[max 255] ", ui.TakeLog());
    EXPECT_EQ(CSingleTagModel::OkOutcome::Stay, model->OnOK());
    EXPECT_EQ("", Writes());

    // one last text for the dialog: a typed overflow in another field brings back the text
    // the last check saw, wherever it was seen
    ui.Type(KX_IDC_TAG_ARTIST, L"Zed");
    ui.Type(KX_IDC_TAG_ARTIST2, L"short");
    model->OnKeyDown('B', false);
    ui.Type(KX_IDC_TAG_ARTIST, std::wstring(300, L'b'));
    EXPECT_EQ(L"short", ui.controls[KX_IDC_TAG_ARTIST].text);
}

TEST_F(SingleTagTest, DigitsWarningWhileTypingIsOnlyTakenAwayAtItsOwnField) {
    Open(0);
    ui.controls[KX_IDC_TAG_YEAR].text = L"19a9";
    EXPECT_EQ(0, model->CheckDigits(KX_IDC_TAG_YEAR, false));
    ui.TakeLog();
    ui.Type(KX_IDC_TAG_TRACK, L"4");
    EXPECT_EQ("", ui.TakeLog());
    ui.Type(KX_IDC_TAG_YEAR, L"19b9");  // typing does not check the digits, it hides the warning
    EXPECT_EQ("hide ", ui.TakeLog());
    EXPECT_EQ(1, model->CheckDigits(KX_IDC_TAG_TRACK, false));
}

TEST_F(SingleTagTest, StepsSaveFirstAndSetTheButtons) {
    Open(0);
    ui.Type(KX_IDC_TAG_ARTIST, L"Beta");
    EXPECT_EQ(S_OK, model->Step(true));
    EXPECT_EQ("0:3", Writes());  // what was typed is saved before the move
    // a negative year and track number show empty fields: nothing of track 0 stays behind
    EXPECT_EQ(L"", ui.controls[KX_IDC_TAG_YEAR].text);
    EXPECT_EQ(L"", ui.controls[KX_IDC_TAG_TRACK].text);
    EXPECT_EQ("1111 focus1028", ui.Buttons());
    EXPECT_EQ(CSingleTagModel::OkOutcome::Close, model->OnOK());
    EXPECT_EQ("", Writes());  // neither the shown nor the former year or number is written
    EXPECT_EQ(E_NOTIMPL, model->m_hrResult);

    // onwards to the last: 1985 is inserted before 1990, a rating of 9 disables the slider
    EXPECT_EQ(S_OK, model->Step(true));
    EXPECT_EQ(L"1985", ui.controls[KX_IDC_TAG_YEAR].list.front());
    EXPECT_EQ("0/d", ui.Fields().substr(ui.Fields().size() - 3));
    EXPECT_EQ(L"42", ui.controls[KX_IDC_TAG_TRACK].text);
    EXPECT_EQ("0110 focus1027", ui.Buttons());  // no album: no art from a file
    // Right on the disabled Next does nothing; Left steps back from either step button
    EXPECT_FALSE(model->OnStepKey(39, false));
    ui.focus = KX_IDC_TAG_NEXT;
    EXPECT_FALSE(model->OnStepKey(37, true));
    EXPECT_TRUE(model->OnStepKey(37, false));
    EXPECT_EQ("Two", ui.Fields().substr(0, 3));
    EXPECT_EQ(KX_IDC_TAG_PREV, ui.focus);

    // a bad digit holds the step; a failed move shows the message and keeps the item
    ui.controls[KX_IDC_TAG_NUMBER].text = L"x";
    EXPECT_EQ(S_FALSE, model->Step(false));
    ui.controls[KX_IDC_TAG_NUMBER].text = L"0";
    ui.TakeLog();
    lib->FailOperation(kxhost::Op::CursorGetItemAt, E_FAIL);
    EXPECT_EQ(E_FAIL, model->Step(false));
    EXPECT_EQ("message103/104 ", ui.TakeLog());
    EXPECT_EQ("Two", ui.Fields().substr(0, 3));
    Writes();
}

TEST_F(SingleTagTest, ArtChangesAndEmptyingTheAlbumRemovesIt) {
    Open(0);
    const BYTE jpeg[] = {0xFF, 0xD8, 0xFF, 0xE0, 9};
    EXPECT_TRUE(model->SetNewArt(jpeg, sizeof jpeg));
    EXPECT_EQ("art5 ", ui.TakeLog());
    EXPECT_EQ(CSingleTagModel::OkOutcome::Close, model->OnOK());
    EXPECT_EQ("0:art", Writes());

    Open(0);
    ui.Type(KX_IDC_TAG_ALBUM, L"");
    EXPECT_EQ("noart ", ui.TakeLog());
    EXPECT_EQ("0001 focus1028", ui.Buttons());
    EXPECT_TRUE(model->CanAcceptArtwork() == false);
    EXPECT_EQ(CSingleTagModel::OkOutcome::Close, model->OnOK());
    EXPECT_EQ("0:artR", Writes());  // an empty text is never written
}

// A box gets its list when it is first needed, with the item's value selected; after that it
// follows the steps entry by entry, and is filled anew only when a written name made the dialog
// read the lists again.
TEST_F(SingleTagTest, ABoxGetsItsListWhenFirstNeededAndFollowsTheSteps) {
    Open(0);
    auto& artist2 = ui.controls[KX_IDC_TAG_ARTIST2];
    EXPECT_EQ("", ui.fills) << "no box is filled at the opening";
    EXPECT_EQ(L"Newcomer", artist2.text);
    model->FillListOnDemand(KX_IDC_TAG_ARTIST2);
    model->FillListOnDemand(KX_IDC_TAG_ARTIST2);
    EXPECT_EQ("1006 ", ui.fills) << "once";
    EXPECT_EQ((std::vector<std::wstring>{L"Beta", L"Newcomer", L"Zed"}), artist2.list);
    EXPECT_EQ(1, artist2.selected);

    ui.fills.clear();
    EXPECT_EQ(S_OK, model->Step(true));  // to an item without a second artist
    EXPECT_EQ("", ui.fills);
    EXPECT_EQ((std::vector<std::wstring>{L"Beta", L"Zed"}), artist2.list) << "the former item's entry goes";
    EXPECT_TRUE(ui.controls[KX_IDC_TAG_ARTIST].list.empty());
    EXPECT_EQ(1u, model->m_knownValuesReads);

    ui.Type(KX_IDC_TAG_ALBUM, L"Fresh");
    EXPECT_EQ(S_OK, model->Step(true));  // the new name is saved: the lists are read anew
    EXPECT_EQ(2u, model->m_knownValuesReads);
    EXPECT_EQ("1006 ", ui.fills) << "only the box the user has opened";
    EXPECT_EQ("1:2", Writes());  // the album

    // a text changed since it was shown stays when the list comes
    ui.controls[KX_IDC_TAG_ARTIST].text = L"Other";
    model->FillListOnDemand(KX_IDC_TAG_ARTIST);
    EXPECT_EQ(L"Other", ui.controls[KX_IDC_TAG_ARTIST].text);
    EXPECT_EQ(2u, ui.controls[KX_IDC_TAG_ARTIST].list.size());
}

// Stands in for the accepted image files: a name that ends in ".jpg".
bool AcceptJpeg(const wchar_t* path) {
    const std::wstring p = path;
    return p.size() > 4 && p.compare(p.size() - 4, 4, L".jpg") == 0;
}

TEST(ArtMenu, EnablingFollowsStateAndClipboard) {
    struct Case { const char* name; ArtMenuState state; ArtClipboardOffer offer; const char* expect; } cases[] = {
        {"empty clipboard", {}, {}, "B-R- open"},
        {"art removed, commands off, single", {true, false, true, false}, {}, "---- open"},
        {"... several items", {true, false, false, false}, {}, "---- shut"},
        {"lookup greyed", {true, false, true, true}, {}, "---- shut"},
        {"bitmap first", {}, {true, true, false, true, 1, L"a.txt"}, "BPR- open"},
        {"bitmap that did not encode", {}, {true, false}, "B-R- open"},
        {"one jpeg file", {}, {false, false, false, true, 1, L"C:\\a.jpg"}, "BPR- open C:\\a.jpg"},
        {"two files", {}, {false, false, false, true, 2, L"C:\\a.jpg"}, "B-R- open"},
        {"a dib beside the files", {}, {false, false, true, true, 1, L"C:\\a.jpg"}, "B-R- open"},
        {"cut", {}, {false, false, false, true, 1, L"C:\\a.jpg", true, 2}, "B-R- open"},
        {"copied", {}, {false, false, false, true, 1, L"C:\\a.jpg", true, 5}, "BPR- open C:\\a.jpg"},
        {"not a picture", {}, {false, false, false, true, 1, L"C:\\a.txt"}, "B-R- open"},
        {"no album", {false, true, true, false, false}, {true, true}, "---- shut"},
        {"Change... shown disabled", {false, true, true, false, true, true}, {true, true}, "---- shut"},
    };
    for (const auto& c : cases) {
        const ArtMenuDecision d = DecideArtMenu(c.state, c.offer, AcceptJpeg);
        std::string got = std::string(d.browse ? "B" : "-") + (d.paste ? "P" : "-") + (d.remove ? "R" : "-") +
                          (d.lookup ? "L" : "-") + (d.open ? " open" : " shut") +
                          (d.pastedPath.empty() ? "" : " " + Narrow(d.pastedPath));
        EXPECT_EQ(c.expect, got) << c.name;
    }
}

}  // namespace
