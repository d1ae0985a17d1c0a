// The fixture of the native imaging tests: the fake platform, a scratch temp folder, the trace
// lines of each test, and after each test an audit: no image, surface, allocator block, start
// token or CoTaskMem block left, and nothing left in the temp folder.
#pragma once

#include "frame/trace_log.h"
#include "tests/unit/imaging/fake_gdiplus.h"
#include "tests/unit/imaging/native_files.h"

#include "compat/winsys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kxtest {

class ImagingTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_taskMem = kxcompat::LiveTaskMemBlocks();
        g_bTraceDebugString = TRUE;
        kxcompat::SetDebugOutputSink(
            [](LPCWSTR line, void* self) { static_cast<ImagingTest*>(self)->m_lines.emplace_back(line); }, this);
    }
    void TearDown() override {
        g_bTraceDebugString = FALSE;
        kxcompat::SetDebugOutputSink(nullptr, nullptr);
        kxcompat::ResetTaskMemFailures();
        EXPECT_EQ(0, gdip.LiveImages()) << "bitmaps leaked";
        EXPECT_EQ(0, gdip.LiveGraphics()) << "drawing surfaces leaked";
        EXPECT_EQ(0, gdip.LiveBlocks()) << "platform blocks leaked";
        EXPECT_EQ(0, gdip.LiveTokens()) << "the platform was left started";
        EXPECT_EQ(m_taskMem, kxcompat::LiveTaskMemBlocks()) << "CoTaskMem blocks leaked";
        EXPECT_EQ(keptFiles, files.Files()) << "files left in the temp folder";
    }

    // The messages traced since the last call (line number and line end taken off).
    std::vector<std::wstring> Traces() {
        std::vector<std::wstring> messages;
        for (std::wstring line : m_lines) {
            const size_t start = line.find(L'=');
            line = line.substr(start == std::wstring::npos ? 0 : start + 1);
            if (line.size() >= 2 && line.compare(line.size() - 2, 2, L"\r\n") == 0) line.resize(line.size() - 2);
            messages.push_back(line);
        }
        m_lines.clear();
        return messages;
    }

    // A path in the scratch folder, as the code sees it.
    std::wstring PathOf(const std::string& name) const { return files.WideFolder() + WidePath(name); }
    std::string NativeOf(const std::string& name) const { return files.Folder() + name; }
    void WritePicture(const std::string& name, const FakePicture& picture) {
        ASSERT_TRUE(WriteFakePicture(NativeOf(name), picture));
    }

    FakeGdiplus gdip;
    NativeArtFiles files;
    std::vector<std::string> keptFiles;  // what a test leaves in the folder on purpose

private:
    std::vector<std::wstring> m_lines;
    long m_taskMem = 0;
};

inline FakePicture Picture(const GUID& format, UINT width, UINT height) {
    FakePicture picture;
    picture.format = format;
    picture.width = width;
    picture.height = height;
    return picture;
}

}  // namespace kxtest
