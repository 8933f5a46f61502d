// A set of 32 option bits.

#pragma once

#include <cstdint>

namespace du {

class Flags {
public:
    constexpr Flags() = default;
    constexpr explicit Flags(std::uint32_t bits) : m_bits(bits) {}

    constexpr std::uint32_t Bits() const { return m_bits; }
    constexpr bool Has(Flags flags) const { return (m_bits & flags.m_bits) == flags.m_bits; }

    friend constexpr Flags operator|(Flags a, Flags b) { return Flags(a.m_bits | b.m_bits); }
    friend constexpr bool operator==(Flags a, Flags b) = default;

private:
    std::uint32_t m_bits = 0;
};

}  // namespace du
