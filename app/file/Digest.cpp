#include "app/file/Digest.h"

#include <openssl/evp.h>

#include <array>
#include <stdexcept>

namespace zrsheet {
namespace {

void Expect(int result) {
    if (result != 1) throw std::runtime_error("the system's cryptography library has no SHA-256");
}

}  // namespace

struct Digest::Context {
    EVP_MD_CTX* state = EVP_MD_CTX_new();
};

Digest::Digest() : m_context(std::make_unique<Context>()) {
    Expect(EVP_DigestInit_ex(m_context->state, EVP_sha256(), nullptr));
}

Digest::~Digest() { EVP_MD_CTX_free(m_context->state); }

void Digest::Add(std::span<const std::byte> bytes) {
    Expect(EVP_DigestUpdate(m_context->state, bytes.data(), bytes.size()));
}

std::string Digest::Hex() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned size = 0;
    Expect(EVP_DigestFinal_ex(m_context->state, bytes.data(), &size));
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (unsigned i = 0; i < size; ++i) {
        text += kDigits[bytes[i] >> 4U];
        text += kDigits[bytes[i] & 15U];
    }
    return text;
}

}  // namespace zrsheet
