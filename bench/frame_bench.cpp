// The frame's hot paths: a string look-up (one LoadStringW below 511 characters, a growth step
// beyond) and a trace line with every sink off and with the file sink on.
#include <benchmark/benchmark.h>

#include <string>

#include "compat/winsys.h"
#include "frame/string_lookup.h"
#include "frame/trace_log.h"

namespace {

// LoadStringW over one fixed string, as the platform copies it.
class OneString : public IKxStringSource {
public:
    explicit OneString(size_t length) : text_(length, L's') {}
    int LoadStringW(HINSTANCE, UINT, LPWSTR buffer, int cchBuffer) override {
        int n = static_cast<int>(text_.size()) < cchBuffer - 1 ? static_cast<int>(text_.size()) : cchBuffer - 1;
        text_.copy(buffer, static_cast<size_t>(n));
        buffer[n] = L'\0';
        return n;
    }

private:
    std::wstring text_;
};

void BM_GetResourceString(benchmark::State& state) {
    OneString source(static_cast<size_t>(state.range(0)));
    HINSTANCE module = reinterpret_cast<HINSTANCE>(0x1000);
    for (auto _ : state) {
        LPWSTR text = nullptr;
        benchmark::DoNotOptimize(KxGetResourceString(source, module, 1, &text));
        CoTaskMemFree(text);
    }
}
BENCHMARK(BM_GetResourceString)->Arg(20)->Arg(510)->Arg(511)->Arg(4000);

class NullFile : public kxcompat::FakeFile {
public:
    BOOL Write(const void*, DWORD bytes, DWORD* written) override {
        *written = bytes;
        return TRUE;
    }
};

void BM_TraceLog(benchmark::State& state) {
    NullFile file;
    g_hTraceFile = state.range(0) ? file.handle() : nullptr;
    g_szTraceName = L"KxComResPlgin";
    for (auto _ : state) TraceLog(L"S:CGdiplusUtil::FitImageToDeviceDimension> ImageWidth = %d, ImageHeight = %d", 640, 480);
    g_hTraceFile = nullptr;
}
BENCHMARK(BM_TraceLog)->Arg(0)->Arg(1);

}  // namespace

BENCHMARK_MAIN();
