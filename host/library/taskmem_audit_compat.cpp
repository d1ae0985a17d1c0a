// Off Windows the compatibility layer counts CoTaskMem blocks itself.
#include "host/library/taskmem_audit.h"

#include "kx/KxPlatform.h"

namespace kxhost {

bool StartTaskMemAudit() { return true; }
void StopTaskMemAudit() { kxcompat::ResetTaskMemFailures(); }
long LiveTaskMemBlocks() { return kxcompat::LiveTaskMemBlocks(); }
void FailTaskMemAllocations(int nth, int count) { kxcompat::FailTaskMemAllocations(nth, count); }
void ResetTaskMemFailures() { kxcompat::ResetTaskMemFailures(); }

}  // namespace kxhost
