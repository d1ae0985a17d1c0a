// The picture control of the tag dialogs: art bytes shown as a thumbnail that fits the control's
// room at the start, or the skin's default picture. Owns the bitmap it puts on the control.
#pragma once

#include <windows.h>

class CArtPicture {
public:
    CArtPicture() = default;
    ~CArtPicture() { Free(); }
    CArtPicture(const CArtPicture&) = delete;
    CArtPicture& operator=(const CArtPicture&) = delete;

    // The static control; its client size is the room every picture is fitted into.
    void Attach(HWND control);
    // False, with the default picture shown, when the bytes are no picture the platform decodes.
    bool ShowBytes(const BYTE* bytes, ULONG size);
    void ShowDefault();
    // Takes the bitmap off the control and deletes it.
    void Free();

    HWND m_hControl = nullptr;
    SIZE m_room = {0, 0};

private:
    void SetBitmap(HBITMAP bitmap);
    HBITMAP m_hBitmap = nullptr;
};
