#include "app/command/Manual.h"

#include "app/command/TextTable.h"
#include "app/document/UserError.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

constexpr const char* kRules =
    R"(# The commands of zrsheet

`zrsheet run SCRIPT [PROJECT]` does what a script says, `zrsheet shell [PROJECT|MODEL]` what is typed. A script is a
UTF-8 text, one command a line:

    # Comments begin with a number sign.
    import pump.glb
    create                                  # callouts for all parts of the list
    move 'Hex Bolt*' '/Housing/Cover' \
        by 0,0.05,0
    save pump.zrsheet

- **Words** stand apart by spaces. `'...'` and `"..."` hold a word together; `\` makes the next character plain, in quotes
  too. A word that begins with `#` starts a comment, so ids of items are quoted: `'#7'`. `\` at the end of a line goes on
  with the next.
- **Arguments**: words in capitals below are to be filled in, small ones are keywords; `a|b` is one of both, `[]` may be left
  out, `...` repeated. Options, `name=value`, may stand anywhere. A quoted word is never a keyword nor an option.
- **PART** is a name or, with a slash, a path of the model; `*` stands for any characters, `?` for one; an assembly means all in
  it. **CALLOUT** is an id (`callout-3`) or a label, **ITEM** a label or `'#ID'`, **INSET** and **SYMBOL** `inset-1`, `symbol-1`.
- **Places** are pixels of the picture, from its top left corner; three numbers are the model's own axes, Y up.
- **A change** is one entry of the history, whatever it does; a command that fails changes nothing. A message says
  `FILE:LINE: command 'NAME': what is wrong; what to do`. `run` stops there with exit code 2; with `--keep-going` it does
  the rest first.
- **Messages** are in the language of the sheet, which `language` chooses, or of `--language`, in which `import` begins
  sheets too and which holds until `language` chooses another; without both, in English. At a terminal the shell begins in
  the language of the machine (`LC_ALL`, `LC_MESSAGES`, `LANG`). Complaints, and the details of `help`, are in English.
- **Unsaved changes** are never lost silently: `open`, `import` and `quit` ask at a terminal and fail in a script, unless
  `discard` is said; a script that ends with unsaved changes says so.
)";

/// Without the marks that Markdown would take for its own.
std::string Cell(std::string_view text) {
    std::string cell;
    for (const char c : text) {
        if (c == '|') cell += '\\';
        cell += c;
    }
    return cell;
}

std::string Sentence(const Command& command) {
    std::string text = Cell(command.summary);
    if (!command.details.empty()) text += ". " + Cell(command.details);
    return text;
}

std::string SummaryOf(const Command& command) { return CommandText(command.name, command.summary); }

std::string About(const Command& command) {
    std::string text = command.Usage() + "\n    " + SummaryOf(command) + "\n";
    if (!command.details.empty()) text += "    " + std::string(command.details) + "\n";
    return text + "    " + Text("help-example", {{"command", command.example}}) + "\n";
}

}  // namespace

std::string HelpOverview(const CommandTable& table) {
    std::string text;
    for (const CommandTopic& topic : table.Topics()) {
        TextTable lines({CommandText(topic.title, topic.title) + ":", ""});
        for (const Command& command : topic.commands) {
            lines.Add({"  " + std::string(command.name), SummaryOf(command)});
        }
        text += lines.Text();
    }
    return text + Text("help-hint") + "\n";
}

std::string HelpFor(const CommandTable& table, const std::string& name) {
    std::string text;
    for (const CommandTopic& topic : table.Topics()) {
        for (const Command& command : topic.commands) {
            if (command.name == name || command.name.starts_with(name + " ")) text += About(command);
        }
    }
    if (text.empty()) throw UserError("'" + name + "' is no command; 'help' lists them");
    return text;
}

std::string ManualPage(const CommandTable& table) {
    std::string text = kRules;
    for (const CommandTopic& topic : table.Topics()) {
        text +=
            "\n## " + std::string(topic.title) + "\n\n| Command | What it does | Example |\n|---|---|---|\n";
        for (const Command& command : topic.commands) {
            text += "| `" + Cell(command.Usage()) + "` | " + Sentence(command) + " | `" +
                    Cell(command.example) + "` |\n";
        }
    }
    return text;
}

}  // namespace zrsheet
