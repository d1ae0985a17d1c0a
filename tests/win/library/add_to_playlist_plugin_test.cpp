// The add-to-playlist and add-to-slideshow dialogs through KxComResPlgin.dll, driven like a user,
// against the in-memory library: what the host gets back, and that nothing is left behind.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/library/in_memory_library.h"
#include "library/pidl.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::ItemKind;
using kxhost::Op;

const int kLabel = 1037, kCombo = 1038, kOk = 1039, kCancel = 1052, kHeading = 1055;
const HRESULT kCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);

// What a host passes for outputs it wants to see untouched.
KxPidl const kUntouchedPidl = reinterpret_cast<KxPidl>(static_cast<INT_PTR>(0x5A5A));
LPWSTR const kUntouchedName = reinterpret_cast<LPWSTR>(static_cast<INT_PTR>(0xA5A5));

std::vector<std::wstring> ComboLines(HWND dlg) {
    std::vector<std::wstring> lines;
    HWND combo = GetDlgItem(dlg, kCombo);
    int n = static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < n; ++i) {
        wchar_t b[256] = {};
        SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(b));
        lines.push_back(b);
    }
    return lines;
}

// The user selects the whole text of the combo's edit part (as a click into it and Ctrl+A would).
DialogDriver& SelectAllText(DialogDriver& d) {
    return d.Do([](HWND dlg) {
        HWND combo = GetDlgItem(dlg, kCombo);
        SetFocus(combo);
        SendMessageW(combo, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
    });
}

class AddToPlaylistThroughPlugin : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        lib = kxhost::InMemoryLibrary::Create();
        for (const wchar_t* name : {L"road", L"Evening", L"evening", L"Zebra", L"apple"})
            playlists[name] = lib->AddContainer(ItemKind::Playlist, name);
        holidays = lib->AddContainer(ItemKind::Slideshow, L"Holidays");
        ASSERT_EQ(S_OK, lib->GetRootFolder(&root));
        ASSERT_EQ(S_OK, plugin.Create(&resource));
        // a first dialog pays for what the process keeps once (classes, the dialog manager, fonts,
        // what the system caches when a drop-down list first opens)
        {
            DialogDriver warmup;
            warmup.Focus(kCombo).Press(VK_F4).Press(VK_F4).Click(kCancel);
            KxPidl pidl = nullptr;
            LPWSTR name = nullptr;
            resource->ShowAddToPlaylistDialog(nullptr, root, nullptr, &pidl, &name);
        }
        before = CountResources();
    }
    void TearDown() override {
        const ResourceCounts after = CountResources();
        EXPECT_EQ(before.windows, after.windows) << "windows left behind";
        EXPECT_EQ(before.gdiObjects, after.gdiObjects) << "GDI objects left behind";
        EXPECT_EQ(before.userObjects, after.userObjects) << "USER objects left behind";
        EXPECT_EQ(before.taskMemBlocks, after.taskMemBlocks) << "CoTaskMem blocks left behind";
        if (resource) resource->Release();
        if (root) root->Release();
        EXPECT_EQ(0, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
    }

    HRESULT ShowPlaylists(DialogDriver& driver, LPCWSTR initial, KxPidl* pidl, LPWSTR* name) {
        HRESULT hr = resource->ShowAddToPlaylistDialog(nullptr, root, initial, pidl, name);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        EXPECT_EQ(driver.stepCount(), driver.stepsDone());
        return hr;
    }
    ItemId ItemOf(KxPidl pidl) const { return lib->ItemOf(pidl); }

    std::shared_ptr<kxhost::InMemoryLibrary> lib;
    std::map<std::wstring, ItemId> playlists;
    ItemId holidays = 0;
    IKxContentFolder* root = nullptr;
    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    ResourceCounts before{};
};

TEST_F(AddToPlaylistThroughPlugin, ListsTargetsByCodeUnitAndHandsBackThePickedOne) {
    DialogDriver driver;
    std::vector<std::wstring> lines;
    std::wstring okBefore, okAfter, heading, label;
    driver.Inspect([&](HWND dlg) {
        lines = ComboLines(dlg);
        okBefore = ItemText(dlg, kOk);
        heading = ItemText(dlg, kHeading);
        label = ItemText(dlg, kLabel);
    });
    driver.Focus(kCombo).Press(VK_DOWN).Press(VK_DOWN);  // from the first line to the third
    driver.Inspect([&](HWND dlg) { okAfter = ItemText(dlg, kOk); }).Click(kOk);
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    ASSERT_EQ(S_OK, ShowPlaylists(driver, nullptr, &pidl, &name));
    // every upper-case Latin letter before every lower-case one
    EXPECT_EQ((std::vector<std::wstring>{L"Evening", L"Zebra", L"apple", L"evening", L"road"}), lines);
    EXPECT_EQ(L"OK", okBefore);
    EXPECT_EQ(L"OK", okAfter);
    EXPECT_FALSE(heading.empty());
    EXPECT_FALSE(label.empty());
    EXPECT_EQ(nullptr, name);
    ASSERT_NE(nullptr, pidl);
    EXPECT_EQ(playlists[L"apple"], ItemOf(pidl));
    CoTaskMemFree(pidl);  // the host owns it now
}

TEST_F(AddToPlaylistThroughPlugin, TypedNewNameComesBackAsANameOnly) {
    DialogDriver driver;
    std::wstring okText;
    SelectAllText(driver).Type(kCombo, L"Road trip");
    driver.Inspect([&](HWND dlg) { okText = ItemText(dlg, kOk); }).Press(VK_RETURN);
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    ASSERT_EQ(S_OK, ShowPlaylists(driver, nullptr, &pidl, &name));
    EXPECT_EQ(L"Create", okText);
    EXPECT_EQ(nullptr, pidl);
    ASSERT_NE(nullptr, name);
    EXPECT_STREQ(L"Road trip", name);
    CoTaskMemFree(name);
}

TEST_F(AddToPlaylistThroughPlugin, TypingAnExistingNameExactlyChoosesThatTarget) {
    DialogDriver driver;
    std::wstring okText;
    int selection = 0;
    SelectAllText(driver).Type(kCombo, L"evening");
    driver.Inspect([&](HWND dlg) {
        okText = ItemText(dlg, kOk);
        selection = static_cast<int>(SendDlgItemMessageW(dlg, kCombo, CB_GETCURSEL, 0, 0));
    });
    driver.Click(kOk);
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    ASSERT_EQ(S_OK, ShowPlaylists(driver, nullptr, &pidl, &name));
    EXPECT_EQ(L"OK", okText);
    EXPECT_EQ(CB_ERR, selection);  // chosen by its text, not by the list
    EXPECT_EQ(nullptr, name);
    EXPECT_EQ(playlists[L"evening"], ItemOf(pidl));
    CoTaskMemFree(pidl);
}

TEST_F(AddToPlaylistThroughPlugin, InitialNamesMatchExactlyOrAreNew) {
    {
        DialogDriver driver;
        int selection = -1;
        driver.Inspect([&](HWND dlg) {
            selection = static_cast<int>(SendDlgItemMessageW(dlg, kCombo, CB_GETCURSEL, 0, 0));
        });
        driver.Click(kOk);
        KxPidl pidl = nullptr;
        LPWSTR name = nullptr;
        ASSERT_EQ(S_OK, ShowPlaylists(driver, L"Zebra", &pidl, &name));
        EXPECT_EQ(1, selection);
        EXPECT_EQ(playlists[L"Zebra"], ItemOf(pidl));
        EXPECT_EQ(nullptr, name);
        CoTaskMemFree(pidl);
    }
    {
        DialogDriver driver;
        std::wstring text, okText;
        driver.Inspect([&](HWND dlg) {
            text = ItemText(dlg, kCombo);
            okText = ItemText(dlg, kOk);
        });
        driver.Click(kOk);
        KxPidl pidl = nullptr;
        LPWSTR name = nullptr;
        ASSERT_EQ(S_OK, ShowPlaylists(driver, L"ZEBRA", &pidl, &name));
        EXPECT_EQ(L"ZEBRA", text);
        EXPECT_EQ(L"Create", okText);
        EXPECT_EQ(nullptr, pidl);
        ASSERT_NE(nullptr, name);
        EXPECT_STREQ(L"ZEBRA", name);
        CoTaskMemFree(name);
    }
}

TEST_F(AddToPlaylistThroughPlugin, EmptyTextDisablesOkAndPickingEnablesItAgain) {
    DialogDriver driver;
    bool enabledEmpty = true, enabledWhileOpen = true, enabledPicked = false;
    std::wstring okWhileOpen, okPicked;
    SelectAllText(driver).Press(VK_DELETE);
    driver.Inspect([&](HWND dlg) { enabledEmpty = ItemEnabled(dlg, kOk); });
    driver.Click(kOk);  // a disabled button takes no click: the dialog stays
    // a pick from the list changes the button's text at once, and enables it when the list closes
    driver.Press(VK_F4).Press(VK_DOWN);
    driver.Inspect([&](HWND dlg) { okWhileOpen = ItemText(dlg, kOk), enabledWhileOpen = ItemEnabled(dlg, kOk); });
    driver.Press(VK_F4);
    driver.Inspect([&](HWND dlg) {
        enabledPicked = ItemEnabled(dlg, kOk);
        okPicked = ItemText(dlg, kOk);
    });
    driver.Click(kOk);
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    ASSERT_EQ(S_OK, ShowPlaylists(driver, nullptr, &pidl, &name));
    EXPECT_FALSE(enabledEmpty);
    EXPECT_EQ(L"OK", okWhileOpen);
    EXPECT_FALSE(enabledWhileOpen);
    EXPECT_TRUE(enabledPicked);
    EXPECT_EQ(L"OK", okPicked);
    EXPECT_NE(nullptr, pidl);
    EXPECT_EQ(nullptr, name);
    CoTaskMemFree(pidl);
}

TEST_F(AddToPlaylistThroughPlugin, CancelEscapeAndCloseTouchNoOutput) {
    const std::vector<std::function<void(DialogDriver&)>> ways = {
        [](DialogDriver& d) { d.Click(kCancel); },
        [](DialogDriver& d) { d.Focus(kCombo).Press(VK_ESCAPE); },
        [](DialogDriver& d) { d.Close(); },
    };
    for (size_t i = 0; i < ways.size(); ++i) {
        SCOPED_TRACE(i);
        DialogDriver driver;
        ways[i](driver);
        KxPidl pidl = kUntouchedPidl;
        LPWSTR name = kUntouchedName;
        EXPECT_EQ(kCancelled, ShowPlaylists(driver, L"Something", &pidl, &name));
        EXPECT_EQ(kUntouchedPidl, pidl);
        EXPECT_EQ(kUntouchedName, name);
    }
}

TEST_F(AddToPlaylistThroughPlugin, NoTargetsAndNoInitialNameWaitsForANewName) {
    auto empty = kxhost::InMemoryLibrary::Create();
    IKxContentFolder* emptyRoot = nullptr;
    ASSERT_EQ(S_OK, empty->GetRootFolder(&emptyRoot));
    DialogDriver driver;
    size_t count = 99;
    bool enabled = true;
    std::wstring text = L"?", okText;
    driver.Inspect([&](HWND dlg) {
        count = ComboLines(dlg).size();
        enabled = ItemEnabled(dlg, kOk);
        text = ItemText(dlg, kCombo);
        okText = ItemText(dlg, kOk);
    });
    driver.Type(kCombo, L"First").Click(kOk);
    KxPidl pidl = nullptr;
    LPWSTR name = nullptr;
    EXPECT_EQ(S_OK, resource->ShowAddToSlideshowDialog(nullptr, emptyRoot, nullptr, &pidl, &name));
    EXPECT_EQ(0u, count);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(L"", text);
    EXPECT_EQ(L"Create", okText);
    EXPECT_EQ(nullptr, pidl);
    ASSERT_NE(nullptr, name);
    EXPECT_STREQ(L"First", name);
    CoTaskMemFree(name);
    emptyRoot->Release();
    EXPECT_EQ(0, empty->OutstandingReferences());
}

TEST_F(AddToPlaylistThroughPlugin, UnreachableFoldersEndTheDialogWithEPointer) {
    // the interface refuses a null folder before any dialog
    KxPidl pidl = kUntouchedPidl;
    LPWSTR name = kUntouchedName;
    EXPECT_EQ(E_INVALIDARG, resource->ShowAddToPlaylistDialog(nullptr, nullptr, nullptr, &pidl, &name));
    // a walk that fails closes the dialog by itself, whatever the host said
    for (Op op : {Op::QueryContentRoot, Op::ParseName, Op::BindToFolder, Op::EnumItems}) {
        SCOPED_TRACE(static_cast<int>(op));
        lib->FailOperation(op, E_ACCESSDENIED);
        DialogDriver driver;
        EXPECT_EQ(E_POINTER, resource->ShowAddToPlaylistDialog(nullptr, root, L"New", &pidl, &name));
        EXPECT_FALSE(driver.timedOut());
        lib->ResetFailures();
    }
    EXPECT_EQ(kUntouchedPidl, pidl);
    EXPECT_EQ(kUntouchedName, name);
}

TEST_F(AddToPlaylistThroughPlugin, SlideshowModeHasItsOwnTextsTargetsAndPicture) {
    std::wstring heading[2], label[2];
    std::vector<std::wstring> lines;
    std::vector<std::string> pictures[2];
    for (int mode = 0; mode < 2; ++mode) {
        SkinRecorder skin;
        DialogDriver driver;
        driver.Inspect([&](HWND dlg) {
            heading[mode] = ItemText(dlg, kHeading);
            label[mode] = ItemText(dlg, kLabel);
            if (mode == 0) lines = ComboLines(dlg);
        });
        driver.Click(kCancel);
        KxPidl pidl = nullptr;
        LPWSTR name = nullptr;
        HRESULT hr = mode == 0 ? resource->ShowAddToSlideshowDialog(nullptr, root, nullptr, &pidl, &name)
                               : resource->ShowAddToPlaylistDialog(nullptr, root, nullptr, &pidl, &name);
        EXPECT_EQ(kCancelled, hr);
        pictures[mode] = skin.LinesStartingWith("static id=1054");
        const auto attach = skin.LinesStartingWith("call op=0x1000");
        ASSERT_EQ(1u, attach.size());
        EXPECT_NE(std::string::npos, attach[0].find("IDD_DIALOG_ADDTOPLAYLIST.ini"));
    }
    EXPECT_EQ(std::vector<std::wstring>{L"Holidays"}, lines);
    EXPECT_NE(heading[0], heading[1]);
    EXPECT_NE(label[0], label[1]);
    ASSERT_EQ(1u, pictures[0].size());
    EXPECT_NE(std::string::npos, pictures[0][0].find("picture=Add New Slideshow.png"));
    EXPECT_TRUE(pictures[1].empty());
}

}  // namespace
}  // namespace kxtest
