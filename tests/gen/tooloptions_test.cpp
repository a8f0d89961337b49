#include "gen/tooloptions.h"

#include <initializer_list>

#include <gtest/gtest.h>

#include "gen/meta.h"

namespace {

bool isOK(BEModMetaRec &meta, const std::string &option) {
    return globalBEOptionOK(&meta, option.c_str());
}

TEST(ToolOptions, AcceptedAndRefused) {
    BEModMetaRec meta;
    for (const char *option :
         {"-VERBOSE=quiet", "-VERBOSE=0", "-ENTRYTAG=Warn", "-LOGFILE=./a-b_[1]\\x.log",
          "-TAB-MORLA-PARAM=no", "-TAB-VALUE-SET-N=TRUE", "-ACCESS-ROUTINES=macros",
          "-ACCESS-ROUTINES=0", "-TREE-FILE-SUFFIX=.a1", "-COD-FUNC-PREF=a_1", "-CPLUSPLUS=YES",
          "-BRUN-GENERATION=", "-BEO=OTHER=VERBOSE=9", "-BEO=VELMO=VERBOSE=2"})
        EXPECT_TRUE(isOK(meta, option)) << option;
    for (const char *option : {"-VERBOSE=3",
                               "-VERBOSE=03",
                               "-VERBOSE=",
                               "-ENTRYTAG=2",
                               "-LOGFILE=",
                               "-LOGFILE=a b",
                               "-TAB-MORLA-PARAM=2",
                               "-ACCESS-ROUTINES=3",
                               "-TREE-FILE-SUFFIX=",
                               "-CPLUSPLUS=maybe",
                               "-COD-FUNC-PREF=",
                               "-TREE-FILE-SUFFIX=.abcd",
                               "-COD-FUNC-PREF=abcdef",
                               "-COD-FUNC-PREF=a-b",
                               "-VERBOSE",
                               "-BEO=VELMO=VERBOSE=9",
                               "-BEO=VELMO=",
                               "-",
                               "",
                               "--VERBOSE=1",
                               "-NAMELEN=9",
                               "-TAVI-ANYTHING=x",
                               "-ENTRY=X:7"})
        EXPECT_FALSE(isOK(meta, option)) << option;
    EXPECT_EQ(meta.verbosity, VERBOSITY_VERBOSE);
    EXPECT_EQ(meta.entryTag, ENTRYTAG_WARN);
    EXPECT_EQ(meta.codFuncPref, "a_1");
    EXPECT_FALSE(meta.tabMorlaParam);
    EXPECT_TRUE(meta.tabValueSetN);
    EXPECT_EQ(meta.accessRoutines, ACCESS_NONE);
    EXPECT_TRUE(isOK(meta, "-LOGFILE=" + std::string(513, 'l')));
    EXPECT_FALSE(isOK(meta, "-LOGFILE=" + std::string(514, 'x')));
    EXPECT_EQ(meta.logFile, std::string(513, 'l'));
    /* The last one: from here on refused options would be told in a file. */
    EXPECT_TRUE(isOK(meta, "-TAVI-PREFIX=x"));
}

TEST(ToolOptions, PartsOfFunctionNames) {
    BEModMetaRec meta;
    ASSERT_TRUE(isOK(meta, "-TAB-CODFUNC=_e:decode_9:.x.h"));
    EXPECT_EQ(meta.tabCodFunc.first, "_e");
    EXPECT_EQ(meta.tabCodFunc.second, "decode_9");
    EXPECT_EQ(meta.tabCodFunc.header, ".x.h");
    EXPECT_TRUE(meta.tabTstFunc.first.empty());
    for (const char *value :
         {"1e:d:h", "e:1d:h", "e:d:1h", "e.x:d:h", "e:d.x:h", ".:d:h", "e:d:h:", "e:d", "e", "",
          "e-x:d:h", "e:d:h-", "abcdefghijk:d:h", "e:abcdefghijk:h", "e:d:abcdefghijk"})
        EXPECT_FALSE(isOK(meta, std::string("-TAB-CODFUNC=") + value)) << value;
    EXPECT_EQ(meta.tabCodFunc.first, "_e");
    EXPECT_TRUE(isOK(meta, "-TAB-TSTFUNC=abcdefghij:abcdefghij:abcdefghij"));
    EXPECT_TRUE(isOK(meta, "-TAB-TSTFUNC=::"));
    EXPECT_TRUE(meta.tabTstFunc.first.empty() && meta.tabTstFunc.header.empty());
}

TEST(ToolOptions, BrunPartsAreTakenTogether) {
    BEModMetaRec meta;
    EXPECT_TRUE(isOK(meta, "-BRUN-GENERATION=Include-BrunHook:MID:no-mid"));
    EXPECT_TRUE(meta.brunIncludeHook);
    EXPECT_FALSE(meta.brunModuleId);
    for (const char *value : {"mid:x", "mid:", ":mid", "mid::mid", "no-", "no-no-mid", "mi"})
        EXPECT_FALSE(isOK(meta, std::string("-BRUN-GENERATION=") + value)) << value;
    EXPECT_FALSE(meta.brunModuleId);
    EXPECT_TRUE(isOK(meta, "-BRUN-GENERATION=NO-include-brunhook"));
    EXPECT_FALSE(meta.brunIncludeHook);
}

TEST(ToolOptions, AccessFunctionsAreRefusedWithOneWarning) {
    BEModMetaRec meta;
    BETypMetaRec type;
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(isOK(meta, "-ACCESS-ROUTINES=FUNCTIONS"));
    for (const char *option : {"-ACCESS-ROUTINES=functions", "-ACCESS-ROUTINES=2"})
        EXPECT_FALSE(typeBEOptionOK(nullptr, &type, option, false)) << option;
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "*** Warning: VELMO option ACCESS-ROUTINES=FUNCTIONS not yet implemented\n");
    EXPECT_EQ(meta.accessRoutines, ACCESS_MACROS);
    EXPECT_EQ(type.accessRoutines, ACCESS_MACROS);
    EXPECT_TRUE(typeBEOptionOK(nullptr, &type, "-BEO=OTHER=ACCESS-ROUTINES=x", false));
    EXPECT_TRUE(typeBEOptionOK(nullptr, &type, "-ANYTHING=1", true));
    EXPECT_FALSE(typeBEOptionOK(nullptr, &type, "-ACCESS-ROUTINES=x", false));
}

} // namespace
