// The flat button and the picture static on real windows: the button's pixels in its states
// (drawn into a bitmap of the test's own, directly and through a dialog's WM_DRAWITEM), its
// hover repaints and its icon's end; the static's right click and context-menu keys reaching
// the parent. Nothing is left behind.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <memory>

#include "controls/win32/flat_button.h"
#include "controls/win32/static_extension.h"
#include "resources/dialogs/message_box_ids.h"
#include "resources/dialogs/template_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/framework_module.h"
#include "ui/dialog.h"
#include "ui/gdi_handles.h"
#include "ui/module_state.h"

namespace {

const COLORREF kBackdrop = RGB(255, 0, 255);
const COLORREF kIconColor = RGB(200, 0, 0);
const COLORREF kFocusColor = RGB(137, 173, 228);

// A 16 by 16 icon of one colour, opaque.
HICON MakeIcon() {
    CKxWindowDC screen(nullptr, false);
    CKxBitmap color(CreateCompatibleBitmap(screen.Get(), 16, 16));
    {
        CKxMemoryDC dc(screen.Get());
        CKxSelectObject selected(dc.Get(), color.Get());
        CKxBrush brush(CreateSolidBrush(kIconColor));
        RECT all = {0, 0, 16, 16};
        FillRect(dc.Get(), &all, brush.Get());
    }
    BYTE zeros[32] = {};
    CKxBitmap mask(CreateBitmap(16, 16, 1, 1, zeros));
    ICONINFO info = {TRUE, 0, 0, mask.Get(), color.Get()};
    return CreateIconIndirect(&info);
}

// A 40 by 40 bitmap to draw into, filled with the backdrop.
class Canvas {
public:
    Canvas() : m_dc(nullptr) {
        CKxWindowDC screen(nullptr, false);
        m_bitmap.Reset(CreateCompatibleBitmap(screen.Get(), 40, 40));
        m_selected.reset(new CKxSelectObject(m_dc.Get(), m_bitmap.Get()));
        CKxBrush brush(CreateSolidBrush(kBackdrop));
        RECT all = {0, 0, 40, 40};
        FillRect(m_dc.Get(), &all, brush.Get());
    }
    HDC dc() const { return m_dc.Get(); }
    COLORREF at(int x, int y) const { return GetPixel(m_dc.Get(), x, y); }

private:
    CKxMemoryDC m_dc;
    CKxBitmap m_bitmap;
    std::unique_ptr<CKxSelectObject> m_selected;
};

DRAWITEMSTRUCT Record(HWND button, HDC dc, UINT state) {
    DRAWITEMSTRUCT dis = {ODT_BUTTON, 1029, 0, ODA_DRAWENTIRE, state, button, dc, {0, 0, 40, 40}, 0};
    return dis;
}

class Controls : public ::testing::Test {
protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&icc);
        WarmUp();
        before = kxtest::CountResources();
        parent = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 300, 300, 200, 100, nullptr,
                                 nullptr, nullptr, nullptr);
        ASSERT_NE(nullptr, parent);
    }
    void TearDown() override {
        ::DestroyWindow(parent);
        EXPECT_EQ("", kxtest::Leftovers(before));
    }
    // The platform's first windows, paints and icons make objects it keeps for the process: they
    // are made once before counting.
    static void WarmUp() {
        HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 60, 60, nullptr, nullptr,
                                      nullptr, nullptr);
        CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 0, 40, 40, window, nullptr, nullptr, nullptr);
        UpdateWindow(window);
        {
            Canvas canvas;
            HICON icon = MakeIcon();
            DrawStateW(canvas.dc(), nullptr, nullptr, reinterpret_cast<LPARAM>(icon), 0, 0, 0, 16, 16, DST_ICON);
            DestroyIcon(icon);
        }
        ::DestroyWindow(window);
    }
    HWND Child(LPCWSTR className, DWORD style, int x = 10) {
        return CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, x, 10, 40, 40, parent, nullptr,
                               nullptr, nullptr);
    }

    kxtest::ResourceCounts before{};
    HWND parent = nullptr;
};

TEST_F(Controls, FlatButtonDrawsFaceFrameFocusAndIconByState) {
    CButtonFlat button;
    ASSERT_TRUE(button.SubclassWindow(Child(L"BUTTON", BS_OWNERDRAW)));
    {
        Canvas canvas;
        DRAWITEMSTRUCT dis = Record(button, canvas.dc(), ODS_FOCUS | ODS_SELECTED);
        button.DrawItem(&dis);
        EXPECT_EQ(kBackdrop, canvas.at(0, 0)) << "without an icon nothing is drawn";
        EXPECT_EQ(kBackdrop, canvas.at(20, 20));
    }
    button.SetIcon(MakeIcon());
    EXPECT_EQ(16, button.GetIconWidth());
    EXPECT_EQ(16, button.GetIconHeight());
    const COLORREF face = GetSysColor(COLOR_BTNFACE), light = GetSysColor(COLOR_3DHIGHLIGHT),
                   dark = GetSysColor(COLOR_BTNSHADOW);
    struct Case {
        UINT state;
        COLORREF topLeft, bottomRight, inner;
    } cases[] = {
        {0, face, face, face},
        {ODS_DISABLED, face, face, face},
        {ODS_SELECTED, face, face, face},  // pressed without hover or focus: flat
        {ODS_FOCUS, light, dark, kFocusColor},
        {ODS_FOCUS | ODS_SELECTED, dark, light, kFocusColor},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.state);
        Canvas canvas;
        DRAWITEMSTRUCT dis = Record(button, canvas.dc(), c.state);
        button.DrawItem(&dis);
        EXPECT_EQ(c.topLeft, canvas.at(0, 0));
        EXPECT_EQ(c.bottomRight, canvas.at(39, 39));
        EXPECT_EQ(c.inner, canvas.at(1, 1));
        EXPECT_EQ(c.inner, canvas.at(38, 38));
        EXPECT_EQ(face, canvas.at(3, 3));
        // (40 - 2 * 16) / 2: the icon from 4 to 19, unchanged when disabled or pressed
        EXPECT_EQ(kIconColor, canvas.at(4, 4));
        EXPECT_EQ(kIconColor, canvas.at(19, 19));
        EXPECT_EQ(face, canvas.at(20, 20));
        EXPECT_EQ((c.state & ODS_FOCUS) != 0, button.LastDrawnBits().m_bFocus != 0);
        EXPECT_EQ((c.state & ODS_SELECTED) != 0, button.LastDrawnBits().m_bPressed != 0);
    }
    // the icon taken over goes with the window; the object holds none after
    const HICON icon = button.GetIcon();
    ::DestroyWindow(button.m_hWnd);
    EXPECT_EQ(nullptr, button.GetIcon());
    ICONINFO info;
    EXPECT_FALSE(GetIconInfo(icon, &info));
}

TEST_F(Controls, FlatButtonRepaintsOnceOnEnteringAndWhenAWindowCoversIt) {
    CButtonFlat button;
    ASSERT_TRUE(button.SubclassWindow(Child(L"BUTTON", BS_OWNERDRAW)));
    button.SetIcon(MakeIcon());
    const HICON first = button.GetIcon();
    button.SetIcon(MakeIcon());
    ICONINFO info;
    EXPECT_FALSE(GetIconInfo(first, &info)) << "the former icon is destroyed";
    UpdateWindow(parent);
    RECT dirty;
    auto invalid = [&] { return GetUpdateRect(button, &dirty, FALSE) != FALSE; };
    ASSERT_FALSE(invalid());
    const LPARAM inside = MAKELPARAM(5, 5);
    SetCursorPos(315, 315);  // over the button, where the platform tracks the leaving

    button.SendMessage(WM_MOUSEMOVE, 0, inside);
    EXPECT_TRUE(button.IsHover());
    EXPECT_TRUE(invalid());
    TRACKMOUSEEVENT query = {sizeof(query), TME_QUERY, nullptr, 0};
    _TrackMouseEvent(&query);
    EXPECT_EQ(button.m_hWnd, query.hwndTrack) << "WM_MOUSELEAVE is asked for";
    EXPECT_TRUE(query.dwFlags & TME_LEAVE);
    ValidateRect(button, nullptr);
    button.SendMessage(WM_MOUSEMOVE, 0, inside);
    button.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(6, 7));
    EXPECT_FALSE(invalid()) << "moving within the button repaints nothing more";
    {
        Canvas canvas;
        DRAWITEMSTRUCT dis = Record(button, canvas.dc(), 0);
        button.DrawItem(&dis);
        EXPECT_EQ(GetSysColor(COLOR_3DHIGHLIGHT), canvas.at(0, 0)) << "hover raises the frame";
    }
    button.SendMessage(WM_MOUSELEAVE);
    EXPECT_FALSE(button.IsHover());
    EXPECT_TRUE(invalid());

    button.SendMessage(WM_MOUSEMOVE, 0, inside);
    ASSERT_TRUE(button.IsHover());
    ValidateRect(button, nullptr);
    // a sibling brought over the button
    HWND cover = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100, parent, nullptr, nullptr,
                                 nullptr);
    SetWindowPos(cover, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    ASSERT_EQ(cover, WindowFromPoint(POINT{315, 315}));
    button.SendMessage(WM_MOUSEMOVE, 0, inside);
    EXPECT_FALSE(button.IsHover()) << "a window over the button counts as leaving it";
    ::DestroyWindow(cover);
    ::DestroyWindow(button.m_hWnd);
    EXPECT_EQ(nullptr, button.GetIcon());
}

// The message box's template with one owner-drawn flat button added: the dialog hands its
// WM_DRAWITEM to the button.
class CFlatButtonDialog : public CDialog {
public:
    CFlatButtonDialog() : CDialog(KX_IDD_MESSAGEBOX) {}
    CButtonFlat m_flat;

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        m_flat.SubclassWindow(CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | BS_OWNERDRAW, 0, 0, 40, 40, m_hWnd,
                                              reinterpret_cast<HMENU>(1029), nullptr, nullptr));
        m_flat.SetIcon(MakeIcon());
        return TRUE;
    }
};

// Run twice: the first run makes what the platform keeps for a dialog; the second is counted.
TEST(FlatButtonInADialog, TheDialogHandsWmDrawItemToTheButton) {
    kxtest::FrameworkModule module;
    CKxManageState state;
    kxtest::ResourceCounts before{};
    for (int run = 0; run < 2; ++run) {
        if (run == 1) before = kxtest::CountResources();
        CFlatButtonDialog dlg;
        COLORREF drawn = kBackdrop;
        LRESULT answer = 0;
        kxtest::DialogDriver driver;
        driver.Do([&](HWND dialog) {
                  Canvas canvas;
                  DRAWITEMSTRUCT dis = Record(GetDlgItem(dialog, 1029), canvas.dc(), 0);
                  answer = SendMessageW(dialog, WM_DRAWITEM, 1029, reinterpret_cast<LPARAM>(&dis));
                  drawn = canvas.at(4, 4);
              })
            .Close();
        dlg.DoModal();
        EXPECT_FALSE(driver.timedOut());
        EXPECT_EQ(TRUE, answer);
        EXPECT_EQ(kIconColor, drawn);
        EXPECT_EQ(nullptr, dlg.m_flat.GetIcon()) << "gone with the window";
    }
    EXPECT_EQ("", kxtest::Leftovers(before));
}

// A parent whose window object offers the art menu, and counts the context menus it receives.
class CArtParent : public CWnd, public IKxArtMenuOwner {
public:
    int menus = 0;
    int contextMenus = 0;
    void ShowArtMenu() override { ++menus; }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CONTEXTMENU) ++contextMenus;
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

void Pump() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
}

TEST_F(Controls, PictureStaticAsksItsParentForTheArtMenu) {
    CArtParent owner;
    ASSERT_TRUE(owner.SubclassWindow(parent));
    CStaticExtension picture;
    ASSERT_TRUE(picture.SubclassWindow(Child(L"STATIC", SS_NOTIFY)));

    struct Step {
        const char* what;
        void (*act)(HWND);
        int menus, parentContextMenus;
    } steps[] = {
        {"right click", [](HWND s) { SendMessageW(s, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5)); }, 1, 0},
        {"the release's context menu is not passed on",
         [](HWND s) { SendMessageW(s, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(s), MAKELPARAM(315, 315)); }, 1, 0},
        {"context-menu key",
         [](HWND s) {
             SetFocus(s);
             SendMessageW(s, WM_KEYDOWN, VK_APPS, 1);
             SendMessageW(s, WM_KEYUP, VK_APPS, 0xC0000001);
         },
         2, 0},
        {"Shift+F10",
         [](HWND s) {
             BYTE keys[256];
             GetKeyboardState(keys);
             keys[VK_SHIFT] = 0x80;
             SetKeyboardState(keys);
             SendMessageW(s, WM_SYSKEYDOWN, VK_F10, 1);
             SendMessageW(s, WM_SYSKEYUP, VK_F10, 0xC0000001);
             keys[VK_SHIFT] = 0;
             SetKeyboardState(keys);
         },
         3, 0},
    };
    for (const Step& s : steps) {
        s.act(picture.m_hWnd);
        Pump();
        EXPECT_EQ(s.menus, owner.menus) << s.what;
        EXPECT_EQ(s.parentContextMenus, owner.contextMenus) << s.what;
    }
    ::DestroyWindow(picture.m_hWnd);
    owner.UnsubclassWindow();
}

}  // namespace
