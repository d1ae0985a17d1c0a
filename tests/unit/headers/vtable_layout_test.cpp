// The host calls the plug-in, and the plug-in calls the host, through vtables: a method moved in a
// header would call the wrong operation. These tests pin table slots (QueryInterface is slot 0).
#include "kx/IKxCommonResource.h"

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

TEST(VtableLayout, CommonResourceOperationsFollowIUnknown) {
    EXPECT_EQ(1, Slot(&IKxCommonResource::AddRef));
    EXPECT_EQ(2, Slot(&IKxCommonResource::Release));
    EXPECT_EQ(3, Slot(&IKxCommonResource::GetResourceString));
    EXPECT_EQ(4, Slot(&IKxCommonResource::LoadResourceString));
    EXPECT_EQ(5, Slot(&IKxCommonResource::ShowNameDialog));
    EXPECT_EQ(6, Slot(&IKxCommonResource::ShowEditTagDialog));
    EXPECT_EQ(7, Slot(&IKxCommonResource::ShowAddToPlaylistDialog));
    EXPECT_EQ(8, Slot(&IKxCommonResource::ShowAddToSlideshowDialog));
    EXPECT_EQ(9, Slot(&IKxCommonResource::ShowMessageBox));
    EXPECT_EQ(10, Slot(&IKxCommonResource::CreateBalloonTip));
    EXPECT_EQ(11, Slot(&IKxCommonResource::ShowImagePropertyDialog));
    EXPECT_EQ(12, Slot(&IKxCommonResource::ShowVideoPropertyDialog));
    EXPECT_EQ(13, Slot(&IKxCommonResource::ShowAddMusicsDialog));
}

TEST(VtableLayout, BalloonTips) {
    EXPECT_EQ(3, Slot(&IKxBalloonTip::SetPosition));
    EXPECT_EQ(4, Slot(&IKxBalloonTip::Show));
    EXPECT_EQ(5, Slot(&IKxBalloonTip::UpdatePosition));
    EXPECT_EQ(6, Slot(&IKxBalloonTip::Close));
    EXPECT_EQ(3, Slot(&IKxBalloonTipControl::SetTimeout));
    EXPECT_EQ(4, Slot(&IKxBalloonTipControl::RelayEvent));
    EXPECT_EQ(5, Slot(&IKxBalloonTipControl::Close));
}

TEST(VtableLayout, ContentFolderKeepsItsReservedSlots) {
    EXPECT_EQ(3, Slot(&IKxContentFolder::EnumItems));
    EXPECT_EQ(4, Slot(&IKxContentFolder::GetItemAttributes));
    EXPECT_EQ(6, Slot(&IKxContentFolder::GetItemName));
    EXPECT_EQ(7, Slot(&IKxContentFolder::GetItemObject));
    EXPECT_EQ(8, Slot(&IKxContentFolder::BindToFolder));
    EXPECT_EQ(11, Slot(&IKxContentFolder::ParseName));
    EXPECT_EQ(12, Slot(&IKxContentFolder::GetOwnId));
}

TEST(VtableLayout, EnumeratorsAndTrackList) {
    EXPECT_EQ(3, Slot(&IKxItemEnum::Next));
    EXPECT_EQ(7, Slot(&IKxTrackList::GetCount));
    EXPECT_EQ(8, Slot(&IKxTrackList::MoveTo));
    EXPECT_EQ(14, Slot(&IKxTrackList::GetCurrentId));
    EXPECT_EQ(15, Slot(&IKxTrackList::Reset));
    EXPECT_EQ(4, Slot(&IKxTrackFilter::SetFilterText));
}

TEST(VtableLayout, ItemPropertiesKeepTheirReservedSlots) {
    EXPECT_EQ(3, Slot(&IKxItemProperties::PrefetchProperties));
    EXPECT_EQ(5, Slot(&IKxItemProperties::GetPropertyInfo));
    EXPECT_EQ(9, Slot(&IKxItemProperties::GetStringProperty));
    EXPECT_EQ(10, Slot(&IKxItemProperties::SetStringProperty));
    EXPECT_EQ(11, Slot(&IKxItemProperties::GetIntProperty));
    EXPECT_EQ(12, Slot(&IKxItemProperties::SetIntProperty));
    EXPECT_EQ(23, Slot(&IKxItemProperties::GetBlobProperty));
    EXPECT_EQ(24, Slot(&IKxItemProperties::SetBlobProperty));
    EXPECT_EQ(25, Slot(&IKxItemProperties::GetProperties));
    EXPECT_EQ(26, Slot(&IKxItemProperties::SetProperties));
    EXPECT_EQ(27, Slot(&IKxItemProperties::RemoveProperties));
}

TEST(VtableLayout, PreviewSiteAndCursor) {
    EXPECT_EQ(3, Slot(&IKxItemPreview::GetPreviewSource));
    EXPECT_EQ(4, Slot(&IKxItemPreview::GetPreviewBitmap));
    EXPECT_EQ(7, Slot(&IKxContentSite::QueryService));
    EXPECT_EQ(3, Slot(&IKxItemCursor::GetCount));
    EXPECT_EQ(5, Slot(&IKxItemCursor::GetCurrentItems));
    EXPECT_EQ(8, Slot(&IKxItemCursor::GetItemAt));
}

}  // namespace
