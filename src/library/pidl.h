// Item identifier lists (KxPidl) as the plug-in handles them: it never looks into a record's
// payload, it only measures, copies, compares and frees whole lists.
#pragma once

#include "kx/KxContentTree.h"

// Bytes of a list: every record's length plus the two-byte terminator. 0 for null.
UINT KxPidlSize(KxPcPidl pidl);

// A copy from CoTaskMemAlloc, owned by the caller. Null copies to null; a failed allocation also
// gives null.
KxPidl KxPidlCopy(KxPcPidl pidl);

// Two nulls are equal, a null and a non-null are not. Otherwise the sizes must be equal and the
// bytes of the records the same; the terminator is left out of the comparison.
bool KxPidlEqual(KxPcPidl a, KxPcPidl b);

// CoTaskMemFree of a list; null is allowed.
void KxPidlFree(KxPidl pidl);

// Number of records before the terminator. 0 for null.
UINT KxPidlRecordCount(KxPcPidl pidl);
