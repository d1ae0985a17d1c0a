#include "tests/unit/host/library_test_support.h"

namespace kxtest {

WalkResult WalkWellKnownFolder(IKxContentFolder* root, LPCWSTR name) {
    WalkResult r;
    TaskMem<KxItemIdList> id;
    r.status = root->ParseName(name, KX_PARSE_WELLKNOWN, id.Out());
    if (r.status == S_OK && !id.p) r.status = E_FAIL;
    if (r.status != S_OK) return r;
    Ref<IKxContentFolder> folder;
    Ref<IKxItemEnum> items;
    if (FAILED(r.status = root->BindToFolder(id.p, IID_IKxContentFolder, folder.OutVoid()))) return r;
    r.enumStatus = r.status = folder->EnumItems(0, KX_ENUM_CONTAINERS, IID_IKxItemEnum, items.OutVoid());
    if (FAILED(r.status) || !items) return r;
    do {
        TaskMem<KxItemIdList> child;
        TaskMem<WCHAR> childName;
        ULONG fetched = 0;
        r.status = items->Next(1, child.Out(), &fetched);
        if ((r.status == S_OK || r.status == S_FALSE) && fetched &&
            folder->GetItemName(child.p, KX_NAME_NORMAL, childName.Out()) == S_OK)
            r.names.push_back(childName.p);
    } while (r.status == S_OK);
    return r;
}

}  // namespace kxtest
