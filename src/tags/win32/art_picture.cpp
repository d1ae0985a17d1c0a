// The tag dialogs' picture, through GDI+'s flat functions and a stream over the bytes.
#include "tags/win32/art_picture.h"

#include <shlwapi.h>
#include <gdiplus.h>

#include "base/owners.h"
#include "frame/win32/skin_statics.h"
#include "imaging/fit_box.h"

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

void CArtPicture::Attach(HWND control) {
    m_hControl = control;
    RECT rc = {0, 0, 0, 0};
    if (control && ::GetClientRect(control, &rc)) m_room = {rc.right - rc.left, rc.bottom - rc.top};
}

bool CArtPicture::ShowBytes(const BYTE* bytes, ULONG size) {
    if (!m_hControl || !bytes || size == 0 || m_room.cx <= 0 || m_room.cy <= 0) return false;
    CKxComPtr<IStream> stream;
    stream.Attach(::SHCreateMemStream(bytes, size));
    GpBitmap* source = nullptr;
    if (!stream || GdipCreateBitmapFromStream(stream.Get(), &source) != Ok || !source) {
        ShowDefault();
        return false;
    }
    UINT width = 0;
    UINT height = 0;
    GdipGetImageWidth(source, &width);
    GdipGetImageHeight(source, &height);
    ScaleToFitBox(&width, &height, static_cast<UINT>(m_room.cx), static_cast<UINT>(m_room.cy));
    GpImage* thumb = nullptr;
    HBITMAP shown = nullptr;
    if (width > 0 && height > 0 &&
        GdipGetImageThumbnail(source, width, height, &thumb, nullptr, nullptr) == Ok && thumb) {
        if (GdipCreateHBITMAPFromBitmap(static_cast<GpBitmap*>(thumb), &shown, 0xFFFFFFFF) != Ok) shown = nullptr;
        GdipDisposeImage(thumb);
    }
    GdipDisposeImage(source);
    if (!shown) {
        ShowDefault();
        return false;
    }
    SetBitmap(shown);
    return true;
}

void CArtPicture::ShowDefault() {
    if (!m_hControl) return;
    SetBitmap(nullptr);
    SetStaticPicture(m_hControl, "albumT.png");
}

void CArtPicture::Free() { SetBitmap(nullptr); }

void CArtPicture::SetBitmap(HBITMAP bitmap) {
    if (m_hControl && ::IsWindow(m_hControl)) {
        // A bitmap the control gave back that is not ours is the control's copy: it goes too.
        auto old = reinterpret_cast<HBITMAP>(
            ::SendMessageW(m_hControl, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
        if (old && old != m_hBitmap && old != bitmap) ::DeleteObject(old);
    }
    if (m_hBitmap && m_hBitmap != bitmap) ::DeleteObject(m_hBitmap);
    m_hBitmap = bitmap;
}
