// Counting of CoTaskMem blocks across the process, so a test can assert that the plug-in freed
// everything it received and handed back only what it should.
//
// Natively the compatibility layer's CoTaskMem* count every block. On Windows an IMallocSpy
// registered with CoRegisterMallocSpy sees every CoTaskMemAlloc, CoTaskMemRealloc and
// CoTaskMemFree of the process (also those made inside system DLLs on the test's behalf) and
// counts the blocks allocated while it is registered.
#pragma once

namespace kxhost {

// Starts counting. Natively always true; on Windows false if the spy could not be registered
// (another spy is in place). Counting starts from zero.
bool StartTaskMemAudit();
// Stops counting (on Windows revokes the spy).
void StopTaskMemAudit();
// Blocks allocated since StartTaskMemAudit and not freed yet. Natively: all live blocks of the
// process, so compare against a value taken before.
long LiveTaskMemBlocks();
// Makes the `nth` allocation from now (1 = the next) and the `count` - 1 after it fail (count < 0:
// all from the nth on).
void FailTaskMemAllocations(int nth, int count = 1);
void ResetTaskMemFailures();

}  // namespace kxhost
