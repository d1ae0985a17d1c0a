#include "tests/win/common/framework_module.h"

#include "frame/win32/skin_messages.h"
#include "tests/win/common/plugin_loader.h"
#include "ui/module_state.h"

namespace kxtest {

FrameworkModule::FrameworkModule() : m_resources(LoadLibraryW((ExeDir() + L"ComRcRes.dll").c_str())) {
    KxSetModuleInstance(GetModuleHandleW(nullptr));
    KxSetModuleResourceHandle(m_resources);
    KxRegisterSkinMessages();
}

FrameworkModule::~FrameworkModule() {
    KxSetModuleResourceHandle(nullptr);
    if (m_resources) FreeLibrary(m_resources);
}

}  // namespace kxtest
