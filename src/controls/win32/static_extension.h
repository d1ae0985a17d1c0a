// CStaticExtension: the picture static of the tag dialogs. A right click on it, and the
// keyboard's context-menu key or Shift+F10 while it has the focus, ask its parent for the art
// menu. The parent is reached through its window object: a parent whose object is no
// IKxArtMenuOwner gets nothing. With the focus it shows a focus frame.
#pragma once

#include <windows.h>

#include "ui/control_wrappers.h"

// What a dialog offers the picture static for its context menu.
class IKxArtMenuOwner {
public:
    virtual void ShowArtMenu() = 0;

protected:
    ~IKxArtMenuOwner() = default;
};

class CStaticExtension : public CStatic {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void AskParentForMenu();
};
