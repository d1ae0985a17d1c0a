// Requests to skinned statics, against a real window.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/win32/skin_messages.h"
#include "frame/win32/skin_statics.h"
#include "tests/win/common/framework_module.h"

namespace {

std::vector<std::pair<WPARAM, std::string>> g_received;  // form, picture
WNDPROC g_previous = nullptr;

LRESULT CALLBACK RecordingProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_HKSTATIC_FUNCTION)
        g_received.emplace_back(wParam, wParam == 2 && lParam ? reinterpret_cast<const char*>(lParam) : "");
    return CallWindowProcW(g_previous, hwnd, message, wParam, lParam);
}

TEST(SkinStatics, TextAndPictureRequestsReachTheStaticInTheirTwoForms) {
    kxtest::FrameworkModule module;  // registers the skin's messages
    ASSERT_NE(0u, WM_HKSTATIC_FUNCTION);
    EXPECT_EQ(RegisterWindowMessageW(L"WM_HKSTATIC_FUNCTION"), WM_HKSTATIC_FUNCTION);
    HWND s = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, s);
    g_previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(s, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RecordingProc)));
    g_received.clear();
    NotifyStaticText(s);
    SetStaticPicture(s, "albumT.png");
    DestroyWindow(s);
    using Form = std::pair<WPARAM, std::string>;
    EXPECT_EQ((std::vector<Form>{{1, ""}, {2, "albumT.png"}}), g_received);
}

}  // namespace
