// The start of a tag dialog without its window: connecting to the library, reading the first
// readable item, the view's current item, and letting everything go again.
#include "tests/unit/tags/tag_model_fixture.h"

namespace tagtest {
namespace {

using Starting = TagModelTest;

// A host folder that leaves items without an identifier out of the sets it makes objects for, so
// that such an item reaches the editor's reading.
class NullSkippingFolder : public IKxContentFolder {
public:
    explicit NullSkippingFolder(IKxContentFolder* inner) : in_(inner) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID r, void** p) override { return in_->QueryInterface(r, p); }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetItemObject(IKxContentSite* site, HWND owner, UINT count, const KxPcPidl* items,
                                            REFIID riid, void** ppv) override {
        std::vector<KxPcPidl> known;
        for (UINT i = 0; i < count; ++i)
            if (items[i]) known.push_back(items[i]);
        return in_->GetItemObject(site, owner, static_cast<UINT>(known.size()), known.data(), riid, ppv);
    }
    HRESULT STDMETHODCALLTYPE EnumItems(DWORD r, DWORD f, REFIID i, void** p) override { return in_->EnumItems(r, f, i, p); }
    HRESULT STDMETHODCALLTYPE GetItemAttributes(UINT c, const KxPcPidl* i, DWORD* a) override {
        return in_->GetItemAttributes(c, i, a);
    }
    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemName(KxPcPidl i, DWORD f, LPWSTR* n) override { return in_->GetItemName(i, f, n); }
    HRESULT STDMETHODCALLTYPE BindToFolder(KxPcPidl i, REFIID r, void** p) override { return in_->BindToFolder(i, r, p); }
    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ParseName(LPCWSTR n, DWORD f, KxPidl* p) override { return in_->ParseName(n, f, p); }
    HRESULT STDMETHODCALLTYPE GetOwnId(KxPidl* p) override { return in_->GetOwnId(p); }

private:
    IKxContentFolder* in_;
};

TEST_F(Starting, OneItemFromTheStartOfTheViewAndLettingItGo) {
    BOOL isLast = FALSE, isFirst = FALSE;
    ScriptedEditor& e = StartedEditor({0}, &isLast, &isFirst);
    EXPECT_EQ(KX_EDITMODE_SINGLE, e.m_nMode);
    EXPECT_TRUE(isFirst);
    EXPECT_FALSE(isLast);
    EXPECT_TRUE(e.m_itemCapabilities.empty());  // only for several items
    EXPECT_EQ(10u, lib->LastPrefetch().size());

    // what the dialog frees when its window goes away leaves nothing behind
    e.ControlsShowReadValues();
    EXPECT_EQ(S_OK, e.MoveToItem(nullptr, nullptr, TRUE));
    CEditTagModel::FreeTrackTagValues(&e.controls);
    CEditTagModel::FreeTrackTagValues(&e.m_tags);
    e.ReleaseNamespace();
    EXPECT_EQ(blocksBefore + static_cast<long>(pidls.size()), kxhost::LiveTaskMemBlocks());
    EXPECT_EQ(nullptr, e.m_library);
    EXPECT_EQ(ownReferences, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
    e.ReleaseNamespace();  // twice is harmless

    lib->SetView({tracks[2]}, 0);  // a view of one item
    isLast = isFirst = FALSE;
    StartedEditor({2}, &isLast, &isFirst);
    EXPECT_TRUE(isFirst);
    EXPECT_TRUE(isLast);
}

TEST_F(Starting, SeveralItemsShowTheFirstThatReads) {
    NullSkippingFolder folder(root);
    KxPcPidl items[] = {nullptr, pidls[1], pidls[2]};
    {
        ScriptedEditor e(site, &folder, 3, items);
        EXPECT_EQ(S_OK, e.InitEditTagModel(nullptr, nullptr));
        EXPECT_EQ(KX_EDITMODE_SEVERAL, e.m_nMode);
        EXPECT_EQ(L"Two", e.m_tags.title ? std::wstring(e.m_tags.title) : L"");
        ASSERT_EQ(3u, e.m_itemCapabilities.size());
        for (DWORD word : e.m_itemCapabilities[0]->tags) EXPECT_EQ(0u, word);  // the item without an id
        EXPECT_EQ(7u, e.m_itemCapabilities[2]->tags[KxTagTitle]);
        EXPECT_EQ(std::wstring(L"C:\\Music\\two.mp3"), e.m_itemPath);  // the shown item's path
    }
    items[1] = nullptr;
    ScriptedEditor none(site, &folder, 2, items);  // no item reads
    EXPECT_EQ(E_POINTER, none.InitEditTagModel(nullptr, nullptr));
    EXPECT_EQ(E_POINTER, none.m_hrResult);
}

TEST_F(Starting, FailuresCloseTheDialogWithAMissingPointerCode) {
    for (Op op : {Op::GetItemObject, Op::PrefetchProperties, Op::QueryService, Op::QueryItemCursor}) {
        lib->FailOperation(op, E_FAIL, 1);
        ScriptedEditor& e = Editor({0});
        EXPECT_EQ(E_POINTER, e.InitEditTagModel(nullptr, nullptr)) << static_cast<int>(op);
        EXPECT_EQ(E_POINTER, e.m_hrResult);
        editor.reset();
        EXPECT_EQ(ownReferences, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
        lib->ResetFailures();
    }
    EXPECT_EQ(E_POINTER, Editor({}).InitEditTagModel(nullptr, nullptr));
    ScriptedEditor noFolder(site, nullptr, 1, pidls.data());
    EXPECT_EQ(E_POINTER, noFolder.InitEditTagModel(nullptr, nullptr));
    ScriptedEditor noSite(nullptr, root, 1, pidls.data());
    EXPECT_EQ(E_POINTER, noSite.ConnectNamespace());
    ScriptedEditor noItems(site, root, 1, nullptr);
    EXPECT_EQ(E_POINTER, noItems.ConnectNamespace());
}

TEST_F(Starting, WithoutTheNamingFolderTheListsStayEmpty) {
    for (Op op : {Op::QueryContentRoot, Op::QueryContentFolder}) {
        lib->FailOperation(op, E_NOINTERFACE, 1);
        ScriptedEditor& e = StartedEditor({0});
        EXPECT_EQ(nullptr, e.m_librarySource);  // given back
        EXPECT_TRUE(e.m_artistList.empty());
        EXPECT_EQ(L"One", std::wstring(e.m_tags.title));
    }
}

TEST_F(Starting, UnreadableOrOverlongPathMarksTheModeForEveryItem) {
    for (bool overlong : {false, true}) {
        if (overlong) lib->SetString(tracks[0], KxPropFilePath, std::wstring(2000, L'x'));
        else lib->RemoveValue(tracks[0], KxPropFilePath);
        ScriptedEditor& e = StartedEditor({0});
        EXPECT_EQ(KX_EDITMODE_SINGLE | KX_EDITMODE_NO_PATH, e.m_nMode) << overlong;
        EXPECT_EQ(L'\0', e.m_itemPath[0]);
    }
    editor->ControlsShowReadValues();
    EXPECT_EQ(S_OK, editor->MoveToItem(nullptr, nullptr, TRUE));
    EXPECT_EQ(L'\0', editor->m_itemPath[0]);  // track 1 has a path, but none is read
}

}  // namespace
}  // namespace tagtest
