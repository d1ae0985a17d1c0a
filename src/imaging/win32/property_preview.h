// The preview of both properties dialogs: a picture from a file or from the host's bitmap, turned,
// shrunk with one ratio into 340 x 200 and into the room the control had at the start, drawn in
// high quality on white, and the control shrunk and centred on it. Also the skin's picture for a
// preview that cannot be made. This is the dialogs' one seam to the imaging platform (GDI+).
#pragma once

#include <windows.h>

#include "ui/wnd.h"

// GDI+'s bitmap object, as the flat functions know it.
namespace Gdiplus {
class GpBitmap;
}

class CPropertyPreview {
public:
    // `dialog` holds the static control `controlId`; both outlive the object.
    CPropertyPreview(CWnd& dialog, int controlId);
    ~CPropertyPreview() { Free(); }
    CPropertyPreview(const CPropertyPreview&) = delete;
    CPropertyPreview& operator=(const CPropertyPreview&) = delete;

    // Notes the control's screen rectangle: its size is the room the preview has.
    void TakeRoom();
    const RECT& Room() const { return m_rcPreview; }

    // Makes the picture, turns it (a failed turn is ignored), gives its size as seen and shows
    // it; the picture `corrupted` of the skin when it cannot be shown. A picture that cannot be
    // decoded has the size 0 x 0. False only for a null argument. The bitmap stays the caller's.
    bool LoadFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height, const char* corrupted);
    bool LoadFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height, const char* corrupted);
    // Shows the host's bitmap as it is; a failure leaves the control as it was.
    void ShowBitmap(HBITMAP bitmap);
    // Restores the control to `width` x `height`, takes its bitmap away and shows the skin's
    // picture instead. Does nothing while the control holds no bitmap.
    void ShowFallback(const char* picture, LONG width, LONG height);
    // Shrinks width x height to the room, centres the control on that size (moving it only with
    // `move`) and gives the control's rectangle before and after, in the dialog's client area.
    void FitPreviewControl(LONG* width, LONG* height, RECT* oldRect, RECT* newRect, bool move, const RECT& room);
    // Takes the bitmap off the control and deletes every picture of the preview.
    void Free();

private:
    bool ShowPreview(Gdiplus::GpBitmap* source);
    bool FromSource(Gdiplus::GpBitmap* source, int rotateFlip, LONG* width, LONG* height, const char* corrupted);
    // Puts `bitmap` on the control (null takes it off) and deletes what the control gave back.
    void SetControlBitmap(HBITMAP bitmap);

    CWnd& m_dialog;
    int m_controlId;
    RECT m_rcPreview = {};
    Gdiplus::GpBitmap* m_pPreviewBitmap = nullptr;
    HBITMAP m_hPreviewBitmap = nullptr;
};

// The imaging platform for one dialog: started at construction (version 1, no options), shut
// down at destruction when the start succeeded.
class CGdiplusSession {
public:
    CGdiplusSession();
    ~CGdiplusSession();
    CGdiplusSession(const CGdiplusSession&) = delete;
    CGdiplusSession& operator=(const CGdiplusSession&) = delete;
    bool Started() const { return m_token != 0; }

private:
    ULONG_PTR m_token = 0;
};
