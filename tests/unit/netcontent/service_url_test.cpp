// The art service's address built from the configured template and a track's path.
#include "netcontent/service_url.h"

#include <gtest/gtest.h>

namespace {

TEST(ServiceUrl, Expansion) {
    const struct { const wchar_t* urlTemplate; const wchar_t* path; const wchar_t* expected; } cases[] = {
        {L"http://127.0.0.1:8080/art?album={folder}&track={file}", L"C:\\Music\\Blue Train\\01 Song.mp3",
         L"http://127.0.0.1:8080/art?album=Blue%20Train&track=01%20Song"},
        {L"HTTPS://art.example/{folder}/{folder}.jpg", L"D:\\M\\A&B\\x.flac", L"HTTPS://art.example/A%26B/A%26B.jpg"},
        {L"http://h/{file}", L"C:\\Caf\u00e9.mp3", L"http://h/Caf%C3%A9"},  // drive root: no folder
        {L"http://h/{folder}", L"C:\\Caf\u00e9.mp3", L"http://h/"},
        {L"http://h/{file}", L"C:\\M\\.hidden", L"http://h/.hidden"},
        {L"ftp://h/{file}", L"C:\\M\\a.mp3", L""},
        {L"http://h/{file}", L"a.mp3", L""},
        {L"http://h/{file}", L"C:\\M\\", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(kxnet::ExpandArtServiceUrl(c.urlTemplate, c.path), c.expected);
    }
}

TEST(ServiceUrl, PercentEncodingOfSurrogates) {
    std::wstring pair;
    if (sizeof(wchar_t) == 2) {
        pair = {wchar_t(0xD83C), wchar_t(0xDFB5)};
    } else {
        pair = {wchar_t(0x1F3B5)};
    }
    EXPECT_EQ(kxnet::PercentEncode(pair), L"%F0%9F%8E%B5");
    EXPECT_EQ(kxnet::PercentEncode(std::wstring(1, wchar_t(0xDC00))), L"%EF%BF%BD");
    EXPECT_EQ(kxnet::PercentEncode(L"a-._~/"), L"a-._~%2F");
}

}  // namespace
