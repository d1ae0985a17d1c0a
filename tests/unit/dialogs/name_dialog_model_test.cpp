// The name dialog's model: validation by kind and length, typed keys against pastes at the limit,
// OK, and a tip that cannot be made or shown.
#include "dialogs/edit_warning_tip.h"
#include "dialogs/name_dialog_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Ok = CNewEditNameModel::OkOutcome;
const std::wstring k255(255, L'n'), k256(256, L'n');  // Backspace 0x08, Delete 0x2E

// An edit control that reports a change of its text back to the model at once, as the platform's does.
struct FakeControls : INameDialogControls {
    explicit FakeControls(CNewEditNameModel& m) : model(m) {}
    bool GetNameText(std::wstring* out) override { return !missing && (*out = text, true); }
    void SetNameText(const std::wstring& t) override { text = t, model.OnEditUpdate(*this); }
    void SelectAllName() override { ++selectAlls; }
    std::wstring ResourceString(UINT id) override { return id == KX_IDS_NAME_TIP_LENGTH ? L"max %d" : L"s"; }
    bool ShowTip(NameTip which, const std::wstring& t, const std::wstring&) override {
        tips.push_back(which == NameTip::Year ? L"year" : t);
        return !tipFails;
    }
    void Key(UINT vk, bool control, const std::wstring& result) {  // a key press and the change it makes
        model.OnKeyDown(vk, control);
        text = result;
        model.OnEditUpdate(*this);
    }
    CNewEditNameModel& model;
    std::wstring text;
    bool missing = false, tipFails = false;
    int selectAlls = 0;
    std::vector<std::wstring> tips;
};

TEST(NameDialogModel, OkValidatesByKindAndLength) {
    const struct { int kind; std::wstring text; Ok outcome; const wchar_t* tip; } cases[] = {
        {1, k255, Ok::Close, nullptr},          {1, k256, Ok::Stay, L"max 255"}, {3, L"", Ok::Close, nullptr},
        {7, L"1999", Ok::Close, nullptr},       {7, L"", Ok::Close, nullptr},    {7, L"19a9", Ok::Stay, L"year"},
        {7, L"-199", Ok::Stay, L"year"},        {7, std::wstring(256, L'1'), Ok::Stay, L"max 255"},
        {1, L"19a9", Ok::Close, nullptr},
    };
    for (const auto& c : cases) {
        CNewEditNameModel model(c.kind, KX_NAME_MODE_NEW, nullptr);
        FakeControls controls(model);
        controls.text = c.text;
        EXPECT_EQ(c.outcome, model.OnOK(controls)) << c.kind << " " << c.text.size();
        EXPECT_EQ(c.text, controls.text) << "OK never changes the text";
        EXPECT_EQ(c.tip ? std::vector<std::wstring>{c.tip} : std::vector<std::wstring>{}, controls.tips);
        EXPECT_EQ(c.tip ? 1 : 0, controls.selectAlls);
    }
}

TEST(NameDialogModel, NoEditControlOrNoTipObjectCancels) {
    CNewEditNameModel model(7, KX_NAME_MODE_RENAME, nullptr);
    FakeControls controls(model);
    controls.missing = true;
    EXPECT_EQ(-1, model.ValidateName(controls, FALSE, FALSE));
    controls.missing = false;
    controls.text = L"19a9";
    controls.tipFails = true;
    EXPECT_EQ(Ok::Cancel, model.OnOK(controls));
}

TEST(NameDialogModel, ATypedCharacterPastTheLimitIsTakenBackAPasteStaysUntilOk) {
    CNewEditNameModel model(1, KX_NAME_MODE_RENAME, k256.c_str());
    FakeControls controls(model);
    controls.SetNameText(model.m_strInitialName);
    EXPECT_EQ(k256, controls.text) << "an over-long initial name is not cut";
    EXPECT_EQ(1u, controls.tips.size()) << "but warned";

    controls.Key(0x08, false, k255);
    controls.Key('X', false, k255 + L"x");
    EXPECT_EQ(k255, controls.text) << "the typed character is taken back";
    EXPECT_EQ(2u, controls.tips.size()) << "the change that takes it back is not validated";
    EXPECT_EQ(k255, model.m_strPreviousName);

    for (UINT vk : {UINT('V'), UINT(0x76)}) {
        controls.Key(vk, true, k255 + L"pasted");
        EXPECT_EQ(k255 + L"pasted", controls.text) << "a paste with Control+" << vk << " stays";
        controls.Key(0x08, false, k255);
    }
    controls.Key('V', false, k255 + L"v");
    EXPECT_EQ(k255, controls.text) << "V without Control is typed";
    // (OK refusing the paste, and taking the name once it is short again: under Wine)
}

// A tip whose Show fails (no skin package) is released and made again at the next complaint.
struct FailingTip : IKxBalloonTip {
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOTIMPL; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    HRESULT STDMETHODCALLTYPE SetPosition(const POINT*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Show(BOOL show, DWORD) override { return show ? E_FAIL : S_OK; }
    HRESULT STDMETHODCALLTYPE UpdatePosition() override { return S_OK; }
    void STDMETHODCALLTYPE Close() override {}
    ULONG refs = 0;
};

struct Maker : IEditTipMaker {
    HRESULT MakeTip(HWND, LPCWSTR, LPCWSTR, IKxBalloonTip** out) override {
        ++made;
        tip.refs = 1;
        *out = hr == S_OK ? &tip : nullptr;
        return hr;
    }
    void SetTarget(IKxBalloonTip*, HWND) override {}
    bool GetWindowRect(HWND, RECT* rc) override { return *rc = RECT{0, 0, 10, 10}, true; }
    FailingTip tip;
    HRESULT hr = S_OK;
    int made = 0;
};

TEST(EditWarningTip, ATipThatCannotShowIsReleasedOneThatCannotBeMadeFails) {
    Maker maker;
    CEditWarningTip tip(maker);
    for (int i = 1; i <= 2; ++i) {
        EXPECT_TRUE(tip.Show(nullptr, L"t", L"t")) << "the complaint stands without a tip";
        EXPECT_EQ(nullptr, tip.m_pTip);
        EXPECT_EQ(0u, maker.tip.refs);
        EXPECT_EQ(i, maker.made);
    }
    maker.hr = E_OUTOFMEMORY;
    EXPECT_FALSE(tip.Show(nullptr, L"t", L"t"));
}

}  // namespace
