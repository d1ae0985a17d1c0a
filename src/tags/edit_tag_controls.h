// What the tag dialogs' logic needs of their windows, by control id: texts, enabling, focus, the
// lists of the combo boxes, the slider, the picture, the two field warnings and a message box.
// The Win32 dialogs answer it with their controls; the tests with a table of fake controls.
#pragma once

#include "kx/KxPlatform.h"

#include <string>
#include <vector>

// The two warnings a field can get: digits only, and at most 255 characters.
enum class KxFieldWarning : int { Digits = 0, Length = 1 };

class IEditTagControls {
public:
    // The dialog's own window: owner of what the library is asked for.
    virtual HWND DialogWindow() = 0;
    virtual bool Exists(int id) = 0;
    // False, with the text left alone, when the control is missing.
    virtual bool GetText(int id, std::wstring* text) = 0;
    // An edit control reports the change (EN_UPDATE) before this returns; a combo box, like the
    // platform's, reports none.
    virtual void SetText(int id, const std::wstring& text) = 0;
    virtual void Enable(int id, bool enable) = 0;
    virtual bool IsEnabled(int id) = 0;
    virtual void Focus(int id) = 0;
    virtual int FocusedControl() = 0;  // 0 when the focus is on none of the dialog's controls
    // Focuses the field and selects all of its text; an edit control also scrolls the caret in.
    virtual void SelectAllText(int id, bool editControl) = 0;

    // The list of a combo box. Selecting shows the entry's text in the edit part, unreported.
    virtual void ResetList(int id) = 0;
    virtual void AddToList(int id, const std::wstring& text) = 0;
    virtual void InsertInList(int id, int index, const std::wstring& text) = 0;
    virtual void SelectInList(int id, int index) = 0;
    virtual void RemoveFromList(int id, int index) = 0;
    // The whole list at once, in place of what it held; a window can fill it in one batch.
    virtual void SetList(int id, const std::vector<std::wstring>& values) {
        ResetList(id);
        for (const std::wstring& value : values) AddToList(id, value);
    }

    virtual int GetSliderPos(int id) = 0;
    virtual void SetSliderPos(int id, int pos) = 0;

    // The picture: bytes as they are (shown, not stored), or the skin's default picture.
    virtual void ShowArtBytes(const BYTE* bytes, ULONG size) = 0;
    virtual void ShowDefaultArt() = 0;

    // Shows the warning at the field, made at its first use and pointed at the field after; false
    // only when it could not be allocated. A warning that cannot be shown is not a failure.
    virtual bool ShowWarning(KxFieldWarning which, int id, const std::wstring& text, const std::wstring& title) = 0;
    virtual void HideWarning(KxFieldWarning which) = 0;

    virtual std::wstring ResourceString(UINT id) = 0;
    // A message box with only an OK button.
    virtual void ShowMessage(UINT textId, UINT captionId) = 0;

protected:
    ~IEditTagControls() = default;
};
