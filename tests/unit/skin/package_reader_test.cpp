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
// Little-endian fields of the given sizes in bytes.
void Fields(Bytes& b, std::initializer_list<std::pair<int, uint32_t>> fields) {
    for (const auto& f : fields)
        for (int i = 0; i < f.first; ++i) b.push_back(static_cast<uint8_t>(f.second >> (8 * i)));
}

struct Entry { std::string name, data; };

// A stored archive as `zip -0` writes one, and where its directory entries and end record begin.
struct Archive { Bytes bytes; std::vector<size_t> directoryEntries; size_t endAt = 0; };

Archive Make(const std::vector<Entry>& entries, const std::string& comment = "") {
    Archive a;
    std::vector<uint32_t> locals, crcs;
    for (const Entry& e : entries) {
        locals.push_back(static_cast<uint32_t>(a.bytes.size()));
        crcs.push_back(kxskin::ZipCrc32(reinterpret_cast<const uint8_t*>(e.data.data()), e.data.size()));
        const uint32_t size = static_cast<uint32_t>(e.data.size()), name = static_cast<uint32_t>(e.name.size());
        Fields(a.bytes, {{4, 0x04034b50}, {2, 10}, {2, 0}, {2, 0}, {4, 0}, {4, crcs.back()}, {4, size}, {4, size},
                         {2, name}, {2, 0}});
        a.bytes.insert(a.bytes.end(), e.name.begin(), e.name.end());
        a.bytes.insert(a.bytes.end(), e.data.begin(), e.data.end());
    }
    const uint32_t directory = static_cast<uint32_t>(a.bytes.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        const uint32_t size = static_cast<uint32_t>(entries[i].data.size());
        a.directoryEntries.push_back(a.bytes.size());
        Fields(a.bytes, {{4, 0x02014b50}, {2, 20}, {2, 10}, {2, 0}, {2, 0}, {4, 0}, {4, crcs[i]}, {4, size},
                         {4, size}, {2, static_cast<uint32_t>(entries[i].name.size())}, {2, 0}, {2, 0}, {2, 0},
                         {2, 0}, {4, 0}, {4, locals[i]}});
        a.bytes.insert(a.bytes.end(), entries[i].name.begin(), entries[i].name.end());
    }
    a.endAt = a.bytes.size();
    const uint32_t count = static_cast<uint32_t>(entries.size());
    Fields(a.bytes, {{4, 0x06054b50}, {2, 0}, {2, 0}, {2, count}, {2, count},
                     {4, static_cast<uint32_t>(a.endAt - directory)}, {4, directory},
                     {2, static_cast<uint32_t>(comment.size())}});
    a.bytes.insert(a.bytes.end(), comment.begin(), comment.end());
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
