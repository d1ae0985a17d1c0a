// One loaded skin package: the file's bytes, its directory, and what the library reads out of it
// (description files, pictures decoded with GDI+).
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "skin/package_reader.h"
#include "skin/pixels.h"
#include "skin/skin_description.h"

namespace hookwnd {

class PackageFile {
public:
    // Reads and parses the package at `path`; false when it cannot be read or is no archive.
    bool Load(LPCWSTR path);
    // The .ini called `name`, parsed; false when the package has no such entry.
    bool ReadIni(const char* name, kxskin::IniFile* out) const;
    // The picture called `name`, decoded; an empty picture when it is missing or no picture.
    kxskin::Picture ReadPicture(const char* name) const;

private:
    std::vector<uint8_t> m_bytes;
    kxskin::SkinPackage m_package;
};

// GDI+ for the decoder: started with the first hook and shut down with the last, never inside
// the library's entry point.
void StartPictureDecoder();
void StopPictureDecoder();

}  // namespace hookwnd
