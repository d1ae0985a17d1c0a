// Soak: a thousand create, show, hide and release cycles of both kinds of tip through the plug-in,
// with the recording skin. It reports what the process held before and after, and fails when
// anything was left. Not a timing: how long the cycles take is not measured.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>

#include "tests/win/balloon/balloon_fixture.h"
#include "tests/win/common/skin_recorder.h"

namespace kxtest {
namespace {

void Report(const char* when, const ResourceCounts& c) {
    std::printf("%s: %d windows, %d GDI objects, %d USER objects, %ld CoTaskMem blocks\n", when, c.windows,
                c.gdiObjects, c.userObjects, c.taskMemBlocks);
}

const UINT kFlags[] = {0x10, 0x30, 0x40};

TEST(BalloonSoak, AThousandCyclesLeaveNothingBehind) {
    WatchTaskMemory();
    const std::wstring dir = PreparePluginFolder(L"balloon_soak", true);
    SkinRecorder skin;
    PluginLibrary plugin(dir + L"KxComResPlgin.dll");
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    HWND target = HostWindow(200, 150, 200, 100);
    int shown = 0;
    auto cycle = [&](int i) {
        void* out = nullptr;
        if (i % 2 == 0) {
            ASSERT_EQ(S_OK, resource->CreateBalloonTip(IID_IKxBalloonTip, target, L"Text", L"Title", kFlags[i % 3],
                                                       &out));
            auto* tip = static_cast<IKxBalloonTip*>(out);
            const POINT at = {100 + i % 500, 100 + i % 300};
            tip->SetPosition(&at);
            if (tip->Show(TRUE, 0) == S_OK) ++shown;
            Pump(1);
            EXPECT_EQ(S_OK, tip->Show(FALSE, 0));
            EXPECT_EQ(0u, tip->Release());
        } else {
            ASSERT_EQ(S_OK, resource->CreateBalloonTip(IID_IKxBalloonTipControl, target, L"Text", L"Title", 0x40, &out));
            auto* tip = static_cast<IKxBalloonTipControl*>(out);
            SetCursorPos(250 + i % 50, 180 + i % 40);
            MSG move = {};
            move.hwnd = target;
            move.message = WM_MOUSEMOVE;
            if (tip->RelayEvent(&move) == 1 && !BubbleWindows().empty()) ++shown;
            Pump(1);
            EXPECT_EQ(0u, tip->Release());
        }
    };
    cycle(0);  // what the process keeps once: the window class, caches
    cycle(1);
    shown = 0;
    const ResourceCounts before = CountResources();
    Report("before", before);
    for (int i = 0; i < 1000; ++i) cycle(i);
    const ResourceCounts after = CountResources();
    Report("after 1000 cycles", after);
    std::printf("%d of 1000 tips were shown\n", shown);
    EXPECT_EQ(1000, shown);
    EXPECT_EQ("", Leftovers(before));
    DestroyWindow(target);
    EXPECT_EQ(0u, resource->Release());
}

}  // namespace
}  // namespace kxtest
