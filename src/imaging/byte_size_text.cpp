// The short size text of a byte count.
#include "imaging/byte_size_text.h"

#include <cmath>
#include <cwchar>

namespace {

const LONGLONG KB = 1024, MB = KB * KB, GB = MB * KB, TB = GB * KB, PB = TB * KB;

// One range of counts: below `limit` the count is divided by `divisor`, cut to a whole number
// and shown with `decimals` decimals. From TB on the count is first shifted down by 20 bits, so
// those divisors are 2^20 smaller; that keeps the division inside a double's exact integers.
struct ByteSizeStep {
    LONGLONG limit;  // 0: no limit
    double divisor;
    int decimals;
    WCHAR unit;
};

const ByteSizeStep kSteps[] = {
    {10 * KB, 10.24, 2, L'K'},           {100 * KB, 102.4, 1, L'K'},          {1000 * KB, 1024.0, 0, L'K'},
    {10 * MB, 10485.76, 2, L'M'},        {100 * MB, 104857.6, 1, L'M'},       {1000 * MB, 1048576.0, 0, L'M'},
    {10 * GB, 10737418.24, 2, L'G'},     {100 * GB, 107374182.4, 1, L'G'},    {1000 * GB, 1073741824.0, 0, L'G'},
    {10 * TB, 10485.76, 2, L'T'},        {100 * TB, 104857.6, 1, L'T'},       {1000 * TB, 1048576.0, 0, L'T'},
    {10 * PB, 10737418.24, 2, L'P'},     {100 * PB, 107374182.4, 1, L'P'},    {1000 * PB, 1073741824.0, 0, L'P'},
    {0, 10995116277.76, 2, L'E'},
};
const int kStepCount = sizeof(kSteps) / sizeof(kSteps[0]);
const int kFirstShiftedStep = 9;  // TB

}  // namespace

std::wstring KxByteSizeText(LONGLONG bytes) {
    WCHAR text[64];
    if (bytes < 1024) {
        std::swprintf(text, 64, L"%d bytes", static_cast<int>(bytes));
        return text;
    }
    int i = 0;
    while (i < kStepCount - 1 && bytes >= kSteps[i].limit) ++i;
    // The small additions lift a count that lies exactly on a boundary above the division's
    // rounding error, so 1024 bytes give 1.00 KB and not 0.99 KB.
    const double scaled =
        i >= kFirstShiftedStep ? static_cast<double>(bytes >> 20) + 0.001 : static_cast<double>(bytes) + 0.00001;
    // Below each limit the cut count stays under 1000 units, under 100000 with its decimals.
    const int units = static_cast<int>(std::floor(scaled / kSteps[i].divisor));
    const int decimals = kSteps[i].decimals;
    if (decimals == 0) {
        std::swprintf(text, 64, L"%d", units);
    } else {
        const int scale = decimals == 2 ? 100 : 10;
        std::swprintf(text, 64, L"%d.%0*d", units / scale, decimals, units % scale);
    }
    const WCHAR unit[] = {L' ', kSteps[i].unit, L'B', L'\0'};
    return std::wstring(text) + unit;
}

LPWSTR KxFormatByteSize(LONGLONG bytes, LPWSTR buffer, UINT cchBuffer) {
    if (!buffer || cchBuffer == 0) return buffer;
    const std::wstring text = KxByteSizeText(bytes);
    const size_t count = text.size() < cchBuffer ? text.size() : cchBuffer - 1;
    text.copy(buffer, count);
    buffer[count] = L'\0';
    return buffer;
}
