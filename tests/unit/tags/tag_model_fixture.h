// A tag editor without a window over the in-memory library: what the dialogs' controls would
// hand in is scripted, what the model shows is recorded.
#pragma once

#include "host/library/in_memory_library.h"
#include "host/library/taskmem_audit.h"
#include "tags/edit_tag_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tagtest {

using kxhost::InMemoryLibrary;
using kxhost::ItemId;
using kxhost::ItemKind;
using kxhost::Op;
using kxhost::PropertyValue;
using kxhost::WriteRecord;

LPWSTR Dup(LPCWSTR text);
BYTE* DupBytes(const std::vector<BYTE>& bytes);

// A deep copy of a record (strings and art from CoTaskMemAlloc).
void CopyRecord(const _tagTrackTagValues& from, _tagTrackTagValues* to);

struct Written;

class ScriptedEditor : public CEditTagModel {
public:
    using CEditTagModel::CEditTagModel;
    ~ScriptedEditor() override;

    // What GetTagsFromControls and GetChangedTags hand out (a deep copy each time).
    _tagTrackTagValues controls = {};
    // Sets `controls` to the values as read, every control enabled: a dialog the user didn't touch.
    void ControlsShowReadValues();

    void GetTagsFromControls(_tagTrackTagValues* record) override;
    void GetChangedTags(_tagTrackTagValues* record) override;
    void SetTagsToControls(const _tagTrackTagValues* record) override;
    void ClearShownArt() override { ++artCleared; }

    int shown = 0;  // SetTagsToControls calls
    std::wstring shownTitle;  // the title of the last record shown
    int artCleared = 0;
};

// The sample: an album of four tracks in the host's view, known artists (one name twice), albums
// and genres. Track 0 carries all ten tags; the others fewer.
class TagModelTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // An editor for the given tracks (indices into tracks), over the root folder.
    ScriptedEditor& Editor(std::vector<int> which);
    // An editor that has run the reading start of a dialog.
    ScriptedEditor& StartedEditor(std::vector<int> which, BOOL* isLast = nullptr, BOOL* isFirst = nullptr);

    // The write log, as (index in tracks, key number, operation); art is key number 100.
    std::vector<struct Written> Writes() const;
    int TrackIndex(ItemId id) const;

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
namespace tagtest {
// One write of the log in a form that reads well in a failed expectation.
struct Written {
    int track;
    DWORD pid;  // key number; art is 100
    WriteRecord::Kind via;
    bool operator==(const Written& o) const { return track == o.track && pid == o.pid && via == o.via; }
};
void PrintTo(const Written& w, std::ostream* os);

}  // namespace tagtest
