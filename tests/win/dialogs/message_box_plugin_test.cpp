// The message box through KxComResPlgin.dll as a host shows it (DllGetClassObject, the plug-in
// object, IKxCommonResource::ShowMessageBox), driven like a user. The decisions behind it are
// pinned row by row natively; these runs prove that the dialog applies them.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/dialogs/message_box_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"

namespace kxtest {
namespace {

const HRESULT kCancelled = static_cast<HRESULT>(0x800704C7L);
const int kClose = KX_IDC_MSGBOX_CLOSE, kFirst = KX_IDC_MSGBOX_FIRST, kSecond = KX_IDC_MSGBOX_SECOND,
          kIcon = KX_IDC_MSGBOX_ICON, kText = KX_IDC_MSGBOX_TEXT, kCaption = KX_IDC_MSGBOX_CAPTION;
const UINT kYn = MB_YESNO, kYn2 = MB_YESNO | MB_DEFBUTTON2;

const wchar_t kShort[] = L"The playlist was saved.";
const wchar_t kLong[] =
    L"The picture could not be written to the library because its folder is read-only. Check the folder's "
    L"permissions or choose another folder for your pictures in the settings, and then try again.";

int Height(const RECT& rc) { return rc.bottom - rc.top; }

// Height of `text` broken into the width of `rc` in the given font (the measuring the box does).
int WrappedHeight(HFONT font, const RECT& rc, const std::wstring& text) {
    RECT calc = {0, 0, rc.right - rc.left, 0};
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, font);
    DrawTextW(dc, text.c_str(), -1, &calc, DT_CALCRECT | DT_EXTERNALLEADING | DT_WORDBREAK);
    SelectObject(dc, old);
    DeleteDC(dc);
    return calc.bottom;
}

// The platform's icon in the picture control; null while the skin draws the picture.
HICON IconOf(HWND dlg) { return reinterpret_cast<HICON>(SendDlgItemMessageW(dlg, kIcon, STM_GETICON, 0, 0)); }

class MessageBoxThroughPlugin : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        ASSERT_EQ(S_OK, plugin.Create(&resource));
        owner = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200, nullptr, nullptr,
                                nullptr, nullptr);
        // a first box pays for what the process keeps once (fonts, classes, the dialog manager, the
        // window manager's cache of device contexts once a painted owner is reactivated)
        DialogDriver warmup;
        warmup.Close();
        Show(L"warm-up", L"warm-up", MB_YESNO | MB_ICONHAND);
        // the platform's shared icons stand in for the skin's pictures; the system keeps each
        for (LPCWSTR icon : {IDI_WARNING, IDI_ERROR, IDI_INFORMATION, IDI_QUESTION}) LoadIconW(nullptr, icon);
        before = CountResources();
    }
    void TearDown() override {
        EXPECT_EQ("", Leftovers(before));
        if (owner) DestroyWindow(owner);
        if (resource) resource->Release();
    }
    HRESULT Show(LPCWSTR text, LPCWSTR caption, UINT flags) {
        return resource->ShowMessageBox(owner, text, caption, flags);
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

TEST_F(MessageBoxThroughPlugin, ClicksKeysAndClosingGiveTheirResultsWithTheTextsButtonsAndUnskinnedIconOfTheFlags) {
    enum Action { Click, Return, Escape, Close };
    struct Case {
        UINT flags;
        Action action;
        int control;  // clicked, or focused before Return (0: the focus the box gave); the message
                      // text stands for any window that is not a button
        HRESULT result;
    } cases[] = {
        {MB_ICONEXCLAMATION, Click, kFirst, 0}, {kYn | MB_ICONQUESTION, Click, kFirst, IDYES},
        {kYn2 | MB_ICONHAND, Click, kSecond, IDNO}, {0, Click, kClose, kCancelled},
        {0, Return, 0, 0},          {0, Return, kText, kCancelled},    {kYn, Return, 0, IDYES},
        {kYn, Return, kText, IDYES}, {kYn, Return, kSecond, IDNO},     {kYn, Return, kClose, kCancelled},
        {kYn2, Return, 0, IDNO},    {kYn2, Return, kFirst, IDYES},     {kYn2, Return, kText, kCancelled},
        {kYn, Escape, 0, kCancelled}, {kYn, Close, 0, kCancelled},
    };
    const std::wstring defaultCaption = String(188), ok = String(134), yes = String(180), no = String(181);
    ASSERT_FALSE(defaultCaption.empty() || ok.empty() || yes.empty() || no.empty());
    ASSERT_EQ(nullptr, LoadLibraryW(L"HookWndU.DLL")) << "the skinning library must not be found here";
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "flags " << c.flags << " action " << c.action << " control " << c.control);
        DialogDriver driver;
        const bool yesNo = (c.flags & MB_YESNO) != 0, focusFirst = c.action == Return && c.control;
        int focused = focusFirst ? -1 : c.control;  // what the Focus step found, when the case has one
        bool ownerEnabled = true;
        driver.Inspect([&](HWND dlg) {
            ownerEnabled = IsWindowEnabled(owner) != FALSE;
            EXPECT_EQ(owner, GetWindow(dlg, GW_OWNER));
            EXPECT_EQ(defaultCaption, ItemText(dlg, kCaption)) << "a null caption shows string 188";
            EXPECT_EQ(kShort, ItemText(dlg, kText));
            EXPECT_EQ(yesNo ? yes : ok, ItemText(dlg, kFirst));
            const bool secondOn = ItemVisible(dlg, kSecond) && ItemEnabled(dlg, kSecond);
            EXPECT_EQ(yesNo ? no : L"", secondOn ? ItemText(dlg, kSecond) : L"") << "one button hides the second";
            RECT first = ItemRect(dlg, kFirst), second = ItemRect(dlg, kSecond);
            EXPECT_EQ(!yesNo, EqualRect(&first, &second) != FALSE) << "one button takes the second's place";
            EXPECT_EQ((c.flags & 0x70) != 0, IconOf(dlg) != nullptr) << "unskinned, the platform's icon stands in";
        });
        if (c.action == Click) driver.Click(c.control);
        if (focusFirst) driver.Focus(c.control).Inspect([&](HWND dlg) { focused = FocusedId(dlg); });
        if (c.action == Return || c.action == Escape) driver.Press(c.action == Return ? VK_RETURN : VK_ESCAPE);
        if (c.action == Close) driver.Close();
        EXPECT_EQ(c.result, Show(kShort, nullptr, c.flags));
        EXPECT_EQ(c.control, focused);
        EXPECT_FALSE(ownerEnabled) << "the owner is disabled while the box runs";
        EXPECT_TRUE(IsWindowEnabled(owner));
        EXPECT_FALSE(driver.timedOut());
    }
}

TEST_F(MessageBoxThroughPlugin, ALongMessageGrowsTheDialogAndTheTextByTheMeasuredExtra) {
    struct Geometry {
        RECT window, caption, text, first;
        int needed;  // the height the long message needs in the message's width
    } g[2] = {};
    for (int run = 0; run < 2; ++run) {
        DialogDriver driver;
        driver.Inspect([&](HWND dlg) {
                  Geometry& m = g[run];
                  GetWindowRect(dlg, &m.window);
                  m.caption = ItemRect(dlg, kCaption);
                  m.text = ItemRect(dlg, kText);
                  m.first = ItemRect(dlg, kFirst);
                  m.needed = WrappedHeight(reinterpret_cast<HFONT>(SendMessageW(dlg, WM_GETFONT, 0, 0)), m.text, kLong);
              })
            .Close();
        Show(run ? kLong : L"", L"Not saved", MB_ICONHAND);
    }
    const Geometry &plain = g[0], &grown = g[1];
    int extra = grown.needed - Height(plain.text);
    ASSERT_GT(extra, 0) << "the long message needs more than the template's room";
    EXPECT_EQ(Height(plain.window) + extra + 4, Height(grown.window));
    EXPECT_EQ(Height(plain.text) + extra + 2, Height(grown.text));
    EXPECT_EQ(plain.text.top, grown.text.top) << "the message keeps its top";
    EXPECT_TRUE(EqualRect(&plain.caption, &grown.caption)) << "the caption stays";
    EXPECT_EQ(plain.first.top + extra + 4, grown.first.top) << "the template's layout keeps the buttons at the bottom";
}

// The caption is drawn bold, so it is measured bold: a caption that wraps only in bold still
// shows all its lines.
TEST_F(MessageBoxThroughPlugin, ACaptionThatWrapsOnlyInBoldGrowsToItsBoldHeight) {
    RECT caption = {};
    LOGFONTW lf = {};
    DialogDriver first;
    first.Inspect([&](HWND dlg) {
             caption = ItemRect(dlg, kCaption);
             GetObjectW(reinterpret_cast<HFONT>(SendMessageW(dlg, WM_GETFONT, 0, 0)), sizeof(lf), &lf);
         })
        .Close();
    Show(kShort, L"x", MB_ICONHAND);
    HFONT regular = CreateFontIndirectW(&lf);
    lf.lfWeight = FW_BOLD;
    HFONT bold = CreateFontIndirectW(&lf);
    std::wstring text;
    int boldHeight = 0;
    for (int words = 1; words < 200 && !boldHeight; ++words) {
        text += words % 2 ? L"Wide " : L"word ";
        const int b = WrappedHeight(bold, caption, text);
        if (b > Height(caption) && WrappedHeight(regular, caption, text) <= Height(caption)) boldHeight = b;
    }
    DeleteObject(regular);
    DeleteObject(bold);
    ASSERT_GT(boldHeight, 0) << "no caption wraps in bold only";

    RECT grown = {};
    DialogDriver second;
    second.Inspect([&](HWND dlg) { grown = ItemRect(dlg, kCaption); }).Close();
    Show(kShort, text.c_str(), MB_ICONHAND);
    EXPECT_GE(Height(grown), boldHeight);
}

TEST_F(MessageBoxThroughPlugin, EachBoxLoadsAttachesReleasesAndFreesTheSkinCallByCall) {
    SkinRecorder skin;
    for (int run = 0; run < 2; ++run) {
        DialogDriver driver;
        HICON icon = reinterpret_cast<HICON>(1);
        driver.Inspect([&](HWND dlg) { icon = IconOf(dlg); }).Click(kFirst);
        EXPECT_EQ(IDYES, Show(kShort, L"Question", MB_YESNO | MB_ICONQUESTION));
        EXPECT_EQ(nullptr, icon) << "the skin draws the picture";
    }
    const std::wstring dir = ExeDir();  // ASCII: the build tree
    const std::vector<std::string> box = {
        "load",
        "call op=0x1 hook=0x0 0x0 0x0 0x0",
        "call op=0x1000 hook=0x4b01 window=#32770 file=IDD_DIALOG_MESSGAEBOX.ini path=" +
            std::string(dir.begin(), dir.end()) + "ComRcRes.bff",
        "static id=" + std::to_string(kIcon) + " form=2 picture=Question Mark.png",
        "call op=0x4 hook=0x4b01 0x0 0x0 0x0",
        "call op=0x2 hook=0x4b01 0x0 0x0 0x0",
        "free",
    };
    std::vector<std::string> twice = box;
    twice.insert(twice.end(), box.begin(), box.end());
    EXPECT_EQ(twice, skin.Lines());
}

// A library that cannot open, or cannot attach, leaves the box working unskinned: the platform's
// icon stands for the picture, a hook that was opened is still released and closed, and the
// library is freed.
TEST_F(MessageBoxThroughPlugin, ARefusedSkinLeavesTheBoxWorkingUnskinned) {
    const struct {
        DWORD_PTR refuse;
        size_t refusedCall;              // which call the library answered with 0
        std::vector<std::string> calls;  // how each call line begins
    } cases[] = {
        {0x1, 0, {"call op=0x1 hook=0x0 0x0 0x0 0x0"}},
        {0x1000, 1,
         {"call op=0x1 hook=0x0 0x0 0x0 0x0", "call op=0x1000 hook=0x4b01 window=#32770 ",
          "call op=0x4 hook=0x4b01 0x0 0x0 0x0", "call op=0x2 hook=0x4b01 0x0 0x0 0x0"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "refused operation " << c.refuse);
        SkinRecorder skin(c.refuse);
        DialogDriver driver;
        HICON icon = nullptr;
        driver.Inspect([&](HWND dlg) { icon = IconOf(dlg); }).Click(kSecond);
        EXPECT_EQ(IDNO, Show(kShort, L"Question", MB_YESNO | MB_ICONQUESTION));
        EXPECT_NE(nullptr, icon);
        const std::vector<std::string> calls = skin.LinesStartingWith("call");
        ASSERT_EQ(c.calls.size(), calls.size());
        for (size_t i = 0; i < calls.size(); ++i) {
            EXPECT_EQ(0u, calls[i].rfind(c.calls[i], 0)) << calls[i];
            const bool refused = calls[i].find(" -> refused") != std::string::npos;
            EXPECT_EQ(i == c.refusedCall, refused) << calls[i];
        }
        EXPECT_TRUE(skin.LinesStartingWith("static").empty());
        const std::vector<std::string> lines = skin.Lines();
        EXPECT_EQ("free", lines.empty() ? "" : lines.back());
    }
}

}  // namespace
}  // namespace kxtest
