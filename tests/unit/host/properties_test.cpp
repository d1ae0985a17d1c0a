// Property reads and writes: the capability word per item and key, GetProperties' value types, and
// the write log.
#include "tests/unit/host/library_test_support.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::PropertyValue;
using kxhost::WriteRecord;

struct Properties : LibraryTest {
    void SetUp() override {
        LibraryTest::SetUp();
        OpenProperties(sample.tracks[0]);
    }
};

TEST_F(Properties, CapabilityWordPerItemAndKeyGatesReads) {
    lib.SetCapabilities(sample.tracks[1], KxPropTitle, kxhost::kWritable);
    const struct {
        ItemId item;
        const KxPropertyKey& key;
        HRESULT info, read;
        DWORD flags;
    } cases[] = {{sample.tracks[0], KxPropTitle, S_OK, S_OK, kxhost::kReadWrite},
                 {sample.tracks[0], KxPropDuration, S_OK, DISP_E_TYPEMISMATCH, kxhost::kReadable},
                 {sample.trackReadOnlyTags, KxPropArtist, S_OK, S_OK, kxhost::kReadable},
                 {sample.tracks[1], KxPropTitle, S_OK, E_ACCESSDENIED, kxhost::kWritable},
                 {sample.trackWithoutTags, KxPropArtist, KX_E_PROPERTY_NOT_FOUND, KX_E_PROPERTY_NOT_FOUND, 0}};
    for (const auto& c : cases) {
        DWORD flags = 0xFF;
        TaskMem<WCHAR> text;
        EXPECT_EQ(c.info, props->GetPropertyInfo(P(c.item), &c.key, &flags, nullptr)) << c.item;
        EXPECT_EQ(c.flags, flags) << c.item;
        EXPECT_EQ(c.read, props->GetStringProperty(P(c.item), &c.key, text.Out())) << c.item;
        EXPECT_EQ(c.read == S_OK, text.p != nullptr) << c.item;
    }
}

TEST_F(Properties, GetPropertiesGivesEachValueItsOwnBlockOfItsType) {
    // number 13 twice, as the image properties dialog asks
    const KxPropertyKey keys[] = {KxPropImage12, KxPropImage13, KxPropLocation, KxPropImage7, KxPropImage13,
                                  KxPropFileSize, KxPropImage3, KxPropImage4, KxPropDuration};
    const VARTYPE picture[] = {VT_LPWSTR, VT_LPWSTR, VT_LPWSTR, VT_I4, VT_LPWSTR, VT_UI8, VT_UI8, VT_R4, VT_EMPTY};
    const VARTYPE track[] = {VT_EMPTY, VT_EMPTY, VT_LPWSTR, VT_EMPTY, VT_EMPTY, VT_UI8, VT_EMPTY, VT_EMPTY, VT_UI4};
    PROPVARIANT values[9] = {};
    ASSERT_EQ(S_FALSE, props->GetProperties(P(sample.pictures[0]), 9, keys, values)) << "one key absent";
    for (int i = 0; i < 9; ++i) EXPECT_EQ(picture[i], values[i].vt) << "key " << i;
    EXPECT_STREQ(values[1].pwszVal, values[4].pwszVal);
    EXPECT_NE(values[1].pwszVal, values[4].pwszVal);
    EXPECT_EQ(1u, KxRationalNumerator(values[6].uhVal.QuadPart));  // exposure 1/x
    EXPECT_GT(values[7].fltVal, 1.0f);
    for (PROPVARIANT& v : values) PropVariantClear(&v);
    ASSERT_EQ(S_FALSE, props->GetProperties(P(sample.tracks[0]), 9, keys, values));
    for (int i = 0; i < 9; ++i) EXPECT_EQ(track[i], values[i].vt) << "key " << i;
    EXPECT_EQ(lib.Value(sample.tracks[0], KxPropDuration)->number, values[8].ulVal);
    for (PROPVARIANT& v : values) PropVariantClear(&v);
}

TEST_F(Properties, EveryWriteIsLoggedPerItemAndKeyAndRefusedOnesWriteNothing) {
    const ItemId a = sample.tracks[2], b = sample.tracks[3], c = sample.trackWithoutTags;
    KxPcPidl items[] = {P(a), P(b), P(c)}, locked[] = {P(a), P(sample.trackReadOnlyTags)};
    const PropertyValue artist = *lib.Value(a, KxPropArtist);
    const BYTE bytes[] = {1, 2, 3};
    ASSERT_EQ(S_OK, props->SetStringProperty(2, items + 1, &KxPropGenre, L"Polka"));
    ASSERT_EQ(S_OK, props->SetIntProperty(1, items, &KxPropRating, 4));
    ASSERT_EQ(S_OK, props->SetBlobProperty(1, items, &KxPropAlbumArt, 0, bytes, 3));
    ASSERT_EQ(S_OK, props->RemoveProperties(1, items, 1, &KxPropAlbumArt));
    // refused by one item of two, or failed: nothing written
    EXPECT_EQ(E_ACCESSDENIED, props->SetStringProperty(2, locked, &KxPropArtist, L"Nobody"));
    EXPECT_EQ(E_ACCESSDENIED, props->RemoveProperties(2, locked, 1, &KxPropArtist));
    lib.FailOperation(kxhost::Op::SetStringProperty, E_ACCESSDENIED);
    EXPECT_EQ(E_ACCESSDENIED, props->SetStringProperty(1, items, &KxPropTitle, L"New"));
    EXPECT_EQ(artist, *lib.Value(a, KxPropArtist));
    const struct {
        WriteRecord::Kind via;
        ItemId item;
        const KxPropertyKey& key;
        std::optional<PropertyValue> value;
    } expected[] = {{WriteRecord::String, b, KxPropGenre, PropertyValue::String(L"Polka")},
                    {WriteRecord::String, c, KxPropGenre, PropertyValue::String(L"Polka")},
                    {WriteRecord::Int, a, KxPropRating, PropertyValue::Int(4)},
                    {WriteRecord::Blob, a, KxPropAlbumArt, PropertyValue::Blob({1, 2, 3})},
                    {WriteRecord::Remove, a, KxPropAlbumArt, std::nullopt}};
    const auto& log = lib.Writes();
    ASSERT_EQ(std::size(expected), log.size());
    for (size_t i = 0; i < log.size(); ++i) {
        EXPECT_EQ(expected[i].via, log[i].via) << i;
        EXPECT_EQ(expected[i].item, log[i].item) << i;
        EXPECT_TRUE(expected[i].key.pid == log[i].key.pid && IsEqualGUID(expected[i].key.fmtid, log[i].key.fmtid));
        EXPECT_EQ(expected[i].value, log[i].value) << i;
    }
    EXPECT_EQ(3u, lib.WritesTo(a).size());
    EXPECT_EQ(PropertyValue::Int(4), *lib.LastWrite(a, KxPropRating)->value);
    EXPECT_EQ(nullptr, lib.LastWrite(b, KxPropRating));
    lib.ClearWrites();
    EXPECT_TRUE(lib.Writes().empty());
}

}  // namespace
}  // namespace kxtest
