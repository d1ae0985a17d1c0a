#include "frame/string_lookup.h"

#include "base/owners.h"
#include "frame/trace_log.h"

#include <cstring>

namespace {
// A string resource holds at most 65535 characters; a block beyond that size cannot be too short,
// so the growth ends there whatever the source answers.
constexpr int kLongestStringResource = 65535;

HRESULT StatusFromWin32(long code) { return HRESULT_FROM_WIN32(code); }
}  // namespace

HRESULT KxReadStringBlock(IKxStringSource& source, HINSTANCE module, UINT id, LPWSTR* pBlock, int* pLength) {
    *pBlock = nullptr;
    *pLength = 0;
    CKxTaskMemString block;
    int capacity = kStringBlockStep;
    for (;;) {
        void* grown = CoTaskMemRealloc(block.Get(), static_cast<size_t>(capacity) * sizeof(WCHAR));
        if (!grown) return E_OUTOFMEMORY;
        block.Detach();  // moved by the reallocation
        block.Reset(static_cast<LPWSTR>(grown));
        int n = source.LoadStringW(module, id, block.Get(), capacity);
        if (n <= 0) return StatusFromWin32(ERROR_INVALID_HANDLE);
        // One place for the terminator and one more: with less the string may have been cut.
        if (capacity - n < 2 && capacity <= kLongestStringResource) {
            capacity += kStringBlockStep;
            continue;
        }
        *pLength = n;
        *pBlock = block.Detach();
        return S_OK;
    }
}

HRESULT KxGetResourceString(IKxStringSource& source, HINSTANCE module, UINT id, LPWSTR* ppszText) {
    // an out pointer that cannot be written is one the string cannot go to: refused like a null one
    if (ppszText && source.IsBadWritePtr(ppszText, sizeof(LPWSTR))) return E_POINTER;
    if (ppszText) *ppszText = nullptr;
    if (!module) return StatusFromWin32(ERROR_FILE_NOT_FOUND);
    if (!ppszText) return E_POINTER;
    int length = 0;
    return KxReadStringBlock(source, module, id, ppszText, &length);
}

HRESULT KxLoadResourceString(IKxStringSource& source, HINSTANCE module, UINT id, LPWSTR pszBuffer, INT cchBuffer,
                             INT* pcchNeeded) {
    if (!module) return StatusFromWin32(ERROR_FILE_NOT_FOUND);
    if (!pcchNeeded || source.IsBadWritePtr(pcchNeeded, sizeof(INT))) return E_INVALIDARG;
    CKxTaskMemString block;
    int n = 0;
    HRESULT hr = KxReadStringBlock(source, module, id, block.Put(), &n);
    if (FAILED(hr)) return hr;

    *pcchNeeded = n + 1;
    if (!pszBuffer) {
        hr = S_OK;
    } else if (cchBuffer < 1) {
        // No place even for a terminator: the buffer is left alone and the size is reported.
        hr = E_INVALIDARG;
    } else if (source.IsBadWritePtr(pszBuffer, static_cast<size_t>(cchBuffer > n ? n + 1 : cchBuffer) * sizeof(WCHAR))) {
        // Only the characters that would be written are probed: a host's large count over a
        // smaller buffer that still takes this string is not refused. The size is reported.
        hr = E_INVALIDARG;
    } else if (cchBuffer > n) {
        std::memcpy(pszBuffer, block.Get(), static_cast<size_t>(n) * sizeof(WCHAR));
        pszBuffer[n] = L'\0';
        hr = S_OK;
    } else {
        std::memcpy(pszBuffer, block.Get(), static_cast<size_t>(cchBuffer - 1) * sizeof(WCHAR));
        pszBuffer[cchBuffer - 1] = L'\0';
        hr = STRSAFE_E_INSUFFICIENT_BUFFER;
    }
    return hr;
}
