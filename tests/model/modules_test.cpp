#include "model/modules.h"

#include "tests/model/modelsetup.h"

namespace {

/* Modules a and b import each other; c is imported without being followed, d by c. Module a imports
   d too, but follows it by way of b only. */
struct Circle {
    TreeWriter a{"A", "a"}, b{"B", "b"}, c{"C", "c"}, d{"D", "d"};
    ModelSetup setup;
    Circle() {
        a.import(d, false);
        a.import(b);
        a.import(c, false);
        b.import(a);
        b.import(c, false);
        b.import(d);
        c.import(d);
        a.source("dir/", "a.asn");
        for (TreeWriter *tree : {&b, &c, &d})
            tree->save(setup.dir.path(
                tree->strings8[static_cast<std::size_t>(tree->header().filePrefix) - 1] + ".stx"));
        setup.load(a);
    }
};

TEST(Modules, ExportersAreVisitedOnce) {
    Circle t;
    std::string text;
    const auto note = [&](AsnModule *exporting) {
        EXPECT_TRUE(isCurrentModule(exporting));
        text += getModuleRef(exporting) + " ";
    };
    forEachExportingModule(t.setup.module, note);
    EXPECT_EQ(text, "B ");
    /* D is marked in B; C, which imports it too, is followed by nobody. */
    forEachExporterFirst(t.setup.module, nullptr, note);
    EXPECT_EQ(text, "B D B ");
    EXPECT_TRUE(isCurrentModule(t.setup.module));
}

TEST(Modules, NamedModulesInOrder) {
    Circle t;
    std::string text;
    forEachModule([&](AsnModule *module) {
        text += module->modRec->filePrefix;
        cMP = nullptr;
    });
    EXPECT_EQ(text, "a"); /* the others came in through imports */
    EXPECT_TRUE(isCurrentModule(t.setup.module));
    forFirstModule([&](AsnModule *module) { text += module->modRec->filePrefix; });
    EXPECT_EQ(text, "aa");
    EXPECT_EXIT(forEachModule(nullptr), testing::ExitedWithCode(2),
                "Call-back function not defined");
}

TEST(Modules, Questions) {
    Circle t;
    AsnModule *module = t.setup.module;
    EXPECT_EQ(getModuleFilePath(module), "dir/a.asn");
    EXPECT_EQ(getModulePrefix(module), "a");
    EXPECT_EQ(getGenerationOption(module, 0) + getGenerationOption(module, 17), GEN_NONE);
    GlobalOptions *options = getGlobalOptions(module);
    options->cGeneration = 1u << CGEN_EXTERNAL;
    EXPECT_TRUE(testCGenerationOption(module, CGEN_EXTERNAL + 32));
    EXPECT_FALSE(testCGenerationOption(module, -CGEN_EXTERNAL));
    EXPECT_TRUE(testCGenerationOption(module, -CGEN_REAL));
}

} // namespace
