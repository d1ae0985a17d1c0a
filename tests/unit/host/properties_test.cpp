// Property reads and writes with capabilities, the write log, and GetProperties' value types.
#include "tests/unit/host/library_test_support.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::PropertyValue;
using kxhost::WriteRecord;

bool SameKey(const KxPropertyKey& a, const KxPropertyKey& b) {
    return a.pid == b.pid && IsEqualGUID(a.fmtid, b.fmtid);
}

struct Properties : LibraryTest {
    Ref<IKxItemProperties> props;
    std::vector<KxPidl> pidls;

    void SetUp() override {
        LibraryTest::SetUp();
        ASSERT_EQ(S_OK, Open({sample.tracks[0]}, props));
    }
    void TearDown() override {
        for (KxPidl p : pidls) CoTaskMemFree(p);
        props.Reset();
        LibraryTest::TearDown();
    }
    KxPcPidl P(ItemId id) {
        pidls.push_back(Pidl(id));
        return pidls.back();
    }
    HRESULT Open(std::vector<ItemId> ids, Ref<IKxItemProperties>& out) {
        std::vector<KxPcPidl> items;
        for (ItemId id : ids) items.push_back(P(id));
        return root->GetItemObject(nullptr, nullptr, static_cast<UINT>(items.size()), items.data(),
                                   IID_IKxItemProperties, out.OutVoid());
    }
    std::wstring ReadString(ItemId id, const KxPropertyKey& key, HRESULT* hr = nullptr) {
        TaskMem<WCHAR> s;
        HRESULT r = props->GetStringProperty(P(id), &key, s.Out());
        if (hr) *hr = r;
        return s.p ? s.p : L"<null>";
    }
};

TEST_F(Properties, InfoGivesCapabilitiesOrNotFound) {
    lib.SetCapabilities(sample.tracks[1], KxPropTitle, 0);  // settable per item and key
    const struct {
        ItemId item;
        const KxPropertyKey& key;
        HRESULT status;
        DWORD flags;
    } cases[] = {{sample.tracks[0], KxPropTitle, S_OK, kxhost::kReadWrite},
                 {sample.tracks[0], KxPropDuration, S_OK, kxhost::kReadable},
                 {sample.trackWithoutTags, KxPropArtist, KX_E_PROPERTY_NOT_FOUND, 0},
                 {sample.trackReadOnlyTags, KxPropArtist, S_OK, kxhost::kReadable},
                 {sample.tracks[1], KxPropTitle, S_OK, 0}};
    for (const auto& c : cases) {
        DWORD flags = 0xFF;
        EXPECT_EQ(c.status, props->GetPropertyInfo(P(c.item), &c.key, &flags, nullptr)) << c.item;
        EXPECT_EQ(c.flags, flags) << c.item;
    }
    HRESULT hr;
    ReadString(sample.tracks[1], KxPropTitle, &hr);
    EXPECT_EQ(E_ACCESSDENIED, hr) << "a property without the read bit is not read";
    DWORD flags = 0;
    EXPECT_EQ(E_INVALIDARG, props->GetPropertyInfo(nullptr, &KxPropTitle, &flags, nullptr));
    EXPECT_EQ(E_POINTER, props->GetPropertyInfo(P(sample.tracks[0]), nullptr, &flags, nullptr));
}

TEST_F(Properties, ReadsOfEachKind) {
    const ItemId t = sample.tracks[0];
    const KxPropertyKey wanted[] = {KxPropRating, KxPropTitle};
    ASSERT_EQ(S_OK, props->PrefetchProperties(2, wanted));
    ASSERT_EQ(2u, lib.LastPrefetch().size());
    EXPECT_TRUE(SameKey(KxPropRating, lib.LastPrefetch()[0]));
    EXPECT_TRUE(SameKey(KxPropTitle, lib.LastPrefetch()[1]));
    EXPECT_EQ(E_POINTER, props->PrefetchProperties(1, nullptr));
    EXPECT_EQ(lib.NameOf(t), ReadString(t, KxPropTitle));
    LONG n = -1;
    EXPECT_EQ(S_OK, props->GetIntProperty(P(t), &KxPropTrackNumber, &n));
    EXPECT_EQ(lib.Value(t, KxPropTrackNumber)->number, n);
    EXPECT_EQ(S_OK, props->GetIntProperty(P(t), &KxPropDuration, &n));  // unsigned reads as a number too
    EXPECT_GT(n, 0);
    // wrong kinds and absent ones leave the out values cleared
    HRESULT hr;
    EXPECT_EQ(L"<null>", ReadString(t, KxPropDuration, &hr));
    EXPECT_EQ(DISP_E_TYPEMISMATCH, hr);
    n = 5;
    EXPECT_EQ(DISP_E_TYPEMISMATCH, props->GetIntProperty(P(t), &KxPropTitle, &n));
    EXPECT_EQ(0, n);
    EXPECT_EQ(KX_E_PROPERTY_NOT_FOUND, props->GetIntProperty(P(sample.trackWithoutTags), &KxPropRating, &n));
    // art: the stored bytes, owned by the caller
    DWORD word = 9;
    TaskMem<BYTE> art;
    ULONG size = 0;
    ASSERT_EQ(S_OK, props->GetBlobProperty(P(t), &KxPropAlbumArt, &word, art.Out(), &size));
    EXPECT_EQ(lib.Value(t, KxPropAlbumArt)->bytes, std::vector<BYTE>(art.p, art.p + size));
    EXPECT_EQ(0u, word);
    EXPECT_EQ(KX_E_PROPERTY_NOT_FOUND, props->GetBlobProperty(P(sample.tracks[1]), &KxPropAlbumArt, &word,
                                                              art.Out(), &size));
    EXPECT_EQ(nullptr, art.p);
    EXPECT_EQ(0u, size);
}

TEST_F(Properties, WritesReachEveryItemAndAreLogged) {
    Ref<IKxItemProperties> many;
    const std::vector<ItemId> ids = {sample.tracks[2], sample.tracks[3], sample.trackWithoutTags};
    ASSERT_EQ(S_OK, Open(ids, many));
    EXPECT_TRUE(IsEqualIID(IID_IKxItemProperties, lib.LastItemObjectCall().iid));
    std::vector<KxPcPidl> items;
    for (ItemId id : ids) items.push_back(P(id));
    const BYTE bytes[] = {1, 2, 3};
    ASSERT_EQ(S_OK, many->SetStringProperty(3, items.data(), &KxPropGenre, L"Polka"));
    ASSERT_EQ(S_OK, many->SetIntProperty(2, items.data(), &KxPropRating, 4));
    ASSERT_EQ(S_OK, many->SetBlobProperty(1, items.data(), &KxPropAlbumArt, 0, bytes, 3));
    for (ItemId id : ids) EXPECT_EQ(PropertyValue::String(L"Polka"), *lib.Value(id, KxPropGenre));
    EXPECT_EQ(4, lib.Value(ids[1], KxPropRating)->number);
    EXPECT_FALSE(lib.Value(ids[2], KxPropRating)) << "only the first two got a rating";
    EXPECT_EQ(kxhost::kReadWrite, lib.Capabilities(sample.trackWithoutTags, KxPropGenre)) << "added writable";
    // the log: in order, by item and key, the last write wins
    const auto& log = lib.Writes();
    ASSERT_EQ(6u, log.size());
    EXPECT_EQ(ids[2], log[2].item);
    EXPECT_TRUE(SameKey(KxPropGenre, log[2].key));
    EXPECT_EQ(WriteRecord::String, log[2].via);
    EXPECT_EQ(WriteRecord::Int, log[3].via);
    EXPECT_EQ(WriteRecord::Blob, log[5].via);
    EXPECT_EQ(std::vector<BYTE>(bytes, bytes + 3), log[5].value->bytes);
    EXPECT_EQ(3u, lib.WritesTo(ids[0]).size());
    EXPECT_EQ(nullptr, lib.LastWrite(ids[2], KxPropRating));
    ASSERT_EQ(S_OK, many->SetIntProperty(1, items.data() + 1, &KxPropRating, 1));
    EXPECT_EQ(PropertyValue::Int(1), *lib.LastWrite(ids[1], KxPropRating)->value);
    lib.ClearWrites();
    EXPECT_TRUE(lib.Writes().empty());
}

TEST_F(Properties, AWriteThatOneItemRefusesWritesNothing) {
    const ItemId ok = sample.tracks[4];
    std::vector<KxPcPidl> items = {P(ok), P(sample.trackReadOnlyTags)};
    const PropertyValue before = *lib.Value(ok, KxPropArtist);
    EXPECT_EQ(E_ACCESSDENIED, props->SetStringProperty(2, items.data(), &KxPropArtist, L"Nobody"));
    EXPECT_EQ(before, *lib.Value(ok, KxPropArtist));
    // the read-only item refuses even a property it does not have yet
    KxPcPidl readOnlyItem = P(sample.trackReadOnlyItem);
    EXPECT_EQ(E_ACCESSDENIED, props->SetIntProperty(1, &readOnlyItem, &KxPropTagInt12, 7));
    // kinds must agree; a number of either sign goes to a 32-bit number
    EXPECT_EQ(DISP_E_TYPEMISMATCH, props->SetIntProperty(1, items.data(), &KxPropTitle, 1));
    EXPECT_EQ(E_POINTER, props->SetStringProperty(1, items.data(), &KxPropTitle, nullptr));
    EXPECT_EQ(E_INVALIDARG, props->SetStringProperty(0, items.data(), &KxPropTitle, L"x"));
    KxPcPidl none = nullptr;
    EXPECT_EQ(E_INVALIDARG, props->SetStringProperty(1, &none, &KxPropTitle, L"x"));
    EXPECT_TRUE(lib.Writes().empty());
}

TEST_F(Properties, SetPropertiesKeepsStoredKindsAndRemovePropertiesIsLogged) {
    std::vector<KxPcPidl> items = {P(sample.tracks[5]), P(sample.tracks[6])};
    const KxPropertyKey keys[] = {KxPropArtist, KxPropRating};
    PROPVARIANT values[2] = {};
    values[0].vt = VT_LPWSTR;
    values[0].pwszVal = const_cast<LPWSTR>(L"Duo");
    values[1].vt = VT_UI4;
    values[1].ulVal = 5;
    ASSERT_EQ(S_OK, props->SetProperties(2, items.data(), 2, keys, values));
    EXPECT_EQ(PropertyValue::String(L"Duo"), *lib.Value(sample.tracks[6], KxPropArtist));
    EXPECT_EQ(PropertyValue::Int(5), *lib.Value(sample.tracks[6], KxPropRating)) << "rating stays signed";
    ASSERT_EQ(4u, lib.Writes().size());
    EXPECT_EQ(WriteRecord::Properties, lib.Writes()[3].via);
    values[1].vt = 8;  // VT_BSTR is not taken
    EXPECT_EQ(DISP_E_TYPEMISMATCH, props->SetProperties(2, items.data(), 2, keys, values));
    // removing: logged without a value, again when nothing is left, refused on read-only tags
    lib.ClearWrites();
    KxPcPidl withArt = P(sample.tracks[0]);
    ASSERT_TRUE(lib.Value(sample.tracks[0], KxPropAlbumArt));
    EXPECT_EQ(S_OK, props->RemoveProperties(1, &withArt, 1, &KxPropAlbumArt));
    EXPECT_EQ(S_OK, props->RemoveProperties(1, &withArt, 1, &KxPropAlbumArt));
    EXPECT_FALSE(lib.Value(sample.tracks[0], KxPropAlbumArt));
    ASSERT_EQ(2u, lib.Writes().size());
    EXPECT_EQ(WriteRecord::Remove, lib.Writes()[1].via);
    EXPECT_FALSE(lib.Writes()[1].value);
    KxPcPidl locked = P(sample.trackReadOnlyTags);
    EXPECT_EQ(E_ACCESSDENIED, props->RemoveProperties(1, &locked, 1, &KxPropArtist));
    EXPECT_TRUE(lib.Value(sample.trackReadOnlyTags, KxPropArtist));
}

TEST_F(Properties, GetPropertiesGivesEachValueOwnBlockOfItsKind) {
    // number 13 twice, as the image properties dialog asks
    const KxPropertyKey keys[] = {KxPropImage12, KxPropImage13, KxPropLocation, KxPropImage7, KxPropImage13,
                                  KxPropFileSize, KxPropImage3, KxPropImage4};
    const VARTYPE expected[] = {VT_LPWSTR, VT_LPWSTR, VT_LPWSTR, VT_I4, VT_LPWSTR, VT_UI8, VT_UI8, VT_R4};
    PROPVARIANT values[8] = {};
    ASSERT_EQ(S_OK, props->GetProperties(P(sample.pictures[0]), 8, keys, values));
    for (int i = 0; i < 8; ++i) EXPECT_EQ(expected[i], values[i].vt) << "key " << i;
    EXPECT_STREQ(values[1].pwszVal, values[4].pwszVal);
    EXPECT_NE(values[1].pwszVal, values[4].pwszVal);
    EXPECT_EQ(1u, KxRationalNumerator(values[6].uhVal.QuadPart));  // exposure 1/x
    EXPECT_GT(values[7].fltVal, 1.0f);
    for (PROPVARIANT& v : values) PropVariantClear(&v);
    // a track lacks the image keys: S_FALSE and VT_EMPTY for those
    ASSERT_EQ(S_FALSE, props->GetProperties(P(sample.tracks[0]), 8, keys, values));
    EXPECT_EQ(VT_LPWSTR, values[2].vt);
    EXPECT_EQ(VT_UI8, values[5].vt);
    EXPECT_EQ(VT_EMPTY, values[0].vt);
    EXPECT_EQ(VT_EMPTY, values[7].vt);
    for (PROPVARIANT& v : values) PropVariantClear(&v);
}

TEST_F(Properties, OutOfMemoryLeavesNothingBehind) {
    TaskMem<WCHAR> s;
    KxPcPidl first = P(sample.tracks[0]);
    kxhost::FailTaskMemAllocations(1);
    EXPECT_EQ(E_OUTOFMEMORY, props->GetStringProperty(first, &KxPropTitle, s.Out()));
    EXPECT_EQ(nullptr, s.p);
    const KxPropertyKey keys[] = {KxPropTitle, KxPropArtist, KxPropAlbum};
    PROPVARIANT values[3] = {};
    KxPcPidl item = P(sample.tracks[0]);
    kxhost::FailTaskMemAllocations(3);  // the third string
    EXPECT_EQ(E_OUTOFMEMORY, props->GetProperties(item, 3, keys, values));
    for (const PROPVARIANT& v : values) EXPECT_EQ(VT_EMPTY, v.vt);
    kxhost::ResetTaskMemFailures();
}

}  // namespace
}  // namespace kxtest
