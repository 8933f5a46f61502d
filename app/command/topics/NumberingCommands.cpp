#include "app/command/topics/NumberingCommands.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "app/command/Choices.h"
#include "app/command/SceneNames.h"
#include "app/command/Session.h"
#include "app/document/ItemOrder.h"
#include "app/document/ItemRules.h"
#include "app/document/UserError.h"
#include "app/text/ProgramText.h"

namespace zrsheet {
namespace {

using zrk::illustration::Numbering;

constexpr int kMostNumber = 999999;
constexpr int kMostDigits = 9;
constexpr std::array<std::string_view, 3> kOrders{"structure", "name", "place"};
constexpr std::array<std::string_view, 3> kLevels{"leaves", "top", "all"};
constexpr std::array<std::string_view, 2> kSwitch{"off", "on"};

/// Which of the words the option is; empty when it is not there.
std::optional<std::size_t> TakeChoice(Arguments& arguments, std::string_view name,
                                      std::span<const std::string_view> words) {
    const auto word = arguments.TakeOption(name);
    if (!word) return std::nullopt;
    const auto found = std::find(words.begin(), words.end(), *word);
    if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
    std::string known;
    for (const std::string_view each : words) known += (known.empty() ? "" : ", ") + std::string(each);
    throw UserError(arguments.WithUsage(std::string(name) + "=" + *word + ": give one of " + known));
}

void TakeWhole(Arguments& arguments, std::string_view name, int least, int most, unsigned& value) {
    const auto given = arguments.TakeNumberOption(name);
    if (!given) return;
    if (*given < least || *given > most || *given != static_cast<int>(*given)) {
        throw UserError(arguments.WithUsage(std::string(name) + ": give a whole number from " +
                                            std::to_string(least) + " to " + std::to_string(most)));
    }
    value = static_cast<unsigned>(*given);
}

Numbering TakeNumbering(const Document& document, Arguments& arguments, bool isHierarchical) {
    Numbering numbering;
    document.Items()->GetNumberingSettings(numbering);
    numbering.hierarchical = isHierarchical;
    if (const auto prefix = arguments.TakeOption("prefix")) numbering.prefix = *prefix;
    if (const auto separator = arguments.TakeOption("separator")) numbering.separator = *separator;
    TakeWhole(arguments, "start", 1, kMostNumber, numbering.start);
    TakeWhole(arguments, "step", 1, kMostNumber, numbering.increment);
    TakeWhole(arguments, "digits", 0, kMostDigits, numbering.digits);
    if (const auto letters = TakeChoice(arguments, "letters", kSwitch)) numbering.alphabetic = *letters == 1;
    return numbering;
}

std::vector<unsigned> TakeOrder(const Document& document, Arguments& arguments) {
    const auto order = TakeChoice(arguments, "by", kOrders).value_or(0);
    const auto corner = TakeChoice(arguments, "from", ChoicesOf("CORNER"));
    if (corner && kOrders[order] != "place")
        throw UserError(arguments.WithUsage("a corner to count from goes with by=place"));
    return OrderedItems(document, static_cast<ItemOrder>(order), static_cast<Corner>(corner.value_or(0)));
}

void NumberAll(Document& document, Arguments& arguments, bool isHierarchical) {
    const Numbering numbering = TakeNumbering(document, arguments, isHierarchical);
    const std::vector<unsigned> order = TakeOrder(document, arguments);
    arguments.ExpectEnd();
    const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(document.Items())};
    document.ItemList().SetNumbering(numbering, nullptr);
    document.ItemList().Renumber(order, nullptr);
}

void NumberOne(const Document& document, Arguments& arguments) {
    const std::string name = arguments.Take("ITEM");
    const unsigned id = FindItem(document, name);
    const int number = arguments.TakeWhole("NUMBER", 1, kMostNumber);
    arguments.ExpectEnd();
    if (document.ItemList().SetNumber(id, static_cast<unsigned>(number), nullptr)) return;
    throw UserError("item '" + name + "' cannot have the number " + std::to_string(number) +
                    ": another item has it, or the item has a label of its own ('item rename " + name +
                    " \"\"' takes that away)");
}

void Number(Session& session, Arguments& arguments) {
    const bool isFlat = arguments.TakeKeyword("flat");
    if (isFlat || arguments.TakeKeyword("hierarchical")) {
        NumberAll(session.Doc(), arguments, !isFlat);
    } else {
        NumberOne(session.Doc(), arguments);
    }
}

void SetLocked(const Document& document, Arguments& arguments, bool isLocked) {
    std::vector<unsigned> ids;
    for (const std::string& name : arguments.TakeSome("ITEM")) ids.push_back(FindItem(document, name));
    for (const unsigned id : ids) document.ItemList().SetLocked(id, isLocked, nullptr);
}

void Lock(Session& session, Arguments& arguments) { SetLocked(session.Doc(), arguments, true); }

void Unlock(Session& session, Arguments& arguments) { SetLocked(session.Doc(), arguments, false); }

void Update(Session& session, Arguments& arguments) {
    ItemRules rules;
    rules.level = static_cast<ItemLevel>(TakeChoice(arguments, "level", kLevels).value_or(0));
    while (const auto rule = arguments.TakeOption("skip")) rules.Skip(*rule);
    arguments.ExpectEnd();
    UpdateItems(session.Doc(), rules);
    const auto& items = session.Doc().Items();
    const auto ids = items->GetItemIds();
    const auto numbered =
        std::count_if(ids.begin(), ids.end(), [&items](unsigned id) { return items->GetItemized(id); });
    session.Out() << Text("items-numbered",
                          {{"numbered", static_cast<std::size_t>(numbered)}, {"all", ids.size()}})
                  << "\n";
}

}  // namespace

CommandTopic NumberingCommands() {
    return {
        "Numbering",
        {{"item number",
          "ITEM|flat|hierarchical [NUMBER] [prefix=TEXT] [separator=TEXT] [start=N] [step=N] [digits=N] "
          "[letters=on|off] [by=structure|name|place] [from=CORNER]",
          "give an item a number, or all of them new ones",
          "flat counts through, hierarchical counts below assemblies; prefix, start, step, digits (with "
          "zeros in "
          "front) and letters (A, B ... AA) are those of the top level, the separator stands between levels. "
          "by=place counts the labels clockwise from a corner: top-left, top-right, bottom-right or "
          "bottom-left. Between times, a number that was given once is not given to another item.",
          "item number flat start=10 step=10 by=place from=top-right", Effect::Changes, "Number Items",
          Number},
         {"item lock", "ITEM...", "let items keep their numbers when numbers are given anew", "",
          "item lock 4", Effect::Changes, "Lock Number", Lock},
         {"item unlock", "ITEM...", "take such a lock away", "", "item unlock 4", Effect::Changes,
          "Unlock Number", Unlock},
         {"item update", "[level=leaves|top|all] [skip=hidden|NAME|'PROPERTY=VALUE']...",
          "list what is missing, and say which items take part",
          "leaves are all parts, top is what the product is put together from, all are assemblies and what "
          "is in "
          "them. What is skipped gets no number; names and values may have * and ?. Items made by 'item add' "
          "stay as they are.",
          "item update level=top skip=hidden skip='Washer*'", Effect::Changes, "Update Items", Update}}};
}

}  // namespace zrsheet
