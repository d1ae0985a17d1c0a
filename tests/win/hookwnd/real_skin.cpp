#include "tests/win/hookwnd/real_skin.h"

#include <cstring>

#include "tests/win/common/plugin_loader.h"

namespace kxtest {

RealSkin::RealSkin() { SetDllDirectoryW((ExeDir() + L"hookwnd").c_str()); }

RealSkin::~RealSkin() { SetDllDirectoryW(nullptr); }

std::wstring RealSkin::TestPackage() { return ExeDir() + L"hookwnd-test\\ComRcRes.bff"; }

InstalledPlugin::InstalledPlugin() {
    wchar_t temp[MAX_PATH] = {}, dir[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    GetTempFileNameW(temp, L"khw", 0, dir);  // a unique name; the file makes way for the folder
    DeleteFileW(dir);
    CreateDirectoryW(dir, nullptr);
    m_dir = std::wstring(dir) + L"\\";
    const std::wstring from[] = {ExeDir() + L"KxComResPlgin.dll", ExeDir() + L"ComRcRes.dll", RealSkin::TestPackage()};
    const std::wstring to[] = {PluginPath(), m_dir + L"ComRcRes.dll", PackagePath()};
    for (size_t i = 0; i < 3; ++i)
        if (CopyFileW(from[i].c_str(), to[i].c_str(), FALSE)) m_files.push_back(to[i]);
}

InstalledPlugin::~InstalledPlugin() {
    for (const std::wstring& f : m_files) DeleteFileW(f.c_str());
    RemoveDirectoryW(m_dir.c_str());
}

PrintedWindow::PrintedWindow(HWND hwnd) {
    RECT rc = {};
    GetClientRect(hwnd, &rc);
    m_width = rc.right;
    m_height = rc.bottom;
    if (m_width <= 0 || m_height <= 0) return;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = m_width;
    info.bmiHeader.biHeight = -m_height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, bitmap);
    SendMessageW(hwnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT | PRF_ERASEBKGND);
    GdiFlush();
    m_pixels.resize(static_cast<size_t>(m_width) * m_height);
    std::memcpy(m_pixels.data(), bits, m_pixels.size() * 4);
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(bitmap);
}

COLORREF PrintedWindow::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return CLR_INVALID;
    const DWORD p = m_pixels[static_cast<size_t>(y) * m_width + x];
    return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
}

}  // namespace kxtest
