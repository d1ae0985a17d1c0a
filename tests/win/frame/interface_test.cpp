// IKxCommonResource through the shipped DLLs: the strings that the dialogs load are all in
// ComRcRes.dll.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/win/common/plugin_loader.h"

namespace {

class Interface : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(S_OK, plugin_.Create(&resource_)); }
    void TearDown() override {
        if (resource_) {
            EXPECT_EQ(0u, resource_->Release());
        }
        EXPECT_EQ(S_OK, plugin_.CanUnloadNow());
    }
    std::wstring String(UINT id) {
        LPWSTR text = nullptr;
        HRESULT hr = resource_->GetResourceString(id, &text);
        std::wstring result = SUCCEEDED(hr) && text ? text : L"";
        CoTaskMemFree(text);
        return result;
    }
    kxtest::PluginLibrary plugin_;
    IKxCommonResource* resource_ = nullptr;
};

// Every string the dialogs, the balloon tips and the properties lists load.
const UINT kStringIds[] = {
    2,   3,   8,   26,  35,  42,  46,  47,  49,  50,  52,  59,  63,  64,  65,  69,  77,  78,  103, 104,
    106, 107, 108, 109, 110, 111, 112, 113, 114, 115, 116, 117, 118, 119, 121, 122, 123, 124, 125, 126,
    128, 129, 130, 131, 132, 133, 134, 135, 136, 137, 138, 139, 140, 141, 142, 143, 144, 145, 146, 147,
    148, 149, 150, 151, 152, 153, 154, 155, 156, 157, 158, 159, 160, 161, 162, 163, 164, 165, 166, 167,
    168, 169, 170, 171, 172, 173, 174, 175, 176, 177, 178, 179, 180, 181, 182, 188, 189, 190, 191, 192,
    193, 194, 195, 196, 197, 198, 199, 200, 201, 202, 203, 204, 205, 206, 207, 208, 217, 218, 243, 247,
};

TEST_F(Interface, ResourceLibraryHoldsEveryStringTheComponentLoads) {
    // Only the length warning carries a conversion, one number; no other string has one that a
    // caller could trip over.
    for (UINT id : kStringIds) {
        std::wstring text = String(id);
        EXPECT_FALSE(text.empty()) << "string " << id;
        if (id != 247) {
            EXPECT_EQ(std::wstring::npos, text.find(L'%')) << "string " << id;
        }
    }
    EXPECT_EQ(L"Media Library", String(188));
    std::wstring format = String(247);
    EXPECT_NE(std::wstring::npos, format.find(L"%d"));
    EXPECT_EQ(format.find(L'%'), format.rfind(L'%')) << "one conversion only";

    // The file dialog's filter: pairs of description and pattern, ended by "||".
    std::wstring filter = String(106);
    ASSERT_GE(filter.size(), 2u);
    EXPECT_EQ(L"||", filter.substr(filter.size() - 2));
    EXPECT_NE(std::wstring::npos, filter.find(L"*.jpg"));
}

}  // namespace
