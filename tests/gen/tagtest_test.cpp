#include "gen/tagtest.h"

#include "base/files.h"
#include "tests/model/modelsetup.h"

namespace {

/* What genTagTest writes for a definition. */
std::string ifText(ModelSetup &setup, const std::string &name, TagTest test = {}) {
    initFiles();
    initF(1, (setup.dir.path() + "/").c_str(), "out.c");
    openFWithPrefix(1, "");
    setup.withType(name, [&](AsnType *type) { genTagTest(1, type, test); });
    closeF(1);
    return setup.dir.read("out.c");
}

TEST(TagTests, CompareTheTagThatWasRead) {
    TreeWriter w("Tests", "tests");
    w.define("Int", w.integer().explicitly(4));
    w.define("Any", w.any());
    w.define("Inner", w.choice({w.comp("p", w.null()).implicit(2)}));
    w.define("Choice",
             w.choice({w.comp("a", w.integer()).implicit(0), w.comp("b", w.boolean()).implicit(1),
                       w.marker(), w.comp("c", w.ref("Inner")), w.comp("d", w.any())}));
    w.define("Self", w.choice({w.comp("s", w.ref("Self"))}));
    w.define("Twice", w.choice({w.comp("s", w.ref("Twice")), w.comp("t", w.ref("Twice"))}));
    ModelSetup setup;
    setup.load(w);
    EXPECT_EQ(ifText(setup, "Int"), "if (d_CurrTag () == TAG(TAG_CTX, TAG_PRI, 4))");
    EXPECT_EQ(ifText(setup, "Int", {.isElse = true, .isEqual = false}),
              "else if (d_CurrTag () != TAG(TAG_CTX, TAG_PRI, 4))");
    EXPECT_EQ(ifText(setup, "Any"), "if (d_CurrTag () != EOC_TAG)");
    EXPECT_EQ(ifText(setup, "Any", {.isEqual = false}), "if (d_CurrTag () == EOC_TAG)");
    EXPECT_EQ(ifText(setup, "Choice"),
              "if (d_CurrTag () == TAG(TAG_CTX, TAG_PRI, 0) ||\n"
              " d_CurrTag () == TAG(TAG_CTX, TAG_PRI, 1) ||\n"
              " d_CurrTag () == TAG(TAG_CTX, TAG_PRI, 2) ||\n"
              " d_CurrTag () != EOC_TAG)");
    EXPECT_EQ(ifText(setup, "Inner", {.isElse = true, .isEqual = false}),
              "else if (d_CurrTag () != TAG(TAG_CTX, TAG_PRI, 2))");
    EXPECT_EXIT(ifText(setup, "Self"), exitsWith2, "tests");
    EXPECT_EXIT(ifText(setup, "Twice"), exitsWith2, "tests");
}

} // namespace
