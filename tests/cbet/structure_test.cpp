#include <algorithm>

#include <gtest/gtest.h>

#include "gen/fileset.h"
#include "gen/generators.h"
#include "model/modules.h"
#include "tests/support/cbetrun.h"

/* Bodies of generated functions in places that few modules have. */

namespace {

TEST(Structure, UnknownSkipKindIsAFault) {
    TreeWriter w("Mod", "mod");
    w.define("T", w.sequence({w.comp("b", w.boolean()).skipped(2)}));
    CbetRun run(w);
    EXPECT_EXIT(run.generate(decodingKind), testing::ExitedWithCode(2),
                "Unknown SKIP option value.");
}

/* A SET counts as its components do in a walk, whatever its record says. */
TEST(Structure, ComponentsOfCountOneByOne) {
    TreeWriter w("Mod", "mod");
    w.define("Part", w.set({w.comp("a", w.boolean()), w.comp("b", w.null())}));
    TypeNode whole = w.set({w.componentsOf(w.ref("Part"))});
    w.define("Whole", whole);
    w.finish();
    whole->nrOfComps = 1;
    CbetRun run(w);
    fiDec = BODY_FILE;
    fiDecE = PROTO_FILE;
    forEachModule([](AsnModule *module) { generateDecodingFunctions(module); });
    const std::string decoder = functionText(run.body(), "dWhole");
    EXPECT_NE(decoder.find("else if (d_CurrTag () == TAG(TAG_UNI, TAG_PRI, 5)){\n"
                           "if (compmask & BIT(1)){\n"),
              std::string::npos)
        << decoder;
    EXPECT_EQ(std::count(decoder.begin(), decoder.end(), '{'),
              std::count(decoder.begin(), decoder.end(), '}'));
}

/* The body behind a MORLA entry that is a synonym lies in hometab, also where the module of that
   body has no entries of its own. */
TEST(Structure, SynonymOfAnotherModuleInHometab) {
    TreeWriter base("Base", "base");
    base.define("Far", base.choice({base.comp("a", base.boolean()), base.comp("b", base.null()),
                                    base.marker()}));
    base.option("-DEFINITION-CATEGORY=MORLA-SERVICE");
    TreeWriter w("Mod", "mod");
    w.option("-DEFINITION-CATEGORY=MORLA-SERVICE");
    w.exportsMarked();
    w.define("FarSyn", w.ref(base, "Far")).entry().exported(false);
    CbetRun run(w, {&base});
    run.generate(encodingKind);
    EXPECT_EQ(functionNames(run.protos()), std::vector<std::string>{"encFarSyn"});
    EXPECT_EQ(functionText(run.body(), "encFarSyn"), R"(if (hometab [1]){
leaf hometab [1]->val.null;
freeAsn (&hometab [1], FREE_STG);
}
else if (hometab [0]){
leaf hometab [0]->val.bool;
freeAsn (&hometab [0], FREE_STG);
}
)");
}

} // namespace
