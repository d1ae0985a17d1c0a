// kxhost.exe: a small stand-in for the media-library application. It loads the plug-in from its
// own folder, creates the object through DllGetClassObject like the real host, and reports what
// the plug-in answers. Headless it runs every demo step in turn; with a display it offers them from
// the Demo menu of its window.
//
//   kxhost.exe [--headless] [--out <folder>]
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "balloon/bubble_constants.h"
#include "kx/IKxBalloonTip.h"
#include "kx/IKxCommonResource.h"
#include "host/win32/demo_art_lookup.h"
#include "host/win32/demo_autopilot.h"
#include "host/win32/demo_library.h"
#include "resources/dialogs/add_musics_ids.h"
#include "resources/dialogs/add_to_playlist_ids.h"
#include "resources/dialogs/edit_multiple_tags_ids.h"
#include "resources/dialogs/edit_single_tags_ids.h"
#include "resources/dialogs/image_property_ids.h"
#include "resources/dialogs/message_box_ids.h"
#include "resources/dialogs/video_property_ids.h"
#include "host/win32/window_capture.h"

namespace {

std::wstring ExeDir() {
    wchar_t path[MAX_PATH] = {};
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring s(path, n);
    return s.substr(0, s.find_last_of(L"\\/") + 1);
}

void Say(const wchar_t* format, ...) {
    wchar_t line[1024];
    va_list args;
    va_start(args, format);
    _vsnwprintf(line, 1023, format, args);
    va_end(args);
    line[1023] = L'\0';
    // the console may not be a wide one under Wine: write UTF-8
    char utf8[4096];
    int n = WideCharToMultiByte(CP_UTF8, 0, line, -1, utf8, sizeof(utf8), nullptr, nullptr);
    if (n > 0) {
        std::fputs(utf8, stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

typedef HRESULT(STDAPICALLTYPE* GetClassObjectFn)(REFCLSID, REFIID, void**);
typedef HRESULT(STDAPICALLTYPE* CanUnloadNowFn)();

// What one run of the demo shares between its steps.
struct DemoContext {
    IKxCommonResource* res;
    bool headless;
    std::wstring outDir;
    kxhost::InMemoryLibrary* library;  // the host's content library the dialogs work on
    int failures;                      // headless steps that did not show what they should
};

// ---- demo steps: each shows one part of the interface and reports what the plug-in answered ----

// The strings of ComRcRes.dll that the host can read, through both look-ups.
void ShowStrings(DemoContext& demo) {
    static const UINT ids[] = {188, 134, 180, 181, 133, 47, 26, 130, 178, 247, 106};
    for (UINT id : ids) {
        LPWSTR text = nullptr;
        HRESULT hr = demo.res->GetResourceString(id, &text);
        Say(L"GetResourceString(%u) -> 0x%08lx \"%s\"", id, static_cast<unsigned long>(hr), text ? text : L"");
        CoTaskMemFree(text);
    }
    LPWSTR missing = nullptr;
    HRESULT hr = demo.res->GetResourceString(4242, &missing);
    Say(L"GetResourceString(4242) -> 0x%08lx (no such string)", static_cast<unsigned long>(hr));

    INT needed = 0;
    hr = demo.res->LoadResourceString(188, nullptr, 0, &needed);
    Say(L"LoadResourceString(188, null) -> 0x%08lx, needs %d characters", static_cast<unsigned long>(hr), needed);
    WCHAR small[6];
    hr = demo.res->LoadResourceString(188, small, 6, &needed);
    Say(L"LoadResourceString(188, 6 characters) -> 0x%08lx \"%s\"", static_cast<unsigned long>(hr), small);
}

// What the dialog operations answer for arguments they refuse.
void ShowPreconditions(DemoContext& demo) {
    HRESULT hr = demo.res->ShowEditTagDialog(nullptr, nullptr, nullptr, 0, nullptr);
    Say(L"ShowEditTagDialog(no items) -> 0x%08lx", static_cast<unsigned long>(hr));
    hr = demo.res->ShowAddToPlaylistDialog(nullptr, nullptr, nullptr, nullptr, nullptr);
    Say(L"ShowAddToPlaylistDialog(no folder) -> 0x%08lx", static_cast<unsigned long>(hr));
    hr = demo.res->ShowImagePropertyDialog(nullptr, nullptr, nullptr, nullptr);
    Say(L"ShowImagePropertyDialog(no folder) -> 0x%08lx", static_cast<unsigned long>(hr));
}

// Message boxes of every kind. Headless, each is answered by a click of the button a user would
// most likely press, and the short and the long box are written to PNG files.
void ShowMessageBoxes(DemoContext& demo) {
    struct Box {
        const wchar_t* picture;  // file name in the output folder, or null
        const wchar_t* text;
        const wchar_t* caption;  // null: the plug-in's default caption
        UINT flags;
        int button;  // clicked when headless
    } boxes[] = {
        {L"message-box-short.png", L"The playlist \"Road Trip\" was saved.", L"Playlist saved", MB_ICONASTERISK,
         KX_IDC_MSGBOX_FIRST},
        {L"message-box-long.png",
         L"You changed the album, the artist and the genre of 214 tracks. The new values will be written to "
         L"the files of the tracks, and the library will show them at once. Tracks on read-only media keep "
         L"their old values. Do you want to save the changes now?",
         L"Save the changes to 214 tracks before you go on to the next album?", MB_YESNO | MB_ICONQUESTION,
         KX_IDC_MSGBOX_FIRST},
        {nullptr, L"The picture could not be read.", L"Cannot open picture", MB_ICONHAND, KX_IDC_MSGBOX_FIRST},
        {nullptr, L"The disk is almost full.", nullptr, MB_ICONEXCLAMATION, KX_IDC_MSGBOX_CLOSE},
        {nullptr, L"Remove the selected slideshow from the library?", L"Remove slideshow",
         MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION, KX_IDC_MSGBOX_SECOND},
        {nullptr, L"Done.", nullptr, 0, KX_IDC_MSGBOX_FIRST},
    };
    if (demo.headless) CreateDirectoryW(demo.outDir.c_str(), nullptr);
    for (const Box& box : boxes) {
        std::wstring picture = demo.headless && box.picture ? demo.outDir + L"\\" + box.picture : std::wstring();
        HRESULT hr;
        bool written = false;
        if (demo.headless) {
            DemoAutopilot pilot(picture, box.button);
            hr = demo.res->ShowMessageBox(nullptr, box.text, box.caption, box.flags);
            written = pilot.pictureWritten();
        } else {
            hr = demo.res->ShowMessageBox(nullptr, box.text, box.caption, box.flags);
        }
        Say(L"ShowMessageBox(flags 0x%03x, \"%s\") -> 0x%08lx%s%s", box.flags, box.caption ? box.caption : L"(default)",
            static_cast<unsigned long>(hr), written ? L", picture " : L"", written ? box.picture : L"");
    }
}

// Add to a playlist and add to a slideshow on the sample library. Headless, each dialog is
// pictured and confirmed with OK: the playlist one with a new name, the slideshow one with the
// first existing slideshow.
void ShowAddToDialogs(DemoContext& demo) {
    IKxContentFolder* root = nullptr;
    if (FAILED(demo.library->GetRootFolder(&root))) return;
    struct Target {
        const wchar_t* operation;
        const wchar_t* picture;
        const wchar_t* suggested;
        bool slideshow;
    } targets[] = {
        {L"ShowAddToPlaylistDialog", L"add-to-playlist.png", L"Sunday Morning", false},
        {L"ShowAddToSlideshowDialog", L"add-to-slideshow.png", nullptr, true},
    };
    for (const Target& t : targets) {
        std::wstring picture = demo.headless ? demo.outDir + L"\\" + t.picture : std::wstring();
        KxPidl pidl = nullptr;
        LPWSTR name = nullptr;
        HRESULT hr;
        bool written = false;
        {
            std::unique_ptr<DemoAutopilot> pilot;
            if (demo.headless) pilot.reset(new DemoAutopilot(picture, KX_IDC_ADDTO_OK));
            hr = t.slideshow ? demo.res->ShowAddToSlideshowDialog(nullptr, root, t.suggested, &pidl, &name)
                             : demo.res->ShowAddToPlaylistDialog(nullptr, root, t.suggested, &pidl, &name);
            written = pilot && pilot->pictureWritten();
        }
        if (pidl)
            Say(L"%s -> 0x%08lx, existing target \"%s\"%s%s", t.operation, static_cast<unsigned long>(hr),
                demo.library->NameOf(demo.library->ItemOf(pidl)).c_str(), written ? L", picture " : L"",
                written ? t.picture : L"");
        else
            Say(L"%s -> 0x%08lx, new name \"%s\"%s%s", t.operation, static_cast<unsigned long>(hr),
                name ? name : L"", written ? L", picture " : L"", written ? t.picture : L"");
        CoTaskMemFree(pidl);
        CoTaskMemFree(name);
    }
    root->Release();
}

// Add music on the sample library, starting from the first playlist's tracks. Headless, the
// user picks an album from the Albums crumb's drop-down (a path of three levels), the dialog is
// pictured with tracks on both sides and confirmed with OK.
void ShowAddMusicsDialogStep(DemoContext& demo) {
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    IKxTrackList* given = nullptr;
    kxhost::InMemoryLibrary& lib = *demo.library;
    const std::vector<kxhost::ItemId>& playlists = lib.Containers(lib.Folder(kxhost::WellKnown::Playlists));
    if (FAILED(lib.GetRootFolder(&root)) || FAILED(lib.CreateSite(&site)) || playlists.empty() ||
        FAILED(lib.CreateTrackList(playlists[0], &given))) {
        if (root) root->Release();
        if (site) site->Release();
        return;
    }
    const std::wstring picture = demo.headless ? demo.outDir + L"\\add-music.png" : std::wstring();
    INT count = 0;
    KxPidl* items = nullptr;
    HRESULT hr;
    bool written = false;
    {
        std::unique_ptr<DemoAutopilot> pilot;
        if (demo.headless) {
            pilot.reset(new DemoAutopilot(picture, KX_IDC_ADDMUSICS_OK));
            pilot->BeforePicture([](HWND dialog) {
                HWND bar = GetDlgItem(dialog, KX_IDC_ADDMUSICS_BAR);
                NMTOOLBARW open = {};
                open.hdr.hwndFrom = bar;
                open.hdr.idFrom = KX_IDC_ADDMUSICS_BAR;
                open.hdr.code = TBN_DROPDOWN;
                open.iItem = 5002;  // the Albums crumb
                // the drop-down runs its own loop: the pick waits in the queue, the cancel closes it
                PostMessageW(dialog, WM_COMMAND, 8000 + 1, 0);
                PostMessageW(dialog, WM_CANCELMODE, 0, 0);
                SendMessageW(bar, WM_NOTIFY, KX_IDC_ADDMUSICS_BAR, reinterpret_cast<LPARAM>(&open));
            });
        }
        hr = demo.res->ShowAddMusicsDialog(0, site, root, L"Music", given, &count, &items);
        written = pilot && pilot->pictureWritten();
    }
    Say(L"ShowAddMusicsDialog -> 0x%08lx, %d tracks handed back%s", static_cast<unsigned long>(hr), int(count),
        written ? L", picture add-music.png" : L"");
    for (INT i = 0; hr == S_OK && i < count; ++i) CoTaskMemFree(items[i]);
    if (hr == S_OK) CoTaskMemFree(items);
    given->Release();
    site->Release();
    root->Release();
}

BOOL CALLBACK FindBubbleOfThread(HWND hwnd, LPARAM lp) {
    wchar_t cls[64] = {};
    GetClassNameW(hwnd, cls, 64);
    if (lstrcmpW(cls, KX_BUBBLE_CLASS_NAME) == 0) *reinterpret_cast<HWND*>(lp) = hwnd;
    return TRUE;
}

// The speech bubble of this thread, null when none is up.
HWND FindBubble() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindBubbleOfThread, reinterpret_cast<LPARAM>(&found));
    return found;
}

void PumpFor(DWORD ms) {
    const DWORD end = GetTickCount() + ms;
    do {
        MSG m;
        while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&m);
            DispatchMessageW(&m);
        }
        Sleep(10);
    } while (static_cast<LONG>(GetTickCount() - end) < 0);
}

// Balloon tips of each kind (0x10 error, 0x30 warning, 0x40 information) with their point in each
// corner of the screen, then a tracking tip that a relayed mouse move shows. Headless, each
// bubble is written to a PNG file. Tips exist only with the skin package beside the plug-in, and
// show only where the skinning library can be loaded.
void ShowBalloonTips(DemoContext& demo) {
    RECT screen;
    GetWindowRect(GetDesktopWindow(), &screen);
    const LONG w = screen.right - screen.left, h = screen.bottom - screen.top;
    HWND target = CreateWindowExW(0, L"STATIC", L"Title field", WS_POPUP | WS_VISIBLE | WS_BORDER, w / 2 - 100,
                                  h / 2 - 12, 200, 24, nullptr, nullptr, nullptr, nullptr);
    struct Kind { UINT flags; const wchar_t* name; const wchar_t* title; const wchar_t* text; } kinds[] = {
        {0x10, L"error", L"Cannot save", L"The file is read-only. Choose another folder and try again."},
        {0x30, L"warning", L"Text too long", L"A title holds at most 255 characters."},
        {0x40, L"info", L"Tip", L"Drop a picture here to make it the album's art."},
    };
    struct Corner { const wchar_t* name; POINT at; } corners[] = {
        {L"top-left", {40, 40}}, {L"top-right", {w - 40, 40}}, {L"bottom-left", {40, h - 40}},
        {L"bottom-right", {w - 40, h - 40}},
    };
    for (const Kind& kind : kinds) {
        for (const Corner& corner : corners) {
            IKxBalloonTip* tip = nullptr;
            HRESULT hr = demo.res->CreateBalloonTip(IID_IKxBalloonTip, target, kind.text, kind.title, kind.flags,
                                                    reinterpret_cast<void**>(&tip));
            if (FAILED(hr)) {
                Say(L"CreateBalloonTip(IKxBalloonTip, flags 0x%02x) -> 0x%08lx%s", kind.flags,
                    static_cast<unsigned long>(hr),
                    hr == static_cast<HRESULT>(0x80070002) ? L" (no ComRcRes.bff beside the plug-in)" : L"");
                DestroyWindow(target);
                return;
            }
            tip->SetPosition(&corner.at);
            hr = tip->Show(TRUE, 0);
            PumpFor(demo.headless ? 100 : 1500);
            HWND bubble = FindBubble();
            RECT rc = {0, 0, 0, 0};
            if (bubble) GetWindowRect(bubble, &rc);
            std::wstring file = std::wstring(L"balloon-") + kind.name + L"-" + corner.name + L".png";
            const std::wstring path = demo.outDir + L"\\" + file;
            const bool written = demo.headless && bubble && CaptureWindowToPng(bubble, path.c_str());
            Say(L"Show(flags 0x%02x, point %ld,%ld) -> 0x%08lx, bubble %ld,%ld-%ld,%ld%s%s", kind.flags, corner.at.x,
                corner.at.y, static_cast<unsigned long>(hr), rc.left, rc.top, rc.right, rc.bottom,
                written ? L", picture " : L"", written ? file.c_str() : L"");
            tip->Release();
        }
    }
    IKxBalloonTipControl* control = nullptr;
    HRESULT hr = demo.res->CreateBalloonTip(IID_IKxBalloonTipControl, target, L"Type the album's title here.",
                                            L"Album title", 0x40, reinterpret_cast<void**>(&control));
    Say(L"CreateBalloonTip(IKxBalloonTipControl) -> 0x%08lx", static_cast<unsigned long>(hr));
    if (control) {
        control->SetTimeout(2000);
        SetCursorPos(w / 2, h / 2);
        MSG move = {};
        move.hwnd = target;
        move.message = WM_MOUSEMOVE;
        Say(L"RelayEvent(WM_MOUSEMOVE over the target) -> %ld", static_cast<long>(control->RelayEvent(&move)));
        PumpFor(demo.headless ? 100 : 2500);
        const std::wstring path = demo.outDir + L"\\balloon-tracking.png";
        const bool written = demo.headless && FindBubble() && CaptureWindowToPng(FindBubble(), path.c_str());
        if (written) Say(L"tracking tip, picture balloon-tracking.png");
        control->Release();
    }
    DestroyWindow(target);
}

// The name dialog: a new album, confirmed with the name it suggests, and a year renamed to
// "19a9", which OK refuses (the dialog stays, with the name selected), then cancelled.
void ShowNameDialogs(DemoContext& demo) {
    struct Name {
        const wchar_t* picture;
        INT kind, mode;
        const wchar_t* initial;
        const wchar_t* typed;  // put into the field and confirmed with OK before the picture, or null
        int button;            // clicked after the picture
    } names[] = {
        {L"name-new-album.png", 1, 1, L"Summer Mix", nullptr, 1},
        {L"name-rename-year.png", 7, 2, L"1999", L"19a9", 1048},
    };
    for (const Name& n : names) {
        std::wstring picture = demo.headless ? demo.outDir + L"\\" + n.picture : std::wstring();
        LPWSTR name = nullptr;
        HRESULT hr;
        bool written = false;
        {
            std::unique_ptr<DemoAutopilot> pilot;
            if (demo.headless) {
                pilot.reset(new DemoAutopilot(picture, n.button));
                if (const wchar_t* typed = n.typed) {
                    const std::wstring tipPicture = demo.outDir + L"\\name-rename-year-tip.png";
                    pilot->BeforePicture([typed, tipPicture](HWND dlg) {
                        SetDlgItemTextW(dlg, 10001, typed);
                        SendMessageW(GetDlgItem(dlg, 1), BM_CLICK, 0, 0);
                        // OK refused the name with a balloon tip at the field: picture it too
                        if (HWND bubble = FindBubble()) {
                            if (CaptureWindowToPng(bubble, tipPicture.c_str()))
                                Say(L"year tip up, picture name-rename-year-tip.png");
                        }
                    });
                }
            }
            hr = demo.res->ShowNameDialog(nullptr, n.kind, n.mode, n.initial, &name);
            written = pilot && pilot->pictureWritten();
        }
        Say(L"ShowNameDialog(kind %d, mode %d, \"%s\") -> 0x%08lx, name \"%s\"%s%s", n.kind, n.mode, n.initial,
            static_cast<unsigned long>(hr), name ? name : L"(none)", written ? L", picture " : L"",
            written ? n.picture : L"");
        CoTaskMemFree(name);
    }
}

// The properties of a picture whose orientation turns its preview, and of a video, each in a
// view of all the items of its kind. Headless, each dialog is pictured and closed.
void ShowPropertyDialogs(DemoContext& demo) {
    kxhost::InMemoryLibrary& lib = *demo.library;
    std::vector<kxhost::ItemId> pictures, videos;
    kxhost::ItemId turned = 0;
    for (kxhost::ItemId id = 1; id <= lib.ItemCount(); ++id) {
        if (lib.KindOf(id) == kxhost::ItemKind::Video) videos.push_back(id);
        if (lib.KindOf(id) != kxhost::ItemKind::Picture) continue;
        pictures.push_back(id);
        const auto orientation = lib.Value(id, KxPropImage8);
        if (!turned && orientation && (orientation->number == 6 || orientation->number == 2)) turned = id;
    }
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    if (!turned || videos.empty() || FAILED(lib.GetRootFolder(&root)) || FAILED(lib.CreateSite(&site))) {
        if (root) root->Release();
        return;
    }
    struct Shown {
        const wchar_t* operation;
        const wchar_t* picture;
        kxhost::ItemId item;
        const std::vector<kxhost::ItemId>* view;
        int close;
    } dialogs[] = {
        {L"ShowImagePropertyDialog", L"image-properties.png", turned, &pictures, KX_IDC_IMAGEPROP_CLOSE},
        {L"ShowVideoPropertyDialog", L"video-properties.png", videos[0], &videos, KX_IDC_VIDEOPROP_CLOSE},
    };
    for (const Shown& d : dialogs) {
        LONG current = 0;
        while ((*d.view)[static_cast<size_t>(current)] != d.item) ++current;
        lib.SetView(*d.view, current);
        KxPidl item = lib.NewPidl(d.item);
        const std::wstring picture = demo.headless ? demo.outDir + L"\\" + d.picture : std::wstring();
        HRESULT hr;
        bool written = false;
        {
            std::unique_ptr<DemoAutopilot> pilot;
            if (demo.headless) pilot.reset(new DemoAutopilot(picture, d.close));
            hr = d.close == KX_IDC_VIDEOPROP_CLOSE ? demo.res->ShowVideoPropertyDialog(nullptr, site, root, item)
                                 : demo.res->ShowImagePropertyDialog(nullptr, site, root, item);
            written = pilot && pilot->pictureWritten();
        }
        CoTaskMemFree(item);
        Say(L"%s(\"%s\") -> 0x%08lx%s%s", d.operation, lib.NameOf(d.item).c_str(), static_cast<unsigned long>(hr),
            written ? L", picture " : L"", written ? d.picture : L"");
    }
    site->Release();
    root->Release();
}

// The tags of one track with album art, in a view of all the tracks. Headless, the dialog is
// pictured as it opens and once with a pasted title past 255 characters warned of, then closed.
void ShowEditTagDialogs(DemoContext& demo) {
    kxhost::InMemoryLibrary& lib = *demo.library;
    std::vector<kxhost::ItemId> tracks;
    LONG current = -1;
    for (kxhost::ItemId id = 1; id <= lib.ItemCount(); ++id) {
        if (lib.KindOf(id) != kxhost::ItemKind::Track) continue;
        if (current < 0 && lib.Value(id, KxPropAlbumArt)) current = static_cast<LONG>(tracks.size());
        tracks.push_back(id);
    }
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    if (current < 0 || FAILED(lib.GetRootFolder(&root)) || FAILED(lib.CreateSite(&site))) {
        if (root) root->Release();
        return;
    }
    lib.SetView(tracks, current);
    const kxhost::ItemId track = tracks[static_cast<size_t>(current)];
    struct Shown {
        const wchar_t* picture;
        bool longTitle;
    } shown[] = {{L"edit-tags.png", false}, {L"edit-tags-length.png", true}};
    for (const Shown& d : shown) {
        KxPidl item = lib.NewPidl(track);
        const KxPcPidl items[] = {item};
        const std::wstring picture = demo.headless ? demo.outDir + L"\\" + d.picture : std::wstring();
        HRESULT hr;
        bool written = false;
        {
            std::unique_ptr<DemoAutopilot> pilot;
            if (demo.headless) {
                pilot.reset(new DemoAutopilot(picture, 1057));
                if (d.longTitle) {
                    // the paste past 255 characters is warned of by a balloon tip at the title
                    pilot->BeforePicture([](HWND dlg) { SetDlgItemTextW(dlg, 1031, std::wstring(256, L'x').c_str()); });
                    pilot->PictureAlso(&FindBubble);
                }
            }
            hr = demo.res->ShowEditTagDialog(nullptr, site, root, 1, items);
            written = pilot && pilot->pictureWritten();
        }
        CoTaskMemFree(item);
        Say(L"ShowEditTagDialog(\"%s\") -> 0x%08lx%s%s", lib.NameOf(track).c_str(), static_cast<unsigned long>(hr),
            written ? L", picture " : L"", written ? d.picture : L"");
    }
    site->Release();
    root->Release();
}

// The art lookup of the tag dialog on a track with art of its own whose file lies in a temporary
// folder with cover.jpg beside it. The content manager is registered for the step if it was not.
// Headless, the picture's menu is opened and its lookup chosen, the dialog is pictured with the
// cover it found, then closed as Cancel: nothing is written, and the folder and the registration go
// again. A headless run that cannot show the found cover counts as a failure of the demo.
void ShowEditTagLookup(DemoContext& demo) {
    kxhost::InMemoryLibrary& lib = *demo.library;
    std::vector<kxhost::ItemId> tracks;
    LONG current = -1;
    for (kxhost::ItemId id = 1; id <= lib.ItemCount(); ++id) {
        if (lib.KindOf(id) != kxhost::ItemKind::Track) continue;
        // the picture's menu opens only while the album field has text and the art may be written
        const auto album = lib.Value(id, KxPropAlbum);
        if (current < 0 && (lib.Capabilities(id, KxPropAlbumArt) & kxhost::kWritable) && album && !album->text.empty())
            current = static_cast<LONG>(tracks.size());
        tracks.push_back(id);
    }
    if (current < 0) {
        Say(L"no track whose art may be written");
        demo.failures += demo.headless ? 1 : 0;
        return;
    }
    const kxhost::ItemId track = tracks[static_cast<size_t>(current)];
    kxdemo::ScopedContentManager manager(ExeDir());
    Say(L"KxNetContent.dll %s", !manager.available()        ? L"could not be registered"
                                : manager.registeredHere() ? L"registered for this step"
                                                           : L"already registered");
    kxdemo::ScopedLookupTrack file(lib, track);
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    if (!manager.available() || !file.ready() || FAILED(lib.GetRootFolder(&root)) || FAILED(lib.CreateSite(&site))) {
        if (root) root->Release();
        Say(L"the lookup's track or the library's objects could not be made");
        demo.failures += demo.headless ? 1 : 0;
        return;
    }
    Say(L"track \"%s\" in %s, with cover.jpg beside it", lib.NameOf(track).c_str(), file.folder().c_str());
    lib.SetView(tracks, current);
    lib.ClearWrites();
    const wchar_t* const name = L"edit-tags-lookup.png";
    const std::wstring picture = demo.headless ? demo.outDir + L"\\" + name : std::wstring();
    KxPidl item = lib.NewPidl(track);
    const KxPcPidl items[] = {item};
    HRESULT hr;
    bool written = false, chosen = false, answered = false, shown = false;
    {
        std::unique_ptr<DemoAutopilot> pilot;
        if (demo.headless) {
            pilot.reset(new DemoAutopilot(picture, KX_IDC_TAG_CLOSE));
            pilot->BeforePicture([&](HWND dlg) {
                chosen = kxdemo::ChooseFromContextMenu(dlg, KX_IDC_TAG_ART, KX_IDM_ART_LOOKUP);
                // the album field is held while the lookup runs and freed by its answer
                answered = chosen && kxdemo::AwaitControlHeldAndFreed(dlg, KX_IDC_TAG_ALBUM, 15000);
                shown = SendDlgItemMessageW(dlg, KX_IDC_TAG_ART, STM_GETIMAGE, IMAGE_BITMAP, 0) != 0;
            });
        }
        hr = demo.res->ShowEditTagDialog(nullptr, site, root, 1, items);
        written = pilot && pilot->pictureWritten();
    }
    CoTaskMemFree(item);
    if (demo.headless && !(chosen && answered && shown && written && lib.Writes().empty())) ++demo.failures;
    if (demo.headless)
        Say(L"lookup %s, %s; the cover %s", chosen ? L"chosen from the menu" : L"NOT chosen",
            answered ? L"answered" : L"NOT answered", shown ? L"shown" : L"NOT shown");
    Say(L"ShowEditTagDialog(\"%s\") -> 0x%08lx, %u write(s)%s%s", lib.NameOf(track).c_str(),
        static_cast<unsigned long>(hr), static_cast<unsigned>(lib.Writes().size()), written ? L", picture " : L"",
        written ? name : L"");
    site->Release();
    root->Release();
}

// The tags of several tracks at once: the first of them with album art, the rest after it in the
// library. Headless, the dialog is pictured with a genre typed and its box ticked, then closed.
void ShowEditMultipleTagsDialog(DemoContext& demo) {
    kxhost::InMemoryLibrary& lib = *demo.library;
    std::vector<kxhost::ItemId> tracks;
    for (kxhost::ItemId id = 1; id <= lib.ItemCount() && tracks.size() < 8; ++id) {
        if (lib.KindOf(id) != kxhost::ItemKind::Track) continue;
        if (tracks.empty() && !lib.Value(id, KxPropAlbumArt)) continue;
        tracks.push_back(id);
    }
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    if (tracks.size() < 2 || FAILED(lib.GetRootFolder(&root)) || FAILED(lib.CreateSite(&site))) {
        if (root) root->Release();
        return;
    }
    lib.SetView(tracks, 0);
    std::vector<KxPidl> items;
    for (kxhost::ItemId t : tracks) items.push_back(lib.NewPidl(t));
    const wchar_t* const name = L"edit-tags-multiple.png";
    const std::wstring picture = demo.headless ? demo.outDir + L"\\" + name : std::wstring();
    HRESULT hr;
    bool written = false;
    {
        std::unique_ptr<DemoAutopilot> pilot;
        if (demo.headless) {
            pilot.reset(new DemoAutopilot(picture, KX_IDC_MTAG_CLOSE));
            pilot->BeforePicture([](HWND dlg) {
                SetDlgItemTextW(dlg, KX_IDC_MTAG_GENRE, L"Jazz");
                CheckDlgButton(dlg, KX_IDC_MTAG_GENRE_CHECK, BST_CHECKED);
            });
        }
        hr = demo.res->ShowEditTagDialog(nullptr, site, root, static_cast<UINT>(items.size()),
                                         const_cast<const KxPcPidl*>(items.data()));
        written = pilot && pilot->pictureWritten();
    }
    for (KxPidl item : items) CoTaskMemFree(item);
    Say(L"ShowEditTagDialog(%u tracks) -> 0x%08lx%s%s", static_cast<unsigned>(tracks.size()),
        static_cast<unsigned long>(hr), written ? L", picture " : L"", written ? name : L"");
    site->Release();
    root->Release();
}

struct DemoStep {
    const wchar_t* name;
    void (*run)(DemoContext& demo);
};

// The steps in the order they run headless, and the entries of the interactive host's Demo menu.
// A new dialog adds its entry here.
const DemoStep kDemoSteps[] = {
    {L"strings", ShowStrings},
    {L"preconditions", ShowPreconditions},
    {L"message boxes", ShowMessageBoxes},
    {L"add to playlist or slideshow", ShowAddToDialogs},
    {L"add music", ShowAddMusicsDialogStep},
    {L"balloon tips, on request and tracking", ShowBalloonTips},
    {L"name dialog", ShowNameDialogs},
    {L"image and video properties", ShowPropertyDialogs},
    {L"tag editing, one item", ShowEditTagDialogs},
    {L"tag editing, art lookup", ShowEditTagLookup},
    {L"tag editing, several items", ShowEditMultipleTagsDialog},
};

const size_t kDemoStepCount = sizeof(kDemoSteps) / sizeof(kDemoSteps[0]);

// ---- the interactive host: with a display, a window whose Demo menu offers every step ----------

const UINT kMenuExit = 98, kMenuRunAll = 99, kMenuFirstStep = 100;
const wchar_t kMenuHostClass[] = L"KxHostDemoWindow";

LRESULT CALLBACK MenuHostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* demo = reinterpret_cast<DemoContext*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
    case WM_COMMAND: {
        const UINT id = LOWORD(wParam);
        if (id == kMenuExit) {
            DestroyWindow(window);
            return 0;
        }
        if (!demo || (id != kMenuRunAll && (id < kMenuFirstStep || id >= kMenuFirstStep + kDemoStepCount))) break;
        // the plug-in's dialogs have no owner here: the window takes no input while a step runs
        EnableWindow(window, FALSE);
        for (size_t i = 0; i < kDemoStepCount; ++i) {
            if (id != kMenuRunAll && id != kMenuFirstStep + i) continue;
            Say(L"-- %s", kDemoSteps[i].name);
            kDemoSteps[i].run(*demo);
        }
        EnableWindow(window, TRUE);
        SetForegroundWindow(window);
        return 0;
    }
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(window, &ps);
        RECT rc;
        GetClientRect(window, &rc);
        InflateRect(&rc, -12, -12);
        SetBkMode(dc, TRANSPARENT);
        SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
        DrawTextW(dc,
                  L"Choose a dialog or the balloon tips from the Demo menu. Each runs on the sample library; "
                  L"what the plug-in answers is printed on the console.",
                  -1, &rc, DT_WORDBREAK);
        EndPaint(window, &ps);
        return 0;
    }
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// Runs the menu host until its window is closed.
void RunMenuHost(DemoContext& demo) {
    WNDCLASSW wc = {};
    wc.lpfnWndProc = &MenuHostProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    wc.lpszClassName = kMenuHostClass;
    RegisterClassW(&wc);
    HMENU steps = CreatePopupMenu();
    for (size_t i = 0; i < kDemoStepCount; ++i)
        AppendMenuW(steps, MF_STRING, kMenuFirstStep + i, kDemoSteps[i].name);
    AppendMenuW(steps, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(steps, MF_STRING, kMenuRunAll, L"Every step, in order");
    AppendMenuW(steps, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(steps, MF_STRING, kMenuExit, L"E&xit");
    HMENU bar = CreateMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(steps), L"&Demo");
    // the window owns the menu and destroys it with itself
    HWND window = CreateWindowExW(0, kMenuHostClass, L"kxhost: common resource plug-in", WS_OVERLAPPEDWINDOW,
                                  CW_USEDEFAULT, CW_USEDEFAULT, 560, 160, nullptr, bar, wc.hInstance, nullptr);
    if (!window) {
        DestroyMenu(bar);
        Say(L"kxhost: cannot create the window (error %lu)", GetLastError());
        return;
    }
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&demo));
    ShowWindow(window, SW_SHOW);
    Say(L"kxhost: choose a step from the Demo menu");
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    UnregisterClassW(kMenuHostClass, wc.hInstance);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    bool headless = false;
    std::wstring outDir = ExeDir() + L"demo";
    for (int i = 1; i < argc; ++i) {
        if (lstrcmpiW(argv[i], L"--headless") == 0) headless = true;
        else if (lstrcmpiW(argv[i], L"--out") == 0 && i + 1 < argc) outDir = argv[++i];
    }
    Say(L"kxhost: %s run, pictures to %s", headless ? L"headless" : L"interactive", outDir.c_str());

    // A host installs the skinning library HookWndU.DLL beside its executable, where the plug-in's
    // load by name finds it first. The build keeps it in bin\hookwnd instead, so that the test
    // programs beside kxhost.exe never load it by accident: the folder joins the search path right
    // after the executable's own. ComRcRes.bff lies beside the plug-in, as installed.
    const std::wstring skinDir = ExeDir() + L"hookwnd";
    SetDllDirectoryW(skinDir.c_str());
    Say(L"kxhost: skinning library from %s", skinDir.c_str());

    kxhost::SampleLibrary library = kxdemo::MakeDemoLibrary(outDir);
    for (const std::wstring& line : kxdemo::DescribeLibrary(*library.library)) Say(L"library: %s", line.c_str());

    std::wstring pluginPath = ExeDir() + L"KxComResPlgin.dll";
    HMODULE plugin = LoadLibraryW(pluginPath.c_str());
    if (!plugin) {
        Say(L"kxhost: cannot load %s (error %lu)", pluginPath.c_str(), GetLastError());
        return 1;
    }
    auto getClassObject = reinterpret_cast<GetClassObjectFn>(
        reinterpret_cast<void*>(GetProcAddress(plugin, "DllGetClassObject")));
    auto canUnloadNow =
        reinterpret_cast<CanUnloadNowFn>(reinterpret_cast<void*>(GetProcAddress(plugin, "DllCanUnloadNow")));
    Say(L"kxhost: loaded %s", pluginPath.c_str());

    IClassFactory* factory = nullptr;
    HRESULT hr = getClassObject(CLSID_KxComResPlginPluginObj, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    Say(L"DllGetClassObject -> 0x%08lx", static_cast<unsigned long>(hr));
    IKxCommonResource* res = nullptr;
    bool failed = false;
    if (SUCCEEDED(hr)) {
        hr = factory->CreateInstance(nullptr, IID_IKxCommonResource, reinterpret_cast<void**>(&res));
        factory->Release();
        Say(L"CreateInstance(IKxCommonResource) -> 0x%08lx", static_cast<unsigned long>(hr));
    }
    if (res) {
        Say(L"DllCanUnloadNow with the object alive -> 0x%08lx", static_cast<unsigned long>(canUnloadNow()));
        DemoContext demo = {res, headless, outDir, library.library.get(), 0};
        if (headless) {
            for (const DemoStep& step : kDemoSteps) {
                Say(L"-- %s", step.name);
                step.run(demo);
            }
        } else {
            RunMenuHost(demo);
        }
        res->Release();
        if (demo.failures) Say(L"kxhost: %d step(s) did not show what they should", demo.failures);
        failed = demo.failures != 0;
    }
    Say(L"DllCanUnloadNow -> 0x%08lx", static_cast<unsigned long>(canUnloadNow()));
    FreeLibrary(plugin);
    return res && !failed ? 0 : 1;
}
