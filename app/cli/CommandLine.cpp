#include "app/cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/document/ListColumn.h"
#include "app/document/StyleChoices.h"
#include "app/document/UserError.h"
#include "app/export/ExportSheet.h"
#include "app/sheet/PageLayout.h"

namespace zrsheet {
namespace {

constexpr int kBadInput = 2;
constexpr const char* kVersion = ZRSHEET_VERSION;
constexpr int kMostPixels = 20000;

constexpr const char* kAbout =
    "zrsheet makes illustrated parts sheets: a line picture of an assembly, numbered\n"
    "balloons with leaders to the parts, and the parts list beside it.";

constexpr const char* kExamples =
    "Examples:\n"
    "  zrsheet make pump.glb -o pump.svg\n"
    "      the sheet as SVG: the balloons and the list are text and lines, ready for a browser\n"
    "  zrsheet make pump.glb -o pump.svg -o pump.png -o pump.csv --view front\n"
    "      three files from one run, the pump seen from the front\n"
    "  zrsheet make pump.glb -o pump.svg --template '{item} ({quantity}x)' --combine\n"
    "      balloons that say how many, each with leaders to all instances of its part\n"
    "  zrsheet make pump.glb -o rotor.svg --select '/Pump/Rotor/*' --select 'Bolt*'\n"
    "      callouts for the parts of one assembly and for everything called Bolt...\n"
    "\n"
    "Exit codes: 0 done, 2 something given was wrong (one line on standard error says what).";

constexpr const char* kRunExamples =
    "A script is a text file, one command a line:\n"
    "  # Comments begin with a number sign; 'quotes' hold a word together.\n"
    "  import pump.glb\n"
    "  create\n"
    "  hide 'Upper Housing'\n"
    "  label set 7 'see page 12'\n"
    "  save pump.zrsheet\n"
    "  export pump.svg pump.csv\n"
    "Every command that changes the illustration is one entry of its history; one that fails\n"
    "changes nothing, and a line on standard error says FILE:LINE: what is wrong; what to do.\n"
    "\n"
    "Examples:\n"
    "  zrsheet run pump.zrs\n"
    "      stops at the first command that fails\n"
    "  zrsheet run --keep-going pump.zrs pump.zrsheet\n"
    "      opens the project first, and does all that can be done\n"
    "\n"
    "Exit codes: 0 done, 2 a command failed.\n"
    "'zrsheet shell' knows the same commands and tells about them: 'help', 'help COMMAND'.";

constexpr const char* kShellExamples =
    "Commands are those of scripts; 'help' lists them, 'help COMMAND' tells more.\n"
    "At a terminal lines can be edited, the arrow keys bring back former ones, the tab key\n"
    "completes commands, keywords, files, parts, callouts, items and templates, and the interrupt\n"
    "key gives up the line. The prompt shows what is open, with a * while it is not saved; 'quit'\n"
    "asks then. Former lines are kept in $XDG_STATE_HOME/zrsheet/history.\n"
    "From a pipe plain lines are read, all commands are done, and nothing is asked.\n"
    "\n"
    "Examples:\n"
    "  zrsheet shell pump.zrsheet\n"
    "  echo list items | zrsheet shell pump.glb\n"
    "\n"
    "Exit codes: 0 done, 2 a command from a pipe failed.";

constexpr const char* kLintExamples =
    "Labels over each other, the model or the page's border, leaders that cross or run into\n"
    "labels, and how long leaders are beside the shortest there could be.\n"
    "\n"
    "Examples:\n"
    "  zrsheet lint pump.zrsheet\n"
    "  zrsheet lint pump.step --json | jq .counts\n"
    "\n"
    "Exit codes: 0 no faults, 1 some, 2 bad input, 3 internal error.";

constexpr const char* kCheckExamples =
    "Items without callout or without parts, parts without item, callouts without item or\n"
    "without leader, leaders to parts that are covered, removed or lost, labels given twice:\n"
    "one line each, with what to do about it.\n"
    "\n"
    "Examples:\n"
    "  zrsheet check pump.zrsheet\n"
    "  zrsheet check pump.zrsheet --json | jq '.findings[].kind'\n"
    "\n"
    "Exit codes: 0 nothing was found, 1 something was found, 2 the project cannot be opened.";

std::string KnownExtensions() {
    std::string known;
    for (const auto extension : ExportExtensions())
        known += (known.empty() ? "" : ", ") + std::string(extension);
    return known;
}

void ReadSize(const std::string& text, SheetOptions& options) {
    int used = 0;
    const bool isSize = std::sscanf(text.c_str(), "%5dx%5d%n", &options.width, &options.height, &used) == 2 &&
                        static_cast<std::size_t>(used) == text.size();
    const bool isFit = isSize && options.width >= kLeastWidth && options.height >= kLeastHeight &&
                       options.width <= kMostPixels && options.height <= kMostPixels;
    if (!isFit) {
        throw UserError("size '" + text + "': give WIDTHxHEIGHT in pixels, from " +
                        std::to_string(kLeastWidth) + "x" + std::to_string(kLeastHeight) + " to " +
                        std::to_string(kMostPixels) + "x" + std::to_string(kMostPixels));
    }
}

void CheckOutputs(const MakeRequest& request) {
    for (const auto& output : request.outputs) {
        if (CanExport(output)) continue;
        throw UserError("output '" + output.string() + "': its format is not known; use one of " +
                        KnownExtensions());
    }
}

/// The options as text, until all of them are known to be there.
struct RawOptions {
    std::string view = "iso";
    std::string picture = "line";
    double outline = PictureChoice().outline;
    std::optional<std::string> size;
    std::string layout = "optimal";
    std::string pattern = "sides";
    double distance = zrcallouts::LayoutRules().distance;
    double gap = zrcallouts::LayoutRules().gap;
    double rows = zrcallouts::LayoutRules().rows;
    std::string paper = "none";
    std::string turn = "landscape";
    std::string list = "sheet";
    std::string columns;
    std::string numbering = "flat";
    std::optional<std::string> shape;
    std::optional<std::string> terminator;
    std::optional<double> fontSize;
    std::optional<double> lineWidth;
    std::vector<std::string> skipped;
    bool combine = false;
    bool drawOne = false;
    bool perInstance = false;
};

void DefineFiles(CLI::App& make, MakeRequest& request) {
    make.add_option("MODEL", request.options.model,
                    "The assembly: a STEP, glTF 2.0 (.glb, .gltf), IGES or STL file")
        ->type_name("")
        ->required();
    make.add_option(
            "-o,--output", request.outputs,
            "A file to write, once for each file.\nIts extension chooses the format: " + KnownExtensions())
        ->type_name("FILE")
        ->group("Output")
        ->required()
        ->allow_extra_args(false);
    make.add_option("--report", request.report,
                    "Where everything stands on the page, for programs:\na JSON file in page pixels")
        ->type_name("FILE")
        ->group("Output");
}

CLI::Option* DefineThreads(CLI::App& command, unsigned& threads) {
    return command.add_option("--threads", threads, "Threads to work with; 0: as many as the machine has")
        ->type_name("N")
        ->check(CLI::Range(0, 256).description(""))
        ->capture_default_str();
}

void DefinePicture(CLI::App& make, SheetOptions& options, RawOptions& raw) {
    make.add_option("--view", raw.view,
                    "From where the model is seen: iso, front, back, left, right,\ntop, bottom, or the "
                    "direction of the "
                    "look such as -1,-1,-1.\nY points up, the front towards Z")
        ->type_name("VIEW")
        ->group("Picture")
        ->capture_default_str();
    make.add_option("--size", raw.size,
                    "The page in pixels, 1600x1000 if not given; it grows when callouts\nor list need more")
        ->type_name("WxH")
        ->group("Picture");
    make.add_option("--style", raw.picture,
                    "How the model is drawn: line (lines on white parts, nothing but\nvectors), shaded (a "
                    "raster) or both (lines over shaded parts)")
        ->type_name("STYLE")
        ->group("Picture")
        ->capture_default_str();
    make.add_flag("--hidden-lines", options.picture.hidden, "Covered lines too, dashed")->group("Picture");
    make.add_option("--outline", raw.outline,
                    "Width of the parts' outlines in millimetres on paper; other lines\nare half as wide")
        ->type_name("MM")
        ->group("Picture")
        ->capture_default_str();
    DefineThreads(make, options.threads)->group("Picture");
}

void DefinePaper(CLI::App& make, SheetOptions& options, RawOptions& raw) {
    const auto add = [&make](const std::string& name, std::string& value, const std::string& type,
                             const std::string& help) {
        make.add_option(name, value, help)->type_name(type)->group("Paper");
    };
    add("--page", raw.paper, "PAPER",
        "Paper for all outputs: a4, a3 or letter, with a frame and a title\nblock. Without it only PDF is on "
        "paper, on A4, unless --size is\ngiven");
    add("--orientation", raw.turn, "KIND", "landscape (the default) or portrait");
    add("--list", raw.list, "PLACE",
        "The parts list on paper: on the sheet as far as it fits (the\ndefault), on a page of its own, or "
        "none");
    add("--title", options.paper.title, "TEXT", "The title; else it is the model's name");
    add("--date", options.paper.date, "TEXT", "For the title block; none is shown else");
}

void DefineLayout(CLI::App& make, RawOptions& raw) {
    const auto add = [&make](const std::string& name, auto& value, const std::string& type,
                             const std::string& help) {
        make.add_option(name, value, help)->type_name(type)->group("Layout")->capture_default_str();
    };
    add("--layout", raw.layout, "KIND",
        "optimal (nothing overlaps, no leaders cross, all are as short as\ncan be) or simple (each label to "
        "its nearest side)");
    add("--pattern", raw.pattern, "PATTERN",
        "Along what labels stand: sides, rectangle (evenly), columns, rows,\ncircle or silhouette");
    add("--distance", raw.distance, "N", "Of labels from the model, in pixels");
    add("--gap", raw.gap, "N", "Between labels at the least, in pixels");
    add("--rows", raw.rows, "N", "Of labels on each side at the most: 1 or 2");
}

void DefineCallouts(CLI::App& make, SheetOptions& options, RawOptions& raw) {
    make.add_option("--select", options.selection,
                    "Only parts of this name or, with a slash, this path; an\nassembly selects all in it. * "
                    "stands for any "
                    "characters.\nOnce for each pattern")
        ->type_name("PATTERN")
        ->group("Callouts")
        ->allow_extra_args(false);
    make.add_option("--template", options.labelTemplate,
                    "What balloons say: number, number-quantity, tag, name,\npart-number, split, the name of "
                    "one of the author's own, or a text\nwith {item}, {quantity}, {tag}, {name}, "
                    "{property:NAME} ...")
        ->type_name("NAME|TEXT")
        ->group("Callouts")
        ->capture_default_str();
    make.add_option("--templates", options.templates, "The author's own templates")
        ->type_name("FILE")
        ->group("Callouts");
    make.add_option("--balloon", raw.shape,
                    "The shape of balloons: round, hexagon, box, none (underlined\ntext) or split (a line "
                    "below the first line of the text)")
        ->type_name("SHAPE")
        ->group("Callouts");
    make.add_option("--terminator", raw.terminator,
                    "What leaders end with: dot, arrow, none or auto, an arrow on\nedges and outlines and "
                    "else a dot")
        ->type_name("KIND")
        ->group("Callouts");
    make.add_option("--font-size", raw.fontSize, "Of the text of balloons, in pixels")
        ->type_name("N")
        ->group("Callouts");
    make.add_option("--line-width", raw.lineWidth, "Of the lines of balloons, in pixels; leaders go with it")
        ->type_name("N")
        ->group("Callouts");
    auto* drawOne =
        make.add_flag("--draw-one", raw.drawOne,
                      "A part that is there several times gets one balloon with a\nleader to the instance "
                      "seen best (the default)");
    auto* combine = make.add_flag("--combine", raw.combine, "... one balloon with leaders to all instances");
    auto* perInstance = make.add_flag("--per-instance", raw.perInstance, "... a balloon for every instance");
    for (CLI::Option* option : {drawOne, combine, perInstance}) option->group("Callouts");
    drawOne->excludes(combine)->excludes(perInstance);
    combine->excludes(perInstance);
}

const std::map<std::string, ItemOrder> kOrders{
    {"structure", ItemOrder::Structure}, {"name", ItemOrder::Name}, {"place", ItemOrder::Place}};
const std::map<std::string, Corner> kCorners{{"top-left", Corner::TopLeft},
                                             {"top-right", Corner::TopRight},
                                             {"bottom-right", Corner::BottomRight},
                                             {"bottom-left", Corner::BottomLeft}};
const std::map<std::string, ItemLevel> kLevels{
    {"leaves", ItemLevel::Leaves}, {"top", ItemLevel::Top}, {"all", ItemLevel::All}};

/// An option that is one of a few words.
template <class Value>
void AddChoice(CLI::App& make, const std::string& name, Value& value,
               const std::map<std::string, Value>& words, const std::string& type, const std::string& help) {
    make.add_option(name, value, help)
        ->type_name(type)
        ->group("Parts list")
        ->transform(CLI::CheckedTransformer(words).description(""));
}

void DefineNumbers(CLI::App& make, SheetOptions& options, RawOptions& raw) {
    constexpr unsigned kMost = 999999;
    const auto add = [&make](const std::string& name, unsigned& value, unsigned least, unsigned most,
                             const std::string& help) {
        make.add_option(name, value, help)
            ->type_name("N")
            ->group("Parts list")
            ->check(CLI::Range(least, most).description(""))
            ->capture_default_str();
    };
    add("--start", options.numbering.start, 1, kMost, "The first number");
    add("--step", options.numbering.increment, 1, kMost, "From one number to the next");
    add("--digits", options.numbering.digits, 0, 9, "So many digits at least, with zeros in front");
    make.add_flag("--letters", options.numbering.alphabetic, "A, B ... Z, AA instead of numbers")
        ->group("Parts list");
    make.add_option("--prefix", options.numbering.prefix, "What stands in front of every number")
        ->type_name("TEXT")
        ->group("Parts list");
    AddChoice(make, "--order", options.order, kOrders, "ORDER",
              "Numbers by structure (the default), by name, or by the\nplace of the labels, clockwise");
    AddChoice(
        make, "--corner", options.corner, kCorners, "CORNER",
        "Where counting by place begins: top-left (the default),\ntop-right, bottom-right or bottom-left");
    AddChoice(
        make, "--level", options.rules.level, kLevels, "LEVEL",
        "Items are leaves (all parts, the default), top (what the\nproduct is put together from), or all");
    make.add_option("--skip", raw.skipped,
                    "Parts that are no items: a pattern of names, or\nPROPERTY=PATTERN. Once for each")
        ->type_name("RULE")
        ->group("Parts list")
        ->allow_extra_args(false);
}

void DefineList(CLI::App& make, SheetOptions& options, RawOptions& raw) {
    make.add_option("--numbering", raw.numbering, "flat (1, 2, 3) or hierarchical (1, 1.1, 1.2)")
        ->type_name("KIND")
        ->group("Parts list")
        ->check(CLI::IsMember({"flat", "hierarchical"}).description(""))
        ->capture_default_str();
    DefineNumbers(make, options, raw);
    make.add_option("--columns", raw.columns,
                    "Columns of the list: item, quantity, name, tag, level,\nproperty:NAME, with commas "
                    "between")
        ->type_name("COLUMNS")
        ->group("Parts list");
    make.add_option("--language", options.language, "Of the sheet's own texts: en, de, fr, es or ja")
        ->type_name("LANGUAGE")
        ->group("Parts list")
        ->check(CLI::IsMember({"en", "de", "fr", "es", "ja"}).description(""))
        ->capture_default_str();
}

void DefineLanguage(CLI::App& command, std::optional<std::string>& language) {
    command
        .add_option("--language", language,
                    "Of messages and of sheets that are begun: en, de, fr, es or\nja. Without it messages "
                    "follow the sheet")
        ->type_name("LANGUAGE")
        ->check(CLI::IsMember({"en", "de", "fr", "es", "ja"}).description(""));
}

void DefineRun(CLI::App& run, RunRequest& request) {
    run.add_option("SCRIPT", request.script, "The script")->type_name("")->required();
    run.add_option("PROJECT", request.project, "A project to open first")->type_name("");
    run.add_flag("--keep-going", request.keepsGoing, "Do the rest of the script after a command that failed");
    DefineLanguage(run, request.language);
    DefineThreads(run, request.threads);
    run.footer(kRunExamples);
}

void DefineShell(CLI::App& shell, ShellRequest& request) {
    shell.add_option("FILE", request.file, "A project (.zrsheet) or a model to begin with")->type_name("");
    DefineLanguage(shell, request.language);
    DefineThreads(shell, request.threads);
    shell.footer(kShellExamples);
}

void DefineCheck(CLI::App& check, CheckRequest& request) {
    check.add_option("PROJECT", request.project, "A project (.zrsheet)")->type_name("")->required();
    check.add_option("--model", request.model, "Where its model is now")->type_name("MODEL");
    check.add_flag("--json", request.asJson, "For programs: a JSON object instead of lines");
    DefineLanguage(check, request.language);
    DefineThreads(check, request.threads);
    check.footer(kCheckExamples);
}

void DefineLint(CLI::App& lint, LintRequest& request) {
    lint.add_option("FILE", request.file, "A project (.zrsheet), or a model as 'make' would draw it")
        ->type_name("")
        ->required();
    lint.add_option("--model", request.model, "Where the project's model is now")->type_name("MODEL");
    lint.add_flag("--json", request.asJson, "For programs: a JSON object instead of lines");
    DefineLanguage(lint, request.language);
    DefineThreads(lint, request.threads);
    lint.footer(kLintExamples);
}

void Interpret(const RawOptions& raw, MakeRequest& request) {
    SheetOptions& options = request.options;
    options.view = ParseViewDirection(raw.view);
    request.hasSize = raw.size.has_value();
    if (raw.size) ReadSize(*raw.size, options);
    options.picture.mode = ParsePictureMode(raw.picture);
    options.picture.outline = CheckedOutline(raw.outline);
    options.layout = {ParseLayoutMode(raw.layout),
                      {ParseLayoutPattern(raw.pattern), CheckedDistance(raw.distance), CheckedGap(raw.gap),
                       CheckedRows(raw.rows)}};
    options.paper.size = ParsePaperSize(raw.paper);
    options.paper.turn = ParsePaperTurn(raw.turn);
    options.paper.list = ParseListPlace(raw.list);
    if (!raw.columns.empty()) options.paper.listColumns = ParseListColumns(raw.columns);
    options.numbering.hierarchical = raw.numbering == "hierarchical";
    for (const std::string& rule : raw.skipped) options.rules.Skip(rule);
    if (raw.combine) options.leaders = LeaderChoice::All;
    if (raw.perInstance) options.leaders = LeaderChoice::PerInstance;
    if (raw.shape) options.style.shape = ParseShape(*raw.shape);
    if (raw.terminator) options.style.terminator = ParseTerminator(*raw.terminator);
    if (raw.fontSize) options.style.fontSize = CheckedFontSize(*raw.fontSize);
    if (raw.lineWidth) options.style.lineWidth = CheckedLineWidth(*raw.lineWidth);
    CheckOutputs(request);
}

int Report(const std::string& message) {
    std::fprintf(stderr, "zrsheet: %s\n", message.c_str());
    return kBadInput;
}

std::string InOneLine(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    return text;
}

void DefineMake(CLI::App& make, MakeRequest& request, RawOptions& raw) {
    make.footer(kExamples);
    DefineFiles(make, request);
    DefinePicture(make, request.options, raw);
    DefinePaper(make, request.options, raw);
    DefineLayout(make, raw);
    DefineCallouts(make, request.options, raw);
    DefineList(make, request.options, raw);
}

std::string Complaint(const CLI::App& app, const CLI::ParseError& error) {
    const auto chosen = app.get_subcommands();
    const auto unknown = chosen.empty() ? app.remaining() : std::vector<std::string>();
    const std::string command = chosen.empty() ? "" : " " + chosen.front()->get_name();
    return (unknown.empty() ? InOneLine(error.what())
                            : "'" + InOneLine(unknown.front()) + "' is no command") +
           "; 'zrsheet" + command + " --help' tells how it goes";
}

}  // namespace

CommandLine ReadCommandLine(int argc, const char* const* argv) {
    MakeRequest makeRequest;
    RunRequest runRequest;
    ShellRequest shellRequest;
    CheckRequest checkRequest;
    LintRequest lintRequest;
    RawOptions raw;
    CLI::App app(kAbout, "zrsheet");
    app.set_version_flag("--version", std::string("zrsheet ") + kVersion);
    app.require_subcommand(1);
    app.footer("'zrsheet COMMAND --help' tells about a command's options.");
    CLI::App* make =
        app.add_subcommand("make",
                           "Makes the illustrated parts sheet of a model.\nEvery part of the list gets a "
                           "balloon; its leader ends on the part, where it is seen best.");
    CLI::App* run = app.add_subcommand("run", "Does what a script says: illustrations step by step.");
    CLI::App* shell = app.add_subcommand("shell", "Does what is typed, command by command.");
    CLI::App* check = app.add_subcommand("check", "Tells what an illustration still lacks.");
    CLI::App* lint = app.add_subcommand("lint", "Tells how good the places of a sheet's labels are.");
    DefineMake(*make, makeRequest, raw);
    DefineRun(*run, runRequest);
    DefineShell(*shell, shellRequest);
    DefineCheck(*check, checkRequest);
    DefineLint(*lint, lintRequest);
    try {
        app.parse(argc, argv);
        if (run->parsed()) return runRequest;
        if (shell->parsed()) return shellRequest;
        if (check->parsed()) return checkRequest;
        if (lint->parsed()) return lintRequest;
        Interpret(raw, makeRequest);
        return makeRequest;
    } catch (const CLI::Success& success) {
        return app.exit(success);  // help or version
    } catch (const CLI::ParseError& error) {
        return Report(Complaint(app, error));
    } catch (const UserError& error) {
        return Report(error.what());
    }
}

}  // namespace zrsheet
