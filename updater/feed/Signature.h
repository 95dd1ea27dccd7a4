#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <array>
#include <optional>

#include <sodium/crypto_hash_sha512.h>

namespace tidewell {

// Every file that is offered as an update is signed with Ed25519. What is signed is not the file
// itself but a short text about it, `signedText()`: so a file is verified while it is read.

using PublicKey = std::array<unsigned char, 32>;
/// Wiped when it is destroyed.
struct SecretKey : std::array<unsigned char, 64> {
    SecretKey() = default;
    SecretKey(const SecretKey&) = default;
    SecretKey& operator=(const SecretKey&) = default;
    ~SecretKey();
};
using Signature = std::array<unsigned char, 64>;

/// Each of these from its base64 form; empty when that is not one. A public key is refused that is
/// no proper point of the curve. Of a secret key, before and after which there may be white space,
/// no copy is left in memory.
std::optional<PublicKey> readPublicKey(const QByteArray& base64);
std::optional<SecretKey> readSecretKey(QByteArrayView base64);
std::optional<Signature> readSignature(const QByteArray& base64);

/// The other way round.
template <std::size_t Size>
QByteArray base64(const std::array<unsigned char, Size>& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(Size)).toBase64();
}

/// Length and SHA-512 of a file that passes by in pieces.
class FileDigest {
public:
    using Sum = std::array<unsigned char, 64>;

    FileDigest();

    void add(QByteArrayView bytes);
    qint64 length() const { return length_; }
    /// The sum of what was added so far.
    Sum sum() const;

private:
    crypto_hash_sha512_state state_;
    qint64 length_ = 0;
};

struct KeyPair {
    PublicKey publicKey;
    SecretKey secretKey;
};
KeyPair makeKeyPair();

PublicKey publicHalf(const SecretKey& key);

Signature sign(const SecretKey& key, const QByteArray& text);

/// Whether `signature` was made with the other half of `key` for this text.
bool isSigned(const PublicKey& key, const Signature& signature, const QByteArray& text);

} // namespace tidewell
