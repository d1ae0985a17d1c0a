// The CRC-32 and the client code derived from a client key, against values computed elsewhere.
#include "netcontent/client_code.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(ClientCode, Crc32CheckValue) {
    const char* check = "123456789";
    EXPECT_EQ(kxnet::Crc32(reinterpret_cast<const uint8_t*>(check), 9), 0xCBF43926u);
    EXPECT_EQ(kxnet::Crc32(nullptr, 0), 0u);
}

TEST(ClientCode, DerivedFromTheKeysFirstFourBytes) {
    const struct {
        const char* key;  // 16 bytes
        const char* code;
    } cases[] = {
        {"{1234567-0000-00", "9d446e61"},  // c1 = ea734241
        {"{D1180ABF-AFEC-4", "8e1d5564"},  // c1 = 7d6ada15
        {"{123XXXXXXXXXXXX", "9d446e61"},  // only the first four bytes count
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        char code[10];
        std::memset(code, 'x', sizeof(code));
        kxnet::DeriveClientCode(reinterpret_cast<const uint8_t*>(c.key), code);
        EXPECT_EQ(std::string(code), c.code);
    }
    const uint8_t zeros[16] = {};
    char code[10];
    kxnet::DeriveClientCode(zeros, code);
    EXPECT_STREQ(code, "8d6c9ee4");  // c1 = 2144df1c
}

}  // namespace
