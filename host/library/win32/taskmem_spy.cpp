// CoTaskMem counting on Windows: an IMallocSpy, registered once for the life of the process, keeps
// the set of blocks allocated since the audit started. Blocks from before that are not counted,
// and freeing them is not an error. The spy also makes allocations fail on demand: PreAlloc and
// PreRealloc answering 0 for a non-zero request make the allocation give null.
#include "host/library/taskmem_audit.h"

#include <windows.h>
#include <objbase.h>

#include <unordered_set>

namespace kxhost {

namespace {

class TaskMemSpy final : public IMallocSpy {
public:
    TaskMemSpy() { InitializeCriticalSection(&lock_); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (!IsEqualIID(riid, IID_IUnknown) && !IsEqualIID(riid, IID_IMallocSpy)) return E_NOINTERFACE;
        *ppv = static_cast<IMallocSpy*>(this);
        return S_OK;
    }
    // A process-wide object that is never deleted.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T cbRequest) override {
        return cbRequest && NextAllocationFails() ? 0 : cbRequest;
    }
    void* STDMETHODCALLTYPE PostAlloc(void* pActual) override {
        if (pActual) {
            Locked lock(&lock_);
            blocks_.insert(pActual);
        }
        return pActual;
    }
    void* STDMETHODCALLTYPE PreFree(void* pRequest, BOOL) override {
        if (pRequest) {
            Locked lock(&lock_);
            blocks_.erase(pRequest);
        }
        return pRequest;
    }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* pRequest, SIZE_T cbRequest, void** ppNewRequest, BOOL) override {
        *ppNewRequest = pRequest;
        Locked lock(&lock_);
        reallocOld_ = pRequest;
        reallocSize_ = cbRequest;
        // A realloc to 0 bytes frees the block. Wine then returns without calling PostRealloc,
        // so the block leaves the count here.
        if (pRequest && cbRequest == 0) blocks_.erase(pRequest);
        if (cbRequest && NextAllocationFailsLocked()) return 0;
        return cbRequest;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* pActual, BOOL) override {
        Locked lock(&lock_);
        // success, or a realloc to 0 bytes that freed the old block
        if (pActual || reallocSize_ == 0) {
            if (reallocOld_) blocks_.erase(reallocOld_);
            if (pActual) blocks_.insert(pActual);
        }
        return pActual;
    }
    void* STDMETHODCALLTYPE PreGetSize(void* pRequest, BOOL) override { return pRequest; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T cbActual, BOOL) override { return cbActual; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* pRequest, BOOL) override { return pRequest; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int fActual) override { return fActual; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

    void Restart() {
        Locked lock(&lock_);
        blocks_.clear();
        calls_ = 0;
        failFrom_ = failUntil_ = 0;
    }
    long Live() {
        Locked lock(&lock_);
        return static_cast<long>(blocks_.size());
    }
    void Fail(int nth, int count) {
        Locked lock(&lock_);
        failFrom_ = count == 0 ? 0 : calls_ + (nth < 1 ? 1 : nth);
        failUntil_ = count < 0 ? -1 : failFrom_ + count - 1;
    }

private:
    struct Locked {
        explicit Locked(CRITICAL_SECTION* cs) : cs_(cs) { EnterCriticalSection(cs_); }
        ~Locked() { LeaveCriticalSection(cs_); }
        CRITICAL_SECTION* cs_;
    };
    bool NextAllocationFails() {
        Locked lock(&lock_);
        return NextAllocationFailsLocked();
    }
    bool NextAllocationFailsLocked() {
        long call = ++calls_;
        if (failFrom_ == 0 || call < failFrom_) return false;
        return failUntil_ < 0 || call <= failUntil_;
    }

    CRITICAL_SECTION lock_;
    std::unordered_set<void*> blocks_;
    void* reallocOld_ = nullptr;
    SIZE_T reallocSize_ = 0;
    long calls_ = 0;
    long failFrom_ = 0, failUntil_ = 0;
};

TaskMemSpy* Spy() {
    static TaskMemSpy* spy = new TaskMemSpy();  // outlives every allocation of the process
    return spy;
}

bool g_registered = false;

}  // namespace

bool StartTaskMemAudit() {
    if (!g_registered) {
        if (FAILED(CoRegisterMallocSpy(Spy()))) return false;
        g_registered = true;
    }
    Spy()->Restart();
    return true;
}

void StopTaskMemAudit() {
    // The spy stays registered: revoking it while spied blocks are alive is refused anyway.
    Spy()->Fail(0, 0);
}

long LiveTaskMemBlocks() { return Spy()->Live(); }
void FailTaskMemAllocations(int nth, int count) { Spy()->Fail(nth, count); }
void ResetTaskMemFailures() { Spy()->Fail(0, 0); }

}  // namespace kxhost
