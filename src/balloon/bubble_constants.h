// The speech bubble's fixed numbers in one place: the layout's constants in pixels, the names of
// the skin's twelve shape pictures, the window class and styles, the timers and the text measuring
// flags. The pictures of the skin package are drawn to these constants: the point of a bubble lies
// 6 pixels from its left edge or 7 from its right edge, the text starts at x 76.
#pragma once

#include <cstddef>

#include "kx/KxPlatform.h"

// Layout, in pixels.
constexpr int kBubbleTextMaxWidth = 280;        // widest text
// Most characters of a tip's text, and of its title, that a tip keeps; the rest is cut. At 280
// pixels a line, 4,096 characters already make a bubble taller than a screen, while wrapping a
// text to measure it costs more than linear time in its length (a million characters keep the
// platform busy for minutes at every showing).
constexpr size_t kBubbleMaxTextChars = 4096;
constexpr int kBubbleTextLeft = 76;             // left edge of both texts inside the bubble
constexpr int kBubbleExtraWidth = 86;           // bubble width beyond the text: 76 left, 10 right
constexpr int kBubbleTitleBodyGap = 10;         // between title and body
constexpr int kBubbleMinTextHeight = 64;        // smallest height of the text block
constexpr int kBubbleExtraHeight = 26;          // bubble height beyond the text block
constexpr int kBubbleScreenMargin = 5;          // kept from the screen's edges by the fit tests
constexpr int kBubblePointFromLeft = 6;         // bubble's left edge to its point
constexpr int kBubblePointFromRight = 7;        // bubble's right edge to its point
constexpr int kBubbleTitleTopPointUp = 24;      // title top when the point is at the picture's top
constexpr int kBubbleTitleTopPointDown = 8;     // title top when the point is at the picture's bottom
constexpr int kBubbleFallbackTitleLine = 16;    // line heights when the text cannot be measured
constexpr int kBubbleFallbackBodyLine = 14;

// DrawTextW flags of the measuring: DT_CALCRECT | DT_EXTERNALLEADING with DT_SINGLELINE or
// DT_WORDBREAK.
constexpr UINT kBubbleMeasureOneLine = 0x620;
constexpr UINT kBubbleMeasureWrapped = 0x610;

// What an empty or missing text is measured as.
#define KX_BUBBLE_EMPTY_MEASURE L"123"

// Shape pictures: a prefix by the icon flags, a suffix by the corner the point is in.
#define KX_BUBBLE_PICTURE_ERROR "ESpeechBubble"     // MB_ICONHAND (0x10)
#define KX_BUBBLE_PICTURE_WARNING "SpeechBubble"    // MB_ICONEXCLAMATION (0x30)
#define KX_BUBBLE_PICTURE_INFO "ISpeechBubble"      // any other flags, e.g. MB_ICONASTERISK (0x40)
#define KX_BUBBLE_SUFFIX_LEFT_TOP ""                // fits right and down: point at the top left
#define KX_BUBBLE_SUFFIX_LEFT_BOTTOM "LB"           // fits right only: point at the bottom left
#define KX_BUBBLE_SUFFIX_RIGHT_TOP "RT"             // fits down only: point at the top right
#define KX_BUBBLE_SUFFIX_RIGHT_BOTTOM "BR"          // fits neither: point at the bottom right

// The window.
#define KX_BUBBLE_CLASS_NAME L"{60322165-DEF2-4f50-BD74-B6FC52CB8585}"
constexpr DWORD kBubbleClassStyle = 0x8;            // CS_DBLCLKS
constexpr DWORD kBubbleExStyle = 0x88;              // WS_EX_TOOLWINDOW | WS_EX_TOPMOST
constexpr DWORD kBubbleStyle = 0x82000000;          // WS_POPUP | WS_CLIPCHILDREN
constexpr DWORD kBubbleStaticStyle = 0x50000000;    // WS_CHILD | WS_VISIBLE
constexpr UINT kBubbleStaticId = 0xffff;
constexpr UINT kBubbleMoveFlags = 0x45;             // SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW

// Timers of the bubble window: the tracking tip's life, and the sticky tip's life.
constexpr UINT kBubbleHideTimer = 1000;
constexpr UINT kBubbleCloseTimer = 1002;

// Times of the tip objects, in milliseconds.
constexpr DWORD kBalloonDefaultTimeout = 4000;      // a plain tip's time when 0 was asked or showing failed
constexpr DWORD kBalloonControlTimeout = 5000;      // a control tip's time until SetTimeout
constexpr UINT kBalloonDefaultFlags = 0x30;         // MB_ICONEXCLAMATION
