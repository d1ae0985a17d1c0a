// The picture's drop target registered on a real window and driven through IDropTarget with a
// data object of the test's own, which hands out CF_HDROP blocks built here: the tests in their
// order, the drop reaching the dialog, and every reference and block given back.
#include <windows.h>
#include <ole2.h>
#include <shlobj.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "library/win32/drag_drop_target.h"
#include "tests/win/common/dialog_driver.h"

namespace {

// Hands out CF_HDROP data for a list of paths: each GetData builds a new block for the caller,
// or, when `keepBlock` is set, lends one that the data object releases itself.
class CFileDataObject : public IDataObject {
public:
    explicit CFileDataObject(std::vector<std::wstring> paths, bool keepBlock = false)
        : m_paths(std::move(paths)), m_keepBlock(keepBlock) {}
    std::vector<HGLOBAL> given;
    LONG refs = 1;
    LONG lenderRefs = 0;  // references on the object that releases a lent block
    bool offerFiles = true;

    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override {
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDataObject)) {
            *ppv = static_cast<IDataObject*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++refs); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--refs); }
    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (!offerFiles || format->cfFormat != CF_HDROP || !(format->tymed & TYMED_HGLOBAL)) return DV_E_FORMATETC;
        size_t chars = 1;
        for (const std::wstring& p : m_paths) chars += p.size() + 1;
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + chars * sizeof(WCHAR));
        auto* drop = static_cast<DROPFILES*>(GlobalLock(block));
        drop->pFiles = sizeof(DROPFILES);
        drop->fWide = TRUE;
        auto* at = reinterpret_cast<WCHAR*>(drop + 1);
        for (const std::wstring& p : m_paths) {
            lstrcpyW(at, p.c_str());
            at += p.size() + 1;
        }
        GlobalUnlock(block);
        given.push_back(block);
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = block;
        medium->pUnkForRelease = nullptr;
        if (m_keepBlock) {
            medium->pUnkForRelease = static_cast<IUnknown*>(&m_lender);
            ++lenderRefs;
        }
        return S_OK;
    }
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    STDMETHODIMP QueryGetData(FORMATETC*) override { return E_NOTIMPL; }
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP DUnadvise(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

    // Every block handed out has been freed (by the target, or by the lender's last release).
    bool AllBlocksFreed() {
        for (HGLOBAL block : given)
            if (GlobalSize(block) != 0) return false;
        return true;
    }

private:
    // Frees the lent blocks on its last release, as a data object that keeps its data would.
    struct Lender : IUnknown {
        CFileDataObject* outer;
        explicit Lender(CFileDataObject* o) : outer(o) {}
        STDMETHODIMP QueryInterface(REFIID, void** ppv) override {
            *ppv = nullptr;
            return E_NOINTERFACE;
        }
        STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++outer->lenderRefs); }
        STDMETHODIMP_(ULONG) Release() override {
            if (--outer->lenderRefs == 0)
                for (HGLOBAL block : outer->given) GlobalFree(block);
            return static_cast<ULONG>(outer->lenderRefs);
        }
    } m_lender{this};
    std::vector<std::wstring> m_paths;
    bool m_keepBlock;
};

// The dialog's side, with its picture placed around the cursor or away from it.
struct FakeDialog : IKxArtDropOwner {
    HWND window = nullptr;
    bool overPicture = true;
    DWORD flags = kArtFlagWritable;
    std::vector<std::wstring> loaded;
    bool IsDropOwnerWindow() override { return IsWindow(window) != FALSE; }
    bool GetArtScreenRect(RECT* rect) override {
        POINT cursor;
        GetCursorPos(&cursor);
        const LONG shift = overPicture ? 0 : 500;
        *rect = RECT{cursor.x - 10 + shift, cursor.y - 10, cursor.x + 10 + shift, cursor.y + 10};
        return true;
    }
    int GetDropItemCount() override { return 1; }
    DWORD GetArtValueFlags() override { return flags; }
    bool CanAcceptArtwork() override { return true; }
    bool LoadArtFromFile(const WCHAR* path) override {
        loaded.push_back(path);
        return true;
    }
};

class DropTarget : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        // the platform's first window and registration make objects it keeps for the process
        HWND warm = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 30, 30, nullptr, nullptr, nullptr,
                                    nullptr);
        CDragDropTarget warmTarget;
        warmTarget.Register(warm, nullptr);
        warmTarget.Revoke();
        ::DestroyWindow(warm);
        before = kxtest::CountResources();
        WCHAR temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        folder = std::wstring(temp) + L"kx_drop_test";
        CreateDirectoryW(folder.c_str(), nullptr);
        picture = folder + L"\\Cover.JpEg";
        other = folder + L"\\notes.txt";
        for (const std::wstring* path : {&picture, &other}) {
            HANDLE file = CreateFileW(path->c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
            ASSERT_NE(INVALID_HANDLE_VALUE, file);
            CloseHandle(file);
        }
        dialog.window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr,
                                        nullptr, nullptr);
        ASSERT_NE(nullptr, dialog.window);
        ASSERT_TRUE(target.Register(dialog.window, &dialog));
    }
    void TearDown() override {
        target.Revoke();
        EXPECT_EQ(1u, target.AddRef()) << "OLE let go of every reference";
        target.Release();
        ::DestroyWindow(dialog.window);
        DeleteFileW(picture.c_str());
        DeleteFileW(other.c_str());
        RemoveDirectoryW(folder.c_str());
        EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(folder.c_str()));
        EXPECT_EQ("", kxtest::Leftovers(before));
        OleUninitialize();
    }
    DWORD Enter(IDataObject* data, DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE) {
        DWORD effect = allowed;
        EXPECT_EQ(S_OK, target.DragEnter(data, MK_LBUTTON, POINTL{0, 0}, &effect));
        return effect;
    }
    DWORD Over(DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE) {
        DWORD effect = allowed;
        EXPECT_EQ(S_OK, target.DragOver(MK_LBUTTON, POINTL{0, 0}, &effect));
        return effect;
    }

    kxtest::ResourceCounts before{};
    std::wstring folder, picture, other;
    FakeDialog dialog;
    CDragDropTarget target;
};

TEST_F(DropTarget, RegisteredOnItsWindowOnce) {
    EXPECT_EQ(DRAGDROP_E_ALREADYREGISTERED, RegisterDragDrop(dialog.window, &target));
    EXPECT_FALSE(target.Register(dialog.window, &dialog));
    EXPECT_GE(target.AddRef(), 2u) << "OLE holds the registered target";
    target.Release();
    target.Revoke();
    EXPECT_EQ(DRAGDROP_E_NOTREGISTERED, RevokeDragDrop(dialog.window));
    EXPECT_EQ(E_INVALIDARG, target.DragEnter(nullptr, 0, POINTL{0, 0}, nullptr));
}

// The rules' cases are tested natively; here what the OLE side adds: the files read out of real
// CF_HDROP data, the file system, the effects the source allows, the data freed at the end.
TEST_F(DropTarget, EntryReadsTheDragsFiles) {
    struct Case {
        const char* what;
        std::vector<std::wstring> paths;
        bool offerFiles;
        DWORD flags;
        DWORD allowed;
        DWORD effect;
    } cases[] = {
        {"one picture", {picture}, true, kArtFlagWritable, DROPEFFECT_COPY | DROPEFFECT_MOVE, DROPEFFECT_COPY},
        {"two files", {picture, picture}, true, kArtFlagWritable, DROPEFFECT_COPY, DROPEFFECT_NONE},
        {"no CF_HDROP", {picture}, false, kArtFlagWritable, DROPEFFECT_COPY, DROPEFFECT_NONE},
        {"folder", {folder}, true, kArtFlagWritable, DROPEFFECT_COPY, DROPEFFECT_NONE},
        {"art not writable", {picture}, true, 0x3, DROPEFFECT_COPY, DROPEFFECT_NONE},
        {"the source allows no copy", {picture}, true, kArtFlagWritable, DROPEFFECT_MOVE, DROPEFFECT_NONE},
    };
    for (const Case& c : cases) {
        CFileDataObject data(c.paths);
        data.offerFiles = c.offerFiles;
        dialog.flags = c.flags;
        EXPECT_EQ(c.effect, Enter(&data, c.allowed)) << c.what;
        EXPECT_EQ(c.effect, Over(c.allowed)) << c.what;
        // the art's flags are asked before the data: a refused item reads nothing
        EXPECT_EQ(c.flags == kArtFlagWritable && c.offerFiles ? 1u : 0u, data.given.size()) << c.what;
        EXPECT_EQ(S_OK, target.DragLeave());
        EXPECT_EQ(nullptr, target.DropData()) << c.what;
        EXPECT_TRUE(data.AllBlocksFreed()) << c.what;
        EXPECT_EQ(1, data.refs) << c.what;
    }
    EXPECT_TRUE(dialog.loaded.empty());
}

TEST_F(DropTarget, TakenOverThePictureOnlyAndDroppedToTheDialog) {
    for (bool keepBlock : {false, true}) {
        SCOPED_TRACE(keepBlock ? "lent block" : "block of our own");
        dialog.loaded.clear();
        CFileDataObject data({picture}, keepBlock);
        dialog.overPicture = false;
        ASSERT_EQ(DWORD(DROPEFFECT_COPY), Enter(&data)) << "taken on entering over another control";
        EXPECT_NE(nullptr, target.DropData());
        EXPECT_EQ(DWORD(DROPEFFECT_NONE), Over());
        dialog.overPicture = true;
        EXPECT_EQ(DWORD(DROPEFFECT_COPY), Over()) << "over the picture";
        DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
        EXPECT_EQ(S_OK, target.Drop(&data, 0, POINTL{0, 0}, &effect));
        EXPECT_EQ(DWORD(DROPEFFECT_COPY), effect);
        ASSERT_EQ(1u, dialog.loaded.size());
        EXPECT_EQ(0, lstrcmpiW(picture.c_str(), dialog.loaded[0].c_str()));
        EXPECT_EQ(nullptr, target.DropData()) << "a drop ends the drag";
        EXPECT_EQ(0, data.lenderRefs);
        EXPECT_TRUE(data.AllBlocksFreed());
        EXPECT_EQ(1, data.refs);
    }
}

}  // namespace
