// The operations of the in-memory library that a test can count and make fail, one per call the
// plug-in can make on the tree (QueryInterface steps included where a dialog depends on them).
#pragma once

namespace kxhost {

enum class Op : int {
    // IKxContentFolder
    EnumItems,
    GetItemAttributes,
    GetItemName,
    GetItemObject,
    BindToFolder,
    ParseName,
    GetOwnId,
    QueryContentRoot,    // QueryInterface(IKxContentRoot) on any folder
    QueryContentFolder,  // QueryInterface(IKxContentFolder) on the object that answers IKxContentRoot
    // IKxItemEnum
    Next,
    // IKxTrackList, IKxTrackFilter
    TrackGetCount,
    TrackMoveTo,
    TrackGetCurrentId,
    TrackReset,
    QueryTrackFilter,  // QueryInterface(IKxTrackFilter) on a track list
    SetFilterText,
    // IKxItemProperties
    PrefetchProperties,
    GetPropertyInfo,
    GetStringProperty,
    SetStringProperty,
    GetIntProperty,
    SetIntProperty,
    GetBlobProperty,
    SetBlobProperty,
    GetProperties,
    SetProperties,
    RemoveProperties,
    // IKxItemPreview
    GetPreviewSource,
    GetPreviewBitmap,
    // IKxContentSite, IKxContentView, IKxItemCursor
    QueryService,
    QueryItemCursor,  // QueryInterface(IKxItemCursor) on the view
    CursorGetCount,
    CursorGetCurrentItems,
    CursorGetItemAt,
    Count_
};

constexpr int kOpCount = static_cast<int>(Op::Count_);

// The operation's own name ("GetItemName"), for messages.
const char* OpName(Op op);

}  // namespace kxhost
