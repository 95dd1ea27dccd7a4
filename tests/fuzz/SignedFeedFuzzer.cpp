#include "tests/fuzz/Require.h"
#include "updater/feed/SignedFeed.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    static const KeyPair keys = makeKeyPair();
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    require(!readSignedFeed(bytes, keys.publicKey)); // nobody guesses a signature
    const auto read =
        readSignedFeed(base64(sign(keys.secretKey, bytes)) + '\n' + bytes, keys.publicKey);
    if (!read) {
        return 0;
    }
    require(read->serial >= 0 && bytes.endsWith(read->feed));
    const auto again = readSignedFeed(publish(*read, keys.secretKey), keys.publicKey);
    require(again && again->serial == read->serial && again->expires == read->expires &&
            again->feed == read->feed);
    return 0;
}
