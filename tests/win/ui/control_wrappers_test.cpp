// The typed control wrappers against real controls: each call must reach the control with its
// operands in the right places, which a wrong message or a swapped operand shows at once.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/win/common/dialog_driver.h"
#include "ui/common_control_wrappers.h"
#include "ui/control_wrappers.h"
#include "ui/menu.h"

namespace {

class ControlWrappers : public ::testing::Test {
protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES};
        InitCommonControlsEx(&icc);
        before = kxtest::CountResources();
        parent.Attach(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr,
                                      nullptr));
        ASSERT_NE(nullptr, parent.m_hWnd);
    }
    void TearDown() override {
        ::DestroyWindow(parent.Detach());
        // Windows and USER objects only: the first list view, tool bar or slider of a process
        // makes GDI objects the control library keeps for the process's life.
        const kxtest::ResourceCounts after = kxtest::CountResources();
        EXPECT_EQ(before.windows, after.windows);
        EXPECT_EQ(before.userObjects, after.userObjects);
    }
    // A child control of the parent, bound to `control`.
    void Make(CWnd& control, LPCWSTR className, DWORD style) {
        control.Attach(CreateWindowExW(0, className, L"", WS_CHILD | style, 0, 0, 300, 200, parent.m_hWnd, nullptr,
                                       nullptr, nullptr));
        ASSERT_NE(nullptr, control.m_hWnd) << className;
    }

    kxtest::ResourceCounts before{};
    CWnd parent;
};

TEST_F(ControlWrappers, ComboBoxAndEdit) {
    CComboBox combo;
    Make(combo, L"COMBOBOX", CBS_DROPDOWN | CBS_AUTOHSCROLL);
    EXPECT_EQ(0, combo.AddString(L"beta"));
    EXPECT_EQ(1, combo.AddString(L"alpha"));  // unsorted: in the order given
    EXPECT_EQ(0, combo.InsertString(0, L"gamma"));
    EXPECT_EQ(3, combo.GetCount());
    EXPECT_EQ(L"beta", combo.GetLBText(1));
    EXPECT_EQ(L"", combo.GetLBText(7));
    EXPECT_EQ(2, combo.SetCurSel(2));
    EXPECT_EQ(2, combo.GetCurSel());
    combo.LimitText(4);
    EXPECT_EQ(4, SendMessageW(GetWindow(combo, GW_CHILD), EM_GETLIMITTEXT, 0, 0)) << "the edit part's limit";
    combo.SetWindowText(L"abcdef");
    combo.SetEditSel(1, 3);
    DWORD start = 0, end = 0;
    combo.SendMessage(CB_GETEDITSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(1u, start);
    EXPECT_EQ(3u, end);
    combo.ResetContent();
    EXPECT_EQ(0, combo.GetCount());

    CEdit edit;
    Make(edit, L"EDIT", ES_AUTOHSCROLL);
    edit.SetWindowText(L"hello world");
    edit.SetSel(2, 5);
    int selStart = -1, selEnd = -1;
    edit.GetSel(selStart, selEnd);
    EXPECT_EQ(2, selStart);
    EXPECT_EQ(5, selEnd);
    edit.LimitText(7);
    EXPECT_EQ(7u, edit.GetLimitText());
}

TEST_F(ControlWrappers, ListViewAndSlider) {
    CListCtrl list;
    Make(list, WC_LISTVIEWW, LVS_REPORT | WS_VISIBLE);
    EXPECT_EQ(0, list.InsertColumn(0, L"Title", LVCFMT_LEFT, 120));
    EXPECT_EQ(1, list.InsertColumn(1, L"#"));
    EXPECT_EQ(0, list.InsertItem(0, L"one"));
    EXPECT_EQ(1, list.InsertItem(1, L"two"));
    EXPECT_TRUE(list.SetItemText(1, 1, L"2"));
    const std::wstring longText(600, L'x');  // more than the first read takes
    EXPECT_TRUE(list.SetItemText(0, 1, longText.c_str()));
    EXPECT_EQ(L"two", list.GetItemText(1, 0));
    EXPECT_EQ(L"2", list.GetItemText(1, 1));
    EXPECT_EQ(longText, list.GetItemText(0, 1));
    EXPECT_EQ(2, list.GetItemCount());
    EXPECT_TRUE(list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED));
    EXPECT_EQ(1u, list.GetSelectedCount());
    EXPECT_EQ(1, list.GetNextItem(-1, LVNI_SELECTED));
    EXPECT_EQ(-1, list.GetNextItem(1, LVNI_SELECTED));
    list.SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    EXPECT_EQ(static_cast<DWORD>(LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP),
              list.GetExtendedStyle() & (LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP));
    RECT row = {};
    ASSERT_TRUE(list.GetItemRect(1, &row, LVIR_BOUNDS));
    EXPECT_GT(row.bottom, row.top);
    UINT flags = 0;
    EXPECT_EQ(1, list.HitTest(POINT{row.left + 2, (row.top + row.bottom) / 2}, &flags));
    EXPECT_NE(0u, flags & LVHT_ONITEM);
    EXPECT_TRUE(list.DeleteAllItems());
    EXPECT_EQ(0, list.GetItemCount());

    CSliderCtrl slider;
    Make(slider, TRACKBAR_CLASSW, 0);
    slider.SetRange(10, 50);
    slider.SetPos(20);
    EXPECT_EQ(20, slider.GetPos());
    slider.SetPos(80);
    EXPECT_EQ(50, slider.GetPos()) << "held to the range's top";
    slider.SetPos(0);
    EXPECT_EQ(10, slider.GetPos()) << "held to the range's bottom";
}

TEST_F(ControlWrappers, ToolbarTooltipAndMenu) {
    CToolBarCtrl bar;
    Make(bar, TOOLBARCLASSNAMEW, CCS_NORESIZE);
    TBBUTTON buttons[2] = {};
    for (int i = 0; i < 2; ++i) {
        buttons[i].iBitmap = I_IMAGENONE;
        buttons[i].idCommand = 101 + i;
        buttons[i].fsState = TBSTATE_ENABLED;
        buttons[i].fsStyle = BTNS_BUTTON;
    }
    EXPECT_TRUE(bar.AddButtons(2, buttons));
    EXPECT_EQ(2, bar.GetButtonCount());
    EXPECT_EQ(1, bar.CommandToIndex(102));
    RECT rc = {};
    EXPECT_TRUE(bar.GetRect(102, &rc));
    TBBUTTONINFOW info = {sizeof(info), TBIF_STATE};
    info.fsState = TBSTATE_ENABLED | TBSTATE_CHECKED;
    EXPECT_TRUE(bar.SetButtonInfo(102, &info));
    info.fsState = 0;
    EXPECT_EQ(1, bar.GetButtonInfo(102, &info));
    EXPECT_EQ(TBSTATE_ENABLED | TBSTATE_CHECKED, info.fsState);
    bar.SetExtendedStyle(TBSTYLE_EX_DRAWDDARROWS);
    EXPECT_NE(0u, bar.GetExtendedStyle() & TBSTYLE_EX_DRAWDDARROWS);
    EXPECT_TRUE(bar.DeleteButton(0));
    EXPECT_EQ(1, bar.GetButtonCount());
    EXPECT_EQ(-1, bar.CommandToIndex(101));

    CEdit target;
    Make(target, L"EDIT", 0);
    {
        CToolTipCtrl tip;  // its window goes with the object
        ASSERT_TRUE(tip.Create(&parent));
        EXPECT_FALSE(tip.Create(&parent)) << "one window per object";
        EXPECT_TRUE(tip.AddTool(&target, L"Only digits"));
        EXPECT_EQ(1, tip.GetToolCount());
        tip.UpdateTipText(L"At most four", &target);
        wchar_t text[64] = {};
        TTTOOLINFOW tool = {sizeof(tool), TTF_IDISHWND, parent.m_hWnd, reinterpret_cast<UINT_PTR>(target.m_hWnd)};
        tool.lpszText = text;
        tip.SendMessage(TTM_GETTEXTW, 64, reinterpret_cast<LPARAM>(&tool));
        EXPECT_STREQ(L"At most four", text);
    }

    HMENU kept = nullptr;
    {
        CMenu menu;
        ASSERT_TRUE(menu.CreatePopupMenu());
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, 1, L"One"));
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, 2, L"Two"));
        EXPECT_EQ(2, menu.GetMenuItemCount());
        menu.EnableMenuItem(2, MF_BYCOMMAND | MF_GRAYED);
        EXPECT_NE(0u, menu.GetMenuState(2, MF_BYCOMMAND) & MF_GRAYED);
        {
            CMenu borrowed;
            EXPECT_TRUE(borrowed.Attach(menu));
        }
        EXPECT_TRUE(IsMenu(menu)) << "a borrowed menu is not destroyed";
        kept = menu;
    }
    EXPECT_FALSE(IsMenu(kept)) << "the menu the object made goes with it";
}

}  // namespace
