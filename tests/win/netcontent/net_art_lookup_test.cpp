// The tag dialog's side of the art lookup (CNetArtLookup) against the real KxNetContent.dll under
// Wine, on a plain window that stands for the dialog: the answer comes from the component's
// worker thread, and the art work happens only when the posted 0x83EE is dispatched on the
// window's thread. Offline, a component without both bits, a step and the window's end during a
// lookup.
#include <winsock2.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "resources/dialogs/edit_single_tags_ids.h"
#include "tags/win32/net_art_lookup.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/test_files.h"
#include "tests/win/netcontent/loopback_server.h"

namespace {

using kxtest::ExeDir;
using kxtest::RunRegsvr32;

// The dialog's part, recorded, with the thread every call came on.
class Owner : public INetArtLookupOwner {
public:
    HWND window = nullptr;
    std::map<int, bool> enabled;
    bool commandsEnabled = true;
    std::vector<BYTE> shown;
    int found = 0, closes = 0;
    bool otherThread = false;
    CNetArtLookup* lookup = nullptr;

    HWND LookupWindow() override { return window; }
    void EnableControl(int id, bool enable) override { Note(), enabled[id] = enable; }
    bool ControlHasText(int) override { return Note(), true; }
    bool PrevStepEnabled() override { return Note(), false; }
    bool NextStepEnabled() override { return Note(), true; }
    void SetArtCommandsEnabled(bool e) override { Note(), commandsEnabled = e; }
    bool HasArtBytes() override { return Note(), !shown.empty(); }
    bool ShowFoundArt(const BYTE* bytes, ULONG size) override {
        Note();
        ++found;
        shown.assign(bytes, bytes + size);
        return true;
    }
    void ShowNoArt() override { Note(), shown.clear(); }

private:
    void Note() { otherThread = otherThread || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId(); }
};

LRESULT CALLBACK OwnerProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* owner = reinterpret_cast<Owner*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (owner && message == KX_WM_LOOKUP_DONE && owner->lookup) owner->lookup->OnLookupDone();
    if (owner && message == WM_CLOSE) ++owner->closes;
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

// Until `done` or 20 seconds, the window's messages dispatched.
template <typename Done>
bool Pump(Done done) {
    for (DWORD start = GetTickCount(); GetTickCount() - start < 20000;) {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        if (done()) return true;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return false;
}

// The fake of a component that lacks one bit: counts its creations.
class OneBitComponent final : public INetContentMgr, public INetContentLookup {
public:
    static LONG creations;
    LONG refs = 1;
    virtual ~OneBitComponent() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (IsEqualIID(iid, IID_INetContentLookup)) *out = static_cast<INetContentLookup*>(this);
        else if (IsEqualIID(iid, IID_INetContentMgr) || IsEqualIID(iid, IID_IUnknown)) *out = static_cast<INetContentMgr*>(this);
        else return *out = nullptr, E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override {
        if (--refs) return refs;
        delete this;
        return 0;
    }
#define UNUSED_SLOT(n) LONG STDMETHODCALLTYPE Unused##n() override { return 0; }
    UNUSED_SLOT(3) UNUSED_SLOT(4) UNUSED_SLOT(5) UNUSED_SLOT(6) UNUSED_SLOT(7) UNUSED_SLOT(8) UNUSED_SLOT(9)
    UNUSED_SLOT(10) UNUSED_SLOT(11) UNUSED_SLOT(12) UNUSED_SLOT(13) UNUSED_SLOT(14) UNUSED_SLOT(15) UNUSED_SLOT(16)
    UNUSED_SLOT(17) UNUSED_SLOT(18) UNUSED_SLOT(19) UNUSED_SLOT(20) UNUSED_SLOT(21) UNUSED_SLOT(22) UNUSED_SLOT(23)
    UNUSED_SLOT(24) UNUSED_SLOT(25) UNUSED_SLOT(26) UNUSED_SLOT(27) UNUSED_SLOT(28) UNUSED_SLOT(29) UNUSED_SLOT(30)
    UNUSED_SLOT(31) UNUSED_SLOT(32)
#undef UNUSED_SLOT
    LONG STDMETHODCALLTYPE Initialize(const NetContentStartRecord*) override { return kNetContentOk; }
    LONG STDMETHODCALLTYPE Terminate() override { return kNetContentOk; }
    LONG STDMETHODCALLTYPE SetCallback(NetContentCallback, void*) override { return kNetContentOk; }
    LONG STDMETHODCALLTYPE Open(const GUID*, const GUID*, HWND) override { return kNetContentOk; }
    LONG STDMETHODCALLTYPE Close() override { return kNetContentOk; }
    LONG STDMETHODCALLTYPE GetPendingFlag(LONG* p) override { return *p = 0, kNetContentOk; }
    LONG STDMETHODCALLTYPE ResolvePending(LONG_PTR) override { return kNetContentOk; }
    DWORD STDMETHODCALLTYPE GetCapabilities() override { return kNetContentLocalArt; }
    LONG STDMETHODCALLTYPE RequestArtwork(LONG, LONG, LPCWSTR, LONG_PTR, LONG_PTR, LONG, LONG_PTR, LONG_PTR, LONG_PTR,
                                          LONG_PTR, LONG_PTR) override {
        return kNetContentOk;
    }
};
LONG OneBitComponent::creations = 0;

tagVnINTRFCRESULT WINAPI CreateOneBit(const CLSID*, IUnknown*, DWORD, const IID*, void** out) {
    ++OneBitComponent::creations;
    *out = static_cast<INetContentMgr*>(new OneBitComponent);
    return VnIntrfcOk;
}

class NetArtLookup : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(RunRegsvr32(L"KxNetContent.dll"), 0u); }
    static void TearDownTestSuite() { EXPECT_EQ(RunRegsvr32(L"/u KxNetContent.dll"), 0u); }

    void SetUp() override {
        GetProcessHandleCount(GetCurrentProcess(), &handlesBefore_);
        WNDCLASSW wc = {};
        wc.lpfnWndProc = &OwnerProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = L"KxNetArtLookupOwner";
        RegisterClassW(&wc);
        owner_.window = CreateWindowExW(0, wc.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 40, 50, 300, 200, nullptr,
                                        nullptr, wc.hInstance, nullptr);
        SetWindowLongPtrW(owner_.window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&owner_));
        owner_.lookup = &lookup_;
        folder_ = kxtest::TempFolder() + L"kxlookup-" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder_.c_str(), nullptr);
    }
    void TearDown() override {
        lookup_.ReleaseNetContentMgr();
        DestroyWindow(owner_.window);
        UnregisterClassW(L"KxNetArtLookupOwner", GetModuleHandleW(nullptr));
        for (const std::wstring& f : files_) DeleteFileW(f.c_str());
        RemoveDirectoryW(folder_.c_str());
        EXPECT_EQ(GetFileAttributesW(folder_.c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_FALSE(owner_.otherThread);
        EXPECT_FALSE(lookup_.m_lookupEvent);
        DWORD handles = 0;
        GetProcessHandleCount(GetCurrentProcess(), &handles);
        EXPECT_EQ(handles, handlesBefore_);
    }
    std::wstring File(const std::wstring& name, const std::string& bytes) {
        const std::wstring path = folder_ + L"\\" + name;
        EXPECT_TRUE(kxtest::WriteFileBytes(path, std::vector<BYTE>(bytes.begin(), bytes.end())));
        files_.push_back(path);
        return path;
    }
    static bool AnswerQueued(HWND window) {
        MSG msg;
        return PeekMessageW(&msg, window, KX_WM_LOOKUP_DONE, KX_WM_LOOKUP_DONE, PM_NOREMOVE) != FALSE;
    }

    Owner owner_;
    CNetArtLookup lookup_{owner_};
    std::wstring folder_;
    std::vector<std::wstring> files_;
    DWORD handlesBefore_ = 0;
};

// The answer waits in the queue until the window's thread dispatches it: only then is the art
// shown, Remove enabled and the held controls given back.
TEST_F(NetArtLookup, AnswersReachTheDialogThroughThePostedMessage) {
    const std::string cover = "\xFF\xD8 a cover \xFF\xD9";
    const std::wstring withCover = File(L"one.mp3", "no tag");
    File(L"cover.jpg", cover);
    ASSERT_TRUE(lookup_.WantsMenuEntry(true, true));
    lookup_.StartArtworkLookup(withCover.c_str());
    ASSERT_TRUE(lookup_.IsRunning());
    for (int id : {KX_IDC_TAG_PREV, KX_IDC_TAG_NEXT, KX_IDC_TAG_BROWSE, KX_IDC_TAG_REMOVE, KX_IDC_TAG_ALBUM})
        EXPECT_FALSE(owner_.enabled[id]) << id;
    EXPECT_FALSE(owner_.commandsEnabled);
    for (DWORD start = GetTickCount(); !AnswerQueued(owner_.window) && GetTickCount() - start < 20000;) Sleep(10);
    ASSERT_TRUE(AnswerQueued(owner_.window));
    EXPECT_EQ(owner_.found, 0);  // the component's thread showed nothing
    EXPECT_TRUE(lookup_.IsRunning());
    ASSERT_TRUE(Pump([&] { return !lookup_.IsRunning(); }));
    EXPECT_EQ(owner_.found, 1);
    EXPECT_EQ(std::string(owner_.shown.begin(), owner_.shown.end()), cover);
    EXPECT_TRUE(owner_.enabled[KX_IDC_TAG_REMOVE]);
    EXPECT_TRUE(owner_.commandsEnabled);
    EXPECT_FALSE(owner_.enabled[KX_IDC_TAG_PREV]);
    EXPECT_TRUE(owner_.enabled[KX_IDC_TAG_NEXT]);
    EXPECT_TRUE(owner_.enabled[KX_IDC_TAG_ALBUM]);

    // A step when no lookup runs keeps the component.
    lookup_.CancelNetContentMgr();
    EXPECT_TRUE(lookup_.m_netContentMgr);
}

TEST_F(NetArtLookup, OfflineOrWithoutAPathNothingStarts) {
    lookup_.m_isOnline = [] { return false; };
    lookup_.StartArtworkLookup(File(L"a.mp3", "x").c_str());
    EXPECT_FALSE(lookup_.m_netContentMgr);
    lookup_.m_isOnline = [] { return true; };
    lookup_.StartArtworkLookup(L"");
    EXPECT_FALSE(lookup_.m_netContentMgr);
    EXPECT_TRUE(owner_.enabled.empty());
    EXPECT_FALSE(lookup_.WantsMenuEntry(true, false));
    EXPECT_FALSE(lookup_.WantsMenuEntry(false, true));
}

// A component with bit 4 alone gives no entry, its failed start leaves no event open, and it is
// not tried again in this dialog.
TEST_F(NetArtLookup, AComponentWithoutBothBitsIsRefusedForGood) {
    OneBitComponent::creations = 0;
    lookup_.m_create = &CreateOneBit;
    EXPECT_FALSE(lookup_.WantsMenuEntry(true, true));
    EXPECT_EQ(lookup_.InitNetContentMgr(), FALSE);
    EXPECT_EQ(OneBitComponent::creations, 1);
    EXPECT_EQ(lookup_.m_lookupAvailable, 0);
    EXPECT_FALSE(lookup_.m_netContentMgr);
}

// The dialog's end during a lookup: the wait keeps dispatching but drops a close, and after it the
// component is taken down.
TEST_F(NetArtLookup, TheEndWaitsForARunningLookupAndDropsCloses) {
    kxtest::LoopbackServer server("late picture");
    {
        kxtest::ScopedArtService service(server.Port(), L"/{file}");
        ASSERT_TRUE(lookup_.InitNetContentMgr());
    }
    lookup_.StartArtworkLookup(File(L"held.mp3", "x").c_str());
    ASSERT_TRUE(lookup_.IsRunning());
    ASSERT_TRUE(server.WaitForRequest(20000));
    PostMessageW(owner_.window, WM_CLOSE, 0, 0);
    const DWORD start = GetTickCount();
    lookup_.ReleaseNetContentMgr();
    EXPECT_GE(GetTickCount() - start, 2000u);
    EXPECT_EQ(owner_.closes, 0);
    EXPECT_FALSE(lookup_.m_netContentMgr);
    EXPECT_EQ(owner_.found, 0);
}

}  // namespace
