// Timing run under Wine: PrepareArtBytes on a large photograph (open, fit into the thumbnail box,
// high-quality resize, metadata copy, JPEG save to the temp folder, read back, delete) against
// the bare cost of one GDI+ decode plus one JPEG encode of the same file, as a ratio measured in
// one run. Usage: bench_imaging.exe PHOTO [ROUNDS]   (./kx bench-imaging fetches and runs it)
#include "bench/win32/bench_clock.h"
#include "imaging/album_art.h"
#include "imaging/fit_box.h"
#include "imaging/win32/art_files_win32.h"
#include "tests/win/imaging/no_metadata_as_windows.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using kxbench::Median;
using kxbench::Now;

int wmain(int argc, wchar_t** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_imaging PHOTO [ROUNDS]\n");
        return 2;
    }
    const wchar_t* photo = argv[1];
    const int rounds = argc > 2 ? std::max(1, _wtoi(argv[2])) : 5;

    // Wine answers PropertyNotFound where Windows answers "no items"; bridged as on Windows (the
    // metadata copy then costs one query, as for a picture without items on Windows).
    CNoMetadataAsWindows gdip;
    CAlbumArt art(gdip, KxArtFiles());
    CGdiplusUtil& util = art.m_util;

    CGdipBitmap* opened = nullptr;
    DWORD code = 0;
    if (FAILED(util.GdiplusFileOpen(&opened, &code, photo))) {
        std::fprintf(stderr, "bench_imaging: %ls does not open\n", photo);
        return 1;
    }
    UINT width = opened->GetWidth(), height = opened->GetHeight();
    CGdipBitmap::Delete(opened);
    UINT fitWidth = width, fitHeight = height;
    ScaleToFitBox(&fitWidth, &fitHeight, kArtThumbnailBox, kArtThumbnailBox);

    WCHAR bare[MAX_PATH];
    GetTempPathW(MAX_PATH, bare);
    lstrcatW(bare, L"kx_bench_bare.jpg");
    CLSID jpeg;
    util.FormatCodeToGdiplusEncoder(KX_FORMAT_EXIF_JPEG, &jpeg);
    ULONG quality = kJpegQuality;
    kxgdip::EncoderParameters parameters = {1, {{kxgdip::EncoderQuality, 1, kxgdip::EncoderParameterValueTypeLong, &quality}}};

    std::vector<double> prepared, baseline;
    ULONG storedSize = 0;
    for (int round = 0; round < rounds; ++round) {
        double start = Now();
        BYTE* bytes = nullptr;
        ULONG size = 0;
        if (!art.PrepareArtBytes(&bytes, &size, photo, static_cast<INT>(fitWidth), static_cast<INT>(fitHeight),
                                 static_cast<INT>(width), static_cast<INT>(height))) {
            std::fprintf(stderr, "bench_imaging: PrepareArtBytes failed\n");
            return 1;
        }
        prepared.push_back(Now() - start);
        storedSize = size;
        CoTaskMemFree(bytes);

        // One decode and one JPEG encode of the same file at its own size.
        start = Now();
        KxBitmapPtr decoded(CGdipBitmap::FromFile(gdip, photo));
        if (!decoded || decoded->GetLastStatus() != kxgdip::Ok || decoded->Save(bare, &jpeg, &parameters) != kxgdip::Ok) {
            std::fprintf(stderr, "bench_imaging: the bare decode and encode failed\n");
            return 1;
        }
        decoded.reset();
        baseline.push_back(Now() - start);
        DeleteFileW(bare);
    }
    const double p = Median(prepared), b = Median(baseline);
    std::printf("photo: %ls, %u x %u (%.1f megapixels), thumbnail %u x %u, %lu bytes stored\n", photo, width, height,
                width * static_cast<double>(height) / 1e6, fitWidth, fitHeight, static_cast<unsigned long>(storedSize));
    std::printf("PrepareArtBytes: %.1f ms (median of %d)\n", p * 1000, rounds);
    std::printf("one decode plus one JPEG encode: %.1f ms (median of %d)\n", b * 1000, rounds);
    std::printf("ratio: %.2fx (goal: at most 2.2x)\n", p / b);
    return 0;
}
