#include "app/import/cad/StepValueText.h"

#include <fmt/format.h>

#include <StepBasic_ConversionBasedUnit.hxx>
#include <StepBasic_MeasureValueMember.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepBasic_NamedUnit.hxx>
#include <StepBasic_SiUnit.hxx>
#include <StepBasic_Unit.hxx>
#include <StepRepr_DescriptiveRepresentationItem.hxx>
#include <StepRepr_IntegerRepresentationItem.hxx>
#include <StepRepr_MeasureRepresentationItem.hxx>
#include <StepRepr_ReprItemAndMeasureWithUnit.hxx>
#include <StepRepr_ValueRepresentationItem.hxx>
#include <array>

#include "app/import/Utf8Text.h"

namespace zrsheet {
namespace {

// In the order of the kernel's enumerations.
constexpr std::array<const char*, 16> kPrefixes{"E", "P", "T", "G",        "M", "k", "h", "da",
                                                "d", "c", "m", "\xC2\xB5", "n", "p", "f", "a"};
constexpr std::array<const char*, 28> kUnits{
    "m", "g", "s", "A",   "K", "mol", "cd", "rad", "sr",           "Hz", "N",  "Pa", "J",  "W",
    "C", "V", "F", "ohm", "S", "Wb",  "T",  "H",   "\xC2\xB0\x43", "lm", "lx", "Bq", "Gy", "Sv"};

std::string UnitText(const StepBasic_Unit& unit) {
    const Handle(StepBasic_NamedUnit) named = unit.NamedUnit();
    if (const auto si = Handle(StepBasic_SiUnit)::DownCast(named); !si.IsNull()) {
        const std::string name = kUnits.at(static_cast<std::size_t>(si->Name()));
        return si->HasPrefix() ? kPrefixes.at(static_cast<std::size_t>(si->Prefix())) + name : name;
    }
    if (const auto other = Handle(StepBasic_ConversionBasedUnit)::DownCast(named); !other.IsNull())
        return TextOf(other->Name());
    return {};
}

std::string MeasureText(const Handle(StepBasic_MeasureWithUnit) & measure) {
    if (measure.IsNull() || measure->ValueComponentMember().IsNull()) return {};
    return OneLine(fmt::format("{:.15g} {}", measure->ValueComponent(), UnitText(measure->UnitComponent())));
}

}  // namespace

std::string TextOf(const Handle(TCollection_HAsciiString) & text) {
    return text.IsNull() ? std::string() : OneLine(text->ToCString());
}

std::string ValueTextOf(const StepRepr_RepresentationItem& item) {
    if (const auto* text = dynamic_cast<const StepRepr_DescriptiveRepresentationItem*>(&item))
        return TextOf(text->Description());
    if (const auto* measure = dynamic_cast<const StepRepr_MeasureRepresentationItem*>(&item))
        return MeasureText(measure->Measure());
    if (const auto* measure = dynamic_cast<const StepRepr_ReprItemAndMeasureWithUnit*>(&item))
        return MeasureText(measure->GetMeasureWithUnit());
    if (const auto* whole = dynamic_cast<const StepRepr_IntegerRepresentationItem*>(&item))
        return fmt::format("{}", whole->Value());
    if (const auto* value = dynamic_cast<const StepRepr_ValueRepresentationItem*>(&item)) {
        const auto member = value->ValueComponentMember();
        return member.IsNull() ? std::string() : fmt::format("{:.15g}", member->Real());
    }
    return {};
}

}  // namespace zrsheet
