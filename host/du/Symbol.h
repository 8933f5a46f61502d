// Interned text: equal symbols share one address, so comparing and copying them costs nothing.

#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace du {

/// One table for the whole process, never destroyed. Making a symbol from text costs one hash look-up under a
/// lock: keep it out of inner loops. Any thread.
class Symbol {
public:
    /// The empty text.
    static const Symbol EMPTY;

    constexpr Symbol() = default;
    explicit Symbol(std::string_view text);
    explicit Symbol(const std::string& text) : Symbol(std::string_view(text)) {}
    explicit Symbol(const char* text) : Symbol(std::string_view(text)) {}

    /// What the texts of all symbols take, which stay for good: a program that makes ever new ones grows by
    /// it.
    static std::size_t GetBytesInUse();

    bool empty() const { return m_text == nullptr; }
    const std::string& Text() const;
    operator std::string() const { return Text(); }

    friend bool operator==(const Symbol& a, const Symbol& b) { return a.m_text == b.m_text; }
    /// By text, bytewise.
    friend bool operator<(const Symbol& a, const Symbol& b) {
        return a.m_text != b.m_text && a.Text() < b.Text();
    }

private:
    friend struct std::hash<Symbol>;

    const std::string* m_text = nullptr;  // in the table; null is the empty text
};

}  // namespace du

template <>
struct std::hash<du::Symbol> {
    std::size_t operator()(const du::Symbol& symbol) const noexcept {
        return std::hash<const void*>()(symbol.m_text);
    }
};
