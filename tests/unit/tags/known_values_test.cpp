// Ordering and insertion of the known-value lists that the tag dialogs' combo boxes offer.
#include "host/library/taskmem_audit.h"
#include "tags/edit_tag_model.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

typedef CEditTagModel M;

KxStringList Sorted(KxStringList list) {
    M::SortStrings(list);
    return list;
}

TEST(KnownValues, CompareStringsOrdersByCodeUnitWithNullFirst) {
    LPCWSTR a = L"a", z = L"Z", none = nullptr, empty = L"";
    EXPECT_GT(M::CompareStrings(&a, &z), 0);  // lower-case after upper-case
    EXPECT_LT(M::CompareStrings(&z, &a), 0);
    EXPECT_LT(M::CompareStrings(&none, &empty), 0);
    EXPECT_GT(M::CompareStrings(&empty, &none), 0);
    EXPECT_EQ(0, M::CompareStrings(&none, &none));
    EXPECT_EQ(0, M::CompareStrings(nullptr, &none));  // a null slot is a null string
    EXPECT_LT(M::CompareStrings(nullptr, &a), 0);
    EXPECT_EQ(0, M::CompareStrings(&a, &a));
}

TEST(KnownValues, SortKeepsDuplicatesAndSortsCaseSensitively) {
    EXPECT_EQ((KxStringList{L"B", L"Zed", L"a", L"a", L"abc", L"\u00e9t\u00e9"}),
              Sorted({L"a", L"\u00e9t\u00e9", L"Zed", L"abc", L"a", L"B"}));
    EXPECT_EQ(KxStringList{}, Sorted({}));
    EXPECT_EQ((KxStringList{L"", L"x"}), Sorted({L"x", L""}));
}

TEST(KnownValues, SortWithoutMemoryLeavesTheListAlone) {
    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    KxStringList list{L"b", L"a"};
    kxhost::FailTaskMemAllocations(1);
    M::SortStrings(list);
    kxhost::ResetTaskMemFailures();
    EXPECT_EQ((KxStringList{L"b", L"a"}), list);
}

TEST(KnownValues, FindOrInsertStringFindsOrInsertsInOrder) {
    KxStringList list{L"abc", L"b"};
    BOOL found = TRUE;
    EXPECT_EQ(1, M::FindOrInsertString(list, L"abd", &found));
    EXPECT_FALSE(found);
    EXPECT_EQ((KxStringList{L"abc", L"abd", L"b"}), list);

    list = {L"abc", L"b"};
    EXPECT_EQ(1, M::FindOrInsertString(list, L"b", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ(2u, list.size());

    EXPECT_EQ(0, M::FindOrInsertString(list, L"Zulu", &found));  // capitals first
    EXPECT_FALSE(found);
    EXPECT_EQ(3, M::FindOrInsertString(list, L"zz", &found));  // at the end
    EXPECT_EQ((KxStringList{L"Zulu", L"abc", L"b", L"zz"}), list);
}

TEST(KnownValues, FindOrInsertStringOnAnEmptyListAppends) {
    KxStringList list;
    BOOL found = TRUE;
    EXPECT_EQ(0, M::FindOrInsertString(list, L"only", &found));
    EXPECT_FALSE(found);
    EXPECT_EQ(KxStringList{L"only"}, list);
    // no out flag, no value: still no crash; a null value stands for the empty text
    EXPECT_EQ(0, M::FindOrInsertString(list, nullptr, nullptr));
    EXPECT_EQ((KxStringList{L"", L"only"}), list);
}

TEST(KnownValues, FindOrInsertStringWithoutMemoryGivesMinusOne) {
    ASSERT_TRUE(kxhost::StartTaskMemAudit());
    const long blocksBefore = kxhost::LiveTaskMemBlocks();
    KxStringList list{L"a", L"c"};
    BOOL found = TRUE;
    kxhost::FailTaskMemAllocations(1);
    int index = M::FindOrInsertString(list, L"b", &found);
    kxhost::ResetTaskMemFailures();
    EXPECT_EQ(-1, index);
    EXPECT_FALSE(found);
    EXPECT_EQ((KxStringList{L"a", L"c"}), list);
    EXPECT_EQ(blocksBefore, kxhost::LiveTaskMemBlocks());
}

TEST(KnownValues, FindOrInsertNumberKeepsTheArrayAscending) {
    KxNumberList years;
    for (DWORD y = 1990; y <= 2007; ++y) years.push_back(y);
    BOOL found = TRUE;
    EXPECT_EQ(0, M::FindOrInsertNumber(years, 1985, &found));
    EXPECT_FALSE(found);
    EXPECT_EQ(1985u, years.front());
    EXPECT_EQ(19u, years.size());

    EXPECT_EQ(19, M::FindOrInsertNumber(years, 2010, &found));  // 18 before the 1985 went in
    EXPECT_FALSE(found);
    EXPECT_EQ(2010u, years.back());

    EXPECT_EQ(6, M::FindOrInsertNumber(years, 1995, &found));
    EXPECT_TRUE(found);
    EXPECT_EQ(20u, years.size());

    KxNumberList fresh;
    for (DWORD y = 1990; y <= 2007; ++y) fresh.push_back(y);
    EXPECT_EQ(18, M::FindOrInsertNumber(fresh, 2010, &found));
}

TEST(KnownValues, FindOrInsertNumberInsertsBetweenAndOnEmpty) {
    KxNumberList tracks{1, 2, 30, 40};
    BOOL found = TRUE;
    EXPECT_EQ(3, M::FindOrInsertNumber(tracks, 31, &found));
    EXPECT_FALSE(found);
    EXPECT_EQ((KxNumberList{1, 2, 30, 31, 40}), tracks);

    KxNumberList empty;
    EXPECT_EQ(0, M::FindOrInsertNumber(empty, 7, &found));
    EXPECT_FALSE(found);
    EXPECT_EQ(KxNumberList{7}, empty);
}

}  // namespace
