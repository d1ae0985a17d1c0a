// The string look-ups of the common-resource interface. LoadStringW cuts a string silently and
// does not tell its length, so both look-ups read into a task-memory block that grows by 512
// characters until the string leaves at least two places free.
#pragma once

#include <cstddef>

#include "kx/KxPlatform.h"

// Where strings come from: LoadStringW on the platform, a fake in tests.
class IKxStringSource {
public:
    virtual int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cchBuffer) = 0;
    // True when `bytes` at `p` cannot be written (IsBadWritePtr). A host's out pointer that cannot
    // take the value is refused like a null one. A source that cannot tell answers false.
    virtual bool IsBadWritePtr(void* p, size_t bytes) {
        (void)p;
        (void)bytes;
        return false;
    }

protected:
    ~IKxStringSource() = default;
};

// Characters by which the look-up block starts and grows.
constexpr int kStringBlockStep = 512;

// Reads string `id` of `module` into a block of CoTaskMemRealloc whose size is a multiple of
// kStringBlockStep characters. *pBlock is the block all along (null on failure), *pLength the
// string's length. 0x80070006 when there is no such string or it is empty, 0x8007000e when the
// block cannot grow.
HRESULT KxReadStringBlock(IKxStringSource& source, HINSTANCE module, UINT id, LPWSTR* pBlock, int* pLength);

// GetResourceString: 0x80070002 without a module; *ppszText is null unless the result is 0.
// A null ppszText gives 0x80004003.
HRESULT KxGetResourceString(IKxStringSource& source, HINSTANCE module, UINT id, LPWSTR* ppszText);

// LoadResourceString: 0x80070002 without a module, 0x80070057 for a null pcchNeeded. On a found
// string *pcchNeeded is its length with terminator; a null buffer only asks for it; a buffer too
// short gets the cut string and 0x8007007a.
HRESULT KxLoadResourceString(IKxStringSource& source, HINSTANCE module, UINT id, LPWSTR pszBuffer, INT cchBuffer,
                             INT* pcchNeeded);
