// Stepping the single-item editor through the host's view: save, then show the neighbour.
#include "tests/unit/tags/tag_model_fixture.h"

namespace tagtest {
namespace {

using Stepping = TagModelTest;
const WriteRecord::Kind S = WriteRecord::String, R = WriteRecord::Remove;

struct Flags {
    BOOL first = 7;
    BOOL last = 7;
};

TEST_F(Stepping, ForwardSavesThenShowsTheNextItem) {
    ScriptedEditor& e = StartedEditor({0});
    e.ControlsShowReadValues();
    SetText(e.controls.artist, L"Changed");
    Flags f;
    EXPECT_EQ(S_OK, e.MoveToItem(&f.first, &f.last, TRUE));
    EXPECT_FALSE(f.first);
    EXPECT_FALSE(f.last);
    EXPECT_EQ((Log{{0, 3, S}}), Writes());  // the shown item, before the move
    EXPECT_EQ(1, e.m_currentIndex);
    EXPECT_EQ(tracks[1], lib->ItemOf(e.m_currentItem));
    EXPECT_EQ(L"Two", std::wstring(e.m_tags.title));
    EXPECT_EQ(1, e.shown);
    EXPECT_EQ(L"Two", e.shownTitle);
    EXPECT_EQ(1, e.artCleared);
    EXPECT_EQ(std::wstring(L"C:\\Music\\two.mp3"), e.m_itemPath);
    EXPECT_TRUE(e.m_bArtRemoved);  // track 1 has no art

    // on to the last item, touching nothing: each save only removes the missing art
    lib->ClearWrites();
    for (BOOL last : {FALSE, TRUE}) {
        e.ControlsShowReadValues();
        EXPECT_EQ(S_OK, e.MoveToItem(&f.first, &f.last, TRUE));
        EXPECT_EQ(last, f.last);
        EXPECT_FALSE(f.first);
    }
    EXPECT_EQ(3, e.m_currentIndex);
    EXPECT_EQ(L"Four", e.shownTitle);
    EXPECT_EQ((Log{{1, 100, R}, {2, 100, R}}), Writes());

    // and back to the first
    lib->SetView(tracks, 1);
    BOOL isLast = FALSE, isFirst = FALSE;
    ScriptedEditor& back = StartedEditor({1}, &isLast, &isFirst);
    EXPECT_FALSE(isLast);
    EXPECT_FALSE(isFirst);
    EXPECT_EQ(S_OK, back.MoveToItem(&f.first, &f.last, FALSE));
    EXPECT_TRUE(f.first);
    EXPECT_FALSE(f.last);
    EXPECT_EQ(L"One", back.shownTitle);
}

TEST_F(Stepping, AStepPastEitherEndIsRefusedAfterTheSave) {
    ScriptedEditor& e = StartedEditor({0});
    e.ControlsShowReadValues();
    SetText(e.controls.year, L"1970");
    Flags f;
    EXPECT_EQ(E_NOTIMPL, e.MoveToItem(&f.first, &f.last, FALSE));
    EXPECT_TRUE(f.first);
    EXPECT_FALSE(f.last);
    EXPECT_EQ((Log{{0, 5, S}}), Writes());
    EXPECT_EQ(tracks[0], lib->ItemOf(e.m_currentItem));
    EXPECT_EQ(0, e.shown);
    EXPECT_EQ(L"One", std::wstring(e.m_tags.title));
    // the shown item keeps its place, so the next step goes to its neighbour
    EXPECT_EQ(0, e.m_currentIndex);
    EXPECT_EQ(S_OK, e.MoveToItem(&f.first, &f.last, TRUE));
    EXPECT_EQ(L"Two", e.shownTitle);

    lib->SetView(tracks, 3);
    lib->ClearWrites();
    BOOL isLast = FALSE, isFirst = FALSE;
    ScriptedEditor& end = StartedEditor({3}, &isLast, &isFirst);
    EXPECT_TRUE(isLast);
    EXPECT_FALSE(isFirst);
    end.ControlsShowReadValues();
    f = Flags();
    EXPECT_EQ(E_NOTIMPL, end.MoveToItem(&f.first, &f.last, TRUE));
    EXPECT_TRUE(f.last);
    EXPECT_FALSE(f.first);
    EXPECT_EQ((Log{{3, 100, R}}), Writes());  // saved all the same
    EXPECT_EQ(3, end.m_currentIndex);
    EXPECT_EQ(0, end.shown);
}

TEST_F(Stepping, AViewWhoseItemLookupFailsKeepsTheShownItem) {
    ScriptedEditor& e = StartedEditor({0});
    e.ControlsShowReadValues();
    lib->FailOperation(Op::CursorGetItemAt, E_UNEXPECTED, 1);
    Flags f;
    EXPECT_EQ(E_UNEXPECTED, e.MoveToItem(&f.first, &f.last, TRUE));
    EXPECT_TRUE(f.last);
    EXPECT_FALSE(f.first);
    EXPECT_EQ(tracks[0], lib->ItemOf(e.m_currentItem));
    EXPECT_EQ(1, e.m_currentIndex);  // stays where the step put it
    EXPECT_EQ(0, e.shown);
    EXPECT_EQ(0, e.artCleared);

    lib->FailOperation(Op::CursorGetItemAt, E_FAIL, 1);
    EXPECT_EQ(E_FAIL, e.MoveToItem(&f.first, &f.last, FALSE));
    EXPECT_TRUE(f.first);
    EXPECT_EQ(tracks[0], lib->ItemOf(e.m_currentItem));
}

TEST_F(Stepping, WithoutACountTheStepIsNotBounded) {
    lib->SetView(tracks, 2);
    ScriptedEditor& e = StartedEditor({2});
    e.ControlsShowReadValues();
    lib->FailOperation(Op::CursorGetCount, E_FAIL, 1);
    Flags f;
    EXPECT_EQ(S_OK, e.MoveToItem(&f.first, &f.last, TRUE));
    EXPECT_FALSE(f.last);  // not known without the count
    EXPECT_EQ(L"Four", e.shownTitle);
    // past the end the view's own refusal stops the step
    lib->FailOperation(Op::CursorGetCount, E_FAIL, 1);
    EXPECT_TRUE(FAILED(e.MoveToItem(&f.first, &f.last, TRUE)));
    EXPECT_TRUE(f.last);
    EXPECT_EQ(tracks[3], lib->ItemOf(e.m_currentItem));
}

TEST_F(Stepping, NoViewOrNoCurrentItem) {
    ScriptedEditor& e = Editor({0});
    Flags f;
    EXPECT_EQ(E_POINTER, e.MoveToItem(&f.first, &f.last, TRUE));  // not connected
    EXPECT_FALSE(f.first);
    EXPECT_FALSE(f.last);
    EXPECT_EQ(nullptr, e.GetSelectedItem(nullptr));

    lib->SetView(tracks, -1);
    ASSERT_EQ(S_OK, e.ConnectNamespace());
    EXPECT_EQ(E_FAIL, e.MoveToItem(&f.first, &f.last, TRUE));
    EXPECT_TRUE(f.first);
    EXPECT_TRUE(f.last);
    EXPECT_EQ(Log{}, Writes());

    lib->SetView(tracks, 2);
    ASSERT_EQ(S_OK, e.ConnectNamespace());  // a new connection sees the new view
    lib->FailOperation(Op::CursorGetCurrentItems, E_FAIL, 1);
    LONG index = 77;
    EXPECT_EQ(nullptr, e.GetSelectedItem(&index));
    EXPECT_EQ(77, index);
    KxPidl current = e.GetSelectedItem(&index);
    EXPECT_EQ(2, index);
    EXPECT_EQ(tracks[2], lib->ItemOf(current));
    CoTaskMemFree(current);
    EXPECT_EQ(S_OK, e.MoveToItem(nullptr, nullptr, FALSE));  // out flags may be null
    EXPECT_EQ(1, e.m_currentIndex);
}

}  // namespace
}  // namespace tagtest
