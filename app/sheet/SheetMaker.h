// From a model to the finished sheet.

#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "app/document/Document.h"
#include "app/import/Assembly.h"
#include "app/sheet/Sheet.h"
#include "app/sheet/SheetOptions.h"

namespace zrsheet {

/// Told what is being done and how far it is, from 0 to 100. Called on any thread, one at a time.
using StageSink = std::function<void(std::string_view stage, int percent)>;

/// As many as wanted; 0: as many as the machine has.
[[nodiscard]] unsigned ThreadCount(unsigned wanted);

/// The page with the document as it stands. Requires: the document is settled. Any number of threads gives
/// the same sheet.
[[nodiscard]] Sheet DrawSheet(const Document& document, unsigned threads);

/// Starts the host, illustrates the model and stops the host again. The same model and options give the same
/// sheet, whatever the number of threads. Throws UserError. One at a time in a process.
[[nodiscard]] Sheet MakeSheet(Assembly assembly, const SheetOptions& options, const StageSink& sink);

struct SheetPair {
    Sheet sheet;
    std::optional<Sheet> print;  // if the options ask for it
};

/// The same, with the same illustration arranged for paper.
[[nodiscard]] SheetPair MakeSheetPair(Assembly assembly, const SheetOptions& options, const StageSink& sink);

}  // namespace zrsheet
