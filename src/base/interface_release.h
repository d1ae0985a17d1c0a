// Releasing the host's tree interfaces that a model holds: each pointer is released once and left
// null, so a second clean-up (a failed start followed by the destructor) does nothing.
#pragma once

template <typename T>
void KxReleaseAndNull(T*& p) {
    if (p) {
        p->Release();
        p = nullptr;
    }
}
