#include "app/document/SymbolShapes.h"

#include <gtest/gtest.h>

#include <map>

#include "app/document/UserError.h"
#include "tests/app/import/SolidChecks.h"

namespace zrsheet {
namespace {

// A face that is missing or turned inside out lets picks and the picture see through the symbol.
TEST(SymbolShapes, AreSolid) {
    const std::map<std::string, double> volumes{
        {"arrow", 0.4 * 0.4 * 0.45 / 3.0 + 0.16 * 0.16 * 0.55},
        {"cross", 3.0 * 0.16 * 0.16},
        {"diamond", 2.0 * 0.7 * 0.7 * 0.5 / 3.0},
    };
    for (const auto name : SymbolShapeNames()) {
        SCOPED_TRACE(name);
        const zrg::Shape& shape = *SymbolComponent(std::string(name))->GetShape()->GetShapeData();
        AssemblyPart part;
        part.positions.assign(shape.GetPositions().begin(), shape.GetPositions().end());
        part.indices.assign(shape.GetIndices().begin(), shape.GetIndices().end());
        ExpectClosed(part);
        EXPECT_NEAR(1e-9 * Volume(part), volumes.at(std::string(name)), 1e-6);
    }
    EXPECT_THROW(static_cast<void>(SymbolComponent("star")), UserError);
}

}  // namespace
}  // namespace zrsheet
