// Identifiers and records that cross the boundary between host and plug-in.
#include "kx/IKxCommonResource.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace {

// The registry spelling of a GUID, upper case.
std::wstring Text(const GUID& g) {
    wchar_t b[64];
    std::swprintf(b, 64, L"{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", static_cast<unsigned>(g.Data1),
                  g.Data2, g.Data3, g.Data4[0], g.Data4[1], g.Data4[2], g.Data4[3], g.Data4[4], g.Data4[5],
                  g.Data4[6], g.Data4[7]);
    return b;
}

TEST(Identifiers, ClassInterfacesAndPropertySets) {
    const std::pair<const GUID*, const wchar_t*> ids[] = {
        {&CLSID_KxComResPlginPluginObj, L"{EB8BC225-FFEA-4DD4-A8DE-A6A71E93E059}"},
        {&IID_IKxCommonResource, L"{8DC5F236-FC4F-4B15-8BF7-2B56993A2792}"},
        {&IID_IKxBalloonTip, L"{6E3346D4-D115-4933-B2EB-8FFE2538BD8C}"},
        {&IID_IKxBalloonTipControl, L"{085B4591-87F4-4F13-9A6E-5A02470C5901}"},
        {&IID_IKxContentFolder, L"{9F52AEBE-A29C-4A65-A680-73505740DC62}"},
        {&IID_IKxContentRoot, L"{1BC0F38B-C24A-4C70-A02C-44C139B00506}"},
        {&IID_IKxItemEnum, L"{9C173C25-AE8A-4DAC-95AE-B25FD6C87A23}"},
        {&IID_IKxTrackList, L"{2B593AAB-B18D-418B-A1CF-9F519EF67A90}"},
        {&IID_IKxTrackFilter, L"{ABCAB613-3A07-45B5-8C28-12B6FEB2F095}"},
        {&IID_IKxItemProperties, L"{E12D2505-E6EC-466D-AA9D-08DB6BB08F1E}"},
        {&IID_IKxItemPreview, L"{C0EEA4C7-BDB5-499B-BCD2-5DE29D02653E}"},
        {&IID_IKxContentView, L"{17ABE1C9-886D-4C18-9D73-9BD636534C95}"},
        {&IID_IKxItemCursor, L"{46C94CEC-0734-4BB8-9DCD-C54E4B0F1B8F}"},
        {&KxPropTitle.fmtid, L"{A716B533-41C1-4F75-9407-F646B3A2387D}"},
        {&KxPropFilePath.fmtid, L"{E96F2899-F6F6-4F29-93CC-095E3104AC92}"},
        {&KxPropAlbumArt.fmtid, L"{F6FD959B-5628-4196-B62A-CA1BD855013B}"},
        {&KxPropImage18.fmtid, L"{C45A9308-27B2-4A92-B9F5-A5D56547BDB7}"},
    };
    for (const auto& id : ids) EXPECT_EQ(id.second, Text(*id.first));
    EXPECT_EQ(1u, KxPropTitle.pid);
    EXPECT_EQ(13u, KxPropRating.pid);
    EXPECT_EQ(3u, KxPropFilePath.pid);
    EXPECT_EQ(18u, KxPropImage18.pid);
    EXPECT_TRUE(IsEqualGUID(KxPropTitle.fmtid, KxPropVideo15.fmtid));
}

TEST(Identifiers, WellKnownFolderNamesKeepTheirCase) {
    EXPECT_STREQ(L"{3D4614C5-8317-4c4f-B50C-10291059EE72}", KxFolderPlaylists);
    EXPECT_STREQ(L"{57CC3158-38C0-4f2e-9235-DD6315793320}", KxFolderSlideshows);
    EXPECT_STREQ(L"{3D4614C6-8317-4c4f-B50C-10291059EE72}", KxFolderAlbums);
    EXPECT_STREQ(L"{3D4614C7-8317-4c4f-B50C-10291059EE72}", KxFolderArtists);
    EXPECT_STREQ(L"{3D4614C8-8317-4c4f-B50C-10291059EE72}", KxFolderGenres);
    EXPECT_STREQ(L"{D2CCF534-0EE2-4809-9706-63B414D84D7A}", KxFolderAllTracks);
}

TEST(Records, SizesAndRationals) {
    EXPECT_EQ(20u, sizeof(KxPropertyKey));
    EXPECT_EQ(2u, offsetof(KxItemRecord, abID));
    const ULONGLONG r = KxMakeRational(1, 250);
    EXPECT_EQ(0x00000001000000FAull, r);
    EXPECT_EQ(1u, KxRationalNumerator(r));
    EXPECT_EQ(250u, KxRationalDenominator(r));
    EXPECT_EQ(static_cast<HRESULT>(0x80070490u), KX_E_PROPERTY_NOT_FOUND);
}

}  // namespace
