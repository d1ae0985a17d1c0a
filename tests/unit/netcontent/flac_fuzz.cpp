// libFuzzer target: any bytes as a track file for kxnet::ReadFlacPicture. The reader must stay inside the
// bytes and never crash; a picture it answers lies inside them too, so it can be no larger.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "netcontent/tag_pictures.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const kxnet::MemorySource file(data, size);
    std::vector<uint8_t> picture;
    if (kxnet::ReadFlacPicture(file, &picture) && (picture.empty() || picture.size() > size)) __builtin_trap();
    picture.clear();
    kxnet::ReadEmbeddedPicture(file, &picture);
    return 0;
}
