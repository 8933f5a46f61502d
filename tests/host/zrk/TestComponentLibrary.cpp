#include "zrk/world/ComponentLibrary.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/ErrorOf.h"

namespace zrk {
namespace {

// The user reads this text: it must name the file, and, for a wrong file, what it lacks or which version it
// is.
TEST(ComponentLibrary, SaysWhatIsMissing) {
    const struct {
        const char* name;
        const char* text;
    } rows[] = {
        {"noSuchComponent", "libnoSuchComponent.so"},
        {"zrg", "has no entry ZRDllVersion"},
        {"zr_other_component", "libzr_other_component.so is of version 0.0.1, but this program needs"}};
    for (const auto& row : rows) {
        const std::string text = zrtest::ErrorOf([&] { const ComponentLibrary library(row.name); });
        EXPECT_NE(text.find(row.text), std::string::npos) << text;
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
    }
}

}  // namespace
}  // namespace zrk
