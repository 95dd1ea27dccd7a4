#include "updater/feed/Signature.h"

#include <sodium.h>

#include <algorithm>
#include <stdexcept>

namespace tidewell {

namespace {

static_assert(std::tuple_size_v<PublicKey> == crypto_sign_PUBLICKEYBYTES);
static_assert(sizeof(SecretKey) == crypto_sign_SECRETKEYBYTES);
static_assert(std::tuple_size_v<Signature> == crypto_sign_BYTES);
static_assert(std::tuple_size_v<FileDigest::Sum> == crypto_hash_sha512_BYTES);

template <typename Bytes>
std::optional<Bytes> fromBase64(const QByteArray& base64) {
    const auto decoded =
        QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    Bytes bytes{};
    if (!decoded || decoded.decoded.size() != qsizetype(bytes.size())) {
        return std::nullopt;
    }
    std::ranges::copy(decoded.decoded, bytes.begin());
    return bytes;
}

/// Chooses the implementations that fit the processor, and opens the source of random numbers.
void startSodium() {
    static const bool isReady = sodium_init() >= 0;
    if (!isReady) {
        throw std::runtime_error("no source of random numbers");
    }
}

const unsigned char* bytesOf(const QByteArray& text) {
    return reinterpret_cast<const unsigned char*>(text.constData());
}

} // namespace

std::optional<PublicKey> readPublicKey(const QByteArray& base64) {
    startSodium();
    const auto key = fromBase64<PublicKey>(base64);
    return key && crypto_core_ed25519_is_valid_point(key->data()) == 1 ? key : std::nullopt;
}

std::optional<SecretKey> readSecretKey(QByteArrayView base64) {
    std::optional<SecretKey> key(std::in_place);
    std::size_t length = 0;
    const int status = sodium_base642bin(key->data(), key->size(), base64.data(),
                                         static_cast<std::size_t>(base64.size()), " \t\r\n",
                                         &length, nullptr, sodium_base64_VARIANT_ORIGINAL);
    if (status != 0 || length != key->size()) {
        key.reset();
    }
    return key;
}

std::optional<Signature> readSignature(const QByteArray& base64) {
    return fromBase64<Signature>(base64);
}

SecretKey::~SecretKey() {
    sodium_memzero(data(), size());
}

FileDigest::FileDigest() { // NOLINT(cppcoreguidelines-pro-type-member-init): the call does
    startSodium();
    crypto_hash_sha512_init(&state_);
}

void FileDigest::add(QByteArrayView bytes) {
    crypto_hash_sha512_update(&state_, reinterpret_cast<const unsigned char*>(bytes.data()),
                              static_cast<unsigned long long>(bytes.size()));
    length_ += bytes.size();
}

FileDigest::Sum FileDigest::sum() const {
    crypto_hash_sha512_state copy = state_;
    Sum sum;
    crypto_hash_sha512_final(&copy, sum.data());
    return sum;
}

KeyPair makeKeyPair() {
    startSodium();
    KeyPair pair{};
    crypto_sign_keypair(pair.publicKey.data(), pair.secretKey.data());
    return pair;
}

PublicKey publicHalf(const SecretKey& key) {
    startSodium();
    PublicKey half;
    crypto_sign_ed25519_sk_to_pk(half.data(), key.data());
    return half;
}

Signature sign(const SecretKey& key, const QByteArray& text) {
    startSodium();
    Signature signature;
    crypto_sign_detached(signature.data(), nullptr, bytesOf(text),
                         static_cast<unsigned long long>(text.size()), key.data());
    return signature;
}

bool isSigned(const PublicKey& key, const Signature& signature, const QByteArray& text) {
    startSodium();
    return crypto_sign_verify_detached(signature.data(), bytesOf(text),
                                       static_cast<unsigned long long>(text.size()),
                                       key.data()) == 0;
}

} // namespace tidewell
