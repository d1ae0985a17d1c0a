// Owners of what the code gets for itself: an interface pointer it asked for, a block or string
// from the task allocator, a loaded module. Each owner gives back what it holds when it goes, so
// no exit needs clean-up lines and nothing is given back twice. Pointers that a caller passes in
// are not ours: they stay raw and are never released. The GDI owners (ui/gdi_handles.h) are built
// on CKxUnique below.
#pragma once

#include "kx/KxPlatform.h"
#ifndef _WIN32
#include "compat/winmodule.h"
#endif

#include <cstring>
#include <utility>

// Holds one value of type T and gives it back with Close(value) unless it is the empty value.
// Put() empties the owner and hands out the place of its value, for an out parameter; Detach()
// hands the value on without giving it back.
template <typename T, void (*Close)(T)>
class CKxUnique {
public:
    CKxUnique() : m_value() {}
    explicit CKxUnique(T value) : m_value(value) {}
    ~CKxUnique() { Reset(); }
    CKxUnique(const CKxUnique&) = delete;
    CKxUnique& operator=(const CKxUnique&) = delete;
    CKxUnique(CKxUnique&& other) noexcept : m_value(other.Detach()) {}
    CKxUnique& operator=(CKxUnique&& other) noexcept {
        if (this != &other) Reset(other.Detach());
        return *this;
    }

    T Get() const { return m_value; }
    explicit operator bool() const { return m_value != T(); }
    // Gives back the held value (emptied first, so a Close that comes back here finds nothing).
    void Reset(T value = T()) {
        T old = m_value;
        m_value = value;
        if (old != T()) Close(old);
    }
    T Detach() {
        T value = m_value;
        m_value = T();
        return value;
    }
    T* Put() {
        Reset();
        return &m_value;
    }

private:
    T m_value;
};

// ---- blocks and strings of the task allocator --------------------------------------------------------

template <typename P>
void KxTaskMemFree(P block) {
    CoTaskMemFree(const_cast<void*>(static_cast<const void*>(block)));
}

// A block of the task allocator by its pointer type: CKxTaskMem<BYTE*>, CKxTaskMem<KxPidl>.
template <typename P>
using CKxTaskMem = CKxUnique<P, &KxTaskMemFree<P>>;
// A string of the task allocator.
typedef CKxTaskMem<LPWSTR> CKxTaskMemString;

// A task-allocator copy of the `count` characters at `text` with a terminating zero, for the
// other side of an interface or a record that frees with CoTaskMemFree; null when the block
// cannot be had.
inline LPWSTR KxTaskMemCopy(const WCHAR* text, size_t count) {
    auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc((count + 1) * sizeof(WCHAR)));
    if (!copy) return nullptr;
    if (count) std::memcpy(copy, text, count * sizeof(WCHAR));
    copy[count] = 0;
    return copy;
}
// The same for a terminated string; null for a null text.
inline LPWSTR KxTaskMemCopy(const WCHAR* text) {
    if (!text) return nullptr;
    size_t count = 0;
    while (text[count]) ++count;
    return KxTaskMemCopy(text, count);
}

// ---- interface pointers ------------------------------------------------------------------------------

// Holds one reference on an interface. Put() and PutVoid() empty the owner and hand out the place
// for the out parameter of QueryInterface-style calls: an object handed out with a failure is
// then still released.
template <typename I>
class CKxComPtr {
public:
    CKxComPtr() : m_p(nullptr) {}
    ~CKxComPtr() { Reset(); }
    CKxComPtr(const CKxComPtr&) = delete;
    CKxComPtr& operator=(const CKxComPtr&) = delete;
    CKxComPtr(CKxComPtr&& other) noexcept : m_p(other.Detach()) {}
    CKxComPtr& operator=(CKxComPtr&& other) noexcept {
        if (this != &other) Attach(other.Detach());
        return *this;
    }

    I* Get() const { return m_p; }
    I* operator->() const { return m_p; }
    explicit operator bool() const { return m_p != nullptr; }
    // Takes over a reference the caller holds.
    void Attach(I* p) {
        I* old = m_p;
        m_p = p;
        if (old) old->Release();
    }
    void Reset() { Attach(nullptr); }
    I* Detach() {
        I* p = m_p;
        m_p = nullptr;
        return p;
    }
    I** Put() {
        Reset();
        return &m_p;
    }
    void** PutVoid() { return reinterpret_cast<void**>(Put()); }

private:
    I* m_p;
};

// ---- modules -----------------------------------------------------------------------------------------

inline void KxFreeModule(HMODULE module) { ::FreeLibrary(module); }

// A module this code loaded, freed at the end, with a typed look-up of its exports.
class CKxModule : public CKxUnique<HMODULE, &KxFreeModule> {
public:
    CKxModule() = default;
    explicit CKxModule(HMODULE module) : CKxUnique(module) {}

    // The export `name` as a function of type Fn; null without the module or the export.
    template <typename Fn>
    Fn Export(const char* name) const {
        if (!Get()) return nullptr;
        return reinterpret_cast<Fn>(reinterpret_cast<void*>(::GetProcAddress(Get(), name)));
    }
};
