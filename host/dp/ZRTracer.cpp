#include "dp/ZRTracer.h"

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>
#include <utility>

namespace dp {
namespace {

struct Listener {
    std::mutex mutex;  // guards sink
    std::shared_ptr<const ZRTracer::Sink> sink;
};

Listener& TheListener() {
    static auto* const listener = new Listener();
    return *listener;
}

std::shared_ptr<const ZRTracer::Sink> CurrentSink() {
    const std::lock_guard hold(TheListener().mutex);
    return TheListener().sink;
}

std::string Format(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) return format;
    std::string line(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(line.data(), line.size() + 1, format, arguments);
    return line;
}

}  // namespace

void ZRTracer::operator()(int level, const char* format, ...) const {
    const auto sink = CurrentSink();
    if (!sink) return;
    std::va_list arguments;
    va_start(arguments, format);
    const std::string line = Format(format, arguments);
    va_end(arguments);
    (*sink)(level, m_component, m_category, line);
}

void ZRTracer::SetSink(Sink sink) {
    auto next = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    const std::lock_guard hold(TheListener().mutex);
    TheListener().sink.swap(next);
}

}  // namespace dp
