// The results of VnIntrfu.dll's operations. The plug-in maps those of registration to statuses:
// 6 and 12 to 0x80070057, 14 to 0x80070005, anything else but 0 to 0x80004005.
#pragma once

enum tagVnINTRFCRESULT : int {
    VnIntrfcOk = 0,
    // Any failure not listed below: a registry error other than a refusal, no memory.
    VnIntrfcFailed = 1,
    // A required argument is null or empty, a threading flag is out of range, a ProgID is not a
    // valid ProgID, or VnCreateInstance was asked for a context other than in-process.
    VnIntrfcInvalidArg = 6,
    // The instance handle names no loaded module, or the module's path does not fit.
    VnIntrfcInvalidModule = 12,
    // The registry refused to write or delete a key (registration for the machine needs rights).
    VnIntrfcAccessDenied = 14,
    // VnCreateInstance: the class has no InprocServer32 path in the registry.
    VnIntrfcClassNotRegistered = 16,
    // VnCreateInstance: the registered library cannot be loaded or has no DllGetClassObject.
    VnIntrfcServerNotLoaded = 17,
    // VnCreateInstance: the library's class object or its CreateInstance refused.
    VnIntrfcCreateFailed = 18,
};
