// CoTaskMem* off Windows: plain heap blocks that are counted, and that can be told to fail so that
// tests reach every out-of-memory path.
#include "compat/wincompat.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> g_live{0};
std::atomic<long> g_calls{0};
std::atomic<long> g_failFrom{0};   // call number (1-based, absolute) of the first failure; 0 = none
std::atomic<long> g_failUntil{0};  // last failing call number; < 0 = no end

bool NextCallFails() {
    long call = ++g_calls;
    long from = g_failFrom.load();
    if (from == 0 || call < from) return false;
    long until = g_failUntil.load();
    return until < 0 || call <= until;
}

}  // namespace

void* CoTaskMemAlloc(size_t cb) {
    if (NextCallFails()) return nullptr;
    void* p = std::malloc(cb ? cb : 1);
    if (p) ++g_live;
    return p;
}

void* CoTaskMemRealloc(void* pv, size_t cb) {
    if (pv && cb == 0) {
        CoTaskMemFree(pv);
        return nullptr;
    }
    if (NextCallFails()) return nullptr;  // the old block stays valid, as on Windows
    void* p = std::realloc(pv, cb ? cb : 1);
    if (p && !pv) ++g_live;
    return p;
}

void CoTaskMemFree(void* pv) {
    if (!pv) return;
    --g_live;
    std::free(pv);
}

HRESULT PropVariantClear(PROPVARIANT* pv) {
    if (!pv) return S_OK;
    switch (pv->vt) {
        case VT_LPWSTR: CoTaskMemFree(pv->pwszVal); break;
        case VT_BLOB: CoTaskMemFree(pv->blob.pBlobData); break;
        default: break;
    }
    std::memset(pv, 0, sizeof(*pv));
    return S_OK;
}

const IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID IID_IClassFactory = {0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

namespace kxcompat {

long LiveTaskMemBlocks() { return g_live.load(); }
long TaskMemAllocationCalls() { return g_calls.load(); }

void FailTaskMemAllocations(int nth, int count) {
    long base = g_calls.load();
    long from = base + (nth < 1 ? 1 : nth);
    g_failUntil = count < 0 ? -1 : from + count - 1;
    g_failFrom = count == 0 ? 0 : from;
}

void ResetTaskMemFailures() {
    g_failFrom = 0;
    g_failUntil = 0;
}

}  // namespace kxcompat
