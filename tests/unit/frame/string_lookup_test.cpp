// The growth loop of the string look-ups and what each look-up hands back, against a fake
// LoadStringW; task memory is counted, and made to fail where the loop allocates.
#include "frame/string_lookup.h"

#include "tests/unit/frame/fake_platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using kxtest::FakePluginPlatform;
using kxtest::FakeStringSource;

const HINSTANCE kModule = FakePluginPlatform::Resources();

class StringLookup : public ::testing::Test {
protected:
    void SetUp() override { live_ = kxcompat::LiveTaskMemBlocks(); }
    void TearDown() override {
        kxcompat::ResetTaskMemFailures();
        EXPECT_EQ(live_, kxcompat::LiveTaskMemBlocks()) << "task memory left behind";
    }
    FakeStringSource source;

private:
    long live_ = 0;
};

TEST_F(StringLookup, GrowsOnlyWhenTheStringMayHaveBeenCut) {
    struct Case {
        int length;
        std::vector<int> capacities;
    } cases[] = {
        {1, {512}},
        {510, {512}},              // two places left: complete at once
        {511, {512, 1024}},        // one place left: may be cut, grows once
        {1022, {512, 1024}},
        {1023, {512, 1024, 1536}},
        {4000, {512, 1024, 1536, 2048, 2560, 3072, 3584, 4096}},
    };
    for (const Case& c : cases) {
        source.capacities.clear();
        std::wstring text(static_cast<size_t>(c.length), L'x');
        text.back() = L'!';
        source.Add(kModule, 7, text);
        LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
        ASSERT_EQ(S_OK, KxGetResourceString(source, kModule, 7, &result)) << c.length;
        ASSERT_NE(nullptr, result);
        EXPECT_EQ(text, std::wstring(result)) << c.length;
        EXPECT_EQ(c.capacities, source.capacities) << c.length;
        CoTaskMemFree(result);
    }
}

TEST_F(StringLookup, FailuresInTheirOrder) {
    source.Add(kModule, 9, L"");
    for (UINT id : {8u, 9u}) {  // unknown, and empty, which counts as missing
        LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
        EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE), KxGetResourceString(source, kModule, id, &result));
        EXPECT_EQ(nullptr, result);
    }
    LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), KxGetResourceString(source, nullptr, 8, &result));
    EXPECT_EQ(nullptr, result);
    EXPECT_EQ(2u, source.capacities.size()) << "no look-up without a module";
    EXPECT_EQ(E_POINTER, KxGetResourceString(source, kModule, 8, nullptr));

    WCHAR buffer[8];
    INT needed = -5;
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), KxLoadResourceString(source, nullptr, 9, buffer, 8, nullptr));
    EXPECT_EQ(E_INVALIDARG, KxLoadResourceString(source, kModule, 9, buffer, 8, nullptr));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INVALID_HANDLE), KxLoadResourceString(source, kModule, 8, buffer, 8, &needed));
    EXPECT_EQ(-5, needed);
}

TEST_F(StringLookup, OutOfMemoryAtEveryStepLeavesNothing) {
    source.Add(kModule, 7, std::wstring(1500, L'y'));  // three blocks: 512, 1024, 1536
    for (int nth = 1; nth <= 3; ++nth) {
        kxcompat::FailTaskMemAllocations(nth);
        LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
        EXPECT_EQ(E_OUTOFMEMORY, KxGetResourceString(source, kModule, 7, &result)) << nth;
        EXPECT_EQ(nullptr, result);
        kxcompat::ResetTaskMemFailures();

        INT needed = -5;
        WCHAR buffer[4];
        kxcompat::FailTaskMemAllocations(nth);
        EXPECT_EQ(E_OUTOFMEMORY, KxLoadResourceString(source, kModule, 7, buffer, 4, &needed)) << nth;
        EXPECT_EQ(-5, needed);
        kxcompat::ResetTaskMemFailures();
    }
}

TEST_F(StringLookup, LoadResourceStringIntoTheCallersBuffer) {
    const std::wstring text = L"Add to Playlist";
    source.Add(kModule, 26, text);
    const INT n = static_cast<INT>(text.size());
    INT needed = 0;
    EXPECT_EQ(S_OK, KxLoadResourceString(source, kModule, 26, nullptr, 0, &needed));
    EXPECT_EQ(n + 1, needed);

    // Places in the buffer, status, what it then holds ('#' = not written).
    const struct {
        INT places;
        HRESULT status;
        std::wstring held;
    } cases[] = {
        {n + 1, S_OK, text},
        {n, STRSAFE_E_INSUFFICIENT_BUFFER, text.substr(0, static_cast<size_t>(n - 1))},
        {1, STRSAFE_E_INSUFFICIENT_BUFFER, L""},
        {0, E_INVALIDARG, L"#"},
    };
    for (const auto& c : cases) {
        WCHAR buffer[64];
        std::fill(std::begin(buffer), std::end(buffer), L'#');
        buffer[63] = L'\0';
        needed = 0;
        EXPECT_EQ(c.status, KxLoadResourceString(source, kModule, 26, buffer, c.places, &needed)) << c.places;
        EXPECT_EQ(c.held, std::wstring(buffer).substr(0, c.held.size())) << c.places;
        if (c.places) {
            EXPECT_EQ(L'\0', buffer[c.held.size()]) << c.places;
        }
        EXPECT_EQ(L'#', buffer[std::max(n, c.places)]) << c.places;
        EXPECT_EQ(n + 1, needed) << c.places;
    }
}

// A source that always claims to have filled the block must not make the loop grow for ever.
class EndlessSource : public IKxStringSource {
public:
    int LoadStringW(HINSTANCE, UINT, LPWSTR buffer, int cchBuffer) override {
        ++calls;
        for (int i = 0; i < cchBuffer - 1; ++i) buffer[i] = L'e';
        buffer[cchBuffer - 1] = L'\0';
        return cchBuffer - 1;
    }
    int calls = 0;
};

TEST_F(StringLookup, GrowthEndsBeyondTheLongestStringResource) {
    EndlessSource endless;
    LPWSTR result = nullptr;
    EXPECT_EQ(S_OK, KxGetResourceString(endless, kModule, 1, &result));
    EXPECT_LE(endless.calls, 130);
    CoTaskMemFree(result);
}

}  // namespace
