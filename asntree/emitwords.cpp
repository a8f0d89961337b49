#include "asntree/directives.h"
#include "asntree/emitter.h"

#include "asntree/directives.h"

/* What words in the text say of a node itself; forms are chosen with them elsewhere. */

namespace asntree {

const Words *wordsOf(Emitter &e, const void *item) {
    return e.directives == nullptr || item == nullptr ? nullptr : wordsFor(*e.directives, item);
}

namespace {

bool wantsOctets(Emitter &e, const void *item) {
    const Words *words = wordsOf(e, item);
    return words != nullptr && words->has(WordKind::Int) && words->intForm == VF_NONE;
}

} // namespace

void findOctetTypes(Emitter &e) {
    if (e.directives == nullptr || e.directives->words.empty())
        return;
    std::vector<std::pair<const void *, const Type *>> stack;
    for (const TreePlan &tree : e.plan.trees)
        for (const Assignment *assignment : tree.definitions)
            stack.emplace_back(assignment, assignment->type);
    while (!stack.empty()) {
        const auto [item, type] = stack.back();
        stack.pop_back();
        if (type == nullptr)
            continue;
        if (wantsOctets(e, item))
            e.octetTypes.insert(type);
        for (const Component &component : type->components)
            stack.emplace_back(&component, component.type);
        stack.emplace_back(type->element, type->element);
    }
}

namespace {

/* A record on its way to its options. */
struct Worded {
    TreeState &ts;
    RecNr nr;
    const Words &words;
    std::string_view row; /* of naming options */

    TNode &rec() { return ts.tree().t(nr); }
    void set(TypeOption option) { rec().optionBits |= optionMask(option); }
};

void applyHolding(Worded &w) {
    if (w.words.has(WordKind::Pointer))
        w.set(OPT_POINTER);
    if (w.words.has(WordKind::Near))
        w.set(OPT_NEAR);
    if (w.words.has(WordKind::Home))
        w.set(OPT_HOME);
    if (w.words.has(WordKind::Frame))
        w.set(OPT_FRAME);
    if (w.words.has(WordKind::Skip)) {
        w.set(OPT_SKIPPED);
        w.rec().typeOptions.skipKind = w.words.skipCalls ? 1 : 0;
    }
    if (w.words.has(WordKind::Length))
        w.rec().typeOptions.definiteLength = w.words.definite ? 1 : 0;
    if (w.words.has(WordKind::Limit)) {
        w.rec().typeOptions.sizeLimit = w.words.limit;
        w.rec().typeOptions.sizeLimitMode = w.words.limitIsError ? 1 : 0;
    }
    if (w.words.has(WordKind::Extensions)) {
        w.rec().optionBits &= ~optionMask(OPT_SAVE_EXTENSIONS);
        if (w.words.saveExtensions)
            w.set(OPT_SAVE_EXTENSIONS);
    }
}

void applyTexts(Worded &w) {
    if (w.words.has(WordKind::Access))
        addTypeOption(w.ts, w.nr, TED_BACKEND_OPTION,
                      w.words.accessMacros ? "-BEO=VELMO=ACCESS-ROUTINES=MACROS"
                                           : "-BEO=VELMO=ACCESS-ROUTINES=NONE");
    for (const auto &[value, type] : w.words.any)
        addTypeOption(w.ts, w.nr, TED_OPTION, "$ANY=" + treeName(value) + ":" + treeName(type));
    for (const auto &[place, line] : w.words.embed) {
        w.set(OPT_EMBEDDED_TEXT);
        addTypeOption(w.ts, w.nr, TED_TEXT, "-" + place + " " + line);
    }
    for (const std::string &comment : w.words.comments)
        addTypeOption(w.ts, w.nr, TED_BACKEND_OPTION, "-//" + comment);
}

/* Definitions get theirs where the overrides of the plan are. */
void applyNaming(Worded &w) {
    if (w.row.empty())
        return;
    const std::pair<const char *, const std::string *> parts[] = {{"CONV=", &w.words.conv},
                                                                  {"PREF=", &w.words.prefix},
                                                                  {"NAME=", &w.words.name},
                                                                  {"SUFF=", &w.words.suffix}};
    for (const auto &[word, text] : parts)
        if (!text->empty()) {
            w.set(OPT_NAMING);
            addTypeOption(w.ts, w.nr, TED_OPTION, "-" + std::string(w.row) + word + *text);
        }
}

} // namespace

void applyWords(Emitter &e, TreeState &ts, const Pending &pending) {
    const Words *words = pending.item == nullptr ? nullptr : wordsOf(e, pending.item);
    if (words == nullptr)
        return;
    Worded w{ts, pending.nr, *words, pending.namingRow};
    applyHolding(w);
    applyTexts(w);
    applyNaming(w);
}

} // namespace asntree
