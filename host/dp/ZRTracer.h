// Diagnostic trace lines of a component, by category and level.

#pragma once

#include <functional>
#include <string>

namespace dp {

/// Cheap when nobody listens: nothing is formatted. Any thread.
class ZRTracer {
public:
    using Sink = std::function<void(int level, const std::string& component, const std::string& category,
                                    const std::string& line)>;

    /// Requires: both texts outlive the tracer.
    ZRTracer(const char* component, const char* category) : m_component(component), m_category(category) {}

    /// Sends one line, formatted as by printf. Lower levels matter more.
    void operator()(int level, const char* format, ...) const __attribute__((format(printf, 3, 4)));

    /// Who hears the lines of all tracers; an empty sink, nobody. The sink is called on the tracing thread,
    /// with no lock held.
    static void SetSink(Sink sink);

private:
    const char* m_component;
    const char* m_category;
};

}  // namespace dp
