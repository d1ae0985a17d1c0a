// What a registration writes, worked out from its arguments: the digest and the name-based
// category identifier against known values, the keys and values of a registration, the arguments
// it refuses.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "vnintrfu/name_guid.h"
#include "vnintrfu/registration.h"

namespace {

const CLSID kClass = {0xEB8BC225, 0xFFEA, 0x4DD4, {0xA8, 0xDE, 0xA6, 0xA7, 0x1E, 0x93, 0xE0, 0x59}};

std::string Hex(const std::array<std::uint8_t, 20>& d) {
    std::string s;
    for (std::uint8_t b : d) s += "0123456789abcdef"[b >> 4], s += "0123456789abcdef"[b & 15];
    return s;
}

TEST(VnRegistration, Sha1OfKnownMessagesAcrossTheBlockEdges) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
        {"abc", "a9993e364706816aba3e25717850c26c9cd0d89d"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
        {std::string(64, 'a'), "0098ba824b5c16427bd7a1122a5a442a25ec644d"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.second, Hex(KxSha1(reinterpret_cast<const std::uint8_t*>(c.first.data()), c.first.size())))
            << c.first.size();
}

TEST(VnRegistration, CategoryIdentifiers) {
    const std::pair<std::wstring, const wchar_t*> cases[] = {
        // name-based, version 5 (values from an independent implementation of RFC 4122)
        {L"CATEGORY_KxCommonResource", L"{6AE94C5C-54F7-533D-AF81-97647D6E83C0}"},
        {std::wstring(1, static_cast<wchar_t>(0x1F600)) + L"x", L"{1B8BA476-491E-56DE-A01E-4B1FA38C2887}"},
        // a GUID in braces is the identifier itself, in either case
        {L"{0d59a1c2-1111-2222-3333-44445555aaaa}", L"{0D59A1C2-1111-2222-3333-44445555AAAA}"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.second, VnGuidText(VnCategoryId(c.first)));
    // almost a GUID: a name like any other
    EXPECT_EQ(L'5', VnGuidText(VnCategoryId(L"{0D59A1C2-1111-2222-3333-44445555AAAX}"))[15]);
}

std::wstring Describe(const std::vector<VnRegistryEntry>& entries) {
    std::wstring s;
    for (const VnRegistryEntry& e : entries)
        s += e.key + (e.hasValue ? L" [" + e.name + L"]=" + e.data : std::wstring()) + L"\n";
    return s;
}

// The standard keys of a class (threading flag 1, no ProgID) are read back from the registry under
// Wine after regsvr32; here flag 0, which writes no threading model, and the keys of the ProgIDs.
TEST(VnRegistration, ProgIdKeysAndNoThreadingModelForFlag0) {
    const VnClassRegistration reg = {&kClass, L"Commom Resource Plugin Object", L"CATEGORY_KxCommonResource",
                                     L"Kx.Resource.1", L"Kx.Resource", 0, L"C:\\Kx\\KxComResPlgin.dll"};
    std::vector<VnRegistryEntry> entries;
    ASSERT_EQ(VnIntrfcOk, VnBuildRegistration(reg, &entries));
    const std::wstring all = Describe(entries);
    EXPECT_EQ(std::wstring::npos, all.find(L"ThreadingModel"));
    for (const wchar_t* line : {L"\\ProgID []=Kx.Resource.1\n", L"\\VersionIndependentProgID []=Kx.Resource\n",
                                L"\nKx.Resource.1\\CLSID []={EB8BC225", L"\nKx.Resource\\CurVer []=Kx.Resource.1\n"})
        EXPECT_NE(std::wstring::npos, all.find(line)) << line;
}

TEST(VnRegistration, RefusedArguments) {
    const struct {
        const CLSID* clsid;
        const wchar_t* description;
        const wchar_t* category;
        const wchar_t* progId;
        int flag;
        const wchar_t* path;
        tagVnINTRFCRESULT result;
    } cases[] = {
        {nullptr, L"d", L"c", nullptr, 1, L"p", VnIntrfcInvalidArg},
        {&kClass, nullptr, L"c", nullptr, 1, L"p", VnIntrfcInvalidArg},
        {&kClass, L"d", nullptr, nullptr, 1, L"p", VnIntrfcInvalidArg},
        {&kClass, L"d", L"c", nullptr, 5, L"p", VnIntrfcInvalidArg},
        {&kClass, L"d", L"c", L"Kx Resource", 1, L"p", VnIntrfcInvalidArg},
        {&kClass, L"d", L"c", L"Kx.Resource.Name.Far.Too.Long.For.A.ProgId", 1, L"p", VnIntrfcInvalidArg},
        {&kClass, L"d", L"c", nullptr, 1, L"", VnIntrfcInvalidModule},  // arguments are checked first
        {&kClass, L"d", L"c", L"", 4, L"p", VnIntrfcOk},                // an empty ProgID is none
    };
    for (const auto& c : cases) {
        VnClassRegistration reg = {c.clsid, c.description, c.category, c.progId, nullptr, c.flag, c.path};
        std::vector<VnRegistryEntry> entries;
        EXPECT_EQ(c.result, VnBuildRegistration(reg, &entries)) << c.flag << (c.progId ? " progid" : "");
    }
}

}  // namespace
