#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

using BadInput = CliFixture;
using Arguments = std::vector<std::string>;

struct Row {
    Arguments options;
    const char* culprit;
};

TEST_F(BadInput, WrongOptionsAreNamed) {
    Write("wedge.gltf", SmallModel());
    const std::vector<Row> rows{
        {{"--wings"}, "--wings"},
        {{"--view", "diagonal"}, "diagonal"},
        {{"--view", "0,0,0"}, "0,0,0"},
        {{"--size", "800"}, "'800'"},
        {{"--size", "10x10"}, "10x10"},
        {{"--size", "99999x99999"}, "99999x99999"},
        {{"--size", "999999x600"}, "999999x600"},
        {{"--template", "{nonsense}"}, "{nonsense}"},
        {{"--template", ""}, "template"},
        {{"--numbering", "roman"}, "roman"},
        {{"--language", "xx"}, "xx"},
        {{"--threads", "many"}, "many"},
        {{"--select", "Wing*"}, "Wing*"},
        {{"--combine", "--per-instance"}, "--per-instance"},
        {{"-o", "sheet.docx"}, "sheet.docx"},
        {{"-o", "sheet"}, "'sheet'"},
        {{"second.gltf"}, "second.gltf"},
        {{"--view"}, "--view"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        Arguments arguments{"make", "wedge.gltf", "-o", "sheet.svg"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        ExpectRefused(arguments, row.culprit);
    }
}

TEST_F(BadInput, MissingArgumentsAreNamed) {
    Write("wedge.gltf", SmallModel());
    ExpectRefused({}, "subcommand");
    ExpectRefused({"draw"}, "draw");
    ExpectRefused({"make"}, "MODEL");
    ExpectRefused({"make", "wedge.gltf"}, "--output");
    ExpectRefused({"make", "-o", "sheet.svg"}, "MODEL");
}

TEST_F(BadInput, UnusableModelsAreNamedAndCostNothing) {
    Write("empty.glb", "");
    Write("truncated.glb", SampleBytes().substr(0, SampleBytes().size() / 2));
    Write("text.gltf", "Dear Sir, please find the pump enclosed.\n");
    Write("lines.gltf",
          R"({"asset": {"version": "2.0"}, "scenes": [{"nodes": [0]}], "nodes": [{"name": "\n\r"}]})");
    for (const char* model : {"absent.glb", "empty.glb", "truncated.glb", "text.gltf", "lines.gltf", "."}) {
        SCOPED_TRACE(model);
        ExpectRefused({"make", model, "-o", "sheet.svg", "-o", "list.csv", "--report", "report.json"}, model);
    }
}

}  // namespace
}  // namespace zrsheet
