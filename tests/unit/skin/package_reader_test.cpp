// The package reader against archives written here byte by byte: good ones, and a table of
// damaged and hostile ones in which every bad entry must count as missing and nothing may be read
// outside the bytes (the sanitizers watch).
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "skin/package_reader.h"

namespace {

using Bytes = std::vector<uint8_t>;

void Put16(Bytes& b, size_t at, uint16_t v) {
    b[at] = static_cast<uint8_t>(v);
    b[at + 1] = static_cast<uint8_t>(v >> 8);
}
void Put32(Bytes& b, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = static_cast<uint8_t>(v >> (8 * i));
}
void Add16(Bytes& b, uint16_t v) {
    b.resize(b.size() + 2);
    Put16(b, b.size() - 2, v);
}
void Add32(Bytes& b, uint32_t v) {
    b.resize(b.size() + 4);
    Put32(b, b.size() - 4, v);
}
void AddText(Bytes& b, const std::string& s) { b.insert(b.end(), s.begin(), s.end()); }

struct Entry {
    std::string name, data;
};

// A stored archive as `zip -0` writes one; `directoryAt` and `endAt` say where its parts begin.
struct Archive {
    Bytes bytes;
    std::vector<size_t> directoryEntries;
    size_t endAt = 0;
};

Archive Make(const std::vector<Entry>& entries, const std::string& comment = "") {
    Archive a;
    std::vector<size_t> locals;
    for (const Entry& e : entries) {
        locals.push_back(a.bytes.size());
        const auto* data = reinterpret_cast<const uint8_t*>(e.data.data());
        Add32(a.bytes, 0x04034b50);
        Add16(a.bytes, 10);
        Add16(a.bytes, 0);
        Add16(a.bytes, 0);
        Add32(a.bytes, 0);
        Add32(a.bytes, kxskin::ZipCrc32(data, e.data.size()));
        Add32(a.bytes, static_cast<uint32_t>(e.data.size()));
        Add32(a.bytes, static_cast<uint32_t>(e.data.size()));
        Add16(a.bytes, static_cast<uint16_t>(e.name.size()));
        Add16(a.bytes, 0);
        AddText(a.bytes, e.name);
        AddText(a.bytes, e.data);
    }
    const size_t directory = a.bytes.size();
    for (size_t i = 0; i < entries.size(); ++i) {
        const Entry& e = entries[i];
        a.directoryEntries.push_back(a.bytes.size());
        Add32(a.bytes, 0x02014b50);
        Add16(a.bytes, 20);
        Add16(a.bytes, 10);
        Add16(a.bytes, 0);
        Add16(a.bytes, 0);
        Add32(a.bytes, 0);
        Add32(a.bytes, kxskin::ZipCrc32(reinterpret_cast<const uint8_t*>(e.data.data()), e.data.size()));
        Add32(a.bytes, static_cast<uint32_t>(e.data.size()));
        Add32(a.bytes, static_cast<uint32_t>(e.data.size()));
        Add16(a.bytes, static_cast<uint16_t>(e.name.size()));
        for (int k = 0; k < 4; ++k) Add16(a.bytes, 0);
        Add32(a.bytes, 0);
        Add32(a.bytes, static_cast<uint32_t>(locals[i]));
        AddText(a.bytes, e.name);
    }
    a.endAt = a.bytes.size();
    Add32(a.bytes, 0x06054b50);
    Add16(a.bytes, 0);
    Add16(a.bytes, 0);
    Add16(a.bytes, static_cast<uint16_t>(entries.size()));
    Add16(a.bytes, static_cast<uint16_t>(entries.size()));
    Add32(a.bytes, static_cast<uint32_t>(a.endAt - directory));
    Add32(a.bytes, static_cast<uint32_t>(directory));
    Add16(a.bytes, static_cast<uint16_t>(comment.size()));
    AddText(a.bytes, comment);
    return a;
}

const std::vector<Entry> kEntries = {
    {"IDD_DIALOG_ VIDEOPROPERTY.ini", "[Dialog]\nBackground=#FFFFFF\n"},
    {"Question Mark.png", std::string("\x89PNG\r\n\x1a\n", 8) + "pixels"},
    {"empty.txt", ""},
};

std::string Read(const kxskin::PackageEntry& e) { return std::string(reinterpret_cast<const char*>(e.data), e.size); }

TEST(SkinPackage, FindsEveryStoredEntryByItsNameInAnyCaseAndNothingElse) {
    for (const std::string comment : {"", "built by zip"}) {
        const Archive a = Make(kEntries, comment);
        kxskin::SkinPackage package;
        ASSERT_TRUE(package.Open(a.bytes.data(), a.bytes.size()));
        EXPECT_EQ(3u, package.EntryCount());
        for (const Entry& e : kEntries) {
            kxskin::PackageEntry found;
            ASSERT_TRUE(package.Find(e.name.c_str(), &found)) << e.name;
            EXPECT_EQ(e.data, Read(found));
        }
        kxskin::PackageEntry found;
        EXPECT_TRUE(package.Find("question mark.PNG", &found));
        for (const char* missing : {"Question Mark", "Question Mark.png ", "", "IDD_DIALOG_VIDEOPROPERTY.ini"})
            EXPECT_FALSE(package.Find(missing, &found)) << missing;
        EXPECT_FALSE(package.Find(nullptr, &found));
        // a name that does not end within the longest path is never read to its end
        std::vector<char> endless(400, 'a');
        EXPECT_FALSE(package.Find(endless.data(), &found));
    }
}

TEST(SkinPackage, DamagedArchivesAreRefusedAndDamagedEntriesAreMissing) {
    const Archive good = Make(kEntries);
    const size_t d0 = good.directoryEntries[0], d1 = good.directoryEntries[1], end = good.endAt;
    const struct Case {
        const char* what;
        std::function<void(Bytes&)> damage;
        bool opens;
        std::vector<const char*> usable;  // names still found
    } cases[] = {
        {"empty file", [](Bytes& b) { b.clear(); }, false, {}},
        {"end record cut short", [](Bytes& b) { b.resize(b.size() - 3); }, false, {}},
        {"only the end record's signature", [](Bytes& b) { b = Bytes{'P', 'K', 5, 6}; }, false, {}},
        {"directory cut off: the end record points past its own start",
         [&](Bytes& b) { Put32(b, end + 12, static_cast<uint32_t>(end)); }, false, {}},
        {"directory offset beyond the file", [&](Bytes& b) { Put32(b, end + 16, 0xFFFFFFF0u); }, false, {}},
        {"split archive", [&](Bytes& b) { Put16(b, end + 4, 1); }, false, {}},
        {"more entries counted than the directory holds",
         [&](Bytes& b) {
             Put16(b, end + 8, 9);
             Put16(b, end + 10, 9);
         },
         true, {"IDD_DIALOG_ VIDEOPROPERTY.ini", "Question Mark.png", "empty.txt"}},
        {"entry size past the end of the data", [&](Bytes& b) {
             Put32(b, d1 + 20, 0x7FFFFFFF);
             Put32(b, d1 + 24, 0x7FFFFFFF);
         },
         true, {"IDD_DIALOG_ VIDEOPROPERTY.ini", "empty.txt"}},
        {"local header offset past the end", [&](Bytes& b) { Put32(b, d0 + 42, 0xFFFFFFF0u); }, true,
         {"Question Mark.png", "empty.txt"}},
        {"name length running past the directory: the walk stops there",
         [&](Bytes& b) { Put16(b, d1 + 28, 0xFFFF); }, true, {"IDD_DIALOG_ VIDEOPROPERTY.ini"}},
        {"name with a terminator inside", [&](Bytes& b) { b[d1 + 46 + 8] = 0; }, true,
         {"IDD_DIALOG_ VIDEOPROPERTY.ini", "empty.txt"}},
        {"compressed entry", [&](Bytes& b) { Put16(b, d0 + 10, 8); }, true, {"Question Mark.png", "empty.txt"}},
        {"encrypted entry", [&](Bytes& b) { Put16(b, d0 + 8, 1); }, true, {"Question Mark.png", "empty.txt"}},
        {"sizes that disagree", [&](Bytes& b) { Put32(b, d0 + 24, 3); }, true, {"Question Mark.png", "empty.txt"}},
        {"data that fails its checksum", [&](Bytes& b) { b[30 + kEntries[0].name.size()] ^= 1; }, true,
         {"Question Mark.png", "empty.txt"}},
        {"directory signature broken", [&](Bytes& b) { b[d1] = 'X'; }, true, {"IDD_DIALOG_ VIDEOPROPERTY.ini"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Bytes bytes = good.bytes;
        c.damage(bytes);
        // the reader sees exactly these bytes, in a buffer of their own size
        std::unique_ptr<uint8_t[]> exact(new uint8_t[bytes.size() ? bytes.size() : 1]);
        if (!bytes.empty()) std::memcpy(exact.get(), bytes.data(), bytes.size());
        kxskin::SkinPackage package;
        EXPECT_EQ(c.opens, package.Open(exact.get(), bytes.size()));
        std::vector<std::string> found;
        for (const Entry& e : kEntries) {
            kxskin::PackageEntry entry;
            if (package.Find(e.name.c_str(), &entry)) {
                found.push_back(e.name);
                EXPECT_EQ(e.data, Read(entry));
            }
        }
        EXPECT_EQ(std::vector<std::string>(c.usable.begin(), c.usable.end()), found);
    }
}

TEST(SkinPackage, ChecksumIsTheArchiveFormats) {
    const std::string text = "123456789";
    EXPECT_EQ(0xCBF43926u, kxskin::ZipCrc32(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
}

}  // namespace
