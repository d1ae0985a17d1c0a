#include "library/pidl.h"

#include "base/owners.h"

#include <cstring>

namespace {

// Records are packed and may start at odd addresses: read their length bytewise.
USHORT RecordLength(const BYTE* p) {
    USHORT cb;
    std::memcpy(&cb, p, sizeof(cb));
    return cb;
}

}  // namespace

UINT KxPidlSize(KxPcPidl pidl) {
    if (!pidl) return 0;
    const BYTE* p = reinterpret_cast<const BYTE*>(pidl);
    UINT size = 0;
    for (USHORT cb = RecordLength(p); cb != 0; cb = RecordLength(p + size)) size += cb;
    return size + sizeof(USHORT);
}

UINT KxPidlRecordCount(KxPcPidl pidl) {
    if (!pidl) return 0;
    const BYTE* p = reinterpret_cast<const BYTE*>(pidl);
    UINT count = 0;
    for (USHORT cb = RecordLength(p); cb != 0; cb = RecordLength(p)) {
        p += cb;
        ++count;
    }
    return count;
}

KxPidl KxPidlCopy(KxPcPidl pidl) {
    if (!pidl) return nullptr;
    const UINT size = KxPidlSize(pidl);
    void* copy = CoTaskMemAlloc(size);
    if (!copy) return nullptr;
    std::memcpy(copy, pidl, size);
    return static_cast<KxPidl>(copy);
}

bool KxPidlEqual(KxPcPidl a, KxPcPidl b) {
    if (!a || !b) return a == b;
    const UINT size = KxPidlSize(a);
    if (size != KxPidlSize(b)) return false;
    return std::memcmp(a, b, size - sizeof(USHORT)) == 0;
}

void KxPidlFree(KxPidl pidl) { KxTaskMemFree(pidl); }
