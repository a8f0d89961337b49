#include <algorithm>

#include "asntree/optionparts.h"
#include "options/catalogue.h"
#include "options/hooks.h"
#include "options/naming.h"
#include "options/optiontable.h"
#include "store/tree.h"

namespace asntree {

namespace {

constexpr std::string_view TOOL = "-BEO=VELMO=";
constexpr std::string_view OTHER_TOOL = "-BEO=";

/* A module that exists for its options alone: they are applied to it one after the other, as they
   will be when a tree is loaded, since some depend on others. */
struct Trial {
    ModRec module;
    std::shared_ptr<BEModMetaRec> tool; /* null if the tool's own options can't be checked */

    explicit Trial(int prefixLength) {
        module.options = std::make_shared<GlobalOptions>();
        module.options->prefixLength = static_cast<std::uint8_t>(prefixLength);
        initMetaRec(module.options.get());
        if (optionHooks.globalBEOptionOK != nullptr && treeHooks.newMetaRec != nullptr)
            tool = treeHooks.newMetaRec();
    }
};

bool isKnownName(Trial &trial, const char *option) {
    for (const char *name : {"ENCF=", "DECF=", "ASKF=", "PRIF=", "ALTENCF=", "ALTDECF="})
        if (isOptionStri(option, name) != nullptr)
            return true;
    bool known = false;
    tableOptionOK(&trial.module, option, &known);
    return known || isNamingOption(option, nullptr);
}

/* Without the tool's checks only the form can be looked at. */
std::string problemOfToolOption(Trial &trial, const std::string &text) {
    const std::string_view option = std::string_view(text).substr(TOOL.size());
    const std::size_t equals = option.find('=');
    if (equals == option.npos || equals == 0 || option.starts_with("VERSION"))
        return "velmo has no such option: ";
    if (trial.tool == nullptr || optionHooks.globalBEOptionOK(trial.tool.get(), text.c_str()))
        return {};
    return "velmo has no such option, or not with this value: ";
}

bool namesTool(const std::string &text) {
    const std::string_view rest = std::string_view(text).substr(OTHER_TOOL.size());
    return rest.starts_with("//") || rest.find('=') + 1 > 1;
}

/* What is wrong with an option; empty if it is good. */
std::string problemOf(Trial &trial, ModuleOption &option) {
    if (option.text.starts_with(TOOL))
        return problemOfToolOption(trial, option.text);
    if (option.text.starts_with(OTHER_TOOL))
        return namesTool(option.text) ? ""
                                      : "\"-BEO=\" needs the name of a tool, \"=\" and an option: ";
    const char *text = option.text.c_str() + 1;
    const bool forTool = isOptionStri(text, "VERBOSE=") != nullptr;
    if (!forTool && pass3GlobalOptionOK(&trial.module, 0, TED_OPTION, text))
        return {};
    if (isKnownName(trial, text))
        return "wrong value: ";
    /* What velmo takes on its own command line, so that one option file serves both. */
    const std::string toolText = std::string(TOOL) + text;
    if ((trial.tool == nullptr && !forTool) || !problemOfToolOption(trial, toolText).empty())
        return "unknown option: ";
    option.text = toolText;
    option.tedKind = TED_BACKEND_OPTION;
    return {};
}

} // namespace

void checkStoredOptions(OptionReader &reader) {
    Settings &settings = reader.settings;
    for (ScopeNr scope = 0; scope <= settings.scopes.size(); ++scope) {
        Trial trial(settings.prefixLength);
        for (ModuleOption &option : settings.options) {
            if (!option.stored || (option.scope != 0 && option.scope != scope))
                continue;
            const std::string problem = problemOf(trial, option);
            if (problem.empty() || option.scope != scope)
                continue;
            reader.where = option.where;
            refuse(reader, problem + option.text);
            reader.where.clear();
        }
    }
}

} // namespace asntree
