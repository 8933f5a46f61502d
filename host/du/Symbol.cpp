#include "du/Symbol.h"

#include <array>
#include <atomic>
#include <mutex>
#include <unordered_set>

namespace du {
namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

/// A part of the table with a lock of its own, so that threads seldom meet.
struct Shard {
    std::mutex mutex;
    std::unordered_set<std::string, TextHash, std::equal_to<>> texts;  // its elements never move
};

constexpr std::size_t kShards = 16;

std::atomic<std::size_t> s_bytes{0};  // of all texts; a figure to look at, which nothing depends on

/// Of the table's entry, and of a text too long to lie inside it.
std::size_t BytesOf(const std::string& text) {
    constexpr std::size_t kEntry = sizeof(void*) + sizeof(std::string) + sizeof(std::size_t);
    return kEntry + (text.capacity() > std::string().capacity() ? text.capacity() + 1 : 0);
}

// Never destroyed: symbols in static storage outlive every other order of destruction.
std::array<Shard, kShards>& Shards() {
    static auto* const shards = new std::array<Shard, kShards>();
    return *shards;
}

const std::string* Intern(std::string_view text) {
    if (text.empty()) return nullptr;
    Shard& shard = Shards()[TextHash()(text) % kShards];
    const std::lock_guard hold(shard.mutex);
    const auto known = shard.texts.find(text);
    if (known != shard.texts.end()) return &*known;
    const std::string& added = *shard.texts.emplace(text).first;
    s_bytes.fetch_add(BytesOf(added), std::memory_order_relaxed);
    return &added;
}

const std::string& NoText() {
    static const auto* const text = new std::string();
    return *text;
}

}  // namespace

constinit const Symbol Symbol::EMPTY;

Symbol::Symbol(std::string_view text) : m_text(Intern(text)) {}

std::size_t Symbol::GetBytesInUse() { return s_bytes.load(std::memory_order_relaxed); }

const std::string& Symbol::Text() const { return m_text != nullptr ? *m_text : NoText(); }

}  // namespace du
