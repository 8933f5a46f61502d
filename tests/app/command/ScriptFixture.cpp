#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

// Four corners and twelve 16-bit indices as base64; three nodes show the wedge in three places.
constexpr const char* kRig = R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0, 3]}],
    "nodes": [{"name": "Frame", "children": [1, 2]}, {"mesh": 0, "name": "Left Wedge"},
              {"mesh": 0, "name": "Right Wedge", "translation": [3, 0, 0]},
              {"mesh": 1, "name": "Pin", "translation": [0, 3, 0]}],
    "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "indices": 1}]},
               {"primitives": [{"attributes": {"POSITION": 2}, "indices": 1}]}],
    "accessors": [{"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"},
                  {"bufferView": 1, "componentType": 5123, "count": 12, "type": "SCALAR"},
                  {"bufferView": 2, "componentType": 5126, "count": 4, "type": "VEC3"}],
    "bufferViews": [{"buffer": 0, "byteLength": 48}, {"buffer": 0, "byteOffset": 48, "byteLength": 24},
                    {"buffer": 1, "byteLength": 48}],
    "buffers": [{"byteLength": 72, "uri": "data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/AAACAAEAAAABAAMAAQACAAMAAAADAAIA"},
                {"byteLength": 48, "uri": "data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAAAAQAAAAAAAAAAAAAAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/"}]})";

}  // namespace

ScriptFixture::ScriptFixture()
    : m_session(std::make_unique<Session>(Session::Surroundings{m_out, {}, {}, 2})),
      m_former(fs::current_path()) {
    fs::current_path(m_folder.Path());
    Write("rig.gltf", kRig);
}

ScriptFixture::~ScriptFixture() {
    m_session.reset();
    fs::current_path(m_former);
}

std::string ScriptFixture::Run(const std::string& script, bool keepsGoing) {
    m_out.str("");
    std::istringstream lines(script);
    ScriptRunner(*m_session, m_out).Run(lines, "s", keepsGoing);
    return m_out.str();
}

std::string ScriptFixture::RunOnRig(const std::string& script, bool keepsGoing) {
    Run("import rig.gltf discard");
    return Run(script, keepsGoing);
}

std::string ScriptFixture::Dump() {
    return Run("list parts\nlist items\nlist callouts\nlist insets\nlist symbols\nlist templates\nhistory\n");
}

}  // namespace zrsheet
