#include "app/project/ModelRecord.h"

#include <map>
#include <span>
#include <string>
#include <unordered_map>

#include "app/file/Digest.h"
#include "app/project/ProjectFile.h"
#include "zrk/tree/ComponentNode.h"

namespace zrsheet {
namespace {

using zrk::illustration::SbomInstance;

constexpr std::size_t kDigits = 32;  // 128 bits tell more parts apart than there are

std::string Shortened(Digest& digest) { return digest.Hex().substr(0, kDigits); }

std::string DigestOf(const zrg::Shape& shape) {
    Digest digest;
    digest.Add(std::as_bytes(shape.GetPositions()));
    digest.Add(std::as_bytes(shape.GetIndices()));
    return Shortened(digest);
}

class Describer {
public:
    std::vector<ProjectInstance> Describe(const ProductModel& model) {
        const auto& instances = model.Instances();
        // Children stand after their parents, so that their digests are there first.
        for (std::size_t i = instances.size(); i-- > 0;)
            m_digests[instances[i].get()] = DigestOf(*instances[i]);
        std::vector<ProjectInstance> described;
        described.reserve(instances.size());
        for (const auto& instance : instances) {
            described.push_back(
                {instance->GetIdentifier().Text(), instance->GetName(), m_digests[instance.get()]});
        }
        return described;
    }

private:
    std::string DigestOf(const SbomInstance& instance) {
        const auto component = instance.GetComponentNode();
        const auto shape = component ? component->GetShape() : du::SmartPtr<zrk::Shape>();
        if (shape && shape->GetShapeData() != nullptr) {
            std::string& known = m_shapes[shape.get()];
            if (known.empty()) known = zrsheet::DigestOf(*shape->GetShapeData());
            return known;
        }
        Digest digest;
        for (const auto& child : instance.GetChildren()) {
            digest.Add(std::as_bytes(std::span<const char>(m_digests[child.get()])));
        }
        return Shortened(digest);
    }

    std::unordered_map<const zrk::Shape*, std::string> m_shapes;
    std::unordered_map<const SbomInstance*, std::string> m_digests;
};

}  // namespace

ModelRecord RecordModel(const ProductModel& model, const std::filesystem::path& file) {
    ModelRecord record;
    record.file = DescribeModel(file);
    record.instances = Describer().Describe(model);
    for (const auto& instance : model.Instances())
        record.properties[instance->GetIdentifier().Text()] = PropertiesOf(*instance);
    return record;
}

ModelRecord::Properties PropertiesOf(const SbomInstance& instance) {
    ModelRecord::Properties properties;
    for (const auto& [key, value] : instance.GetProperties()) {
        const auto& [group, name, source] = key;
        if (group.empty() && source.empty()) properties[name.Text()] = value.Text();
    }
    return properties;
}

}  // namespace zrsheet
