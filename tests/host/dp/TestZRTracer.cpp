#include "dp/ZRTracer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace dp {
namespace {

TEST(ZRTracer, SendsWholeLinesToTheSinkUntilItIsTakenAway) {
    std::vector<std::string> lines;
    const ZRTracer trace("callouts", "create");
    const std::string longText(5000, 'x');  // longer than any buffer one would put on the stack
    trace(1, "nobody hears %d", 0);
    ZRTracer::SetSink(
        [&](int level, const std::string& component, const std::string& category, const std::string& line) {
            lines.push_back(std::to_string(level) + " " + component + "/" + category + ": " + line);
        });
    trace(2, "item %d of %s", 7, "list");
    trace(3, "%s", longText.c_str());
    trace(4, "100%%");
    ZRTracer::SetSink({});
    trace(1, "nobody hears %d", 1);
    EXPECT_EQ(lines, (std::vector<std::string>{"2 callouts/create: item 7 of list",
                                               "3 callouts/create: " + longText, "4 callouts/create: 100%"}));
}

// A sink that traces again or replaces itself must not meet a lock that the tracer holds.
TEST(ZRTracer, CallsTheSinkWithNoLockHeld) {
    int calls = 0;
    const ZRTracer trace("callouts", "create");
    ZRTracer::SetSink([&](int, const std::string&, const std::string&, const std::string&) {
        if (++calls == 1) trace(1, "again");
        ZRTracer::SetSink({});
    });
    trace(1, "first");
    trace(1, "gone");
    EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace dp
