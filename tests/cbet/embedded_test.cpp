#include "cbet/embedded.h"

#include <gtest/gtest.h>

#include "base/files.h"
#include "model/backend.h"
#include "objects/classes.h"
#include "store/strings.h"
#include "tests/support/runtool.h"

namespace {

/* Four records with text, one a line for each side of a type definition: a type `T`, two references
   on the way to it in another module, and the definition that it ends at. */
class Embedded : public ::testing::Test {
protected:
    static constexpr int SLOT = 1;

    void SetUp() override {
        initFiles();
        initF(SLOT, dir_.path("").c_str(), "out");
        openFWithPrefix(SLOT, "");
        fArr[SLOT].indent = 1;
        for (ModRec *module : {&own_, &other_})
            module->tNodes.resize(4);
        addText(&own_, "position");
        addText(&other_, "middle");
        addText(&other_, "base");
        other_.tNodes[2].optionBits = optionMask(OPT_EMBEDDED_TEXT);

        type_.posModule = &own_;
        type_.posRecord = 1;
        type_.baseModule = &other_;
        type_.baseRecord = 3;
        type_.contentModule = type_.baseModule;
        type_.contentRecord = type_.baseRecord;
        type_.base.tedFirst = 3;
        type_.base.tedLast = 4;
        type_.compStatus = TCS_MANDATORY;
        addEntry(&own_, 1, 1);
        addEntry(&own_, 1, 0); /* a second tag of the same record */
        addEntry(&other_, 2, 1);
        addEntry(&other_, 3, 3);
    }

    void addTed(ModRec *module, int kind, const std::string &text) {
        module->tedRecs.push_back({static_cast<std::uint8_t>(kind), putStri(module, text.c_str())});
    }
    void addText(ModRec *module, const std::string &line) {
        addTed(module, TED_TEXT, "-T1=" + line);
        addTed(module, TED_TEXT, "-T2=/" + line);
    }
    void addEntry(ModRec *module, RecNr record, RecNr ted) {
        DynaNode entry;
        entry.module = module;
        entry.record = record;
        entry.flags = ted == 0 ? 0 : DYNA_EMBEDDED_TEXT;
        entry.tedFirst = ted;
        entry.tedLast = ted + 1;
        type_.tagEntries.push_back(entry);
    }

    std::string written() {
        closeF(SLOT);
        std::string text = dir_.read("out");
        initF(SLOT, dir_.path("").c_str(), "out");
        openFWithPrefix(SLOT, "");
        return text;
    }

    WorkDir dir_;
    ModRec own_, other_;
    AsnType type_;
};

TEST_F(Embedded, LinesOfAPlaceAreCopied) {
    ModRec module;
    addTed(&module, TED_OPTION, "-E1=an option");
    addTed(&module, TED_TEXT, "-E1=int x;");
    addTed(&module, TED_TEXT, "-E2=behind");
    addTed(&module, TED_TEXT, "-E1=#define X");
    addTed(&module, TED_REMOVED, "-E1=removed");
    addTed(&module, TED_TEXT, "-E1=");
    addTed(&module, TED_TEXT, "-E1");
    addTed(&module, TED_TEXT, "E");
    addTed(&module, TED_TEXT, " E1 int y;");
    printTEDs(SLOT, &module, 1, 9, TED_ENC_BEFORE);
    EXPECT_EQ(fArr[SLOT].indent, 1);
    printTEDs(SLOT, &module, 1, 9, TED_PLACES);
    printTEDs(SLOT, &module, 1, 9, -1);
    printTEDs(0, &module, 1, 9, TED_ENC_BEFORE);
    EXPECT_EQ(written(), "  int x;\n#define X\n  \n  \n  int y;\n");
    EXPECT_EXIT(printTEDs(SLOT, &module, 9, 10, TED_ENC_BEFORE), testing::ExitedWithCode(2),
                "Can not read record");
}

TEST_F(Embedded, MemberHasTheTextOfItsWholeChainOnce) {
    fArr[SLOT].indent = 0;
    printTypeEmbeddingOptions(SLOT, &type_, TED_TYP_BEFORE);
    EXPECT_EQ(written(), "position\nmiddle\nbase\n");
    printTypeEmbeddingOptions(SLOT, &type_, TED_TYP_BEHIND);
    EXPECT_EQ(written(), "/base\n/middle\n/position\n");
    AsnObjClass objClass;
    objClass.embeddingEntries = type_.tagEntries;
    printObjClassEmbeddingOptions(SLOT, &objClass, TED_TYP_BEHIND);
    EXPECT_EQ(written(), "/base\n/middle\n/position\n");
    printLocalTypeEmbeddingOptions(SLOT, &type_, TED_TYP_BEHIND);
    EXPECT_EQ(written(), "/position\n");
    printBaseTypeEmbeddingOptions(SLOT, &type_, TED_TYP_BEFORE);
    EXPECT_EQ(written(), "base\n");
    /* A base without text of its own. */
    other_.tNodes[2].optionBits = 0;
    type_.tagEntries.back().flags = 0;
    printTypeEmbeddingOptions(SLOT, &type_, TED_TYP_BEFORE);
    printBaseTypeEmbeddingOptions(SLOT, &type_, TED_TYP_BEFORE);
    EXPECT_EQ(written(), "position\nmiddle\n");
}

/* The text of the record that a definition ends at shows only where nothing stands below it. */
TEST_F(Embedded, DefinitionAndTheTextOfItsBase) {
    for (ModRec *module : {&own_, &other_})
        for (std::size_t i = 0, count = module->tedRecs.size(); i < count; ++i) {
            std::string text = getStri(module, module->tedRecs[i].tedText);
            text[1] = 'E';
            module->tedRecs[i].tedText = putStri(module, text.c_str());
        }
    type_.compStatus = TCS_HEADER;
    fArr[SLOT].indent = 0;
    auto shows = [&](int place) {
        printTypeEmbeddingOptions(SLOT, &type_, place);
        return written().find("base") != std::string::npos;
    };
    EXPECT_TRUE(shows(TED_ENC_BEFORE));
    type_.base.mainType = TYP_SEQ;
    type_.base.typeFlags = TYPE_EXTENSIBLE;
    EXPECT_FALSE(shows(TED_ENC_BEFORE));
    type_.base.mainType = TYP_INTEGER;
    EXPECT_TRUE(shows(TED_ENC_BEHIND));
    type_.base.nrOfComps = 1;
    EXPECT_FALSE(shows(TED_ENC_BEHIND));
    type_.base.optionBits = optionMask(OPT_SKIPPED);
    EXPECT_TRUE(shows(TED_ENC_BEHIND));
    EXPECT_FALSE(shows(TED_TYP_BEFORE));
}

} // namespace
