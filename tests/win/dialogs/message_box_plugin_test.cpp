// The message box cases through KxComResPlgin.dll like a host: DllGetClassObject, the plug-in
// object, IKxCommonResource::ShowMessageBox.
#include "tests/win/common/plugin_loader.h"
#include "tests/win/dialogs/message_box_cases.h"

namespace kxtest {

namespace {

class PluginShower : public MessageBoxShower {
public:
    PluginShower() {
        if (FAILED(plugin_.Create(&resource_))) resource_ = nullptr;
    }
    ~PluginShower() override {
        if (resource_) resource_->Release();
    }
    HRESULT Show(HWND parent, LPCWSTR text, LPCWSTR caption, UINT flags) override {
        return resource_ ? resource_->ShowMessageBox(parent, text, caption, flags) : E_UNEXPECTED;
    }
    std::wstring DefaultCaption() override {
        LPWSTR text = nullptr;
        std::wstring caption;
        if (resource_ && SUCCEEDED(resource_->GetResourceString(188, &text))) caption = text;
        CoTaskMemFree(text);
        return caption;
    }

private:
    PluginLibrary plugin_;
    IKxCommonResource* resource_ = nullptr;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(ThroughPlugin, MessageBoxCases, ::testing::Values(0));

MessageBoxShower* MessageBoxCases::MakeShower() { return new PluginShower; }

TEST(MessageBoxThroughThePlugin, TheDefaultCaptionIsString188) {
    PluginLibrary plugin;
    IKxCommonResource* resource = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&resource));
    LPWSTR text = nullptr;
    ASSERT_EQ(S_OK, resource->GetResourceString(188, &text));
    EXPECT_STRNE(L"", text);
    DialogDriver driver;
    std::wstring shown;
    driver.Inspect([&](HWND dlg) { shown = ItemText(dlg, 1070); }).Click(1034);
    EXPECT_EQ(S_OK, resource->ShowMessageBox(nullptr, L"Done.", nullptr, 0));
    EXPECT_EQ(text, shown);
    CoTaskMemFree(text);
    resource->Release();
}

}  // namespace kxtest
