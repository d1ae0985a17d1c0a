// The drop target of the tag dialogs without OLE: which drag of files it takes and where, and
// what a drop does. A drag is taken on entry when the dialog can take art at all and it holds
// exactly one existing file with an accepted picture extension; while it moves, only over the
// picture control while the dialog can accept art (which also wants the album field filled); a
// drop hands the file to the dialog. The Win32 target (win32/drag_drop_target.h) reads the
// CF_HDROP data and answers the OLE calls with these rules.
#pragma once

#include "kx/KxPlatform.h"

constexpr DWORD kDropEffectNone = 0;  // DROPEFFECT_NONE
constexpr DWORD kDropEffectCopy = 1;  // DROPEFFECT_COPY
// The capability bit of a tag value that says it can be written.
constexpr DWORD kArtFlagWritable = 0x4;
constexpr int kDropPathChars = 260;

// What the drop target needs of its dialog.
class IKxArtDropOwner {
public:
    // Whether the dialog's window is still a window (IsWindow).
    virtual bool IsDropOwnerWindow() = 0;
    // The picture control's rectangle in screen coordinates; false when there is no picture
    // control.
    virtual bool GetArtScreenRect(RECT* rect) = 0;
    // How many items the dialog edits.
    virtual int GetDropItemCount() = 0;
    // The capability flags of the art value of the one item.
    virtual DWORD GetArtValueFlags() = 0;
    virtual bool CanAcceptArtwork() = 0;
    // Shows the picture in `path` and keeps it as the new art.
    virtual bool LoadArtFromFile(const WCHAR* path) = 0;

protected:
    ~IKxArtDropOwner() = default;
};

// The platform's answers the rules ask for.
class IKxDropPlatform {
public:
    virtual DWORD GetFileAttributesW(const WCHAR* path) = 0;  // 0xFFFFFFFF when there is nothing
    virtual bool GetCursorPos(POINT* point) = 0;               // in screen coordinates

protected:
    ~IKxDropPlatform() = default;
};

class CDragDropRules {
public:
    explicit CDragDropRules(IKxDropPlatform& platform);

    // The dialog, once the target is registered on its window; null takes it away.
    void SetOwner(IKxArtDropOwner* owner) { m_pOwner = owner; }
    IKxArtDropOwner* GetOwner() const { return m_pOwner; }

    // The entry's tests before the data are read: `windowAndData` says that both the window and
    // the data object are there. False refuses the drag.
    bool AdmitEntry(bool windowAndData);
    // The entry's tests of the dragged files: `hasFiles` when CF_HDROP data could be read and
    // locked, then their number and the first one. The effect to answer.
    DWORD TakeFiles(bool hasFiles, UINT count, const WCHAR* first);
    // The effect while the drag moves: the cursor is asked for, not taken from the event.
    DWORD DragOver();
    // A drop: true when it is taken (even if the dialog could not load the file).
    bool Drop(bool hasWindow);
    // The drag has left or ended.
    void Leave();

    bool CanDrop() const { return m_bCanDrop != 0; }
    const WCHAR* DropFile() const { return m_szDropFile; }

private:
    DWORD Refuse();
    bool OwnerIsThere();

    BOOL m_bCanDrop;
    WCHAR m_szDropFile[kDropPathChars];
    IKxArtDropOwner* m_pOwner;
    IKxDropPlatform& m_platform;
};
