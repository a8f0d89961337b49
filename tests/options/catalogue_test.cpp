#include "options/catalogue.h"

#include <algorithm>
#include <initializer_list>

#include <gtest/gtest.h>

#include "gen/meta.h"
#include "store/ketravar.h"
#include "tests/support/optionmodule.h"

namespace {

using Options = std::vector<std::string>;

class Catalogue : public ::testing::Test {
protected:
    /* The options of a fresh module "x" after these were stored in its tree. */
    GlobalOptions &settle(const Options &options) {
        settleGeneralOptions(module_, options);
        return *module_->options;
    }

    std::vector<int> choices(const Options &options) {
        const auto &genArr = settle(options).genArr;
        return {genArr.begin() + 1, genArr.end()};
    }

    ModRec *module_ = makeOptionModule("x", "Mod_X", 5);
};

TEST_F(Catalogue, Defaults) {
    const GlobalOptions &o = settle({});
    EXPECT_EQ(o.ansiC, 1);
    EXPECT_EQ(o.pushPath, 0);
    EXPECT_EQ(o.decimals, DECIMALS_BINARY);
    EXPECT_EQ(o.nameLen, 32);
    EXPECT_EQ(o.generate, GENERATE_BOTH);
    EXPECT_EQ(o.setN, SETN_NAMED_NUMBERS_AND_BITS);
    EXPECT_EQ(o.memory, 0);
    EXPECT_EQ(o.prefixLength, 5);
    EXPECT_TRUE(o.info.empty() && o.codeDirectory.empty() && o.tabRef.empty());
    settle(
        {"NAMELEN=8", "//first", "INFO=a=b c", "C=src", "H=inc/", "TABREF=My", "BEO=//x", "INFO="});
    EXPECT_EQ(o.info + "|" + o.codeDirectory + "|" + o.headerDirectory + "|" + o.tabRef,
              "a=b c|src/|inc/|My");
    EXPECT_EQ(o.comments.last - o.comments.first, 5);
}

/* Positions 1 to 16: typ def tab tabf | enc ext - | ask ext - | dec ext - | pri ext - */
TEST_F(Catalogue, CategoriesDecideWhichFilesThereAre) {
    using List = std::vector<int>;
    EXPECT_EQ(choices({}), (List{1, 1, 0, 0, 2, 1, 1, 0, 0, 0, 2, 1, 1, 0, 0, 0}));
    EXPECT_EQ(choices({"DEFINITION-CATEGORY=morla-service"}),
              (List{1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(choices({"MORLA=2"}), (List{1, 1, 1, 0, 1, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0}));
    /* These two keep the choices for coding functions. */
    EXPECT_EQ(choices({"COD=0:2", "DEFINITION-CATEGORY=MORLA-IOS"}),
              (List{1, 1, 1, 1, 0, 2, 1, 0, 0, 0, 0, 2, 1, 0, 0, 0}));
    EXPECT_EQ(settle({"TABF=1"}).genArr[CAT_TAB_EXT], 0) << "there are no tables";
    EXPECT_EQ(settle({"TABF=YES"}).genArr[CAT_TAB_EXT], 1) << "a word is not held to limits";
    EXPECT_EQ(choices({"TAB=YES", "TABF=1", "TST=2", "DEFINITION-CATEGORY=OTHER"}),
              (List{1, 1, 1, 0, 2, 1, 1, 0, 0, 0, 2, 1, 1, 0, 0, 0}));
    EXPECT_EQ(choices({"TYP=0", "DEF=NO", "TST=1:combined:Separate"}),
              (List{0, 0, 0, 0, 2, 1, 1, 1, 1, 2, 2, 1, 1, 1, 1, 2}));
}

TEST_F(Catalogue, GenerationTripleIsTakenWholeOrNotAtAll) {
    struct Row {
        const char *text;
        int enc, ext, third; /* defaults are 2, 1, 1 */
    };
    for (const Row &row : std::initializer_list<Row>{{"COD=0", 0, 1, 1},
                                                     {"COD=1:2", 1, 2, 1},
                                                     {"COD=1:", 1, 1, 1},
                                                     {"COD=none:NONE:separate", 0, 0, 2},
                                                     {"COD=::2", 2, 1, 1},
                                                     {"COD=3", 2, 1, 1},
                                                     {"COD=0:3", 2, 1, 1},
                                                     {"COD=0:0:0:0", 2, 1, 1},
                                                     {"COD=0:0:0:", 2, 1, 1},
                                                     {"COD=0::0", 2, 1, 1},
                                                     {"COD=00", 2, 1, 1},
                                                     {"COD=no", 2, 1, 1}}) {
        const auto &genArr = settle({row.text}).genArr;
        EXPECT_EQ(genArr[CAT_ENC], row.enc) << row.text;
        EXPECT_EQ(genArr[CAT_DEC], row.enc) << row.text;
        EXPECT_EQ(genArr[CAT_DEC_EXT], row.ext) << row.text;
        EXPECT_EQ(genArr[CAT_DEC_U], row.third) << row.text;
        EXPECT_EQ(genArr[CAT_ASK], 0) << row.text;
    }
}

TEST_F(Catalogue, MorlaCategoryBringsItsOwnDefaults) {
    EXPECT_EQ(settle({"DEFINITION-CATEGORY=MORLA-IOS"}).memory, 1);
    EXPECT_EQ(settle({"MORLA=1", "MEMORY=0", "ZEROHOME=0"}).memory, 1);
    EXPECT_EQ(settle({"MORLA=1", "ZEROHOME=0"}).zeroHome, 1);
    EXPECT_EQ(settle({"MORLA=1", "MEMORY=no", "ZEROHOME=NO"}).memory, 0);
    EXPECT_EQ(settle({"MEMORY=NO", "MORLA=1"}).memory, 1) << "the later one wins";
    EXPECT_EQ(settle({"MORLA=1", "MORLA=3"}).definitionCategory, DEFCAT_MORLA_SERVICE);
    EXPECT_EQ(settle({"DEFINITION-CATEGORY=1"}).definitionCategory, DEFCAT_STAND_ALONE);
    EXPECT_EQ(settle({"DEFINITION-CATEGORY=y:MORLA-IOS"}).definitionCategory, DEFCAT_STAND_ALONE);
    EXPECT_EQ(settle({"DEFINITION-CATEGORY=x:Morla-Ios"}).definitionCategory, DEFCAT_MORLA_IOS);
    EXPECT_EQ(settle({"DEFINITION-CATEGORY=xx:MORLA-IOS"}).definitionCategory, DEFCAT_STAND_ALONE);
}

TEST_F(Catalogue, Limits) {
    struct Row {
        const char *good, *bad;
        std::uint8_t GlobalOptions::*place;
        int value;
    };
    for (const Row &row : std::initializer_list<Row>{
             {"NAMELEN=8", "NAMELEN=7", &GlobalOptions::nameLen, 8},
             {"NAMELEN=128", "NAMELEN=129", &GlobalOptions::nameLen, 128},
             {"DECIMALS=127", "DECIMALS=128", &GlobalOptions::decimals, 127},
             {"ALTMAX=8", "ALTMAX=9", &GlobalOptions::altMax, 8},
             {"GENERATE=Entries", "GENERATE=4", &GlobalOptions::generate, GENERATE_ENTRIES},
             {"DEFINITELEN=definite-definitecomps", "DEFINITELEN=4", &GlobalOptions::definiteLen,
              LENGTH_DEFINITE_DEFINITE_COMPS},
             {"SETN=named-numbers", "SETN=named", &GlobalOptions::setN, SETN_NAMED_NUMBERS},
             {"ANSI-C=no", "ANSI-C=2", &GlobalOptions::ansiC, 0},
             {"TABO=yes", "TABO=true", &GlobalOptions::tabO, 1},
             {"PUSHPATH=true", "PUSHPATH=", &GlobalOptions::pushPath, 1}}) {
        EXPECT_EQ(settle({row.good}).*row.place, row.value) << row.good;
        EXPECT_EQ(settle({row.good, row.bad}).*row.place, row.value) << row.bad;
    }
}

TEST_F(Catalogue, AcceptedNames) {
    const auto isOK = [this](const char *text) {
        return pass3GlobalOptionOK(module_, 1, TED_OPTION, text);
    };
    for (const char *text :
         {"STANDARD-VERSION=1990", "INT=U16", "N=8", "REALLIM={5,10,3}", "SPLIT=2147483647",
          "RECURSION=warning", "DIAGLEVEL=what", "AUTHOR", "DATE:today", "LOG:a=b", "ALLOWED",
          "ENCF=", "PRIF=07", "VERBOSE=9", "PREFIX=?", "A=", "TNAME=Foo:Bar", "ENTRY=X:PDU"})
        EXPECT_TRUE(isOK(text)) << text;
    for (const char *text :
         {"STANDARD-VERSION=1992", "INT=7", "N=U8", "REALLIM={5,2,3}", "SPLIT=2147483648",
          "RECURSION=3", "DIAGLEVEL=", "TAVI=1", "AUTHORS=1", "DATES", "UNKNOWN=1", "", "ENCF=8",
          "TPREF=foo:x", "ENTRY=X:8", "info=x", "INFO"})
        EXPECT_FALSE(isOK(text)) << text;
    /* Records for the tool itself and lines of text aren't looked up in the table. */
    EXPECT_TRUE(pass3GlobalOptionOK(module_, 1, TED_BACKEND_OPTION, "NAMELEN=9"));
    EXPECT_EQ(module_->options->nameLen, 0);
    EXPECT_FALSE(pass3GlobalOptionOK(module_, 1, TED_TEXT, "INFO=x"));
}

TEST_F(Catalogue, AlternativesLieBelowTheirNumber) {
    EXPECT_EQ(settle({"ALTENCF=2:1"}).altEncF[2], 0);
    EXPECT_EQ(settle({"ALTMAX=2", "ALTENCF=2:1"}).altEncF[2], 0);
    EXPECT_EQ(settle({"ALTMAX=3", "ALTENCF=2:17", "ALTDECF=0:0"}).altEncF[2], 0x82);
    EXPECT_EQ(settle({"ALTMAX=3", "ALTDECF=0:0"}).altDecF[0], 1);
    for (const char *text : {"ALTENCF=1", "ALTENCF=:1", "ALTENCF=1:8", "ALTENCF=01:1"})
        EXPECT_EQ(settle({"ALTMAX=8", text}).altEncF[1], 0) << text;
}

TEST_F(Catalogue, GenerationSwitches) {
    struct Row {
        const char *value;
        int bits;
    };
    for (const Row &row : std::initializer_list<Row>{{"OLD", 0x3F},
                                                     {"old:REAL-N", 0x3D},
                                                     {"REAL-N:OLD", 0x3F},
                                                     {"REAL:COMMONTIME:DATETIMEZ", 0x02},
                                                     {"EXTERNAL:Signed-Control-Member", 0x18},
                                                     {"ANY-FUNCTIONS:", 0x20},
                                                     {"REALLY", 0x04},
                                                     {"REAL:", 0x02},
                                                     {"REAL::OLD", 0x04},
                                                     {"REA", 0x04}})
        EXPECT_EQ(settle({"C-GENERATION=COMMONTIME", std::string("C-GENERATION=") + row.value})
                      .cGeneration,
                  row.bits)
            << row.value;
}

TEST_F(Catalogue, ScopesConfineOptionsToTheirModules) {
    ModRec *other = makeOptionModule("y", "Mod_Y", 5);
    const Options options = {"BEGIN-SCOPE=a:y", "NAMELEN=10",     "TPREF=t_",  "END-SCOPE",
                             "DECIMALS=3",      "BEGIN-SCOPE=xy", "NAMELEN=20"};
    settleGeneralOptions(module_, options);
    settleGeneralOptions(other, options);
    EXPECT_EQ(module_->options->nameLen, 32);
    EXPECT_EQ(module_->options->decimals, 3);
    EXPECT_EQ(fixRecForKind(module_->options.get(), KIND_TYPE)->head.pref, nullptr);
    EXPECT_EQ(other->options->nameLen, 10) << "xy names neither, though both begin or end it";
    EXPECT_STREQ(fixRecForKind(other->options.get(), KIND_TYPE)->head.pref, "t_");
    /* An open scope ends with the tree. */
    EXPECT_EQ(settle({"NAMELEN=9"}).nameLen, 9);
}

TEST_F(Catalogue, ScopeOfANameThatTwoModulesHaveIsThatOfTheFirst) {
    ModRec *second = makeOptionModule("x", "Mod_X", 5);
    settleGeneralOptions(second, {"BEGIN-SCOPE=x", "NAMELEN=10"});
    EXPECT_EQ(second->options->nameLen, 32);
    EXPECT_EQ(settle({"BEGIN-SCOPE=x", "NAMELEN=10"}).nameLen, 10);
}

TEST_F(Catalogue, CombinedModulesAreThoseThatAreKnown) {
    const GlobalOptions &o = settle({"COMBINE=all:x,y"});
    EXPECT_EQ(o.combine, "all");
    EXPECT_EQ(o.combined, std::vector<ModRec *>{module_});
    for (const char *text : {"COMBINE=x", "COMBINE=x:", "COMBINE=x:x", "COMBINE=a:b,b",
                             "COMBINE=a:b,", "COMBINE=a:b.c", "COMBINE=:b"})
        EXPECT_TRUE(settle({text}).combined.empty() && settle({text}).combine.empty()) << text;
}

TEST_F(Catalogue, ToolOptionsThatAreWrongAreReportedAndRemoved) {
    const std::string longName(60, 'x');
    ::testing::internal::CaptureStderr();
    settleOptions(module_, {{TED_BACKEND_OPTION, "-verbose=VERBOSE"},
                            {TED_BACKEND_OPTION, "-verbose=3"},
                            {TED_BACKEND_OPTION, "-prefix=anything"},
                            {TED_BACKEND_OPTION, "-ENTRY=X:PDU"},
                            {TED_BACKEND_OPTION, "-BEO=OTHER=whatever"},
                            {TED_BACKEND_OPTION, "-BEO=VELMO=LOGFILE=l"},
                            {TED_BACKEND_OPTION, "-s=Trees"},
                            {TED_BACKEND_OPTION, longName + "=y"}});
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "\nWARNING : Option ignored: -VERBOSE=3\n"
                                                        "\nWARNING : Option ignored: -ENTRY=X:PDU\n"
                                                        "\nWARNING : Option ignored: x" +
                                                            std::string(49, 'X') + "\n");
    EXPECT_EQ(module_->metaRec->verbosity, VERBOSITY_VERBOSE);
    EXPECT_EQ(module_->metaRec->logFile, "l");
    EXPECT_EQ(stxDir, "Trees/");
    std::vector<int> kinds;
    for (const TedRec &record : module_->tedRecs)
        kinds.push_back(record.tedKind);
    EXPECT_EQ(kinds, (std::vector<int>{2, 0, 2, 0, 2, 2, 2, 0}));
}

TEST_F(Catalogue, RangeBeyondTheRecordsIsFatal) {
    module_->options->prefixLength = 5;
    EXPECT_EXIT(checkGlobalOptions(module_, {0, 7}), ::testing::ExitedWithCode(2),
                "Can not read record from syntax tree");
    EXPECT_EXIT(checkGlobalOptions(module_, {-3, 0}), ::testing::ExitedWithCode(2),
                "Can not read record from syntax tree");
}

TEST(OptionTexts, ForOneToolOrForAll) {
    const auto parse = [](const char *text) { return parseBEOption(text, "VELMO=", 6); };
    EXPECT_STREQ(parse("-VERBOSE=1"), "VERBOSE=1");
    EXPECT_STREQ(parse("VERBOSE=1"), "VERBOSE=1");
    EXPECT_STREQ(parse("--VERBOSE=1"), "-VERBOSE=1");
    EXPECT_STREQ(parse("-BEO=VELMO=VERBOSE=1"), "VERBOSE=1");
    EXPECT_STREQ(parse("?BEO=VELMO="), "");
    EXPECT_EQ(parse("-BEO=VELM"), nullptr);
    EXPECT_EQ(parse("-BEO="), nullptr);
    EXPECT_STREQ(parse(""), "");
    EXPECT_STREQ(parseBECommentOption("-//x"), "//x");
    EXPECT_STREQ(parseBECommentOption("-BEO=//x"), "x");
    EXPECT_EQ(parseBECommentOption("//x"), nullptr) << "the first character isn't looked at";
    EXPECT_EQ(parseBECommentOption(""), nullptr);
}

} // namespace
