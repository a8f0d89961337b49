#include <gtest/gtest.h>

#include "cbet/builtin.h"
#include "cbet/functions.h"
#include "tests/support/cbetrun.h"

/* Names of run-time functions, and tags as C text. */

namespace {

struct Names {
    Text plain, coding;
};

Names namesOf(AsnType *type) {
    Names names;
    cBuiltinCFunc(names.plain, "d_", type, " (");
    cBuiltinCodCFunc(names.coding, "e_", type, " (");
    return names;
}

TEST(Builtin, EveryKindHasItsName) {
    struct Row {
        MainType kind;
        const char *name;
    };
    const Row rows[] = {
        {TYP_BOOLEAN, "Boolean"},
        {TYP_REAL, "Real64"},
        {TYP_BITSTR, "BitString"},
        {TYP_OCTSTR, "OctetString"},
        {TYP_NULL, "NullType"},
        {TYP_ANY, "Any"},
        {TYP_OBJID, "ObjectIdentifier"},
        {TYP_NUMSTR, "NumericString"},
        {TYP_PRISTR, "PrintableString"},
        {TYP_TELSTR, "T61String"},
        {TYP_VIDSTR, "VideotexString"},
        {TYP_VISSTR, "VisibleString"},
        {TYP_IA5STR, "IA5String"},
        {TYP_GRASTR, "GraphicString"},
        {TYP_OBJDESCR, "GraphicString"},
        {TYP_GENSTR, "GeneralString"},
        {TYP_BMPSTR, "BMPString"},
        {TYP_GENTIME, "GeneralizedTimeDT"},
        {TYP_UTCTIME, "UTCTimeDT"},
        {TYP_EXTERNAL_1990, "External1990"},
        {TYP_EXTERNAL_1994, "External1994"},
        {TYP_UNISTR, ""},
    };
    TreeWriter w("Mod", "mod");
    for (const Row &row : rows)
        w.define("T" + std::to_string(row.kind), w.type(row.kind));
    CbetRun run(w);
    for (const Row &row : rows)
        run.forType("T" + std::to_string(row.kind), [&](AsnType *type) {
            EXPECT_EQ(namesOf(type).plain, std::string("d_") + row.name + " (") << row.kind;
        });
    run.options().cGeneration = 1u << CGEN_REAL | 1u << CGEN_COMMONTIME | 1u << CGEN_EXTERNAL;
    const Row bent[] = {{TYP_REAL, "Real"},
                        {TYP_GENTIME, "GeneralizedTimeCT"},
                        {TYP_UTCTIME, "UTCTimeCT"},
                        {TYP_EXTERNAL_1990, "External"},
                        {TYP_EXTERNAL_1994, "External1994"}};
    for (const Row &row : bent)
        run.forType("T" + std::to_string(row.kind), [&](AsnType *type) {
            EXPECT_EQ(namesOf(type).plain, std::string("d_") + row.name + " (") << row.kind;
        });
}

TEST(Builtin, IntegersAndTagWidths) {
    TreeWriter w("Mod", "mod");
    w.define("Wide", w.integer(0, 9).implicit(40));
    w.define("Narrow", w.integer(-9, 9).implicit(30));
    w.define("First", w.integer(0, 70000).implicit(31));
    w.define("Chain", w.integer(-70000, 0).explicitly(40));
    w.define("Long", w.integer(0, 5000000000));
    w.define("Enum", w.enumerated({{"a", 0}, {"b", 1}}));
    w.define("Open", w.enumerated({{"a", 0}, NamedNumber::extension()}));
    w.define("Pick", w.choice({w.comp("a", w.null())}));
    w.define("Any", w.any());
    w.define("Tagged", w.any().explicitly(3));
    w.define("Broken", w.integer().form(VF_STRU));
    CbetRun run(w);
    struct Row {
        const char *name, *coding, *innermost, *outermost;
    };
    const Row rows[] = {
        {"Wide", "e_uint8 (", "TAG(TAG_CTX, TAG_PRI, 40)", "TAG(TAG_CTX, TAG_STR, 40)"},
        {"Narrow", "e_sint8_8 (", "TAG8(TAG_CTX8, TAG_PRI8, 30)", "TAG(TAG_CTX, TAG_STR, 30)"},
        {"First", "e_uint32 (", "TAG(TAG_CTX, TAG_PRI, 31)", "TAG(TAG_CTX, TAG_STR, 31)"},
        {"Chain", "e_sint32_8 (", "TAG8(TAG_UNI8, TAG_PRI8, 2)", "TAG(TAG_CTX, TAG_STR, 40)"},
        {"Long", "e_sint64_8 (", "TAG8(TAG_UNI8, TAG_PRI8, 2)", "TAG(TAG_UNI, TAG_STR, 2)"},
        {"Enum", "e_uint8_8 (", "TAG8(TAG_UNI8, TAG_PRI8, 10)", "TAG(TAG_UNI, TAG_STR, 10)"},
        {"Open", "e_XEnum_8 (", "TAG8(TAG_UNI8, TAG_PRI8, 10)", "TAG(TAG_UNI, TAG_STR, 10)"},
    };
    for (const Row &row : rows)
        run.forType(row.name, [&](AsnType *type) {
            Text text;
            EXPECT_EQ(namesOf(type).coding, row.coding);
            cInnermostTagToF(BODY_FILE, "<", type, false, ">\n");
            EXPECT_EQ(run.body(), Text("<") + row.innermost + ">\n");
            EXPECT_EQ(cOutermostTag32Stri(text, "<", type, true, ">"),
                      Text("<") + row.outermost + ">");
        });
    run.forType("Pick", [&](AsnType *type) {
        Text text = "old";
        cInnermostTag32ToF(BODY_FILE, "<", type, false, ">\n");
        cOutermostTag32ToF(BODY_FILE, "<", type, false, ">\n");
        EXPECT_EQ(run.body(), "");
        EXPECT_EQ(cOutermostTag32Stri(text, "<", type, false, ">"), "");
    });
    Text text;
    run.forType("Any", [&](AsnType *type) {
        EXPECT_EQ(cBuiltinAnyCodCFunc(text, "e_", type, " ("), "e_Any_0 (");
    });
    run.forType("Tagged", [&](AsnType *type) {
        EXPECT_EQ(cBuiltinAnyCodCFunc(text, "e_", type, " ("), "e_Any_8 (");
    });
    run.forType("Broken", [&](AsnType *type) {
        EXPECT_EXIT(cBuiltinCFunc(text, "d_", type, ""), testing::ExitedWithCode(2),
                    "CBET: Unable to construct a function name");
    });
}

TEST(Builtin, StringsTellTheirForm) {
    TreeWriter w("Mod", "mod");
    const auto octets = [&](ValueForm form, ValueForm size) {
        return w.string(TYP_OCTSTR).form(form, size);
    };
    w.define("Fixed", octets(VF_STAS0, VF_NONE));
    w.define("Byte", octets(VF_STAS8, VF_UI8));
    w.define("Short", octets(VF_STAS16, VF_I16));
    w.define("Dyn", octets(VF_DYNS16, VF_UI16));
    w.define("DynFixed", octets(VF_DYNS0, VF_NONE));
    w.define("DynLong", octets(VF_DYNS, VF_UI32));
    w.define("Seg", octets(VF_LIST, VF_NONE));
    w.define("Frame", octets(VF_FRM, VF_NONE));
    w.define("Skipped", octets(VF_STAS8, VF_UI8).skipped());
    CbetRun run(w);
    struct Row {
        const char *name, *decoding, *encoding, *printing;
    };
    const Row rows[] = {
        {"Fixed", "d_OctetString0 (", "e_OctetString0_8 (", "p_OctetString0 ("},
        {"Byte", "d_OctetString8 (", "e_OctetString_8 (", "p_OctetString ("},
        {"Short", "d_OctetString16 (", "e_OctetString_8 (", "p_OctetString ("},
        {"Dyn", "d_DynOctetString16 (", "e_OctetString_8 (", "p_OctetString ("},
        {"DynFixed", "d_DynOctetString0 (", "e_OctetString0_8 (", "p_OctetString0 ("},
        {"DynLong", "d_DynOctetString (", "e_OctetString_8 (", "p_OctetString ("},
        {"Seg", "d_SegOctetString (", "e_SegOctetString_8 (", "p_SegOctetString ("},
        {"Frame", "d_Frame (", "e_Frame (", "p_Frame ("},
        {"Skipped", "d_NullType (", "e_NullType (", "p_NullType ("},
    };
    for (const Row &row : rows)
        run.forType(row.name, [&](AsnType *type) {
            Text text;
            EXPECT_EQ(cBuiltinStringCFunc(text, "d_", type, " ("), row.decoding);
            EXPECT_EQ(cBuiltinStringCodCFunc(text, "e_", type, " ("), row.encoding);
            EXPECT_EQ(cBuiltinStringTstCFunc(text, "p_", type, " ("), row.printing);
        });
}

TEST(Builtin, Contexts) {
    Text text;
    EXPECT_EQ(cRawAsnutigPtr(text, "(", GIDX_CODING, ")"), "(asncodg_asnuti)");
    EXPECT_EQ(cRawAsnutigPtr(text, "", GIDX_UTILITY, ""), "asnutigPtr");
    EXPECT_EQ(cRawAsnutigPtr(text, "", GIDX_NER, ""), "asnnerg_asnuti");
    EXPECT_EQ(cRawAsnutigPtr(text, "", 6, ""), "NULL");
    EXPECT_EQ(cAsnutigPtr(text, "(", GIDX_TESTING, false, ")"), "(ASNG_F(asntstg_asnuti))");
    EXPECT_EQ(cAsnutigPtr(text, nullptr, GIDX_NONE, true, nullptr), "ASNG_L(NULL)");
}

} // namespace
