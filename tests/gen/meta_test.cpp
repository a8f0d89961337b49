#include "gen/meta.h"

#include <gtest/gtest.h>

#include "driver/toolinfo.h"
#include "model/hooks.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/typewalk.h"
#include "tests/support/loadtree.h"
#include "tests/support/optionmodule.h"

namespace {

class ModuleMeta : public ::testing::Test {
protected:
    /* A handle on the tree as the one module of the run. */
    void load(TreeWriter &tree) {
        installOptionHooks();
        modelHooks.initBEModMetaRec = initBEModMetaRec;
        setCreateBETypMetaFlag(false);
        cMP = loadTree(dir_, tree);
        module_ = newAsnModule(cMP);
    }
    ~ModuleMeta() override { delAsnModule(module_); }

    WorkDir dir_;
    AsnModule *module_ = nullptr;
};

TEST_F(ModuleMeta, EntriesOfOneTypeShareAParameterList) {
    TreeWriter w("Mod_X", "x");
    w.define("A", w.ref("S")).entry();
    w.define("S", w.sequence({w.comp("a", w.boolean())})).entry();
    w.define("B", w.sequence({w.comp("b", w.boolean())})).entry();
    w.define("C", w.ref("A")).entry();
    load(w);
    for (int round = 0; round < 2; ++round) {
        resetMetaAsnParams(module_);
        std::vector<int> isNew, lists;
        forEachEntryType(module_, [&](AsnType *type, int nbr) {
            isNew.push_back(addMetaAsnParams(type, nbr));
            lists.push_back(getMetaAsnParamIndex(type, nbr));
        });
        EXPECT_EQ(isNew, (std::vector<int>{1, 0, 1, 0}));
        EXPECT_EQ(lists, (std::vector<int>{0, 0, 1, 0}));
    }
}

TEST_F(ModuleMeta, VerbosityDecidesWhichMessagesAreShown) {
    TreeWriter w("Mod_X", "x");
    load(w);
    backendName = "TOOL";
    ::testing::internal::CaptureStdout();
    for (const int verbosity : {VERBOSITY_QUIET, VERBOSITY_TERSE, VERBOSITY_VERBOSE}) {
        setMetaVerbosity(module_, verbosity);
        const std::string step = "step of " + std::to_string(verbosity);
        verboseMsg(module_, VERBOSITY_VERBOSE, step.c_str());
        verboseMsg(module_, verbosity, "done");
    }
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "TOOL>>> done\nTOOL>>> step of 2\nTOOL>>> done\n");
}

TEST_F(ModuleMeta, WhatOneGeneratorFinishedIsUntouchedForTheNext) {
    TreeWriter w("Mod_X", "x");
    w.define("A", w.boolean());
    load(w);
    resetStamps();
    initStamps();
    const auto started = [this] {
        bool result = false;
        forEachType(module_, [&](AsnType *type, int) { result = processingStarted(type); });
        return result;
    };
    EXPECT_FALSE(started());
    forEachType(module_, [](AsnType *type, int) { setProcessingNow(type); });
    EXPECT_TRUE(started());
    forEachType(module_, [](AsnType *type, int) { setProcessingDone(type); });
    EXPECT_TRUE(started());
    initStamps();
    EXPECT_FALSE(started());
}

} // namespace
