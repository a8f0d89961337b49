#include <gtest/gtest.h>

#include "tests/support/gencase.h"
#include "tests/support/golden.h"

/* Names for numbers in the ".def" file. Accessor macros are off, but for the last case. */

namespace {

std::string defines(TreeWriter &w, const WorkDir &dir = WorkDir()) {
    w.backendOption("-ACCESS-ROUTINES=NONE");
    return generatedFiles(dir, {&w}, {".def"});
}

/* Numbers come with the type that they stand on, of a component with its path; an extension marker
   among items has no number; a synonym has no defines of its own. */
TEST(Defines, NamedNumbersAndBits) {
    WorkDir dir;
    TreeWriter w("Number_Module", "t");
    w.define("Grade", w.numbered(w.integer(-6, 6), {{"worst", -6}, {"best_of_all", 6}}));
    w.define("Rights", w.numbered(w.string(TYP_BITSTR, 0, 400), {{"read", 0}, {"write", 1}, {"far", 300}}));
    w.define("Signal",
             w.enumerated({{"stop", 0}, {"go", 1}, NamedNumber::extension(), {"wait", 300}}));
    w.define("Same", w.ref("Grade"));
    w.define("Plain", w.integer(0, 9));
    w.define("Unused", w.enumerated({{"no", 0}}).skipped());
    w.define("Msg",
             w.sequence({w.comp("grade", w.ref("Grade")),
                         w.comp("inner", w.set({w.comp("colour", w.enumerated({{"red", 7}}))})),
                         w.comp("all", w.listOf(TYP_SEQOF, w.enumerated({{"one", 1}})).asList())}));
    EXPECT_EQ(compareGolden("defines/numbers.def", defines(w, dir)), "");
    dir.write("uses.c", usesOfDefines(dir, "t"));
    EXPECT_EQ(compilerMessages(dir, {"uses.c"}), "");
}

/* "CDEFS=": every component, the marker and those of COMPONENTS OF too, with the number that its
   control member knows it by. All components below a definition end in its name. */
TEST(Defines, ComponentIndices) {
    WorkDir dir;
    TreeWriter w("Index_Module", "t");
    w.option("-CDEFS=yes");
    const auto byte = [&] { return w.integer(0, 255); };
    w.define("Plain", w.sequence({w.comp("a", byte()), w.comp("b_c", byte()).optional()}));
    w.define("Pick", w.choice({w.comp("x", w.null()), w.marker(), w.comp("y", byte())}));
    w.define("Spliced", w.set({w.comp("first", byte()), w.componentsOf(w.ref("Plain")),
                               w.comp("last", byte()), w.marker()}));
    w.define("Empty", w.sequence({}));
    w.define("Gone", w.sequence({w.comp("z", byte())}).skipped());
    w.define("Same", w.ref("Plain"));
    w.define("List", w.listOf(TYP_SEQOF, w.sequence({w.comp("e", byte()), w.marker()})));
    w.define("Deep",
             w.sequence({w.comp("up", w.sequence({w.comp("down", w.ref("Plain")), w.marker()})),
                         w.comp("side", w.choice({w.comp("n", w.null())}))}));
    EXPECT_EQ(compareGolden("defines/components.def", defines(w, dir)), "");
    dir.write("uses.c", usesOfDefines(dir, "t"));
    EXPECT_EQ(compilerMessages(dir, {"uses.c"}), "");
}

TEST(Defines, NothingToNameNothingWritten) {
    TreeWriter w("Quiet_Module", "t");
    w.define("Number", w.integer(0, 9));
    w.define("Text", w.string(TYP_IA5STR, 1, 4)).entry();
    w.define("Record", w.sequence({w.comp("n", w.ref("Number"))}));
    EXPECT_EQ(generatedFiles(WorkDir(), {&w}, {".def"}), "== t.def\n");
}

/* The option may stand on a type; what lies within it has the module's setting. */
TEST(Defines, AccessorsAreChosenByModuleAndType) {
    TreeWriter w("Chosen_Module", "t");
    const auto inner = [&](const char *name) {
        return w.sequence(
            {w.comp(name, w.sequence({w.comp("i", w.boolean()).optional()})).optional()});
    };
    w.define("Quiet", inner("q")).backendOption("-ACCESS-ROUTINES=NONE");
    w.define("Loud", inner("l")).backendOption("-ACCESS-ROUTINES=FUNCTIONS");
    const std::string text = generatedFiles(WorkDir(), {&w}, {".def"});
    for (const char *heading :
         {"/* accessors for q_Quiet */", "/* accessors for Loud */", "/* accessors for l_Loud */"})
        EXPECT_NE(text.find(heading), std::string::npos) << heading;
    EXPECT_EQ(text.find("/* accessors for Quiet */"), std::string::npos);
}

} // namespace
