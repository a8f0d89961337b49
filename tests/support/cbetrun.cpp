#include "tests/support/cbetrun.h"

#include <sstream>

#include "base/files.h"
#include "cbet/engine.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/vars.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "options/catalogue.h"
#include "store/tree.h"
#include "tests/support/loadtree.h"

namespace {

const char *const fileNames[] = {nullptr, "body.c", "protos.ext"};

std::string withoutIndent(const std::string &text) {
    std::istringstream lines(text);
    std::string all, line;
    while (std::getline(lines, line))
        all += line.substr(std::min(line.find_first_not_of(' '), line.size())) + "\n";
    return all;
}

} // namespace

CbetRun::CbetRun(TreeWriter &tree, const std::vector<TreeWriter *> &imported) {
    for (TreeWriter *other : imported)
        other->save(dir.path(
            other->strings8[static_cast<std::size_t>(other->header().filePrefix) - 1] + ".stx"));
    treeHooks.newOptions = std::make_shared<GlobalOptions>;
    treeHooks.newMetaRec = std::make_shared<BEModMetaRec>;
    treeHooks.settleStoredOptions = settleStoredOptions;
    loadTree(dir, tree);
    resetStamps();
    cInitVars();
    for (int slot : {BODY_FILE, PROTO_FILE}) {
        initF(slot, dir.path("").c_str(), fileNames[slot]);
        openFWithPrefix(slot, "");
    }
}

GlobalOptions &CbetRun::options() {
    return *modRecList.records.front()->options;
}

std::string CbetRun::taken(int slot) {
    writeOpenFiles();
    std::string text = dir.read(fileNames[slot]).substr(read_[slot]);
    read_[slot] += text.size();
    return withoutIndent(text);
}

void CbetRun::forType(const std::string &name, const std::function<void(AsnType *)> &func) {
    forEachModule([&](AsnModule *module) {
        forEachType(module, [&](AsnType *type, int) {
            if (getTypeRef(type) != name)
                return;
            pushPath();
            func(type);
            popPath();
        });
    });
}

void CbetRun::forComp(const std::string &typeName, const std::string &compName,
                      const std::function<void(AsnType *)> &func) {
    forType(typeName, [&](AsnType *type) {
        forEachTypeCompOrElem(type, [&](AsnType *, AsnType *comp, int) {
            if (isElemType(comp) ? !compName.empty() : getTypeRef(comp) != compName)
                return;
            addCompNameToPath(comp);
            func(comp);
            removeCompNameFromPath(comp);
        });
    });
}

/* --- the generator that takes notes --- */

namespace {

void note(const char *word, AsnType *type, TypeFuncRun &run) {
    const Text ref = cHome(type, HOME_VALUE);
    putF(run.outFile, word, " ", ref, ";\n");
}

void noteLeaf(AsnType *type, TypeFuncRun &run) {
    if (isTypeExtensionmarker(type))
        putF(run.outFile, "leaf ...;\n");
    else
        note("leaf", type, run);
}

void noteFrame(AsnType *type, TypeFuncRun &run) {
    note("frame", type, run);
}
void noteSkip(AsnType *type, TypeFuncRun &run) {
    note("skip", type, run);
}
void noteIgnore(AsnType *, TypeFuncRun &run) {
    putF(run.outFile, "ignore;\n");
}

/* The presence test that each kind of father has, where the engine opens a brace behind it. */
void noteIsComp(AsnType *comp, TypeFuncRun &run) {
    AsnType *father = getFatherOfTypeComp(comp);
    const int kind = getTypeMainType(father);
    const bool several = nrOfWalkedComps(father) > 1;
    const Text name = getTypeCompRef(comp);
    if (isListType(father))
        putF(run.outFile, "if (end) break;\n");
    else if (getTypeCompStatus(comp) == TCS_OPTIONAL || (kind == TYP_CHOICE && several) ||
             (kind == TYP_SET && several && run.info.funcKind == decodingKind))
        putF(run.outFile, "if (is ", name, ")");
}

struct KindTexts {
    const char *funcPrefix;
    const char *entryPrefix;
    EntryBit entryBit;
    GIndex gIndex;
};
/* By FuncKind. */
constexpr KindTexts kindTexts[] = {
    {"d", "dec", ENTRY_DECODING, GIDX_CODING},
    {"p", "pri", ENTRY_PRINTING, GIDX_TESTING},
    {"e", "enc", ENTRY_ENCODING, GIDX_CODING},
    {"a", "ask", ENTRY_ASKING, GIDX_TESTING},
};

} // namespace

void CbetRun::generate(const TypeFuncInfo &info) {
    forEachModule([&](AsnModule *module) {
        const KindTexts &texts = kindTexts[info.funcKind];
        cGenerateTypeFunctions(
            module, {info, BODY_FILE, PROTO_FILE, texts.funcPrefix, texts.entryPrefix});
    });
}

TypeFuncInfo CbetRun::notingInfo(FuncKind kind) {
    return {
        .funcKind = kind,
        .entryBit = kindTexts[kind].entryBit,
        .tedBefore = TED_TYP_BEFORE,
        .tedAfter = TED_TYP_BEHIND,
        .gIndex = kindTexts[kind].gIndex,
        .reverseComps = kind == encodingKind,
        .trackPath = kind == decodingKind,
        .isCompFunc = noteIsComp,
        .skipFunc = noteSkip,
        .ignoreFunc = noteIgnore,
        .frameFunc = noteFrame,
        .leafFunc = noteLeaf,
    };
}

std::string functionText(const std::string &bodies, const std::string &name) {
    const std::size_t head = bodies.find("void " + name + " (");
    if (head == std::string::npos)
        return "";
    const std::size_t start = bodies.find("{\n", head) + 2;
    const std::size_t end = bodies.find("\n\nvoid ", start);
    std::string text = bodies.substr(start, end == std::string::npos ? end : end + 1 - start);
    return text.substr(0, text.rfind("}\n"));
}

std::vector<std::string> functionNames(const std::string &protos) {
    std::vector<std::string> names;
    const std::string before = "extern void ";
    std::istringstream lines(protos);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(before))
            names.push_back(line.substr(before.size(), line.find(" (") - before.size()));
    return names;
}
