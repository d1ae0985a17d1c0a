// The multiple-item tag dialog's controls as a table, for its model's tests and benchmark: combo
// boxes report no change of their own, as the platform's; warnings, selections and pictures go to
// a log.
#pragma once

#include "tags/multiple_tag_model.h"

#include <map>
#include <string>
#include <vector>

namespace kxtest {

// The change box beside a field.
inline int BoxOf(int field) {
    switch (field) {
        case KX_IDC_MTAG_ARTIST: return KX_IDC_MTAG_ARTIST_CHECK;
        case KX_IDC_MTAG_ARTIST2: return KX_IDC_MTAG_ARTIST2_CHECK;
        case KX_IDC_MTAG_ALBUM: return KX_IDC_MTAG_ALBUM_CHECK;
        case KX_IDC_MTAG_GENRE: return KX_IDC_MTAG_GENRE_CHECK;
        default: return KX_IDC_MTAG_YEAR_CHECK;
    }
}

class FakeMultiControls : public IMultipleTagControls {
public:
    struct Control {
        std::wstring text;
        bool enabled = true;
        bool checked = false;
        std::vector<std::wstring> list;
        int selected = -1;
        int pos = 0;
    };
    std::map<int, Control> c;
    std::string log;

    FakeMultiControls() {
        for (int id : {KX_IDC_MTAG_ARTIST_CHECK, KX_IDC_MTAG_ARTIST, KX_IDC_MTAG_ARTIST2_CHECK, KX_IDC_MTAG_ARTIST2,
                       KX_IDC_MTAG_ALBUM_CHECK, KX_IDC_MTAG_ALBUM, KX_IDC_MTAG_GENRE_CHECK, KX_IDC_MTAG_GENRE,
                       KX_IDC_MTAG_YEAR_CHECK, KX_IDC_MTAG_YEAR, KX_IDC_MTAG_RATING_CHECK, KX_IDC_MTAG_RATING,
                       KX_IDC_MTAG_ART_CHECK, KX_IDC_MTAG_BROWSE, KX_IDC_MTAG_REMOVE})
            c[id];
    }
    // The boxes that are ticked, as their ids.
    std::string Ticked() {
        std::string out;
        for (auto& e : c)
            if (e.second.checked) out += std::to_string(e.first) + " ";
        return out;
    }
    // "text" per field, "/d" when disabled; then the rating and the art controls (1 enabled).
    std::string Fields() {
        std::string out;
        for (int id :
             {KX_IDC_MTAG_ARTIST, KX_IDC_MTAG_ARTIST2, KX_IDC_MTAG_ALBUM, KX_IDC_MTAG_GENRE, KX_IDC_MTAG_YEAR}) {
            out += std::string(c[id].text.begin(), c[id].text.end()) + (c[id].enabled ? "" : "/d");
            out += c[id].enabled == c[BoxOf(id)].enabled ? " " : "!box ";  // a box must follow its field
        }
        out += std::to_string(c[KX_IDC_MTAG_RATING].pos) + (c[KX_IDC_MTAG_RATING].enabled ? " " : "/d ");
        for (int id : {KX_IDC_MTAG_ART_CHECK, KX_IDC_MTAG_BROWSE, KX_IDC_MTAG_REMOVE}) out += c[id].enabled ? "1" : "0";
        return out;
    }

    bool IsChecked(int id) override { return c[id].checked; }
    void SetChecked(int id, bool checked) override { c[id].checked = checked; }
    bool GetSelectedText(int id, std::wstring* text) override {
        if (c[id].selected < 0) return false;
        *text = c[id].list.at(static_cast<size_t>(c[id].selected));
        return true;
    }
    HWND DialogWindow() override { return nullptr; }
    bool Exists(int id) override { return c.count(id) != 0; }
    bool GetText(int id, std::wstring* text) override {
        if (!Exists(id)) return false;
        *text = c[id].text;
        return true;
    }
    void SetText(int id, const std::wstring& text) override { c[id].text = text; }
    void Enable(int id, bool enable) override { c[id].enabled = enable; }
    bool IsEnabled(int id) override { return Exists(id) && c[id].enabled; }
    void Focus(int) override {}
    int FocusedControl() override { return 0; }
    void SelectAllText(int id, bool) override { log += "select" + std::to_string(id) + " "; }
    void ResetList(int id) override { c[id].list.clear(); }
    void AddToList(int id, const std::wstring& text) override { c[id].list.push_back(text); }
    void InsertInList(int id, int index, const std::wstring& text) override {
        c[id].list.insert(c[id].list.begin() + index, text);
    }
    void SelectInList(int id, int index) override {
        c[id].selected = index;
        c[id].text = c[id].list.at(static_cast<size_t>(index));
    }
    void RemoveFromList(int id, int index) override { c[id].list.erase(c[id].list.begin() + index); }
    int GetSliderPos(int id) override { return c[id].pos; }
    void SetSliderPos(int id, int pos) override { c[id].pos = pos; }
    void ShowArtBytes(const BYTE*, ULONG size) override { log += "art" + std::to_string(size) + " "; }
    void ShowDefaultArt() override { log += "noart "; }
    bool ShowWarning(KxFieldWarning which, int id, const std::wstring&, const std::wstring&) override {
        log += (which == KxFieldWarning::Digits ? "digits" : "length") + std::to_string(id) + " ";
        return true;
    }
    void HideWarning(KxFieldWarning) override {}
    std::wstring ResourceString(UINT) override { return L"s %d"; }
    void ShowMessage(UINT, UINT) override {}
};

}  // namespace kxtest
