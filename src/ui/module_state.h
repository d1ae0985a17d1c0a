// The module's framework state: which module the framework loads dialog templates and strings
// from. The plug-in makes ComRcRes.dll its resource source once (KxSetModuleResourceHandle), and
// every operation that runs a dialog holds a CKxManageState for its whole length, so that inside
// it, and only inside it, the framework reads ComRcRes.dll and not the host's executable.
#pragma once

#include <windows.h>

struct KxModuleState {
    HINSTANCE hInstance;         // the module itself
    HINSTANCE hResourceHandle;   // where templates and strings come from; null: hInstance
};

// The plug-in's one static module state.
KxModuleState* KxGetStaticModuleState();

// The state in force on the calling thread: the module's while a CKxManageState is held on this
// thread, otherwise null (the caller's process, i.e. the host).
KxModuleState* KxGetCurrentModuleState();

// Resource source of the state in force: the module's resource handle inside a switch, the host
// executable outside one.
HINSTANCE KxGetResourceHandle();

// Sets the resource source of the module's static state.
void KxSetModuleResourceHandle(HINSTANCE resources);
void KxSetModuleInstance(HINSTANCE module);

// Scoped switch to the module's state on this thread; restores the previous state on every way out.
class CKxManageState {
public:
    CKxManageState();
    ~CKxManageState();
    CKxManageState(const CKxManageState&) = delete;
    CKxManageState& operator=(const CKxManageState&) = delete;

private:
    KxModuleState* m_pPrevious;
};
