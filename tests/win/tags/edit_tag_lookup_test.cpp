// The art lookup of the single-item tag dialog through KxComResPlgin.dll and the real
// KxNetContent.dll (registered by regsvr32): menu entry 9003 is there, a lookup holds the step,
// album and art controls, and its answer, which the component gives on its own thread, is shown
// and written; nothing found marks the art for removal; closing the dialog during a lookup waits
// for it and takes the component down. Nothing is left behind.
#include <winsock2.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "host/library/in_memory_library.h"
#include "host/library/jpeg_encoder.h"
#include "resources/dialogs/edit_single_tags_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_dialog_test.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/test_files.h"
#include "tests/win/netcontent/loopback_server.h"

namespace kxtest {
namespace {

using kxhost::ItemKind;

// What the open art menu held, read by a timer that then closes it.
std::string g_menu;
void CALLBACK ReadAndCloseMenu(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    g_menu = "no menu";
    if (HWND popup = FindWindowW(L"#32768", nullptr)) {
        HMENU menu = reinterpret_cast<HMENU>(SendMessageW(popup, 0x01E1 /* MN_GETHMENU */, 0, 0));
        const UINT state = GetMenuState(menu, KX_IDM_ART_LOOKUP, MF_BYCOMMAND);
        g_menu = state == 0xFFFFFFFF ? "no 9003" : (state & MF_GRAYED) ? "9003 greyed" : "9003";
    }
    EndMenu();
}
DialogDriver::Step OpenArtMenu() {
    return [](HWND dlg) {
        HWND picture = GetDlgItem(dlg, KX_IDC_TAG_ART);
        SetTimer(nullptr, 0, 300, ReadAndCloseMenu);
        SendMessageW(picture, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 10));
        SendMessageW(picture, WM_RBUTTONUP, 0, MAKELPARAM(10, 10));
    };
}
// Dispatches the dialog's messages until the album field is enabled again (the lookup's end).
DialogDriver::Step AwaitLookupEnd() {
    return [](HWND dlg) {
        for (DWORD start = GetTickCount(); !ItemEnabled(dlg, KX_IDC_TAG_ALBUM) && GetTickCount() - start < 10000;) {
            MSG msg;
            while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
            Sleep(10);
        }
    };
}
std::string Held(HWND dlg) {
    std::string out;
    for (int id : {KX_IDC_TAG_PREV, KX_IDC_TAG_NEXT, KX_IDC_TAG_BROWSE, KX_IDC_TAG_REMOVE, KX_IDC_TAG_ALBUM})
        out += ItemEnabled(dlg, id) ? "+" : "-";
    return out;
}

class EditTagLookup : public PluginDialogTest {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(RunRegsvr32(L"KxNetContent.dll"), 0u); }
    static void TearDownTestSuite() { EXPECT_EQ(RunRegsvr32(L"/u KxNetContent.dll"), 0u); }

    void SetUp() override {
        folder = TempFolder() + L"kx-lookup-" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder.c_str(), nullptr);
        typedef kxhost::PropertyValue V;
        for (LPCWSTR name : {L"one", L"two"}) {
            tracks.push_back(lib->AddItem(ItemKind::Track, name));
            for (auto& p : {std::make_pair(&KxPropTitle, V::String(name)), std::make_pair(&KxPropAlbum, V::String(L"Abbey")),
                            std::make_pair(&KxPropFilePath, V::String(folder + L"\\" + name + L".mp3")),
                            std::make_pair(&KxPropAlbumArt, V::Blob({0xFF, 0xD8, 1}))})
                lib->SetValue(tracks.back(), *p.first, p.second, kxhost::kReadWrite);
            Write(folder + L"\\" + name + L".mp3", {'n', 'o', ' ', 't', 'a', 'g'});
        }
        OpenHost();
        {
            // what the process keeps once: the dialog's classes, the menu's font, the component
            DialogDriver warmup;
            warmup.Do(OpenArtMenu()).Press(VK_ESCAPE);
            Run(1, warmup);
            LoadCursorW(nullptr, IDC_WAIT);  // the wait's cursor
        }
        lib->ClearWrites();
        before = CountResources();
    }
    void TearDown() override {
        PluginDialogTest::TearDown();
        for (const std::wstring& f : files) DeleteFileW(f.c_str());
        RemoveDirectoryW(folder.c_str());
        EXPECT_EQ(GetFileAttributesW(folder.c_str()), INVALID_FILE_ATTRIBUTES);
    }
    void Write(const std::wstring& path, const std::vector<BYTE>& bytes) {
        ASSERT_TRUE(WriteFileBytes(path, bytes));
        files.push_back(path);
    }
    std::string Run(int index, DialogDriver& driver) {
        lib->SetView(tracks, index);
        KxPidl pidl = lib->NewPidl(tracks[static_cast<size_t>(index)]);
        const HRESULT hr = resource->ShowEditTagDialog(nullptr, site, root, 1, const_cast<const KxPcPidl*>(&pidl));
        CoTaskMemFree(pidl);
        EXPECT_FALSE(driver.timedOut()) << "the script did not close the dialog";
        return HrText(hr);
    }
    std::string Writes() {
        std::string out;
        for (const kxhost::WriteRecord& w : lib->Writes()) {
            const bool art = IsEqualGUID(w.key.fmtid, KxPropAlbumArt.fmtid);
            out += (out.empty() ? "" : " ") + std::string(art ? "art" : "tag") + (w.via == 4 ? "R" : "");
        }
        lib->ClearWrites();
        return out;
    }

    std::vector<kxhost::ItemId> tracks;
    std::wstring folder;
    std::vector<std::wstring> files;
};

TEST_F(EditTagLookup, ACoverBesideTheTrackIsShownAndWrittenNothingFoundRemovesTheArt) {
    const std::vector<BYTE> cover = kxhost::EncodeJpeg(40, 30, std::vector<DWORD>(40 * 30, 0xFF3070B0));
    Write(folder + L"\\cover.jpg", cover);
    std::string after;
    bool shown = false;
    DialogDriver driver;
    driver.Do(OpenArtMenu())
        .Do([](HWND dlg) { PostMessageW(dlg, WM_COMMAND, KX_IDM_ART_LOOKUP, 0); })
        .Do(AwaitLookupEnd())
        .Inspect([&](HWND dlg) {
            after = Held(dlg);
            shown = SendDlgItemMessageW(dlg, KX_IDC_TAG_ART, STM_GETIMAGE, IMAGE_BITMAP, 0) != 0;
        })
        .Click(IDOK);
    EXPECT_EQ("00000000", Run(0, driver));
    EXPECT_EQ("9003", g_menu);
    EXPECT_EQ("-++++", after) << "back, Remove now for the found art";
    EXPECT_TRUE(shown);
    EXPECT_EQ("art", Writes());
    const auto art = lib->Value(tracks[0], KxPropAlbumArt);
    ASSERT_TRUE(art);
    EXPECT_TRUE(art->bytes == cover) << "the found picture's exact bytes";

    DeleteFileW(files.back().c_str());
    DialogDriver nothing;
    nothing.Do(OpenArtMenu())
        .Do([](HWND dlg) { PostMessageW(dlg, WM_COMMAND, KX_IDM_ART_LOOKUP, 0); })
        .Do(AwaitLookupEnd())
        .Inspect([&](HWND dlg) { after = Held(dlg); })
        .Click(IDOK);
    EXPECT_EQ("00000000", Run(1, nothing));
    EXPECT_EQ("+--+", after.substr(0, 2) + after.substr(3)) << "Remove stays off: the art is gone";
    EXPECT_EQ("artR", Writes());
}

// A lookup that waits for the art service holds the step, album and art controls; a close
// meanwhile ends the dialog only after the wait for the lookup, then the component goes.
TEST_F(EditTagLookup, ClosingDuringALookupWaitsForIt) {
    LoopbackServer server("held");
    ScopedArtService service(server.Port(), L"/{file}");
    DWORD closedAt = 0;
    std::string held;
    DialogDriver driver;
    driver.Do([](HWND dlg) { PostMessageW(dlg, WM_COMMAND, KX_IDM_ART_LOOKUP, 0); })
        .Do([&](HWND) { server.WaitForRequest(10000); })
        .Inspect([&](HWND dlg) { held = Held(dlg); })
        .Do([&](HWND dlg) {
            closedAt = GetTickCount();
            PostMessageW(dlg, WM_CLOSE, 0, 0);
        });
    const std::string code = Run(1, driver);
    const DWORD took = GetTickCount() - closedAt;
    EXPECT_EQ("800704C7", code) << "closed";
    EXPECT_EQ("-----", held) << "Previous, Next, Change..., Remove and the album during the lookup";
    EXPECT_GE(took, 2000u) << "the end waited for the running lookup";
    EXPECT_EQ("", Writes());
}

}  // namespace
}  // namespace kxtest
