// Our skinning library HookWndU.DLL, loaded from its own folder: its protocol answered operation by
// operation, a dialog and a popup skinned from a package of test pictures, and a dialog of the
// plug-in skinned through it as a host runs it. Every test ends with the windows, GDI and USER
// objects it started with.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kx/IKxCommonResource.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/hookwnd/real_skin.h"

namespace kxtest {
namespace {

using CallHookWndFn = DWORD_PTR(WINAPI*)(DWORD_PTR, DWORD_PTR, DWORD_PTR, DWORD_PTR, DWORD_PTR);

// The colours of the test pictures and of the shipped description files.
const COLORREF kQuestionMark = RGB(0x10, 0xA0, 0x50), kNewPlaylist = RGB(0x50, 0x30, 0xC0);
const COLORREF kBubble = RGB(0xFF, 0xF8, 0xD0), kBubbleBR = RGB(0xD0, 0xE8, 0xFF);
const COLORREF kDialogBackground = RGB(0xFF, 0xFF, 0xFF);

struct PopupDescriptor {  // as the plug-in fills it
    DWORD cbSize;
    LPCWSTR pszPackage;
    DWORD_PTR reserved1;
    const char* pszPicture;
    BYTE reserved2[24];
};

class SkinLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        module = LoadLibraryW(L"HookWndU.DLL");
        ASSERT_NE(nullptr, module);
        wchar_t path[MAX_PATH] = {};
        GetModuleFileNameW(module, path, MAX_PATH);
        ASSERT_NE(nullptr, wcsstr(path, L"\\hookwnd\\HookWndU.DLL")) << "the real library, not a double";
        call = reinterpret_cast<CallHookWndFn>(reinterpret_cast<void*>(GetProcAddress(module, "CallHookWnd")));
        ASSERT_NE(nullptr, call);
        staticMessage = RegisterWindowMessageW(L"WM_HKSTATIC_FUNCTION");
        // a first skinned dialog pays for what the process keeps once (classes, fonts, GDI+)
        HWND dlg = MakeDialog();
        const DWORD_PTR hook = Call(1, 0);
        AttachDialog(hook, dlg, "IDD_DIALOG_ADDTOPLAYLIST.ini", RealSkin::TestPackage());
        PrintedWindow warm(dlg), warmPicture(GetDlgItem(dlg, 1054));
        // and for the platform's own way of showing a bitmap in a static
        std::vector<DWORD> pixels(32 * 32, 0x00FF0000);
        HBITMAP bitmap = CreateBitmap(32, 32, 1, 32, pixels.data());
        SendDlgItemMessageW(dlg, 1054, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
        PrintedWindow platformPicture(GetDlgItem(dlg, 1054));
        DeleteObject(reinterpret_cast<HBITMAP>(SendDlgItemMessageW(dlg, 1054, STM_SETIMAGE, IMAGE_BITMAP, 0)));
        Call(4, hook);
        Call(2, hook);
        DestroyWindow(dlg);
        before = CountResources();
    }
    void TearDown() override {
        EXPECT_EQ("", Leftovers(before));
        if (module) FreeLibrary(module);
    }
    DWORD_PTR Call(DWORD_PTR op, DWORD_PTR hook, DWORD_PTR third = 0, DWORD_PTR fourth = 0, DWORD_PTR fifth = 0) {
        return call(op, hook, third, fourth, fifth);
    }
    DWORD_PTR AttachDialog(DWORD_PTR hook, HWND dialog, const char* ini, const std::wstring& package) {
        return Call(0x1000, hook, reinterpret_cast<DWORD_PTR>(dialog), reinterpret_cast<DWORD_PTR>(ini),
                    reinterpret_cast<DWORD_PTR>(package.c_str()));
    }
    // A top-level dialog window with one picture static (1054) and one text static (1055).
    HWND MakeDialog() {
        HWND dlg = CreateWindowExW(0, L"#32770", L"test", WS_POPUP | WS_CAPTION | WS_VISIBLE, 20, 20, 300, 160,
                                   nullptr, nullptr, nullptr, nullptr);
        CreateWindowExW(0, L"Static", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP | SS_REALSIZECONTROL, 8, 8, 32, 32, dlg,
                        reinterpret_cast<HMENU>(1054), nullptr, nullptr);
        CreateWindowExW(0, L"Static", L"Heading", WS_CHILD | WS_VISIBLE, 48, 8, 200, 16, dlg,
                        reinterpret_cast<HMENU>(1055), nullptr, nullptr);
        return dlg;
    }

    RealSkin skin;
    ResourceCounts before{};
    HMODULE module = nullptr;
    CallHookWndFn call = nullptr;
    UINT staticMessage = 0;
};

TEST_F(SkinLibrary, AnswersEachOperationOnlyForHandlesItOpened) {
    const std::wstring package = RealSkin::TestPackage();
    HWND dlg = MakeDialog();
    const DWORD_PTR a = Call(1, 0), b = Call(1, 0);
    ASSERT_NE(0u, a);
    ASSERT_NE(0u, b);
    EXPECT_NE(a, b);
    const std::wstring missing = package + L".missing";
    const struct {
        const char* what;
        DWORD_PTR result;
        DWORD_PTR got;
    } rows[] = {
        {"open with a handle", 0, Call(1, a)},
        {"unknown handle", 0, Call(4, a + b + 100)},
        {"unknown operation", 0, Call(5, a)},
        {"no package", 0, AttachDialog(a, dlg, "IDD_DIALOG_ADDTOPLAYLIST.ini", missing)},
        {"no description file", 0, AttachDialog(a, dlg, "IDD_DIALOG_NOSUCH.ini", package)},
        {"null description file", 0, AttachDialog(a, dlg, nullptr, package)},
        {"no window", 0, AttachDialog(a, nullptr, "IDD_DIALOG_ADDTOPLAYLIST.ini", package)},
        {"release of nothing", 0, Call(4, a)},
        {"dialog", 1, AttachDialog(a, dlg, "IDD_DIALOG_ADDTOPLAYLIST.ini", package)},
        {"second window on one hook", 0, AttachDialog(a, dlg, "IDD_DIALOG_ADDTOPLAYLIST.ini", package)},
        {"popup picture on a dialog", 0, Call(12, a, 1, 0, reinterpret_cast<DWORD_PTR>("ISpeechBubble.png"))},
        {"same dialog through a second hook", 1, AttachDialog(b, dlg, "IDD_DIALOG_MESSGAEBOX.ini", package)},
        {"release", 1, Call(4, a)},
        {"release again", 0, Call(4, a)},
        {"close", 1, Call(2, a)},
        {"close again", 0, Call(2, a)},
        {"closed handle", 0, AttachDialog(a, dlg, "IDD_DIALOG_ADDTOPLAYLIST.ini", package)},
        {"other hook still attached: release", 1, Call(4, b)},
        {"other hook: close", 1, Call(2, b)},
    };
    for (const auto& r : rows) EXPECT_EQ(r.result, r.got) << r.what;
    DestroyWindow(dlg);
}

TEST_F(SkinLibrary, DialogStaticsShowPackagePicturesUntilThePlatformsImageTakesOver) {
    HWND dlg = MakeDialog();
    HWND picture = GetDlgItem(dlg, 1054), heading = GetDlgItem(dlg, 1055);
    const LONG_PTR pictureProc = GetWindowLongPtrW(picture, GWLP_WNDPROC);
    const LONG_PTR dialogProc = GetWindowLongPtrW(dlg, GWLP_WNDPROC);
    const HFONT font = reinterpret_cast<HFONT>(SendMessageW(heading, WM_GETFONT, 0, 0));

    const DWORD_PTR hook = Call(1, 0);
    ASSERT_EQ(1u, AttachDialog(hook, dlg, "IDD_DIALOG_ADDTOPLAYLIST.ini", RealSkin::TestPackage()));
    EXPECT_EQ(kNewPlaylist, PrintedWindow(picture).At(16, 16)) << "the description file's picture";
    EXPECT_EQ(kDialogBackground, PrintedWindow(dlg).At(280, 4));
    LOGFONTW lf = {};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(heading, WM_GETFONT, 0, 0)), sizeof(lf), &lf);
    EXPECT_EQ(FW_BOLD, lf.lfWeight) << "the heading in the bold face of the skin's font";
    EXPECT_STREQ(L"Tahoma", lf.lfFaceName);

    auto form2 = [&](const char* name) {
        return SendMessageW(picture, staticMessage, 2, reinterpret_cast<LPARAM>(name));
    };
    EXPECT_EQ(1, form2("Question Mark.png"));
    EXPECT_EQ(kQuestionMark, PrintedWindow(picture).At(16, 16));
    EXPECT_EQ(kDialogBackground, PrintedWindow(picture).At(0, 0)) << "transparent corners over the dialog";
    EXPECT_EQ(0, form2("No Such Picture.png"));
    EXPECT_EQ(0, form2(nullptr));
    EXPECT_EQ(kQuestionMark, PrintedWindow(picture).At(16, 16)) << "a missing picture changes nothing";

    // the album art control alternates between its own bitmap and the skin's picture
    std::vector<DWORD> redPixels(32 * 32, 0x00FF0000);
    HBITMAP red = CreateBitmap(32, 32, 1, 32, redPixels.data());
    SendMessageW(picture, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(red));
    EXPECT_EQ(RGB(255, 0, 0), PrintedWindow(picture).At(16, 16));
    EXPECT_EQ(1, form2("Question Mark.png"));
    EXPECT_EQ(kQuestionMark, PrintedWindow(picture).At(16, 16));
    DeleteObject(reinterpret_cast<HBITMAP>(SendMessageW(picture, STM_SETIMAGE, IMAGE_BITMAP, 0)));

    EXPECT_EQ(1u, Call(4, hook));
    EXPECT_EQ(pictureProc, GetWindowLongPtrW(picture, GWLP_WNDPROC)) << "the static's subclassing undone";
    EXPECT_EQ(dialogProc, GetWindowLongPtrW(dlg, GWLP_WNDPROC)) << "the dialog's subclassing undone";
    EXPECT_EQ(font, reinterpret_cast<HFONT>(SendMessageW(heading, WM_GETFONT, 0, 0))) << "the font given back";
    EXPECT_EQ(0, form2("Question Mark.png"));
    EXPECT_EQ(1u, Call(2, hook));
    DestroyWindow(dlg);
}

LRESULT CALLBACK PlainProc(HWND h, UINT m, WPARAM w, LPARAM l) { return DefWindowProcW(h, m, w, l); }

TEST_F(SkinLibrary, APopupTakesTheShapeOfItsPictureAtEverySizeAndItsTextStaysOverIt) {
    WNDCLASSEXW wc = {sizeof(wc)};
    wc.lpfnWndProc = &PlainProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"KxTestBubble";
    RegisterClassExW(&wc);
    // as the bubble comes: 0 x 0 at the attach, its statics created before, moved afterwards
    HWND popup = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"KxTestBubble", L"",
                                 WS_POPUP | WS_CLIPCHILDREN, 100, 100, 0, 0, nullptr, nullptr, nullptr, nullptr);
    HWND title = CreateWindowExW(0, L"Static", L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, popup,
                                 reinterpret_cast<HMENU>(0xffff), nullptr, nullptr);
    const std::wstring package = RealSkin::TestPackage();
    PopupDescriptor d = {sizeof(d), package.c_str(), 0, "ISpeechBubble.png", {}};
    const DWORD_PTR hook = Call(1, 0);
    PopupDescriptor wrongSize = d;
    wrongSize.cbSize = 12;
    EXPECT_EQ(0u, Call(3, hook, 0, reinterpret_cast<DWORD_PTR>(popup), reinterpret_cast<DWORD_PTR>(&wrongSize)));
    PopupDescriptor noPicture = d;
    for (const char* name : {"NoSuchBubble.png", "Popup.ini"}) {  // missing, and no picture at all
        noPicture.pszPicture = name;
        EXPECT_EQ(0u, Call(3, hook, 0, reinterpret_cast<DWORD_PTR>(popup), reinterpret_cast<DWORD_PTR>(&noPicture)));
    }
    ASSERT_EQ(1u, Call(3, hook, 0, reinterpret_cast<DWORD_PTR>(popup), reinterpret_cast<DWORD_PTR>(&d)));

    MoveWindow(popup, 100, 100, 250, 130, TRUE);
    MoveWindow(title, 76, 24, 150, 20, TRUE);
    SendMessageW(title, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    EXPECT_EQ(1, SendMessageW(title, staticMessage, 1, 0));
    SetWindowTextW(title, L"Title");
    EXPECT_EQ(1u, Call(12, hook, 1, 0, reinterpret_cast<DWORD_PTR>("ISpeechBubble.png")));

    struct Probe {
        int x, y;
        bool inside;
    };
    auto checkRegion = [&](const char* what, std::initializer_list<Probe> probes) {
        HRGN region = CreateRectRgn(0, 0, 0, 0);
        ASSERT_NE(ERROR, GetWindowRgn(popup, region)) << what;
        for (const Probe& p : probes)
            EXPECT_EQ(p.inside, PtInRegion(region, p.x, p.y) != FALSE) << what << " at " << p.x << "," << p.y;
        DeleteObject(region);
    };
    // the point keeps 6 px from the left edge, the corners stay cut, the middle grew
    checkRegion("point on top", {{6, 0, true}, {5, 0, false}, {7, 0, false}, {0, 12, false}, {1, 12, true},
                                 {248, 128, true}, {249, 129, false}, {125, 11, false}, {125, 60, true}});
    const PrintedWindow printedTitle(title);
    EXPECT_EQ(kBubble, printedTitle.At(printedTitle.width() - 1, printedTitle.height() - 1))
        << "the title's background is the picture";
    bool textDrawn = false;
    for (int y = 0; y < printedTitle.height(); ++y)
        for (int x = 0; x < 40; ++x) textDrawn = textDrawn || printedTitle.At(x, y) != kBubble;
    EXPECT_TRUE(textDrawn);

    // a new picture with the point at the bottom right, then a smaller window
    EXPECT_EQ(1u, Call(12, hook, 1, 0, reinterpret_cast<DWORD_PTR>("ISpeechBubbleBR.png")));
    checkRegion("point at the bottom right", {{250 - 7, 129, true}, {250 - 8, 129, false}, {6, 0, false}});
    EXPECT_EQ(kBubbleBR, PrintedWindow(popup).At(125, 40));
    MoveWindow(popup, 100, 100, 160, 100, TRUE);
    checkRegion("after WM_SIZE", {{160 - 7, 99, true}, {160 - 7, 90, true}, {160 - 20, 99, false}, {1, 1, true}});
    EXPECT_EQ(0u, Call(12, hook, 0, 0, reinterpret_cast<DWORD_PTR>("ISpeechBubble.png"))) << "third word 1 only";

    // the bubble's timer destroys it before its owner detaches
    DestroyWindow(popup);
    EXPECT_EQ(1u, Call(4, hook));
    EXPECT_EQ(1u, Call(2, hook));
    UnregisterClassW(L"KxTestBubble", GetModuleHandleW(nullptr));
}

// The twelve bubble shapes of the shipped package, stretched to a bubble of text as the bubble's
// layout makes it: the point where the window's corner puts the anchor (6 px from the left edge or
// 7 px from the right, on the top or the bottom row) and the whole text block (from x 76 to 10 px
// before the right edge, from the title's top 24 or 8 down by the text's height) inside the shape.
TEST_F(SkinLibrary, EveryShippedBubbleShapeHasItsPointAndTextMarginsWhereTheLayoutPutsThem) {
    WNDCLASSEXW wc = {sizeof(wc)};
    wc.lpfnWndProc = &PlainProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"KxTestShape";
    RegisterClassExW(&wc);
    const std::wstring package = ExeDir() + L"ComRcRes.bff";
    const int width = 86 + 180, textHeight = 64 + 20, height = textHeight + 26;
    const struct {
        const char* suffix;
        bool right, bottom;  // where the point is
    } corners[] = {{"", false, false}, {"LB", false, true}, {"RT", true, false}, {"BR", true, true}};
    int checked = 0;
    for (const char* prefix : {"E", "", "I"}) {
        for (const auto& c : corners) {
            const std::string name = std::string(prefix) + "SpeechBubble" + c.suffix + ".png";
            SCOPED_TRACE(name);
            HWND popup = CreateWindowExW(WS_EX_TOOLWINDOW, L"KxTestShape", L"", WS_POPUP | WS_CLIPCHILDREN, 0, 0, 0,
                                         0, nullptr, nullptr, nullptr, nullptr);
            PopupDescriptor d = {sizeof(d), package.c_str(), 0, name.c_str(), {}};
            const DWORD_PTR hook = Call(1, 0);
            if (Call(3, hook, 0, reinterpret_cast<DWORD_PTR>(popup), reinterpret_cast<DWORD_PTR>(&d))) {
                ++checked;
                MoveWindow(popup, 0, 0, width, height, FALSE);
                HRGN region = CreateRectRgn(0, 0, 0, 0);
                GetWindowRgn(popup, region);
                const int tipX = c.right ? width - 7 : 6, tipY = c.bottom ? height - 1 : 0;
                EXPECT_TRUE(PtInRegion(region, tipX, tipY)) << "the point";
                EXPECT_FALSE(PtInRegion(region, c.right ? tipX - 10 : tipX + 10, tipY)) << "beside the point";
                const int top = c.bottom ? 8 : 24;
                for (const POINT& p : {POINT{76, top}, POINT{width - 11, top}, POINT{76, top + textHeight - 1},
                                       POINT{width - 11, top + textHeight - 1}})
                    EXPECT_TRUE(PtInRegion(region, p.x, p.y)) << "text block corner " << p.x << "," << p.y;
                DeleteObject(region);
            }
            Call(4, hook);
            Call(2, hook);
            DestroyWindow(popup);
        }
    }
    UnregisterClassW(L"KxTestShape", GetModuleHandleW(nullptr));
    EXPECT_EQ(12, checked) << "every shape is in the package";
}

// The message box of the plug-in, installed with the test package, skinned by the real library.
class SkinnedPluginDialog : public ::testing::Test {
protected:
    void SetUp() override {
        WatchTaskMemory();
        ASSERT_EQ(S_OK, plugin.Create(&resource));
        // a first box pays for what the process keeps once, reading pixels included
        DialogDriver warmup;
        warmup.Inspect([](HWND dlg) { PrintedWindow printed(dlg), icon(GetDlgItem(dlg, 1045)); }).Click(1034);
        resource->ShowMessageBox(nullptr, L"warm-up", L"warm-up", MB_YESNO | MB_ICONQUESTION);
        before = CountResources();
    }
    void TearDown() override {
        EXPECT_EQ("", Leftovers(before));
        if (resource) resource->Release();
    }

    RealSkin skin;
    InstalledPlugin installed;
    PluginLibrary plugin{installed.PluginPath()};
    IKxCommonResource* resource = nullptr;
    ResourceCounts before{};
};

TEST_F(SkinnedPluginDialog, TheMessageBoxShowsItsPackagePictureAndEachBoxLoadsAndFreesTheLibrary) {
    for (int run = 0; run < 2; ++run) {
        SCOPED_TRACE(run);
        COLORREF icon = 0, background = 0;
        bool loaded = false;
        DialogDriver driver;
        driver.Inspect([&](HWND dlg) {
            loaded = GetModuleHandleW(L"HookWndU.DLL") != nullptr;
            const PrintedWindow printed(GetDlgItem(dlg, 1045));
            icon = printed.At(printed.width() / 2, printed.height() / 2);
            background = PrintedWindow(dlg).At(4, 4);
        }).Click(1034);
        EXPECT_EQ(IDYES, resource->ShowMessageBox(nullptr, L"Save the changes?", L"Question",
                                                  MB_YESNO | MB_ICONQUESTION));
        EXPECT_TRUE(loaded);
        EXPECT_EQ(kQuestionMark, icon);
        EXPECT_EQ(kDialogBackground, background);
        EXPECT_EQ(nullptr, GetModuleHandleW(L"HookWndU.DLL")) << "freed with the dialog";
    }
}

}  // namespace
}  // namespace kxtest
