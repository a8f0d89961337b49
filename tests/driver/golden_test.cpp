#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/golden.h"

/* The comparison that other tests rest on: it must see what differs and what is missing. */

TEST(Golden, ShowsDifferencesAndUpdates) {
    WorkDir dir;
    EXPECT_EQ(compareGolden(dir.path(), "sub/a.typ", "one\n"),
              "MISSING sub/a.typ: tests/update-golden writes it");
    setenv("VELMO_UPDATE_GOLDEN", "1", 1);
    EXPECT_EQ(compareGolden(dir.path(), "sub/a.typ", "one\non 22.11.2026 at 9:05.00\n"), "");
    unsetenv("VELMO_UPDATE_GOLDEN");
    EXPECT_EQ(dir.read("sub/a.typ"), "one\nTIME\n");
    EXPECT_EQ(compareGolden(dir.path(), "sub/a.typ", "one\non 01.02.2030 at 10:00.59\n"), "");
    std::string difference = compareGolden(dir.path(), "sub/a.typ", "two\nTIME\n");
    EXPECT_NE(difference.find("\n-one\n+two\n TIME\n"), std::string::npos) << difference;
}

TEST(Golden, CompilersRejectAndWarn) {
    WorkDir dir;
    dir.write("good.typ", "typedef struct { int a; } T;\n");
    dir.write("warned.typ", "static int f(void) { return 0; }\n");
    dir.write("bad.typ", "typedef struct { Unknown a; } T;\n");
    for (const char *compiler : {"gcc", "clang"}) {
        SCOPED_TRACE(compiler);
        EXPECT_EQ(compileC(dir, compiler, "good.typ", {"-std=c99", "-Wall"}), "");
        EXPECT_NE(compileC(dir, compiler, "warned.typ", {"-std=c99", "-Wall"}), "");
        EXPECT_NE(compileC(dir, compiler, "bad.typ", {"-std=c99"}), "");
    }
}
