// libFuzzer target: any bytes as a skin package. Opening, looking up and reading every entry, and
// parsing it as a description file, must stay inside the bytes and never crash.
#include <cstddef>
#include <cstdint>
#include <string>

#include "skin/package_reader.h"
#include "skin/skin_description.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    kxskin::SkinPackage package;
    if (!package.Open(data, size)) return 0;
    volatile uint32_t sum = 0;
    for (size_t i = 0; i < package.EntryCount(); ++i) {
        const kxskin::PackageEntry& e = package.Entry(i);
        const std::string name(e.name, e.nameLength);
        kxskin::PackageEntry found;
        if (!package.Find(name.c_str(), &found)) __builtin_trap();  // a listed entry is found by its name
        sum = sum + kxskin::ZipCrc32(found.data, found.size);
        kxskin::IniFile ini;
        ini.Parse(reinterpret_cast<const char*>(e.data), e.size);
        kxskin::ReadDialogSkin(ini);
    }
    kxskin::PackageEntry entry;
    package.Find("IDD_DIALOG_MESSGAEBOX.ini", &entry);
    return 0;
}
