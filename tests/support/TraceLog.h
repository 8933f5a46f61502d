// The lines that are traced.

#pragma once

#include <string>
#include <vector>

#include "dp/ZRTracer.h"

namespace zrtest {

/// Hears all tracers while it lives, on the tracing threads: one at a time may trace.
struct TraceLog {
    TraceLog() {
        dp::ZRTracer::SetSink([this](int level, const std::string& component, const std::string& category,
                                     const std::string& line) {
            m_lines.push_back(std::to_string(level) + ' ' + component + ' ' + category + ' ' + line);
        });
    }
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;
    ~TraceLog() { dp::ZRTracer::SetSink({}); }

    std::vector<std::string> m_lines;
};

}  // namespace zrtest
