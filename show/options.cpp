#include "show/show.h"

#include <unordered_map>

#include "options/hooks.h"
#include "options/optiontable.h"
#include "show/writer.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

struct OptionNote {
    OptionFate fate = OptionFate::Taken;
    bool isSettled = false;
    Text source; /* of one of the command line */
};
std::unordered_map<NodePlace, OptionNote, PlaceHash> notes;

void noteSource(RecNr nr, const char *file) {
    notes[{cMP, nr}].source = file == nullptr ? "command line" : Text("option file ") + file;
}

void noteFate(ModRec *module, RecNr nr, OptionFate fate) {
    OptionNote &note = notes[{module, nr}];
    note.fate = fate;
    note.isSettled = true;
}

/* The text as an option file would have it: what its first character is says nothing. Lines of text
   stay as they are. */
Text optionText(ModRec *module, RecNr nr) {
    readRec(module, REC_TED, nr);
    Text text = optionalStri(module, tedRec.tedText);
    if (!text.empty() && tedRec.tedKind != TED_TEXT)
        text[0] = '-';
    return text;
}

Text fateText(const OptionNote &note) {
    if (!note.isSettled || note.fate == OptionFate::Refused)
        return ", refused";
    return note.fate == OptionFate::ForOtherModules ? ", for other modules" : "";
}

/* A range without a first record begins at record 1. */
template <typename F> void forEachOption(const TedRange &range, F func) {
    for (RecNr nr = range.first == 0 ? 1 : range.first; nr <= range.last; ++nr)
        func(nr);
}

void showGivenOptions(ModRec *module, const TedRange &range) {
    forEachOption(range, [&](RecNr nr) {
        const auto note = notes.find({module, nr});
        const OptionNote known = note == notes.end() ? OptionNote() : note->second;
        const Text source = known.source.empty() ? "record " + std::to_string(nr) : known.source;
        const Text text = optionText(module, nr);
        if (tedRec.tedKind == TED_TEXT)
            showFact(1, "text " + text + ", " + source);
        else
            showFact(1, "option " + text + ", " + source + fateText(known));
    });
}

/* The last option of the tree that set the one of this name ("TYP="), null for none. */
RecNr settingRecord(ModRec *module, const char *name) {
    RecNr found = 0;
    forEachOption(module->options->tedRange, [&](RecNr nr) {
        const auto note = notes.find({module, nr});
        if (note == notes.end() || note->second.fate != OptionFate::Taken)
            return;
        const Text text = optionText(module, nr);
        if (!text.empty() && isOptionStri(text.c_str() + 1, name) != nullptr)
            found = nr;
    });
    return found;
}

} // namespace

void noteOptions() {
    optionHooks.optionStored = noteSource;
    optionHooks.optionSettled = noteFate;
}

void showOptions(ModRec *module) {
    showGivenOptions(module, module->options->tedRange);
    showGivenOptions(module, module->cmdOptions);

    GlobalOptions preset;
    initMetaRec(&preset);
    std::unordered_map<Text, Text> defaults;
    forEachOptionInForce(preset,
                         [&](const char *name, const Text &value) { defaults[name] = value; });
    Text untouched;
    forEachOptionInForce(*module->options, [&](const char *name, const Text &value) {
        const Text text = Text("-") + name + value;
        const RecNr nr = value.empty() ? 0 : settingRecord(module, name);
        if (nr != 0)
            showFact(1, "in force: " + text + ", record " + std::to_string(nr));
        else if (value != defaults[name])
            showFact(1, "in force: " + text + ", which follows from other options");
        else if (!value.empty())
            addPart(untouched, text);
    });
    showFact(1, "defaults in force: " + untouched);
}
