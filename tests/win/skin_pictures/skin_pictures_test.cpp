// The rendered pictures of the skin package: every picture the tables name decodes at its size,
// and none is rendered that they do not name. Where each bubble shape puts its point and text is
// checked on the stretched shapes, through the skinning library (tests/win/hookwnd).
#include <windows.h>
#include <gdiplus.h>

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "src/skin/bubble_shapes.h"

namespace kxtest {
namespace {

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

std::wstring Widen(const char* s) { return std::wstring(s, s + strlen(s)); }

// The build renders the pictures into a folder beside the test program.
std::wstring PictureFolder() {
    wchar_t path[MAX_PATH] = {};
    std::wstring s(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return s.substr(0, s.find_last_of(L"\\/") + 1) + L"skin-pictures\\";
}

void CheckSize(const char* name, int width, int height) {
    GpBitmap* bitmap = nullptr;
    ASSERT_EQ(Ok, GdipCreateBitmapFromFile((PictureFolder() + Widen(name)).c_str(), &bitmap)) << name;
    UINT w = 0, h = 0;
    GdipGetImageWidth(bitmap, &w);
    GdipGetImageHeight(bitmap, &h);
    GdipDisposeImage(bitmap);
    EXPECT_EQ(width, static_cast<int>(w)) << name;
    EXPECT_EQ(height, static_cast<int>(h)) << name;
}

TEST(SkinPictures, EveryPictureDecodesAtItsSizeAndNoOtherIsRendered) {
    ULONG_PTR token = 0;
    GdiplusStartupInput input;
    ASSERT_EQ(Ok, GdiplusStartup(&token, &input, nullptr));
    std::set<std::wstring> expected;
    for (const kxskin::SkinPicture& p : kxskin::kSkinPictures) {
        expected.insert(Widen(p.name));
        CheckSize(p.name, p.width, p.height);
    }
    for (const kxskin::BubbleShape& s : kxskin::kBubbleShapes) {
        expected.insert(Widen(s.name));
        CheckSize(s.name, s.width, s.height);
    }
    // A misspelt source would show here.
    std::set<std::wstring> rendered;
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((PictureFolder() + L"*.png").c_str(), &found);
    if (find != INVALID_HANDLE_VALUE) {
        do rendered.insert(found.cFileName);
        while (FindNextFileW(find, &found));
        FindClose(find);
    }
    EXPECT_EQ(expected, rendered);
    GdiplusShutdown(token);
}

}  // namespace
}  // namespace kxtest
