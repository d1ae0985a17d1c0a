// The bubble's layout from fixed text sizes: every character is 10 pixels wide, a title line 18 and
// a body line 15 pixels high, as a measuring context that wraps like DrawTextW would answer.
#include "balloon/bubble_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct Call {
    BubbleFont font;
    std::wstring text;
    LONG width;  // the width the rectangle came in with
    UINT format;
};

class FixedMeasure : public IKxBubbleMeasure {
public:
    int CalcRect(BubbleFont font, LPCWSTR text, RECT* rc, UINT format) override {
        calls.push_back(Call{font, text, rc->right - rc->left, format});
        if (fail) return 0;
        const int line = font == BubbleFont::Title ? 18 : 15;
        std::vector<int> widths(1, 0);
        for (const wchar_t* p = text; *p; ++p) {
            if (*p != L'\n') widths.back() += 10;
            else if (!(format & 0x20)) widths.push_back(0);  // a line break breaks only when wrapping
        }
        int rows = 0, width = 0;
        const int wrapAt = rc->right - rc->left;
        for (int w : widths) {
            const bool wraps = !(format & 0x20) && wrapAt > 0 && w > wrapAt;
            rows += wraps ? (w + wrapAt - 1) / wrapAt : 1;
            width = std::max(width, wraps ? wrapAt : w);
        }
        *rc = RECT{rc->left, rc->top, rc->left + width, rc->top + rows * line};
        return rows * line;
    }
    std::vector<Call> calls;
    bool fail = false;
};

const RECT kDesktop = {0, 0, 1024, 768};

struct Laid { BubbleLayout layout; int titleLine = 0, bodyLine = 0; };

Laid Lay(FixedMeasure& m, LPCWSTR title, LPCWSTR body, int x, int y, UINT flags = 0x30) {
    Laid l;
    l.layout = LayoutBubble(m, &l.titleLine, &l.bodyLine, title, body, x, y, flags, kDesktop);
    return l;
}

std::vector<LONG> Edges(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

TEST(BubbleLayout, TheFourCornersAndTheExactFitsAtTheDesktopsEdges) {
    // "Title" 50 px and "Body text" 90 px: text 90 wide, 18 + 15 + 10 high, at least 64; bubble 176 x 90
    struct Row { int x, y; bool right, down; std::vector<LONG> window; int titleTop; const char* picture; } rows[] = {
        {100, 100, true, true, {94, 100, 270, 190}, 24, "SpeechBubble.png"},
        {843, 673, true, true, {837, 673, 1013, 763}, 24, "SpeechBubble.png"},  // 176 + x + 5 == 1024, 90 + y + 5 == 768
        {844, 100, false, true, {675, 100, 851, 190}, 24, "SpeechBubbleRT.png"},
        {100, 674, true, false, {94, 584, 270, 674}, 8, "SpeechBubbleLB.png"},
        {1000, 760, false, false, {831, 670, 1007, 760}, 8, "SpeechBubbleBR.png"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.x << "," << r.y);
        FixedMeasure m;
        const BubbleLayout l = Lay(m, L"Title", L"Body text", r.x, r.y).layout;
        EXPECT_EQ(r.right, l.fitsRight != FALSE);
        EXPECT_EQ(r.down, l.fitsDown != FALSE);
        EXPECT_EQ(r.window, Edges(l.window));
        EXPECT_EQ(std::vector<LONG>({76, r.titleTop, 166, r.titleTop + 18}), Edges(l.title));
        EXPECT_EQ(std::vector<LONG>({76, r.titleTop + 28, 166, r.titleTop + 43}), Edges(l.body));
        EXPECT_STREQ(r.picture, l.picture);
    }
}

TEST(BubbleLayout, TitlesWrapOnlyPast280WhileBodiesAlwaysWrapAndKeepTheirBreaks) {
    const std::wstring title300(30, L'T'), hundred(10, L'b');
    struct Row {
        std::wstring title, body;
        std::vector<LONG> title_, body_;  // rectangles in the bubble
        int width, height;                // of the bubble
    } rows[] = {
        {title300, L"x", {76, 24, 356, 60}, {76, 70, 356, 85}, 366, 26 + 64},  // 36 + 10 + 15 is below 64
        {L"Title", hundred + L"\n" + hundred, {76, 24, 176, 42}, {76, 52, 176, 82}, 186, 26 + 64},
        {L"01234\n56789", L"b", {76, 24, 176, 42}, {76, 52, 176, 67}, 186, 26 + 64},   // breaks ignored on one line
        {L"", L"", {76, 24, 106, 42}, {76, 52, 106, 67}, 116, 26 + 64},                 // both measured as "123"
        {title300, title300 + title300, {76, 24, 356, 60}, {76, 70, 356, 115}, 366, 26 + 36 + 10 + 45},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << std::string(r.title.begin(), r.title.end()));
        FixedMeasure m;
        const BubbleLayout l = Lay(m, r.title.c_str(), r.body.c_str(), 10, 10).layout;
        EXPECT_EQ(r.title_, Edges(l.title));
        EXPECT_EQ(r.body_, Edges(l.body));
        EXPECT_EQ(r.width, l.window.right - l.window.left);
        EXPECT_EQ(r.height, l.window.bottom - l.window.top);
    }
    FixedMeasure empty, nulls;
    EXPECT_EQ(Edges(Lay(empty, L"", L"", 10, 10).layout.window), Edges(Lay(nulls, nullptr, nullptr, 10, 10).layout.window));
    EXPECT_EQ(L"123", nulls.calls.front().text);
}

TEST(BubbleLayout, TheTitleIsMeasuredAgainWrappedOnlyWhenTooWideTheBodyWhenNotEmpty) {
    FixedMeasure m;
    Laid l = Lay(m, L"Short", L"Short", 10, 10);
    std::vector<std::pair<LONG, UINT>> seen;
    for (const Call& c : m.calls) seen.push_back({c.width, c.format});
    const std::vector<std::pair<LONG, UINT>> expected = {
        {280, 0x620}, {280, 0x620},  // the line heights, each once
        {0, 0x620},                  // the title fits on one line
        {0, 0x620}, {280, 0x610},    // the body is always measured wrapped
    };
    EXPECT_EQ(expected, seen);
    EXPECT_EQ(18, l.titleLine);
    EXPECT_EQ(15, l.bodyLine);
    // measured heights last: a second layout does not measure the lines again
    m.calls.clear();
    l.layout = LayoutBubble(m, &l.titleLine, &l.bodyLine, L"Short", L"Short", 10, 10, 0x30, kDesktop);
    EXPECT_EQ(3u, m.calls.size());
}

TEST(BubbleLayout, TextThatCannotBeMeasuredFallsBackTo16And14) {
    FixedMeasure m;
    m.fail = true;
    const Laid l = Lay(m, L"Title", L"Body", 300, 300);
    EXPECT_EQ(16, l.titleLine);
    EXPECT_EQ(14, l.bodyLine);
    EXPECT_EQ(std::vector<LONG>({76, 24, 76, 40}), Edges(l.layout.title));
    EXPECT_EQ(std::vector<LONG>({76, 50, 76, 64}), Edges(l.layout.body));
    EXPECT_EQ(std::vector<LONG>({294, 300, 380, 390}), Edges(l.layout.window));  // 86 wide, 64 + 26 high
}

TEST(BubblePicture, FlagsPickThePrefixAndTheCornerTheSuffix) {
    const std::pair<UINT, std::string> kinds[] = {{0x10, "E"}, {0x30, ""}, {0x40, "I"}, {0, "I"}, {0x50, "I"}, {0x31, "I"}};
    const char* suffixes[2][2] = {{"BR", "RT"}, {"LB", ""}};  // [right][down]
    for (const auto& k : kinds)
        for (int right = 0; right < 2; ++right)
            for (int down = 0; down < 2; ++down)
                EXPECT_EQ(k.second + "SpeechBubble" + suffixes[right][down] + ".png",
                          BubblePictureName(k.first, right != 0, down != 0)) << k.first;
}

TEST(BubblePlacement, ASkippedCheckZeroesBothPoints) {
    const RECT target = {100, 100, 300, 200};
    const BubblePlacement sticky = {TRUE, {0, 0}, {0, 0, 176, 90}, TRUE, TRUE};
    BubblePlacement tracking = sticky;
    tracking.sticky = FALSE;
    struct Row { const BubblePlacement* p; const RECT* target; const RECT* desktop; } rows[] = {
        {&sticky, nullptr, &kDesktop}, {&sticky, &target, nullptr}, {&tracking, &target, &kDesktop}};
    for (const Row& r : rows) {
        POINT flip = {9, 9}, move = {9, 9};
        EXPECT_FALSE(CheckBubblePlacement(*r.p, r.target, r.desktop, &flip, &move));
        EXPECT_EQ(std::vector<LONG>({0, 0, 0, 0}), std::vector<LONG>({flip.x, flip.y, move.x, move.y}));
    }
}

TEST(BubblePlacement, AFittingBubbleMovesWithItsTargetAndAnOutgrownOneFlips) {
    // a bubble 176 x 90; the target 200 x 100 at its new place
    struct Row {
        BOOL right, down;
        POINT offset;       // target's top left minus the point
        RECT target;
        bool flips;
        POINT expected;     // flip point, or the bubble's new top left
    } rows[] = {
        {TRUE, TRUE, {-100, -50}, {150, 120, 350, 220}, false, {244, 170}},
        {FALSE, FALSE, {-100, -50}, {150, 120, 350, 220}, false, {250 - 176 + 7, 170 - 90}},
        {TRUE, TRUE, {20, 30}, {100, 100, 300, 200}, false, {94, 100}},       // clamped into the target
        {TRUE, TRUE, {-400, -400}, {100, 100, 300, 200}, false, {294, 200}},  // clamped to the far corner
        {TRUE, TRUE, {-50, -50}, {800, 100, 1000, 200}, true, {850, 150}},    // 850 + 176 + 5 > 1024
        {TRUE, TRUE, {-50, -50}, {100, 630, 300, 730}, true, {150, 680}},     // 680 + 90 + 5 > 768
        {FALSE, TRUE, {-50, -50}, {0, 100, 100, 200}, true, {50, 150}},       // 50 - 176 - 5 < 0
        {TRUE, FALSE, {-50, -50}, {100, 0, 300, 40}, true, {150, 40}},        // 50 - 90 - 5 < 0: y below the target
        {TRUE, TRUE, {-250, -50}, {700, 100, 880, 200}, true, {957, 150}},    // x right of the target: + 7
        {FALSE, TRUE, {20, -50}, {20, 100, 60, 200}, true, {-6, 150}},        // x left of the target: - 6
        {TRUE, TRUE, {-50, 20}, {800, 100, 1000, 200}, true, {850, 100}},     // y above the target: its top
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.target.left << "," << r.target.top);
        const BubblePlacement p = {TRUE, r.offset, {500, 500, 676, 590}, r.right, r.down};
        POINT flip = {9, 9}, move = {9, 9};
        EXPECT_EQ(r.flips, CheckBubblePlacement(p, &r.target, &kDesktop, &flip, &move));
        const POINT got = r.flips ? flip : move, other = r.flips ? move : flip;
        EXPECT_EQ(std::vector<LONG>({r.expected.x, r.expected.y}), std::vector<LONG>({got.x, got.y}));
        EXPECT_EQ(std::vector<LONG>({0, 0}), std::vector<LONG>({other.x, other.y}));
    }
}

}  // namespace
