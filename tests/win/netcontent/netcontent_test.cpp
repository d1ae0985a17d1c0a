// KxNetContent.dll under Wine, as the tag dialog uses it: registered by regsvr32 through
// VnIntrfu.dll, created by VnCreateInstance, started with a start record, asked for the art of
// tracks with a picture beside them, with a picture in their tags (a real MP3), with none, and of
// an art service on the loopback address. Answers come on the component's own thread. (A close
// during a lookup: win_net_art_lookup and win_edit_tag_lookup.)
#include <winsock2.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "base/owners.h"
#include "netcontent/client_code.h"
#include "netcontent/net_content_mgr.h"
#include "tests/win/common/plugin_loader.h"
#include "tests/win/common/test_files.h"
#include "tests/win/netcontent/loopback_server.h"
#include "vnintrfu/vn_result.h"

#ifndef KX_NETCONTENT_TEST_FILES
#error "KX_NETCONTENT_TEST_FILES names the folder of the fetched track files"
#endif

namespace {

using kxtest::ExeDir;
using kxtest::RunRegsvr32;

typedef tagVnINTRFCRESULT(WINAPI* CreateFn)(const CLSID*, IUnknown*, DWORD, const IID*, void**);
typedef void(WINAPI* FreeUnusedFn)();

const wchar_t kClassKey[] = L"CLSID\\{D1180ABF-AFEC-4C17-97AE-AD2874B839EB}";
const char kAccess[] = "{4F2A7C1E-9B3D-4E65-A8F0-1C2D3E4F5A6B}";

std::wstring RegisteredServer() {
    wchar_t path[MAX_PATH] = {};
    LONG bytes = sizeof(path);
    if (RegQueryValueW(HKEY_CLASSES_ROOT, (std::wstring(kClassKey) + L"\\InprocServer32").c_str(), path, &bytes) !=
        ERROR_SUCCESS)
        return L"-";
    return path;
}

struct Answer {
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    LONG status = 0;
    DWORD source = 0;
    std::vector<BYTE> bytes;
    DWORD thread = 0;
    LONG calls = 0;
    ~Answer() { CloseHandle(done); }
};

LONG CALLBACK Record(LONG status, const NetContentResult* result, void* context) {
    Answer* answer = static_cast<Answer*>(context);
    answer->status = status;
    answer->source = result ? result->source : 99;
    if (result && result->picture) answer->bytes.assign(result->picture, result->picture + result->pictureSize);
    answer->thread = GetCurrentThreadId();
    InterlockedIncrement(&answer->calls);
    SetEvent(answer->done);
    return 0;
}

// The start record as the tag dialog fills it.
struct StartRecord {
    NetContentStartRecord record = {};
    BYTE key[16];
    char code[10];
    StartRecord() {
        std::memcpy(key, kAccess, 16);
        kxnet::DeriveClientCode(key, code);
        record.cbSize = sizeof(record);
        wcscpy(record.clientName, L"NetContentMgrTest");
        record.codePage = 1252;
        record.clientKey = key;
        record.clientCode = code;
    }
};

class NetContent : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(RunRegsvr32(L"KxNetContent.dll"), 0u); }
    static void TearDownTestSuite() {
        EXPECT_EQ(RunRegsvr32(L"/u KxNetContent.dll"), 0u);
        EXPECT_EQ(RegisteredServer(), L"-");
    }

    void SetUp() override {
        handlesBefore_ = Handles();
        ASSERT_TRUE(create_ && freeUnused_);
        ASSERT_EQ(create_(&CLSID_NetContentMgr, nullptr, 0, &IID_INetContentMgr, mgr_.PutVoid()), VnIntrfcOk);
        ASSERT_TRUE(mgr_);
        ASSERT_EQ(mgr_->QueryInterface(IID_INetContentLookup, lookup_.PutVoid()), S_OK);
        folder_ = kxtest::TempFolder() + L"kxnet-" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder_.c_str(), nullptr);
        album_ = folder_ + L"\\Album X";
        CreateDirectoryW(album_.c_str(), nullptr);
    }
    void TearDown() override {
        if (mgr_) {
            mgr_->Close();
            mgr_->Terminate();
        }
        lookup_.Reset();
        mgr_.Reset();
        for (const std::wstring& f : files_) DeleteFileW(f.c_str());
        RemoveDirectoryW(album_.c_str());
        RemoveDirectoryW(folder_.c_str());
        EXPECT_EQ(GetFileAttributesW(folder_.c_str()), INVALID_FILE_ATTRIBUTES);
        // The component's library goes once nothing of it lives, its worker thread with it.
        freeUnused_();
        EXPECT_EQ(GetModuleHandleW(L"KxNetContent.dll"), nullptr);
        EXPECT_EQ(Handles(), handlesBefore_);
    }

    static DWORD Handles() {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    }
    std::wstring File(const std::wstring& name, const std::string& bytes) {
        const std::wstring path = album_ + L"\\" + name;
        EXPECT_TRUE(kxtest::WriteFileBytes(path, std::vector<BYTE>(bytes.begin(), bytes.end())));
        files_.push_back(path);
        return path;
    }
    void Start() {
        StartRecord start;
        ASSERT_EQ(mgr_->Initialize(&start.record), kNetContentOk);
        ASSERT_EQ(mgr_->SetCallback(&Record, &answer_), kNetContentOk);
        ASSERT_EQ(mgr_->Open(&NETCONTENT_ARTWORK_CHANNEL, &NETCONTENT_ARTWORK_CHANNEL, nullptr), kNetContentOk);
    }
    LONG Request(const std::wstring& path) {
        return lookup_->RequestArtwork(1, 2, path.c_str(), 0, 0, 5, 0, 0, 0, 0, 0);
    }

    CKxModule vnintrfu_{LoadLibraryW((ExeDir() + L"VnIntrfu.dll").c_str())};
    CreateFn create_ = vnintrfu_.Export<CreateFn>("VnCreateInstance");
    FreeUnusedFn freeUnused_ = vnintrfu_.Export<FreeUnusedFn>("VnFreeUnusedLibraries");
    CKxComPtr<INetContentMgr> mgr_;
    CKxComPtr<INetContentLookup> lookup_;
    Answer answer_;
    std::wstring folder_, album_;
    std::vector<std::wstring> files_;
    DWORD handlesBefore_ = 0;
};

TEST_F(NetContent, RegisteredAndStartedOnlyWithAConsistentRecord) {
    const std::wstring server = RegisteredServer();
    ASSERT_GE(server.size(), 16u);
    EXPECT_EQ(_wcsicmp(server.substr(server.size() - 16).c_str(), L"KxNetContent.dll"), 0);
    EXPECT_EQ(lookup_->GetCapabilities(), 0xCu);
    EXPECT_EQ(Request(L"C:\\a.mp3"), kNetContentNotSupported);  // not open
    EXPECT_EQ(mgr_->Open(&NETCONTENT_ARTWORK_CHANNEL, &NETCONTENT_ARTWORK_CHANNEL, nullptr), kNetContentNotSupported);

    const struct {
        const char* name;
        void (*spoil)(StartRecord*);
    } refused[] = {
        {"size of the other architecture", [](StartRecord* s) { s->record.cbSize = sizeof(void*) == 4 ? 152 : 144; }},
        {"code of another key", [](StartRecord* s) { s->key[3] ^= 1; }},
        {"upper-case code", [](StartRecord* s) { for (char* c = s->code; *c; ++c) *c = char(toupper(*c)); }},
        {"no key", [](StartRecord* s) { s->record.clientKey = nullptr; }},
        {"no code", [](StartRecord* s) { s->record.clientCode = nullptr; }},
        {"empty name", [](StartRecord* s) { s->record.clientName[0] = 0; }},
        {"name without its end", [](StartRecord* s) { for (WCHAR& c : s->record.clientName) c = L'n'; }},
    };
    for (const auto& r : refused) {
        SCOPED_TRACE(r.name);
        StartRecord start;
        r.spoil(&start);
        EXPECT_EQ(mgr_->Initialize(&start.record), kNetContentBadArgument);
    }
    EXPECT_EQ(mgr_->Initialize(nullptr), kNetContentBadArgument);
    StartRecord start;
    ASSERT_EQ(mgr_->Initialize(&start.record), kNetContentOk);
    const GUID other = IID_INetContentMgr;
    EXPECT_EQ(mgr_->Open(&NETCONTENT_ARTWORK_CHANNEL, &other, nullptr), kNetContentBadArgument);
    EXPECT_EQ(mgr_->Open(&NETCONTENT_ARTWORK_CHANNEL, &NETCONTENT_ARTWORK_CHANNEL, nullptr), kNetContentOk);
    LONG pending = 5;
    EXPECT_EQ(mgr_->GetPendingFlag(&pending), kNetContentOk);
    EXPECT_EQ(pending, 0);
    EXPECT_EQ(Request(L""), kNetContentBadArgument);
    EXPECT_EQ(lookup_->RequestArtwork(1, 2, nullptr, 0, 0, 5, 0, 0, 0, 0, 0), kNetContentBadArgument);
}

TEST_F(NetContent, LooksBesideTheTrackThenInItsTags) {
    const std::string jpeg = "\xFF\xD8\xFF\xE0 cover \xFF\xD9";
    const std::string png = "\x89PNG folder";
    const struct {
        const char* name;
        std::vector<std::pair<std::wstring, std::string>> files;  // the first is the track
        LONG status;
        DWORD source;
        size_t size;
        std::string bytes;
    } cases[] = {
        {"cover.jpg before folder.png", {{L"t1.mp3", "no tag"}, {L"folder.png", png}, {L"cover.jpg", jpeg}}, 7, 1, jpeg.size(), jpeg},
        {"folder.png", {{L"t2.mp3", "no tag"}, {L"folder.png", png}}, 7, 1, png.size(), png},
        {"an empty cover.jpg does not count", {{L"t3.mp3", "no tag"}, {L"cover.jpg", ""}}, 8, 0, 0, ""},
        {"nothing", {{L"t4.flac", "fLaC"}}, 8, 0, 0, ""},
        {"the real MP3's embedded cover", {}, 7, 2, 142543, ""},
    };
    Start();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::wstring track = kxtest::FixtureFile(KX_NETCONTENT_TEST_FILES, "BeatThee.mp3");
        for (size_t i = 0; i < c.files.size(); ++i) {
            const std::wstring path = File(c.files[i].first, c.files[i].second);
            if (i == 0) track = path;
        }
        ResetEvent(answer_.done);
        answer_.bytes.clear();
        ASSERT_EQ(Request(track), kNetContentOk);
        ASSERT_EQ(WaitForSingleObject(answer_.done, 20000), WAIT_OBJECT_0);
        EXPECT_EQ(answer_.status, c.status);
        EXPECT_EQ(answer_.source, c.source);
        EXPECT_EQ(answer_.bytes.size(), c.size);
        if (!c.bytes.empty()) {
            EXPECT_EQ(std::string(answer_.bytes.begin(), answer_.bytes.end()), c.bytes);
        }
        EXPECT_NE(answer_.thread, GetCurrentThreadId());
        for (const std::wstring& f : files_) DeleteFileW(f.c_str());
    }
    EXPECT_EQ(answer_.calls, 5);
}

// The art service from the configuration: asked for the track's folder and name, busy while it
// answers, its body given back as the picture.
TEST_F(NetContent, AsksTheConfiguredArtService) {
    kxtest::LoopbackServer server("\x89PNG from the service");
    ASSERT_NE(server.Port(), 0);
    {
        kxtest::ScopedArtService service(server.Port(), L"/art/{folder}/{file}.png");
        Start();  // reads the configuration
    }

    ASSERT_EQ(Request(File(L"Song 1.mp3", "no tag")), kNetContentOk);
    ASSERT_TRUE(server.WaitForRequest(20000));
    EXPECT_EQ(server.RequestLine(), "GET /art/Album%20X/Song%201.png HTTP/1.1");
    EXPECT_EQ(Request(album_ + L"\\other.mp3"), kNetContentBusy);
    EXPECT_EQ(WaitForSingleObject(answer_.done, 0), WAIT_TIMEOUT);
    server.Answer();
    ASSERT_EQ(WaitForSingleObject(answer_.done, 20000), WAIT_OBJECT_0);
    EXPECT_EQ(answer_.status, kNetContentFound);
    EXPECT_EQ(answer_.source, DWORD(kSourceService));
    EXPECT_EQ(std::string(answer_.bytes.begin(), answer_.bytes.end()), "\x89PNG from the service");
}

}  // namespace
