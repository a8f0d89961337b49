#include "asntree/emitter.h"

#include "asntree/recursion.h"
#include "store/ketramac.h"

/* Forms that are chosen by what is around a type: of types that contain themselves, of numbers in
   lists and homes. */

namespace asntree {

namespace {

void makeList(Emitter &e, TreeState &ts, RecNr nr) {
    TNode &node = ts.tree().t(nr);
    node.valueFieldCode = VF_LIST;
    node.controlFieldCode = VF_NONE;
    node.optionBits &= ~optionMask(OPT_DYNAMIC_ARRAY);
    if (auto word = ts.arrayWords.find(nr); word != ts.arrayWords.end())
        error(e.c.diagnostics, word->second->place,
              "`" + word->second->text +
                  "` can't be obeyed: the element refers back to the list, which only a linked list "
                  "can hold");
}

/* -RECURSION= */
void reportRecursion(Emitter &e, TreeState &ts) {
    for (const Assignment *assignment : ts.plan->definitions) {
        auto place = e.types.find(assignment);
        if (place == e.types.end() ||
            (ts.tree().t(place->second.nr).typeFlags & TYPE_RECURSIVE) == 0)
            continue;
        const std::string text =
            "`" + std::string(assignment->name.text) + "` contains itself (-RECURSION=)";
        if (ts.settings.recursion == RECURSION_IS_ERROR)
            error(e.c.diagnostics, assignment->name.place, text);
        else
            warning(e.c.diagnostics, assignment->name.place, text);
    }
}

} // namespace

void markRecursion(Emitter &e, TreeState &ts) {
    Tree &tree = ts.tree();
    for (const RecursiveReference &found : recursiveReferences(tree)) {
        tree.t(found.definition).typeFlags |= TYPE_RECURSIVE;
        if (found.list != 0) {
            makeList(e, ts, found.list);
        } else if (found.reference != found.definition) {
            TNode &reference = tree.t(found.reference);
            reference.typeFlags |= TYPE_RECURSIVE;
            reference.optionBits |= optionMask(OPT_POINTER);
        }
    }
    if (ts.settings.recursion != 0)
        reportRecursion(e, ts);
}

namespace {

void narrow(Emitter &e, TreeNode node) {
    const TreeNode base = baseNode(e, node);
    if (base.rec().mainType != TYP_INTEGER || base.rec().valueFieldCode != VF_UI64)
        return;
    base.rec().valueFieldCode = VF_I64;
    base.tree->out->notes.push_back(
        {nullptr,
         "line " + std::to_string(base.rec().lineNr) +
             ": the number is held with a sign, since items of lists and homes have no other form"});
}

} // namespace

void narrowHeldNumbers(Emitter &e, TreeState &ts) {
    const auto count = static_cast<RecNr>(ts.tree().tNodes.size());
    for (RecNr nr = 1; nr <= count; ++nr) {
        const TNode &node = ts.tree().t(nr);
        if (isListKind(node.mainType) && node.valueFieldCode == VF_LIST && node.refRecord > 0)
            narrow(e, {&ts, node.refRecord});
        else if ((node.optionBits & optionMask(OPT_HOME)) != 0 ||
                 (ts.settings.entriesInHomes && (node.entryFlags & ENTRY_TYPE_FLAG) != 0))
            narrow(e, {&ts, nr});
    }
}

} // namespace asntree
