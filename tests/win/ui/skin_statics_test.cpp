// Requests to skinned statics and the package path, against real windows.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/win32/skin_messages.h"
#include "frame/win32/skin_statics.h"
#include "tests/win/common/framework_module.h"
#include "tests/win/common/plugin_loader.h"

namespace {

struct Received {
    UINT message;
    WPARAM wParam;
    std::string picture;
};
std::vector<Received> g_received;
WNDPROC g_previous = nullptr;

LRESULT CALLBACK RecordingProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_HKSTATIC_FUNCTION)
        g_received.push_back({message, wParam, wParam == 2 && lParam ? reinterpret_cast<const char*>(lParam) : ""});
    return CallWindowProcW(g_previous, hwnd, message, wParam, lParam);
}

TEST(SkinStatics, TextAndPictureRequestsReachTheStaticInTheirTwoForms) {
    kxtest::FrameworkModule module;  // registers the skin's messages
    ASSERT_NE(0u, WM_HKSTATIC_FUNCTION);
    EXPECT_EQ(RegisterWindowMessageW(L"WM_HKSTATIC_FUNCTION"), WM_HKSTATIC_FUNCTION);
    HWND s = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, s);
    g_previous = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(s, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RecordingProc)));
    g_received.clear();
    NotifyStaticText(s);
    SetStaticPicture(s, "albumT.png");
    ASSERT_EQ(2u, g_received.size());
    EXPECT_EQ(1u, g_received[0].wParam);
    EXPECT_EQ(2u, g_received[1].wParam);
    EXPECT_EQ("albumT.png", g_received[1].picture);
    DestroyWindow(s);
}

TEST(SkinStatics, ThePackageLiesBesideTheModule) {
    kxtest::FrameworkModule module;
    WCHAR path[MAX_PATH] = {};
    KxGetSkinPackagePath(path);
    EXPECT_EQ(kxtest::ExeDir() + L"ComRcRes.bff", std::wstring(path));
}

}  // namespace
