// The one guard at every place where a caller outside the component comes in: the interface's
// operations, the exports, window and subclass procedures, callbacks handed to the platform.
// Inside, standard containers and `new` may throw; no exception may leave through such a place
// (the caller is C, COM or the window manager). The guard turns it into an answer and an "E:"
// trace line:
//   std::bad_alloc   -> 0x8007000E (E_OUTOFMEMORY)
//   anything else    -> 0x8000FFFF (E_UNEXPECTED)
// A window procedure answers with its default handling instead.
#pragma once

#include "kx/KxPlatform.h"

#include <new>

enum class KxExceptionKind { OutOfMemory, Other };

// 0x8007000E for OutOfMemory, 0x8000FFFF for Other.
inline HRESULT KxStatusOfException(KxExceptionKind kind) {
    return kind == KxExceptionKind::OutOfMemory ? E_OUTOFMEMORY : E_UNEXPECTED;
}

// Writes "E:<where>>> Caught an exception: out of memory" (or "...: unexpected error") through
// the trace log. `where` reads "Class::Method".
void KxTraceException(const WCHAR* where, KxExceptionKind kind) noexcept;

// Runs `body`; if it throws, traces the exception and answers `fallback(kind)` instead.
template <typename Body, typename Fallback>
auto KxGuard(const WCHAR* where, Body&& body, Fallback&& fallback) noexcept -> decltype(body()) {
    KxExceptionKind kind;
    try {
        return body();
    } catch (const std::bad_alloc&) {
        kind = KxExceptionKind::OutOfMemory;
    } catch (...) {
        kind = KxExceptionKind::Other;
    }
    KxTraceException(where, kind);
    return fallback(kind);
}

// The guard of an entry point that answers a status.
template <typename Body>
HRESULT KxGuardStatus(const WCHAR* where, Body&& body) noexcept {
    return KxGuard(where, body, [](KxExceptionKind kind) { return KxStatusOfException(kind); });
}
