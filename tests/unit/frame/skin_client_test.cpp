// The skin hook's call protocol, checked call by call against a recording CallHookWnd in a fake
// HookWndU.DLL: detaching, a library without its export, popups and a second attach. (A dialog's
// whole attach and release, and a refused open or attach, are followed call by call under Wine.)
#include "frame/skin_client.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Each call: the operation, the hook, the three words and the references on the library meanwhile.
using Calls = std::vector<std::vector<DWORD_PTR>>;
Calls g_calls;
DWORD_PTR g_nextHook;

kxcompat::FakeModuleCounters Library() { return kxcompat::FakeModuleCountersOf(L"HookWndU.DLL"); }

DWORD_PTR WINAPI RecordingCallHookWnd(DWORD_PTR op, DWORD_PTR hook, DWORD_PTR third, DWORD_PTR fourth,
                                      DWORD_PTR fifth) {
    g_calls.push_back({op, hook, third, fourth, fifth, static_cast<DWORD_PTR>(Library().references)});
    return op == KX_HOOKOP_OPEN ? g_nextHook++ : 0x1000 + op;  // a recognisable answer per operation
}

DWORD_PTR Word(const void* p) { return reinterpret_cast<DWORD_PTR>(p); }
HWND Window(uintptr_t v) { return reinterpret_cast<HWND>(v); }

class HookWndTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_calls.clear();
        g_nextHook = 0x51;
        kxcompat::InstallFakeModule(L"hookwndu.dll", {{"CallHookWnd", reinterpret_cast<void*>(RecordingCallHookWnd)}});
    }
    void TearDown() override { kxcompat::RemoveFakeModules(); }
};

TEST_F(HookWndTest, DetachOnAnEmptyObjectDoesNothingAndAfterAnAttachClearsEveryField) {
    HookWndWC hook;
    EXPECT_EQ(0u, hook.Detach());
    EXPECT_EQ(0u, hook.SetPopupPicture(0x51, "x.png"));
    EXPECT_TRUE(g_calls.empty());
    hook.AttachDialog(Window(1), "a.ini", L"p");
    EXPECT_EQ(0x1000u + KX_HOOKOP_RELEASE, hook.Detach());
    EXPECT_EQ(0u, hook.m_hHook);
    EXPECT_EQ(nullptr, hook.m_hHookLibrary.Get());
    EXPECT_EQ(nullptr, hook.m_pfnCallHookWnd);
    EXPECT_EQ(0u, hook.Detach());
    EXPECT_EQ(4u, g_calls.size()) << "a second detach has nothing to release";
    EXPECT_EQ(1, Library().frees);
}

TEST_F(HookWndTest, WithoutTheLibraryOrItsExportAttachingAnswersZero) {
    kxcompat::RemoveFakeModules();
    EXPECT_EQ(0u, HookWndWC().AttachPopup(Window(1), nullptr));
    // a library without the export stays loaded until the object lets it go
    kxcompat::InstallFakeModule(L"HookWndU.DLL", {{"Other", reinterpret_cast<void*>(&RecordingCallHookWnd)}});
    {
        HookWndWC hook;
        EXPECT_EQ(0u, hook.AttachDialog(Window(1), "a.ini", L"p"));
        EXPECT_EQ(0u, hook.SetPopupPicture(1, "x.png"));
        EXPECT_EQ(1, Library().references);
    }
    EXPECT_EQ(0, Library().references);
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(HookWndTest, APopupIsSkinnedWithItsDescriptorAndASecondAttachStartsAfresh) {
    const char picture[] = "bubble right.png";
    HookWndWC hook;
    _tagHookPopupDescriptor d = MakeHookPopupDescriptor(L"C:\\x\\ComRcRes.bff", "bubble left.png");
    EXPECT_EQ(0x1000u + KX_HOOKOP_ATTACH_POPUP, hook.AttachPopup(Window(0x99), &d));
    EXPECT_EQ(0x1000u + KX_HOOKOP_POPUP_PICTURE, hook.SetPopupPicture(hook.m_hHook, picture));
    // shown again: the first hook is released and closed and the library freed before it is
    // loaded again and a new hook opened
    hook.AttachPopup(Window(0x99), &d);
    EXPECT_EQ((Calls{{KX_HOOKOP_OPEN, 0, 0, 0, 0, 1},
                     {KX_HOOKOP_ATTACH_POPUP, 0x51, 0, 0x99, Word(&d), 1},
                     {KX_HOOKOP_POPUP_PICTURE, 0x51, 1, 0, Word(picture), 1},
                     {KX_HOOKOP_RELEASE, 0x51, 0, 0, 0, 1},
                     {KX_HOOKOP_CLOSE, 0x51, 0, 0, 0, 1},
                     {KX_HOOKOP_OPEN, 0, 0, 0, 0, 1},
                     {KX_HOOKOP_ATTACH_POPUP, 0x52, 0, 0x99, Word(&d), 1}}),
              g_calls);
    EXPECT_EQ(2, Library().loads);
    EXPECT_EQ(1, Library().frees);
}

// 40 bytes in the 32-bit build: size, path, a zero word, picture, 24 zero bytes.
TEST(HookPopupDescriptor, IsZeroedApartFromSizePathAndPictureInThe32BitOrder) {
    const wchar_t path[] = L"p";
    _tagHookPopupDescriptor d = MakeHookPopupDescriptor(path, "pic.png");
    EXPECT_EQ(sizeof(_tagHookPopupDescriptor), d.cbSize);
    EXPECT_EQ(path, d.pszSkinPath);
    EXPECT_STREQ("pic.png", d.pszPicture);
    EXPECT_EQ(0u, d.dwReserved1);
    for (BYTE b : d.reserved2) EXPECT_EQ(0, b);
    EXPECT_EQ(sizeof(void*), offsetof(_tagHookPopupDescriptor, pszSkinPath));
    EXPECT_EQ(3 * sizeof(void*), offsetof(_tagHookPopupDescriptor, pszPicture));
    EXPECT_EQ(24u + 4 * sizeof(void*), sizeof(_tagHookPopupDescriptor));
}

}  // namespace
