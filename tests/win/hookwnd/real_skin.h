// The real skinning library (bin/hookwnd/HookWndU.DLL) made reachable for one test, and a plug-in
// installed with a skin package of the tests' own pictures. Without a RealSkin no test finds the
// library: it never lies beside the test programs.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kxtest {

class RealSkin {
public:
    RealSkin();  // bin/hookwnd joins the library search path
    ~RealSkin();
    RealSkin(const RealSkin&) = delete;
    RealSkin& operator=(const RealSkin&) = delete;

    // The package of the shipped description files and the tests' pictures.
    static std::wstring TestPackage();
};

// KxComResPlgin.dll and ComRcRes.dll copied into a fresh temporary folder with the test package
// beside them, as a host installs them; everything is deleted again at the end.
class InstalledPlugin {
public:
    InstalledPlugin();
    ~InstalledPlugin();
    InstalledPlugin(const InstalledPlugin&) = delete;
    InstalledPlugin& operator=(const InstalledPlugin&) = delete;

    std::wstring PluginPath() const { return m_dir + L"KxComResPlgin.dll"; }
    std::wstring PackagePath() const { return m_dir + L"ComRcRes.bff"; }

private:
    std::wstring m_dir;
    std::vector<std::wstring> m_files;
};

// The client area of a window as it paints itself into a 32-bit picture (WM_PRINTCLIENT), and the
// colour of one pixel of it.
class PrintedWindow {
public:
    explicit PrintedWindow(HWND hwnd);
    COLORREF At(int x, int y) const;
    int width() const { return m_width; }
    int height() const { return m_height; }

private:
    int m_width = 0, m_height = 0;
    std::vector<DWORD> m_pixels;
};

}  // namespace kxtest
