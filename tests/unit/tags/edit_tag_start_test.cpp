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
    explicit NullSkippingFolder(IKxContentFolder* inner) : inner_(inner) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        return inner_->QueryInterface(riid, ppv);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetItemObject(IKxContentSite* site, HWND owner, UINT count, const KxPcPidl* items,
                                            REFIID riid, void** ppv) override {
        std::vector<KxPcPidl> known;
        for (UINT i = 0; i < count; ++i)
            if (items[i]) known.push_back(items[i]);
        return inner_->GetItemObject(site, owner, static_cast<UINT>(known.size()), known.data(), riid, ppv);
    }
    HRESULT STDMETHODCALLTYPE EnumItems(DWORD r, DWORD f, REFIID riid, void** ppv) override {
        return inner_->EnumItems(r, f, riid, ppv);
    }
    HRESULT STDMETHODCALLTYPE GetItemAttributes(UINT c, const KxPcPidl* i, DWORD* a) override {
        return inner_->GetItemAttributes(c, i, a);
    }
    HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemName(KxPcPidl i, DWORD f, LPWSTR* n) override {
        return inner_->GetItemName(i, f, n);
    }
    HRESULT STDMETHODCALLTYPE BindToFolder(KxPcPidl i, REFIID riid, void** ppv) override {
        return inner_->BindToFolder(i, riid, ppv);
    }
    HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ParseName(LPCWSTR n, DWORD f, KxPidl* p) override { return inner_->ParseName(n, f, p); }
    HRESULT STDMETHODCALLTYPE GetOwnId(KxPidl* p) override { return inner_->GetOwnId(p); }

private:
    IKxContentFolder* inner_;
};

TEST_F(Starting, OneItemFromTheStartOfTheView) {
    BOOL isLast = FALSE, isFirst = FALSE;
    ScriptedEditor& e = StartedEditor({0}, &isLast, &isFirst);
    EXPECT_EQ(KX_EDITMODE_SINGLE, e.m_nMode);
    EXPECT_TRUE(isFirst);
    EXPECT_FALSE(isLast);
    EXPECT_EQ(0, e.m_currentIndex);
    EXPECT_EQ(tracks[0], lib->ItemOf(e.m_currentItem));
    EXPECT_EQ(std::wstring(L"C:\\Music\\one.mp3"), e.m_itemPath);
    EXPECT_TRUE(e.m_itemCapabilities.empty());  // only for several items
    EXPECT_EQ(S_OK, e.m_hrResult);

    // what the dialog frees when its window goes away leaves nothing behind
    e.ControlsShowReadValues();
    EXPECT_EQ(S_OK, e.MoveToItem(nullptr, nullptr, TRUE));
    CEditTagModel::FreeTrackTagValues(&e.controls);
    CEditTagModel::FreeTrackTagValues(&e.m_tags);
    e.FreeItemCapabilities();
    e.ReleaseNamespace();
    EXPECT_EQ(blocksBefore + static_cast<long>(pidls.size()), kxhost::LiveTaskMemBlocks());
    EXPECT_EQ(nullptr, e.m_currentItem);
    EXPECT_EQ(nullptr, e.m_properties);
    EXPECT_EQ(nullptr, e.m_library);
    EXPECT_EQ(ownReferences, lib->OutstandingReferences()) << lib->DescribeLiveObjects();
    e.ReleaseNamespace();  // twice is harmless
}

TEST_F(Starting, ViewOfOneItemIsFirstAndLast) {
    lib->SetView({tracks[2]}, 0);
    BOOL isLast = FALSE, isFirst = FALSE;
    StartedEditor({2}, &isLast, &isFirst);
    EXPECT_TRUE(isFirst);
    EXPECT_TRUE(isLast);
}

TEST_F(Starting, SeveralItemsShowTheFirstThatReads) {
    NullSkippingFolder folder(root);
    KxPcPidl items[] = {nullptr, pidls[1], pidls[2]};
    BOOL isLast = FALSE, isFirst = FALSE;
    {
        ScriptedEditor e(site, &folder, 3, items);
        EXPECT_EQ(S_OK, e.InitEditTagModel(&isLast, &isFirst));
        EXPECT_EQ(KX_EDITMODE_SEVERAL, e.m_nMode);
        EXPECT_EQ(L"Two", std::wstring(e.m_tags.title ? e.m_tags.title : L"<null>"));
        ASSERT_EQ(3u, e.m_itemCapabilities.size());
        for (DWORD word : e.m_itemCapabilities[0]->tags) EXPECT_EQ(0u, word);  // the item without an id
        EXPECT_EQ(7u, e.m_itemCapabilities[2]->tags[KxTagTitle]);
        EXPECT_EQ(std::wstring(L"C:\\Music\\two.mp3"), e.m_itemPath);  // the shown item's path
        EXPECT_TRUE(isFirst);  // the view's current item is track 0
    }
    KxPcPidl unreadable[] = {nullptr, nullptr, pidls[0]};
    ScriptedEditor none(site, &folder, 2, unreadable);
    EXPECT_EQ(E_POINTER, none.InitEditTagModel(nullptr, nullptr));
    EXPECT_EQ(E_POINTER, none.m_hrResult);
}

TEST_F(Starting, FailuresCloseTheDialogWithAMissingPointerCode) {
    struct Case {
        const char* what;
        Op op;
    };
    for (Case c : {Case{"item object", Op::GetItemObject}, Case{"view", Op::QueryService},
                   Case{"cursor", Op::QueryItemCursor}}) {
        lib->FailOperation(c.op, E_FAIL, 1);
        ScriptedEditor& e = Editor({0});
        EXPECT_EQ(E_POINTER, e.InitEditTagModel(nullptr, nullptr)) << c.what;
        EXPECT_EQ(E_POINTER, e.m_hrResult) << c.what;
        editor.reset();
        EXPECT_EQ(ownReferences, lib->OutstandingReferences()) << c.what << "\n" << lib->DescribeLiveObjects();
        lib->ResetFailures();
    }

    ScriptedEditor& none = Editor({});
    EXPECT_EQ(E_POINTER, none.InitEditTagModel(nullptr, nullptr));
    ScriptedEditor& unreadable = Editor({-1, -1});
    EXPECT_EQ(E_POINTER, unreadable.InitEditTagModel(nullptr, nullptr));

    ScriptedEditor noFolder(site, nullptr, 1, given.data());
    EXPECT_EQ(E_POINTER, noFolder.InitEditTagModel(nullptr, nullptr));
    ScriptedEditor noSite(nullptr, root, 1, given.data());
    EXPECT_EQ(E_POINTER, noSite.ConnectNamespace());
    ScriptedEditor noItems(site, root, 1, nullptr);
    EXPECT_EQ(E_POINTER, noItems.ConnectNamespace());
}

TEST_F(Starting, PrefetchAnnouncesTheTenKeysInItsOwnOrderAndItsFailureStops) {
    ScriptedEditor& e = Editor({0});
    EXPECT_EQ(S_OK, e.ConnectNamespace());
    const KxPropertyKey* expected[] = {&KxPropTitle, &KxPropArtist,      &KxPropArtist2,  &KxPropAlbum,
                                       &KxPropGenre, &KxPropTrackNumber, &KxPropTagInt12, &KxPropYear,
                                       &KxPropRating, &KxPropAlbumArt};
    const std::vector<KxPropertyKey>& keys = lib->LastPrefetch();
    ASSERT_EQ(10u, keys.size());
    for (size_t i = 0; i < 10; ++i) {
        EXPECT_TRUE(IsEqualGUID(expected[i]->fmtid, keys[i].fmtid)) << i;
        EXPECT_EQ(expected[i]->pid, keys[i].pid) << i;
    }

    lib->FailOperation(Op::PrefetchProperties, E_OUTOFMEMORY, 1);
    EXPECT_EQ(E_OUTOFMEMORY, e.ConnectNamespace());
    EXPECT_EQ(nullptr, e.m_cursor);
    EXPECT_EQ(1, lib->Calls(Op::QueryService));  // only the first connection got that far
}

TEST_F(Starting, WithoutTheNamingFolderTheListsStayEmpty) {
    lib->FailOperation(Op::QueryContentRoot, E_NOINTERFACE, 1);
    ScriptedEditor& e = StartedEditor({0});
    EXPECT_EQ(nullptr, e.m_librarySource);
    EXPECT_EQ(nullptr, e.m_library);
    EXPECT_TRUE(e.m_artistList.empty());
    EXPECT_TRUE(e.m_genreList.empty());
    EXPECT_EQ(L"One", std::wstring(e.m_tags.title));

    lib->FailOperation(Op::QueryContentFolder, E_NOINTERFACE, 1);
    ScriptedEditor& f = StartedEditor({0});
    EXPECT_EQ(nullptr, f.m_librarySource);  // given back
    EXPECT_TRUE(f.m_albumList.empty());
}

TEST_F(Starting, UnreadableOrOverlongPathMarksTheMode) {
    lib->RemoveValue(tracks[0], KxPropFilePath);
    ScriptedEditor& e = StartedEditor({0});
    EXPECT_EQ(KX_EDITMODE_SINGLE | KX_EDITMODE_NO_PATH, e.m_nMode);
    EXPECT_EQ(L'\0', e.m_itemPath[0]);

    lib->SetString(tracks[0], KxPropFilePath, std::wstring(2000, L'x'));
    ScriptedEditor& f = StartedEditor({0});
    EXPECT_EQ(KX_EDITMODE_SINGLE | KX_EDITMODE_NO_PATH, f.m_nMode);
    EXPECT_EQ(L'\0', f.m_itemPath[0]);
    // from then on no path is read for any item
    f.ControlsShowReadValues();
    EXPECT_EQ(S_OK, f.MoveToItem(nullptr, nullptr, TRUE));
    EXPECT_EQ(L'\0', f.m_itemPath[0]);
}

TEST_F(Starting, ViewCountFailureLeavesTheFlags) {
    lib->FailOperation(Op::CursorGetCount, E_FAIL, 1);
    BOOL isLast = FALSE, isFirst = FALSE;
    ScriptedEditor& e = StartedEditor({0}, &isLast, &isFirst);
    EXPECT_FALSE(isFirst);
    EXPECT_FALSE(isLast);
    EXPECT_EQ(nullptr, e.m_currentItem);  // found when first needed
    e.ControlsShowReadValues();
    EXPECT_EQ(S_OK, e.MoveToItem(nullptr, nullptr, TRUE));
    EXPECT_EQ(L"Two", e.shownTitle);
}

}  // namespace
}  // namespace tagtest
