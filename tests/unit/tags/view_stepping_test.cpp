// Stepping the single-item editor through the host's view: save, then show the neighbour.
#include "tests/unit/tags/tag_model_fixture.h"

namespace tagtest {
namespace {

using Stepping = TagModelTest;
const WriteRecord::Kind S = WriteRecord::String, R = WriteRecord::Remove;

TEST_F(Stepping, EachStepSavesThenShowsTheNeighbour) {
    ScriptedEditor& e = Untouched(0);
    SetText(e.controls.artist, L"Changed");
    BOOL first = 7, last = 7;
    for (BOOL atEnd : {FALSE, FALSE, TRUE}) {
        EXPECT_EQ(S_OK, e.MoveToItem(&first, &last, TRUE));
        EXPECT_EQ(atEnd, last);
        EXPECT_FALSE(first);
        e.ControlsShowReadValues();  // touching nothing: a save only removes missing art
    }
    EXPECT_EQ(3, e.m_currentIndex);
    EXPECT_EQ(3, e.shown);
    EXPECT_EQ(3, e.artCleared);
    EXPECT_EQ(L"Four", e.shownTitle);
    EXPECT_EQ((Log{{0, 3, S}, {1, 100, R}, {2, 100, R}}), Writes());  // each item before its step

    lib->SetView(tracks, 1);
    BOOL isLast = FALSE, isFirst = FALSE;
    ScriptedEditor& back = StartedEditor({1}, &isLast, &isFirst);
    EXPECT_FALSE(isLast || isFirst);
    EXPECT_EQ(S_OK, back.MoveToItem(&first, &last, FALSE));
    EXPECT_TRUE(first);
    EXPECT_FALSE(last);
    EXPECT_EQ(L"One", back.shownTitle);
}

TEST_F(Stepping, AStepPastEitherEndIsRefusedAfterTheSave) {
    ScriptedEditor& e = Untouched(0);
    SetText(e.controls.year, L"1970");
    BOOL first = 7, last = 7;
    EXPECT_EQ(E_NOTIMPL, e.MoveToItem(&first, &last, FALSE));
    EXPECT_TRUE(first);
    EXPECT_FALSE(last);
    EXPECT_EQ((Log{{0, 5, S}}), Writes());
    EXPECT_EQ(0, e.shown);
    // the shown item keeps its place, so the next step goes to its neighbour
    EXPECT_EQ(S_OK, e.MoveToItem(&first, &last, TRUE));
    EXPECT_EQ(L"Two", e.shownTitle);

    lib->SetView(tracks, 3);
    ScriptedEditor& end = Untouched(3);
    EXPECT_EQ(E_NOTIMPL, end.MoveToItem(&first, &last, TRUE));
    EXPECT_TRUE(last);
    EXPECT_EQ(3, end.m_currentIndex);
    EXPECT_EQ(0, end.shown);
}

TEST_F(Stepping, AViewWhoseItemLookupFailsKeepsTheShownItem) {
    ScriptedEditor& e = Untouched(0);
    BOOL first = 7, last = 7;
    for (BOOL forward : {TRUE, FALSE}) {
        lib->FailOperation(Op::CursorGetItemAt, forward ? E_UNEXPECTED : E_FAIL, 1);
        EXPECT_EQ(forward ? E_UNEXPECTED : E_FAIL, e.MoveToItem(&first, &last, forward));
        EXPECT_EQ(forward, last);
        EXPECT_EQ(!forward, first);
        EXPECT_EQ(tracks[0], lib->ItemOf(e.m_currentItem));
        EXPECT_EQ(forward ? 1 : 0, e.m_currentIndex);  // stays where the step put it
    }
    EXPECT_EQ(0, e.artCleared);
}

TEST_F(Stepping, WithoutACountTheStepIsNotBounded) {
    lib->SetView(tracks, 2);
    lib->FailOperation(Op::CursorGetCount, E_FAIL, 1, -1);
    BOOL first = FALSE, last = FALSE;
    ScriptedEditor& e = StartedEditor({2}, &last, &first);
    EXPECT_FALSE(first || last);  // left alone
    EXPECT_EQ(nullptr, e.m_currentItem);  // found when first needed
    e.ControlsShowReadValues();
    EXPECT_EQ(S_OK, e.MoveToItem(&first, &last, TRUE));
    EXPECT_FALSE(last);  // not known without the count
    EXPECT_EQ(L"Four", e.shownTitle);
    // past the end the view's own refusal stops the step
    EXPECT_TRUE(FAILED(e.MoveToItem(&first, &last, TRUE)));
    EXPECT_TRUE(last);
    EXPECT_EQ(tracks[3], lib->ItemOf(e.m_currentItem));
}

TEST_F(Stepping, NoViewOrNoCurrentItem) {
    ScriptedEditor& e = Editor({0});
    BOOL first = 7, last = 7;
    EXPECT_EQ(E_POINTER, e.MoveToItem(&first, &last, TRUE));  // not connected
    EXPECT_FALSE(first || last);

    lib->SetView(tracks, -1);
    ASSERT_EQ(S_OK, e.ConnectNamespace());
    EXPECT_EQ(E_FAIL, e.MoveToItem(&first, &last, TRUE));
    EXPECT_TRUE(first && last);
    EXPECT_EQ(Log{}, Writes());

    lib->SetView(tracks, 2);
    ASSERT_EQ(S_OK, e.ConnectNamespace());  // a new connection sees the new view
    lib->FailOperation(Op::CursorGetCurrentItems, E_FAIL, 1);
    LONG index = 77;
    EXPECT_EQ(nullptr, e.GetSelectedItem(&index));
    EXPECT_EQ(77, index);
    EXPECT_EQ(S_OK, e.MoveToItem(nullptr, nullptr, FALSE));  // out flags may be null
    EXPECT_EQ(1, e.m_currentIndex);
}

}  // namespace
}  // namespace tagtest
