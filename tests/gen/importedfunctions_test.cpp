#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

#include <gtest/gtest.h>

namespace {

/* A module that has nothing but classes leads to the functions of the types in their fields.
   asntree resolves such a field itself, so no text makes such a tree. */
TEST(FunctionsOfImports, AreDeclaredThroughClasses) {
    WorkDir dir;
    TreeWriter base("Base_Module", "b"), classes("Class_Module", "c"), user("User_Module", "u");
    for (TreeWriter *tree : {&base, &classes, &user})
        for (const char *option : {"-COD=1:1", "-VERBOSE=QUIET"})
            tree->option(option);
    base.define("Size", base.sequence({base.comp("width", base.integer(0, 9))}));
    classes.import(base);
    const TypeNode size = classes.valueField("size", classes.ref(base, "Size"));
    const TypeNode objClass = classes.define("CLASS", classes.objectClass({size}));
    const std::int32_t import = user.import(classes);
    const TypeNode field = user.classField(objClass, {size});
    field->refModule = user.sNodes.back().refModule = import;
    user.define("Box", user.sequence({user.comp("size", field)})).entry();
    ASSERT_TRUE(base.save(dir.path("b.stx")) && classes.save(dir.path("c.stx")) &&
                user.save(dir.path("u.stx")));
    EXPECT_EQ(runVelmo(dir, {"u", "b", "c"}).status, 0);
    EXPECT_NE(dir.read("ucod.c").find("eSize (ASNG_F(asncodg) &home->size);"), std::string::npos);
    const ProgramRun compiled =
        runProgram(dir, "gcc",
                   {"-std=c99", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-I.",
                    "-I" + sourceDir + "/rts", "ucod.c"});
    EXPECT_EQ(compiled.status, 0) << compiled.err;
}

} // namespace
