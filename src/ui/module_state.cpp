#include "ui/module_state.h"

namespace {
KxModuleState g_moduleState = {nullptr, nullptr};
thread_local KxModuleState* t_current = nullptr;
}  // namespace

KxModuleState* KxGetStaticModuleState() { return &g_moduleState; }

KxModuleState* KxGetCurrentModuleState() { return t_current; }

HINSTANCE KxGetResourceHandle() {
    KxModuleState* state = t_current;
    if (!state) return GetModuleHandleW(nullptr);
    return state->hResourceHandle ? state->hResourceHandle : state->hInstance;
}

void KxSetModuleResourceHandle(HINSTANCE resources) { g_moduleState.hResourceHandle = resources; }

void KxSetModuleInstance(HINSTANCE module) { g_moduleState.hInstance = module; }

CKxManageState::CKxManageState() : m_pPrevious(t_current) { t_current = &g_moduleState; }

CKxManageState::~CKxManageState() { t_current = m_pPrevious; }
