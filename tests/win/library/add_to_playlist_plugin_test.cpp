// The add-to-playlist and add-to-slideshow dialogs through KxComResPlgin.dll, driven like a user,
// against the in-memory library: what the host gets back, and that nothing is left behind.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "host/library/in_memory_library.h"
#include "resources/dialogs/add_to_playlist_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"
#include "tests/win/common/test_files.h"

namespace kxtest {
namespace {

using kxhost::ItemKind;
using kxhost::Op;

const int kLabel = KX_IDC_ADDTO_LABEL, kCombo = KX_IDC_ADDTO_TARGETS, kOk = KX_IDC_ADDTO_OK,
          kCancel = KX_IDC_ADDTO_CANCEL, kHeading = KX_IDC_ADDTO_HEADING, kPicture = KX_IDC_ADDTO_PICTURE;
// What a host passes for outputs it wants to see untouched.
KxPidl const kUntouchedPidl = reinterpret_cast<KxPidl>(static_cast<INT_PTR>(0x5A5A));
LPWSTR const kUntouchedName = reinterpret_cast<LPWSTR>(static_cast<INT_PTR>(0xA5A5));

std::string Narrow(const std::wstring& s) { return std::string(s.begin(), s.end()); }

// The lines of the combo's list, comma-separated.
std::string Lines(HWND dlg) {
    std::string lines;
    for (int i = 0; i < static_cast<int>(SendDlgItemMessageW(dlg, kCombo, CB_GETCOUNT, 0, 0)); ++i) {
        wchar_t b[256] = {};
        SendDlgItemMessageW(dlg, kCombo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(b));
        lines += (i ? "," : "") + Narrow(b);
    }
    return lines;
}

// The user selects the whole text of the combo's edit part (as a click into it and Ctrl+A would).
void SelectAllText(HWND dlg) {
    SetFocus(GetDlgItem(dlg, kCombo));
    SendDlgItemMessageW(dlg, kCombo, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
}

class AddToPlaylistThroughPlugin : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        for (LPCWSTR name : {L"road", L"Evening", L"evening", L"Zebra", L"apple"})
            lib->AddContainer(ItemKind::Playlist, name);
        lib->AddContainer(ItemKind::Slideshow, L"Holidays");
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        ASSERT_EQ(S_OK, empty->GetRootFolder(&emptyRoot));
        ASSERT_EQ(S_OK, plugin.Create(&resource));
        // a first dialog pays for what the process keeps once (classes, the dialog manager, fonts,
        // what the system caches when a drop-down list first opens)
        Run([](DialogDriver& d) { d.Focus(kCombo).Press(VK_F4).Press(VK_F4).Click(kCancel); }, nullptr);
        before = CountResources();
    }
    void TearDown() override {
        EXPECT_EQ("", Leftovers(before));
        if (resource) resource->Release();
        for (IKxContentFolder* folder : {root, emptyRoot})
            if (folder) folder->Release();
        EXPECT_EQ(0, lib->OutstandingReferences() + empty->OutstandingReferences()) << lib->DescribeLiveObjects();
    }

    // Shows a dialog under a script and tells what the host got: the code, the target's name and
    // the new name ("-" for null, "untouched" for an output left as it was). Every block handed
    // over is freed.
    std::string Run(const std::function<void(DialogDriver&)>& script, LPCWSTR initial, bool slideshow = false,
                    IKxContentFolder* folder = nullptr) {
        DialogDriver driver;
        script(driver);
        KxPidl pidl = kUntouchedPidl;
        LPWSTR name = kUntouchedName;
        folder = folder ? folder : root;
        const HRESULT hr = slideshow ? resource->ShowAddToSlideshowDialog(nullptr, folder, initial, &pidl, &name)
                                     : resource->ShowAddToPlaylistDialog(nullptr, folder, initial, &pidl, &name);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        std::string got = HrText(hr) + " ";
        got += pidl == kUntouchedPidl ? "untouched" : pidl ? Narrow(lib->NameOf(lib->ItemOf(pidl))) : "-";
        got += name == kUntouchedName ? " untouched" : name ? " '" + Narrow(name) + "'" : " -";
        if (pidl != kUntouchedPidl) CoTaskMemFree(pidl);
        if (name != kUntouchedName) CoTaskMemFree(name);
        return got;
    }
    // A script step that notes the list and what the OK button, the selection and the text show.
    DialogDriver::Step Snap() {
        return [this](HWND dlg) {
            const auto selection = SendDlgItemMessageW(dlg, kCombo, CB_GETCURSEL, 0, 0);
            shown += (shown.empty() ? "" : " / ") + Narrow(ItemText(dlg, kOk)) + (ItemEnabled(dlg, kOk) ? "" : "(off)");
            shown += " #" + std::to_string(selection) + " '" + Narrow(ItemText(dlg, kCombo)) + "'";
            lines = Lines(dlg);
            texts = Narrow(ItemText(dlg, kHeading)) + "|" + Narrow(ItemText(dlg, kLabel));
        };
    }

    std::shared_ptr<kxhost::InMemoryLibrary> lib = kxhost::InMemoryLibrary::Create();
    std::shared_ptr<kxhost::InMemoryLibrary> empty = kxhost::InMemoryLibrary::Create();
    IKxContentFolder* root = nullptr;
    IKxContentFolder* emptyRoot = nullptr;
    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    ResourceCounts before{};
    std::string shown, lines, texts;  // what Snap saw
};

TEST_F(AddToPlaylistThroughPlugin, WhatTheUserDoesDecidesWhatTheHostGets) {
    typedef std::function<void(DialogDriver&)> Script;
    struct Row {
        const char* what;
        LPCWSTR initial;
        bool noTargets;  // an empty library, in slideshow mode
        Script script;
        const char* shown;  // what each Snap saw
        const char* got;
    };
    const Row rows[] = {
        {"pick an existing target", nullptr, false,
         [&](DialogDriver& d) {
             d.Inspect(Snap()).Focus(kCombo).Press(VK_DOWN).Press(VK_DOWN).Inspect(Snap()).Click(kOk);
         },
         "OK #0 'Evening' / OK #2 'apple'", "00000000 apple -"},
        {"type a new name", nullptr, false,
         [&](DialogDriver& d) { d.Do(SelectAllText).Type(kCombo, L"Road trip").Inspect(Snap()).Press(VK_RETURN); },
         "Create #-1 'Road trip'", "00000000 - 'Road trip'"},
        {"type an existing name exactly", nullptr, false,
         [&](DialogDriver& d) { d.Do(SelectAllText).Type(kCombo, L"evening").Inspect(Snap()).Click(kOk); },
         "OK #-1 'evening'", "00000000 evening -"},
        {"initial name of a target", L"Zebra", false, [&](DialogDriver& d) { d.Inspect(Snap()).Click(kOk); },
         "OK #1 'Zebra'", "00000000 Zebra -"},
        {"initial name differing in case", L"ZEBRA", false, [&](DialogDriver& d) { d.Inspect(Snap()).Click(kOk); },
         "Create #-1 'ZEBRA'", "00000000 - 'ZEBRA'"},
        // a disabled OK takes no click; a pick from the list changes its text at once and enables
        // it when the list closes
        {"empty text", nullptr, false,
         [&](DialogDriver& d) {
             d.Do(SelectAllText).Press(VK_DELETE).Inspect(Snap()).Click(kOk);
             d.Press(VK_F4).Press(VK_DOWN).Inspect(Snap()).Press(VK_F4).Inspect(Snap()).Click(kOk);
         },
         "OK(off) #-1 '' / OK(off) #0 'Evening' / OK #0 'Evening'", "00000000 Evening -"},
        {"no targets and no initial name", nullptr, true,
         [&](DialogDriver& d) { d.Inspect(Snap()).Type(kCombo, L"First").Click(kOk); }, "Create(off) #-1 ''",
         "00000000 - 'First'"},
        {"Cancel", L"Something", false, [](DialogDriver& d) { d.Click(kCancel); }, "", "800704C7 untouched untouched"},
        {"Escape", L"Something", false, [](DialogDriver& d) { d.Focus(kCombo).Press(VK_ESCAPE); }, "",
         "800704C7 untouched untouched"},
        {"closed", L"Something", false, [](DialogDriver& d) { d.Close(); }, "", "800704C7 untouched untouched"},
    };
    for (const Row& row : rows) {
        shown.clear(), lines.clear();
        const std::string got = Run(row.script, row.initial, row.noTargets, row.noTargets ? emptyRoot : nullptr);
        EXPECT_EQ(row.got, got) << row.what;
        EXPECT_EQ(row.shown, shown) << row.what;
        // the targets by code unit: every upper-case Latin letter before every lower-case one
        EXPECT_EQ(*row.shown && !row.noTargets ? "Evening,Zebra,apple,evening,road" : "", lines) << row.what;
    }
}

TEST_F(AddToPlaylistThroughPlugin, UnreachableFoldersEndTheDialogWithEPointer) {
    KxPidl pidl = kUntouchedPidl;
    LPWSTR name = kUntouchedName;
    // the interface refuses a null folder before any dialog
    EXPECT_EQ(E_INVALIDARG, resource->ShowAddToPlaylistDialog(nullptr, nullptr, nullptr, &pidl, &name));
    EXPECT_TRUE(pidl == kUntouchedPidl && name == kUntouchedName);
    // a walk that fails closes the dialog by itself, whatever the host said
    for (Op op : {Op::QueryContentRoot, Op::ParseName, Op::BindToFolder, Op::EnumItems}) {
        lib->FailOperation(op, E_ACCESSDENIED);
        EXPECT_EQ("80004003 untouched untouched", Run([](DialogDriver&) {}, L"New")) << static_cast<int>(op);
        lib->ResetFailures();
    }
}

TEST_F(AddToPlaylistThroughPlugin, SlideshowModeHasItsOwnTextsTargetsAndPicture) {
    std::string heading[2], label[2], pictures[2];
    for (int slideshow = 0; slideshow < 2; ++slideshow) {
        SkinRecorder skin;
        Run([&](DialogDriver& d) { d.Inspect(Snap()).Click(kCancel); }, nullptr, slideshow == 1);
        EXPECT_EQ(slideshow ? "Holidays" : "Evening,Zebra,apple,evening,road", lines);
        heading[slideshow] = texts.substr(0, texts.find('|'));
        label[slideshow] = texts.substr(texts.find('|') + 1);
        for (const std::string& line : skin.LinesStartingWith("static id=" + std::to_string(kPicture))) pictures[slideshow] += line;
        const auto attach = skin.LinesStartingWith("call op=0x1000");
        ASSERT_EQ(1u, attach.size());
        EXPECT_NE(std::string::npos, attach[0].find("IDD_DIALOG_ADDTOPLAYLIST.ini"));
    }
    EXPECT_FALSE(heading[0].empty() || label[0].empty());
    EXPECT_TRUE(heading[0] != heading[1] && label[0] != label[1]);
    EXPECT_EQ("", pictures[0]);
    EXPECT_NE(std::string::npos, pictures[1].find("picture=Add New Slideshow.png"));
}

}  // namespace
}  // namespace kxtest
