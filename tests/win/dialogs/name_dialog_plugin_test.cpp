// The name dialog through KxComResPlgin.dll as a host shows it (IKxCommonResource::ShowNameDialog),
// driven like a user: every kind in both modes, typed keys and a paste through the clipboard at the
// length limit, the ways to close it and the name it hands back.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/library/taskmem_audit.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"

namespace kxtest {
namespace {

const HRESULT kCancelled = static_cast<HRESULT>(0x800704C7L);
const int kOk = 1, kCancel = 1048, kHeading = 1049, kLabel = 1050, kEdit = 10001;
wchar_t kUntouched[] = L"untouched";

// The selection of the edit control as (start, end).
std::pair<DWORD, DWORD> Selection(HWND dlg) {
    DWORD start = 0, end = 0;
    SendDlgItemMessageW(dlg, kEdit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {start, end};
}

class NameDialogThroughPlugin : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        ASSERT_EQ(S_OK, plugin.Create(&resource));
        owner = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200, nullptr, nullptr,
                                nullptr, nullptr);
        DialogDriver warmup;  // what the process keeps once: fonts, classes, the dialog manager
        warmup.Type(kEdit, L"warm-up").Click(kOk);
        LPWSTR name = nullptr;
        Show(1, 1, nullptr, &name);
        CoTaskMemFree(name);
        {
            SkinRecorder skin;  // and once what the first balloon tip shown with a skin keeps
            DialogDriver tipWarmup;
            tipWarmup.Click(kCancel);
            Show(7, 1, L"19a9", &name);  // a year
        }
        before = CountResources();
    }
    void TearDown() override {
        EXPECT_EQ("", Leftovers(before));
        if (owner) DestroyWindow(owner);
        if (resource) resource->Release();
    }
    HRESULT Show(INT kind, INT mode, LPCWSTR initial, LPWSTR* name) {
        return resource->ShowNameDialog(owner, kind, mode, initial, name);
    }
    // Runs the dialog; the name it handed back, or "untouched" when it left the out-pointer alone.
    std::wstring Run(INT kind, INT mode, LPCWSTR initial, HRESULT expected) {
        LPWSTR name = kUntouched;
        EXPECT_EQ(expected, Show(kind, mode, initial, &name));
        std::wstring got = name ? name : L"(null)";
        if (name != kUntouched) CoTaskMemFree(name);
        return got;
    }
    std::wstring String(UINT id) {
        LPWSTR text = nullptr;
        std::wstring s = SUCCEEDED(resource->GetResourceString(id, &text)) && text ? text : L"";
        CoTaskMemFree(text);
        return s;
    }

    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    HWND owner = nullptr;
    ResourceCounts before{};
};

TEST_F(NameDialogThroughPlugin, EveryKindOpensInBothModesWithItsTextsAndPicture) {
    const struct {
        UINT headingNew, headingRename, label;
        std::string picture;
    } kinds[14] = {
        {46, 171, 165, "Album"},      {64, 172, 166, "Artist"},        {65, 173, 167, "Genre"},
        {42, 174, 168, "Folder"},     {63, 170, 164, "Playlist"},      {163, 175, 169, "Slideshow"},
        {189, 179, 202, "Year"},      {190, 196, 203, "People"},       {191, 197, 204, "Event"},
        {192, 198, 205, "Place"},     {193, 199, 206, "Director"},     {194, 200, 207, "Video Cast"},
        {195, 201, 208, "Producer"},  {65, 173, 167, "Video Genre"},
    };
    SkinRecorder skin;
    std::vector<std::string> pictures;
    for (int kind = 1; kind <= 14; ++kind) {
        for (int mode = 1; mode <= 2; ++mode) {
            SCOPED_TRACE(testing::Message() << "kind " << kind << " mode " << mode);
            const auto& k = kinds[kind - 1];
            const std::wstring heading = String(mode == 1 ? k.headingNew : k.headingRename);
            const std::wstring label = String(k.label), ok = String(mode == 1 ? 133 : 47);
            ASSERT_FALSE(heading.empty() || label.empty() || ok.empty());
            pictures.push_back("static id=1051 form=2 picture=" + std::string(mode == 1 ? "New " : "Rename ") +
                               k.picture + ".png");
            DialogDriver driver;
            driver
                .Inspect([&](HWND dlg) {
                    EXPECT_EQ(heading, ItemText(dlg, kHeading));
                    EXPECT_EQ(label, ItemText(dlg, kLabel));
                    EXPECT_EQ(ok, ItemText(dlg, kOk));
                    EXPECT_EQ(L"Old name", ItemText(dlg, kEdit));
                    EXPECT_EQ(kEdit, FocusedId(dlg));
                })
                .Click(kCancel);
            EXPECT_EQ(L"untouched", Run(kind, mode, L"Old name", kCancelled));
            EXPECT_EQ(2u, driver.stepsDone());
        }
    }
    // a year of "Old name" also brings the year tip up at the start: its statics are asked for the
    // skin's text style (form 1) in between
    EXPECT_EQ(pictures, skin.LinesStartingWith("static id=1051"));
    const std::vector<std::string> attaches = skin.LinesStartingWith("call op=0x1000");
    EXPECT_EQ(28u, attaches.size());
    for (const std::string& line : attaches) EXPECT_NE(std::string::npos, line.find(" file=IDD_DIALOG_NEWNAME.ini "));
}

// A name that cannot be copied out leaves null. (Unknown kinds and modes, and a null out pointer,
// are rows of the hostile host's table.)
TEST_F(NameDialogThroughPlugin, EachWayOutGivesItsCodeAndName) {
    enum Action { ClickOk, Return, ClickCancel, Escape, CloseBox, OkWithoutMemory };
    const struct {
        int kind, mode;
        const wchar_t* initial;
        std::wstring typed;
        Action action;
        HRESULT result;
        std::wstring name;
    } cases[] = {
        {1, 1, nullptr, L"Greatest Hits", ClickOk, S_OK, L"Greatest Hits"},
        {5, 2, L"Road trip ", L"2", Return, S_OK, L"Road trip 2"},
        {3, 1, nullptr, L"", ClickOk, S_OK, L""},
        {7, 2, nullptr, L"1999", Return, S_OK, L"1999"},
        {1, 2, L"Old", L"New", ClickCancel, kCancelled, L"untouched"},
        {1, 2, L"Old", L"New", Escape, kCancelled, L"untouched"},
        {1, 2, L"Old", L"New", CloseBox, kCancelled, L"untouched"},
        {1, 1, nullptr, L"Lost", OkWithoutMemory, E_OUTOFMEMORY, L"(null)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "kind " << c.kind << " mode " << c.mode << " action " << c.action);
        DialogDriver driver(3000);
        if (!c.typed.empty()) {
            driver.Do([](HWND dlg) { SendDlgItemMessageW(dlg, kEdit, EM_SETSEL, 0x7fff, 0x7fff); });
            driver.Type(kEdit, c.typed);
        }
        if (c.action == OkWithoutMemory) driver.Do([](HWND) { kxhost::FailTaskMemAllocations(1); });
        if (c.action == ClickOk || c.action == OkWithoutMemory) driver.Click(kOk);
        if (c.action == ClickCancel) driver.Click(kCancel);
        if (c.action == Return || c.action == Escape) driver.Press(c.action == Return ? VK_RETURN : VK_ESCAPE);
        if (c.action == CloseBox) driver.Close();
        EXPECT_EQ(c.name, Run(c.kind, c.mode, c.initial, c.result));
        kxhost::ResetTaskMemFailures();
        EXPECT_FALSE(driver.timedOut());
    }
}

// A typed character past 255 characters is taken back; a paste past them stays in the field
// until OK refuses it.
TEST_F(NameDialogThroughPlugin, ATypedKeyPastTheLimitIsTakenBackAPastedTextStays) {
    const std::wstring full(255, L'a'), accepted = full.substr(0, 254) + L"b";
    std::wstring afterAccepted, afterTyped, afterPaste, afterDelete;
    std::pair<DWORD, DWORD> refusedSelection;
    DialogDriver driver;
    driver.Focus(kEdit)
        .Do([](HWND dlg) { SendDlgItemMessageW(dlg, kEdit, EM_SETSEL, 255, 255); })
        .Press(VK_BACK)
        .Press('B')
        .Inspect([&](HWND dlg) { afterAccepted = ItemText(dlg, kEdit); })
        .Press('C')
        .Inspect([&](HWND dlg) { afterTyped = ItemText(dlg, kEdit); })
        .Do([](HWND) {
            EXPECT_TRUE(SetClipboardText(L"xyz"));
            HoldControl(true);
        })
        .Press('V')
        .Do([&](HWND dlg) {
            HoldControl(false);
            afterPaste = ItemText(dlg, kEdit);
        })
        .Click(kOk)
        .Do([&](HWND dlg) {
            refusedSelection = Selection(dlg);
            SendDlgItemMessageW(dlg, kEdit, EM_SETSEL, 0, 3);
        })
        .Press(VK_DELETE)
        .Inspect([&](HWND dlg) { afterDelete = ItemText(dlg, kEdit); })
        .Press(VK_RETURN);
    const std::wstring name = Run(1, 1, full.c_str(), S_OK);
    EXPECT_TRUE(SetClipboardText(L""));
    EXPECT_EQ(accepted, afterAccepted) << "a typed key up to 255 characters is taken";
    EXPECT_EQ(accepted, afterTyped) << "the 256th typed character is taken back";
    // taking the key back puts the text of before into the field, with the caret at its start
    EXPECT_EQ(L"xyz" + accepted, afterPaste) << "the paste stays";
    EXPECT_EQ(std::make_pair(DWORD(0), DWORD(258)), refusedSelection) << "OK refused the paste and selected it all";
    EXPECT_EQ(accepted, afterDelete);
    EXPECT_EQ(accepted, name);
}

}  // namespace
}  // namespace kxtest
