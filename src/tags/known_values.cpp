// The sorted lists of known values: ordering, sorting and finding or inserting an entry.
// Work arrays come from the task allocator, so a shortage of memory takes the paths that say
// what happens without it.
#include "tags/edit_tag_model.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>

namespace {

// Room for `count` string pointers, freed when it goes out of scope.
class PointerArray : public CKxTaskMem<LPCWSTR*> {
public:
    explicit PointerArray(size_t count)
        : CKxTaskMem<LPCWSTR*>(static_cast<LPCWSTR*>(CoTaskMemAlloc(count * sizeof(LPCWSTR)))) {}
    LPCWSTR* get() const { return Get(); }
};

int SlotIndex(const void* hit, LPCWSTR* base) {
    return static_cast<int>(static_cast<LPCWSTR const*>(hit) - base);
}

}  // namespace

int CEditTagModel::CompareStrings(const void* a, const void* b) {
    LPCWSTR left = a ? *static_cast<LPCWSTR const*>(a) : nullptr;
    LPCWSTR right = b ? *static_cast<LPCWSTR const*>(b) : nullptr;
    if (!left || !right) return (left ? 1 : 0) - (right ? 1 : 0);
    return std::wcscmp(left, right);
}

void CEditTagModel::SortStrings(KxStringList& list) {
    if (list.empty()) return;
    // The work array holds each entry's text and place: sorting compares the texts, and the
    // strings then move into their order, none of them copied (tens of thousands of names are
    // read for every dialog).
    struct Slot {
        LPCWSTR text;
        size_t index;
    };
    CKxTaskMem<Slot*> order(static_cast<Slot*>(CoTaskMemAlloc(list.size() * sizeof(Slot))));
    if (!order) return;
    Slot* const first = order.Get();
    Slot* const last = first + list.size();
    for (size_t i = 0; i < list.size(); ++i) first[i] = {list[i].c_str(), i};
    std::sort(first, last, [](const Slot& a, const Slot& b) { return CompareStrings(&a.text, &b.text) < 0; });
    KxStringList sorted;
    sorted.reserve(list.size());
    for (const Slot* slot = first; slot != last; ++slot) sorted.push_back(std::move(list[slot->index]));
    list.swap(sorted);
}

int CEditTagModel::FindOrInsertString(KxStringList& list, LPCWSTR value, BOOL* found) {
    BOOL ignored = FALSE;
    if (!found) found = &ignored;
    *found = FALSE;
    if (!value) value = L"";
    if (list.empty()) {
        list.emplace_back(value);
        return 0;
    }

    const size_t count = list.size();
    PointerArray slots(count + 1);
    if (!slots.get()) return -1;
    for (size_t i = 0; i < count; ++i) slots.get()[i] = list[i].c_str();

    const void* hit = std::bsearch(&value, slots.get(), count, sizeof(LPCWSTR), CompareStrings);
    if (hit) {
        *found = TRUE;
        return SlotIndex(hit, slots.get());
    }

    slots.get()[count] = value;
    std::qsort(slots.get(), count + 1, sizeof(LPCWSTR), CompareStrings);
    hit = std::bsearch(&value, slots.get(), count + 1, sizeof(LPCWSTR), CompareStrings);
    if (!hit) return -1;
    const int index = SlotIndex(hit, slots.get());
    list.insert(list.begin() + index, std::wstring(value));
    return index;
}

int CEditTagModel::FindOrInsertNumber(KxNumberList& list, DWORD value, BOOL* found) {
    BOOL ignored = FALSE;
    if (!found) found = &ignored;
    for (size_t i = 0; i < list.size(); ++i) {
        if (list[i] == value) {
            *found = TRUE;
            return static_cast<int>(i);
        }
        if (list[i] > value) {
            *found = FALSE;
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(i), value);
            return static_cast<int>(i);
        }
    }
    *found = FALSE;
    list.push_back(value);
    return static_cast<int>(list.size() - 1);
}
