// SHA-256, by which files and geometry are known again.

#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace zrsheet {

/// Takes in bytes, one piece after the other. One thread.
class Digest {
public:
    Digest();
    Digest(const Digest&) = delete;
    Digest& operator=(const Digest&) = delete;
    ~Digest();

    void Add(std::span<const std::byte> bytes);
    /// Ends the taking in. 64 hexadecimal digits.
    [[nodiscard]] std::string Hex();

private:
    struct Context;
    const std::unique_ptr<Context> m_context;
};

}  // namespace zrsheet
