// The preview of the properties dialogs, through GDI+'s flat functions.
#include "imaging/win32/property_preview.h"

#include <gdiplus.h>

#include "frame/win32/skin_statics.h"
#include "imaging/fit_box.h"
#include "imaging/preview_placement.h"

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

namespace {

void Dispose(GpBitmap* bitmap) {
    if (bitmap) GdipDisposeImage(bitmap);
}

}  // namespace

CPropertyPreview::CPropertyPreview(CWnd& dialog, int controlId) : m_dialog(dialog), m_controlId(controlId) {}

void CPropertyPreview::TakeRoom() {
    if (CWnd* control = m_dialog.GetDlgItem(m_controlId)) control->GetWindowRect(&m_rcPreview);
}

bool CPropertyPreview::LoadFromFile(LPCWSTR path, int rotateFlip, LONG* width, LONG* height, const char* corrupted) {
    if (!path) return false;
    GpBitmap* source = nullptr;
    if (GdipCreateBitmapFromFile(path, &source) != Ok) source = nullptr;
    return FromSource(source, rotateFlip, width, height, corrupted);
}

bool CPropertyPreview::LoadFromBitmap(HBITMAP bitmap, int rotateFlip, LONG* width, LONG* height,
                                      const char* corrupted) {
    if (!bitmap) return false;
    GpBitmap* source = nullptr;
    if (GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &source) != Ok) source = nullptr;
    return FromSource(source, rotateFlip, width, height, corrupted);
}

// A picture that cannot be decoded counts as made, with a size of 0 x 0 that cannot be shown: its
// width and height rows read 0 and the skin's picture for an unreadable image takes its place.
bool CPropertyPreview::FromSource(GpBitmap* source, int rotateFlip, LONG* width, LONG* height,
                                  const char* corrupted) {
    UINT w = 0, h = 0;
    if (source) {
        if (rotateFlip != 0) GdipImageRotateFlip(source, static_cast<RotateFlipType>(rotateFlip));
        GdipGetImageWidth(source, &w);
        GdipGetImageHeight(source, &h);
    }
    *width = static_cast<LONG>(w);
    *height = static_cast<LONG>(h);
    const bool shown = source && ShowPreview(source);
    Dispose(source);
    if (!shown) ShowFallback(corrupted, m_rcPreview.right - m_rcPreview.left, m_rcPreview.bottom - m_rcPreview.top);
    return true;
}

void CPropertyPreview::ShowBitmap(HBITMAP bitmap) {
    GpBitmap* source = nullptr;
    if (!bitmap || GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &source) != Ok || !source) return;
    ShowPreview(source);
    Dispose(source);
}

bool CPropertyPreview::ShowPreview(GpBitmap* source) {
    CWnd* control = m_dialog.GetDlgItem(m_controlId);
    if (!source || !control) return false;
    UINT w = 0, h = 0;
    GdipGetImageWidth(source, &w);
    GdipGetImageHeight(source, &h);
    ScaleToFitBox(&w, &h, KX_PREVIEW_BOX_WIDTH, KX_PREVIEW_BOX_HEIGHT);
    LONG width = static_cast<LONG>(w), height = static_cast<LONG>(h);
    RECT oldRect, newRect;
    FitPreviewControl(&width, &height, &oldRect, &newRect, false, m_rcPreview);

    Dispose(m_pPreviewBitmap);
    m_pPreviewBitmap = nullptr;
    if (GdipCreateBitmapFromScan0(width, height, 0, PixelFormat32bppARGB, nullptr, &m_pPreviewBitmap) != Ok ||
        !m_pPreviewBitmap) {
        m_pPreviewBitmap = nullptr;
        return false;
    }
    GpGraphics* graphics = nullptr;
    if (GdipGetImageGraphicsContext(m_pPreviewBitmap, &graphics) != Ok || !graphics) {
        Dispose(m_pPreviewBitmap);
        m_pPreviewBitmap = nullptr;
        return false;
    }
    GdipSetPixelOffsetMode(graphics, PixelOffsetModeHighQuality);
    GdipSetSmoothingMode(graphics, SmoothingModeHighQuality);
    GdipSetInterpolationMode(graphics, InterpolationModeHighQualityBicubic);
    HBITMAP shown = nullptr;
    if (GdipDrawImageRectI(graphics, source, 0, 0, width, height) != Ok ||
        GdipCreateHBITMAPFromBitmap(m_pPreviewBitmap, &shown, 0xFFFFFFFF) != Ok || !shown) {
        Dispose(m_pPreviewBitmap);
        m_pPreviewBitmap = nullptr;
        GdipDeleteGraphics(graphics);
        return false;
    }

    control->ShowWindow(SW_HIDE);
    control->MoveWindow(&newRect, FALSE);
    if (oldRect.right - oldRect.left > 0) InvalidateRect(m_dialog.m_hWnd, &oldRect, TRUE);
    SetControlBitmap(shown);
    control->ShowWindow(SW_SHOW);
    GdipDeleteGraphics(graphics);
    return true;
}

void CPropertyPreview::SetControlBitmap(HBITMAP bitmap) {
    CWnd* control = m_dialog.GetDlgItem(m_controlId);
    // The control may hand back the bitmap it was given or a copy that it made (a static of
    // common controls 6 copies a bitmap with alpha): what comes back is deleted unless it is the
    // bitmap this object still owns, which is deleted on its own.
    const HBITMAP owned = m_hPreviewBitmap;
    HBITMAP returned = nullptr;
    if (control) {
        returned = reinterpret_cast<HBITMAP>(
            control->SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
    } else if (bitmap) {
        DeleteObject(bitmap);  // no control to show it
        bitmap = nullptr;
    }
    if (returned && returned != owned && returned != bitmap) DeleteObject(returned);
    if (owned && owned != bitmap) DeleteObject(owned);
    m_hPreviewBitmap = bitmap;
}

void CPropertyPreview::ShowFallback(const char* picture, LONG width, LONG height) {
    CWnd* control = m_dialog.GetDlgItem(m_controlId);
    if (!control || !control->SendMessage(STM_GETIMAGE, IMAGE_BITMAP, 0)) return;
    RECT oldRect, newRect;
    const RECT room = m_rcPreview;
    FitPreviewControl(&width, &height, &oldRect, &newRect, true, room);
    SetControlBitmap(nullptr);
    if (oldRect.right - oldRect.left > 0) InvalidateRect(m_dialog.m_hWnd, &oldRect, TRUE);
    SetStaticPicture(control->m_hWnd, picture);
}

void CPropertyPreview::FitPreviewControl(LONG* width, LONG* height, RECT* oldRect, RECT* newRect, bool move,
                                         const RECT& room) {
    if (oldRect) SetRectEmpty(oldRect);
    if (newRect) SetRectEmpty(newRect);
    CWnd* control = m_dialog.GetDlgItem(m_controlId);
    const LONG roomWidth = room.right - room.left, roomHeight = room.bottom - room.top;
    if (!control || roomWidth < 0 || roomHeight < 0 || *width < 0 || *height < 0) return;
    RECT rect;
    control->GetWindowRect(&rect);
    m_dialog.ScreenToClient(&rect);
    if (oldRect) *oldRect = rect;
    const bool moveNeeded = KxPlacePreviewControl(width, height, &rect, roomWidth, roomHeight);
    if (moveNeeded && move) control->MoveWindow(&rect, FALSE);
    if (newRect) *newRect = rect;
}

void CPropertyPreview::Free() {
    if (m_hPreviewBitmap) SetControlBitmap(nullptr);
    Dispose(m_pPreviewBitmap);
    m_pPreviewBitmap = nullptr;
}

CGdiplusSession::CGdiplusSession() {
    GdiplusStartupInput input;  // version 1, no options
    if (GdiplusStartup(&m_token, &input, nullptr) != Ok) m_token = 0;
}

CGdiplusSession::~CGdiplusSession() {
    if (m_token) GdiplusShutdown(m_token);
}
