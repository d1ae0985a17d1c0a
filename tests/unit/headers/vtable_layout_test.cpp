// The host calls the plug-in, and the plug-in calls the host, through vtables: a method moved in a
// header would call the wrong operation. These tests pin table slots (QueryInterface is slot 0).
#include "kx/IKxCommonResource.h"
#include "netcontent/net_content_mgr.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace {

// With the Itanium C++ ABI (g++ natively and mingw), a pointer to a virtual member function holds
// 1 + the byte offset of its slot in the vtable.
template <typename PMF>
std::ptrdiff_t Slot(PMF pmf) {
    std::ptrdiff_t raw = 0;
    static_assert(sizeof(PMF) >= sizeof(raw), "unexpected member pointer size");
    std::memcpy(&raw, &pmf, sizeof(raw));
    return (raw - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

// The last operation of each interface and a few before it, reserved slots included.
TEST(VtableLayout, OperationsKeepTheirSlots) {
#define SLOT(method) #method, Slot(&method)
    const struct { const char* name; std::ptrdiff_t slot, expected; } slots[] = {
        {SLOT(IKxCommonResource::ShowMessageBox), 9},
        {SLOT(IKxCommonResource::ShowAddMusicsDialog), 13},
        {SLOT(IKxBalloonTip::Close), 6},
        {SLOT(IKxBalloonTipControl::Close), 5},
        {SLOT(INetContentMgr::Initialize), 5},
        {SLOT(INetContentMgr::Open), 8},
        {SLOT(INetContentMgr::GetPendingFlag), 12},
        {SLOT(INetContentMgr::ResolvePending), 14},
        {SLOT(INetContentLookup::GetCapabilities), 33},
        {SLOT(INetContentLookup::RequestArtwork), 34},
        {SLOT(IKxContentFolder::EnumItems), 3},
        {SLOT(IKxContentFolder::GetItemName), 6},
        {SLOT(IKxContentFolder::GetOwnId), 12},
        {SLOT(IKxItemEnum::Next), 3},
        {SLOT(IKxTrackList::Reset), 15},
        {SLOT(IKxTrackFilter::SetFilterText), 4},
        {SLOT(IKxItemProperties::PrefetchProperties), 3},
        {SLOT(IKxItemProperties::GetStringProperty), 9},
        {SLOT(IKxItemProperties::RemoveProperties), 27},
        {SLOT(IKxItemPreview::GetPreviewBitmap), 4},
        {SLOT(IKxContentSite::QueryService), 7},
        {SLOT(IKxItemCursor::GetItemAt), 8},
    };
#undef SLOT
    for (const auto& s : slots) EXPECT_EQ(s.expected, s.slot) << s.name;
}

}  // namespace
