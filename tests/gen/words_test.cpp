#include <gtest/gtest.h>

#include "tests/support/codingcase.h"
#include "tests/support/gencase.h"
#include "tests/support/golden.h"

/* ASN.1 names that are words of C or C++, and headers as a program in C++ takes them. */

namespace {

/* Each word stands alone as a member, a type, a field or a value, and within longer names. The last
   two components are words when they are cut. */
void words(TreeWriter &w) {
    const auto flag = [&] { return w.boolean(); };
    w.define("Mode", w.enumerated({{"default", 0}, {"new", 1}}));
    w.define("Register", w.sequence({w.comp("int", w.integer(0, 9)).optional()})).entry();
    w.define("Record", w.sequence({w.comp("long", flag()), w.comp("class", w.ref("Mode")),
                                   w.comp("switch", w.sequence({w.comp("or", flag()).optional()})),
                                   w.comp("goto", w.ref("Register")).optional(),
                                   w.comp("operatortable", flag()).optional(),
                                   w.comp("volatiletable", flag()).optional()}))
        .entry();
    w.define("Pick", w.choice({w.comp("union", w.ref("Record")), w.comp("delete", flag())}))
        .entry();
    w.define("Flags", w.listOf(TYP_SEQOF, flag()).asList()).entry();
    w.defineValue("for", w.integer(0, 9), w.intValue(4));
    w.defineValue("this", w.integer(0, 9), w.intValue(5));
    const TypeNode code = w.valueField("default", w.integer(0, 9));
    const TypeNode kind = w.typeField("typename");
    w.define("AUTO", w.objectClass({code, kind}));
    const auto object = [&](const char *name, int number) {
        w.defineValue(name, w.ref("AUTO"),
                      w.object(w.ref("AUTO"), {w.fieldValue(code, w.intValue(number)),
                                               w.fieldType(kind, w.ref("Record"))}));
    };
    object("while", 1);
    object("not", 2);
}

std::string compileHeaders(const WorkDir &dir) {
    std::string messages;
    for (const std::string &file : dir.files()) {
        if (!file.ends_with(".typ") && !file.ends_with(".def") && !file.ends_with(".ext"))
            continue;
        dir.write("header.cc", "#include \"" + file + "\"\n");
        for (const char *compiler : {"g++", "clang++"})
            messages += compileC(
                dir, compiler, "header.cc",
                {"-std=c++17", "-Wall", "-Wextra", "-pedantic", "-I.", "-I" + sourceDir + "/rts"});
    }
    return messages;
}

class Words : public testing::TestWithParam<bool> {};

TEST_P(Words, StandForNamesInCAndInCPlusPlus) {
    const bool cPlusPlus = GetParam();
    WorkDir dir;
    TreeWriter w("Word_Module", "w");
    for (const char *option : {"-NAMELEN=8", "-TCONV=Register:L", "-CLCONV=L", "-CDEFS=yes",
                               "-TDEFS=yes", "-TAB=yes", "-TABF=yes", "-TST=1:1"})
        w.option(option);
    if (cPlusPlus)
        w.backendOption("-BEO=VELMO=CPLUSPLUS=YES");
    words(w);
    const std::string name = cPlusPlus ? "defines/words_of_cplusplus" : "defines/words";
    EXPECT_EQ(compareGolden(name + ".txt", generatedFiles(dir, {&w}, {".typ", ".def"})), "");
    EXPECT_EQ(compileFunctions(dir), "");
    dir.write("uses.c", "#include \"wtab.ext\"\n" + usesOfDefines(dir, "w"));
    EXPECT_EQ(compilerMessages(dir, {"uses.c"}), "");
    if (!cPlusPlus)
        return;
    EXPECT_EQ(compileHeaders(dir), "");
    /* A list of flags is read through the member that C++ can name. */
    dir.write("user.cc", "#include \"wcod.ext\"\n#include \"w.def\"\n"
                         "bool first(const Flags &flags) { return item_Flags(flags.first); }\n"
                         "void (*encode)(Flags *) = encFlags;\n");
    EXPECT_EQ(compileC(dir, "g++", "user.cc", {"-std=c++17", "-Wall", "-I" + sourceDir + "/rts"}),
              "");
}

INSTANTIATE_TEST_SUITE_P(Gen, Words, testing::Bool(),
                         [](const auto &suite) { return suite.param ? "CPlusPlus" : "C"; });

} // namespace
