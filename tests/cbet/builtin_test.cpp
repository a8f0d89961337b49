#include <gtest/gtest.h>

#include "cbet/builtin.h"
#include "cbet/builtintypes.h"
#include "cbet/functions.h"
#include "tests/support/cbetrun.h"

/* Names of run-time functions, and tags as C text, where no expected function shows them. */

namespace {

TEST(Builtin, EveryKindHasItsName) {
    struct Row {
        MainType kind;
        const char *name;
        const char *oldName; /* for old programs; null: the same */
    };
    const Row rows[] = {
        {TYP_BOOLEAN, "Boolean", nullptr},
        {TYP_REAL, "Real64", "Real"},
        {TYP_BITSTR, "BitString", nullptr},
        {TYP_ANY, "Any", nullptr},
        {TYP_OBJID, "ObjectIdentifier", nullptr},
        {TYP_TELSTR, "T61String", nullptr},
        {TYP_OBJDESCR, "GraphicString", nullptr},
        {TYP_GENTIME, "GeneralizedTimeDT", "GeneralizedTimeCT"},
        {TYP_UTCTIME, "UTCTimeDT", "UTCTimeCT"},
        {TYP_EXTERNAL_1990, "External1990", "External"},
        {TYP_EXTERNAL_1994, "External1994", nullptr},
        {TYP_UNISTR, "", nullptr},
    };
    TreeWriter w("Mod", "mod");
    for (const Row &row : rows)
        w.define("T" + std::to_string(row.kind), w.type(row.kind));
    w.define("Broken", w.integer().form(VF_STRU));
    CbetRun run(w);
    for (bool old : {false, true}) {
        run.options().cGeneration =
            old ? 1u << CGEN_REAL | 1u << CGEN_COMMONTIME | 1u << CGEN_EXTERNAL : 0;
        for (const Row &row : rows)
            run.forType("T" + std::to_string(row.kind), [&](AsnType *type) {
                const char *name = old && row.oldName != nullptr ? row.oldName : row.name;
                EXPECT_STREQ(cBuiltinName(type), name);
            });
    }
    run.forType("Broken", [&](AsnType *type) {
        EXPECT_EXIT(cBuiltinName(type), testing::ExitedWithCode(2),
                    "CBET: Unable to construct a function name");
    });
}

TEST(Builtin, TagsOfBothWidths) {
    struct Row {
        const char *name, *coding, *innermost, *outermost;
    };
    const Row rows[] = {
        {"Wide", "uint8", "TAG(TAG_CTX, TAG_PRI, 40)", "TAG(TAG_CTX, TAG_STR, 40)"},
        {"Narrow", "uint8_8", "TAG8(TAG_CTX8, TAG_PRI8, 30)", "TAG(TAG_CTX, TAG_STR, 30)"},
        {"First", "uint8", "TAG(TAG_CTX, TAG_PRI, 31)", "TAG(TAG_CTX, TAG_STR, 31)"},
        {"Chain", "uint8_8", "TAG8(TAG_UNI8, TAG_PRI8, 2)", "TAG(TAG_CTX, TAG_STR, 40)"},
        {"Any", "Any", "", ""},
    };
    TreeWriter w("Mod", "mod");
    w.define("Wide", w.integer(0, 9).implicit(40));
    w.define("Narrow", w.integer(0, 9).implicit(30));
    w.define("First", w.integer(0, 9).implicit(31));
    w.define("Chain", w.integer(0, 9).explicitly(40));
    w.define("Any", w.any());
    CbetRun run(w);
    for (const Row &row : rows)
        run.forType(row.name, [&](AsnType *type) {
            EXPECT_EQ(cBuiltinCodCFunc(type), row.coding);
            EXPECT_EQ(cOutermostTag32Stri(type, true), row.outermost);
            cInnermostTagToF(BODY_FILE, type, false, ",\n");
            EXPECT_EQ(run.body(), *row.innermost != '\0' ? Text(row.innermost) + ",\n" : "");
        });
}

TEST(Builtin, Contexts) {
    EXPECT_EQ(cRawAsnutigPtr(GIDX_CODING), "asncodg_asnuti");
}

} // namespace
