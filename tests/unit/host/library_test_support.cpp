#include "tests/unit/host/library_test_support.h"

namespace kxtest {

WalkResult WalkWellKnownFolder(IKxContentFolder* root, LPCWSTR name) {
    WalkResult r;
    KxPidl id = nullptr;
    r.status = root->ParseName(name, KX_PARSE_WELLKNOWN, &id);
    if (r.status != S_OK || !id) {
        CoTaskMemFree(id);
        if (r.status == S_OK) r.status = E_FAIL;
        return r;
    }
    Ref<IKxContentFolder> folder;
    r.status = root->BindToFolder(id, IID_IKxContentFolder, folder.OutVoid());
    CoTaskMemFree(id);
    if (FAILED(r.status)) return r;
    Ref<IKxItemEnum> items;
    r.enumStatus = r.status = folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid());
    if (FAILED(r.status) || !items) return r;
    for (;;) {
        KxPidl child = nullptr;
        ULONG fetched = 0;
        r.status = items->Next(1, &child, &fetched);
        if ((r.status == S_OK || r.status == S_FALSE) && fetched) {
            LPWSTR childName = nullptr;
            if (folder->GetItemName(child, KX_NAME_NORMAL, &childName) == S_OK) r.names.push_back(childName);
            CoTaskMemFree(childName);
        }
        CoTaskMemFree(child);
        if (r.status != S_OK) break;
    }
    return r;
}

}  // namespace kxtest
