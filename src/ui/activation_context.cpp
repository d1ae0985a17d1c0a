#include "ui/activation_context.h"

HMODULE KxGetCodeModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&KxGetCodeModule), &module);
    return module;
}

// The context is made for each scope and released with it: a dialog is rare enough, and nothing
// is left behind when the host unloads the plug-in. A module without the manifest simply runs in
// the context of its caller.
CKxCommonControlsScope::CKxCommonControlsScope() : m_hContext(INVALID_HANDLE_VALUE), m_cookie(0) {
    HMODULE module = KxGetCodeModule();
    if (!module || !FindResourceW(module, MAKEINTRESOURCEW(2), MAKEINTRESOURCEW(24) /* RT_MANIFEST */)) return;
    wchar_t path[MAX_PATH] = {};
    if (!GetModuleFileNameW(module, path, MAX_PATH)) return;
    ACTCTXW context = {};
    context.cbSize = sizeof(context);
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.lpSource = path;
    context.hModule = module;
    context.lpResourceName = MAKEINTRESOURCEW(2);
    m_hContext = CreateActCtxW(&context);
    if (m_hContext == INVALID_HANDLE_VALUE) return;
    if (!ActivateActCtx(m_hContext, &m_cookie)) m_cookie = 0;
}

CKxCommonControlsScope::~CKxCommonControlsScope() {
    if (m_cookie) DeactivateActCtx(0, m_cookie);
    if (m_hContext != INVALID_HANDLE_VALUE) ReleaseActCtx(m_hContext);
}
