// The breadcrumb row: path splitting with its bounded buffer, the cut of the row, the commands and
// styles of the crumbs, and what the truncation callback hears.
#include "controls/breadcrumb_path.h"
#include "controls/breadcrumb_row.h"
#include "tests/unit/controls/crumb_buttons_fake.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string Joined(const std::vector<std::wstring>& names) {
    std::string s;
    for (const auto& n : names) s += "[" + std::string(n.begin(), n.end()) + "]";
    return s;
}

TEST(CrumbPath, SplitsAtBackslashesWithoutEmptyNames) {
    const std::wstring longName(300, L'x');
    const std::wstring nearLimit = std::wstring(257, L'x') + L"\\yz";  // cut after the y
    struct Case { LPCWSTR path; std::string names; } cases[] = {
        {L"Live \\ Unplugged", "[Live ][ Unplugged]"},
        {L"Music\\\\Albums\\", "[Music][Albums]"},
        {L"\\\\\\", ""},
        {L"", ""},
        {nullptr, ""},
        {L" ", "[ ]"},
        {nearLimit.c_str(), "[" + std::string(257, 'x') + "][y]"},
    };
    for (const Case& c : cases) EXPECT_EQ(c.names, Joined(KxSplitCrumbPath(c.path))) << Joined({c.path ? c.path : L"(null)"});
    EXPECT_EQ(259u, KxBoundedCrumbPath(longName.c_str()).size());
    EXPECT_EQ(1u, KxSplitCrumbPath(longName.c_str()).size());
}

struct Heard {
    std::vector<std::string> calls;
    static int CALLBACK Proc(int kind, void* owner, int level) {
        static_cast<Heard*>(owner)->calls.push_back(std::to_string(kind) + "/" + std::to_string(level));
        return 0;
    }
};

class CrumbRowTest : public ::testing::Test {
protected:
    void SetUp() override {
        row.m_pfnTruncate = &Heard::Proc;
        row.m_pTruncateOwner = &heard;
        EXPECT_TRUE(row.ResetCrumbs());
        EXPECT_TRUE(heard.calls.empty()) << "a reset tells nobody";
    }
    FakeCrumbButtons buttons;
    CKxCrumbRow row{buttons};
    Heard heard;
};

TEST_F(CrumbRowTest, PathsBecomeCrumbsBehindTheStartButton) {
    struct Step { int first; LPCWSTR path; bool dropDown; bool result; std::string row; } steps[] = {
        {1, L"Music", true, true, "5000| 5001:Music"},
        {2, L"Albums\\\\Live \\ Unplugged\\", false, true, "5000| 5001:Music 5002:Albums 5003:Live  5004: Unplugged~"},
        {3, L"\\\\", true, false, "5000| 5001:Music 5002:Albums"},
        {2, L"", true, false, "5000| 5001:Music"},
        {2, L"A\\B", true, true, "5000| 5001:Music 5002:A 5003:B"},
    };
    for (const Step& s : steps) {
        EXPECT_EQ(s.result, row.SetCrumbs(s.first, s.path, s.dropDown));
        EXPECT_EQ(s.row, buttons.Row());
    }
    EXPECT_EQ((std::vector<std::string>{"1/1", "1/2", "1/3", "1/2", "1/2"}), heard.calls);
}

TEST_F(CrumbRowTest, ClickCutsBehindTheCrumbAndClearTellsFirst) {
    row.SetCrumbs(1, L"Music\\Albums\\Rock", true);
    EXPECT_EQ(3, row.ClickCrumb(5003));  // the last: nothing goes, but the callback still hears it
    EXPECT_EQ("5000| 5001:Music 5002:Albums 5003:Rock", buttons.Row());
    EXPECT_EQ(1, row.ClickCrumb(5001));
    EXPECT_EQ("5000| 5001:Music", buttons.Row());
    EXPECT_EQ(-1, row.ClickCrumb(5042));
    row.ClearCrumbs();
    EXPECT_EQ("", buttons.Row());
    EXPECT_EQ((std::vector<std::string>{"1/1", "0/5003", "0/5001", "0/5042", "0/-1"}), heard.calls);

    row.m_pfnTruncate = nullptr;  // unset: the row works alike
    row.ResetCrumbs();
    EXPECT_TRUE(row.SetCrumbs(1, L"X", true));
    EXPECT_EQ(0, row.ClickCrumb(5000));
    EXPECT_EQ("5000|", buttons.Row());
    EXPECT_EQ(5u, heard.calls.size());
}

TEST(CrumbCommands, OnlyTheFirstHundredAndOneAnswer) {
    for (UINT c : {4999u, 5101u, 8000u}) EXPECT_FALSE(KxIsCrumbCommand(c)) << c;
    for (UINT c : {5000u, 5100u}) EXPECT_TRUE(KxIsCrumbCommand(c)) << c;
}

}  // namespace
