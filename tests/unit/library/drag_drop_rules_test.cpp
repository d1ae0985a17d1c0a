// The drop target's rules in their order, against a dialog and a platform of the test's own.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "library/drag_drop_rules.h"

namespace {

struct FakeOwner : IKxArtDropOwner {
    bool window = true, artControl = true, accepts = true;
    int items = 1;
    DWORD flags = kArtFlagWritable;
    RECT art = {100, 100, 200, 180};
    std::vector<std::wstring> loaded;
    bool IsDropOwnerWindow() override { return window; }
    bool GetArtScreenRect(RECT* rect) override {
        *rect = art;
        return artControl;
    }
    int GetDropItemCount() override { return items; }
    DWORD GetArtValueFlags() override { return flags; }
    bool CanAcceptArtwork() override { return accepts; }
    bool LoadArtFromFile(const WCHAR* path) override {
        loaded.push_back(path);
        return false;  // a failed load still takes the drop
    }
};

struct FakePlatform : IKxDropPlatform {
    std::map<std::wstring, DWORD> files = {
        {L"C:\\p\\cover.jpg", 0x20}, {L"C:\\p\\Cover.JpEg", 0x21}, {L"C:\\p\\notes.txt", 0x20},
        {L"C:\\p\\Scans", 0x10},     {L"C:\\p\\Scans.jpg", 0x10},
    };
    POINT cursor = {150, 150};
    bool cursorKnown = true;
    DWORD GetFileAttributesW(const WCHAR* path) override {
        auto it = files.find(path);
        return it == files.end() ? 0xFFFFFFFFu : it->second;
    }
    bool GetCursorPos(POINT* point) override {
        *point = cursor;
        return cursorKnown;
    }
};

struct Rules : ::testing::Test {
    FakeOwner owner;
    FakePlatform platform;
    CDragDropRules rules{platform};
    void SetUp() override { rules.SetOwner(&owner); }
    DWORD Enter(UINT count, const WCHAR* first, bool hasFiles = true) {
        if (!rules.AdmitEntry(true)) return kDropEffectNone;
        return rules.TakeFiles(hasFiles, count, first);
    }
};

TEST_F(Rules, EntryTakesExactlyOneExistingPictureOfAWritableItem) {
    struct Case {
        const char* what;
        void (*setup)(FakeOwner&);
        bool hasFiles;
        UINT count;
        const WCHAR* file;
        DWORD effect;
    } cases[] = {
        {"one picture", [](FakeOwner&) {}, true, 1, L"C:\\p\\cover.jpg", kDropEffectCopy},
        {"mixed case extension", [](FakeOwner&) {}, true, 1, L"C:\\p\\Cover.JpEg", kDropEffectCopy},
        {"two pictures", [](FakeOwner&) {}, true, 2, L"C:\\p\\cover.jpg", kDropEffectNone},
        {"no files", [](FakeOwner&) {}, true, 0, L"", kDropEffectNone},
        {"no CF_HDROP", [](FakeOwner&) {}, false, 0, nullptr, kDropEffectNone},
        {"gone", [](FakeOwner&) {}, true, 1, L"C:\\p\\gone.jpg", kDropEffectNone},
        {"other extension", [](FakeOwner&) {}, true, 1, L"C:\\p\\notes.txt", kDropEffectNone},
        {"folder", [](FakeOwner&) {}, true, 1, L"C:\\p\\Scans", kDropEffectNone},
        {"folder named like a picture", [](FakeOwner&) {}, true, 1, L"C:\\p\\Scans.jpg", kDropEffectNone},
        {"art not writable", [](FakeOwner& o) { o.flags = 0x3; }, true, 1, L"C:\\p\\cover.jpg", kDropEffectNone},
        {"one item, album empty: taken on entry", [](FakeOwner& o) { o.accepts = false; }, true, 1,
         L"C:\\p\\cover.jpg", kDropEffectCopy},
        {"several items, none takes art", [](FakeOwner& o) { o.items = 3, o.accepts = false; }, true, 1,
         L"C:\\p\\cover.jpg", kDropEffectNone},
        {"several items, flags not asked", [](FakeOwner& o) { o.items = 3, o.flags = 0; }, true, 1,
         L"C:\\p\\cover.jpg", kDropEffectCopy},
        {"no picture control", [](FakeOwner& o) { o.artControl = false; }, true, 1, L"C:\\p\\cover.jpg",
         kDropEffectNone},
        {"dialog window gone", [](FakeOwner& o) { o.window = false; }, true, 1, L"C:\\p\\cover.jpg",
         kDropEffectNone},
    };
    for (const Case& c : cases) {
        FakeOwner fresh;
        owner = fresh;
        c.setup(owner);
        const DWORD effect = Enter(c.count, c.file, c.hasFiles);
        EXPECT_EQ(c.effect, effect) << c.what;
        EXPECT_EQ(c.effect == kDropEffectCopy, rules.CanDrop()) << c.what;
        // a refused drag after an accepted one keeps no file of the earlier one
        EXPECT_EQ(c.effect == kDropEffectCopy ? std::wstring(c.file) : std::wstring(), rules.DropFile()) << c.what;
    }
    EXPECT_FALSE(rules.AdmitEntry(false)) << "no window or no data object";
    rules.SetOwner(nullptr);
    EXPECT_FALSE(rules.AdmitEntry(true)) << "not registered";
}

TEST_F(Rules, AnOverLongPathIsCutToTheBufferAndRefused) {
    const std::wstring longPath = L"C:\\" + std::wstring(400, L'a') + L".jpg";
    platform.files[longPath.substr(0, kDropPathChars - 1)] = 0x20;
    EXPECT_EQ(kDropEffectNone, Enter(1, longPath.c_str()));
    EXPECT_FALSE(rules.CanDrop());
}

TEST_F(Rules, OverThePictureOnlyAndBackAgain) {
    ASSERT_EQ(kDropEffectCopy, Enter(1, L"C:\\p\\cover.jpg"));
    struct Step { LONG x, y; bool accepts; DWORD effect; } steps[] = {
        {50, 50, true, kDropEffectNone},     // over another control
        {100, 100, true, kDropEffectCopy},   // the picture's top left corner is inside
        {199, 179, true, kDropEffectCopy},
        {200, 150, true, kDropEffectNone},   // its right edge is not
        {150, 150, false, kDropEffectNone},  // album field empty
        {150, 150, true, kDropEffectCopy},   // back on the picture
    };
    for (const Step& s : steps) {
        platform.cursor = POINT{s.x, s.y};
        owner.accepts = s.accepts;
        EXPECT_EQ(s.effect, rules.DragOver()) << s.x << "," << s.y;
        EXPECT_TRUE(rules.CanDrop()) << "stays accepted";
    }
    platform.cursorKnown = false;
    EXPECT_EQ(kDropEffectNone, rules.DragOver());
    platform.cursorKnown = true;
    owner.window = false;
    platform.cursor = POINT{0, 0};
    EXPECT_EQ(kDropEffectCopy, rules.DragOver()) << "without its dialog nothing narrows the drag";
}

TEST_F(Rules, DropHandsTheFileToTheDialog) {
    EXPECT_EQ(kDropEffectNone, Enter(1, L"C:\\p\\notes.txt"));
    EXPECT_EQ(kDropEffectNone, rules.DragOver());
    EXPECT_FALSE(rules.Drop(true)) << "a refused drag";
    ASSERT_EQ(kDropEffectCopy, Enter(1, L"C:\\p\\cover.jpg"));
    EXPECT_FALSE(rules.Drop(false)) << "no window";
    EXPECT_TRUE(owner.loaded.empty());
    EXPECT_TRUE(rules.Drop(true)) << "taken though loading fails";
    ASSERT_EQ(1u, owner.loaded.size());
    EXPECT_EQ(L"C:\\p\\cover.jpg", owner.loaded[0]);
    rules.Leave();
    EXPECT_STREQ(L"", rules.DropFile());
    ASSERT_EQ(kDropEffectCopy, Enter(1, L"C:\\p\\cover.jpg"));
    owner.window = false;
    EXPECT_TRUE(rules.Drop(true)) << "the dialog went during the drag";
    EXPECT_EQ(1u, owner.loaded.size());
}

}  // namespace
