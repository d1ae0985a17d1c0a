#include "tests/win/dialogs/message_box_cases.h"

#include <algorithm>
#include <vector>

#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/skin_recorder.h"

namespace kxtest {

namespace {

const HRESULT kCancelled = static_cast<HRESULT>(0x800704C7L);
const int kClose = 1033, kFirst = 1034, kSecond = 1035, kIcon = 1045, kText = 1046, kCaption = 1070;

const wchar_t kShort[] = L"The playlist was saved.";
const wchar_t kLong[] =
    L"The picture could not be written to the library because the folder that holds it is read-only. "
    L"Check the permissions of the folder, or choose another folder for your pictures in the library's "
    L"settings, and then try again. Nothing in the library was changed, and the original picture is still "
    L"where it was before you started.";

// A string of ComRcRes.dll, as the buttons should show it.
std::wstring ResourceText(UINT id) {
    HMODULE res = LoadLibraryExW((ExeDir() + L"ComRcRes.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    wchar_t buffer[256] = {};
    if (res) LoadStringW(res, id, buffer, 256);
    if (res) FreeLibrary(res);
    return buffer;
}

int Height(const RECT& rc) { return rc.bottom - rc.top; }
int Width(const RECT& rc) { return rc.right - rc.left; }

// Height that `text` needs when wrapped in the width of control `id`, drawn in `font`.
int NeededHeight(HWND dlg, int id, const std::wstring& text, HFONT font) {
    RECT rc = ItemRect(dlg, id);
    RECT calc = {0, 0, Width(rc), 0};
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, font);
    DrawTextW(dc, text.c_str(), -1, &calc, DT_CALCRECT | DT_EXTERNALLEADING | DT_WORDBREAK);
    SelectObject(dc, old);
    DeleteDC(dc);
    return calc.bottom;
}

struct Geometry {
    RECT window, caption, text, first, second;
};

Geometry Measure(HWND dlg) {
    Geometry g;
    GetWindowRect(dlg, &g.window);
    g.caption = ItemRect(dlg, kCaption);
    g.text = ItemRect(dlg, kText);
    g.first = ItemRect(dlg, kFirst);
    g.second = ItemRect(dlg, kSecond);
    return g;
}

}  // namespace

void MessageBoxCases::SetUp() {
    WatchTaskMemory();
    shower = MakeShower();
    ASSERT_NE(nullptr, shower);
    // a first box pays for what the process keeps once (fonts, classes, the dialog manager)
    {
        DialogDriver warmup;
        warmup.Close();
        shower->Show(nullptr, L"warm-up", L"warm-up", MB_YESNO | MB_ICONHAND);
    }
    // the platform's shared icons stand in for the skin's pictures; the system keeps each once it
    // has been loaded
    for (LPCWSTR icon : {IDI_WARNING, IDI_ERROR, IDI_INFORMATION, IDI_QUESTION}) LoadIconW(nullptr, icon);
    before = CountResources();
}

void MessageBoxCases::TearDown() {
    ResourceCounts after = CountResources();
    EXPECT_EQ(before.windows, after.windows) << "windows left behind";
    EXPECT_EQ(before.gdiObjects, after.gdiObjects) << "GDI objects left behind";
    EXPECT_EQ(before.userObjects, after.userObjects) << "USER objects left behind";
    EXPECT_EQ(before.taskMemBlocks, after.taskMemBlocks) << "CoTaskMem blocks left behind";
    delete shower;
}

TEST_P(MessageBoxCases, EachButtonGivesItsResultWhenClicked) {
    struct Case {
        UINT flags;
        int button;
        HRESULT result;
    } cases[] = {
        {0, kFirst, 0},
        {MB_ICONASTERISK, kFirst, 0},
        {MB_YESNO, kFirst, IDYES},
        {MB_YESNO | MB_DEFBUTTON2, kFirst, IDYES},
        {MB_YESNO, kSecond, IDNO},
        {MB_YESNO | MB_DEFBUTTON2, kSecond, IDNO},
        {MB_YESNO, kClose, kCancelled},
        {0, kClose, kCancelled},
    };
    for (const Case& c : cases) {
        DialogDriver driver;
        driver.Click(c.button);
        EXPECT_EQ(c.result, Show(kShort, L"Saved", c.flags)) << "flags " << c.flags << " button " << c.button;
        EXPECT_FALSE(driver.timedOut());
    }
}

TEST_P(MessageBoxCases, ReturnMeansWhatTheFocusSays) {
    struct Case {
        UINT flags;
        int focus;  // the message text stands for any window that is not a button
        HRESULT result;
    } cases[] = {
        {0, kFirst, 0},
        {0, kClose, kCancelled},
        {0, kText, kCancelled},
        {MB_YESNO, kFirst, IDYES},
        {MB_YESNO, kSecond, IDNO},
        {MB_YESNO, kClose, kCancelled},
        {MB_YESNO, kText, IDYES},
        {MB_YESNO | MB_DEFBUTTON2, kFirst, IDYES},
        {MB_YESNO | MB_DEFBUTTON2, kSecond, IDNO},
        {MB_YESNO | MB_DEFBUTTON2, kClose, kCancelled},
        {MB_YESNO | MB_DEFBUTTON2, kText, kCancelled},
    };
    for (const Case& c : cases) {
        DialogDriver driver;
        int focused = -1;
        driver.Focus(c.focus).Inspect([&](HWND dlg) { focused = FocusedId(dlg); }).Press(VK_RETURN);
        EXPECT_EQ(c.result, Show(kShort, L"Question", c.flags)) << "flags " << c.flags << " focus " << c.focus;
        EXPECT_EQ(c.focus, focused);
    }
}

TEST_P(MessageBoxCases, EscapeAndWmCloseCancel) {
    for (UINT flags : {0u, static_cast<UINT>(MB_YESNO), static_cast<UINT>(MB_YESNO | MB_DEFBUTTON2)}) {
        DialogDriver escape;
        escape.Press(VK_ESCAPE);
        EXPECT_EQ(kCancelled, Show(kShort, L"Question", flags)) << "Escape, flags " << flags;
    }
    DialogDriver driver;
    driver.Close();
    EXPECT_EQ(kCancelled, Show(kShort, L"Question", MB_YESNO));
}

TEST_P(MessageBoxCases, OneButtonTakesTheSecondButtonsPlaceAndTheFocus) {
    DialogDriver driver;
    Geometry g{};
    std::wstring first;
    bool secondVisible = true, secondEnabled = true;
    int focus = 0;
    driver.Inspect([&](HWND dlg) {
              g = Measure(dlg);
              first = ItemText(dlg, kFirst);
              secondVisible = ItemVisible(dlg, kSecond);
              secondEnabled = ItemEnabled(dlg, kSecond);
              focus = FocusedId(dlg);
          })
        .Click(kFirst);
    EXPECT_EQ(0, Show(kShort, L"Saved", 0));
    EXPECT_EQ(ResourceText(134), first);
    EXPECT_FALSE(first.empty());
    EXPECT_FALSE(secondVisible);
    EXPECT_FALSE(secondEnabled);
    EXPECT_EQ(kFirst, focus);
    EXPECT_EQ(g.second.left, g.first.left);
    EXPECT_EQ(g.second.top, g.first.top);
    EXPECT_EQ(Width(g.second), Width(g.first));
}

TEST_P(MessageBoxCases, YesNoShowsBothButtonsAndDefButton2MovesTheDefaultAndTheFocus) {
    for (bool second : {false, true}) {
        DialogDriver driver;
        std::wstring yes, no;
        DWORD firstStyle = 0, secondStyle = 0;
        int focus = 0;
        driver.Inspect([&](HWND dlg) {
                  yes = ItemText(dlg, kFirst);
                  no = ItemText(dlg, kSecond);
                  firstStyle = ItemStyle(dlg, kFirst);
                  secondStyle = ItemStyle(dlg, kSecond);
                  focus = FocusedId(dlg);
                  EXPECT_TRUE(ItemVisible(dlg, kFirst) && ItemVisible(dlg, kSecond));
                  EXPECT_TRUE(ItemEnabled(dlg, kSecond));
              })
            .Close();
        Show(kShort, L"Question", MB_YESNO | (second ? MB_DEFBUTTON2 : 0));
        EXPECT_EQ(ResourceText(180), yes);
        EXPECT_EQ(ResourceText(181), no);
        EXPECT_NE(yes, no);
        EXPECT_EQ(second ? 0u : static_cast<DWORD>(BS_DEFPUSHBUTTON), firstStyle & BS_DEFPUSHBUTTON);
        EXPECT_EQ(second ? static_cast<DWORD>(BS_DEFPUSHBUTTON) : 0u, secondStyle & BS_DEFPUSHBUTTON);
        EXPECT_EQ(second ? kSecond : kFirst, focus);
    }
}

TEST_P(MessageBoxCases, TextsAreShownAndANullCaptionShowsTheDefault) {
    DialogDriver driver;
    std::wstring caption, text;
    driver.Inspect([&](HWND dlg) {
              caption = ItemText(dlg, kCaption);
              text = ItemText(dlg, kText);
          })
        .Close();
    Show(kShort, nullptr, 0);
    EXPECT_EQ(shower->DefaultCaption(), caption);
    EXPECT_EQ(kShort, text);

    DialogDriver empty;
    empty.Inspect([&](HWND dlg) { text = ItemText(dlg, kText); }).Close();
    EXPECT_EQ(kCancelled, Show(nullptr, L"Caption", 0)) << "a null text is allowed";
    EXPECT_EQ(L"", text);
}

TEST_P(MessageBoxCases, AShortMessageKeepsTheTemplateSize) {
    Geometry plain{}, shortText{};
    DialogDriver d1;
    d1.Inspect([&](HWND dlg) { plain = Measure(dlg); }).Close();
    Show(L"", L"", 0);
    DialogDriver d2;
    d2.Inspect([&](HWND dlg) { shortText = Measure(dlg); }).Close();
    Show(kShort, L"Saved", MB_ICONASTERISK);
    EXPECT_EQ(Height(plain.window), Height(shortText.window));
    EXPECT_EQ(Height(plain.text), Height(shortText.text));
    EXPECT_EQ(plain.caption.top, shortText.caption.top);
}

TEST_P(MessageBoxCases, ALongMessageGrowsTheDialogAndTheTextByTheMeasuredExtra) {
    Geometry plain{}, grown{};
    int needed = 0;
    bool textIsBelowCaption = false, buttonsBelowText = false;
    DialogDriver d1;
    d1.Inspect([&](HWND dlg) { plain = Measure(dlg); }).Close();
    Show(L"", L"Not saved", MB_ICONHAND);
    DialogDriver d2;
    d2.Inspect([&](HWND dlg) {
          grown = Measure(dlg);
          needed = NeededHeight(dlg, kText, kLong, reinterpret_cast<HFONT>(SendMessageW(dlg, WM_GETFONT, 0, 0)));
          textIsBelowCaption = grown.text.top >= grown.caption.bottom;
          buttonsBelowText = grown.first.top >= grown.text.bottom;
      }).Close();
    Show(kLong, L"Not saved", MB_ICONHAND);
    int extra = needed - Height(plain.text);
    ASSERT_GT(extra, 0) << "the long message needs more than the template's room";
    EXPECT_EQ(Height(plain.window) + extra + 4, Height(grown.window));
    EXPECT_EQ(Height(plain.text) + extra + 2, Height(grown.text));
    EXPECT_EQ(plain.text.top, grown.text.top) << "the message keeps its top";
    EXPECT_EQ(plain.caption.top, grown.caption.top);
    EXPECT_EQ(Height(plain.caption), Height(grown.caption));
    EXPECT_TRUE(textIsBelowCaption);
    EXPECT_TRUE(buttonsBelowText) << "the template's layout keeps the buttons under the text";
    EXPECT_EQ(plain.first.top + extra + 4, grown.first.top);
}

TEST_P(MessageBoxCases, ALongCaptionPushesTheMessageDown) {
    const wchar_t caption[] =
        L"The library could not save the changes you made to the album, the artist and the genre of 214 tracks";
    Geometry plain{}, grown{};
    int captionNeeded = 0, textNeeded = 0;
    DialogDriver d1;
    d1.Inspect([&](HWND dlg) { plain = Measure(dlg); }).Close();
    Show(L"", L"", 0);
    DialogDriver d2;
    d2.Inspect([&](HWND dlg) {
          grown = Measure(dlg);
          HFONT font = reinterpret_cast<HFONT>(SendMessageW(GetDlgItem(dlg, kCaption), WM_GETFONT, 0, 0));
          captionNeeded = NeededHeight(dlg, kCaption, caption, font);
          textNeeded =
              NeededHeight(dlg, kText, kLong, reinterpret_cast<HFONT>(SendMessageW(dlg, WM_GETFONT, 0, 0)));
      }).Close();
    Show(kLong, caption, MB_ICONEXCLAMATION);
    int captionExtra = captionNeeded - Height(plain.caption);
    int textExtra = textNeeded - Height(plain.text);
    ASSERT_GT(captionExtra, 0);
    ASSERT_GT(textExtra, 0);
    EXPECT_EQ(Height(plain.caption) + captionExtra + 2, Height(grown.caption));
    EXPECT_EQ(plain.text.top + captionExtra + 2, grown.text.top);
    EXPECT_EQ(Height(plain.text) + textExtra + 2, Height(grown.text));
    EXPECT_EQ(Height(plain.window) + captionExtra + textExtra + 4, Height(grown.window));
    EXPECT_GE(grown.text.top, grown.caption.bottom) << "the message starts under the grown caption";

    // a message that fits is pushed down all the same, and keeps its height
    Geometry pushed{};
    DialogDriver d3;
    d3.Inspect([&](HWND dlg) { pushed = Measure(dlg); }).Close();
    Show(L"Saved.", caption, 0);
    EXPECT_EQ(plain.text.top + captionExtra + 2, pushed.text.top);
    EXPECT_EQ(Height(plain.text), Height(pushed.text));
    EXPECT_EQ(Height(plain.window) + captionExtra + 4, Height(pushed.window));
    EXPECT_GE(pushed.text.top, pushed.caption.bottom);
}

TEST_P(MessageBoxCases, TheSkinIsAttachedAndReleasedCallByCall) {
    SkinRecorder skin;
    DialogDriver driver;
    driver.Click(kFirst);
    EXPECT_EQ(IDYES, Show(kShort, L"Question", MB_YESNO | MB_ICONQUESTION));
    std::vector<std::string> lines = skin.Lines();
    ASSERT_EQ(7u, lines.size());
    EXPECT_EQ("load", lines[0]);
    EXPECT_EQ("call op=0x1 hook=0x0 0x0 0x0 0x0", lines[1]);
    EXPECT_EQ(0u, lines[2].find("call op=0x1000 hook=0x4b01 window=#32770 file=IDD_DIALOG_MESSGAEBOX.ini path="))
        << lines[2];
    EXPECT_NE(std::string::npos, lines[2].find("\\ComRcRes.bff")) << lines[2];
    EXPECT_EQ("static id=1045 form=2 picture=Question Mark.png", lines[3]);
    EXPECT_EQ("call op=0x4 hook=0x4b01 0x0 0x0 0x0", lines[4]);
    EXPECT_EQ("call op=0x2 hook=0x4b01 0x0 0x0 0x0", lines[5]);
    EXPECT_EQ("free", lines[6]);
}

TEST_P(MessageBoxCases, EachIconFlagSendsItsPictureAndNoFlagSendsNone) {
    SkinRecorder skin;
    struct Case {
        UINT flags;
        const char* line;
    } cases[] = {
        {MB_ICONEXCLAMATION, "static id=1045 form=2 picture=Exclamation.png"},
        {MB_ICONHAND, "static id=1045 form=2 picture=Criticalerror.png"},
        {MB_ICONASTERISK, "static id=1045 form=2 picture=balloon Info.png"},
        {MB_ICONQUESTION, "static id=1045 form=2 picture=Question Mark.png"},
        {0x50, "static id=1045 form=2 picture=Criticalerror.png"},
        {0x60, "static id=1045 form=2 picture=balloon Info.png"},
        {0, nullptr},
        {MB_YESNO | MB_DEFBUTTON2, nullptr},
    };
    for (const Case& c : cases) {
        skin.Clear();
        DialogDriver driver;
        driver.Close();
        Show(kShort, L"Caption", c.flags);
        std::vector<std::string> statics = skin.LinesStartingWith("static");
        if (c.line) {
            ASSERT_EQ(1u, statics.size()) << "flags " << c.flags;
            EXPECT_EQ(c.line, statics[0]);
        } else {
            EXPECT_TRUE(statics.empty()) << "flags " << c.flags;
        }
    }
}

TEST_P(MessageBoxCases, ADialogStartedTwiceLoadsAndFreesTheSkinTwice) {
    SkinRecorder skin;
    for (int i = 0; i < 2; ++i) {
        DialogDriver driver;
        driver.Press(VK_ESCAPE);
        Show(kShort, L"Caption", 0);
    }
    EXPECT_EQ(2u, skin.LinesStartingWith("load").size());
    EXPECT_EQ(2u, skin.LinesStartingWith("free").size());
    EXPECT_EQ(2u, skin.LinesStartingWith("call op=0x1 ").size());
    EXPECT_EQ(2u, skin.LinesStartingWith("call op=0x2 ").size());
}

TEST_P(MessageBoxCases, ARefusedHookLeavesTheDialogWorkingUnskinned) {
    SkinRecorder skin("1");
    DialogDriver driver;
    HICON icon = nullptr;
    driver.Inspect([&](HWND dlg) {
              icon = reinterpret_cast<HICON>(SendDlgItemMessageW(dlg, kIcon, STM_GETICON, 0, 0));
          })
        .Click(kSecond);
    EXPECT_EQ(IDNO, Show(kShort, L"Question", MB_YESNO | MB_ICONQUESTION));
    std::vector<std::string> calls = skin.LinesStartingWith("call");
    ASSERT_EQ(1u, calls.size()) << "nothing is called after a refused hook";
    EXPECT_EQ("call op=0x1 hook=0x0 0x0 0x0 0x0 -> refused", calls[0]);
    EXPECT_EQ(1u, skin.LinesStartingWith("free").size());
    EXPECT_NE(nullptr, icon) << "unskinned, the platform's icon stands for the picture";
}

TEST_P(MessageBoxCases, WithoutTheSkinningLibraryTheDialogStillRuns) {
    ASSERT_EQ(nullptr, LoadLibraryW(L"HookWndU.DLL")) << "the skinning library must not be found here";
    DialogDriver driver;
    HICON icon = nullptr, none = reinterpret_cast<HICON>(1);
    driver.Inspect([&](HWND dlg) {
              icon = reinterpret_cast<HICON>(SendDlgItemMessageW(dlg, kIcon, STM_GETICON, 0, 0));
          })
        .Click(kFirst);
    EXPECT_EQ(0, Show(kShort, L"Saved", MB_ICONEXCLAMATION));
    EXPECT_NE(nullptr, icon);
    DialogDriver plain;
    plain.Inspect([&](HWND dlg) {
             none = reinterpret_cast<HICON>(SendDlgItemMessageW(dlg, kIcon, STM_GETICON, 0, 0));
         })
        .Click(kFirst);
    EXPECT_EQ(0, Show(kShort, L"Saved", 0));
    EXPECT_EQ(nullptr, none) << "flags 0 show no picture";
}

TEST_P(MessageBoxCases, AnOverlongMessageAndCaptionStillGiveAWorkingBox) {
    std::wstring text, caption(2000, L'W');
    for (int i = 0; i < 4000; ++i) text += L"word ";
    DialogDriver driver;
    std::wstring shown;
    driver.Inspect([&](HWND dlg) { shown = ItemText(dlg, kCaption); }).Click(kSecond);
    EXPECT_EQ(IDNO, Show(text.c_str(), caption.c_str(), MB_YESNO | MB_ICONHAND));
    EXPECT_EQ(caption, shown);
    EXPECT_FALSE(driver.timedOut());
}

TEST_P(MessageBoxCases, TheOwnerIsDisabledWhileTheBoxRuns) {
    {
        // the window manager's cache of device contexts grows once a painted owner is
        // reactivated; what counts is what a second run leaves
        HWND first = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200, nullptr,
                                     nullptr, nullptr, nullptr);
        DialogDriver warmup;
        warmup.Close();
        Show(kShort, L"Question", MB_YESNO, first);
        DestroyWindow(first);
        before = CountResources();
    }
    HWND owner = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200, nullptr, nullptr,
                                 nullptr, nullptr);
    ASSERT_NE(nullptr, owner);
    DialogDriver driver;
    bool ownerEnabled = true;
    HWND dialogOwner = nullptr;
    driver.Inspect([&](HWND dlg) {
              ownerEnabled = IsWindowEnabled(owner) != FALSE;
              dialogOwner = GetWindow(dlg, GW_OWNER);
          })
        .Click(kSecond);
    EXPECT_EQ(IDNO, Show(kShort, L"Question", MB_YESNO, owner));
    EXPECT_FALSE(ownerEnabled);
    EXPECT_EQ(owner, dialogOwner);
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

}  // namespace kxtest
