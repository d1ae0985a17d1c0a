// CDlgNewEditName linked into this program, its tips made by a recording maker: where a tip
// points, when it is made, reused, hidden and released, as the dialog runs.
#include "dialogs/win32/dlg_new_edit_name.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/framework_module.h"
#include "ui/module_state.h"

namespace kxtest {
namespace {

std::vector<std::wstring> g_log;  // what the tips were asked, in order

class RecordingTip : public IKxBalloonTip {
public:
    explicit RecordingTip(std::wstring name) : m_name(std::move(name)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOTIMPL; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override {
        g_log.push_back(m_name + L" release");
        return --refs;
    }
    HRESULT STDMETHODCALLTYPE SetPosition(const POINT* p) override {
        at = *p;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Show(BOOL show, DWORD time) override {
        g_log.push_back(m_name + (show ? L" show " + std::to_wstring(time) : L" hide"));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UpdatePosition() override { return S_OK; }
    void STDMETHODCALLTYPE Close() override {}
    ULONG refs = 1;
    POINT at = {-1, -1};

private:
    std::wstring m_name;
};

class RecordingMaker : public IEditTipMaker {
public:
    HRESULT MakeTip(HWND target, LPCWSTR text, LPCWSTR title, IKxBalloonTip** tip) override {
        tips.emplace_back(new RecordingTip(L"tip" + std::to_wstring(tips.size() + 1)));
        g_log.push_back(L"make " + std::wstring(text) + L" | " + title);
        EXPECT_EQ(GetDlgCtrlID(target), 10001);
        *tip = tips.back().get();
        return S_OK;
    }
    void SetTarget(IKxBalloonTip*, HWND target) override {
        g_log.push_back(L"target " + std::to_wstring(GetDlgCtrlID(target)));
    }
    bool GetWindowRect(HWND window, RECT* rect) override { return ::GetWindowRect(window, rect) != FALSE; }
    std::vector<std::unique_ptr<RecordingTip>> tips;
};

// The edit control's left edge at its vertical middle, on the screen.
POINT EditAnchor(HWND dlg) {
    RECT rc;
    GetWindowRect(GetDlgItem(dlg, 10001), &rc);
    return POINT{rc.left, rc.top + (rc.bottom - rc.top) / 2};
}

std::wstring String(HMODULE module, UINT id) {
    const wchar_t* text = nullptr;
    int n = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
    return std::wstring(text, n > 0 ? static_cast<size_t>(n) : 0);
}

TEST(NameDialogTips, AreMadeOnceAtTheEditsLeftMiddleHiddenWhenTheDialogMovesAndReleasedAtTheEnd) {
    FrameworkModule module;
    const std::wstring title = String(module.resources(), 217), year = String(module.resources(), 218);
    wchar_t length[256];
    swprintf(length, 256, String(module.resources(), 247).c_str(), 255);
    ASSERT_FALSE(title.empty() || year.empty());

    g_log.clear();
    RecordingMaker maker;
    POINT anchorAtStart = {}, anchorMoved = {};
    std::vector<std::wstring> atStart, afterMove;
    DialogDriver driver;
    driver
        .Inspect([&](HWND dlg) {
            anchorAtStart = EditAnchor(dlg);
            atStart = g_log;
        })
        .Do([](HWND dlg) { SetWindowPos(dlg, nullptr, 40, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER); })
        .Inspect([&](HWND dlg) {
            anchorMoved = EditAnchor(dlg);
            afterMove = g_log;
            g_log.clear();
        })
        .Do([](HWND dlg) { SetDlgItemTextW(dlg, 10001, L"19a9"); })
        .Click(1)
        .Inspect([&](HWND dlg) { EXPECT_EQ(anchorMoved.y, EditAnchor(dlg).y); })
        .Click(1048);
    CKxManageState state;  // the template comes from ComRcRes.dll
    CDlgNewEditName dlg(7, 2, std::wstring(300, L'7').c_str(), nullptr, &maker);
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_FALSE(driver.timedOut());

    const std::wstring makeLength = L"make " + std::wstring(length) + L" | " + title;
    EXPECT_EQ((std::vector<std::wstring>{makeLength, L"tip1 show 4000"}), atStart)
        << "an over-long initial name brings the length tip up as the dialog starts";
    EXPECT_EQ((std::vector<std::wstring>{makeLength, L"tip1 show 4000", L"tip1 hide"}), afterMove)
        << "moving the dialog hides the tip";
    ASSERT_EQ(2u, maker.tips.size());
    EXPECT_EQ(anchorAtStart.x, maker.tips[0]->at.x);
    EXPECT_EQ(anchorAtStart.y, maker.tips[0]->at.y);
    EXPECT_EQ(anchorMoved.x, maker.tips[1]->at.x) << "the year tip points at the edit where it is now";
    EXPECT_EQ(anchorMoved.y, maker.tips[1]->at.y);
    EXPECT_EQ((std::vector<std::wstring>{
                  L"make " + year + L" | " + title, L"tip2 show 4000",           // the change: made
                  L"tip2 hide", L"target 10001", L"tip2 show 4000",              // OK: reused
                  L"tip2 hide", L"tip2 release", L"tip1 hide", L"tip1 release",  // the end
              }),
              g_log);
    EXPECT_EQ(0u, maker.tips[0]->refs);
    EXPECT_EQ(0u, maker.tips[1]->refs);
}

}  // namespace
}  // namespace kxtest
