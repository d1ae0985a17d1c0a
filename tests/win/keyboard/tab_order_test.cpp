// Every dialog without a mouse: each one is opened through KxComResPlgin.dll and its Tab order,
// walked the way the dialog manager walks it, is held against its template in ComRcRes.dll: the
// controls with WS_TABSTOP that are visible and enabled, in template order; every edit field and
// combo box right after a static with a text (the label a screen reader names it by); and the
// default button, the one Return presses.
#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "host/library/sample_library.h"
#include "kx/IKxCommonResource.h"
#include "resources/dialogs/add_musics_ids.h"
#include "resources/dialogs/add_to_playlist_ids.h"
#include "resources/dialogs/edit_single_tags_ids.h"
#include "resources/dialogs/edit_multiple_tags_ids.h"
#include "resources/dialogs/image_property_ids.h"
#include "resources/dialogs/message_box_ids.h"
#include "resources/dialogs/new_name_ids.h"
#include "resources/dialogs/template_ids.h"
#include "resources/dialogs/video_property_ids.h"
#include "tests/win/common/dialog_driver.h"
#include "tests/win/common/plugin_loader.h"

namespace kxtest {
namespace {

// One control of a dialog template, as the template lists it.
struct TemplateItem {
    int id;
    std::wstring cls;  // "Button", "Edit", "Static", "ComboBox"... or the class name
    std::wstring title;
    DWORD style;
};

// Reads past a string-or-ordinal field into `out`: the string, or for a class ordinal
// (`isClass`) the name of the predefined class.
const WORD* ReadSzOrOrd(const WORD* p, std::wstring* out, bool isClass = false) {
    if (*p == 0x0000) return p + 1;
    if (*p == 0xFFFF) {
        static const wchar_t* const kClasses[] = {L"Button", L"Edit", L"Static", L"ListBox", L"ScrollBar", L"ComboBox"};
        if (out && isClass && p[1] >= 0x80 && p[1] <= 0x85) *out = kClasses[p[1] - 0x80];
        return p + 2;
    }
    std::wstring s(reinterpret_cast<const wchar_t*>(p));
    if (out) *out = s;
    return p + s.size() + 1;
}

// The controls of template `id` in `module`, in template order (extended templates, as ours are).
std::vector<TemplateItem> ReadTemplate(HMODULE module, int id) {
    std::vector<TemplateItem> items;
    HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), reinterpret_cast<LPCWSTR>(RT_DIALOG));
    if (!found) return items;
    const BYTE* base = static_cast<const BYTE*>(LockResource(LoadResource(module, found)));
    const WORD* w = reinterpret_cast<const WORD*>(base);
    if (!base || w[0] != 1 || w[1] != 0xFFFF) return items;  // not DLGTEMPLATEEX
    const DWORD style = *reinterpret_cast<const DWORD*>(base + 12);
    const WORD count = *reinterpret_cast<const WORD*>(base + 16);
    const WORD* p = reinterpret_cast<const WORD*>(base + 26);
    p = ReadSzOrOrd(p, nullptr);  // menu
    p = ReadSzOrOrd(p, nullptr);  // class
    p = ReadSzOrOrd(p, nullptr);  // title
    if (style & (DS_SETFONT | DS_SHELLFONT)) p = ReadSzOrOrd(p + 3, nullptr);  // size, weight, italic+charset, face
    for (WORD i = 0; i < count; ++i) {
        const BYTE* item = reinterpret_cast<const BYTE*>((reinterpret_cast<UINT_PTR>(p) + 3) & ~UINT_PTR(3));
        TemplateItem t;
        t.style = *reinterpret_cast<const DWORD*>(item + 8);
        t.id = *reinterpret_cast<const int*>(item + 20);
        p = ReadSzOrOrd(reinterpret_cast<const WORD*>(item + 24), &t.cls, true);
        p = ReadSzOrOrd(p, &t.title);
        p = reinterpret_cast<const WORD*>(reinterpret_cast<const BYTE*>(p + 1) + *p);  // creation data
        items.push_back(t);
    }
    return items;
}

std::wstring Text(HWND control) {
    wchar_t b[256] = {};
    GetWindowTextW(control, b, 256);
    return b;
}

// What is wrong with the dialog's keyboard use, one line each ("" when nothing).
// `made`: a control the dialog makes itself, as {its id, the template control it follows}.
std::string CheckKeyboard(HWND dlg, const std::vector<TemplateItem>& items, int defaultButton,
                          std::pair<int, int> made) {
    std::string wrong;
    auto name = [](int id) { return std::to_string(id); };

    std::vector<int> expected;
    for (const TemplateItem& t : items) {
        HWND control = GetDlgItem(dlg, t.id);
        if ((t.style & WS_TABSTOP) && control && IsWindowVisible(control) && IsWindowEnabled(control))
            expected.push_back(t.id);
        if (made.first && t.id == made.second) expected.push_back(made.first);
    }
    std::vector<int> walked;
    HWND first = GetNextDlgTabItem(dlg, nullptr, FALSE);
    for (HWND at = first; at && walked.size() < 64;) {
        walked.push_back(GetDlgCtrlID(at));
        at = GetNextDlgTabItem(dlg, at, FALSE);
        if (at == first) break;
    }
    if (walked != expected) {
        std::string a, b;
        for (int id : walked) a += name(id) + " ";
        for (int id : expected) b += name(id) + " ";
        wrong += "Tab walks " + a + "where the template has " + b + "\n";
    }

    for (size_t i = 0; i < items.size(); ++i) {
        if (items[i].cls != L"Edit" && items[i].cls != L"ComboBox") continue;
        // the label's text as shown: the window's when the dialog can name it, else the template's
        bool labelled = false;
        // A field of the several-items dialog is named by its change box just before it: the box
        // says which tag the field holds and whether it is written.
        const bool changeBox = i > 0 && items[i - 1].cls == L"Button" &&
                               (items[i - 1].style & 0x0F) == BS_AUTOCHECKBOX;
        if (i > 0 && (items[i - 1].cls == L"Static" || changeBox)) {
            HWND label = items[i - 1].id != -1 ? GetDlgItem(dlg, items[i - 1].id) : nullptr;
            labelled = !(label ? Text(label) : items[i - 1].title).empty();
        }
        if (!labelled) wrong += "field " + name(items[i].id) + " has no label before it\n";
    }

    const LRESULT def = SendMessageW(dlg, DM_GETDEFID, 0, 0);
    const int defId = HIWORD(def) == DC_HASDEFID ? LOWORD(def) : 0;
    if (defId != defaultButton) wrong += "default button " + name(defId) + ", not " + name(defaultButton) + "\n";
    return wrong;
}

struct DialogRow {
    std::string name;
    int templateId;
    int defaultButton;
    int cancel;  // closes the dialog after the check
    std::function<HRESULT(IKxCommonResource*, struct Host&)> open;
    std::pair<int, int> made = {0, 0};  // a control the dialog makes: {id, the template control it follows}
};

struct Host {
    kxhost::SampleLibrary sample;
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    KxPidl track = nullptr, track2 = nullptr, picture = nullptr, video = nullptr;
};

std::vector<DialogRow> Dialogs() {
    return {
        {"message box", KX_IDD_MESSAGEBOX, KX_IDC_MSGBOX_FIRST, 0,
         [](IKxCommonResource* r, Host&) { return r->ShowMessageBox(nullptr, L"Text", L"Caption", MB_YESNO); }},
        // The box reads Return itself: it always arrives as the first button's command, and the box
        // answers by where the focus is (on the second button with MB_DEFBUTTON2).
        {"message box, second default", KX_IDD_MESSAGEBOX, KX_IDC_MSGBOX_FIRST, 0,
         [](IKxCommonResource* r, Host&) {
             return r->ShowMessageBox(nullptr, L"Text", L"Caption", MB_YESNO | MB_DEFBUTTON2);
         }},
        {"name", KX_IDD_NEWNAME, KX_IDC_NAME_OK, KX_IDC_NAME_CANCEL, [](IKxCommonResource* r, Host&) {
             LPWSTR name = nullptr;
             HRESULT hr = r->ShowNameDialog(nullptr, 1, 1, L"Name", &name);
             CoTaskMemFree(name);
             return hr;
         }},
        {"add to playlist", KX_IDD_ADDTOPLAYLIST, KX_IDC_ADDTO_OK, KX_IDC_ADDTO_CANCEL,
         [](IKxCommonResource* r, Host& h) {
             KxPidl item = nullptr;
             LPWSTR name = nullptr;
             HRESULT hr = r->ShowAddToPlaylistDialog(nullptr, h.root, L"New", &item, &name);
             CoTaskMemFree(item);
             CoTaskMemFree(name);
             return hr;
         }},
        {"add music", KX_IDD_ADDMUSICS, KX_IDC_ADDMUSICS_OK, KX_IDC_ADDMUSICS_CANCEL,
         [](IKxCommonResource* r, Host& h) {
             INT count = 0;
             KxPidl* items = nullptr;
             return r->ShowAddMusicsDialog(0, h.site, h.root, L"Music", nullptr, &count, &items);
         }, {KX_IDC_ADDMUSICS_BAR, KX_IDC_ADDMUSICS_BARPLACE}},
        {"image properties", KX_IDD_IMAGEPROPERTY, KX_IDC_IMAGEPROP_CLOSE, KX_IDC_IMAGEPROP_CLOSE,
         [](IKxCommonResource* r, Host& h) { return r->ShowImagePropertyDialog(nullptr, h.site, h.root, h.picture); }},
        {"video properties", KX_IDD_VIDEOPROPERTY, KX_IDC_VIDEOPROP_CLOSE, KX_IDC_VIDEOPROP_CLOSE,
         [](IKxCommonResource* r, Host& h) { return r->ShowVideoPropertyDialog(nullptr, h.site, h.root, h.video); }},
        {"tags of one item", KX_IDD_EDITSINGLETAGS, IDOK, KX_IDC_TAG_CLOSE, [](IKxCommonResource* r, Host& h) {
             const KxPcPidl items[] = {h.track};
             return r->ShowEditTagDialog(nullptr, h.site, h.root, 1, items);
         }},
        {"tags of several items", KX_IDD_EDITMULTIPLETAGS, IDOK, KX_IDC_MTAG_CLOSE, [](IKxCommonResource* r, Host& h) {
             const KxPcPidl items[] = {h.track, h.track2};
             return r->ShowEditTagDialog(nullptr, h.site, h.root, 2, items);
         }},
    };
}

TEST(Keyboard, EveryDialogsTabOrderLabelsAndDefaultButtonFollowItsTemplate) {
    WatchTaskMemory();
    PluginLibrary plugin;
    IKxCommonResource* res = nullptr;
    ASSERT_EQ(S_OK, plugin.Create(&res));
    HMODULE resources = LoadLibraryExW((ExeDir() + L"ComRcRes.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_TRUE(resources);
    Host h;
    h.sample = kxhost::BuildSampleLibrary(kxhost::DefaultSampleOptions());
    kxhost::InMemoryLibrary& lib = *h.sample.library;
    ASSERT_EQ(S_OK, lib.GetRootFolder(&h.root));
    ASSERT_EQ(S_OK, lib.CreateSite(&h.site));
    h.track = lib.NewPidl(h.sample.tracks[0]);
    h.track2 = lib.NewPidl(h.sample.tracks[1]);
    h.picture = lib.NewPidl(h.sample.pictures[0]);
    h.video = lib.NewPidl(h.sample.videos[0]);

    for (const DialogRow& row : Dialogs()) {
        const std::vector<TemplateItem> items = ReadTemplate(resources, row.templateId);
        EXPECT_FALSE(items.empty()) << row.name;
        if (row.name == "image properties") lib.SetView({h.sample.pictures[0], h.sample.pictures[1]}, 0);
        else if (row.name == "video properties") lib.SetView({h.sample.videos[0], h.sample.videos[1]}, 0);
        else lib.SetView({h.sample.tracks[0], h.sample.tracks[1]}, 0);
        std::string wrong = "not shown";
        {
            DialogDriver driver;
            driver.Inspect([&](HWND dlg) { wrong = CheckKeyboard(dlg, items, row.defaultButton, row.made); });
            if (row.cancel) driver.Click(row.cancel);
            else driver.Close();
            row.open(res, h);
        }
        EXPECT_EQ("", wrong) << row.name;
    }

    for (KxPidl p : {h.track, h.track2, h.picture, h.video}) CoTaskMemFree(p);
    h.site->Release();
    h.root->Release();
    FreeLibrary(resources);
    res->Release();
    EXPECT_EQ(0, lib.OutstandingReferences()) << lib.DescribeLiveObjects();
}

}  // namespace
}  // namespace kxtest
