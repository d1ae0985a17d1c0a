#include "balloon/win32/balloon_platform.h"

#include <shlwapi.h>

#include <new>

#include "balloon/win32/bubble_tooltip.h"
#include "ui/module_state.h"

namespace {

static_assert(sizeof(CKxManageState) <= sizeof(KxModuleStateSlot::bytes), "the state switch fits its slot");
static_assert(alignof(CKxManageState) <= alignof(KxModuleStateSlot), "and is aligned in it");

class CKxWin32BalloonPlatform final : public IKxBalloonPlatform {
public:
    BOOL FileExists(LPCWSTR path) override { return path && PathFileExistsW(path); }
    BOOL IsWindow(HWND hWnd) override { return hWnd && ::IsWindow(hWnd); }
    BOOL GetWindowRect(HWND hWnd, RECT* rc) override { return ::GetWindowRect(hWnd, rc); }
    bool IsBadWritePtr(void* p, size_t bytes) override { return ::IsBadWritePtr(p, bytes) != FALSE; }
    bool IsBadReadPtr(const void* p, size_t bytes) override { return ::IsBadReadPtr(p, bytes) != FALSE; }
    IKxBubble* NewBubble() override { return new (std::nothrow) CKXBubbleToolTip; }
    void EnterModuleState(KxModuleStateSlot* slot) override { new (slot->bytes) CKxManageState; }
    void LeaveModuleState(KxModuleStateSlot* slot) override {
        reinterpret_cast<CKxManageState*>(slot->bytes)->~CKxManageState();
    }
};

}  // namespace

IKxBalloonPlatform& KxWin32BalloonPlatform() {
    static CKxWin32BalloonPlatform platform;
    return platform;
}
