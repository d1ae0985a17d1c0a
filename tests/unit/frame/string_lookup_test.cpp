// The growth loop of the string look-ups and what each look-up hands back, against a fake
// LoadStringW; task memory is counted, and made to fail where the loop allocates.
#include "frame/string_lookup.h"

#include "tests/unit/frame/fake_platform.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const HINSTANCE kModule = kxtest::FakePluginPlatform::Resources();
const HRESULT kNoModule = static_cast<HRESULT>(0x80070002u);
const HRESULT kMissing = static_cast<HRESULT>(0x80070006u);
const HRESULT kCut = static_cast<HRESULT>(0x8007007Au);

class StringLookup : public ::testing::Test {
protected:
    void SetUp() override { live_ = kxcompat::LiveTaskMemBlocks(); }
    void TearDown() override {
        kxcompat::ResetTaskMemFailures();
        EXPECT_EQ(live_, kxcompat::LiveTaskMemBlocks()) << "task memory left behind";
    }
    void Add(UINT id, const std::wstring& text) { source.strings[id] = text; }
    kxtest::FakePluginPlatform source;

private:
    long live_ = 0;
};

// Blocks grow by 512 characters while fewer than two places are left; a string that fills every
// block ends the growth with the first block beyond the longest string resource (65535).
TEST_F(StringLookup, GrowsBy512UntilTwoPlacesAreLeft) {
    const struct {
        int length;  // -1: no such string; an empty one counts as missing
        size_t calls;
        int lastCapacity;
    } cases[] = {
        {-1, 1, 512},    {0, 1, 512},     {1, 1, 512},     {510, 1, 512},        {511, 2, 1024},
        {1022, 2, 1024}, {1023, 3, 1536}, {1534, 3, 1536}, {100000, 128, 65536},
    };
    for (const auto& c : cases) {
        source.strings.clear();
        source.capacities.clear();
        std::wstring text(static_cast<size_t>(c.length < 0 ? 0 : c.length), L'x');
        if (c.length > 0) text.back() = L'!';
        if (c.length >= 0) Add(7, text);
        LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
        EXPECT_EQ(c.length > 0 ? S_OK : kMissing, KxGetResourceString(source, kModule, 7, &result)) << c.length;
        EXPECT_EQ(c.calls, source.capacities.size()) << c.length;
        EXPECT_EQ(c.lastCapacity, source.capacities.back()) << c.length;
        EXPECT_EQ(c.length > 0 ? text.substr(0, 65535) : L"(null)", std::wstring(result ? result : L"(null)"));
        CoTaskMemFree(result);
    }
}

TEST_F(StringLookup, ModuleThenArgumentsThenTheString) {
    LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
    EXPECT_EQ(kNoModule, KxGetResourceString(source, nullptr, 8, &result));
    EXPECT_EQ(nullptr, result);
    EXPECT_EQ(kNoModule, KxGetResourceString(source, nullptr, 8, nullptr));
    EXPECT_EQ(E_POINTER, KxGetResourceString(source, kModule, 8, nullptr));

    WCHAR buffer[8];
    INT needed = -5;
    EXPECT_EQ(kNoModule, KxLoadResourceString(source, nullptr, 8, buffer, 8, nullptr));
    EXPECT_EQ(E_INVALIDARG, KxLoadResourceString(source, kModule, 8, buffer, 8, nullptr));
    EXPECT_TRUE(source.capacities.empty()) << "no look-up before the arguments hold";
    EXPECT_EQ(kMissing, KxLoadResourceString(source, kModule, 8, buffer, 8, &needed));
    EXPECT_EQ(-5, needed);
}

TEST_F(StringLookup, OutOfMemoryAtEveryStepLeavesNothing) {
    Add(7, std::wstring(1500, L'y'));  // three blocks: 512, 1024, 1536
    for (int nth = 1; nth <= 3; ++nth) {
        kxcompat::FailTaskMemAllocations(nth);
        LPWSTR result = reinterpret_cast<LPWSTR>(0x1);
        EXPECT_EQ(E_OUTOFMEMORY, KxGetResourceString(source, kModule, 7, &result)) << nth;
        EXPECT_EQ(nullptr, result);
        INT needed = -5;
        WCHAR buffer[4];
        kxcompat::FailTaskMemAllocations(nth);
        EXPECT_EQ(E_OUTOFMEMORY, KxLoadResourceString(source, kModule, 7, buffer, 4, &needed)) << nth;
        EXPECT_EQ(-5, needed);
    }
}

TEST_F(StringLookup, LoadResourceStringIntoTheCallersBuffer) {
    using namespace std::string_literals;
    Add(26, L"Hello");
    INT needed = 0;
    EXPECT_EQ(S_OK, KxLoadResourceString(source, kModule, 26, nullptr, 0, &needed));
    EXPECT_EQ(6, needed);
    const struct {
        INT places;
        HRESULT status;
        std::wstring buffer;  // '#': not written
    } cases[] = {
        {6, S_OK, L"Hello\0#"s}, {5, kCut, L"Hell\0##"s}, {1, kCut, L"\0######"s}, {0, E_INVALIDARG, L"#######"s},
    };
    for (const auto& c : cases) {
        std::wstring buffer(7, L'#');
        needed = 0;
        EXPECT_EQ(c.status, KxLoadResourceString(source, kModule, 26, &buffer[0], c.places, &needed)) << c.places;
        EXPECT_EQ(c.buffer, buffer) << c.places;
        EXPECT_EQ(6, needed) << c.places;
    }
}

}  // namespace
