// How a piece of text looks.

#pragma once

#include <string>

namespace zrannotations {

struct TextProperties {
    std::string fontFamily = "DejaVu Sans";
    double size = 13.0;  // pixels
    bool isBold = false;

    friend bool operator==(const TextProperties&, const TextProperties&) = default;
};

}  // namespace zrannotations
