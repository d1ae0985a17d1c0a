// The skin hook's call protocol, checked call by call against a recording CallHookWnd in a fake
// HookWndU.DLL: detaching, the failure paths and popups. A dialog's attach and release in order
// are followed through the real library in the dialog tests under Wine.
#include "frame/hook_wnd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct Call {
    DWORD_PTR op, hook, third, fourth, fifth;
    std::string text;        // the 8-bit name the call pointed to, if any
    std::wstring wide;       // the wide path the call pointed to, if any
    int libraryReferences;   // references on the library while the call ran
};

std::vector<Call> g_calls;
DWORD_PTR g_nextHook = 0x51;
std::vector<DWORD_PTR> g_refused;  // operations that answer 0

DWORD_PTR WINAPI RecordingCallHookWnd(DWORD_PTR op, DWORD_PTR hook, DWORD_PTR third, DWORD_PTR fourth,
                                      DWORD_PTR fifth) {
    Call c{op, hook, third, fourth, fifth, "", L"", kxcompat::FakeModuleCountersOf(L"HookWndU.DLL").references};
    if (op == KX_HOOKOP_ATTACH_DIALOG) {
        c.text = reinterpret_cast<const char*>(fourth);
        c.wide = reinterpret_cast<LPCWSTR>(fifth);
    } else if (op == KX_HOOKOP_ATTACH_POPUP) {
        auto* d = reinterpret_cast<const _tagHookPopupDescriptor*>(fifth);
        c.text = d->pszPicture;
        c.wide = d->pszSkinPath;
    } else if (op == KX_HOOKOP_POPUP_PICTURE) {
        c.text = reinterpret_cast<const char*>(fifth);
    }
    g_calls.push_back(c);
    if (std::count(g_refused.begin(), g_refused.end(), op)) return 0;
    if (op == KX_HOOKOP_OPEN) return g_nextHook++;
    return 0x1000 + op;  // a recognisable answer per operation
}

HWND FakeWindow(uintptr_t v) { return reinterpret_cast<HWND>(v); }

using OpList = std::vector<std::pair<DWORD_PTR, DWORD_PTR>>;

class HookWndTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_calls.clear();
        g_refused.clear();
        g_nextHook = 0x51;
        kxcompat::InstallFakeModule(L"hookwndu.dll",
                                    {{"CallHookWnd", reinterpret_cast<void*>(&RecordingCallHookWnd)}});
    }
    void TearDown() override { kxcompat::RemoveFakeModules(); }
    static kxcompat::FakeModuleCounters Library() { return kxcompat::FakeModuleCountersOf(L"HookWndU.DLL"); }
    // The operation and the hook of each recorded call.
    static OpList Ops() {
        OpList ops;
        for (const Call& c : g_calls) ops.emplace_back(c.op, c.hook);
        return ops;
    }
};

TEST_F(HookWndTest, DetachReturnsTheReleaseAnswerAndClearsEveryField) {
    HookWndWC hook;
    EXPECT_EQ(0u, hook.Detach()) << "nothing attached";
    EXPECT_EQ(0u, hook.SetPopupPicture(0x51, "x.png"));
    EXPECT_TRUE(g_calls.empty());
    hook.AttachDialog(FakeWindow(1), "a.ini", L"p");
    EXPECT_EQ(0x1000u + KX_HOOKOP_RELEASE, hook.Detach());
    EXPECT_EQ(0u, hook.m_hHook);
    EXPECT_EQ(nullptr, hook.m_hHookLibrary);
    EXPECT_EQ(nullptr, hook.m_pfnCallHookWnd);
    EXPECT_EQ(0, Library().references);
    g_calls.clear();
    EXPECT_EQ(0u, hook.Detach()) << "a second detach has nothing to release";
    EXPECT_TRUE(g_calls.empty());
    EXPECT_EQ(1, Library().frees);
}

TEST_F(HookWndTest, WithoutTheLibraryOrItsExportAttachingAnswersZero) {
    kxcompat::RemoveFakeModules();
    {
        HookWndWC hook;
        EXPECT_EQ(0u, hook.AttachDialog(FakeWindow(1), "a.ini", L"p"));
        EXPECT_EQ(0u, hook.AttachPopup(FakeWindow(1), nullptr));
        EXPECT_EQ(nullptr, hook.m_hHookLibrary);
    }
    // a library without the export stays loaded until the object lets it go
    kxcompat::InstallFakeModule(L"HookWndU.DLL", {{"SomethingElse", reinterpret_cast<void*>(&RecordingCallHookWnd)}});
    {
        HookWndWC hook;
        EXPECT_EQ(0u, hook.AttachDialog(FakeWindow(1), "a.ini", L"p"));
        EXPECT_NE(nullptr, hook.m_hHookLibrary);
        EXPECT_EQ(nullptr, hook.m_pfnCallHookWnd);
        EXPECT_EQ(0u, hook.SetPopupPicture(1, "x.png"));
        EXPECT_EQ(1, Library().references);
    }
    EXPECT_EQ(0, Library().references);
    EXPECT_EQ(1, Library().frees);
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(HookWndTest, ARefusedHookStopsTheAttachAndNothingIsReleasedLater) {
    g_refused.push_back(KX_HOOKOP_OPEN);
    {
        HookWndWC hook;
        EXPECT_EQ(0u, hook.AttachDialog(FakeWindow(1), "a.ini", L"p"));
        EXPECT_EQ(0u, hook.m_hHook);
        EXPECT_NE(nullptr, hook.m_hHookLibrary) << "library loaded, no hook";
        EXPECT_EQ(0u, hook.AttachPopup(FakeWindow(1), nullptr));
    }
    EXPECT_EQ((OpList{{KX_HOOKOP_OPEN, 0}, {KX_HOOKOP_OPEN, 0}}), Ops());
    EXPECT_EQ(2, Library().loads);
    EXPECT_EQ(2, Library().frees);
}

TEST_F(HookWndTest, ARefusedDialogAttachIsReportedButTheHookIsStillClosed) {
    g_refused.push_back(KX_HOOKOP_ATTACH_DIALOG);
    {
        HookWndWC hook;
        EXPECT_EQ(0u, hook.AttachDialog(FakeWindow(1), "a.ini", L"p"));
    }
    EXPECT_EQ((OpList{{KX_HOOKOP_OPEN, 0}, {KX_HOOKOP_ATTACH_DIALOG, 0x51}, {KX_HOOKOP_RELEASE, 0x51},
                   {KX_HOOKOP_CLOSE, 0x51}}),
              Ops());
}

TEST_F(HookWndTest, APopupIsSkinnedWithItsDescriptorAndASecondAttachStartsAfresh) {
    const wchar_t path[] = L"C:\\x\\ComRcRes.bff";
    HookWndWC hook;
    _tagHookPopupDescriptor d = MakeHookPopupDescriptor(path, "bubble left.png");
    EXPECT_EQ(0x1000u + KX_HOOKOP_ATTACH_POPUP, hook.AttachPopup(FakeWindow(0x99), &d));
    EXPECT_EQ(0x1000u + KX_HOOKOP_POPUP_PICTURE, hook.SetPopupPicture(hook.m_hHook, "bubble right.png"));
    EXPECT_EQ((OpList{{KX_HOOKOP_OPEN, 0}, {KX_HOOKOP_ATTACH_POPUP, 0x51}, {KX_HOOKOP_POPUP_PICTURE, 0x51}}), Ops());
    const Call& attach = g_calls[1];
    EXPECT_EQ(0u, attach.third);
    EXPECT_EQ(0x99u, attach.fourth);
    EXPECT_EQ(reinterpret_cast<DWORD_PTR>(&d), attach.fifth);
    EXPECT_EQ("bubble left.png", attach.text);
    EXPECT_EQ(path, attach.wide);
    EXPECT_EQ(1u, g_calls[2].third);
    EXPECT_EQ(0u, g_calls[2].fourth);
    EXPECT_EQ("bubble right.png", g_calls[2].text);

    // shown again: the first hook is released and closed and the library unloaded before the
    // library is loaded again and a new hook opened
    g_calls.clear();
    hook.AttachPopup(FakeWindow(0x99), &d);
    EXPECT_EQ((OpList{{KX_HOOKOP_RELEASE, 0x51}, {KX_HOOKOP_CLOSE, 0x51}, {KX_HOOKOP_OPEN, 0},
                   {KX_HOOKOP_ATTACH_POPUP, 0x52}}),
              Ops());
    EXPECT_EQ(1, g_calls[2].libraryReferences) << "the library was freed and loaded again";
    EXPECT_EQ(2, Library().loads);
    EXPECT_EQ(1, Library().frees);
}

TEST(HookPopupDescriptor, IsZeroedApartFromSizePathAndPictureInThe32BitOrder) {
    const wchar_t path[] = L"p";
    _tagHookPopupDescriptor d = MakeHookPopupDescriptor(path, "pic.png");
    EXPECT_EQ(sizeof(_tagHookPopupDescriptor), d.cbSize);
    EXPECT_EQ(path, d.pszSkinPath);
    EXPECT_STREQ("pic.png", d.pszPicture);
    EXPECT_EQ(0u, d.dwReserved1);
    for (BYTE b : d.reserved2) EXPECT_EQ(0, b);
    EXPECT_LT(offsetof(_tagHookPopupDescriptor, pszSkinPath), offsetof(_tagHookPopupDescriptor, dwReserved1));
    EXPECT_LT(offsetof(_tagHookPopupDescriptor, dwReserved1), offsetof(_tagHookPopupDescriptor, pszPicture));
    EXPECT_EQ(24u + offsetof(_tagHookPopupDescriptor, reserved2), sizeof(_tagHookPopupDescriptor));
}

}  // namespace
