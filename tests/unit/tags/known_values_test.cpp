// Ordering and insertion of the known-value lists that the tag dialogs' combo boxes offer.
#include "host/library/taskmem_audit.h"
#include "tags/edit_tag_model.h"

#include <gtest/gtest.h>

namespace {

typedef CEditTagModel M;

TEST(KnownValues, CompareAndSortByCodeUnitWithNullFirstAndDuplicatesKept) {
    LPCWSTR a = L"a", none = nullptr, empty = L"";
    EXPECT_LT(M::CompareStrings(&none, &empty), 0);
    EXPECT_GT(M::CompareStrings(&empty, &none), 0);
    EXPECT_EQ(0, M::CompareStrings(nullptr, &none));  // a null slot is a null string
    EXPECT_LT(M::CompareStrings(nullptr, &a), 0);

    KxStringList list{L"a", L"\u00e9t\u00e9", L"Zed", L"abc", L"", L"a", L"B"};
    M::SortStrings(list);
    EXPECT_EQ((KxStringList{L"", L"B", L"Zed", L"a", L"a", L"abc", L"\u00e9t\u00e9"}), list);

    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    list = {L"b", L"a"};
    kxhost::FailTaskMemAllocations(1);
    M::SortStrings(list);  // without memory the list is left alone
    kxhost::ResetTaskMemFailures();
    EXPECT_EQ((KxStringList{L"b", L"a"}), list);
}

TEST(KnownValues, FindOrInsertStringKeepsTheOrder) {
    KxStringList list;
    BOOL found = TRUE;
    struct Step { LPCWSTR value; int index; BOOL found; };
    for (Step s : {Step{L"b", 0, FALSE}, Step{L"abc", 0, FALSE}, Step{L"abd", 1, FALSE}, Step{L"b", 2, TRUE},
                   Step{L"Zulu", 0, FALSE}, Step{L"zz", 4, FALSE}}) {
        EXPECT_EQ(s.index, M::FindOrInsertString(list, s.value, &found)) << s.value;
        EXPECT_EQ(s.found, found) << s.value;
    }
    EXPECT_EQ(0, M::FindOrInsertString(list, nullptr, nullptr));  // null stands for the empty text
    EXPECT_EQ((KxStringList{L"", L"Zulu", L"abc", L"abd", L"b", L"zz"}), list);

    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    const long blocksBefore = kxhost::LiveTaskMemBlocks();
    list = {L"a", L"c"};
    found = TRUE;
    kxhost::FailTaskMemAllocations(1);
    EXPECT_EQ(-1, M::FindOrInsertString(list, L"b", &found));
    kxhost::ResetTaskMemFailures();
    EXPECT_FALSE(found);
    EXPECT_EQ((KxStringList{L"a", L"c"}), list);
    EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks());
}

TEST(KnownValues, FindOrInsertNumberKeepsTheArrayAscending) {
    KxNumberList years;
    for (DWORD y = 1990; y <= 2007; ++y) years.push_back(y);
    BOOL found = TRUE;
    EXPECT_EQ(18, M::FindOrInsertNumber(years, 2010, &found));
    EXPECT_FALSE(found);
    EXPECT_EQ(0, M::FindOrInsertNumber(years, 1985, &found));
    EXPECT_EQ(6, M::FindOrInsertNumber(years, 1995, &found));
    EXPECT_TRUE(found);
    EXPECT_EQ(20u, years.size());

    KxNumberList tracks;
    for (DWORD n : {30u, 1u, 40u, 2u, 31u}) M::FindOrInsertNumber(tracks, n, &found);
    EXPECT_EQ((KxNumberList{1, 2, 30, 31, 40}), tracks);
}

}  // namespace
