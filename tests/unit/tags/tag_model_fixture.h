// A tag editor without a window over the in-memory library: what the dialogs' controls would
// hand in is scripted, what the model shows is recorded.
#pragma once

#include "host/library/in_memory_library.h"
#include "host/library/taskmem_audit.h"
#include "tags/edit_tag_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tagtest {

using kxhost::InMemoryLibrary;
using kxhost::ItemId;
using kxhost::ItemKind;
using kxhost::Op;
using kxhost::WriteRecord;

LPWSTR Dup(LPCWSTR text);
BYTE* DupBytes(const std::vector<BYTE>& bytes);
void SetText(LPWSTR& slot, LPCWSTR text);  // frees the old text

class ScriptedEditor : public CEditTagModel {
public:
    using CEditTagModel::CEditTagModel;
    ~ScriptedEditor() override { FreeTrackTagValues(&controls); }

    // What GetTagsFromControls and GetChangedTags hand out (a deep copy each time).
    _tagTrackTagValues controls = {};
    // The values as read, every control enabled, no art: a dialog the user didn't touch.
    void ControlsShowReadValues();

    void GetTagsFromControls(_tagTrackTagValues* record) override;
    void GetChangedTags(_tagTrackTagValues* record) override { GetTagsFromControls(record); }
    void SetTagsToControls(const _tagTrackTagValues* record) override {
        ++shown;
        shownTitle = record && record->title ? record->title : L"";
    }
    void ClearShownArt() override { ++artCleared; }

    int shown = 0;  // SetTagsToControls calls
    std::wstring shownTitle;
    int artCleared = 0;
};

// One write of the log: (index in tracks, key number, operation); art is key number 100.
struct Written {
    int track;
    DWORD pid;
    WriteRecord::Kind via;
    bool operator==(const Written& o) const { return track == o.track && pid == o.pid && via == o.via; }
};
inline void PrintTo(const Written& w, std::ostream* os) {
    *os << "{track " << w.track << ", key " << w.pid << ", via " << w.via << "}";
}
typedef std::vector<Written> Log;

// The sample: an album of four tracks in the host's view, known artists (one name twice), albums
// and genres. Track 0 carries all ten tags; the others fewer.
class TagModelTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // An editor for the given tracks (indices into tracks, -1 for a null item), over the root.
    ScriptedEditor& Editor(std::vector<int> which);
    // An editor that has run the reading start of a dialog.
    ScriptedEditor& StartedEditor(std::vector<int> which, BOOL* isLast = nullptr, BOOL* isFirst = nullptr);
    // A started editor for one track whose controls show the values as read.
    ScriptedEditor& Untouched(int track);
    Log Writes() const;

    std::shared_ptr<InMemoryLibrary> lib;
    std::vector<ItemId> tracks;
    std::vector<KxPidl> pidls;  // one per track, the test's own
    IKxContentFolder* root = nullptr;
    IKxContentSite* site = nullptr;
    std::unique_ptr<ScriptedEditor> editor;
    std::vector<KxPcPidl> given;  // the items handed to the editor
    long blocksBefore = 0;
    long ownReferences = 0;  // the test's own references to the root and the site
};

}  // namespace tagtest
