// The name dialog's model: validation by kind and length, the typed-key and paste paths of the
// edit control's changes, OK, and the tip that complains at the edit control.
#include "dialogs/name_dialog_model.h"
#include "dialogs/edit_warning_tip.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::wstring k255(255, L'n'), k256(256, L'n'), kDigits256(256, L'1');

// An edit control that reports its changes back to the model at once, as the platform's does.
class FakeControls : public INameDialogControls {
public:
    explicit FakeControls(CNewEditNameModel& model) : model(model) {}
    bool GetNameText(std::wstring* out) override {
        if (missing) return false;
        *out = text;
        return true;
    }
    void SetNameText(const std::wstring& t) override {
        text = t;
        ++sets;
        model.OnEditUpdate(*this);
    }
    void SelectAllName() override { ++selectAlls; }
    std::wstring ResourceString(UINT id) override {
        if (id == KX_IDS_NAME_TIP_TITLE) return L"Check";
        if (id == KX_IDS_NAME_TIP_YEAR) return L"Digits only";
        return id == KX_IDS_NAME_TIP_LENGTH ? L"At most %d" : L"";
    }
    bool ShowTip(NameTip which, const std::wstring& t, const std::wstring& title) override {
        tips.push_back((which == NameTip::Year ? L"year:" : L"length:") + t + L"|" + title);
        return !tipFails;
    }
    // The user changes the text: a key press (or a paste) and the change it makes.
    void Change(const std::wstring& t, UINT vk, bool control = false) {
        model.OnKeyDown(vk, control);
        text = t;
        model.OnEditUpdate(*this);
    }

    CNewEditNameModel& model;
    std::wstring text;
    bool missing = false, tipFails = false;
    int sets = 0, selectAlls = 0;
    std::vector<std::wstring> tips;
};

TEST(NameDialogModel, ValidationByKindLengthAndFlags) {
    const std::wstring year = L"year:Digits only|Check", length = L"length:At most 255|Check";
    const struct {
        int kind;
        std::wstring text;
        BOOL selectAll;
        int result;
        std::wstring tip;
    } cases[] = {
        {1, k255, FALSE, 1, L""},          {1, k256, FALSE, 0, length},        {1, L"", TRUE, 1, L""},
        {14, k256, TRUE, 0, length},       {7, L"1999", TRUE, 1, L""},          {7, L"", TRUE, 1, L""},
        {7, L"19a9", TRUE, 0, year},       {7, L"19 9", FALSE, 0, year},        {7, L"-199", FALSE, 0, year},
        {7, kDigits256, TRUE, 0, length},  {7, std::wstring(255, L'9'), TRUE, 1, L""},
        {1, L"19a9", TRUE, 1, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "kind " << c.kind << " length " << c.text.size());
        CNewEditNameModel model(c.kind, KX_NAME_MODE_NEW, nullptr);
        FakeControls controls(model);
        controls.text = c.text;
        EXPECT_EQ(c.result, model.ValidateName(controls, c.selectAll, FALSE));
        EXPECT_EQ(c.text, model.m_strName);
        EXPECT_EQ(c.text, controls.text) << "without restoring, the control keeps its text";
        EXPECT_EQ(c.tip.empty() ? 0u : 1u, controls.tips.size());
        if (!c.tip.empty()) {
            EXPECT_EQ(c.tip, controls.tips[0]);
        }
        EXPECT_EQ(c.result == 0 && c.selectAll ? 1 : 0, controls.selectAlls);
    }
}

TEST(NameDialogModel, NoControlOrNoTipObjectStopsValidationAndOkCancels) {
    CNewEditNameModel model(7, KX_NAME_MODE_RENAME, L"1999");
    FakeControls controls(model);
    controls.missing = true;
    EXPECT_EQ(-1, model.ValidateName(controls, TRUE, FALSE));
    EXPECT_EQ(CNewEditNameModel::OkOutcome::Cancel, model.OnOK(controls));
    controls.missing = false;
    controls.text = L"19a9";
    controls.tipFails = true;
    EXPECT_EQ(CNewEditNameModel::OkOutcome::Cancel, model.OnOK(controls));
    controls.tipFails = false;
    EXPECT_EQ(CNewEditNameModel::OkOutcome::Stay, model.OnOK(controls));
    controls.text = L"2001";
    EXPECT_EQ(CNewEditNameModel::OkOutcome::Close, model.OnOK(controls));
    EXPECT_EQ(L"2001", model.m_strName);
}

TEST(NameDialogModel, KeysThatAddACharacter) {
    const struct {
        UINT vk;
        bool control;
        BOOL typed;
    } keys[] = {
        {'A', false, TRUE},   {'V', false, TRUE},   {'V', true, FALSE},   {0x76, true, FALSE}, {0x76, false, TRUE},
        {0x08, false, FALSE}, {0x09, false, FALSE}, {0x1B, false, FALSE}, {0x2E, false, FALSE}, {'C', true, TRUE},
    };
    for (const auto& k : keys) {
        CNewEditNameModel model(1, KX_NAME_MODE_NEW, nullptr);
        model.OnKeyDown('A', false);
        model.OnKeyDown(k.vk, k.control);
        EXPECT_EQ(k.typed, model.m_bKeyTyped) << "key " << k.vk << " control " << k.control;
    }
}

// The control starts with the initial name; a typed character past the limit is taken back, a
// paste past it stays until OK refuses it.
TEST(NameDialogModel, ATypedCharacterPastTheLimitIsTakenBackAPasteStays) {
    CNewEditNameModel model(1, KX_NAME_MODE_RENAME, k255.c_str());
    FakeControls controls(model);
    controls.SetNameText(model.m_strInitialName);
    EXPECT_TRUE(controls.tips.empty());

    controls.Change(k256, 'X');
    EXPECT_EQ(k255, controls.text) << "the typed character is taken back";
    EXPECT_EQ(2, controls.sets);
    EXPECT_EQ(1u, controls.tips.size()) << "the change of the taking back is not validated";
    EXPECT_EQ(FALSE, model.m_bKeyTyped);
    EXPECT_EQ(TRUE, model.m_bHavePrevious);
    EXPECT_EQ(k255, model.m_strPreviousName);

    const std::wstring pasted = k255 + L"pasted";
    controls.Change(pasted, 'V', true);
    EXPECT_EQ(pasted, controls.text) << "a paste stays";
    EXPECT_EQ(2u, controls.tips.size());
    EXPECT_EQ(pasted, model.m_strPreviousName);

    controls.Change(pasted + L"x", 'X');
    EXPECT_EQ(pasted, controls.text) << "typing on a pasted overflow goes back to the paste";

    EXPECT_EQ(CNewEditNameModel::OkOutcome::Stay, model.OnOK(controls));
    EXPECT_EQ(1, controls.selectAlls);
    EXPECT_EQ(pasted, controls.text) << "OK refuses the text and leaves it";

    controls.Change(L"short", 0x2E);
    EXPECT_EQ(CNewEditNameModel::OkOutcome::Close, model.OnOK(controls));
    EXPECT_EQ(L"short", model.m_strName);
}

TEST(NameDialogModel, AnOverLongInitialNameIsWarnedNotCut) {
    CNewEditNameModel model(3, KX_NAME_MODE_NEW, k256.c_str());
    FakeControls controls(model);
    controls.SetNameText(model.m_strInitialName);
    EXPECT_EQ(k256, controls.text);
    ASSERT_EQ(1u, controls.tips.size());
    EXPECT_EQ(0u, controls.tips[0].find(L"length:"));
}

TEST(NameDialogModel, TextsOfKindsAndModes) {
    NameDialogTexts t = {};
    for (auto bad : {std::make_pair(0, 1), {15, 1}, {1, 0}, {1, 3}, {-1, 2}}) {
        EXPECT_FALSE(NameDialogTextsFor(bad.first, bad.second, &t)) << bad.first << "/" << bad.second;
    }
    ASSERT_TRUE(NameDialogTextsFor(14, KX_NAME_MODE_RENAME, &t));
    EXPECT_EQ(173u, t.heading);
    EXPECT_EQ(167u, t.label);
    EXPECT_EQ(47u, t.okText);
    EXPECT_STREQ("Rename Video Genre.png", t.picture);
    ASSERT_TRUE(NameDialogTextsFor(1, KX_NAME_MODE_NEW, &t));
    EXPECT_EQ(133u, t.okText);
    EXPECT_STREQ("New Album.png", t.picture);
}

// A tip object that records what it was asked.
class FakeTip : public IKxBalloonTip {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOTIMPL; }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++refs); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--refs); }
    HRESULT STDMETHODCALLTYPE SetPosition(const POINT* p) override {
        calls.push_back(L"position " + std::to_wstring(p->x) + L"," + std::to_wstring(p->y));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Show(BOOL show, DWORD time) override {
        calls.push_back(L"show " + std::to_wstring(show) + L" " + std::to_wstring(time));
        return show && failShow ? E_FAIL : S_OK;
    }
    HRESULT STDMETHODCALLTYPE UpdatePosition() override { return S_OK; }
    void STDMETHODCALLTYPE Close() override {}
    int refs = 1;
    bool failShow = false;
    std::vector<std::wstring> calls;
};

class FakeMaker : public IEditTipMaker {
public:
    HRESULT MakeTip(HWND target, LPCWSTR text, LPCWSTR title, IKxBalloonTip** tip) override {
        log.push_back(L"make " + std::wstring(text) + L"|" + title);
        made.target = target;
        *tip = makeResult == S_OK ? &made : nullptr;
        return makeResult;
    }
    void SetTarget(IKxBalloonTip*, HWND target) override { made.target = target, log.push_back(L"target"); }
    bool GetWindowRect(HWND, RECT* rc) override {
        *rc = rect;
        return true;
    }
    struct : FakeTip { HWND target = nullptr; } made;
    HRESULT makeResult = S_OK;
    RECT rect = {100, 40, 300, 61};
    std::vector<std::wstring> log;
};

TEST(EditWarningTip, MadeOnceThenHiddenRetargetedAndShownAgainAtTheLeftMiddle) {
    FakeMaker maker;
    HWND edit = reinterpret_cast<HWND>(0x10), other = reinterpret_cast<HWND>(0x20);
    {
        CEditWarningTip tip(maker);
        EXPECT_TRUE(tip.Show(edit, L"text", L"title"));
        EXPECT_EQ(edit, maker.made.target);
        EXPECT_TRUE(tip.Show(other, L"ignored", L"ignored"));
        EXPECT_EQ(other, maker.made.target);
        EXPECT_EQ((std::vector<std::wstring>{L"make text|title", L"target"}), maker.log);
        EXPECT_EQ((std::vector<std::wstring>{L"position 100,50", L"show 1 4000", L"show 0 0", L"position 100,50",
                                             L"show 1 4000"}),
                  maker.made.calls);
        maker.made.calls.clear();
        tip.Hide();
    }
    EXPECT_EQ((std::vector<std::wstring>{L"show 0 0", L"show 0 0"}), maker.made.calls) << "hidden, then at the end";
    EXPECT_EQ(0, maker.made.refs) << "released when the dialog ends";
}

TEST(EditWarningTip, ATipThatCannotShowIsReleasedAndAnotherMadeAtTheNextComplaint) {
    FakeMaker maker;
    maker.made.failShow = true;
    maker.rect = {100, 40, 100, 61};  // no width: no position
    CEditWarningTip tip(maker);
    EXPECT_TRUE(tip.Show(nullptr, L"t", L"t")) << "the complaint stands without a tip";
    EXPECT_EQ(nullptr, tip.m_pTip);
    EXPECT_EQ(0, maker.made.refs);
    EXPECT_EQ(std::vector<std::wstring>{L"show 1 4000"}, maker.made.calls);
    maker.made.refs = 1;
    tip.Show(nullptr, L"t", L"t");
    EXPECT_EQ(2u, maker.log.size());

    maker.makeResult = E_OUTOFMEMORY;
    EXPECT_FALSE(tip.Show(nullptr, L"t", L"t"));
    maker.makeResult = S_FALSE;
    EXPECT_TRUE(tip.Show(nullptr, L"t", L"t"));
    EXPECT_EQ(nullptr, tip.m_pTip);
}

}  // namespace
