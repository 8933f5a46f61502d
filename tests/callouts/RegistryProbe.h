// Looks into the engine's registry: are its indexes what its callouts say?

#pragma once

#include <string>

#include "callouts/Callouts.h"

namespace zrcallouts {

class RegistryProbe {
public:
    /// Requires: `engine` outlives this; nothing changes it meanwhile.
    explicit RegistryProbe(const Callouts& engine) : m_engine(engine) {}

    /// What is wrong, "" when nothing is: callouts that are not exactly where their leaders lead,
    /// items that do not know their callouts, indications without callouts or callouts without. With
    /// `allowsFormer` callouts may be filed under parts and insets that they lead to no more, as they stay
    /// when parts leave an item.
    std::string Fault(bool allowsFormer) const;

private:
    std::string FaultOfParts(bool allowsFormer) const;
    std::string FaultOfInsets() const;
    std::string FaultOfItems() const;

    const Callouts& m_engine;
};

}  // namespace zrcallouts
