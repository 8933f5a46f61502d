// A small assembly as CAD programs write it, for the tests of their formats.

#pragma once

#include <filesystem>
#include <string>

namespace zrsheet {

struct StepChoices {
    std::string schema = "AP214IS";
    std::string unit = "MM";
    bool hasExternalFiles = false;  // each product in a file of its own beside it
};

/// "Clamp", in millimetres with Z upwards: a blue "Größe" block of 100 x 60 x 20 at the origin with a hole of
/// radius 10 through it, and two times the assembly "Bolt set", "left" and "right" at x 20 and 80 on the
/// block: a red "Bolt" of radius 5 and height 30 and a "Washer" with rounded edges.
void WriteStepSample(const std::filesystem::path& file, const StepChoices& choices = {});

/// A half ball "Dome" of radius 10 whose round side is two faces. The border of the second one is turned, as
/// some programs write it: taken at its word, it covers all of the ball but what it should.
void WriteDome(const std::filesystem::path& file);

/// The block alone.
void WriteIgesSample(const std::filesystem::path& file);

}  // namespace zrsheet
