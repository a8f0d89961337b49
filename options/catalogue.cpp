#include "options/catalogue.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>

#include "options/checkers.h"
#include "options/cmdline.h"
#include "options/hooks.h"
#include "options/optiontable.h"
#include "options/prefixopt.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* Where pass 3 stands. Scopes confine options to the modules that they name. */
enum Scope { SCOPE_OF_OTHERS = 0, SCOPE_NONE = 1, SCOPE_OF_THIS_MODULE = 2 };
Scope pass3Scope = SCOPE_NONE;
/* Whether the module of pass 3 is the first of its file prefix; worked out when a scope asks. */
std::optional<bool> firstOfItsPrefix;

/* The text of the current TedRec behind its first character. */
const char *optionText(ModRec *module) {
    const char *text = optionalStri(module, tedRec.tedText);
    return *text == '\0' ? text : text + 1;
}

/* Calls func(record number) with each record of the range that wasn't removed as the current
 * TedRec. */
template <typename F> void forEachTedRec(ModRec *module, const TedRange &range, F func) {
    for (RecNr nr = range.first == 0 ? 1 : range.first; nr <= range.last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind != TED_REMOVED)
            func(nr);
    }
}

bool isFirstOfItsPrefix(const ModRec *module) {
    const auto hasSamePrefix = [module](const auto &record) {
        return record->filePrefix == module->filePrefix;
    };
    const auto &records = modRecList.records;
    const auto first = std::find_if(records.begin(), records.end(), hasSamePrefix);
    return first != records.end() && first->get() == module;
}

/* Is `module` the first one whose file prefix an item of the list names? */
bool moduleIsInScopeList(const ModRec *module, std::string_view list) {
    for (;;) {
        const std::size_t length = std::min(list.find(':'), list.size());
        if (list.substr(0, length) == module->filePrefix) {
            if (!firstOfItsPrefix)
                firstOfItsPrefix = isFirstOfItsPrefix(module);
            return *firstOfItsPrefix;
        }
        if (length == list.size())
            return false;
        list.remove_prefix(length + 1);
    }
}

/* Keywords that a version control system fills in. */
bool isRcsKeyword(const char *text) {
    for (const char *word : {"AUTHOR", "DATE", "HEADER", "ID", "LOCKER", "LOG", "RCSFILE",
                             "REVISION", "SOURCE", "STATE"})
        if (const char *behind = isOptionStri(text, word))
            if (*behind == '\0' || *behind == ':')
                return true;
    return false;
}

/* Options that the first pass or the compiler has settled. */
bool isSettledElsewhere(const char *text) {
    for (const char *name : {"VERBOSE=", "A=", "L=", "PREFIXLEN=", "PREFIX="})
        if (isOptionStri(text, name) != nullptr)
            return true;
    return false;
}

bool scopeMark(const ModRec *module, const char *text) {
    if (const char *list = isOptionStri(text, "BEGIN-SCOPE=")) {
        pass3Scope = moduleIsInScopeList(module, list) ? SCOPE_OF_THIS_MODULE : SCOPE_OF_OTHERS;
        return true;
    }
    if (isOptionStri(text, "END-SCOPE") != nullptr) {
        pass3Scope = SCOPE_NONE;
        return true;
    }
    return false;
}

/* Notes a comment option, which is copied into generated files. */
bool noteComment(GlobalOptions *options, RecNr recNr, const char *text) {
    if (isOptionStri(text, "//") == nullptr && isOptionStri(text, "BEO=//") == nullptr)
        return false;
    if (options->comments.first == 0)
        options->comments.first = recNr;
    options->comments.last = recNr;
    return true;
}

/* Options whose test doesn't ask what kind of record they stand in. `*ok` is the result. */
bool isSpecialOption(ModRec *module, RecNr recNr, const char *text, bool *ok) {
    GlobalOptions *options = module->options.get();
    const NameOptPref *row = nullptr;
    if (isNamingOption(text, &row)) {
        const char *value = std::strchr(text, '=') + 1;
        *ok = getFixOpt(fixRecForKind(options, row->kind), text, value);
        return true;
    }
    for (const char *name : {"ENCF=", "DECF=", "ASKF=", "PRIF="}) {
        if (const char *value = isOptionStri(text, name)) {
            *ok = bitVector8OptionOK(nullptr, value);
            return true;
        }
    }
    if (const char *value = isOptionStri(text, "ALTENCF="))
        *ok = alternativeOptionOK(options, &options->altEncF, value);
    else if (const char *altValue = isOptionStri(text, "ALTDECF="))
        *ok = alternativeOptionOK(options, &options->altDecF, altValue);
    else if (const char *entry = isOptionStri(text, "ENTRY="))
        *ok = getFixOpt(&options->entries, text, entry);
    else
        return isOptionStri(text, "ALLOW") != nullptr || noteComment(options, recNr, text);
    return true;
}

/* A text "NAME=value" in a record of the compiler's. */
bool valueOptionOK(ModRec *module, const char *text) {
    bool known = false;
    const bool ok = tableOptionOK(module, text, &known);
    if (known)
        return ok;
    if (optionHooks.isTAVIOption != nullptr && optionHooks.isTAVIOption(text))
        return optionHooks.taviOptionOK(text);
    return isRcsKeyword(text);
}

/* One of the tool's own options, its name in upper case. */
bool beOptionOK(ModRec *module, const char *text) {
    if (const char *directory = isOptionStri(text, "-S="))
        return directoryOptionOK(&stxDir, directory);
    if (isOptionStri(text, "-PREFIXLEN=") != nullptr || isOptionStri(text, "-PREFIX=") != nullptr)
        return true;
    return optionHooks.globalBEOptionOK(module->metaRec.get(), text);
}

void tellFate(ModRec *module, RecNr nr, OptionFate fate) {
    if (optionHooks.optionSettled != nullptr)
        optionHooks.optionSettled(module, nr, fate);
}

} // namespace

void settleStoredOptions(ModRec *module) {
    GlobalOptions *options = module->options.get();
    initMetaRec(options);
    options->nrOfEntryTypes = mNode.nrOfEntryTypes;
    options->nrOfVisibleTypes = mNode.nrOfVisibleTypes;
    options->nrOfObjects = mNode.nrOfObjects;
    options->nrOfObjectSets = mNode.nrOfObjectSets;
    options->tedRange = {mNode.tedFirst, mNode.tedLast};
    checkGlobalOptions(module, options->tedRange);
    checkGlobalBEOptions(module, options->tedRange);
    checkCombinedModules(module);
}

void checkGlobalOptions(ModRec *module, const TedRange &range) {
    forEachTedRec(module, range, [module](RecNr nr) {
        pass2GlobalOptionOK(module, nr, tedRec.tedKind, optionText(module));
    });
    pass3Scope = SCOPE_NONE;
    firstOfItsPrefix.reset();
    forEachTedRec(module, range, [module](RecNr nr) {
        const bool ok = pass3GlobalOptionOK(module, nr, tedRec.tedKind, optionText(module));
        tellFate(module, nr,
                 pass3Scope == SCOPE_OF_OTHERS ? OptionFate::ForOtherModules
                 : ok                          ? OptionFate::Taken
                                               : OptionFate::Refused);
    });
}

bool pass2GlobalOptionOK(ModRec *module, RecNr, int, const char *text) {
    const char *value = isOptionStri(text, "PREFIX=");
    return value == nullptr || prefixOptOK(module, value);
}

bool pass3GlobalOptionOK(ModRec *module, RecNr recNr, int tedKind, const char *text) {
    if (tedKind == TED_REMOVED || tedKind == TED_TEXT)
        return false;
    if (isSettledElsewhere(text) || scopeMark(module, text) || pass3Scope == SCOPE_OF_OTHERS)
        return true;
    bool ok = true;
    if (isSpecialOption(module, recNr, text, &ok))
        return ok;
    const char *value = std::strchr(text, '=');
    if (value == nullptr || value[1] == '\0')
        return isRcsKeyword(text);
    return tedKind != TED_OPTION || valueOptionOK(module, text);
}

void checkGlobalBEOptions(ModRec *module, const TedRange &range) {
    forEachTedRec(module, range, [module](RecNr nr) {
        if (tedRec.tedKind != TED_BACKEND_OPTION)
            return;
        Text text = optionalStri(module, tedRec.tedText);
        const bool ok = beOptionOK(module, optionToUpper(text).c_str());
        tellFate(module, nr, ok ? OptionFate::Taken : OptionFate::Refused);
        if (ok)
            return;
        tedRec.tedKind = TED_REMOVED;
        writeRec(module, REC_TED, nr);
        std::fprintf(stderr, "\nWARNING : Option ignored: %.50s\n", text.c_str());
    });
}

void checkCombinedModules(ModRec *module) {
    GlobalOptions *options = module->options.get();
    if (options->combine.empty())
        return;
    std::vector<Text> words;
    splitCombineOption(options->combine.c_str(), options->prefixLength, &words);
    options->combine = words.front();

    const auto isNamedBy = [options](const ModRec *other, const Text &word) {
        return strncmp(word.c_str(), other->genPrefix.c_str(), options->prefixLength) == 0;
    };
    for (const Text &word : words) {
        if (isNamedBy(module, word))
            options->combined.push_back(module);
        for (const auto &import : module->imports)
            if (import->picMod != nullptr && isNamedBy(import->picMod, word))
                options->combined.push_back(import->picMod);
    }
}

const char *parseBEOption(const char *text, const char *name, std::size_t length) {
    const char *behindFirst = *text == '\0' ? text : text + 1;
    if (const char *tool = isOptionStri(behindFirst, "BEO="))
        return std::strncmp(tool, name, length) == 0 ? tool + length : nullptr;
    return *text == '-' ? text + 1 : text;
}

const char *parseBECommentOption(const char *text) {
    if (*text == '\0')
        return nullptr;
    if (const char *comment = isOptionStri(text + 1, "BEO=//"))
        return comment;
    return isOptionStri(text + 1, "//") != nullptr ? text + 1 : nullptr;
}
